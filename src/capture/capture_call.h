#pragma once

#include "capture/call_bits.h"
#include "driver/function_ref.h"
#include "platform/objects.h"

namespace koru {

// Writes a record at the start of the buffer (may be null), `room` bytes at most; gives its length, 0 for none.
using Expand = FunctionRef<ULONG(BYTE* record, ULONG room)>;

// Capture is on and wants calls of this bit. The cheap half of CaptureAllows: nobody is asked.
bool IsCaptureSwitchedOn(ULONG bit);

// The conditions under which a call is captured. A call without a target surface passes null, which
// skips the dark-surface test. `psoTrg` is the surface as the engine gave it. The consumer is asked for
// its identifiers only when the tests before have passed.
bool CaptureAllows(ULONG bit, const SURFOBJ* psoTrg = nullptr, bool visible = true);

// Writes the record and hands it to the consumer, also when it is empty. The time stamp of the
// record, or the present counter when none was written.
LONGLONG CaptureCall(Expand expand, LONG flag);

// The present counter value.
LONGLONG ReadCounter();

} // namespace koru
