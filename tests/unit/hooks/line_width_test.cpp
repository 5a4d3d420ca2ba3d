#include "hooks/line_width.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/constants.h"

namespace {

using namespace koru;

constexpr LONG Farthest = 0x10000;

LONG ReachOf(float width)
{
    LINEATTRS line = {};
    line.fl = LA_GEOMETRIC;
    line.elWidth.e = width;
    return ReachOfPen(&line);
}

TEST(ReachOfPen, IsTheWidthRoundedUp)
{
    EXPECT_EQ(ReachOf(0.0f), 0);
    EXPECT_EQ(ReachOf(-0.0f), 0);
    EXPECT_EQ(ReachOf(0.001f), 1);
    EXPECT_EQ(ReachOf(0.5f), 1);
    EXPECT_EQ(ReachOf(1.0f), 1);
    EXPECT_EQ(ReachOf(1.0000001f), 2);
    EXPECT_EQ(ReachOf(1.5f), 2);
    EXPECT_EQ(ReachOf(2.0f), 2);
    EXPECT_EQ(ReachOf(7.25f), 8);
    EXPECT_EQ(ReachOf(65535.0f), 65535);
    EXPECT_EQ(ReachOf(65535.5f), 65536);
}

TEST(ReachOfPen, IsBeyondEveryScreenForWhatIsLargerOrNoNumber)
{
    EXPECT_EQ(ReachOf(65536.0f), Farthest);
    EXPECT_EQ(ReachOf(3e38f), Farthest);
    EXPECT_EQ(ReachOf(std::numeric_limits<float>::infinity()), Farthest);
    EXPECT_EQ(ReachOf(std::numeric_limits<float>::quiet_NaN()), Farthest);
    EXPECT_EQ(ReachOf(std::numeric_limits<float>::denorm_min()), 1);
}

TEST(ReachOfPen, IsNothingForCosmeticLinesAndNull)
{
    LINEATTRS line = {};
    line.elWidth.l = 0x42000000; // 32.0, if it were a float
    EXPECT_EQ(ReachOfPen(&line), 0);
    line.fl = LA_ALTERNATE;
    EXPECT_EQ(ReachOfPen(&line), 0);
    EXPECT_EQ(ReachOfPen(nullptr), 0);
}

} // namespace
