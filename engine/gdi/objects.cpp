#include "engine/gdi/objects.h"

#include <algorithm>

namespace engine::gdi {

namespace {

    constexpr COLORREF Black = 0, White = 0xFFFFFF;
    constexpr LONG NormalWeight = 400, BoldWeight = 700;
    constexpr BYTE FixedPitch = 1;

    Object SolidBrush(COLORREF colour)
    {
        return LogicalBrush{.colour = colour};
    }

    Object ThinPen(COLORREF colour)
    {
        return LogicalPen{.brush = {.colour = colour}};
    }

    Object StockFont(std::u16string_view face, LONG height, LONG weight, BYTE pitch)
    {
        LOGFONTW font = {};
        font.lfHeight = height;
        font.lfWeight = weight;
        font.lfPitchAndFamily = pitch;
        std::copy(face.begin(), face.end(), font.lfFaceName);
        return font;
    }

} // namespace

Object StockObject(ULONG number)
{
    switch (number) {
    case 0:
    case 18: // the context's brush
        return SolidBrush(White);
    case 1:
        return SolidBrush(0xC0C0C0);
    case 2:
        return SolidBrush(0x808080);
    case 3:
        return SolidBrush(0x404040);
    case 4:
        return SolidBrush(Black);
    case 5:
        return LogicalBrush{.kind = LogicalBrush::Kind::None};
    case 6:
        return ThinPen(White);
    case 7:
    case 19: // the context's pen
        return ThinPen(Black);
    case 8:
        return LogicalPen{.style = PS_NULL};
    case 10:
    case 11:
    case 16:
        return StockFont(u"Courier New", 12, NormalWeight, FixedPitch);
    case 12:
        return StockFont(u"Arial", 12, NormalWeight, 0);
    case 13:
    case 14:
        return StockFont(u"Arial", 16, BoldWeight, 0);
    case 17:
        return StockFont(u"Tahoma", -11, NormalWeight, 0);
    case 15:
        return DefaultPalette();
    default:
        return {};
    }
}

const LogicalPalette& DefaultPalette()
{
    static const LogicalPalette palette = {{0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080, 0x808000,
                                            0xC0C0C0, 0xC0DCC0, 0xF0CAA6, 0xF0FBFF, 0xA4A0A0, 0x808080, 0x0000FF,
                                            0x00FF00, 0x00FFFF, 0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF}};
    return palette;
}

} // namespace engine::gdi
