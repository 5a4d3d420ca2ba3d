#include "escape/item_cache.h"

#include <gtest/gtest.h>

#include "engine/core/engine.h"

namespace {

using namespace koru;

constexpr const char* UnknownType = "KORU: AddCacheItem. Cache type is unknown\n";

class ItemCache : public testing::Test {
protected:
    ~ItemCache() override
    {
        for (const ULONG type : {1U, 2U, 4U})
            ClearCache(type);
        EXPECT_EQ(engine.Outstanding().poolBlocks, 0u);
    }

    engine::Engine engine;
};

TEST_F(ItemCache, KeepsEachTypeByItself)
{
    for (const ULONG type : {1U, 2U, 4U}) {
        EXPECT_EQ(AddCacheItem(type, 70), 1) << type;
        EXPECT_EQ(AddCacheItem(type, 70), 0) << type;
        EXPECT_EQ(AddCacheItem(type, 70 + type), 1) << type;
    }
    EXPECT_EQ(RemoveCacheItem(2, 70), 1);
    EXPECT_EQ(RemoveCacheItem(2, 70), 0);
    EXPECT_EQ(IsCached(1, 70), 1);
    EXPECT_EQ(IsCached(2, 70), 0);
    EXPECT_EQ(IsCached(4, 70), 1);
    EXPECT_EQ(IsCached(1, 71), 1);
    EXPECT_EQ(IsCached(2, 72), 1);
    EXPECT_EQ(IsCached(1, 72), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "");
}

TEST_F(ItemCache, EmptiesOneTypeAndAnswersOneAlsoWhenItWasEmpty)
{
    AddCacheItem(1, 7);
    AddCacheItem(4, 7);
    EXPECT_EQ(ClearCache(1), 1);
    EXPECT_EQ(ClearCache(1), 1);
    EXPECT_EQ(IsCached(1, 7), 0);
    EXPECT_EQ(IsCached(4, 7), 1);
}

TEST_F(ItemCache, RefusesOtherTypesInEveryOperation)
{
    for (const ULONG type : {0U, 3U, 5U, 8U, 0xFFFFFFFFU}) {
        EXPECT_EQ(AddCacheItem(type, 1), 0);
        EXPECT_EQ(engine.TakeDebugOutput(), UnknownType);
        EXPECT_EQ(RemoveCacheItem(type, 1), 0);
        EXPECT_EQ(engine.TakeDebugOutput(), UnknownType);
        EXPECT_EQ(ClearCache(type), 0);
        EXPECT_EQ(engine.TakeDebugOutput(), UnknownType);
        EXPECT_EQ(IsCached(type, 1), 0);
        EXPECT_EQ(engine.TakeDebugOutput(), UnknownType);
    }
}

TEST_F(ItemCache, AnswersZeroWhenMemoryIsShort)
{
    engine.Fail(engine::Request::Memory);
    EXPECT_EQ(AddCacheItem(2, 9), 0);
    EXPECT_EQ(IsCached(2, 9), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "");
}

} // namespace
