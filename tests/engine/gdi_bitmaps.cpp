#include "tests/engine/gdi_dib_writer.h"
#include "tests/engine/gdi_recorder.h"

namespace gdi_tests {
namespace {

    class GdiBitmaps : public Recorded {
    protected:
        Lines Stretch(const Area& to, const Area& from, const TestDib& dib, ULONG rop = SrcCopy)
        {
            return Play(Metafile().Add(StretchDiBits, StretchDibWords(to, from, dib, rop)));
        }
    };

    TEST_F(GdiBitmaps, ACopyOfTheSameSizeIsCopyBits)
    {
        EXPECT_EQ(Stretch({5, 6, 2, 2}, {0, 0, 2, 2}, FourColours()),
                  Lines({"CopyBits (5,6,7,8) source 2x2/32 at (0,0) clip -"}));
    }

    TEST_F(GdiBitmaps, ACopyWithAnOperationIsBitBlt)
    {
        EXPECT_EQ(Stretch({5, 6, 2, 2}, {0, 0, 2, 2}, FourColours(), SrcInvert),
                  Lines({"BitBlt (5,6,7,8) rop 6666 brush - source 2x2/32 at (0,0) clip -"}));
        EXPECT_EQ(Stretch({5, 6, 2, 2}, {0, 0, 2, 2}, FourColours(), PatPaint),
                  Lines({"BitBlt (5,6,7,8) rop FBFB brush FFFFFF source 2x2/32 at (0,0) clip -"}));
    }

    TEST_F(GdiBitmaps, AStretchedCopyIsStretchBlt)
    {
        EXPECT_EQ(Stretch({5, 6, 8, 4}, {0, 0, 2, 2}, FourColours()),
                  Lines({"StretchBlt (5,6,13,10) from (0,0,2,2) source 2x2/32 mode 1 clip -"}));
        EXPECT_EQ(Stretch({5, 6, 8, 4}, {0, 0, 2, 2}, FourColours(), SrcInvert),
                  Lines({"StretchBltROP (5,6,13,10) from (0,0,2,2) source 2x2/32 mode 1 rop 6666 brush - clip -"}));
    }

    TEST_F(GdiBitmaps, StretchModeAndColourAdjustmentAreHandedOn)
    {
        Words adjustment;
        adjustment.Halves(24, 0, 0, 10000, 10000, 10000, 0, 10000, 0, 0, 0, 0);
        EXPECT_EQ(Play(Metafile()
                           .Add(SetStretchBltMode, Words(4))
                           .Add(SetColorAdjustment, adjustment)
                           .Add(StretchDiBits, StretchDibWords({5, 6, 8, 4}, {0, 0, 2, 2}, FourColours()))),
                  Lines({"StretchBlt (5,6,13,10) from (0,0,2,2) source 2x2/32 mode 4 adjusted clip -"}));
    }

    TEST_F(GdiBitmaps, NegativeSizesMirror)
    {
        EXPECT_EQ(Stretch({15, 6, -8, 4}, {0, 0, 2, 2}, FourColours()),
                  Lines({"StretchBlt (15,6,7,10) from (0,0,2,2) source 2x2/32 mode 1 clip -"}));
        EXPECT_EQ(Stretch({5, 6, 8, 4}, {0, 2, 2, -2}, FourColours()),
                  Lines({"StretchBlt (5,10,13,6) from (0,0,2,2) source 2x2/32 mode 1 clip -"}));
    }

    TEST_F(GdiBitmaps, WhatIsCutOffTheTargetIsLeftOutOfTheSource)
    {
        EXPECT_EQ(Stretch({-1, 29, 2, 2}, {0, 0, 2, 2}, FourColours()),
                  Lines({"CopyBits (0,29,1,30) source 2x2/32 at (1,0) clip -"}));
        EXPECT_EQ(Stretch({36, 6, 8, 4}, {0, 0, 2, 2}, FourColours()),
                  Lines({"StretchBlt (36,6,44,10) from (0,0,2,2) source 2x2/32 mode 1 clip rect(36,6,40,10)"}));
    }

    TEST_F(GdiBitmaps, NothingIsReadOutsideOfTheBitmap)
    {
        EXPECT_EQ(Stretch({5, 6, 4, 4}, {-1, -1, 4, 4}, FourColours()),
                  Lines({"CopyBits (6,7,8,9) source 2x2/32 at (0,0) clip -"}));
        EXPECT_EQ(Stretch({4, 8, 8, 8}, {-1, -1, 4, 4}, FourColours()),
                  Lines({"StretchBlt (6,10,10,14) from (0,0,2,2) source 2x2/32 mode 1 clip -"}));
        EXPECT_EQ(Stretch({4, 8, 8, 8}, {7, 0, 4, 4}, FourColours()), Lines());
    }

    TEST_F(GdiBitmaps, RowsOfBottomUpBitmapsCountFromBelow)
    {
        EXPECT_EQ(Stretch({5, 6, 2, 1}, {0, 0, 2, 1}, FourColours()),
                  Lines({"CopyBits (5,6,7,7) source 2x2/32 at (0,1) clip -"}));
        EXPECT_EQ(Stretch({5, 6, 2, 1}, {0, 0, 2, 1}, FourColours(true)),
                  Lines({"CopyBits (5,6,7,7) source 2x2/32 at (0,0) clip -"}));
    }

    TEST_F(GdiBitmaps, OperationsWithoutSourceFill)
    {
        EXPECT_EQ(Play(Metafile().Add(BitBlt, BlitWords({5, 6, 4, 4}, {0, 0}, {}, PatCopy, {}))),
                  Lines({"BitBlt (5,6,9,10) rop F0F0 brush FFFFFF clip -"}));
        EXPECT_EQ(Play(Metafile().Add(BitBlt, BlitWords({5, 6, 4, 4}, {0, 0}, {}, DstInvert, {}))),
                  Lines({"BitBlt (5,6,9,10) rop 5555 brush 0 clip -"}));
        EXPECT_EQ(Play(Metafile()
                           .Add(SelectObject, Words(NullBrush))
                           .Add(BitBlt, BlitWords({5, 6, 4, 4}, {0, 0}, {}, PatCopy, {}))),
                  Lines());
    }

    TEST_F(GdiBitmaps, BitBltTakesItsSizeForTheSource)
    {
        EXPECT_EQ(Play(Metafile().Add(BitBlt, BlitWords({5, 6, 1, 1}, {1, 0}, FourColours(), SrcCopy, {}))),
                  Lines({"CopyBits (5,6,6,7) source 2x2/32 at (1,0) clip -"}));
    }

    TEST_F(GdiBitmaps, StretchBltHasASizeOfItsOwn)
    {
        EXPECT_EQ(
            Play(Metafile().Add(StretchBlt, BlitWords({5, 6, 8, 4}, {0, 1}, FourColours(), SrcCopy, Words(2, 1)))),
            Lines({"StretchBlt (5,6,13,10) from (0,1,2,2) source 2x2/32 mode 1 clip -"}));
    }

    TEST_F(GdiBitmaps, TheSourcesOwnTransformIsObserved)
    {
        Words words = BlitWords({5, 6, 2, 2}, {0, 0}, FourColours(), SrcCopy, {});
        const float half = 0.5f;
        std::memcpy(&words.bytes[44], &half, 4); // m11
        EXPECT_EQ(Play(Metafile().Add(BitBlt, words)),
                  Lines({"StretchBlt (5,6,7,8) from (0,0,1,2) source 2x2/32 mode 1 clip -"}));
    }

    TEST_F(GdiBitmaps, ATurnedCopyIsAParallelogram)
    {
        const Words turned(0.0f, 1.0f, -1.0f, 0.0f, 20.0f, 0.0f);
        EXPECT_EQ(Play(Metafile()
                           .Add(SetWorldTransform, turned)
                           .Add(BitBlt, BlitWords({5, 6, 2, 2}, {0, 0}, FourColours(), SrcCopy, {}))),
                  Lines({"PlgBlt (14,5)(14,7)(12,5) from (0,0,2,2) source 2x2/32 mode 1 clip all(12,5,15,8)"}));
        Play(Metafile()
                 .Add(SetWorldTransform, turned)
                 .Add(BitBlt, BlitWords({5, 6, 2, 2}, {0, 0}, FourColours(), SrcInvert, {})));
        EXPECT_EQ(report_.skipped, Counts({{"BITBLT: turned with a raster operation", 1}}));
    }

    TEST_F(GdiBitmaps, ATurnedFillIsAPathWithTheSameOperation)
    {
        EXPECT_EQ(Play(Metafile()
                           .Add(SetWorldTransform, Words(0.0f, 1.0f, -1.0f, 0.0f, 20.0f, 0.0f))
                           .Add(BitBlt, BlitWords({5, 6, 2, 2}, {0, 0}, {}, DstInvert, {}))),
                  Lines({"FillPath path ml(14,5)(14,7)(12,7)(12,5)z brush 0 mix 606 options 2 clip all(12,5,15,8)"}));
    }

    Words PlgWords(const TestDib& dib, const TestDib* mask)
    {
        Words words = NoBounds;
        words.Put(Words(4, 4, 8, 4, 4, 9, 0, 0, 2, 1)).Put(Words(1.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f));
        words.Put(Words(0xFFFFFF, 0)).Put(Places(dib, 140)).Put(Words(1, 0, 0));
        words.Put(mask ? Places(*mask, 140 + dib.info.bytes.size() + dib.bits.size()) : Words(0, 0, 0, 0));
        PutDib(words, dib);
        return mask ? PutDib(words, *mask) : words;
    }

    TEST_F(GdiBitmaps, PlgBltHasThreeCornersAndAMask)
    {
        const TestDib mask = FourBits();
        EXPECT_EQ(Play(Metafile().Add(PlgBlt, PlgWords(FourColours(), nullptr))),
                  Lines({"PlgBlt (4,4)(8,4)(4,9) from (0,0,2,1) source 2x2/32 mode 1 clip all(4,4,9,10)"}));
        EXPECT_EQ(
            Play(Metafile().Add(PlgBlt, PlgWords(FourColours(), &mask))),
            Lines({"PlgBlt (4,4)(8,4)(4,9) from (0,0,2,1) source 2x2/32 mask at (1,0) mode 1 clip all(4,4,9,10)"}));
    }

    Words MaskWords(const Area& to, const TestDib& dib, const TestDib& mask)
    {
        const std::size_t fixed = 128;
        Words extra(1, 0, 0);
        extra.Put(Places(mask, fixed + dib.info.bytes.size() + dib.bits.size()));
        Words words = BlitWords(to, {0, 1}, dib, 0xAACC0020, extra);
        return PutDib(words, mask);
    }

    TEST_F(GdiBitmaps, MaskBltHasTwoOperations)
    {
        EXPECT_EQ(Play(Metafile().Add(MaskBlt, MaskWords({5, 6, 2, 1}, FourColours(), FourBits()))),
                  Lines({"BitBlt (5,6,7,7) rop AACC brush - source 2x2/32 at (0,1) mask at (1,0) clip -"}));
        EXPECT_EQ(Play(Metafile()
                           .Add(IntersectClip, Words(6, 0, 40, 30))
                           .Add(MaskBlt, MaskWords({5, 6, 2, 1}, FourColours(), FourBits()))),
                  Lines({"BitBlt (6,6,7,7) rop AACC brush - source 2x2/32 at (1,1) mask at (2,0) clip -"}));
    }

    TEST_F(GdiBitmaps, MaskBltWithoutMaskUsesTheForegroundOperation)
    {
        TestDib none;
        EXPECT_EQ(Play(Metafile().Add(MaskBlt, MaskWords({5, 6, 2, 1}, FourColours(), none))),
                  Lines({"CopyBits (5,6,7,7) source 2x2/32 at (0,1) clip -"}));
    }

    TEST_F(GdiBitmaps, MasksMustFitAndHaveOneBit)
    {
        Play(Metafile()
                 .Add(MaskBlt, MaskWords({5, 6, 2, 1}, FourColours(), FourColours()))
                 .Add(MaskBlt, MaskWords({5, 6, 4, 1}, FourColours(), FourBits())));
        EXPECT_EQ(report_.skipped, Counts({{"MASKBLT: mask of more than one bit", 1}, {"MASKBLT: mask too small", 1}}));
    }

    TEST_F(GdiBitmaps, AlphaBlendHasItsFunction)
    {
        const Words words = BlitWords({5, 6, 4, 4}, {0, 0}, FourColours(), 0x01800000, Words(2, 2));
        EXPECT_EQ(Play(Metafile().Add(AlphaBlend, words)),
                  Lines({"AlphaBlend (5,6,9,10) from (0,0,2,2) source 2x2/32 alpha 80 format 1 clip -"}));
        Play(Metafile()
                 .Add(AlphaBlend, BlitWords({5, 6, 4, 4}, {0, 0}, FourBits(), 0x01800000, Words(4, 1)))
                 .Add(AlphaBlend, BlitWords({5, 6, -4, 4}, {0, 0}, FourColours(), 0x01800000, Words(2, 2))));
        EXPECT_EQ(report_.skipped,
                  Counts({{"ALPHABLEND: alpha in a bitmap without it", 1}, {"ALPHABLEND: turned or mirrored", 1}}));
    }

    TEST_F(GdiBitmaps, TransparentBltNamesThePixelLeftOut)
    {
        EXPECT_EQ(
            Play(Metafile().Add(TransparentBlt, BlitWords({5, 6, 4, 4}, {0, 0}, FourColours(), 0x0000FF, Words(2, 2)))),
            Lines({"TransparentBlt (5,6,9,10) from (0,0,2,2) source 2x2/32 but FF0000 clip -"}));
        EXPECT_EQ(
            Play(Metafile().Add(TransparentBlt, BlitWords({5, 6, 4, 1}, {0, 0}, FourBits(), 0xFFFFFF, Words(4, 1)))),
            Lines({"TransparentBlt (5,6,9,7) from (0,0,4,1) source 4x1/1 but 1 clip -"}));
    }

    Words SetDibWords(const Area& area, POINTL from, ULONG firstRow, ULONG rows, const TestDib& dib)
    {
        Words words = NoBounds;
        words.Put(Words(area.x, area.y, from.x, from.y, area.cx, area.cy)).Put(Places(dib, 76));
        words.Put(Words(dib.usage, firstRow, rows));
        return PutDib(words, dib);
    }

    TEST_F(GdiBitmaps, SetDiBitsToDeviceIsNotScaledByTheUnits)
    {
        EXPECT_EQ(Play(Metafile()
                           .Add(SetMapMode, Words(8))
                           .Add(SetViewportExt, Words(3, 3))
                           .Add(SetDiBitsToDevice, SetDibWords({2, 3, 2, 2}, {0, 0}, 0, 2, FourColours()))),
                  Lines({"CopyBits (6,9,8,11) source 2x2/32 at (0,0) clip -"}));
    }

    TEST_F(GdiBitmaps, SetDiBitsToDeviceMayHoldSomeRowsOnly)
    {
        // Rows 4 and 5 of 8 counted from below; shown are rows 3 to 6, at y = 10 .. 13: row 5 is y = 11.
        TestDib dib = FourColours();
        const LONG height = 8;
        std::memcpy(&dib.info.bytes[8], &height, 4);
        EXPECT_EQ(Play(Metafile().Add(SetDiBitsToDevice, SetDibWords({2, 10, 2, 4}, {0, 3}, 4, 2, dib))),
                  Lines({"CopyBits (2,11,4,13) source 2x2/32 at (0,0) clip -"}));
        EXPECT_EQ(Play(Metafile().Add(SetDiBitsToDevice, SetDibWords({2, 10, 2, 4}, {0, 3}, 4, 0, dib))), Lines());
    }

    Words Gradient(ULONG mode, const Words& mesh)
    {
        Words words = NoBounds;
        words.Put(Words(3, 1, mode, 2, 3)).Halves(0xFF00, 0, 0, 0).Put(Words(12, 9)).Halves(0, 0, 0xFF00, 0);
        words.Put(Words(30, 40)).Halves(0, 0, 0, 0);
        return words.Put(mesh);
    }

    TEST_F(GdiBitmaps, GradientsKeepTheirVerticesAndMeshes)
    {
        const std::string vertices = "GradientFill (2,3) FF00/0/0 (12,9) 0/0/FF00 (30,40) 0/0/0 mesh ";
        EXPECT_EQ(Play(Metafile().Add(GradientFill, Gradient(0, Words(0, 1)))),
                  Lines({vertices + "0 1 mode 0 in (2,3,12,9) clip -"}));
        EXPECT_EQ(Play(Metafile().Add(GradientFill, Gradient(2, Words(0, 1, 2)))),
                  Lines({vertices + "0 1 2 mode 2 in (2,3,30,30) clip -"}));
    }

    TEST_F(GdiBitmaps, DamagedGradientsAreSkipped)
    {
        Play(Metafile()
                 .Add(GradientFill, Gradient(0, Words(0, 3)))
                 .Add(GradientFill, Gradient(3, Words(0, 1)))
                 .Add(GradientFill, Gradient(2, Words(0, 1))));
        EXPECT_EQ(report_.skipped,
                  Counts({{"GRADIENTFILL: no such vertex", 1},
                          {"GRADIENTFILL: no such mode", 1},
                          {"GRADIENTFILL: too short", 1}}));
    }

    Words BrushWords(const TestDib& dib)
    {
        Words words(1, dib.usage);
        words.Put(Places(dib, 32));
        return PutDib(words, dib);
    }

    TEST_F(GdiBitmaps, APatternBrushIsInTheTargetsColours)
    {
        EXPECT_EQ(Play(Metafile()
                           .Add(SelectObject, Words(NullPen))
                           .Add(CreateDibBrush, BrushWords(FourColours()))
                           .Add(SelectObject, Words(1))
                           .Add(Rectangle, Words(2, 3, 12, 9))),
                  Lines({"BitBlt (2,3,12,9) rop F0F0 pattern | FF0000 FF00 | FF FFFFFF clip -"}));
    }

    TEST_F(GdiBitmaps, AMonochromePatternHasTheColoursOfTheText)
    {
        Metafile metafile;
        metafile.Add(SelectObject, Words(NullPen))
            .Add(CreateMonoBrush, BrushWords(FourBits()))
            .Add(SelectObject, Words(1));
        metafile.Add(SetTextColor, Words(0x0000FF)).Add(SetBkColor, Words(0x00FF00)).Add(Rectangle, Words(2, 3, 12, 9));
        metafile.Add(SetTextColor, Words(0xFF0000)).Add(Rectangle, Words(2, 3, 12, 9));
        EXPECT_EQ(Play(metafile),
                  Lines({"BitBlt (2,3,12,9) rop F0F0 pattern | FF00 FF0000 FF00 FF00 clip -",
                         "BitBlt (2,3,12,9) rop F0F0 pattern | FF00 FF FF00 FF00 clip -"}));
    }

    TEST_F(GdiBitmaps, AColouredPatternOfAMonochromeBrushIsMadeBlackAndWhite)
    {
        Metafile metafile;
        metafile.Add(SelectObject, Words(NullPen)).Add(CreateMonoBrush, BrushWords(FourColours()));
        metafile.Add(SelectObject, Words(1)).Add(Rectangle, Words(2, 3, 12, 9));
        EXPECT_EQ(Play(metafile), Lines({"BitBlt (2,3,12,9) rop F0F0 pattern | 0 0 | 0 FFFFFF clip -"}));
    }

    TEST_F(GdiBitmaps, APenMayHaveAPattern)
    {
        const TestDib dib = FourColours();
        Words pen(1);
        pen.Put(Places(dib, 52)).Put(Words(0x12100, 4, 5, 0, 0, 0));
        PutDib(pen, dib);
        EXPECT_EQ(
            Play(Metafile()
                     .Add(ExtCreatePen, pen)
                     .Add(SelectObject, Words(1))
                     .Add(MoveTo, Words(10, 10))
                     .Add(LineTo, Words(20, 10))),
            Lines({"StrokePath path ml(10,10)(20,10) wide 4 join 2 cap 1 limit 10 pattern | FF0000 FF00 | FF FFFFFF "
                   "mix D0D clip rect(0,0,40,30)"}));
    }

} // namespace
} // namespace gdi_tests
