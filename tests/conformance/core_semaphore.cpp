// Every entry point holds the driver's semaphore for its whole run.

#include "tests/conformance/core_real_driver.h"
#include "tests/conformance/core_setups.h"
#include "tests/conformance/hook_calls.h"

namespace conformance {
namespace {

    std::vector<ULONG> holdsSeen;

    void LookAtHolds()
    {
        holdsSeen.push_back(Session::Current().Engine().Outstanding().semaphoreHolds);
    }
    LONG APIENTRY LookingConsumer(BYTE*, ULONG, LONG)
    {
        LookAtHolds();
        return 0;
    }
    void APIENTRY RealSynchronize(DHPDEV, RECTL*)
    {
        LookAtHolds();
    }
    void APIENTRY RealSynchronizeSurface(SURFOBJ*, RECTL*, FLONG)
    {
        LookAtHolds();
    }
    BOOL APIENTRY RealSetRamp(DHPDEV, ULONG, void*)
    {
        LookAtHolds();
        return TRUE;
    }

    struct PassingCall {
        const char* name;
        void (*call)(Session& session);
    };

    // Never captured: the real driver looks.
    class PassingCalls : public testing::TestWithParam<PassingCall> { };

    TEST_P(PassingCalls, ReachTheRealDriverUnderTheSemaphore)
    {
        Session session(WithoutDevice());
        RealDriver real(session);
        real.Offer(INDEX_DrvSynchronize, RealSynchronize);
        real.Offer(INDEX_DrvSynchronizeSurface, RealSynchronizeSurface);
        real.Offer(INDEX_DrvIcmSetDeviceGammaRamp, RealSetRamp);
        ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
        holdsSeen.clear();
        GetParam().call(session);
        EXPECT_EQ(holdsSeen, std::vector<ULONG>{1});
        EXPECT_EQ(session.Engine().Outstanding().semaphoreHolds, 0u);
    }

    INSTANTIATE_TEST_SUITE_P(Calls, PassingCalls,
                             testing::Values(PassingCall{"Synchronize",
                                                         [](Session& session) {
                                                             session.Hook<PFN_DrvSynchronize>(INDEX_DrvSynchronize)(
                                                                 session.Device().Dhpdev(), nullptr);
                                                         }},
                                             PassingCall{"SynchronizeSurface",
                                                         [](Session& session) {
                                                             session.Hook<PFN_DrvSynchronizeSurface>(
                                                                 INDEX_DrvSynchronizeSurface)(session.Screen(), nullptr,
                                                                                              DSS_FLUSH_EVENT);
                                                         }},
                                             PassingCall{"GammaRamp",
                                                         [](Session& session) {
                                                             session.Hook<PFN_DrvIcmSetDeviceGammaRamp>(
                                                                 INDEX_DrvIcmSetDeviceGammaRamp)(
                                                                 session.Device().Dhpdev(), 0, nullptr);
                                                         }}),
                             [](const auto& info) { return info.param.name; });

    void RealizeBrush(Session& session)
    {
        engine::Brush brush = engine::Brush::Solid(3);
        session.Hook<PFN_DrvRealizeBrush>(INDEX_DrvRealizeBrush)(&brush, session.Screen(), nullptr, nullptr, nullptr,
                                                                 0);
    }
    void DitherColor(Session& session)
    {
        ULONG out[64] = {};
        session.Hook<PFN_DrvDitherColor>(INDEX_DrvDitherColor)(session.Device().Dhpdev(), DM_DEFAULT, 0xFF, out);
    }
    void SetPalette(Session& session)
    {
        session.Hook<PFN_DrvSetPalette>(INDEX_DrvSetPalette)(session.Device().Dhpdev(), nullptr, 0, 0, 0);
    }
    void SaveScreenBits(Session& session)
    {
        session.Hook<PFN_DrvSaveScreenBits>(INDEX_DrvSaveScreenBits)(session.Screen(), SS_FREE, 0, nullptr);
    }
    void MovePointer(Session& session)
    {
        session.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(session.Screen(), 1, 1, nullptr);
    }
    void SetPointerShape(Session& session)
    {
        session.Hook<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(
            session.Screen(), engine::MakeBitmap({4, 8}, engine::PixelLayout::Default(BMF_1BPP)), nullptr, nullptr, 0,
            0, 1, 1, nullptr, SPS_CHANGE);
    }
    void CreateDeviceBitmap(Session& session)
    {
        session.Hook<PFN_DrvCreateDeviceBitmap>(INDEX_DrvCreateDeviceBitmap)(session.Device().Dhpdev(), {4, 4},
                                                                             BMF_32BPP);
    }
    void DeleteDeviceBitmap(Session& session)
    {
        session.Hook<PFN_DrvDeleteDeviceBitmap>(INDEX_DrvDeleteDeviceBitmap)(
            reinterpret_cast<DHSURF>(MakePicture(session, {4, 4})->hsurf));
    }

    // Calls beside drawing; `refreshes` zoomers that are due.
    struct CapturedCall {
        const char* name;
        bool refreshes;
        void (*call)(Session& session);
    };
    class CapturedCalls : public testing::TestWithParam<CapturedCall> { };

    TEST_P(CapturedCalls, AreHandedOverUnderTheSemaphore)
    {
        Session session;
        session.Escape(KoruEscape, {36, 0, 0, reinterpret_cast<ULONG>(&LookingConsumer), 0, 0});
        holdsSeen.clear();
        GetParam().call(session);
        EXPECT_EQ(holdsSeen, std::vector<ULONG>{1});
        EXPECT_EQ(session.Engine().Outstanding().semaphoreHolds, 0u);
        session.SetCaptureMask(0);
    }

    TEST_P(CapturedCalls, RefreshZoomersOnlyWhenTheyMayHaveChangedAScreen)
    {
        Session session;
        session.Zoom(0x11127201);
        session.Zoom(0x11127204);
        const ULONG updates = ZoomUpdates(session);
        session.Engine().AdvanceMilliseconds(60);
        GetParam().call(session);
        EXPECT_EQ(ZoomUpdates(session), GetParam().refreshes ? updates + 1 : updates);
    }

    INSTANTIATE_TEST_SUITE_P(Calls, CapturedCalls,
                             testing::Values(CapturedCall{"RealizeBrush", false, RealizeBrush},
                                             CapturedCall{"DitherColor", false, DitherColor},
                                             CapturedCall{"SetPalette", false, SetPalette},
                                             CapturedCall{"SaveScreenBits", true, SaveScreenBits},
                                             CapturedCall{"MovePointer", true, MovePointer},
                                             CapturedCall{"SetPointerShape", true, SetPointerShape},
                                             CapturedCall{"CreateDeviceBitmap", false, CreateDeviceBitmap},
                                             CapturedCall{"DeleteDeviceBitmap", false, DeleteDeviceBitmap}),
                             [](const auto& info) { return info.param.name; });

} // namespace
} // namespace conformance
