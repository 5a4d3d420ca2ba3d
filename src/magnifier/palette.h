#pragma once

#include "escape/color_pair_list.h"
#include "platform/types.h"

namespace koru {

// Colour tables: 4 bytes an entry, red, green, blue, 0. 256 entries for BMF_8BPP, 16 for BMF_4BPP.
BYTE* DefaultColourTable(ULONG format); // of the pool; null for other formats or when memory is short

// Zeros and 0 without a table (or, for 16, beyond it).
BOOL ColourOfIndex256(const BYTE* table, ULONG index, ColourBytes& colour);
BOOL ColourOfIndex16(const BYTE* table, ULONG index, ColourBytes& colour);

// The entry nearest to a colour, the lowest of equals. 0 without a table.
BOOL NearestIndex256(const BYTE* table, const ColourBytes& colour, BYTE& index);
BOOL NearestIndex16(const BYTE* table, const ColourBytes& colour, BYTE& index);

// Which of two colours wins: the pair list first, else the lighter (pickColour 0) or darker one; the
// second of equals. True: the first wins.
bool FirstColourWins(const ColourBytes& first, const ColourBytes& second, ULONG pickColour);

// The same without the pair list.
bool IsPicked(const ColourBytes& first, const ColourBytes& second, ULONG pickColour);

// The winning index. The first when a lookup fails.
BYTE ChooseIndexedColour256(BYTE first, BYTE second, const BYTE* table, ULONG pickColour);
BYTE ChooseIndexedColour16(BYTE first, BYTE second, const BYTE* table, ULONG pickColour);

} // namespace koru
