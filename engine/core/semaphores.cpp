#include "engine/core/semaphores.h"

#include <chrono>

namespace engine {

namespace {

    // A semaphore that is held for so long will not be released any more.
    constexpr std::chrono::seconds LongestWait(30);
    constexpr std::uintptr_t FirstHandle = 0x0E000010, HandleStep = 0x10;

} // namespace

HSEMAPHORE Semaphores::Create()
{
    const std::lock_guard lock(mutex_);
    const auto handle = reinterpret_cast<HSEMAPHORE>(FirstHandle + semaphores_.size() * HandleStep);
    semaphores_.emplace(handle, Semaphore());
    return handle;
}

Semaphores::Semaphore* Semaphores::Find(HSEMAPHORE handle, const char* service)
{
    const auto found = semaphores_.find(handle);
    if (found != semaphores_.end())
        return &found->second;
    engine_.Report(std::string(service) + ": not a semaphore");
    return nullptr;
}

void Semaphores::Acquire(HSEMAPHORE handle)
{
    std::unique_lock lock(mutex_);
    Semaphore* const semaphore = Find(handle, "EngAcquireSemaphore");
    if (!semaphore)
        return;
    const auto self = std::this_thread::get_id();
    const auto isFree = [&] { return semaphore->depth == 0 || semaphore->owner == self; };
    if (!released_.wait_for(lock, LongestWait, isFree)) {
        engine_.Report("EngAcquireSemaphore: never released by its owner");
        return;
    }
    semaphore->owner = self;
    ++semaphore->depth;
}

void Semaphores::Release(HSEMAPHORE handle)
{
    const std::lock_guard lock(mutex_);
    Semaphore* const semaphore = Find(handle, "EngReleaseSemaphore");
    if (!semaphore)
        return;
    if (semaphore->depth == 0 || semaphore->owner != std::this_thread::get_id()) {
        engine_.Report("EngReleaseSemaphore: not held by this thread");
        return;
    }
    if (--semaphore->depth == 0)
        released_.notify_all();
}

ULONG Semaphores::Existing() const
{
    const std::lock_guard lock(mutex_);
    return static_cast<ULONG>(semaphores_.size());
}

ULONG Semaphores::Holds() const
{
    const std::lock_guard lock(mutex_);
    ULONG holds = 0;
    for (const auto& [handle, semaphore] : semaphores_)
        holds += semaphore.depth;
    return holds;
}

} // namespace engine
