#pragma once

#include "driver/driver_values.h"
#include "escape/color_pair_list.h"

// How a pixel lies in a row, per format. Access only: a row is addressed by its first byte. Rows may
// begin at odd addresses; the compiler's own memcpy makes one instruction of a pixel, not a call.
namespace koru {

struct Pixel1 {
    using Value = BYTE;
    static Value Read(const BYTE* row, LONG x) { return row[x >> 3] >> (7 - (x & 7)) & 1; }
    static void Write(BYTE* row, LONG x, Value value)
    {
        const BYTE bit = static_cast<BYTE>(0x80 >> (x & 7));
        row[x >> 3] = static_cast<BYTE>((row[x >> 3] & ~bit) | (value & 1 ? bit : 0));
    }
};

struct Pixel4 {
    using Value = BYTE;
    static Value Read(const BYTE* row, LONG x) { return x & 1 ? row[x >> 1] & 0x0F : row[x >> 1] >> 4; }
    static void Write(BYTE* row, LONG x, Value value)
    {
        const BYTE other = row[x >> 1];
        row[x >> 1] = static_cast<BYTE>(x & 1 ? (other & 0xF0) | (value & 0x0F) : (other & 0x0F) | value << 4);
    }
};

struct Pixel8 {
    using Value = BYTE;
    static Value Read(const BYTE* row, LONG x) { return row[x]; }
    static void Write(BYTE* row, LONG x, Value value) { row[x] = value; }
};

struct Pixel16 {
    using Value = USHORT;
    static Value Read(const BYTE* row, LONG x)
    {
        Value value;
        __builtin_memcpy(&value, row + x * 2, sizeof(value));
        return value;
    }
    static void Write(BYTE* row, LONG x, Value value) { __builtin_memcpy(row + x * 2, &value, sizeof(value)); }
};

struct Pixel24 {
    using Value = ULONG; // the upper byte is 0
    static Value Read(const BYTE* row, LONG x)
    {
        const BYTE* const pixel = row + x * 3;
        return static_cast<Value>(pixel[0] | pixel[1] << 8 | pixel[2] << 16);
    }
    static void Write(BYTE* row, LONG x, Value value)
    {
        BYTE* const pixel = row + x * 3;
        pixel[0] = static_cast<BYTE>(value);
        pixel[1] = static_cast<BYTE>(value >> 8);
        pixel[2] = static_cast<BYTE>(value >> 16);
    }
};

struct Pixel32 {
    using Value = ULONG;
    static Value Read(const BYTE* row, LONG x)
    {
        Value value;
        __builtin_memcpy(&value, row + x * 4, sizeof(value));
        return value;
    }
    static void Write(BYTE* row, LONG x, Value value) { __builtin_memcpy(row + x * 4, &value, sizeof(value)); }
};

constexpr BYTE Expand5(ULONG component)
{
    return static_cast<BYTE>(component * 8 + component / 4);
}

constexpr ColourBytes ColourOf565(USHORT pixel)
{
    const ULONG green = pixel >> 5 & 0x3F;
    return {Expand5(pixel & 0x1F), static_cast<BYTE>(green * 4 + green / 16), Expand5(pixel >> 11 & 0x1Fu)};
}

constexpr ColourBytes ColourOf555(USHORT pixel)
{
    return {Expand5(pixel & 0x1F), Expand5(pixel >> 5 & 0x1Fu), Expand5(pixel >> 10 & 0x1Fu)};
}

constexpr ColourBytes ColourOf888(ULONG pixel)
{
    return {static_cast<BYTE>(pixel), static_cast<BYTE>(pixel >> 8), static_cast<BYTE>(pixel >> 16)};
}

// The format of 16-bit pixels is that of the mode: 5-5-5 when 15 bits were asked for.
inline bool HasFiveBitGreen()
{
    return RequestedColourDepth == 15;
}

} // namespace koru
