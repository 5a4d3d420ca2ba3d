#include "tests/engine/gdi_recorder.h"

namespace gdi_tests {
namespace {

    using Points = std::vector<POINTL>;

    Words Poly(const Points& points)
    {
        Words words = NoBounds;
        words.Put(static_cast<ULONG>(points.size()));
        for (const POINTL& point : points)
            words.Put(point.x).Put(point.y);
        return words;
    }

    Words Poly16(const Points& points)
    {
        Words words = NoBounds;
        words.Put(static_cast<ULONG>(points.size()));
        for (const POINTL& point : points)
            words.Halves(point.x, point.y);
        return words;
    }

    Metafile WithPen(ULONG style, LONG width, COLORREF colour)
    {
        return Metafile().Add(CreatePen, Words(1, style, width, 0, colour)).Add(SelectObject, Words(1));
    }

    Metafile WithExtPen(ULONG style, ULONG width, const std::vector<ULONG>& dashes = {})
    {
        Words pen(1, 0, 0, 0, 0, style, width, 0, 0x0000FF, 0, static_cast<ULONG>(dashes.size()));
        for (const ULONG dash : dashes)
            pen.Put(dash);
        return Metafile().Add(ExtCreatePen, pen).Add(SelectObject, Words(1));
    }

    Metafile& Line(Metafile& metafile)
    {
        return metafile.Add(MoveTo, Words(4, 5)).Add(LineTo, Words(14, 5));
    }

    class GdiLines : public Recorded { };

    TEST_F(GdiLines, AThinLineIsOneLineCall)
    {
        EXPECT_EQ(Play(Metafile().Add(MoveTo, Words(12, 9)).Add(LineTo, Words(2, 4))),
                  Lines({"LineTo (12,9)-(2,4) in (2,4,13,10) brush 0 mix D0D clip -"}));
    }

    TEST_F(GdiLines, ALineGoesOnWhereTheLastOneEnded)
    {
        EXPECT_EQ(Play(Metafile().Add(LineTo, Words(3, 0)).Add(LineTo, Words(3, 7))),
                  Lines({"LineTo (0,0)-(3,0) in (0,0,4,1) brush 0 mix D0D clip -",
                         "LineTo (3,0)-(3,7) in (3,0,4,8) brush 0 mix D0D clip -"}));
    }

    TEST_F(GdiLines, ALineThatLeavesTheTargetComesWithItsClip)
    {
        EXPECT_EQ(Play(Metafile().Add(MoveTo, Words(35, 5)).Add(LineTo, Words(45, 5))),
                  Lines({"LineTo (35,5)-(45,5) in (35,5,46,6) brush 0 mix D0D clip rect(35,5,40,6)"}));
    }

    TEST_F(GdiLines, ALineOutOfSightIsNoCall)
    {
        EXPECT_EQ(Play(Metafile().Add(MoveTo, Words(50, 5)).Add(LineTo, Words(60, 5))), Lines());
        EXPECT_EQ(report_.played["LINETO"], 1u);
    }

    TEST_F(GdiLines, APolylineOfTwoPointsIsALineAndLeavesThePosition)
    {
        EXPECT_EQ(
            Play(Metafile().Add(MoveTo, Words(1, 1)).Add(Polyline, Poly({{2, 2}, {6, 2}})).Add(LineTo, Words(1, 4))),
            Lines({"LineTo (2,2)-(6,2) in (2,2,7,3) brush 0 mix D0D clip -",
                   "LineTo (1,1)-(1,4) in (1,1,2,5) brush 0 mix D0D clip -"}));
    }

    TEST_F(GdiLines, APolylineIsOneStroke)
    {
        EXPECT_EQ(Play(Metafile().Add(Polyline16, Poly16({{2, 2}, {6, 2}, {6, 8}}))),
                  Lines({"StrokePath path ml(2,2)(6,2)(6,8) line 1 brush 0 mix D0D clip all(1,1,8,10)"}));
    }

    TEST_F(GdiLines, APolylineToStartsAtThePositionAndMovesIt)
    {
        EXPECT_EQ(
            Play(Metafile().Add(MoveTo, Words(1, 1)).Add(PolylineTo, Poly({{5, 1}, {5, 6}})).Add(LineTo, Words(9, 6))),
            Lines({"StrokePath path ml(1,1)(5,1)(5,6) line 1 brush 0 mix D0D clip all(0,0,7,8)",
                   "LineTo (5,6)-(9,6) in (5,6,10,7) brush 0 mix D0D clip -"}));
        EXPECT_EQ(Play(Metafile().Add(MoveTo, Words(1, 1)).Add(PolylineTo16, Poly16({{5, 1}, {5, 6}}))),
                  Lines({"StrokePath path ml(1,1)(5,1)(5,6) line 1 brush 0 mix D0D clip all(0,0,7,8)"}));
    }

    TEST_F(GdiLines, CurvesStayCurves)
    {
        const std::string curve = "(1,1)(2,9)(8,9)(9,1) line 1 brush 0 mix D0D clip all(0,0,11,11)";
        EXPECT_EQ(Play(Metafile().Add(PolyBezier, Poly({{1, 1}, {2, 9}, {8, 9}, {9, 1}}))),
                  Lines({"StrokePath path mc" + curve}));
        EXPECT_EQ(Play(Metafile().Add(PolyBezier16, Poly16({{1, 1}, {2, 9}, {8, 9}, {9, 1}}))),
                  Lines({"StrokePath path mc" + curve}));
        EXPECT_EQ(Play(Metafile().Add(MoveTo, Words(1, 1)).Add(PolyBezierTo16, Poly16({{2, 9}, {8, 9}, {9, 1}}))),
                  Lines({"StrokePath path mc" + curve}));
        EXPECT_EQ(Play(Metafile()
                           .Add(MoveTo, Words(1, 1))
                           .Add(PolyBezierTo, Poly({{2, 9}, {8, 9}, {9, 1}}))
                           .Add(LineTo, Words(9, 5))),
                  Lines({"StrokePath path mc" + curve, "LineTo (9,1)-(9,5) in (9,1,10,6) brush 0 mix D0D clip -"}));
    }

    TEST_F(GdiLines, ManyPolylinesAreOneStrokeOfManyFigures)
    {
        const Lines expected = {
            "StrokePath path ml(1,1)(4,1) ml(2,5)(6,5)(6,9) line 1 brush 0 mix D0D clip all(0,0,8,11)"};
        Words narrow = NoBounds;
        narrow.Put(Words(2, 5, 2, 3)).Halves(1, 1, 4, 1, 2, 5, 6, 5, 6, 9);
        Words wide = NoBounds;
        wide.Put(Words(2, 5, 2, 3, 1, 1, 4, 1, 2, 5, 6, 5, 6, 9));
        EXPECT_EQ(Play(Metafile().Add(PolyPolyline16, narrow)), expected);
        EXPECT_EQ(Play(Metafile().Add(PolyPolyline, wide)), expected);
    }

    TEST_F(GdiLines, PolyDrawMixesLinesCurvesAndMoves)
    {
        constexpr BYTE types[] = {6, 2, 4, 4, 5, 6, 2};
        const Points points = {{1, 1}, {5, 1}, {6, 2}, {6, 4}, {5, 5}, {8, 8}, {9, 9}};
        const Lines expected = {"StrokePath path ml(1,1)(5,1)c(6,2)(6,4)(5,5)z ml(8,8)(9,9) line 1 brush 0 mix D0D "
                                "clip all(0,0,11,11)"};
        EXPECT_EQ(Play(Metafile().Add(PolyDraw, Poly(points).Bytes(types, sizeof(types)))), expected);
        EXPECT_EQ(Play(Metafile().Add(PolyDraw16, Poly16(points).Bytes(types, sizeof(types)))), expected);
    }

    TEST_F(GdiLines, PolyDrawWithAnUnknownTypeIsSkipped)
    {
        constexpr BYTE types[] = {6, 8};
        EXPECT_EQ(Play(Metafile().Add(PolyDraw, Poly({{1, 1}, {2, 2}}).Bytes(types, 2))), Lines());
        EXPECT_EQ(report_.skipped, Counts({{"POLYDRAW: no such type of point", 1}}));
    }

    TEST_F(GdiLines, ANullPenDrawsNothing)
    {
        EXPECT_EQ(Play(Metafile()
                           .Add(SelectObject, Words(NullPen))
                           .Add(LineTo, Words(9, 9))
                           .Add(Polyline16, Poly16({{2, 2}, {6, 2}, {6, 8}}))),
                  Lines());
        Metafile created = WithPen(5, 1, 0);
        EXPECT_EQ(Play(Line(created)), Lines());
    }

    TEST_F(GdiLines, TheBinaryOperationIsTheMix)
    {
        EXPECT_EQ(Play(Metafile().Add(SetRop2, Words(7)).Add(SelectObject, Words(WhitePen)).Add(LineTo, Words(4, 0))),
                  Lines({"LineTo (0,0)-(4,0) in (0,0,5,1) brush FFFFFF mix 707 clip -"}));
    }

    TEST_F(GdiLines, AStyledLineIsAStrokeInStyleUnits)
    {
        const char* const styles[] = {"6,2", "1,1", "3,2,1,2", "3,1,1,1,1,1"};
        for (ULONG style = 1; style <= 4; ++style) {
            Metafile metafile = WithPen(style, 1, 0x0000FF);
            metafile.Add(SetBkMode, Words(1));
            EXPECT_EQ(Play(Line(metafile)),
                      Lines({std::string("StrokePath path ml(4,5)(14,5) line 1 style ") + styles[style - 1]
                             + " brush FF0000 mix D0D clip all(3,4,16,7)"}));
        }
    }

    TEST_F(GdiLines, OpaqueGapsAreASecondStrokeInTheBackgroundColour)
    {
        Metafile metafile = WithPen(2, 1, 0x0000FF);
        metafile.Add(SetBkColor, Words(0x00FF00));
        EXPECT_EQ(Play(Line(metafile)),
                  Lines({"StrokePath path ml(4,5)(14,5) line 1 gaps style 1,1 brush FF00 mix D0D clip all(3,4,16,7)",
                         "StrokePath path ml(4,5)(14,5) line 1 style 1,1 brush FF0000 mix D0D clip all(3,4,16,7)"}));
    }

    TEST_F(GdiLines, GapsOfExtendedPensStayOpen)
    {
        Metafile metafile = WithExtPen(2, 1);
        EXPECT_EQ(Play(Line(metafile)),
                  Lines({"StrokePath path ml(4,5)(14,5) line 1 style 1,1 brush FF0000 mix D0D clip all(3,4,16,7)"}));
    }

    TEST_F(GdiLines, AWidePenIsRoundAndSolid)
    {
        Metafile metafile = WithPen(1, 4, 0x0000FF);
        EXPECT_EQ(Play(Line(metafile)),
                  Lines({"StrokePath path ml(4,5)(14,5) wide 4 join 0 cap 0 limit 10 "
                         "brush FF0000 mix D0D clip rect(0,0,20,11)"}));
    }

    TEST_F(GdiLines, AnExtendedPenHasItsJoinCapLimitAndDashes)
    {
        Metafile metafile = WithExtPen(0x12201, 2); // geometric, miter, flat, dashed
        metafile.Add(SetMiterLimit, Words(3));
        EXPECT_EQ(Play(Line(metafile)),
                  Lines({"StrokePath path ml(4,5)(14,5) wide 2 join 2 cap 2 limit 3 style 6,2 "
                         "brush FF0000 mix D0D clip all(0,1,19,10)"}));
    }

    TEST_F(GdiLines, AMiterLimitMayBeAFloatingPointNumber)
    {
        Metafile metafile = WithExtPen(0x12000, 2);
        metafile.Add(SetMiterLimit, Words(2.5f));
        EXPECT_EQ(Play(Line(metafile)),
                  Lines({"StrokePath path ml(4,5)(14,5) wide 2 join 2 cap 0 limit 2.5 "
                         "brush FF0000 mix D0D clip all(0,1,19,10)"}));
    }

    TEST_F(GdiLines, ThePensOwnStyleIsScaledWithItsWidth)
    {
        Metafile metafile = WithExtPen(0x11107, 2, {3, 1, 5});
        metafile.Add(SetMapMode, Words(8)).Add(SetViewportExt, Words(2, 2));
        metafile.Add(MoveTo, Words(4, 5)).Add(LineTo, Words(8, 5));
        EXPECT_EQ(Play(metafile),
                  Lines({"StrokePath path ml(8,10)(16,10) wide 4 join 1 cap 1 limit 10 style 6,2,10 "
                         "brush FF0000 mix D0D clip all(3,5,22,16)"}));
    }

    TEST_F(GdiLines, AStyleOfZeroesIsSolid)
    {
        Metafile metafile = WithExtPen(7, 1, {0, 0});
        EXPECT_EQ(Play(Line(metafile)), Lines({"LineTo (4,5)-(14,5) in (4,5,15,6) brush FF0000 mix D0D clip -"}));
    }

    TEST_F(GdiLines, AnAlternatePenIsEveryOtherPixel)
    {
        Metafile metafile = WithExtPen(8, 1);
        EXPECT_EQ(Play(Line(metafile)),
                  Lines({"StrokePath path ml(4,5)(14,5) line 1 alternate brush FF0000 mix D0D clip all(3,4,16,7)"}));
    }

    TEST_F(GdiLines, AStyleThatNobodyCouldTellFromASolidLineIsLeftOut)
    {
        Metafile metafile = WithExtPen(0x10007, 1, {1, 1});
        metafile.Add(MoveTo, Words(0, 5)).Add(LineTo, Words(16384, 5)); // 8192 dashes and gaps
        metafile.Add(MoveTo, Words(0, 5)).Add(LineTo, Words(16385, 5));
        const Lines lines = Play(metafile);
        ASSERT_EQ(lines.size(), 2u);
        EXPECT_NE(lines[0].find("style 1,1"), std::string::npos) << lines[0];
        EXPECT_EQ(lines[1].find("style"), std::string::npos) << lines[1];
    }

    TEST_F(GdiLines, AnOldPenThatScalesToAPixelIsCosmetic)
    {
        Metafile metafile = WithPen(0, 10, 0x0000FF);
        metafile.Add(SetMapMode, Words(8)).Add(SetWindowExt, Words(10, 10)).Add(SetViewportExt, Words(1, 1));
        metafile.Add(MoveTo, Words(40, 50)).Add(LineTo, Words(140, 50));
        EXPECT_EQ(Play(metafile), Lines({"LineTo (4,5)-(14,5) in (4,5,15,6) brush FF0000 mix D0D clip -"}));
    }

} // namespace
} // namespace gdi_tests
