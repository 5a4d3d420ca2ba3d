#pragma once

// The plain types of the display-driver interface on 32-bit x86. Every form of the driver has
// 32-bit pointers and 16-bit wide characters, so structures laid out here travel unchanged.

#include <cstddef>
#include <cstdint>

#define APIENTRY __attribute__((stdcall))

using VOID = void;
using BYTE = std::uint8_t;
using UCHAR = std::uint8_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using WORD = std::uint16_t;
using INT = std::int32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using FLONG = std::uint32_t;
using BOOL = std::int32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using WCHAR = char16_t;
using FIX = std::int32_t; // 28.4 fixed point: 16 units a pixel
using MIX = std::uint32_t; // foreground ROP2 in bits 0..7, background ROP2 in bits 8..15
using ROP4 = std::uint32_t; // ROP3 where the mask is 1 in bits 0..7, where it is 0 in bits 8..15
using COLORREF = std::uint32_t; // red in bits 0..7, green 8..15, blue 16..23
using HGLYPH = std::uint32_t;
using FWORD = std::int16_t; // font design units
using FLOATL = float;
using COLOR16 = std::uint16_t;
using LDECI4 = std::int32_t;

constexpr BOOL FALSE = 0;
constexpr BOOL TRUE = 1;

// Handles: 32 bits, of distinct types so that one cannot stand in for another unseen.
using HANDLE = void*;
using HSURF = struct HSURF__*;
using HBITMAP = struct HBITMAP__*; // an HSURF that the engine made from a bitmap
using HDEV = struct HDEV__*; // the engine's device
using DHSURF = struct DHSURF__*; // the driver's name for a surface
using DHPDEV = struct DHPDEV__*; // the driver's name for a device
using HSEMAPHORE = struct HSEMAPHORE__*;
using HPALETTE = struct HPALETTE__*;

struct POINTL {
    LONG x, y;
};
struct SIZEL {
    LONG cx, cy;
};
struct RECTL { // right and bottom are exclusive
    LONG left, top, right, bottom;
};
struct POINTFIX {
    FIX x, y;
};
struct RECTFX {
    FIX xLeft, yTop, xRight, yBottom;
};

static_assert(sizeof(void*) == 4, "the driver is 32-bit x86 in every form");
static_assert(sizeof(RECTL) == 16 && sizeof(POINTL) == 8 && sizeof(RECTFX) == 16);
