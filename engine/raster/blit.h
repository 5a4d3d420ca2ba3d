#pragma once

#include "platform/platform.h"

namespace engine::raster {

// A copy without stretching, with any raster operation: EngBitBlt on pixels in memory. Surfaces without bits
// are read, and written back, by the driver's copy.
struct Blit {
    const char* service; // for its messages
    SURFOBJ* psoTrg;
    SURFOBJ* psoSrc = nullptr;
    SURFOBJ* psoMask = nullptr;
    CLIPOBJ* pco = nullptr;
    XLATEOBJ* pxlo = nullptr;
    RECTL target; // in any order
    POINTL source = {0, 0}; // what comes to the upper left corner
    POINTL mask = {0, 0};
    BRUSHOBJ* pbo = nullptr;
    POINTL brushOrigin = {0, 0};
    ROP4 rop4;

    BOOL Run() const;
};

} // namespace engine::raster
