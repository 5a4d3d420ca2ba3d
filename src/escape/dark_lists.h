#pragma once

#include "escape/sorted_id_set.h"

namespace koru {

// Whose drawing is not recorded. Kept for the driver's lifetime.
extern SortedIdSet DarkProcessList; // the consumer's identifiers of selector 0
extern SortedIdSet DarkIdList; // of selector 1
extern SortedIdSet DarkSurfaceList; // hsurf values

} // namespace koru
