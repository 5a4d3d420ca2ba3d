#pragma once

// The objects that the graphics engine passes to a display driver. Only the public part is
// declared: the engine's own objects are larger, so none of these may be made by hand and given
// back to an engine service.

#include "platform/types.h"

struct SURFOBJ {
    DHSURF dhsurf; // the driver's handle, null for a bitmap of the engine
    HSURF hsurf;
    DHPDEV dhpdev;
    HDEV hdev;
    SIZEL sizlBitmap;
    ULONG cjBits;
    void* pvBits; // null where the engine cannot reach the bits
    void* pvScan0; // topmost row
    LONG lDelta; // bytes from a row to the one below it; negative for bottom-up bitmaps
    ULONG iUniq;
    ULONG iBitmapFormat; // BMF_*
    USHORT iType; // STYPE_*
    USHORT fjBitmap; // BMF_TOPDOWN, ...
};

struct CLIPOBJ {
    ULONG iUniq;
    RECTL rclBounds;
    BYTE iDComplexity; // DC_*
    BYTE iFComplexity;
    BYTE iMode;
    BYTE fjOptions;
};

struct ENUMRECTS {
    ULONG c;
    RECTL arcl[1]; // c of them
};

struct BRUSHOBJ {
    ULONG iSolidColor; // 0xFFFFFFFF for a brush that is not solid
    void* pvRbrush;
    FLONG flColorType;
};

struct XLATEOBJ {
    ULONG iUniq;
    FLONG flXlate; // XO_*
    USHORT iSrcType; // PAL_*
    USHORT iDstType;
    ULONG cEntries;
    ULONG* pulXlate;
};

struct XFORMOBJ {
    ULONG ulReserved;
};

struct PALOBJ {
    ULONG ulReserved;
};

struct PATHOBJ {
    FLONG fl; // PO_*
    ULONG cCurves;
};

struct PATHDATA {
    FLONG flags; // PD_*
    ULONG count;
    POINTFIX* pptfx;
};

union FLOAT_LONG {
    FLOATL e;
    LONG l;
};

struct LINEATTRS {
    FLONG fl; // LA_*
    ULONG iJoin;
    ULONG iEndCap;
    FLOAT_LONG elWidth; // float for geometric lines, integer pixels for cosmetic ones
    FLOATL eMiterLimit;
    ULONG cstyle;
    FLOAT_LONG* pstyle;
    FLOAT_LONG elStyleState;
};

struct GLYPHBITS {
    POINTL ptlOrigin; // from the glyph's position to the bitmap's top left corner
    SIZEL sizlBitmap;
    BYTE aj[1]; // 1 bpp, most significant bit first, rows padded to a byte
};

union GLYPHDEF {
    GLYPHBITS* pgb;
    PATHOBJ* ppo;
};

struct GLYPHPOS {
    HGLYPH hg;
    GLYPHDEF* pgdf;
    POINTL ptl;
};

struct STROBJ {
    ULONG cGlyphs;
    FLONG flAccel; // SO_*
    ULONG ulCharInc; // the advance of every glyph where it is the same, else 0
    RECTL rclBkGround;
    GLYPHPOS* pgp; // null: the glyphs come from STROBJ_bEnum
    WCHAR* pwszOrg;
};

struct FONTOBJ {
    ULONG iUniq;
    ULONG iFace;
    ULONG cxMax;
    FLONG flFontType; // FO_*
    ULONG iTTUniq;
    ULONG iFile;
    SIZEL sizLogResPpi;
    ULONG ulStyleSize;
    void* pvConsumer;
    void* pvProducer;
};

struct BLENDFUNCTION {
    BYTE BlendOp;
    BYTE BlendFlags;
    BYTE SourceConstantAlpha;
    BYTE AlphaFormat;
};

struct BLENDOBJ {
    BLENDFUNCTION BlendFunction;
};

struct TRIVERTEX {
    LONG x, y;
    COLOR16 Red, Green, Blue, Alpha;
};

struct GRADIENT_TRIANGLE {
    ULONG Vertex1, Vertex2, Vertex3;
};

struct GRADIENT_RECT {
    ULONG UpperLeft, LowerRight;
};

struct COLORADJUSTMENT {
    WORD caSize, caFlags, caIlluminantIndex;
    WORD caRedGamma, caGreenGamma, caBlueGamma;
    WORD caReferenceBlack, caReferenceWhite;
    SHORT caContrast, caBrightness, caColorfulness, caRedGreenTint;
};
