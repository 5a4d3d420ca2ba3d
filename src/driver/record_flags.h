#pragma once

#include "platform/types.h"

namespace koru {

// The number that comes with a record when it is handed to the consumer. Drawing calls tell by it
// whether they drew on a screen; for the others it is fixed.
enum RecordFlag : LONG {
    OnScreenFlag = 0,
    OffScreenFlag = 1,
    DeviceCallFlag = 1, // PDEV, surface, mode assertion
    GetModesFlag = 0,
    DeviceBitmapFlag = 1,
    SetPaletteFlag = 1,
    DitherColorFlag = 0,
    PointerFlag = 0,
    SaveScreenBitsFlag = 1,
    EscapeFlag = 1,
};

} // namespace koru
