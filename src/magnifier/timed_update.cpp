#include "magnifier/timed_update.h"

#include "driver/driver_values.h"
#include "driver/locked_screens.h"
#include "driver/nested_drawing.h"
#include "magnifier/update.h"

namespace koru {

namespace {

    // Divided before it is multiplied: counts since the machine was started are large.
    LONGLONG MillisecondsSince(LONGLONG last, LONGLONG now)
    {
        const auto counts = static_cast<LONGLONG>(static_cast<ULONGLONG>(now) - static_cast<ULONGLONG>(last));
        return counts / PerfFrequency * 1000 + counts % PerfFrequency * 1000 / PerfFrequency;
    }

} // namespace

void UpdateIfDue(Screen* screen, LONGLONG now)
{
    if (!screen || !screen->ZoomerList.head || PerfFrequency == 0)
        return;
    if (MillisecondsSince(lastUpdateTime, now) <= ZoomUpdateInterval)
        return;
    const LockedScreens screens(*screen);
    if (!screens)
        return;
    const NestedDrawing nested;
    Update(screen->ZoomerList, screens.Real(), screens.Virtual());
}

} // namespace koru
