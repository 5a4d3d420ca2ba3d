#include "driver/locked_surface.h"
#include "magnifier/put_on_screen.h"
#include "magnifier/rectangle.h"
#include "magnifier/render.h"
#include "magnifier/update.h"

namespace koru {

namespace {

    struct Drawing {
        ZoomerList& list;
        SURFOBJ* psoReal;
        SURFOBJ* psoVirtual;

        BOOL Show(const RECTL& rectangle) const
        {
            return ShowOriginal(list, list.hBmpAux, psoReal, psoVirtual, rectangle);
        }
    };

    // An immediate zoomer shows what was drawn under it at once. Its answer, or the one so far.
    BOOL ShowImmediately(const Drawing& drawing, Zoomer& zoomer, const RECTL& drawn, BOOL answer)
    {
        if (zoomer.behaviour != BehaviourImmediate || !DoMeet(drawn, zoomer.originalRect))
            return answer;
        const LockedSurface psoBmp(zoomer.hBmp);
        if (!psoBmp)
            return answer;
        RenderWhole(zoomer, psoBmp.Get(), drawing.psoVirtual);
        return PutOnScreen(zoomer, drawing.psoReal, psoBmp.Get(), zoomer.FramedRect());
    }

    // With one zoomer only the first piece beside it is brought to the screen.
    BOOL ShowRoundOne(const Drawing& drawing, Zoomer& zoomer, const RECTL& drawn)
    {
        if (zoomer.behaviour == BehaviourDeferred)
            Defer(zoomer, drawn);
        const BOOL answer = ShowImmediately(drawing, zoomer, drawn, TRUE);
        if (zoomer.mode == ModeExclusive)
            return TRUE;
        RECTL pieces[4];
        const ULONG count = SubtractRect(zoomer.FramedRect(), drawn, pieces);
        for (ULONG i = 0; i < count; ++i) {
            if (IsEmpty(pieces[i]))
                continue;
            drawing.Show(pieces[i]);
            return answer;
        }
        return TRUE;
    }

    // What a zoomer on the walk passes on to those above it.
    void CutAtZoomer(Zoomer& zoomer, const RECTL& drawn)
    {
        zoomer.walkNext = 0;
        zoomer.walkPieceCount =
            zoomer.mode == ModeExclusive ? 0 : SubtractRect(zoomer.FramedRect(), drawn, zoomer.walkPieces);
    }

    // The next piece still to be passed on, from the topmost zoomer that has one; the walk goes on there.
    const RECTL* NextPiece(Zoomer*& level)
    {
        while (level) {
            while (level->walkNext < level->walkPieceCount) {
                const RECTL& piece = level->walkPieces[level->walkNext++];
                if (!IsEmpty(piece))
                    return &piece;
            }
            level = level->walkBelow;
        }
        return nullptr;
    }

    // Passes the rectangle up the stack, each zoomer cutting its frame out. The depth is the client's,
    // so the walk keeps its state in the zoomers instead of on the kernel's stack.
    BOOL ShowThroughStack(const Drawing& drawing, const RECTL& drawn)
    {
        BOOL answer = TRUE;
        Zoomer* level = nullptr;
        const RECTL* piece = &drawn;
        do {
            Zoomer* zoomer = level ? level->next : drawing.list.head;
            while (zoomer && !zoomer->IsOn())
                zoomer = zoomer->next;
            if (zoomer) {
                ShowImmediately(drawing, *zoomer, *piece, TRUE);
                CutAtZoomer(*zoomer, *piece);
                zoomer->walkBelow = level;
                level = zoomer;
                answer = TRUE; // holds if no piece is left
            } else {
                answer = drawing.Show(*piece);
            }
            piece = NextPiece(level);
        } while (piece);
        return answer;
    }

} // namespace

BOOL AfterDraw(ZoomerList& list, SURFOBJ* psoReal, SURFOBJ* psoVirtual, const RECTL& drawn)
{
    const Drawing drawing = {list, psoReal, psoVirtual};
    const ULONG active = list.CountActive();
    if (active == 0)
        return drawing.Show(drawn);

    if (active == 1) {
        Zoomer* zoomer = list.head;
        while (!zoomer->IsOn())
            zoomer = zoomer->next;
        return ShowRoundOne(drawing, *zoomer, drawn);
    }

    const BOOL answer = ShowThroughStack(drawing, drawn);
    for (Zoomer* zoomer = list.head; zoomer; zoomer = zoomer->next)
        if (zoomer->IsOn() && zoomer->behaviour == BehaviourDeferred)
            Defer(*zoomer, drawn);
    return answer;
}

} // namespace koru
