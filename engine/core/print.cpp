#include "engine/core/print.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>

#include "engine/core/state.h"

namespace engine {

namespace {

    struct Conversion {
        bool left = false, zeros = false;
        int width = 0, precision = -1;
        std::string size;
        char letter = 0;
    };

    bool TakeText(const char*& at, const char* text)
    {
        const std::size_t length = std::strlen(text);
        if (std::strncmp(at, text, length) != 0)
            return false;
        at += length;
        return true;
    }

    int TakeNumber(const char*& at)
    {
        int number = 0;
        for (; *at >= '0' && *at <= '9'; ++at)
            number = std::min(number * 10 + (*at - '0'), 9999);
        return number;
    }

    Conversion TakeConversion(const char*& at)
    {
        Conversion conversion;
        for (; *at == '-' || *at == '0'; ++at)
            (*at == '-' ? conversion.left : conversion.zeros) = true;
        conversion.width = TakeNumber(at);
        if (TakeText(at, "."))
            conversion.precision = TakeNumber(at);
        for (const char* const size : {"I64", "ll", "h", "l", "w"})
            if (conversion.size.empty() && TakeText(at, size))
                conversion.size = size;
        conversion.letter = *at;
        if (*at)
            ++at;
        return conversion;
    }

    void AppendCharacter(std::string& text, char32_t character)
    {
        if (character < 0x80) {
            text += static_cast<char>(character);
            return;
        }
        const int more = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
        constexpr unsigned lead[] = {0, 0xC0, 0xE0, 0xF0};
        text += static_cast<char>(lead[more] | character >> 6 * more);
        for (int i = more - 1; i >= 0; --i)
            text += static_cast<char>(0x80 | (character >> 6 * i & 0x3F));
    }

    bool IsPair(char32_t first, char32_t second)
    {
        return first >= 0xD800 && first < 0xDC00 && second >= 0xDC00 && second < 0xE000;
    }

    // Reads no further than the terminator or `limit` characters.
    std::string Wide(const WCHAR* text, std::size_t limit)
    {
        std::string result;
        for (std::size_t i = 0; i < limit && text[i]; ++i) {
            char32_t character = text[i];
            if (i + 1 < limit && IsPair(character, text[i + 1]))
                character = 0x10000 + ((character - 0xD800) << 10) + (text[++i] - 0xDC00);
            AppendCharacter(result, character);
        }
        return result;
    }

    std::string String(const Conversion& conversion, const void* argument)
    {
        if (!argument)
            return "(null)";
        const bool wide =
            conversion.letter == 'S' ? conversion.size != "h" : conversion.size == "l" || conversion.size == "w";
        const std::size_t limit = conversion.precision < 0 ? SIZE_MAX : static_cast<std::size_t>(conversion.precision);
        if (wide)
            return Wide(static_cast<const WCHAR*>(argument), limit);
        const char* const text = static_cast<const char*>(argument);
        return std::string(text, strnlen(text, limit));
    }

    std::string Character(const Conversion& conversion, int argument)
    {
        std::string text;
        const bool wide = conversion.letter == 'C' || conversion.size == "l" || conversion.size == "w";
        if (wide)
            AppendCharacter(text, static_cast<WCHAR>(argument));
        else
            text = static_cast<char>(argument);
        return text;
    }

    std::string Digits(ULONGLONG value, int base, bool capitals)
    {
        char digits[20]; // of the largest decimal number
        char* const end = std::to_chars(std::begin(digits), std::end(digits), value, base).ptr;
        if (capitals)
            std::transform(digits, end, digits, [](char digit) { return static_cast<char>(std::toupper(digit)); });
        return std::string(digits, end);
    }

    std::string Number(const Conversion& conversion, ULONGLONG value)
    {
        const bool isSigned = conversion.letter == 'd' || conversion.letter == 'i';
        const bool negative = isSigned && static_cast<LONGLONG>(value) < 0;
        const int base = isSigned || conversion.letter == 'u' ? 10 : 16;
        std::string digits = Digits(negative ? 0 - value : value, base, conversion.letter != 'x');
        int least = conversion.precision;
        if (least < 0 && conversion.zeros && !conversion.left)
            least = conversion.width - (negative ? 1 : 0);
        if (static_cast<int>(digits.size()) < least)
            digits.insert(0, static_cast<std::size_t>(least) - digits.size(), '0');
        return (negative ? "-" : "") + digits;
    }

    // NOLINTBEGIN(clang-analyzer-valist.Uninitialized): the caller has started the list
    ULONGLONG TakeInteger(const Conversion& conversion, va_list& arguments)
    {
        const bool isSigned = conversion.letter == 'd' || conversion.letter == 'i';
        const ULONG value = va_arg(arguments, ULONG);
        if (conversion.size == "I64" || conversion.size == "ll")
            return value | static_cast<ULONGLONG>(va_arg(arguments, ULONG)) << 32;
        if (conversion.size == "h")
            return isSigned ? static_cast<ULONGLONG>(static_cast<SHORT>(value)) : static_cast<USHORT>(value);
        return isSigned ? static_cast<ULONGLONG>(static_cast<LONG>(value)) : value;
    }

    std::string Padded(const Conversion& conversion, std::string text)
    {
        const auto width = static_cast<std::size_t>(conversion.width);
        if (text.size() < width)
            text.insert(conversion.left ? text.size() : 0, width - text.size(), ' ');
        return text;
    }

    // Holds the list, so that it can be handed on by reference.
    struct Arguments {
        va_list list;
    };

    std::string Converted(Conversion conversion, Arguments& arguments)
    {
        switch (conversion.letter) {
        case 'p':
            conversion.precision = 8;
            [[fallthrough]];
        case 'd':
        case 'i':
        case 'u':
        case 'x':
        case 'X':
            return Number(conversion, TakeInteger(conversion, arguments.list));
        case 'c':
        case 'C':
            return Character(conversion, va_arg(arguments.list, int));
        default:
            return String(conversion, va_arg(arguments.list, const void*));
        }
    }
    // NOLINTEND(clang-analyzer-valist.Uninitialized)

} // namespace

std::string FormatDebugText(const char* format, va_list given)
{
    Arguments arguments;
    va_copy(arguments.list, given);
    std::string text;
    while (*format) {
        if (*format != '%') {
            text += *format++;
            continue;
        }
        if (TakeText(format, "%%")) {
            text += '%';
            continue;
        }
        const Conversion conversion = TakeConversion(++format);
        if (!conversion.letter || !std::strchr("diuxXpcCsS", conversion.letter)) {
            const std::string letter(conversion.letter != 0, conversion.letter);
            Engine::Current().Report("EngDebugPrint: unknown conversion %" + letter);
            break;
        }
        text += Padded(conversion, Converted(conversion, arguments));
    }
    va_end(arguments.list);
    return text;
}

} // namespace engine

extern "C" void APIENTRY EngDebugPrint(char* StandardPrefix, char* DebugMessage, va_list ap)
{
    using namespace engine;
    if (!IsGiven(StandardPrefix, "EngDebugPrint: the prefix") || !IsGiven(DebugMessage, "EngDebugPrint: the message"))
        return;
    const std::string text = StandardPrefix + FormatDebugText(DebugMessage, ap);
    LockedState()->debugOutput += text;
}
