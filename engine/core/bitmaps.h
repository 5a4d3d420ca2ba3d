#pragma once

#include <memory>

#include "engine/core/surface.h"

namespace engine {

// A bitmap that is not yet among the engine's surfaces. Rows are `rowBytes` apart, the first one on top
// only with BMF_TOPDOWN. Null when its bits are more than the engine can have.
std::unique_ptr<Surface> NewBitmap(SIZEL size, ULONG rowBytes, const PixelLayout& layout, FLONG flags, void* bits);

} // namespace engine
