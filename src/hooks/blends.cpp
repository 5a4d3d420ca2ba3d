#include "capture/records.h"
#include "driver/optional_entries.h"
#include "hooks/call_rectangles.h"
#include "hooks/entry_points.h"
#include "hooks/hook_frame.h"

// Calls that older engines do not know: without the engine's service nothing is drawn.
namespace koru {

BOOL APIENTRY DrvAlphaBlend(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest,
                            RECTL* prclSrc, BLENDOBJ* pBlendObj)
{
    return RunHook(
        {CALL_ALPHABLEND, psoDest, psoSrc, prclDest, prclSrc},
        [&](RECTL& bounds) { return CutToClip(bounds, prclDest, pco); },
        [&](SURFOBJ* on, SURFOBJ* from) {
            const auto blend = OptionalEngEntries.AlphaBlend;
            return blend && from && prclDest && prclSrc && pBlendObj
                ? blend(on, from, pco, pxlo, prclDest, prclSrc, pBlendObj)
                : FALSE;
        },
        [&](BYTE* record, ULONG room) {
            return ExpandDrvAlphaBlend(psoDest, psoSrc, pco, pxlo, prclDest, prclSrc, pBlendObj, record, room);
        });
}

BOOL APIENTRY DrvTransparentBlt(SURFOBJ* psoDst, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDst,
                                RECTL* prclSrc, ULONG iTransColor, ULONG ulReserved)
{
    return RunHook(
        {CALL_TRANSPARENTBLT, psoDst, psoSrc, prclDst, prclSrc},
        [&](RECTL& bounds) { return CutToClip(bounds, prclDst, pco); },
        [&](SURFOBJ* on, SURFOBJ* from) {
            const auto blit = OptionalEngEntries.TransparentBlt;
            return blit && from && prclDst && prclSrc
                ? blit(on, from, pco, pxlo, prclDst, prclSrc, iTransColor, ulReserved)
                : FALSE;
        },
        [&](BYTE* record, ULONG room) {
            return ExpandDrvTransparentBlt(psoDst, psoSrc, pco, pxlo, prclDst, prclSrc, iTransColor, ulReserved, record,
                                           room);
        });
}

BOOL APIENTRY DrvGradientFill(SURFOBJ* psoDest, CLIPOBJ* pco, XLATEOBJ* pxlo, TRIVERTEX* pVertex, ULONG nVertex,
                              void* pMesh, ULONG nMesh, RECTL* prclExtents, POINTL* pptlDitherOrg, ULONG ulMode)
{
    return RunHook(
        {CALL_GRADIENTFILL, psoDest, nullptr, prclExtents, nullptr},
        [&](RECTL& bounds) { return CutToClip(bounds, prclExtents, pco); },
        [&](SURFOBJ* on, SURFOBJ*) {
            const auto fill = OptionalEngEntries.GradientFill;
            return fill && prclExtents && pVertex && pMesh
                ? fill(on, pco, pxlo, pVertex, nVertex, pMesh, nMesh, prclExtents, pptlDitherOrg, ulMode)
                : FALSE;
        },
        [&](BYTE* record, ULONG room) {
            return ExpandDrvGradientFill(psoDest, pco, pxlo, pVertex, nVertex, pMesh, nMesh, prclExtents, pptlDitherOrg,
                                         ulMode, record, room);
        });
}

} // namespace koru
