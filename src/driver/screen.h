#pragma once

#include <cstddef>

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

static_assert(sizeof(LIST) == 4 && sizeof(ZoomerList) == 36);
static_assert(offsetof(Screen, DeviceBitmaps) == 0 && offsetof(Screen, DeviceBitmapCount) == 4);
static_assert(offsetof(Screen, DarkZones) == 8 && offsetof(Screen, hsurfDevice) == 12);
static_assert(offsetof(Screen, hsurfVirtual) == 16 && offsetof(Screen, hsurfReal) == 20);
static_assert(offsetof(Screen, lDelta) == 24 && offsetof(Screen, iBitmapFormat) == 28);
static_assert(offsetof(Screen, dhpdevReal) == 32 && offsetof(Screen, hdev) == 36);
static_assert(offsetof(Screen, ZoomerList) == 40 && offsetof(Screen, PaletteCopy) == 76);

} // namespace koru
