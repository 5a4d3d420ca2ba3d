#include "hooks/line_width.h"

#include "platform/constants.h"

namespace koru {

namespace {

    constexpr LONG FarthestReach = 0x10000; // beyond every screen

    // The width is a float, and there is no floating point here: the next whole number above, from
    // its bits.
    LONG RoundedUp(ULONG bits)
    {
        constexpr ULONG fractionBits = 23;
        const LONG exponent = static_cast<LONG>((bits >> fractionBits) & 0xFF) - 127;
        const ULONG mantissa = (bits & 0x7FFFFF) | 0x800000;
        if ((bits & 0x7FFFFFFF) == 0)
            return 0;
        if (exponent < 0)
            return 1;
        if (exponent >= 16)
            return FarthestReach;
        const ULONG shift = fractionBits - static_cast<ULONG>(exponent);
        return static_cast<LONG>((mantissa + (1u << shift) - 1) >> shift);
    }

} // namespace

LONG ReachOfPen(const LINEATTRS* plineattrs)
{
    if (!plineattrs || !(plineattrs->fl & LA_GEOMETRIC))
        return 0;
    return RoundedUp(static_cast<ULONG>(plineattrs->elWidth.l));
}

} // namespace koru
