#pragma once

// The driver's channel to its clients.

#include "platform/objects.h"

namespace koru {

enum EscapeCode : ULONG {
    DCM_STANDARD_ESCAPE = 0x584D4344, // "DCMX": the chain manager's, addressed to a driver by name
    KORU_ZOOM_ESCAPE = 6514, // zoomers, overlay and colour pairs
    KORU_ESCAPE = 0x490914, // capture, dark lists, consumer, caches
};

// Answers the three escapes above and QUERYESCSUPPORT; every other one goes to the real driver and is
// captured. The buffers are not kept.
ULONG APIENTRY DrvEscape(SURFOBJ* pso, ULONG iEsc, ULONG cjIn, void* pvIn, ULONG cjOut, void* pvOut);

} // namespace koru
