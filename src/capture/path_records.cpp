// Calls that draw lines and areas with a brush.

#include "capture/call_bits.h"
#include "capture/drawing_record_layouts.h"
#include "capture/record_cursor.h"
#include "capture/record_values.h"
#include "capture/records.h"

namespace koru {

ULONG ExpandDrvStrokePath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ*, BRUSHOBJ* pbo, POINTL* pptlBrushOrg,
                          LINEATTRS* plineattrs, MIX mix, BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<StrokePathRecord>(buffer, room, "ExpandDrvStrokePath: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->surface = record->path = record->clip = record->brush = record->lineAttrs = 0;
    record->ptlBrushOrg = Given(pptlBrushOrg, NoPoint);
    record->mix = mix;

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, pso, TargetSurface);
    cursor.Append(record->path, ppo, ExpandPathObj);
    cursor.Append(record->clip, pco, ExpandClipObj);
    cursor.Append(record->brush, pbo, ExpandBrushObj);
    cursor.AppendLast(record->lineAttrs, plineattrs, ExpandLineattrs);
    return cursor.Finish(CALL_STROKEPATH);
}

ULONG ExpandDrvFillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg, MIX mix,
                        FLONG flOptions, BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<FillPathRecord>(buffer, room, "ExpandDrvFillPath: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->surface = record->path = record->clip = record->brush = 0;
    record->ptlBrushOrg = Given(pptlBrushOrg, NoPoint);
    record->mix = mix;
    record->flOptions = flOptions;

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, pso, TargetSurface);
    cursor.Append(record->path, ppo, ExpandPathObj);
    cursor.Append(record->clip, pco, ExpandClipObj);
    cursor.AppendLast(record->brush, pbo, ExpandBrushObj);
    return cursor.Finish(CALL_FILLPATH);
}

ULONG ExpandDrvStrokeAndFillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ*, BRUSHOBJ* pboStroke,
                                 LINEATTRS* plineattrs, BRUSHOBJ* pboFill, POINTL* pptlBrushOrg, MIX mixFill,
                                 FLONG flOptions, BYTE* buffer, ULONG room)
{
    auto* const record = BeginLayout<StrokeAndFillPathRecord>(
        buffer, room, "ExpandDrvStrokeAndFillPath: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->surface = record->path = record->clip = 0;
    record->strokeBrush = record->lineAttrs = record->fillBrush = 0;
    record->ptlBrushOrg = Given(pptlBrushOrg, NoPoint);
    record->mixFill = mixFill;
    record->flOptions = flOptions;

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, pso, TargetSurface);
    cursor.Append(record->path, ppo, ExpandPathObj);
    cursor.Append(record->clip, pco, ExpandClipObj);
    cursor.Append(record->strokeBrush, pboStroke, ExpandBrushObj);
    cursor.AppendWithoutCharge(record->lineAttrs, plineattrs, ExpandLineattrs);
    cursor.AppendLast(record->fillBrush, pboFill, ExpandBrushObj);
    return cursor.Finish(CALL_STROKEANDFILLPATH);
}

ULONG ExpandDrvPaint(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg, MIX mix, BYTE* buffer, ULONG room)
{
    auto* const record = BeginLayout<PaintRecord>(buffer, room, "ExpandDrvPaint: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->surface = record->clip = record->brush = 0;
    record->ptlBrushOrg = Given(pptlBrushOrg, NoPoint);
    record->mix = mix;

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, pso, TargetSurface);
    cursor.Append(record->clip, pco, ExpandClipObj);
    cursor.AppendLast(record->brush, pbo, ExpandBrushObj);
    return cursor.Finish(CALL_PAINT);
}

ULONG ExpandDrvLineTo(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, LONG x1, LONG y1, LONG x2, LONG y2, RECTL*, MIX mix,
                      BYTE* buffer, ULONG room)
{
    auto* const record = BeginLayout<LineToRecord>(buffer, room, "ExpandDrvLineTo: Error the buffer is too small ");
    if (!record)
        return 0;
    record->surface = record->clip = record->brush = 0;
    record->x1 = x1;
    record->y1 = y1;
    record->x2 = x2;
    record->y2 = y2;
    record->mix = mix;

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, pso, TargetSurface);
    cursor.Append(record->clip, pco, ExpandClipObj);
    cursor.AppendLast(record->brush, pbo, ExpandBrushObj);
    return cursor.Finish(CALL_LINETO);
}

} // namespace koru
