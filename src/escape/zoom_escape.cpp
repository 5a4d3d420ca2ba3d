#include "driver/debug_print.h"
#include "driver/nested_drawing.h"
#include "driver/screen_list.h"
#include "escape/command_table.h"
#include "escape/escape_call.h"
#include "escape/zoom_commands.h"
#include "magnifier/update.h"

namespace koru {

namespace {

    constexpr ULONG Refused = 0;
    constexpr ULONG Done = 1;
    constexpr ULONG MinimumOutput = 16;

    template<void (Zoomer::*Set)(ULONG)> void SetValue(ZoomCall& call)
    {
        (call.zoomer->*Set)(call.in.v[0]);
        call.Answer(1);
    }

    template<auto Field> void GetValue(ZoomCall& call)
    {
        call.Answer(ULONG{call.zoomer->*Field});
    }

    template<void (Zoomer::*Set)(const RECTL&)> void SetRectangle(ZoomCall& call)
    {
        (call.zoomer->*Set)(call.in.Rectangle());
        call.Answer(1);
    }

    template<RECTL Zoomer::*Field> void GetRectangle(ZoomCall& call)
    {
        call.Answer(call.zoomer->*Field);
    }

    void CreateZoomer(ZoomCall& call)
    {
        call.Answer(NumberOf(call.screen->ZoomerList.Create()));
    }

    void RemoveZoomer(ZoomCall& call)
    {
        call.screen->ZoomerList.Remove(call.in.id);
        call.Answer(1);
    }

    void FlushZoomers(ZoomCall& call)
    {
        call.screen->ZoomerList.Flush();
        call.Answer(1);
    }

    void UpdateZoomers(ZoomCall& call)
    {
        Update(call.screen->ZoomerList, call.screens->Real(), call.screens->Virtual());
        call.Answer(1);
    }

    void GetZoomerCount(ZoomCall& call)
    {
        call.Answer(call.screen->ZoomerList.count);
    }

    void SetZOrder(ZoomCall& call)
    {
        call.screen->ZoomerList.SetZOrder(call.in.id, static_cast<LONG>(call.in.v[0]));
        call.Answer(1);
    }

    void GetZOrder(ZoomCall& call)
    {
        call.Answer(call.screen->ZoomerList.GetZOrder(call.in.id));
    }

    void ScrollZoomer(ZoomCall& call)
    {
        const auto dx = static_cast<LONG>(call.in.v[0]);
        const auto dy = static_cast<LONG>(call.in.v[1]);
        call.Answer(Scroll(call.screen->ZoomerList, call.in.id, dx, dy, call.screens->Real(), call.screens->Virtual()));
    }

    template<BOOL (*Render)(ZoomerList&, ULONG, SURFOBJ*, SURFOBJ*)> void RenderZoomer(ZoomCall& call)
    {
        call.Answer(Render(call.screen->ZoomerList, call.in.id, call.screens->Real(), call.screens->Virtual()));
    }

    void ShowOriginalImage(ZoomCall& call)
    {
        ZoomerList& list = call.screen->ZoomerList;
        call.Answer(ShowOriginal(list, list.hBmpStretchDest, call.screens->Real(), call.screens->Virtual(),
                                 call.in.Rectangle()));
    }

    // Not what the command's name says; clients rely on what it does.
    void RenumberZoomers(ZoomCall& call)
    {
        call.screen->ZoomerList.Renumber();
        call.Answer(1);
    }

    void GetUpdateCount(ZoomCall& call)
    {
        call.Answer(ZoomUpdateCount);
    }

    void GetUpdateInterval(ZoomCall& call)
    {
        call.Answer(ZoomUpdateInterval);
    }

    void SetUpdateInterval(ZoomCall& call)
    {
        ZoomUpdateInterval = static_cast<LONG>(call.in.v[0]);
    }

    using enum ZoomKind;

} // namespace

// Numbered as if in decimal: a last digit of A to F is a hole. Clients have the numbers built in.
constexpr ZoomCommand ZoomCommands[] = {
    {0x11127201, OnScreen, 4, "ESC_ZOOM_CREATE", CreateZoomer},
    {0x11127202, OnScreen, 4, "ESC_ZOOM_REMOVE", RemoveZoomer},
    {0x11127203, OnScreen, 4, "ESC_ZOOM_FLUSH", FlushZoomers},
    {0x11127204, OnScreenLocked, 4, "ESC_ZOOM_UPDATE", UpdateZoomers},
    {0x11127205, PerZoomer, 4, "ESC_ZOOM_SETSTATE", SetValue<&Zoomer::SetState>},
    {0x11127206, PerZoomer, 4, "ESC_ZOOM_GETSTATE", GetValue<&Zoomer::state>},
    {0x11127207, PerZoomer, 4, "ESC_ZOOM_SETMODE", SetValue<&Zoomer::SetMode>},
    {0x11127208, PerZoomer, 4, "ESC_ZOOM_GETMODE", GetValue<&Zoomer::mode>},
    {0x11127209, PerZoomer, 4, "ESC_ZOOM_SETSTYLE", SetValue<&Zoomer::SetStyle>},
    {0x11127210, PerZoomer, 4, "ESC_ZOOM_GETSTYLE", GetValue<&Zoomer::style>},
    {0x11127211, PerZoomer, 4, "ESC_ZOOM_SETBEHAVIOUR", SetValue<&Zoomer::SetBehaviour>},
    {0x11127212, PerZoomer, 4, "ESC_ZOOM_GETBEHAVIOUR", GetValue<&Zoomer::behaviour>},
    {0x11127213, PerZoomer, 4, "ESC_ZOOM_SETORIGINALRECT", SetRectangle<&Zoomer::SetOriginalRect>},
    {0x11127214, PerZoomer, 16, "ESC_ZOOM_GETORIGINALRECT", GetRectangle<&Zoomer::originalRect>},
    {0x11127215, PerZoomer, 4, "ESC_ZOOM_SETZOOMEDRECT", SetRectangle<&Zoomer::SetZoomedRect>},
    {0x11127216, PerZoomer, 16, "ESC_ZOOM_GETZOOMEDRECT", GetRectangle<&Zoomer::zoomedRect>},
    {0x11127217, OnScreen, 4, "ESC_ZOOM_GETZOOMERCOUNT", GetZoomerCount},
    {0x11127218, OnScreen, 4, "ESC_ZOOM_SETZORDER", SetZOrder},
    {0x11127219, OnScreen, 4, "ESC_ZOOM_GETZORDER", GetZOrder},
    {0x11127220, PerZoomer, 4, "ESC_ZOOM_SETFACTOR", SetValue<&Zoomer::SetFactor>},
    {0x11127221, PerZoomer, 4, "ESC_ZOOM_GETFACTOR", GetValue<&Zoomer::xFactor>},
    {0x11127222, PerZoomer, 4, "ESC_ZOOM_SETIMPROVEFACTOR", SetValue<&Zoomer::SetImproveFactor>},
    {0x11127223, PerZoomer, 4, "ESC_ZOOM_GETIMPROVEFACTOR", GetValue<&Zoomer::improveFactor>},
    {0x11127224, PerZoomer, 4, "ESC_ZOOM_SETBORDER", SetValue<&Zoomer::SetBorder>},
    {0x11127225, PerZoomer, 4, "ESC_ZOOM_GETBORDER", GetValue<&Zoomer::border>},
    {0x11127226, PerZoomer, 4, "ESC_ZOOM_SETBORDERSSIZE", SetValue<&Zoomer::SetBordersSize>},
    {0x11127227, PerZoomer, 4, "ESC_ZOOM_GETBORDERSSIZE", GetValue<&Zoomer::bordersSize>},
    {0x11127228, OnScreenLocked, 4, "ESC_ZOOM_SCROLL", ScrollZoomer},
    {0x11127229, OnScreenLocked, 4, "ESC_ZOOM_REFRESH", RenderZoomer<Refresh>},
    {0x11127230, OnScreenLocked, 4, "ESC_ZOOM_IMPROVEIMAGE", RenderZoomer<ImproveImage>},
    {0x11127231, PerZoomer, 4, "ESC_ZOOM_SETXFACTOR", SetValue<&Zoomer::SetXFactor>},
    {0x11127232, PerZoomer, 4, "ESC_ZOOM_GETXFACTOR", GetValue<&Zoomer::xFactor>},
    {0x11127233, PerZoomer, 4, "ESC_ZOOM_SETYFACTOR", SetValue<&Zoomer::SetYFactor>},
    {0x11127234, PerZoomer, 4, "ESC_ZOOM_GETYFACTOR", GetValue<&Zoomer::yFactor>},
    {0x11127235, OnScreenLocked, 4, "ESC_ZOOM_SHOW_ORIG_IMAGE", ShowOriginalImage},
    {0x11127236, OnScreenSilent, 4, nullptr, SetWiseSurface},
    {0x11127237, NoScreen, 4, nullptr, DestroyWiseSurface},
    {0x11127238, NoScreen, 4, nullptr, GetUpdateCount},
    {0x11127239, OnScreen, 4, "ESC_ZOOM_DESTROY_WISE_SURFACE", RenumberZoomers},
    {0x11127240, NoScreen, 4, nullptr, GetUpdateInterval},
    {0x11127241, NoScreen, 0, nullptr, SetUpdateInterval},
    {0x11127242, NoScreen, 4, nullptr, CountColorPairs},
    {0x11127243, NoScreen, 4, nullptr, AddColorPair},
    {0x11127244, NoScreen, 16, nullptr, GetColorPair},
    {0x11127245, NoScreen, 4, nullptr, ClearColorPairs},
    {0x11127246, NoScreen, 4, nullptr, RemoveColorPair},
    {0x11127247, PerZoomerSilent, 4, nullptr, SetValue<&Zoomer::SetPickColour>},
    {0x11127248, PerZoomerSilent, 0, nullptr, GetValue<&Zoomer::pickColour>},
};
static_assert(CodesRise(ZoomCommands));

namespace {

    bool IsSilent(ZoomKind kind)
    {
        return kind == OnScreenSilent || kind == PerZoomerSilent;
    }

    bool NeedsZoomer(ZoomKind kind)
    {
        return kind == PerZoomer || kind == PerZoomerSilent;
    }

    bool FindCommandScreen(const ZoomCommand& command, ZoomCall& call)
    {
        if (!call.pso) {
            if (!IsSilent(command.kind))
                DebugPrint("pso == NULL\n");
            return false;
        }
        call.screen = ScreenList::Find(call.pso->dhpdev);
        if (!call.screen && !IsSilent(command.kind))
            DebugPrint("%s - Screen NULL\n", command.name);
        return call.screen != nullptr;
    }

    bool FindCommandZoomer(const ZoomCommand& command, ZoomCall& call)
    {
        call.zoomer = call.screen->ZoomerList.Find(call.in.id);
        if (!call.zoomer && !IsSilent(command.kind))
            DebugPrint("I cannot find the zoomer with this ID\n");
        return call.zoomer != nullptr;
    }

    void RunOnLockedScreens(const ZoomCommand& command, ZoomCall& call)
    {
        const LockedScreens screens(*call.screen);
        if (!screens)
            return;
        const NestedDrawing nested;
        call.screens = &screens;
        command.run(call);
    }

    void RunCommand(const ZoomCommand& command, ZoomCall& call)
    {
        memset(call.out, 0, command.cleared);
        if (command.kind == NoScreen)
            return command.run(call);
        if (!FindCommandScreen(command, call))
            return;
        if (NeedsZoomer(command.kind) && !FindCommandZoomer(command, call))
            return;
        if (command.kind == OnScreenLocked)
            return RunOnLockedScreens(command, call);
        command.run(call);
    }

} // namespace

ULONG RunZoomEscape(const EscapeCall& escape)
{
    if (!HasBuffers(escape, sizeof(ZoomInput), MinimumOutput))
        return Refused;
    ZoomCall call = {};
    memcpy(&call.in, escape.pvIn, sizeof(call.in));
    call.pso = escape.pso;
    call.out = static_cast<BYTE*>(escape.pvOut);
    if (const ZoomCommand* const command = FindCommand(ZoomCommands, call.in.code))
        RunCommand(*command, call);
    return Done;
}

} // namespace koru
