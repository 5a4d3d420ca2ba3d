#include "engine/core/objects.h"

namespace engine {

namespace {

    USHORT PaletteType(const PixelLayout& layout)
    {
        if (layout.IsIndexed())
            return PAL_INDEXED;
        if (layout.redMask == 0xFF0000 && layout.greenMask == 0xFF00 && layout.blueMask == 0xFF)
            return PAL_BGR;
        if (layout.redMask == 0xFF && layout.greenMask == 0xFF00 && layout.blueMask == 0xFF0000)
            return PAL_RGB;
        return PAL_BITFIELDS;
    }

    std::vector<ULONG> TableBetween(const PixelLayout& source, const PixelLayout& target)
    {
        std::vector<ULONG> table;
        if (source.IsIndexed())
            for (const COLORREF colour : source.palette)
                table.push_back(target.PixelOf(colour));
        return table;
    }

    bool KeepsPixels(const PixelLayout& source, const PixelLayout& target)
    {
        return source.redMask == target.redMask && source.greenMask == target.greenMask
            && source.blueMask == target.blueMask && source.palette == target.palette;
    }

    void FillPublicPart(Translation& translation, bool trivial)
    {
        const bool table = !trivial && translation.source.IsIndexed();
        translation.iUniq = NextUniqueNumber();
        translation.flXlate = trivial ? XO_TRIVIAL : table ? XO_TABLE : 0;
        translation.iSrcType = PaletteType(translation.source);
        translation.iDstType = PaletteType(translation.target);
        translation.cEntries = table ? static_cast<ULONG>(translation.table.size()) : 0;
        translation.pulXlate = table ? translation.table.data() : nullptr;
    }

} // namespace

Translation::Translation(const PixelLayout& sourceLayout, const PixelLayout& targetLayout)
    : source(sourceLayout)
    , target(targetLayout)
    , table(TableBetween(sourceLayout, targetLayout))
    , vector(sourceLayout.palette)
{
    FillPublicPart(*this, KeepsPixels(source, target));
}

Translation::Translation(const PixelLayout& targetLayout, ULONG backPixel, ULONG forePixel)
    : source{BMF_1BPP, 0, 0, 0, {targetLayout.ColourOf(backPixel), targetLayout.ColourOf(forePixel)}}
    , target(targetLayout)
    , table{backPixel, forePixel}
    , vector(source.palette)
{
    FillPublicPart(*this, false);
}

ULONG Translation::Translate(ULONG pixel) const
{
    if (flXlate & XO_TRIVIAL)
        return pixel;
    if (source.IsIndexed())
        return pixel < table.size() ? table[pixel] : 0;
    return target.PixelOf(source.ColourOf(pixel));
}

} // namespace engine
