// The overlay where bitmaps cannot be made, locked, associated or copied.

#include "tests/unit/magnifier/overlay_fixture.h"

namespace {

using namespace koru;
using namespace pictures;
using engine::Request;

constexpr ULONG Copy = 0xCC, Exclusive = 0x66;

const std::string black = Filled(16, 10, '.');

TEST_F(TheOverlay, TellsWhenItsImageDoesNotLock)
{
    SetImage(Copy);
    engine.Fail(Request::Lock, 1);
    engine.ClearDebugOutput();
    EXPECT_EQ(Merged(), Filled(16, 10, 'R')) << "copied without the overlay";
    const std::string output = engine.TakeDebugOutput();
    EXPECT_TRUE(output.starts_with("KORU:I cannot lock the wise surface!!!!\nKORU: WiseSurf ")) << output;
    EXPECT_TRUE(output.ends_with("\nKORU: WiseRop 52428\n")) << output; // 0xCCCC
}

TEST_F(TheOverlay, GoesOnWhenItsImageCannotBeAssociated)
{
    engine.Fail(Request::Associate);
    EXPECT_EQ(SetImage(Copy), 1);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Associate Failed!!!!\n");
    EXPECT_EQ(Merged(), RedWith(picture));
    engine.Fail(Request::Associate);
    EXPECT_EQ(SetImage(Copy, {4, 2}, {10, 6, 14, 9}), 1) << "an image that is there already";
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Associate Failed!!!!\n");
    PaintVirtual(0, 0, Filled(16, 10, 'R'));
    EXPECT_EQ(Merged(), RedWith(picture, 10, 6));
}

TEST_F(TheOverlay, IsSetThoughItsNewImageDoesNotLock)
{
    engine.Fail(Request::Lock, 1);
    EXPECT_EQ(SetImage(Copy), 1);
    EXPECT_EQ(engine.TakeDebugOutput(), "");
    EXPECT_TRUE(WiseSurface::IsActive());
    EXPECT_EQ(Merged(), WithRectangle(Filled(16, 10, 'R'), {4, 2, 8, 5}, '.')) << "nothing was copied into it";
}

TEST_F(TheOverlay, IsNotThereWhenItsImageCannotBeMade)
{
    engine.Fail(Request::CreateSurface);
    EXPECT_EQ(SetImage(Copy), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Failed to create hBmp !!!! \n");
    EXPECT_FALSE(WiseSurface::IsActive());
    EXPECT_EQ(Merged(), Filled(16, 10, 'R'));
}

TEST_F(TheOverlay, KeepsOperationAndPlaceWhenANewImageCannotBeMade)
{
    SetImage(Copy);
    engine.Fail(Request::CreateSurface);
    EXPECT_EQ(WiseSurface::SetImage(15, 10, BMF_32BPP, Exclusive, {0, 0}, {0, 0, 1, 1}, client, device->Handle()), 0);
    EXPECT_FALSE(WiseSurface::IsActive()) << "the old image is gone";
    EXPECT_EQ(SetImage(Copy), 1);
    EXPECT_EQ(Merged(), RedWith(picture));
}

TEST_F(TheOverlay, TellsWhichPartOfItsMaskCannotBeMade)
{
    engine.Fail(Request::CreateSurface, 1);
    EXPECT_EQ(SetMask(), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Failed to create Mask !!!! \n");
    const engine::Resources withAux = engine.Outstanding();
    EXPECT_EQ(SetMask(), 1) << "the left over work bitmap is replaced";
    EXPECT_EQ(engine.Outstanding().surfaces, withAux.surfaces + 1);
    WiseSurface::DropMask();
    engine.Fail(Request::CreateSurface, 2);
    EXPECT_EQ(SetMask(), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Failed to create Aux !!!! \n");
    EXPECT_EQ(SetMask(), 0) << "until the mask is dropped";
    WiseSurface::DropMask();
    EXPECT_EQ(SetMask(), 1);
}

TEST_F(TheOverlay, TellsWhenItsMaskDoesNotLock)
{
    SetMask();
    engine.Fail(Request::Lock, 1);
    EXPECT_EQ(SetMask(), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Mask is not created!!!! \n");
}

BOOL APIENTRY RefuseCopyBits(SURFOBJ*, SURFOBJ*, CLIPOBJ*, XLATEOBJ*, RECTL*, POINTL*)
{
    return FALSE;
}
BOOL APIENTRY EnableRefusingDriver(ULONG, ULONG, DRVENABLEDATA* pded)
{
    static DRVFN functions[] = {{INDEX_DrvCopyBits, reinterpret_cast<PFN>(RefuseCopyBits)}};
    *pded = {DDI_DRIVER_VERSION_NT5_01, 1, functions};
    return TRUE;
}

TEST_F(TheOverlay, AnswersForItsMaskAsTheCopyDoes)
{
    engine.RegisterImage(u"refuser", {{"DrvEnableDriver", reinterpret_cast<PFN>(EnableRefusingDriver)}});
    engine::DisplayDriver refusingDriver(u"refuser");
    engine::Device refuser(refusingDriver);
    const auto managed = EngCreateDeviceSurface(nullptr, {16, 10}, BMF_32BPP);
    EngAssociateSurface(managed, refuser.Handle(), HOOK_COPYBITS);
    EXPECT_EQ(WiseSurface::SetMask(16, 10, BMF_32BPP, {4, 2, 8, 5}, &SurfaceBehind(managed)), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "");
    EXPECT_EQ(WiseSurface::SetMask(16, 10, BMF_32BPP, {16, 2, 20, 5}, &SurfaceBehind(managed)), 1) << "nothing to copy";
    EXPECT_EQ(
        WiseSurface::SetImage(16, 10, BMF_32BPP, Copy, {4, 2}, {4, 2, 8, 5}, &SurfaceBehind(managed), device->Handle()),
        1)
        << "an image answers for itself alone";
    EngDeleteSurface(managed);
}

TEST_F(TheOverlay, IsOredIntoThePictureWithoutTheWorkBitmap)
{
    SetImage(Copy);
    const ULONG before = engine.RequestCount(Request::CreateSurface);
    SetMask();
    EXPECT_EQ(engine.RequestCount(Request::CreateSurface), before + 2);
    engine.Fail(Request::Lock, 3); // image, mask, work bitmap
    Merged();
    // (red AND mask) OR image
    EXPECT_EQ(Real(),
              RedWith(Lines({
                  "YYBB",
                  "YGBB",
                  "BBGY",
              })));
}

TEST_F(TheOverlay, IsMergedWholeWhenTheMaskDoesNotLock)
{
    SetImage(Copy);
    SetMask();
    engine.Fail(Request::Lock, 2);
    EXPECT_EQ(Merged(), RedWith(picture));
}

TEST_F(TheOverlay, FailsWhenTheRealDriverCannotCopy)
{
    SetImage(Copy);
    real_driver::Unload();
    real_driver::Load(false);
    EXPECT_EQ(WiseSurface::MergeAndCopy(psoReal, psoVirtual, {0, 0, 16, 10}), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:CopyImage: Error copybits is not supported.\n");
    EXPECT_EQ(Virtual(), Filled(16, 10, 'R')) << "nothing was merged either";
    WiseSurface::Destroy();
    EXPECT_EQ(WiseSurface::CopyImage(psoReal, psoVirtual, psoVirtual, {0, 0, 16, 10}), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "");
}

TEST_F(TheOverlay, AnswersAsTheCopyDoes)
{
    real_driver::AnswerCopiesWith(0);
    EXPECT_EQ(WiseSurface::MergeAndCopy(psoReal, psoVirtual, {0, 0, 16, 10}), 0);
    EXPECT_EQ(WiseSurface::CopyImage(psoReal, psoVirtual, nullptr, {0, 0, 16, 10}), 0);
}

TEST_F(TheOverlay, IsLeftOutOfAZoomerWithoutTheAuxiliaryBitmap)
{
    SetImage(Copy);
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 3, 10, 7}, 2, BehaviourFull);
    engine.RefuseLock(list.hBmpAux);
    EXPECT_EQ(Refresh(zoomer), 1);
    EXPECT_EQ(Real(), WithRectangle(black, {6, 3, 10, 7}, 'R'));
    EXPECT_EQ(BitmapOf(zoomer, {6, 3, 10, 7}), Filled(4, 4, 'R'));
    EXPECT_EQ(engine.TakeDebugOutput(), "");
}

TEST_F(TheOverlay, FailsAlsoWhereItWouldBeLeftOutWhenTheRealDriverCannotCopy)
{
    SetImage(Copy);
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 3, 10, 7}, 2, BehaviourFull);
    real_driver::Unload();
    real_driver::Load(false);
    engine.RefuseLock(list.hBmpAux);
    Refresh(zoomer);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:CopyImage: Error copybits is not supported.\n");
    EXPECT_EQ(Real(), black);
    EXPECT_EQ(BitmapOf(zoomer, {6, 3, 10, 7}), Filled(4, 4, 'R'));
}

} // namespace
