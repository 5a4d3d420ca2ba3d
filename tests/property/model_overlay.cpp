#include "tests/property/model_overlay.h"

namespace property {

namespace {

    LONG Wrapped(std::int64_t value)
    {
        return static_cast<LONG>(static_cast<ULONG>(value));
    }

} // namespace

void Overlay::SetImage(const Picture& empty, const Picture& client, BYTE level, const Point& at, const Rect& covered)
{
    if (!image)
        image = empty;
    rop3 = level;
    origin = at;
    sourceRect = covered;
    Copy(*image, {at.x, at.y, Wrapped(at.x + covered.Width()), Wrapped(at.y + covered.Height())}, client, at);
}

void Overlay::SetMask(const Picture& empty, const Picture& client, const Rect& rect)
{
    if (!mask)
        mask = empty;
    CopySame(*mask, client, rect);
}

void Overlay::MergeInto(Picture& picture, const Rect& rect) const
{
    const bool needsPattern = ((rop3 ^ rop3 >> 4) & 0x0F) != 0;
    if (!image || needsPattern)
        return;
    const Rect part = Intersect(Intersect(sourceRect, rect), picture.Bounds());
    const Point from = {Wrapped(part.left - sourceRect.left + origin.x), Wrapped(part.top - sourceRect.top + origin.y)};
    for (std::int64_t y = part.top; y < part.bottom; ++y)
        for (std::int64_t x = part.left; x < part.right; ++x) {
            const std::int64_t imageX = x - part.left + from.x, imageY = y - part.top + from.y;
            if (!image->Has(imageX, imageY))
                continue;
            const ULONG keep = mask ? mask->At(imageX, imageY) : 0;
            const ULONG under = picture.At(x, y);
            picture.Set(x, y, (under & keep) | (Merge(rop3, image->At(imageX, imageY), under) & ~keep));
        }
}

} // namespace property
