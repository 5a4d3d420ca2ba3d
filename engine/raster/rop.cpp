#include "engine/raster/rop.h"

#include <array>
#include <utility>

namespace engine::raster {
namespace {

    // The minterms of the truth table; the compiler reduces each of the 256 to a few instructions.
    template<int Rop> constexpr ULONG Evaluate(ULONG pattern, ULONG source, ULONG target)
    {
        ULONG result = 0;
        for (int row = 0; row < 8; ++row)
            if (Rop >> row & 1)
                result |= (row & 4 ? pattern : ~pattern) & (row & 2 ? source : ~source) & (row & 1 ? target : ~target);
        return result;
    }

    template<int Rop> void CombineRow(const ULONG* pattern, const ULONG* source, ULONG* target, LONG count)
    {
        for (LONG i = 0; i < count; ++i)
            target[i] = Evaluate<Rop>(pattern[i], source[i], target[i]);
    }

    template<std::size_t... Rops>
    constexpr std::array<RopFunction, sizeof...(Rops)> MakeTable(std::index_sequence<Rops...>)
    {
        return {CombineRow<static_cast<int>(Rops)>...};
    }

    constexpr auto Functions = MakeTable(std::make_index_sequence<256>());

    // A binary operation is less one than its code: a truth table of (pen << 1 | target). Codes count modulo
    // 16, so that 0 is R2_WHITE like 16.
    constexpr BYTE Rop3OfRop2(ULONG rop2)
    {
        constexpr BYTE twice[] = {0x0, 0x5, 0xA, 0xF}; // each bit for both values of the source
        const ULONG table = (rop2 - 1) & 0x0F;
        return static_cast<BYTE>(twice[table >> 2] << 4 | twice[table & 3]);
    }
    static_assert(Rop3OfRop2(13) == 0xF0 && Rop3OfRop2(11) == 0xAA && Rop3OfRop2(7) == 0x5A && Rop3OfRop2(0) == 0xFF);

} // namespace

RopFunction Rop3Function(BYTE rop)
{
    return Functions[rop];
}

ROP4 RopOfMix(MIX mix)
{
    return Rop3OfRop2(mix & 0xFF) | static_cast<ROP4>(Rop3OfRop2(mix >> 8 & 0xFF)) << 8;
}

} // namespace engine::raster
