#include "driver/device_caps.h"

#include <cstddef>

#include "driver/driver_values.h"
#include "platform/constants.h"

namespace koru {

namespace {

    constexpr BYTE NotSet = 99; // of CapsBitsPixel and CapsPlanes

    constexpr FLONG RefusedCaps = GCAPS_HORIZSTRIKE | GCAPS_VERTSTRIKE | GCAPS_OPAQUERECT | GCAPS_VECTORFONT
        | GCAPS_ASYNCCHANGE | GCAPS_ASYNCMOVE | GCAPS_DIRECTDRAW;
    static_assert(RefusedCaps == 0x5BC0);

    // Programs that the driver serves depend on exactly these figures, odd as they are.
    void RewriteDepth(GDIINFO& caps)
    {
        const BYTE bitsPixel = DriverOptions.CapsBitsPixel;
        const BYTE planes = DriverOptions.CapsPlanes;
        if (bitsPixel == 0 && planes == 0) {
            caps.cBitsPixel = 18;
        } else if (bitsPixel == NotSet || planes == NotSet) {
            caps.cPlanes *= 2;
            if (caps.cBitsPixel % 2 == 0)
                caps.cBitsPixel /= 2;
        } else {
            caps.cBitsPixel = bitsPixel;
            caps.cPlanes = planes;
        }
    }

} // namespace

void AdjustGdiInfo(ULONG* pdevcaps, ULONG cjCaps)
{
    constexpr ULONG needed = offsetof(GDIINFO, cPlanes) + sizeof(ULONG);
    if (pdevcaps && cjCaps >= needed && DriverOptions.AdjustDeviceCaps)
        RewriteDepth(*reinterpret_cast<GDIINFO*>(pdevcaps));
}

void AdjustDevInfo(DEVINFO* pdi, ULONG cjDevInfo)
{
    if (!pdi || cjDevInfo < sizeof(pdi->flGraphicsCaps))
        return;
    pdi->flGraphicsCaps &= ~RefusedCaps;
    if (DriverOptions.PointerMode == PointerForwarded)
        return;
    pdi->flGraphicsCaps |= GCAPS_PANNING;
    if (!LegacyDdi && cjDevInfo >= offsetof(DEVINFO, flGraphicsCaps2) + sizeof(FLONG))
        pdi->flGraphicsCaps2 |= GCAPS2_ALPHACURSOR;
}

} // namespace koru
