#include "capture/capture_call.h"
#include "capture/records.h"
#include "chain/module_loader.h"
#include "cursor/cursor.h"
#include "driver/device_calls.h"
#include "driver/locked_surface.h"
#include "driver/record_flags.h"
#include "driver/screen_list.h"
#include "driver/screen_surfaces.h"
#include "driver/semaphore_hold.h"

namespace koru {

namespace {

    void PlaceCursor(HSURF hsurfReal)
    {
        if (const LockedSurface real(hsurfReal); real)
            SoftwareCursor.Initialise(real->sizlBitmap);
    }

    void Synchronize(DHPDEV dhpdev, RECTL* prcl)
    {
        if (const auto real = RealFunction<PFN_DrvSynchronize>(INDEX_DrvSynchronize))
            real(dhpdev, prcl);
    }

} // namespace

HSURF APIENTRY DrvEnableSurface(DHPDEV dhpdev)
{
    const SemaphoreHold hold;
    const auto real = RealFunction<PFN_DrvEnableSurface>(INDEX_DrvEnableSurface);
    if (!real)
        return nullptr;
    HSURF result = nullptr;
    if (const HSURF hsurfReal = real(dhpdev)) {
        if (Screen* const screen = ScreenList::Find(dhpdev))
            result = BuildScreenSurfaces(*screen, hsurfReal);
        PlaceCursor(hsurfReal);
    }
    if (CaptureAllows(CALL_ENABLESURFACE))
        CaptureCall([&](BYTE* record, ULONG room) { return ExpandDrvEnableSurface(dhpdev, result, record, room); },
                    DeviceCallFlag);
    return result;
}

void APIENTRY DrvDisableSurface(DHPDEV dhpdev)
{
    const SemaphoreHold hold;
    const auto real = RealFunction<PFN_DrvDisableSurface>(INDEX_DrvDisableSurface);
    if (!real)
        return;
    if (CaptureAllows(CALL_DISABLESURFACE))
        CaptureCall([&](BYTE* record, ULONG room) { return ExpandDrvDisableSurface(dhpdev, record, room); },
                    DeviceCallFlag);
    if (Screen* const screen = ScreenList::Find(dhpdev))
        DeleteScreenSurfaces(*screen);
    SoftwareCursor.Reset();
    real(dhpdev);
}

void APIENTRY DrvSynchronize(DHPDEV dhpdev, RECTL* prcl)
{
    const SemaphoreHold hold;
    Synchronize(dhpdev, prcl);
}

void APIENTRY DrvSynchronizeSurface(SURFOBJ* pso, RECTL* prcl, FLONG fl)
{
    const SemaphoreHold hold;
    if (const auto real = RealFunction<PFN_DrvSynchronizeSurface>(INDEX_DrvSynchronizeSurface)) {
        if (fl == DSS_TIMER_EVENT || fl == DSS_FLUSH_EVENT)
            real(pso, prcl, fl);
    } else if (pso) {
        Synchronize(pso->dhpdev, prcl);
    }
}

BOOL APIENTRY DrvIcmSetDeviceGammaRamp(DHPDEV dhpdev, ULONG iFormat, void* lpRamp)
{
    const SemaphoreHold hold;
    const auto real = RealFunction<PFN_DrvIcmSetDeviceGammaRamp>(INDEX_DrvIcmSetDeviceGammaRamp);
    return real ? real(dhpdev, iFormat, lpRamp) : FALSE;
}

} // namespace koru
