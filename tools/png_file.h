#pragma once

#include <string>
#include <vector>

#include "engine/core/surface.h"

namespace tools {

// The bytes of a PNG of the bitmap in its own colours.
std::vector<unsigned char> EncodePng(const engine::Surface& bitmap);

} // namespace tools
