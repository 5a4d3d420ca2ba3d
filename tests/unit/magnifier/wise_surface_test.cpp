#include <climits>

#include "tests/unit/magnifier/overlay_fixture.h"

namespace {

using namespace koru;
using namespace pictures;
using engine::Request;

constexpr ULONG Copy = 0xCC, Invert = 0x55, Exclusive = 0x66, Keep = 0xAA, Pattern = 0xF0;

const std::string black = Filled(16, 10, '.');

TEST_F(TheOverlay, IsActiveWhileThereIsAnImage)
{
    EXPECT_FALSE(WiseSurface::IsActive());
    EXPECT_EQ(SetMask(), 1);
    EXPECT_FALSE(WiseSurface::IsActive()) << "a mask alone is not enough";
    EXPECT_EQ(SetImage(Copy), 1);
    EXPECT_TRUE(WiseSurface::IsActive());
    WiseSurface::DropMask();
    EXPECT_TRUE(WiseSurface::IsActive());
    WiseSurface::Destroy();
    EXPECT_FALSE(WiseSurface::IsActive());
}

TEST_F(TheOverlay, LeavesNothingBehindWhenDestroyed)
{
    const engine::Resources before = engine.Outstanding();
    SetImage(Copy);
    SetMask();
    EXPECT_EQ(engine.Outstanding().surfaces, before.surfaces + 3);
    WiseSurface::Destroy();
    EXPECT_EQ(engine.Outstanding(), before);
    EXPECT_EQ(Merged(), Filled(16, 10, 'R'));
}

TEST_F(TheOverlay, CopiesStraightToTheScreenWithoutAnImage)
{
    SetMask();
    EXPECT_EQ(WiseSurface::CopyImage(psoReal, psoVirtual, nullptr, {1, 1, 3, 3}), 1);
    EXPECT_EQ(Real(), WithRectangle(black, {1, 1, 3, 3}, 'R'));
    EXPECT_EQ(real_driver::Copies().front().psoSrc, psoVirtual);
}

TEST_F(TheOverlay, IsCopiedOverThePictureAtLevelCC)
{
    SetImage(Copy);
    EXPECT_EQ(Merged(), RedWith(picture));
}

TEST_F(TheOverlay, IsMergedByItsRasterOperation)
{
    SetImage(Exclusive); // red with green is yellow
    std::string expected = Swapped(Swapped(picture, 'G', 'Y'), 'B', '?');
    const ULONG magenta = 0xFF00FF;
    Merged();
    EXPECT_EQ(psoReal->Pixel(4, 2) & 0xFFFFFF, 0xFFFF00u);
    EXPECT_EQ(psoReal->Pixel(6, 2) & 0xFFFFFF, magenta);
    EXPECT_EQ(Real(), RedWith(expected));
}

TEST_F(TheOverlay, MayUseAnOperationWithoutSource)
{
    PaintVirtual(0, 0, Filled(16, 10, 'Y'));
    SetImage(Invert);
    EXPECT_EQ(Merged(), WithRectangle(Filled(16, 10, 'Y'), {4, 2, 8, 5}, 'B'));
}

TEST_F(TheOverlay, IsLeftOutWhenItsOperationNeedsAPattern)
{
    for (const ULONG level : {Pattern, 0x5Au, 0xFBu, 0x0Fu, 0xC0u}) {
        SetImage(level);
        EXPECT_EQ(Merged(), Filled(16, 10, 'R')) << level;
    }
}

TEST_F(TheOverlay, TakesTheLastLevelAndPlace)
{
    SetImage(Copy);
    SetImage(Copy, {4, 2}, {10, 6, 14, 9});
    EXPECT_EQ(Merged(), RedWith(picture, 10, 6));
}

TEST_F(TheOverlay, IsMergedOnlyWhereTheRectangleMeetsIt)
{
    SetImage(Copy);
    EXPECT_EQ(WiseSurface::MergeAndCopy(psoReal, psoVirtual, {6, 3, 16, 4}), 1);
    EXPECT_EQ(Real(), WithPicture(WithRectangle(black, {6, 3, 16, 4}, 'R'), 6, 3, "BB\n"));
    EXPECT_EQ(WiseSurface::MergeAndCopy(psoReal, psoVirtual, {0, 5, 16, 6}), 1);
    EXPECT_EQ(PictureOf(*psoReal, form, {0, 5, 16, 6}), Filled(16, 1, 'R'));
}

TEST_F(TheOverlay, KeepsThePictureUnderTheMask)
{
    SetImage(Copy);
    SetMask();
    EXPECT_EQ(Merged(),
              RedWith(Lines({
                  "RRBB",
                  "RGBB",
                  "BBGR",
              })));
}

TEST_F(TheOverlay, IsMergedOutsideOfTheMaskByItsOperation)
{
    SetImage(Exclusive);
    SetMask();
    Merged();
    EXPECT_EQ(Real(),
              RedWith(Lines({
                  "RR??",
                  "RY??",
                  "??YR",
              })));
    EXPECT_EQ(psoReal->Pixel(6, 2) & 0xFFFFFF, 0xFF00FFu);
}

TEST_F(TheOverlay, ChangesNothingByKeeping)
{
    SetImage(Keep);
    SetMask();
    EXPECT_EQ(Merged(), Filled(16, 10, 'R'));
}

TEST_F(TheOverlay, HasItsMaskAtTheClientsCoordinates)
{
    // The picture is shown elsewhere than it lies in the client's bitmap; the mask goes with the picture.
    SetImage(Copy, {4, 2}, {9, 6, 13, 9});
    SetMask();
    EXPECT_EQ(Merged(),
              RedWith(Lines({
                          "RRBB",
                          "RGBB",
                          "BBGR",
                      }),
                      9, 6));
}

TEST_F(TheOverlay, CountsAsNotLockedInAnotherFormat)
{
    SetImage(Copy);
    engine::Surface* const other = MakeSurface(Filled(16, 10, 'R'), Form::Bits8);
    engine::Surface* const otherScreen = MakeSurface(black, Form::Bits8);
    engine.ClearDebugOutput();
    EXPECT_EQ(WiseSurface::MergeAndCopy(otherScreen, other, {0, 0, 16, 10}), 1);
    EXPECT_EQ(PictureOf(*otherScreen, Form::Bits8), Filled(16, 10, 'R'));
    EXPECT_TRUE(engine.TakeDebugOutput().starts_with("KORU:I cannot lock the wise surface!!!!\n"));
}

TEST_F(TheOverlay, IgnoresAMaskOfAnotherFormat)
{
    SetImage(Copy);
    engine::Surface* const other = MakeSurface(Filled(16, 10, 'W'), Form::Bits8);
    EXPECT_EQ(WiseSurface::SetMask(16, 10, BMF_8BPP, {0, 0, 16, 10}, other), 1);
    EXPECT_EQ(Merged(), RedWith(picture));
}

TEST_F(TheOverlay, HasAnImageOfTheDeviceWithRowsNotRoundedUp)
{
    WiseSurface::SetImage(5, 3, BMF_24BPP, Copy, {0, 0}, {0, 0, 5, 3}, client, device->Handle());
    const engine::Surface& image = Image();
    EXPECT_EQ(image.sizlBitmap, (SIZEL{5, 3}));
    EXPECT_EQ(image.iBitmapFormat, BMF_24BPP);
    EXPECT_EQ(image.lDelta, 15);
    EXPECT_EQ(image.fjBitmap & BMF_TOPDOWN, BMF_TOPDOWN);
    EXPECT_EQ(image.hooks, HOOK_SYNCHRONIZEACCESS);
    EXPECT_EQ(image.hdev, device->Handle());
}

TEST_F(TheOverlay, BelongsToTheDeviceOfTheLastRequest)
{
    SetImage(Copy);
    engine::Device other(*driver);
    const ULONG made = engine.RequestCount(Request::CreateSurface);
    WiseSurface::SetImage(16, 10, FormatOf(form), Copy, {4, 2}, {4, 2, 8, 5}, client, other.Handle());
    EXPECT_EQ(engine.RequestCount(Request::CreateSurface), made) << "the same image";
    EXPECT_EQ(Image().hdev, other.Handle());
}

TEST_F(TheOverlay, KeepsASmallerImageForALargerRequest)
{
    WiseSurface::SetImage(6, 10, BMF_32BPP, Copy, {4, 2}, {4, 2, 8, 5}, client, device->Handle());
    const ULONG made = engine.RequestCount(Request::CreateSurface);
    SetImage(Copy);
    EXPECT_EQ(engine.RequestCount(Request::CreateSurface), made);
    EXPECT_EQ(Merged(), RedWith(Lines({"GG", "GG", "BB"}))) << "cut to the image";
}

TEST_F(TheOverlay, RemakesItsImageForASmallerRequestOrAnotherFormat)
{
    SetImage(Copy);
    const ULONG made = engine.RequestCount(Request::CreateSurface);
    WiseSurface::SetImage(16, 9, BMF_32BPP, Copy, {4, 2}, {4, 2, 8, 5}, client, device->Handle());
    EXPECT_EQ(engine.RequestCount(Request::CreateSurface), made + 1);
    WiseSurface::SetImage(15, 9, BMF_32BPP, Copy, {4, 2}, {4, 2, 8, 5}, client, device->Handle());
    EXPECT_EQ(engine.RequestCount(Request::CreateSurface), made + 2);
    WiseSurface::SetImage(15, 9, BMF_24BPP, Copy, {4, 2}, {4, 2, 8, 5}, client, device->Handle());
    EXPECT_EQ(engine.RequestCount(Request::CreateSurface), made + 3);
}

TEST_F(TheOverlay, KeepsWhatEarlierRequestsPutIntoTheImage)
{
    SetImage(Copy);
    Paint(*client, 0, 0, Filled(16, 10, 'W'), form);
    SetImage(Copy, {4, 2}, {4, 2, 5, 3}); // one pixel anew
    SetImage(Copy, {0, 0}, {0, 0, 0, 0}); // nothing anew, nothing shown
    EXPECT_EQ(Merged(), Filled(16, 10, 'R'));
    client = MakeSurface(Filled(1, 1, 'W'), form);
    SetImage(Copy, {4, 2}, {4, 2, 8, 5}); // the client's bitmap has nothing there
    EXPECT_EQ(Merged(), RedWith(WithPicture(picture, 0, 0, "W\n")));
}

TEST_F(TheOverlay, SurvivesImpossiblePlaces)
{
    const POINTL origins[] = {{INT_MAX, INT_MAX}, {INT_MIN, INT_MIN}, {-3, -3}, {15, 9}};
    const RECTL sources[] = {
        {INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {8, 5, 4, 2}, {-5, -5, 30, 30}, {INT_MAX, 0, INT_MIN, 9}};
    for (const POINTL& origin : origins)
        for (const RECTL& source : sources) {
            EXPECT_EQ(SetImage(Copy, origin, source), 1);
            SetMask(source);
            EXPECT_EQ(WiseSurface::MergeAndCopy(psoReal, psoVirtual, {INT_MIN, INT_MIN, INT_MAX, INT_MAX}), 1);
        }
    engine.CheckGuards();
}

TEST_F(TheOverlay, RemakesItsMaskOnlyWhenSmallerThanTheImage)
{
    SetImage(Copy);
    SetMask();
    const ULONG made = engine.RequestCount(Request::CreateSurface);
    WiseSurface::SetMask(20, 20, BMF_24BPP, {0, 0, 0, 0}, maskClient);
    EXPECT_EQ(engine.RequestCount(Request::CreateSurface), made);
    WiseSurface::SetMask(16, 9, BMF_32BPP, {0, 0, 0, 0}, maskClient);
    EXPECT_EQ(engine.RequestCount(Request::CreateSurface), made + 2);
    WiseSurface::SetMask(15, 10, BMF_32BPP, {0, 0, 0, 0}, maskClient);
    EXPECT_EQ(engine.RequestCount(Request::CreateSurface), made + 4);
}

TEST_F(TheOverlay, ChangesOnlyWhatAllItsBitmapsHave)
{
    SetImage(Copy);
    WiseSurface::DropMask();
    WiseSurface::SetImage(6, 4, BMF_32BPP, Copy, {4, 2}, {4, 2, 8, 5}, client, device->Handle());
    WiseSurface::SetMask(6, 4, BMF_32BPP, {0, 0, 0, 0}, maskClient);
    SetImage(Copy); // keeps the small bitmaps
    EXPECT_EQ(Merged(), RedWith(Lines({"GG", "GG"})));
}

TEST_F(TheOverlay, IsMergedInTheWorkBitmapOfACopy)
{
    SetImage(Copy);
    engine::Surface* const work = MakeSurface(black, form);
    EXPECT_EQ(WiseSurface::CopyImage(psoReal, psoVirtual, work, {3, 1, 9, 4}), 1);
    EXPECT_EQ(Real(), WithPicture(WithRectangle(black, {3, 1, 9, 4}, 'R'), 4, 2, Lines({"GGBB", "GGBB"})));
    EXPECT_EQ(Virtual(), Filled(16, 10, 'R')) << "the picture itself stays";
    EXPECT_EQ(real_driver::Copies().front().psoSrc, work);
}

TEST_F(TheOverlay, CopiesNothingWithoutAWorkBitmap)
{
    SetImage(Copy);
    EXPECT_EQ(WiseSurface::CopyImage(psoReal, psoVirtual, nullptr, {0, 0, 16, 10}), 0);
    EXPECT_EQ(Real(), black);
}

TEST_F(TheOverlay, LiesOverEveryPictureOnItsWayToTheScreen)
{
    SetImage(Copy);
    AfterDraw({0, 0, 16, 10});
    EXPECT_EQ(Real(), RedWith(picture));

    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 3, 10, 7}, 2, BehaviourFull);
    zoomer->changed = 1;
    PaintVirtual(0, 0, Filled(2, 2, 'Y'));
    Update();
    const std::string covered = WithRectangle(RedWith(picture), {6, 3, 10, 7}, 'Y');
    EXPECT_EQ(Real(), WithPicture(covered, 6, 3, Lines({"BB", "GG"})));
    EXPECT_EQ(BitmapOf(zoomer, {6, 3, 10, 7}), Filled(4, 4, 'Y')) << "not burnt into the zoomer's own picture";

    list.recompose = 1;
    zoomer->changed = 0;
    WiseSurface::Destroy();
    Update();
    EXPECT_EQ(Real(), WithRectangle(WithRectangle(Filled(16, 10, 'R'), {0, 0, 2, 2}, 'Y'), {6, 3, 10, 7}, 'Y'));
}

TEST_F(TheOverlay, LiesOverAnInvertedZoomerAsItIs)
{
    SetImage(Copy);
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 3, 10, 7}, 2, BehaviourFull);
    zoomer->SetStyle(StyleInverted);
    PaintVirtual(0, 0, Filled(2, 2, 'Y'));
    Refresh(zoomer);
    EXPECT_EQ(Real(), WithPicture(WithRectangle(black, {6, 3, 10, 7}, 'B'), 6, 3, Lines({"BB", "GG"})));
}

class TheOverlayIn : public TheOverlay, public testing::WithParamInterface<Form> { };
INSTANTIATE_TEST_SUITE_P(Of, TheOverlayIn, testing::ValuesIn(AllForms),
                         [](const auto& info) { return NameOf(info.param); });

TEST_P(TheOverlayIn, IsMaskedInEveryFormat)
{
    list.Release();
    Start(Filled(16, 10, 'R'), GetParam());
    client = MakeSurface(WithPicture(Filled(16, 10, 'S'), 4, 2, picture), form);
    maskClient = MakeSurface(WithPicture(Filled(16, 10, '.'), 4, 2, mask), form);
    SetImage(Copy);
    SetMask();
    EXPECT_EQ(Merged(),
              RedWith(Lines({
                  "RRBB",
                  "RGBB",
                  "BBGR",
              })));
}

} // namespace
