#include "engine/raster/brush.h"

#include <algorithm>

#include "engine/core/surface.h"

namespace engine::raster {
namespace {

    constexpr LONG HatchSize = 8;

    // The place within the tile; the distance to the origin may need more than 32 bits.
    LONG Phase(LONG position, LONG origin, LONG period)
    {
        const std::int64_t rest = (std::int64_t{position} - origin) % period;
        return static_cast<LONG>(rest < 0 ? rest + period : rest);
    }

} // namespace

BrushPattern::BrushPattern(const Brush* brush, POINTL origin)
    : brush_(brush)
    , origin_(origin)
{
}

SIZEL BrushPattern::Period() const
{
    return brush_->pattern ? brush_->pattern->sizlBitmap : SIZEL{HatchSize, HatchSize};
}

void BrushPattern::Fetch(LONG x, LONG y, LONG count, ULONG* pixels) const
{
    if (IsSolid()) {
        std::fill_n(pixels, count, SolidPixel());
        return;
    }
    const SIZEL period = Period();
    const LONG phaseY = Phase(y, origin_.y, period.cy);
    LONG phaseX = Phase(x, origin_.x, period.cx);
    for (LONG i = 0; i < count; ++i) {
        pixels[i] = brush_->PixelAt(phaseX, phaseY);
        if (++phaseX == period.cx)
            phaseX = 0;
    }
}

bool BrushPattern::IsForeground(LONG x, LONG y) const
{
    if (!brush_ || brush_->hatch >= HS_DDI_MAX)
        return true;
    return brush_->IsForeground(Phase(x, origin_.x, HatchSize), Phase(y, origin_.y, HatchSize));
}

} // namespace engine::raster
