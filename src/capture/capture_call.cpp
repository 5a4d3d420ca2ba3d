#include "capture/capture_call.h"

#include "capture/capture_state.h"
#include "capture/consumer.h"
#include "capture/record_header.h"
#include "driver/driver_values.h"
#include "driver/handles.h"
#include "escape/dark_lists.h"
#include "platform/services.h"

namespace koru {

namespace {

    bool IsCallerDark()
    {
        return DarkProcessList.Contains(GetConsumerId(0)) || DarkIdList.Contains(GetConsumerId(1));
    }

    bool IsSurfaceDark(const SURFOBJ* pso)
    {
        return pso && DarkSurfaceList.Contains(NumberOf(pso->hsurf));
    }

} // namespace

bool IsCaptureSwitchedOn(ULONG bit)
{
    return CaptureEnabled != 0 && (CaptureMask & bit) != 0 && HookDepth == 0;
}

bool CaptureAllows(ULONG bit, const SURFOBJ* psoTrg, bool visible)
{
    return IsCaptureSwitchedOn(bit) && !IsCallerDark() && CaptureSuspended == 0 && !IsSurfaceDark(psoTrg) && visible;
}

LONGLONG CaptureCall(Expand expand, LONG flag)
{
    BYTE* const record = CaptureBuffer();
    const ULONG length = expand(record, CaptureBufferSize);
    // Read before the consumer has the buffer: it may do with it what it likes.
    const LONGLONG timeStamp = length != 0 ? reinterpret_cast<const RecordHeader*>(record)->timeStamp : 0;
    SubmitRecord(record, length, flag);
    return length != 0 ? timeStamp : ReadCounter();
}

LONGLONG ReadCounter()
{
    LONGLONG counter = 0;
    EngQueryPerformanceCounter(&counter);
    return counter;
}

} // namespace koru
