#include "tests/engine/gdi_recorder.h"

namespace gdi_tests {
namespace {

    // A line tells where its ends come to.
    Metafile& Line(Metafile& metafile, LONG x1, LONG y1, LONG x2, LONG y2)
    {
        return metafile.Add(MoveTo, Words(x1, y1)).Add(LineTo, Words(x2, y2));
    }

    class GdiCoordinates : public Recorded {
    protected:
        // The ends of the one line that is drawn.
        std::string Ends(const Metafile& metafile)
        {
            const Lines lines = Play(metafile);
            return lines.size() == 1 ? lines[0].substr(7, lines[0].find(" in ") - 7) : std::to_string(lines.size());
        }
    };

    TEST_F(GdiCoordinates, AnisotropicMapsTheWindowToTheViewport)
    {
        Metafile metafile;
        metafile.Add(SetMapMode, Words(8)).Add(SetWindowExt, Words(100, 50)).Add(SetViewportExt, Words(20, 20));
        metafile.Add(SetWindowOrg, Words(10, 5)).Add(SetViewportOrg, Words(3, 4));
        EXPECT_EQ(Ends(Line(metafile, 10, 5, 60, 30)), "(3,4)-(13,14)");
    }

    TEST_F(GdiCoordinates, IsotropicShrinksTheLongerSide)
    {
        Metafile metafile;
        metafile.Add(SetMapMode, Words(7)).Add(SetWindowExt, Words(10, 10)).Add(SetViewportExt, Words(40, 20));
        EXPECT_EQ(Ends(Line(metafile, 0, 0, 10, 10)), "(0,0)-(20,20)");
    }

    TEST_F(GdiCoordinates, MetricAndEnglishModesCountUpwards) // a pixel is a millimetre
    {
        const auto scaled = [this](ULONG mode, LONG units) {
            Metafile metafile;
            metafile.Add(SetMapMode, Words(mode)).Add(SetViewportOrg, Words(0, 29));
            return Ends(Line(metafile, 0, 0, units, units));
        };
        EXPECT_EQ(scaled(2, 100), "(0,29)-(10,19)"); // tenths of a millimetre
        EXPECT_EQ(scaled(3, 1000), "(0,29)-(10,19)"); // hundredths
        EXPECT_EQ(scaled(4, 100), "(0,29)-(25,4)"); // hundredths of an inch
        EXPECT_EQ(scaled(5, 1000), "(0,29)-(25,4)"); // thousandths
        EXPECT_EQ(scaled(6, 1440), "(0,29)-(25,4)"); // twentieths of a point
    }

    TEST_F(GdiCoordinates, ExtentsCountInTheFreeModesAlone)
    {
        Metafile metafile;
        metafile.Add(SetWindowExt, Words(100, 100)).Add(SetViewportExt, Words(1, 1));
        metafile.Add(ScaleWindowExt, Words(9, 1, 9, 1));
        EXPECT_EQ(Ends(Line(metafile, 1, 2, 11, 12)), "(1,2)-(11,12)");
    }

    TEST_F(GdiCoordinates, ExtentsCanBeScaled)
    {
        Metafile metafile;
        metafile.Add(SetMapMode, Words(8)).Add(SetWindowExt, Words(10, 10)).Add(SetViewportExt, Words(10, 10));
        metafile.Add(ScaleViewportExt, Words(3, 1, 2, 1)).Add(ScaleWindowExt, Words(1, 1, 4, 1));
        EXPECT_EQ(Ends(Line(metafile, 0, 0, 10, 10)), "(0,0)-(30,5)");
    }

    TEST_F(GdiCoordinates, ExtentsAndModesThatMakeNoSenseAreSkipped)
    {
        Metafile metafile;
        metafile.Add(SetMapMode, Words(8)).Add(SetWindowExt, Words(0, 5)).Add(ScaleViewportExt, Words(1, 0, 1, 1));
        metafile.Add(SetMapMode, Words(9)).Add(SetMapMode, Words(0)).Add(SetRop2, Words(17)).Add(SetBkMode, Words(0));
        EXPECT_EQ(Ends(Line(metafile, 0, 0, 10, 10)), "(0,0)-(10,10)");
        EXPECT_EQ(report_.skipped,
                  Counts({{"SETWINDOWEXTEX: extent of zero", 1},
                          {"SCALEVIEWPORTEXTEX: scale of zero", 1},
                          {"SETMAPMODE: no such mode", 2},
                          {"SETROP2: no such mode", 1},
                          {"SETBKMODE: no such mode", 1}}));
    }

    TEST_F(GdiCoordinates, TheWorldComesBeforeThePage)
    {
        Metafile metafile;
        metafile.Add(SetMapMode, Words(8)).Add(SetViewportExt, Words(2, 2));
        metafile.Add(SetWorldTransform, Words(1.0f, 0.0f, 0.0f, 1.0f, 3.0f, 4.0f));
        EXPECT_EQ(Ends(Line(metafile, 0, 0, 5, 5)), "(6,8)-(16,18)");
    }

    TEST_F(GdiCoordinates, WorldsCanBeMultipliedOnEitherSide)
    {
        const Words move(1.0f, 0.0f, 0.0f, 1.0f, 3.0f, 4.0f), twice(2.0f, 0.0f, 0.0f, 2.0f, 0.0f, 0.0f);
        const auto modified = [&](ULONG mode) {
            Words given = twice;
            Metafile metafile;
            metafile.Add(SetWorldTransform, move).Add(ModifyWorldTransform, given.Put(mode));
            return Ends(Line(metafile, 0, 0, 5, 5));
        };
        EXPECT_EQ(modified(1), "(0,0)-(5,5)");
        EXPECT_EQ(modified(2), "(3,4)-(13,14)"); // scaled first
        EXPECT_EQ(modified(3), "(6,8)-(16,18)"); // moved first
        EXPECT_EQ(modified(4), "(0,0)-(10,10)");
        EXPECT_EQ(modified(5), "(3,4)-(8,9)");
        EXPECT_EQ(report_.skipped, Counts({{"MODIFYWORLDTRANSFORM: no such mode", 1}}));
    }

    TEST_F(GdiCoordinates, ATransformThatMapsToALineIsSkipped)
    {
        Metafile metafile;
        metafile.Add(SetWorldTransform, Words(1.0f, 1.0f, 1.0f, 1.0f, 0.0f, 0.0f));
        EXPECT_EQ(Ends(Line(metafile, 0, 0, 5, 7)), "(0,0)-(5,7)");
        EXPECT_EQ(report_.skipped, Counts({{"SETWORLDTRANSFORM: transform that maps to a line", 1}}));
    }

    TEST_F(GdiCoordinates, ATurnedRectangleIsAPath)
    {
        Metafile metafile;
        metafile.Add(SetWorldTransform, Words(0.0f, 1.0f, -1.0f, 0.0f, 20.0f, 0.0f)).Add(SelectObject, Words(NullPen));
        metafile.Add(Rectangle, Words(2, 3, 8, 6));
        EXPECT_EQ(Play(metafile),
                  Lines({"FillPath path ml(17,2)(17,8)(14,8)(14,2)z brush FFFFFF mix D0D options 1 "
                         "clip all(14,2,18,9)"}));
    }

    TEST_F(GdiCoordinates, SavedStatesComeBackByDistanceOrByNumber)
    {
        const auto restored = [this](LONG which) {
            Metafile metafile;
            metafile.Add(SaveDc).Add(SelectObject, Words(WhitePen)).Add(SaveDc);
            metafile.Add(SelectObject, Words(NullPen)).Add(SetViewportOrg, Words(5, 5)).Add(RestoreDc, Words(which));
            return Play(Line(metafile, 0, 0, 4, 0));
        };
        const Lines white = {"LineTo (0,0)-(4,0) in (0,0,5,1) brush FFFFFF mix D0D clip -"};
        const Lines black = {"LineTo (0,0)-(4,0) in (0,0,5,1) brush 0 mix D0D clip -"};
        EXPECT_EQ(restored(-1), white);
        EXPECT_EQ(restored(-2), black);
        EXPECT_EQ(restored(1), black);
        EXPECT_EQ(restored(2), white);
        EXPECT_EQ(restored(-3), Lines());
        EXPECT_EQ(restored(3), Lines());
        EXPECT_EQ(restored(0), Lines());
        EXPECT_EQ(report_.skipped, Counts({{"RESTOREDC: nothing saved", 3}}));
    }

    TEST_F(GdiCoordinates, RestoringDropsTheStatesAbove)
    {
        Metafile metafile;
        metafile.Add(SaveDc).Add(SaveDc).Add(RestoreDc, Words(1)).Add(RestoreDc, Words(-1));
        Play(metafile);
        EXPECT_EQ(report_.skipped, Counts({{"RESTOREDC: nothing saved", 1}}));
    }

    TEST_F(GdiCoordinates, StatesAreNotNestedWithoutEnd)
    {
        Metafile metafile;
        for (int i = 0; i < 1030; ++i)
            metafile.Add(SaveDc);
        Play(metafile);
        EXPECT_EQ(report_.skipped, Counts({{"SAVEDC: nested too deeply", 6}}));
    }

    TEST_F(GdiCoordinates, ADrawingIsMadeAsLargeAsFitsInTheMiddle)
    {
        Metafile metafile(20, 10);
        EXPECT_EQ(PlayInto(Line(metafile, 0, 0, 20, 10), {0, 0, 40, 30}),
                  Lines({"LineTo (0,5)-(40,25) in (0,5,41,26) brush 0 mix D0D clip rect(0,5,40,26)"}));
    }

    TEST_F(GdiCoordinates, ADrawingStaysWithinItsRectangle)
    {
        Metafile metafile(20, 10);
        metafile.Add(SelectObject, Words(NullPen)).Add(Rectangle, Words(-50, -50, 50, 50));
        EXPECT_EQ(PlayInto(metafile, {10, 6, 20, 26}),
                  Lines({"BitBlt (10,6,20,26) rop F0F0 brush FFFFFF origin (10,14) clip -"}));
    }

    TEST_F(GdiCoordinates, OblongPixelsOfTheDrawingsDeviceAreEvenedOut)
    {
        Metafile metafile(20, 10);
        metafile.Set(84, 2000); // its device is 2000 mm high: a pixel is twice as high as wide
        metafile.Set(36, 2000); // so the frame's 10 pixels are 2000 hundredths
        EXPECT_EQ(PlayInto(Line(metafile, 0, 0, 10, 5), {0, 0, 40, 30}),
                  Lines({"LineTo (5,0)-(20,15) in (5,0,21,16) brush 0 mix D0D clip -"}));
    }

    TEST_F(GdiCoordinates, AtActualSizeTheFrameStartsInTheCorner)
    {
        Metafile metafile(20, 10);
        metafile.Set(24, 200); // the frame begins at x = 2
        EXPECT_EQ(PlayInto(Line(metafile, 2, 1, 7, 1), {10, 10, 40, 30}, true),
                  Lines({"LineTo (10,11)-(15,11) in (10,11,16,12) brush 0 mix D0D clip -"}));
    }

    TEST_F(GdiCoordinates, WithoutAFrameTheBoundsAreShown)
    {
        Metafile metafile(20, 10);
        for (const std::size_t at : {24, 28, 32, 36})
            metafile.Set(at, 0);
        EXPECT_EQ(PlayInto(Line(metafile, 0, 0, 20, 10), {0, 0, 40, 20}),
                  Lines({"LineTo (0,0)-(40,20) in (0,0,41,21) brush 0 mix D0D clip rect(0,0,40,20)"}));
    }

    TEST_F(GdiCoordinates, ThePageIsPaintedWhiteFirst)
    {
        EXPECT_EQ(Play(Metafile(), true), Lines({"BitBlt (0,0,40,30) rop F0F0 brush FFFFFF clip -"}));
    }

} // namespace
} // namespace gdi_tests
