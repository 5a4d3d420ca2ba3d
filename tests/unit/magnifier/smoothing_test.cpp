#include <gtest/gtest.h>

#include "tests/unit/magnifier/smoothing_fixture.h"

namespace {

using namespace pictures;
using koru::ColorPairList::Add;

class Smoothing : public SmoothingFixture { };
class SmoothingOf : public SmoothingFixture, public testing::WithParamInterface<Form> {
protected:
    SmoothingOf() { Use(GetParam()); }
};
INSTANTIATE_TEST_SUITE_P(Form, SmoothingOf, testing::ValuesIn(AllForms),
                         [](const auto& info) { return NameOf(info.param); });

const std::string diagonal = Lines({
    "RW",
    "WR",
});
const std::string redGrown = Lines({
    "RRWW",
    "RRRW",
    "WRRR",
    "WWRR",
});
const std::string whiteGrown = Lines({
    "RRWW",
    "RWWW",
    "WWWR",
    "WWRR",
});

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
    const std::string box = Lines({
        "WWWWWWW",
        "WRRRRRW",
        "WRWWWRW",
        "WRWWWRW",
        "WRWWWRW",
        "WRRRRRW",
        "WWWWWWW",
    });
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
    const std::string picture = Lines({
        "WWWWWWW",
        "WWWWWWW",
        "WWRRRRR",
        "WWRWWWW",
        "WWRWWWW",
        "WWRWWWW",
    });
    engine::Surface* const source = MakeSurface(picture, form);
    xFactor = yFactor = 2;
    improveFactor = 1;
    const RECTL part = {2, 2, 4, 4};
    engine::Surface* const target = MakeSurface(Stretched(Part(picture, part), 2, 2), form);
    koru::SmoothRequest request = Whole(target, source, 0, 0);
    request.originalRect = request.rclSrc = part;
    request.rclTrg = request.destRect = {0, 0, 4, 4};
    koru::SmoothMagnified(request);
    EXPECT_EQ(PictureOf(*target, form),
              Lines({
                  "RRRR",
                  "RRRR",
                  "RRRW",
                  "RRWW",
              }));
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
    const std::string smoothed = Lines({
        "RRRRWWWW",
        "RRRRRWWW",
        "RRRRRRWW",
        "RRRRRRRW",
        "WRRRRRRR",
        "WWRRRRRR",
        "WWWRRRRR",
        "WWWWRRRR",
    });
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
    const std::string antiDiagonal = Lines({
        "WR",
        "RW",
    });
    const std::string onlyUpperLeft = Lines({
        "WWRR",
        "WRRR",
        "RRWW",
        "RRWW",
    }); // choose(TL, TR) and choose(TR, BR) both answer the first
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

TEST_F(Smoothing, SaysForEachChoiceThatATableIsMissing)
{
    Use(Form::Bits8);
    koru::FreeToPool(colourTable);
    colourTable = nullptr;
    engine.TakeDebugOutput();
    Smooth(diagonal);
    // One for the row; the first colour wins it, so the main diagonal stays; two for the other one.
    const std::string once = "KORU:Error getting color from palette\n";
    EXPECT_EQ(engine.TakeDebugOutput(), once + once + once);
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
