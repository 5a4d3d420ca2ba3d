#pragma once

#include "engine/core/objects.h"

namespace engine::raster {

// A brush laid on a surface from its origin on.
class BrushPattern {
public:
    BrushPattern() = default; // for operations that use none
    BrushPattern(const Brush* brush, POINTL origin);

    bool IsSolid() const { return brush_->IsSolid(); }
    ULONG SolidPixel() const { return brush_->iSolidColor; }
    void Fetch(LONG x, LONG y, LONG count, ULONG* pixels) const;
    bool IsForeground(LONG x, LONG y) const; // everywhere, except between the lines of a hatch

private:
    SIZEL Period() const;

    const Brush* brush_ = nullptr;
    POINTL origin_ = {0, 0};
};

} // namespace engine::raster
