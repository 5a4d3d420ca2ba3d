#pragma once

#include "engine/gdi/device_context.h"

namespace engine::gdi {

// A pen made ready for the target: what a driver gets to draw lines with.
class RealPen {
public:
    RealPen(DeviceContext& dc, const LogicalPen& pen);
    RealPen(const RealPen&) = delete;
    RealPen& operator=(const RealPen&) = delete;

    bool IsNull() const { return !brush_; }
    // One pixel wide, in one colour, without gaps: what DrvLineTo draws.
    bool IsPlain() const { return !IsGeometric() && line_.cstyle == 0 && line_.fl == 0 && brush_->IsSolid(); }
    bool IsGeometric() const { return (line_.fl & LA_GEOMETRIC) != 0; }
    // The gaps of this pen are painted in the background colour, by a second pass.
    bool FillsGaps() const { return fillsGaps_; }
    void SwapGaps() { line_.fl ^= LA_STARTGAP; }
    // Draws without a style where a line of so many pixels would fall to more dashes than anyone can tell apart.
    void LimitDashes(double pixels);

    Brush& Fill() { return *brush_; }
    LINEATTRS* Line() { return &line_; }
    MIX Mix() const { return mix_; }
    LONG Reach() const { return reach_; } // pixels on either side of the line that it may touch

private:
    void MakeCosmetic(const LogicalPen& pen);
    void MakeGeometric(const LogicalPen& pen, double scale, double miterLimit);

    std::optional<Brush> brush_;
    LINEATTRS line_ = {};
    std::vector<FLOAT_LONG> style_;
    MIX mix_;
    bool fillsGaps_ = false;
    LONG reach_ = 1;
};

} // namespace engine::gdi
