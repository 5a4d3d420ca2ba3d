#pragma once

// What `koru play` does: a screen, and steps in order. Read from a session file (JSON) or made from
// command-line options.

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/types.h"

namespace tools {

struct ZoomerSettings {
    RECTL original = {}; // on the VirtualScreen
    RECTL zoomed = {}; // on the RealScreen
    ULONG xFactor = 2, yFactor = 2; // 1 to 255
    ULONG smooth = 0; // 0 to 3
    ULONG border = 0; // 1 left, 2 top, 4 right, 8 bottom, 16 white
    ULONG borderSize = 1;
    ULONG style = 0; // 0 normal, 1 inverted
    ULONG behaviour = 0; // 0 immediate, 1 full, 2 deferred
    ULONG mode = 0; // 0 ordinary, 1 exclusive, 2 moving
    bool darkerWins = false;
    std::optional<LONG> zOrder;
};

struct PlayStep {
    std::string path;
    std::optional<RECTL> where; // the whole screen unless told
};
struct ZoomerStep {
    ZoomerSettings settings;
};
struct CaptureStep {
    bool on = true;
    ULONG mask = 0xFFFFFFFF;
};
struct DarkZoneStep {
    RECTL zone;
};
struct OverlayStep { // merged into everything that is shown from now on
    std::string image; // a drawing, as large as fits into `area`
    std::optional<std::string> mask; // where this is white, what is below stays; black shows the image
    RECTL area = {};
    ULONG rop3 = 0xCC; // how the image is merged
};
struct PointerStep { // an arrow that points there
    LONG x = 0, y = 0;
};
struct UpdateStep { }; // the client's periodic update
struct RepaintStep { }; // the whole screen unmagnified, then every zoomer anew
struct FlushStep { }; // removes all zoomers

using Step = std::variant<PlayStep, ZoomerStep, CaptureStep, DarkZoneStep, OverlayStep, PointerStep, UpdateStep,
                          RepaintStep, FlushStep>;

struct Session {
    ULONG width = 1024, height = 768;
    ULONG depth = 32; // bits per pixel: 1, 4, 8, 15, 16, 24, 32
    std::vector<Step> steps;
};

// Reads a session file; paths in it are relative to it. Throws std::runtime_error with one line that
// names the file and the place.
Session ReadSession(const std::string& path);

// "original=0,0,300,200 zoomed=100,100,1000,700 factor=3 smooth=1 border=all ...": the keys of a session
// file's zoomer. Throws std::runtime_error.
ZoomerSettings ParseZoomer(const std::string& text);

// One of these keys, which must exist; errors name the option. Throws std::runtime_error.
void ParseZoomerKey(const std::string& option, const std::string& key, const std::string& text, ZoomerSettings& zoomer);

// Whether the screen and every rectangle are possible. Throws std::runtime_error.
void CheckSession(const Session& session);

} // namespace tools
