#pragma once

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

#include "engine/core/engine.h"

namespace engine {

// Recursive semaphores, owned by threads.
class Semaphores {
public:
    explicit Semaphores(Engine& engine)
        : engine_(engine)
    {
    }
    HSEMAPHORE Create();
    void Acquire(HSEMAPHORE handle);
    void Release(HSEMAPHORE handle);
    ULONG Existing() const;
    ULONG Holds() const; // each acquisition that was not released counts

private:
    struct Semaphore {
        std::thread::id owner;
        ULONG depth = 0;
    };
    Semaphore* Find(HSEMAPHORE handle, const char* service);

    Engine& engine_;
    mutable std::mutex mutex_;
    std::condition_variable released_;
    std::map<HSEMAPHORE, Semaphore> semaphores_;
};

} // namespace engine
