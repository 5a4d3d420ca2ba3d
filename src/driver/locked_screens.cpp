#include "driver/locked_screens.h"

#include "driver/debug_print.h"

namespace koru {

LockedScreens::LockedScreens(const Screen& screen)
{
    if (!virtual_.Lock(screen.hsurfVirtual))
        DebugPrint("Cannot lock VirtualScreen\n");
    else if (!real_.Lock(screen.hsurfReal))
        DebugPrint("Cannot lock RealScreen\n");
}

} // namespace koru
