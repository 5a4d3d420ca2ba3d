// Surfaces and device bitmaps coming and going, and the screen saves.

#include "capture/call_bits.h"
#include "capture/device_record_layouts.h"
#include "capture/record_cursor.h"
#include "capture/record_values.h"
#include "capture/records.h"
#include "driver/handles.h"

namespace koru {

ULONG ExpandDrvEnableSurface(DHPDEV dhpdev, HSURF hsurfReturned, BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<EnableSurfaceRecord>(buffer, room, "ExpandDrvEnableSurface: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->dhpdev = NumberOf(dhpdev);
    record->hsurfReturned = NumberOf(hsurfReturned);
    return RecordCursor(*record, room).Finish(CALL_ENABLESURFACE);
}

ULONG ExpandDrvDisableSurface(DHPDEV dhpdev, BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<DisableSurfaceRecord>(buffer, room, "ExpandDrvDisableSurface: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->dhpdev = NumberOf(dhpdev);
    return RecordCursor(*record, room).Finish(CALL_DISABLESURFACE);
}

ULONG ExpandDrvCreateDeviceBitmap(DHPDEV dhpdev, SIZEL sizl, ULONG iFormat, HBITMAP hbmReturned, HSURF hsurfBacking,
                                  BYTE* buffer, ULONG room)
{
    auto* const record = BeginLayout<CreateDeviceBitmapRecord>(
        buffer, room, "ExpandDrvCreateDeviceBitmap: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->hbmReturned = NumberOf(hbmReturned);
    record->hsurfBacking = NumberOf(hsurfBacking);
    record->dhpdev = NumberOf(dhpdev);
    record->sizl = sizl;
    record->iFormat = iFormat;
    return RecordCursor(*record, room).Finish(CALL_CREATEDEVICEBITMAP);
}

ULONG ExpandDrvDeleteDeviceBitmap(DHSURF dhsurf, BYTE* buffer, ULONG room)
{
    auto* const record = BeginLayout<DeleteDeviceBitmapRecord>(
        buffer, room, "ExpandDrvDeleteDeviceBitmap: Error the buffer is too small ");
    if (!record)
        return 0;
    record->dhsurf = NumberOf(dhsurf);
    return RecordCursor(*record, room).Finish(CALL_DELETEDEVICEBITMAP);
}

ULONG ExpandDrvScreenBits(SURFOBJ* pso, ULONG iMode, ULONG ident, RECTL* prcl, ULONG returned, BYTE* buffer, ULONG room)
{
    if (!buffer)
        return 0;
    // Only this very room is refused, and a smaller one is not: the caller's buffer always holds the
    // fixed part.
    if (room == sizeof(SaveScreenBitsRecord)) {
        DebugPrintNumber("ExpandDrvScreenBits: Error the buffer is too small. ", room);
        return 0;
    }
    auto& record = *BeginLayoutSilently<SaveScreenBitsRecord>(buffer, sizeof(SaveScreenBitsRecord));
    record.surface = 0;
    record.iMode = iMode;
    record.ident = ident;
    record.rcl = Given(prcl, NoRectangle);
    record.returned = returned;

    RecordCursor cursor(record, room);
    cursor.AppendLast(record.surface, pso, TargetSurface);
    return cursor.Finish(CALL_SAVESCREENBITS);
}

} // namespace koru
