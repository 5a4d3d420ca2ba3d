#include "tests/engine/gdi_dib_writer.h"
#include "tests/engine/gdi_recorder.h"

namespace gdi_tests {
namespace {

    constexpr ULONG Indexed = 0x01000000;

    Words Palette(ULONG handle, const std::vector<COLORREF>& colours)
    {
        Words words(handle);
        words.Halves(0x300, static_cast<int>(colours.size()));
        for (const COLORREF colour : colours)
            words.Put(colour);
        return words;
    }

    // A block in the brush of a handle.
    Metafile& Block(Metafile& metafile, ULONG brush)
    {
        return metafile.Add(SelectObject, Words(NullPen))
            .Add(SelectObject, Words(brush))
            .Add(Rectangle, Words(0, 0, 1, 1));
    }

    class GdiObjects : public Recorded {
    protected:
        std::string ColourOf(Metafile metafile, ULONG brush)
        {
            const Lines lines = Play(Block(metafile, brush));
            const std::size_t at = lines.empty() ? 0 : lines[0].find("brush ");
            return lines.empty() ? "none" : lines[0].substr(at + 6, lines[0].find(' ', at + 6) - at - 6);
        }
    };

    TEST_F(GdiObjects, StockBrushesHaveTheirColours)
    {
        const char* const colours[] = {"FFFFFF", "C0C0C0", "808080", "404040", "0", "none"};
        for (ULONG i = 0; i < 6; ++i)
            EXPECT_EQ(ColourOf(Metafile(), Stock | i), colours[i]);
        EXPECT_EQ(ColourOf(Metafile(), Stock | 18), "FFFFFF");
    }

    TEST_F(GdiObjects, ABrushIsSolidHatchedOrNone)
    {
        EXPECT_EQ(ColourOf(Metafile().Add(CreateBrush, Words(1, 0, 0x0000FF, 0)), 1), "FF0000");
        EXPECT_EQ(ColourOf(Metafile().Add(CreateBrush, Words(1, 1, 0x0000FF, 0)), 1), "none");
        Play(Metafile().Add(CreateBrush, Words(1, 9, 0, 0)).Add(CreateBrush, Words(1, 2, 0, 12)));
        EXPECT_EQ(report_.skipped,
                  Counts({{"CREATEBRUSHINDIRECT: no such brush style", 1}, {"CREATEBRUSHINDIRECT: no such hatch", 1}}));
    }

    TEST_F(GdiObjects, WhatIsSelectedOutlivesItsDeletion)
    {
        Metafile metafile;
        metafile.Add(CreateBrush, Words(1, 0, 0x0000FF, 0)).Add(SelectObject, Words(1)).Add(DeleteObject, Words(1));
        metafile.Add(SelectObject, Words(NullPen)).Add(Rectangle, Words(0, 0, 1, 1));
        EXPECT_EQ(Play(metafile), Lines({"BitBlt (0,0,1,1) rop F0F0 brush FF0000 clip -"}));
    }

    TEST_F(GdiObjects, HandlesThatDoNotExistAreSkipped)
    {
        Play(Metafile()
                 .Add(SelectObject, Words(3))
                 .Add(DeleteObject, Words(3))
                 .Add(SelectObject, Words(Stock | 99))
                 .Add(CreateBrush, Words(0, 0, 0, 0))
                 .Add(CreateBrush, Words(0x10000, 0, 0, 0))
                 .Add(DeleteObject, Words(Stock | 1)));
        EXPECT_EQ(report_.skipped,
                  Counts({{"SELECTOBJECT: no such object", 1},
                          {"DELETEOBJECT: no such object", 1},
                          {"SELECTOBJECT: no such stock object", 1},
                          {"CREATEBRUSHINDIRECT: no such handle", 2}}));
        EXPECT_EQ(report_.played["DELETEOBJECT"], 1u);
    }

    TEST_F(GdiObjects, ColoursMayBeEntriesOfThePalette)
    {
        Metafile metafile;
        metafile.Add(CreatePalette, Palette(1, {0x0000FF, 0x00FF00})).Add(CreateBrush, Words(2, 0, Indexed | 1, 0));
        EXPECT_EQ(ColourOf(metafile, 2), "800000"); // dark red, of the default palette
        metafile.Add(SelectPalette, Words(1)).Add(RealizePalette);
        EXPECT_EQ(ColourOf(metafile, 2), "FF00");
        metafile.Add(SelectPalette, Words(Stock | 15));
        EXPECT_EQ(ColourOf(metafile, 2), "800000");
    }

    TEST_F(GdiObjects, EntriesThatAreNotThereAreBlack)
    {
        EXPECT_EQ(ColourOf(Metafile().Add(CreateBrush, Words(2, 0, Indexed | 20, 0)), 2), "0");
    }

    TEST_F(GdiObjects, ASelectedPaletteCanBeChanged)
    {
        Metafile metafile;
        metafile.Add(CreatePalette, Palette(1, {0x0000FF, 0x00FF00})).Add(SelectPalette, Words(1));
        metafile.Add(CreateBrush, Words(2, 0, Indexed | 1, 0)).Add(CreateBrush, Words(3, 0, Indexed | 2, 0));
        metafile.Add(SetPaletteEntries, Words(1, 1, 1, 0xFF0000));
        EXPECT_EQ(ColourOf(metafile, 2), "FF");
        metafile.Add(ResizePalette, Words(1, 3)).Add(SetPaletteEntries, Words(1, 2, 1, 0x112233));
        EXPECT_EQ(ColourOf(metafile, 3), "332211");
    }

    TEST_F(GdiObjects, PalettesAreNotChangedOutsideOfTheirSize)
    {
        Metafile metafile;
        metafile.Add(CreatePalette, Palette(1, {0x0000FF, 0x00FF00}));
        metafile.Add(SetPaletteEntries, Words(1, 1, 2, 0, 0)).Add(SetPaletteEntries, Words(1, 0xFFFFFFFF, 1, 0));
        metafile.Add(ResizePalette, Words(1, 0)).Add(ResizePalette, Words(1, 1000000)).Add(SelectObject, Words(1));
        metafile.Add(SelectPalette, Words(2));
        Play(metafile);
        EXPECT_EQ(report_.skipped,
                  Counts({{"SETPALETTEENTRIES: palette too small", 2},
                          {"RESIZEPALETTE: palette of a wrong size", 2},
                          {"SELECTOBJECT: palette among objects", 1},
                          {"SELECTPALETTE: no such object", 1}}));
    }

    TEST_F(GdiObjects, BitmapsMayHaveColoursOfThePalette)
    {
        TestDib dib = MakeDib(2, 1, 1, {0x40, 0, 0, 0});
        dib.info.Halves(1, 0);
        dib.usage = 1;
        Words brush(3, dib.usage);
        brush.Put(Places(dib, 32));
        Metafile metafile;
        metafile.Add(CreatePalette, Palette(1, {0x0000FF, 0x00FF00})).Add(SelectPalette, Words(1));
        metafile.Add(CreateDibBrush, PutDib(brush, dib));
        EXPECT_EQ(Play(Block(metafile, 3)), Lines({"BitBlt (0,0,1,1) rop F0F0 pattern | FF00 FF0000 clip -"}));
    }

    TEST_F(GdiObjects, DamagedBrushesAndPensAreSkipped)
    {
        TestDib cut = FourColours();
        cut.bits.resize(8);
        Words brush(3, 0);
        brush.Put(Places(cut, 32));
        Play(Metafile()
                 .Add(CreateDibBrush, PutDib(brush, cut))
                 .Add(ExtCreatePen, Words(1, 0, 0, 0, 0, 7, 1, 0, 0, 0, 9))
                 .Add(CreatePen, Words(1, 0)));
        EXPECT_EQ(report_.skipped,
                  Counts({{"CREATEDIBPATTERNBRUSHPT: bitmap with too few bits", 1},
                          {"EXTCREATEPEN: too short", 1},
                          {"CREATEPEN: too short", 1}}));
    }

} // namespace
} // namespace gdi_tests
