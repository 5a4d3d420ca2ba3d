#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;

using Rop = RasterTest;

// Eight pixels that hold all combinations of pattern, source and target: pixel i is the triple i.
struct Triples {
    Surface *target, *source, *pattern;
    Brush brush;

    explicit Triples(ULONG format)
        : target(Blank(8, 1, format))
        , source(Blank(8, 1, format))
        , pattern(Blank(8, 1, format))
        , brush(Brush::Pattern(*pattern))
    {
        for (ULONG i = 0; i < 8; ++i) {
            pattern->SetPixel(static_cast<LONG>(i), 0, i & 4 ? 0xFFFFFFFF : 0);
            source->SetPixel(static_cast<LONG>(i), 0, i & 2 ? 0xFFFFFFFF : 0);
            target->SetPixel(static_cast<LONG>(i), 0, i & 1 ? 0xFFFFFFFF : 0);
        }
    }
};

TEST_F(Rop, All256FollowTheirTruthTableInEveryFormat)
{
    for (const ULONG format : AllFormats) {
        const ULONG ones = PixelLayout::Default(format).BitsPerPixel() == 32
            ? 0xFFFFFFFF
            : (1u << PixelLayout::Default(format).BitsPerPixel()) - 1;
        for (ULONG rop = 0; rop < 256; ++rop) {
            Triples triples(format);
            RECTL all = {0, 0, 8, 1};
            POINTL from = {0, 0};
            ASSERT_TRUE(EngBitBlt(triples.target, triples.source, nullptr, nullptr, nullptr, &all, &from, nullptr,
                                  &triples.brush, &from, rop << 8 | rop));
            for (ULONG i = 0; i < 8; ++i)
                ASSERT_EQ(triples.target->Pixel(static_cast<LONG>(i), 0), rop >> i & 1 ? ones : 0)
                    << "rop " << rop << ", triple " << i << ", format " << format;
        }
    }
}

TEST_F(Rop, EachBitOfAPixelIsCombinedByItself)
{
    Surface* const target = Picture({"c"}); // 1100
    Surface* const source = Picture({"a"}); // 1010
    RECTL all = {0, 0, 1, 1};
    POINTL from = {0, 0};
    EXPECT_TRUE(EngBitBlt(target, source, nullptr, nullptr, nullptr, &all, &from, nullptr, nullptr, nullptr, 0x6666));
    EXPECT_PICTURE(target, "6"); // source XOR target: 0110
}

TEST_F(Rop, TheMaskChoosesTheLowByteWhereItIsSet)
{
    Surface* const target = Picture({"5555", "5555"});
    Surface* const source = Picture({"9999", "9999"});
    Surface* const mask = Picture({"....", "..#.", ".#.#"}, BMF_1BPP);
    RECTL all = {0, 0, 4, 2};
    POINTL from = {0, 0}, maskFrom = {0, 1};
    EXPECT_TRUE(EngBitBlt(target, source, mask, nullptr, nullptr, &all, &from, &maskFrom, nullptr, nullptr, 0xAACC));
    EXPECT_PICTURE(target, "5595", "5959");
    EXPECT_TRUE(EngBitBlt(target, source, mask, nullptr, nullptr, &all, &from, &maskFrom, nullptr, nullptr, 0x00AA));
    EXPECT_PICTURE(target, "..9.", ".9.9");
}

TEST_F(Rop, AMaskIsOfNoAccountWhereBothHalvesAreAlike)
{
    Surface* const target = Picture({"5555"});
    Surface* const mask = Picture({"#"}, BMF_1BPP); // too small, and never looked at
    RECTL all = {0, 0, 4, 1};
    Brush brush = Brush::Solid(7);
    EXPECT_TRUE(EngBitBlt(target, nullptr, mask, nullptr, nullptr, &all, nullptr, nullptr, &brush, nullptr, 0xF0F0));
    EXPECT_PICTURE(target, "7777");
}

TEST_F(Rop, AMaskMustCoverTheRectangle)
{
    Surface* const target = Picture({"5555"});
    Surface* const mask = Picture({"###"}, BMF_1BPP);
    RECTL all = {0, 0, 4, 1};
    Brush brush = Brush::Solid(7);
    EXPECT_FALSE(EngBitBlt(target, nullptr, mask, nullptr, nullptr, &all, nullptr, nullptr, &brush, nullptr, 0xAAF0));
    EXPECT_PICTURE(target, "5555");
    ExpectViolation("EngBitBlt: mask outside of the surface");
}

TEST_F(Rop, AMaskHasOneBitPerPixel)
{
    Surface* const target = Picture({"5"});
    RECTL all = {0, 0, 1, 1};
    Brush brush = Brush::Solid(7);
    EXPECT_FALSE(EngBitBlt(target, nullptr, Picture({"#"}, BMF_8BPP), nullptr, nullptr, &all, nullptr, nullptr, &brush,
                           nullptr, 0xAAF0));
    ExpectViolation("EngBitBlt: mask of more than one bit per pixel");
}

// R2 codes 1 to 16 on pen 1010 and target 1100; code 0 counts as 16.
TEST_F(Rop, EveryMixCombinesPenAndTarget)
{
    const ULONG expected[] = {0xF, 0x0, 0x1, 0x4, 0x5, 0x2, 0x3, 0x6, 0x7, 0x8, 0x9, 0xC, 0xD, 0xA, 0xB, 0xE, 0xF};
    for (MIX mix = 0; mix <= 16; ++mix) {
        Surface* const target = Picture({"c"}, BMF_4BPP);
        Brush brush = Brush::Solid(0xA);
        ClipObject clip({0, 0, 1, 1});
        ASSERT_TRUE(EngPaint(target, &clip, &brush, nullptr, mix << 8 | mix));
        EXPECT_EQ(target->Pixel(0, 0), expected[mix]) << "mix " << mix;
    }
}

TEST_F(Rop, AHatchPaintsItsLinesWithTheForegroundMixAndTheRestWithTheOther)
{
    Brush brush = Brush::Hatch(HS_CROSS, 3, 7);
    ClipObject clip({0, 0, 8, 8});
    POINTL origin = {0, 0};
    Surface* const opaque = Picture(Art(8, "22222222"));
    EXPECT_TRUE(EngPaint(opaque, &clip, &brush, &origin, 0x0D0D));
    EXPECT_PICTURE(opaque, "77773777", "77773777", "77773777", "77773777", "33333333", "77773777", "77773777",
                   "77773777");
    Surface* const transparent = Picture(Art(8, "22222222"));
    EXPECT_TRUE(EngPaint(transparent, &clip, &brush, &origin, 0x0B0D));
    EXPECT_PICTURE(transparent, "22223222", "22223222", "22223222", "22223222", "33333333", "22223222", "22223222",
                   "22223222");
}

TEST_F(Rop, AMaskOverrulesTheLinesOfAHatch)
{
    Surface* const target = Picture({"22222222"});
    Surface* const mask = Picture({"####...."}, BMF_1BPP);
    Brush brush = Brush::Hatch(HS_VERTICAL, 3, 7);
    RECTL all = {0, 0, 8, 1};
    EXPECT_TRUE(EngBitBlt(target, nullptr, mask, nullptr, nullptr, &all, nullptr, nullptr, &brush, nullptr, 0xAAF0));
    EXPECT_PICTURE(target, "77772222");
}

TEST_F(Rop, APatternIsTiledFromTheBrushOriginOn)
{
    Surface* const target = Blank(7, 3);
    Brush brush = Brush::Pattern(*Picture({"#23", "456"}));
    RECTL all = {0, 0, 7, 3};
    POINTL origin = {2, 1};
    EXPECT_TRUE(EngBitBlt(target, nullptr, nullptr, nullptr, nullptr, &all, nullptr, nullptr, &brush, &origin, 0xF0F0));
    EXPECT_PICTURE(target, "5645645", "23#23#2", "5645645");
}

TEST_F(Rop, ABrushOriginMayBeAnywhere)
{
    Surface* const target = Blank(4, 1);
    Brush brush = Brush::Pattern(*Picture({"#23"}));
    RECTL all = {0, 0, 4, 1};
    POINTL origin = {INT32_MIN, INT32_MAX}; // 2^31 leaves 2 by 3
    EXPECT_TRUE(EngBitBlt(target, nullptr, nullptr, nullptr, nullptr, &all, nullptr, nullptr, &brush, &origin, 0xF0F0));
    EXPECT_PICTURE(target, "3#23");
}

TEST_F(Rop, AnOperationThatNeedsWhatIsMissingIsAViolation)
{
    Surface* const target = Picture({"5"});
    RECTL all = {0, 0, 1, 1};
    EXPECT_FALSE(
        EngBitBlt(target, nullptr, nullptr, nullptr, nullptr, &all, nullptr, nullptr, nullptr, nullptr, 0xF0F0));
    EXPECT_FALSE(
        EngBitBlt(target, nullptr, nullptr, nullptr, nullptr, &all, nullptr, nullptr, nullptr, nullptr, 0xCCCC));
    EXPECT_TRUE(
        EngBitBlt(target, nullptr, nullptr, nullptr, nullptr, &all, nullptr, nullptr, nullptr, nullptr, 0x5555));
    EXPECT_EQ(target->Pixel(0, 0), 0xFFFFFFFAu);
    ExpectViolation("EngBitBlt: null brush");
    ExpectViolation("EngBitBlt: null source");
}

} // namespace
