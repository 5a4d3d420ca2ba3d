#pragma once

// What the control programs need of Windows 2000 and later.

#include <windows.h>

#include <string>
#include <vector>

#include "tools/control/driver.h"

namespace tools {

// The device context of the whole screen, kept by the transport that is answered.
Screen OpenWindowsScreen();

// "what: the system's own words", for `error` as GetLastError gives it.
std::string SystemError(const std::string& what, DWORD error = GetLastError());

std::wstring Widen(const std::string& ansi);

std::vector<std::string> Arguments(int argc, char** argv); // without the program's name

} // namespace tools
