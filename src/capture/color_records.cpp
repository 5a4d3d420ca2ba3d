// Brushes and colours.

#include "capture/call_bits.h"
#include "capture/device_record_layouts.h"
#include "capture/record_cursor.h"
#include "capture/record_values.h"
#include "capture/records.h"
#include "driver/handles.h"
#include "platform/services.h"

namespace koru {

ULONG ExpandDrvRealizeBrush(BRUSHOBJ* pbo, SURFOBJ* psoTarget, SURFOBJ* psoPattern, SURFOBJ* psoMask, XLATEOBJ* pxlo,
                            ULONG iHatch, BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<RealizeBrushRecord>(buffer, room, "ExpandDrvRealizeBrush: Error the buffer is too small ");
    if (!record)
        return 0;
    record->brush = record->surface = record->pattern = record->mask = record->xlate = 0;
    record->iHatch = iHatch;

    RecordCursor cursor(*record, room);
    cursor.Append(record->brush, pbo, ExpandBrushObj);
    cursor.Append(record->surface, psoTarget, TargetSurface);
    cursor.Append(record->pattern, psoPattern, SourceSurface(CALL_REALIZEBRUSH));
    cursor.Append(record->mask, psoMask, SourceSurface(CALL_REALIZEBRUSH));
    cursor.AppendLast(record->xlate, pxlo, ExpandXLATEOBJ);
    return cursor.Finish(CALL_REALIZEBRUSH);
}

ULONG ExpandDrvDitherColor(DHPDEV dhpdev, ULONG iMode, ULONG rgb, ULONG* pul, ULONG returned, BYTE* buffer, ULONG room)
{
    constexpr ULONG NoOutput = 0xFFFFFFFF;
    auto* const record =
        BeginLayout<DitherColorRecord>(buffer, room, "ExpandDrvDitherColor: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->dhpdev = NumberOf(dhpdev);
    record->iMode = iMode;
    record->rgb = rgb;
    record->firstDithered = Given(pul, NoOutput);
    record->returned = returned;
    return RecordCursor(*record, room).Finish(CALL_DITHERCOLOR);
}

ULONG ExpandDrvSetPalette(DHPDEV, PALOBJ* ppalo, FLONG fl, ULONG iStart, ULONG cColors, BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<SetPaletteRecord>(buffer, room, "ExpandDrvSetPalette: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->fl = fl;
    record->iStart = iStart;
    record->cColors = cColors;
    record->entries = 0;

    RecordCursor cursor(*record, room);
    cursor.AppendLast(record->entries, ppalo, [&](PALOBJ* palette, BYTE* at, ULONG left) -> ULONG {
        if (cColors > left / sizeof(ULONG))
            return 0;
        return sizeof(ULONG) * PALOBJ_cGetColors(palette, iStart, cColors, reinterpret_cast<ULONG*>(at));
    });
    return cursor.Finish(CALL_SETPALETTE);
}

} // namespace koru
