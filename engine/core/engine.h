#pragma once

// The stand-in graphics engine as its user sees it. There is one at a time; while it lives the Eng
// services work, count everything that a driver takes and does not give back, and note what a real
// engine would not survive.

#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace engine {

// What can be made to fail.
enum class Request {
    Memory, // EngAllocMem
    Lock, // EngLockSurface
    CreateSurface, // EngCreateBitmap, EngCreateDeviceSurface, EngCreateDeviceBitmap
    Associate, // EngAssociateSurface
    CreateSemaphore,
    Load, // EngLoadImage, EngLoadModule, EngMapModule
    Count
};

// Fails the 1st request, then the 2nd, ... until a run sees none; by `forGood` also all later ones.
//     FaultPlan plan;
//     do { Engine engine; engine.Obey(plan); ... } while (plan.Next());
class FaultPlan {
public:
    explicit FaultPlan(bool forGood = false)
        : forGood_(forGood)
    {
    }
    bool Next(); // false after a run without a fault
    bool Fails(); // asked by the engine at each request
    ULONG FaultsSeen() const { return faults_; } // in the run since the last Next
    ULONG Position() const { return position_; }

private:
    ULONG position_ = 1, seen_ = 0, faults_ = 0;
    bool forGood_;
};

// What a driver holds of the engine at one moment.
struct Resources {
    ULONG locks = 0, poolBlocks = 0, surfaces = 0, semaphores = 0, semaphoreHolds = 0, images = 0, modules = 0;
    friend bool operator==(const Resources&, const Resources&) = default;
};
std::ostream& operator<<(std::ostream& out, const Resources& resources);

// Exports by name; "DrvEnableDriver" of a display driver, "GetNextDriver" of a chain manager.
using Exports = std::map<std::string, PFN>;

class Engine {
public:
    Engine(); // EngFindImageProcAddress(null, ...) knows every service
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    static Engine& Current();
    static bool Exists();

    // Debug output: all of it, prefix and text joined, as it was printed.
    const std::string& DebugOutput() const;
    void ClearDebugOutput();
    std::string TakeDebugOutput();

    // Violations: unlock without lock, use of freed things, writes past a pool block or a bitmap, a wrong tag,
    // foreign objects, an unbalanced semaphore, null where the engine would fault ... One line each.
    const std::vector<std::string>& Violations() const;
    void Report(const std::string& violation);
    void CheckGuards(); // of all pool blocks and bitmaps; reports what is broken

    Resources Outstanding() const;

    // Faults: a plan (not owned) for all requests, or the n-th coming request of one kind (1: the next).
    void Obey(FaultPlan& plan);
    void Fail(Request request, ULONG nth = 1, bool forGood = false);
    void StopFailing();
    void RefuseLock(HSURF surface); // until StopFailing
    ULONG RequestCount(Request request) const; // since the engine was made

    // The clock: stands still until moved. Frequency 3579545 at start, counter 0.
    void SetCounter(LONGLONG counter);
    void AdvanceMilliseconds(LONGLONG milliseconds);
    void SetFrequency(LONGLONG frequency);
    void StepCounter(LONGLONG step); // every query moves the counter on by so much

    // Loadable things, by name without regard to case; "x" and "x.dll" are one image.
    void RegisterImage(const std::u16string& name, const Exports& exports);
    void RegisterImage(const std::u16string& name, std::function<HANDLE()> load, std::function<void(HANDLE)> unload,
                       std::function<PFN(HANDLE, const char*)> find);
    void RegisterModule(const std::u16string& name, const std::vector<BYTE>& content); // EngLoadModule
    void HideService(const std::string& name); // EngFindImageProcAddress(null, name) answers null
    const std::vector<std::string>& ServicesAskedFor() const; // by name, in order, found or not
    bool IsImageLoaded(const std::u16string& name) const;

    // The layout of 16-bit bitmaps that no device owns: 5-6-5 unless told.
    void SetSixteenBitLayout(bool fiveFiveFive);

    struct State;
    State& Internals() { return *state_; } // for the files of engine/ alone

private:
    std::unique_ptr<State> state_;
};

} // namespace engine
