// EngAlphaBlend: Porter and Duff's "over" (Compositing digital images, 1984) with a constant alpha, an alpha
// per pixel with colours already multiplied by it, or both. Quotients by 255 are rounded to the nearest.

#include "engine/raster/hook_call.h"
#include "engine/raster/rectangles.h"
#include "engine/raster/stretch.h"
#include "platform/services.h"

using namespace engine;
using namespace engine::raster;

namespace {

constexpr ULONG Opaque = 255;
constexpr ULONG SpareBits = 0xFF000000; // where 32-bit pixels keep their alpha

constexpr ULONG DivideBy255(ULONG number)
{
    return (number + 127) / 255;
}

// Red, green, blue and alpha in the bytes from the lowest on.
using Components = ULONG;

template<class Combine> Components CombineBytes(Components first, Components second, Combine combine)
{
    Components result = 0;
    for (int shift = 0; shift < 32; shift += 8)
        result |= combine(first >> shift & 0xFF, second >> shift & 0xFF) << shift;
    return result;
}

class AlphaOperation : public RowOperation {
public:
    AlphaOperation(const Translator& translator, const PixelLayout& source, const PixelLayout& target,
                   const BLENDFUNCTION& blend)
        : translator_(translator)
        , source_(source)
        , target_(target)
        , constant_(blend.SourceConstantAlpha)
        , perPixel_(blend.AlphaFormat == AC_SRC_ALPHA)
    {
    }

    void Run(Row& row) const override
    {
        for (LONG i = 0; i < row.count; ++i)
            if (row.choices[i] != Choice::Nothing)
                row.target[i] = PixelOf(Blend(SourceOf(row.source[i]), TargetOf(row.target[i])));
    }

private:
    static ULONG AlphaOf(const PixelLayout& layout, ULONG pixel)
    {
        return layout.iBitmapFormat == BMF_32BPP ? pixel & SpareBits : 0;
    }
    Components SourceOf(ULONG pixel) const
    {
        return (translator_.ColourOf(pixel, target_) & ~SpareBits) | AlphaOf(source_, pixel);
    }
    Components TargetOf(ULONG pixel) const { return (target_.ColourOf(pixel) & ~SpareBits) | AlphaOf(target_, pixel); }

    Components Blend(Components source, Components target) const
    {
        if (!perPixel_)
            return CombineBytes(source, target, [this](ULONG above, ULONG below) {
                return DivideBy255(above * constant_ + below * (Opaque - constant_));
            });
        const Components scaled =
            CombineBytes(source, 0, [this](ULONG above, ULONG) { return DivideBy255(above * constant_); });
        const ULONG uncovered = Opaque - (scaled >> 24);
        return CombineBytes(scaled, target, [uncovered](ULONG above, ULONG below) {
            return std::min(above + DivideBy255(below * uncovered), Opaque); // a colour may exceed its alpha
        });
    }

    // Searching a palette is slow and neighbours are mostly alike.
    ULONG PixelOf(Components components) const
    {
        if (components != lastComponents_ || !haveLast_) {
            haveLast_ = true;
            lastComponents_ = components;
            lastPixel_ = target_.PixelOf(components & ~SpareBits);
            if (target_.iBitmapFormat == BMF_32BPP)
                lastPixel_ = (lastPixel_ & ~SpareBits) | (components & SpareBits);
        }
        return lastPixel_;
    }

    const Translator& translator_;
    const PixelLayout &source_, &target_;
    ULONG constant_;
    bool perPixel_;
    mutable bool haveLast_ = false;
    mutable Components lastComponents_ = 0;
    mutable ULONG lastPixel_ = 0;
};

bool IsValid(const BLENDFUNCTION& blend, const Surface& source)
{
    if (blend.BlendOp != AC_SRC_OVER || blend.BlendFlags != 0)
        return false;
    return blend.AlphaFormat == 0 || (blend.AlphaFormat == AC_SRC_ALPHA && source.iBitmapFormat == BMF_32BPP);
}

} // namespace

extern "C" BOOL APIENTRY EngAlphaBlend(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest,
                                       RECTL* prclSrc, BLENDOBJ* pBlendObj)
{
    const Surface* const target = Given("EngAlphaBlend", psoDest, "target");
    const Surface* const source = target ? Given("EngAlphaBlend", psoSrc, "source") : nullptr;
    if (!source)
        return FALSE;
    if (!prclDest || !prclSrc || !pBlendObj)
        return Refuse("EngAlphaBlend", pBlendObj ? "null rectangle" : "null blend function");
    if (const auto answer = AskHook<PFN_DrvAlphaBlend>("EngAlphaBlend", psoDest, HOOK_ALPHABLEND, INDEX_DrvAlphaBlend,
                                                       psoDest, psoSrc, pco, pxlo, prclDest, prclSrc, pBlendObj))
        return *answer;
    const Translator translator(pxlo);
    if (!translator.IsKnown() || !IsValid(pBlendObj->BlendFunction, *source))
        return FALSE;
    const Stretch stretch = {.service = "EngAlphaBlend",
                             .psoDest = psoDest,
                             .psoSrc = psoSrc,
                             .psoMask = nullptr,
                             .pco = pco,
                             .target = *prclDest,
                             .source = *prclSrc};
    return stretch.Run(AlphaOperation(translator, source->layout, target->layout, pBlendObj->BlendFunction));
}
