#pragma once

// A machine with the driver on it: the stand-in engine, a chain manager, a frame-buffer driver, one screen
// and a client's consumer.

#include <functional>
#include <memory>
#include <string>

#include "engine/core/device.h"
#include "engine/core/engine.h"

namespace tools {

struct MachineSetup {
    engine::Mode mode;
    std::string image; // a koru.dll, or empty for the driver that is linked in
};

class Machine {
public:
    // Throws std::runtime_error with one line when the driver cannot be brought up.
    explicit Machine(const MachineSetup& setup);
    ~Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    engine::Engine& Engine() { return *engine_; }
    engine::Device& Device() { return *device_; }
    engine::Surface& VirtualScreen();
    engine::Surface& RealScreen();

    // The client's way into the driver: on the screen's surface, or on the bitmap that it has selected
    // (null: the screen again).
    void SelectForEscapes(SURFOBJ* bitmap) { selected_ = bitmap; }
    std::int32_t Escape(ULONG code, const void* in, std::size_t inSize, void* out, std::size_t outSize);

    // Called for every record while the machine runs.
    using RecordSink = std::function<void(const BYTE* record, ULONG length, LONG flag)>;
    void InstallConsumer(RecordSink sink);

    // What the engine found the driver doing wrong, a line each.
    const std::vector<std::string>& Violations() const { return engine_->Violations(); }

private:
    std::unique_ptr<engine::Engine> engine_;
    std::unique_ptr<engine::DisplayDriver> driver_;
    std::unique_ptr<engine::Device> device_;
    SURFOBJ* selected_ = nullptr;
};

} // namespace tools
