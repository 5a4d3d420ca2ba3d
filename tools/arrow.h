#pragma once

#include "engine/core/device.h"

namespace tools {

// Gives the driver an arrow as the pointer's shape, its tip at (x, y).
void ShowArrow(engine::Device& device, LONG x, LONG y);

} // namespace tools
