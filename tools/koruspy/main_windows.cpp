#include <fcntl.h>
#include <io.h>

#include <iostream>

#include "tools/koruspy/koruspy.h"
#include "tools/koruspy/tap_windows.h"
#include "tools/windows/system_windows.h"

namespace {

HANDLE endAsked; // by Ctrl+C, or by closing the window
HANDLE ended;

constexpr DWORD MostEndMilliseconds = 4000; // the system ends a program whose window was closed after 5 seconds

// Runs on a thread of its own. The program ends when this returns TRUE after its window was closed.
BOOL WINAPI AskForEnd(DWORD)
{
    SetEvent(endAsked);
    WaitForSingleObject(ended, MostEndMilliseconds);
    return TRUE;
}

bool Wait(double mostSeconds)
{
    return WaitForSingleObject(endAsked, static_cast<DWORD>(mostSeconds * 1000)) == WAIT_TIMEOUT;
}

double Clock()
{
    LARGE_INTEGER now, frequency;
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

} // namespace

int main(int argc, char** argv)
{
    endAsked = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    ended = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    SetConsoleCtrlHandler(AskForEnd, TRUE);
    _setmode(_fileno(stdout), _O_BINARY);
    const int code = koruspy::Run(tools::Arguments(argc, argv),
                                  {tools::OpenWindowsScreen, koruspy::OpenWindowsTap, koruspy::InstallModule,
                                   koruspy::RemoveModule, Wait, Clock, std::cout, std::cerr});
    SetEvent(ended);
    return code;
}
