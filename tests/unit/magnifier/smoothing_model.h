#pragma once

#include <string>

#include "platform/types.h"

// The smoothing rules once more, slowly: every pixel of the target is asked for by itself, and nothing
// is shared between formats, quadrants or improve factors. Judge of random pictures.
namespace smoothing_model {

struct Rules {
    int improveFactor;
    int xFactor, yFactor;
    bool darkerWins;
};

// The whole picture stretched and smoothed. Letters W Y R G B and '.' only.
std::string Smooth(const std::string& picture, const Rules& rules);

} // namespace smoothing_model
