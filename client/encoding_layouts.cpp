#include "layout_rows.h"

namespace koru::client {
namespace {

    constexpr Field SurfaceFields[] = {
        KORU_FIELD(SurfaceEncoding, cached, 0),    KORU_FIELD(SurfaceEncoding, unwritten, 1),
        KORU_FIELD(SurfaceEncoding, unique, 4),    KORU_FIELD(SurfaceEncoding, dhsurf, 8),
        KORU_FIELD(SurfaceEncoding, hsurf, 12),    KORU_FIELD(SurfaceEncoding, dhpdev, 16),
        KORU_FIELD(SurfaceEncoding, hdev, 20),     KORU_FIELD(SurfaceEncoding, size, 24),
        KORU_FIELD(SurfaceEncoding, bitsSize, 32), KORU_FIELD(SurfaceEncoding, bits, 36),
        KORU_FIELD(SurfaceEncoding, scan0, 40),    KORU_FIELD(SurfaceEncoding, lDelta, 44),
        KORU_FIELD(SurfaceEncoding, format, 48),   KORU_FIELD(SurfaceEncoding, type, 52),
        KORU_FIELD(SurfaceEncoding, flags, 54),    KORU_FIELD(SurfaceEncoding, savedBits, 56),
        KORU_FIELD(SurfaceEncoding, reserved, 60),
    };
    static_assert(Tile(SurfaceFields, 0, sizeof(SurfaceEncoding)));

    constexpr Field ClipFields[] = {
        KORU_FIELD(ClipEncoding, cached, 0),      KORU_FIELD(ClipEncoding, unwritten, 1),
        KORU_FIELD(ClipEncoding, unique, 4),      KORU_FIELD(ClipEncoding, bounds, 8),
        KORU_FIELD(ClipEncoding, complexity, 24), KORU_FIELD(ClipEncoding, rectComplexity, 25),
        KORU_FIELD(ClipEncoding, mode, 26),       KORU_FIELD(ClipEncoding, options, 27),
        KORU_FIELD(ClipEncoding, count, 28),      KORU_FIELD(ClipEncoding, rectanglesOffset, 32),
    };
    static_assert(Tile(ClipFields, 0, sizeof(ClipEncoding)));

    constexpr Field BrushFields[] = {
        KORU_FIELD(BrushEncoding, solidColor, 0),
        KORU_FIELD(BrushEncoding, realized, 4),
        KORU_FIELD(BrushEncoding, realizedAgain, 8),
    };
    static_assert(Tile(BrushFields, 0, sizeof(BrushEncoding)));

    constexpr Field XlateFields[] = {
        KORU_FIELD(XlateEncoding, unique, 0),     KORU_FIELD(XlateEncoding, flags, 4),
        KORU_FIELD(XlateEncoding, sourceType, 8), KORU_FIELD(XlateEncoding, destType, 10),
        KORU_FIELD(XlateEncoding, count, 12),     KORU_FIELD(XlateEncoding, entriesOffset, 16),
    };
    static_assert(Tile(XlateFields, 0, sizeof(XlateEncoding)));

    constexpr Field DeviceModeFields[] = {
        KORU_FIELD(DeviceModeEncoding, deviceName, 0),     KORU_FIELD(DeviceModeEncoding, specVersion, 64),
        KORU_FIELD(DeviceModeEncoding, driverVersion, 66), KORU_FIELD(DeviceModeEncoding, size, 68),
        KORU_FIELD(DeviceModeEncoding, driverExtra, 70),   KORU_FIELD(DeviceModeEncoding, fields, 72),
        KORU_FIELD(DeviceModeEncoding, orientation, 76),   KORU_FIELD(DeviceModeEncoding, paperSize, 78),
        KORU_FIELD(DeviceModeEncoding, paperLength, 80),   KORU_FIELD(DeviceModeEncoding, paperWidth, 82),
        KORU_FIELD(DeviceModeEncoding, scale, 84),         KORU_FIELD(DeviceModeEncoding, copies, 86),
        KORU_FIELD(DeviceModeEncoding, defaultSource, 88), KORU_FIELD(DeviceModeEncoding, printQuality, 90),
        KORU_FIELD(DeviceModeEncoding, color, 92),         KORU_FIELD(DeviceModeEncoding, duplex, 94),
        KORU_FIELD(DeviceModeEncoding, yResolution, 96),   KORU_FIELD(DeviceModeEncoding, ttOption, 98),
        KORU_FIELD(DeviceModeEncoding, collate, 100),      KORU_FIELD(DeviceModeEncoding, formName, 102),
        KORU_FIELD(DeviceModeEncoding, logPixels, 166),    KORU_FIELD(DeviceModeEncoding, bitsPerPel, 168),
        KORU_FIELD(DeviceModeEncoding, width, 172),        KORU_FIELD(DeviceModeEncoding, height, 176),
        KORU_FIELD(DeviceModeEncoding, displayFlags, 180), KORU_FIELD(DeviceModeEncoding, frequency, 184),
    };
    static_assert(Tile(DeviceModeFields, 0, sizeof(DeviceModeEncoding)));

    constexpr Field LogFontFields[] = {
        KORU_FIELD(LogFontEncoding, height, 0),          KORU_FIELD(LogFontEncoding, width, 4),
        KORU_FIELD(LogFontEncoding, escapement, 8),      KORU_FIELD(LogFontEncoding, orientation, 12),
        KORU_FIELD(LogFontEncoding, weight, 16),         KORU_FIELD(LogFontEncoding, italic, 20),
        KORU_FIELD(LogFontEncoding, underline, 21),      KORU_FIELD(LogFontEncoding, strikeOut, 22),
        KORU_FIELD(LogFontEncoding, charSet, 23),        KORU_FIELD(LogFontEncoding, outPrecision, 24),
        KORU_FIELD(LogFontEncoding, clipPrecision, 25),  KORU_FIELD(LogFontEncoding, quality, 26),
        KORU_FIELD(LogFontEncoding, pitchAndFamily, 27), KORU_FIELD(LogFontEncoding, faceName, 28),
    };
    static_assert(Tile(LogFontFields, 0, sizeof(LogFontEncoding)));

    constexpr Field DeviceInfoFields[] = {
        KORU_FIELD(DeviceInfoEncoding, graphicsCaps, 0),
        KORU_FIELD(DeviceInfoEncoding, defaultFontOffset, 4),
        KORU_FIELD(DeviceInfoEncoding, ansiVariableFontOffset, 8),
        KORU_FIELD(DeviceInfoEncoding, ansiFixedFontOffset, 12),
        KORU_FIELD(DeviceInfoEncoding, fontCount, 16),
        KORU_FIELD(DeviceInfoEncoding, ditherFormat, 20),
        KORU_FIELD(DeviceInfoEncoding, ditherWidth, 24),
        KORU_FIELD(DeviceInfoEncoding, ditherHeight, 26),
        KORU_FIELD(DeviceInfoEncoding, defaultPalette, 28),
    };
    static_assert(Tile(DeviceInfoFields, 0, sizeof(DeviceInfoEncoding)));

    constexpr Field PathFields[] = {
        KORU_FIELD(PathEncoding, flags, 0),       KORU_FIELD(PathEncoding, curves, 4),
        KORU_FIELD(PathEncoding, unwritten, 8),   KORU_FIELD(PathEncoding, entryCount, 12),
        KORU_FIELD(PathEncoding, dataOffset, 16),
    };
    static_assert(Tile(PathFields, 0, sizeof(PathEncoding)));

    constexpr Field PathEntryFields[] = {
        KORU_FIELD(PathEntry, flags, 0),
        KORU_FIELD(PathEntry, pointCount, 4),
        KORU_FIELD(PathEntry, pointsOffset, 8),
    };
    static_assert(Tile(PathEntryFields, 0, sizeof(PathEntry)));

    constexpr Field LineAttributesFields[] = {
        KORU_FIELD(LineAttributesEncoding, flags, 0),       KORU_FIELD(LineAttributesEncoding, join, 4),
        KORU_FIELD(LineAttributesEncoding, endCap, 8),      KORU_FIELD(LineAttributesEncoding, width, 12),
        KORU_FIELD(LineAttributesEncoding, miterLimit, 16), KORU_FIELD(LineAttributesEncoding, styleCount, 20),
        KORU_FIELD(LineAttributesEncoding, styles, 24),     KORU_FIELD(LineAttributesEncoding, styleState, 28),
    };
    static_assert(Tile(LineAttributesFields, 0, sizeof(LineAttributesEncoding)));

    constexpr Field StringFields[] = {
        KORU_FIELD(StringEncoding, codePage, 0),    KORU_FIELD(StringEncoding, accelFlags, 4),
        KORU_FIELD(StringEncoding, charInc, 8),     KORU_FIELD(StringEncoding, rclBackground, 12),
        KORU_FIELD(StringEncoding, glyphCount, 28), KORU_FIELD(StringEncoding, glyphsOffset, 32),
        KORU_FIELD(StringEncoding, textOffset, 36),
    };
    static_assert(Tile(StringFields, 0, sizeof(StringEncoding)));

    constexpr Field GlyphPositionFields[] = {
        KORU_FIELD(GlyphPosition, glyph, 0),
        KORU_FIELD(GlyphPosition, position, 4),
        KORU_FIELD(GlyphPosition, origin, 12),
        KORU_FIELD(GlyphPosition, size, 20),
    };
    static_assert(Tile(GlyphPositionFields, 0, sizeof(GlyphPosition)));

    constexpr Field FontFields[] = {
        KORU_FIELD(FontEncoding, cached, 0),         KORU_FIELD(FontEncoding, unwritten, 1),
        KORU_FIELD(FontEncoding, unique, 4),         KORU_FIELD(FontEncoding, face, 8),
        KORU_FIELD(FontEncoding, maxWidth, 12),      KORU_FIELD(FontEncoding, fontType, 16),
        KORU_FIELD(FontEncoding, ttUnique, 20),      KORU_FIELD(FontEncoding, file, 24),
        KORU_FIELD(FontEncoding, resolution, 28),    KORU_FIELD(FontEncoding, styleSize, 36),
        KORU_FIELD(FontEncoding, consumer, 40),      KORU_FIELD(FontEncoding, producer, 44),
        KORU_FIELD(FontEncoding, metricsSize, 48),   KORU_FIELD(FontEncoding, metricsExtra, 52),
        KORU_FIELD(FontEncoding, familyOffset, 56),  KORU_FIELD(FontEncoding, styleOffset, 60),
        KORU_FIELD(FontEncoding, faceOffset, 64),    KORU_FIELD(FontEncoding, uniqueOffset, 68),
        KORU_FIELD(FontEncoding, metrics, 72),       KORU_FIELD(FontEncoding, familyLength, 232),
        KORU_FIELD(FontEncoding, styleLength, 236),  KORU_FIELD(FontEncoding, faceLength, 240),
        KORU_FIELD(FontEncoding, uniqueLength, 244),
    };
    static_assert(Tile(FontFields, 0, sizeof(FontEncoding)));

    constexpr Field GradientVertexFields[] = {
        KORU_FIELD(GradientVertex, x, 0),     KORU_FIELD(GradientVertex, y, 4),
        KORU_FIELD(GradientVertex, red, 8),   KORU_FIELD(GradientVertex, green, 10),
        KORU_FIELD(GradientVertex, blue, 12), KORU_FIELD(GradientVertex, alpha, 14),
    };
    static_assert(Tile(GradientVertexFields, 0, sizeof(GradientVertex)));

    constexpr Field BlendFunctionFields[] = {
        KORU_FIELD(BlendFunction, operation, 0),
        KORU_FIELD(BlendFunction, flags, 1),
        KORU_FIELD(BlendFunction, alpha, 2),
        KORU_FIELD(BlendFunction, format, 3),
    };
    static_assert(Tile(BlendFunctionFields, 0, sizeof(BlendFunction)));

    constexpr Field ColorAdjustmentFields[] = {
        KORU_FIELD(ColorAdjustment, size, 0),
        KORU_FIELD(ColorAdjustment, flags, 2),
        KORU_FIELD(ColorAdjustment, illuminant, 4),
        KORU_FIELD(ColorAdjustment, redGamma, 6),
        KORU_FIELD(ColorAdjustment, greenGamma, 8),
        KORU_FIELD(ColorAdjustment, blueGamma, 10),
        KORU_FIELD(ColorAdjustment, referenceBlack, 12),
        KORU_FIELD(ColorAdjustment, referenceWhite, 14),
        KORU_FIELD(ColorAdjustment, contrast, 16),
        KORU_FIELD(ColorAdjustment, brightness, 18),
        KORU_FIELD(ColorAdjustment, colorfulness, 20),
        KORU_FIELD(ColorAdjustment, redGreenTint, 22),
    };
    static_assert(Tile(ColorAdjustmentFields, 0, sizeof(ColorAdjustment)));

    constexpr const Layout* Encodings[] = {
        &SurfaceLayout,    &ClipLayout,           &BrushLayout,         &XlateLayout,
        &DeviceModeLayout, &LogFontLayout,        &DeviceInfoLayout,    &PathLayout,
        &PathEntryLayout,  &LineAttributesLayout, &StringLayout,        &GlyphPositionLayout,
        &FontLayout,       &GradientVertexLayout, &BlendFunctionLayout, &ColorAdjustmentLayout,
    };

} // namespace

constinit const Layout SurfaceLayout{"Surface", sizeof(SurfaceEncoding), SurfaceFields};
constinit const Layout ClipLayout{"Clip", sizeof(ClipEncoding), ClipFields};
constinit const Layout BrushLayout{"Brush", sizeof(BrushEncoding), BrushFields};
constinit const Layout XlateLayout{"Xlate", sizeof(XlateEncoding), XlateFields};
constinit const Layout DeviceModeLayout{"DeviceMode", sizeof(DeviceModeEncoding), DeviceModeFields};
constinit const Layout LogFontLayout{"LogFont", sizeof(LogFontEncoding), LogFontFields};
constinit const Layout DeviceInfoLayout{"DeviceInfo", sizeof(DeviceInfoEncoding), DeviceInfoFields};
constinit const Layout PathLayout{"Path", sizeof(PathEncoding), PathFields};
constinit const Layout PathEntryLayout{"PathEntry", sizeof(PathEntry), PathEntryFields};
constinit const Layout LineAttributesLayout{"LineAttributes", sizeof(LineAttributesEncoding), LineAttributesFields};
constinit const Layout StringLayout{"String", sizeof(StringEncoding), StringFields};
constinit const Layout GlyphPositionLayout{"GlyphPosition", sizeof(GlyphPosition), GlyphPositionFields};
constinit const Layout FontLayout{"Font", sizeof(FontEncoding), FontFields};
constinit const Layout GradientVertexLayout{"GradientVertex", sizeof(GradientVertex), GradientVertexFields};
constinit const Layout BlendFunctionLayout{"BlendFunction", sizeof(BlendFunction), BlendFunctionFields};
constinit const Layout ColorAdjustmentLayout{"ColorAdjustment", sizeof(ColorAdjustment), ColorAdjustmentFields};

std::span<const Layout* const> EncodingLayouts()
{
    return Encodings;
}

} // namespace koru::client
