#pragma once

// What lies behind an Engine. For the files of engine/ alone.

#include <mutex>

#include "engine/core/engine.h"
#include "engine/core/faults.h"
#include "engine/core/images.h"
#include "engine/core/pool.h"
#include "engine/core/semaphores.h"
#include "engine/core/surfaces.h"

namespace engine {

struct Engine::State {
    explicit State(Engine& engine)
        : pool(engine)
        , surfaces(engine)
        , semaphores(engine)
        , images(engine)
    {
    }

    // Guards all but the semaphores, which have their own. Never held while a driver is called.
    std::recursive_mutex mutex;
    std::string debugOutput;
    std::vector<std::string> violations;
    Faults faults;
    Pool pool;
    Surfaces surfaces;
    Semaphores semaphores;
    std::vector<PixelLayout> palettes; // HPALETTE n is entry n - 1
    std::vector<Device*> devices;
    ULONG deviceHandles = 0;
    LONGLONG counter = 0, counterStep = 0, frequency = 3579545;
    bool fiveFiveFive = false;
    Images images; // the last: unloading comes before all else goes
};

// A locked view of the current engine's state.
class LockedState {
public:
    LockedState()
        : state_(Engine::Current().Internals())
        , lock_(state_.mutex)
    {
    }
    Engine::State* operator->() const { return &state_; }

private:
    Engine::State& state_;
    std::unique_lock<std::recursive_mutex> lock_;
};

// hDriver of the device calls: the port driver's, opaque to display drivers.
inline const HANDLE DriverHandle = reinterpret_cast<HANDLE>(0x81A5C0D8);

// False with a violation for null where a real engine would fault.
bool IsGiven(const void* pointer, const char* what);

} // namespace engine
