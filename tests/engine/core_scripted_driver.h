#pragma once

// A display driver for tests that manages its surfaces itself and only notes what it is called for.

#include <string>
#include <vector>

#include "engine/core/engine.h"
#include "platform/platform.h"

namespace scripted {

struct Script {
    FLONG hooks = 0; // of the primary surface
    bool associates = true;
    ULONG writesBehindDevinfo = 0; // bytes
    HSURF primaryInstead = nullptr; // what DrvEnableSurface answers when not null
    std::vector<ULONG> missing; // INDEX_Drv numbers
    bool emptyTable = false; // a count without a table
};

// Registers it as "scripted".
void Register(const Script& script = {});

// One line per call of the driver, numbers in decimal: "BitBlt", "DeleteDeviceBitmap 7".
extern std::vector<std::string> calls;

// What DrvEnablePDEV was given last.
extern DEVMODEW mode;
extern std::vector<HSURF> patterns;
extern ULONG capsSize;

} // namespace scripted
