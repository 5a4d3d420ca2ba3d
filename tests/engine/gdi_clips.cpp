#include "tests/engine/gdi_recorder.h"

namespace gdi_tests {
namespace {

    using Rectangles = std::vector<RECTL>;

    Words Region(const Rectangles& rectangles)
    {
        Words words(32, 1, static_cast<ULONG>(rectangles.size()), static_cast<ULONG>(rectangles.size() * 16), 0, 0, 0,
                    0);
        for (const RECTL& r : rectangles)
            words.Put(Words(r.left, r.top, r.right, r.bottom));
        return words;
    }

    Words Sized(const Words& region)
    {
        return Words(static_cast<ULONG>(region.bytes.size()));
    }

    Metafile& Block(Metafile& metafile, LONG left, LONG top, LONG right, LONG bottom)
    {
        return metafile.Add(SelectObject, Words(NullPen)).Add(Rectangle, Words(left, top, right, bottom));
    }

    class GdiClips : public Recorded {
    protected:
        // What a block over everything is cut to.
        std::string Visible(Metafile metafile)
        {
            const Lines lines = Play(Block(metafile, -100, -100, 100, 100));
            if (lines.size() != 1)
                return std::to_string(lines.size());
            const std::size_t rectangle = lines[0].find('('), clip = lines[0].find("clip ");
            return lines[0].substr(rectangle, lines[0].find(' ', rectangle) - rectangle) + lines[0].substr(clip + 5);
        }
        std::string Selected(ULONG mode, const Rectangles& rectangles)
        {
            const Words region = Region(rectangles);
            Words select = Sized(region);
            Metafile metafile;
            metafile.Add(IntersectClip, Words(0, 0, 20, 20)).Add(SelectClipRgn, select.Put(mode).Put(region));
            return Visible(metafile);
        }
    };

    TEST_F(GdiClips, ARectangleCutsBeforehand)
    {
        EXPECT_EQ(Visible(Metafile().Add(IntersectClip, Words(3, 4, 13, 9))), "(3,4,13,9)-");
    }

    TEST_F(GdiClips, RectanglesFollowTheCoordinates)
    {
        Metafile metafile;
        metafile.Add(SetMapMode, Words(8)).Add(SetViewportExt, Words(2, 3)).Add(IntersectClip, Words(3, 4, 13, 9));
        EXPECT_EQ(Visible(metafile), "(6,12,26,27)-");
    }

    TEST_F(GdiClips, AnExcludedRectangleLeavesTheRest)
    {
        EXPECT_EQ(Visible(Metafile().Add(ExcludeClip, Words(0, 0, 40, 10))), "(0,10,40,30)-");
        EXPECT_EQ(Visible(Metafile().Add(ExcludeClip, Words(10, 10, 20, 20))),
                  "(0,0,40,30)parts(0,0,40,30):(0,0,40,10)(0,10,10,20)(20,10,40,20)(0,20,40,30)");
    }

    TEST_F(GdiClips, NothingVisibleIsNoCall)
    {
        EXPECT_EQ(Visible(Metafile().Add(IntersectClip, Words(50, 50, 60, 60))), "0");
    }

    TEST_F(GdiClips, AClipMoves)
    {
        EXPECT_EQ(Visible(Metafile().Add(IntersectClip, Words(3, 4, 13, 9)).Add(OffsetClip, Words(2, -1))),
                  "(5,3,15,8)-");
        EXPECT_EQ(Visible(Metafile().Add(OffsetClip, Words(2, -1))), "(0,0,40,30)-");
    }

    TEST_F(GdiClips, RegionsAreCombinedInFiveWays)
    {
        const Rectangles right = {{10, 0, 30, 20}};
        EXPECT_EQ(Selected(1, right), "(10,0,20,20)-");
        EXPECT_EQ(Selected(2, right), "(0,0,30,20)-");
        EXPECT_EQ(Selected(3, right), "(0,0,30,20)parts(0,0,30,20):(0,0,10,20)(20,0,30,20)");
        EXPECT_EQ(Selected(4, right), "(0,0,10,20)-");
        EXPECT_EQ(Selected(5, right), "(10,0,30,20)-");
        EXPECT_EQ(Selected(5, {{1, 1, 3, 3}, {5, 1, 7, 3}}), "(1,1,7,3)parts(1,1,7,3):(1,1,3,3)(5,1,7,3)");
    }

    TEST_F(GdiClips, CopyingNothingTakesTheClipAway)
    {
        EXPECT_EQ(Visible(Metafile().Add(IntersectClip, Words(3, 4, 13, 9)).Add(SelectClipRgn, Words(0, 5))),
                  "(0,0,40,30)-");
    }

    TEST_F(GdiClips, RegionsOfClipsAreInPixelsOfTheDrawingsDevice)
    {
        const Words region = Region({{2, 1, 6, 5}});
        Words select = Sized(region);
        Metafile metafile(20, 15);
        metafile.Add(SetMapMode, Words(8))
            .Add(SetViewportExt, Words(7, 7))
            .Add(SelectClipRgn, select.Put(5).Put(region));
        EXPECT_EQ(PlayInto(Block(metafile, -100, -100, 100, 100), {0, 0, 40, 30}),
                  Lines({"BitBlt (4,2,12,10) rop F0F0 brush FFFFFF clip -"}));
    }

    TEST_F(GdiClips, TheMetaRegionLimitsWhatComesAfter)
    {
        Metafile metafile;
        metafile.Add(IntersectClip, Words(0, 0, 20, 20)).Add(SetMetaRgn).Add(IntersectClip, Words(10, 10, 30, 30));
        EXPECT_EQ(Visible(metafile), "(10,10,20,20)-");
        metafile.Add(SelectClipRgn, Words(0, 5));
        EXPECT_EQ(Visible(metafile), "(0,0,20,20)-");
    }

    TEST_F(GdiClips, AClipIsPartOfTheSavedState)
    {
        EXPECT_EQ(Visible(Metafile().Add(SaveDc).Add(IntersectClip, Words(3, 4, 13, 9)).Add(RestoreDc, Words(-1))),
                  "(0,0,40,30)-");
    }

    TEST_F(GdiClips, APathCanBeTheClip)
    {
        Metafile metafile;
        metafile.Add(BeginPath).Add(Rectangle, Words(3, 4, 13, 9)).Add(EndPath).Add(SelectClipPath, Words(1));
        EXPECT_EQ(Visible(metafile), "(3,4,13,9)-");
        metafile.Add(SelectClipPath, Words(1)); // the path is used up
        Visible(metafile);
        EXPECT_EQ(report_.skipped, Counts({{"SELECTCLIPPATH: no path completed", 1}}));
    }

    TEST_F(GdiClips, ARegionIsPaintedThroughItsShape)
    {
        const Words region = Region({{1, 1, 3, 3}, {5, 1, 7, 3}});
        Words paint = NoBounds;
        paint.Put(Sized(region)).Put(region);
        EXPECT_EQ(Play(Metafile().Add(PaintRgn, paint)),
                  Lines({"Paint brush FFFFFF mix D0D clip parts(1,1,7,3):(1,1,3,3)(5,1,7,3)"}));
    }

    TEST_F(GdiClips, RegionsAreFilledFramedAndInverted)
    {
        const Words region = Region({{2, 2, 12, 10}});
        Words fill = NoBounds, frame = NoBounds, invert = NoBounds;
        fill.Put(Sized(region)).Put(BlackBrush).Put(region);
        frame.Put(Sized(region)).Put(BlackBrush).Put(Words(2, 3)).Put(region);
        invert.Put(Sized(region)).Put(region);
        EXPECT_EQ(Play(Metafile().Add(FillRgn, fill)), Lines({"Paint brush 0 mix D0D clip rect(2,2,12,10)"}));
        EXPECT_EQ(Play(Metafile().Add(FrameRgn, frame)),
                  Lines({"Paint brush 0 mix D0D clip parts(2,2,12,10):(2,2,12,5)(2,5,4,7)(10,5,12,7)(2,7,12,10)"}));
        EXPECT_EQ(Play(Metafile().Add(InvertRgn, invert)), Lines({"Paint brush 0 mix 606 clip rect(2,2,12,10)"}));
    }

    TEST_F(GdiClips, FilledRegionsFollowTheCoordinates)
    {
        const Words region = Region({{1, 1, 3, 3}});
        Words paint = NoBounds;
        paint.Put(Sized(region)).Put(region);
        EXPECT_EQ(Play(Metafile().Add(SetViewportOrg, Words(5, 6)).Add(PaintRgn, paint)),
                  Lines({"Paint brush FFFFFF mix D0D clip rect(6,7,8,9)"}));
    }

    TEST_F(GdiClips, DamagedRegionsAreSkipped)
    {
        Words shortened = Sized(Region({{1, 1, 3, 3}}));
        Words many(32, 1, 1000000000, 16, 0, 0, 0, 0), size = Sized(many), filled = NoBounds;
        filled.Put(LONG{4000}).Put(WhiteBrush);
        Play(Metafile()
                 .Add(SelectClipRgn, shortened.Put(5))
                 .Add(SelectClipRgn, size.Put(5).Put(many))
                 .Add(FillRgn, filled));
        EXPECT_EQ(report_.skipped, Counts({{"EXTSELECTCLIPRGN: too short", 2}, {"FILLRGN: too short", 1}}));
    }

} // namespace
} // namespace gdi_tests
