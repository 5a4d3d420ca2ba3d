#include "magnifier/rectangle.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "engine/core/engine.h"
#include "tests/unit/magnifier/pictures.h"

namespace {

using namespace koru;

TEST(Rectangle, IsEmptyUnlessBothSidesHaveALength)
{
    EXPECT_FALSE(IsEmpty({0, 0, 1, 1}));
    EXPECT_FALSE(IsEmpty({-5, -5, -4, -4}));
    EXPECT_TRUE(IsEmpty({0, 0, 0, 1}));
    EXPECT_TRUE(IsEmpty({0, 0, 1, 0}));
    EXPECT_TRUE(IsEmpty({5, 0, 4, 1}));
    EXPECT_TRUE(IsEmpty({INT32_MAX, 0, INT32_MIN, 1}));
    EXPECT_TRUE(IsEmpty(NoRectangle));
}

TEST(Rectangle, IntersectsToTheCommonPart)
{
    RECTL result;
    EXPECT_TRUE(IntersectRect(result, {0, 0, 10, 20}, {5, -5, 15, 7}));
    EXPECT_EQ(result, (RECTL{5, 0, 10, 7}));
}

TEST(Rectangle, MayBeOneOfTheOperandsOfItsIntersection)
{
    RECTL result = {0, 0, 10, 20};
    EXPECT_TRUE(IntersectRect(result, result, {5, -5, 15, 7}));
    EXPECT_EQ(result, (RECTL{5, 0, 10, 7}));
}

TEST(Rectangle, DoesNotMeetWhatItOnlyTouches)
{
    RECTL result = {1, 2, 3, 4};
    EXPECT_FALSE(IntersectRect(result, {0, 0, 10, 10}, {10, 0, 20, 10}));
    EXPECT_EQ(result, NoRectangle);
    EXPECT_FALSE(DoMeet({0, 0, 10, 10}, {0, 10, 10, 20}));
    EXPECT_FALSE(DoMeet({0, 0, 10, 10}, {10, 10, 20, 20}));
    EXPECT_TRUE(DoMeet({0, 0, 10, 10}, {9, 9, 20, 20}));
}

TEST(Rectangle, NeverMeetsAnEmptyOrReversedOne)
{
    EXPECT_FALSE(DoMeet({0, 0, 10, 10}, {5, 5, 5, 8}));
    EXPECT_FALSE(DoMeet({0, 0, 10, 10}, {8, 2, 2, 8}));
    EXPECT_FALSE(DoMeet({0, 0, 0, 10}, {-5, -5, 8, 8}));
}

TEST(Rectangle, UnitesToTheBoundsEmptyOperandsIncluded)
{
    EXPECT_EQ(UnionRect({5, 6, 7, 8}, {1, 9, 6, 12}), (RECTL{1, 6, 7, 12}));
    EXPECT_EQ(UnionRect({5, 6, 7, 8}, {0, 0, 0, 0}), (RECTL{0, 0, 7, 8}));
}

TEST(Rectangle, JoinsOnlyWhatIsNotEmpty)
{
    EXPECT_EQ(JoinRect({5, 6, 7, 8}, {1, 9, 6, 12}), (RECTL{1, 6, 7, 12}));
    EXPECT_EQ(JoinRect({5, 6, 7, 8}, NoRectangle), (RECTL{5, 6, 7, 8}));
    EXPECT_EQ(JoinRect({3, 3, 2, 9}, {5, 6, 7, 8}), (RECTL{5, 6, 7, 8}));
    EXPECT_EQ(JoinRect({3, 3, 2, 9}, {7, 7, 7, 7}), NoRectangle);
}

TEST(Rectangle, InflatesOnAllSides)
{
    EXPECT_EQ(InflateRect({10, 20, 30, 40}, 1, 2), (RECTL{9, 18, 31, 42}));
    EXPECT_EQ(InflateRect({10, 20, 30, 40}, -3, 0), (RECTL{13, 20, 27, 40}));
}

TEST(Rectangle, StaysInRangeWhenInflated)
{
    EXPECT_EQ(InflateRect({INT32_MIN + 1, 10, INT32_MAX, 10}, INT32_MAX, INT32_MAX),
              (RECTL{INT32_MIN, -2147483637, INT32_MAX, INT32_MAX}));
}

TEST(Rectangle, IsPutInOrder)
{
    EXPECT_EQ(OrderedRect({10, 4, 2, 8}), (RECTL{2, 4, 10, 8}));
    EXPECT_EQ(OrderedRect({2, 8, 10, 4}), (RECTL{2, 4, 10, 8}));
}

struct SubtractCase {
    const char* name;
    RECTL cut;
    RECTL from;
    std::vector<RECTL> pieces;
};

// The rectangle cut out is (20, 30, 60, 80). The first letter of a name tells where the other begins (left and
// above, above, left, inside), the rest where it ends.
const SubtractCase subtractCases[] = {
    {.name = "Disjoint", .cut = {20, 30, 60, 80}, .from = {0, 0, 20, 100}, .pieces = {{0, 0, 20, 100}}},
    {.name = "EmptyOne", .cut = {20, 30, 60, 80}, .from = {40, 40, 40, 50}, .pieces = {{40, 40, 40, 50}}},
    {.name = "FromAnEmptyHole", .cut = {20, 30, 20, 80}, .from = {0, 0, 99, 99}, .pieces = {{0, 0, 99, 99}}},
    {.name = "SurroundedOnAllSides",
     .cut = {20, 20, 60, 60},
     .from = {0, 0, 100, 100},
     .pieces = {{0, 0, 100, 20}, {0, 20, 20, 60}, {0, 60, 100, 100}, {60, 20, 100, 60}}},
    {.name = "LeftAboveEndingInside",
     .cut = {20, 30, 60, 80},
     .from = {5, 10, 50, 70},
     .pieces = {{5, 10, 20, 70}, {20, 10, 50, 30}}},
    {.name = "LeftAboveEndingOnTheLastColumnAndRow",
     .cut = {20, 30, 60, 80},
     .from = {5, 10, 60, 80},
     .pieces = {{5, 10, 20, 80}, {20, 10, 60, 30}}},
    {.name = "LeftAboveEndingBeyond",
     .cut = {20, 30, 60, 80},
     .from = {5, 10, 90, 70},
     .pieces = {{5, 10, 20, 70}, {20, 10, 90, 30}, {60, 30, 90, 70}}},
    {.name = "LeftAboveEndingBelow",
     .cut = {20, 30, 60, 80},
     .from = {5, 10, 50, 95},
     .pieces = {{5, 10, 50, 30}, {5, 30, 20, 80}, {5, 80, 50, 95}}},
    {.name = "AboveEndingInside", .cut = {20, 30, 60, 80}, .from = {20, 10, 50, 70}, .pieces = {{20, 10, 50, 30}}},
    {.name = "AboveEndingBelow",
     .cut = {20, 30, 60, 80},
     .from = {25, 10, 50, 95},
     .pieces = {{25, 10, 50, 30}, {25, 80, 50, 95}}},
    {.name = "AboveEndingBeyond",
     .cut = {20, 30, 60, 80},
     .from = {25, 10, 90, 70},
     .pieces = {{25, 10, 90, 30}, {60, 30, 90, 70}}},
    {.name = "AboveEndingBeyondAndBelow",
     .cut = {20, 30, 60, 80},
     .from = {25, 10, 90, 95},
     .pieces = {{25, 10, 90, 30}, {60, 30, 90, 95}, {25, 80, 60, 95}}},
    {.name = "LeftEndingInside", .cut = {20, 30, 60, 80}, .from = {5, 30, 50, 70}, .pieces = {{5, 30, 20, 70}}},
    {.name = "LeftEndingBelow",
     .cut = {20, 30, 60, 80},
     .from = {5, 35, 50, 95},
     .pieces = {{5, 35, 20, 95}, {20, 80, 50, 95}}},
    {.name = "LeftEndingBeyond",
     .cut = {20, 30, 60, 80},
     .from = {5, 35, 90, 70},
     .pieces = {{5, 35, 20, 70}, {60, 35, 90, 70}}},
    {.name = "LeftEndingBeyondAndBelow",
     .cut = {20, 30, 60, 80},
     .from = {5, 35, 90, 95},
     .pieces = {{5, 35, 20, 95}, {20, 80, 60, 95}, {60, 35, 90, 95}}},
    {.name = "Swallowed", .cut = {20, 30, 60, 80}, .from = {25, 35, 50, 70}, .pieces = {}},
    {.name = "TheSame", .cut = {20, 30, 60, 80}, .from = {20, 30, 60, 80}, .pieces = {}},
    {.name = "InsideEndingBeyond", .cut = {20, 30, 60, 80}, .from = {25, 35, 90, 70}, .pieces = {{60, 35, 90, 70}}},
    {.name = "InsideEndingBelow", .cut = {20, 30, 60, 80}, .from = {25, 35, 50, 95}, .pieces = {{25, 80, 50, 95}}},
    {.name = "InsideEndingBeyondAndBelow",
     .cut = {20, 30, 60, 80},
     .from = {25, 35, 90, 95},
     .pieces = {{25, 80, 90, 95}, {60, 35, 90, 80}}},
};

class Subtraction : public testing::TestWithParam<SubtractCase> { };

TEST_P(Subtraction, LeavesThePiecesInTheirOrder)
{
    RECTL slots[4];
    const ULONG count = SubtractRect(GetParam().cut, GetParam().from, slots);
    EXPECT_EQ(std::vector<RECTL>(slots, slots + count), GetParam().pieces);
}

INSTANTIATE_TEST_SUITE_P(Of, Subtraction, testing::ValuesIn(subtractCases),
                         [](const auto& testCase) { return std::string(testCase.param.name); });

constexpr LONG GridSize = 12;

// Every rectangle of the grid, the empty ones along one edge left out.
std::vector<RECTL> AllOnGrid()
{
    std::vector<RECTL> all;
    for (LONG left = 0; left < GridSize; ++left)
        for (LONG right = left + 1; right <= GridSize; ++right)
            for (LONG top = 0; top < GridSize; ++top)
                for (LONG bottom = top + 1; bottom <= GridSize; ++bottom)
                    all.push_back({left, top, right, bottom});
    return all;
}

// Bits of the columns that a rectangle covers in a row.
unsigned ColumnsIn(const RECTL& r, LONG row)
{
    return row >= r.top && row < r.bottom ? (1u << r.right) - (1u << r.left) : 0;
}

bool IsDifference(const RECTL& cut, const RECTL& from, const RECTL* pieces, ULONG count)
{
    for (LONG row = 0; row < GridSize; ++row) {
        unsigned covered = 0;
        for (ULONG i = 0; i < count; ++i) {
            const unsigned columns = ColumnsIn(pieces[i], row);
            if (covered & columns)
                return false; // painted twice
            covered |= columns;
        }
        if (covered != (ColumnsIn(from, row) & ~ColumnsIn(cut, row)))
            return false;
    }
    return true;
}

TEST(SubtractionOnAGrid, CoversTheDifferenceOfEveryPairWithoutOverlap)
{
    const std::vector<RECTL> all = AllOnGrid();
    ASSERT_EQ(all.size(), 6084u);
    const engine::Engine engine; // a pair without a case would print
    for (const RECTL& cut : all)
        for (const RECTL& from : all) {
            RECTL pieces[4];
            const ULONG count = SubtractRect(cut, from, pieces);
            ASSERT_TRUE(IsDifference(cut, from, pieces, count)) << from << " minus " << cut;
        }
    EXPECT_EQ(engine.DebugOutput(), "");
}

} // namespace
