#pragma once

#include <vector>

#include "engine/raster/path_lines.h"

namespace engine::raster {

// Cuts the lines of geometric strokes into the dashes of their style; without one they stay as they are.
// A figure whose dashes nobody could count stays whole as well.
std::vector<Polyline> CutIntoDashes(const std::vector<Polyline>& lines, const LINEATTRS& attributes);

} // namespace engine::raster
