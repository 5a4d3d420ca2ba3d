#pragma once

#include "cursor/cursor.h"
#include "driver/driver_values.h"

namespace koru {

// Keeps the software cursor off what a call draws over or reads, until the block ends. Takes the
// surfaces as the engine gave them. Made while NestedDrawing lives: a depth of 1 is the engine's own
// call; deeper ones are the driver's own drawing, which leaves the cursor alone.
class [[nodiscard]] CursorExclusion {
public:
    CursorExclusion(SURFOBJ* psoTrg, const RECTL* prclTrg, SURFOBJ* psoSrc, const RECTL* prclSrc)
        : psoTrg_(psoTrg)
        , psoSrc_(psoSrc)
        , active_(HookDepth == 1)
    {
        if (active_)
            SoftwareCursor.ExcludeBeforeDrawing(psoTrg, prclTrg, psoSrc, prclSrc);
    }
    ~CursorExclusion()
    {
        if (active_)
            SoftwareCursor.RedrawAfterDrawing(psoTrg_, psoSrc_);
    }
    CursorExclusion(const CursorExclusion&) = delete;
    CursorExclusion& operator=(const CursorExclusion&) = delete;

private:
    SURFOBJ* psoTrg_;
    SURFOBJ* psoSrc_;
    bool active_;
};

} // namespace koru
