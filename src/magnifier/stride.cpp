#include "magnifier/stride.h"

#include "magnifier/bitmaps.h"

namespace koru {

LONG StrideHoldingRow(LONG preferred, LONG width, ULONG iBitmapFormat)
{
    const LONGLONG row = (LONGLONG{width} * BitsPerPixel(iBitmapFormat) + 7) / 8;
    if (preferred > 0 && preferred >= row)
        return preferred;
    constexpr LONGLONG widest = 0x7FFFFFFC; // a bitmap of such rows is refused by the engine
    return static_cast<LONG>(row < widest ? (row + 3) & ~LONGLONG{3} : widest);
}

} // namespace koru
