#include "magnifier/put_on_screen.h"

#include "driver/locked_surface.h"
#include "magnifier/blits.h"
#include "magnifier/rectangle.h"
#include "magnifier/update.h"
#include "magnifier/wise_surface.h"

namespace koru {

namespace {

    constexpr ROP4 InvertedSource = 0x3333;

    // From one bitmap to the same place of another, in the zoomer's style.
    void CopyInStyle(const Zoomer& zoomer, SURFOBJ* psoTrg, SURFOBJ* psoBmp, const RECTL& rectangle)
    {
        if (zoomer.style == StyleInverted)
            BitBltCut(psoTrg, psoBmp, rectangle, CornerOf(rectangle), InvertedSource);
        else
            CopyBitsCut(psoTrg, psoBmp, rectangle, CornerOf(rectangle));
    }

    void Compose(const ZoomerList& list, SURFOBJ* psoCompose, SURFOBJ* psoVirtual, const RECTL& rectangle)
    {
        CopyBitsCut(psoCompose, psoVirtual, rectangle, CornerOf(rectangle));
        for (const Zoomer* zoomer = list.head; zoomer; zoomer = zoomer->next) {
            RECTL overlap;
            if (!zoomer->IsOn() || !IntersectRect(overlap, zoomer->FramedRect(), rectangle))
                continue;
            const LockedSurface psoBmp(zoomer->hBmp);
            if (psoBmp)
                CopyInStyle(*zoomer, psoCompose, psoBmp.Get(), overlap);
        }
    }

} // namespace

RECTL ScreenRect(const ZoomerList& list)
{
    return {0, 0, static_cast<LONG>(list.width), static_cast<LONG>(list.height)};
}

BOOL PutOnScreen(const Zoomer& zoomer, SURFOBJ* psoReal, SURFOBJ* psoBmp, const RECTL& rectangle)
{
    const RECTL screen = {0, 0, static_cast<LONG>(zoomer.screenWidth), static_cast<LONG>(zoomer.screenHeight)};
    RECTL visible;
    if (!IntersectRect(visible, rectangle, screen))
        return TRUE;
    LockedSurface psoAux;
    if ((zoomer.style == StyleInverted || WiseSurface::IsActive()) && psoAux.Lock(zoomer.hBmpAux)) {
        CopyInStyle(zoomer, psoAux.Get(), psoBmp, visible);
        return WiseSurface::MergeAndCopy(psoReal, psoAux.Get(), visible);
    }
    if (WiseSurface::IsActive()) // merging would burn the overlay into the zoomer's own picture
        return WiseSurface::CopyUnmerged(psoReal, psoBmp, visible);
    return WiseSurface::MergeAndCopy(psoReal, psoBmp, visible);
}

bool IsCoveredAbove(const Zoomer& zoomer, const RECTL& rectangle)
{
    for (const Zoomer* above = zoomer.next; above; above = above->next)
        if (above->IsOn() && DoMeet(above->FramedRect(), rectangle))
            return true;
    return false;
}

bool ComposeAndPut(ZoomerList& list, SURFOBJ* psoReal, SURFOBJ* psoVirtual, const RECTL& rectangle)
{
    const LockedSurface psoCompose(list.hBmpStretchDest);
    if (!psoCompose)
        return false;
    RECTL visible;
    if (IntersectRect(visible, rectangle, ScreenRect(list))) {
        Compose(list, psoCompose.Get(), psoVirtual, visible);
        WiseSurface::MergeAndCopy(psoReal, psoCompose.Get(), visible);
    }
    return true;
}

void PutFramed(ZoomerList& list, const Zoomer& zoomer, SURFOBJ* psoReal, SURFOBJ* psoVirtual, SURFOBJ* psoBmp)
{
    const RECTL framed = zoomer.FramedRect();
    if (IsCoveredAbove(zoomer, framed))
        ComposeAndPut(list, psoReal, psoVirtual, framed);
    else
        PutOnScreen(zoomer, psoReal, psoBmp, framed);
}

BOOL ShowOriginal(ZoomerList& list, HSURF workBitmap, SURFOBJ* psoReal, SURFOBJ* psoVirtual, const RECTL& rectangle)
{
    const LockedSurface psoWork(workBitmap);
    if (!psoWork)
        return FALSE;
    RECTL visible;
    if (!IntersectRect(visible, rectangle, ScreenRect(list)))
        return TRUE;
    return WiseSurface::CopyImage(psoReal, psoVirtual, psoWork.Get(), visible);
}

} // namespace koru
