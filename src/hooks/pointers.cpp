#include "capture/records.h"
#include "chain/module_loader.h"
#include "cursor/cursor.h"
#include "driver/locked_surface.h"
#include "driver/nested_drawing.h"
#include "driver/record_flags.h"
#include "hooks/call_rectangles.h"
#include "hooks/entry_points.h"
#include "hooks/hook_frame.h"
#include "magnifier/rectangle.h"
#include "magnifier/timed_update.h"

namespace koru {

namespace {

    // Moves the pointer or changes its shape, on the bitmap behind the surface. `touched` is what the
    // software cursor wants shown.
    using PointerWork = FunctionRef<ULONG(SURFOBJ* on, RECTL& touched)>;

    RECTL PixelAt(LONG x, LONG y)
    {
        constexpr RECTL onePixel = {0, 0, 1, 1};
        const POINTL corner = {x, y};
        return RectangleAt(&corner, &onePixel);
    }

    // With HookDepth raised, and the touched place shown.
    ULONG DoPointerWork(SURFOBJ* pso, const TargetScreen& target, PointerWork work)
    {
        if (HookDepth >= DeepestNesting)
            return 0;
        LockedSurface backing;
        if (HookDepth == 0)
            backing.LockBacking(pso);
        const NestedDrawing nested;
        RECTL touched = NoRectangle;
        const ULONG result = work(backing.Or(pso), touched);
        if (target.screen && !IsEmpty(touched))
            ShowOnRealScreen(*target.screen, target.onScreen ? backing.Get() : nullptr, touched);
        return result;
    }

    // The common part of both calls. `area` decides whether the call is visible; null: it is.
    ULONG RunPointerHook(ULONG bit, SURFOBJ* pso, const RECTL* area, PointerWork work, Expand expand)
    {
        const SemaphoreHold hold;
        TargetScreen target = FindTarget(pso);
        target.visible = IsVisible(target.screen, area, bit);
        const ULONG result = DoPointerWork(pso, target, work);
        const LONGLONG now = CaptureAllows(bit, pso, target.visible) ? CaptureCall(expand, PointerFlag) : ReadCounter();
        UpdateIfDue(target.screen, now);
        return result;
    }

} // namespace

void APIENTRY DrvMovePointer(SURFOBJ* pso, LONG x, LONG y, RECTL* prcl)
{
    const RECTL pixel = PixelAt(x, y);
    const bool hiding = x < 0 || y < 0;
    RunPointerHook(
        CALL_MOVEPOINTER, pso,
        hiding     ? nullptr
            : prcl ? prcl
                   : &pixel,
        [&](SURFOBJ* on, RECTL& touched) -> ULONG {
            if (DriverOptions.PointerMode == PointerDrawnHere)
                touched = SoftwareCursor.Move(pso, x, y, prcl);
            if (DriverOptions.PointerMode == PointerForwarded)
                if (const auto real = RealFunction<PFN_DrvMovePointer>(INDEX_DrvMovePointer))
                    real(on, x, y, prcl);
            return 0;
        },
        [&](BYTE* record, ULONG room) { return ExpandDrvMovePointer(pso, x, y, prcl, record, room); });
}

ULONG APIENTRY DrvSetPointerShape(SURFOBJ* pso, SURFOBJ* psoMask, SURFOBJ* psoColor, XLATEOBJ* pxlo, LONG xHot,
                                  LONG yHot, LONG x, LONG y, RECTL* prcl, FLONG fl)
{
    const RECTL pixel = PixelAt(x, y);
    return RunPointerHook(
        CALL_SETPOINTERSHAPE, pso, &pixel,
        [&](SURFOBJ* on, RECTL& touched) -> ULONG {
            if (DriverOptions.PointerMode == PointerDrawnHere)
                return SoftwareCursor.ChangeShape(pso, psoMask, psoColor, pxlo, xHot, yHot, x, y, prcl, fl, touched);
            if (DriverOptions.PointerMode == PointerNotDrawn)
                return SPS_DECLINE;
            const auto real = RealFunction<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape);
            return real ? real(on, psoMask, psoColor, pxlo, xHot, yHot, x, y, prcl, fl) : 0;
        },
        [&](BYTE* record, ULONG room) {
            return ExpandDrvSetPointerShape(pso, psoMask, psoColor, pxlo, xHot, yHot, x, y, prcl, fl, record, room);
        });
}

} // namespace koru
