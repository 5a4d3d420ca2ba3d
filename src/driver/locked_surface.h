#pragma once

#include "driver/handles.h"
#include "platform/services.h"

namespace koru {

// A surface of the engine, locked for the block.
class [[nodiscard]] LockedSurface {
public:
    LockedSurface() = default;
    explicit LockedSurface(HSURF surface) { Lock(surface); }
    ~LockedSurface() { Unlock(); }
    LockedSurface(const LockedSurface&) = delete;
    LockedSurface& operator=(const LockedSurface&) = delete;

    // False when the handle is null or does not lock. Whatever was locked before is unlocked.
    bool Lock(HSURF surface)
    {
        Unlock();
        pso_ = surface ? EngLockSurface(surface) : nullptr;
        return pso_ != nullptr;
    }

    // Locks the bitmap behind a device-managed surface. False only when there is one and it does not lock.
    bool LockBacking(const SURFOBJ* pso) { return !pso || !pso->dhsurf || Lock(SurfaceOf(pso->dhsurf)); }

    void Unlock()
    {
        if (pso_)
            EngUnlockSurface(pso_);
        pso_ = nullptr;
    }

    explicit operator bool() const { return pso_ != nullptr; }
    SURFOBJ* Get() const { return pso_; }
    SURFOBJ* operator->() const { return pso_; }
    SURFOBJ* Or(SURFOBJ* other) const { return pso_ ? pso_ : other; }

private:
    SURFOBJ* pso_ = nullptr;
};

} // namespace koru
