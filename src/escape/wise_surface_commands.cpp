// One command for all of the overlay, told apart by a selector: a function of its own, since a kind of
// the table cannot say it.

#include "driver/locked_surface.h"
#include "driver/nested_drawing.h"
#include "driver/screen_list.h"
#include "escape/zoom_commands.h"
#include "magnifier/wise_surface.h"

namespace koru {

namespace {

    enum WiseSelector : ULONG { SelectMask = 0xFFFFFFFF, SelectDropMask = 0xFEFFFFFF };

    // Any other selector carries the raster operation in bits 16 to 23.
    ULONG LevelOf(ULONG selector)
    {
        return selector >> 16 & 0xFF;
    }

    BOOL SetMask(const ZoomCall& call, SURFOBJ* psoClient)
    {
        const ZoomerList& list = call.screen->ZoomerList;
        return WiseSurface::SetMask(list.width, list.height, list.format, call.in.Rectangle(), psoClient);
    }

    BOOL SetImage(const ZoomCall& call, SURFOBJ* psoClient)
    {
        ZoomerList& list = call.screen->ZoomerList;
        const POINTL origin = {static_cast<LONG>(call.in.a), static_cast<LONG>(call.in.b)};
        if (!WiseSurface::SetImage(list.width, list.height, list.format, LevelOf(call.in.c), origin,
                                   call.in.Rectangle(), psoClient, call.pso->hdev))
            return FALSE;
        list.recompose = 1;
        return TRUE;
    }

} // namespace

void SetWiseSurface(ZoomCall& call)
{
    const NestedDrawing nested;
    if (call.in.c == SelectDropMask) {
        WiseSurface::DropMask();
        return call.Answer(1);
    }
    LockedSurface backing;
    if (!backing.LockBacking(call.pso))
        return;
    SURFOBJ* const psoClient = backing.Or(call.pso);
    const BOOL set = call.in.c == SelectMask ? SetMask(call, psoClient) : SetImage(call, psoClient);
    call.Answer(set);
}

// Also without a Screen: a client that has lost its device still gets rid of its overlay.
void DestroyWiseSurface(ZoomCall& call)
{
    WiseSurface::Destroy();
    Screen* const screen = call.pso ? ScreenList::Find(call.pso->dhpdev) : nullptr;
    if (!screen)
        return;
    screen->ZoomerList.recompose = 1;
    call.Answer(1);
}

} // namespace koru
