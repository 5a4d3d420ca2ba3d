#include "escape/color_pair_list.h"

#include "driver/driver_values.h"
#include "driver/pool.h"

namespace koru {

namespace {

    constinit ColorPair* Head = nullptr;

    constexpr ColourBytes White = {255, 255, 255};
    constexpr ColourBytes Navy = {128, 0, 0};
    constexpr ColourBytes Silver = {192, 192, 192};
    constexpr ColourBytes Grey = {128, 128, 128};
    constexpr ColourBytes Teal = {128, 128, 0};

    constexpr ColourBytes DefaultPairs[][2] = {{White, Navy}, {Silver, Grey}, {White, Teal}};

    template<class Value> int Match(const Value& node1, const Value& node2, const Value& value1, const Value& value2)
    {
        if (node1 == value1 && node2 == value2)
            return 2;
        return node1 == value2 && node2 == value1 ? 1 : 0;
    }

    void ComputePixels(ColorPair& pair, ULONG depth)
    {
        pair.pixel1 = PixelOf(pair.colour1, depth);
        pair.pixel2 = PixelOf(pair.colour2, depth);
    }

    BOOL Push(const ColourBytes& colour1, const ColourBytes& colour2, ULONG depth)
    {
        auto* const pair = AllocateRecord<ColorPair>();
        if (!pair)
            return FALSE;
        pair->colour1 = colour1;
        pair->colour2 = colour2;
        ComputePixels(*pair, depth);
        pair->next = Head;
        Head = pair;
        return TRUE;
    }

} // namespace

ColourBytes ColourOf(COLORREF colour)
{
    return {static_cast<BYTE>(colour >> 16), static_cast<BYTE>(colour >> 8), static_cast<BYTE>(colour)};
}

COLORREF ColorRefOf(const ColourBytes& colour)
{
    return static_cast<COLORREF>(colour.red | colour.green << 8 | colour.blue << 16);
}

USHORT PixelOf(const ColourBytes& colour, ULONG depth)
{
    if (depth == 16)
        return static_cast<USHORT>(colour.blue >> 3 | colour.green >> 2 << 5 | colour.red >> 3 << 11);
    if (depth == 15)
        return static_cast<USHORT>(colour.blue >> 3 | colour.green >> 3 << 5 | colour.red >> 3 << 10);
    return 0;
}

namespace ColorPairList {

    ULONG Count()
    {
        ULONG count = 0;
        for (const ColorPair* pair = Head; pair; pair = pair->next)
            ++count;
        return count;
    }

    int Find(const ColourBytes& colour1, const ColourBytes& colour2)
    {
        for (const ColorPair* pair = Head; pair; pair = pair->next) {
            if (const int match = Match(pair->colour1, pair->colour2, colour1, colour2))
                return match;
        }
        return 0;
    }

    int FindPixels(USHORT pixel1, USHORT pixel2)
    {
        for (const ColorPair* pair = Head; pair; pair = pair->next) {
            if (const int match = Match(pair->pixel1, pair->pixel2, pixel1, pixel2))
                return match;
        }
        return 0;
    }

    // Not Find() == 2: the reversed pair may stand in front of the exact one.
    bool ContainsExactly(const ColourBytes& colour1, const ColourBytes& colour2)
    {
        for (const ColorPair* pair = Head; pair; pair = pair->next) {
            if (pair->colour1 == colour1 && pair->colour2 == colour2)
                return true;
        }
        return false;
    }

    BOOL Add(const ColourBytes& colour1, const ColourBytes& colour2)
    {
        return Push(colour1, colour2, RequestedColourDepth);
    }

    const ColorPair* Get(LONG index)
    {
        const ColorPair* pair = Head;
        for (; pair && index > 0; --index)
            pair = pair->next;
        return pair;
    }

    BOOL Remove(const ColourBytes& colour1, const ColourBytes& colour2)
    {
        for (ColorPair** link = &Head; *link; link = &(*link)->next) {
            ColorPair* const pair = *link;
            if (!Match(pair->colour1, pair->colour2, colour1, colour2))
                continue;
            *link = pair->next;
            FreeToPool(pair);
            return TRUE;
        }
        return FALSE;
    }

    void Clear()
    {
        while (Head) {
            ColorPair* const pair = Head;
            Head = pair->next;
            FreeToPool(pair);
        }
    }

    void Prepare(ULONG depth)
    {
        if (!Head) {
            for (const auto& pair : DefaultPairs)
                Push(pair[0], pair[1], depth);
            return;
        }
        if (depth != 16 && depth != 15)
            return;
        for (ColorPair* pair = Head; pair; pair = pair->next)
            ComputePixels(*pair, depth);
    }

} // namespace ColorPairList

} // namespace koru
