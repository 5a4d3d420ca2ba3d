#pragma once

// Ternary raster operations. The bit (pattern << 2 | source << 1 | target) of a ROP3 is what becomes of
// such a triple of bits.

#include "platform/platform.h"

namespace engine::raster {

// Combines a row of pixels, bit by bit.
using RopFunction = void (*)(const ULONG* pattern, const ULONG* source, ULONG* target, LONG count);

RopFunction Rop3Function(BYTE rop);

constexpr bool UsesPattern(BYTE rop)
{
    return ((rop >> 4 ^ rop) & 0x0F) != 0;
}

constexpr bool UsesSource(BYTE rop)
{
    return ((rop >> 2 ^ rop) & 0x33) != 0;
}

constexpr BYTE ForegroundRop(ROP4 rop4)
{
    return static_cast<BYTE>(rop4);
}

constexpr BYTE BackgroundRop(ROP4 rop4)
{
    return static_cast<BYTE>(rop4 >> 8);
}

constexpr bool UsesPattern(ROP4 rop4)
{
    return UsesPattern(ForegroundRop(rop4)) || UsesPattern(BackgroundRop(rop4));
}

constexpr bool UsesSource(ROP4 rop4)
{
    return UsesSource(ForegroundRop(rop4)) || UsesSource(BackgroundRop(rop4));
}

// Both halves of a mix (R2_BLACK is 1, R2_WHITE 16) as raster operations on pattern and target.
ROP4 RopOfMix(MIX mix);

constexpr ROP4 CopySource = 0xCCCC, CopyPattern = 0xF0F0;
constexpr ROP4 CopySourceThroughMask = 0xAACC;
constexpr MIX CopyPen = 0x0D0D;

} // namespace engine::raster
