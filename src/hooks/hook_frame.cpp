#include "hooks/hook_frame.h"

#include "driver/debug_print.h"
#include "driver/locked_screens.h"
#include "driver/nested_drawing.h"
#include "driver/screen_list.h"
#include "escape/dark_zones.h"
#include "hooks/cursor_exclusion.h"
#include "magnifier/timed_update.h"
#include "magnifier/update.h"

namespace koru {

namespace {

    BOOL DrawNested(const HookedCall& call, DrawOn draw)
    {
        if (HookDepth >= DeepestNesting)
            return FALSE;
        const NestedDrawing nested;
        return draw(call.psoTrg, call.psoSrc);
    }

} // namespace

TargetScreen FindTarget(const SURFOBJ* psoTrg)
{
    TargetScreen target = {.screen = nullptr, .onScreen = false, .update = false, .visible = true, .bounds = {}};
    if (HookDepth != 0 || !psoTrg)
        return target;
    target.screen = ScreenList::Find(psoTrg->dhpdev);
    if (target.screen) {
        // The engine's temporary surfaces have no hsurf, and a Screen may have no device surface.
        const HSURF device = target.screen->hsurfDevice;
        target.onScreen = device && device == psoTrg->hsurf;
    }
    return target;
}

bool IsVisible(const Screen* screen, const RECTL* area, ULONG bit)
{
    return !screen || !area || !IsCaptureSwitchedOn(bit) || IsCoveredByDarkZones(screen->DarkZones, *area) != 0;
}

TargetScreen FindTarget(const SURFOBJ* psoTrg, ULONG bit, AskBounds askBounds)
{
    TargetScreen target = FindTarget(psoTrg);
    target.update = target.onScreen && askBounds(target.bounds);
    if (target.update)
        target.visible = IsVisible(target.screen, &target.bounds, bit);
    return target;
}

BOOL DrawHooked(const HookedCall& call, const TargetScreen& target, DrawOn draw)
{
    if (!call.psoTrg)
        return FALSE;
    if (HookDepth != 0)
        return DrawNested(call, draw);

    LockedSurface backing, source;
    const bool drawable = backing.LockBacking(call.psoTrg);
    source.LockBacking(call.psoSrc);
    const NestedDrawing nested;
    BOOL result = FALSE;
    {
        const CursorExclusion exclusion(call.psoTrg, call.prclTrg, call.psoSrc, call.prclSrc);
        if (drawable)
            result = draw(backing.Or(call.psoTrg), source.Or(call.psoSrc));
    }
    if (target.update)
        ShowOnRealScreen(*target.screen, backing.Get(), target.bounds);
    return result;
}

bool ShowOnRealScreen(Screen& screen, SURFOBJ* drawn, const RECTL& bounds)
{
    if (!drawn) {
        const LockedScreens screens(screen);
        if (screens)
            AfterDraw(screen.ZoomerList, screens.Real(), screens.Virtual(), bounds);
        return static_cast<bool>(screens);
    }
    const LockedSurface real(screen.hsurfReal);
    if (real)
        AfterDraw(screen.ZoomerList, real.Get(), drawn, bounds);
    else
        DebugPrint("Cannot lock RealScreen\n");
    return static_cast<bool>(real);
}

BOOL RunHookHeld(const HookedCall& call, AskBounds askBounds, DrawOn draw, Expand expand)
{
    const TargetScreen target = FindTarget(call.psoTrg, call.bit, askBounds);
    const BOOL result = DrawHooked(call, target, draw);
    const LONGLONG now =
        CaptureAllows(call.bit, call.psoTrg, target.visible) ? CaptureCall(expand, FlagOf(target)) : ReadCounter();
    UpdateIfDue(target.screen, now);
    return result;
}

BOOL RunHook(const HookedCall& call, AskBounds askBounds, DrawOn draw, Expand expand)
{
    const SemaphoreHold hold;
    return RunHookHeld(call, askBounds, draw, expand);
}

} // namespace koru
