#include "capture/records.h"
#include "hooks/call_rectangles.h"
#include "hooks/entry_points.h"
#include "hooks/hook_frame.h"
#include "platform/services.h"

namespace koru {

BOOL APIENTRY DrvPaint(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg, MIX mix)
{
    return RunHook(
        {CALL_PAINT, pso, nullptr, ClipBounds(pco), nullptr},
        [&](RECTL& bounds) { return TakeAsBounds(bounds, ClipBounds(pco)); },
        [&](SURFOBJ* on, SURFOBJ*) { return pco ? EngPaint(on, pco, pbo, pptlBrushOrg, mix) : FALSE; },
        [&](BYTE* record, ULONG room) { return ExpandDrvPaint(pso, pco, pbo, pptlBrushOrg, mix, record, room); });
}

BOOL APIENTRY DrvLineTo(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, LONG x1, LONG y1, LONG x2, LONG y2,
                        RECTL* prclBounds, MIX mix)
{
    return RunHook(
        {CALL_LINETO, pso, nullptr, prclBounds, nullptr},
        [&](RECTL& bounds) { return CutToClip(bounds, prclBounds, pco); },
        [&](SURFOBJ* on, SURFOBJ*) {
            return prclBounds ? EngLineTo(on, pco, pbo, x1, y1, x2, y2, prclBounds, mix) : FALSE;
        },
        [&](BYTE* record, ULONG room) {
            return ExpandDrvLineTo(pso, pco, pbo, x1, y1, x2, y2, prclBounds, mix, record, room);
        });
}

} // namespace koru
