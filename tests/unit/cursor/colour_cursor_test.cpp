#include "tests/unit/cursor/cursor_fixture.h"

namespace {

using namespace koru;
using namespace pictures;
using engine::Request;

class ColourCursor : public CursorFixture {
protected:
    engine::Surface* Alpha(std::initializer_list<ULONG> pixels)
    {
        engine::Surface* const shape =
            engine::MakeBitmap({static_cast<LONG>(pixels.size()), 1}, engine::PixelLayout::Default(BMF_32BPP));
        LONG x = 0;
        for (const ULONG pixel : pixels)
            shape->SetPixel(x++, 0, pixel);
        return shape;
    }
    ULONG PixelAt(LONG x) const { return psoVirtual->Pixel(x, 3); }
};

class ColourCursorIn : public ColourCursor, public testing::WithParamInterface<Form> {
protected:
    ColourCursorIn() { Start(GetParam()); }
};
INSTANTIATE_TEST_SUITE_P(Of, ColourCursorIn, testing::ValuesIn(AllForms),
                         [](const auto& info) { return NameOf(info.param); });

TEST_P(ColourCursorIn, ShowsItsColoursWhereTheMaskIsClear)
{
    SetShape(Mask({"0011", "0011", "0000", "0000"}), MakeSurface(Lines({"GBW.", "B.W."}), form), 2, 3);
    // AND 1: black keeps the background, white inverts it.
    const std::string shown = PictureOf(*psoVirtual, form, {2, 3, 6, 5});
    const std::string inverted = form == Form::Bits4 || form == Form::Bits8 ? std::string(1, shown[2]) : "?";
    EXPECT_EQ(shown, "GB" + inverted + "R\nB." + inverted + "R\n");
    EXPECT_EQ(PixelAt(4) ^ PixelOf('R', form), PixelOf('W', form)) << "the background XOR white";
    cursor.Move(pso, -1, 0, nullptr);
    EXPECT_EQ(Virtual(), background);
}

TEST_P(ColourCursorIn, IsCutAtTheEdges)
{
    engine::Surface* const color = MakeSurface(Lines({"GB", "WG"}), form);
    SetShape(Mask({"00", "00", "00", "00"}), color, 0, 0, {1, 1});
    EXPECT_EQ(Virtual(), WithPicture(background, 0, 0, "G\n"));
    cursor.Move(pso, 16, 10, nullptr);
    EXPECT_EQ(Virtual(), WithPicture(background, 15, 9, "G\n"));
}

TEST_P(ColourCursorIn, TakesDirectColoursToTheScreensFormat)
{
    // On palettes the nearest entry; all of these are entries.
    engine::Surface* const color = MakeSurface(Lines({"GBWSK"}), Form::Bits24);
    SetShape(Mask({"00000", "00000"}), color, 2, 3);
    EXPECT_EQ(PictureOf(*psoVirtual, form, {2, 3, 7, 4}), "GBWSK\n");
}

TEST_P(ColourCursorIn, TranslatesIndicesByItsOwnCopyOfTheTable)
{
    engine::Surface* const color = engine::MakeBitmap({3, 1}, engine::PixelLayout::Default(BMF_4BPP));
    for (LONG x = 0; x < 3; ++x)
        color->SetPixel(x, 0, x);
    ULONG table[] = {PixelOf('G', form), PixelOf('B', form)};
    XLATEOBJ xlate = {.iUniq = 5,
                      .flXlate = XO_TABLE,
                      .iSrcType = PAL_INDEXED,
                      .iDstType = PAL_RGB,
                      .cEntries = 2,
                      .pulXlate = table};
    SetShape(Mask({"000", "000"}), color, 2, 3, {0, 0}, &xlate);
    table[0] = table[1] = PixelOf('W', form);
    xlate = {};
    cursor.Move(pso, 5, 3, nullptr);
    EXPECT_EQ(PictureOf(*psoVirtual, form, {2, 3, 8, 4}), "RRRGB.\n") << "an index beyond the table is 0";
}

class PlainColourCursor : public ColourCursor {
protected:
    PlainColourCursor() { Start(); }
};

TEST_F(PlainColourCursor, IsAsLargeAsItsColours)
{
    // The mask is smaller on one side and larger on the other: outside of it the background stays.
    SetShape(Mask({"00", "00", "00", "00", "00", "00"}), MakeSurface(Lines({"GGG", "GGG"}), form), 2, 3);
    EXPECT_EQ(cursor.Size(), (SIZEL{3, 2}));
    // AND 1 there: green XOR red is yellow.
    EXPECT_EQ(PictureOf(*psoVirtual, form, {2, 3, 6, 6}), Lines({"GGYR", "GGYR", "RRRR"}));
}

TEST_F(PlainColourCursor, LeavesTheFourthByteOfAnInvertedPixel)
{
    psoVirtual->SetPixel(2, 3, 0x12FF0000);
    psoVirtual->SetPixel(3, 3, 0x34FF0000);
    SetShape(Mask({"11", "00"}), Alpha({0xFF00FF00, 0xFF000000}), 2, 3);
    EXPECT_EQ(PixelAt(2), 0x12FFFF00u);
    EXPECT_EQ(PixelAt(3), 0x34FF0000u);
}

TEST_F(PlainColourCursor, KeepsPixelsAsTheyAreInTheSameFormat)
{
    SetShape(Mask({"00", "00"}), Alpha({0x7F00FF00, 0x80112233}), 2, 3);
    EXPECT_EQ(PixelAt(2), 0x7F00FF00u);
    EXPECT_EQ(PixelAt(3), 0x80112233u);
}

TEST_F(PlainColourCursor, MixesPremultipliedColours)
{
    SetShape(nullptr, Alpha({0, 0xFF00FF00, 0x80008000, 0x400000FF, 0x80FF8000, 0x00010203}), 2, 3);
    EXPECT_EQ(cursor.Size(), (SIZEL{6, 1}));
    EXPECT_EQ(PixelAt(2), 0xFF0000u) << "transparent";
    EXPECT_EQ(PixelAt(3), 0x00FF00u) << "opaque";
    EXPECT_EQ(PixelAt(4), 0x7F8000u) << "half: (255 * 127 + 127) / 255 = 127 of the red stays";
    EXPECT_EQ(PixelAt(5), 0xBF00FFu) << "a quarter: 191 of the red stays";
    EXPECT_EQ(PixelAt(6), 0xFF8000u) << "held at 255";
    EXPECT_EQ(PixelAt(7), 0xFF0203u) << "colour without alpha is added; red is held";
}

TEST_F(PlainColourCursor, LeavesTheFourthByteOfTheScreenWhenMixing)
{
    psoVirtual->SetPixel(2, 3, 0x55FF0000);
    SetShape(nullptr, Alpha({0xFF00FF00}), 2, 3);
    EXPECT_EQ(PixelAt(2), 0x5500FF00u);
}

TEST_F(PlainColourCursor, IsShownWithoutAMaskThoughTheMaskIsMissing)
{
    SetShape(Mask({"0", "0"}), nullptr, 2, 3);
    EXPECT_EQ(SetShape(nullptr, Alpha({0xFF00FF00}), 5, 3), (RECTL{2, 3, 6, 4}));
    EXPECT_EQ(PictureOf(*psoVirtual, form, {2, 3, 6, 4}), "RRRG\n") << "the old mask is gone";
    EXPECT_EQ(engine.DebugOutput(), "");
}

TEST_F(PlainColourCursor, IsMonochromeAgainAfterAMask)
{
    SetShape(Mask({"0", "0"}), MakeSurface("G\n", form), 2, 3);
    SetShape(Mask({"0", "1"}), nullptr, 2, 3);
    EXPECT_EQ(PictureOf(*psoVirtual, form, {2, 3, 3, 4}), "W\n");
}

TEST_F(PlainColourCursor, TellsWhenItCannotBeComposed)
{
    SetShape(nullptr, MakeSurface("G\n", Form::Bits24), 2, 3);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:hColorSurf->iBitmapFormat !!!!!!= BMP_32BPP\n");
    EXPECT_EQ(Virtual(), background);
}

TEST_F(PlainColourCursor, TellsWhenAPartOfItDoesNotLock)
{
    SetShape(Mask({"0", "0"}), MakeSurface("G\n", form), -1, 0);
    for (const ULONG nth : {5u, 4u}) { // VirtualScreen, background; VirtualScreen, image, mask, colours
        engine.Fail(Request::Lock, nth);
        cursor.Move(pso, 2, 3, nullptr);
        EXPECT_EQ(engine.TakeDebugOutput(), "KORU:hColorSurf->iBitmapFormat !!!!!!= BMP_32BPP\n") << nth;
        cursor.Move(pso, -1, 0, nullptr);
        EXPECT_EQ(Virtual(), background);
    }
}

TEST_F(PlainColourCursor, TellsWhenItsColoursCannotBeCopied)
{
    engine.Fail(Request::CreateSurface, 2); // mask, colours
    SetShape(Mask({"0", "0"}), MakeSurface("G\n", form), 2, 3);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Failed to create Color Bitmap !!!! \n");
}

TEST_F(PlainColourCursor, CopiesTheBitmapBehindDeviceManagedColours)
{
    engine::Surface* const color = MakeSurface(Lines({"GB"}), form);
    const HSURF managed = EngCreateDeviceSurface(DhsurfOf(color->hsurf), {2, 1}, BMF_32BPP);
    SetShape(Mask({"00", "00"}), &SurfaceBehind(managed), 2, 3);
    EXPECT_EQ(PictureOf(*psoVirtual, form, {2, 3, 4, 4}), "GB\n");
    EngDeleteSurface(managed);
}

TEST_F(PlainColourCursor, ShowsIndicesAsTheyAreWithoutATable)
{
    engine.Fail(Request::Memory, 2); // the copied table
    engine::Surface* const color = engine::MakeBitmap({1, 1}, engine::PixelLayout::Default(BMF_8BPP));
    color->SetPixel(0, 0, 0x21);
    ULONG table[0x22] = {};
    XLATEOBJ xlate = {.iUniq = 5,
                      .flXlate = XO_TABLE,
                      .iSrcType = PAL_INDEXED,
                      .iDstType = PAL_RGB,
                      .cEntries = 0x22,
                      .pulXlate = table};
    SetShape(Mask({"0", "0"}), color, 2, 3, {0, 0}, &xlate);
    EXPECT_EQ(PixelAt(2), 0x21u);
}

TEST_F(PlainColourCursor, GivesItsTranslationBack)
{
    const engine::Resources before = engine.Outstanding();
    ULONG table[] = {1, 2};
    XLATEOBJ xlate = {.iUniq = 5,
                      .flXlate = XO_TABLE,
                      .iSrcType = PAL_INDEXED,
                      .iDstType = PAL_RGB,
                      .cEntries = 2,
                      .pulXlate = table};
    SetShape(Mask({"0", "0"}), nullptr, 2, 3, {0, 0}, &xlate);
    EXPECT_EQ(engine.Outstanding().poolBlocks, before.poolBlocks + 2);
    xlate.cEntries = 0xFFFFFFFF; // no table can be that large
    SetShape(Mask({"0", "0"}), nullptr, 2, 3, {0, 0}, &xlate);
    EXPECT_EQ(engine.Outstanding().poolBlocks, before.poolBlocks + 1);
    SetShape(Mask({"0", "0"}), nullptr, 2, 3);
    EXPECT_EQ(engine.Outstanding().poolBlocks, before.poolBlocks);
}

TEST_F(ColourCursor, MixesOnPackedPixels)
{
    Start(Form::Bits565);
    // 255 red keeps 127: 15 of 31; 128 green: 32 of 63.
    SetShape(nullptr, Alpha({0x80008000, 0xFFFFFFFF}), 2, 3);
    EXPECT_EQ(PixelAt(2), 0x7C00u);
    EXPECT_EQ(PixelAt(3), 0xFFFFu);
}

TEST_F(ColourCursor, MixesOnFiveBitPixels)
{
    Start(Form::Bits555);
    SetShape(nullptr, Alpha({0x80008000, 0xFFFFFFFF}), 2, 3);
    EXPECT_EQ(PixelAt(2), 0x3E00u); // 15 red, 16 green
    EXPECT_EQ(PixelAt(3), 0x7FFFu);
}

TEST_F(ColourCursor, ShowsWhatIsAtLeastHalfOpaqueOnPalettes)
{
    Start(Form::Bits8);
    SetShape(nullptr, Alpha({0x7F007F00, 0x80008000, 0x80FFFFFF, 0xFF0000FF, 0}), 2, 3);
    EXPECT_EQ(PictureOf(*psoVirtual, form, {2, 3, 7, 4}), "RGWBR\n") << "full green, white held at 255";
}

TEST_F(ColourCursor, ShowsWhatIsAtLeastHalfOpaqueOnSixteenColours)
{
    Start(Form::Bits4);
    SetShape(nullptr, Alpha({0x7F007F00, 0x80008000, 0xFF808080}), 3, 3); // an odd column
    EXPECT_EQ(PictureOf(*psoVirtual, form, {2, 3, 7, 4}), "RRGKR\n");
}

} // namespace
