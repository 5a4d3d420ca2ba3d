#include <climits>

#include "tests/unit/cursor/cursor_fixture.h"

namespace {

using namespace koru;
using namespace pictures;
using engine::Request;

constexpr RECTL Nothing = {0, 0, 0, 0};

class TheCursor : public CursorFixture {
protected:
    TheCursor() { Start(); }

    // Two by two, black.
    engine::Surface* Block() { return Mask({"00", "00", "00", "00"}); }
    std::string WithBlock(LONG x, LONG y) const { return WithPicture(background, x, y, Lines({"..", ".."})); }
};

TEST_F(TheCursor, HasNoShapeAtFirst)
{
    EXPECT_EQ(cursor.Size(), (SIZEL{0, 0}));
    cursor.Draw(pso);
    cursor.RestoreFromUnderCursor(pso);
    EXPECT_EQ(cursor.Move(pso, 3, 3, &prcl), Nothing);
    EXPECT_EQ(prcl, Nothing);
    EXPECT_EQ(Virtual(), background);
    EXPECT_EQ(engine.DebugOutput(), "");
}

TEST_F(TheCursor, DrawsTheFourKindsOfAMonochromeShape)
{
    EXPECT_EQ(SetShape(FourKinds(), nullptr, 2, 3), (RECTL{2, 3, 6, 5}));
    EXPECT_EQ(prcl, (RECTL{2, 3, 6, 5}));
    EXPECT_EQ(cursor.Size(), (SIZEL{4, 2}));
    std::string expected = WithPicture(background, 2, 3, Lines({".WR?", ".WR?"}));
    EXPECT_EQ(Virtual(), expected);
    EXPECT_EQ(psoVirtual->Pixel(5, 3) & 0xFFFFFF, 0x00FFFFu) << "red inverted";
}

TEST_F(TheCursor, ReadsTheMaskTopBitFirstAcrossBytes)
{
    std::string andRow(11, '1'), xorRow(11, '0');
    andRow[0] = andRow[7] = andRow[8] = andRow[10] = '0';
    xorRow[8] = '1';
    SetShape(Mask({andRow.c_str(), xorRow.c_str()}), nullptr, 2, 3);
    EXPECT_EQ(PictureOf(*psoVirtual, form, {1, 3, 14, 4}), "R.RRRRRR.WR.R\n");
}

TEST_F(TheCursor, IsPlacedByItsHotSpot)
{
    SetShape(Block(), nullptr, 6, 5, {1, 2});
    EXPECT_EQ(prcl, (RECTL{5, 3, 7, 5}));
    EXPECT_EQ(Virtual(), WithBlock(5, 3));
}

TEST_F(TheCursor, MovesAndRestoresWhatItCovered)
{
    SetShape(Block(), nullptr, 1, 1);
    EXPECT_EQ(cursor.Move(pso, 5, 4, &prcl), (RECTL{1, 1, 7, 6}));
    EXPECT_EQ(prcl, (RECTL{5, 4, 7, 6}));
    EXPECT_EQ(Virtual(), WithBlock(5, 4));
    EXPECT_EQ(cursor.Move(pso, 6, 4, nullptr), (RECTL{5, 4, 8, 6}));
    EXPECT_EQ(Virtual(), WithBlock(6, 4));
}

TEST_F(TheCursor, IsHiddenByANegativeColumn)
{
    SetShape(Block(), nullptr, 15, 9);
    EXPECT_EQ(cursor.Move(pso, -1, -1, &prcl), (RECTL{15, 9, 16, 10}));
    EXPECT_EQ(prcl, Nothing);
    EXPECT_EQ(Virtual(), background);
    EXPECT_EQ(cursor.Move(pso, -1, 5, &prcl), Nothing) << "hidden to hidden";
    EXPECT_EQ(cursor.Move(pso, 3, 3, &prcl), (RECTL{3, 3, 5, 5})) << "shown";
    EXPECT_EQ(Virtual(), WithBlock(3, 3));
    EXPECT_EQ(cursor.Size(), (SIZEL{2, 2}));
}

TEST_F(TheCursor, CountsANegativeRowFromTheBottom)
{
    SetShape(Block(), nullptr, 4, -3);
    EXPECT_EQ(Virtual(), WithBlock(4, 7));
    EXPECT_EQ(cursor.Move(pso, 8, -10, &prcl), (RECTL{4, 0, 10, 9}));
    EXPECT_EQ(Virtual(), WithBlock(8, 0));
}

struct EdgeCase {
    const char* name;
    POINTL at;
    RECTL visible;
};

class AtTheEdge : public TheCursor, public testing::WithParamInterface<EdgeCase> { };

TEST_P(AtTheEdge, ShowsOnlyTheVisiblePartAndLeavesNoTrace)
{
    // 4 x 4, all of it black, hot spot in the middle.
    SetShape(Mask({"0000", "0000", "0000", "0000", "0000", "0000", "0000", "0000"}), nullptr, 8, 5, {2, 2});
    const RECTL shown = GetParam().visible;
    EXPECT_EQ(
        cursor.Move(pso, GetParam().at.x, GetParam().at.y, &prcl),
        (RECTL{std::min(6, shown.left), std::min(3, shown.top), std::max(10, shown.right), std::max(7, shown.bottom)}));
    EXPECT_EQ(prcl, shown);
    EXPECT_EQ(Virtual(), WithRectangle(background, shown, '.'));
    cursor.Move(pso, -1, 0, nullptr);
    EXPECT_EQ(Virtual(), background);
}

// White, so that what is composed differs from an image as it was made.
TEST_P(AtTheEdge, SavesAndComposesOnlyTheVisiblePart)
{
    engine::Surface* const white = Mask({"0000", "0000", "0000", "0000", "1111", "1111", "1111", "1111"});
    const auto made = MadeDuring([&] { SetShape(white, nullptr, -1, 0, {2, 2}); });
    ASSERT_EQ(made.size(), 3u) << "mask, background, image";
    const POINTL at = GetParam().at;
    cursor.Move(pso, at.x, at.y, nullptr);
    const RECTL shown = GetParam().visible;
    const LONG x = shown.left - (at.x - 2), y = shown.top - (at.y - 2); // in the pointer
    const RECTL part = {x, y, x + shown.right - shown.left, y + shown.bottom - shown.top};
    EXPECT_EQ(PictureOf(*made[1], form), WithPicture(Filled(4, 4, '.'), x, y, Part(background, shown)));
    EXPECT_EQ(PictureOf(*made[2], form), WithRectangle(Filled(4, 4, '.'), part, 'W'));
}

const EdgeCase edges[] = {
    {.name = "Left", .at = {0, 5}, .visible = {0, 3, 2, 7}},
    {.name = "Right", .at = {15, 5}, .visible = {13, 3, 16, 7}},
    {.name = "Top", .at = {8, 1}, .visible = {6, 0, 10, 3}},
    {.name = "Bottom", .at = {8, 9}, .visible = {6, 7, 10, 10}},
    {.name = "TopLeft", .at = {1, 0}, .visible = {0, 0, 3, 2}},
    {.name = "TopRight", .at = {14, 0}, .visible = {12, 0, 16, 2}},
    {.name = "BottomLeft", .at = {0, 9}, .visible = {0, 7, 2, 10}},
    {.name = "BottomRight", .at = {17, 11}, .visible = {15, 9, 16, 10}},
};
INSTANTIATE_TEST_SUITE_P(Of, AtTheEdge, testing::ValuesIn(edges),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(TheCursor, MayLieWhollyBesideTheScreen)
{
    SetShape(Block(), nullptr, 4, 4);
    EXPECT_EQ(cursor.Move(pso, 100, 100, &prcl), (RECTL{4, 4, 16, 10}));
    EXPECT_EQ(prcl, Nothing);
    EXPECT_EQ(Virtual(), background);
    cursor.Move(pso, INT_MAX, INT_MAX, &prcl);
    EXPECT_EQ(prcl, Nothing);
    cursor.SetShape(pso, Block(), nullptr, nullptr, INT_MIN, INT_MAX, INT_MAX, INT_MAX, nullptr, 0);
    cursor.Draw(pso);
    EXPECT_EQ(Virtual(), background);
    EXPECT_EQ(engine.DebugOutput(), "");
}

TEST_F(TheCursor, ChangesShapeInPlace)
{
    SetShape(FourKinds(), nullptr, 2, 3);
    EXPECT_EQ(SetShape(Block(), nullptr, 3, 2), (RECTL{2, 2, 6, 5}));
    EXPECT_EQ(cursor.Size(), (SIZEL{2, 2}));
    EXPECT_EQ(Virtual(), WithBlock(3, 2));
}

TEST_F(TheCursor, MayBeHiddenWhileItTakesAShape)
{
    EXPECT_EQ(SetShape(Block(), nullptr, -1, 0), Nothing);
    EXPECT_EQ(prcl, Nothing);
    EXPECT_EQ(cursor.Size(), (SIZEL{2, 2}));
    EXPECT_EQ(Virtual(), background);
    cursor.Move(pso, 4, 4, nullptr);
    EXPECT_EQ(Virtual(), WithBlock(4, 4));
}

TEST_F(TheCursor, IsHiddenWithoutAnyShapeWhereverItIsPut)
{
    SetShape(Block(), nullptr, 3, 2);
    const engine::Resources withShape = engine.Outstanding();
    EXPECT_EQ(SetShape(nullptr, nullptr, 5, 5), (RECTL{3, 2, 5, 4}));
    EXPECT_EQ(prcl, Nothing);
    EXPECT_EQ(Virtual(), background);
    EXPECT_EQ(cursor.Size(), (SIZEL{0, 0}));
    EXPECT_EQ(engine.Outstanding().surfaces, withShape.surfaces - 1) << "the mask's copy is released";
    EXPECT_EQ(cursor.Move(pso, 5, 5, &prcl), Nothing);
    EXPECT_EQ(Virtual(), background);
    EXPECT_EQ(engine.DebugOutput(), "");
}

TEST_F(TheCursor, HalvesTheHeightOfItsMask)
{
    engine::Surface* const mask = engine::MakeBitmap({32, 64}, engine::PixelLayout::Default(BMF_1BPP));
    SetShape(mask, nullptr, -1, 0);
    EXPECT_EQ(cursor.Size(), (SIZEL{32, 32}));
}

TEST_F(TheCursor, KeepsItsBitmapsForAShapeOfTheSameSize)
{
    SetShape(Block(), nullptr, 3, 2);
    const ULONG made = engine.RequestCount(Request::CreateSurface);
    SetShape(Mask({"11", "10", "00", "00"}), nullptr, 3, 2);
    EXPECT_EQ(engine.RequestCount(Request::CreateSurface), made);
    EXPECT_EQ(Virtual(), WithPicture(background, 4, 3, ".\n")) << "the new mask was copied";
    SetShape(Mask({"0", "0"}), nullptr, 3, 2);
    EXPECT_EQ(engine.RequestCount(Request::CreateSurface), made + 3) << "mask, background, image";
}

TEST_F(TheCursor, TakesItsOwnCopyOfTheMask)
{
    engine::Surface* const mask = Block();
    SetShape(mask, nullptr, 3, 2);
    engine::DestroyBitmap(mask);
    cursor.Move(pso, 8, 8, nullptr);
    EXPECT_EQ(Virtual(), WithPicture(background, 8, 8, Lines({"..", ".."})));
}

TEST_F(TheCursor, CopiesABottomUpMask)
{
    engine::Surface* const mask = engine::MakeBitmap({2, 4}, engine::PixelLayout::Default(BMF_1BPP), -4);
    for (LONG y = 0; y < 4; ++y)
        mask->SetPixel(0, y, y == 0); // AND 1 and 0, XOR 0; the right column black
    SetShape(mask, nullptr, 3, 2);
    EXPECT_EQ(Virtual(), WithPicture(background, 3, 2, Lines({"R.", ".."})));
}

TEST_F(TheCursor, CopiesTheBitmapBehindADeviceManagedMask)
{
    engine::Surface* const mask = Mask({"00", "01", "00", "00"});
    const HSURF managed = EngCreateDeviceSurface(DhsurfOf(mask->hsurf), {2, 4}, BMF_1BPP);
    SetShape(&SurfaceBehind(managed), nullptr, 3, 2);
    EXPECT_EQ(Virtual(), WithPicture(background, 3, 2, Lines({"..", ".R"})));
    EngDeleteSurface(managed);
}

TEST_F(TheCursor, ShowsNothingOfAMaskWhoseBitmapDoesNotLock)
{
    SetShape(Block(), nullptr, 3, 2);
    engine::Surface* const mask = Block();
    const HSURF managed = EngCreateDeviceSurface(DhsurfOf(mask->hsurf), {2, 4}, BMF_1BPP);
    engine.RefuseLock(mask->hsurf);
    EXPECT_EQ(SetShape(&SurfaceBehind(managed), nullptr, 8, 5), (RECTL{3, 2, 10, 7}));
    EXPECT_EQ(prcl, (RECTL{8, 5, 10, 7})) << "as large as told";
    EXPECT_EQ(Virtual(), background) << "the mask before it is gone, too";
    EXPECT_EQ(engine.DebugOutput(), "");
    engine.StopFailing();
    EngDeleteSurface(managed);
}

TEST_F(TheCursor, CopiesAMaskWithRowsOfTheSameLength)
{
    for (const LONG lDelta : {4, 12, -8}) {
        engine::Surface* const mask = engine::MakeBitmap({9, 4}, engine::PixelLayout::Default(BMF_1BPP), lDelta);
        const auto made = MadeDuring([&] { SetShape(mask, nullptr, -1, 0); });
        ASSERT_GE(made.size(), 1u) << "the mask first";
        EXPECT_EQ(made[0]->sizlBitmap, (SIZEL{9, 4}));
        EXPECT_EQ(made[0]->lDelta, std::abs(lDelta));
        SetShape(nullptr, nullptr, -1, 0);
    }
}

TEST_F(TheCursor, IsResetHiddenAndWithoutAnything)
{
    SetShape(Block(), nullptr, 3, 2);
    cursor.Reset();
    EXPECT_EQ(cursor.Size(), (SIZEL{0, 0}));
    cursor.Draw(pso);
    EXPECT_EQ(cursor.Move(pso, 4, 4, &prcl), Nothing);
    EXPECT_EQ(Virtual(), WithBlock(3, 2)) << "the screen is going away: nothing is restored";
}

TEST_F(TheCursor, ForgetsItsShapeWhenInitialisedAndShowsNothing)
{
    SetShape(Block(), nullptr, 3, 2);
    cursor.Initialise({Width, Height});
    EXPECT_EQ(cursor.Size(), (SIZEL{0, 0}));
    Paint(*psoVirtual, 3, 2, Filled(2, 2, 'R'), form);
    cursor.Draw(pso);
    cursor.RestoreFromUnderCursor(pso);
    const RECTL all = {0, 0, 16, 10};
    cursor.ExcludeBeforeDrawing(pso, &all, nullptr, nullptr);
    cursor.RedrawAfterDrawing(pso, nullptr);
    EXPECT_EQ(cursor.Move(pso, 8, 5, &prcl), Nothing) << "not the old shape's place either";
    EXPECT_EQ(prcl, Nothing);
    EXPECT_EQ(Virtual(), background);
    EXPECT_EQ(engine.DebugOutput(), "");
}

class Exclusion : public TheCursor {
protected:
    Exclusion() { SetShape(Block(), nullptr, 3, 2); }
    const RECTL meeting = {4, 3, 10, 10}, beside = {5, 4, 10, 10};
};

TEST_F(Exclusion, TakesTheCursorOffWhereItIsDrawnOver)
{
    cursor.ExcludeBeforeDrawing(pso, &meeting, nullptr, nullptr);
    EXPECT_EQ(Virtual(), background);
    Paint(*psoVirtual, 4, 3, Filled(6, 6, 'G'), form);
    cursor.RedrawAfterDrawing(pso, nullptr);
    const std::string drawn = WithRectangle(background, {4, 3, 10, 9}, 'G');
    EXPECT_EQ(Virtual(), WithPicture(drawn, 3, 2, Lines({"..", ".."})));
    cursor.Move(pso, -1, 0, nullptr);
    EXPECT_EQ(Virtual(), drawn) << "what was drawn under it comes back";
}

TEST_F(Exclusion, TakesTheCursorOffWhereItIsRead)
{
    cursor.ExcludeBeforeDrawing(pso, &beside, pso, &meeting);
    EXPECT_EQ(Virtual(), background);
    cursor.RedrawAfterDrawing(nullptr, pso);
    EXPECT_EQ(Virtual(), WithBlock(3, 2));
}

TEST_F(Exclusion, RedrawsOnlyOnce)
{
    cursor.ExcludeBeforeDrawing(pso, &meeting, pso, &meeting);
    cursor.RedrawAfterDrawing(pso, pso);
    Paint(*psoVirtual, 3, 2, Filled(2, 2, 'G'), form);
    cursor.RedrawAfterDrawing(pso, pso);
    EXPECT_EQ(PictureOf(*psoVirtual, form, {3, 2, 5, 4}), Filled(2, 2, 'G'));
}

TEST_F(Exclusion, LeavesTheCursorElsewhereAlone)
{
    cursor.ExcludeBeforeDrawing(pso, &beside, pso, &beside);
    EXPECT_EQ(Virtual(), WithBlock(3, 2));
    cursor.ExcludeBeforeDrawing(pso, nullptr, pso, nullptr);
    EXPECT_EQ(Virtual(), WithBlock(3, 2));
    cursor.ExcludeBeforeDrawing(nullptr, &meeting, nullptr, &meeting);
    EXPECT_EQ(Virtual(), WithBlock(3, 2));
}

TEST_F(Exclusion, LeavesTheCursorForOtherSurfacesAlone)
{
    engine::Surface* const other = MakeSurface(background, form);
    cursor.ExcludeBeforeDrawing(other, &meeting, other, &meeting);
    EXPECT_EQ(Virtual(), WithBlock(3, 2));
    other->dhpdev = device; // a bitmap of the device is not its screen
    cursor.ExcludeBeforeDrawing(other, &meeting, other, &meeting);
    EXPECT_EQ(Virtual(), WithBlock(3, 2));
}

TEST_F(Exclusion, LeavesTheCursorAloneWhereNeitherHasAHandle)
{
    SURFOBJ nameless = *pso;
    nameless.hsurf = nullptr;
    const HSURF hsurfDevice = screen->hsurfDevice;
    screen->hsurfDevice = nullptr;
    cursor.ExcludeBeforeDrawing(&nameless, &meeting, nullptr, nullptr);
    screen->hsurfDevice = hsurfDevice;
    EXPECT_EQ(Virtual(), WithBlock(3, 2));
}

TEST_F(Exclusion, DoesNothingWhileHidden)
{
    cursor.Move(pso, -1, 0, nullptr);
    cursor.ExcludeBeforeDrawing(pso, &meeting, nullptr, nullptr);
    cursor.RedrawAfterDrawing(pso, nullptr);
    EXPECT_EQ(Virtual(), background);
}

TEST_F(TheCursor, LeavesNoTraceAfterAnySequence)
{
    std::mt19937 random(11);
    for (int round = 0; round < 40; ++round) {
        std::string expected = Virtual();
        for (int step = 0; step < 25; ++step) {
            const LONG x = static_cast<LONG>(random() % 24) - 3, y = static_cast<LONG>(random() % 18) - 4;
            switch (random() % 4) {
            case 0:
                SetShape(random() % 2 ? Block() : FourKinds(), nullptr, x, y,
                         {static_cast<LONG>(random() % 3), static_cast<LONG>(random() % 3)});
                break;
            case 1:
                cursor.Move(pso, x, y, &prcl);
                break;
            case 2: {
                const LONG left = static_cast<LONG>(random() % 14), top = static_cast<LONG>(random() % 8);
                const RECTL drawn = {left, top, left + 2, top + 2};
                cursor.ExcludeBeforeDrawing(pso, &drawn, nullptr, nullptr);
                Paint(*psoVirtual, left, top, Filled(2, 2, "RGBY"[random() % 4]), form);
                expected = WithPicture(expected, left, top, PictureOf(*psoVirtual, form, drawn));
                cursor.RedrawAfterDrawing(pso, nullptr);
                break;
            }
            default:
                cursor.Move(pso, -1, 0, nullptr);
            }
        }
        cursor.Move(pso, -1, 0, nullptr);
        ASSERT_EQ(Virtual(), expected) << "round " << round;
    }
}

TEST_F(TheCursor, SaysThatThereIsNoSurfaceAndFindsNoScreen)
{
    SetShape(Block(), nullptr, 3, 2);
    RECTL touched;
    EXPECT_EQ(cursor.ChangeShape(nullptr, Block(), nullptr, nullptr, 0, 0, 14, 2, &prcl, 0, touched), 2u);
    EXPECT_EQ(engine.TakeDebugOutput(),
              "KORU:CCursor::RestoreFromUnderCursor - Screen NULL\n"
              "KORU:Error Set Shape pso == NULL \n"
              "KORU:CCursor::SaveIntoUnderCursor - Screen NULL\n"
              "KORU:Error getting the hScreen\n");
    EXPECT_EQ(touched, (RECTL{3, 2, 16, 4}));
    EXPECT_EQ(prcl, (RECTL{14, 2, 16, 4})) << "by the size stored before";
    EXPECT_EQ(cursor.Move(nullptr, 5, 5, &prcl), (RECTL{5, 2, 16, 7}));
    EXPECT_EQ(engine.TakeDebugOutput(),
              "KORU:CCursor::RestoreFromUnderCursor - Screen NULL\n"
              "KORU:CCursor::SaveIntoUnderCursor - Screen NULL\n"
              "KORU:Error getting the hScreen\n");
}

TEST_F(TheCursor, DrawsNothingOnAnUnknownDevice)
{
    pso->dhpdev = nullptr;
    SetShape(Block(), nullptr, 3, 2);
    EXPECT_EQ(Virtual(), background);
    EXPECT_EQ(engine.TakeDebugOutput(),
              "KORU:CCursor::SaveIntoUnderCursor - Screen NULL\n"
              "KORU:Error getting the hScreen\n");
    pso->dhpdev = device;
}

TEST_F(TheCursor, TellsWhichSurfaceDoesNotLock)
{
    SetShape(Block(), nullptr, 3, 2);
    engine.RefuseLock(psoVirtual->hsurf);
    cursor.Move(pso, 6, 6, nullptr);
    EXPECT_EQ(engine.TakeDebugOutput(),
              "KORU:Cannnot lock Virtual Screen bitmap\n"
              "KORU:Cannnot lock Virtual Screen bitmap\n");
    engine.StopFailing();
    EXPECT_EQ(Virtual(), WithBlock(3, 2)) << "its trace cannot be taken off any more";
}

TEST_F(TheCursor, DoesNotDrawWhatItCouldNotTakeOff)
{
    engine.Fail(Request::Memory, 1, true); // no effect on bitmaps
    engine.Fail(Request::CreateSurface, 2); // mask, background, image: no background
    SetShape(Block(), nullptr, 3, 2);
    EXPECT_EQ(Virtual(), background);
    EXPECT_EQ(engine.TakeDebugOutput(),
              "KORU:Failed to create UnderCursor !!!! \n"
              "KORU:Cannnot lock UnderCursor bitmap\n");
    cursor.Move(pso, 6, 6, nullptr);
    EXPECT_EQ(Virtual(), background);
    EXPECT_EQ(engine.TakeDebugOutput(),
              "KORU:CCursor::RestoreFromUnderCursor => Cannnot lock UnderCursor bitmap\n"
              "KORU:Cannnot lock UnderCursor bitmap\n");
    SetShape(Block(), nullptr, 3, 2);
    EXPECT_EQ(Virtual(), WithBlock(3, 2)) << "both bitmaps were made anew";
}

TEST_F(TheCursor, DrawsNothingWithoutItsImage)
{
    engine.Fail(Request::CreateSurface, 3);
    SetShape(Block(), nullptr, 3, 2);
    EXPECT_EQ(Virtual(), background);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Failed to create Cursor !!!! \n");
}

TEST_F(TheCursor, DoesNotRestoreWhatItHasNotSaved)
{
    SetShape(Block(), nullptr, 3, 2);
    cursor.Move(pso, -1, 0, nullptr);
    engine.Fail(Request::Lock, 1); // the VirtualScreen, at the save
    cursor.Move(pso, 8, 5, nullptr);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Cannnot lock Virtual Screen bitmap\n");
    EXPECT_EQ(Virtual(), background);
    Paint(*psoVirtual, 8, 5, Filled(2, 2, 'G'), form);
    cursor.Move(pso, -1, 0, nullptr);
    EXPECT_EQ(PictureOf(*psoVirtual, form, {8, 5, 10, 7}), Filled(2, 2, 'G'));
}

TEST_F(TheCursor, KeepsDrawingThePlainShapeWithoutItsMask)
{
    engine.Fail(Request::CreateSurface, 1);
    SetShape(Block(), nullptr, 3, 2);
    EXPECT_EQ(Virtual(), background) << "nothing to compose";
    EXPECT_EQ(engine.TakeDebugOutput(), "");
}

} // namespace
