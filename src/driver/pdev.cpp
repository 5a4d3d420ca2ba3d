#include "capture/capture_call.h"
#include "capture/records.h"
#include "chain/module_loader.h"
#include "driver/debug_print.h"
#include "driver/device_calls.h"
#include "driver/device_caps.h"
#include "driver/pool.h"
#include "driver/record_flags.h"
#include "driver/screen_list.h"
#include "driver/semaphore_hold.h"
#include "escape/color_pair_list.h"

namespace koru {

namespace {

    // The Screen's record goes; what it still owns goes before it. Backing bitmaps stay: the engine
    // deletes its device bitmaps by itself. So do screen surfaces that were never disabled.
    void DropScreen(Screen* screen)
    {
        if (!screen)
            return;
        screen->DarkZones.Clear();
        FreeToPool(screen->DeviceBitmaps);
        screen->ZoomerList.Release();
        ScreenList::Remove(screen);
    }

} // namespace

DHPDEV APIENTRY DrvEnablePDEV(DEVMODEW* pdm, WCHAR* pwszLogAddress, ULONG cPat, HSURF* phsurfPatterns, ULONG cjCaps,
                              ULONG* pdevcaps, ULONG cjDevInfo, DEVINFO* pdi, HDEV hdev, WCHAR* pwszDeviceName,
                              HANDLE hDriver)
{
    DHPDEV dhpdev = nullptr;
    {
        const SemaphoreHold hold;
        DebugPrint("DrvEnablePDEV called.\n");
        if (const auto real = RealFunction<PFN_DrvEnablePDEV>(INDEX_DrvEnablePDEV))
            dhpdev = real(pdm, pwszLogAddress, cPat, phsurfPatterns, cjCaps, pdevcaps, cjDevInfo, pdi, hdev,
                          pwszDeviceName, hDriver);
        if (dhpdev) {
            RequestedColourDepth = pdm ? pdm->dmBitsPerPel : 0;
            ColorPairList::Prepare(RequestedColourDepth);
            AdjustGdiInfo(pdevcaps, cjCaps);
            AdjustDevInfo(pdi, cjDevInfo);
            if (ScreenList::Add(dhpdev) && CaptureAllows(CALL_ENABLEPDEV))
                CaptureCall(
                    [&](BYTE* record, ULONG room) {
                        return ExpandDrvEnablePDEV(pdm, pwszLogAddress, cPat, phsurfPatterns, cjCaps, pdevcaps,
                                                   cjDevInfo, pdi, hdev, pwszDeviceName, hDriver, dhpdev, record, room);
                    },
                    DeviceCallFlag);
        }
    }
    DebugPrint("DrvEnablePDEV is ended \n");
    return dhpdev;
}

void APIENTRY DrvCompletePDEV(DHPDEV dhpdev, HDEV hdev)
{
    const SemaphoreHold hold;
    const auto real = RealFunction<PFN_DrvCompletePDEV>(INDEX_DrvCompletePDEV);
    if (!real)
        return;
    if (Screen* const screen = ScreenList::Find(dhpdev))
        screen->hdev = hdev;
    else
        DebugPrint("CompletePDEV: Fatal error: dhpdev not found.\n");
    if (CaptureAllows(CALL_COMPLETEPDEV))
        CaptureCall([&](BYTE* record, ULONG room) { return ExpandDrvCompletePDEV(dhpdev, hdev, record, room); },
                    DeviceCallFlag);
    real(dhpdev, hdev);
}

void APIENTRY DrvDisablePDEV(DHPDEV dhpdev)
{
    const SemaphoreHold hold;
    const auto real = RealFunction<PFN_DrvDisablePDEV>(INDEX_DrvDisablePDEV);
    if (!real)
        return;
    DropScreen(ScreenList::Find(dhpdev));
    if (CaptureAllows(CALL_DISABLEPDEV))
        CaptureCall([&](BYTE* record, ULONG room) { return ExpandDrvDisablePDEV(dhpdev, record, room); },
                    DeviceCallFlag);
    real(dhpdev);
}

BOOL APIENTRY DrvAssertMode(DHPDEV dhpdev, BOOL bEnable)
{
    const SemaphoreHold hold;
    const auto real = RealFunction<PFN_DrvAssertMode>(INDEX_DrvAssertMode);
    if (!real)
        return FALSE;
    if (CaptureAllows(CALL_ASSERTMODE))
        CaptureCall([&](BYTE* record, ULONG room) { return ExpandDrvAssertMode(dhpdev, bEnable, record, room); },
                    DeviceCallFlag);
    return real(dhpdev, bEnable);
}

ULONG APIENTRY DrvGetModes(HANDLE hDriver, ULONG cjSize, DEVMODEW* pdm)
{
    const SemaphoreHold hold;
    const auto real = RealFunction<PFN_DrvGetModes>(INDEX_DrvGetModes);
    const ULONG result = real ? real(hDriver, cjSize, pdm) : 0;
    if (CaptureAllows(CALL_GETMODES))
        CaptureCall([&](BYTE* record, ULONG room) { return ExpandDrvGetModes(hDriver, cjSize, pdm, record, room); },
                    GetModesFlag);
    return result;
}

} // namespace koru
