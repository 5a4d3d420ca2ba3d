#include "magnifier/render.h"

#include "magnifier/blits.h"
#include "magnifier/magnify.h"
#include "magnifier/rectangle.h"

namespace koru {

namespace {

    constexpr ROP4 Black = 0x0000, White = 0xFFFF;

    RECTL RenderPending(Zoomer& zoomer, SURFOBJ* psoBmp, SURFOBJ* psoVirtual)
    {
        if (IsEmpty(zoomer.pendingRect))
            return NoRectangle;
        const LONG margin = SmoothingMargin(zoomer);
        const RECTL source = InflateRect(zoomer.pendingRect, margin, margin);
        const RECTL place = SourceToDestination(zoomer, source);
        if (IsEmpty(place))
            return NoRectangle;
        Magnify(zoomer, psoBmp, psoVirtual, source);
        PaintFrame(zoomer, psoBmp);
        RECTL seen; // the picture may be larger than the view
        IntersectRect(seen, place, zoomer.FramedRect());
        return seen;
    }

    RECTL RenderDeferred(Zoomer& zoomer, SURFOBJ* psoBmp, SURFOBJ* psoVirtual)
    {
        RECTL result;
        if (zoomer.changed || AreEqual(zoomer.pendingRect, zoomer.originalRect)) {
            RenderWhole(zoomer, psoBmp, psoVirtual);
            result = zoomer.FramedRect();
        } else {
            result = RenderPending(zoomer, psoBmp, psoVirtual);
        }
        zoomer.pendingRect = NoRectangle;
        zoomer.pending = zoomer.changed = 0;
        return result;
    }

} // namespace

void PaintFrame(const Zoomer& zoomer, SURFOBJ* psoBmp)
{
    if (!zoomer.border || !zoomer.bordersSize)
        return;
    const RECTL& view = zoomer.zoomedRect;
    const RECTL framed = zoomer.FramedRect();
    const struct {
        ULONG side;
        RECTL strip;
    } strips[] = {
        {BorderTop, {framed.left, framed.top, framed.right, view.top}},
        {BorderLeft, {framed.left, framed.top, view.left, framed.bottom}},
        {BorderRight, {view.right, framed.top, framed.right, framed.bottom}},
        {BorderBottom, {framed.left, view.bottom, framed.right, framed.bottom}},
    };
    for (const auto& [side, strip] : strips)
        if (zoomer.border & side)
            FillCut(psoBmp, strip, zoomer.border & BorderWhite ? White : Black);
}

void RenderWhole(Zoomer& zoomer, SURFOBJ* psoBmp, SURFOBJ* psoVirtual)
{
    Magnify(zoomer, psoBmp, psoVirtual, zoomer.originalRect);
    PaintFrame(zoomer, psoBmp);
}

RECTL Render(Zoomer& zoomer, SURFOBJ* psoBmp, SURFOBJ* psoVirtual)
{
    if (zoomer.behaviour == BehaviourDeferred && !zoomer.pending && !zoomer.changed) {
        zoomer.pendingRect = NoRectangle;
        return NoRectangle;
    }
    if (!zoomer.IsOn())
        return NoRectangle;
    if (zoomer.behaviour == BehaviourDeferred)
        return RenderDeferred(zoomer, psoBmp, psoVirtual);
    if (zoomer.behaviour != BehaviourFull)
        return NoRectangle; // immediate zoomers are kept up to date by each drawing call
    RenderWhole(zoomer, psoBmp, psoVirtual); // `pending` and `changed` stay: the next update does it again
    return zoomer.FramedRect();
}

void Defer(Zoomer& zoomer, const RECTL& drawn)
{
    RECTL shown;
    if (!IntersectRect(shown, drawn, zoomer.originalRect))
        return;
    zoomer.pending = 1;
    zoomer.pendingRect = JoinRect(zoomer.pendingRect, shown);
}

LONG SmoothingMargin(const Zoomer& zoomer)
{
    static constexpr LONG margins[] = {0, 1, 1, 2}; // by improve factor
    return zoomer.improveFactor < 4 ? margins[zoomer.improveFactor] : 0;
}

} // namespace koru
