// Blits that change size or shape.

#include "capture/call_bits.h"
#include "capture/drawing_record_layouts.h"
#include "capture/record_cursor.h"
#include "capture/record_values.h"
#include "capture/records.h"

namespace koru {

ULONG ExpandDrvStretchBlt(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                          COLORADJUSTMENT*, POINTL*, RECTL* prclDest, RECTL* prclSrc, POINTL*, ULONG iMode,
                          BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<StretchBltRecord>(buffer, room, "ExpandDrvStretchBlt: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->surface = record->source = record->mask = record->clip = record->xlate = 0;
    record->rclDest = Given(prclDest, NoRectangle);
    record->rclSrc = Given(prclSrc, NoRectangle);
    record->iMode = iMode;

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, psoDest, TargetSurface);
    cursor.Append(record->source, psoSrc, SourceSurface(CALL_STRETCHBLT, prclSrc));
    cursor.Append(record->mask, psoMask, SourceSurface(CALL_STRETCHBLT));
    cursor.Append(record->clip, pco, ExpandClipObj);
    cursor.AppendLast(record->xlate, pxlo, ExpandXLATEOBJ);
    return cursor.Finish(CALL_STRETCHBLT);
}

ULONG ExpandDrvStretchBltROP(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                             COLORADJUSTMENT* pca, POINTL* pptlHTOrg, RECTL* prclDest, RECTL* prclSrc, POINTL* pptlMask,
                             ULONG iMode, BRUSHOBJ* pbo, ROP4 rop4, BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<StretchBltRopRecord>(buffer, room, "ExpandDrvStretchBltROP: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->surface = record->source = record->mask = record->clip = record->xlate = record->brush = 0;
    record->ca = Given(pca);
    record->ptlHTOrg = Given(pptlHTOrg);
    record->rclDest = Given(prclDest, NoRectangle);
    record->rclSrc = Given(prclSrc);
    record->ptlMask = Given(pptlMask);
    record->iMode = iMode;
    record->rop4 = rop4;

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, psoDest, TargetSurface);
    cursor.Append(record->source, psoSrc, SourceSurface(CALL_STRETCHBLTROP, prclSrc));
    cursor.Append(record->mask, psoMask, SourceSurface(CALL_STRETCHBLTROP));
    cursor.Append(record->clip, pco, ExpandClipObj);
    cursor.AppendWithoutCharge(record->xlate, pxlo, ExpandXLATEOBJ);
    cursor.AppendLast(record->brush, pbo, ExpandBrushObj);
    return cursor.Finish(CALL_STRETCHBLTROP);
}

ULONG ExpandDrvPlgBlt(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMsk, CLIPOBJ* pco, XLATEOBJ* pxlo,
                      COLORADJUSTMENT* pca, POINTL* pptlBrushOrg, POINTFIX* pptfx, RECTL* prcl, POINTL* pptl,
                      ULONG iMode, BYTE* buffer, ULONG room)
{
    auto* const record = BeginLayout<PlgBltRecord>(buffer, room, "ExpandDrvPlgBlt: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->surface = record->source = record->mask = record->clip = record->xlate = 0;
    record->ca = Given(pca);
    record->ptlBrushOrg = Given(pptlBrushOrg);
    for (ULONG i = 0; i < 3; ++i)
        record->corners[i] = pptfx ? pptfx[i] : POINTFIX{};
    record->rclSrc = Given(prcl, NoRectangle);
    record->ptlMask = Given(pptl);
    record->iMode = iMode;

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, psoTrg, TargetSurface);
    cursor.Append(record->source, psoSrc, SourceSurface(CALL_PLGBLT, prcl));
    cursor.Append(record->mask, psoMsk, SourceSurface(CALL_PLGBLT));
    cursor.Append(record->clip, pco, ExpandClipObj);
    cursor.AppendLast(record->xlate, pxlo, ExpandXLATEOBJ);
    return cursor.Finish(CALL_PLGBLT);
}

} // namespace koru
