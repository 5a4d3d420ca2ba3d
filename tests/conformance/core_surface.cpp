// DrvEnableSurface and DrvDisableSurface: the three surfaces of a screen.

#include <utility>

#include "tests/conformance/core_real_driver.h"
#include "tests/conformance/core_setups.h"
#include "tests/conformance/hook_calls.h"

namespace conformance {
namespace {

    constexpr ULONG Topdown = 1;

    struct ScreenCase {
        const char* name;
        engine::Mode mode;
        LONG lDelta; // of the RealScreen; 0: padded rows
        LONG virtualDelta;
    };
    class ScreenSurfaces : public testing::TestWithParam<ScreenCase> { };

    TEST_P(ScreenSurfaces, AreOfTheRealScreensSizeAndFormat)
    {
        auto setup = InMode(GetParam().mode);
        setup.frameBuffer.lDelta = GetParam().lDelta;
        Session session(setup);
        const engine::Surface& real = *session.Real();
        const engine::Surface& virtualScreen = *session.Virtual();
        const engine::Surface& device = *engine::FindSurface(session.Device().Primary());
        const auto width = static_cast<LONG>(GetParam().mode.width), height = static_cast<LONG>(GetParam().mode.height);
        for (const engine::Surface* const surface : {&real, &virtualScreen, &device}) {
            EXPECT_EQ(surface->sizlBitmap.cx, width);
            EXPECT_EQ(surface->sizlBitmap.cy, height);
            EXPECT_EQ(surface->iBitmapFormat, real.iBitmapFormat);
        }
        EXPECT_EQ(virtualScreen.iType, STYPE_BITMAP);
        EXPECT_EQ(virtualScreen.lDelta, GetParam().virtualDelta);
        EXPECT_EQ(virtualScreen.fjBitmap & Topdown, Topdown);
        EXPECT_EQ(virtualScreen.hdev, session.Device().Handle());
        EXPECT_EQ(device.iType, STYPE_DEVICE);
        EXPECT_EQ(device.dhsurf, reinterpret_cast<DHSURF>(virtualScreen.hsurf));
        EXPECT_EQ(device.hdev, session.Device().Handle());
        EXPECT_NE(device.hsurf, real.hsurf) << "the engine never sees the real surface";
        EXPECT_EQ(PaintedPart(virtualScreen), "nothing");
    }

    INSTANTIATE_TEST_SUITE_P(
        Modes, ScreenSurfaces,
        testing::Values(ScreenCase{"Bits1", {30, 20, 1}, 0, 4}, ScreenCase{"Bits4", {33, 20, 4}, 0, 20},
                        ScreenCase{"Bits8", {33, 20, 8}, 0, 36}, ScreenCase{"Bits15", {33, 20, 15}, 0, 68},
                        ScreenCase{"Bits16", {33, 20, 16}, 0, 68}, ScreenCase{"Bits24", {33, 20, 24}, 0, 100},
                        ScreenCase{"Bits32", {33, 20, 32}, 0, 132}, ScreenCase{"WideRows", {33, 20, 32}, 4096, 4096},
                        ScreenCase{"BottomUp", {33, 20, 8}, -48, 36}),
        [](const auto& info) { return info.param.name; });

    constexpr ULONG ZoomerCount = 0x11127217, CreateZoomer = 0x11127201;

    ULONG DeviceSurface(Session& session)
    {
        return session.Command(92);
    }

    TEST(EnableSurface, AnswersTheDeviceSurfaceAndRecordsIt)
    {
        Session session(WithoutDevice());
        session.InstallConsumer();
        session.SetCaptureMask(0x10);
        ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
        const SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.Word(40), session.DhpdevNumber());
        EXPECT_EQ(record.Word(44), reinterpret_cast<ULONG>(session.Device().Primary()));
        EXPECT_EQ(DeviceSurface(session), reinterpret_cast<ULONG>(session.Device().Primary()));
    }

    TEST(EnableSurface, AnswersZeroAndIsCapturedWhenTheRealDriverRefuses)
    {
        auto setup = WithoutDevice();
        setup.frameBuffer.refuseAt = INDEX_DrvEnableSurface;
        Session session(setup);
        session.InstallConsumer();
        session.SetCaptureMask(0x10);
        const engine::Resources before = session.Engine().Outstanding();
        EXPECT_FALSE(session.Device().Enable({64, 48, 32}));
        EXPECT_EQ(session.TakeOnlyRecord().Word(44), 0u);
        EXPECT_EQ(session.Engine().Outstanding().surfaces, before.surfaces);
    }

    TEST(EnableSurface, AnswersZeroForADeviceWithoutScreen)
    {
        Session session(WithoutDevice());
        RealDriver real(session);
        EXPECT_EQ(session.Hook<PFN_DrvEnableSurface>(INDEX_DrvEnableSurface)(reinterpret_cast<DHPDEV>(0x777)), nullptr);
        EXPECT_EQ(session.TakeOnlyRecord().Word(44), 0u);
        EXPECT_EQ(session.Engine().DebugOutput(), "");
    }

    // The surfaces of a device that was enabled, with the n-th request of one kind refused.
    struct FailureCase {
        const char* name;
        engine::Request request;
        ULONG nth; // after the real driver's own
        ULONG surfacesLeft; // until the device goes
        ULONG surfacesLost; // for good: a device surface whose handle is not kept
    };
    class FailingSurfaces : public testing::TestWithParam<FailureCase> { };

    TEST_P(FailingSurfaces, GiveTheEngineNothing)
    {
        Session session(WithoutDevice());
        RealDriver real(session);
        DEVMODEW mode = {};
        const DHPDEV dhpdev = session.Hook<PFN_DrvEnablePDEV>(INDEX_DrvEnablePDEV)(
            &mode, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, session.Device().Handle(), nullptr, nullptr);
        session.Hook<PFN_DrvCompletePDEV>(INDEX_DrvCompletePDEV)(dhpdev, session.Device().Handle());
        const engine::Resources before = session.Engine().Outstanding();
        session.records.clear();
        session.Engine().Fail(GetParam().request, GetParam().nth);
        EXPECT_EQ(session.Hook<PFN_DrvEnableSurface>(INDEX_DrvEnableSurface)(dhpdev), nullptr);
        session.Engine().StopFailing();
        EXPECT_EQ(session.TakeOnlyRecord().Word(44), 0u);
        EXPECT_EQ(session.Escape(KoruEscape, {92, 0, 0, 0, 0, 0xD0000}), 0u);
        EXPECT_EQ(session.Engine().Outstanding().surfaces, before.surfaces + GetParam().surfacesLeft);
        EXPECT_EQ(session.Engine().Outstanding().locks, before.locks);
        session.Hook<PFN_DrvDisableSurface>(INDEX_DrvDisableSurface)(dhpdev);
        EXPECT_EQ(session.Engine().Outstanding().surfaces, before.surfaces + GetParam().surfacesLost);
        session.Hook<PFN_DrvDisablePDEV>(INDEX_DrvDisablePDEV)(dhpdev);
    }

    // The magnifier's two bitmaps come first; the VirtualScreen is the third, the device surface the fourth.
    INSTANTIATE_TEST_SUITE_P(
        Requests, FailingSurfaces,
        testing::Values(FailureCase{"RealScreenNotLocked", engine::Request::Lock, 1, 0, 0},
                        FailureCase{"VirtualScreenNotMade", engine::Request::CreateSurface, 3, 2, 0},
                        FailureCase{"DeviceSurfaceNotMade", engine::Request::CreateSurface, 4, 3, 0},
                        FailureCase{"VirtualScreenNotAssociated", engine::Request::Associate, 1, 4, 1},
                        FailureCase{"DeviceSurfaceNotAssociated", engine::Request::Associate, 2, 4, 1}),
        [](const auto& info) { return info.param.name; });

    TEST(EnableSurface, WorksWithoutTheMagnifiersBitmaps)
    {
        for (const ULONG bitmap : {1u, 2u}) {
            Session session(WithoutDevice());
            session.Engine().ClearDebugOutput();
            session.Engine().Fail(engine::Request::CreateSurface, 1 + bitmap); // behind the RealScreen
            EXPECT_TRUE(session.Device().Enable({64, 48, 32}));
            EXPECT_NE(session.Engine().DebugOutput().find(bitmap == 1 ? "KORU:Failed to create hBmpStretchDest \n"
                                                                      : "KORU:Failed to create hBmpAux\n"),
                      std::string::npos);
        }
    }

    TEST(DisableSurface, DeletesTheDriversSurfacesAndZoomersButNotTheRealOne)
    {
        Session session(WithoutDevice());
        RealDriver real(session);
        ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
        session.Device().Disable();
        const engine::Resources before = session.Engine().Outstanding();
        ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
        session.Zoom(CreateZoomer);
        const DHPDEV dhpdev = session.Device().Dhpdev();
        session.Hook<PFN_DrvDisableSurface>(INDEX_DrvDisableSurface)(dhpdev);
        EXPECT_EQ(session.Engine().Outstanding().surfaces, before.surfaces);
        EXPECT_NE(engine::FindSurface(real.surface->hsurf), nullptr);
        EXPECT_EQ(session.Escape(KoruEscape, {92, 0, 0, 0, 0, reinterpret_cast<ULONG>(dhpdev)}), 0u);
        session.Hook<PFN_DrvDisableSurface>(INDEX_DrvDisableSurface)(dhpdev); // nothing is deleted twice
        EXPECT_TRUE(session.Engine().Violations().empty());
    }

    TEST(DisableSurface, KeepsTheSurfacesWithoutTheRealEntryPoint)
    {
        Session session(WithoutRealEntries({INDEX_DrvDisableSurface}));
        const engine::Resources before = session.Engine().Outstanding();
        session.records.clear();
        session.Hook<PFN_DrvDisableSurface>(INDEX_DrvDisableSurface)(session.Device().Dhpdev());
        EXPECT_EQ(session.Engine().Outstanding(), before);
        EXPECT_TRUE(session.records.empty());
        EXPECT_NE(DeviceSurface(session), 0u);
    }

    TEST(EnableSurface, TwiceLeavesTheFirstDeviceSurfaceAndWhatIsBehindIt)
    {
        Session session(WithoutDevice());
        RealDriver real(session);
        ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
        engine::Surface* const first = engine::FindSurface(session.Device().Primary());
        engine::Surface* const behind = session.Virtual();
        engine::Resources expected = session.Engine().Outstanding();
        expected.surfaces += 2; // those two, which the engine may still use
        session.Zoom(CreateZoomer);
        session.Engine().ClearDebugOutput();
        const HSURF second = session.Hook<PFN_DrvEnableSurface>(INDEX_DrvEnableSurface)(session.Device().Dhpdev());
        EXPECT_NE(second, nullptr);
        EXPECT_EQ(session.Engine().DebugOutput(), "KORU:Error: MultiZoom Init !! hBmpStretchDest != NULL \n");
        EXPECT_EQ(session.Engine().Outstanding(), expected);
        EXPECT_EQ(DeviceSurface(session), reinterpret_cast<ULONG>(second));
        EXPECT_EQ(FillRectangle(session, first, {0, 0, 4, 4}), TRUE);
        EXPECT_EQ(PaintedPart(*behind), "0 0 4 4");
    }

    TEST(EnableSurface, StartsWithoutAPointer)
    {
        Session session;
        FillRectangle(session, session.Screen(), {0, 0, 64, 48});
        EXPECT_TRUE(SamePixels(*MakePicture(session, {64, 48}), *session.Real()));
        EXPECT_EQ(session.Engine().DebugOutput(), "") << "no attempt to save or restore what lies under one";
    }

    // A black pointer of 4 x 4 pixels at (10, 12).
    void ShowPointer(Session& session)
    {
        SURFOBJ* const mask = engine::MakeBitmap({4, 8}, engine::PixelLayout::Default(BMF_1BPP));
        session.Hook<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(session.Screen(), mask, nullptr, nullptr, 0, 0,
                                                                       10, 12, nullptr, SPS_CHANGE);
    }

    TEST(EnableSurface, ForgetsThePointer)
    {
        Session session(WithoutDevice());
        RealDriver real(session);
        ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
        ShowPointer(session);
        const auto enable = session.Hook<PFN_DrvEnableSurface>(INDEX_DrvEnableSurface);
        engine::Surface* const screen = engine::FindSurface(enable(session.Device().Dhpdev()));
        session.Engine().ClearDebugOutput();
        FillRectangle(session, screen, {0, 0, 64, 48});
        session.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(screen, 20, 20, nullptr);
        const engine::Surface* const behind = engine::FindSurface(reinterpret_cast<HSURF>(screen->dhsurf));
        EXPECT_TRUE(SamePixels(*behind, *MakePicture(session, {64, 48})));
        EXPECT_EQ(session.Engine().DebugOutput(), "");
    }

    TEST(EnableSurface, HasRowsOfItsOwnWhenThoseOfTheRealScreenDoNotHoldAPixelRow)
    {
        for (const LONG delta : {0, 4, 255}) {
            Session session(WithoutDevice());
            RealDriver real(session);
            const LONG realDelta = std::exchange(real.surface->lDelta, delta);
            EXPECT_TRUE(session.Device().Enable({64, 48, 32}));
            EXPECT_EQ(session.Virtual()->lDelta, 256) << delta;
            real.surface->lDelta = realDelta;
        }
    }

    TEST(SurfacesOfAnUnknownDevice, MakeThePointerForgottenToo)
    {
        const auto unknown = reinterpret_cast<DHPDEV>(0x777);
        for (const bool enable : {false, true}) {
            Session session(WithoutDevice());
            RealDriver real(session);
            ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
            const engine::Resources before = session.Engine().Outstanding();
            ShowPointer(session);
            EXPECT_GT(session.Engine().Outstanding().surfaces, before.surfaces);
            if (enable)
                session.Hook<PFN_DrvEnableSurface>(INDEX_DrvEnableSurface)(unknown);
            else
                session.Hook<PFN_DrvDisableSurface>(INDEX_DrvDisableSurface)(unknown);
            EXPECT_EQ(session.Engine().Outstanding(), before);
        }
    }

    TEST(DisableSurface, GivesUpThePointersBitmaps)
    {
        Session session;
        const engine::Resources before = session.Engine().Outstanding();
        ShowPointer(session);
        EXPECT_GT(session.Engine().Outstanding().surfaces, before.surfaces);
        session.Device().Disable();
        // The RealScreen, VirtualScreen, device surface and the magnifier's two bitmaps went with them.
        EXPECT_EQ(session.Engine().Outstanding().surfaces, before.surfaces - 5);
    }

    TEST(SurfacesUnderFaults, LeaveNothingBehindButWhatAnAssociationFailureLoses)
    {
        for (const bool forGood : {false, true}) {
            engine::FaultPlan plan(forGood);
            do {
                Session session(WithoutDevice());
                ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
                session.Device().Disable();
                const engine::Resources before = session.Engine().Outstanding();
                session.Zoom(0x11127245);
                session.Engine().Obey(plan);
                const bool enabled = session.Device().Enable({64, 48, 32});
                session.Engine().StopFailing();
                EXPECT_TRUE(enabled || plan.FaultsSeen() > 0);
                session.Device().Disable();
                EXPECT_EQ(session.Engine().Outstanding().locks, before.locks);
                EXPECT_EQ(session.Engine().Outstanding().semaphoreHolds, 0u);
                ASSERT_TRUE(session.Device().Enable({64, 48, 32})) << "fault " << plan.Position();
            } while (plan.Next());
        }
    }

} // namespace
} // namespace conformance
