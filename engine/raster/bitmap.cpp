#include "engine/raster/bitmap.h"

#include <algorithm>

#include "engine/raster/rectangles.h"

namespace engine::raster {
namespace {

    struct MemoryRange {
        const BYTE *first, *behind;
    };

    MemoryRange RangeOf(const Bitmap& bitmap)
    {
        const std::size_t lDelta = static_cast<std::size_t>(std::abs(bitmap.lDelta));
        const BYTE* const top = bitmap.Row(bitmap.area.top);
        const BYTE* const bottom = bitmap.Row(bitmap.area.bottom - 1);
        return {std::min(top, bottom), std::max(top, bottom) + lDelta};
    }

} // namespace

Bitmap Bitmap::Of(const Surface& surface, POINTL origin)
{
    return {static_cast<BYTE*>(surface.pvScan0),
            surface.lDelta,
            origin,
            Moved(surface.Bounds(), origin.x, origin.y),
            surface.iBitmapFormat,
            PixelAccessOf(surface.iBitmapFormat),
            &surface.layout};
}

BYTE* Bitmap::Row(LONG y) const
{
    return scan0 + static_cast<std::ptrdiff_t>(y - origin.y) * lDelta;
}

void Bitmap::Read(LONG x, LONG y, LONG count, ULONG* pixels) const
{
    access->read(Row(y), x - origin.x, count, pixels);
}

void Bitmap::Write(LONG x, LONG y, LONG count, const ULONG* pixels) const
{
    access->write(Row(y), x - origin.x, count, pixels);
}

bool Bitmap::SharesMemoryWith(const Bitmap& other) const
{
    if (engine::IsEmpty(area) || engine::IsEmpty(other.area))
        return false;
    const MemoryRange mine = RangeOf(*this), others = RangeOf(other);
    return mine.first < others.behind && others.first < mine.behind;
}

} // namespace engine::raster
