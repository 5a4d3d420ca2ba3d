#include "engine/raster/clip.h"

#include "engine/core/objects.h"
#include "engine/raster/rectangles.h"

namespace engine::raster {
namespace {

    void AddVisible(const RECTL& rectangle, const RECTL& area, std::vector<RECTL>& parts)
    {
        const RECTL visible = Intersection(rectangle, area);
        if (!IsEmpty(visible))
            parts.push_back(visible);
    }

} // namespace

std::optional<std::vector<RECTL>> VisibleParts(const CLIPOBJ* pco, const RECTL& area)
{
    std::vector<RECTL> parts;
    if (!pco) {
        AddVisible(area, area, parts);
        return parts;
    }
    const ClipObject* const clip = ClipBehind(pco);
    if (!clip)
        return std::nullopt;
    // A driver may tighten rclBounds for the time of a call, so it counts beside the rectangles.
    const RECTL bounded = clip->iDComplexity == DC_TRIVIAL ? area : Intersection(area, clip->rclBounds);
    if (clip->iDComplexity != DC_COMPLEX)
        AddVisible(bounded, area, parts);
    else
        for (const RECTL& rectangle : clip->rectangles)
            AddVisible(rectangle, bounded, parts);
    return parts;
}

} // namespace engine::raster

namespace engine {

Region RegionOfClip(const CLIPOBJ* pco, const RECTL& bounds)
{
    return Region(raster::VisibleParts(pco, bounds).value_or(std::vector<RECTL>()));
}

} // namespace engine
