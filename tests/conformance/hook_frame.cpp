// What every drawing hook does around its own drawing.

#include <utility>

#include "tests/conformance/core_real_driver.h"
#include "tests/conformance/core_setups.h"
#include "tests/conformance/hook_calls.h"

namespace conformance {
namespace {

    constexpr const char* CannotLockVirtual = "KORU:Cannot lock VirtualScreen\n";
    constexpr const char* CannotLockReal = "KORU:Cannot lock RealScreen\n";

    class EveryDrawingHook : public testing::TestWithParam<DrawingHook> {
    protected:
        BOOL Draw(SURFOBJ* target) { return GetParam().call(session, target); }
        BOOL DrawOnScreen() { return Draw(session.Screen()); }

        Session session;
    };

    TEST_P(EveryDrawingHook, DrawsOnTheVirtualScreenAndShowsEveryPixelItChanges)
    {
        EXPECT_EQ(DrawOnScreen(), TRUE);
        ASSERT_NE(PaintedPart(*session.Virtual()), "nothing") << "the case drew nothing";
        EXPECT_TRUE(SamePixels(*session.Virtual(), *session.Real()));
    }

    TEST_P(EveryDrawingHook, IsCapturedByItsOwnBitAlone)
    {
        session.SetCaptureMask(GetParam().maskBit);
        DrawOnScreen();
        const SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.CallType(), GetParam().recordType);
        EXPECT_EQ(record.Word(0), record.length);
        EXPECT_GE(record.length, GetParam().fixedSize);

        session.SetCaptureMask(~GetParam().maskBit);
        EXPECT_EQ(DrawOnScreen(), TRUE);
        EXPECT_TRUE(session.records.empty());
    }

    TEST_P(EveryDrawingHook, AsksTheConsumerTwiceForEachIdentifier)
    {
        DrawOnScreen();
        EXPECT_EQ(session.selectorsAsked, (std::vector<LONG>{0, 1, 0, 1}));
    }

    TEST_P(EveryDrawingHook, DoesNotAskTheConsumerForACallThatIsSwitchedOff)
    {
        session.SetCaptureMask(0);
        DrawOnScreen();
        session.SetCaptureMask(0xFFFFFFFF);
        session.Command(1);
        DrawOnScreen();
        EXPECT_TRUE(session.selectorsAsked.empty());
    }

    TEST_P(EveryDrawingHook, HandsOverWithZeroForTheScreenAndOneForOtherTargets)
    {
        DrawOnScreen();
        EXPECT_EQ(session.TakeOnlyRecord().flag, 0);

        Draw(MakePicture(session, {64, 48}, 0));
        EXPECT_EQ(session.TakeOnlyRecord().flag, 1);

        const HSURF deviceBitmap = session.Device().CreateCompatibleBitmap({64, 48});
        session.records.clear();
        Draw(engine::FindSurface(deviceBitmap));
        EXPECT_EQ(session.TakeOnlyRecord().flag, 1);
    }

    TEST_P(EveryDrawingHook, DrawsOnTheBitmapBehindADeviceBitmap)
    {
        engine::Surface* const bitmap = engine::FindSurface(session.Device().CreateCompatibleBitmap({64, 48}));
        ASSERT_EQ(bitmap->iType, STYPE_DEVBITMAP);
        engine::Surface* const backing = engine::FindSurface(reinterpret_cast<HSURF>(bitmap->dhsurf));
        FillBitmap(*backing, 0);
        EXPECT_EQ(Draw(bitmap), TRUE);
        EXPECT_NE(PaintedPart(*backing), "nothing");
        EXPECT_EQ(PaintedPart(*session.Virtual()), "nothing");
        EXPECT_EQ(PaintedPart(*session.Real()), "nothing");
    }

    TEST_P(EveryDrawingHook, RecordsTheSurfaceAsTheEngineGaveIt)
    {
        DrawOnScreen();
        const SubmittedRecord record = session.TakeOnlyRecord();
        constexpr ULONG surfaceSlot = 40, hsurfInSurface = 12;
        EXPECT_EQ(record.Word(record.Word(surfaceSlot) + hsurfInSurface),
                  reinterpret_cast<ULONG>(session.Screen()->hsurf));
    }

    TEST_P(EveryDrawingHook, IsDrawnAndShownButNotCapturedInsideDarkZones)
    {
        session.AddDarkZone({0, 0, 16, 48});
        session.AddDarkZone({16, 0, 64, 20});
        EXPECT_EQ(DrawOnScreen(), TRUE);
        EXPECT_TRUE(session.records.empty());
        ASSERT_NE(PaintedPart(*session.Virtual()), "nothing");
        EXPECT_TRUE(SamePixels(*session.Virtual(), *session.Real()));
    }

    TEST_P(EveryDrawingHook, IsCapturedWhenDarkZonesLeaveOnePixelOfItsBounds)
    {
        session.AddDarkZone({0, 0, 64, 19});
        session.AddDarkZone({0, 19, 23, 48});
        DrawOnScreen();
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST_P(EveryDrawingHook, IsNotCapturedOnADarkSurface)
    {
        EXPECT_EQ(session.Command(32), 1u);
        EXPECT_EQ(DrawOnScreen(), TRUE);
        EXPECT_TRUE(session.records.empty());
        EXPECT_TRUE(SamePixels(*session.Virtual(), *session.Real()));
        Draw(MakePicture(session, {64, 48}, 0));
        EXPECT_EQ(session.records.size(), 1u) << "other surfaces are not dark";
    }

    TEST_P(EveryDrawingHook, IsNotCapturedForADarkProcessOrIdentifier)
    {
        EXPECT_EQ(session.Command(37, session.identifiers[0]), 1u);
        DrawOnScreen();
        EXPECT_TRUE(session.records.empty());
        EXPECT_EQ(session.selectorsAsked, std::vector<LONG>{0});

        session.Command(39);
        EXPECT_EQ(session.Command(23, session.identifiers[1]), 1u);
        DrawOnScreen();
        EXPECT_TRUE(session.records.empty());

        session.Command(25);
        EXPECT_EQ(session.Command(37, session.identifiers[1]), 1u) << "the second identifier is no process";
        EXPECT_EQ(session.Command(23, session.identifiers[0]), 1u);
        DrawOnScreen();
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST_P(EveryDrawingHook, DrawsNothingWhenTheBitmapBehindTheTargetDoesNotLock)
    {
        session.Engine().RefuseLock(session.Virtual()->hsurf);
        EXPECT_EQ(DrawOnScreen(), FALSE);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), CannotLockVirtual);
        EXPECT_EQ(PaintedPart(*session.Virtual()), "nothing");
        EXPECT_EQ(session.TakeOnlyRecord().CallType(), GetParam().recordType);
    }

    TEST_P(EveryDrawingHook, ReportsARealScreenThatDoesNotLockAndIsCaptured)
    {
        session.Engine().RefuseLock(session.Real()->hsurf);
        EXPECT_EQ(DrawOnScreen(), TRUE);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), CannotLockReal);
        EXPECT_NE(PaintedPart(*session.Virtual()), "nothing");
        EXPECT_EQ(PaintedPart(*session.Real()), "nothing");
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST_P(EveryDrawingHook, GivesBackWhatItTakes)
    {
        const engine::Resources before = session.Engine().Outstanding();
        EXPECT_EQ(before.semaphoreHolds, 0u);
        DrawOnScreen();
        EXPECT_EQ(session.Engine().Outstanding(), before);
    }

    TEST_P(EveryDrawingHook, SurvivesLocksThatFail)
    {
        const engine::Resources before = session.Engine().Outstanding();
        for (const bool forGood : {false, true}) {
            engine::FaultPlan plan(forGood);
            do {
                session.Engine().Obey(plan);
                DrawOnScreen();
                EXPECT_EQ(session.Engine().Outstanding(), before) << "fault " << plan.Position();
            } while (plan.Next());
            session.Engine().StopFailing();
        }
        session.records.clear();
        EXPECT_EQ(DrawOnScreen(), TRUE);
        EXPECT_EQ(session.records.size(), 1u) << "HookDepth is 0 again";
    }

    TEST_P(EveryDrawingHook, AnswersZeroForANullTargetAndIsCapturedWithFlagOne)
    {
        EXPECT_EQ(Draw(nullptr), FALSE);
        EXPECT_EQ(session.TakeOnlyRecord().flag, 1);
    }

    TEST_P(EveryDrawingHook, RefreshesZoomersWhenTheIntervalHasPassed)
    {
        session.Zoom(0x11127201);
        session.Zoom(0x11127204); // an update: the interval starts
        const ULONG updates = ZoomUpdates(session);
        session.Engine().AdvanceMilliseconds(40);
        DrawOnScreen();
        EXPECT_EQ(ZoomUpdates(session), updates);
        session.Engine().AdvanceMilliseconds(20);
        DrawOnScreen();
        EXPECT_EQ(ZoomUpdates(session), updates + 1);
    }

    TEST_P(EveryDrawingHook, RefreshesZoomersAlsoForADeviceBitmapAndWithoutCapture)
    {
        session.Zoom(0x11127201);
        session.Zoom(0x11127204);
        SURFOBJ* const bitmap = engine::FindSurface(session.Device().CreateCompatibleBitmap({64, 48}));
        session.SetCaptureMask(0);
        const ULONG updates = ZoomUpdates(session);
        session.Engine().AdvanceMilliseconds(60);
        Draw(bitmap);
        EXPECT_EQ(ZoomUpdates(session), updates + 1);
        session.Engine().AdvanceMilliseconds(60);
        Draw(MakePicture(session, {64, 48}, 0)); // no device: no screen to refresh
        EXPECT_EQ(ZoomUpdates(session), updates + 1);
    }

    INSTANTIATE_TEST_SUITE_P(Hooks, EveryDrawingHook, testing::ValuesIn(DrawingHooks()), NameOf);

    TEST(HookFrame, DoesNotShowACallWhoseClipMissesItButCapturesIt)
    {
        Session session;
        engine::ClipObject clip({30, 30, 40, 40});
        EXPECT_EQ(ShownBy(session, [&] { FillRectangle(session, session.Screen(), Painted, &clip); }), "nothing");
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST(HookFrame, CapturesACallWhoseClipMissesItEvenInADarkZone)
    {
        Session session;
        session.AddDarkZone({0, 0, 64, 48});
        engine::ClipObject clip({30, 30, 40, 40});
        FillRectangle(session, session.Screen(), Painted, &clip);
        EXPECT_EQ(session.records.size(), 1u) << "without bounds on the screen a call is visible";
    }

    TEST(HookFrame, DoesNotTakeASurfaceWithoutHandleForAScreenWithoutSurface)
    {
        Session session(WithoutDevice());
        RealDriver real(session);
        DEVMODEW mode = {};
        const DHPDEV dhpdev = session.Hook<PFN_DrvEnablePDEV>(INDEX_DrvEnablePDEV)(
            &mode, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr);
        engine::Surface* const temporary = engine::MakeBitmap({64, 48}, engine::PixelLayout::Default(BMF_32BPP));
        const HSURF handle = temporary->hsurf;
        temporary->hsurf = nullptr;
        temporary->dhpdev = dhpdev;
        session.records.clear();
        EXPECT_EQ(FillRectangle(session, temporary, Painted), TRUE);
        EXPECT_EQ(session.TakeOnlyRecord().flag, 1);
        EXPECT_EQ(session.Engine().DebugOutput().find("Cannot lock"), std::string::npos);
        temporary->hsurf = handle;
    }

    TEST(HookFrame, TakesATrivialClipIntoAccountLikeAnyOther)
    {
        Session session;
        engine::ClipObject clip({0, 0, 12, 12}, DC_TRIVIAL);
        EXPECT_EQ(ShownBy(session, [&] { FillRectangle(session, session.Screen(), Painted, &clip); }), "8 8 12 12");
    }

    TEST(HookFrame, ShowsNothingForAnEmptyRectangleAndCapturesItInADarkZone)
    {
        Session session;
        session.AddDarkZone({0, 0, 64, 48});
        EXPECT_EQ(ShownBy(session, [&] { FillRectangle(session, session.Screen(), {8, 8, 8, 20}); }), "nothing");
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST(HookFrame, ShowsWhatLiesOnTheScreenOfARectangleThatReachesBeyondIt)
    {
        Session session;
        EXPECT_EQ(ShownBy(session,
                          [&] {
                              FillRectangle(session, session.Screen(), {-100, -100, 20, 20});
                          }),
                  "0 0 20 20");
        EXPECT_EQ(ShownBy(session,
                          [&] {
                              FillRectangle(session, session.Screen(), {50, 40, 10000, 10000});
                          }),
                  "50 40 64 48");
        EXPECT_EQ(ShownBy(session, [&] { FillRectangle(session, session.Screen(), {100, 100, 200, 200}); }), "nothing");
    }

    TEST(HookFrame, UsesTheIncomingSourceWhenTheBitmapBehindItDoesNotLock)
    {
        Session session;
        FillRectangle(session, session.Screen(), Painted);
        engine::Surface* const target = MakePicture(session, {64, 48}, 0);
        session.Engine().RefuseLock(session.Virtual()->hsurf);
        RECTL to = Painted;
        POINTL from = {8, 8};
        session.records.clear();
        session.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits)(target, session.Screen(), nullptr, nullptr, &to, &from);
        EXPECT_EQ(PaintedPart(*target), "nothing") << "the device surface itself has no bits";
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST(HookFrame, ReadsFromTheBitmapBehindASource)
    {
        Session session;
        FillRectangle(session, session.Screen(), Painted);
        engine::Surface* const target = MakePicture(session, {64, 48}, 0);
        RECTL to = {0, 0, 64, 48};
        POINTL from = {0, 0};
        EXPECT_EQ(
            session.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits)(target, session.Screen(), nullptr, nullptr, &to, &from),
            TRUE);
        EXPECT_EQ(PaintedPart(*target), "8 8 24 20");
    }

    TEST(HookFrame, DrawsOnTheBitmapBehindASurfaceOfAnUnknownDevice)
    {
        Session session;
        engine::Surface* const bitmap = engine::FindSurface(session.Device().CreateCompatibleBitmap({64, 48}));
        engine::Surface* const behind = engine::FindSurface(reinterpret_cast<HSURF>(bitmap->dhsurf));
        FillBitmap(*behind, 0);
        session.records.clear();
        const DHPDEV dhpdev = std::exchange(bitmap->dhpdev, reinterpret_cast<DHPDEV>(0x777));
        EXPECT_EQ(FillRectangle(session, bitmap, Painted), TRUE);
        bitmap->dhpdev = dhpdev;
        EXPECT_EQ(PaintedPart(*behind), "8 8 24 20");
        EXPECT_EQ(session.TakeOnlyRecord().flag, 1);
    }

    TEST(HookFrame, PassesAMaskOnAsItCame)
    {
        // The bitmap behind the mask would let everything through; a device bitmap has no bits to read.
        Session session(InMode({64, 48, 1}));
        engine::Surface* const mask = engine::FindSurface(session.Device().CreateCompatibleBitmap({64, 48}));
        engine::Surface* const behind = engine::FindSurface(reinterpret_cast<HSURF>(mask->dhsurf));
        FillBitmap(*behind, 1);
        engine::Brush brush = engine::Brush::Solid(1);
        RECTL to = Painted;
        POINTL origin = {0, 0};
        session.expectViolations = true; // of the engine's service, which finds no bits
        session.Hook<PFN_DrvBitBlt>(INDEX_DrvBitBlt)(session.Screen(), nullptr, mask, nullptr, nullptr, &to, nullptr,
                                                     &origin, &brush, &origin, 0xAAF0);
        EXPECT_EQ(PaintedPart(*session.Virtual()), "nothing");
    }

    TEST(HookFrame, IsDueAfterMoreThanTheIntervalInWholeMilliseconds)
    {
        // 3579545 counts a second: 50 ms are 178977.25 counts, 51 ms 182556.8.
        Session session;
        session.Zoom(0x11127201);
        session.Zoom(0x11127204);
        const ULONG updates = ZoomUpdates(session);
        session.Engine().SetCounter(182556);
        FillRectangle(session, session.Screen(), Painted);
        EXPECT_EQ(ZoomUpdates(session), updates) << "50 ms are not more than 50";
        session.Engine().SetCounter(182557);
        FillRectangle(session, session.Screen(), Painted);
        EXPECT_EQ(ZoomUpdates(session), updates + 1);
    }

    TEST(HookFrame, RefreshesWithTheTimeStampOfTheRecord)
    {
        // Every query moves the clock by 40 ms: the record's stamp is 40 ms after the update, and a second
        // query would find the refresh due.
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
        FillRectangle(session, session.Screen(), Painted);
        EXPECT_EQ(session.TakeOnlyRecord().Word(24), 40u);
        EXPECT_EQ(ZoomUpdates(session), updates);
    }

    TEST(HookFrame, NeverRefreshesOnAMachineWithoutAPerformanceCounter)
    {
        Session session;
        session.Engine().SetFrequency(0);
        session.Driver().EnableAgain();
        session.Zoom(0x11127201);
        session.Zoom(0x11127204);
        const ULONG updates = ZoomUpdates(session);
        session.Engine().SetCounter(0x7FFFFFFFFFFFFFFF);
        FillRectangle(session, session.Screen(), Painted);
        EXPECT_EQ(ZoomUpdates(session), updates);
    }

    TEST(HookFrame, ReportsScreensThatDoNotLockForTheTimedRefresh)
    {
        Session session;
        session.Zoom(0x11127201);
        session.Zoom(0x11127204);
        SURFOBJ* const bitmap = engine::FindSurface(session.Device().CreateCompatibleBitmap({64, 48}));
        const ULONG updates = ZoomUpdates(session);
        session.Engine().AdvanceMilliseconds(60);
        session.Engine().ClearDebugOutput();
        session.Engine().RefuseLock(session.Real()->hsurf);
        FillRectangle(session, bitmap, Painted);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), CannotLockReal);
        session.Engine().RefuseLock(session.Virtual()->hsurf);
        FillRectangle(session, bitmap, Painted);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), CannotLockVirtual);
        EXPECT_EQ(ZoomUpdates(session), updates);
    }

    TEST(HookFrame, SubmitsAnEmptyRecordOnlyToAConsumerThatIsThere)
    {
        Session session(WithoutConsumer());
        session.SetCaptureMask(0xFFFFFFFF);
        EXPECT_EQ(FillRectangle(session, session.Screen(), Painted), TRUE);
        EXPECT_TRUE(session.records.empty());
    }

} // namespace
} // namespace conformance
