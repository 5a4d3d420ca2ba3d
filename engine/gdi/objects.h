#pragma once

// The things that a drawing creates and selects: pens, brushes, fonts, palettes, as they are described,
// not yet realised for a target.

#include <memory>
#include <variant>
#include <vector>

#include "engine/gdi/dib.h"

namespace engine::gdi {

constexpr ULONG PS_SOLID = 0, PS_DASH = 1, PS_DOT = 2, PS_DASHDOT = 3, PS_DASHDOTDOT = 4, PS_NULL = 5;
constexpr ULONG PS_INSIDEFRAME = 6, PS_USERSTYLE = 7, PS_ALTERNATE = 8, PS_STYLE_MASK = 0xF;
constexpr ULONG PS_ENDCAP_SHIFT = 8, PS_ENDCAP_MASK = 0xF, PS_JOIN_SHIFT = 12, PS_JOIN_MASK = 0xF;
constexpr ULONG PS_GEOMETRIC = 0x10000;
constexpr ULONG MostDashes = 16; // of a pen's own style
constexpr ULONG BS_SOLID = 0, BS_NULL = 1, BS_HATCHED = 2, BS_PATTERN = 3, BS_DIBPATTERN = 5, BS_DIBPATTERNPT = 6;
constexpr ULONG TRANSPARENT = 1, OPAQUE = 2;
// Hatches that are none: the brush's colour, the text colour, the background colour (each in two ways).
constexpr ULONG HS_SOLIDCLR = 6, HS_SOLIDTEXTCLR = 8, HS_SOLIDBKCLR = 10, HS_API_MAX = 12;

struct LogicalBrush {
    enum class Kind { None, Solid, Hatched, Pattern };
    Kind kind = Kind::Solid;
    COLORREF colour = 0;
    ULONG hatch = HS_HORIZONTAL;
    std::shared_ptr<const Bitmap> pattern = {};
    // A monochrome pattern takes the text colour where it is 0 and the background colour where it is 1.
    bool monochrome = false;

    bool HasLines() const { return kind == Kind::Hatched && hatch < HS_DDI_MAX; }
};

struct LogicalPen {
    ULONG style = PS_SOLID; // PS_*, with cap, join and kind of an extended pen
    double width = 0; // in logical units; 0: one pixel always
    LogicalBrush brush = {};
    std::vector<ULONG> dashes = {}; // of PS_USERSTYLE
    bool extended = false; // of EXTCREATEPEN: its width 1 is a width, its gaps stay open

    ULONG Line() const { return style & PS_STYLE_MASK; }
    bool IsNull() const { return Line() == PS_NULL || brush.kind == LogicalBrush::Kind::None; }
};

struct LogicalPalette {
    std::vector<COLORREF> colours;
};

using Object = std::variant<std::monostate, LogicalPen, LogicalBrush, LOGFONTW, LogicalPalette>;

constexpr ULONG StockFlag = 0x80000000;
// White brush (0) to the pen of the context (19); nothing for numbers that do not exist.
Object StockObject(ULONG number);

// The 20 colours of the default palette.
const LogicalPalette& DefaultPalette();

} // namespace engine::gdi
