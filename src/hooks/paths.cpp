#include "capture/records.h"
#include "hooks/call_rectangles.h"
#include "hooks/entry_points.h"
#include "hooks/hook_frame.h"
#include "hooks/line_width.h"
#include "magnifier/rectangle.h"
#include "platform/services.h"

namespace koru {

namespace {

    // Where a path call draws. With a clip, its bounds serve for everything. Without one, the path's own
    // bounds are shown as they come, in 28.4 units taken for pixels: a larger place than need be, which
    // clients have built on. The cursor gets true pixels, or it would be painted over.
    class PathPlace {
    public:
        PathPlace(PATHOBJ* ppo, const CLIPOBJ* pco, const LINEATTRS* plineattrs)
            : ppo_(ppo)
            , pco_(pco)
            , reach_(ReachOfPen(plineattrs))
            , touched_(pco ? pco->rclBounds : NoRectangle)
        {
        }

        bool Bounds(RECTL& bounds)
        {
            if (pco_ || !ppo_)
                return TakeAsBounds(bounds, ClipBounds(pco_));
            RECTFX fixed;
            PATHOBJ_vGetBounds(ppo_, &fixed);
            touched_ = InflateRect(PixelsAround(fixed), reach_, reach_);
            bounds = {fixed.xLeft, fixed.yTop, fixed.xRight, fixed.yBottom};
            return true;
        }

        // For the cursor. Without a clip, known once Bounds was asked for, that is, on the screen.
        const RECTL* Touched() const { return &touched_; }

    private:
        PATHOBJ* ppo_;
        const CLIPOBJ* pco_;
        LONG reach_;
        RECTL touched_;
    };

} // namespace

BOOL APIENTRY DrvStrokePath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo, BRUSHOBJ* pbo,
                            POINTL* pptlBrushOrg, LINEATTRS* plineattrs, MIX mix)
{
    PathPlace place(ppo, pco, plineattrs);
    return RunHook(
        {CALL_STROKEPATH, pso, nullptr, place.Touched(), nullptr}, [&](RECTL& bounds) { return place.Bounds(bounds); },
        [&](SURFOBJ* on, SURFOBJ*) {
            return ppo && plineattrs ? EngStrokePath(on, ppo, pco, pxo, pbo, pptlBrushOrg, plineattrs, mix) : FALSE;
        },
        [&](BYTE* record, ULONG room) {
            return ExpandDrvStrokePath(pso, ppo, pco, pxo, pbo, pptlBrushOrg, plineattrs, mix, record, room);
        });
}

// Switched on and off together with DrvStrokePath, though its records are of a type of their own.
BOOL APIENTRY DrvFillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg, MIX mix,
                          FLONG flOptions)
{
    PathPlace place(ppo, pco, nullptr);
    return RunHook(
        {CALL_STROKEPATH, pso, nullptr, place.Touched(), nullptr}, [&](RECTL& bounds) { return place.Bounds(bounds); },
        [&](SURFOBJ* on, SURFOBJ*) {
            return ppo ? EngFillPath(on, ppo, pco, pbo, pptlBrushOrg, mix, flOptions) : FALSE;
        },
        [&](BYTE* record, ULONG room) {
            return ExpandDrvFillPath(pso, ppo, pco, pbo, pptlBrushOrg, mix, flOptions, record, room);
        });
}

BOOL APIENTRY DrvStrokeAndFillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo, BRUSHOBJ* pboStroke,
                                   LINEATTRS* plineattrs, BRUSHOBJ* pboFill, POINTL* pptlBrushOrg, MIX mixFill,
                                   FLONG flOptions)
{
    PathPlace place(ppo, pco, plineattrs);
    return RunHook(
        {CALL_STROKEANDFILLPATH, pso, nullptr, place.Touched(), nullptr},
        [&](RECTL& bounds) { return place.Bounds(bounds); },
        [&](SURFOBJ* on, SURFOBJ*) {
            return ppo && plineattrs ? EngStrokeAndFillPath(on, ppo, pco, pxo, pboStroke, plineattrs, pboFill,
                                                            pptlBrushOrg, mixFill, flOptions)
                                     : FALSE;
        },
        [&](BYTE* record, ULONG room) {
            return ExpandDrvStrokeAndFillPath(pso, ppo, pco, pxo, pboStroke, plineattrs, pboFill, pptlBrushOrg, mixFill,
                                              flOptions, record, room);
        });
}

} // namespace koru
