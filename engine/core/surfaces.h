#pragma once

#include <deque>
#include <map>
#include <memory>
#include <unordered_map>

#include "engine/core/surface.h"

namespace engine {

class Engine;

// All surfaces that exist, by handle and by address. Handles are never given twice.
class Surfaces {
public:
    explicit Surfaces(Engine& engine)
        : engine_(engine)
    {
    }
    Surface* Add(std::unique_ptr<Surface> surface); // gives it a handle
    Surface* Find(HSURF handle) const;
    Surface* FindByAddress(const SURFOBJ* pso) const;
    void Remove(Surface* surface); // checks its guards; late accesses to it stay visible
    void CheckGuards();
    void ForgetDevice(const Device* device);
    ULONG OfTheDriver() const;
    ULONG Locks() const;

private:
    Engine& engine_;
    std::map<HSURF, std::unique_ptr<Surface>> byHandle_;
    std::unordered_map<const SURFOBJ*, Surface*> byAddress_;
    std::deque<std::unique_ptr<Surface>> removed_;
    ULONG handles_ = 0;
};

} // namespace engine
