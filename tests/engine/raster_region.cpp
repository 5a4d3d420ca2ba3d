#include <gtest/gtest.h>

#include <random>

#include "engine/raster/rectangles.h"
#include "engine/raster/region.h"
#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;
using Rectangles = std::vector<RECTL>;

std::string Listed(const Region& region)
{
    std::string text;
    for (const RECTL& rectangle : region.Rectangles())
        text += '(' + std::to_string(rectangle.left) + ' ' + std::to_string(rectangle.top) + ' '
            + std::to_string(rectangle.right) + ' ' + std::to_string(rectangle.bottom) + ')';
    return text;
}

const Region Big(RECTL{0, 0, 6, 6});
const Region Hole(RECTL{2, 2, 4, 4});

TEST(Region, IsEmptyOfAnEmptyOrReversedRectangle)
{
    EXPECT_TRUE(Region(RECTL{3, 3, 3, 9}).IsEmpty());
    EXPECT_TRUE(Region(RECTL{5, 0, 2, 4}).IsEmpty());
    EXPECT_TRUE(Region().IsEmpty());
    const RECTL bounds = Region().Bounds();
    EXPECT_TRUE(AreEqual(bounds, {0, 0, 0, 0}));
}

TEST(Region, UnionOfMeetingRectanglesIsCutIntoBands)
{
    EXPECT_EQ(Listed(Union(Region(RECTL{0, 0, 4, 4}), Region(RECTL{2, 2, 6, 6}))), "(0 0 4 2)(0 2 6 4)(2 4 6 6)");
}

TEST(Region, UnionJoinsWhatTouches)
{
    EXPECT_EQ(Listed(Union(Region(RECTL{0, 0, 2, 4}), Region(RECTL{2, 0, 5, 4}))), "(0 0 5 4)");
    EXPECT_EQ(Listed(Union(Region(RECTL{0, 4, 5, 6}), Region(RECTL{0, 0, 5, 4}))), "(0 0 5 6)");
}

TEST(Region, DifferenceLeavesAFrameRoundAHole)
{
    EXPECT_EQ(Listed(Difference(Big, Hole)), "(0 0 6 2)(0 2 2 4)(4 2 6 4)(0 4 6 6)");
    EXPECT_TRUE(Difference(Hole, Big).IsEmpty());
}

TEST(Region, IntersectionWithAFrameIsEmptyInItsHole)
{
    EXPECT_TRUE(Intersection(Difference(Big, Hole), Hole).IsEmpty());
    EXPECT_EQ(Intersection(Big, Hole), Hole);
}

TEST(Region, SymmetricDifferenceTakesOutWhatBothHave)
{
    EXPECT_EQ(SymmetricDifference(Big, Hole), Difference(Big, Hole));
    EXPECT_EQ(Listed(SymmetricDifference(Region(RECTL{0, 0, 3, 1}), Region(RECTL{2, 0, 5, 1}))), "(0 0 2 1)(3 0 5 1)");
}

TEST(Region, FillingTheHoleMakesOneRectangleAgain)
{
    EXPECT_EQ(Union(Difference(Big, Hole), Hole), Big);
}

TEST(Region, TakesRectanglesInAnyOrderAndOverlapping)
{
    const Region region(Rectangles{{4, 4, 6, 6}, {0, 0, 2, 2}, {1, 0, 3, 2}, {4, 4, 6, 6}});
    EXPECT_EQ(Listed(region), "(0 0 3 2)(4 4 6 6)");
    EXPECT_TRUE(AreEqual(region.Bounds(), {0, 0, 6, 6}));
}

TEST(Region, ContainsItsUpperLeftAndNotItsLowerRightCorner)
{
    EXPECT_TRUE(Hole.Contains(2, 2));
    EXPECT_TRUE(Hole.Contains(3, 3));
    EXPECT_FALSE(Hole.Contains(4, 3));
    EXPECT_FALSE(Hole.Contains(3, 4));
    EXPECT_FALSE(Difference(Big, Hole).Contains(2, 2));
}

TEST(Region, MovesAndIsCutAtTheEndsOfTheRange)
{
    Region region = Difference(Big, Hole);
    region.Move(10, -1);
    EXPECT_EQ(Listed(region), "(10 -1 16 1)(10 1 12 3)(14 1 16 3)(10 3 16 5)");
    Region far(RECTL{INT32_MAX - 4, 0, INT32_MAX, 2});
    far.Move(2, 0);
    EXPECT_EQ(Listed(far), "(2147483645 0 2147483647 2)");
    far.Move(10, 0);
    EXPECT_TRUE(far.IsEmpty());
}

TEST(Region, SpansTheWholeRange)
{
    const Region all(RECTL{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX});
    EXPECT_EQ(Listed(Difference(all, Region(RECTL{INT32_MIN, INT32_MIN, INT32_MAX, 0}))),
              "(-2147483648 0 2147483647 2147483647)");
}

// A model of 12 x 12 bits that every operation is judged by.
using Model = std::vector<bool>;
constexpr LONG Side = 12;

Model Painted(const Rectangles& rectangles)
{
    Model model(Side * Side);
    for (const RECTL& rectangle : rectangles)
        for (LONG y = rectangle.top; y < rectangle.bottom; ++y)
            for (LONG x = rectangle.left; x < rectangle.right; ++x)
                model[static_cast<std::size_t>(y * Side + x)] = true;
    return model;
}

bool AreDisjointAndBanded(const Rectangles& rectangles)
{
    for (std::size_t i = 1; i < rectangles.size(); ++i) {
        const RECTL &before = rectangles[i - 1], &here = rectangles[i];
        const bool sameBand = before.top == here.top && before.bottom == here.bottom && before.right < here.left;
        if (!sameBand && before.bottom > here.top)
            return false;
    }
    return true;
}

TEST(Region, AgreesWithABitmapOnRandomRectangles)
{
    std::mt19937 random(20);
    const auto rectangle = [&random] {
        const auto at = [&random] { return static_cast<LONG>(random() % (Side + 1)); };
        return Ordered({at(), at(), at(), at()});
    };
    for (int round = 0; round < 500; ++round) {
        Rectangles firstList, secondList;
        for (int i = 0; i < 4; ++i) {
            firstList.push_back(rectangle());
            secondList.push_back(rectangle());
        }
        const Region first(firstList), second(secondList);
        const Model a = Painted(firstList), b = Painted(secondList);
        const Model unionModel = Painted(Union(first, second).Rectangles());
        const Model common = Painted(Intersection(first, second).Rectangles());
        const Model difference = Painted(Difference(first, second).Rectangles());
        const Model either = Painted(SymmetricDifference(first, second).Rectangles());
        for (std::size_t i = 0; i < a.size(); ++i) {
            ASSERT_EQ(unionModel[i], a[i] || b[i]) << round;
            ASSERT_EQ(common[i], a[i] && b[i]) << round;
            ASSERT_EQ(difference[i], a[i] && !b[i]) << round;
            ASSERT_EQ(either[i], a[i] != b[i]) << round;
        }
        ASSERT_TRUE(AreDisjointAndBanded(Union(first, second).Rectangles())) << round;
        ASSERT_TRUE(AreDisjointAndBanded(SymmetricDifference(first, second).Rectangles())) << round;
    }
}

TEST(MultiplyDivide, IsExactWhereTheProductOverflows)
{
    const Quotient q = MultiplyDivide(0xFFFFFFFFF, 0xFFFFFFFFF, 0x1000000000); // (2^36 - 1)^2 / 2^36
    EXPECT_EQ(q.floor, 0xFFFFFFFFE);
    EXPECT_EQ(q.remainder, 1);
    EXPECT_EQ(MultiplyDivide(-7, 1, 2).floor, -4);
    EXPECT_EQ(MultiplyDivide(-7, 1, 2).remainder, 1);
}

using RegionOfObjects = RasterTest;

TEST_F(RegionOfObjects, ANullOrTrivialClipLeavesAll)
{
    const RECTL bounds = {0, 0, 9, 9};
    ClipObject trivial({2, 2, 3, 3}, DC_TRIVIAL);
    EXPECT_EQ(RegionOfClip(nullptr, bounds), Region(bounds));
    EXPECT_EQ(RegionOfClip(&trivial, bounds), Region(bounds));
}

TEST_F(RegionOfObjects, AComplexClipIsCutToItsBoundsAndTheGivenOnes)
{
    ClipObject clip(Rectangles{{0, 0, 4, 2}, {6, 0, 20, 2}, {0, 4, 4, 30}});
    clip.rclBounds.left = 1;
    EXPECT_EQ(Listed(RegionOfClip(&clip, {0, 0, 9, 9})), "(1 0 4 2)(6 0 9 2)(1 4 4 9)");
}

TEST_F(RegionOfObjects, APathIsCutToTheBounds)
{
    Path path;
    path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH, {{0, 0}, {10 * 16, 0}, {10 * 16, 10 * 16}, {0, 10 * 16}});
    EXPECT_EQ(Listed(RegionOfPath(&path, FP_ALTERNATEMODE, {2, 3, 8, 90})), "(2 3 8 10)");
}

} // namespace
