#include "driver/locked_surface.h"
#include "magnifier/blits.h"
#include "magnifier/magnify.h"
#include "magnifier/put_on_screen.h"
#include "magnifier/rectangle.h"
#include "magnifier/render.h"
#include "magnifier/update.h"

namespace koru {

namespace {

    struct Distance {
        LONG x, y;
    };

    LONG Magnitude(LONG value)
    {
        return value < 0 ? -value : value;
    }

    LONG Smaller(LONG a, LONG b)
    {
        return a < b ? a : b;
    }

    RECTL Moved(const RECTL& r, const Distance& by)
    {
        return {r.left + by.x, r.top + by.y, r.right + by.x, r.bottom + by.y};
    }

    void MoveBand(SURFOBJ* psoBmp, const RECTL& band, const Distance& by)
    {
        CopyBitsCut(psoBmp, psoBmp, band, {band.left - by.x, band.top - by.y});
    }

    // Moves pixels to `target` from `by` away, in bands no larger than the distance and in an order
    // that never writes what is still to be read.
    void MoveInBands(SURFOBJ* psoBmp, const RECTL& target, const Distance& by)
    {
        const LONG step = Magnitude(by.y ? by.y : by.x);
        RECTL band = target;
        if (by.y > 0) {
            for (; band.bottom > target.top; band.bottom = band.top) {
                band.top = band.bottom - Smaller(step, band.bottom - target.top);
                MoveBand(psoBmp, band, by);
            }
        } else if (by.y < 0) {
            for (; band.top < target.bottom; band.top = band.bottom) {
                band.bottom = band.top + Smaller(step, target.bottom - band.top);
                MoveBand(psoBmp, band, by);
            }
        } else if (by.x > 0) {
            for (; band.right > target.left; band.right = band.left) {
                band.left = band.right - Smaller(step, band.right - target.left);
                MoveBand(psoBmp, band, by);
            }
        } else {
            for (; band.left < target.right; band.left = band.right) {
                band.right = band.left + Smaller(step, target.right - band.left);
                MoveBand(psoBmp, band, by);
            }
        }
    }

    void MagnifyUncovered(Zoomer& zoomer, SURFOBJ* psoBmp, SURFOBJ* psoVirtual, const RECTL& strip)
    {
        const RECTL source = DestinationToSource(zoomer, strip);
        const LONG margin = SmoothingMargin(zoomer); // the seam is smoothed anew
        if (!IsEmpty(source))
            Magnify(zoomer, psoBmp, psoVirtual, InflateRect(source, margin, margin));
    }

    void MoveWithin(Zoomer& zoomer, SURFOBJ* psoBmp, SURFOBJ* psoVirtual, const RECTL& view, const Distance& by)
    {
        RECTL kept;
        IntersectRect(kept, view, Moved(view, by));
        MoveInBands(psoBmp, kept, by);
        if (by.y > 0)
            MagnifyUncovered(zoomer, psoBmp, psoVirtual, {view.left, view.top, view.right, kept.top});
        else if (by.y < 0)
            MagnifyUncovered(zoomer, psoBmp, psoVirtual, {view.left, kept.bottom, view.right, view.bottom});
        if (by.x > 0)
            MagnifyUncovered(zoomer, psoBmp, psoVirtual, {view.left, kept.top, kept.left, kept.bottom});
        else if (by.x < 0)
            MagnifyUncovered(zoomer, psoBmp, psoVirtual, {kept.right, kept.top, view.right, kept.bottom});
    }

    // Follows content that moved by dx, dy under originalRect.
    void MoveContent(Zoomer& zoomer, SURFOBJ* psoBmp, SURFOBJ* psoVirtual, LONG dx, LONG dy)
    {
        RECTL view;
        if (!IntersectRect(view, zoomer.destRect, zoomer.zoomedRect)
            || !IntersectRect(view, view, BoundsOf(psoBmp->sizlBitmap)))
            return;
        const LONGLONG x = LONGLONG{dx} * zoomer.xFactor, y = LONGLONG{dy} * zoomer.yFactor;
        const LONG width = view.right - view.left, height = view.bottom - view.top;
        if (x <= -width || x >= width || y <= -height || y >= height)
            Magnify(zoomer, psoBmp, psoVirtual, zoomer.originalRect);
        else
            MoveWithin(zoomer, psoBmp, psoVirtual, view, {static_cast<LONG>(x), static_cast<LONG>(y)});
    }

} // namespace

BOOL Scroll(ZoomerList& list, ULONG id, LONG dx, LONG dy, SURFOBJ* psoReal, SURFOBJ* psoVirtual)
{
    Zoomer* const zoomer = list.Find(id);
    const LockedSurface psoBmp(zoomer ? zoomer->hBmp : nullptr);
    if (!psoBmp)
        return FALSE;
    if ((dx == 0 && dy == 0) || !zoomer->IsOn())
        return TRUE;
    if (zoomer->pending || zoomer->changed)
        Render(*zoomer, psoBmp.Get(), psoVirtual);
    if (zoomer->behaviour != BehaviourFull) // else it has just been rendered whole
        MoveContent(*zoomer, psoBmp.Get(), psoVirtual, dx, dy);
    PaintFrame(*zoomer, psoBmp.Get());
    PutFramed(list, *zoomer, psoReal, psoVirtual, psoBmp.Get());
    return TRUE;
}

} // namespace koru
