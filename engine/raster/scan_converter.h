#pragma once

// Polygons to pixels: the classic scan-line algorithm with a list of active edges (Foley, van Dam, Feiner,
// Hughes: Computer Graphics, 3.6), on exact 28.4 coordinates.

#include <cstdint>
#include <vector>

#include "engine/raster/region.h"

namespace engine::raster {

// 28.4, with room for what is far outside of the FIX range.
struct FixPoint {
    std::int64_t x, y;
    friend bool operator==(const FixPoint&, const FixPoint&) = default;
};
constexpr std::int64_t FixOne = 16; // a pixel

using Polygon = std::vector<FixPoint>; // closed by its first point

// The pixels of `bounds` inside of the polygons taken together (FP_ALTERNATEMODE or FP_WINDINGMODE). Pixel
// centres have whole coordinates; one on a left or upper edge is inside, one on a right or lower is not.
Region ScanConvert(const std::vector<Polygon>& polygons, FLONG flOptions, const RECTL& bounds);

} // namespace engine::raster
