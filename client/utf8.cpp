#include "utf8.h"

namespace koru::client {
namespace {

    constexpr char32_t Replacement = 0xFFFD;

    bool IsHighSurrogate(char32_t unit)
    {
        return unit >= 0xD800 && unit < 0xDC00;
    }

    bool IsLowSurrogate(char32_t unit)
    {
        return unit >= 0xDC00 && unit < 0xE000;
    }

    void Append(std::string& out, char32_t code)
    {
        const auto tail = [code](unsigned shift) { return char(0x80 | (code >> shift & 0x3F)); };
        if (code < 0x80) {
            out += char(code);
        } else if (code < 0x800) {
            out += char(0xC0 | code >> 6);
            out += tail(0);
        } else if (code < 0x10000) {
            out += char(0xE0 | code >> 12);
            out += tail(6);
            out += tail(0);
        } else {
            out += char(0xF0 | code >> 18);
            out += tail(12);
            out += tail(6);
            out += tail(0);
        }
    }

} // namespace

std::string ToUtf8(const Array<char16_t>& text)
{
    std::string out;
    for (std::uint32_t i = 0; i < text.size(); ++i) {
        char32_t code = text[i];
        if (IsHighSurrogate(code) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]))
            code = 0x10000 + ((code - 0xD800) << 10) + (text[++i] - 0xDC00);
        else if (IsHighSurrogate(code) || IsLowSurrogate(code))
            code = Replacement;
        Append(out, code);
    }
    return out;
}

std::string ToUtf8(std::span<const std::byte> field)
{
    std::uint32_t length = 0;
    while (length < field.size() / 2 && Load<char16_t>(field, length * 2) != 0)
        ++length;
    return ToUtf8(Array<char16_t>(field, 0, length, length * 2));
}

} // namespace koru::client
