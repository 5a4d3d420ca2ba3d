// The chain manager's escape: addressed to one driver of the chain by its name.

#include "capture/capture_state.h"
#include "driver/debug_print.h"
#include "escape/escape_call.h"
#include "platform/runtime.h"

namespace koru {

namespace {

    struct ChainManagerInput {
        char driverName[264]; // ANSI; need not be terminated
        ULONG function;
        ULONG unused;
    };
    static_assert(sizeof(ChainManagerInput) == 272 && offsetof(ChainManagerInput, function) == 264);

    enum ChainManagerFunction : ULONG { DCM_ARE_YOU_ACTIVE = 1, DCM_EXTENSION_ESCAPE = 0xFFFFF };

    constexpr ULONG Refused = 0;
    constexpr ULONG Done = 1;
    constexpr char OwnName[] = "koru"; // compared with its terminator

    void AnswerAreYouActive(const EscapeCall& call)
    {
        DebugPrint("DCM_ARE_YOU_ACTIVE\n");
        if (call.pvOut && call.cjOut >= sizeof(CaptureEnabled))
            memcpy(call.pvOut, &CaptureEnabled, sizeof(CaptureEnabled));
    }

} // namespace

ULONG RunChainManagerEscape(const EscapeCall& call, SemaphoreHold& hold)
{
    DebugPrint("DrvEscape DCM_STANDARD_ESCAPE\n");
    if (call.cjIn < sizeof(ChainManagerInput)) {
        hold.LeaveAcquired();
        return Refused;
    }
    const auto* const input = static_cast<const BYTE*>(call.pvIn);
    if (!input || memcmp(input + offsetof(ChainManagerInput, driverName), OwnName, sizeof(OwnName)) != 0)
        return Done;
    ULONG function = 0;
    memcpy(&function, input + offsetof(ChainManagerInput, function), sizeof(function));
    if (function == DCM_ARE_YOU_ACTIVE)
        AnswerAreYouActive(call);
    else if (function == DCM_EXTENSION_ESCAPE)
        DebugPrint("DCM_EXTENSION_ESCAPE\n");
    return Done;
}

} // namespace koru
