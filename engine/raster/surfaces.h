#pragma once

// The surfaces of a drawing call as pixels in memory, also those that have none.

#include <memory>
#include <vector>

#include "engine/raster/bitmap.h"

namespace engine::raster {

struct BitmapDeleter {
    void operator()(Surface* bitmap) const { DestroyBitmap(bitmap); }
};
using TemporaryBitmap = std::unique_ptr<Surface, BitmapDeleter>;

// A part of a surface to draw on. A surface without bits is read into a bitmap, which Finish writes back.
class Target {
public:
    Target(Surface& surface, CLIPOBJ* pco, const RECTL& area);
    explicit operator bool() const { return bitmap_.access != nullptr; }
    const Bitmap& Pixels() const { return bitmap_; } // its area: the part asked for, cut to the surface
    BOOL Finish();

private:
    Surface& surface_;
    CLIPOBJ* pco_;
    TemporaryBitmap temporary_;
    Bitmap bitmap_;
};

// A part of a surface to read: `area` cut to the surface.
class Source {
public:
    Source() = default; // for a call without one
    Source(Surface& surface, const RECTL& area);
    explicit operator bool() const { return readable_; }
    const Bitmap& Pixels() const { return bitmap_; }
    // Reads from a copy from now on where drawing on the target could change what is still to be read.
    void KeepFrom(const Bitmap& target);

private:
    TemporaryBitmap temporary_;
    std::vector<BYTE> copy_;
    Bitmap bitmap_;
    bool readable_ = true;
};

} // namespace engine::raster
