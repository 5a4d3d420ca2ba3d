// EngBitBlt, EngCopyBits and EngPaint.

#include "engine/raster/blit.h"
#include "engine/raster/hook_call.h"
#include "engine/raster/rop.h"
#include "platform/services.h"

using namespace engine;
using namespace engine::raster;

namespace {

// Two surfaces may each belong to a driver: the target's is asked first, as it is when it draws.
std::optional<BOOL> AskCopyHook(SURFOBJ* managed, SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo,
                                RECTL* prclDest, POINTL* pptlSrc)
{
    if (const auto answer = AskHook<PFN_DrvCopyBits>("EngCopyBits", managed, HOOK_COPYBITS, INDEX_DrvCopyBits, psoDest,
                                                     psoSrc, pco, pxlo, prclDest, pptlSrc))
        return answer;
    return AskHook<PFN_DrvBitBlt>("EngCopyBits", managed, HOOK_BITBLT, INDEX_DrvBitBlt, psoDest, psoSrc,
                                  static_cast<SURFOBJ*>(nullptr), pco, pxlo, prclDest, pptlSrc,
                                  static_cast<POINTL*>(nullptr), static_cast<BRUSHOBJ*>(nullptr),
                                  static_cast<POINTL*>(nullptr), CopySource);
}

} // namespace

extern "C" {

BOOL APIENTRY EngBitBlt(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                        RECTL* prclTrg, POINTL* pptlSrc, POINTL* pptlMask, BRUSHOBJ* pbo, POINTL* pptlBrush, ROP4 rop4)
{
    if (!Given("EngBitBlt", psoTrg, "target"))
        return FALSE;
    if (!prclTrg)
        return Refuse("EngBitBlt", "null target rectangle");
    if (const auto answer =
            AskHook<PFN_DrvBitBlt>("EngBitBlt", psoTrg, HOOK_BITBLT, INDEX_DrvBitBlt, psoTrg, psoSrc, psoMask, pco,
                                   pxlo, prclTrg, pptlSrc, pptlMask, pbo, pptlBrush, rop4))
        return *answer;
    const Blit blit = {.service = "EngBitBlt",
                       .psoTrg = psoTrg,
                       .psoSrc = psoSrc,
                       .psoMask = psoMask,
                       .pco = pco,
                       .pxlo = pxlo,
                       .target = *prclTrg,
                       .source = PointOrOrigin(pptlSrc),
                       .mask = PointOrOrigin(pptlMask),
                       .pbo = pbo,
                       .brushOrigin = PointOrOrigin(pptlBrush),
                       .rop4 = rop4};
    return blit.Run();
}

BOOL APIENTRY EngCopyBits(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest,
                          POINTL* pptlSrc)
{
    if (!Given("EngCopyBits", psoDest, "target") || !Given("EngCopyBits", psoSrc, "source"))
        return FALSE;
    if (!prclDest || !pptlSrc)
        return Refuse("EngCopyBits", prclDest ? "null source point" : "null target rectangle");
    for (SURFOBJ* const managed : {psoDest, psoSrc}) {
        if (const auto answer = AskCopyHook(managed, psoDest, psoSrc, pco, pxlo, prclDest, pptlSrc))
            return *answer;
        if (!HasBits(managed))
            return Refuse("EngCopyBits", "neither bits nor a hook");
    }
    const Blit blit = {.service = "EngCopyBits",
                       .psoTrg = psoDest,
                       .psoSrc = psoSrc,
                       .pco = pco,
                       .pxlo = pxlo,
                       .target = *prclDest,
                       .source = *pptlSrc,
                       .rop4 = CopySource};
    return blit.Run();
}

BOOL APIENTRY EngPaint(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg, MIX mix)
{
    if (!Given("EngPaint", pso, "target"))
        return FALSE;
    if (!pco)
        return Refuse("EngPaint", "null clip");
    if (const auto answer =
            AskHook<PFN_DrvPaint>("EngPaint", pso, HOOK_PAINT, INDEX_DrvPaint, pso, pco, pbo, pptlBrushOrg, mix))
        return *answer;
    if (!HasBits(pso))
        return CallBitBlt(pso, nullptr, nullptr, pco, nullptr, &pco->rclBounds, nullptr, nullptr, pbo, pptlBrushOrg,
                          RopOfMix(mix));
    const Blit blit = {.service = "EngPaint",
                       .psoTrg = pso,
                       .pco = pco,
                       .target = pco->rclBounds,
                       .pbo = pbo,
                       .brushOrigin = PointOrOrigin(pptlBrushOrg),
                       .rop4 = RopOfMix(mix)};
    return blit.Run();
}

} // extern "C"
