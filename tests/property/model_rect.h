#pragma once

// Rectangles of the model: 64-bit coordinates, so that nothing wraps.

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/types.h"

namespace property {

struct Rect {
    std::int64_t left = 0, top = 0, right = 0, bottom = 0;

    Rect() = default;
    Rect(std::int64_t l, std::int64_t t, std::int64_t r, std::int64_t b)
        : left(l)
        , top(t)
        , right(r)
        , bottom(b)
    {
    }
    Rect(const RECTL& r) // NOLINT: the calls under test speak in RECTLs
        : Rect(r.left, r.top, r.right, r.bottom)
    {
    }
    bool IsEmpty() const { return left >= right || top >= bottom; }
    std::int64_t Width() const { return right - left; }
    std::int64_t Height() const { return bottom - top; }
    bool Has(std::int64_t x, std::int64_t y) const { return x >= left && x < right && y >= top && y < bottom; }
    Rect Moved(std::int64_t dx, std::int64_t dy) const { return {left + dx, top + dy, right + dx, bottom + dy}; }
    Rect Inflated(std::int64_t by) const { return {left - by, top - by, right + by, bottom + by}; }
    RECTL ToRectl() const;
    friend bool operator==(const Rect&, const Rect&) = default;
};

// The common part; (0, 0, 0, 0) when it is empty.
Rect Intersect(const Rect& first, const Rect& second);
bool Meets(const Rect& first, const Rect& second);
// The smallest rectangle round both, whatever they hold.
Rect Union(const Rect& first, const Rect& second);
// The same, but an empty rectangle adds nothing.
Rect Join(const Rect& first, const Rect& second);
// The parts of `from` outside of `hammer`: at most four, in the order in which they are passed on.
std::vector<Rect> Subtract(const Rect& hammer, const Rect& from);

std::string ToString(const Rect& rect);

} // namespace property
