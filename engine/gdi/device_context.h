#pragma once

// What a drawing draws with and where: attributes, coordinates, clip, the path being built, and pens and
// brushes made ready for the target.

#include <list>
#include <memory>
#include <optional>

#include "engine/gdi/font.h"
#include "engine/gdi/mapping.h"
#include "engine/gdi/objects.h"
#include "engine/gdi/outline.h"
#include "engine/raster/region.h"

namespace engine::gdi {

constexpr ULONG R2_NOT = 6, R2_NOP = 11, R2_COPYPEN = 13, R2_WHITE = 16;
constexpr ULONG ALTERNATE = 1, WINDING = 2;
constexpr ULONG AD_COUNTERCLOCKWISE = 1, AD_CLOCKWISE = 2;
constexpr ULONG RGN_AND = 1, RGN_OR = 2, RGN_XOR = 3, RGN_DIFF = 4, RGN_COPY = 5;

struct Attributes {
    Mapping mapping;
    Transform world;
    PointD position; // in logical units
    LogicalPen pen;
    LogicalBrush brush;
    LOGFONTW font = {};
    std::shared_ptr<const LogicalPalette> palette;
    COLORREF textColour = 0, backColour = 0xFFFFFF;
    ULONG backMode = OPAQUE, textAlign = 0, rop2 = R2_COPYPEN, polyFillMode = ALTERNATE, stretchMode = 1;
    ULONG arcDirection = AD_COUNTERCLOCKWISE;
    double miterLimit = 10;
    double breakExtra = 0; // logical units added to every blank
    POINTL brushOrigin = {};
    COLORADJUSTMENT colourAdjustment = {};
    std::shared_ptr<const Region> clip, metaRegion; // of the target's pixels; null: no limit
};

// The clip of one call: what is visible of the pixels that it may touch.
class CallClip {
public:
    CallClip(const Region& visible, const RECTL& bounds);
    CallClip(const Region& visible, const Region& shape); // of a call that fills its clip

    bool IsEmpty() const { return engine::IsEmpty(cut_); }
    const RECTL& Cut() const { return cut_; } // the smallest rectangle around the visible part
    // For calls whose rectangle is cut beforehand: null unless there is more to clip than that.
    CLIPOBJ* AfterCut() { return complex_ ? &clip_ : nullptr; }
    // For calls that must keep their rectangle: null when nothing of it is hidden.
    CLIPOBJ* IfHidden() { return hidden_ ? &clip_ : nullptr; }
    // For calls that are made with a clip always: DC_TRIVIAL when nothing is hidden.
    CLIPOBJ* Always() { return &clip_; }

private:
    void TakeOver();

    ClipObject clip_;
    RECTL cut_;
    bool complex_, hidden_;
};

// BeginPath to EndPath and what is done with the result. Until EndPath shapes go here.
class PathBracket {
public:
    void Begin();
    bool End(); // false when none was begun
    void Abort();
    bool IsOpen() const { return state_ == State::Open; }
    bool IsComplete() const { return state_ == State::Complete; }
    Outline Take(); // the completed path, which is then used up
    void Flatten() { outline_ = outline_.Flattened(); }

    Outline& Building() { return outline_; }
    Outline& From(POINTFIX point); // goes on from there: in the same figure when it ends there

private:
    enum class State { None, Open, Complete };
    State state_ = State::None;
    Outline outline_;
};

struct DrawingTarget {
    SURFOBJ* surface;
    PixelLayout layout;
    RECTL visible; // of the surface's pixels
};

class DeviceContext {
public:
    // `base` maps pixels of the device that the drawing was made for to those of the target.
    DeviceContext(const DrawingTarget& target, const Transform& base, const ReferenceDevice& reference);

    Attributes& Now() { return now_; }
    const Attributes& Now() const { return now_; }
    PathBracket& Bracket() { return bracket_; }
    SURFOBJ* Surface() const { return target_.surface; }
    const PixelLayout& Layout() const { return target_.layout; }

    bool Save(); // false when it is nested too deeply
    bool Restore(LONG which); // negative: so many back, positive: the number of a saved one

    const Transform& Base() const { return base_; }
    Transform ToReference() const { return now_.world.Then(now_.mapping.PageToDevice()); }
    Transform ToDevice() const { return ToReference().Then(base_); }
    PointD Map(PointD logical) const { return ToDevice().Apply(logical); }

    // Regions are of the target's pixels. False when the result is too complex.
    bool CombineClip(const Region& region, ULONG mode);
    void SetClip(std::shared_ptr<const Region> clip); // null: no limit
    void MoveClip(POINTL by);
    void MakeClipMeta();
    Region RegionOf(const RECTL& logical) const;
    CallClip ClipOf(const RECTL& bounds) const { return CallClip(visible_, bounds); }
    CallClip ClipOf(const Region& shape) const { return CallClip(visible_, shape); }
    const RECTL& VisibleBounds() const { return target_.visible; }

    ULONG Pixel(COLORREF colour) const { return target_.layout.PixelOf(Colour(colour)); }
    COLORREF Colour(COLORREF colour) const; // resolves indices of the palette
    std::optional<Brush> Realize(const LogicalBrush& brush); // nothing for no brush; until some more are realised
    MIX MixFor(const LogicalBrush& brush) const; // of the current binary operation
    bool HasOpenGaps(const LogicalBrush& brush) const; // hatch lines with nothing between them
    POINTL* BrushOrigin() { return &origin_; }
    void SetBrushOrigin(POINTL origin); // in pixels of the drawing's device

    FontCache& Fonts() { return fonts_; }

private:
    struct Pattern { // kept for as long as it may be used again
        std::shared_ptr<const Bitmap> source;
        bool monochrome;
        COLORREF textColour, backColour;
        std::unique_ptr<Bitmap> realized;
    };
    void UpdateVisible();
    void UpdateOrigin();
    const Bitmap& RealizePattern(const LogicalBrush& brush);

    DrawingTarget target_;
    Transform base_;
    Attributes now_;
    std::vector<Attributes> saved_;
    PathBracket bracket_;
    Region visible_;
    POINTL origin_ = {};
    std::list<Pattern> patterns_; // the last used first
    FontCache fonts_;
};

} // namespace engine::gdi
