#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "engine/core/engine.h"

namespace {

using namespace engine;
using Lines = std::vector<std::string>;

TEST(Semaphore, IsRecursiveAndCountsItsHolds)
{
    Engine engine;
    const HSEMAPHORE semaphore = EngCreateSemaphore();
    EXPECT_EQ(engine.Outstanding().semaphores, 1u);
    EngAcquireSemaphore(semaphore);
    EngAcquireSemaphore(semaphore);
    EXPECT_EQ(engine.Outstanding().semaphoreHolds, 2u);
    EngReleaseSemaphore(semaphore);
    EngReleaseSemaphore(semaphore);
    EXPECT_EQ(engine.Outstanding().semaphoreHolds, 0u);
    EXPECT_EQ(engine.Violations(), Lines());
}

TEST(Semaphore, KeepsOtherThreadsOutUntilTheLastRelease)
{
    Engine engine;
    const HSEMAPHORE semaphore = EngCreateSemaphore();
    int guarded = 0;
    const auto count = [&] {
        for (int i = 0; i < 2000; ++i) {
            EngAcquireSemaphore(semaphore);
            EngAcquireSemaphore(semaphore);
            guarded = guarded + 1;
            EngReleaseSemaphore(semaphore);
            guarded = guarded + 1;
            EngReleaseSemaphore(semaphore);
        }
    };
    std::thread first(count), second(count);
    first.join();
    second.join();
    EXPECT_EQ(guarded, 8000);
    EXPECT_EQ(engine.Violations(), Lines());
}

TEST(Semaphore, ReportsAReleaseThatNobodyMayMake)
{
    Engine engine;
    const HSEMAPHORE semaphore = EngCreateSemaphore();
    EngReleaseSemaphore(semaphore);
    EngAcquireSemaphore(semaphore);
    std::thread([semaphore] { EngReleaseSemaphore(semaphore); }).join();
    EXPECT_EQ(engine.Violations(),
              (Lines{"EngReleaseSemaphore: not held by this thread", "EngReleaseSemaphore: not held by this thread"}));
    EXPECT_EQ(engine.Outstanding().semaphoreHolds, 1u);
}

TEST(Semaphore, ReportsHandlesThatAreNone)
{
    Engine engine;
    EngAcquireSemaphore(nullptr);
    EngReleaseSemaphore(nullptr);
    EXPECT_EQ(engine.Violations(),
              (Lines{"EngAcquireSemaphore: not a semaphore", "EngReleaseSemaphore: not a semaphore"}));
}

} // namespace
