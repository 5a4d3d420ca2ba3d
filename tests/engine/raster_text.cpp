#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;

constexpr MIX CopyPen = 0x0D0D, XorPen = 0x0707;

// A ring of 3 x 3 and a bar of 10 x 1.
const std::vector<BYTE> ring = {0xE0, 0xA0, 0xE0}, bar = {0xFF, 0xC0};

class TextTest : public RasterTest {
protected:
    BOOL Draw(Surface* target, CLIPOBJ* pco = nullptr, RECTL* extra = nullptr, RECTL* opaque = nullptr,
              MIX mix = CopyPen)
    {
        return EngTextOut(target, &text, &font, pco, extra, opaque, &fore, &back, nullptr, mix);
    }
    void AddRing(LONG x, LONG y) { text.AddGlyph(1, {x, y}, {0, -3}, {3, 3}, ring); }

    Text text;
    Font font;
    Brush fore = Brush::Solid(1), back = Brush::Solid(2);
};

TEST_F(TextTest, GlyphsStandOnTheirPositions)
{
    AddRing(1, 3);
    AddRing(5, 4);
    Surface* const target = Blank(9, 5);
    EXPECT_TRUE(Draw(target));
    EXPECT_PICTURE(target, ".###.....", ".#.#.###.", ".###.#.#.", ".....###.", ".........");
}

TEST_F(TextTest, WideGlyphsHaveRowsOfWholeBytes)
{
    text.AddGlyph(1, {0, 0}, {1, 0}, {10, 1}, bar);
    text.AddGlyph(2, {0, 1}, {1, 0}, {10, 2}, {0x80, 0x40, 0x01, 0x80});
    Surface* const target = Blank(12, 3);
    EXPECT_TRUE(Draw(target));
    EXPECT_PICTURE(target, ".##########.", ".#........#.", "........##..");
}

TEST_F(TextTest, StringsThatAreEnumeratedAreDrawnWhole)
{
    for (LONG i = 0; i < 3; ++i)
        AddRing(i * 3, 3);
    text.Enumerate(2);
    ASSERT_EQ(text.pgp, nullptr);
    Surface* const target = Blank(9, 3);
    EXPECT_TRUE(Draw(target));
    EXPECT_PICTURE(target, "#########", "#.##.##.#", "#########");
}

TEST_F(TextTest, AnEnumerationThatFailsDrawsNothing)
{
    AddRing(0, 3);
    text.Enumerate(1);
    text.failEnumeration = true;
    Surface* const target = Blank(3, 3);
    RECTL opaque = {0, 0, 3, 3};
    EXPECT_FALSE(Draw(target, nullptr, nullptr, &opaque));
    EXPECT_PICTURE(target, "...", "...", "...");
}

TEST_F(TextTest, TheOpaqueRectangleLiesUnderTheText)
{
    AddRing(1, 3);
    RECTL opaque = {0, 0, 4, 2};
    Surface* const target = Picture({"999999", "999999", "999999"});
    EXPECT_TRUE(Draw(target, nullptr, nullptr, &opaque));
    EXPECT_PICTURE(target, "2###99", "2#2#99", "9###99");
}

TEST_F(TextTest, TheOpaqueRectangleIsCopiedWhateverTheMix)
{
    AddRing(0, 3);
    RECTL opaque = {0, 0, 4, 3};
    Surface* const target = Picture({"9999", "9999", "9999"});
    EXPECT_TRUE(Draw(target, nullptr, nullptr, &opaque, XorPen));
    EXPECT_PICTURE(target, "3332", "3232", "3332"); // 2 XOR 1 on the ring
}

TEST_F(TextTest, AnOpaqueRectangleNeedsNoString)
{
    RECTL opaque = {1, 0, 3, 1};
    Surface* const target = Blank(4, 1);
    EXPECT_TRUE(EngTextOut(target, nullptr, nullptr, nullptr, nullptr, &opaque, nullptr, &back, nullptr, CopyPen));
    EXPECT_PICTURE(target, ".22.");
}

TEST_F(TextTest, ExtraRectanglesAreForegroundUpToTheEmptyOne)
{
    AddRing(0, 3);
    RECTL extra[] = {{0, 4, 5, 5}, {4, 0, 5, 2}, {0, 0, 0, 0}, {0, 3, 9, 4}};
    Surface* const target = Blank(6, 5);
    EXPECT_TRUE(Draw(target, nullptr, extra));
    EXPECT_PICTURE(target, "###.#.", "#.#.#.", "###...", "......", "#####.");
}

TEST_F(TextTest, OverlappingGlyphsAndLinesAreMixedOnce)
{
    AddRing(0, 3);
    AddRing(2, 3);
    RECTL extra[] = {{0, 1, 5, 2}, {0, 0, 0, 0}};
    Surface* const target = Picture({"#####", "#####", "#####"});
    EXPECT_TRUE(Draw(target, nullptr, extra, nullptr, XorPen));
    EXPECT_PICTURE(target, ".....", ".....", ".....");
}

TEST_F(TextTest, AllOfItIsClipped)
{
    AddRing(-1, 3);
    AddRing(3, 4);
    RECTL opaque = {0, 0, 5, 5}, extra[] = {{0, 3, 5, 4}, {0, 0, 0, 0}};
    ClipObject clip(std::vector<RECTL>{{0, 0, 2, 4}, {4, 2, 9, 9}});
    Surface* const target = Picture({"99999", "99999", "99999", "99999"});
    EXPECT_TRUE(Draw(target, &clip, extra, &opaque));
    EXPECT_PICTURE(target, "##999", "2#999", "##992", "##99#");
}

TEST_F(TextTest, GlyphsFarAwayAreNotDrawn)
{
    text.AddGlyph(1, {INT32_MAX, INT32_MAX}, {5, 5}, {3, 3}, ring);
    text.AddGlyph(2, {INT32_MIN, 0}, {-5, 0}, {3, 3}, ring);
    RECTL extra[] = {{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, {0, 0, 0, 0}};
    Surface* const target = Blank(2, 1);
    EXPECT_TRUE(Draw(target));
    EXPECT_PICTURE(target, "..");
    EXPECT_TRUE(Draw(target, nullptr, extra));
    EXPECT_PICTURE(target, "##");
}

TEST_F(TextTest, BrushesArePatternsFromTheGivenOrigin)
{
    AddRing(0, 3);
    Brush foreground = Brush::Pattern(*Picture({"34"})), background = Brush::Pattern(*Picture({"56"}));
    RECTL opaque = {0, 0, 4, 3};
    POINTL origin = {1, 0};
    Surface* const target = Blank(4, 3);
    EXPECT_TRUE(
        EngTextOut(target, &text, &font, nullptr, nullptr, &opaque, &foreground, &background, &origin, CopyPen));
    EXPECT_PICTURE(target, "4345", "4545", "4345");
}

TEST_F(TextTest, EmptyGlyphsAreBlanks)
{
    text.AddGlyph(3, {0, 0}, {0, 0}, {0, 0}, {});
    AddRing(0, 3);
    Surface* const target = Blank(3, 3);
    EXPECT_TRUE(Draw(target));
    EXPECT_PICTURE(target, "###", "#.#", "###");
}

TEST_F(TextTest, MissingGlyphsBrushesAndTargetsAreRefused)
{
    AddRing(0, 3);
    RECTL opaque = {0, 0, 3, 3};
    Surface* const target = Blank(3, 3);
    EXPECT_FALSE(EngTextOut(nullptr, &text, &font, nullptr, nullptr, nullptr, &fore, &back, nullptr, CopyPen));
    EXPECT_FALSE(EngTextOut(target, &text, &font, nullptr, nullptr, nullptr, nullptr, &back, nullptr, CopyPen));
    EXPECT_FALSE(EngTextOut(target, &text, &font, nullptr, nullptr, &opaque, &fore, nullptr, nullptr, CopyPen));
    text.glyphs[0].pgdf = nullptr;
    EXPECT_FALSE(Draw(target));
    STROBJ foreign = text;
    EXPECT_FALSE(EngTextOut(target, &foreign, &font, nullptr, nullptr, nullptr, &fore, &back, nullptr, CopyPen));
    EXPECT_PICTURE(target, "...", "...", "...");
    for (const char* const violation : {"EngTextOut: null target", "EngTextOut: null foreground brush",
                                        "EngTextOut: null opaque brush", "EngTextOut: null glyph", "a foreign STROBJ"})
        ExpectViolation(violation);
}

} // namespace
