#pragma once

#include "escape/list.h"
#include "magnifier/zoomer_list.h"
#include "platform/platform.h"

namespace koru {

struct DeviceBitmap {
    HSURF hbmDevice; // what the engine was given; null marks a free entry
    HSURF hsurfBacking; // the bitmap with the pixels
};

// One display device. Keyed by the real driver's dhpdev, which the engine gets unchanged.
struct Screen {
    DeviceBitmap* DeviceBitmaps;
    ULONG DeviceBitmapCount; // entries, free ones included
    LIST DarkZones; // of RECTL
    HSURF hsurfDevice; // handed to the engine; its dhsurf is hsurfVirtual
    HSURF hsurfVirtual; // where drawing lands
    HSURF hsurfReal; // what is seen
    LONG lDelta; // of the RealScreen
    ULONG iBitmapFormat;
    DHPDEV dhpdevReal;
    HDEV hdev;
    ::koru::ZoomerList ZoomerList;
    BYTE PaletteCopy[256 * 4]; // red, green, blue, 0: what DrvSetPalette last gave; not read by the driver
};

} // namespace koru
