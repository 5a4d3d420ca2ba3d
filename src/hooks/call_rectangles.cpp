#include "hooks/call_rectangles.h"

#include "magnifier/rectangle.h"

namespace koru {

namespace {

    constexpr LONG Sum(LONG a, LONG b)
    {
        return static_cast<LONG>(static_cast<ULONG>(a) + static_cast<ULONG>(b));
    }
    constexpr LONG Difference(LONG a, LONG b)
    {
        return static_cast<LONG>(static_cast<ULONG>(a) - static_cast<ULONG>(b));
    }

    constexpr LONG Floor(FIX x)
    {
        return x >> 4;
    }
    constexpr LONG Ceiling(FIX x)
    {
        return static_cast<LONG>((LONGLONG{x} + 15) >> 4);
    }

} // namespace

bool CutToClip(RECTL& bounds, const RECTL* rectangle, const CLIPOBJ* pco)
{
    if (!rectangle || !pco)
        return TakeAsBounds(bounds, rectangle);
    return IntersectRect(bounds, *rectangle, pco->rclBounds);
}

bool TakeAsBounds(RECTL& bounds, const RECTL* rectangle)
{
    if (rectangle)
        bounds = *rectangle;
    return rectangle != nullptr;
}

const RECTL* ClipBounds(const CLIPOBJ* pco)
{
    return pco ? &pco->rclBounds : nullptr;
}

RECTL RectangleAt(const POINTL* corner, const RECTL* sized)
{
    if (!corner || !sized)
        return NoRectangle;
    return {corner->x, corner->y, Sum(corner->x, Difference(sized->right, sized->left)),
            Sum(corner->y, Difference(sized->bottom, sized->top))};
}

RECTL PixelsAround(const RECTFX& bounds)
{
    return {Floor(bounds.xLeft) - 1, Floor(bounds.yTop) - 1, Ceiling(bounds.xRight) + 2, Ceiling(bounds.yBottom) + 2};
}

} // namespace koru
