#pragma once

// A set of pixels as rectangles, and the algebra on it. The raster operations cut with it, the front
// end keeps its clips in it.

#include <vector>

#include "platform/platform.h"

namespace engine {

// The pixels left .. right - 1 of a row.
struct Span {
    LONG left, right;
    friend bool operator==(const Span&, const Span&) = default;
};

class Region {
public:
    Region() = default; // empty
    explicit Region(const RECTL& rectangle); // an empty or reversed rectangle: empty
    explicit Region(const std::vector<RECTL>& rectangles); // any order, overlaps allowed

    bool IsEmpty() const { return rectangles_.empty(); }
    bool IsRectangle() const { return rectangles_.size() == 1; }
    RECTL Bounds() const; // {0, 0, 0, 0} when empty
    bool Contains(LONG x, LONG y) const;

    // Disjoint, in bands: sorted by top, then left; rectangles whose rows meet have the same top and
    // bottom. Equal regions have equal rectangles. As a ClipObject takes them.
    const std::vector<RECTL>& Rectangles() const { return rectangles_; }

    void Move(LONG dx, LONG dy); // what leaves the 32-bit range is cut off

    // Adds rows below all that is there. The spans are not empty, sorted and do not touch.
    void AppendBand(LONG top, LONG bottom, const std::vector<Span>& spans);

    friend bool operator==(const Region& first, const Region& second);

private:
    void AppendBands(const std::vector<RECTL>& bands);
    bool ExtendLastBand(LONG top, LONG bottom, const std::vector<Span>& spans);

    std::vector<RECTL> rectangles_;
    std::size_t lastBand_ = 0; // index of the first rectangle of the lowest band
};

Region Union(const Region& first, const Region& second);
Region Intersection(const Region& first, const Region& second);
Region Difference(const Region& first, const Region& second); // of first, what second does not cover
Region SymmetricDifference(const Region& first, const Region& second);

// The pixels that a clip leaves of `bounds`. A null or trivial clip leaves all.
Region RegionOfClip(const CLIPOBJ* pco, const RECTL& bounds);

// The pixels inside a path (FP_ALTERNATEMODE or FP_WINDINGMODE), of `bounds`. Open subpaths are closed.
// Pixel centres have whole coordinates; a centre on a left or upper edge is inside, on a right or lower not.
Region RegionOfPath(const PATHOBJ* ppo, FLONG flOptions, const RECTL& bounds);

} // namespace engine
