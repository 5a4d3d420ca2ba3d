#pragma once

// A fuzzer's bytes as a stream of choices and numbers. Behind the end everything is 0.

#include "platform/types.h"

namespace fuzz {

class Input {
public:
    Input(const std::uint8_t* data, std::size_t size)
        : at_(data)
        , end_(data + size)
    {
    }
    bool IsAtEnd() const { return at_ == end_; }

    ULONG Byte() { return IsAtEnd() ? 0 : *at_++; }
    ULONG Half() { return Byte() | Byte() << 8; }
    ULONG Word() { return Half() | Half() << 16; }
    ULONG Below(ULONG count) { return (count <= 0x100 ? Byte() : Word()) % count; }
    bool OneIn(ULONG count) { return Below(count) == count - 1; } // false at the end
    template<class Value, std::size_t Count> const Value& Of(const Value (&values)[Count])
    {
        return values[Below(Count)];
    }
    void Fill(void* target, std::size_t size)
    {
        for (std::size_t i = 0; i < size; ++i)
            static_cast<BYTE*>(target)[i] = static_cast<BYTE>(Byte());
    }

    // Mostly near a small screen, now and then anywhere.
    LONG Coordinate()
    {
        constexpr LONG extremes[] = {-0x7FFFFFFF - 1, -0x7FFFFFFF, -0x40000000, -0x8000000, -0x10000, -1, 0, 1,
                                     0x8000,          0x7FFFFFF,   0x7FFFFFFE,  0x7FFFFFFF};
        const ULONG kind = Byte();
        if (kind < 0xC8)
            return static_cast<LONG>(kind) - 64;
        if (kind < 0xE0)
            return static_cast<SHORT>(Half());
        return kind < 0xE8 ? static_cast<LONG>(Word()) : Of(extremes);
    }
    RECTL Rectangle() // one time in two any, perhaps reversed, else a small one on the screen
    {
        const LONG left = Coordinate(), top = Coordinate(), right = Coordinate(), bottom = Coordinate();
        if (OneIn(2))
            return {left, top, right, bottom};
        const LONG x = left & 63, y = top & 63;
        return {x, y, x + 1 + (right & 63), y + 1 + (bottom & 63)};
    }
    POINTL Point()
    {
        const LONG x = Coordinate(), y = Coordinate();
        return {x, y};
    }
    POINTL NearPoint() // on a small screen or beside it
    {
        const LONG x = static_cast<LONG>(Byte() & 127), y = static_cast<LONG>(Byte() & 127);
        return {x - 32, y - 32};
    }
    ULONG Number() // small, all ones, or anything
    {
        const ULONG kind = Byte();
        if (kind < 0xA0)
            return kind % 12;
        return kind < 0xC0 ? Byte() : kind < 0xF0 ? Word() : 0xFFFFFFFF;
    }

private:
    const std::uint8_t* at_;
    const std::uint8_t* end_;
};

} // namespace fuzz
