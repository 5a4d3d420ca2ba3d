#include <gtest/gtest.h>

#include "tests/unit/magnifier/smoothing_fixture.h"
#include "tests/unit/magnifier/smoothing_model.h"

namespace {

using namespace pictures;

struct RandomCase {
    std::string picture;
    RECTL part; // of the source
};

// Pictures with few colours, so that diagonals, corners and long edges are common.
class RandomSmoothing : public SmoothingFixture, public testing::WithParamInterface<Form> {
protected:
    RandomSmoothing() { Use(GetParam()); }

    RandomCase NextCase(unsigned number)
    {
        std::mt19937 random(number);
        static const char* const colours[] = {"WR", "WWWR", "RB", "WRB", "WYRGB.", ".....G"};
        RandomCase testCase;
        const LONG width = 1 + static_cast<LONG>(random() % 12), height = 1 + static_cast<LONG>(random() % 10);
        testCase.picture = RandomPicture(random, width, height, colours[random() % 6]);
        const LONG left = static_cast<LONG>(random() % width), top = static_cast<LONG>(random() % height);
        testCase.part = {left, top, left + 1 + static_cast<LONG>(random() % (width - left)),
                         top + 1 + static_cast<LONG>(random() % (height - top))};
        xFactor = static_cast<BYTE>(2 + random() % 5);
        yFactor = static_cast<BYTE>(2 + random() % 5);
        improveFactor = 1 + random() % 3;
        pickColour = random() % 2;
        bottomUp = random() % 2 != 0;
        return testCase;
    }
    std::string Expected(const std::string& picture) const
    {
        return smoothing_model::Smooth(picture, {static_cast<int>(improveFactor), xFactor, yFactor, pickColour != 0});
    }

    bool bottomUp = false;
};

INSTANTIATE_TEST_SUITE_P(Of, RandomSmoothing, testing::ValuesIn(AllForms),
                         [](const auto& info) { return NameOf(info.param); });

TEST_P(RandomSmoothing, FollowsTheRulesAndKeepsTheMargin)
{
    int smoothed = 0;
    for (unsigned number = 0; number < 600; ++number) {
        const std::string picture = NextCase(number).picture;
        const std::string expected = Expected(picture);
        smoothed += expected != Stretched(picture, xFactor, yFactor);
        ASSERT_EQ(Smooth(picture, bottomUp), WithMargin(expected))
            << "case " << number << ", improve factor " << improveFactor << "\n"
            << picture;
    }
    EXPECT_GT(smoothed, 200) << "the pictures had nothing to smooth";
}

// What lies outside of the part keeps the plain stretch; inside, a part is as the whole.
TEST_P(RandomSmoothing, IsTheSameInPartsAsInTheWhole)
{
    for (unsigned number = 1000; number < 1600; ++number) {
        const RandomCase testCase = NextCase(number);
        const RECTL& part = testCase.part;
        engine::Surface* const source = MakeSurface(testCase.picture, form);
        const std::string stretched = WithMargin(Stretched(testCase.picture, xFactor, yFactor));
        engine::Surface* const target = MakeSurface(stretched, form);
        koru::SmoothRequest request = Whole(target, source, MarginLeft, MarginTop);
        const RECTL place = {part.left * xFactor, part.top * yFactor, part.right * xFactor, part.bottom * yFactor};
        request.rclSrc = part;
        request.rclTrg = {MarginLeft + place.left, MarginTop + place.top, MarginLeft + place.right,
                          MarginTop + place.bottom};
        koru::SmoothMagnified(request);
        const std::string whole = Expected(testCase.picture);
        const std::string expected =
            WithPicture(stretched, request.rclTrg.left, request.rclTrg.top, Part(whole, place));
        ASSERT_EQ(PictureOf(*target, form), expected)
            << "case " << number << ", improve factor " << improveFactor << ", part " << part << "\n"
            << testCase.picture;
        engine::DestroyBitmap(source);
        engine::DestroyBitmap(target);
    }
}

} // namespace
