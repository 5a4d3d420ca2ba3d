#pragma once

// Smoothing by the slow way: every junction of a zoomer's whole original rectangle is looked at every
// time, and what falls outside of `paint` (of the zoomer's image) is not painted.

#include "tests/property/model_colour.h"
#include "tests/property/model_zoomer.h"

namespace property {

void Smooth(Zoomer& zoomer, const Picture& source, const Rect& paint, const ColourChoice& choice);

} // namespace property
