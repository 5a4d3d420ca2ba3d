#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;

using Formats = RasterTest;
using Bytes = std::vector<int>;

Bytes FirstBytes(const Surface* surface, LONG row, std::size_t count)
{
    return Bytes(surface->Row(row), surface->Row(row) + count);
}

void Paint(Surface* target, RECTL rectangle, ULONG pixel)
{
    Brush brush = Brush::Solid(pixel);
    ASSERT_TRUE(
        EngBitBlt(target, nullptr, nullptr, nullptr, nullptr, &rectangle, nullptr, nullptr, &brush, nullptr, 0xF0F0));
}

void Copy(Surface* target, Surface* source, XLATEOBJ* pxlo, RECTL rectangle, POINTL from)
{
    ASSERT_TRUE(EngCopyBits(target, source, nullptr, pxlo, &rectangle, &from));
}

TEST_F(Formats, OneBitPixelsStartAtTheTopBitAndKeepTheirNeighbours)
{
    Surface* const target = Blank(16, 2, BMF_1BPP);
    Paint(target, {3, 0, 10, 2}, 1);
    EXPECT_EQ(FirstBytes(target, 0, 2), (Bytes{0x1F, 0xC0}));
    EXPECT_EQ(FirstBytes(target, 1, 2), (Bytes{0x1F, 0xC0}));
    Paint(target, {5, 1, 9, 2}, 0);
    EXPECT_EQ(FirstBytes(target, 1, 2), (Bytes{0x18, 0x40}));
    EXPECT_EQ(FirstBytes(target, 0, 2), (Bytes{0x1F, 0xC0}));
}

TEST_F(Formats, FourBitPixelsStartAtTheHighHalf)
{
    Surface* const target = Blank(6, 1, BMF_4BPP);
    Paint(target, {1, 0, 4, 1}, 0xA);
    EXPECT_EQ(FirstBytes(target, 0, 3), (Bytes{0x0A, 0xAA, 0x00}));
}

TEST_F(Formats, WiderPixelsAreLittleEndian)
{
    Surface* const sixteen = Blank(3, 1, BMF_16BPP);
    Paint(sixteen, {1, 0, 2, 1}, 0x1234);
    EXPECT_EQ(FirstBytes(sixteen, 0, 6), (Bytes{0, 0, 0x34, 0x12, 0, 0}));
    Surface* const twentyFour = Blank(3, 1, BMF_24BPP);
    Paint(twentyFour, {1, 0, 2, 1}, 0xAB123456);
    EXPECT_EQ(FirstBytes(twentyFour, 0, 9), (Bytes{0, 0, 0, 0x56, 0x34, 0x12, 0, 0, 0}));
    Surface* const thirtyTwo = Blank(2, 1, BMF_32BPP);
    Paint(thirtyTwo, {1, 0, 2, 1}, 0xAB123456);
    EXPECT_EQ(FirstBytes(thirtyTwo, 0, 8), (Bytes{0, 0, 0, 0, 0x56, 0x34, 0x12, 0xAB}));
}

TEST_F(Formats, EveryFormatIsFilledAndCopiedWithoutTouchingTheRest)
{
    for (const ULONG format : AllFormats) {
        Surface* const source = Picture({".....", ".#.#.", "..#..", "....."}, format);
        Surface* const target = Picture({"######", "######", "######"}, format);
        Copy(target, source, nullptr, {1, 0, 5, 2}, {1, 1});
        EXPECT_PICTURE(target, "##.#.#", "#.#..#", "######") << format;
        Paint(target, {3, 1, 6, 3}, 0);
        EXPECT_PICTURE(target, "##.#.#", "#.#...", "###...") << format;
    }
}

TEST_F(Formats, BottomUpBitmapsAreTheSamePicture)
{
    for (const ULONG format : AllFormats) {
        Surface* const source = Picture({"#..", ".#.", "##."}, format, -12);
        Surface* const target = Blank(3, 3, format);
        Copy(target, source, nullptr, {0, 0, 3, 3}, {0, 0});
        EXPECT_PICTURE(target, "#..", ".#.", "##.") << format;
        Surface* const bottomUp = Blank(3, 3, format, -16);
        Copy(bottomUp, target, nullptr, {0, 1, 3, 3}, {0, 0});
        EXPECT_PICTURE(bottomUp, "...", "#..", ".#.") << format;
        Paint(bottomUp, {1, 0, 3, 1}, 1);
        EXPECT_PICTURE(bottomUp, ".##", "#..", ".#.") << format;
        EXPECT_EQ(bottomUp->lDelta, -16);
    }
}

TEST_F(Formats, PixelsStayUnderATrivialTranslation)
{
    const PixelLayout layout = PixelLayout::Default(BMF_8BPP);
    Translation translation(layout, layout);
    ASSERT_EQ(translation.flXlate, XO_TRIVIAL);
    Surface* const target = Blank(3, 1, BMF_8BPP);
    Copy(target, Picture({"29c"}, BMF_8BPP), &translation, {0, 0, 3, 1}, {0, 0});
    EXPECT_PICTURE(target, "29c");
}

TEST_F(Formats, ATableTranslatesPixelByPixel)
{
    PixelLayout source = PixelLayout::Default(BMF_4BPP);
    source.palette = {0x000000, 0x0000FF, 0x00FF00, 0xFF0000};
    Translation translation(source, PixelLayout::Default(BMF_16BPP));
    ASSERT_EQ(translation.flXlate, XO_TABLE);
    Surface* const target = Blank(6, 1, BMF_16BPP);
    Copy(target, Picture({".#239."}, BMF_4BPP), &translation, {0, 0, 6, 1}, {0, 0});
    const ULONG expected[] = {0, 0xF800, 0x07E0, 0x001F, 0, 0}; // 9 has no entry
    for (LONG x = 0; x < 6; ++x)
        EXPECT_EQ(target->Pixel(x, 0), expected[x]) << x;
}

TEST_F(Formats, OneBitSourcesTakeTheTwoGivenPixels)
{
    Translation translation(PixelLayout::Default(BMF_32BPP), 5, 9);
    Surface* const target = Blank(4, 1);
    Copy(target, Picture({"#..#"}, BMF_1BPP), &translation, {0, 0, 4, 1}, {0, 0});
    EXPECT_PICTURE(target, "9559");
}

TEST_F(Formats, ComputedTranslationsConvertEachColour)
{
    Surface* const source = Blank(3, 1);
    source->SetPixel(0, 0, 0xFF8040);
    source->SetPixel(1, 0, 0x0000FF);
    source->SetPixel(2, 0, 0xFFFFFF);
    Translation toSixteen(source->layout, PixelLayout::Default(BMF_16BPP));
    ASSERT_EQ(toSixteen.flXlate, 0u);
    Surface* const sixteen = Blank(3, 1, BMF_16BPP);
    Copy(sixteen, source, &toSixteen, {0, 0, 3, 1}, {0, 0});
    EXPECT_EQ(sixteen->Pixel(0, 0), 0xFC08u); // 31 << 11 | 32 << 5 | 8
    EXPECT_EQ(sixteen->Pixel(1, 0), 0x001Fu);
    EXPECT_EQ(sixteen->Pixel(2, 0), 0xFFFFu);

    const PixelLayout fiveFiveFive = PixelLayout::FiveFiveFive();
    Translation toFiveFiveFive(source->layout, fiveFiveFive);
    Surface* const fifteen = MakeBitmap({3, 1}, fiveFiveFive);
    Copy(fifteen, source, &toFiveFiveFive, {0, 0, 3, 1}, {0, 0});
    EXPECT_EQ(fifteen->Pixel(0, 0), 0x7E08u); // 31 << 10 | 16 << 5 | 8
    EXPECT_EQ(fifteen->Pixel(2, 0), 0x7FFFu);
}

TEST_F(Formats, AForeignTranslationIsRefused)
{
    XLATEOBJ foreign = {};
    Surface* const target = Picture({"5"});
    RECTL all = {0, 0, 1, 1};
    POINTL from = {0, 0};
    EXPECT_FALSE(EngCopyBits(target, Picture({"7"}), nullptr, &foreign, &all, &from));
    EXPECT_PICTURE(target, "5");
    ExpectViolation("a foreign XLATEOBJ");
}

} // namespace
