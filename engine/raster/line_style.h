#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "engine/core/surface.h"
#include "engine/raster/cosmetic_line.h"

namespace engine::raster {

// The dashes and gaps of a cosmetic line, running on from line to line. Lengths count in style steps, of
// which a device says how many a pixel is (xStyleStep, yStyleStep) and how many make a unit of the style array
// (denStyleStep). A surface without a device, or with one that does not say: 1, 1 and 3. LA_ALTERNATE is every
// other pixel on all.
class LineStyle {
public:
    LineStyle(const LINEATTRS& attributes, const Surface& surface);
    bool IsSolid() const { return lengths_.empty(); }
    void Reset() { position_ = 0; }

    // The dashes of a line that may lie within bounds, in drawing order; moves on to the line's end.
    std::vector<CosmeticLine::Stretch> DashesOf(const CosmeticLine& line, const RECTL& bounds);

    // The position as LINEATTRS keeps it: whole units in the upper half, steps in the lower.
    LONG State() const;

private:
    std::vector<std::int64_t> lengths_; // dash, gap, dash ...; always an even number
    std::int64_t total_ = 0;
    std::int64_t position_ = 0; // 0 .. total_ - 1
    std::int64_t xStep_ = 1, yStep_ = 1, unit_ = 3;
};

} // namespace engine::raster
