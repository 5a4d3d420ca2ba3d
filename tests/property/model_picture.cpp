#include "tests/property/model_picture.h"

namespace property {

Picture::Picture(std::int64_t width, std::int64_t height, ULONG bitsPerPixel)
    : width_(width)
    , height_(height)
    , bits_(bitsPerPixel)
    , ones_(bitsPerPixel == 32 ? 0xFFFFFFFF : (1u << bitsPerPixel) - 1)
    , pixels_(static_cast<std::size_t>(width * height), 0)
{
}

void Fill(Picture& target, const Rect& rect, ULONG pixel)
{
    const Rect part = Intersect(rect, target.Bounds());
    for (std::int64_t y = part.top; y < part.bottom; ++y)
        for (std::int64_t x = part.left; x < part.right; ++x)
            target.Set(x, y, pixel);
}

void Copy(Picture& target, const Rect& rect, const Picture& source, const Point& from)
{
    const Picture before = &source == &target ? source : Picture();
    const Picture& read = &source == &target ? before : source;
    const Rect part = Intersect(rect, target.Bounds());
    for (std::int64_t y = part.top; y < part.bottom; ++y)
        for (std::int64_t x = part.left; x < part.right; ++x)
            if (read.Has(x - rect.left + from.x, y - rect.top + from.y))
                target.Set(x, y, read.At(x - rect.left + from.x, y - rect.top + from.y));
}

void CopySame(Picture& target, const Picture& source, const Rect& rect)
{
    Copy(target, rect, source, {rect.left, rect.top});
}

void CopySameInverted(Picture& target, const Picture& source, const Rect& rect)
{
    const Rect part = Intersect(Intersect(rect, target.Bounds()), source.Bounds());
    for (std::int64_t y = part.top; y < part.bottom; ++y)
        for (std::int64_t x = part.left; x < part.right; ++x)
            target.Set(x, y, ~source.At(x, y));
}

ULONG Merge(BYTE rop3, ULONG source, ULONG target)
{
    ULONG result = 0;
    for (int bit = 0; bit < 32; ++bit) {
        const ULONG index = (source >> bit & 1) << 1 | (target >> bit & 1);
        result |= static_cast<ULONG>(rop3 >> index & 1) << bit;
    }
    return result;
}

} // namespace property
