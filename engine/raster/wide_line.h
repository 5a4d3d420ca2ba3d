#pragma once

#include <vector>

#include "engine/raster/path_lines.h"

namespace engine::raster {

// The area of `bounds` that geometric lines of these attributes cover, as polygons of one orientation: filled
// with FP_WINDINGMODE they give their union. Widths and style lengths are pixels; nothing is thinner than one.
std::vector<Polygon> WidenLines(const std::vector<Polyline>& lines, const LINEATTRS& attributes, const RECTL& bounds);

} // namespace engine::raster
