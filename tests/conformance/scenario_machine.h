#pragma once

// A machine for long stories: the driver with a consumer, and any number of screens that come and go.

#include <memory>

#include "tests/conformance/every_hook_draws.h"

namespace conformance {

// What the driver keeps until it is unloaded: CaptureBuffer and scratch buffer, the three default colour
// pairs, the array of the ScreenList; the DriverSemaphore; the real driver's image.
inline engine::Resources KeptOnPurpose()
{
    constexpr ULONG captureBuffers = 2, colourPairs = 3, screenArray = 1;
    engine::Resources kept;
    kept.poolBlocks = captureBuffers + colourPairs + screenArray;
    kept.semaphores = 1;
    kept.images = 1;
    return kept;
}

class ScenarioMachine {
public:
    // The plan, if any, is obeyed from before the driver is loaded.
    explicit ScenarioMachine(engine::FaultPlan* plan = nullptr);
    // Unloads the driver; a violation fails the test.
    ~ScenarioMachine();
    ScenarioMachine(const ScenarioMachine&) = delete;
    ScenarioMachine& operator=(const ScenarioMachine&) = delete;

    engine::DisplayDriver& Driver() { return *driver_; }

    ULONG Escape(SURFOBJ* pso, ULONG code, std::vector<ULONG> words); // output word 0
    ULONG Command(ULONG subCommand, ULONG word1 = 0, ULONG word2 = 0, const engine::Device* device = nullptr);
    ULONG AddDarkZone(const engine::Device& device, const RECTL& zone);
    ULONG Zoom(SURFOBJ* pso, ULONG code, ULONG id = 0, const RECTL& values = {}, ULONG a = 0, ULONG b = 0, ULONG c = 0);

    void StartCapture(); // installs a consumer and sets the whole call mask
    ULONG RecordsTaken() const; // by the consumer, with true lengths

    BOOL Draw(const HookRow& row, engine::Device& device, SURFOBJ* target, SURFOBJ* source, CLIPOBJ* clip);
    void SetPointerShape(engine::Device& device, LONG x, LONG y);
    void MovePointer(engine::Device& device, LONG x, LONG y);
    ULONG SaveBits(engine::Device& device, ULONG mode, ULONG ident, RECTL part);

    // A zoomer that shows `from` in `to`, and one update.
    ULONG ShowZoomer(engine::Device& device, const RECTL& from, const RECTL& to);
    void SetOverlay(engine::Device& device); // a wise surface with image and mask
    void ForgetLists(); // what escapes keep: dark lists, caches, the wise surface

    engine::Engine engine;

private:
    std::unique_ptr<engine::DisplayDriver> driver_;
    engine::Surface* memory_ = nullptr; // the surface of a memory device context
};

engine::Surface* VirtualScreen(const engine::Device& device);
engine::Surface* RealScreen(const engine::Device& device);

} // namespace conformance
