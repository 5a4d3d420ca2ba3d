#include "escape_codes.h"

namespace koru::client {
namespace {

    template<class Command> constexpr std::uint32_t Code(Command command)
    {
        return static_cast<std::uint32_t>(command);
    }

    constexpr CommandInfo Table[] = {
        {Escape::Koru, Code(KoruCommand::CaptureOff), "CaptureOff"},
        {Escape::Koru, Code(KoruCommand::CaptureOn), "CaptureOn"},
        {Escape::Koru, Code(KoruCommand::AddDarkZone), "AddDarkZone"},
        {Escape::Koru, Code(KoruCommand::DeleteDarkZone), "DeleteDarkZone"},
        {Escape::Koru, Code(KoruCommand::ClearDarkZones), "ClearDarkZones"},
        {Escape::Koru, Code(KoruCommand::AddDarkId), "AddDarkId"},
        {Escape::Koru, Code(KoruCommand::DeleteDarkId), "DeleteDarkId"},
        {Escape::Koru, Code(KoruCommand::ClearDarkIds), "ClearDarkIds"},
        {Escape::Koru, Code(KoruCommand::AddDarkSurface), "AddDarkSurface"},
        {Escape::Koru, Code(KoruCommand::DeleteDarkSurface), "DeleteDarkSurface"},
        {Escape::Koru, Code(KoruCommand::ClearDarkSurfaces), "ClearDarkSurfaces"},
        {Escape::Koru, Code(KoruCommand::SetFlag), "SetFlag"},
        {Escape::Koru, Code(KoruCommand::InitializeFunctions2), "InitializeFunctions2"},
        {Escape::Koru, Code(KoruCommand::AddDarkProcess), "AddDarkProcess"},
        {Escape::Koru, Code(KoruCommand::DeleteDarkProcess), "DeleteDarkProcess"},
        {Escape::Koru, Code(KoruCommand::ClearDarkProcesses), "ClearDarkProcesses"},
        {Escape::Koru, Code(KoruCommand::SetCaptureMask), "SetCaptureMask"},
        {Escape::Koru, Code(KoruCommand::AskCaptureMask), "AskCaptureMask"},
        {Escape::Koru, Code(KoruCommand::InterfaceVersion), "InterfaceVersion"},
        {Escape::Koru, Code(KoruCommand::ScreenSurface), "ScreenSurface"},
        {Escape::Koru, Code(KoruCommand::AddCacheItem), "AddCacheItem"},
        {Escape::Koru, Code(KoruCommand::DeleteCacheItem), "DeleteCacheItem"},
        {Escape::Koru, Code(KoruCommand::ClearCache), "ClearCache"},
        {Escape::Koru, Code(KoruCommand::SetBitsLimits), "SetBitsLimits"},
        {Escape::Zoom, Code(ZoomCommand::Create), "ESC_ZOOM_CREATE"},
        {Escape::Zoom, Code(ZoomCommand::Remove), "ESC_ZOOM_REMOVE"},
        {Escape::Zoom, Code(ZoomCommand::Flush), "ESC_ZOOM_FLUSH"},
        {Escape::Zoom, Code(ZoomCommand::Update), "ESC_ZOOM_UPDATE"},
        {Escape::Zoom, Code(ZoomCommand::SetState), "ESC_ZOOM_SETSTATE"},
        {Escape::Zoom, Code(ZoomCommand::GetState), "ESC_ZOOM_GETSTATE"},
        {Escape::Zoom, Code(ZoomCommand::SetMode), "ESC_ZOOM_SETMODE"},
        {Escape::Zoom, Code(ZoomCommand::GetMode), "ESC_ZOOM_GETMODE"},
        {Escape::Zoom, Code(ZoomCommand::SetStyle), "ESC_ZOOM_SETSTYLE"},
        {Escape::Zoom, Code(ZoomCommand::GetStyle), "ESC_ZOOM_GETSTYLE"},
        {Escape::Zoom, Code(ZoomCommand::SetBehaviour), "ESC_ZOOM_SETBEHAVIOUR"},
        {Escape::Zoom, Code(ZoomCommand::GetBehaviour), "ESC_ZOOM_GETBEHAVIOUR"},
        {Escape::Zoom, Code(ZoomCommand::SetOriginalRect), "ESC_ZOOM_SETORIGINALRECT"},
        {Escape::Zoom, Code(ZoomCommand::GetOriginalRect), "ESC_ZOOM_GETORIGINALRECT"},
        {Escape::Zoom, Code(ZoomCommand::SetZoomedRect), "ESC_ZOOM_SETZOOMEDRECT"},
        {Escape::Zoom, Code(ZoomCommand::GetZoomedRect), "ESC_ZOOM_GETZOOMEDRECT"},
        {Escape::Zoom, Code(ZoomCommand::GetZoomerCount), "ESC_ZOOM_GETZOOMERCOUNT"},
        {Escape::Zoom, Code(ZoomCommand::SetZOrder), "ESC_ZOOM_SETZORDER"},
        {Escape::Zoom, Code(ZoomCommand::GetZOrder), "ESC_ZOOM_GETZORDER"},
        {Escape::Zoom, Code(ZoomCommand::SetFactor), "ESC_ZOOM_SETFACTOR"},
        {Escape::Zoom, Code(ZoomCommand::GetFactor), "ESC_ZOOM_GETFACTOR"},
        {Escape::Zoom, Code(ZoomCommand::SetImproveFactor), "ESC_ZOOM_SETIMPROVEFACTOR"},
        {Escape::Zoom, Code(ZoomCommand::GetImproveFactor), "ESC_ZOOM_GETIMPROVEFACTOR"},
        {Escape::Zoom, Code(ZoomCommand::SetBorder), "ESC_ZOOM_SETBORDER"},
        {Escape::Zoom, Code(ZoomCommand::GetBorder), "ESC_ZOOM_GETBORDER"},
        {Escape::Zoom, Code(ZoomCommand::SetBordersSize), "ESC_ZOOM_SETBORDERSSIZE"},
        {Escape::Zoom, Code(ZoomCommand::GetBordersSize), "ESC_ZOOM_GETBORDERSSIZE"},
        {Escape::Zoom, Code(ZoomCommand::Scroll), "ESC_ZOOM_SCROLL"},
        {Escape::Zoom, Code(ZoomCommand::Refresh), "ESC_ZOOM_REFRESH"},
        {Escape::Zoom, Code(ZoomCommand::ImproveImage), "ESC_ZOOM_IMPROVEIMAGE"},
        {Escape::Zoom, Code(ZoomCommand::SetXFactor), "ESC_ZOOM_SETXFACTOR"},
        {Escape::Zoom, Code(ZoomCommand::GetXFactor), "ESC_ZOOM_GETXFACTOR"},
        {Escape::Zoom, Code(ZoomCommand::SetYFactor), "ESC_ZOOM_SETYFACTOR"},
        {Escape::Zoom, Code(ZoomCommand::GetYFactor), "ESC_ZOOM_GETYFACTOR"},
        {Escape::Zoom, Code(ZoomCommand::ShowOriginalImage), "ESC_ZOOM_SHOW_ORIG_IMAGE"},
        {Escape::Zoom, Code(ZoomCommand::SetWiseSurface), "SetWiseSurface"},
        {Escape::Zoom, Code(ZoomCommand::DestroyWiseSurface), "DestroyWiseSurface"},
        {Escape::Zoom, Code(ZoomCommand::GetUpdateCount), "GetUpdateCount"},
        {Escape::Zoom, Code(ZoomCommand::RenumberZOrder), "ESC_ZOOM_DESTROY_WISE_SURFACE"},
        {Escape::Zoom, Code(ZoomCommand::GetUpdateInterval), "GetUpdateInterval"},
        {Escape::Zoom, Code(ZoomCommand::SetUpdateInterval), "SetUpdateInterval"},
        {Escape::Zoom, Code(ZoomCommand::GetColorPairCount), "GetColorPairCount"},
        {Escape::Zoom, Code(ZoomCommand::AddColorPair), "AddColorPair"},
        {Escape::Zoom, Code(ZoomCommand::GetColorPair), "GetColorPair"},
        {Escape::Zoom, Code(ZoomCommand::ClearColorPairs), "ClearColorPairs"},
        {Escape::Zoom, Code(ZoomCommand::DeleteColorPair), "DeleteColorPair"},
        {Escape::Zoom, Code(ZoomCommand::SetPickColor), "SetPickColor"},
        {Escape::Zoom, Code(ZoomCommand::GetPickColor), "GetPickColor"},
    };

} // namespace

std::span<const CommandInfo> Commands()
{
    return Table;
}

} // namespace koru::client
