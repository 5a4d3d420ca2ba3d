#include "escape/sorted_id_set.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <vector>

#include "engine/core/engine.h"

namespace {

using koru::SortedIdSet;

class IdSet : public testing::Test {
protected:
    ~IdSet() override
    {
        set.Clear();
        engine.CheckGuards();
        EXPECT_EQ(engine.Outstanding().poolBlocks, 0u);
        EXPECT_TRUE(engine.Violations().empty());
    }

    std::vector<ULONG> Items() const { return {set.items, set.items + set.count}; }
    void InsertUpTo(ULONG count)
    {
        for (ULONG value = 0; value < count; ++value)
            ASSERT_EQ(set.Insert(value * 10), 1);
    }

    engine::Engine engine;
    SortedIdSet set = {};
};

TEST_F(IdSet, SortsWhatIsInserted)
{
    EXPECT_EQ(set.Insert(5), 1);
    EXPECT_EQ(set.Insert(1), 1);
    EXPECT_EQ(set.Insert(3), 1);
    EXPECT_EQ(Items(), (std::vector<ULONG>{1, 3, 5}));
    EXPECT_EQ(set.capacity, 100u);
    EXPECT_EQ(set.Insert(3), 0);
    EXPECT_EQ(Items(), (std::vector<ULONG>{1, 3, 5}));
}

TEST_F(IdSet, ComparesUnsigned)
{
    set.Insert(0xFFFFFFFF);
    set.Insert(1);
    set.Insert(0x80000000);
    set.Insert(0);
    EXPECT_EQ(Items(), (std::vector<ULONG>{0, 1, 0x80000000, 0xFFFFFFFF}));
}

TEST_F(IdSet, TellsWhereAValueIsOrBelongs)
{
    ULONG index = 99;
    EXPECT_FALSE(set.Find(7, index));
    EXPECT_EQ(index, 0u);
    set.Insert(10);
    set.Insert(20);
    set.Insert(30);
    const struct {
        ULONG value;
        bool found;
        ULONG index;
    } cases[] = {{5, false, 0},  {10, true, 0}, {15, false, 1}, {20, true, 1},
                 {25, false, 2}, {30, true, 2}, {31, false, 3}};
    for (const auto& [value, found, expected] : cases) {
        EXPECT_EQ(set.Find(value, index), found) << value;
        EXPECT_EQ(index, expected) << value;
        EXPECT_EQ(set.Contains(value), found) << value;
    }
}

TEST_F(IdSet, RemovesOnlyWhatItHolds)
{
    for (const ULONG value : {4U, 8U, 15U})
        set.Insert(value);
    EXPECT_EQ(set.Remove(9), 0);
    EXPECT_EQ(set.Remove(8), 1);
    EXPECT_EQ(Items(), (std::vector<ULONG>{4, 15}));
    EXPECT_EQ(set.Remove(8), 0);
    EXPECT_EQ(set.Remove(15), 1);
    EXPECT_EQ(Items(), (std::vector<ULONG>{4}));
}

TEST_F(IdSet, GrowsByAHundredEntries)
{
    InsertUpTo(100);
    EXPECT_EQ(set.capacity, 100u);
    EXPECT_EQ(set.Insert(5), 1);
    EXPECT_EQ(set.capacity, 200u);
    EXPECT_EQ(set.count, 101u);
    EXPECT_EQ(set.items[0], 0u);
    EXPECT_EQ(set.items[1], 5u);
    EXPECT_EQ(set.items[2], 10u);
    EXPECT_EQ(set.items[100], 990u);
}

TEST_F(IdSet, ShrinksToAHundredMoreThanItHolds)
{
    InsertUpTo(101);
    EXPECT_EQ(set.Remove(1000), 1);
    EXPECT_EQ(set.capacity, 200u);
    EXPECT_EQ(set.Remove(990), 1);
    EXPECT_EQ(set.capacity, 199u);
    EXPECT_EQ(set.Remove(0), 1);
    EXPECT_EQ(set.capacity, 198u);
    EXPECT_EQ(set.count, 98u);
    EXPECT_EQ(set.items[0], 10u);
    EXPECT_EQ(set.items[97], 980u);
}

TEST_F(IdSet, OwnsNoMemoryOnceEmptied)
{
    set.Insert(1);
    set.Insert(2);
    set.Remove(1);
    EXPECT_EQ(set.capacity, 100u);
    EXPECT_EQ(engine.Outstanding().poolBlocks, 1u);
    set.Remove(2);
    EXPECT_EQ(set.items, nullptr);
    EXPECT_EQ(set.capacity, 0u);
    EXPECT_EQ(set.count, 0u);
    EXPECT_EQ(engine.Outstanding().poolBlocks, 0u);
}

TEST_F(IdSet, ForgetsAllWhenCleared)
{
    InsertUpTo(3);
    set.Clear();
    EXPECT_EQ(set.items, nullptr);
    EXPECT_EQ(set.capacity, 0u);
    EXPECT_EQ(set.count, 0u);
    EXPECT_FALSE(set.Contains(0));
    set.Clear();
    EXPECT_EQ(set.Insert(7), 1);
}

TEST_F(IdSet, StaysEmptyWhenItsFirstArrayCannotBeMade)
{
    engine.Fail(engine::Request::Memory);
    EXPECT_EQ(set.Insert(1), 0);
    EXPECT_EQ(set.items, nullptr);
    EXPECT_EQ(set.capacity, 0u);
    EXPECT_EQ(set.count, 0u);
    EXPECT_EQ(engine.TakeDebugOutput(), "");
    EXPECT_EQ(set.Insert(1), 1);
}

TEST_F(IdSet, KeepsAllEntriesWhenItCannotGrow)
{
    InsertUpTo(100);
    engine.Fail(engine::Request::Memory);
    EXPECT_EQ(set.Insert(5), 0);
    EXPECT_EQ(set.count, 100u);
    EXPECT_EQ(set.capacity, 100u);
    EXPECT_FALSE(set.Contains(5));
    EXPECT_TRUE(set.Contains(990));
    EXPECT_EQ(set.Insert(5), 1);
    EXPECT_EQ(set.capacity, 200u);
}

TEST_F(IdSet, KeepsItsLargerArrayWhenItCannotShrink)
{
    InsertUpTo(101);
    engine.Fail(engine::Request::Memory);
    EXPECT_EQ(set.Remove(0), 1);
    EXPECT_EQ(set.capacity, 200u);
    EXPECT_EQ(set.count, 100u);
    EXPECT_EQ(set.items[0], 10u);
    EXPECT_EQ(set.Remove(10), 1);
    EXPECT_EQ(set.capacity, 199u);
}

TEST_F(IdSet, AllocatesNothingToShiftEntries)
{
    InsertUpTo(50);
    const ULONG requests = engine.RequestCount(engine::Request::Memory);
    set.Insert(5);
    set.Remove(0);
    EXPECT_EQ(engine.RequestCount(engine::Request::Memory), requests);
}

// Values of a small range make presence and absence equally likely; those of a wide one make it grow.
TEST_F(IdSet, AgreesWithAModelOverRandomOperations)
{
    for (const ULONG range : {40U, 600U, 0xFFFFFFFFU}) {
        std::mt19937 random(range);
        std::uniform_int_distribution<ULONG> values(0, range);
        std::set<ULONG> model;
        for (int step = 0; step < 6000; ++step) {
            ULONG value = values(random);
            if (random() % 3 == 0 && !model.empty())
                value = *model.begin();
            const bool insert = random() % 2000 < (step < 3000 ? 1400U : 500U);
            if (random() % 16 == 0)
                engine.Fail(engine::Request::Memory);
            const BOOL done = insert ? set.Insert(value) : set.Remove(value);
            engine.StopFailing();
            if (insert && !done)
                ASSERT_TRUE(model.contains(value) || set.count == set.capacity) << "step " << step;
            else if (insert)
                ASSERT_TRUE(model.insert(value).second) << "step " << step;
            else
                ASSERT_EQ(done, static_cast<BOOL>(model.erase(value))) << "step " << step;
            ASSERT_EQ(Items(), std::vector<ULONG>(model.begin(), model.end())) << "step " << step;
            ASSERT_LE(set.count, set.capacity);
            ASSERT_EQ(set.Contains(value), model.contains(value));
        }
        set.Clear();
    }
}

} // namespace
