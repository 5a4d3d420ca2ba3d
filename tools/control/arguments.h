#pragma once

// Command-line arguments as values. Everything here throws std::runtime_error with one line, which says what
// was expected, when the text is not such a value.

#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>

#include "client/zoomers.h"

namespace tools {

// Decimal, or hexadecimal behind "0x".
std::uint32_t ParseNumber(const std::string& what, const std::string& text, std::uint32_t least = 0,
                          std::uint32_t most = 0xFFFFFFFF);
std::int32_t ParseSigned(const std::string& what, const std::string& text);
// "3", or "3,2" for two values in order; one value counts twice.
std::pair<std::uint32_t, std::uint32_t> ParseFactors(const std::string& text);
std::pair<std::int32_t, std::int32_t> ParseOffset(const std::string& text); // "DX,DY"
// "LEFT,TOP,RIGHT,BOTTOM" with left below right and top below bottom.
koru::client::Rect ParseRectangle(const std::string& what, const std::string& text);
koru::client::ColorPair ParseColorPair(const std::string& text); // "RRGGBB,RRGGBB"
// The place of `text` in `names`.
std::uint32_t ParseName(const std::string& what, const std::string& text, std::initializer_list<const char*> names);
// "all", "none", a number, or names of calls ("DrvTextOut,DrvBitBlt") as bits of the capture mask.
std::uint32_t ParseCallMask(const std::string& text);
// "all", "none", or sides ("left,top") as border bits.
std::uint32_t ParseSides(const std::string& text);

std::string Hexadecimal(std::uint32_t number); // 0x0000002A
std::string Text(const koru::client::Rect& rectangle);
std::string Text(const koru::client::ColorPair& pair);

} // namespace tools
