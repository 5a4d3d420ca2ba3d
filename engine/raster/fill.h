#pragma once

#include <vector>

#include "engine/raster/bitmap.h"
#include "engine/raster/brush.h"

namespace engine::raster {

void FillSolid(const Bitmap& target, const std::vector<RECTL>& parts, ULONG pixel);

// Paints disjoint rectangles with a brush: pixels in memory directly, those of a surface without bits by the
// driver's painting. The rectangles lie within the surface and are already cut to the clip.
BOOL PaintRectangles(Surface& surface, const std::vector<RECTL>& rectangles, BRUSHOBJ* pbo, POINTL origin, MIX mix);

} // namespace engine::raster
