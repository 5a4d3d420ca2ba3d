#pragma once

#include "escape/list.h"

namespace koru {

// Adds a zone to a list that holds its zones in the order of their left edges. The zone's handle, 0
// (with a message) when memory is short.
ULONG InsertDarkZone(LIST& zones, const RECTL& zone);

// 1 when some part of the rectangle lies outside every zone, 0 when the zones cover it whole.
// An empty rectangle answers 1. `zones` is made by InsertDarkZone. No memory is allocated.
BOOL IsCoveredByDarkZones(const LIST& zones, const RECTL& rectangle);

} // namespace koru
