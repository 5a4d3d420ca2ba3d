#include "tools/koructl/zoomer_properties.h"

#include "tools/control/arguments.h"

namespace koructl {

using namespace tools;

using namespace koru::client;

namespace {

    using Zoomers = const ZoomerControl&;

    constexpr std::uint32_t AllSides = BorderLeft | BorderTop | BorderRight | BorderBottom;
    constexpr std::uint32_t MostFramePixels = 1000;

    std::string NameAt(std::uint32_t value, std::initializer_list<const char*> names)
    {
        return value < names.size() ? names.begin()[value] : std::to_string(value);
    }

    std::string TellSides(std::uint32_t border)
    {
        if ((border & AllSides) == AllSides)
            return "all";
        std::string sides;
        for (std::uint32_t side = 0; side < 4; ++side)
            if (border >> side & 1)
                sides += (sides.empty() ? "" : ",") + NameAt(side, {"left", "top", "right", "bottom"});
        return sides.empty() ? "none" : sides;
    }

    // Sides and colour of the frame share a word.
    Setter ChangeBorder(std::uint32_t keep, std::uint32_t set)
    {
        return [keep, set](Zoomers zoomers, ZoomerId id) {
            return zoomers.SetBorder(id, (zoomers.Border(id).value_or(0) & keep) | set);
        };
    }

    Setter ParseOriginal(const std::string& text)
    {
        return
            [area = ParseRectangle("--original", text)](Zoomers z, ZoomerId id) { return z.SetOriginalRect(id, area); };
    }
    Setter ParseZoomed(const std::string& text)
    {
        return [area = ParseRectangle("--zoomed", text)](Zoomers z, ZoomerId id) { return z.SetZoomedRect(id, area); };
    }
    Setter ParseFactor(const std::string& text)
    {
        return [factors = ParseFactors(text)](Zoomers z, ZoomerId id) {
            return z.SetXFactor(id, factors.first) && z.SetYFactor(id, factors.second);
        };
    }
    Setter ParseSmooth(const std::string& text)
    {
        return [level = ParseNumber("--smooth", text, 0, 3)](Zoomers z, ZoomerId id) {
            return z.SetImproveFactor(id, level);
        };
    }
    Setter ParseDarkerWins(const std::string& text)
    {
        return [yes = ParseName("--darker-wins", text, {"no", "yes"}) != 0](Zoomers z, ZoomerId id) {
            return z.SetPickColor(id, yes);
        };
    }
    Setter ParseStyle(const std::string& text)
    {
        return [style = ZoomerStyle(ParseName("--style", text, {"normal", "inverted"}))](Zoomers z, ZoomerId id) {
            return z.SetStyle(id, style);
        };
    }
    Setter ParseBehaviour(const std::string& text)
    {
        const auto how = ZoomerBehaviour(ParseName("--behaviour", text, {"immediate", "full", "deferred"}));
        return [how](Zoomers z, ZoomerId id) { return z.SetBehaviour(id, how); };
    }
    Setter ParseMode(const std::string& text)
    {
        const auto mode = ZoomerMode(ParseName("--mode", text, {"ordinary", "exclusive", "moving"}));
        return [mode](Zoomers z, ZoomerId id) { return z.SetMode(id, mode); };
    }
    Setter ParseBorder(const std::string& text)
    {
        return ChangeBorder(~AllSides, ParseSides(text));
    }
    Setter ParseBorderColour(const std::string& text)
    {
        const bool white = ParseName("--border-colour", text, {"black", "white"}) != 0;
        return ChangeBorder(~BorderWhite, white ? BorderWhite : 0);
    }
    Setter ParseBorderSize(const std::string& text)
    {
        return [size = ParseNumber("--border-size", text, 0, MostFramePixels)](Zoomers z, ZoomerId id) {
            return z.SetBordersSize(id, size);
        };
    }
    Setter ParseZOrder(const std::string& text)
    {
        return [order = ParseSigned("--z-order", text)](Zoomers z, ZoomerId id) { return z.SetZOrder(id, order); };
    }

    std::string TellOriginal(Zoomers z, ZoomerId id)
    {
        return Text(z.OriginalRect(id).value_or(Rect{}));
    }
    std::string TellZoomed(Zoomers z, ZoomerId id)
    {
        return Text(z.ZoomedRect(id).value_or(Rect{}));
    }
    std::string TellFactor(Zoomers z, ZoomerId id)
    {
        return std::to_string(z.XFactor(id).value_or(0)) + ',' + std::to_string(z.YFactor(id).value_or(0));
    }
    std::string TellSmooth(Zoomers z, ZoomerId id)
    {
        return std::to_string(z.ImproveFactor(id).value_or(0));
    }
    std::string TellDarkerWins(Zoomers z, ZoomerId id)
    {
        return z.PickColor(id).value_or(false) ? "yes" : "no";
    }
    std::string TellStyle(Zoomers z, ZoomerId id)
    {
        return NameAt(std::uint32_t(z.Style(id).value_or(ZoomerStyle::Normal)), {"normal", "inverted"});
    }
    std::string TellBehaviour(Zoomers z, ZoomerId id)
    {
        return NameAt(std::uint32_t(z.Behaviour(id).value_or(ZoomerBehaviour::Immediate)),
                      {"immediate", "full", "deferred"});
    }
    std::string TellMode(Zoomers z, ZoomerId id)
    {
        return NameAt(std::uint32_t(z.Mode(id).value_or(ZoomerMode::Ordinary)), {"ordinary", "exclusive", "moving"});
    }
    std::string TellBorder(Zoomers z, ZoomerId id)
    {
        return TellSides(z.Border(id).value_or(0));
    }
    std::string TellBorderColour(Zoomers z, ZoomerId id)
    {
        return z.Border(id).value_or(0) & BorderWhite ? "white" : "black";
    }
    std::string TellBorderSize(Zoomers z, ZoomerId id)
    {
        return std::to_string(z.BordersSize(id).value_or(0));
    }
    std::string TellZOrder(Zoomers z, ZoomerId id)
    {
        return std::to_string(z.ZOrder(id).value_or(0));
    }

    constexpr ZoomerProperty Table[] = {
        {"original", "LEFT,TOP,RIGHT,BOTTOM: what is magnified", ParseOriginal, TellOriginal},
        {"zoomed", "LEFT,TOP,RIGHT,BOTTOM: where it is shown", ParseZoomed, TellZoomed},
        {"factor", "how many times as large, N or X,Y, 1 to 255", ParseFactor, TellFactor},
        {"smooth", "smoothing of edges, 0 (none) to 3", ParseSmooth, TellSmooth},
        {"darker-wins", "yes or no: smoothing lets light colours grow, not dark ones", ParseDarkerWins, TellDarkerWins},
        {"style", "normal or inverted", ParseStyle, TellStyle},
        {"behaviour", "immediate, full or deferred: magnified with each drawing, whole or in part at updates",
         ParseBehaviour, TellBehaviour},
        {"mode", "ordinary; exclusive: nothing is shown beside it; moving: the place it left is repainted", ParseMode,
         TellMode},
        {"border", "the frame: none, all, or sides such as left,top", ParseBorder, TellBorder},
        {"border-colour", "black or white", ParseBorderColour, TellBorderColour},
        {"border-size", "pixels", ParseBorderSize, TellBorderSize},
        {"z-order", "place in the stack, the smallest number on top", ParseZOrder, TellZOrder},
    };

} // namespace

std::span<const ZoomerProperty> ZoomerProperties()
{
    return Table;
}

} // namespace koructl
