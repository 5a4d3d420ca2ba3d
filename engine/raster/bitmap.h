#pragma once

#include "engine/core/surface.h"
#include "engine/raster/pixel_access.h"

namespace engine::raster {

// Pixels in memory, addressed in the coordinates of the surface that they belong to or stand for.
struct Bitmap {
    BYTE* scan0 = nullptr;
    LONG lDelta = 0;
    POINTL origin = {0, 0}; // of the pixel at scan0
    RECTL area = {0, 0, 0, 0}; // nothing else may be read or written
    ULONG iBitmapFormat = 0;
    const PixelAccess* access = nullptr;
    const PixelLayout* layout = nullptr;

    // The bits of a surface that has some, or of a bitmap that stands for the part of a surface from `origin` on.
    static Bitmap Of(const Surface& surface, POINTL origin = {0, 0});

    BYTE* Row(LONG y) const;
    BYTE* Byte(LONG x, LONG y) const { return Row(y) + (x - origin.x) * BytesPerPixel(); } // of whole-byte formats
    LONG BytesPerPixel() const { return static_cast<LONG>(access->bitsPerPixel / 8); }
    bool HasWholeBytes() const { return access->bitsPerPixel >= 8; }
    void Read(LONG x, LONG y, LONG count, ULONG* pixels) const;
    void Write(LONG x, LONG y, LONG count, const ULONG* pixels) const;
    bool SharesMemoryWith(const Bitmap& other) const;
};

} // namespace engine::raster
