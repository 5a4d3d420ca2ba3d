#include "engine/raster/surfaces.h"

#include <cstring>

#include "engine/raster/hook_call.h"
#include "engine/raster/rectangles.h"

namespace engine::raster {
namespace {

    // The part of a surface without bits as a bitmap of its own; null where the driver does not copy it.
    TemporaryBitmap ReadManaged(Surface& surface, const RECTL& area)
    {
        const SIZEL size = {area.right - area.left, area.bottom - area.top};
        TemporaryBitmap bitmap(MakeBitmap(size, surface.layout));
        RECTL whole = {0, 0, size.cx, size.cy};
        POINTL from = {area.left, area.top};
        if (!bitmap || !CallCopyBits(bitmap.get(), &surface, nullptr, nullptr, &whole, &from))
            return nullptr;
        return bitmap;
    }

    // The bits of a part of a surface, `temporary` where it has none itself.
    Bitmap BitsOf(Surface& surface, const RECTL& wanted, TemporaryBitmap& temporary)
    {
        const RECTL area = Intersection(wanted, surface.Bounds());
        Bitmap bitmap;
        if (IsEmpty(area))
            return bitmap;
        if (HasBits(&surface))
            bitmap = Bitmap::Of(surface);
        else if ((temporary = ReadManaged(surface, area)) != nullptr)
            bitmap = Bitmap::Of(*temporary, {area.left, area.top});
        bitmap.area = area;
        return bitmap;
    }

} // namespace

Target::Target(Surface& surface, CLIPOBJ* pco, const RECTL& area)
    : surface_(surface)
    , pco_(pco)
    , bitmap_(BitsOf(surface, area, temporary_))
{
}

BOOL Target::Finish()
{
    if (!temporary_)
        return TRUE;
    RECTL area = bitmap_.area;
    POINTL from = {0, 0};
    return CallCopyBits(&surface_, temporary_.get(), pco_, nullptr, &area, &from);
}

Source::Source(Surface& surface, const RECTL& area)
    : bitmap_(BitsOf(surface, area, temporary_))
    , readable_(bitmap_.access != nullptr || IsEmpty(bitmap_.area))
{
}

void Source::KeepFrom(const Bitmap& target)
{
    if (!bitmap_.SharesMemoryWith(target))
        return;
    const RECTL& area = bitmap_.area;
    const LONG rowBytes = static_cast<LONG>(RowBytes(bitmap_.iBitmapFormat, area.right - bitmap_.origin.x));
    copy_.resize(static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(area.bottom - area.top));
    for (LONG y = area.top; y < area.bottom; ++y)
        std::memcpy(copy_.data() + static_cast<std::size_t>(y - area.top) * static_cast<std::size_t>(rowBytes),
                    bitmap_.Row(y), static_cast<std::size_t>(rowBytes));
    bitmap_.scan0 = copy_.data();
    bitmap_.lDelta = rowBytes;
    bitmap_.origin.y = area.top;
}

} // namespace engine::raster
