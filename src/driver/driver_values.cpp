#include "driver/driver_values.h"

namespace koru {

constinit Options DriverOptions;
constinit BOOL LegacyDdi = TRUE;
constinit HSEMAPHORE DriverSemaphore = nullptr;
constinit LONG HookDepth = 0;
constinit LONGLONG PerfFrequency = 0;
constinit ULONG RequestedColourDepth = 0;

} // namespace koru
