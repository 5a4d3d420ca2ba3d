#pragma once

// Metafiles put together word by word.

#include <cstring>
#include <string>
#include <vector>

#include "platform/types.h"

namespace gdi_tests {

class Words {
public:
    Words() = default;
    template<class... Values> explicit Words(Values... values) { (Put(values), ...); }
    Words& Put(LONG value) { return Bytes(&value, 4); }
    Words& Put(ULONG value) { return Bytes(&value, 4); }
    Words& Put(float value) { return Bytes(&value, 4); }
    Words& Half(int value) { return Bytes(&value, 2); }
    template<class... Values> Words& Halves(Values... values)
    {
        (Half(values), ...);
        return *this;
    }
    Words& Put(const Words& other)
    {
        bytes.insert(bytes.end(), other.bytes.begin(), other.bytes.end());
        return *this;
    }
    Words& Bytes(const void* data, std::size_t size)
    {
        const auto* const first = static_cast<const BYTE*>(data);
        bytes.insert(bytes.end(), first, first + size);
        return *this;
    }
    Words& Text(const std::u16string& text) { return Bytes(text.data(), text.size() * 2); }
    Words& Zeros(std::size_t size)
    {
        bytes.resize(bytes.size() + size);
        return *this;
    }

    std::vector<BYTE> bytes;
};

// A drawing for a device of 1000 x 1000 pixels, each a millimetre square, framed to its upper left `width` x
// `height` of them: played into a rectangle of that size it is neither moved nor scaled.
class Metafile {
public:
    explicit Metafile(LONG width = 40, LONG height = 30)
    {
        constexpr LONG pixels = 1000, hundredths = 100;
        Words header(0, 0, width - 1, height - 1, 0, 0, width * hundredths, height * hundredths);
        header.Put(LONG{0x464D4520}).Put(LONG{0x10000}).Zeros(8).Halves(16, 0).Zeros(12);
        header.Put(Words(pixels, pixels, pixels, pixels));
        Add(1, header);
    }

    Metafile& Add(ULONG type, const Words& fields = Words())
    {
        offsets.push_back(bytes.size());
        const std::size_t size = (8 + fields.bytes.size() + 3) / 4 * 4;
        const Words head(type, static_cast<ULONG>(size));
        bytes.insert(bytes.end(), head.bytes.begin(), head.bytes.end());
        bytes.insert(bytes.end(), fields.bytes.begin(), fields.bytes.end());
        bytes.resize(offsets.back() + size);
        return *this;
    }
    Metafile& End() { return Add(14, Words(0, 16, 20)); }

    void Set(std::size_t at, ULONG word) { std::memcpy(&bytes[at], &word, 4); }

    std::vector<BYTE> bytes;
    std::vector<std::size_t> offsets; // of the records
};

enum RecordType : ULONG {
    PolyBezier = 2,
    Polygon = 3,
    Polyline = 4,
    PolyBezierTo = 5,
    PolylineTo = 6,
    PolyPolyline = 7,
    PolyPolygon = 8,
    SetWindowExt = 9,
    SetWindowOrg = 10,
    SetViewportExt = 11,
    SetViewportOrg = 12,
    SetBrushOrg = 13,
    SetPixelV = 15,
    SetMapMode = 17,
    SetBkMode = 18,
    SetPolyFillMode = 19,
    SetRop2 = 20,
    SetStretchBltMode = 21,
    SetTextAlign = 22,
    SetColorAdjustment = 23,
    SetTextColor = 24,
    SetBkColor = 25,
    OffsetClip = 26,
    MoveTo = 27,
    SetMetaRgn = 28,
    ExcludeClip = 29,
    IntersectClip = 30,
    ScaleViewportExt = 31,
    ScaleWindowExt = 32,
    SaveDc = 33,
    RestoreDc = 34,
    SetWorldTransform = 35,
    ModifyWorldTransform = 36,
    SelectObject = 37,
    CreatePen = 38,
    CreateBrush = 39,
    DeleteObject = 40,
    AngleArc = 41,
    Ellipse = 42,
    Rectangle = 43,
    RoundRect = 44,
    Arc = 45,
    Chord = 46,
    Pie = 47,
    SelectPalette = 48,
    CreatePalette = 49,
    SetPaletteEntries = 50,
    ResizePalette = 51,
    RealizePalette = 52,
    LineTo = 54,
    ArcTo = 55,
    PolyDraw = 56,
    SetArcDirection = 57,
    SetMiterLimit = 58,
    BeginPath = 59,
    EndPath = 60,
    CloseFigure = 61,
    FillPath = 62,
    StrokeAndFillPath = 63,
    StrokePath = 64,
    FlattenPath = 65,
    WidenPath = 66,
    SelectClipPath = 67,
    AbortPath = 68,
    Comment = 70,
    FillRgn = 71,
    FrameRgn = 72,
    InvertRgn = 73,
    PaintRgn = 74,
    SelectClipRgn = 75,
    BitBlt = 76,
    StretchBlt = 77,
    MaskBlt = 78,
    PlgBlt = 79,
    SetDiBitsToDevice = 80,
    StretchDiBits = 81,
    CreateFont = 82,
    TextOutA = 83,
    TextOutW = 84,
    PolyBezier16 = 85,
    Polygon16 = 86,
    Polyline16 = 87,
    PolyBezierTo16 = 88,
    PolylineTo16 = 89,
    PolyPolyline16 = 90,
    PolyPolygon16 = 91,
    PolyDraw16 = 92,
    CreateMonoBrush = 93,
    CreateDibBrush = 94,
    ExtCreatePen = 95,
    PolyTextOutA = 96,
    PolyTextOutW = 97,
    SmallTextOut = 108,
    AlphaBlend = 114,
    SetLayout = 115,
    TransparentBlt = 116,
    GradientFill = 118,
    SetTextJustification = 120
};

constexpr ULONG Stock = 0x80000000, WhiteBrush = Stock | 0, BlackBrush = Stock | 4, NullBrush = Stock | 5;
constexpr ULONG WhitePen = Stock | 6, BlackPen = Stock | 7, NullPen = Stock | 8;

inline const Words NoBounds(0, 0, -1, -1);

} // namespace gdi_tests
