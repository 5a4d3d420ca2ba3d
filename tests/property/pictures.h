#pragma once

// Pictures by a seed, and their way to and from the engine's bitmaps.

#include "engine/core/surface.h"
#include "tests/property/model_colour.h"
#include "tests/property/model_picture.h"
#include "tests/property/random.h"

namespace property {

// A pixel worth drawing: black, white, colours of the default pairs, anything.
ULONG AnyPixel(Random& random, const Format& format);
// Few colours in slanted lines, boxes and noise, so that there is something to smooth.
Picture RandomPicture(Random& random, const Format& format, LONG width, LONG height);

// Layout by bits alone; `fiveFiveFive` for the 16-bit one of depth 15.
engine::PixelLayout LayoutOf(const Format& format);
// Of the engine's own side; the caller destroys it.
engine::Surface* ToBitmap(const Picture& picture, const Format& format);
void Store(const Picture& picture, engine::Surface& bitmap);
Picture Load(const engine::Surface& bitmap, ULONG bitsPerPixel);

} // namespace property
