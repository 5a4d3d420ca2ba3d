#pragma once

#include "platform/types.h"

namespace koru {

// A colour in the order of a pixel in memory.
struct ColourBytes {
    BYTE blue, green, red;
    friend bool operator==(const ColourBytes&, const ColourBytes&) = default;
};

ColourBytes ColourOf(COLORREF colour);
COLORREF ColorRefOf(const ColourBytes& colour);

// A 5-6-5 pixel for a depth of 16, a 5-5-5 one for 15, else 0.
USHORT PixelOf(const ColourBytes& colour, ULONG depth);

struct ColorPair {
    ColourBytes colour1;
    ColourBytes colour2;
    USHORT pixel1;
    USHORT pixel2;
    ColorPair* next;
};

// Driver-wide: pairs of colours for which smoothing knows the winner. Newest first.
namespace ColorPairList {

    ULONG Count();
    int Find(const ColourBytes& colour1, const ColourBytes& colour2); // 2: as given, 1: reversed, 0: none
    int FindPixels(USHORT pixel1, USHORT pixel2); // the same by the stored pixels
    bool ContainsExactly(const ColourBytes& colour1, const ColourBytes& colour2);
    BOOL Add(const ColourBytes& colour1, const ColourBytes& colour2); // 0: memory is short
    const ColorPair* Get(LONG index); // 0 and below: the newest; null past the end
    BOOL Remove(const ColourBytes& colour1, const ColourBytes& colour2); // in either order
    void Clear();

    // At each mode: the three default pairs into an empty list, else the pixels of all pairs anew.
    void Prepare(ULONG depth);

} // namespace ColorPairList

} // namespace koru
