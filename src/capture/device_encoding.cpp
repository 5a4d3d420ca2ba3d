#include "capture/byte_cursor.h"
#include "capture/encoders.h"
#include "driver/handles.h"

namespace koru {

ULONG ExpandDEVMODEW(const DEVMODEW* pdm, BYTE* at, ULONG room)
{
    auto* const encoding = BeginLayout<DevModeEncoding>(at, room, "ExpandDEVMODEW. Error buffer too small. ");
    if (!encoding)
        return 0;
    static_assert(offsetof(DevModeEncoding, unwritten) == offsetof(DEVMODEW, dmPrintQuality));
    static_assert(offsetof(DevModeEncoding, dmColor) == offsetof(DEVMODEW, dmColor));
    static_assert(offsetof(DevModeEncoding, dmDisplayFrequency) == offsetof(DEVMODEW, dmDisplayFrequency));
    constexpr ULONG behindQuality = offsetof(DEVMODEW, dmColor);
    memcpy(encoding, pdm, offsetof(DEVMODEW, dmPrintQuality));
    ByteCursor cursor(at, sizeof(*encoding));
    cursor.Advance(behindQuality);
    cursor.Write(&pdm->dmColor, cursor.Left());
    encoding->dmDeviceName[31] = 0;
    encoding->dmFormName[31] = 0;
    return sizeof(*encoding);
}

ULONG ExpandLogFont(const LOGFONTW* plf, BYTE* at, ULONG room)
{
    auto* const encoding = BeginLayout<LogFontEncoding>(at, room, "ExpandLogFont. Error buffer too small. ");
    if (!encoding)
        return 0;
    static_assert(offsetof(LogFontEncoding, lfFaceName) == offsetof(LOGFONTW, lfFaceName));
    memcpy(encoding, plf, sizeof(*encoding));
    encoding->lfFaceName[31] = 0;
    return sizeof(*encoding);
}

namespace {

    // Where the font begins, or 0 when it does not fit.
    ULONG AppendFont(const LOGFONTW& font, ByteCursor& cursor)
    {
        const ULONG size = ExpandLogFont(&font, cursor.At(), cursor.Left());
        const ULONG offset = size != 0 ? cursor.Offset() : 0;
        cursor.Advance(size);
        return offset;
    }

} // namespace

ULONG ExpandDevInfo(const DEVINFO* pdi, BYTE* at, ULONG room)
{
    auto* const encoding = BeginLayout<DevInfoEncoding>(at, room, "ExpandDevInfo. Error buffer too small. ");
    if (!encoding)
        return 0;
    ByteCursor cursor(at, room);
    cursor.Advance(sizeof(*encoding));
    encoding->flGraphicsCaps = pdi->flGraphicsCaps;
    encoding->defaultFont = AppendFont(pdi->lfDefaultFont, cursor);
    encoding->ansiVarFont = AppendFont(pdi->lfAnsiVarFont, cursor);
    encoding->ansiFixFont = AppendFont(pdi->lfAnsiFixFont, cursor);
    encoding->cFonts = pdi->cFonts;
    encoding->iDitherFormat = pdi->iDitherFormat;
    encoding->cxDither = pdi->cxDither;
    encoding->cyDither = pdi->cyDither;
    encoding->hpalDefault = NumberOf(pdi->hpalDefault);
    return cursor.Offset();
}

} // namespace koru
