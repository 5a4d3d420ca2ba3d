#pragma once

// Point sampling: what the engine's COLORONCOLOR does. The target pixel i of n shows the source pixel
// floor(i * m / n) of m. A rectangle that is reversed on an axis turns the picture over on it.

#include <vector>

#include "engine/raster/rows.h"
#include "engine/raster/translate.h"

namespace engine::raster {

class StretchAxis {
public:
    StretchAxis() = default;
    StretchAxis(LONG targetFrom, LONG targetTo, LONG sourceFrom, LONG sourceTo);

    bool IsEmpty() const { return targetSize_ == 0 || sourceSize_ == 0; }
    std::int64_t SourceIndex(LONG target) const; // from the source rectangle's lower end on
    std::int64_t SourceFirst() const { return sourceFirst_; }

private:
    std::int64_t targetFirst_ = 0, targetSize_ = 0, sourceFirst_ = 0, sourceSize_ = 0;
    bool mirrored_ = false;
};

// A drawing call that stretches, on pixels in memory. Target pixels whose source lies outside of the source
// surface, or of the mask, are not drawn.
struct Stretch {
    const char* service; // for its messages
    SURFOBJ* psoDest;
    SURFOBJ* psoSrc; // null: the operation uses none
    SURFOBJ* psoMask = nullptr;
    CLIPOBJ* pco;
    RECTL target, source; // in any order
    POINTL mask = {0, 0}; // what belongs to the source rectangle's upper left corner
    bool maskHides = true; // nothing is drawn where the mask is 0; else the background is chosen there

    BOOL Run(const RowOperation& operation) const;
};

} // namespace engine::raster
