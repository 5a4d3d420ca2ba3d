#pragma once

// What the dispatcher hands to the families of escapes.

#include "driver/semaphore_hold.h"
#include "platform/objects.h"

namespace koru {

struct EscapeCall {
    SURFOBJ* pso; // as the engine gave it; may be null
    ULONG iEsc;
    ULONG cjIn;
    void* pvIn;
    ULONG cjOut;
    void* pvOut;
};

// A null buffer is as good as none, whatever its size says.
inline bool HasBuffers(const EscapeCall& call, ULONG minimumIn, ULONG minimumOut)
{
    return call.pvIn && call.pvOut && call.cjIn >= minimumIn && call.cjOut >= minimumOut;
}

// Each gives DrvEscape's result.
ULONG RunChainManagerEscape(const EscapeCall& call, SemaphoreHold& hold);
ULONG RunKoruEscape(const EscapeCall& call);
ULONG RunZoomEscape(const EscapeCall& call);

} // namespace koru
