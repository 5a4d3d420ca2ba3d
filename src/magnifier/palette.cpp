#include "magnifier/palette.h"

#include "driver/debug_print.h"
#include "driver/pool.h"
#include "platform/constants.h"
#include "platform/runtime.h"

namespace koru {

namespace {

    struct TableEntry {
        BYTE red, green, blue, zero;
    };
    static_assert(sizeof(TableEntry) == 4);

    constexpr ULONG Entries256 = 256, Entries16 = 16;
    constexpr ULONG FixedAtEachEnd = 10;

    constexpr TableEntry Table16[Entries16] = {
        {0, 0, 0, 0},     {128, 0, 0, 0},     {0, 128, 0, 0},     {128, 128, 0, 0},   {0, 0, 128, 0}, {128, 0, 128, 0},
        {0, 128, 128, 0}, {128, 128, 128, 0}, {192, 192, 192, 0}, {255, 0, 0, 0},     {0, 255, 0, 0}, {255, 255, 0, 0},
        {0, 0, 255, 0},   {255, 0, 255, 0},   {0, 255, 255, 0},   {255, 255, 255, 0},
    };

    constexpr TableEntry FirstOf256[FixedAtEachEnd] = {
        {0, 0, 0, 0},     {128, 0, 0, 0},   {0, 128, 0, 0},     {128, 128, 0, 0},   {0, 0, 128, 0},
        {128, 0, 128, 0}, {0, 128, 128, 0}, {192, 192, 192, 0}, {192, 220, 192, 0}, {166, 202, 240, 0},
    };

    constexpr TableEntry LastOf256[FixedAtEachEnd] = {
        {255, 251, 240, 0}, {160, 160, 164, 0}, {128, 128, 128, 0}, {255, 0, 0, 0},   {0, 255, 0, 0},
        {255, 255, 0, 0},   {0, 0, 255, 0},     {255, 0, 255, 0},   {0, 255, 255, 0}, {255, 255, 255, 0},
    };

    BYTE* MakeTable256()
    {
        auto* const table = static_cast<BYTE*>(AllocateFromPool(Entries256 * sizeof(TableEntry)));
        if (!table) {
            DebugPrint("Couldn't allocate default 256 palette\n");
            return nullptr;
        }
        for (ULONG i = 0; i < Entries256; ++i) { // uneven: red wraps fastest, blue reaches 48 only
            const TableEntry entry = {static_cast<BYTE>(8 * i), static_cast<BYTE>(8 * (i / 8)),
                                      static_cast<BYTE>(16 * (i / 64)), 0};
            memcpy(table + i * sizeof(entry), &entry, sizeof(entry));
        }
        memcpy(table, FirstOf256, sizeof(FirstOf256));
        memcpy(table + (Entries256 - FixedAtEachEnd) * sizeof(TableEntry), LastOf256, sizeof(LastOf256));
        return table;
    }

    BYTE* MakeTable16()
    {
        auto* const table = static_cast<BYTE*>(AllocateFromPool(sizeof(Table16)));
        if (table)
            memcpy(table, Table16, sizeof(Table16));
        else
            DebugPrint("Couldn't allocate default 16 palette\n");
        return table;
    }

    BOOL ColourOfIndex(const BYTE* table, ULONG entries, ULONG index, ColourBytes& colour)
    {
        colour = {};
        if (!table || index >= entries)
            return FALSE;
        const BYTE* const entry = table + index * sizeof(TableEntry);
        colour = {.blue = entry[2], .green = entry[1], .red = entry[0]};
        return TRUE;
    }

    ULONG Distance(const ColourBytes& a, const ColourBytes& b)
    {
        const LONG blue = a.blue - b.blue, green = a.green - b.green, red = a.red - b.red;
        return static_cast<ULONG>(blue * blue + green * green + red * red);
    }

    BOOL NearestIndex(const BYTE* table, ULONG entries, const ColourBytes& colour, BYTE& index)
    {
        ULONG best = 0xFFFFFFFF;
        ColourBytes candidate;
        for (ULONG i = 0; i < entries && ColourOfIndex(table, entries, i, candidate); ++i) {
            const ULONG distance = Distance(candidate, colour);
            if (distance < best) {
                best = distance;
                index = static_cast<BYTE>(i);
            }
        }
        return best != 0xFFFFFFFF;
    }

    ULONG Brightness(const ColourBytes& colour)
    {
        return ULONG{colour.blue} + colour.green + colour.red;
    }

} // namespace

BYTE* DefaultColourTable(ULONG format)
{
    if (format == BMF_8BPP)
        return MakeTable256();
    return format == BMF_4BPP ? MakeTable16() : nullptr;
}

BOOL ColourOfIndex256(const BYTE* table, ULONG index, ColourBytes& colour)
{
    return ColourOfIndex(table, Entries256, index, colour);
}

BOOL ColourOfIndex16(const BYTE* table, ULONG index, ColourBytes& colour)
{
    return ColourOfIndex(table, Entries16, index, colour);
}

BOOL NearestIndex256(const BYTE* table, const ColourBytes& colour, BYTE& index)
{
    return NearestIndex(table, Entries256, colour, index);
}

BOOL NearestIndex16(const BYTE* table, const ColourBytes& colour, BYTE& index)
{
    return NearestIndex(table, Entries16, colour, index);
}

bool IsPicked(const ColourBytes& first, const ColourBytes& second, ULONG pickColour)
{
    if (pickColour)
        return Brightness(first) < Brightness(second);
    return Brightness(first) > Brightness(second);
}

bool FirstColourWins(const ColourBytes& first, const ColourBytes& second, ULONG pickColour)
{
    const int registered = ColorPairList::Find(first, second); // the second of a pair wins
    return registered ? registered == 1 : IsPicked(first, second, pickColour);
}

BYTE ChooseIndexedColour256(BYTE first, BYTE second, const BYTE* table, ULONG pickColour)
{
    ColourBytes firstColour, secondColour;
    if (!ColourOfIndex256(table, first, firstColour) || !ColourOfIndex256(table, second, secondColour)) {
        DebugPrint("Error getting color from palette\n");
        return first;
    }
    return FirstColourWins(firstColour, secondColour, pickColour) ? first : second;
}

BYTE ChooseIndexedColour16(BYTE first, BYTE second, const BYTE* table, ULONG pickColour)
{
    ColourBytes firstColour, secondColour;
    if (!ColourOfIndex16(table, first, firstColour) || !ColourOfIndex16(table, second, secondColour))
        return first;
    return FirstColourWins(firstColour, secondColour, pickColour) ? first : second;
}

} // namespace koru
