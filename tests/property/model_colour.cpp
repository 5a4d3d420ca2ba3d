#include "tests/property/model_colour.h"

#include <algorithm>

namespace property {

namespace {

    const Colour Sixteen[16] = {
        {0, 0, 0},     {128, 0, 0},     {0, 128, 0},     {128, 128, 0},   {0, 0, 128}, {128, 0, 128},
        {0, 128, 128}, {128, 128, 128}, {192, 192, 192}, {255, 0, 0},     {0, 255, 0}, {255, 255, 0},
        {0, 0, 255},   {255, 0, 255},   {0, 255, 255},   {255, 255, 255},
    };
    const Colour FirstTen[10] = {
        {0, 0, 0},     {128, 0, 0},   {0, 128, 0},     {128, 128, 0},   {0, 0, 128},
        {128, 0, 128}, {0, 128, 128}, {192, 192, 192}, {192, 220, 192}, {166, 202, 240},
    };
    const Colour LastTen[10] = {
        {255, 251, 240}, {160, 160, 164}, {128, 128, 128}, {255, 0, 0},   {0, 255, 0},
        {255, 255, 0},   {0, 0, 255},     {255, 0, 255},   {0, 255, 255}, {255, 255, 255},
    };

    Colour Entry256(ULONG index)
    {
        if (index < 10)
            return FirstTen[index];
        if (index >= 246)
            return LastTen[index - 246];
        return {8 * index % 256, 8 * (index / 8) % 256, 16 * (index / 64)};
    }

    ULONG FromFive(ULONG component)
    {
        return component * 8 + component / 4;
    }
    ULONG FromSix(ULONG component)
    {
        return component * 4 + component / 16;
    }

    ULONG Squared(ULONG first, ULONG second)
    {
        const ULONG difference = first > second ? first - second : second - first;
        return difference * difference;
    }

    ULONG Nearest(const Format& format, const Colour& colour)
    {
        ULONG best = 0, bestDistance = 0xFFFFFFFF;
        for (ULONG i = 0; i < 1u << format.bits; ++i) {
            const Colour entry = ColourOf(format, i);
            const ULONG distance =
                Squared(entry.red, colour.red) + Squared(entry.green, colour.green) + Squared(entry.blue, colour.blue);
            if (distance < bestDistance) {
                best = i;
                bestDistance = distance;
            }
        }
        return best;
    }

    ULONG Sum(const Colour& colour)
    {
        return colour.red + colour.green + colour.blue;
    }

} // namespace

Colour ColourOf(const Format& format, ULONG pixel)
{
    if (format.bits <= 4)
        return Sixteen[pixel & 15];
    if (format.bits == 8)
        return Entry256(pixel);
    if (format.depth == 15)
        return {FromFive(pixel >> 10 & 31), FromFive(pixel >> 5 & 31), FromFive(pixel & 31)};
    if (format.bits == 16)
        return {FromFive(pixel >> 11 & 31), FromSix(pixel >> 5 & 63), FromFive(pixel & 31)};
    return {pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF};
}

ULONG PixelOf(const Format& format, const Colour& colour)
{
    if (format.bits <= 8)
        return Nearest(format, colour);
    if (format.depth == 15)
        return colour.red >> 3 << 10 | colour.green >> 3 << 5 | colour.blue >> 3;
    if (format.bits == 16)
        return colour.red >> 3 << 11 | colour.green >> 2 << 5 | colour.blue >> 3;
    return colour.red << 16 | colour.green << 8 | colour.blue;
}

Colour ColourOfWire(ULONG colorref)
{
    return {colorref & 0xFF, colorref >> 8 & 0xFF, colorref >> 16 & 0xFF};
}

ColourChoice::ColourChoice(const Format& format)
    : format_(format)
{
    AddPair(0xFFFFFF, 0x800000); // white on navy
    AddPair(0xC0C0C0, 0x808080); // light on dark grey
    AddPair(0xFFFFFF, 0x808000); // white on teal
}

void ColourChoice::AddPair(ULONG wireColour1, ULONG wireColour2)
{
    Pair pair = {ColourOfWire(wireColour1), ColourOfWire(wireColour2), 0, 0};
    for (const Pair& old : pairs_)
        if (old.text == pair.text && old.background == pair.background)
            return;
    if (format_.bits == 16) {
        pair.textPixel = PixelOf(format_, pair.text);
        pair.backgroundPixel = PixelOf(format_, pair.background);
    }
    pairs_.insert(pairs_.begin(), pair);
}

bool ColourChoice::RemovePair(ULONG wireColour1, ULONG wireColour2)
{
    const Colour first = ColourOfWire(wireColour1), second = ColourOfWire(wireColour2);
    const auto found = std::find_if(pairs_.begin(), pairs_.end(), [&](const Pair& pair) {
        return (pair.text == first && pair.background == second) || (pair.text == second && pair.background == first);
    });
    if (found == pairs_.end())
        return false;
    pairs_.erase(found);
    return true;
}

bool ColourChoice::IsText(const Pair& pair, ULONG pixel) const
{
    return format_.bits == 16 ? pixel == pair.textPixel : ColourOf(format_, pixel) == pair.text;
}

bool ColourChoice::IsBackground(const Pair& pair, ULONG pixel) const
{
    return format_.bits == 16 ? pixel == pair.backgroundPixel : ColourOf(format_, pixel) == pair.background;
}

ULONG ColourChoice::Choose(ULONG first, ULONG second, bool darkerWins) const
{
    for (const Pair& pair : pairs_) {
        if (IsText(pair, first) && IsBackground(pair, second))
            return second;
        if (IsText(pair, second) && IsBackground(pair, first))
            return first;
    }
    const ULONG firstSum = Sum(ColourOf(format_, first)), secondSum = Sum(ColourOf(format_, second));
    return (darkerWins ? firstSum < secondSum : firstSum > secondSum) ? first : second;
}

} // namespace property
