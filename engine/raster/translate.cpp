#include "engine/raster/translate.h"

namespace engine::raster {

Translator::Translator(const XLATEOBJ* pxlo)
    : known_(!pxlo || TranslationBehind(pxlo))
{
    if (pxlo && known_ && !(pxlo->flXlate & XO_TRIVIAL))
        translation_ = TranslationBehind(pxlo);
}

ULONG Translator::Translate(ULONG pixel) const
{
    if (!(translation_->flXlate & XO_TABLE))
        return translation_->Translate(pixel);
    return pixel < translation_->cEntries ? translation_->pulXlate[pixel] : 0;
}

void Translator::Apply(ULONG* pixels, LONG count) const
{
    if (IsTrivial() || count <= 0)
        return;
    // Neighbours are mostly alike, and a search in a palette is slow.
    ULONG last = pixels[0], lastTranslated = Translate(last);
    for (LONG i = 0; i < count; ++i) {
        if (pixels[i] != last) {
            last = pixels[i];
            lastTranslated = Translate(last);
        }
        pixels[i] = lastTranslated;
    }
}

COLORREF Translator::ColourOf(ULONG pixel, const PixelLayout& target) const
{
    if (IsTrivial())
        return target.ColourOf(pixel);
    if (translation_->flXlate & XO_TABLE)
        return target.ColourOf(Translate(pixel));
    return translation_->source.ColourOf(pixel);
}

} // namespace engine::raster
