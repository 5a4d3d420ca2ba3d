// What has happened on the screen when the consumer hears of a call, and nested calls.

#include "tests/conformance/core_real_driver.h"
#include "tests/conformance/core_setups.h"
#include "tests/conformance/hook_calls.h"

namespace conformance {
namespace {

    // A consumer that looks at both screens.
    std::string virtualSeen, realSeen;
    ULONG holdsSeen = 0;

    LONG APIENTRY LookAtScreens(BYTE*, ULONG, LONG)
    {
        Session& session = Session::Current();
        virtualSeen = PaintedPart(*session.Virtual());
        realSeen = PaintedPart(*session.Real());
        holdsSeen = session.Engine().Outstanding().semaphoreHolds;
        return 0;
    }

    void InstallLooker(Session& session)
    {
        session.Escape(KoruEscape, {36, 0, 0, reinterpret_cast<ULONG>(&LookAtScreens), 0, 0});
        virtualSeen = realSeen = "not called";
    }

    class CaptureOrder : public testing::TestWithParam<DrawingHook> { };

    TEST_P(CaptureOrder, IsBeforeDrawingForTextAndAfterShowingForTheRest)
    {
        Session session;
        InstallLooker(session);
        GetParam().call(session, session.Screen());
        session.SetCaptureMask(0); // the screens go before the last calls come
        if (std::string(GetParam().name) == "TextOut") {
            EXPECT_EQ(virtualSeen, "nothing");
            EXPECT_EQ(realSeen, "nothing");
        } else {
            EXPECT_EQ(virtualSeen, PaintedPart(*session.Virtual()));
            EXPECT_EQ(realSeen, PaintedPart(*session.Real()));
        }
        EXPECT_EQ(holdsSeen, 1u) << "the consumer is called under the semaphore";
    }

    INSTANTIATE_TEST_SUITE_P(Hooks, CaptureOrder, testing::ValuesIn(DrawingHooks()), NameOf);

    TEST(TextOut, RefreshesWithAFreshTimeNotWithItsRecords)
    {
        // Every query moves the clock by 40 ms: the record's stamp is 40 ms after the update, the next query 80.
        Session session;
        session.Engine().SetFrequency(1000);
        session.Driver().EnableAgain();
        session.InstallConsumer();
        session.SetCaptureMask(0xFFFFFFFF);
        session.Zoom(0x11127201);
        session.Engine().StepCounter(40);
        session.Zoom(0x11127204);
        const ULONG updates = ZoomUpdates(session);
        session.records.clear();
        DrawingHooks()[8].call(session, session.Screen());
        const SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.CallType(), 0x10000u);
        EXPECT_EQ(record.Word(24), 40u);
        EXPECT_EQ(ZoomUpdates(session), updates + 1);
    }

    // Calls that the engine makes while the driver itself draws: here, out of the real driver's pointer call.
    std::function<void()> nestedWork;

    void APIENTRY RealMovePointer(SURFOBJ*, LONG, LONG, RECTL*)
    {
        nestedWork();
    }

    auto ForwardedPointer()
    {
        auto setup = WithOptions("02");
        setup.enableDevice = false;
        return setup;
    }

    class NestedCalls : public testing::Test {
    protected:
        NestedCalls()
            : session(ForwardedPointer())
            , real(session)
        {
            real.Offer(INDEX_DrvMovePointer, RealMovePointer);
            EXPECT_TRUE(session.Device().Enable({64, 48, 32}));
            session.records.clear();
            session.Engine().ClearDebugOutput();
        }
        void Nest(std::function<void()> work)
        {
            nestedWork = std::move(work);
            session.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(session.Screen(), 1, 1, nullptr);
            nestedWork = nullptr;
        }

        Session session;
        RealDriver real;
    };

    TEST_F(NestedCalls, DrawOnTheIncomingSurfaceWithoutCaptureOrUpdate)
    {
        for (const DrawingHook& hook : DrawingHooks()) {
            engine::Surface* const picture = MakePicture(session, {64, 48}, 0);
            session.records.clear();
            session.selectorsAsked.clear();
            BOOL result = FALSE;
            Nest([&] { result = hook.call(session, picture); });
            EXPECT_EQ(result, TRUE) << hook.name;
            EXPECT_NE(PaintedPart(*picture), "nothing") << hook.name;
            ASSERT_EQ(session.records.size(), 1u) << hook.name;
            EXPECT_EQ(session.records[0].CallType(), 0x1000u) << hook.name;
            EXPECT_EQ(session.selectorsAsked.size(), 4u) << hook.name << ": nested calls do not ask the consumer";
        }
    }

    TEST_F(NestedCalls, OnTheDeviceSurfaceEndAtADepthThatIsBounded)
    {
        for (const DrawingHook& hook : DrawingHooks()) {
            session.records.clear();
            BOOL result = TRUE;
            Nest([&] { result = hook.call(session, session.Screen()); });
            EXPECT_EQ(PaintedPart(*session.Virtual()), "nothing") << hook.name;
            EXPECT_EQ(session.records.size(), 1u) << hook.name;
        }
        BOOL result = TRUE;
        Nest([&] { result = FillRectangle(session, session.Screen(), Painted); });
        EXPECT_EQ(result, FALSE);
        EXPECT_TRUE(session.Engine().Violations().empty()) << "the engine's own limit is not reached";
    }

    TEST_F(NestedCalls, DoNotRefreshZoomers)
    {
        session.Zoom(0x11127201);
        session.Zoom(0x11127204);
        engine::Surface* const bitmap = engine::FindSurface(session.Device().CreateCompatibleBitmap({64, 48}));
        const ULONG updates = ZoomUpdates(session);
        Nest([&] {
            session.Engine().AdvanceMilliseconds(60);
            FillRectangle(session, bitmap, Painted);
            EXPECT_EQ(session.Zoom(0x11127238), updates);
        });
        EXPECT_EQ(ZoomUpdates(session), updates + 1) << "the outer call does";
    }

    TEST_F(NestedCalls, OfTheScreenSaveWorkWithoutRefreshingZoomers)
    {
        session.Zoom(0x11127201);
        session.Zoom(0x11127204);
        const ULONG updates = ZoomUpdates(session);
        FillRectangle(session, session.Screen(), Painted);
        Nest([&] {
            session.Engine().AdvanceMilliseconds(60);
            const auto save = session.Hook<PFN_DrvSaveScreenBits>(INDEX_DrvSaveScreenBits);
            RECTL part = Painted;
            const ULONG ident = save(session.Screen(), SS_SAVE, 0, &part);
            EXPECT_NE(ident, 0u) << "the screen is found at any depth";
            EXPECT_EQ(save(session.Screen(), SS_FREE, ident, &part), 1u);
            EXPECT_EQ(session.Zoom(0x11127238), updates);
        });
    }

    TEST_F(NestedCalls, OfSetPaletteReachTheRealDriverAlone)
    {
        Nest(
            [&] { session.Hook<PFN_DrvSetPalette>(INDEX_DrvSetPalette)(session.Device().Dhpdev(), nullptr, 0, 0, 4); });
        EXPECT_EQ(session.Engine().DebugOutput(), "");
    }

    TEST_F(NestedCalls, LeaveTheDepthAsItWas)
    {
        Nest([&] { FillRectangle(session, session.Screen(), Painted); });
        session.records.clear();
        FillRectangle(session, session.Screen(), Painted);
        EXPECT_EQ(PaintedPart(*session.Virtual()), "8 8 24 20");
        EXPECT_EQ(session.records.size(), 1u);
    }

} // namespace
} // namespace conformance
