#include "engine/gdi/dib.h"
#include "tests/engine/gdi_dib_writer.h"
#include "tests/engine/gdi_recorder.h"

namespace gdi_tests {
namespace {

    using engine::gdi::DamagedData;
    using engine::gdi::Dib;

    using Rows = std::vector<std::string>;

    class GdiDibs : public Painted {
    protected:
        static Dib Given(const TestDib& dib)
        {
            Dib given;
            given.info = std::span<const BYTE>(dib.info.bytes);
            given.bits = std::span<const BYTE>(dib.bits);
            return given;
        }
        // The colours of all rows, from the top.
        static Rows Read(const TestDib& dib)
        {
            const auto bitmap = engine::gdi::ReadDib(Given(dib));
            Rows rows;
            for (LONG y = 0; y < bitmap->Size().cy; ++y)
                rows.push_back(Row(bitmap->Pixels(), y));
            return rows;
        }
        static std::string Refusal(const TestDib& dib)
        {
            try {
                engine::gdi::ReadDib(Given(dib));
                return "";
            } catch (const DamagedData& damage) {
                return damage.what();
            }
        }
    };

    TEST_F(GdiDibs, OneBitSelectsOfTwoColours)
    {
        EXPECT_EQ(Read(WithColours(MakeDib(10, 1, 1, {0xF0, 0x40, 0, 0}), {0x112233, 0x445566})),
                  Rows({"4*445566 5*112233 1*445566"}));
    }

    TEST_F(GdiDibs, FourBitsHaveTheHighHalfFirst)
    {
        EXPECT_EQ(Read(WithColours(MakeDib(3, 1, 4, {0x10, 0x20, 0, 0}), {0x000001, 0x000002, 0x000003})),
                  Rows({"1*000002 1*000001 1*000003"}));
    }

    TEST_F(GdiDibs, EightBitsMayHaveFewColours)
    {
        TestDib dib = WithColours(MakeDib(3, 1, 8, {1, 0, 1, 0}, 0, 2), {0xAA0000, 0x00BB00});
        EXPECT_EQ(Read(dib), Rows({"1*00BB00 1*AA0000 1*00BB00"}));
        const auto bitmap = engine::gdi::ReadDib(Given(dib));
        EXPECT_EQ(bitmap->Pixels().layout.palette.size(), 2u);
    }

    TEST_F(GdiDibs, AColourTableCutShortLeavesBlack)
    {
        EXPECT_EQ(Read(WithColours(MakeDib(2, 1, 8, {0, 1, 0, 0}), {0xAA0000})), Rows({"1*AA0000 1*000000"}));
    }

    TEST_F(GdiDibs, SixteenBitsAreFiveFiveFiveUnlessTold)
    {
        EXPECT_EQ(Read(MakeDib(2, 1, 16, {0x00, 0x7C, 0x1F, 0x00})), Rows({"1*FF0000 1*0000FF"}));
        const TestDib masked = MakeDib(2, 1, 16, {0x00, 0xF8, 0xE0, 0x07}, 3);
        EXPECT_EQ(Read(WithColours(masked, {0xF800, 0x07E0, 0x001F})), Rows({"1*FF0000 1*00FF00"}));
    }

    TEST_F(GdiDibs, TwentyFourAndThirtyTwoBitsHaveBlueFirst)
    {
        EXPECT_EQ(Read(MakeDib(1, 1, 24, {0x33, 0x22, 0x11, 0})), Rows({"1*112233"}));
        EXPECT_EQ(Read(MakeDib(1, 1, 32, {0x33, 0x22, 0x11, 0})), Rows({"1*112233"}));
        const TestDib masked = MakeDib(1, 1, 32, {0x11, 0x22, 0x33, 0}, 3);
        EXPECT_EQ(Read(WithColours(masked, {0xFF, 0xFF00, 0xFF0000})), Rows({"1*112233"}));
    }

    TEST_F(GdiDibs, RowsArePaddedToFourBytesAndStartBelowUnlessTopDown)
    {
        const std::vector<BYTE> bits = {1, 2, 3, 9, 4, 5, 6, 9};
        EXPECT_EQ(Read(MakeDib(1, 2, 24, bits)), Rows({"1*060504", "1*030201"}));
        EXPECT_EQ(Read(MakeDib(1, -2, 24, bits)), Rows({"1*030201", "1*060504"}));
    }

    TEST_F(GdiDibs, BottomUpBitmapsStayBottomUp)
    {
        const TestDib up = MakeDib(1, 2, 24, std::vector<BYTE>(8)), down = MakeDib(1, -2, 24, std::vector<BYTE>(8));
        EXPECT_EQ(engine::gdi::ReadDib(Given(up))->Pixels().lDelta, -4);
        EXPECT_EQ(engine::gdi::ReadDib(Given(down))->Pixels().lDelta, 4);
    }

    TEST_F(GdiDibs, TheOldestHeaderIsKnown)
    {
        TestDib dib;
        dib.info = Words(12).Halves(2, 1, 1, 1);
        dib.info.Bytes("\1\2\3\4\5\6", 6);
        dib.bits = {0x40, 0, 0, 0};
        EXPECT_EQ(Read(dib), Rows({"1*030201 1*060504"}));
    }

    TEST_F(GdiDibs, ColourTablesMayNameEntriesOfThePalette)
    {
        TestDib dib = MakeDib(4, 1, 1, {0x50, 0, 0, 0});
        dib.info.Halves(1, 0);
        const std::vector<COLORREF> palette = {0x0000FF, 0x00FF00};
        Dib given = Given(dib);
        given.paletteIndices = true;
        given.palette = palette;
        EXPECT_EQ(Row(engine::gdi::ReadDib(given)->Pixels(), 0), "1*00FF00 1*FF0000 1*00FF00 1*FF0000");
    }

    TestDib Runs(int depth, LONG width, LONG height, const std::vector<BYTE>& runs)
    {
        return WithColours(MakeDib(width, height, depth, runs, depth == 8 ? 1 : 2, 4), {0, 1, 2, 3});
    }

    TEST_F(GdiDibs, RunsOfEightBitsRepeatAndQuote)
    {
        // three of 1; quoted 2 3 1 and a byte of padding; end of row; two of 2; end
        EXPECT_EQ(Read(Runs(8, 6, 2, {3, 1, 0, 3, 2, 3, 1, 0, 0, 0, 2, 2, 0, 1})),
                  Rows({"2*000002 4*000000", "3*000001 1*000002 1*000003 1*000001"}));
    }

    TEST_F(GdiDibs, RunsOfFourBitsAlternate)
    {
        // five of 1 and 2 in turn; end of row; quoted 3 2 1 and half a byte and a byte of padding; end
        EXPECT_EQ(Read(Runs(4, 5, 2, {5, 0x12, 0, 0, 0, 3, 0x32, 0x10, 0, 1})),
                  Rows({"1*000003 1*000002 1*000001 2*000000", "1*000001 1*000002 1*000001 1*000002 1*000001"}));
    }

    TEST_F(GdiDibs, RunsMaySkip)
    {
        EXPECT_EQ(Read(Runs(8, 3, 3, {1, 1, 0, 2, 1, 2, 1, 3, 0, 1})),
                  Rows({"2*000000 1*000003", "3*000000", "1*000001 2*000000"}));
    }

    TEST_F(GdiDibs, RunsOutsideOfTheBitmapAreNotDrawn)
    {
        EXPECT_EQ(Read(Runs(8, 2, 1, {255, 1, 0, 2, 255, 255, 9, 2, 0, 0, 3, 3})), Rows({"2*000001"}));
    }

    TEST_F(GdiDibs, RunsThatBreakOffLeaveTheRestBlack)
    {
        EXPECT_EQ(Read(Runs(8, 4, 1, {2, 1})), Rows({"2*000001 2*000000"}));
        EXPECT_EQ(Refusal(Runs(8, 4, 1, {0, 3, 1})), "too short");
        EXPECT_EQ(Refusal(Runs(8, 4, 1, {0, 2, 1})), "too short");
    }

    TEST_F(GdiDibs, DamagedBitmapsAreRefused)
    {
        const std::vector<BYTE> few(4);
        EXPECT_EQ(Refusal(TestDib()), "too short");
        EXPECT_EQ(Refusal(MakeDib(0, 1, 32, few)), "bitmap without a size");
        EXPECT_EQ(Refusal(MakeDib(1, 0, 32, few)), "bitmap without a size");
        EXPECT_EQ(Refusal(MakeDib(-1, 1, 32, few)), "bitmap without a size");
        EXPECT_EQ(Refusal(MakeDib(1, INT32_MIN, 32, few)), "bitmap without a size");
        EXPECT_EQ(Refusal(MakeDib(INT32_MAX, INT32_MAX, 32, few)), "bitmap without a size");
        EXPECT_EQ(Refusal(MakeDib(1, 2, 32, few)), "bitmap with too few bits");
        EXPECT_EQ(Refusal(MakeDib(1 << 20, 1 << 20, 32, few)), "bitmap with too few bits");
        EXPECT_EQ(Refusal(MakeDib(1, 1, 5, few)), "bitmap of an unknown depth");
        EXPECT_EQ(Refusal(MakeDib(1, 1, 32, few, 6)), "bitmap of an unknown compression");
        EXPECT_EQ(Refusal(MakeDib(1, 1, 4, few, 1)), "run lengths of a wrong depth or direction");
        EXPECT_EQ(Refusal(MakeDib(1, -1, 8, few, 1)), "run lengths of a wrong depth or direction");
        EXPECT_EQ(Refusal(MakeDib(1, 1, 24, few, 3)), "colour masks at a wrong depth");
        EXPECT_EQ(Refusal(MakeDib(1, 1, 32, few, 3)), "too short");
        EXPECT_EQ(Refusal(MakeDib(1, 1, 0, {}, 4)), "picture that cannot be read");
        TestDib header = MakeDib(1, 1, 32, few);
        header.info.bytes[0] = 41;
        EXPECT_EQ(Refusal(header), "bitmap header of a wrong size");
    }

    TEST_F(GdiDibs, MasksThatMakeNoColourAreRefused)
    {
        const TestDib dib = MakeDib(1, 1, 32, {0, 0, 0, 0}, 3), narrow = MakeDib(1, 1, 16, {0, 0, 0, 0}, 3);
        const char* const reason = "colour masks that make no colour";
        EXPECT_EQ(Refusal(WithColours(dib, {0, 0xFF00, 0xFF})), reason);
        EXPECT_EQ(Refusal(WithColours(dib, {0xFF00FF, 0xFF00, 0xFF})), reason);
        EXPECT_EQ(Refusal(WithColours(dib, {0xFFFF00, 0xFF00, 0xFF})), reason);
        EXPECT_EQ(Refusal(WithColours(narrow, {0xFF0000, 0xFF00, 0xFF})), reason);
    }

    TEST_F(GdiDibs, FewRunsCannotStandForAHugeBitmap)
    {
        EXPECT_EQ(Refusal(Runs(8, 4096, 4096, {1, 1, 0, 1})), "bitmap with too few bits");
    }

    TEST_F(GdiDibs, ADamagedBitmapIsASkippedRecord)
    {
        Play(Metafile().Add(StretchDiBits, StretchDibWords({0, 0, 2, 2}, {0, 0, 2, 2}, MakeDib(2, 2, 32, {1, 2, 3}))));
        EXPECT_EQ(report_.skipped, Counts({{"STRETCHDIBITS: bitmap with too few bits", 1}}));
    }

    // Two pixels, red and blue; the compressor stored them as they are.
    const std::vector<BYTE> RedBluePng = {
        0x89, 'P',  'N', 'G',  0x0D, 0x0A, 0x1A, 0x0A, 0,    0,    0,    13,   'I',  'H',  'D',  'R',  0,    0,    0,
        2,    0,    0,   0,    1,    8,    2,    0,    0,    0,    0x7B, 0x40, 0xE8, 0xDD, 0,    0,    0,    18,   'I',
        'D',  'A',  'T', 0x78, 0x01, 0x01, 0x07, 0x00, 0xF8, 0xFF, 0x00, 0xFF, 0x00, 0x00, 0x00, 0x00, 0xFF, 0x07, 0xFE,
        0x01, 0xFF, 0,   0,    0,    0,    0,    0,    0,    0,    'I',  'E',  'N',  'D',  0xAE, 0x42, 0x60, 0x82};

    TEST_F(GdiDibs, ABitmapMayBeACompressedPicture)
    {
        TestDib dib = MakeDib(2, 1, 0, RedBluePng, 5);
        EXPECT_EQ(Read(dib), Rows({"1*FF0000 1*0000FF"}));
    }

    engine::Surface& Draw(engine::Engine&, const std::vector<BYTE>& file, bool page, std::string& error)
    {
        engine::Surface& surface = *engine::MakeBitmap({6, 3}, engine::PixelLayout::Default(BMF_32BPP));
        engine::gdi::PlayReport report;
        engine::gdi::PlayBytes({&surface, surface.layout, {1, 1, 6, 3}}, std::span<const BYTE>(file), "picture", report,
                               error, {false, page});
        return surface;
    }

    TEST_F(GdiDibs, APngFileIsDrawnInItsOwnSizeOnThePage)
    {
        engine::Surface& surface = Draw(engine_, RedBluePng, true, error_);
        EXPECT_EQ(error_, "");
        EXPECT_EQ(Row(surface, 0), "6*000000");
        EXPECT_EQ(Row(surface, 1), "1*000000 1*FF0000 1*0000FF 3*FFFFFF");
        EXPECT_EQ(Row(surface, 2), "1*000000 5*FFFFFF");
        EXPECT_EQ(Row(Draw(engine_, RedBluePng, false, error_), 2), "6*000000");
    }

    TEST_F(GdiDibs, ABmpFileIsDrawn)
    {
        const TestDib dib = WithColours(MakeDib(2, 1, 8, {1, 0, 0, 0}, 0, 2), {0x00FF00, 0xFF0000});
        Words file = Words().Halves(0x4D42).Put(LONG{66}).Put(LONG{0}).Put(LONG{62});
        PutDib(file, dib);
        engine::Surface& surface = Draw(engine_, file.bytes, true, error_);
        EXPECT_EQ(error_, "");
        EXPECT_EQ(Row(surface, 1), "1*000000 1*FF0000 1*00FF00 3*FFFFFF");
    }

    TEST_F(GdiDibs, DamagedPictureFilesAreErrors)
    {
        std::vector<BYTE> cut(RedBluePng.begin(), RedBluePng.begin() + 20);
        Draw(engine_, cut, false, error_);
        EXPECT_EQ(error_, "picture: picture that cannot be read");
        constexpr std::size_t secondChunk = 33;
        const std::vector<BYTE> endless = {0x7F, 0xFF, 0xFF, 0xFF, 't', 'E', 'X', 't'}; // as long as memory
        std::vector<BYTE> misled = RedBluePng;
        misled.insert(misled.begin() + secondChunk, endless.begin(), endless.end());
        Draw(engine_, misled, false, error_);
        EXPECT_EQ(error_, "picture: picture that cannot be read");
        Draw(engine_, {'B', 'M', 0}, false, error_);
        EXPECT_EQ(error_, "picture: too short");
        Draw(engine_, {'G', 'I', 'F'}, false, error_);
        EXPECT_EQ(error_, "picture: neither a metafile nor a PNG or BMP picture");
    }

} // namespace
} // namespace gdi_tests
