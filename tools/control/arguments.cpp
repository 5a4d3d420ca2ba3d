#include "tools/control/arguments.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "client/layouts.h"

namespace tools {

using namespace koru::client;

namespace {

    [[noreturn]] void Refuse(const std::string& what, const std::string& text, const std::string& expected)
    {
        throw std::runtime_error(what + ": \"" + text + "\" is not " + expected);
    }

    bool ReadNumber(const std::string& text, int base, long long least, long long most, long long& number)
    {
        if (text.empty() || text.find_first_of(" \t+") != std::string::npos)
            return false;
        std::size_t used = 0;
        try {
            number = std::stoll(text, &used, base);
        } catch (const std::logic_error&) {
            return false;
        }
        return used == text.size() && number >= least && number <= most;
    }

    bool IsHexadecimal(const std::string& text)
    {
        return text.starts_with("0x") || text.starts_with("0X");
    }

    std::vector<std::string> SplitAtCommas(const std::string& text)
    {
        std::vector<std::string> parts(1);
        for (const char character : text)
            if (character == ',')
                parts.emplace_back();
            else
                parts.back() += character;
        return parts;
    }

    std::string Listed(std::initializer_list<const char*> names)
    {
        std::string list;
        for (const char* const name : names)
            list += (list.empty() ? "" : name == names.end()[-1] ? " or " : ", ") + std::string(name);
        return list;
    }

    std::uint32_t ColorOf(std::uint32_t rrggbb)
    {
        return Rgb(static_cast<std::uint8_t>(rrggbb >> 16), static_cast<std::uint8_t>(rrggbb >> 8),
                   static_cast<std::uint8_t>(rrggbb));
    }

    std::string ColorText(std::uint32_t color)
    {
        char text[8];
        std::snprintf(text, sizeof(text), "%02X%02X%02X", unsigned(color & 0xFF), unsigned(color >> 8 & 0xFF),
                      unsigned(color >> 16 & 0xFF));
        return text;
    }

} // namespace

std::uint32_t ParseNumber(const std::string& what, const std::string& text, std::uint32_t least, std::uint32_t most)
{
    long long number = 0;
    if (text.starts_with("-") || !ReadNumber(text, IsHexadecimal(text) ? 16 : 10, least, most, number)) {
        const bool whole = least == 0 && most == 0xFFFFFFFF;
        Refuse(what, text,
               whole ? "a number such as 42 or 0x2A"
                     : "a number from " + std::to_string(least) + " to " + std::to_string(most));
    }
    return static_cast<std::uint32_t>(number);
}

std::int32_t ParseSigned(const std::string& what, const std::string& text)
{
    long long number = 0;
    if (!ReadNumber(text, 10, INT32_MIN, INT32_MAX, number))
        Refuse(what, text, "a whole number");
    return static_cast<std::int32_t>(number);
}

std::pair<std::uint32_t, std::uint32_t> ParseFactors(const std::string& text)
{
    const auto parts = SplitAtCommas(text);
    if (parts.size() > 2)
        Refuse("factor", text, "N or X,Y");
    return {ParseNumber("factor", parts.front(), 1, 255), ParseNumber("factor", parts.back(), 1, 255)};
}

std::pair<std::int32_t, std::int32_t> ParseOffset(const std::string& text)
{
    const auto parts = SplitAtCommas(text);
    if (parts.size() != 2)
        Refuse("offset", text, "DX,DY");
    return {ParseSigned("offset", parts[0]), ParseSigned("offset", parts[1])};
}

Rect ParseRectangle(const std::string& what, const std::string& text)
{
    const auto parts = SplitAtCommas(text);
    long long edge[4] = {};
    bool good = parts.size() == 4;
    for (std::size_t i = 0; good && i < 4; ++i)
        good = ReadNumber(parts[i], 10, INT32_MIN, INT32_MAX, edge[i]);
    if (!good || edge[0] >= edge[2] || edge[1] >= edge[3])
        Refuse(what, text, "LEFT,TOP,RIGHT,BOTTOM with left below right and top below bottom");
    return {static_cast<std::int32_t>(edge[0]), static_cast<std::int32_t>(edge[1]), static_cast<std::int32_t>(edge[2]),
            static_cast<std::int32_t>(edge[3])};
}

ColorPair ParseColorPair(const std::string& text)
{
    const auto parts = SplitAtCommas(text);
    long long first = 0, second = 0;
    const auto isColor = [](const std::string& part, long long& color) {
        return part.size() == 6 && !IsHexadecimal(part) && ReadNumber(part, 16, 0, 0xFFFFFF, color);
    };
    if (parts.size() != 2 || !isColor(parts[0], first) || !isColor(parts[1], second))
        Refuse("pair", text, "RRGGBB,RRGGBB, two colours in hexadecimal");
    return {ColorOf(static_cast<std::uint32_t>(first)), ColorOf(static_cast<std::uint32_t>(second))};
}

std::uint32_t ParseName(const std::string& what, const std::string& text, std::initializer_list<const char*> names)
{
    const auto* const found = std::find(names.begin(), names.end(), text);
    if (found == names.end())
        Refuse(what, text, Listed(names));
    return static_cast<std::uint32_t>(found - names.begin());
}

std::uint32_t ParseCallMask(const std::string& text)
{
    if (text == "all")
        return AllCalls;
    if (text == "none")
        return 0;
    long long number = 0;
    if (ReadNumber(text, IsHexadecimal(text) ? 16 : 10, 0, 0xFFFFFFFF, number))
        return static_cast<std::uint32_t>(number);
    std::uint32_t mask = 0;
    for (const std::string& name : SplitAtCommas(text)) {
        const auto layouts = RecordLayouts();
        const auto found = std::find_if(layouts.begin(), layouts.end(),
                                        [&](const RecordLayout& layout) { return NameOf(layout.type) == name; });
        if (found == layouts.end())
            Refuse("mask", name, "all, none, a number such as 0x10100, or a call such as DrvTextOut");
        mask |= MaskBit(found->type);
    }
    return mask;
}

std::uint32_t ParseSides(const std::string& text)
{
    if (text == "none")
        return 0;
    if (text == "all")
        return BorderLeft | BorderTop | BorderRight | BorderBottom;
    std::uint32_t sides = 0;
    for (const std::string& side : SplitAtCommas(text))
        sides |= 1u << ParseName("border", side, {"left", "top", "right", "bottom"});
    return sides;
}

std::string Hexadecimal(std::uint32_t number)
{
    char text[11];
    std::snprintf(text, sizeof(text), "0x%08X", unsigned(number));
    return text;
}

std::string Text(const Rect& r)
{
    std::ostringstream text;
    text << r.left << ',' << r.top << ',' << r.right << ',' << r.bottom;
    return text.str();
}

std::string Text(const ColorPair& pair)
{
    return ColorText(pair.first) + ',' + ColorText(pair.second);
}

} // namespace tools
