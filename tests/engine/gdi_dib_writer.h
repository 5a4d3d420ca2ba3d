#pragma once

// Bitmaps inside of metafiles.

#include "tests/engine/gdi_metafile_writer.h"

namespace gdi_tests {

struct TestDib {
    Words info; // header and colours
    std::vector<BYTE> bits;
    ULONG usage = 0;
};

// The plain header; behind it colour tables or masks may be put. A negative height: top row first.
inline TestDib MakeDib(LONG width, LONG height, int depth, const std::vector<BYTE>& bits, ULONG compression = 0,
                       ULONG coloursUsed = 0)
{
    TestDib dib;
    dib.info = Words(40, width, height);
    dib.info.Halves(1, depth).Put(Words(compression, 0, 0, 0, coloursUsed, 0));
    dib.bits = bits;
    return dib;
}

inline TestDib WithColours(TestDib dib, const std::vector<ULONG>& colours) // 0xRRGGBB
{
    for (const ULONG colour : colours)
        dib.info.Put(colour);
    return dib;
}

// 2 x 2 pixels of 32 bits: red, green above blue, white.
inline TestDib FourColours(bool topDown = false)
{
    const std::vector<BYTE> above = {0, 0, 255, 0, 0, 255, 0, 0}, below = {255, 0, 0, 0, 255, 255, 255, 0};
    std::vector<BYTE> bits = topDown ? above : below;
    const std::vector<BYTE>& rest = topDown ? below : above;
    bits.insert(bits.end(), rest.begin(), rest.end());
    return MakeDib(2, topDown ? -2 : 2, 32, bits);
}

// 4 x 1 pixels of one bit: set, clear, set, set.
inline TestDib FourBits()
{
    return WithColours(MakeDib(4, 1, 1, {0xB0, 0, 0, 0}), {0x000000, 0xFFFFFF});
}

// Where header and bits are, when they follow `fixed` bytes of a record, type and size included.
inline Words Places(const TestDib& dib, std::size_t fixed)
{
    const auto infoSize = static_cast<ULONG>(dib.info.bytes.size()), at = static_cast<ULONG>(fixed);
    return Words(at, infoSize, at + infoSize, static_cast<ULONG>(dib.bits.size()));
}

inline Words& PutDib(Words& words, const TestDib& dib)
{
    words.Put(dib.info);
    return words.Bytes(dib.bits.data(), dib.bits.size());
}

struct Area {
    LONG x, y, cx, cy;
};

constexpr ULONG SrcCopy = 0xCC0020, SrcInvert = 0x660046, PatCopy = 0xF00021, DstInvert = 0x550009, PatPaint = 0xFB0A09;

inline Words StretchDibWords(const Area& to, const Area& from, const TestDib& dib, ULONG rop = SrcCopy)
{
    Words words = NoBounds;
    words.Put(Words(to.x, to.y, from.x, from.y, from.cx, from.cy)).Put(Places(dib, 80));
    words.Put(Words(dib.usage, rop, to.cx, to.cy));
    return PutDib(words, dib);
}

// What BITBLT and its relatives begin with; `extra` follows it, then the bitmap.
inline Words BlitWords(const Area& to, const POINTL& from, const TestDib& dib, ULONG operation, const Words& extra)
{
    Words words = NoBounds;
    words.Put(Words(to.x, to.y, to.cx, to.cy, operation, from.x, from.y));
    words.Put(Words(1.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f)).Put(Words(0xFFFFFF, dib.usage));
    words.Put(Places(dib, 100 + extra.bytes.size())).Put(extra);
    return PutDib(words, dib);
}

} // namespace gdi_tests
