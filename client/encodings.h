#pragma once

// The wire format of the objects behind a record's fixed part. Offsets inside an encoding count from the
// encoding's start. Encodings follow each other without padding and may stand at odd addresses: copy them
// out of the record, as the decoder does, before looking at a field.

#include "wire_types.h"

namespace koru::client {

using SurfaceSlot = SlotTo<ObjectKind::Surface>;
using ClipSlot = SlotTo<ObjectKind::Clip>;
using BrushSlot = SlotTo<ObjectKind::Brush>;
using XlateSlot = SlotTo<ObjectKind::Xlate>;
using DeviceModeSlot = SlotTo<ObjectKind::DeviceMode>;
using DeviceInfoSlot = SlotTo<ObjectKind::DeviceInfo>;
using PathSlot = SlotTo<ObjectKind::Path>;
using LineAttributesSlot = SlotTo<ObjectKind::LineAttributes>;
using StringSlot = SlotTo<ObjectKind::String>;
using FontSlot = SlotTo<ObjectKind::Font>;
using WideTextSlot = SlotTo<ObjectKind::WideText>;
using ExtraRectanglesSlot = SlotTo<ObjectKind::ExtraRectangles>;
using PaletteEntriesSlot = SlotTo<ObjectKind::PaletteEntries>;
using PatternHandlesSlot = SlotTo<ObjectKind::PatternHandles>;
using EscapeInputSlot = SlotTo<ObjectKind::EscapeInput>;
using EscapeOutputSlot = SlotTo<ObjectKind::EscapeOutput>;
using GradientArraysSlot = SlotTo<ObjectKind::GradientArrays>;

struct SurfaceEncoding {
    std::uint8_t cached; // 1: the client has registered the unique number
    Unwritten<3> unwritten;
    std::uint32_t unique;
    std::uint32_t dhsurf, hsurf, dhpdev, hdev;
    Size size;
    std::uint32_t bitsSize; // bytes
    std::uint32_t bits, scan0; // kernel addresses
    std::int32_t lDelta;
    std::uint32_t format;
    std::uint16_t type;
    std::uint16_t flags;
    Zero savedBits;
    Zero reserved;
};
static_assert(sizeof(SurfaceEncoding) == 64);

struct ClipEncoding { // `count` rectangles follow
    std::uint8_t cached;
    Unwritten<3> unwritten;
    std::uint32_t unique;
    Rect bounds;
    std::uint8_t complexity; // rectangles are listed for 3 (complex) only
    std::uint8_t rectComplexity;
    std::uint8_t mode;
    std::uint8_t options;
    std::uint32_t count;
    std::uint32_t rectanglesOffset; // 36, or 0 when there are none
};
static_assert(sizeof(ClipEncoding) == 36);

struct BrushEncoding {
    std::uint32_t solidColor;
    std::uint32_t realized; // kernel address
    std::uint32_t realizedAgain; // the same number
};
static_assert(sizeof(BrushEncoding) == 12);

struct XlateEncoding { // `count` entries of four bytes follow when `entriesOffset` is 20
    std::uint32_t unique;
    std::uint32_t flags;
    std::uint16_t sourceType, destType;
    std::uint32_t count;
    std::uint32_t entriesOffset; // 20, or a kernel address when no entries were copied
};
static_assert(sizeof(XlateEncoding) == 20);

struct DeviceModeEncoding {
    char16_t deviceName[32]; // the last one is 0
    std::uint16_t specVersion, driverVersion, size, driverExtra;
    std::uint32_t fields;
    std::int16_t orientation, paperSize, paperLength, paperWidth, scale, copies, defaultSource;
    Unwritten<2> printQuality;
    std::int16_t color, duplex, yResolution, ttOption, collate;
    char16_t formName[32]; // the last one is 0
    std::uint16_t logPixels;
    std::uint32_t bitsPerPel, width, height, displayFlags, frequency;
};
static_assert(sizeof(DeviceModeEncoding) == 188);

struct LogFontEncoding {
    std::int32_t height, width, escapement, orientation, weight;
    std::uint8_t italic, underline, strikeOut, charSet;
    std::uint8_t outPrecision, clipPrecision, quality, pitchAndFamily;
    char16_t faceName[16]; // not terminated when the name is longer; of the last one only the low byte is kept
};
static_assert(sizeof(LogFontEncoding) == 60);

struct DeviceInfoEncoding { // up to three LogFontEncodings follow
    std::uint32_t graphicsCaps;
    std::uint32_t defaultFontOffset, ansiVariableFontOffset, ansiFixedFontOffset; // or 0
    std::uint32_t fontCount;
    std::uint32_t ditherFormat;
    std::uint16_t ditherWidth, ditherHeight;
    std::uint32_t defaultPalette;
};
static_assert(sizeof(DeviceInfoEncoding) == 32);

struct PathEncoding { // `entryCount` PathEntries follow, then the points of all subpaths
    std::uint32_t flags;
    std::uint32_t curves;
    Unwritten<4> unwritten;
    std::uint32_t entryCount;
    std::uint32_t dataOffset; // 20, or 0 when the entries did not fit
};
static_assert(sizeof(PathEncoding) == 20);

struct PathEntry {
    std::uint32_t flags;
    std::uint32_t pointCount;
    std::uint32_t pointsOffset; // from this entry to its points; 0 in the first entry and where points were lost
};
static_assert(sizeof(PathEntry) == 12);

struct LineAttributesEncoding { // `styleCount` styles of four bytes follow when there is room for them
    std::uint32_t flags;
    std::uint32_t join, endCap;
    std::uint32_t width; // pixels; a float in geometric lines
    std::uint32_t miterLimit; // a float
    std::uint32_t styleCount;
    Zero styles;
    std::uint32_t styleState;
};
static_assert(sizeof(LineAttributesEncoding) == 32);

struct StringEncoding {
    std::uint32_t codePage;
    std::uint32_t accelFlags;
    std::uint32_t charInc;
    Rect rclBackground;
    std::uint32_t glyphCount;
    std::uint32_t glyphsOffset; // of the glyph positions, or 0
    std::uint32_t textOffset; // of the characters, or 0
};
static_assert(sizeof(StringEncoding) == 40);

struct GlyphPosition {
    std::uint32_t glyph;
    Point position;
    Point origin; // of the glyph's bitmap; zeros, as the size, when the glyph has none
    Size size;
};
static_assert(sizeof(GlyphPosition) == 28);

struct FontEncoding { // up to four zero-terminated names follow
    std::uint8_t cached;
    Unwritten<3> unwritten;
    std::uint32_t unique;
    std::uint32_t face;
    std::uint32_t maxWidth;
    std::uint32_t fontType;
    std::uint32_t ttUnique;
    std::uint32_t file;
    Size resolution;
    std::uint32_t styleSize;
    std::uint32_t consumer, producer; // kernel addresses
    std::uint32_t metricsSize, metricsExtra; // from here to `metrics`: the start of the font's IFIMETRICS
    std::uint32_t familyOffset, styleOffset, faceOffset, uniqueOffset; // of the names; stale without the name
    std::uint8_t metrics[160];
    std::uint32_t familyLength, styleLength, faceLength, uniqueLength; // characters; stale without the name
};
static_assert(sizeof(FontEncoding) == 248);

struct GradientVertex {
    std::int32_t x, y;
    std::uint16_t red, green, blue, alpha;
};
static_assert(sizeof(GradientVertex) == 16);

struct BlendFunction {
    std::uint8_t operation, flags, alpha, format;
};
static_assert(sizeof(BlendFunction) == 4);

struct ColorAdjustment {
    std::uint16_t size, flags, illuminant, redGamma, greenGamma, blueGamma, referenceBlack, referenceWhite;
    std::int16_t contrast, brightness, colorfulness, redGreenTint;
};
static_assert(sizeof(ColorAdjustment) == 24);

} // namespace koru::client
