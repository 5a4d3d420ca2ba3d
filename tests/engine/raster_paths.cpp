#include <limits>

#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;

constexpr FIX Px(double pixels)
{
    return static_cast<FIX>(pixels * 16);
}

constexpr MIX CopyPen = 0x0D0D, XorPen = 0x0707;
constexpr FLONG Open = PD_BEGINSUBPATH | PD_ENDSUBPATH, Closed = Open | PD_CLOSEFIGURE;

std::vector<POINTFIX> Rectangle(double left, double top, double right, double bottom)
{
    return {{Px(left), Px(top)}, {Px(right), Px(top)}, {Px(right), Px(bottom)}, {Px(left), Px(bottom)}};
}

class PathTest : public RasterTest {
protected:
    BOOL Fill(Surface* target, FLONG options = FP_ALTERNATEMODE, CLIPOBJ* pco = nullptr, MIX mix = CopyPen)
    {
        return EngFillPath(target, &path, pco, &brush, nullptr, mix, options);
    }
    BOOL Stroke(Surface* target, const LINEATTRS& attributes, MIX mix = CopyPen)
    {
        LINEATTRS copy = attributes;
        return EngStrokePath(target, &path, nullptr, nullptr, &brush, nullptr, &copy, mix);
    }
    LINEATTRS Wide(float width, ULONG cap, ULONG join = JOIN_MITER, float limit = 10)
    {
        LINEATTRS attributes = {};
        attributes.fl = LA_GEOMETRIC;
        attributes.iJoin = join;
        attributes.iEndCap = cap;
        attributes.elWidth.e = width;
        attributes.eMiterLimit = limit;
        return attributes;
    }
    LINEATTRS Dashed(std::vector<float> lengths, float start = 0, FLONG fl = 0)
    {
        style.clear();
        for (const float length : lengths)
            style.push_back({length});
        LINEATTRS attributes = Wide(1, ENDCAP_BUTT);
        attributes.fl |= fl;
        attributes.cstyle = static_cast<ULONG>(style.size());
        attributes.pstyle = style.data();
        attributes.elStyleState.e = start;
        return attributes;
    }

    Path path;
    Brush brush = Brush::Solid(1);
    std::vector<FLOAT_LONG> style;
};

using Fills = PathTest;

TEST_F(Fills, CoverThePixelsWhoseCentresAreInside)
{
    path.Add(Open, {{0, 0}, {Px(4), 0}, {0, Px(4)}});
    Surface* const target = Blank(5, 5);
    EXPECT_TRUE(Fill(target));
    EXPECT_PICTURE(target, "####.", "###..", "##...", "#....", ".....");
}

TEST_F(Fills, CentresOnLeftAndUpperEdgesAreInsideTheOthersAreNot)
{
    path.Add(Open, Rectangle(1, 1, 3, 3));
    Surface* const whole = Blank(5, 4);
    EXPECT_TRUE(Fill(whole));
    EXPECT_PICTURE(whole, ".....", ".##..", ".##..", ".....");
    Surface* const half = Blank(5, 4);
    path.subpaths.clear();
    path.Add(Open, Rectangle(0.5, 0.5, 3.5, 2.5));
    EXPECT_TRUE(Fill(half));
    EXPECT_PICTURE(half, ".....", ".###.", ".###.", ".....");
    Surface* const thin = Blank(5, 4);
    path.subpaths.clear();
    path.Add(Open, Rectangle(1.0625, 0, 1.9375, 3)); // between two columns of centres
    EXPECT_TRUE(Fill(thin));
    EXPECT_PICTURE(thin, ".....", ".....", ".....", ".....");
}

TEST_F(Fills, NeighboursMeetWithoutGapOrOverlap)
{
    // A fan of six triangles round (3.5, 3.25) that makes up the rectangle.
    const std::vector<POINTFIX> rim = {{Px(0), Px(0)}, {Px(5), Px(0)}, {Px(8), Px(0)},
                                       {Px(8), Px(6)}, {Px(2), Px(6)}, {Px(0), Px(6)}};
    Surface* const target = Blank(9, 7);
    for (std::size_t i = 0; i < rim.size(); ++i) {
        path.subpaths.clear();
        path.Add(Open, {{Px(3.5), Px(3.25)}, rim[i], rim[(i + 1) % rim.size()]});
        EXPECT_TRUE(Fill(target, FP_ALTERNATEMODE, nullptr, XorPen));
    }
    EXPECT_PICTURE(target, "########.", "########.", "########.", "########.", "########.", "########.", ".........");
}

TEST_F(Fills, AlternateModeLeavesAHoleAndWindingModeDoesNot)
{
    path.Add(Open, Rectangle(0, 0, 5, 5));
    path.Add(Open, Rectangle(1, 1, 4, 4));
    Surface* const alternate = Blank(5, 5);
    EXPECT_TRUE(Fill(alternate, FP_ALTERNATEMODE));
    EXPECT_PICTURE(alternate, "#####", "#...#", "#...#", "#...#", "#####");
    Surface* const winding = Blank(5, 5);
    EXPECT_TRUE(Fill(winding, FP_WINDINGMODE));
    EXPECT_PICTURE(winding, "#####", "#####", "#####", "#####", "#####");
    path.subpaths.clear();
    path.Add(Open, Rectangle(0, 0, 5, 5));
    path.Add(Open, Rectangle(4, 1, 1, 4)); // turns the other way
    Surface* const opposed = Blank(5, 5);
    EXPECT_TRUE(Fill(opposed, FP_WINDINGMODE));
    EXPECT_PICTURE(opposed, "#####", "#...#", "#...#", "#...#", "#####");
}

TEST_F(Fills, FollowCurves)
{
    // y = 24 t (1 - t), x = 10 (3 t^2 - 2 t^3): the left side is at 0.06, 0.24, 0.58, 1.15 and 2.11 in rows 1 to 5.
    path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH | PD_BEZIERS, {{0, 0}, {0, Px(8)}, {Px(10), Px(8)}, {Px(10), 0}});
    Surface* const target = Blank(11, 7);
    EXPECT_TRUE(Fill(target));
    EXPECT_PICTURE(target, "##########.", ".#########.", ".#########.", ".#########.", "..#######..", "...#####...",
                   "...........");
}

TEST_F(Fills, GoRoundTheVisiblePart)
{
    path.Add(Open, Rectangle(-100, -100, 3, 100));
    Surface* const target = Blank(5, 3);
    EXPECT_TRUE(Fill(target));
    EXPECT_PICTURE(target, "###..", "###..", "###..");
    ClipObject clip(std::vector<RECTL>{{0, 0, 2, 1}, {1, 1, 5, 3}});
    Surface* const clipped = Blank(5, 3);
    EXPECT_TRUE(Fill(clipped, FP_ALTERNATEMODE, &clip));
    EXPECT_PICTURE(clipped, "##...", ".##..", ".##..");
}

TEST_F(Fills, ReachTheEndsOfTheRange)
{
    path.Add(Open, {{INT32_MIN, INT32_MIN}, {INT32_MAX, INT32_MIN}, {INT32_MAX, INT32_MAX}});
    Surface* const target = Blank(3, 3);
    EXPECT_TRUE(Fill(target)); // right of the main diagonal
    EXPECT_PICTURE(target, "###", ".##", "..#");
}

TEST_F(Fills, UseBrushOriginAndMix)
{
    path.Add(Open, Rectangle(0, 0, 4, 1));
    Brush hatch = Brush::Hatch(HS_VERTICAL, 6, 7);
    POINTL origin = {-3, 0}; // the line at 4 comes to 1
    Surface* const target = Picture({"55555"});
    EXPECT_TRUE(EngFillPath(target, &path, nullptr, &hatch, &origin, 0x0B0D, FP_ALTERNATEMODE));
    EXPECT_PICTURE(target, "56555");
}

using WideLines = PathTest;

TEST_F(WideLines, EndAtTheirPointsWithAButtCap)
{
    path.Add(Open, {{Px(2), Px(2)}, {Px(8), Px(2)}});
    Surface* const target = Blank(10, 5);
    EXPECT_TRUE(Stroke(target, Wide(3, ENDCAP_BUTT)));
    EXPECT_PICTURE(target, "..........", "..######..", "..######..", "..######..", "..........");
}

TEST_F(WideLines, ASquareCapAddsHalfTheWidth)
{
    path.Add(Open, {{Px(2), Px(2)}, {Px(8), Px(2)}});
    Surface* const target = Blank(11, 5);
    EXPECT_TRUE(Stroke(target, Wide(3, ENDCAP_SQUARE)));
    EXPECT_PICTURE(target, "...........", ".#########.", ".#########.", ".#########.", "...........");
}

TEST_F(WideLines, ARoundCapAddsHalfADisc)
{
    path.Add(Open, {{Px(4), Px(3)}, {Px(6), Px(3)}});
    Surface* const target = Blank(11, 7);
    EXPECT_TRUE(Stroke(target, Wide(5, ENDCAP_ROUND))); // half widths of the disc: 2.5, 2.3, 1.5
    EXPECT_PICTURE(target, "...........", "...#####...", "..#######..", "..#######..", "..#######..", "...#####...",
                   "...........");
}

// From (1, 2) to the right, then down from (6, 2); five wide.
TEST_F(WideLines, TheThreeJoins)
{
    path.Add(Open, {{Px(1), Px(2)}, {Px(6), Px(2)}, {Px(6), Px(7)}});
    Surface* const miter = Blank(10, 8);
    EXPECT_TRUE(Stroke(miter, Wide(5, ENDCAP_BUTT, JOIN_MITER)));
    EXPECT_PICTURE(miter, ".########.", ".########.", ".########.", ".########.", ".########.", "....#####.",
                   "....#####.", "..........");
    Surface* const bevel = Blank(10, 8);
    EXPECT_TRUE(Stroke(bevel, Wide(5, ENDCAP_BUTT, JOIN_BEVEL)));
    EXPECT_PICTURE(bevel, ".######...", ".#######..", ".########.", ".########.", ".########.", "....#####.",
                   "....#####.", "..........");
    Surface* const round = Blank(10, 8);
    EXPECT_TRUE(Stroke(round, Wide(5, ENDCAP_BUTT, JOIN_ROUND)));
    EXPECT_PICTURE(round, ".#######..", ".########.", ".########.", ".########.", ".########.", "....#####.",
                   "....#####.", "..........");
}

TEST_F(WideLines, AMiterLongerThanTheLimitIsABevel)
{
    path.Add(Open, {{Px(1), Px(2)}, {Px(6), Px(2)}, {Px(6), Px(7)}}); // 1.414 at a right angle
    Surface* const within = Blank(10, 8);
    EXPECT_TRUE(Stroke(within, Wide(5, ENDCAP_BUTT, JOIN_MITER, 1.42f)));
    EXPECT_EQ(Shown(within).substr(1, 10), ".########.");
    Surface* const beyond = Blank(10, 8);
    EXPECT_TRUE(Stroke(beyond, Wide(5, ENDCAP_BUTT, JOIN_MITER, 1.41f)));
    EXPECT_EQ(Shown(beyond).substr(1, 10), ".######...");
}

TEST_F(WideLines, AClosedFigureHasJoinsAllRound)
{
    path.Add(Closed, Rectangle(2, 2, 7, 5));
    Surface* const target = Blank(10, 8);
    EXPECT_TRUE(Stroke(target, Wide(3, ENDCAP_BUTT)));
    EXPECT_PICTURE(target, "..........", ".########.", ".########.", ".########.", ".########.", ".########.",
                   ".########.", "..........");
    Surface* const thin = Blank(10, 8);
    EXPECT_TRUE(Stroke(thin, Wide(1, ENDCAP_BUTT)));
    EXPECT_PICTURE(thin, "..........", "..........", "..######..", "..#....#..", "..#....#..", "..######..",
                   "..........", "..........");
}

TEST_F(WideLines, EachPixelIsMixedOnce)
{
    path.Add(Open, {{Px(1), Px(1)}, {Px(7), Px(1)}, {Px(4), Px(1)}, {Px(4), Px(4)}}); // back over itself
    Surface* const target = Blank(8, 5);
    EXPECT_TRUE(Stroke(target, Wide(1, ENDCAP_BUTT, JOIN_BEVEL), XorPen));
    EXPECT_PICTURE(target, "........", ".######.", "....#...", "....#...", "........");
}

TEST_F(WideLines, NothingIsThinnerThanAPixel)
{
    path.Add(Open, {{Px(1), Px(1)}, {Px(4), Px(1)}});
    for (const float width : {0.0f, 0.25f, -3.0f, std::numeric_limits<float>::quiet_NaN()}) {
        Surface* const target = Blank(5, 3);
        EXPECT_TRUE(Stroke(target, Wide(width, ENDCAP_BUTT)));
        EXPECT_PICTURE(target, ".....", ".###.", ".....");
    }
}

TEST_F(WideLines, APointIsADotUnlessTheCapIsButt)
{
    path.Add(Open, {{Px(2), Px(2)}, {Px(2), Px(2)}});
    Surface* const butt = Blank(5, 5);
    EXPECT_TRUE(Stroke(butt, Wide(3, ENDCAP_BUTT)));
    EXPECT_PICTURE(butt, ".....", ".....", ".....", ".....", ".....");
    Surface* const square = Blank(5, 5);
    EXPECT_TRUE(Stroke(square, Wide(3, ENDCAP_SQUARE)));
    EXPECT_PICTURE(square, ".....", ".###.", ".###.", ".###.", ".....");
    Surface* const round = Blank(7, 7);
    path.subpaths.clear();
    path.Add(Open, {{Px(3), Px(3)}});
    EXPECT_TRUE(Stroke(round, Wide(5, ENDCAP_ROUND)));
    EXPECT_PICTURE(round, ".......", "..###..", ".#####.", ".#####.", ".#####.", "..###..", ".......");
}

TEST_F(WideLines, StylesMakeDashes)
{
    path.Add(Open, {{Px(0), Px(0)}, {Px(14), Px(0)}});
    Surface* const target = Blank(14, 1);
    EXPECT_TRUE(Stroke(target, Dashed({4, 2})));
    EXPECT_PICTURE(target, "####..####..##");
    Surface* const gap = Blank(14, 1);
    EXPECT_TRUE(Stroke(gap, Dashed({4, 2}, 0, LA_STARTGAP)));
    EXPECT_PICTURE(gap, "....##....##..");
    Surface* const started = Blank(14, 1);
    EXPECT_TRUE(Stroke(started, Dashed({4, 2}, 5)));
    EXPECT_PICTURE(started, ".####..####..#");
    Surface* const odd = Blank(14, 1);
    EXPECT_TRUE(Stroke(odd, Dashed({3})));
    EXPECT_PICTURE(odd, "###...###...##");
}

TEST_F(WideLines, ADashGoesRoundACornerAndAStyleOnAlongThePath)
{
    path.Add(Open, {{Px(0), Px(0)}, {Px(4), Px(0)}, {Px(4), Px(6)}});
    Surface* const target = Blank(6, 6);
    EXPECT_TRUE(Stroke(target, Dashed({6, 2}))); // two pixels down from the corner, a gap of two, two more
    EXPECT_PICTURE(target, "#####.", "....#.", "......", "......", "....#.", "....#.");
    // A closed figure's last side has dashes too.
    path.subpaths.clear();
    path.Add(Closed, {{Px(0), Px(0)}, {Px(4), Px(0)}, {Px(4), Px(4)}, {Px(0), Px(4)}});
    Surface* const closed = Blank(6, 6);
    EXPECT_TRUE(Stroke(closed, Dashed({12, 2})));
    EXPECT_PICTURE(closed, "#####.", "#...#.", "....#.", "....#.", "#####.", "......");
}

TEST_F(WideLines, StylesThatNobodyCouldCountAreSolid)
{
    path.Add(Open, {{Px(0), Px(0)}, {Px(4), Px(0)}});
    for (const float length : {0.0f, 1e-9f, std::numeric_limits<float>::quiet_NaN(), -1.0f}) {
        Surface* const target = Blank(5, 1);
        EXPECT_TRUE(Stroke(target, Dashed({length, length})));
        EXPECT_PICTURE(target, "####.");
    }
    path.subpaths.clear();
    path.Add(Open, {{INT32_MIN, 0}, {INT32_MAX, 0}});
    Surface* const target = Blank(5, 1);
    EXPECT_TRUE(Stroke(target, Dashed({1, 1})));
    EXPECT_PICTURE(target, "#####");
}

TEST_F(WideLines, SlantingOnesKeepTheirWidth)
{
    path.Add(Open, {{Px(1), Px(1)}, {Px(5), Px(5)}});
    Surface* const target = Blank(7, 7);
    EXPECT_TRUE(Stroke(target, Wide(2, ENDCAP_BUTT))); // up to a pixel from the diagonal, between both ends
    EXPECT_PICTURE(target, ".......", ".##....", ".###...", "..###..", "...###.", "....#..", ".......");
}

using StrokesAndFills = PathTest;

TEST_F(StrokesAndFills, TheStrokeLiesOverTheFill)
{
    path.Add(Closed, Rectangle(1, 1, 6, 5));
    Brush fill = Brush::Solid(2);
    LINEATTRS attributes = Wide(1, ENDCAP_BUTT);
    Surface* const target = Blank(8, 7);
    EXPECT_TRUE(EngStrokeAndFillPath(target, &path, nullptr, nullptr, &brush, &attributes, &fill, nullptr, CopyPen,
                                     FP_ALTERNATEMODE));
    EXPECT_PICTURE(target, "........", ".######.", ".#2222#.", ".#2222#.", ".#2222#.", ".######.", "........");
}

TEST_F(StrokesAndFills, BothUseTheMix)
{
    path.Add(Closed, Rectangle(1, 1, 4, 3));
    Brush fill = Brush::Solid(2);
    LINEATTRS attributes = {};
    Surface* const target = Picture(Art(5, "44444"));
    EXPECT_TRUE(EngStrokeAndFillPath(target, &path, nullptr, nullptr, &brush, &attributes, &fill, nullptr, XorPen,
                                     FP_ALTERNATEMODE));
    EXPECT_PICTURE(target, "44444", "47775", "47665", "45555", "44444");
}

TEST_F(StrokesAndFills, NullArgumentsAreRefused)
{
    Surface* const target = Blank(1, 1);
    LINEATTRS attributes = {};
    const auto both = [&](SURFOBJ* pso, PATHOBJ* ppo, BRUSHOBJ* stroke, BRUSHOBJ* fill) {
        return EngStrokeAndFillPath(pso, ppo, nullptr, nullptr, stroke, &attributes, fill, nullptr, CopyPen, 1);
    };
    EXPECT_FALSE(both(nullptr, &path, &brush, &brush));
    EXPECT_FALSE(both(target, nullptr, &brush, &brush));
    EXPECT_FALSE(both(target, &path, &brush, nullptr));
    EXPECT_FALSE(both(target, &path, nullptr, &brush));
    EXPECT_FALSE(EngFillPath(nullptr, &path, nullptr, &brush, nullptr, CopyPen, FP_ALTERNATEMODE));
    for (const char* const violation :
         {"EngStrokeAndFillPath: null target", "EngFillPath: null path", "EngFillPath: null brush",
          "EngStrokePath: null brush", "EngFillPath: null target"})
        ExpectViolation(violation);
}

} // namespace
