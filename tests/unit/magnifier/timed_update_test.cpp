#include "magnifier/timed_update.h"

#include "driver/nested_drawing.h"
#include "tests/unit/magnifier/magnifier_fixture.h"

namespace {

using namespace koru;
using namespace pictures;

// The screen's own list is used here, not the fixture's.
class TimedUpdates : public MagnifierFixture {
protected:
    TimedUpdates()
    {
        Start(Lines({"RG..............", "BY.............."}));
        list.Release();
        screen.ZoomerList.Initialise(16, 2, BMF_32BPP, 64);
        screen.hsurfVirtual = psoVirtual->hsurf;
        screen.hsurfReal = psoReal->hsurf;
        zoomer = screen.ZoomerList.Create();
        zoomer->SetOriginalRect({0, 0, 2, 1});
        zoomer->SetZoomedRect({4, 0, 8, 2});
        zoomer->SetBehaviour(BehaviourFull);
        zoomer->SetState(1);
        PerfFrequency = 1000000;
        ZoomUpdateInterval = 50;
        lastUpdateTime = 7000000;
    }
    ~TimedUpdates() override
    {
        screen.ZoomerList.Release();
        PerfFrequency = 0;
        ZoomUpdateInterval = 50;
        lastUpdateTime = 0;
        EXPECT_EQ(HookDepth, 0);
    }
    bool Updates(LONGLONG now)
    {
        const ULONG before = ZoomUpdateCount;
        UpdateIfDue(&screen, now);
        lastUpdateTime = 7000000;
        return ZoomUpdateCount != before;
    }

    Screen screen = {};
    Zoomer* zoomer;
};

TEST_F(TimedUpdates, AreDueOnceMoreThanTheIntervalHasPassed)
{
    EXPECT_FALSE(Updates(7000000));
    EXPECT_FALSE(Updates(7050000));
    EXPECT_FALSE(Updates(7050999)) << "whole milliseconds count";
    EXPECT_TRUE(Updates(7051000));
    EXPECT_EQ(Real(), Lines({"....RRGG........", "....RRGG........"}));
}

TEST_F(TimedUpdates, TakeTheTimeOfTheEngineNotTheCallers)
{
    engine.SetCounter(9000000);
    UpdateIfDue(&screen, 8000000);
    EXPECT_EQ(lastUpdateTime, 9000000);
}

TEST_F(TimedUpdates, AreTheDriversOwnDrawing)
{
    UpdateIfDue(&screen, 8000000);
    ASSERT_EQ(real_driver::Copies().size(), 1u);
    EXPECT_EQ(real_driver::Copies().front().hookDepth, 1);
}

TEST_F(TimedUpdates, AreNotDueWithoutAFrequency)
{
    PerfFrequency = 0;
    EXPECT_FALSE(Updates(0x7FFFFFFFFFFFFFFF));
}

TEST_F(TimedUpdates, AreAlwaysDueWithANegativeInterval)
{
    ZoomUpdateInterval = -1;
    EXPECT_TRUE(Updates(7000000));
    ZoomUpdateInterval = 0;
    EXPECT_FALSE(Updates(7000000));
    EXPECT_TRUE(Updates(7001000));
}

TEST_F(TimedUpdates, AreDueAfterYearsAtAHighFrequency)
{
    // 2^60 counts at 3 GHz: a product with 1000 would not fit.
    PerfFrequency = 3000000000;
    EXPECT_TRUE(Updates(1LL << 60));
    EXPECT_EQ(Real(), Lines({"....RRGG........", "....RRGG........"}));
}

TEST_F(TimedUpdates, NeedAScreenWithAZoomer)
{
    UpdateIfDue(nullptr, 9000000);
    screen.ZoomerList.Flush();
    EXPECT_FALSE(Updates(9000000));
}

TEST_F(TimedUpdates, NeedNoZoomerThatIsOn)
{
    zoomer->SetState(0);
    EXPECT_TRUE(Updates(9000000));
}

TEST_F(TimedUpdates, AreSkippedWhenAScreenDoesNotLock)
{
    engine.RefuseLock(screen.hsurfReal);
    EXPECT_FALSE(Updates(9000000));
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Cannot lock RealScreen\n");
    engine.RefuseLock(screen.hsurfVirtual);
    EXPECT_FALSE(Updates(9000000));
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Cannot lock VirtualScreen\n");
    screen.hsurfVirtual = nullptr;
    EXPECT_FALSE(Updates(9000000));
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Cannot lock VirtualScreen\n");
}

} // namespace
