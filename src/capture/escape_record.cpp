#include "capture/call_bits.h"
#include "capture/device_record_layouts.h"
#include "capture/record_cursor.h"
#include "capture/record_values.h"
#include "capture/records.h"

namespace koru {

ULONG ExpandDrvEscape(SURFOBJ* pso, ULONG iEsc, ULONG cjIn, void* pvIn, ULONG cjOut, void* pvOut, ULONG returned,
                      BYTE* buffer, ULONG room)
{
    auto* const record = BeginLayout<EscapeRecord>(buffer, room, "ExpandDrvEscape: Error the buffer is too small. ");
    if (!record)
        return 0;
    record->returned = returned;
    record->surface = record->input = record->output = 0;
    record->iEsc = iEsc;
    record->cjIn = cjIn;
    record->cjOut = cjOut;

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, pso, SourceSurface(CALL_ESCAPE));
    cursor.AppendBytes(record->input, pvIn, cjIn);
    cursor.AppendBytes(record->output, pvOut, cjOut);
    return cursor.Finish(CALL_ESCAPE);
}

} // namespace koru
