#pragma once

#include "platform/structures.h"

namespace koru {

// What the engine is told about a device differs from what the real driver says. Null pointers and
// structures too short for a field are left alone.

// Colour depth and planes, by the options.
void AdjustGdiInfo(ULONG* pdevcaps, ULONG cjCaps);

// Takes away what goes past the hooks, adds what the driver's own pointer needs.
void AdjustDevInfo(DEVINFO* pdi, ULONG cjDevInfo);

} // namespace koru
