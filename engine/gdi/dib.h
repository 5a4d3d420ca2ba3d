#pragma once

// Device-independent bitmaps become bitmaps of the engine with the same rows, so that a driver meets
// every pixel format, palette and direction of rows that drawings hold.

#include <memory>

#include "engine/core/surface.h"
#include "engine/gdi/bytes.h"

namespace engine::gdi {

class Bitmap {
public:
    Bitmap(SIZEL size, const PixelLayout& layout, LONG lDelta = 0); // rows as MakeBitmap makes them
    ~Bitmap();
    Bitmap(const Bitmap&) = delete;
    Bitmap& operator=(const Bitmap&) = delete;

    // The engine's calls take all surfaces without const; a bitmap that is shared is only read.
    Surface& Pixels() const { return *surface_; }
    SIZEL Size() const { return surface_->sizlBitmap; }

private:
    Surface* surface_;
};

struct Dib {
    Bytes info; // header and colour table
    Bytes bits;
    bool paletteIndices = false; // the colour table holds indices of `palette`
    std::span<const COLORREF> palette = {};
    LONG rows = 0; // the bits hold only so many, the lowest; 0: all
};

std::shared_ptr<const Bitmap> ReadDib(const Dib& dib); // throws DamagedData
std::shared_ptr<const Bitmap> ReadBmpFile(Bytes file); // throws DamagedData
// A PNG or JPEG picture, over white where it is transparent. Throws DamagedData.
std::shared_ptr<const Bitmap> ReadCompressedPicture(Bytes file);

// Run lengths of 4 or 8 bits per pixel; what lies outside of the bitmap is not drawn.
void ExpandRunLengths(Bytes runs, Surface& target);

// More pixels are refused where the file need not hold them one by one.
constexpr std::int64_t MostExpandedPixels = 1 << 24;

} // namespace engine::gdi
