// Devices and their modes.

#include "capture/call_bits.h"
#include "capture/device_record_layouts.h"
#include "capture/record_cursor.h"
#include "capture/record_values.h"
#include "capture/records.h"
#include "driver/handles.h"

namespace koru {

namespace {

    // The oldest engines' structure ends before flGraphicsCaps2, which is not recorded.
    constexpr ULONG DevInfoSize = offsetof(DEVINFO, flGraphicsCaps2);

    // The objects overwrite the handles, and the room for them is charged as a second fixed part:
    // what clients find in the record rests on both.
    void CopyPatternHandles(RecordCursor& cursor, const HSURF* phsurfPatterns, ULONG cPat)
    {
        if (phsurfPatterns && cPat <= cursor.Room() / sizeof(HSURF))
            cursor.CopyAhead(phsurfPatterns, sizeof(HSURF), cPat);
        cursor.Charge(sizeof(EnablePdevRecord));
    }

} // namespace

ULONG ExpandDrvEnablePDEV(DEVMODEW* pdm, WCHAR* pwszLogAddress, ULONG cPat, HSURF* phsurfPatterns, ULONG, ULONG*,
                          ULONG cjDevInfo, DEVINFO* pdi, HDEV hdev, WCHAR* pwszDeviceName, HANDLE hDriver,
                          DHPDEV dhpdevReturned, BYTE* buffer, ULONG room)
{
    constexpr ULONG NoPatterns = 0xFFFFFFFF;
    auto* const record =
        BeginLayout<EnablePdevRecord>(buffer, room, "ExpandDrvEnablePDEV: Error the buffer is too small. ");
    if (!record)
        return 0;
    RecordCursor cursor(*record, room);
    record->devMode = record->logAddress = record->devInfo = record->deviceName = 0;
    record->patternCount = cPat;
    record->patterns = cPat != 0 ? cursor.Offset() : NoPatterns;
    record->devInfoSize = cjDevInfo;
    record->hdev = NumberOf(hdev);
    record->dhpdevReturned = NumberOf(dhpdevReturned);
    record->hDriver = NumberOf(hDriver);

    if (cPat != 0)
        CopyPatternHandles(cursor, phsurfPatterns, cPat);
    cursor.Append(record->devMode, pdm, ExpandDEVMODEW);
    cursor.Append(record->logAddress, pwszLogAddress, ExpandDrvZWSTR);
    cursor.Append(record->devInfo, cjDevInfo >= DevInfoSize ? pdi : nullptr, ExpandDevInfo);
    cursor.AppendLast(record->deviceName, pwszDeviceName, ExpandDrvZWSTR);
    return cursor.Finish(CALL_ENABLEPDEV);
}

ULONG ExpandDrvCompletePDEV(DHPDEV dhpdev, HDEV hdev, BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<CompletePdevRecord>(buffer, room, "ExpandDrvCompletePDEV: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->dhpdev = NumberOf(dhpdev);
    record->hdev = NumberOf(hdev);
    return RecordCursor(*record, room).Finish(CALL_COMPLETEPDEV);
}

ULONG ExpandDrvDisablePDEV(DHPDEV dhpdev, BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<DisablePdevRecord>(buffer, room, "ExpandDrvDisablePDEV: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->dhpdev = NumberOf(dhpdev);
    return RecordCursor(*record, room).Finish(CALL_DISABLEPDEV);
}

ULONG ExpandDrvAssertMode(DHPDEV dhpdev, BOOL bEnable, BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<AssertModeRecord>(buffer, room, "ExpandDrvAssertMode: Error the buffer is too small ");
    if (!record)
        return 0;
    record->dhpdev = NumberOf(dhpdev);
    record->bEnable = bEnable;
    return RecordCursor(*record, room).Finish(CALL_ASSERTMODE);
}

ULONG ExpandDrvGetModes(HANDLE hDriver, ULONG cjSize, DEVMODEW* pdm, BYTE* buffer, ULONG room)
{
    auto* const record =
        BeginLayout<GetModesRecord>(buffer, room, "ExpandDrvGetModes: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->hDriver = NumberOf(hDriver);
    record->cjSize = cjSize;
    record->devMode = 0;

    RecordCursor cursor(*record, room);
    DEVMODEW* const first = cjSize >= sizeof(DevModeEncoding) ? pdm : nullptr;
    cursor.AppendLast(record->devMode, first, ExpandDEVMODEW);
    return cursor.Finish(CALL_GETMODES);
}

} // namespace koru
