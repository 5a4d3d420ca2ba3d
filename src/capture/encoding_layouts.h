#pragma once

// How the objects of a call stand in its record. Encodings begin at any offset, so these are packed:
// assign field by field, take no field's address. Pointers and handles are plain numbers that
// identify, never to be followed. `unwritten` bytes keep what the buffer held.

#include "capture/layout_checks.h"
#include "platform/objects.h"
#include "platform/structures.h"

namespace koru {

#pragma pack(push, 1)

struct SurfaceEncoding {
    BYTE cached; // 1: the client holds this surface already
    BYTE unwritten[3];
    ULONG iUniq, dhsurf, hsurf, dhpdev, hdev;
    SIZEL sizlBitmap;
    ULONG cjBits, pvBits, pvScan0;
    LONG lDelta;
    ULONG iBitmapFormat;
    USHORT iType, fjBitmap;
    ULONG savedBits, reserved; // both 0
};

struct ClipEncoding {
    BYTE cached;
    BYTE unwritten[3];
    ULONG iUniq;
    RECTL rclBounds;
    BYTE iDComplexity, iFComplexity, iMode, fjOptions;
    ULONG rectangleCount;
    ULONG rectangles; // where they begin, 0 when there are none
};

struct BrushEncoding {
    ULONG iSolidColor;
    ULONG pvRbrush;
    ULONG pvRbrushAgain; // clients know it there, in place of the colour type
};

struct XlateEncoding { // begins as the object itself does
    ULONG iUniq, flXlate;
    USHORT iSrcType, iDstType;
    ULONG cEntries; // 0 when they are not included
    ULONG entries; // where they begin; the object's own pointer when they are not included
};

struct DevModeEncoding { // as the object itself, up to the display frequency
    WCHAR dmDeviceName[32];
    WORD dmSpecVersion, dmDriverVersion, dmSize, dmDriverExtra;
    DWORD dmFields;
    SHORT dmOrientation, dmPaperSize, dmPaperLength, dmPaperWidth, dmScale, dmCopies, dmDefaultSource;
    SHORT unwritten; // the print quality
    SHORT dmColor, dmDuplex, dmYResolution, dmTTOption, dmCollate;
    WCHAR dmFormName[32];
    WORD dmLogPixels;
    DWORD dmBitsPerPel, dmPelsWidth, dmPelsHeight, dmDisplayFlags, dmDisplayFrequency;
};

struct LogFontEncoding { // as the object itself, with half the face name
    LONG lfHeight, lfWidth, lfEscapement, lfOrientation, lfWeight;
    BYTE lfItalic, lfUnderline, lfStrikeOut, lfCharSet;
    BYTE lfOutPrecision, lfClipPrecision, lfQuality, lfPitchAndFamily;
    BYTE lfFaceName[32]; // 16 characters; the last byte is 0, so a long name has no terminator
};

struct DevInfoEncoding {
    ULONG flGraphicsCaps;
    ULONG defaultFont, ansiVarFont, ansiFixFont; // where each begins, or 0
    ULONG cFonts, iDitherFormat;
    USHORT cxDither, cyDither;
    ULONG hpalDefault;
};

struct PathEncoding {
    ULONG fl, cCurves, unwritten;
    ULONG subpathCount;
    ULONG pathData; // where the subpaths begin, 0 when they could not be written
};

struct SubpathEncoding {
    ULONG flags, count;
    ULONG points; // bytes from here to the first point; 0 for the first entry and where points are lost
};

struct LineAttrsEncoding { // as the object itself
    ULONG fl, iJoin, iEndCap, elWidth, eMiterLimit, cstyle;
    ULONG pstyle; // always 0: the styles follow directly
    ULONG elStyleState;
};

struct StringEncoding {
    ULONG codePage, flAccel, ulCharInc;
    RECTL rclBkGround;
    ULONG cGlyphs;
    ULONG glyphs, string; // where each begins, or 0
};

struct GlyphEncoding {
    ULONG hg;
    POINTL ptl;
    POINTL ptlOrigin; // of the bitmap
    SIZEL sizlBitmap;
};

struct MetricsEncoding { // the start of an IFIMETRICS
    ULONG cjThis, cjIfiExtra;
    ULONG names[4]; // family, style, face, unique: from the font encoding's start where the name is included
    BYTE others[160];
};

struct FontEncoding {
    BYTE cached;
    BYTE unwritten[3];
    ULONG iUniq, iFace, cxMax, flFontType, iTTUniq, iFile;
    SIZEL sizLogResPpi;
    ULONG ulStyleSize, pvConsumer, pvProducer;
    MetricsEncoding metrics;
    ULONG nameLengths[4]; // in characters; unwritten for a name that is not included
};

#pragma pack(pop)

static_assert(sizeof(SurfaceEncoding) == 64);
FIELD_AT(SurfaceEncoding, cached, 0);
FIELD_AT(SurfaceEncoding, unwritten, 1);
FIELD_AT(SurfaceEncoding, iUniq, 4);
FIELD_AT(SurfaceEncoding, dhsurf, 8);
FIELD_AT(SurfaceEncoding, hsurf, 12);
FIELD_AT(SurfaceEncoding, dhpdev, 16);
FIELD_AT(SurfaceEncoding, hdev, 20);
FIELD_AT(SurfaceEncoding, sizlBitmap, 24);
FIELD_AT(SurfaceEncoding, cjBits, 32);
FIELD_AT(SurfaceEncoding, pvBits, 36);
FIELD_AT(SurfaceEncoding, pvScan0, 40);
FIELD_AT(SurfaceEncoding, lDelta, 44);
FIELD_AT(SurfaceEncoding, iBitmapFormat, 48);
FIELD_AT(SurfaceEncoding, iType, 52);
FIELD_AT(SurfaceEncoding, fjBitmap, 54);
FIELD_AT(SurfaceEncoding, savedBits, 56);
FIELD_AT(SurfaceEncoding, reserved, 60);

static_assert(sizeof(ClipEncoding) == 36);
FIELD_AT(ClipEncoding, cached, 0);
FIELD_AT(ClipEncoding, unwritten, 1);
FIELD_AT(ClipEncoding, iUniq, 4);
FIELD_AT(ClipEncoding, rclBounds, 8);
FIELD_AT(ClipEncoding, iDComplexity, 24);
FIELD_AT(ClipEncoding, iFComplexity, 25);
FIELD_AT(ClipEncoding, iMode, 26);
FIELD_AT(ClipEncoding, fjOptions, 27);
FIELD_AT(ClipEncoding, rectangleCount, 28);
FIELD_AT(ClipEncoding, rectangles, 32);

static_assert(sizeof(BrushEncoding) == 12);
FIELD_AT(BrushEncoding, iSolidColor, 0);
FIELD_AT(BrushEncoding, pvRbrush, 4);
FIELD_AT(BrushEncoding, pvRbrushAgain, 8);

static_assert(sizeof(XlateEncoding) == 20);
FIELD_AT(XlateEncoding, iUniq, 0);
FIELD_AT(XlateEncoding, flXlate, 4);
FIELD_AT(XlateEncoding, iSrcType, 8);
FIELD_AT(XlateEncoding, iDstType, 10);
FIELD_AT(XlateEncoding, cEntries, 12);
FIELD_AT(XlateEncoding, entries, 16);

static_assert(sizeof(DevModeEncoding) == 188);
FIELD_AT(DevModeEncoding, dmDeviceName, 0);
FIELD_AT(DevModeEncoding, dmSpecVersion, 64);
FIELD_AT(DevModeEncoding, dmDriverVersion, 66);
FIELD_AT(DevModeEncoding, dmSize, 68);
FIELD_AT(DevModeEncoding, dmDriverExtra, 70);
FIELD_AT(DevModeEncoding, dmFields, 72);
FIELD_AT(DevModeEncoding, dmOrientation, 76);
FIELD_AT(DevModeEncoding, dmPaperSize, 78);
FIELD_AT(DevModeEncoding, dmPaperLength, 80);
FIELD_AT(DevModeEncoding, dmPaperWidth, 82);
FIELD_AT(DevModeEncoding, dmScale, 84);
FIELD_AT(DevModeEncoding, dmCopies, 86);
FIELD_AT(DevModeEncoding, dmDefaultSource, 88);
FIELD_AT(DevModeEncoding, unwritten, 90);
FIELD_AT(DevModeEncoding, dmColor, 92);
FIELD_AT(DevModeEncoding, dmDuplex, 94);
FIELD_AT(DevModeEncoding, dmYResolution, 96);
FIELD_AT(DevModeEncoding, dmTTOption, 98);
FIELD_AT(DevModeEncoding, dmCollate, 100);
FIELD_AT(DevModeEncoding, dmFormName, 102);
FIELD_AT(DevModeEncoding, dmLogPixels, 166);
FIELD_AT(DevModeEncoding, dmBitsPerPel, 168);
FIELD_AT(DevModeEncoding, dmPelsWidth, 172);
FIELD_AT(DevModeEncoding, dmPelsHeight, 176);
FIELD_AT(DevModeEncoding, dmDisplayFlags, 180);
FIELD_AT(DevModeEncoding, dmDisplayFrequency, 184);

static_assert(sizeof(LogFontEncoding) == 60);
FIELD_AT(LogFontEncoding, lfHeight, 0);
FIELD_AT(LogFontEncoding, lfWidth, 4);
FIELD_AT(LogFontEncoding, lfEscapement, 8);
FIELD_AT(LogFontEncoding, lfOrientation, 12);
FIELD_AT(LogFontEncoding, lfWeight, 16);
FIELD_AT(LogFontEncoding, lfItalic, 20);
FIELD_AT(LogFontEncoding, lfUnderline, 21);
FIELD_AT(LogFontEncoding, lfStrikeOut, 22);
FIELD_AT(LogFontEncoding, lfCharSet, 23);
FIELD_AT(LogFontEncoding, lfOutPrecision, 24);
FIELD_AT(LogFontEncoding, lfClipPrecision, 25);
FIELD_AT(LogFontEncoding, lfQuality, 26);
FIELD_AT(LogFontEncoding, lfPitchAndFamily, 27);
FIELD_AT(LogFontEncoding, lfFaceName, 28);

static_assert(sizeof(DevInfoEncoding) == 32);
FIELD_AT(DevInfoEncoding, flGraphicsCaps, 0);
FIELD_AT(DevInfoEncoding, defaultFont, 4);
FIELD_AT(DevInfoEncoding, ansiVarFont, 8);
FIELD_AT(DevInfoEncoding, ansiFixFont, 12);
FIELD_AT(DevInfoEncoding, cFonts, 16);
FIELD_AT(DevInfoEncoding, iDitherFormat, 20);
FIELD_AT(DevInfoEncoding, cxDither, 24);
FIELD_AT(DevInfoEncoding, cyDither, 26);
FIELD_AT(DevInfoEncoding, hpalDefault, 28);

static_assert(sizeof(PathEncoding) == 20);
FIELD_AT(PathEncoding, fl, 0);
FIELD_AT(PathEncoding, cCurves, 4);
FIELD_AT(PathEncoding, unwritten, 8);
FIELD_AT(PathEncoding, subpathCount, 12);
FIELD_AT(PathEncoding, pathData, 16);

static_assert(sizeof(SubpathEncoding) == 12);
FIELD_AT(SubpathEncoding, flags, 0);
FIELD_AT(SubpathEncoding, count, 4);
FIELD_AT(SubpathEncoding, points, 8);

static_assert(sizeof(LineAttrsEncoding) == 32);
FIELD_AT(LineAttrsEncoding, fl, 0);
FIELD_AT(LineAttrsEncoding, iJoin, 4);
FIELD_AT(LineAttrsEncoding, iEndCap, 8);
FIELD_AT(LineAttrsEncoding, elWidth, 12);
FIELD_AT(LineAttrsEncoding, eMiterLimit, 16);
FIELD_AT(LineAttrsEncoding, cstyle, 20);
FIELD_AT(LineAttrsEncoding, pstyle, 24);
FIELD_AT(LineAttrsEncoding, elStyleState, 28);

static_assert(sizeof(StringEncoding) == 40);
FIELD_AT(StringEncoding, codePage, 0);
FIELD_AT(StringEncoding, flAccel, 4);
FIELD_AT(StringEncoding, ulCharInc, 8);
FIELD_AT(StringEncoding, rclBkGround, 12);
FIELD_AT(StringEncoding, cGlyphs, 28);
FIELD_AT(StringEncoding, glyphs, 32);
FIELD_AT(StringEncoding, string, 36);

static_assert(sizeof(GlyphEncoding) == 28);
FIELD_AT(GlyphEncoding, hg, 0);
FIELD_AT(GlyphEncoding, ptl, 4);
FIELD_AT(GlyphEncoding, ptlOrigin, 12);
FIELD_AT(GlyphEncoding, sizlBitmap, 20);

static_assert(sizeof(MetricsEncoding) == 184);
FIELD_AT(MetricsEncoding, cjThis, 0);
FIELD_AT(MetricsEncoding, cjIfiExtra, 4);
FIELD_AT(MetricsEncoding, names, 8);
FIELD_AT(MetricsEncoding, others, 24);

static_assert(sizeof(FontEncoding) == 248);
FIELD_AT(FontEncoding, cached, 0);
FIELD_AT(FontEncoding, unwritten, 1);
FIELD_AT(FontEncoding, iUniq, 4);
FIELD_AT(FontEncoding, iFace, 8);
FIELD_AT(FontEncoding, cxMax, 12);
FIELD_AT(FontEncoding, flFontType, 16);
FIELD_AT(FontEncoding, iTTUniq, 20);
FIELD_AT(FontEncoding, iFile, 24);
FIELD_AT(FontEncoding, sizLogResPpi, 28);
FIELD_AT(FontEncoding, ulStyleSize, 36);
FIELD_AT(FontEncoding, pvConsumer, 40);
FIELD_AT(FontEncoding, pvProducer, 44);
FIELD_AT(FontEncoding, metrics, 48);
FIELD_AT(FontEncoding, nameLengths, 232);

} // namespace koru
