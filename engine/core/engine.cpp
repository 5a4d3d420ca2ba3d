#include "engine/core/engine.h"

#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <utility>

#include "engine/core/exports.h"
#include "engine/core/state.h"

namespace engine {

namespace {

    Engine* TheEngine = nullptr;

} // namespace

std::ostream& operator<<(std::ostream& out, const Resources& resources)
{
    return out << "{locks " << resources.locks << ", pool blocks " << resources.poolBlocks << ", surfaces "
               << resources.surfaces << ", semaphores " << resources.semaphores << ", semaphore holds "
               << resources.semaphoreHolds << ", images " << resources.images << ", modules " << resources.modules
               << "}";
}

Engine::Engine()
    : state_(std::make_unique<State>(*this))
{
    if (TheEngine) {
        std::fputs("There is an engine already.\n", stderr);
        std::abort();
    }
    TheEngine = this;
}

Engine::~Engine()
{
    state_.reset();
    TheEngine = nullptr;
}

Engine& Engine::Current()
{
    if (TheEngine)
        return *TheEngine;
    std::fputs("An engine service was called while no engine exists.\n", stderr);
    std::abort();
}

bool Engine::Exists()
{
    return TheEngine != nullptr;
}

const std::string& Engine::DebugOutput() const
{
    return state_->debugOutput;
}

void Engine::ClearDebugOutput()
{
    state_->debugOutput.clear();
}

std::string Engine::TakeDebugOutput()
{
    return std::exchange(state_->debugOutput, std::string());
}

const std::vector<std::string>& Engine::Violations() const
{
    return state_->violations;
}

void Engine::Report(const std::string& violation)
{
    const std::lock_guard lock(state_->mutex);
    state_->violations.push_back(violation);
}

void Engine::CheckGuards()
{
    const std::lock_guard lock(state_->mutex);
    state_->pool.Check();
    state_->surfaces.CheckGuards();
}

Resources Engine::Outstanding() const
{
    Resources resources;
    resources.semaphores = state_->semaphores.Existing();
    resources.semaphoreHolds = state_->semaphores.Holds();
    const std::lock_guard lock(state_->mutex);
    resources.locks = state_->surfaces.Locks();
    resources.poolBlocks = state_->pool.Blocks();
    resources.surfaces = state_->surfaces.OfTheDriver();
    resources.images = state_->images.LoadedByDriver();
    resources.modules = state_->images.Modules();
    return resources;
}

void Engine::Obey(FaultPlan& plan)
{
    state_->faults.Obey(plan);
}

void Engine::Fail(Request request, ULONG nth, bool forGood)
{
    state_->faults.Fail(request, nth, forGood);
}

void Engine::StopFailing()
{
    state_->faults.Stop();
}

void Engine::RefuseLock(HSURF surface)
{
    state_->faults.RefuseLock(surface);
}

ULONG Engine::RequestCount(Request request) const
{
    return state_->faults.Seen(request);
}

void Engine::SetCounter(LONGLONG counter)
{
    state_->counter = counter;
}

void Engine::AdvanceMilliseconds(LONGLONG milliseconds)
{
    state_->counter += milliseconds * state_->frequency / 1000;
}

void Engine::SetFrequency(LONGLONG frequency)
{
    state_->frequency = frequency;
}

void Engine::StepCounter(LONGLONG step)
{
    state_->counterStep = step;
}

void Engine::RegisterImage(const std::u16string& name, const Exports& exports)
{
    static char anyPlace; // a loaded table of functions has no address of its own
    Exports byLowerCase;
    for (const auto& [function, pointer] : exports)
        byLowerCase[LowerCase(function)] = pointer;
    RegisterImage(
        name, [] { return static_cast<HANDLE>(&anyPlace); }, [](HANDLE) {},
        [byLowerCase](HANDLE, const char* function) -> PFN {
            const auto found = byLowerCase.find(LowerCase(function));
            return found == byLowerCase.end() ? nullptr : found->second;
        });
}

void Engine::RegisterImage(const std::u16string& name, std::function<HANDLE()> load, std::function<void(HANDLE)> unload,
                           std::function<PFN(HANDLE, const char*)> find)
{
    state_->images.Register(name, {std::move(load), std::move(unload), std::move(find)});
}

void Engine::RegisterModule(const std::u16string& name, const std::vector<BYTE>& content)
{
    state_->images.RegisterModule(name, content);
}

const std::vector<std::string>& Engine::ServicesAskedFor() const
{
    return state_->images.ServicesAskedFor();
}

void Engine::HideService(const std::string& name)
{
    state_->images.HideService(name);
}

bool Engine::IsImageLoaded(const std::u16string& name) const
{
    return state_->images.IsLoaded(name);
}

void Engine::SetSixteenBitLayout(bool fiveFiveFive)
{
    state_->fiveFiveFive = fiveFiveFive;
}

bool IsGiven(const void* pointer, const char* what)
{
    if (pointer)
        return true;
    Engine::Current().Report(std::string(what) + " is null");
    return false;
}

} // namespace engine
