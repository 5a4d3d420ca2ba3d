#include "hooks/call_rectangles.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

namespace {

using namespace koru;

std::vector<LONG> Sides(const RECTL& rectangle)
{
    return {rectangle.left, rectangle.top, rectangle.right, rectangle.bottom};
}
using Expected = std::vector<LONG>;

TEST(PixelsAround, HasOnePixelOfMarginAroundTouchedOnes)
{
    EXPECT_EQ(Sides(PixelsAround({32, 48, 64, 80})), (Expected{1, 2, 6, 7}));
    EXPECT_EQ(Sides(PixelsAround({33, 47, 65, 79})), (Expected{1, 1, 7, 7}));
    EXPECT_EQ(Sides(PixelsAround({32, 48, 32, 48})), (Expected{1, 2, 4, 5})) << "a point";
    EXPECT_EQ(Sides(PixelsAround({-1, -16, -1, -16})), (Expected{-2, -2, 2, 1}));
    EXPECT_EQ(Sides(PixelsAround({-17, -15, -17, -15})), (Expected{-3, -2, 1, 2}));
}

TEST(PixelsAround, ReachesTheEndsOfTheNumbers)
{
    EXPECT_EQ(Sides(PixelsAround({INT_MIN, INT_MIN, INT_MAX, INT_MAX})),
              (Expected{-0x8000001, -0x8000001, 0x8000002, 0x8000002}));
}

TEST(RectangleAt, HasTheSizeOfTheOther)
{
    const POINTL corner = {5, -6};
    const RECTL sized = {10, 20, 13, 27};
    EXPECT_EQ(Sides(RectangleAt(&corner, &sized)), (Expected{5, -6, 8, 1}));
    EXPECT_EQ(Sides(RectangleAt(nullptr, &sized)), (Expected{0, 0, 0, 0}));
    EXPECT_EQ(Sides(RectangleAt(&corner, nullptr)), (Expected{0, 0, 0, 0}));
}

TEST(RectangleAt, WrapsAtTheEndsOfTheNumbers)
{
    const POINTL corner = {INT_MAX, INT_MIN};
    const RECTL sized = {0, 0, 2, 3};
    EXPECT_EQ(Sides(RectangleAt(&corner, &sized)), (Expected{INT_MAX, INT_MIN, INT_MIN + 1, INT_MIN + 3}));
    const RECTL widest = {INT_MIN, INT_MIN, INT_MAX, INT_MAX};
    const POINTL origin = {0, 0};
    EXPECT_EQ(Sides(RectangleAt(&origin, &widest)), (Expected{0, 0, -1, -1}));
}

TEST(CutToClip, NeedsARectangleAndSomethingLeftOfIt)
{
    const RECTL rectangle = {10, 10, 20, 20};
    CLIPOBJ clip = {};
    clip.rclBounds = {15, 5, 30, 12};
    RECTL bounds = {1, 2, 3, 4};
    EXPECT_TRUE(CutToClip(bounds, &rectangle, &clip));
    EXPECT_EQ(Sides(bounds), (Expected{15, 10, 20, 12}));
    EXPECT_TRUE(CutToClip(bounds, &rectangle, nullptr));
    EXPECT_EQ(Sides(bounds), (Expected{10, 10, 20, 20}));
    EXPECT_FALSE(CutToClip(bounds, nullptr, nullptr));
    EXPECT_FALSE(CutToClip(bounds, nullptr, &clip));
    clip.rclBounds = {20, 5, 30, 25};
    EXPECT_FALSE(CutToClip(bounds, &rectangle, &clip)) << "touching is not meeting";
}

TEST(ClipBounds, AreThoseOfTheClipIfThereIsOne)
{
    CLIPOBJ clip = {};
    EXPECT_EQ(ClipBounds(&clip), &clip.rclBounds);
    EXPECT_EQ(ClipBounds(nullptr), nullptr);
}

} // namespace
