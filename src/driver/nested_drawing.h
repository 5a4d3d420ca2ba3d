#pragma once

#include "driver/driver_values.h"

namespace koru {

// Drawing on a device-managed surface makes the engine call the hooks again, and nothing but this ends
// it: at this depth they do nothing.
constexpr LONG DeepestNesting = 8;

// While one of these lives, hooks that the engine calls back are the driver's own drawing: they
// only draw. Nothing of it is looked up, shown or captured.
class [[nodiscard]] NestedDrawing {
public:
    NestedDrawing() { ++HookDepth; }
    ~NestedDrawing() { --HookDepth; }
    NestedDrawing(const NestedDrawing&) = delete;
    NestedDrawing& operator=(const NestedDrawing&) = delete;
};

} // namespace koru
