#pragma once

#include "platform/types.h"

namespace koru {

using PFN_QC = LONG(APIENTRY*)();
using PFN_QD = LONG(APIENTRY*)();
using PFN_QP = LONG(APIENTRY*)(BYTE* record, ULONG length, LONG flag);
using PFN_GSD = ULONG(APIENTRY*)(LONG selector);
using PFN_DSF = LONG(APIENTRY*)();

struct ConsumerFunctions {
    PFN_QC QC;
    PFN_QD QD; // kept, never called
    PFN_QP QP;
    PFN_GSD GSD;
    PFN_DSF DSF;
};

// Installs a client's entry points, null ones included, and tells the consumer. `table` is the
// escape's input: word 0 is skipped, words 1 to 5 are the entry points. 0 for null, else 1.
BOOL InitializeFunctions2(const ULONG* table);

ULONG SubmitRecord(BYTE* record, ULONG length, LONG flag); // 0 without a consumer
ULONG GetConsumerId(LONG selector); // 0: the calling process, 1: a second identifier; 0 without a consumer

} // namespace koru
