#pragma once

#include "platform/objects.h"

namespace koru {

struct SmoothRequest {
    SURFOBJ* psoTrg; // holds the stretched picture
    SURFOBJ* psoSrc;
    RECTL rclTrg; // only pixels inside are painted
    RECTL rclSrc;
    ULONG improveFactor;
    RECTL originalRect;
    RECTL destRect;
    const BYTE* colourTable;
    BYTE xFactor, yFactor;
    ULONG pickColour;
};

// Rounds the staircases of a picture stretched by whole factors. Does nothing for other improve
// factors than 1 to 3, factors below 2, and formats without a kernel.
void SmoothMagnified(const SmoothRequest& request);

} // namespace koru
