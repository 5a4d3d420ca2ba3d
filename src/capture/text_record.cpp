#include "capture/call_bits.h"
#include "capture/drawing_record_layouts.h"
#include "capture/record_cursor.h"
#include "capture/record_values.h"
#include "capture/records.h"

namespace koru {

namespace {

    bool IsListEnd(const RECTL& rectangle)
    {
        return rectangle.left == 0 && rectangle.top == 0 && rectangle.right == 0 && rectangle.bottom == 0;
    }

    // The list ends with a rectangle of zeros, which is not written. How many were.
    ULONG AppendExtraRectangles(RecordCursor& cursor, SLOT& slot, const RECTL* prclExtra)
    {
        if (!prclExtra)
            return 0;
        const SLOT first = cursor.Offset();
        ULONG count = 0;
        while (cursor.Room() >= sizeof(RECTL) && !IsListEnd(prclExtra[count])) {
            cursor.Write(&prclExtra[count], sizeof(RECTL));
            ++count;
        }
        if (cursor.Room() < sizeof(RECTL)) // also when the last one just fitted
            DebugPrintPiece("ExpandDrvTextOut, Warnning!!! Extra rectangles does not fit in the buffer.\n");
        slot = count != 0 ? first : 0;
        return count;
    }

} // namespace

ULONG ExpandDrvTextOut(SURFOBJ* pso, STROBJ* pstro, FONTOBJ* pfo, CLIPOBJ* pco, RECTL* prclExtra, RECTL* prclOpaque,
                       BRUSHOBJ* pboFore, BRUSHOBJ* pboOpaque, POINTL* pptlOrg, MIX mix, BYTE* buffer, ULONG room)
{
    auto* const record = BeginLayout<TextOutRecord>(buffer, room, "ExpandDrvTextOut: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->surface = record->string = record->font = record->clip = 0;
    record->extra = record->foreBrush = record->opaqueBrush = 0;
    record->rclOpaque = Given(prclOpaque, NoRectangle);
    record->ptlOrg = Given(pptlOrg, NoPoint);
    record->mix = mix;

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, pso, TargetSurface);
    cursor.Append(record->string, pstro, ExpandSTROBJ);
    cursor.Append(record->font, pfo, ExpandFontObj);
    cursor.Append(record->clip, pco, ExpandClipObj);
    record->extraCount = AppendExtraRectangles(cursor, record->extra, prclExtra);
    cursor.Append(record->foreBrush, pboFore, ExpandBrushObj);
    cursor.AppendLast(record->opaqueBrush, pboOpaque, ExpandBrushObj);
    return cursor.Finish(CALL_TEXTOUT);
}

} // namespace koru
