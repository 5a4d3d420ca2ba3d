#pragma once

// Rectangles and exact arithmetic on coordinates. Right and bottom are exclusive. Distances between
// 32-bit coordinates need 33 bits, hence the 64-bit numbers here and in all users.

#include <algorithm>
#include <cstdint>

#include "platform/types.h"

namespace engine {

inline bool IsEmpty(const RECTL& rectangle)
{
    return rectangle.left >= rectangle.right || rectangle.top >= rectangle.bottom;
}

inline bool Contains(const RECTL& rectangle, std::int64_t x, std::int64_t y)
{
    return x >= rectangle.left && x < rectangle.right && y >= rectangle.top && y < rectangle.bottom;
}

inline bool AreEqual(const RECTL& first, const RECTL& second)
{
    return first.left == second.left && first.top == second.top && first.right == second.right
        && first.bottom == second.bottom;
}

// Empty (of any position) when they do not meet.
inline RECTL Intersection(const RECTL& first, const RECTL& second)
{
    return {std::max(first.left, second.left), std::max(first.top, second.top), std::min(first.right, second.right),
            std::min(first.bottom, second.bottom)};
}

inline bool IsInside(const RECTL& inner, const RECTL& outer)
{
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right
        && inner.bottom <= outer.bottom;
}

// The same area with left not behind right and top not below bottom.
inline RECTL Ordered(const RECTL& rectangle)
{
    return {std::min(rectangle.left, rectangle.right), std::min(rectangle.top, rectangle.bottom),
            std::max(rectangle.left, rectangle.right), std::max(rectangle.top, rectangle.bottom)};
}

inline std::int64_t Width(const RECTL& rectangle)
{
    return std::int64_t{rectangle.right} - rectangle.left;
}

inline std::int64_t Height(const RECTL& rectangle)
{
    return std::int64_t{rectangle.bottom} - rectangle.top;
}

// Cuts a 64-bit coordinate to the 32-bit range.
inline LONG Saturated(std::int64_t value)
{
    return static_cast<LONG>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
}

// Moved; cut to the 32-bit range where it would leave it.
inline RECTL Moved(const RECTL& rectangle, std::int64_t dx, std::int64_t dy)
{
    return {Saturated(rectangle.left + dx), Saturated(rectangle.top + dy), Saturated(rectangle.right + dx),
            Saturated(rectangle.bottom + dy)};
}

// Rounds towards minus infinity; the divisor is positive.
inline std::int64_t FloorDivide(std::int64_t number, std::int64_t divisor)
{
    const std::int64_t quotient = number / divisor;
    return number % divisor < 0 ? quotient - 1 : quotient;
}

// Rounds towards plus infinity; the divisor is positive.
inline std::int64_t CeilDivide(std::int64_t number, std::int64_t divisor)
{
    return -FloorDivide(-number, divisor);
}

struct Quotient {
    std::int64_t floor;
    std::int64_t remainder; // 0 .. divisor - 1
};

// first * second / divisor, exact although the product may not fit in 64 bits. The factors are distances
// of at most 40 bits, the divisor is positive, the quotient fits.
Quotient MultiplyDivide(std::int64_t first, std::int64_t second, std::int64_t divisor);

} // namespace engine
