#pragma once

// A picture as a plain array of pixels, and the few blits that the model needs. They go pixel by pixel;
// what lies outside of a picture is left out.

#include <functional>
#include <vector>

#include "tests/property/model_rect.h"

namespace property {

struct Point {
    std::int64_t x = 0, y = 0;
};

class Picture {
public:
    Picture() = default;
    Picture(std::int64_t width, std::int64_t height, ULONG bitsPerPixel);

    Rect Bounds() const { return {0, 0, width_, height_}; }
    bool Has(std::int64_t x, std::int64_t y) const { return x >= 0 && x < width_ && y >= 0 && y < height_; }
    ULONG At(std::int64_t x, std::int64_t y) const { return pixels_[static_cast<std::size_t>(y * width_ + x)]; }
    void Set(std::int64_t x, std::int64_t y, ULONG pixel)
    {
        pixels_[static_cast<std::size_t>(y * width_ + x)] = pixel & ones_;
    }
    ULONG Ones() const { return ones_; } // a pixel with all bits set
    ULONG Bits() const { return bits_; }
    friend bool operator==(const Picture&, const Picture&) = default;

private:
    std::int64_t width_ = 0, height_ = 0;
    ULONG bits_ = 0, ones_ = 0;
    std::vector<ULONG> pixels_;
};

void Fill(Picture& target, const Rect& rect, ULONG pixel);
// `from` is the point of the source that comes to lie on the corner of `rect`.
void Copy(Picture& target, const Rect& rect, const Picture& source, const Point& from);
// The same place of both.
void CopySame(Picture& target, const Picture& source, const Rect& rect);
void CopySameInverted(Picture& target, const Picture& source, const Rect& rect);

// One pixel through a raster operation without pattern; `rop3` as in a ROP4's byte.
ULONG Merge(BYTE rop3, ULONG source, ULONG target);

} // namespace property
