#pragma once

// Pixels of every bitmap format as numbers.

#include "platform/platform.h"

namespace engine::raster {

struct PixelAccess {
    ULONG bitsPerPixel;
    void (*read)(const BYTE* row, LONG x, LONG count, ULONG* pixels);
    void (*write)(BYTE* row, LONG x, LONG count, const ULONG* pixels); // neighbours in a shared byte stay
};

// Null for a format that bitmaps cannot have.
const PixelAccess* PixelAccessOf(ULONG iBitmapFormat);

} // namespace engine::raster
