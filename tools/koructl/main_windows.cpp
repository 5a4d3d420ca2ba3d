#include <iostream>

#include "tools/koructl/koructl.h"
#include "tools/koructl/machine_windows.h"
#include "tools/windows/system_windows.h"

int main(int argc, char** argv)
{
    koructl::WindowsMachine machine;
    return koructl::Run(tools::Arguments(argc, argv), {tools::OpenWindowsScreen, machine, std::cout, std::cerr});
}
