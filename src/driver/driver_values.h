#pragma once

// Values that hold for the whole driver, fixed or first set when the engine enables it.

#include "platform/types.h"

namespace koru {

struct Options {
    ULONG AdjustDeviceCaps = 0; // non-zero: rewrite colour depth and planes of every mode
    BYTE PointerMode = 0; // a PointerMode
    ULONG FilterPointerCopies = 1; // non-zero: the engine's own pointer copies are not captured
    BYTE CapsBitsPixel = 99; // 99: not set
    BYTE CapsPlanes = 99;
};

enum PointerModes : BYTE {
    PointerDrawnHere = 0, // the software cursor
    PointerNotDrawn = 1, // the engine draws it with DrvCopyBits
    PointerForwarded = 2, // the real driver draws it
};

extern Options DriverOptions;
extern BOOL LegacyDdi; // the engine's version is below 0x30000
extern HSEMAPHORE DriverSemaphore; // null when the capture buffer could not be made
extern LONG HookDepth; // above 0 while the driver itself draws
extern LONGLONG PerfFrequency; // counts of the performance counter per second; may be 0
extern ULONG RequestedColourDepth; // dmBitsPerPel of the last mode enabled: 15 tells 5-5-5 from 5-6-5

} // namespace koru
