#pragma once

#include <vector>

#include "engine/core/objects.h"
#include "engine/raster/scan_converter.h"

namespace engine::raster {

// A subpath as straight lines.
struct Polyline {
    std::vector<FixPoint> points;
    bool closed = false; // a line leads back to the first point
    bool resetsStyle = false;
};

// Béziers are divided until each piece differs from its chord by an eighth of a pixel at most, or after
// twelve divisions.
std::vector<Polyline> PolylinesOf(const Path& path);

} // namespace engine::raster
