#pragma once

#include "driver/driver_values.h"
#include "platform/services.h"

namespace koru {

// Holds the DriverSemaphore for the block. Without a semaphore (the driver could not be enabled
// whole) it does nothing.
class [[nodiscard]] SemaphoreHold {
public:
    SemaphoreHold()
        : semaphore_(DriverSemaphore)
    {
        if (semaphore_)
            EngAcquireSemaphore(semaphore_);
    }
    ~SemaphoreHold()
    {
        if (semaphore_)
            EngReleaseSemaphore(semaphore_);
    }
    SemaphoreHold(const SemaphoreHold&) = delete;
    SemaphoreHold& operator=(const SemaphoreHold&) = delete;

    // The entry point returns with the semaphore held: clients rely on what follows from it.
    void LeaveAcquired() { semaphore_ = nullptr; }

private:
    HSEMAPHORE semaphore_;
};

} // namespace koru
