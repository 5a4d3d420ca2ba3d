#include "capture/records.h"
#include "cursor/cursor.h"
#include "driver/screen_list.h"
#include "hooks/call_rectangles.h"
#include "hooks/entry_points.h"
#include "hooks/hook_frame.h"
#include "hooks/needed.h"
#include "platform/services.h"

namespace koru {

namespace {

    constexpr LONG PointerCopyMargin = 8; // pixels that the engine saves around a pointer

    bool HasPointerSize(const SURFOBJ& source)
    {
        const SIZEL pointer = SoftwareCursor.Size();
        if (LegacyDdi)
            return source.sizlBitmap.cx == pointer.cx && source.sizlBitmap.cy == pointer.cy && !source.dhsurf
                && !source.dhpdev && !source.hdev;
        return source.sizlBitmap.cx <= pointer.cx + PointerCopyMargin
            && source.sizlBitmap.cy <= pointer.cy + PointerCopyMargin;
    }

    // The engine draws a pointer that nobody else draws by copying it, and what lies under it, to the
    // screen. Clients do not want to hear of it. The cursor takes no shape in this mode, so that the
    // pointer counts as 0 x 0 pixels: larger copies are reported, and clients rely on that.
    bool IsPointerCopy(const SURFOBJ* psoDest, const SURFOBJ* psoSrc)
    {
        return DriverOptions.PointerMode == PointerNotDrawn && DriverOptions.FilterPointerCopies && psoDest && psoSrc
            && psoDest->iType == STYPE_DEVICE && ScreenList::IsScreenDevice(psoDest->dhpdev, psoDest->hdev)
            && psoSrc->iType == STYPE_BITMAP && HasPointerSize(*psoSrc);
    }

} // namespace

BOOL APIENTRY DrvBitBlt(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                        RECTL* prclTrg, POINTL* pptlSrc, POINTL* pptlMask, BRUSHOBJ* pbo, POINTL* pptlBrush, ROP4 rop4)
{
    const RECTL rclSrc = RectangleAt(pptlSrc, prclTrg);
    return RunHook(
        {CALL_BITBLT, psoTrg, psoSrc, prclTrg, &rclSrc}, [&](RECTL& bounds) { return CutToClip(bounds, prclTrg, pco); },
        [&](SURFOBJ* on, SURFOBJ* from) {
            const bool whole =
                prclTrg && (from || !RopReadsSource(rop4)) && HasPlace(from, pptlSrc) && HasPlace(psoMask, pptlMask);
            return whole ? EngBitBlt(on, from, psoMask, pco, pxlo, prclTrg, pptlSrc, pptlMask, pbo, pptlBrush, rop4)
                         : FALSE;
        },
        [&](BYTE* record, ULONG room) {
            return ExpandDrvBitBlt(psoTrg, psoSrc, psoMask, pco, pxlo, prclTrg, pptlSrc, pptlMask, pbo, pptlBrush, rop4,
                                   record, room);
        });
}

BOOL APIENTRY DrvCopyBits(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest,
                          POINTL* pptlSrc)
{
    const SemaphoreHold hold;
    const ULONG bit = IsPointerCopy(psoDest, psoSrc) ? NotCaptured : ULONG{CALL_COPYBITS};
    const RECTL rclSrc = RectangleAt(pptlSrc, prclDest);
    return RunHookHeld(
        {bit, psoDest, psoSrc, prclDest, &rclSrc}, [&](RECTL& bounds) { return CutToClip(bounds, prclDest, pco); },
        [&](SURFOBJ* on, SURFOBJ* from) {
            return from && prclDest && pptlSrc ? EngCopyBits(on, from, pco, pxlo, prclDest, pptlSrc) : FALSE;
        },
        [&](BYTE* record, ULONG room) {
            return ExpandDrvCopyBits(psoDest, psoSrc, pco, pxlo, prclDest, pptlSrc, record, room);
        });
}

} // namespace koru
