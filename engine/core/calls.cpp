#include "engine/core/calls.h"

#include "engine/core/device.h"

namespace engine {

namespace {

    // The target's hook. A copy from a device-managed source into a bitmap is its driver's to make.
    template<class Pfn> Pfn HookOfEither(const SURFOBJ* target, const SURFOBJ* source, FLONG hook, ULONG index)
    {
        PFN function = HookOf(target, hook, index);
        if (!function && source && source->iType != STYPE_BITMAP && (!target || target->iType == STYPE_BITMAP))
            function = HookOf(source, hook, index);
        return reinterpret_cast<Pfn>(function);
    }

    template<class Pfn> Pfn TargetHook(const SURFOBJ* target, FLONG hook, ULONG index)
    {
        return reinterpret_cast<Pfn>(HookOf(target, hook, index));
    }

    // The hook with these arguments, else the service.
    template<class Pfn, class... Arguments> BOOL HookOr(Pfn hook, Pfn service, Arguments... arguments)
    {
        return (hook ? hook : service)(arguments...);
    }

} // namespace

PFN HookOf(const SURFOBJ* pso, FLONG hook, ULONG index)
{
    const Surface* const surface = SurfaceBehind(pso);
    if (!surface || !surface->device || !(surface->hooks & hook))
        return nullptr;
    return surface->device->Driver().Function(index);
}

BOOL CallBitBlt(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclTrg,
                POINTL* pptlSrc, POINTL* pptlMask, BRUSHOBJ* pbo, POINTL* pptlBrush, ROP4 rop4)
{
    const auto hook = HookOfEither<PFN_DrvBitBlt>(psoTrg, psoSrc, HOOK_BITBLT, INDEX_DrvBitBlt);
    return HookOr(hook, &EngBitBlt, psoTrg, psoSrc, psoMask, pco, pxlo, prclTrg, pptlSrc, pptlMask, pbo, pptlBrush,
                  rop4);
}

BOOL CallCopyBits(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest, POINTL* pptlSrc)
{
    const auto hook = HookOfEither<PFN_DrvCopyBits>(psoDest, psoSrc, HOOK_COPYBITS, INDEX_DrvCopyBits);
    return HookOr(hook, &EngCopyBits, psoDest, psoSrc, pco, pxlo, prclDest, pptlSrc);
}

BOOL CallStretchBlt(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                    COLORADJUSTMENT* pca, POINTL* pptlHTOrg, RECTL* prclDest, RECTL* prclSrc, POINTL* pptlMask,
                    ULONG iMode)
{
    const auto hook = HookOfEither<PFN_DrvStretchBlt>(psoDest, psoSrc, HOOK_STRETCHBLT, INDEX_DrvStretchBlt);
    return HookOr(hook, &EngStretchBlt, psoDest, psoSrc, psoMask, pco, pxlo, pca, pptlHTOrg, prclDest, prclSrc,
                  pptlMask, iMode);
}

BOOL CallStretchBltROP(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                       COLORADJUSTMENT* pca, POINTL* pptlHTOrg, RECTL* prclDest, RECTL* prclSrc, POINTL* pptlMask,
                       ULONG iMode, BRUSHOBJ* pbo, ROP4 rop4)
{
    const auto hook = HookOfEither<PFN_DrvStretchBltROP>(psoDest, psoSrc, HOOK_STRETCHBLTROP, INDEX_DrvStretchBltROP);
    return HookOr(hook, &EngStretchBltROP, psoDest, psoSrc, psoMask, pco, pxlo, pca, pptlHTOrg, prclDest, prclSrc,
                  pptlMask, iMode, pbo, rop4);
}

BOOL CallPlgBlt(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMsk, CLIPOBJ* pco, XLATEOBJ* pxlo, COLORADJUSTMENT* pca,
                POINTL* pptlBrushOrg, POINTFIX* pptfx, RECTL* prcl, POINTL* pptl, ULONG iMode)
{
    const auto hook = HookOfEither<PFN_DrvPlgBlt>(psoTrg, psoSrc, HOOK_PLGBLT, INDEX_DrvPlgBlt);
    return HookOr(hook, &EngPlgBlt, psoTrg, psoSrc, psoMsk, pco, pxlo, pca, pptlBrushOrg, pptfx, prcl, pptl, iMode);
}

BOOL CallStrokePath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo, BRUSHOBJ* pbo, POINTL* pptlBrushOrg,
                    LINEATTRS* plineattrs, MIX mix)
{
    const auto hook = TargetHook<PFN_DrvStrokePath>(pso, HOOK_STROKEPATH, INDEX_DrvStrokePath);
    return HookOr(hook, &EngStrokePath, pso, ppo, pco, pxo, pbo, pptlBrushOrg, plineattrs, mix);
}

BOOL CallFillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg, MIX mix,
                  FLONG flOptions)
{
    const auto hook = TargetHook<PFN_DrvFillPath>(pso, HOOK_FILLPATH, INDEX_DrvFillPath);
    return HookOr(hook, &EngFillPath, pso, ppo, pco, pbo, pptlBrushOrg, mix, flOptions);
}

BOOL CallStrokeAndFillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo, BRUSHOBJ* pboStroke,
                           LINEATTRS* plineattrs, BRUSHOBJ* pboFill, POINTL* pptlBrushOrg, MIX mixFill, FLONG flOptions)
{
    const auto hook = TargetHook<PFN_DrvStrokeAndFillPath>(pso, HOOK_STROKEANDFILLPATH, INDEX_DrvStrokeAndFillPath);
    return HookOr(hook, &EngStrokeAndFillPath, pso, ppo, pco, pxo, pboStroke, plineattrs, pboFill, pptlBrushOrg,
                  mixFill, flOptions);
}

BOOL CallPaint(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg, MIX mix)
{
    const auto hook = TargetHook<PFN_DrvPaint>(pso, HOOK_PAINT, INDEX_DrvPaint);
    return HookOr(hook, &EngPaint, pso, pco, pbo, pptlBrushOrg, mix);
}

BOOL CallTextOut(SURFOBJ* pso, STROBJ* pstro, FONTOBJ* pfo, CLIPOBJ* pco, RECTL* prclExtra, RECTL* prclOpaque,
                 BRUSHOBJ* pboFore, BRUSHOBJ* pboOpaque, POINTL* pptlOrg, MIX mix)
{
    const auto hook = TargetHook<PFN_DrvTextOut>(pso, HOOK_TEXTOUT, INDEX_DrvTextOut);
    return HookOr(hook, &EngTextOut, pso, pstro, pfo, pco, prclExtra, prclOpaque, pboFore, pboOpaque, pptlOrg, mix);
}

BOOL CallLineTo(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, LONG x1, LONG y1, LONG x2, LONG y2, RECTL* prclBounds,
                MIX mix)
{
    const auto hook = TargetHook<PFN_DrvLineTo>(pso, HOOK_LINETO, INDEX_DrvLineTo);
    return HookOr(hook, &EngLineTo, pso, pco, pbo, x1, y1, x2, y2, prclBounds, mix);
}

BOOL CallAlphaBlend(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest, RECTL* prclSrc,
                    BLENDOBJ* pBlendObj)
{
    const auto hook = HookOfEither<PFN_DrvAlphaBlend>(psoDest, psoSrc, HOOK_ALPHABLEND, INDEX_DrvAlphaBlend);
    return HookOr(hook, &EngAlphaBlend, psoDest, psoSrc, pco, pxlo, prclDest, prclSrc, pBlendObj);
}

BOOL CallGradientFill(SURFOBJ* psoDest, CLIPOBJ* pco, XLATEOBJ* pxlo, TRIVERTEX* pVertex, ULONG nVertex, void* pMesh,
                      ULONG nMesh, RECTL* prclExtents, POINTL* pptlDitherOrg, ULONG ulMode)
{
    const auto hook = TargetHook<PFN_DrvGradientFill>(psoDest, HOOK_GRADIENTFILL, INDEX_DrvGradientFill);
    return HookOr(hook, &EngGradientFill, psoDest, pco, pxlo, pVertex, nVertex, pMesh, nMesh, prclExtents,
                  pptlDitherOrg, ulMode);
}

BOOL CallTransparentBlt(SURFOBJ* psoDst, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDst, RECTL* prclSrc,
                        ULONG iTransColor, ULONG ulReserved)
{
    const auto hook = HookOfEither<PFN_DrvTransparentBlt>(psoDst, psoSrc, HOOK_TRANSPARENTBLT, INDEX_DrvTransparentBlt);
    return HookOr(hook, &EngTransparentBlt, psoDst, psoSrc, pco, pxlo, prclDst, prclSrc, iTransColor, ulReserved);
}

} // namespace engine
