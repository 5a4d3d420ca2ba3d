#pragma once

#include "platform/objects.h"

// What the engine's services follow without a look: calls that lack it are not passed on.
namespace koru {

// One half of a raster operation: the bit (pattern << 2 | source << 1 | target) is what becomes of such
// a triple of bits.
constexpr bool RopReadsSource(BYTE rop)
{
    return ((rop >> 2 ^ rop) & 0x33) != 0;
}
constexpr bool RopReadsSource(ROP4 rop4)
{
    return RopReadsSource(static_cast<BYTE>(rop4)) || RopReadsSource(static_cast<BYTE>(rop4 >> 8));
}

// A surface goes with the place in it that is read.
inline bool HasPlace(const SURFOBJ* pso, const POINTL* pptl)
{
    return !pso || pptl;
}

} // namespace koru
