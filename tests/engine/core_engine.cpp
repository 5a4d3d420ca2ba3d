#include <gtest/gtest.h>

#include <sstream>

#include "engine/core/engine.h"

namespace {

using namespace engine;

constexpr ULONG Tag = 0x55524F4B;

bool Allocates()
{
    void* const block = EngAllocMem(FL_ZERO_MEMORY, 4, Tag);
    if (block)
        EngFreeMem(block);
    return block != nullptr;
}

HSURF CreateSmallBitmap()
{
    return reinterpret_cast<HSURF>(EngCreateBitmap({1, 1}, 4, BMF_8BPP, BMF_TOPDOWN, nullptr));
}

TEST(EngineLife, ServicesWithoutAnEngineEndTheProgram)
{
    EXPECT_FALSE(Engine::Exists());
    EXPECT_DEATH(EngFreeMem(nullptr), "no engine exists");
    EXPECT_DEATH(EngLockSurface(nullptr), "no engine exists");
}

TEST(EngineLife, ThereIsOneAtATime)
{
    Engine engine;
    EXPECT_TRUE(Engine::Exists());
    EXPECT_EQ(&Engine::Current(), &engine);
    EXPECT_DEATH(Engine second, "an engine already");
}

TEST(EngineLife, ResourcesArePrintedByName)
{
    std::ostringstream text;
    text << Resources{1, 2, 3, 4, 5, 6, 7};
    EXPECT_EQ(text.str(), "{locks 1, pool blocks 2, surfaces 3, semaphores 4, semaphore holds 5, images 6, modules 7}");
}

TEST(Clock, StandsStillUntilMoved)
{
    Engine engine;
    LONGLONG counter = -1, frequency = 0;
    EngQueryPerformanceFrequency(&frequency);
    EXPECT_EQ(frequency, 3579545);
    EngQueryPerformanceCounter(&counter);
    EXPECT_EQ(counter, 0);
    engine.SetFrequency(10000);
    engine.AdvanceMilliseconds(5);
    EngQueryPerformanceCounter(&counter);
    EXPECT_EQ(counter, 50);
    engine.SetCounter(1000000000000);
    engine.StepCounter(3);
    EngQueryPerformanceCounter(&counter);
    EXPECT_EQ(counter, 1000000000000);
    EngQueryPerformanceCounter(&counter);
    EXPECT_EQ(counter, 1000000000003);
}

TEST(Clock, ReportsNull)
{
    Engine engine;
    EngQueryPerformanceCounter(nullptr);
    EngQueryPerformanceFrequency(nullptr);
    EXPECT_EQ(engine.Violations(),
              (std::vector<std::string>{"EngQueryPerformanceCounter: the counter is null",
                                        "EngQueryPerformanceFrequency: the frequency is null"}));
}

TEST(Faults, TheNthComingRequestOfAKindFails)
{
    Engine engine;
    EXPECT_TRUE(Allocates());
    engine.Fail(Request::Memory, 2);
    EXPECT_TRUE(Allocates());
    EXPECT_FALSE(Allocates());
    EXPECT_TRUE(Allocates());
    EXPECT_EQ(engine.RequestCount(Request::Memory), 4u);
}

TEST(Faults, CanLastUntilStopped)
{
    Engine engine;
    engine.Fail(Request::Memory, 1, true);
    EXPECT_FALSE(Allocates());
    EXPECT_FALSE(Allocates());
    EXPECT_NE(EngCreateSemaphore(), nullptr) << "another kind";
    engine.StopFailing();
    EXPECT_TRUE(Allocates());
}

TEST(Faults, EveryKindOfRequestCanFail)
{
    Engine engine;
    engine.RegisterImage(u"i", {});
    engine.RegisterModule(u"m", {1});
    const HSURF bitmap = CreateSmallBitmap();
    const HANDLE module = EngLoadModule(const_cast<WCHAR*>(u"m"));
    ULONG size = 0;
    for (int kind = 0; kind < static_cast<int>(Request::Count); ++kind)
        engine.Fail(static_cast<Request>(kind), 1, true);
    EXPECT_EQ(EngAllocMem(0, 4, Tag), nullptr);
    EXPECT_EQ(EngLockSurface(bitmap), nullptr);
    EXPECT_EQ(CreateSmallBitmap(), nullptr);
    EXPECT_EQ(EngCreateDeviceSurface(nullptr, {1, 1}, BMF_8BPP), nullptr);
    EXPECT_EQ(EngCreateDeviceBitmap(nullptr, {1, 1}, BMF_8BPP), nullptr);
    EXPECT_FALSE(EngAssociateSurface(bitmap, nullptr, 0));
    EXPECT_EQ(EngCreateSemaphore(), nullptr);
    EXPECT_EQ(EngLoadImage(const_cast<WCHAR*>(u"i")), nullptr);
    EXPECT_EQ(EngLoadModule(const_cast<WCHAR*>(u"m")), nullptr);
    EXPECT_EQ(EngMapModule(module, &size), nullptr);
    EXPECT_TRUE(engine.Violations().empty());
}

TEST(Faults, TheLockOfOneSurfaceCanBeRefused)
{
    Engine engine;
    const HSURF refused = CreateSmallBitmap(), other = CreateSmallBitmap();
    engine.RefuseLock(refused);
    EXPECT_EQ(EngLockSurface(refused), nullptr);
    EXPECT_NE(EngLockSurface(other), nullptr);
    engine.StopFailing();
    EXPECT_NE(EngLockSurface(refused), nullptr);
}

TEST(FaultPlan, FailsEachRequestInTurnUntilARunSeesNone)
{
    std::vector<std::string> runs;
    FaultPlan plan;
    do {
        Engine engine;
        engine.Obey(plan);
        std::string run;
        for (int i = 0; i < 3; ++i)
            run += Allocates() ? '+' : '-';
        runs.push_back(run + (plan.FaultsSeen() == 0 ? " no fault" : ""));
    } while (plan.Next());
    EXPECT_EQ(runs, (std::vector<std::string>{"-++", "+-+", "++-", "+++ no fault"}));
}

TEST(FaultPlan, CanFailEverythingFromOneRequestOn)
{
    std::vector<std::string> runs;
    FaultPlan plan(true);
    do {
        Engine engine;
        engine.Obey(plan);
        std::string run;
        for (int i = 0; i < 3; ++i)
            run += Allocates() ? '+' : '-';
        runs.push_back(run);
    } while (plan.Next());
    EXPECT_EQ(runs, (std::vector<std::string>{"---", "+--", "++-", "+++"}));
}

} // namespace
