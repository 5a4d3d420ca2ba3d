#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;

constexpr FIX Px(double pixels)
{
    return static_cast<FIX>(pixels * 16);
}

constexpr MIX CopyPen = 0x0D0D, XorPen = 0x0707;

LINEATTRS Cosmetic(FLONG fl = 0)
{
    LINEATTRS attributes = {};
    attributes.fl = fl;
    attributes.elWidth.l = 1;
    return attributes;
}

class CosmeticLines : public RasterTest {
protected:
    BOOL LineTo(Surface* target, LONG x1, LONG y1, LONG x2, LONG y2, CLIPOBJ* pco = nullptr, MIX mix = CopyPen)
    {
        RECTL bounds = target->Bounds();
        return EngLineTo(target, pco, &brush, x1, y1, x2, y2, &bounds, mix);
    }
    BOOL Stroke(Surface* target, const std::vector<POINTFIX>& points, LINEATTRS& attributes, MIX mix = CopyPen,
                FLONG flags = PD_BEGINSUBPATH | PD_ENDSUBPATH)
    {
        Path path;
        path.Add(flags, points);
        return EngStrokePath(target, &path, nullptr, nullptr, &brush, nullptr, &attributes, mix);
    }
    BOOL Stroke(Surface* target, const std::vector<POINTFIX>& points)
    {
        LINEATTRS attributes = Cosmetic();
        return Stroke(target, points, attributes);
    }
    void SetStyle(LINEATTRS& attributes, std::vector<LONG> lengths)
    {
        style.clear();
        for (const LONG length : lengths)
            style.push_back({.l = length});
        attributes.cstyle = static_cast<ULONG>(style.size());
        attributes.pstyle = style.data();
    }

    Brush brush = Brush::Solid(1);
    std::vector<FLOAT_LONG> style;
};

TEST_F(CosmeticLines, LeaveOutTheirLastPixel)
{
    Surface* const target = Blank(5, 5);
    EXPECT_TRUE(LineTo(target, 0, 0, 4, 0));
    EXPECT_TRUE(LineTo(target, 4, 1, 0, 1));
    EXPECT_TRUE(LineTo(target, 1, 2, 1, 4));
    EXPECT_TRUE(LineTo(target, 3, 4, 3, 2));
    EXPECT_PICTURE(target, "####.", ".####", ".#...", ".#.#.", "...#.");
    EXPECT_TRUE(LineTo(target, 4, 4, 4, 4)); // a point is none
    EXPECT_PICTURE(target, "####.", ".####", ".#...", ".#.#.", "...#.");
}

TEST_F(CosmeticLines, TakeTheNearestPixelOfEachColumn)
{
    Surface* const target = Blank(6, 3);
    EXPECT_TRUE(LineTo(target, 0, 0, 5, 2)); // rows 0, 0.4, 0.8, 1.2, 1.6
    EXPECT_PICTURE(target, "##....", "..##..", "....#.");
    Surface* const steep = Blank(3, 6);
    EXPECT_TRUE(LineTo(steep, 2, 5, 0, 0)); // columns 2, 1.6, 1.2, 0.8, 0.4 from below
    EXPECT_PICTURE(steep, "...", "#..", ".#.", ".#.", "..#", "..#");
}

TEST_F(CosmeticLines, TakeTheUpperOrLeftOneOfTwoEquallyNearPixels)
{
    Surface* const falling = Blank(5, 3);
    EXPECT_TRUE(LineTo(falling, 0, 0, 4, 2)); // rows 0, 0.5, 1, 1.5
    EXPECT_PICTURE(falling, "##...", "..##.", ".....");
    Surface* const back = Blank(5, 3);
    EXPECT_TRUE(LineTo(back, 4, 2, 0, 0)); // the same pixels backwards
    EXPECT_PICTURE(back, ".#...", "..##.", "....#");
    Surface* const rising = Blank(5, 3);
    EXPECT_TRUE(LineTo(rising, 0, 2, 4, 0)); // rows 2, 1.5, 1, 0.5
    EXPECT_PICTURE(rising, "...#.", ".##..", "#....");
    Surface* const steep = Blank(3, 5);
    EXPECT_TRUE(LineTo(steep, 0, 0, 2, 4)); // columns 0, 0.5, 1, 1.5
    EXPECT_PICTURE(steep, "#..", "#..", ".#.", ".#.", "...");
    Surface* const steepBack = Blank(3, 5);
    EXPECT_TRUE(LineTo(steepBack, 2, 0, 0, 4)); // columns 2, 1.5, 1, 0.5
    EXPECT_PICTURE(steepBack, "..#", ".#.", ".#.", "#..", "...");
}

TEST_F(CosmeticLines, GoInAllDiagonals)
{
    Surface* const target = Blank(7, 7);
    for (const POINTL& end : {POINTL{0, 0}, POINTL{6, 0}, POINTL{0, 6}, POINTL{6, 6}})
        EXPECT_TRUE(LineTo(target, 3, 3, end.x, end.y));
    EXPECT_PICTURE(target, ".......", ".#...#.", "..#.#..", "...#...", "..#.#..", ".#...#.", ".......");
}

TEST_F(CosmeticLines, AreCutToSurfaceAndClipWithoutBending)
{
    Surface* const target = Blank(4, 3);
    EXPECT_TRUE(LineTo(target, -4, -2, 8, 4)); // rows -2, -1.5 ... : through 0, 0 like above
    EXPECT_PICTURE(target, "##..", "..##", "....");
    ClipObject clip(std::vector<RECTL>{{1, 0, 2, 3}, {3, 0, 4, 3}});
    Surface* const clipped = Blank(4, 3);
    EXPECT_TRUE(LineTo(clipped, -4, -2, 8, 4, &clip));
    EXPECT_PICTURE(clipped, ".#..", "...#", "....");
}

TEST_F(CosmeticLines, ReachTheEndsOfTheRange)
{
    Surface* const target = Blank(3, 3);
    EXPECT_TRUE(LineTo(target, INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX));
    EXPECT_PICTURE(target, "#..", ".#.", "..#");
    Surface* const flat = Blank(3, 2);
    EXPECT_TRUE(LineTo(flat, INT32_MAX, 1, INT32_MIN, 1));
    EXPECT_PICTURE(flat, "...", "###");
}

TEST_F(CosmeticLines, MixWithTheTarget)
{
    Surface* const target = Picture({"##.."});
    EXPECT_TRUE(LineTo(target, 0, 0, 4, 0, nullptr, XorPen));
    EXPECT_PICTURE(target, "..##");
}

TEST_F(CosmeticLines, LightThePixelsWhoseDiamondsTheyLeave)
{
    struct Case {
        double from, to;
        const char* picture;
    };
    const Case cases[] = {
        {0.25, 3.75, "####.."}, // starts in the diamond of 0, ends in that of 4
        {0.5, 3.5, ".###.."}, // both ends between diamonds
        {3.5, 0.5, ".###.."},   {3.25, 0.75, "..##.."}, // from the diamond of 3 into that of 1
        {0.25, 0.75, "#....."}, {0.6875, 1.3125, "......"}, // within the diamond of 1
    };
    for (const Case& test : cases) {
        Surface* const across = Blank(6, 1);
        EXPECT_TRUE(Stroke(across, {{Px(test.from), 0}, {Px(test.to), 0}}));
        EXPECT_PICTURE(across, test.picture) << test.from;
    }
}

TEST_F(CosmeticLines, OwnTheLowerBordersOfDiamonds)
{
    Surface* const target = Blank(3, 2);
    EXPECT_TRUE(Stroke(target, {{Px(0.5), Px(0.5)}, {Px(1), Px(0.5)}})); // ends in the lower corner of pixel 1
    EXPECT_PICTURE(target, "...", "...");
    EXPECT_TRUE(Stroke(target, {{Px(1), Px(0.5)}, {Px(1.5), Px(0.5)}})); // starts there
    EXPECT_PICTURE(target, ".#.", "...");
    Surface* const steep = Blank(2, 3);
    EXPECT_TRUE(Stroke(steep, {{Px(0.5), Px(0.5)}, {Px(0.5), Px(1)}})); // ends in the right corner of pixel 1
    EXPECT_PICTURE(steep, "..", "..", "..");
    EXPECT_TRUE(Stroke(steep, {{Px(0.5), Px(1)}, {Px(0.5), Px(1.5)}}));
    EXPECT_PICTURE(steep, "..", "#.", "..");
}

TEST_F(CosmeticLines, DoNotDependOnBeingCutIntoPieces)
{
    Surface* const whole = Blank(12, 6);
    Surface* const pieces = Blank(12, 6);
    EXPECT_TRUE(Stroke(whole, {{Px(0), Px(0)}, {Px(11), Px(5.5)}}));
    // Each piece ends where the next one starts, on all sixteenths of a pixel.
    std::vector<POINTFIX> points;
    for (FIX x = 0; x <= Px(11); x += 2)
        points.push_back({x, x / 2});
    LINEATTRS attributes = Cosmetic();
    EXPECT_TRUE(Stroke(pieces, points, attributes, XorPen)); // no pixel twice
    EXPECT_EQ(Shown(pieces), Shown(whole));
}

TEST_F(CosmeticLines, AClosedFigureIsDrawnRoundOnce)
{
    Surface* const target = Blank(5, 4);
    LINEATTRS attributes = Cosmetic();
    EXPECT_TRUE(Stroke(target, {{Px(1), Px(0)}, {Px(4), Px(0)}, {Px(4), Px(3)}, {Px(1), Px(3)}}, attributes, XorPen,
                       PD_BEGINSUBPATH | PD_ENDSUBPATH | PD_CLOSEFIGURE));
    EXPECT_PICTURE(target, ".####", ".#..#", ".#..#", ".####");
}

TEST_F(CosmeticLines, APixelPassedTwiceIsMixedTwice)
{
    Surface* const target = Blank(5, 3);
    LINEATTRS attributes = Cosmetic();
    EXPECT_TRUE(Stroke(target, {{Px(0), Px(1)}, {Px(4), Px(1)}, {Px(4), Px(0)}, {Px(2), Px(0)}, {Px(2), Px(3)}},
                       attributes, XorPen));
    EXPECT_PICTURE(target, "..###", "##.##", "..#..");
}

TEST_F(CosmeticLines, RunsOfAPathGoOnWhereTheLastOneEnded)
{
    Path path;
    path.Add(PD_BEGINSUBPATH, {{Px(0), Px(0)}, {Px(2), Px(0)}});
    path.Add(0, {{Px(4), Px(2)}});
    path.Add(PD_BEZIERS | PD_ENDSUBPATH, {{Px(3), Px(2)}, {Px(2), Px(2)}, {Px(0), Px(2)}}); // a straight one
    path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH, {{Px(0), Px(1)}, {Px(1), Px(1)}});
    LINEATTRS attributes = Cosmetic();
    Surface* const target = Blank(5, 3);
    EXPECT_TRUE(EngStrokePath(target, &path, nullptr, nullptr, &brush, nullptr, &attributes, CopyPen));
    EXPECT_PICTURE(target, "###..", "#..#.", ".####");
}

TEST_F(CosmeticLines, ABrushMayHaveAPattern)
{
    Brush pattern = Brush::Pattern(*Picture({"#23"}));
    Path path;
    path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH, {{0, 0}, {Px(6), 0}});
    LINEATTRS attributes = Cosmetic();
    POINTL origin = {1, 0};
    Surface* const target = Blank(6, 1);
    EXPECT_TRUE(EngStrokePath(target, &path, nullptr, nullptr, &pattern, &origin, &attributes, CopyPen));
    EXPECT_PICTURE(target, "3#23#2");
}

TEST_F(CosmeticLines, AlternateOnesLightEveryOtherPixel)
{
    Surface* const target = Blank(8, 3);
    LINEATTRS attributes = Cosmetic(LA_ALTERNATE);
    EXPECT_TRUE(Stroke(target, {{Px(0), Px(0)}, {Px(7), Px(0)}, {Px(7), Px(3)}}, attributes));
    EXPECT_PICTURE(target, "#.#.#.#.", ".......#", "........"); // the corner is the 8th pixel
    Surface* const gap = Blank(8, 1);
    LINEATTRS startingWithGap = Cosmetic(LA_ALTERNATE | LA_STARTGAP);
    EXPECT_TRUE(Stroke(gap, {{Px(0), Px(0)}, {Px(8), Px(0)}}, startingWithGap));
    EXPECT_PICTURE(gap, ".#.#.#.#");
}

TEST_F(CosmeticLines, StylesCountThreePixelsAUnit)
{
    Surface* const target = Blank(16, 1);
    LINEATTRS attributes = Cosmetic();
    SetStyle(attributes, {2, 1});
    EXPECT_TRUE(Stroke(target, {{Px(0), Px(0)}, {Px(16), Px(0)}}, attributes));
    EXPECT_PICTURE(target, "######...######.");
    EXPECT_EQ(attributes.elStyleState.l, 0x20001); // 16 pixels leave 7 of 9: two units and a pixel
}

TEST_F(CosmeticLines, TheStyleStateSaysWhereTheStyleStarts)
{
    Surface* const target = Blank(12, 1);
    LINEATTRS attributes = Cosmetic();
    SetStyle(attributes, {2, 1});
    attributes.elStyleState.l = 0x10002; // a unit and two pixels in
    EXPECT_TRUE(Stroke(target, {{Px(0), Px(0)}, {Px(12), Px(0)}}, attributes));
    EXPECT_PICTURE(target, "#...######..");
}

TEST_F(CosmeticLines, AnOddStyleChangesSidesEachTime)
{
    Surface* const target = Blank(12, 1);
    LINEATTRS attributes = Cosmetic();
    SetStyle(attributes, {1});
    EXPECT_TRUE(Stroke(target, {{Px(0), Px(0)}, {Px(12), Px(0)}}, attributes));
    EXPECT_PICTURE(target, "###...###...");
    Surface* const gap = Blank(12, 1);
    LINEATTRS startingWithGap = Cosmetic(LA_STARTGAP);
    SetStyle(startingWithGap, {1});
    EXPECT_TRUE(Stroke(gap, {{Px(0), Px(0)}, {Px(12), Px(0)}}, startingWithGap));
    EXPECT_PICTURE(gap, "...###...###");
}

TEST_F(CosmeticLines, AStyleRunsRoundCornersAndStartsAgainWhenTold)
{
    LINEATTRS attributes = Cosmetic();
    SetStyle(attributes, {1, 1});
    Path path;
    path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH, {{Px(0), Px(0)}, {Px(4), Px(0)}, {Px(4), Px(4)}}); // 8 pixels
    path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH, {{Px(0), Px(2)}, {Px(4), Px(2)}});
    path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH | PD_RESETSTYLE, {{Px(0), Px(3)}, {Px(4), Px(3)}});
    Surface* const target = Blank(5, 4);
    EXPECT_TRUE(EngStrokePath(target, &path, nullptr, nullptr, &brush, nullptr, &attributes, CopyPen));
    EXPECT_PICTURE(target, "###..", ".....", "#...#", "###.#");
}

TEST_F(CosmeticLines, AStyleIsNotMovedByWhatIsCutOff)
{
    LINEATTRS attributes = Cosmetic();
    SetStyle(attributes, {1, 1});
    Surface* const target = Blank(9, 1);
    EXPECT_TRUE(Stroke(target, {{Px(-100), Px(0)}, {Px(100), Px(0)}}, attributes)); // 100 pixels leave 4 of 6
    EXPECT_PICTURE(target, "..###...#");
    Surface* const back = Blank(9, 1);
    attributes.elStyleState.l = 0;
    EXPECT_TRUE(Stroke(back, {{Px(100), Px(0)}, {Px(-100), Px(0)}}, attributes)); // pixel 8 is number 92, 2 of 6
    EXPECT_PICTURE(back, "..###...#");
}

TEST_F(CosmeticLines, AStyleOfNoLengthIsSolid)
{
    LINEATTRS attributes = Cosmetic();
    SetStyle(attributes, {0, 0});
    Surface* const target = Blank(3, 1);
    EXPECT_TRUE(Stroke(target, {{Px(0), Px(0)}, {Px(3), Px(0)}}, attributes));
    EXPECT_PICTURE(target, "###");
}

TEST_F(CosmeticLines, NullArgumentsAreRefused)
{
    Surface* const target = Blank(1, 1);
    LINEATTRS attributes = Cosmetic();
    Path path;
    RECTL bounds = {0, 0, 1, 1};
    EXPECT_FALSE(EngLineTo(nullptr, nullptr, &brush, 0, 0, 1, 1, &bounds, CopyPen));
    EXPECT_FALSE(EngLineTo(target, nullptr, nullptr, 0, 0, 1, 1, &bounds, CopyPen));
    EXPECT_FALSE(EngStrokePath(nullptr, &path, nullptr, nullptr, &brush, nullptr, &attributes, CopyPen));
    EXPECT_FALSE(EngStrokePath(target, nullptr, nullptr, nullptr, &brush, nullptr, &attributes, CopyPen));
    EXPECT_FALSE(EngStrokePath(target, &path, nullptr, nullptr, nullptr, nullptr, &attributes, CopyPen));
    EXPECT_FALSE(EngStrokePath(target, &path, nullptr, nullptr, &brush, nullptr, nullptr, CopyPen));
    for (const char* const violation :
         {"EngLineTo: null target", "EngLineTo: null brush", "EngStrokePath: null target", "EngStrokePath: null path",
          "EngStrokePath: null brush", "EngStrokePath: null line attributes"})
        ExpectViolation(violation);
    EXPECT_TRUE(EngStrokePath(target, &path, nullptr, nullptr, &brush, nullptr, &attributes, CopyPen)); // empty
}

} // namespace
