#include "capture/record_cursor.h"

#include "capture/capture_call.h"
#include "capture/capture_state.h"
#include "capture/consumer.h"
#include "capture/record_header.h"

namespace koru {

ULONG RecordCursor::Finish(ULONG callType) const
{
    auto& header = *reinterpret_cast<RecordHeader*>(bytes_.Start());
    header.length = Offset();
    header.callType = callType;
    header.suspended = CaptureSuspended;
    header.process = GetConsumerId(0);
    header.secondId = GetConsumerId(1);
    header.timeStamp = ReadCounter();
    header.reserved[0] = 0;
    header.reserved[1] = 0;
    return Offset();
}

} // namespace koru
