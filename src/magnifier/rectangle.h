#pragma once

#include "platform/types.h"

// Rectangles as values: right and bottom exclusive, signed. Empty unless left < right and
// top < bottom; (0, 0, 0, 0) stands for "nothing".
namespace koru {

constexpr RECTL NoRectangle = {0, 0, 0, 0};

constexpr bool IsEmpty(const RECTL& r)
{
    return !(r.left < r.right && r.top < r.bottom);
}
constexpr bool AreEqual(const RECTL& a, const RECTL& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

// The 32-bit value nearest to this one.
constexpr LONG Held(LONGLONG value)
{
    if (value < INT32_MIN)
        return INT32_MIN;
    return value > INT32_MAX ? INT32_MAX : static_cast<LONG>(value);
}

// The common part into `result` (NoRectangle when there is none); whether there is one. `result`
// may be one of the operands.
bool IntersectRect(RECTL& result, const RECTL& a, const RECTL& b);
bool DoMeet(const RECTL& a, const RECTL& b);

// The bounding rectangle, empty operands included.
RECTL UnionRect(const RECTL& a, const RECTL& b);

// The bounding rectangle of what is not empty; NoRectangle when nothing is.
RECTL JoinRect(const RECTL& a, const RECTL& b);

// left - dx, top - dy, right + dx, bottom + dy, held at the ends of the 32-bit range.
RECTL InflateRect(const RECTL& r, LONGLONG dx, LONGLONG dy);

// Reversed sides swapped.
RECTL OrderedRect(const RECTL& r);

// The parts of B outside of A, in the order that the drawing path depends on; how many (0 to 4).
ULONG SubtractRect(const RECTL& a, const RECTL& b, RECTL pieces[4]);

} // namespace koru
