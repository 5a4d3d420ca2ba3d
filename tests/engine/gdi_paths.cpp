#include "tests/engine/gdi_recorder.h"

namespace gdi_tests {
namespace {

    class GdiPaths : public Recorded {
    protected:
        static Metafile Open() { return Metafile().Add(BeginPath); }
    };

    TEST_F(GdiPaths, NothingIsDrawnUntilThePathIsUsed)
    {
        Metafile metafile = Open();
        metafile.Add(MoveTo, Words(2, 2))
            .Add(LineTo, Words(8, 2))
            .Add(LineTo, Words(8, 8))
            .Add(CloseFigure)
            .Add(EndPath);
        EXPECT_EQ(Play(metafile), Lines());
        EXPECT_EQ(Play(metafile.Add(StrokePath, NoBounds)),
                  Lines({"StrokePath path ml(2,2)(8,2)(8,8)z line 1 brush 0 mix D0D clip all(1,1,10,10)"}));
    }

    TEST_F(GdiPaths, APathIsFilledByTheChosenRule)
    {
        Metafile metafile = Open();
        metafile.Add(MoveTo, Words(2, 2)).Add(LineTo, Words(8, 2)).Add(LineTo, Words(8, 8)).Add(EndPath);
        EXPECT_EQ(Play(metafile.Add(SetPolyFillMode, Words(2)).Add(FillPath, NoBounds)),
                  Lines({"FillPath path ml(2,2)(8,2)(8,8) brush FFFFFF mix D0D options 2 clip all(2,2,9,9)"}));
    }

    TEST_F(GdiPaths, StrokingAndFillingClosesWhatIsOpen)
    {
        Metafile metafile = Open();
        metafile.Add(MoveTo, Words(2, 2)).Add(LineTo, Words(8, 2)).Add(LineTo, Words(8, 8)).Add(EndPath);
        EXPECT_EQ(Play(metafile.Add(StrokeAndFillPath, NoBounds)),
                  Lines({"StrokeAndFillPath path ml(2,2)(8,2)(8,8)z line 1 brush 0 over brush FFFFFF mix D0D options 1 "
                         "clip all(1,1,10,10)"}));
    }

    TEST_F(GdiPaths, LinesThatGoOnStayInOneFigure)
    {
        Metafile metafile = Open();
        Words more = NoBounds;
        more.Put(LONG{1}).Halves(8, 8);
        Words curve = NoBounds;
        curve.Put(LONG{3}).Halves(7, 9, 3, 9, 2, 8);
        metafile.Add(MoveTo, Words(2, 2)).Add(LineTo, Words(8, 2)).Add(PolylineTo16, more).Add(PolyBezierTo16, curve);
        metafile.Add(LineTo, Words(2, 3)).Add(EndPath).Add(StrokePath, NoBounds);
        EXPECT_EQ(Play(metafile),
                  Lines({"StrokePath path ml(2,2)(8,2)(8,8)c(7,9)(3,9)(2,8)l(2,3) line 1 brush 0 mix D0D "
                         "clip all(1,1,10,11)"}));
    }

    TEST_F(GdiPaths, ClosedShapesAndMovesStartFiguresOfTheirOwn)
    {
        Metafile metafile = Open();
        metafile.Add(MoveTo, Words(1, 1)).Add(LineTo, Words(3, 1)).Add(Rectangle, Words(5, 5, 9, 9));
        metafile.Add(LineTo, Words(3, 3)).Add(MoveTo, Words(0, 8)).Add(LineTo, Words(2, 8));
        metafile.Add(EndPath).Add(StrokePath, NoBounds);
        EXPECT_EQ(Play(metafile),
                  Lines({"StrokePath path ml(1,1)(3,1) ml(5,5)(9,5)(9,9)(5,9)z ml(3,1)(3,3) ml(0,8)(2,8) "
                         "line 1 brush 0 mix D0D clip rect(0,0,11,11)"}));
    }

    TEST_F(GdiPaths, APathIsInPixelsOfWhenItWasBuilt)
    {
        Metafile metafile = Open();
        metafile.Add(MoveTo, Words(2, 2)).Add(LineTo, Words(8, 2)).Add(EndPath).Add(SetViewportOrg, Words(9, 9));
        EXPECT_EQ(Play(metafile.Add(StrokePath, NoBounds)),
                  Lines({"StrokePath path ml(2,2)(8,2) line 1 brush 0 mix D0D clip all(1,1,10,4)"}));
    }

    TEST_F(GdiPaths, FlatteningMakesLinesOfCurves) // half a pixel long: two of them are close enough
    {
        Metafile metafile;
        Words curve = NoBounds;
        curve.Put(LONG{4}).Halves(0, 0, 0, 0, 8, 0, 8, 0);
        metafile.Add(SetMapMode, Words(8)).Add(SetWindowExt, Words(16, 16)).Add(BeginPath).Add(PolyBezier16, curve);
        EXPECT_EQ(Play(metafile.Add(EndPath).Add(FlattenPath).Add(StrokePath, NoBounds)),
                  Lines({"StrokePath path ml(0,0)(0.25,0)(0.5,0) line 1 brush 0 mix D0D clip rect(0,0,3,2)"}));
    }

    TEST_F(GdiPaths, APathIsUsedUp)
    {
        Metafile metafile = Open();
        metafile.Add(MoveTo, Words(2, 2)).Add(LineTo, Words(8, 2)).Add(EndPath).Add(StrokePath, NoBounds);
        EXPECT_EQ(Play(metafile.Add(FillPath, NoBounds)).size(), 1u);
        EXPECT_EQ(report_.skipped, Counts({{"FILLPATH: no path completed", 1}}));
    }

    TEST_F(GdiPaths, AnAbortedPathIsNone)
    {
        Metafile metafile = Open();
        metafile.Add(MoveTo, Words(2, 2)).Add(LineTo, Words(8, 2)).Add(AbortPath).Add(EndPath).Add(CloseFigure);
        EXPECT_EQ(Play(metafile.Add(StrokePath, NoBounds).Add(LineTo, Words(8, 5))),
                  Lines({"LineTo (8,2)-(8,5) in (8,2,9,6) brush 0 mix D0D clip -"}));
        EXPECT_EQ(report_.skipped,
                  Counts({{"ENDPATH: no path begun", 1},
                          {"CLOSEFIGURE: no path begun", 1},
                          {"STROKEPATH: no path completed", 1}}));
    }

    TEST_F(GdiPaths, WideningIsCountedAsSkipped)
    {
        Play(Metafile().Add(WidenPath));
        EXPECT_EQ(report_.skipped, Counts({{"WIDENPATH", 1}}));
    }

} // namespace
} // namespace gdi_tests
