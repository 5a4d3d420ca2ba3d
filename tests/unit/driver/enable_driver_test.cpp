// What DrvEnableDriver leaves in the driver's own values.

#include "capture/capture_state.h"
#include "driver/driver_values.h"
#include "driver/optional_entries.h"
#include "engine/core/exports.h"
#include "tests/unit/driver/enabled_driver.h"

namespace {

using namespace koru;

class DriverValuesAtEnable : public EnabledDriver { };

TEST_F(DriverValuesAtEnable, AreSetEachTime)
{
    Enable();
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(CaptureMask, 0u);
        EXPECT_EQ(BitsSizeLimit, -1);
        EXPECT_EQ(BitsCaptureMask, 0xFFFFFFFFu);
        EXPECT_EQ(HookDepth, 0);
        EXPECT_EQ(PerfFrequency, 3579545);
        CaptureMask = 1;
        BitsSizeLimit = 5;
        BitsCaptureMask = 6;
        HookDepth = 7;
        PerfFrequency = 8;
        ASSERT_TRUE(driver->EnableAgain());
    }
}

TEST_F(DriverValuesAtEnable, HaveTheDepthAndTheFrequencyEvenWithoutCaptureBuffer)
{
    HookDepth = 3;
    engine.Fail(engine::Request::Memory, 2); // the 1st is the next driver's name
    Enable();
    EXPECT_EQ(HookDepth, 0);
    EXPECT_EQ(PerfFrequency, 3579545);
    EXPECT_EQ(DriverSemaphore, nullptr);
}

struct NamedEntry {
    const char* name;
    void* (*entry)();
};
const NamedEntry namedEntries[] = {
    {"EngAlphaBlend", [] { return reinterpret_cast<void*>(OptionalEngEntries.AlphaBlend); }},
    {"EngGradientFill", [] { return reinterpret_cast<void*>(OptionalEngEntries.GradientFill); }},
    {"EngTransparentBlt", [] { return reinterpret_cast<void*>(OptionalEngEntries.TransparentBlt); }},
    {"EngStretchBltROP", [] { return reinterpret_cast<void*>(OptionalEngEntries.StretchBltROP); }},
    {"EngPlgBlt", [] { return reinterpret_cast<void*>(OptionalEngEntries.PlgBlt); }},
    {"EngDitherColor", [] { return reinterpret_cast<void*>(OptionalEngEntries.DitherColor); }},
    {"EngSetPointerShape", [] { return OptionalEngEntries.SetPointerShape; }},
    {"EngMovePointer", [] { return OptionalEngEntries.MovePointer; }},
    {"EngMapFile", [] { return OptionalEngEntries.MapFile; }},
    {"EngUnmapFile", [] { return OptionalEngEntries.UnmapFile; }},
};

TEST_F(DriverValuesAtEnable, HoldTheEnginesOptionalServices)
{
    Enable();
    for (const NamedEntry& named : namedEntries)
        EXPECT_EQ(named.entry(), reinterpret_cast<void*>(engine::FindService(named.name))) << named.name;
}

TEST_F(DriverValuesAtEnable, HoldNullForTheServicesThatAreMissing)
{
    for (const NamedEntry& named : namedEntries)
        engine.HideService(named.name);
    Enable();
    for (const NamedEntry& named : namedEntries)
        EXPECT_EQ(named.entry(), nullptr) << named.name;
}

} // namespace
