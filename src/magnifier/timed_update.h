#pragma once

#include "driver/screen.h"

namespace koru {

// Runs Update when the screen has zoomers and ZoomUpdateInterval has passed. Null screen: nothing.
void UpdateIfDue(Screen* screen, LONGLONG now);

} // namespace koru
