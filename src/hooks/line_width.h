#pragma once

#include "platform/objects.h"

namespace koru {

// How far the pen of a geometric line may reach beyond its path, in whole pixels; 0 for cosmetic
// lines and null.
LONG ReachOfPen(const LINEATTRS* plineattrs);

} // namespace koru
