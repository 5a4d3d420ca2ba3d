#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;

using Parallelograms = RasterTest;

constexpr FIX Px(double pixels)
{
    return static_cast<FIX>(pixels * 16);
}

// The corners that the source's upper left, upper right and lower left ones come to.
BOOL Draw(Surface* target, Surface* source, std::vector<POINTFIX> corners, RECTL from, CLIPOBJ* pco = nullptr,
          Surface* mask = nullptr, POINTL maskFrom = {0, 0})
{
    return EngPlgBlt(target, source, mask, pco, nullptr, nullptr, nullptr, corners.data(), &from, &maskFrom,
                     COLORONCOLOR);
}

const Art art = {"#23", "456"};
constexpr RECTL whole = {0, 0, 3, 2};

TEST_F(Parallelograms, AnUprightOneIsACopy)
{
    Surface* const target = Blank(5, 4);
    EXPECT_TRUE(Draw(target, Picture(art), {{Px(1), Px(1)}, {Px(4), Px(1)}, {Px(1), Px(3)}}, whole));
    EXPECT_PICTURE(target, ".....", ".#23.", ".456.", ".....");
}

TEST_F(Parallelograms, TheyMirrorOnEitherAxis)
{
    Surface* const across = Blank(3, 2);
    EXPECT_TRUE(Draw(across, Picture(art), {{Px(3), 0}, {0, 0}, {Px(3), Px(2)}}, whole));
    EXPECT_PICTURE(across, "32#", "654");
    Surface* const down = Blank(3, 2);
    EXPECT_TRUE(Draw(down, Picture(art), {{0, Px(2)}, {Px(3), Px(2)}, {0, 0}}, whole));
    EXPECT_PICTURE(down, "456", "#23");
    Surface* const source = Blank(3, 2);
    EXPECT_TRUE(Draw(source, Picture(art), {{0, 0}, {Px(3), 0}, {0, Px(2)}}, {3, 0, 0, 2}));
    EXPECT_PICTURE(source, "32#", "654");
}

TEST_F(Parallelograms, AQuarterTurnMovesEveryPixel)
{
    Surface* const target = Blank(2, 3);
    EXPECT_TRUE(Draw(target, Picture(art), {{Px(2), 0}, {Px(2), Px(3)}, {0, 0}}, whole)); // clockwise
    EXPECT_PICTURE(target, "4#", "52", "63");
}

TEST_F(Parallelograms, TheyScale)
{
    Surface* const target = Blank(6, 4);
    EXPECT_TRUE(Draw(target, Picture(art), {{0, 0}, {Px(6), 0}, {0, Px(4)}}, whole));
    EXPECT_PICTURE(target, "##2233", "##2233", "445566", "445566");
}

TEST_F(Parallelograms, AShearMovesRowsSideways)
{
    Surface* const target = Blank(6, 3);
    // Each row starts one pixel further right than the one above it.
    EXPECT_TRUE(Draw(target, Picture({"##2", "334", "556"}), {{0, 0}, {Px(3), 0}, {Px(3), Px(3)}}, {0, 0, 3, 3}));
    EXPECT_PICTURE(target, "##2...", ".334..", "..556.");
}

TEST_F(Parallelograms, TheyAreClippedAndCutToTheSurface)
{
    Surface* const target = Blank(3, 2);
    ClipObject clip(std::vector<RECTL>{{0, 0, 1, 2}, {2, 1, 9, 9}});
    EXPECT_TRUE(Draw(target, Picture({"#234", "5678", "9abc"}), {{Px(-1), Px(-1)}, {Px(3), Px(-1)}, {Px(-1), Px(2)}},
                     {0, 0, 4, 3}, &clip));
    EXPECT_PICTURE(target, "6..", "a.c");
}

TEST_F(Parallelograms, AMaskHidesSourcePixels)
{
    Surface* const target = Picture({"999", "999"});
    Surface* const mask = Picture({".....", "..#.#", "...#."}, BMF_1BPP);
    EXPECT_TRUE(Draw(target, Picture(art), {{0, 0}, {Px(3), 0}, {0, Px(2)}}, whole, nullptr, mask, {2, 1}));
    EXPECT_PICTURE(target, "#93", "959");
}

TEST_F(Parallelograms, PixelsWhoseSourceDoesNotExistStay)
{
    Surface* const target = Picture({"9999"});
    EXPECT_TRUE(Draw(target, Picture({"#2"}), {{0, 0}, {Px(4), 0}, {0, Px(1)}}, {-1, 0, 3, 1}));
    EXPECT_PICTURE(target, "9#29");
}

TEST_F(Parallelograms, FlatOnesDrawNothing)
{
    Surface* const target = Blank(3, 1);
    EXPECT_TRUE(Draw(target, Picture(art), {{0, 0}, {Px(3), 0}, {Px(2), 0}}, whole));
    EXPECT_TRUE(Draw(target, Picture(art), {{0, 0}, {Px(3), 0}, {0, Px(3)}}, {1, 0, 1, 2}));
    EXPECT_PICTURE(target, "...");
}

TEST_F(Parallelograms, TheLargestOneIsDrawnAsFarAsItIsVisible)
{
    Surface* const target = Blank(2, 1);
    EXPECT_TRUE(Draw(target, Picture({"7"}), {{INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MIN}, {INT32_MIN, INT32_MAX}},
                     {0, 0, 1, 1}));
    EXPECT_PICTURE(target, "77");
}

TEST_F(Parallelograms, ReadThePictureAsItWasWithinOneSurface)
{
    Surface* const surface = Picture({"#2345"});
    EXPECT_TRUE(Draw(surface, surface, {{Px(5), 0}, {0, 0}, {Px(5), Px(1)}}, {0, 0, 5, 1}));
    EXPECT_PICTURE(surface, "5432#");
}

TEST_F(Parallelograms, NullArgumentsAreRefused)
{
    Surface* const surface = Blank(1, 1);
    POINTFIX corners[3] = {};
    RECTL all = {0, 0, 1, 1};
    const auto draw = [&](SURFOBJ* target, SURFOBJ* source, POINTFIX* pptfx, RECTL* prcl) {
        return EngPlgBlt(target, source, nullptr, nullptr, nullptr, nullptr, nullptr, pptfx, prcl, nullptr, 3);
    };
    EXPECT_FALSE(draw(nullptr, surface, corners, &all));
    EXPECT_FALSE(draw(surface, nullptr, corners, &all));
    EXPECT_FALSE(draw(surface, surface, nullptr, &all));
    EXPECT_FALSE(draw(surface, surface, corners, nullptr));
    ExpectViolation("EngPlgBlt: null target");
    ExpectViolation("EngPlgBlt: null source");
    ExpectViolation("EngPlgBlt: null parallelogram");
    ExpectViolation("EngPlgBlt: null source rectangle");
}

} // namespace
