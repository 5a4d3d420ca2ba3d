#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;

using Blends = RasterTest;

Surface* OnePixel(ULONG pixel, ULONG format = BMF_32BPP)
{
    Surface* const surface = Blank(1, 1, format);
    surface->SetPixel(0, 0, pixel);
    return surface;
}

BOOL Blend(Surface* target, Surface* source, BYTE constantAlpha, BYTE format, XLATEOBJ* pxlo = nullptr)
{
    RECTL to = target->Bounds(), from = source->Bounds();
    BLENDOBJ blend = {{AC_SRC_OVER, 0, constantAlpha, format}};
    return EngAlphaBlend(target, source, nullptr, pxlo, &to, &from, &blend);
}

ULONG Blended(ULONG target, ULONG source, BYTE constantAlpha, BYTE format = 0)
{
    Surface* const surface = OnePixel(target);
    EXPECT_TRUE(Blend(surface, OnePixel(source), constantAlpha, format));
    return surface->Pixel(0, 0);
}

TEST_F(Blends, AConstantAlphaWeighsBothColours)
{
    // (200 * 128 + 100 * 127) / 255 = 150.2; 255 * 128 / 255 = 128; (0 * 128 + 255 * 127) / 255 = 127
    EXPECT_EQ(Blended(0x6400FF, 0xC8FF00, 128), 0x96807Fu);
    EXPECT_EQ(Blended(0x123456, 0x654321, 0), 0x123456u);
    EXPECT_EQ(Blended(0x123456, 0x654321, 255), 0x654321u);
    EXPECT_EQ(Blended(0x000000, 0x010203, 127), 0x000101u); // 0.498, 0.996, 1.494
}

TEST_F(Blends, AnAlphaPerPixelAddsWhatTheSourceLetsThrough)
{
    // 100 + 200 * 127 / 255 (99.6) = 200; 0 + 100 * 127 / 255 (49.8) = 50; 128 + 0 = 128; alpha 128 + 0
    EXPECT_EQ(Blended(0xC86400, 0x80640080, 255, AC_SRC_ALPHA), 0x80C83280u);
    EXPECT_EQ(Blended(0x123456, 0x00000000, 255, AC_SRC_ALPHA), 0x123456u);
    EXPECT_EQ(Blended(0x123456, 0xFF654321, 255, AC_SRC_ALPHA), 0xFF654321u);
}

TEST_F(Blends, BothAlphasMultiply)
{
    // 100 * 64 / 255 = 25.1; alpha 128 * 64 / 255 = 32.1; 10 * 223 / 255 = 8.7: 25 + 9 = 34
    EXPECT_EQ(Blended(0x0A0A00, 0x80640000, 64, AC_SRC_ALPHA), 0x20220900u);
}

TEST_F(Blends, TheTargetsOwnAlphaIsBlendedToo)
{
    // 128 + 64 * 127 / 255 (31.9) = 160
    EXPECT_EQ(Blended(0x40000000, 0x80000000, 255, AC_SRC_ALPHA), 0xA0000000u);
}

TEST_F(Blends, AColourAboveItsAlphaEndsAtWhite)
{
    EXPECT_EQ(Blended(0xFFFFFF, 0x00FF0000, 255, AC_SRC_ALPHA), 0x00FFFFFFu);
}

TEST_F(Blends, SixteenBitTargetsAreWidenedAndPackedAgain)
{
    Translation translation(PixelLayout::Default(BMF_32BPP), PixelLayout::Default(BMF_16BPP));
    Surface* const target = OnePixel(0x0000, BMF_16BPP);
    EXPECT_TRUE(Blend(target, OnePixel(0xFFFFFF), 128, 0, &translation)); // 128 of 255 each
    EXPECT_EQ(target->Pixel(0, 0), 0x8410u);
    Surface* const white = OnePixel(0xFFFF, BMF_16BPP);
    EXPECT_TRUE(Blend(white, OnePixel(0x80000000), 255, AC_SRC_ALPHA, &translation)); // 127 of 255 each
    EXPECT_EQ(white->Pixel(0, 0), 0x7BEFu);
}

TEST_F(Blends, PaletteTargetsTakeTheNearestColour)
{
    PixelLayout layout = PixelLayout::Default(BMF_8BPP);
    layout.palette = {0x000000, 0xFFFFFF, 0x808080, 0x0000FF, 0x404040};
    Surface* const target = MakeBitmap({2, 1}, layout);
    target->SetPixel(0, 0, 1);
    target->SetPixel(1, 0, 0);
    Translation translation(PixelLayout::Default(BMF_32BPP), layout);
    Surface* const source = Picture({".."}); // black
    EXPECT_TRUE(Blend(target, source, 128, 0, &translation)); // 127 of white, 0 of black
    EXPECT_PICTURE(target, "2.");
}

TEST_F(Blends, IndexedSourcesBlendTheirColours)
{
    Translation translation(PixelLayout::Default(BMF_32BPP), 0x000000, 0x00FF00);
    Surface* const target = Blank(2, 1);
    EXPECT_TRUE(Blend(target, Picture({"#."}, BMF_1BPP), 51, 0, &translation)); // a fifth
    EXPECT_EQ(target->Pixel(0, 0), 0x003300u);
    EXPECT_EQ(target->Pixel(1, 0), 0u);
}

TEST_F(Blends, TheSourceIsStretchedAndClipped)
{
    Surface* const target = Blank(4, 1);
    ClipObject clip({0, 0, 3, 1});
    RECTL to = {0, 0, 4, 1}, from = {0, 0, 2, 1};
    BLENDOBJ blend = {{AC_SRC_OVER, 0, 255, 0}};
    EXPECT_TRUE(EngAlphaBlend(target, Picture({"67"}), &clip, nullptr, &to, &from, &blend));
    EXPECT_PICTURE(target, "667.");
}

TEST_F(Blends, OtherFunctionsAreRefused)
{
    Surface* const target = OnePixel(5);
    RECTL all = {0, 0, 1, 1};
    for (const BLENDFUNCTION function :
         {BLENDFUNCTION{1, 0, 255, 0}, BLENDFUNCTION{AC_SRC_OVER, 1, 255, 0}, BLENDFUNCTION{AC_SRC_OVER, 0, 255, 2}}) {
        BLENDOBJ blend = {function};
        EXPECT_FALSE(EngAlphaBlend(target, OnePixel(7), nullptr, nullptr, &all, &all, &blend));
    }
    EXPECT_FALSE(Blend(target, OnePixel(7, BMF_24BPP), 255, AC_SRC_ALPHA));
    EXPECT_PICTURE(target, "5");
}

TEST_F(Blends, NullArgumentsAreRefused)
{
    Surface* const surface = OnePixel(5);
    RECTL all = {0, 0, 1, 1};
    BLENDOBJ blend = {};
    EXPECT_FALSE(EngAlphaBlend(nullptr, surface, nullptr, nullptr, &all, &all, &blend));
    EXPECT_FALSE(EngAlphaBlend(surface, nullptr, nullptr, nullptr, &all, &all, &blend));
    EXPECT_FALSE(EngAlphaBlend(surface, surface, nullptr, nullptr, nullptr, &all, &blend));
    EXPECT_FALSE(EngAlphaBlend(surface, surface, nullptr, nullptr, &all, &all, nullptr));
    ExpectViolation("EngAlphaBlend: null target");
    ExpectViolation("EngAlphaBlend: null source");
    ExpectViolation("EngAlphaBlend: null rectangle");
    ExpectViolation("EngAlphaBlend: null blend function");
}

} // namespace
