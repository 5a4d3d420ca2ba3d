#include "tests/engine/gdi_recorder.h"

namespace gdi_tests {
namespace {

    constexpr ULONG Hatched = 2;

    Metafile NoPen()
    {
        return Metafile().Add(SelectObject, Words(NullPen));
    }

    Metafile NoBrush()
    {
        return Metafile().Add(SelectObject, Words(NullBrush));
    }

    class GdiShapes : public Recorded { };

    TEST_F(GdiShapes, ARectangleWithoutPenIsABlockFilledWithTheBrush)
    {
        EXPECT_EQ(Play(NoPen().Add(Rectangle, Words(2, 3, 12, 9))),
                  Lines({"BitBlt (2,3,12,9) rop F0F0 brush FFFFFF clip -"}));
    }

    TEST_F(GdiShapes, AFilledRectangleIsCutToTheTarget)
    {
        EXPECT_EQ(Play(NoPen().Add(Rectangle, Words(-5, 20, 60, 90))),
                  Lines({"BitBlt (0,20,40,30) rop F0F0 brush FFFFFF clip -"}));
    }

    TEST_F(GdiShapes, AFilledRectangleUnderAComplexClipComesWithIt)
    {
        EXPECT_EQ(Play(NoPen().Add(ExcludeClip, Words(5, 0, 8, 30)).Add(Rectangle, Words(2, 3, 12, 9))),
                  Lines({"BitBlt (2,3,12,9) rop F0F0 brush FFFFFF clip parts(2,3,12,9):(2,3,5,9)(8,3,12,9)"}));
    }

    TEST_F(GdiShapes, BinaryOperationsOnBlocksBecomeTernaryOnesOfThePattern)
    {
        constexpr const char* rops[] = {"0",    "505",  "A0A",  "F0F",  "5050", "5555", "5A5A", "5F5F",
                                        "A0A0", "A5A5", "AAAA", "AFAF", "F0F0", "F5F5", "FAFA", "FFFF"};
        for (ULONG rop2 = 1; rop2 <= 16; ++rop2)
            EXPECT_EQ(Play(NoPen().Add(SetRop2, Words(rop2)).Add(Rectangle, Words(2, 3, 12, 9))),
                      Lines({std::string("BitBlt (2,3,12,9) rop ") + rops[rop2 - 1] + " brush FFFFFF clip -"}));
    }

    TEST_F(GdiShapes, BetweenTheLinesOfAnOpenHatchTheTargetStays)
    {
        Metafile metafile = NoPen();
        metafile.Add(CreateBrush, Words(1, Hatched, 0x0000FF, 4))
            .Add(SelectObject, Words(1))
            .Add(SetBrushOrg, Words(3, 4));
        metafile.Add(Rectangle, Words(2, 3, 12, 9)).Add(SetBkMode, Words(1)).Add(Rectangle, Words(2, 3, 12, 9));
        EXPECT_EQ(Play(metafile),
                  Lines({"BitBlt (2,3,12,9) rop F0F0 hatch 4 FF0000 on FFFFFF origin (3,4) clip -",
                         "BitBlt (2,3,12,9) rop AAF0 hatch 4 FF0000 on FFFFFF origin (3,4) clip -"}));
    }

    TEST_F(GdiShapes, HatchesThatAreNoneAreSolid)
    {
        Metafile metafile = NoPen();
        metafile.Add(SetTextColor, Words(0x112233)).Add(SetBkColor, Words(0x445566));
        for (ULONG hatch = 6; hatch <= 11; ++hatch)
            metafile.Add(CreateBrush, Words(1, Hatched, 0x0000FF, hatch))
                .Add(SelectObject, Words(1))
                .Add(Rectangle, Words(0, 0, 1, 1));
        EXPECT_EQ(
            Play(metafile),
            Lines({"BitBlt (0,0,1,1) rop F0F0 brush FF0000 clip -", "BitBlt (0,0,1,1) rop F0F0 brush FF0000 clip -",
                   "BitBlt (0,0,1,1) rop F0F0 brush 332211 clip -", "BitBlt (0,0,1,1) rop F0F0 brush 332211 clip -",
                   "BitBlt (0,0,1,1) rop F0F0 brush 665544 clip -", "BitBlt (0,0,1,1) rop F0F0 brush 665544 clip -"}));
    }

    TEST_F(GdiShapes, ARectangleWithPenAndBrushIsStrokedAndFilledAtOnce)
    {
        EXPECT_EQ(Play(Metafile().Add(Rectangle, Words(2, 3, 12, 9))),
                  Lines({"StrokeAndFillPath path ml(2,3)(12,3)(12,9)(2,9)z line 1 brush 0 over brush FFFFFF mix D0D "
                         "options 1 clip all(1,2,14,11)"}));
    }

    TEST_F(GdiShapes, WithoutBrushAShapeIsStroked)
    {
        EXPECT_EQ(Play(NoBrush().Add(Rectangle, Words(2, 3, 12, 9))),
                  Lines({"StrokePath path ml(2,3)(12,3)(12,9)(2,9)z line 1 brush 0 mix D0D clip all(1,2,14,11)"}));
    }

    TEST_F(GdiShapes, AShapeWithOpaqueGapsIsFilledThenStroked)
    {
        Metafile metafile;
        metafile.Add(CreatePen, Words(1, 1, 1, 0, 0x0000FF)).Add(SelectObject, Words(1));
        EXPECT_EQ(Play(metafile.Add(Rectangle, Words(2, 3, 12, 9))),
                  Lines({"FillPath path ml(2,3)(12,3)(12,9)(2,9)z brush FFFFFF mix D0D options 1 clip all(2,3,13,10)",
                         "StrokePath path ml(2,3)(12,3)(12,9)(2,9)z line 1 gaps style 6,2 brush FFFFFF mix D0D "
                         "clip all(1,2,14,11)",
                         "StrokePath path ml(2,3)(12,3)(12,9)(2,9)z line 1 style 6,2 brush FF0000 mix D0D "
                         "clip all(1,2,14,11)"}));
    }

    TEST_F(GdiShapes, PolygonsAreFilledByTheChosenRule)
    {
        Words triangle = NoBounds;
        triangle.Put(LONG{3}).Halves(1, 1, 9, 1, 5, 9);
        Words wide = NoBounds;
        wide.Put(Words(3, 1, 1, 9, 1, 5, 9));
        EXPECT_EQ(Play(NoPen().Add(SetPolyFillMode, Words(2)).Add(Polygon16, triangle)),
                  Lines({"FillPath path ml(1,1)(9,1)(5,9)z brush FFFFFF mix D0D options 2 clip all(1,1,10,10)"}));
        EXPECT_EQ(Play(NoPen().Add(SetPolyFillMode, Words(1)).Add(Polygon, wide)),
                  Lines({"FillPath path ml(1,1)(9,1)(5,9)z brush FFFFFF mix D0D options 1 clip all(1,1,10,10)"}));
    }

    TEST_F(GdiShapes, APolygonThatRepeatsItsFirstPointHasNoLineWithoutLength)
    {
        Words triangle = NoBounds;
        triangle.Put(LONG{4}).Halves(1, 1, 9, 1, 5, 9, 1, 1);
        EXPECT_EQ(Play(NoBrush().Add(Polygon16, triangle)),
                  Lines({"StrokePath path ml(1,1)(9,1)(5,9)z line 1 brush 0 mix D0D clip all(0,0,11,11)"}));
    }

    TEST_F(GdiShapes, ManyPolygonsAreOneFill)
    {
        Words narrow = NoBounds;
        narrow.Put(Words(2, 6, 3, 3)).Halves(1, 1, 9, 1, 5, 9, 11, 1, 19, 1, 15, 9);
        Words wide = NoBounds;
        wide.Put(Words(2, 6, 3, 3, 1, 1, 9, 1, 5, 9, 11, 1, 19, 1, 15, 9));
        const Lines expected = {"FillPath path ml(1,1)(9,1)(5,9)z ml(11,1)(19,1)(15,9)z brush FFFFFF mix D0D options 1 "
                                "clip all(1,1,20,10)"};
        EXPECT_EQ(Play(NoPen().Add(PolyPolygon16, narrow)), expected);
        EXPECT_EQ(Play(NoPen().Add(PolyPolygon, wide)), expected);
    }

    TEST_F(GdiShapes, PolygonsOfMorePointsThanThereAreAreSkipped)
    {
        Words wrong = NoBounds;
        wrong.Put(Words(2, 3, 2, 2)).Halves(1, 1, 9, 1, 5, 9);
        EXPECT_EQ(Play(NoPen().Add(PolyPolygon16, wrong)), Lines());
        Words cut = NoBounds;
        cut.Put(LONG{1000000000}).Halves(1, 1);
        EXPECT_EQ(Play(NoPen().Add(Polygon16, cut)), Lines());
        EXPECT_EQ(report_.skipped,
                  Counts({{"POLYPOLYGON16: more points in the parts than in all", 1}, {"POLYGON16: too short", 1}}));
    }

    // A quarter of a circle of radius 8: control points lie 8 * 0.5523 = 4.4183 from its ends, 4 7/16 on the grid.
    TEST_F(GdiShapes, AnEllipseIsFourCurves)
    {
        EXPECT_EQ(
            Play(NoBrush().Add(Ellipse, Words(2, 4, 18, 20))),
            Lines({"StrokePath path mc(18,12)(18,7.5625)(14.4375,4)(10,4)(5.5625,4)(2,7.5625)(2,12)(2,16.4375)"
                   "(5.5625,20)(10,20)(14.4375,20)(18,16.4375)(18,12)z line 1 brush 0 mix D0D clip all(1,3,20,22)"}));
    }

    TEST_F(GdiShapes, APenInsideTheFrameDrawsAShapeHalfItsWidthSmaller)
    {
        Metafile metafile = NoBrush();
        metafile.Add(CreatePen, Words(1, 6, 4, 0, 0)).Add(SelectObject, Words(1)).Add(Rectangle, Words(10, 10, 20, 20));
        EXPECT_EQ(Play(metafile),
                  Lines({"StrokePath path ml(12,12)(18,12)(18,18)(12,18)z wide 4 join 0 cap 0 limit 10 "
                         "brush 0 mix D0D clip all(7,7,24,24)"}));
    }

    TEST_F(GdiShapes, ARoundRectangleHasFourCornersAndFourSides)
    {
        EXPECT_EQ(Play(NoBrush().Add(RoundRect, Words(0, 0, 20, 18, 8, 8))),
                  Lines({"StrokePath path mc(20,14)(20,16.1875)(18.1875,18)(16,18)l(4,18)c(1.8125,18)(0,16.1875)(0,14)"
                         "l(0,4)c(0,1.8125)(1.8125,0)(4,0)l(16,0)c(18.1875,0)(20,1.8125)(20,4)z line 1 brush 0 mix D0D "
                         "clip rect(0,0,22,20)"}));
    }

    TEST_F(GdiShapes, AnArcRunsAgainstTheClockUnlessTold)
    {
        const Words arc(2, 4, 18, 20, 30, 12, 10, -9); // from the right to the top
        EXPECT_EQ(Play(Metafile().Add(Arc, arc)),
                  Lines({"StrokePath path mc(18,12)(18,7.5625)(14.4375,4)(10,4) line 1 brush 0 mix D0D "
                         "clip all(9,3,20,14)"}));
        EXPECT_EQ(
            Play(Metafile().Add(SetArcDirection, Words(2)).Add(Arc, arc)),
            Lines({"StrokePath path mc(18,12)(18,16.4375)(14.4375,20)(10,20)(5.5625,20)(2,16.4375)(2,12)(2,7.5625)"
                   "(5.5625,4)(10,4) line 1 brush 0 mix D0D clip all(1,3,20,22)"}));
    }

    TEST_F(GdiShapes, AnArcThatEndsWhereItStartsIsTheWholeEllipse)
    {
        EXPECT_EQ(
            Play(Metafile().Add(Arc, Words(2, 4, 18, 20, 30, 12, 30, 12))),
            Lines({"StrokePath path mc(18,12)(18,7.5625)(14.4375,4)(10,4)(5.5625,4)(2,7.5625)(2,12)(2,16.4375)"
                   "(5.5625,20)(10,20)(14.4375,20)(18,16.4375)(18,12) line 1 brush 0 mix D0D clip all(1,3,20,22)"}));
    }

    TEST_F(GdiShapes, ChordsAreClosedDirectlyAndPiesOverTheCentre)
    {
        const Words part(2, 4, 18, 20, 30, 12, 10, -9);
        EXPECT_EQ(Play(NoPen().Add(Chord, part)),
                  Lines({"FillPath path mc(18,12)(18,7.5625)(14.4375,4)(10,4)z brush FFFFFF mix D0D options 1 "
                         "clip all(10,4,19,13)"}));
        EXPECT_EQ(Play(NoPen().Add(Pie, part)),
                  Lines({"FillPath path mc(18,12)(18,7.5625)(14.4375,4)(10,4)l(10,12)z brush FFFFFF mix D0D options 1 "
                         "clip all(10,4,19,13)"}));
    }

    TEST_F(GdiShapes, ArcToComesFromThePositionAndMovesIt)
    {
        EXPECT_EQ(Play(Metafile()
                           .Add(MoveTo, Words(20, 12))
                           .Add(ArcTo, Words(2, 4, 18, 20, 30, 12, 10, -9))
                           .Add(LineTo, Words(10, 1))),
                  Lines({"StrokePath path ml(20,12)(18,12)c(18,7.5625)(14.4375,4)(10,4) line 1 brush 0 mix D0D "
                         "clip all(9,3,22,14)",
                         "LineTo (10,4)-(10,1) in (10,1,11,5) brush 0 mix D0D clip -"}));
    }

    TEST_F(GdiShapes, AngleArcCountsDegreesAgainstTheClock)
    {
        EXPECT_EQ(Play(Metafile().Add(MoveTo, Words(20, 12)).Add(AngleArc, Words(10, 12, 8, 0.0f, 90.0f))),
                  Lines({"StrokePath path ml(20,12)(18,12)c(18,7.5625)(14.4375,4)(10,4) line 1 brush 0 mix D0D "
                         "clip all(9,3,22,14)"}));
    }

    TEST_F(GdiShapes, AnglesThatAreNoNumbersAreSkipped)
    {
        Play(Metafile().Add(AngleArc, Words(10, 12, 8, 0.0f).Put(LONG{0x7FC00000})));
        EXPECT_EQ(report_.skipped, Counts({{"ANGLEARC: angle that is no number", 1}}));
    }

    TEST_F(GdiShapes, ASetPixelIsABlockOfOne)
    {
        EXPECT_EQ(Play(Metafile().Add(SetRop2, Words(7)).Add(SetPixelV, Words(7, 8, 0x0000FF))),
                  Lines({"BitBlt (7,8,8,9) rop F0F0 brush FF0000 clip -"}));
    }

} // namespace
} // namespace gdi_tests
