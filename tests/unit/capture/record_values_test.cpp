#include "capture/record_values.h"

#include <gtest/gtest.h>

using namespace koru;

namespace capture_tests {
namespace {

    void ExpectPart(const POINTL& origin, const RECTL& target, const RECTL& expected)
    {
        const SourcePart part(&origin, &target);
        ASSERT_NE(part.Rectangle(), nullptr);
        EXPECT_EQ(part.Rectangle()->left, expected.left);
        EXPECT_EQ(part.Rectangle()->top, expected.top);
        EXPECT_EQ(part.Rectangle()->right, expected.right);
        EXPECT_EQ(part.Rectangle()->bottom, expected.bottom);
    }

    TEST(SourcePart, IsAsLargeAsTheTargetFromThePointOn)
    {
        ExpectPart({3, -4}, {10, 20, 110, 50}, {3, -4, 103, 26});
    }

    TEST(SourcePart, WrapsCoordinatesThatAreTooLarge)
    {
        ExpectPart({0x7FFFFFFF, 0}, {-0x7FFFFFFF, 0, 0x7FFFFFFF, 1}, {0x7FFFFFFF, 0, 0x7FFFFFFD, 1});
    }

    TEST(SourcePart, IsUnknownWithoutPointOrTarget)
    {
        const POINTL origin = {1, 2};
        const RECTL target = {0, 0, 1, 1};
        EXPECT_EQ(SourcePart(nullptr, &target).Rectangle(), nullptr);
        EXPECT_EQ(SourcePart(&origin, nullptr).Rectangle(), nullptr);
        EXPECT_EQ(SourcePart(nullptr, nullptr).Rectangle(), nullptr);
    }

} // namespace
} // namespace capture_tests
