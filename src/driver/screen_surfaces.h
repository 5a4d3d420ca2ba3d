#pragma once

#include "driver/screen.h"

namespace koru {

// Gives the Screen its VirtualScreen and device surface, made after the real driver's surface. The
// device surface, or null; what was made before a failure stays with the Screen.
HSURF BuildScreenSurfaces(Screen& screen, HSURF hsurfReal);

// Zoomers and their bitmaps, VirtualScreen, device surface. The RealScreen is the real driver's.
void DeleteScreenSurfaces(Screen& screen);

} // namespace koru
