#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;

using Stretches = RasterTest;

BOOL Stretch(Surface* target, Surface* source, RECTL to, RECTL from, CLIPOBJ* pco = nullptr, Surface* mask = nullptr,
             POINTL maskFrom = {0, 0})
{
    return EngStretchBlt(target, source, mask, pco, nullptr, nullptr, nullptr, &to, &from, &maskFrom, COLORONCOLOR);
}

TEST_F(Stretches, WholeFactorsMakeBlocks)
{
    Surface* const target = Blank(7, 5);
    EXPECT_TRUE(Stretch(target, Picture({"#2", "34"}), {1, 1, 7, 5}, {0, 0, 2, 2}));
    EXPECT_PICTURE(target, ".......", ".###222", ".###222", ".333444", ".333444");
}

TEST_F(Stretches, PixelIShowsTheSourcePixelAtTheFloorOfItsShare)
{
    Surface* const wider = Blank(5, 1);
    EXPECT_TRUE(Stretch(wider, Picture({"#23"}), {0, 0, 5, 1}, {0, 0, 3, 1})); // 0, 3/5, 6/5, 9/5, 12/5
    EXPECT_PICTURE(wider, "##223");
    Surface* const narrower = Blank(3, 1);
    EXPECT_TRUE(Stretch(narrower, Picture({"#2345"}), {0, 0, 3, 1}, {0, 0, 5, 1})); // 0, 5/3, 10/3
    EXPECT_PICTURE(narrower, "#24");
    Surface* const half = Blank(1, 2);
    EXPECT_TRUE(Stretch(half, Picture({"#", "2", "3", "4"}), {0, 0, 1, 2}, {0, 0, 1, 4}));
    EXPECT_PICTURE(half, "#", "3");
}

TEST_F(Stretches, AReversedRectangleTurnsThePictureOver)
{
    const Art art = {"#23", "456"};
    Surface* const across = Blank(4, 2);
    EXPECT_TRUE(Stretch(across, Picture(art), {3, 0, 0, 2}, {0, 0, 3, 2}));
    EXPECT_PICTURE(across, "32#.", "654.");
    Surface* const down = Blank(3, 2);
    EXPECT_TRUE(Stretch(down, Picture(art), {0, 2, 3, 0}, {0, 0, 3, 2}));
    EXPECT_PICTURE(down, "456", "#23");
    Surface* const source = Blank(3, 2);
    EXPECT_TRUE(Stretch(source, Picture(art), {0, 0, 3, 2}, {3, 2, 0, 0}));
    EXPECT_PICTURE(source, "654", "32#");
    Surface* const twice = Blank(3, 2);
    EXPECT_TRUE(Stretch(twice, Picture(art), {3, 0, 0, 2}, {3, 0, 0, 2}));
    EXPECT_PICTURE(twice, "#23", "456");
}

TEST_F(Stretches, AMirroredStretchIsTheMirroredPictureOfTheOther)
{
    Surface* const target = Blank(5, 1);
    EXPECT_TRUE(Stretch(target, Picture({"#23"}), {5, 0, 0, 1}, {0, 0, 3, 1}));
    EXPECT_PICTURE(target, "322##");
}

TEST_F(Stretches, TheTargetIsCutWithoutChangingTheScale)
{
    Surface* const target = Blank(3, 2);
    EXPECT_TRUE(Stretch(target, Picture({"#2", "34"}), {-2, -1, 4, 3}, {0, 0, 2, 2}));
    EXPECT_PICTURE(target, "#22", "344");
    ClipObject clip(std::vector<RECTL>{{0, 0, 1, 1}, {2, 0, 3, 2}});
    Surface* const clipped = Blank(3, 2);
    EXPECT_TRUE(Stretch(clipped, Picture({"#2", "34"}), {-2, -1, 4, 3}, {0, 0, 2, 2}, &clip));
    EXPECT_PICTURE(clipped, "#.2", "..4");
}

TEST_F(Stretches, PixelsWhoseSourceDoesNotExistStay)
{
    Surface* const target = Picture({"9999999", "9999999"});
    EXPECT_TRUE(Stretch(target, Picture({"#2"}), {0, 0, 6, 2}, {-1, 0, 2, 1}));
    EXPECT_PICTURE(target, "99##229", "99##229");
    EXPECT_TRUE(Stretch(target, Picture({"34"}), {0, 0, 7, 2}, {5, 5, 12, 7}));
    EXPECT_PICTURE(target, "99##229", "99##229");
}

TEST_F(Stretches, CoordinatesMayReachTheEndsOfTheRange)
{
    Surface* const target = Blank(2, 1);
    // The target's pixels 0 and 1 are in the middle of 2^32 - 1, the source's 2^31 and next too.
    EXPECT_TRUE(Stretch(target, Picture({"#2"}), {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX},
                        {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}));
    EXPECT_PICTURE(target, "#2");
    EXPECT_TRUE(Stretch(target, Picture({"67"}), {0, 0, 2, 1}, {INT32_MIN, 0, INT32_MAX, 1}));
    EXPECT_PICTURE(target, "#2"); // the middle of the source is pixel -1
}

TEST_F(Stretches, AMaskIsStretchedWithTheSource)
{
    Surface* const target = Picture({"999999", "999999"});
    Surface* const mask = Picture({"......", "..#.#.", "......"}, BMF_1BPP);
    EXPECT_TRUE(Stretch(target, Picture({".#23"}), {0, 0, 6, 2}, {1, 0, 4, 1}, nullptr, mask, {2, 1}));
    EXPECT_PICTURE(target, "##9933", "##9933");
}

TEST_F(Stretches, AStretchWithinOneSurfaceReadsThePictureAsItWas)
{
    Surface* const surface = Picture({"#23456"});
    EXPECT_TRUE(Stretch(surface, surface, {0, 0, 6, 1}, {0, 0, 3, 1}));
    EXPECT_PICTURE(surface, "##2233");
}

TEST_F(Stretches, BottomUpBitmapsAndEveryFormat)
{
    for (const ULONG format : AllFormats) {
        Surface* const target = Blank(4, 4, format, -16);
        EXPECT_TRUE(Stretch(target, Picture({"#.", ".#"}, format, -12), {0, 0, 4, 4}, {0, 0, 2, 2}));
        EXPECT_PICTURE(target, "##..", "##..", "..##", "..##") << format;
    }
}

TEST_F(Stretches, ColoursAreTranslated)
{
    Translation translation(PixelLayout::Default(BMF_32BPP), 5, 9);
    Surface* const target = Blank(4, 1);
    RECTL to = {0, 0, 4, 1}, from = {0, 0, 2, 1};
    EXPECT_TRUE(EngStretchBlt(target, Picture({"#."}, BMF_1BPP), nullptr, nullptr, &translation, nullptr, nullptr, &to,
                              &from, nullptr, COLORONCOLOR));
    EXPECT_PICTURE(target, "9955");
}

TEST_F(Stretches, EmptyRectanglesDrawNothing)
{
    Surface* const target = Blank(2, 1);
    EXPECT_TRUE(Stretch(target, Picture({"#2"}), {0, 0, 2, 1}, {1, 0, 1, 1}));
    EXPECT_TRUE(Stretch(target, Picture({"#2"}), {1, 0, 1, 1}, {0, 0, 2, 1}));
    EXPECT_PICTURE(target, "..");
}

TEST_F(Stretches, NullSurfacesAndRectanglesAreRefused)
{
    Surface* const target = Blank(2, 1);
    RECTL all = {0, 0, 2, 1};
    EXPECT_FALSE(Stretch(nullptr, target, all, all));
    EXPECT_FALSE(Stretch(target, nullptr, all, all));
    EXPECT_FALSE(EngStretchBlt(target, target, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &all, nullptr, 3));
    EXPECT_FALSE(EngStretchBlt(target, target, nullptr, nullptr, nullptr, nullptr, nullptr, &all, nullptr, nullptr, 3));
    ExpectViolation("EngStretchBlt: null target");
    ExpectViolation("EngStretchBlt: null source");
    ExpectViolation("EngStretchBlt: null rectangle");
    ExpectViolation("EngStretchBlt: null rectangle");
}

using StretchRops = RasterTest;

TEST_F(StretchRops, CombineStretchedSourcePatternAndTarget)
{
    Surface* const target = Picture({"ccccc"});
    Brush brush = Brush::Solid(6);
    RECTL to = {1, 0, 5, 1}, from = {0, 0, 2, 1};
    EXPECT_TRUE(EngStretchBltROP(target, Picture({"a3"}), nullptr, nullptr, nullptr, nullptr, nullptr, &to, &from,
                                 nullptr, COLORONCOLOR, &brush, 0x9696)); // XOR of all three
    EXPECT_PICTURE(target, "c..99"); // c ^ a ^ 6 is 0, c ^ 3 ^ 6 is 9
}

TEST_F(StretchRops, TheMaskChoosesBetweenBothHalves)
{
    Surface* const target = Picture({"cccc"});
    Brush brush = Brush::Solid(6);
    RECTL to = {0, 0, 4, 1}, from = {0, 0, 2, 1};
    EXPECT_TRUE(EngStretchBltROP(target, Picture({"23"}), Picture({".#"}, BMF_1BPP), nullptr, nullptr, nullptr, nullptr,
                                 &to, &from, nullptr, COLORONCOLOR, &brush, 0xF0CC));
    EXPECT_PICTURE(target, "6633");
}

TEST_F(StretchRops, NeedNoSourceForAPatternAlone)
{
    Surface* const target = Picture({"cccc"});
    Brush brush = Brush::Pattern(*Picture({"#2"}));
    RECTL to = {0, 0, 4, 1};
    POINTL origin = {1, 0};
    EXPECT_TRUE(EngStretchBltROP(target, nullptr, nullptr, nullptr, nullptr, nullptr, &origin, &to, nullptr, nullptr,
                                 COLORONCOLOR, &brush, 0xF0F0));
    EXPECT_PICTURE(target, "2#2#");
    EXPECT_FALSE(EngStretchBltROP(target, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &to, nullptr, nullptr,
                                  COLORONCOLOR, nullptr, 0xF0F0));
    EXPECT_FALSE(EngStretchBltROP(target, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &to, &to, nullptr,
                                  COLORONCOLOR, &brush, 0xCCCC));
    ExpectViolation("EngStretchBltROP: null brush");
    ExpectViolation("EngStretchBltROP: null source");
}

using TransparentBlits = RasterTest;

BOOL CopyButOne(Surface* target, Surface* source, RECTL to, RECTL from, ULONG colour, XLATEOBJ* pxlo = nullptr)
{
    return EngTransparentBlt(target, source, nullptr, pxlo, &to, &from, colour, 0);
}

TEST_F(TransparentBlits, LeaveThePixelsOfOneColour)
{
    Surface* const target = Picture({"99999"});
    EXPECT_TRUE(CopyButOne(target, Picture({"#2#3"}), {1, 0, 5, 1}, {0, 0, 4, 1}, 1));
    EXPECT_PICTURE(target, "99293");
}

TEST_F(TransparentBlits, CompareBeforeTheyTranslateAndStretch)
{
    Translation translation(PixelLayout::Default(BMF_32BPP), 5, 7);
    Surface* const target = Picture({"9999"});
    EXPECT_TRUE(CopyButOne(target, Picture({".#"}, BMF_1BPP), {4, 0, 0, 1}, {0, 0, 2, 1}, 0, &translation));
    EXPECT_PICTURE(target, "7799");
}

TEST_F(TransparentBlits, DoNotLookAtTheSpareBitsOfWidePixels)
{
    Surface* const source = Blank(2, 1);
    source->SetPixel(0, 0, 0xFF000001);
    source->SetPixel(1, 0, 0x00000002);
    Surface* const target = Picture({"99"});
    EXPECT_TRUE(CopyButOne(target, source, {0, 0, 2, 1}, {0, 0, 2, 1}, 0x55000001));
    EXPECT_PICTURE(target, "92");
}

TEST_F(TransparentBlits, SkipPixelsWhoseSourceDoesNotExist)
{
    Surface* const target = Picture({"9999"});
    EXPECT_TRUE(CopyButOne(target, Picture({"2#"}), {0, 0, 4, 1}, {0, 0, 4, 1}, 1));
    EXPECT_PICTURE(target, "2999");
}

TEST_F(TransparentBlits, NullArgumentsAreRefused)
{
    Surface* const target = Picture({"9"});
    RECTL all = {0, 0, 1, 1};
    EXPECT_FALSE(CopyButOne(target, nullptr, all, all, 1));
    EXPECT_FALSE(CopyButOne(nullptr, target, all, all, 1));
    EXPECT_FALSE(EngTransparentBlt(target, target, nullptr, nullptr, nullptr, &all, 1, 0));
    ExpectViolation("EngTransparentBlt: null source");
    ExpectViolation("EngTransparentBlt: null target");
    ExpectViolation("EngTransparentBlt: null rectangle");
}

} // namespace
