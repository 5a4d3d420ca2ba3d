#include "escape/list.h"

#include <gtest/gtest.h>

#include <vector>

#include "driver/handles.h"
#include "engine/core/engine.h"

namespace {

using koru::LIST;
using koru::NumberOf;

constexpr RECTL First = {1, 2, 3, 4};
constexpr RECTL Second = {-5, -6, 7, 8};
constexpr RECTL Third = {2147483647, -2147483647 - 1, 0, -1};

class List : public testing::Test {
protected:
    ~List() override
    {
        list.Clear();
        other.Clear();
        engine.CheckGuards();
        EXPECT_EQ(engine.Outstanding().poolBlocks, 0u);
        EXPECT_TRUE(engine.Violations().empty());
    }

    engine::Engine engine;
    LIST list = {};
    LIST other = {};
};

std::vector<LONG> LeftsOf(const LIST& list)
{
    std::vector<LONG> lefts;
    for (const LIST::Node* node = list.First(); node; node = LIST::Next(node))
        lefts.push_back(node->item.left);
    return lefts;
}

TEST_F(List, PutsTheNewestInFrontAndHandsOutNodeAddresses)
{
    EXPECT_TRUE(list.IsEmpty());
    const ULONG first = list.Add(First);
    const ULONG second = list.Add(Second);
    EXPECT_FALSE(list.IsEmpty());
    EXPECT_EQ(second, NumberOf(list.First()));
    EXPECT_EQ(first, NumberOf(LIST::Next(list.First())));
    EXPECT_EQ(LeftsOf(list), (std::vector<LONG>{-5, 1}));
}

TEST_F(List, KeepsAllSixteenBytesOfAnItem)
{
    list.Add(Third);
    const RECTL& item = list.First()->item;
    EXPECT_EQ(item.left, 2147483647);
    EXPECT_EQ(item.top, -2147483647 - 1);
    EXPECT_EQ(item.right, 0);
    EXPECT_EQ(item.bottom, -1);
}

TEST_F(List, SaysSoWhenMemoryIsShortAndStaysAsItWas)
{
    list.Add(First);
    engine.Fail(engine::Request::Memory);
    EXPECT_EQ(list.Add(Second), 0u);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU: LIST:Fatal error, there are not memory enough\n");
    EXPECT_EQ(LeftsOf(list), (std::vector<LONG>{1}));
}

TEST_F(List, DeletesTheHeadTheMiddleAndTheEnd)
{
    const ULONG end = list.Add(First);
    const ULONG middle = list.Add(Second);
    const ULONG head = list.Add(Third);
    EXPECT_EQ(list.DeleteItem(middle), 1);
    EXPECT_EQ(LeftsOf(list), (std::vector<LONG>{2147483647, 1}));
    EXPECT_EQ(list.DeleteItem(end), 1);
    EXPECT_EQ(LeftsOf(list), (std::vector<LONG>{2147483647}));
    EXPECT_EQ(list.DeleteItem(head), 1);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(engine.TakeDebugOutput(), "");
}

TEST_F(List, RefusesAHandleItDoesNotHold)
{
    list.Add(First);
    const ULONG stale = list.Add(Second);
    EXPECT_EQ(list.DeleteItem(stale), 1);
    EXPECT_EQ(list.DeleteItem(stale), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU: DeleteItem called with a wrong item handle.\n");
    EXPECT_EQ(list.DeleteItem(0xFFFFFFFF), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU: DeleteItem called with a wrong item handle.\n");
    EXPECT_EQ(LeftsOf(list), (std::vector<LONG>{1}));
}

TEST_F(List, CallsAnyHandleButZeroWrongWhenItIsEmpty)
{
    const ULONG stale = list.Add(First);
    list.Clear();
    EXPECT_EQ(list.DeleteItem(stale), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU: DeleteItem called with a wrong item handle.\n");
    EXPECT_EQ(list.DeleteItem(0), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU: DeleteItem called with empty list\n");
}

TEST_F(List, DoesNotTakeTheEndOfTheListForHandleZero)
{
    list.Add(First);
    EXPECT_EQ(list.DeleteItem(0), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU: DeleteItem called with a wrong item handle.\n");
    EXPECT_EQ(LeftsOf(list), (std::vector<LONG>{1}));
}

TEST_F(List, DeletesHeadsUntilNoneIsLeft)
{
    list.Add(First);
    list.Add(Second);
    EXPECT_EQ(list.DeleteHead(), 1);
    EXPECT_EQ(LeftsOf(list), (std::vector<LONG>{1}));
    EXPECT_EQ(list.DeleteHead(), 1);
    EXPECT_EQ(engine.TakeDebugOutput(), "");
    EXPECT_EQ(list.DeleteHead(), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU: DeleteItem called with empty list\n");
}

TEST_F(List, ClearsWithoutAWord)
{
    list.Add(First);
    list.Add(Second);
    list.Clear();
    EXPECT_TRUE(list.IsEmpty());
    list.Clear();
    EXPECT_EQ(engine.TakeDebugOutput(), "");
    EXPECT_EQ(engine.Outstanding().poolBlocks, 0u);
}

TEST_F(List, MovesItsHeadToTheFrontOfAnother)
{
    list.Add(First);
    const ULONG moved = list.Add(Second);
    other.Add(Third);
    list.MoveHeadTo(other);
    EXPECT_EQ(LeftsOf(list), (std::vector<LONG>{1}));
    EXPECT_EQ(LeftsOf(other), (std::vector<LONG>{-5, 2147483647}));
    EXPECT_EQ(NumberOf(other.First()), moved);
    list.Clear();
    list.MoveHeadTo(other);
    EXPECT_EQ(LeftsOf(other), (std::vector<LONG>{-5, 2147483647}));
}

TEST_F(List, AppendsItsNodesAtTheEndOfAnotherAndIsEmptyAfterwards)
{
    list.Add(First);
    list.Add(Second);
    other.Add(Third);
    EXPECT_EQ(list.AppendTo(other), 1);
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(LeftsOf(other), (std::vector<LONG>{2147483647, -5, 1}));
    EXPECT_EQ(list.AppendTo(other), 0);
    EXPECT_EQ(LeftsOf(other), (std::vector<LONG>{2147483647, -5, 1}));
    EXPECT_EQ(other.AppendTo(list), 1);
    EXPECT_EQ(LeftsOf(list), (std::vector<LONG>{2147483647, -5, 1}));
}

} // namespace
