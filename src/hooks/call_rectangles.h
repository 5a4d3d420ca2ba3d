#pragma once

#include "platform/objects.h"

// The rectangles that hooked calls touch. Pointers may be null.
namespace koru {

// A call's bounds on the screen: its rectangle, cut to the clip where there is one. False when
// nothing is left.
bool CutToClip(RECTL& bounds, const RECTL* rectangle, const CLIPOBJ* pco);

// The bounds as they stand. False for null.
bool TakeAsBounds(RECTL& bounds, const RECTL* rectangle);

const RECTL* ClipBounds(const CLIPOBJ* pco);

// A rectangle of the size of `sized` with its top left corner at `corner`: what a copy to `sized` reads.
// NoRectangle when either is null.
RECTL RectangleAt(const POINTL* corner, const RECTL* sized);

// The whole pixels that lines within 28.4 bounds touch, one pixel around them included: a level line
// has no height in 28.4.
RECTL PixelsAround(const RECTFX& bounds);

} // namespace koru
