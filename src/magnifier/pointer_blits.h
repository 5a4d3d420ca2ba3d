#pragma once

#include "platform/objects.h"

// A pointer's shape composed with the background that `psoCursor` already holds. All surfaces are
// locked bitmaps of the driver's own; `area` is the part to compose.
namespace koru {

struct MaskBits {
    bool andBit, xorBit;
};

// Of a mask with the AND rows above the XOR rows. Outside of it: the background stays.
MaskBits MaskAt(const SURFOBJ& mask, LONG x, LONG y);

struct PointerShape {
    const SURFOBJ* color;
    const XLATEOBJ* xlate; // the driver's own copy, or null
    const BYTE* colourTable; // of the screen, for palette formats
};

// Where the AND bit is clear the colour, elsewhere the background inverted by the colour.
void BlendMasked(SURFOBJ* psoCursor, const PointerShape& shape, const SURFOBJ& mask, const RECTL& area);

// A 32-bit shape with premultiplied colours and an alpha byte.
void BlendAlpha(SURFOBJ* psoCursor, const PointerShape& shape, const RECTL& area);

} // namespace koru
