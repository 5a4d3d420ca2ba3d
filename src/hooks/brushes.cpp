#include "capture/records.h"
#include "chain/module_loader.h"
#include "driver/optional_entries.h"
#include "driver/record_flags.h"
#include "driver/screen_list.h"
#include "hooks/entry_points.h"
#include "hooks/hook_frame.h"

// Calls that prepare drawing: nothing appears on a screen, no zoomer is refreshed.
namespace koru {

namespace {

    ULONG Dither(DHPDEV dhpdev, ULONG iMode, ULONG rgb, ULONG* pul)
    {
        if (const auto real = RealFunction<PFN_DrvDitherColor>(INDEX_DrvDitherColor))
            return real(dhpdev, iMode, rgb, pul);
        if (LegacyDdi || !OptionalEngEntries.DitherColor)
            return 0;
        const Screen* const screen = ScreenList::Find(dhpdev); // the engine asks for its own handle
        return screen ? OptionalEngEntries.DitherColor(screen->hdev, iMode, rgb, pul) : 0;
    }

} // namespace

BOOL APIENTRY DrvRealizeBrush(BRUSHOBJ* pbo, SURFOBJ* psoTarget, SURFOBJ* psoPattern, SURFOBJ* psoMask, XLATEOBJ* pxlo,
                              ULONG iHatch)
{
    const SemaphoreHold hold;
    const TargetScreen target = FindTarget(psoTarget);
    const BOOL result =
        DrawHooked({CALL_REALIZEBRUSH, psoTarget, nullptr, nullptr, nullptr}, target, [&](SURFOBJ* on, SURFOBJ*) {
            const auto real = RealFunction<PFN_DrvRealizeBrush>(INDEX_DrvRealizeBrush);
            return real ? real(pbo, on, psoPattern, psoMask, pxlo, iHatch) : FALSE;
        });
    if (CaptureAllows(CALL_REALIZEBRUSH, psoTarget))
        CaptureCall(
            [&](BYTE* record, ULONG room) {
                return ExpandDrvRealizeBrush(pbo, psoTarget, psoPattern, psoMask, pxlo, iHatch, record, room);
            },
            FlagOf(target));
    return result;
}

ULONG APIENTRY DrvDitherColor(DHPDEV dhpdev, ULONG iMode, ULONG rgb, ULONG* pul)
{
    const SemaphoreHold hold;
    const ULONG result = Dither(dhpdev, iMode, rgb, pul);
    if (CaptureAllows(CALL_DITHERCOLOR))
        CaptureCall([&](BYTE* record,
                        ULONG room) { return ExpandDrvDitherColor(dhpdev, iMode, rgb, pul, result, record, room); },
                    DitherColorFlag);
    return result;
}

} // namespace koru
