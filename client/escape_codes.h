#pragma once

// The escapes that the driver answers and the commands inside of them, with what each one reads and
// answers. All words are 32 bits, little-endian.

#include <cstdint>
#include <span>
#include <string_view>

namespace koru::client {

enum class Escape : std::uint32_t {
    QuerySupport = 8, // in: an escape's code; the result is above 0 when that escape is answered
    Zoom = 6514, // a ZoomCommand
    Koru = 0x490914, // a KoruCommand
    Chain = 0x584D4344, // "DCMX": the display chain manager's query
};

// Inside Escape::Koru: six words in (the command, five arguments), one word out.
enum class KoruCommand : std::uint32_t {
    CaptureOff = 1, // no answer
    CaptureOn = 2, // no answer
    AddDarkZone = 3, // 1..4 rectangle, 5 dhpdev; the zone's handle
    DeleteDarkZone = 4, // 1 handle, 5 dhpdev
    ClearDarkZones = 5, // 5 dhpdev; for an unknown one the zones of every screen, and 0
    AddDarkId = 23, // 1 identifier
    DeleteDarkId = 24,
    ClearDarkIds = 25,
    AddDarkSurface = 32, // the surface of the escape's own device context
    DeleteDarkSurface = 33,
    ClearDarkSurfaces = 34,
    SetFlag = 35, // sets a flag that the driver only keeps
    InitializeFunctions2 = 36, // 1..5 addresses of QC, QD, QP, GSD, DSF
    AddDarkProcess = 37, // 1 identifier
    DeleteDarkProcess = 38,
    ClearDarkProcesses = 39,
    SetCaptureMask = 57, // 1 mask
    AskCaptureMask = 58, // answers 1, whatever the mask
    InterfaceVersion = 91, // 16 bits
    ScreenSurface = 92, // 5 dhpdev; the surface that the engine draws on
    AddCacheItem = 96, // 1 type, 2 item; works for item 0 only
    DeleteCacheItem = 97, // 1 type, 2 item
    ClearCache = 98, // 1 type, 2 mask; then as SetBitsLimits with the same words
    SetBitsLimits = 112, // 1 BitsSizeLimit, 2 BitsCaptureMask
};

// Inside Escape::Zoom: nine words in (the command, a zoomer, A, B, C, V0..V3), four words out. The numbers
// leave out the hexadecimal digits above 9.
enum class ZoomCommand : std::uint32_t {
    Create = 0x11127201, // the new zoomer, or 0
    Remove = 0x11127202,
    Flush = 0x11127203,
    Update = 0x11127204,
    SetState = 0x11127205, // V0, as the other set commands unless they take a rectangle, V0..V3
    GetState = 0x11127206,
    SetMode = 0x11127207,
    GetMode = 0x11127208,
    SetStyle = 0x11127209,
    GetStyle = 0x11127210,
    SetBehaviour = 0x11127211,
    GetBehaviour = 0x11127212,
    SetOriginalRect = 0x11127213,
    GetOriginalRect = 0x11127214,
    SetZoomedRect = 0x11127215,
    GetZoomedRect = 0x11127216,
    GetZoomerCount = 0x11127217,
    SetZOrder = 0x11127218,
    GetZOrder = 0x11127219, // all ones for an unknown zoomer
    SetFactor = 0x11127220,
    GetFactor = 0x11127221, // the horizontal one
    SetImproveFactor = 0x11127222,
    GetImproveFactor = 0x11127223,
    SetBorder = 0x11127224,
    GetBorder = 0x11127225,
    SetBordersSize = 0x11127226,
    GetBordersSize = 0x11127227,
    Scroll = 0x11127228, // V0, V1
    Refresh = 0x11127229,
    ImproveImage = 0x11127230,
    SetXFactor = 0x11127231,
    GetXFactor = 0x11127232,
    SetYFactor = 0x11127233,
    GetYFactor = 0x11127234,
    ShowOriginalImage = 0x11127235, // V0..V3
    SetWiseSurface = 0x11127236, // A, B origin, C selector, V0..V3; see WiseSurface
    DestroyWiseSurface = 0x11127237,
    GetUpdateCount = 0x11127238,
    RenumberZOrder = 0x11127239, // named ESC_ZOOM_DESTROY_WISE_SURFACE, and does not do that
    GetUpdateInterval = 0x11127240,
    SetUpdateInterval = 0x11127241, // V0; no answer
    GetColorPairCount = 0x11127242,
    AddColorPair = 0x11127243, // V0, A
    GetColorPair = 0x11127244, // V0 index; two words
    ClearColorPairs = 0x11127245,
    DeleteColorPair = 0x11127246, // V0, A
    SetPickColor = 0x11127247,
    GetPickColor = 0x11127248, // no answer for an unknown zoomer
};

struct CommandInfo {
    Escape escape;
    std::uint32_t code;
    std::string_view name; // the driver's own where it has one
};

std::span<const CommandInfo> Commands(); // every command, by escape and code

} // namespace koru::client
