#include "capture/records.h"
#include "hooks/call_rectangles.h"
#include "hooks/entry_points.h"
#include "hooks/hook_frame.h"
#include "magnifier/rectangle.h"
#include "magnifier/timed_update.h"
#include "platform/services.h"

namespace koru {

namespace {

    // What is shown: the clip's bounds, not cut to the text.
    const RECTL* TextBounds(const STROBJ* pstro, const CLIPOBJ* pco, const RECTL* prclOpaque)
    {
        if (pco)
            return &pco->rclBounds;
        return pstro ? &pstro->rclBkGround : prclOpaque;
    }

    // What is drawn over, for the cursor: an opaque rectangle may be larger than the text.
    RECTL TouchedByText(const STROBJ* pstro, const CLIPOBJ* pco, const RECTL* prclOpaque)
    {
        if (pco)
            return pco->rclBounds;
        return JoinRect(prclOpaque ? *prclOpaque : NoRectangle, pstro ? pstro->rclBkGround : NoRectangle);
    }

} // namespace

// Captured before it is drawn: the consumer hears of a text while the screen still shows what was
// there before.
BOOL APIENTRY DrvTextOut(SURFOBJ* pso, STROBJ* pstro, FONTOBJ* pfo, CLIPOBJ* pco, RECTL* prclExtra, RECTL* prclOpaque,
                         BRUSHOBJ* pboFore, BRUSHOBJ* pboOpaque, POINTL* pptlOrg, MIX mix)
{
    const SemaphoreHold hold;
    const TargetScreen target = FindTarget(
        pso, CALL_TEXTOUT, [&](RECTL& bounds) { return TakeAsBounds(bounds, TextBounds(pstro, pco, prclOpaque)); });
    if (CaptureAllows(CALL_TEXTOUT, pso, target.visible))
        CaptureCall(
            [&](BYTE* record, ULONG room) {
                return ExpandDrvTextOut(pso, pstro, pfo, pco, prclExtra, prclOpaque, pboFore, pboOpaque, pptlOrg, mix,
                                        record, room);
            },
            FlagOf(target));
    const RECTL touched = TouchedByText(pstro, pco, prclOpaque);
    const BOOL result = DrawHooked({CALL_TEXTOUT, pso, nullptr, &touched, nullptr}, target, [&](SURFOBJ* on, SURFOBJ*) {
        return pstro || prclOpaque
            ? EngTextOut(on, pstro, pfo, pco, prclExtra, prclOpaque, pboFore, pboOpaque, pptlOrg, mix)
            : FALSE;
    });
    UpdateIfDue(target.screen, ReadCounter());
    return result;
}

} // namespace koru
