#include "magnifier/update.h"

#include "driver/locked_surface.h"
#include "magnifier/magnify.h"
#include "magnifier/put_on_screen.h"
#include "magnifier/rectangle.h"
#include "magnifier/render.h"

namespace koru {

constinit LONG ZoomUpdateInterval = 50;
constinit ULONG ZoomUpdateCount = 0;
constinit LONGLONG lastUpdateTime = 0;

namespace {

    bool HasOverlap(const ZoomerList& list)
    {
        for (const Zoomer* zoomer = list.head; zoomer; zoomer = zoomer->next)
            for (const Zoomer* above = zoomer->next; above && zoomer->IsOn(); above = above->next)
                if (above->IsOn() && DoMeet(zoomer->zoomedRect, above->zoomedRect))
                    return true;
        return false;
    }

    RECTL WithBorders(const Zoomer& zoomer, const RECTL& view)
    {
        return zoomer.border ? InflateRect(view, zoomer.bordersSize, zoomer.bordersSize) : view;
    }

    struct Updating {
        ZoomerList& list;
        SURFOBJ* psoReal;
        SURFOBJ* psoVirtual;
        bool overlap;
        RECTL compose; // of overlapping zoomers, put together at the end
    };

    // Whether the rectangle waits for the composition at the end instead of being put now.
    bool IsLeftToComposition(Updating& updating, const Zoomer& zoomer, const RECTL& rectangle)
    {
        if (!updating.overlap || !IsCoveredAbove(zoomer, rectangle))
            return false;
        updating.compose = JoinRect(updating.compose, rectangle);
        return true;
    }

    void UpdateZoomer(Updating& updating, Zoomer& zoomer)
    {
        const LockedSurface psoBmp(zoomer.hBmp);
        if (!psoBmp)
            return;
        const RECTL previous = zoomer.previousZoomedRect; // rendering overwrites it
        const bool hasMoved = zoomer.mode == ModeMoving && !AreEqual(previous, zoomer.zoomedRect);
        const RECTL rendered = Render(zoomer, psoBmp.Get(), updating.psoVirtual);
        if (!hasMoved) {
            if (!IsLeftToComposition(updating, zoomer, rendered))
                PutOnScreen(zoomer, updating.psoReal, psoBmp.Get(), rendered);
            return;
        }
        const RECTL both = UnionRect(WithBorders(zoomer, previous), WithBorders(zoomer, zoomer.zoomedRect));
        RECTL touched;
        IntersectRect(touched, both, ScreenRect(updating.list));
        if (!IsLeftToComposition(updating, zoomer, touched))
            ComposeAndPut(updating.list, updating.psoReal, updating.psoVirtual, touched);
    }

    void UpdateZoomers(ZoomerList& list, SURFOBJ* psoReal, SURFOBJ* psoVirtual)
    {
        if (list.recompose && ComposeAndPut(list, psoReal, psoVirtual, ScreenRect(list)))
            list.recompose = 0;
        Updating updating = {list, psoReal, psoVirtual, HasOverlap(list), NoRectangle};
        for (Zoomer* zoomer = list.head; zoomer; zoomer = zoomer->next)
            if (zoomer->IsOn() && (zoomer->pending || zoomer->changed))
                UpdateZoomer(updating, *zoomer);
        if (!IsEmpty(updating.compose))
            ComposeAndPut(list, psoReal, psoVirtual, updating.compose);
    }

} // namespace

void Update(ZoomerList& list, SURFOBJ* psoReal, SURFOBJ* psoVirtual)
{
    ++ZoomUpdateCount;
    if (list.head)
        UpdateZoomers(list, psoReal, psoVirtual);
    EngQueryPerformanceCounter(&lastUpdateTime);
}

BOOL Refresh(ZoomerList& list, ULONG id, SURFOBJ* psoReal, SURFOBJ* psoVirtual)
{
    Zoomer* const zoomer = list.Find(id);
    const LockedSurface psoBmp(zoomer ? zoomer->hBmp : nullptr);
    if (!psoBmp)
        return FALSE;
    zoomer->changed = 1;
    if (!zoomer->IsOn())
        return TRUE;
    // Render leaves an immediate zoomer alone, whose bitmap may never have been drawn on.
    if (zoomer->behaviour == BehaviourDeferred)
        Render(*zoomer, psoBmp.Get(), psoVirtual);
    else
        RenderWhole(*zoomer, psoBmp.Get(), psoVirtual);
    PutFramed(list, *zoomer, psoReal, psoVirtual, psoBmp.Get());
    return TRUE;
}

BOOL ImproveImage(ZoomerList& list, ULONG id, SURFOBJ* psoReal, SURFOBJ* psoVirtual)
{
    const Zoomer* const zoomer = list.Find(id);
    const LockedSurface psoBmp(zoomer ? zoomer->hBmp : nullptr);
    if (!psoBmp)
        return FALSE;
    if (!zoomer->IsOn())
        return TRUE;
    if (zoomer->improveFactor != 0) {
        SmoothWhole(*zoomer, psoBmp.Get(), psoVirtual);
        PaintFrame(*zoomer, psoBmp.Get()); // the picture may be larger than the view
    }
    PutFramed(list, *zoomer, psoReal, psoVirtual, psoBmp.Get());
    return TRUE;
}

} // namespace koru
