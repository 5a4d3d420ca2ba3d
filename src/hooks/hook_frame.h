#pragma once

#include "capture/capture_call.h"
#include "driver/function_ref.h"
#include "driver/record_flags.h"
#include "driver/screen.h"
#include "driver/semaphore_hold.h"

// What all hooked drawing calls share: lookup, drawing on the bitmap behind a device-managed
// surface, the cursor out of the way, the touched place shown, the call captured, zoomers refreshed.
namespace koru {

constexpr ULONG NotCaptured = 0; // as a HookedCall's bit

struct HookedCall {
    ULONG bit; // of CaptureMask
    SURFOBJ* psoTrg;
    SURFOBJ* psoSrc;
    const RECTL* prclTrg; // what is drawn over and what is read, for the cursor; may be null and may be
    const RECTL* prclSrc; // filled in by the call's AskBounds
};

// The rectangle of the screen to be shown anew. False: there is none. Asked only when the target is
// the screen.
using AskBounds = FunctionRef<bool(RECTL& bounds)>;
// Draws on the given surfaces; the service's result.
using DrawOn = FunctionRef<BOOL(SURFOBJ* psoTrg, SURFOBJ* psoSrc)>;

struct TargetScreen {
    Screen* screen; // null: none, or the driver's own drawing
    bool onScreen; // the target is the device surface
    bool update; // `bounds` is to be shown
    bool visible; // not wholly in dark zones
    RECTL bounds;
};

// The whole of an ordinary hook.
BOOL RunHook(const HookedCall& call, AskBounds askBounds, DrawOn draw, Expand expand);

// The same for a caller that holds the DriverSemaphore already.
BOOL RunHookHeld(const HookedCall& call, AskBounds askBounds, DrawOn draw, Expand expand);

// Some of the area lies outside the screen's dark zones. True without a screen or an area, and while
// no call of this bit is captured: the zones are then not looked through. Asked before the drawing.
bool IsVisible(const Screen* screen, const RECTL* area, ULONG bit);

// Its steps, for hooks with an order of their own.
TargetScreen FindTarget(const SURFOBJ* psoTrg);
TargetScreen FindTarget(const SURFOBJ* psoTrg, ULONG bit, AskBounds askBounds);
BOOL DrawHooked(const HookedCall& call, const TargetScreen& target, DrawOn draw);
// `drawn` is the locked VirtualScreen, or null to have it locked. False when a screen does not lock.
bool ShowOnRealScreen(Screen& screen, SURFOBJ* drawn, const RECTL& bounds);

// The flag of a record of a drawing call.
constexpr LONG FlagOf(const TargetScreen& target)
{
    return target.onScreen ? OnScreenFlag : OffScreenFlag;
}

} // namespace koru
