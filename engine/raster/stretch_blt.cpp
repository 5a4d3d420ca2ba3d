// EngStretchBlt, EngStretchBltROP and EngTransparentBlt. All modes of stretching are drawn as COLORONCOLOR.

#include "engine/raster/hook_call.h"
#include "engine/raster/rectangles.h"
#include "engine/raster/rop_operation.h"
#include "engine/raster/stretch.h"
#include "platform/services.h"

using namespace engine;
using namespace engine::raster;

namespace {

// The bits of a pixel that a colour occupies: the spare ones of 32 (and of 16) bits do not count.
ULONG ColourBits(const PixelLayout& layout)
{
    return layout.IsIndexed() ? 0xFFFFFFFF : layout.redMask | layout.greenMask | layout.blueMask;
}

// Copies all but the pixels of one source colour.
class TransparentOperation : public RowOperation {
public:
    TransparentOperation(const Translator& translator, ULONG transparent, ULONG bits)
        : translator_(translator)
        , transparent_(transparent & bits)
        , bits_(bits)
    {
    }

    void Run(Row& row) const override
    {
        for (LONG i = 0; i < row.count; ++i)
            if ((row.source[i] & bits_) == transparent_)
                row.choices[i] = Choice::Nothing;
        translator_.Apply(row.source, row.count);
        for (LONG i = 0; i < row.count; ++i)
            if (row.choices[i] != Choice::Nothing)
                row.target[i] = row.source[i];
    }

private:
    const Translator& translator_;
    ULONG transparent_, bits_;
};

BOOL StretchWithRop(const Stretch& stretch, XLATEOBJ* pxlo, BRUSHOBJ* pbo, const POINTL& brushOrigin, ROP4 rop4)
{
    const Translator translator(pxlo);
    const Brush* const brush = pbo ? BrushBehind(pbo) : nullptr;
    if (!translator.IsKnown() || (pbo && !brush))
        return FALSE;
    if (!pbo && UsesPattern(rop4))
        return Refuse(stretch.service, "null brush");
    const BrushPattern pattern(brush, brushOrigin);
    return stretch.Run(RopOperation(rop4, translator, pattern, stretch.psoMask != nullptr));
}

} // namespace

extern "C" {

BOOL APIENTRY EngStretchBlt(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                            COLORADJUSTMENT* pca, POINTL* pptlHTOrg, RECTL* prclDest, RECTL* prclSrc, POINTL* pptlMask,
                            ULONG iMode)
{
    if (!Given("EngStretchBlt", psoDest, "target") || !Given("EngStretchBlt", psoSrc, "source"))
        return FALSE;
    if (!prclDest || !prclSrc)
        return Refuse("EngStretchBlt", "null rectangle");
    if (const auto answer =
            AskHook<PFN_DrvStretchBlt>("EngStretchBlt", psoDest, HOOK_STRETCHBLT, INDEX_DrvStretchBlt, psoDest, psoSrc,
                                       psoMask, pco, pxlo, pca, pptlHTOrg, prclDest, prclSrc, pptlMask, iMode))
        return *answer;
    const Stretch stretch = {.service = "EngStretchBlt",
                             .psoDest = psoDest,
                             .psoSrc = psoSrc,
                             .psoMask = psoMask,
                             .pco = pco,
                             .target = *prclDest,
                             .source = *prclSrc,
                             .mask = PointOrOrigin(pptlMask)};
    return StretchWithRop(stretch, pxlo, nullptr, {0, 0}, CopySource);
}

BOOL APIENTRY EngStretchBltROP(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                               COLORADJUSTMENT* pca, POINTL* pptlHTOrg, RECTL* prclDest, RECTL* prclSrc,
                               POINTL* pptlMask, ULONG iMode, BRUSHOBJ* pbo, ROP4 rop4)
{
    if (!Given("EngStretchBltROP", psoDest, "target"))
        return FALSE;
    if (UsesSource(rop4) && !Given("EngStretchBltROP", psoSrc, "source"))
        return FALSE;
    const bool samples = UsesSource(rop4) || psoMask;
    if (!prclDest || (samples && !prclSrc))
        return Refuse("EngStretchBltROP", "null rectangle");
    if (const auto answer = AskHook<PFN_DrvStretchBltROP>(
            "EngStretchBltROP", psoDest, HOOK_STRETCHBLTROP, INDEX_DrvStretchBltROP, psoDest, psoSrc, psoMask, pco,
            pxlo, pca, pptlHTOrg, prclDest, prclSrc, pptlMask, iMode, pbo, rop4))
        return *answer;
    const Stretch stretch = {.service = "EngStretchBltROP",
                             .psoDest = psoDest,
                             .psoSrc = UsesSource(rop4) ? psoSrc : nullptr,
                             .psoMask = psoMask,
                             .pco = pco,
                             .target = *prclDest,
                             .source = samples ? *prclSrc : RECTL{0, 0, 1, 1},
                             .mask = PointOrOrigin(pptlMask),
                             .maskHides = false};
    return StretchWithRop(stretch, pxlo, pbo, PointOrOrigin(pptlHTOrg), rop4);
}

BOOL APIENTRY EngTransparentBlt(SURFOBJ* psoDst, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDst,
                                RECTL* prclSrc, ULONG iTransColor, ULONG ulReserved)
{
    const Surface* const source = Given("EngTransparentBlt", psoSrc, "source");
    if (!source || !Given("EngTransparentBlt", psoDst, "target"))
        return FALSE;
    if (!prclDst || !prclSrc)
        return Refuse("EngTransparentBlt", "null rectangle");
    if (const auto answer =
            AskHook<PFN_DrvTransparentBlt>("EngTransparentBlt", psoDst, HOOK_TRANSPARENTBLT, INDEX_DrvTransparentBlt,
                                           psoDst, psoSrc, pco, pxlo, prclDst, prclSrc, iTransColor, ulReserved))
        return *answer;
    const Translator translator(pxlo);
    if (!translator.IsKnown())
        return FALSE;
    const Stretch stretch = {.service = "EngTransparentBlt",
                             .psoDest = psoDst,
                             .psoSrc = psoSrc,
                             .pco = pco,
                             .target = *prclDst,
                             .source = *prclSrc};
    return stretch.Run(TransparentOperation(translator, iTransColor, ColourBits(source->layout)));
}

} // extern "C"
