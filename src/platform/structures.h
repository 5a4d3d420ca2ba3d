#pragma once

// The structures that describe devices, modes and fonts.

#include "platform/types.h"

struct LOGFONTW {
    LONG lfHeight, lfWidth, lfEscapement, lfOrientation, lfWeight;
    BYTE lfItalic, lfUnderline, lfStrikeOut, lfCharSet;
    BYTE lfOutPrecision, lfClipPrecision, lfQuality, lfPitchAndFamily;
    WCHAR lfFaceName[32];
};

struct DEVMODEW {
    WCHAR dmDeviceName[32];
    WORD dmSpecVersion, dmDriverVersion, dmSize, dmDriverExtra;
    DWORD dmFields;
    SHORT dmOrientation, dmPaperSize, dmPaperLength, dmPaperWidth;
    SHORT dmScale, dmCopies, dmDefaultSource, dmPrintQuality;
    SHORT dmColor, dmDuplex, dmYResolution, dmTTOption, dmCollate;
    WCHAR dmFormName[32];
    WORD dmLogPixels;
    DWORD dmBitsPerPel, dmPelsWidth, dmPelsHeight, dmDisplayFlags, dmDisplayFrequency;
    DWORD dmICMMethod, dmICMIntent, dmMediaType, dmDitherType;
    DWORD dmReserved1, dmReserved2, dmPanningWidth, dmPanningHeight;
};

struct DEVINFO {
    FLONG flGraphicsCaps;
    LOGFONTW lfDefaultFont, lfAnsiVarFont, lfAnsiFixFont;
    ULONG cFonts;
    ULONG iDitherFormat;
    USHORT cxDither, cyDither;
    HPALETTE hpalDefault;
    FLONG flGraphicsCaps2; // absent from the structure of the oldest engines
};

struct CIECHROMA {
    LDECI4 x, y, Y;
};

struct COLORINFO {
    CIECHROMA Red, Green, Blue, Cyan, Magenta, Yellow, AlignmentWhite;
    LDECI4 RedGamma, GreenGamma, BlueGamma;
    LDECI4 MagentaInCyanDye, YellowInCyanDye, CyanInMagentaDye;
    LDECI4 YellowInMagentaDye, CyanInYellowDye, MagentaInYellowDye;
};

struct GDIINFO {
    ULONG ulVersion, ulTechnology, ulHorzSize, ulVertSize, ulHorzRes, ulVertRes;
    ULONG cBitsPixel, cPlanes, ulNumColors, flRaster, ulLogPixelsX, ulLogPixelsY, flTextCaps;
    ULONG ulDACRed, ulDACGreen, ulDACBlue;
    ULONG ulAspectX, ulAspectY, ulAspectXY;
    LONG xStyleStep, yStyleStep, denStyleStep;
    POINTL ptlPhysOffset;
    SIZEL szlPhysSize;
    ULONG ulNumPalReg;
    COLORINFO ciDevice;
    ULONG ulDevicePelsDPI, ulPrimaryOrder, ulHTPatternSize, ulHTOutputFormat, flHTFlags;
    ULONG ulVRefresh, ulBltAlignment, ulPanningHorzRes, ulPanningVertRes;
    ULONG xPanningAlignment, yPanningAlignment, cxHTPat, cyHTPat;
    BYTE *pHTPatA, *pHTPatB, *pHTPatC;
    ULONG flShadeBlend, ulPhysicalPixelCharacteristics, ulPhysicalPixelGamma;
};

struct PANOSE {
    BYTE bFamilyType, bSerifStyle, bWeight, bProportion, bContrast;
    BYTE bStrokeVariation, bArmStyle, bLetterform, bMidline, bXHeight;
};

struct IFIMETRICS {
    ULONG cjThis; // of the whole, names included
    ULONG cjIfiExtra;
    LONG dpwszFamilyName, dpwszStyleName, dpwszFaceName, dpwszUniqueName; // from the start, or 0
    LONG dpFontSim, lEmbedId, lItalicAngle, lCharBias, dpCharSets;
    BYTE jWinCharSet, jWinPitchAndFamily;
    USHORT usWinWeight;
    ULONG flInfo;
    USHORT fsSelection, fsType;
    FWORD fwdUnitsPerEm, fwdLowestPPEm, fwdWinAscender, fwdWinDescender;
    FWORD fwdMacAscender, fwdMacDescender, fwdMacLineGap;
    FWORD fwdTypoAscender, fwdTypoDescender, fwdTypoLineGap;
    FWORD fwdAveCharWidth, fwdMaxCharInc, fwdCapHeight, fwdXHeight;
    FWORD fwdSubscriptXSize, fwdSubscriptYSize, fwdSubscriptXOffset, fwdSubscriptYOffset;
    FWORD fwdSuperscriptXSize, fwdSuperscriptYSize, fwdSuperscriptXOffset, fwdSuperscriptYOffset;
    FWORD fwdUnderscoreSize, fwdUnderscorePosition, fwdStrikeoutSize, fwdStrikeoutPosition;
    BYTE chFirstChar, chLastChar, chDefaultChar, chBreakChar;
    WCHAR wcFirstChar, wcLastChar, wcDefaultChar, wcBreakChar;
    POINTL ptlBaseline, ptlAspect, ptlCaret;
    RECTL rclFontBox;
    BYTE achVendId[4];
    ULONG cKerningPairs;
    ULONG ulPanoseCulture;
    PANOSE panose;
};

using PFN = void (*)();

struct DRVFN {
    ULONG iFunc; // INDEX_Drv*
    PFN pfn;
};

struct DRVENABLEDATA {
    ULONG iDriverVersion;
    ULONG c;
    DRVFN* pdrvfn;
};
