#pragma once

#include <optional>
#include <vector>

#include "engine/raster/region.h"

namespace engine::raster {

// The rectangles of an area that a clip leaves: disjoint, none empty. A null or trivial clip leaves the
// area as it is. Nothing, with a violation, for a clip that is not the engine's.
std::optional<std::vector<RECTL>> VisibleParts(const CLIPOBJ* pco, const RECTL& area);

} // namespace engine::raster
