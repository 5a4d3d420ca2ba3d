#pragma once

#include "platform/types.h"

namespace koru {

// Asks the display chain manager for the driver behind this one. Its file name, of the pool and the
// caller's to free; null when there is none.
WCHAR* DCMGetNextDriver();

} // namespace koru
