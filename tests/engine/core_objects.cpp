#include <gtest/gtest.h>

#include "engine/core/engine.h"
#include "engine/core/objects.h"
#include "engine/core/surface.h"

namespace {

using namespace engine;

constexpr COLORREF Red = 0x0000FF, Green = 0x00FF00, Blue = 0xFF0000, White = 0xFFFFFF;

TEST(PixelLayout, DefaultsHaveThePublishedDepths)
{
    const ULONG bits[] = {1, 4, 8, 16, 24, 32};
    for (ULONG format = BMF_1BPP; format <= BMF_32BPP; ++format) {
        EXPECT_EQ(PixelLayout::Default(format).BitsPerPixel(), bits[format - 1]);
        EXPECT_EQ(PixelLayout::Default(format).iBitmapFormat, format);
        EXPECT_EQ(PixelLayout::Default(format).IsIndexed(), format <= BMF_8BPP);
    }
    EXPECT_EQ(PixelLayout::Default(BMF_1BPP).palette, (std::vector<COLORREF>{0, White}));
    EXPECT_EQ(PixelLayout::Default(BMF_4BPP).palette.size(), 16u);
    EXPECT_EQ(PixelLayout::Default(BMF_8BPP).palette.size(), 256u);
}

TEST(PixelLayout, PaletteEndsAreTheFixedColours)
{
    const std::vector<COLORREF> sixteen = PixelLayout::Default(BMF_4BPP).palette;
    EXPECT_EQ(sixteen[7], 0x808080u);
    EXPECT_EQ(sixteen[8], 0xC0C0C0u);
    EXPECT_EQ(sixteen[9], Red);
    EXPECT_EQ(sixteen[12], Blue);
    const std::vector<COLORREF> system = PixelLayout::Default(BMF_8BPP).palette;
    EXPECT_EQ(system[9], 0xF0CAA6u);
    EXPECT_EQ(system[246], 0xF0FBFFu);
    EXPECT_EQ(system[255], White);
}

TEST(PixelLayout, PacksTheTopBitsOfEachComponent)
{
    EXPECT_EQ(PixelLayout::Default(BMF_16BPP).PixelOf(Red), 0xF800u);
    EXPECT_EQ(PixelLayout::Default(BMF_16BPP).PixelOf(Green), 0x07E0u);
    EXPECT_EQ(PixelLayout::FiveFiveFive().PixelOf(Green), 0x03E0u);
    EXPECT_EQ(PixelLayout::FiveFiveFive().PixelOf(Blue), 0x001Fu);
    EXPECT_EQ(PixelLayout::Default(BMF_32BPP).PixelOf(0x112233), 0x332211u);
    EXPECT_EQ(PixelLayout::Default(BMF_24BPP).PixelOf(Blue), 0x0000FFu);
}

TEST(PixelLayout, WidensComponentsByRepeatingTheirTopBits)
{
    const PixelLayout layout = PixelLayout::Default(BMF_16BPP);
    EXPECT_EQ(layout.ColourOf(0xFFFF), White);
    EXPECT_EQ(layout.ColourOf(0x8000), 0x84u); // 10000 -> 10000100
    EXPECT_EQ(layout.ColourOf(0x0020), 0x0400u); // 000001 -> 00000100
    EXPECT_EQ(PixelLayout::FiveFiveFive().ColourOf(0x4000), 0x84u);
    EXPECT_EQ(PixelLayout::Default(BMF_32BPP).ColourOf(0xFF332211), 0x112233u);
}

TEST(PixelLayout, ChoosesTheNearestPaletteEntryAndTheFirstOfEquals)
{
    const PixelLayout layout{BMF_8BPP, 0, 0, 0, {0x000000, 0x101010, 0x101010, 0xFFFFFF}};
    EXPECT_EQ(layout.PixelOf(0x0F0F0F), 1u);
    EXPECT_EQ(layout.PixelOf(0xF0F0F0), 3u);
    EXPECT_EQ(layout.ColourOf(1), 0x101010u);
    EXPECT_EQ(layout.ColourOf(4), 0u) << "outside the palette";
}

TEST(Translation, IsTrivialWherePixelsStay)
{
    const Translation same(PixelLayout::Default(BMF_8BPP), PixelLayout::Default(BMF_8BPP));
    EXPECT_EQ(same.flXlate, XO_TRIVIAL);
    EXPECT_EQ(same.iSrcType, PAL_INDEXED);
    EXPECT_EQ(same.cEntries, 0u);
    EXPECT_EQ(same.pulXlate, nullptr);
    EXPECT_EQ(same.Translate(200), 200u);
    const Translation widened(PixelLayout::Default(BMF_24BPP), PixelLayout::Default(BMF_32BPP));
    EXPECT_EQ(widened.flXlate, XO_TRIVIAL);
    EXPECT_EQ(widened.iSrcType, PAL_BGR);
}

TEST(Translation, HasATableForPaletteSources)
{
    const PixelLayout source{BMF_4BPP, 0, 0, 0, {Red, Green, Blue}};
    Translation translation(source, PixelLayout::Default(BMF_16BPP));
    EXPECT_EQ(translation.flXlate, XO_TABLE);
    EXPECT_EQ(translation.iSrcType, PAL_INDEXED);
    EXPECT_EQ(translation.iDstType, PAL_BITFIELDS);
    ASSERT_EQ(translation.cEntries, 3u);
    EXPECT_EQ(translation.pulXlate[0], 0xF800u);
    EXPECT_EQ(translation.pulXlate[2], 0x001Fu);
    EXPECT_EQ(translation.Translate(1), 0x07E0u);
    EXPECT_EQ(translation.Translate(3), 0u) << "outside the table";
    EXPECT_EQ(translation.vector, (std::vector<ULONG>{Red, Green, Blue}));
}

TEST(Translation, ComputesTheOtherPixels)
{
    const Translation down(PixelLayout::Default(BMF_32BPP), PixelLayout::FiveFiveFive());
    EXPECT_EQ(down.flXlate, 0u);
    EXPECT_EQ(down.pulXlate, nullptr);
    EXPECT_EQ(down.Translate(0xFF00FF), 0x7C1Fu);
    EXPECT_TRUE(down.vector.empty());
    const Translation toPalette(PixelLayout::Default(BMF_32BPP), PixelLayout::Default(BMF_4BPP));
    EXPECT_EQ(toPalette.Translate(0xFEFEFE), 15u);
}

TEST(Translation, DrawsOneBitPerPixelInTwoGivenPixels)
{
    Translation translation(PixelLayout::Default(BMF_32BPP), 0x112233, 0x445566);
    EXPECT_EQ(translation.flXlate, XO_TABLE);
    ASSERT_EQ(translation.cEntries, 2u);
    EXPECT_EQ(translation.pulXlate[0], 0x112233u);
    EXPECT_EQ(translation.pulXlate[1], 0x445566u);
    EXPECT_EQ(translation.source.iBitmapFormat, BMF_1BPP);
}

TEST(ClipObject, ComplexityFollowsTheRectangles)
{
    const ClipObject one({1, 2, 3, 4});
    EXPECT_EQ(one.iDComplexity, DC_RECT);
    EXPECT_EQ(one.rclBounds.bottom, 4);
    EXPECT_EQ(ClipObject({0, 0, 9, 9}, DC_TRIVIAL).iDComplexity, DC_TRIVIAL);
    EXPECT_EQ(ClipObject(std::vector<RECTL>{{0, 0, 1, 1}}).iDComplexity, DC_RECT);
    const ClipObject two(std::vector<RECTL>{{5, 5, 8, 8}, {0, 6, 4, 9}, {1, 5, 3, 6}});
    EXPECT_EQ(two.iDComplexity, DC_COMPLEX);
    EXPECT_EQ(two.iFComplexity, FC_RECT4);
    EXPECT_EQ(two.rclBounds.left, 0);
    EXPECT_EQ(two.rclBounds.top, 5);
    EXPECT_EQ(two.rclBounds.right, 8);
    EXPECT_EQ(two.rclBounds.bottom, 9);
    EXPECT_EQ(two.rectangles[0].left, 1) << "sorted by top, then left";
    EXPECT_EQ(two.rectangles[1].left, 5);
    EXPECT_EQ(two.rectangles[2].left, 0);
    EXPECT_NE(one.iUniq, two.iUniq);
}

TEST(Brush, SolidIsItsPixelEverywhere)
{
    const Brush brush = Brush::Solid(0xABCD);
    EXPECT_TRUE(brush.IsSolid());
    EXPECT_EQ(brush.PixelAt(-7, 1000), 0xABCDu);
    EXPECT_TRUE(brush.IsForeground(3, 3));
}

TEST(Brush, HatchesHaveTheirLinesInAnEightByEightTile)
{
    struct Line {
        ULONG hatch;
        LONG onX, onY, offX, offY;
    };
    const Line lines[] = {
        {HS_HORIZONTAL, 0, 4, 0, 3}, {HS_VERTICAL, 4, 0, 3, 0}, {HS_FDIAGONAL, 2, 2, 2, 3},
        {HS_BDIAGONAL, 5, 2, 2, 2},  {HS_CROSS, 4, 7, 5, 5},    {HS_DIAGCROSS, 7, 0, 1, 0},
    };
    for (const Line& line : lines) {
        const Brush brush = Brush::Hatch(line.hatch, 1, 2);
        EXPECT_FALSE(brush.IsSolid());
        EXPECT_EQ(brush.PixelAt(line.onX, line.onY), 1u) << "hatch " << line.hatch;
        EXPECT_EQ(brush.PixelAt(line.offX, line.offY), 2u) << "hatch " << line.hatch;
        EXPECT_EQ(brush.PixelAt(line.onX - 8, line.onY - 16), 1u) << "hatch " << line.hatch;
        EXPECT_FALSE(brush.IsForeground(line.offX, line.offY)) << "hatch " << line.hatch;
    }
}

TEST(Brush, PatternIsTiledInAllDirections)
{
    Engine engine;
    Surface* const pattern = MakeBitmap({3, 2}, PixelLayout::Default(BMF_8BPP));
    pattern->SetPixel(2, 1, 77);
    const Brush brush = Brush::Pattern(*pattern);
    EXPECT_EQ(brush.iSolidColor, 0xFFFFFFFFu);
    EXPECT_EQ(brush.PixelAt(2, 1), 77u);
    EXPECT_EQ(brush.PixelAt(5, 3), 77u);
    EXPECT_EQ(brush.PixelAt(-1, -1), 77u);
    EXPECT_EQ(brush.PixelAt(-2, -1), 0u);
}

TEST(Path, CountsItsLinesAndCurves)
{
    Path path;
    EXPECT_EQ(path.fl, PO_ALL_INTEGERS);
    path.Add(PD_BEGINSUBPATH, {{0, 0}, {160, 0}, {160, 160}});
    EXPECT_EQ(path.cCurves, 2u);
    EXPECT_EQ(path.fl, PO_ALL_INTEGERS);
    path.Add(PD_BEZIERS | PD_ENDSUBPATH, {{8, 0}, {16, 16}, {32, 32}});
    EXPECT_EQ(path.cCurves, 3u);
    EXPECT_EQ(path.fl, PO_BEZIERS);
}

TEST(Text, KeepsGlyphsAndTheirBits)
{
    Text text;
    text.AddGlyph(11, {5, 6}, {-1, -7}, {8, 2}, {0x81, 0x7E});
    text.AddGlyph(12, {15, 6}, {0, 0}, {1, 1}, {0x80});
    ASSERT_EQ(text.cGlyphs, 2u);
    ASSERT_NE(text.pgp, nullptr);
    EXPECT_EQ(text.pgp[0].hg, 11u);
    EXPECT_EQ(text.pgp[0].ptl.y, 6);
    EXPECT_EQ(text.pgp[0].pgdf->pgb->ptlOrigin.y, -7);
    EXPECT_EQ(text.pgp[0].pgdf->pgb->aj[1], 0x7E);
    EXPECT_EQ(text.pgp[1].pgdf->pgb->sizlBitmap.cx, 1);
    text.SetString(u"ab");
    EXPECT_EQ(text.pwszOrg[1], u'b');
    text.Enumerate(1);
    EXPECT_EQ(text.pgp, nullptr);
    text.AddGlyph(13, {}, {}, {1, 1}, {0});
    EXPECT_EQ(text.pgp, nullptr) << "stays enumerated";
    EXPECT_EQ(text.cGlyphs, 3u);
}

TEST(Font, LaysItsNamesBehindTheMetrics)
{
    Font font;
    EXPECT_EQ(font.Metrics(), nullptr);
    font.SetNames(u"Fam", u"", u"Face", u"U");
    IFIMETRICS* const metrics = font.Metrics();
    ASSERT_NE(metrics, nullptr);
    constexpr LONG start = sizeof(IFIMETRICS);
    EXPECT_EQ(metrics->dpwszFamilyName, start);
    EXPECT_EQ(metrics->dpwszStyleName, 0);
    EXPECT_EQ(metrics->dpwszFaceName, start + 8);
    EXPECT_EQ(metrics->dpwszUniqueName, start + 8 + 10);
    EXPECT_EQ(metrics->cjThis, static_cast<ULONG>(start + 8 + 10 + 4));
    EXPECT_EQ(font.metrics[static_cast<std::size_t>(start) + 2], 'a');
}

} // namespace
