#pragma once

#include <memory>
#include <string>

#include "tools/koruspy/spy.h"

namespace koruspy {

// These throw std::runtime_error with one line when the system refuses.
std::unique_ptr<Tap> OpenWindowsTap(); // starts the module when it is installed and does not run
void InstallModule(const std::string& path);
void RemoveModule();

} // namespace koruspy
