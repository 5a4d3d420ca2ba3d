#include <bit>

#include "engine/core/objects.h"

namespace engine {

namespace {

    constexpr COLORREF Rgb(ULONG red, ULONG green, ULONG blue)
    {
        return red | green << 8 | blue << 16;
    }

    const std::vector<COLORREF>& SixteenColours()
    {
        static const std::vector<COLORREF> colours = {
            Rgb(0, 0, 0),       Rgb(128, 0, 0),   Rgb(0, 128, 0),   Rgb(128, 128, 0),
            Rgb(0, 0, 128),     Rgb(128, 0, 128), Rgb(0, 128, 128), Rgb(128, 128, 128),
            Rgb(192, 192, 192), Rgb(255, 0, 0),   Rgb(0, 255, 0),   Rgb(255, 255, 0),
            Rgb(0, 0, 255),     Rgb(255, 0, 255), Rgb(0, 255, 255), Rgb(255, 255, 255),
        };
        return colours;
    }

    // The 20 fixed colours at both ends; between them a cube of six levels per component and greys.
    std::vector<COLORREF> MakeSystemPalette()
    {
        std::vector<COLORREF> colours = {
            Rgb(0, 0, 0),     Rgb(128, 0, 0),   Rgb(0, 128, 0),     Rgb(128, 128, 0),   Rgb(0, 0, 128),
            Rgb(128, 0, 128), Rgb(0, 128, 128), Rgb(192, 192, 192), Rgb(192, 220, 192), Rgb(166, 202, 240),
        };
        constexpr ULONG levels = 6, step = 51, greys = 20;
        for (ULONG red = 0; red < levels; ++red)
            for (ULONG green = 0; green < levels; ++green)
                for (ULONG blue = 0; blue < levels; ++blue)
                    colours.push_back(Rgb(red * step, green * step, blue * step));
        for (ULONG i = 1; i <= greys; ++i)
            colours.push_back(Rgb(i * 12, i * 12, i * 12));
        colours.insert(colours.end(),
                       {Rgb(255, 251, 240), Rgb(160, 160, 164), Rgb(128, 128, 128), Rgb(255, 0, 0), Rgb(0, 255, 0),
                        Rgb(255, 255, 0), Rgb(0, 0, 255), Rgb(255, 0, 255), Rgb(0, 255, 255), Rgb(255, 255, 255)});
        return colours;
    }

    const std::vector<COLORREF>& SystemPalette()
    {
        static const std::vector<COLORREF> colours = MakeSystemPalette();
        return colours;
    }

    PixelLayout Indexed(ULONG format, std::vector<COLORREF> palette)
    {
        return {format, 0, 0, 0, std::move(palette)};
    }

    // Squared, per component.
    ULONG Distance(COLORREF first, COLORREF second)
    {
        ULONG sum = 0;
        for (int shift = 0; shift <= 16; shift += 8) {
            const int difference = static_cast<int>(first >> shift & 0xFF) - static_cast<int>(second >> shift & 0xFF);
            sum += static_cast<ULONG>(difference * difference);
        }
        return sum;
    }

    ULONG NearestEntry(const std::vector<COLORREF>& palette, COLORREF colour)
    {
        ULONG best = 0;
        for (ULONG i = 1; i < palette.size(); ++i)
            if (Distance(palette[i], colour) < Distance(palette[best], colour))
                best = i;
        return best;
    }

    // The top bits of an 8-bit component, moved under the mask.
    ULONG Pack(ULONG component, ULONG mask)
    {
        const int width = std::popcount(mask);
        if (width == 0)
            return 0;
        return width > 8 ? component << (std::countr_zero(mask) + width - 8) & mask
                         : component >> (8 - width) << std::countr_zero(mask);
    }

    ULONG Widen(ULONG pixel, ULONG mask)
    {
        if (mask == 0)
            return 0;
        const int width = std::popcount(mask);
        const ULONG value = (pixel & mask) >> std::countr_zero(mask);
        if (width >= 8)
            return value >> (width - 8);
        ULONG result = 0;
        for (int at = 8 - width; at > -width; at -= width)
            result |= at >= 0 ? value << at : value >> -at;
        return result;
    }

} // namespace

PixelLayout PixelLayout::Default(ULONG iBitmapFormat)
{
    switch (iBitmapFormat) {
    case BMF_1BPP:
        return Indexed(BMF_1BPP, {Rgb(0, 0, 0), Rgb(255, 255, 255)});
    case BMF_4BPP:
        return Indexed(BMF_4BPP, SixteenColours());
    case BMF_8BPP:
        return Indexed(BMF_8BPP, SystemPalette());
    case BMF_16BPP:
        return {BMF_16BPP, 0xF800, 0x07E0, 0x001F, {}};
    default:
        return {iBitmapFormat, 0xFF0000, 0xFF00, 0xFF, {}};
    }
}

PixelLayout PixelLayout::FiveFiveFive()
{
    return {BMF_16BPP, 0x7C00, 0x03E0, 0x001F, {}};
}

ULONG PixelLayout::BitsPerPixel() const
{
    constexpr ULONG bits[] = {0, 1, 4, 8, 16, 24, 32};
    return iBitmapFormat <= BMF_32BPP ? bits[iBitmapFormat] : 0;
}

ULONG PixelLayout::PixelOf(COLORREF colour) const
{
    if (IsIndexed())
        return NearestEntry(palette, colour);
    return Pack(colour & 0xFF, redMask) | Pack(colour >> 8 & 0xFF, greenMask) | Pack(colour >> 16 & 0xFF, blueMask);
}

COLORREF PixelLayout::ColourOf(ULONG pixel) const
{
    if (IsIndexed())
        return pixel < palette.size() ? palette[pixel] : 0;
    return Rgb(Widen(pixel, redMask), Widen(pixel, greenMask), Widen(pixel, blueMask));
}

} // namespace engine
