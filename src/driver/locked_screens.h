#pragma once

#include "driver/locked_surface.h"
#include "driver/screen.h"

namespace koru {

// Both screens of a device, VirtualScreen first. What cannot be locked is reported by a debug
// message; after the first failure the second is not tried.
class [[nodiscard]] LockedScreens {
public:
    explicit LockedScreens(const Screen& screen);
    explicit operator bool() const { return virtual_ && real_; }
    SURFOBJ* Virtual() const { return virtual_.Get(); }
    SURFOBJ* Real() const { return real_.Get(); }

private:
    LockedSurface virtual_;
    LockedSurface real_;
};

} // namespace koru
