#pragma once

// The driver on a strict engine. What a real engine or client would not survive ends the program.

#include <memory>
#include <string>
#include <vector>

#include "engine/core/device.h"
#include "engine/core/engine.h"
#include "tests/fuzz/input.h"

namespace fuzz {

// Screens have any size up to these. Small ones are quick and have as many edges.
constexpr SIZEL UsualScreen = {48, 40}, LargestScreen = {128, 100};

// Prints the reason and aborts.
[[noreturn]] void Fail(const std::string& reason);

class Machine {
public:
    // The input decides about the mode, the options, the engine's age and what the real driver lacks.
    explicit Machine(Input& input);
    ~Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    engine::Engine& Engine() { return engine_; }
    engine::Device& Device() { return *device_; }
    SURFOBJ* Screen() { return device_->PrimarySurface(); }
    SURFOBJ* SecondScreen() { return second_ ? second_->PrimarySurface() : nullptr; } // of another depth, or null
    template<class Pfn> Pfn Hook(ULONG index) { return driver_->Function<Pfn>(index); } // null when not offered

    // Capture on, of all calls, to a consumer that reads every record.
    void StartCapture();
    ULONG Escape(const std::vector<ULONG>& in); // with a large enough output; its word 0
    void ChangeMode(Input& input);

    // After each call: no violation, no lock left, the semaphore held as often as is meant.
    void Check(const char* call);
    // Calls for which the driver keeps the semaphore on purpose.
    void SemaphoreStaysHeld() { ++expectedHolds_; }
    void SemaphoreMayBeHeldOnceMore(); // after the call

    // Addresses of the consumer's functions, for who installs them by hand.
    static std::vector<ULONG> ConsumerFunctions();

private:
    engine::Engine engine_;
    std::unique_ptr<engine::DisplayDriver> driver_;
    std::unique_ptr<engine::Device> device_, second_;
    ULONG expectedHolds_ = 0, locksAtRest_ = 0;
};

} // namespace fuzz
