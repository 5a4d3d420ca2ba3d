// Devices: from DrvEnablePDEV to DrvDisablePDEV.

#include "tests/conformance/core_real_driver.h"
#include "tests/conformance/core_setups.h"

namespace conformance {
namespace {

    // Every entry point of a device with what it takes, as the real driver and the consumer should see it.
    struct DeviceCall {
        const char* name;
        ULONG index;
        ULONG recordType;
        LONG flag;
        bool capturedFirst; // before the real driver is called
        bool capturedWithoutReal;
        ULONG (*call)(Session& session);
    };

    const auto Dhpdev = reinterpret_cast<DHPDEV>(0xD0000);

    ULONG CallEnablePdev(Session& session)
    {
        DEVMODEW mode = {};
        mode.dmBitsPerPel = 32;
        return reinterpret_cast<ULONG>(session.Hook<PFN_DrvEnablePDEV>(INDEX_DrvEnablePDEV)(
            &mode, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr));
    }
    ULONG CallCompletePdev(Session& session)
    {
        session.Hook<PFN_DrvCompletePDEV>(INDEX_DrvCompletePDEV)(Dhpdev, session.Device().Handle());
        return 0;
    }
    ULONG CallDisablePdev(Session& session)
    {
        session.Hook<PFN_DrvDisablePDEV>(INDEX_DrvDisablePDEV)(Dhpdev);
        return 0;
    }
    ULONG CallEnableSurface(Session& session)
    {
        return reinterpret_cast<ULONG>(session.Hook<PFN_DrvEnableSurface>(INDEX_DrvEnableSurface)(Dhpdev));
    }
    ULONG CallDisableSurface(Session& session)
    {
        session.Hook<PFN_DrvDisableSurface>(INDEX_DrvDisableSurface)(Dhpdev);
        return 0;
    }
    ULONG CallAssertMode(Session& session)
    {
        return session.Hook<PFN_DrvAssertMode>(INDEX_DrvAssertMode)(Dhpdev, TRUE);
    }
    ULONG CallGetModes(Session& session)
    {
        return session.Hook<PFN_DrvGetModes>(INDEX_DrvGetModes)(nullptr, 0, nullptr);
    }

    // What the real driver's stand-ins below saw.
    ULONG recordsBefore = 0;
    ULONG holdsInside = 0;
    ULONG timesCalled = 0;

    void Look()
    {
        ++timesCalled;
        recordsBefore = static_cast<ULONG>(Session::Current().records.size());
        holdsInside = engine::Engine::Current().Outstanding().semaphoreHolds;
    }
    DHPDEV APIENTRY RealEnablePdev(DEVMODEW*, WCHAR*, ULONG, HSURF*, ULONG, ULONG*, ULONG, DEVINFO*, HDEV, WCHAR*,
                                   HANDLE)
    {
        Look();
        return Dhpdev;
    }
    void APIENTRY RealOfTwo(DHPDEV, HDEV)
    {
        Look();
    }
    void APIENTRY RealOfOne(DHPDEV)
    {
        Look();
    }
    HSURF APIENTRY RealEnableSurface(DHPDEV)
    {
        Look();
        return RealDriver::Current().surface->hsurf;
    }
    BOOL APIENTRY RealAssertMode(DHPDEV, BOOL)
    {
        Look();
        return 77;
    }
    ULONG APIENTRY RealGetModes(HANDLE, ULONG, DEVMODEW*)
    {
        Look();
        return 88;
    }

    class EveryDeviceCall : public testing::TestWithParam<DeviceCall> {
    protected:
        EveryDeviceCall()
            : session(WithoutDevice())
            , real(session)
        {
            real.Offer(INDEX_DrvEnablePDEV, RealEnablePdev);
            real.Offer(INDEX_DrvCompletePDEV, RealOfTwo);
            real.Offer(INDEX_DrvDisablePDEV, RealOfOne);
            real.Offer(INDEX_DrvEnableSurface, RealEnableSurface);
            real.Offer(INDEX_DrvDisableSurface, RealOfOne);
            real.Offer(INDEX_DrvAssertMode, RealAssertMode);
            real.Offer(INDEX_DrvGetModes, RealGetModes);
            timesCalled = 0;
        }

        Session session;
        RealDriver real;
    };

    TEST_P(EveryDeviceCall, ReachesTheRealDriverUnderTheSemaphore)
    {
        const engine::Resources before = session.Engine().Outstanding();
        GetParam().call(session);
        EXPECT_EQ(timesCalled, 1u);
        EXPECT_EQ(holdsInside, 1u);
        EXPECT_EQ(session.Engine().Outstanding().semaphoreHolds, before.semaphoreHolds);
    }

    TEST_P(EveryDeviceCall, IsCapturedAtItsTimeWithItsFlag)
    {
        session.SetCaptureMask(GetParam().recordType);
        session.records.clear();
        GetParam().call(session);
        EXPECT_EQ(recordsBefore, GetParam().capturedFirst ? 1u : 0u);
        const SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.CallType(), GetParam().recordType);
        EXPECT_EQ(record.flag, GetParam().flag);
        EXPECT_EQ(session.selectorsAsked, (std::vector<LONG>{0, 1, 0, 1}));
    }

    TEST_P(EveryDeviceCall, ReachesTheRealDriverWithoutCapture)
    {
        session.SetCaptureMask(~GetParam().recordType);
        GetParam().call(session);
        EXPECT_EQ(timesCalled, 1u);
        EXPECT_TRUE(session.records.empty());
    }

    TEST_P(EveryDeviceCall, AnswersZeroWithoutTheRealEntryPoint)
    {
        real.Withdraw(GetParam().index);
        EXPECT_EQ(GetParam().call(session), 0u);
        EXPECT_EQ(timesCalled, 0u);
        EXPECT_EQ(session.records.size(), GetParam().capturedWithoutReal ? 1u : 0u);
    }

    INSTANTIATE_TEST_SUITE_P(
        Calls, EveryDeviceCall,
        testing::Values(DeviceCall{"EnablePDEV", INDEX_DrvEnablePDEV, 0x2, 1, false, false, CallEnablePdev},
                        DeviceCall{"CompletePDEV", INDEX_DrvCompletePDEV, 0x8, 1, true, false, CallCompletePdev},
                        DeviceCall{"DisablePDEV", INDEX_DrvDisablePDEV, 0x4, 1, true, false, CallDisablePdev},
                        DeviceCall{"EnableSurface", INDEX_DrvEnableSurface, 0x10, 1, false, false, CallEnableSurface},
                        DeviceCall{"DisableSurface", INDEX_DrvDisableSurface, 0x20, 1, true, false, CallDisableSurface},
                        DeviceCall{"AssertMode", INDEX_DrvAssertMode, 0x1, 1, true, false, CallAssertMode},
                        DeviceCall{"GetModes", INDEX_DrvGetModes, 0x80000, 0, false, true, CallGetModes}),
        [](const auto& info) { return info.param.name; });

    TEST(DeviceResults, AreTheRealDrivers)
    {
        Session session(WithoutDevice());
        RealDriver real(session);
        real.Offer(INDEX_DrvAssertMode, RealAssertMode);
        real.Offer(INDEX_DrvGetModes, RealGetModes);
        EXPECT_EQ(CallAssertMode(session), 77u);
        EXPECT_EQ(CallGetModes(session), 88u);
        EXPECT_EQ(CallEnablePdev(session), 0xD0000u);
    }

    TEST(EnablePdev, PassesAllElevenArguments)
    {
        Session session(WithoutDevice());
        DEVMODEW mode = {};
        mode.dmBitsPerPel = 32;
        mode.dmPelsWidth = 64;
        mode.dmPelsHeight = 48;
        WCHAR address[] = u"address", name[] = u"name";
        HSURF patterns[6] = {};
        GDIINFO gdi = {};
        DEVINFO info = {};
        engine::ForgetRealCalls();
        const DHPDEV dhpdev = session.Hook<PFN_DrvEnablePDEV>(INDEX_DrvEnablePDEV)(
            &mode, address, 6, patterns, sizeof(gdi), reinterpret_cast<ULONG*>(&gdi), sizeof(info), &info,
            session.Device().Handle(), name, reinterpret_cast<HANDLE>(0x1234));
        ASSERT_NE(dhpdev, nullptr);
        const auto number = [](const auto* pointer) { return reinterpret_cast<ULONG>(pointer); };
        ASSERT_EQ(engine::RealCalls().size(), 1u);
        EXPECT_EQ(
            engine::RealCalls()[0].arguments,
            (std::vector<ULONG>{number(&mode), number(address), 6, number(patterns), sizeof(gdi), number(&gdi),
                                sizeof(info), number(&info), number(session.Device().Handle()), number(name), 0x1234}));
        session.Hook<PFN_DrvDisablePDEV>(INDEX_DrvDisablePDEV)(dhpdev);
    }

    TEST(EnablePdev, PrintsItsEndAfterTheSemaphoreIsReleased)
    {
        Session session(WithoutDevice());
        session.Engine().ClearDebugOutput();
        ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
        EXPECT_EQ(session.Engine().DebugOutput(), "KORU:DrvEnablePDEV called.\nKORU:DrvEnablePDEV is ended \n");
    }

    TEST(EnablePdev, IsNotCapturedWhenTheRealDriverRefuses)
    {
        auto setup = WithoutDevice();
        setup.frameBuffer.refuseAt = INDEX_DrvEnablePDEV;
        Session session(setup);
        session.InstallConsumer();
        session.SetCaptureMask(0xFFFFFFFF);
        EXPECT_EQ(CallEnablePdev(session), 0u);
        EXPECT_TRUE(session.records.empty());
        EXPECT_EQ(session.Zoom(0x11127242), 0u) << "no colour pairs either";
    }

    TEST(EnablePdev, GivesTheDeviceButCapturesNothingWithoutMemoryForItsScreen)
    {
        for (const ULONG request : {4u, 5u}) { // after three colour pairs: the slot, the record
            Session session(WithoutDevice());
            session.InstallConsumer();
            session.SetCaptureMask(0xFFFFFFFF);
            session.Engine().Fail(engine::Request::Memory, request);
            EXPECT_FALSE(session.Device().Enable({64, 48, 32})) << "no screen, no surface";
            const std::string output = session.Engine().DebugOutput();
            EXPECT_NE(output.find("KORU:CompletePDEV: Fatal error: dhpdev not found.\n"), std::string::npos);
            EXPECT_NE(engine::RealCalls().back().index, INDEX_DrvEnablePDEV) << "the real driver was gone on with";
            for (const SubmittedRecord& record : session.records)
                EXPECT_NE(record.CallType(), 0x2u);
        }
    }

    TEST(EnablePdev, MakesTheDefaultColourPairsOnceAndRecomputesTheirPixelsLater)
    {
        Session session(WithoutDevice());
        ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
        EXPECT_EQ(session.Zoom(0x11127242), 3u);
        session.Zoom(0x11127245);
        session.Device().Disable();
        ASSERT_TRUE(session.Device().Enable({64, 48, 16}));
        EXPECT_EQ(session.Zoom(0x11127242), 3u) << "an empty list gets them again";
        session.Device().Disable();
        ASSERT_TRUE(session.Device().Enable({64, 48, 15}));
        EXPECT_EQ(session.Zoom(0x11127242), 3u);
    }

    TEST(EnablePdev, NeedsNoModeOfItsOwn)
    {
        Session session(WithoutDevice());
        RealDriver real(session);
        EXPECT_NE(session.Hook<PFN_DrvEnablePDEV>(INDEX_DrvEnablePDEV)(nullptr, nullptr, 0, nullptr, 0, nullptr, 0,
                                                                       nullptr, nullptr, nullptr, nullptr),
                  nullptr);
        EXPECT_EQ(session.records.size(), 1u);
        CallDisablePdev(session);
    }

    TEST(EnablePdev, RecordsTheRewrittenDeviceInformation)
    {
        Session session(WithoutDevice());
        session.InstallConsumer();
        session.SetCaptureMask(0x2);
        ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
        const SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.Word(record.Word(60)), session.Device().Info().flGraphicsCaps);
        EXPECT_EQ(record.Word(record.Word(60)) & 0x10000u, 0x10000u);
        EXPECT_EQ(record.Word(68), session.DhpdevNumber());
    }

    TEST(CompletePdev, TellsOfAnUnknownDeviceAndGoesOn)
    {
        Session session;
        engine::ForgetRealCalls();
        session.expectViolations = true; // the frame buffer does not know it either
        session.Hook<PFN_DrvCompletePDEV>(INDEX_DrvCompletePDEV)(reinterpret_cast<DHPDEV>(0x777), nullptr);
        EXPECT_EQ(session.Engine().DebugOutput(), "KORU:CompletePDEV: Fatal error: dhpdev not found.\n");
        EXPECT_EQ(engine::RealCalls().size(), 1u);
        EXPECT_EQ(session.TakeOnlyRecord().Word(40), 0x777u);
    }

    TEST(CompletePdev, ReplacesTheEnginesHandle)
    {
        Session session;
        engine::Device second(session.Driver());
        ASSERT_TRUE(second.Enable({64, 48, 32}));
        engine::Device::SwapHandles(session.Device(), second);
        const HSURF bitmap = session.Device().CreateCompatibleBitmap({4, 4});
        EXPECT_EQ(engine::FindSurface(bitmap)->hdev, session.Device().Handle());
        session.Device().DeleteBitmap(bitmap);
    }

    TEST(ModeChange, LeavesOneDeviceAndNothingOfTheOldOne)
    {
        Session session;
        const engine::Resources before = session.Engine().Outstanding();
        auto device = std::make_unique<engine::Device>(session.Driver());
        ASSERT_TRUE(device->Enable({64, 48, 32}));
        const engine::Resources withTwo = session.Engine().Outstanding();
        ASSERT_TRUE(engine::ChangeMode(device, {128, 96, 32}));
        // The list has a slot more, for the time that there were three devices.
        EXPECT_EQ(session.Engine().Outstanding(), withTwo);
        device.reset();
        EXPECT_EQ(session.Engine().Outstanding(), before);
    }

    TEST(DisablePdev, FreesWhatTheScreenOwns)
    {
        Session session(WithoutDevice());
        ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
        session.Device().Disable();
        const engine::Resources before = session.Engine().Outstanding(); // pairs and slots remain
        ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
        session.AddDarkZone({0, 0, 4, 4});
        session.AddDarkZone({4, 4, 8, 8});
        session.Zoom(0x11127201);
        session.Zoom(0x11127201);
        session.Device().CreateCompatibleBitmap({10, 10});
        session.Device().Disable();
        EXPECT_EQ(session.Engine().Outstanding(), before);
    }

    TEST(DisablePdev, KeepsTheScreenWithoutTheRealEntryPoint)
    {
        Session session(WithoutRealEntries({INDEX_DrvDisablePDEV, INDEX_DrvDisableSurface}));
        const ULONG dhpdev = session.DhpdevNumber();
        session.Device().Disable();
        EXPECT_NE(session.Escape(KoruEscape, {92, 0, 0, 0, 0, dhpdev}), 0u) << "the device surface is still known";
    }

    TEST(DisablePdev, FreesTheZoomersOfASurfaceThatWasNeverDisabled)
    {
        Session session(WithoutRealEntries({INDEX_DrvDisableSurface}));
        const engine::Resources before = session.Engine().Outstanding();
        session.Zoom(0x11127201);
        session.Zoom(0x11127201);
        session.Device().Disable();
        // The magnifier's two bitmaps and the Screen itself are gone as well; the three screen surfaces stay.
        EXPECT_EQ(session.Engine().Outstanding().surfaces, before.surfaces - 2);
        EXPECT_EQ(session.Engine().Outstanding().poolBlocks, before.poolBlocks - 1);
    }

    TEST(DisablePdev, OfAnUnknownDeviceReachesTheRealDriverAndFreesNothing)
    {
        Session session(WithoutDevice());
        RealDriver real(session);
        real.Offer(INDEX_DrvDisablePDEV, RealOfOne);
        const engine::Resources before = session.Engine().Outstanding();
        timesCalled = 0;
        CallDisablePdev(session);
        EXPECT_EQ(timesCalled, 1u);
        EXPECT_EQ(session.Engine().Outstanding(), before);
    }

    TEST(ScreenList, GivesTheFirstFreeSlotAgainAndGrowsByOne)
    {
        Session session(WithoutDevice());
        engine::Device first(session.Driver()), second(session.Driver()), third(session.Driver());
        ASSERT_TRUE(first.Enable({64, 48, 32}));
        ASSERT_TRUE(second.Enable({64, 48, 32}));
        const ULONG requests = session.Engine().RequestCount(engine::Request::Memory);
        first.Disable();
        ASSERT_TRUE(third.Enable({64, 48, 32}));
        const ULONG withFreeSlot = session.Engine().RequestCount(engine::Request::Memory) - requests;
        first.Disable();
        ASSERT_TRUE(first.Enable({64, 48, 32}));
        const ULONG withoutFreeSlot = session.Engine().RequestCount(engine::Request::Memory) - requests - withFreeSlot;
        EXPECT_EQ(withoutFreeSlot, withFreeSlot + 1) << "a longer array";
        EXPECT_EQ(session.Escape(KoruEscape, {92, 0, 0, 0, 0, reinterpret_cast<ULONG>(second.Dhpdev())}),
                  reinterpret_cast<ULONG>(second.Primary()));
    }

    TEST(ScreenList, FindsTheFirstOfTwoDevicesWithOneHandle)
    {
        // Devices are not checked for presence: a second Screen of a handle is hidden by the first.
        Session session(WithoutDevice());
        RealDriver real(session);
        CallEnablePdev(session);
        session.SetCaptureMask(0);
        session.Escape(KoruEscape, {3, 0, 0, 64, 48, 0xD0000});
        CallEnablePdev(session);
        session.Engine().ClearDebugOutput();
        CallDisablePdev(session);
        EXPECT_NE(session.Escape(KoruEscape, {3, 0, 0, 64, 48, 0xD0000}), 0u) << "the second is found now";
        CallDisablePdev(session);
        EXPECT_EQ(session.Escape(KoruEscape, {3, 0, 0, 64, 48, 0xD0000}), 0u);
        EXPECT_EQ(session.Engine().DebugOutput(), "KORU:AddDarkZone: Error Bad dhpdev\n");
    }

} // namespace
} // namespace conformance
