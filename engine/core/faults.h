#pragma once

#include <array>
#include <set>

#include "engine/core/engine.h"

namespace engine {

// Decides which requests fail.
class Faults {
public:
    bool Fails(Request request);
    void Obey(FaultPlan& plan) { plan_ = &plan; }
    void Fail(Request request, ULONG nth, bool forGood);
    void RefuseLock(HSURF surface) { refused_.insert(surface); }
    bool IsLockRefused(HSURF surface) const { return refused_.contains(surface); }
    void Stop();
    ULONG Seen(Request request) const { return KindOf(request).seen; }

private:
    struct Kind {
        ULONG seen = 0;
        ULONG failFrom = 0; // 0: none
        bool forGood = false;
    };
    Kind& KindOf(Request request) { return kinds_[static_cast<std::size_t>(request)]; }
    const Kind& KindOf(Request request) const { return kinds_[static_cast<std::size_t>(request)]; }

    std::array<Kind, static_cast<std::size_t>(Request::Count)> kinds_;
    FaultPlan* plan_ = nullptr;
    std::set<HSURF> refused_;
};

} // namespace engine
