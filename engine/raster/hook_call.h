#pragma once

// What every drawing service does before it draws: look at what it was given, and pass the call on to
// the driver that manages a surface without bits.

#include <optional>

#include "engine/core/calls.h"
#include "engine/core/engine.h"

namespace engine::raster {

// Answers FALSE for the service after telling what a real engine would not have survived.
BOOL Refuse(const char* service, const char* what);

// The surface of a service's argument; null with a violation where there is none.
Surface* Given(const char* service, const SURFOBJ* pso, const char* what);

inline bool HasBits(const SURFOBJ* pso)
{
    return pso->pvScan0 != nullptr;
}

inline POINTL PointOrOrigin(const POINTL* point)
{
    return point ? *point : POINTL{0, 0};
}

// One more call from a service into a driver's hook. A driver that draws on the very surface it was called
// for is called without end; where a real stack would long be used up the calls end with a violation.
class NestedHook {
public:
    explicit NestedHook(const char* service);
    ~NestedHook();
    NestedHook(const NestedHook&) = delete;
    NestedHook& operator=(const NestedHook&) = delete;
    explicit operator bool() const { return allowed_; }

private:
    bool allowed_;
};

// What the driver's hook answers; nothing when the surface has bits of its own or is not hooked.
template<class Pfn, class... Arguments>
std::optional<BOOL> AskHook(const char* service, const SURFOBJ* managed, FLONG hook, ULONG index,
                            Arguments... arguments)
{
    if (HasBits(managed))
        return std::nullopt;
    const PFN function = HookOf(managed, hook, index);
    if (!function)
        return std::nullopt;
    const NestedHook nested(service);
    return nested ? reinterpret_cast<Pfn>(function)(arguments...) : FALSE;
}

} // namespace engine::raster
