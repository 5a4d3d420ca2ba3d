#include "capture/call_bits.h"
#include "capture/drawing_record_layouts.h"
#include "capture/record_cursor.h"
#include "capture/record_values.h"
#include "capture/records.h"

namespace koru {

ULONG ExpandDrvBitBlt(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclTrg,
                      POINTL* pptlSrc, POINTL* pptlMask, BRUSHOBJ* pbo, POINTL* pptlBrush, ROP4 rop4, BYTE* buffer,
                      ULONG room)
{
    auto* const record = BeginLayout<BitBltRecord>(buffer, room, "ExpandDrvBitBlt: Error the buffer is too small, ");
    if (!record)
        return 0;
    record->surface = record->source = record->mask = record->clip = record->xlate = record->brush = 0;
    record->rclTrg = Given(prclTrg, NoRectangle);
    record->ptlSrc = psoSrc ? Given(pptlSrc, NoPoint) : NoPoint;
    record->ptlMask = psoMask ? Given(pptlMask, NoPoint) : NoPoint;
    record->ptlBrush = Given(pptlBrush, NoPoint);
    record->rop4 = rop4;

    const SourcePart source(pptlSrc, prclTrg);
    const SourcePart mask(pptlMask, prclTrg);
    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, psoTrg, TargetSurface);
    cursor.Append(record->source, psoSrc, SourceSurface(CALL_BITBLT, source.Rectangle()));
    cursor.Append(record->mask, psoMask, SourceSurface(CALL_BITBLT, mask.Rectangle()));
    cursor.Append(record->clip, pco, ExpandClipObj);
    cursor.Append(record->xlate, pxlo, ExpandXLATEOBJ);
    cursor.AppendLast(record->brush, pbo, ExpandBrushObj);
    return cursor.Finish(CALL_BITBLT);
}

ULONG ExpandDrvCopyBits(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest,
                        POINTL* pptlSrc, BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<CopyBitsRecord>(buffer, room, "ExpandDrvCopyBits: Error, The buffer is too small. ");
    if (!record)
        return 0;
    record->surface = record->source = record->clip = record->xlate = 0;
    record->rclDest = Given(prclDest, NoRectangle);
    record->ptlSrc = Given(pptlSrc, NoPoint);
    if (record->rclDest.left >= record->rclDest.right || record->rclDest.top >= record->rclDest.bottom)
        DebugPrintPiece("ExpandDrvCopyBits: Warning empty rectangle\n");

    const SourcePart source(pptlSrc, prclDest);
    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, psoDest, TargetSurface);
    cursor.Append(record->source, psoSrc, SourceSurface(CALL_COPYBITS, source.Rectangle()));
    cursor.Append(record->clip, pco, ExpandClipObj);
    cursor.AppendLast(record->xlate, pxlo, ExpandXLATEOBJ);
    return cursor.Finish(CALL_COPYBITS);
}

ULONG ExpandDrvAlphaBlend(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest,
                          RECTL* prclSrc, BLENDOBJ* pBlendObj, BYTE* buffer, ULONG room)
{
    auto* const record = BeginLayoutFormatted<AlphaBlendRecord>(
        buffer, room, "ExpandDrvAlphaBlend: Error, The buffer is too small. %d\n");
    if (!record)
        return 0;
    record->surface = record->source = record->clip = record->xlate = 0;
    record->rclDest = Given(prclDest, NoRectangle);
    record->rclSrc = Given(prclSrc, NoRectangle);
    record->blendFunction = pBlendObj ? pBlendObj->BlendFunction : BLENDFUNCTION{};

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, psoDest, TargetSurface);
    cursor.Append(record->source, psoSrc, SourceSurface(CALL_ALPHABLEND, prclSrc));
    cursor.Append(record->clip, pco, ExpandClipObj);
    cursor.AppendLast(record->xlate, pxlo, ExpandXLATEOBJ);
    return cursor.Finish(CALL_ALPHABLEND);
}

ULONG ExpandDrvTransparentBlt(SURFOBJ* psoDst, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDst,
                              RECTL* prclSrc, ULONG iTransColor, ULONG ulReserved, BYTE* buffer, ULONG room)
{
    auto* const record = BeginLayoutFormatted<TransparentBltRecord>(
        buffer, room, "ExpandDrvTransparentBlt: Error, The buffer is too small. %d\n");
    if (!record)
        return 0;
    record->surface = record->source = record->clip = record->xlate = 0;
    record->rclDst = Given(prclDst, NoRectangle);
    record->rclSrc = Given(prclSrc, NoRectangle);
    record->iTransColor = iTransColor;
    record->ulReserved = ulReserved;

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, psoDst, TargetSurface);
    cursor.Append(record->source, psoSrc, SourceSurface(CALL_TRANSPARENTBLT, prclSrc));
    cursor.Append(record->clip, pco, ExpandClipObj);
    cursor.AppendLast(record->xlate, pxlo, ExpandXLATEOBJ);
    return cursor.Finish(CALL_TRANSPARENTBLT);
}

} // namespace koru
