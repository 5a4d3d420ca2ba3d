#pragma once

#include "driver/screen.h"

namespace koru {

// The bitmap with the pixels of a device bitmap, or null.
HSURF FindBacking(const Screen& screen, HBITMAP hbmDevice);

} // namespace koru
