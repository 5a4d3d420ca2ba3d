#pragma once

#include <vector>

#include "engine/raster/path_lines.h"

namespace engine::raster {

// The area that a geometric line of these attributes covers, as polygons of one orientation: filled with
// FP_WINDINGMODE they give their union. Widths and style lengths are pixels; nothing is thinner than one.
std::vector<Polygon> WidenLines(const std::vector<Polyline>& lines, const LINEATTRS& attributes);

} // namespace engine::raster
