#pragma once

// A scene: a small screen and the calls and commands made on it, as plain data that can be printed,
// replayed and cut down.

#include "tests/property/model_colour.h"
#include "tests/property/random.h"

namespace property {

enum class Act {
    // the list and the properties of a zoomer
    Create,
    Remove,
    Flush,
    State,
    Mode,
    Style,
    Behaviour,
    OriginalRect,
    ZoomedRect,
    ZOrder,
    Factor,
    XFactor,
    YFactor,
    ImproveFactor,
    Border,
    BordersSize,
    PickColour,
    Renumber,
    // rendering
    Update,
    Refresh,
    Improve,
    Scroll,
    ShowOriginal,
    Wait,
    Interval,
    // colour pairs and the overlay
    AddPair,
    RemovePair,
    ClearPairs,
    OverlayImage,
    OverlayMask,
    DropMask,
    DropOverlay,
    // drawing on the screen
    Fill,
    Picture,
    CopyBits,
    MoveArea,
    Line,
    Stretch,
    StretchArea,
    StretchRop,
    StretchAreaRop,
    Gradient,
    Blend,
    Transparent,
    Parallelogram,
    Paint,
    Text,
    FillPath,
    StrokePath,
    SaveAndRestore,
    ReadArea,
    DrawElsewhere,
    // the pointer
    MovePointer,
    Pointer,
    Count
};

const char* NameOf(Act act);

struct Step {
    Act act;
    ULONG zoomer = 0; // the number that Create gave it
    LONG a = 0, b = 0; // by act: a value, a point, a colour
    RECTL rect = {}, second = {};
    std::vector<RECTL> clip = {}; // none: no clip
    ULONG seed = 0; // of the pictures that the step makes
};

struct Scene {
    Format format;
    LONG width = 0, height = 0;
    LONG lDelta = 0; // of the RealScreen's rows; 0: just enough, negative: bottom-up
    std::vector<Step> steps;
};

Scene RandomScene(const Format& format, std::uint64_t seed);
// Drawing and pointer calls alone, the pointer hidden at the end.
Scene RandomPointerScene(const Format& format, std::uint64_t seed);
std::string ToString(const Step& step);
std::string ToString(const Scene& scene);

} // namespace property
