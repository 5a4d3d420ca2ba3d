#include "escape/escape.h"

#include "capture/capture_call.h"
#include "capture/capture_state.h"
#include "capture/records.h"
#include "chain/module_loader.h"
#include "driver/record_flags.h"
#include "driver/screen_list.h"
#include "escape/escape_call.h"
#include "platform/runtime.h"

namespace koru {

namespace {

    constexpr ULONG Supported = 1;
    constexpr ULONG NotForwarded = 1;

    // Everything goes on as it came in, the surface included. False when there is no one to ask.
    bool Forward(const EscapeCall& call, ULONG& result)
    {
        if (!call.pso || !ScreenList::Find(call.pso->dhpdev))
            return false;
        const auto real = RealFunction<PFN_DrvEscape>(INDEX_DrvEscape);
        if (!real)
            return false;
        result = real(call.pso, call.iEsc, call.cjIn, call.pvIn, call.cjOut, call.pvOut);
        return true;
    }

    void Capture(const EscapeCall& call, ULONG result)
    {
        CaptureCall(
            [&](BYTE* record, ULONG room) {
                return ExpandDrvEscape(call.pso, call.iEsc, call.cjIn, call.pvIn, call.cjOut, call.pvOut, result,
                                       record, room);
            },
            EscapeFlag);
    }

    ULONG ForwardEscape(const EscapeCall& call)
    {
        ULONG result = NotForwarded;
        if (Forward(call, result) && CaptureAllows(CALL_ESCAPE))
            Capture(call, result);
        return result;
    }

    // The queried code is read whatever cjIn says. Queries of dark processes are captured as well.
    ULONG AnswerQuery(const EscapeCall& call)
    {
        if (call.pvIn) {
            ULONG queried = 0;
            memcpy(&queried, call.pvIn, sizeof(queried));
            if (queried == KORU_ZOOM_ESCAPE || queried == KORU_ESCAPE)
                return Supported;
        }
        ULONG result = NotForwarded;
        if (Forward(call, result) && CaptureEnabled && (CaptureMask & CALL_ESCAPE))
            Capture(call, result);
        return result;
    }

} // namespace

ULONG APIENTRY DrvEscape(SURFOBJ* pso, ULONG iEsc, ULONG cjIn, void* pvIn, ULONG cjOut, void* pvOut)
{
    SemaphoreHold hold;
    const EscapeCall call = {pso, iEsc, cjIn, pvIn, cjOut, pvOut};
    switch (iEsc) {
    case QUERYESCSUPPORT:
        return AnswerQuery(call);
    case DCM_STANDARD_ESCAPE:
        return RunChainManagerEscape(call, hold);
    case KORU_ZOOM_ESCAPE:
        return RunZoomEscape(call);
    case KORU_ESCAPE:
        return RunKoruEscape(call);
    default:
        return ForwardEscape(call);
    }
}

} // namespace koru
