#pragma once

// The drawing steps of a scene as calls that either the driver's hooks or the engine's own services
// carry out: the latter, on a plain bitmap, tell what the former must have painted.

#include <functional>
#include <memory>
#include <optional>

#include "tests/conformance/session.h"
#include "tests/property/pictures.h"
#include "tests/property/scene.h"

namespace property {

// A machine for the scene, without a consumer.
conformance::Setup SetupFor(const Scene& scene);

struct DrawCalls {
    PFN_DrvBitBlt bitBlt;
    PFN_DrvCopyBits copyBits;
    PFN_DrvStretchBlt stretchBlt;
    PFN_DrvStretchBltROP stretchBltRop;
    PFN_DrvPlgBlt plgBlt;
    PFN_DrvGradientFill gradientFill;
    PFN_DrvAlphaBlend alphaBlend;
    PFN_DrvTransparentBlt transparentBlt;
    PFN_DrvLineTo lineTo;
    PFN_DrvPaint paint;
    PFN_DrvTextOut textOut;
    PFN_DrvFillPath fillPath;
    PFN_DrvStrokePath strokePath;
};
DrawCalls ServiceCalls();
DrawCalls HookCalls(conformance::Session& session);

struct Drawing {
    Rect shown; // what the call brings to the RealScreen
    Rect written; // where the pointer is taken off
    std::optional<Rect> read; // the part of the screen that is read, as far as the pointer is concerned
    std::function<void(const DrawCalls&, SURFOBJ* screen)> run; // null: nothing to draw
};

Drawing MakeDrawing(const Step& step, const Scene& scene);

} // namespace property
