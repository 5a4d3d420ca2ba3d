#pragma once

#include "escape/list.h"

namespace koru {

// 1 when some part of the rectangle lies outside every zone, 0 when the zones cover it whole.
// An empty rectangle answers 1. No memory is allocated.
BOOL IsCoveredByDarkZones(const LIST& zones, const RECTL& rectangle);

} // namespace koru
