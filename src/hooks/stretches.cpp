#include "capture/records.h"
#include "driver/optional_entries.h"
#include "hooks/call_rectangles.h"
#include "hooks/entry_points.h"
#include "hooks/hook_frame.h"
#include "hooks/needed.h"
#include "magnifier/rectangle.h"
#include "platform/services.h"

namespace koru {

namespace {

    // Stretching calls may be given mirrored rectangles.
    RECTL Ordered(const RECTL* rectangle)
    {
        return rectangle ? OrderedRect(*rectangle) : NoRectangle;
    }

    // Of the parallelogram with the corners A, B and C, in 28.4; the fourth is B + C - A.
    RECTL PixelsOfParallelogram(const POINTFIX* corners)
    {
        if (!corners)
            return NoRectangle;
        const auto fourth = [](FIX a, FIX b, FIX c) {
            return static_cast<FIX>(static_cast<ULONG>(b) + static_cast<ULONG>(c) - static_cast<ULONG>(a));
        };
        RECTFX box = {corners[0].x, corners[0].y, corners[0].x, corners[0].y};
        const auto take = [&box](FIX x, FIX y) {
            box.xLeft = x < box.xLeft ? x : box.xLeft;
            box.yTop = y < box.yTop ? y : box.yTop;
            box.xRight = x > box.xRight ? x : box.xRight;
            box.yBottom = y > box.yBottom ? y : box.yBottom;
        };
        take(corners[1].x, corners[1].y);
        take(corners[2].x, corners[2].y);
        take(fourth(corners[0].x, corners[1].x, corners[2].x), fourth(corners[0].y, corners[1].y, corners[2].y));
        return PixelsAround(box);
    }

} // namespace

// The cursor's place is compared with the destination alone, for what is read as well: a pointer over
// the source is stretched along, as programs that this driver serves have come to expect.
BOOL APIENTRY DrvStretchBlt(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                            COLORADJUSTMENT* pca, POINTL* pptlHTOrg, RECTL* prclDest, RECTL* prclSrc, POINTL* pptlMask,
                            ULONG iMode)
{
    const RECTL ordered = Ordered(prclDest);
    return RunHook(
        {CALL_STRETCHBLT, psoDest, psoSrc, &ordered, &ordered},
        [&](RECTL& bounds) { return CutToClip(bounds, prclDest ? &ordered : nullptr, pco); },
        [&](SURFOBJ* on, SURFOBJ* from) {
            return from && prclDest && prclSrc && HasPlace(psoMask, pptlMask)
                ? EngStretchBlt(on, from, psoMask, pco, pxlo, pca, pptlHTOrg, prclDest, prclSrc, pptlMask, iMode)
                : FALSE;
        },
        [&](BYTE* record, ULONG room) {
            return ExpandDrvStretchBlt(psoDest, psoSrc, psoMask, pco, pxlo, pca, pptlHTOrg, prclDest, prclSrc, pptlMask,
                                       iMode, record, room);
        });
}

BOOL APIENTRY DrvStretchBltROP(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                               COLORADJUSTMENT* pca, POINTL* pptlHTOrg, RECTL* prclDest, RECTL* prclSrc,
                               POINTL* pptlMask, ULONG iMode, BRUSHOBJ* pbo, ROP4 rop4)
{
    const RECTL ordered = Ordered(prclDest);
    const RECTL orderedSrc = Ordered(prclSrc);
    return RunHook(
        {CALL_STRETCHBLTROP, psoDest, psoSrc, &ordered, &orderedSrc},
        [&](RECTL& bounds) { return CutToClip(bounds, prclDest ? &ordered : nullptr, pco); },
        [&](SURFOBJ* on, SURFOBJ* from) {
            const auto stretch = OptionalEngEntries.StretchBltROP;
            const bool whole = prclDest && prclSrc && (from || !RopReadsSource(rop4)) && HasPlace(psoMask, pptlMask);
            return stretch && whole
                ? stretch(on, from, psoMask, pco, pxlo, pca, pptlHTOrg, prclDest, prclSrc, pptlMask, iMode, pbo, rop4)
                : FALSE;
        },
        [&](BYTE* record, ULONG room) {
            return ExpandDrvStretchBltROP(psoDest, psoSrc, psoMask, pco, pxlo, pca, pptlHTOrg, prclDest, prclSrc,
                                          pptlMask, iMode, pbo, rop4, record, room);
        });
}

// What is shown, and tested against the dark zones, is the rectangle that the call reads. The cursor
// has to leave the place that is really painted.
BOOL APIENTRY DrvPlgBlt(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMsk, CLIPOBJ* pco, XLATEOBJ* pxlo,
                        COLORADJUSTMENT* pca, POINTL* pptlBrushOrg, POINTFIX* pptfx, RECTL* prcl, POINTL* pptl,
                        ULONG iMode)
{
    const RECTL painted = PixelsOfParallelogram(pptfx);
    return RunHook(
        {CALL_PLGBLT, psoTrg, psoSrc, &painted, prcl}, [&](RECTL& bounds) { return CutToClip(bounds, prcl, pco); },
        [&](SURFOBJ* on, SURFOBJ* from) {
            const auto blit = OptionalEngEntries.PlgBlt;
            return blit && from && pptfx && prcl && HasPlace(psoMsk, pptl)
                ? blit(on, from, psoMsk, pco, pxlo, pca, pptlBrushOrg, pptfx, prcl, pptl, iMode)
                : FALSE;
        },
        [&](BYTE* record, ULONG room) {
            return ExpandDrvPlgBlt(psoTrg, psoSrc, psoMsk, pco, pxlo, pca, pptlBrushOrg, pptfx, prcl, pptl, iMode,
                                   record, room);
        });
}

} // namespace koru
