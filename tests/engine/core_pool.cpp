#include <gtest/gtest.h>

#include "engine/core/engine.h"
#include "engine/core/guards.h"

namespace {

using namespace engine;
using Lines = std::vector<std::string>;

constexpr ULONG Tag = 0x55524F4B;

BYTE* Allocate(ULONG size, ULONG flags = FL_ZERO_MEMORY, ULONG tag = Tag)
{
    return static_cast<BYTE*>(EngAllocMem(flags, size, tag));
}

class Pool : public testing::Test {
protected:
    Engine engine;
};

// Wrong writes stop a build with the address sanitizer at once, which is as good.
class PoolGuards : public Pool {
    void SetUp() override
    {
        if (!GuardsPresent)
            GTEST_SKIP() << "the address sanitizer guards the pool";
    }
};

TEST_F(Pool, GivesZeroedBlocksOnlyWhenAsked)
{
    BYTE* const zeroed = Allocate(3);
    BYTE* const fresh = Allocate(3, 0);
    EXPECT_EQ(std::vector<BYTE>(zeroed, zeroed + 3), (std::vector<BYTE>{0, 0, 0}));
    EXPECT_EQ(std::vector<BYTE>(fresh, fresh + 3), (std::vector<BYTE>{0xA5, 0xA5, 0xA5}));
    EXPECT_EQ(engine.Outstanding().poolBlocks, 2u);
    EngFreeMem(zeroed);
    EngFreeMem(fresh);
    EXPECT_EQ(engine.Outstanding(), Resources());
    EXPECT_EQ(engine.Violations(), Lines());
}

TEST_F(Pool, HasEmptyBlocksAndNoneOfAbsurdSize)
{
    EXPECT_NE(Allocate(0), nullptr);
    EXPECT_EQ(Allocate(0xFFFFFFFF), nullptr);
    EXPECT_EQ(Allocate(0x80000001), nullptr);
    EXPECT_EQ(engine.Violations(), Lines());
}

TEST_F(Pool, ReportsOtherTagsAndUnknownFlags)
{
    Allocate(1, FL_ZERO_MEMORY, 0x4B4F5255);
    Allocate(1, 5);
    EXPECT_EQ(engine.Violations(), (Lines{"EngAllocMem: tag 4B4F5255", "EngAllocMem: flags 00000005"}));
}

TEST_F(PoolGuards, ReportAWriteBehindABlockOnce)
{
    BYTE* const block = Allocate(5);
    block[5] = 1;
    engine.CheckGuards();
    engine.CheckGuards();
    EngFreeMem(block);
    EXPECT_EQ(engine.Violations(), Lines{"pool: written outside a block of 5 bytes"});
}

TEST_F(PoolGuards, ReportAWriteBeforeABlockWhenItIsFreed)
{
    BYTE* const block = Allocate(7);
    block[-1] = 0;
    EngFreeMem(block);
    EXPECT_EQ(engine.Violations(), Lines{"pool: written outside a block of 7 bytes"});
}

TEST_F(PoolGuards, FreedBlocksArePoisonedAndWatched)
{
    BYTE* const block = Allocate(9);
    EngFreeMem(block);
    EXPECT_EQ(block[8], 0xDD);
    block[8] = 0;
    engine.CheckGuards();
    EXPECT_EQ(engine.Violations(), Lines{"pool: written to a freed block of 9 bytes"});
}

TEST_F(PoolGuards, FreedBlocksAreWatchedUntilManyOthersWereFreed)
{
    BYTE* const block = Allocate(9);
    EngFreeMem(block);
    block[0] = 0;
    for (int i = 0; i < 300; ++i)
        EngFreeMem(Allocate(4));
    EXPECT_EQ(engine.Violations(), Lines{"pool: written to a freed block of 9 bytes"});
}

TEST_F(PoolGuards, ReportAFreedBlockThatIsFreedAgain)
{
    BYTE* const block = Allocate(1);
    EngFreeMem(block);
    EngFreeMem(block);
    EXPECT_EQ(engine.Violations(), Lines{"EngFreeMem: freed twice"});
}

TEST_F(Pool, ReportsWhatIsNoBlock)
{
    int local = 0;
    EngFreeMem(&local);
    EngFreeMem(nullptr);
    EngFreeMem(Allocate(8) + 4);
    EXPECT_EQ(
        engine.Violations(),
        (Lines{"EngFreeMem: not a block of the pool", "EngFreeMem: null", "EngFreeMem: not a block of the pool"}));
}

} // namespace
