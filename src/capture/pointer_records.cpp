#include "capture/call_bits.h"
#include "capture/device_record_layouts.h"
#include "capture/record_cursor.h"
#include "capture/record_values.h"
#include "capture/records.h"

namespace koru {

ULONG ExpandDrvMovePointer(SURFOBJ* pso, LONG x, LONG y, RECTL* prcl, BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<MovePointerRecord>(buffer, room, "ExpandDrvMovePointer: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->surface = 0;
    record->x = x;
    record->y = y < 0 && pso ? y + pso->sizlBitmap.cy : y; // a negative y counts from the bottom
    record->rcl = Given(prcl, NoRectangle);

    RecordCursor cursor(*record, room);
    cursor.AppendLast(record->surface, pso, TargetSurface);
    return cursor.Finish(CALL_MOVEPOINTER);
}

ULONG ExpandDrvSetPointerShape(SURFOBJ* pso, SURFOBJ* psoMask, SURFOBJ* psoColor, XLATEOBJ* pxlo, LONG xHot, LONG yHot,
                               LONG x, LONG y, RECTL* prcl, FLONG fl, BYTE* buffer, ULONG room)
{
    auto* const record = BeginLayoutSilently<SetPointerShapeRecord>(buffer, room);
    if (!record)
        return 0;
    record->surface = record->mask = record->color = record->xlate = 0;
    record->xHot = xHot;
    record->yHot = yHot;
    record->x = x;
    record->y = y;
    record->rcl = Given(prcl, NoRectangle);
    record->fl = fl;
    record->zero = 0;

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, pso, TargetSurface);
    cursor.Append(record->mask, psoMask, SourceSurface(CALL_SETPOINTERSHAPE));
    cursor.Append(record->color, psoColor, SourceSurface(CALL_SETPOINTERSHAPE));
    cursor.AppendLast(record->xlate, pxlo, ExpandXLATEOBJ);
    return cursor.Finish(CALL_SETPOINTERSHAPE);
}

} // namespace koru
