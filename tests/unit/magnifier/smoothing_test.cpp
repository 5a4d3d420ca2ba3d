#include <gtest/gtest.h>

#include <tuple>

#include "tests/unit/magnifier/smoothing_fixture.h"

// The light colours win in most of these pictures, so that it is the red (or other dark) ones that grow.

namespace {

using namespace pictures;
using koru::ColorPairList::Add;

struct Golden {
    const char* name;
    ULONG improveFactor;
    BYTE xFactor, yFactor;
    ULONG pickColour;
    std::string source, expected;
};

void PrintTo(const Golden& golden, std::ostream* out)
{
    *out << golden.name;
}

const Golden goldens[] = {
    {.name = "MainDiagonal", .improveFactor = 1, .xFactor = 4, .yFactor = 4, .pickColour = 0,
     .source = Lines({"RW",
                      "WR"}),
     .expected = Lines({"RRRRWWWW",
                        "RRRRRWWW",
                        "RRRRRRWW",
                        "RRRRRRRW",
                        "WRRRRRRR",
                        "WWRRRRRR",
                        "WWWRRRRR",
                        "WWWWRRRR"})},
    {.name = "AntiDiagonal", .improveFactor = 1, .xFactor = 4, .yFactor = 4, .pickColour = 0,
     .source = Lines({"WR",
                      "RW"}),
     .expected = Lines({"WWWWRRRR",
                        "WWWRRRRR",
                        "WWRRRRRR",
                        "WRRRRRRR",
                        "RRRRRRRW",
                        "RRRRRRWW",
                        "RRRRRWWW",
                        "RRRRWWWW"})},
    {.name = "TheDarkerColourWinning", .improveFactor = 1, .xFactor = 4, .yFactor = 4, .pickColour = 1,
     .source = Lines({"RW",
                      "WR"}),
     .expected = Lines({"RRRRWWWW",
                        "RRRWWWWW",
                        "RRWWWWWW",
                        "RWWWWWWW",
                        "WWWWWWWR",
                        "WWWWWWRR",
                        "WWWWWRRR",
                        "WWWWRRRR"})},
    {.name = "SmallestFactors", .improveFactor = 1, .xFactor = 2, .yFactor = 2, .pickColour = 0,
     .source = Lines({"RW",
                      "WR"}),
     .expected = Lines({"RRWW",
                        "RRRW",
                        "WRRR",
                        "WWRR"})},
    {.name = "UnequalFactors", .improveFactor = 1, .xFactor = 3, .yFactor = 5, .pickColour = 0,
     .source = Lines({"RW",
                      "WR"}),
     .expected = Lines({"RRRWWW",
                        "RRRWWW",
                        "RRRWWW",
                        "RRRRWW",
                        "RRRRRW",
                        "WRRRRR",
                        "WWRRRR",
                        "WWWRRR",
                        "WWWRRR",
                        "WWWRRR"})},
    {.name = "OddTargetColumns", .improveFactor = 1, .xFactor = 3, .yFactor = 2, .pickColour = 0,
     .source = Lines({"WRW",
                      "RWR"}),
     .expected = Lines({"WWWRRRWWW",
                        "WWRRRRRWW",
                        "RRRRWRRRR",
                        "RRRWWWRRR"})},
    {.name = "Checkerboard", .improveFactor = 1, .xFactor = 2, .yFactor = 2, .pickColour = 0,
     .source = Lines({"RWR",
                      "WRW",
                      "RWR"}),
     .expected = Lines({"RRWWRR",
                        "RRRRRR",
                        "WRRRRW",
                        "WRRRRW",
                        "RRRRRR",
                        "RRWWRR"})},
    {.name = "InnerCorner", .improveFactor = 1, .xFactor = 4, .yFactor = 4, .pickColour = 0,
     .source = Lines({"RR",
                      "WR"}),
     .expected = Lines({"RRRRRRRR",
                        "RRRRRRRR",
                        "RRRRRRRR",
                        "RRRRRRRR",
                        "WRRRRRRR",
                        "WWRRRRRR",
                        "WWWRRRRR",
                        "WWWWRRRR"})},
    {.name = "EquallyBrightOnTheMainDiagonal", .improveFactor = 1, .xFactor = 4, .yFactor = 4, .pickColour = 0,
     .source = Lines({"RB",
                      "BR"}),
     .expected = Lines({"RRRRBBBB",
                        "RRRRRBBB",
                        "RRRRRRBB",
                        "RRRRRRRB",
                        "BBBBRRRR",
                        "BBBBRRRR",
                        "BBBBRRRR",
                        "BBBBRRRR"})},
    {.name = "EquallyBrightBelowTheAntiDiagonal", .improveFactor = 1, .xFactor = 4, .yFactor = 4, .pickColour = 0,
     .source = Lines({"WR",
                      "RB"}),
     .expected = Lines({"WWWWRRRR",
                        "WWWRRRRR",
                        "WWRRRRRR",
                        "WRRRRRRR",
                        "RRRRRRRB",
                        "RRRRRRBB",
                        "RRRRRBBB",
                        "RRRRBBBB"})},
    {.name = "EquallyBrightBelowTheMainDiagonal", .improveFactor = 1, .xFactor = 4, .yFactor = 4, .pickColour = 0,
     .source = Lines({"RW",
                      "BR"}),
     .expected = Lines({"RRRRWWWW",
                        "RRRRRWWW",
                        "RRRRRRWW",
                        "RRRRRRRW",
                        "BBBBRRRR",
                        "BBBBRRRR",
                        "BBBBRRRR",
                        "BBBBRRRR"})},
    {.name = "EquallyBrightAboveTheAntiDiagonal", .improveFactor = 1, .xFactor = 2, .yFactor = 2, .pickColour = 0,
     .source = Lines({"RB",
                      "BW"}),
     .expected = Lines({"RRBB",
                        "RRBB",
                        "BBWW",
                        "BBWW"})},
    {.name = "UniformArea", .improveFactor = 1, .xFactor = 2, .yFactor = 2, .pickColour = 0,
     .source = Filled(3, 3, 'R'), .expected = Filled(6, 6, 'R')},
    {.name = "NoDiagonal", .improveFactor = 1, .xFactor = 2, .yFactor = 2, .pickColour = 0,
     .source = Lines({"RG",
                      "BW"}),
     .expected = Lines({"RRGG",
                        "RRGG",
                        "BBWW",
                        "BBWW"})},
    {.name = "OneColumn", .improveFactor = 1, .xFactor = 2, .yFactor = 2, .pickColour = 0,
     .source = Lines({"R", "W", "R"}), .expected = Lines({"RR", "RR", "WW", "WW", "RR", "RR"})},
    {.name = "OneRow", .improveFactor = 1, .xFactor = 2, .yFactor = 2, .pickColour = 0,
     .source = Lines({"RWR"}), .expected = Lines({"RRWWRR", "RRWWRR"})},

    // Improve factor 2: no triangle at the edge of the picture, and the corners of boxes stay.
    {.name = "DiagonalInsideOnly", .improveFactor = 2, .xFactor = 3, .yFactor = 3, .pickColour = 0,
     .source = Lines({"RWWW",
                      "WRWW",
                      "WWRW",
                      "WWWR"}),
     .expected = Lines({"RRRWWWWWWWWW",
                        "RRRWWWWWWWWW",
                        "RRRWWWWWWWWW",
                        "WWWRRRWWWWWW",
                        "WWWRRRRWWWWW",
                        "WWWRRRRRWWWW",
                        "WWWWRRRRRWWW",
                        "WWWWWRRRRWWW",
                        "WWWWWWRRRWWW",
                        "WWWWWWWWWRRR",
                        "WWWWWWWWWRRR",
                        "WWWWWWWWWRRR"})},
    {.name = "AntiDiagonalInsideOnly", .improveFactor = 2, .xFactor = 2, .yFactor = 2, .pickColour = 0,
     .source = Lines({"WWWR",
                      "WWRW",
                      "WRWW",
                      "RWWW"}),
     .expected = Lines({"WWWWWWRR",
                        "WWWWWWRR",
                        "WWWWRRWW",
                        "WWWRRRWW",
                        "WWRRRWWW",
                        "WWRRWWWW",
                        "RRWWWWWW",
                        "RRWWWWWW"})},
    {.name = "CornerWithBothArms", .improveFactor = 2, .xFactor = 2, .yFactor = 2, .pickColour = 0,
     .source = Lines({"WWWWW",
                      "WRRRW",
                      "WRWWW",
                      "WRWWW",
                      "WWWWW"}),
     .expected = Lines({"WWWWWWWWWW",
                        "WWWWWWWWWW",
                        "WWRRRRRRWW",
                        "WWRRRRRRWW",
                        "WWRRWWWWWW",
                        "WWRRWWWWWW",
                        "WWRRWWWWWW",
                        "WWRRWWWWWW",
                        "WWWWWWWWWW",
                        "WWWWWWWWWW"})},
    {.name = "CornerWithOneArm", .improveFactor = 2, .xFactor = 2, .yFactor = 2, .pickColour = 0,
     .source = Lines({"WWWWW",
                      "WRRRW",
                      "WRWWW",
                      "WWWWW",
                      "WWWWW"}),
     .expected = Lines({"WWWWWWWWWW",
                        "WWWWWWWWWW",
                        "WWRRRRRRWW",
                        "WWRRRRRRWW",
                        "WWRRRWWWWW",
                        "WWRRWWWWWW",
                        "WWWWWWWWWW",
                        "WWWWWWWWWW",
                        "WWWWWWWWWW",
                        "WWWWWWWWWW"})},

    // Improve factor 3: lines with one step to two pixels become straight.
    {.name = "ShallowStep", .improveFactor = 3, .xFactor = 2, .yFactor = 2, .pickColour = 0,
     .source = Lines({"WWWWWWWW",
                      "WWWWWWWW",
                      "WWRRWWWW",
                      "WWWWRRWW",
                      "WWWWWWWW",
                      "WWWWWWWW"}),
     .expected = Lines({"WWWWWWWWWWWWWWWW",
                        "WWWWWWWWWWWWWWWW",
                        "WWWWWWWWWWWWWWWW",
                        "WWWWWWWWWWWWWWWW",
                        "WWWWRRRRRWWWWWWW",
                        "WWWWRRRRRRRWWWWW",
                        "WWWWWRRRRRRRWWWW",
                        "WWWWWWWRRRRRWWWW",
                        "WWWWWWWWWWWWWWWW",
                        "WWWWWWWWWWWWWWWW",
                        "WWWWWWWWWWWWWWWW",
                        "WWWWWWWWWWWWWWWW"})},
    {.name = "SteepStep", .improveFactor = 3, .xFactor = 2, .yFactor = 2, .pickColour = 0,
     .source = Lines({"WWWWWW",
                      "WWWWWW",
                      "WWRWWW",
                      "WWRWWW",
                      "WWWRWW",
                      "WWWRWW",
                      "WWWWWW",
                      "WWWWWW"}),
     .expected = Lines({"WWWWWWWWWWWW",
                        "WWWWWWWWWWWW",
                        "WWWWWWWWWWWW",
                        "WWWWWWWWWWWW",
                        "WWWWRRWWWWWW",
                        "WWWWRRRWWWWW",
                        "WWWWRRRWWWWW",
                        "WWWWRRRRWWWW",
                        "WWWWRRRRWWWW",
                        "WWWWWRRRWWWW",
                        "WWWWWRRRWWWW",
                        "WWWWWWRRWWWW",
                        "WWWWWWWWWWWW",
                        "WWWWWWWWWWWW",
                        "WWWWWWWWWWWW",
                        "WWWWWWWWWWWW"})},
    {.name = "OrdinaryDiagonal", .improveFactor = 3, .xFactor = 4, .yFactor = 4, .pickColour = 0,
     .source = Lines({"WWWW",
                      "WRWW",
                      "WWRW",
                      "WWWW"}),
     .expected = Lines({"WWWWWWWWWWWWWWWW",
                        "WWWWWWWWWWWWWWWW",
                        "WWWWWWWWWWWWWWWW",
                        "WWWWWWWWWWWWWWWW",
                        "WWWWRRRRWWWWWWWW",
                        "WWWWRRRRRWWWWWWW",
                        "WWWWRRRRRRWWWWWW",
                        "WWWWRRRRRRRWWWWW",
                        "WWWWWRRRRRRRWWWW",
                        "WWWWWWRRRRRRWWWW",
                        "WWWWWWWRRRRRWWWW",
                        "WWWWWWWWRRRRWWWW",
                        "WWWWWWWWWWWWWWWW",
                        "WWWWWWWWWWWWWWWW",
                        "WWWWWWWWWWWWWWWW",
                        "WWWWWWWWWWWWWWWW"})},
    {.name = "TooSmallForTheLargeWindow", .improveFactor = 3, .xFactor = 2, .yFactor = 2, .pickColour = 0,
     .source = Lines({"RWW",
                      "WRW",
                      "WWR"}),
     .expected = Lines({"RRWWWW",
                        "RRWWWW",
                        "WWRRWW",
                        "WWRRWW",
                        "WWWWRR",
                        "WWWWRR"})},
};

class SmoothingGolden : public SmoothingFixture, public testing::WithParamInterface<std::tuple<Golden, Form>> {
protected:
    SmoothingGolden()
    {
        const Golden& golden = std::get<0>(GetParam());
        improveFactor = golden.improveFactor;
        xFactor = golden.xFactor;
        yFactor = golden.yFactor;
        pickColour = golden.pickColour;
        Use(std::get<1>(GetParam()));
    }
};

TEST_P(SmoothingGolden, IsPaintedExactly)
{
    const Golden& golden = std::get<0>(GetParam());
    EXPECT_EQ(Smooth(golden.source), WithMargin(golden.expected));
    EXPECT_EQ(Smooth(golden.source, true), WithMargin(golden.expected)) << "bottom-up";
}

INSTANTIATE_TEST_SUITE_P(Of, SmoothingGolden,
                         testing::Combine(testing::ValuesIn(goldens), testing::ValuesIn(AllForms)),
                         [](const auto& info) {
                             return std::get<0>(info.param).name + ("_" + NameOf(std::get<1>(info.param)));
                         });

class Smoothing : public SmoothingFixture { };
class SmoothingOf : public SmoothingFixture, public testing::WithParamInterface<Form> {
protected:
    SmoothingOf() { Use(GetParam()); }
};
INSTANTIATE_TEST_SUITE_P(Form, SmoothingOf, testing::ValuesIn(AllForms),
                         [](const auto& info) { return NameOf(info.param); });

const std::string diagonal = Lines({"RW",
                                    "WR"});
const std::string redGrown = Lines({"RRWW",
                                    "RRRW",
                                    "WRRR",
                                    "WWRR"});
const std::string whiteGrown = Lines({"RRWW",
                                      "RWWW",
                                      "WWWR",
                                      "WWRR"});

TEST_P(SmoothingOf, DoesNothingAtOtherImproveFactors)
{
    for (const ULONG value : {0u, 4u, 0xFFFFFFFFu}) {
        improveFactor = value;
        EXPECT_EQ(Smooth(diagonal), WithMargin(Stretched(diagonal, 4, 4))) << value;
    }
}

TEST_P(SmoothingOf, DoesNothingWhenOneFactorIsBelowTwo)
{
    const std::string picture = Lines({"RWWW", "WRWW", "WWRW", "WWWR"});
    for (improveFactor = 1; improveFactor <= 3; ++improveFactor) {
        xFactor = 1;
        yFactor = 4;
        EXPECT_EQ(Smooth(picture), WithMargin(Stretched(picture, 1, 4)));
        xFactor = 4;
        yFactor = 1;
        EXPECT_EQ(Smooth(picture), WithMargin(Stretched(picture, 4, 1)));
    }
}

TEST_P(SmoothingOf, LetsTheSecondColourOfAPairWinWhateverTheBrightness)
{
    xFactor = yFactor = 2;
    Add({255, 255, 255}, {0, 0, 255}); // white, red: red wins
    EXPECT_EQ(Smooth(diagonal), WithMargin(whiteGrown));
    koru::ColorPairList::Clear();
    Add({0, 0, 255}, {255, 255, 255});
    pickColour = 1;
    EXPECT_EQ(Smooth(diagonal), WithMargin(redGrown));
}

TEST_P(SmoothingOf, KeepsTheCornersOfBoxes)
{
    const std::string box = Lines({"WWWWWWW",
                                   "WRRRRRW",
                                   "WRWWWRW",
                                   "WRWWWRW",
                                   "WRWWWRW",
                                   "WRRRRRW",
                                   "WWWWWWW"});
    const std::string stretched = WithMargin(Stretched(box, 4, 4));
    for (pickColour = 0; pickColour <= 1; ++pickColour) {
        improveFactor = 1;
        EXPECT_NE(Smooth(box), stretched) << "improve factor 1 rounds them";
        improveFactor = 2;
        EXPECT_EQ(Smooth(box), stretched);
        improveFactor = 3;
        EXPECT_EQ(Smooth(box), stretched);
    }
}

TEST_P(SmoothingOf, LeavesASinglePixelSquare)
{
    const std::string dot = WithRectangle(Filled(7, 7, 'W'), {3, 3, 4, 4}, 'R');
    for (improveFactor = 1; improveFactor <= 3; ++improveFactor)
        EXPECT_EQ(Smooth(dot), WithMargin(Stretched(dot, 4, 4)));
}

TEST_P(SmoothingOf, ReadsNothingOutsideOfTheOriginalRectangle)
{
    // The corner's arms go on outside: inside, the corner is rounded although a box would go on.
    const std::string picture = Lines({"WWWWWWW",
                                       "WWWWWWW",
                                       "WWRRRRR",
                                       "WWRWWWW",
                                       "WWRWWWW",
                                       "WWRWWWW"});
    engine::Surface* const source = MakeSurface(picture, form);
    xFactor = yFactor = 2;
    improveFactor = 1;
    const RECTL part = {2, 2, 4, 4};
    engine::Surface* const target = MakeSurface(Stretched(Part(picture, part), 2, 2), form);
    koru::SmoothRequest request = Whole(target, source, 0, 0);
    request.originalRect = request.rclSrc = part;
    request.rclTrg = request.destRect = {0, 0, 4, 4};
    koru::SmoothMagnified(request);
    EXPECT_EQ(PictureOf(*target, form), Lines({"RRRR",
                                               "RRRR",
                                               "RRRW",
                                               "RRWW"}));
}

TEST_P(SmoothingOf, CutsThePictureToTheSourceSurface)
{
    // originalRect reaches beyond the surface on all sides; its part on the surface begins at block (1, 1).
    engine::Surface* const source = MakeSurface(diagonal, form);
    xFactor = yFactor = 2;
    const std::string before = WithPicture(Filled(8, 8, 'K'), 2, 2, Stretched(diagonal, 2, 2));
    engine::Surface* const target = MakeSurface(before, form);
    koru::SmoothRequest request = Whole(target, source, 0, 0);
    request.originalRect = request.rclSrc = {-1, -1, 3, 3};
    request.rclTrg = request.destRect = {0, 0, 8, 8};
    koru::SmoothMagnified(request);
    EXPECT_EQ(PictureOf(*target, form), WithPicture(Filled(8, 8, 'K'), 2, 2, redGrown));
}

TEST_P(SmoothingOf, PaintsOnlyWhatLiesOnTheTargetSurface)
{
    xFactor = yFactor = 4;
    engine::Surface* const source = MakeSurface(diagonal, form);
    const std::string smoothed = Lines({"RRRRWWWW",
                                        "RRRRRWWW",
                                        "RRRRRRWW",
                                        "RRRRRRRW",
                                        "WRRRRRRR",
                                        "WWRRRRRR",
                                        "WWWRRRRR",
                                        "WWWWRRRR"});
    for (const POINTL corner : {POINTL{-2, -3}, {2, 3}, {-3, 3}, {3, -2}}) {
        // A surface as large as the picture, which lies partly outside of it.
        const RECTL seen = {-corner.x, -corner.y, 8 - corner.x, 8 - corner.y};
        const std::string margins = WithPicture(Filled(24, 24, 'K'), 8, 8, Stretched(diagonal, 4, 4));
        const std::string expected = WithPicture(Filled(24, 24, 'K'), 8, 8, smoothed);
        const RECTL window = {8 + seen.left, 8 + seen.top, 8 + seen.right, 8 + seen.bottom};
        engine::Surface* const target = MakeSurface(Part(margins, window), form);
        koru::SmoothMagnified(Whole(target, source, corner.x, corner.y));
        EXPECT_EQ(PictureOf(*target, form), Part(expected, window)) << corner;
    }
}

TEST_F(Smoothing, LetsTheFirstColourWinWithoutATable)
{
    xFactor = yFactor = 2;
    const std::string antiDiagonal = Lines({"WR",
                                            "RW"});
    const std::string onlyUpperLeft = Lines({"WWRR",
                                             "WRRR",
                                             "RRWW",
                                             "RRWW"}); // choose(TL, TR) and choose(TR, BR) both answer the first
    for (const Form indexed : {Form::Bits4, Form::Bits8}) {
        Use(indexed);
        koru::FreeToPool(colourTable);
        colourTable = nullptr;
        engine.ClearDebugOutput();
        EXPECT_EQ(Smooth(diagonal), WithMargin(Swapped(onlyUpperLeft, 'R', 'W')));
        EXPECT_EQ(Smooth(antiDiagonal), WithMargin(onlyUpperLeft));
        EXPECT_EQ(engine.DebugOutput().empty(), indexed == Form::Bits4);
    }
    EXPECT_TRUE(engine.DebugOutput().starts_with("KORU:Error getting color from palette\nKORU:Error getting"));
}

TEST_F(Smoothing, FindsPairsOfPackedColoursByTheirPixels)
{
    // 5 bits of 128 are widened to 132: by its bytes the navy of the pair would not be found again.
    xFactor = yFactor = 2;
    const std::string navy = Swapped(diagonal, 'R', 'N');
    for (const Form packed : {Form::Bits565, Form::Bits555}) {
        Use(packed);
        koru::ColorPairList::Clear();
        EXPECT_EQ(Smooth(navy), WithMargin(Swapped(redGrown, 'R', 'N')));
        Add({255, 255, 255}, {128, 0, 0}); // white, navy
        EXPECT_EQ(Smooth(navy), WithMargin(Swapped(whiteGrown, 'R', 'N')));
    }
}

TEST_F(Smoothing, FindsPairsOfPackedColoursByTheirBytesAtAnotherDepth)
{
    xFactor = yFactor = 2;
    Use(Form::Bits565);
    koru::RequestedColourDepth = 0; // pixels of pairs are not computed
    Add({255, 255, 255}, {0, 0, 255});
    EXPECT_EQ(Smooth(diagonal), WithMargin(whiteGrown));
    koru::ColorPairList::Clear();
    Add({255, 255, 255}, {132, 0, 0});
    EXPECT_EQ(Smooth(Swapped(diagonal, 'R', 'N')), WithMargin(Swapped(whiteGrown, 'R', 'N')));
}

TEST_F(Smoothing, ReadsSixteenBitsAsTheModeHasThem)
{
    // Pixels 0x03E0 and 0x0400: 31 of 63 greens (125) and 32 (130) in 5-6-5; in 5-5-5 green 255 and red 8.
    xFactor = yFactor = 2;
    Use(Form::Bits565);
    engine::Surface* const source = engine::MakeBitmap({2, 2}, engine::PixelLayout::Default(BMF_16BPP));
    engine::Surface* const target = engine::MakeBitmap({4, 4}, engine::PixelLayout::Default(BMF_16BPP));
    for (const ULONG depth : {16u, 15u}) {
        for (LONG i = 0; i < 16; ++i)
            target->SetPixel(i % 4, i / 4, 0xFFFF);
        source->SetPixel(0, 0, 0x03E0);
        source->SetPixel(1, 1, 0x03E0);
        source->SetPixel(0, 1, 0x0400);
        source->SetPixel(1, 0, 0x0400);
        koru::RequestedColourDepth = depth;
        koru::SmoothMagnified(Whole(target, source, 0, 0));
        const ULONG grown = depth == 16 ? 0x03E0 : 0xFFFF; // the darker of the two grows along its diagonal
        EXPECT_EQ(target->Pixel(2, 1), grown) << depth;
        EXPECT_EQ(target->Pixel(1, 2), grown) << depth;
        const ULONG other = depth == 15 ? 0x0400 : 0xFFFF;
        EXPECT_EQ(target->Pixel(1, 1), other) << depth;
        EXPECT_EQ(target->Pixel(2, 2), other) << depth;
    }
}

TEST_F(Smoothing, ComparesAllFourBytesButChoosesByThree)
{
    Use(Form::Bits32);
    xFactor = yFactor = 2;
    engine::Surface* const source = MakeSurface(diagonal, form);
    source->SetPixel(0, 0, 0x01FF0000); // red with another fourth byte
    engine::Surface* const target = MakeSurface(Stretched(diagonal, 2, 2), form);
    koru::SmoothMagnified(Whole(target, source, 0, 0));
    EXPECT_EQ(PictureOf(*target, form), Stretched(diagonal, 2, 2)) << "the two reds differ";

    source->SetPixel(1, 1, 0x01FF0000);
    source->SetPixel(1, 0, 0xFFFFFF);
    source->SetPixel(0, 1, 0xFFFFFF);
    Add({255, 255, 255}, {0, 0, 255});
    koru::SmoothMagnified(Whole(target, source, 0, 0));
    EXPECT_EQ(PictureOf(*target, form), whiteGrown) << "the pair is found in spite of the fourth byte";
}

TEST_F(Smoothing, WritesTheWholePixelOfThirtyTwoBits)
{
    Use(Form::Bits32);
    xFactor = yFactor = 2;
    engine::Surface* const source = MakeSurface(diagonal, form);
    source->SetPixel(0, 0, 0x7FFF0000);
    source->SetPixel(1, 1, 0x7FFF0000);
    engine::Surface* const target = MakeSurface(Stretched(diagonal, 2, 2), form);
    koru::SmoothMagnified(Whole(target, source, 0, 0));
    EXPECT_EQ(target->Pixel(1, 2), 0x7FFF0000u);
    EXPECT_EQ(target->Pixel(2, 1), 0x7FFF0000u);
}

TEST_F(Smoothing, DoesNothingOnOneBitPerPixel)
{
    engine::Surface* const source = engine::MakeBitmap({2, 2}, engine::PixelLayout::Default(BMF_1BPP));
    engine::Surface* const target = engine::MakeBitmap({8, 8}, engine::PixelLayout::Default(BMF_1BPP));
    source->SetPixel(0, 0, 1);
    source->SetPixel(1, 1, 1);
    for (improveFactor = 1; improveFactor <= 3; ++improveFactor)
        for (pickColour = 0; pickColour <= 1; ++pickColour)
            koru::SmoothMagnified(Whole(target, source, 0, 0));
    for (LONG i = 0; i < 64; ++i)
        EXPECT_EQ(target->Pixel(i % 8, i / 8), 0u);
}

TEST_F(Smoothing, DoesNothingBetweenTwoFormats)
{
    Use(Form::Bits32);
    engine::Surface* const source = MakeSurface(diagonal, Form::Bits8);
    engine::Surface* const target = MakeSurface(Filled(8, 8, 'G'), Form::Bits32);
    koru::SmoothMagnified(Whole(target, source, 0, 0));
    EXPECT_EQ(PictureOf(*target, Form::Bits32), Filled(8, 8, 'G'));
}

TEST_F(Smoothing, DoesNothingWithoutBits)
{
    Use(Form::Bits32);
    engine::Surface* const source = MakeSurface(diagonal, form);
    engine::Surface* const target = MakeSurface(Stretched(diagonal, 4, 4), form);
    void* const bits = source->pvBits;
    source->pvBits = nullptr;
    koru::SmoothMagnified(Whole(target, source, 0, 0));
    source->pvBits = bits;
    EXPECT_EQ(PictureOf(*target, form), Stretched(diagonal, 4, 4));
    void* const targetBits = target->pvBits;
    target->pvBits = nullptr;
    koru::SmoothMagnified(Whole(target, source, 0, 0));
    target->pvBits = targetBits;
    EXPECT_EQ(PictureOf(*target, form), Stretched(diagonal, 4, 4));
}

} // namespace
