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

TEST_P(ColourCursorIn, ComposesOnlyTheVisiblePart)
{
    engine::Surface* const color = MakeSurface(Lines({"GB", "WG"}), form);
    const auto made = MadeDuring([&] { SetShape(Mask({"00", "00", "00", "00"}), color, -1, 0, {1, 1}); });
    ASSERT_EQ(made.size(), 4u) << "mask, colours, background, image";
    cursor.Move(pso, 0, 0, nullptr);
    EXPECT_EQ(PictureOf(*made[2], form), Lines({"..", ".Y"}));
    EXPECT_EQ(PictureOf(*made[3], form), Lines({"..", ".G"}));
}

// Nine pixels in a row, padded to 4 bytes.
constexpr LONG PaddedRows[] = {8, 12, 20, 20, 28, 36}; // by Form

TEST_P(ColourCursorIn, HasABackgroundAndAnImageOfPaddedRows)
{
    const std::string colours = Lines({"GGGGGGGGG"});
    const auto made = MadeDuring([&] { SetShape(Mask({"0", "0"}), MakeSurface(colours, Form::Bits24), -1, 0); });
    ASSERT_EQ(made.size(), 4u) << "mask, colours, background, image";
    for (const engine::Surface* const bitmap : {made[2], made[3]}) {
        EXPECT_EQ(bitmap->sizlBitmap, (SIZEL{9, 1}));
        EXPECT_EQ(bitmap->iBitmapFormat, FormatOf(form));
        EXPECT_EQ(bitmap->lDelta, PaddedRows[static_cast<int>(form)]);
    }
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

TEST_F(PlainColourCursor, MixesOnlyTheVisiblePart)
{
    const auto made = MadeDuring([&] { SetShape(nullptr, Alpha({0xFF00FF00, 0xFF0000FF}), -1, 0, {1, 0}); });
    ASSERT_EQ(made.size(), 3u) << "colours, background, image";
    cursor.Move(pso, 0, 3, nullptr);
    EXPECT_EQ(PictureOf(*made[2], form), ".B\n");
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

TEST_F(PlainColourCursor, CopiesColoursWithRowsOfTheSameLength)
{
    const std::string picture = Lines({"GBGBGBGBG", "BGBGBGBGB"});
    for (const LONG lDelta : {28, 40, -32}) {
        engine::Surface* const color = MakeSurface(picture, Form::Bits24, lDelta);
        const HSURF managed = EngCreateDeviceSurface(DhsurfOf(color->hsurf), {9, 2}, BMF_24BPP);
        for (SURFOBJ* const psoColor : {static_cast<SURFOBJ*>(color), static_cast<SURFOBJ*>(&SurfaceBehind(managed))}) {
            const auto made = MadeDuring([&] { SetShape(nullptr, psoColor, -1, 0); });
            ASSERT_GE(made.size(), 1u) << "the colours first";
            EXPECT_EQ(made[0]->lDelta, std::abs(lDelta)) << (psoColor->dhsurf ? "of the bitmap behind it" : "");
            EXPECT_EQ(PictureOf(*made[0], Form::Bits24), picture);
            SetShape(nullptr, nullptr, -1, 0);
        }
        EngDeleteSurface(managed);
    }
}

TEST_F(PlainColourCursor, IsMonochromeWhenTheBitmapBehindItsColoursDoesNotLock)
{
    SetShape(Mask({"00", "01"}), MakeSurface("GB\n", form), 2, 3);
    engine::Surface* const color = MakeSurface("GB\n", form);
    const HSURF managed = EngCreateDeviceSurface(DhsurfOf(color->hsurf), {2, 1}, BMF_32BPP);
    engine.RefuseLock(color->hsurf);
    SetShape(Mask({"00", "01"}), &SurfaceBehind(managed), 2, 3);
    EXPECT_EQ(PictureOf(*psoVirtual, form, {2, 3, 4, 4}), ".W\n") << "by its mask alone, without the colours before";
    EXPECT_EQ(SetShape(nullptr, &SurfaceBehind(managed), 2, 3), (RECTL{2, 3, 4, 4}));
    EXPECT_EQ(Virtual(), background) << "nothing is left to show";
    EXPECT_EQ(engine.DebugOutput(), "");
    engine.StopFailing();
    EngDeleteSurface(managed);
}

class WithoutMemoryForItsTranslation : public PlainColourCursor, public testing::WithParamInterface<ULONG> { };
INSTANTIATE_TEST_SUITE_P(Of, WithoutMemoryForItsTranslation, testing::Values(1u, 2u),
                         [](const auto& info) { return info.param == 1 ? "Object" : "Table"; });

TEST_P(WithoutMemoryForItsTranslation, ShowsIndicesAsTheyAre)
{
    const ULONG blocks = engine.Outstanding().poolBlocks;
    engine.Fail(Request::Memory, GetParam());
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
    EXPECT_EQ(engine.Outstanding().poolBlocks, blocks + GetParam() - 1) << "what was made before the failure";
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

// A palette screen for whose colour table there was no memory.
class WithoutColourTable : public ColourCursor, public testing::WithParamInterface<Form> {
protected:
    WithoutColourTable()
    {
        Start(GetParam());
        screen->ZoomerList.Release();
        engine.Fail(Request::Memory, 1);
        screen->ZoomerList.Initialise(Width, Height, FormatOf(form), 0);
        EXPECT_EQ(screen->ZoomerList.colourTable, nullptr);
    }
};
INSTANTIATE_TEST_SUITE_P(Of, WithoutColourTable, testing::Values(Form::Bits4, Form::Bits8),
                         [](const auto& info) { return NameOf(info.param); });

TEST_P(WithoutColourTable, LeavesTheBackgroundUnderAlphaColours)
{
    SetShape(nullptr, Alpha({0x7F007F00, 0x80008000, 0xFFFFFFFF, 0xFF000000}), 2, 3);
    EXPECT_EQ(Virtual(), background);
}

TEST_P(WithoutColourTable, LeavesTheBackgroundUnderDirectColours)
{
    SetShape(Mask({"0011", "0000"}), MakeSurface(Lines({"GBWG"}), Form::Bits24), 2, 3);
    EXPECT_EQ(Virtual(), background);
}

TEST_P(WithoutColourTable, ShowsIndices)
{
    SetShape(Mask({"000", "000"}), MakeSurface(Lines({"GBW"}), form), 2, 3);
    EXPECT_EQ(PictureOf(*psoVirtual, form, {2, 3, 6, 4}), "GBWR\n");
}

TEST_F(ColourCursor, IsLookedUpInTheTableOfTheScreenThatItMovesTo)
{
    Start(Form::Bits8);
    engine::Surface* const nearlyWhite = engine::MakeBitmap({1, 1}, engine::PixelLayout::Default(BMF_24BPP));
    nearlyWhite->SetPixel(0, 0, 0xFDFDFD); // also what stands in the guards behind a table
    SetShape(Mask({"0", "0"}), nearlyWhite, 2, 3);

    engine::Surface* const psoOther = MakeSurface(background, Form::Bits4);
    psoOther->dhpdev = reinterpret_cast<DHPDEV>(0x2000);
    Screen* const other = ScreenList::Add(psoOther->dhpdev);
    other->hsurfVirtual = psoOther->hsurf;
    other->ZoomerList.Initialise(Width, Height, BMF_4BPP, 0);
    cursor.Move(psoOther, 2, 3, nullptr);
    EXPECT_EQ(psoOther->Pixel(2, 3), 15u) << "white";
    other->ZoomerList.Release();
    ScreenList::Remove(other);
}

TEST_F(ColourCursor, ShowsWhatIsAtLeastHalfOpaqueOnSixteenColours)
{
    Start(Form::Bits4);
    SetShape(nullptr, Alpha({0x7F007F00, 0x80008000, 0xFF808080}), 3, 3); // an odd column
    EXPECT_EQ(PictureOf(*psoVirtual, form, {2, 3, 7, 4}), "RRGKR\n");
}

// A screen of black (0) and white (1).
class OneBitCursor : public ColourCursor {
protected:
    OneBitCursor() { StartOn(engine::MakeBitmap({Width, Height}, engine::PixelLayout::Default(BMF_1BPP))); }

    static engine::Surface* Colours(ULONG format, std::initializer_list<ULONG> pixels)
    {
        engine::Surface* const shape =
            engine::MakeBitmap({static_cast<LONG>(pixels.size()), 1}, engine::PixelLayout::Default(format));
        LONG x = 0;
        for (const ULONG pixel : pixels)
            shape->SetPixel(x++, 0, pixel);
        return shape;
    }
    void WhitenRow()
    {
        for (LONG x = 0; x < Width; ++x)
            psoVirtual->SetPixel(x, 3, 1);
    }
    std::string Row(LONG count) const
    {
        std::string row;
        for (LONG x = 2; x < 2 + count; ++x)
            row += PixelAt(x) ? '1' : '0';
        return row;
    }
};

TEST_F(OneBitCursor, ShowsColoursByTheirLuminance)
{
    // 299 red + 587 green + 114 blue against 128000
    SetShape(Mask({"0000000", "0000000"}),
             Colours(BMF_24BPP, {0xFF0000, 0x00FF00, 0x0000FF, 0xFF00FF, 0xFFFF00, 0x808080, 0x7F7F7F}), 2, 3);
    EXPECT_EQ(Row(7), "0100110") << "76245, 149685, 29070, 105315, 225930, 128000, 127000";
    SetShape(Mask({"000000", "000000"}),
             Colours(BMF_32BPP, {0x00DA00, 0x00DB00, 0xFF5800, 0xFF5900, 0x00A8FF, 0x00A9FF}), 2, 3);
    EXPECT_EQ(Row(6), "010101") << "127966, 128553, 127901, 128488, 127686, 128273";
    SetShape(Mask({"000", "000"}), Colours(BMF_16BPP, {0xF800, 0x07E0, 0xFFFF}), 2, 3);
    EXPECT_EQ(Row(3), "011");
}

TEST_F(OneBitCursor, InvertsUnderLightColours)
{
    engine::Surface* const colours = Colours(BMF_24BPP, {0xFF0000, 0x00FF00, 0});
    SetShape(Mask({"111", "000"}), colours, 2, 3);
    EXPECT_EQ(Row(4), "0100");
    cursor.Move(pso, -1, 0, nullptr);
    WhitenRow();
    cursor.Move(pso, 2, 3, nullptr);
    EXPECT_EQ(Row(4), "1011");
}

TEST_F(OneBitCursor, ShowsWhatIsAtLeastHalfOpaqueByItsLuminance)
{
    WhitenRow();
    // Less than half; full red, green, blue; a grey below and one at the middle; brighter than it can be.
    SetShape(nullptr,
             Alpha({0x7F000000, 0x80800000, 0x80008000, 0x80000080, 0xC0606060, 0x80414141, 0x80FFFFFF, 0xFF000000}), 2,
             3);
    EXPECT_EQ(Row(9), "101001101") << "96 * 255 / 192 = 127, 65 * 255 / 128 = 129";
}

TEST_F(OneBitCursor, ShowsItsOwnPixelsAsTheyAreOrByTheTable)
{
    SetShape(Mask({"000", "000"}), Colours(BMF_1BPP, {1, 0, 1}), 2, 3);
    EXPECT_EQ(Row(3), "101");
    ULONG table[] = {1, 0};
    XLATEOBJ xlate = {.iUniq = 5,
                      .flXlate = XO_TABLE,
                      .iSrcType = PAL_INDEXED,
                      .iDstType = PAL_INDEXED,
                      .cEntries = 2,
                      .pulXlate = table};
    SetShape(Mask({"000", "000"}), Colours(BMF_1BPP, {1, 0, 1}), 2, 3, {0, 0}, &xlate);
    EXPECT_EQ(Row(3), "010");
}

TEST_F(OneBitCursor, HasABackgroundAndAnImageOfPaddedRows)
{
    const auto made = MadeDuring([&] { SetShape(Mask({"000000000", "000000000"}), nullptr, -1, 0); });
    ASSERT_EQ(made.size(), 3u) << "mask, background, image";
    EXPECT_EQ(made[1]->lDelta, 4); // nine pixels in two bytes
    EXPECT_EQ(made[2]->lDelta, 4);
}

} // namespace
