#pragma once

#include "platform/structures.h"

namespace koru {

// The entry points that the engine is offered.
struct HookTable {
    DRVFN* entries;
    ULONG count;
};

// For engines before 0x30000 (26 entries) and for the others (33).
HookTable LegacyHookTable();
HookTable CurrentHookTable();

} // namespace koru
