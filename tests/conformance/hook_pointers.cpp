// DrvMovePointer and DrvSetPointerShape in the three pointer modes.

#include "tests/conformance/core_real_driver.h"
#include "tests/conformance/core_setups.h"
#include "tests/conformance/hook_calls.h"

namespace conformance {
namespace {

    constexpr ULONG MoveRecord = 0x1000, ShapeRecord = 0x2000;

    // A 4 x 4 pointer, all black: AND 0, XOR 0.
    SURFOBJ* BlackMask()
    {
        return engine::MakeBitmap({4, 8}, engine::PixelLayout::Default(BMF_1BPP));
    }

    void Move(Session& session, LONG x, LONG y, RECTL* prcl = nullptr)
    {
        session.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(session.Screen(), x, y, prcl);
    }

    ULONG SetShape(Session& session, LONG x, LONG y, RECTL* prcl = nullptr, SURFOBJ* mask = BlackMask())
    {
        return session.Hook<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(session.Screen(), mask, nullptr, nullptr,
                                                                              0, 0, x, y, prcl, SPS_CHANGE);
    }

    class PointerMode : public testing::TestWithParam<const char*> {
    protected:
        PointerMode()
            : session(WithOptions(GetParam()))
        {
        }
        Session session;
    };

    TEST_P(PointerMode, CapturesBothCallsWithFlagZero)
    {
        Move(session, 5, 6);
        SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.CallType(), MoveRecord);
        EXPECT_EQ(record.flag, 0);
        SetShape(session, 5, 6);
        record = session.TakeOnlyRecord();
        EXPECT_EQ(record.CallType(), ShapeRecord);
        EXPECT_EQ(record.flag, 0);
    }

    TEST_P(PointerMode, CapturesWithFlagZeroOnAnySurface)
    {
        SURFOBJ* const picture = MakePicture(session, {8, 8});
        session.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(picture, 1, 1, nullptr);
        EXPECT_EQ(session.TakeOnlyRecord().flag, 0);
    }

    TEST_P(PointerMode, SkipsRecordsOfPlacesInDarkZones)
    {
        session.AddDarkZone({5, 6, 6, 7});
        Move(session, 5, 6);
        EXPECT_TRUE(session.records.empty()) << "one pixel at the pointer's place";
        SetShape(session, 5, 6);
        EXPECT_TRUE(session.records.empty());
        Move(session, 6, 6);
        EXPECT_EQ(session.records.size(), 1u);
        RECTL wider = {5, 6, 7, 7};
        Move(session, 5, 6, &wider);
        EXPECT_EQ(session.records.size(), 2u) << "the given rectangle counts";
        RECTL inside = {5, 6, 6, 7};
        Move(session, 40, 40, &inside);
        EXPECT_EQ(session.records.size(), 2u);
    }

    TEST_P(PointerMode, RecordsAPointerThatIsHiddenWhereverDarkZonesAre)
    {
        session.AddDarkZone({-100, -100, 100, 100});
        Move(session, -1, 5);
        Move(session, 5, -1);
        Move(session, -1, -1);
        EXPECT_EQ(session.records.size(), 3u);
        SetShape(session, -1, -1);
        EXPECT_EQ(session.records.size(), 3u) << "a shape's place is always looked at";
    }

    TEST_P(PointerMode, ObeysItsBitsAndTheDarkSurfaces)
    {
        session.SetCaptureMask(~(MoveRecord | ShapeRecord));
        Move(session, 5, 6);
        SetShape(session, 5, 6);
        session.SetCaptureMask(0xFFFFFFFF);
        session.Command(32);
        Move(session, 5, 6);
        SetShape(session, 5, 6);
        EXPECT_TRUE(session.records.empty());
    }

    TEST_P(PointerMode, RefreshesZoomersWhenTheIntervalHasPassed)
    {
        session.Zoom(0x11127201);
        session.Zoom(0x11127204);
        const ULONG updates = ZoomUpdates(session);
        session.Engine().AdvanceMilliseconds(60);
        Move(session, 5, 6);
        EXPECT_EQ(ZoomUpdates(session), updates + 1);
        session.Engine().AdvanceMilliseconds(60);
        SetShape(session, 5, 6);
        EXPECT_EQ(ZoomUpdates(session), updates + 2);
    }

    TEST_P(PointerMode, GivesBackWhatItTakesUnderFaults)
    {
        SetShape(session, 5, 6);
        const engine::Resources before = session.Engine().Outstanding();
        engine::FaultPlan plan;
        do {
            session.Engine().Obey(plan);
            Move(session, 8, 9);
            Move(session, 5, 6);
            EXPECT_EQ(session.Engine().Outstanding(), before) << "fault " << plan.Position();
        } while (plan.Next());
        session.Engine().StopFailing();
    }

    TEST_P(PointerMode, SurvivesANullSurface)
    {
        session.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(nullptr, 1, 2, nullptr);
        session.Hook<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(nullptr, BlackMask(), nullptr, nullptr, 0, 0, 1,
                                                                       2, nullptr, 0);
        EXPECT_EQ(session.records.size(), 2u);
    }

    INSTANTIATE_TEST_SUITE_P(Modes, PointerMode, testing::Values("00", "01", "02"),
                             [](const auto& info) { return std::string("Mode") + info.param[1]; });

    TEST(DrawnPointer, IsAcceptedAndAppearsOnTheRealScreen)
    {
        Session session(WithOptions("00"));
        FillRectangle(session, session.Screen(), {0, 0, 64, 48});
        engine::ForgetRealCalls();
        EXPECT_EQ(SetShape(session, 10, 12), SPS_ACCEPT_NOEXCLUDE);
        for (const engine::RealCall& call : engine::RealCalls())
            EXPECT_NE(call.index, INDEX_DrvSetPointerShape) << "the real driver hears nothing of it";
        EXPECT_EQ(PictureOf(*session.Real(), {9, 11, 15, 17}, {{Orange, '#'}}),
                  "######\n"
                  "#....#\n"
                  "#....#\n"
                  "#....#\n"
                  "#....#\n"
                  "######\n");
        Move(session, 30, 20);
        EXPECT_EQ(PictureOf(*session.Real(), {9, 11, 15, 12}, {{Orange, '#'}}), "######\n");
        EXPECT_EQ(session.Real()->Pixel(10, 12), Orange);
        EXPECT_EQ(session.Real()->Pixel(30, 20), 0u);
        Move(session, -1, -1);
        EXPECT_TRUE(SamePixels(*session.Real(), *MakePicture(session, {64, 48})));
    }

    TEST(DrawnPointer, ShowsTheOldAndTheNewPlaceAlone)
    {
        Session session(WithOptions("00"));
        SetShape(session, 10, 12);
        EXPECT_EQ(ShownBy(session, [&] { Move(session, 20, 30); }), "10 12 24 34");
        EXPECT_EQ(ShownBy(session, [&] { Move(session, -1, -1); }), "20 30 24 34");
        EXPECT_EQ(ShownBy(session, [&] { Move(session, -1, -1); }), "nothing") << "hidden to hidden";
        EXPECT_EQ(session.Engine().TakeDebugOutput(), "");
    }

    TEST(DrawnPointer, IsRecordedWithTheRectangleThatTheCursorFills)
    {
        Session session(WithOptions("00"));
        RECTL rectangle = {1, 2, 3, 4};
        SetShape(session, 62, 12, &rectangle);
        EXPECT_EQ(rectangle.left, 62);
        EXPECT_EQ(rectangle.right, 64) << "cut to the screen";
        SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.Word(72), 62u);
        EXPECT_EQ(record.Word(76), 12u);
        EXPECT_EQ(record.Word(80), 64u);
        EXPECT_EQ(record.Word(84), 16u);
        Move(session, 7, 8, &rectangle);
        record = session.TakeOnlyRecord();
        EXPECT_EQ(record.Word(52), 7u);
        EXPECT_EQ(record.Word(64), 12u);
    }

    TEST(DrawnPointer, IsReportedWhenTheRealScreenDoesNotLock)
    {
        Session session(WithOptions("00"));
        SetShape(session, 10, 12);
        session.Engine().TakeDebugOutput();
        session.Engine().RefuseLock(session.Real()->hsurf);
        Move(session, 20, 20);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), "KORU:Cannot lock RealScreen\n");
    }

    TEST(DrawnPointer, TouchesNoScreenWhenNothingIsToBeShown)
    {
        Session session(WithOptions("00"));
        session.Engine().RefuseLock(session.Real()->hsurf);
        session.Engine().RefuseLock(session.Virtual()->hsurf);
        Move(session, -1, -1);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), "");
    }

    TEST(DrawnPointer, MovesOnTheScreenOfADeviceBitmapThatIsNamed)
    {
        Session session(WithOptions("00"));
        SURFOBJ* const bitmap = engine::FindSurface(session.Device().CreateCompatibleBitmap({64, 48}));
        const auto move = session.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer);
        SetShape(session, 10, 12);
        EXPECT_EQ(ShownBy(session, [&] { move(bitmap, 20, 30, nullptr); }), "10 12 24 34");
        EXPECT_EQ(session.Real()->Pixel(12, 30), 0x00445566u) << "out of the VirtualScreen";
        session.records.clear();
        session.AddDarkZone({5, 6, 6, 7});
        move(bitmap, 5, 6, nullptr);
        EXPECT_TRUE(session.records.empty()) << "the dark zones are that screen's";
    }

    TEST(ForwardedPointer, GoesWithTheBitmapBehindADeviceBitmap)
    {
        Session session(WithOptions("02"));
        const SURFOBJ* const bitmap = engine::FindSurface(session.Device().CreateCompatibleBitmap({64, 48}));
        engine::ForgetRealCalls();
        session.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(const_cast<SURFOBJ*>(bitmap), 3, 4, nullptr);
        ASSERT_EQ(engine::RealCalls().size(), 1u);
        const SURFOBJ* const behind = engine::FindSurface(reinterpret_cast<HSURF>(bitmap->dhsurf));
        EXPECT_EQ(engine::RealCalls()[0].arguments[0], reinterpret_cast<ULONG>(behind));
    }

    TEST(UndrawnPointer, IsDeclinedAndMovedByNobody)
    {
        Session session(WithOptions("01"));
        engine::ForgetRealCalls();
        RECTL rectangle = {1, 2, 3, 4};
        EXPECT_EQ(ShownBy(session,
                          [&] {
                              EXPECT_EQ(SetShape(session, 10, 12, &rectangle), SPS_DECLINE);
                              Move(session, 20, 30, &rectangle);
                          }),
                  "nothing");
        EXPECT_EQ(rectangle.left, 1);
        EXPECT_TRUE(engine::RealCalls().empty());
        EXPECT_EQ(session.Engine().TakeDebugOutput(), "");
    }

    TEST(ForwardedPointer, ReachesTheRealDriverWithTheBitmapBehindTheScreen)
    {
        Session session(WithOptions("02"));
        RECTL rectangle = {1, 2, 3, 4};
        SURFOBJ* const mask = BlackMask();
        engine::ForgetRealCalls();
        EXPECT_EQ(SetShape(session, 10, 12, &rectangle, mask), SPS_ACCEPT_NOEXCLUDE);
        ASSERT_EQ(engine::RealCalls().size(), 1u);
        const auto number = [](const auto* pointer) { return reinterpret_cast<ULONG>(pointer); };
        const SURFOBJ* const behind = session.Virtual();
        EXPECT_EQ(engine::RealCalls()[0].index, INDEX_DrvSetPointerShape);
        EXPECT_EQ(
            engine::RealCalls()[0].arguments,
            (std::vector<ULONG>{number(behind), number(mask), 0, 0, 0, 0, 10, 12, number(&rectangle), SPS_CHANGE}));
        engine::ForgetRealCalls();
        Move(session, -1, 30, &rectangle);
        ASSERT_EQ(engine::RealCalls().size(), 1u);
        EXPECT_EQ(engine::RealCalls()[0].index, INDEX_DrvMovePointer);
        EXPECT_EQ(engine::RealCalls()[0].arguments,
                  (std::vector<ULONG>{number(behind), 0xFFFFFFFF, 30, number(&rectangle)}));
    }

    TEST(ForwardedPointer, GoesWithTheIncomingSurfaceWhenTheOneBehindDoesNotLock)
    {
        Session session(WithOptions("02"));
        session.Engine().RefuseLock(session.Virtual()->hsurf);
        engine::ForgetRealCalls();
        Move(session, 3, 4);
        ASSERT_EQ(engine::RealCalls().size(), 1u);
        EXPECT_EQ(engine::RealCalls()[0].arguments[0], reinterpret_cast<ULONG>(session.Screen()));
        engine::ForgetRealCalls();
        EXPECT_EQ(SetShape(session, 3, 4), SPS_ACCEPT_NOEXCLUDE);
        ASSERT_EQ(engine::RealCalls().size(), 1u);
        EXPECT_EQ(engine::RealCalls()[0].arguments[0], reinterpret_cast<ULONG>(session.Screen()));
    }

    TEST(ForwardedPointer, AnswersTheRealResultOrZeroWithoutTheEntryPoint)
    {
        auto setup = WithOptions("02");
        setup.frameBuffer.refuseAt = INDEX_DrvSetPointerShape;
        {
            Session session(setup);
            EXPECT_EQ(SetShape(session, 10, 12), SPS_ERROR);
        }
        setup.frameBuffer.missing = {INDEX_DrvSetPointerShape, INDEX_DrvMovePointer};
        Session session(setup);
        EXPECT_EQ(SetShape(session, 10, 12), 0u);
        Move(session, 1, 1);
        EXPECT_EQ(session.records.size(), 2u) << "captured all the same";
    }

    // PointerMode 1: the engine draws the pointer with DrvCopyBits; those copies need not be reported.
    struct CopyCase {
        const char* name;
        const char* options;
        ULONG engineVersion;
        SIZEL source;
        bool toScreen;
        bool captured;
    };
    class PointerCopies : public testing::TestWithParam<CopyCase> { };

    TEST_P(PointerCopies, AreFilteredBySize)
    {
        Session session(WithOptions(GetParam().options, GetParam().engineVersion));
        SURFOBJ* const target = GetParam().toScreen ? session.Screen() : MakePicture(session, {64, 48}, 0);
        SURFOBJ* const source = MakePicture(session, GetParam().source);
        RECTL to = {1, 1, 3, 3};
        POINTL from = {0, 0};
        session.Zoom(0x11127201);
        session.Zoom(0x11127204);
        const ULONG updates = ZoomUpdates(session);
        session.Engine().AdvanceMilliseconds(60);
        EXPECT_EQ(session.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits)(target, source, nullptr, nullptr, &to, &from), TRUE);
        EXPECT_EQ(session.records.size(), GetParam().captured ? 1u : 0u);
        EXPECT_EQ(ZoomUpdates(session), GetParam().toScreen ? updates + 1 : updates) << "time-stamped in every case";
    }

    INSTANTIATE_TEST_SUITE_P(Sizes, PointerCopies,
                             testing::Values(CopyCase{"EightByEight", "01", 0x30100, {8, 8}, true, false},
                                             CopyCase{"OneByOne", "01", 0x30100, {2, 2}, true, false},
                                             CopyCase{"NineWide", "01", 0x30100, {9, 8}, true, true},
                                             CopyCase{"NineHigh", "01", 0x30100, {8, 9}, true, true},
                                             CopyCase{"ToAnotherTarget", "01", 0x30100, {8, 8}, false, true},
                                             CopyCase{"FilterSwitchedOff", "010", 0x30100, {8, 8}, true, true},
                                             CopyCase{"FilterSwitchedOn", "015", 0x30100, {8, 8}, true, false},
                                             CopyCase{"PointerDrawnHere", "00", 0x30100, {8, 8}, true, true},
                                             CopyCase{"PointerForwarded", "02", 0x30100, {8, 8}, true, true},
                                             CopyCase{
                                                 "NothingIsTheOlderPointersSize", "01", 0x20000, {8, 8}, true, true},
                                             CopyCase{"NotEvenOnePixel", "01", 0x20000, {2, 2}, true, true}),
                             [](const auto& info) { return info.param.name; });

    TEST(PointerCopies, FromADeviceBitmapAreCaptured)
    {
        Session session(WithOptions("01"));
        SURFOBJ* const source = engine::FindSurface(session.Device().CreateCompatibleBitmap({8, 8}));
        session.records.clear();
        RECTL to = {1, 1, 3, 3};
        POINTL from = {0, 0};
        session.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits)(session.Screen(), source, nullptr, nullptr, &to, &from);
        EXPECT_EQ(session.records.size(), 1u);
    }

    // Older engines: only what no device manages, and of the pointer's size, which is nothing.
    class OlderPointerCopies : public testing::Test {
    protected:
        OlderPointerCopies()
            : session(WithOptions("01", 0x20000))
        {
            source->sizlBitmap = {0, 0};
        }
        ~OlderPointerCopies() override { source->sizlBitmap = {2, 2}; }
        ULONG RecordsOfCopy()
        {
            RECTL to = {1, 1, 1, 1};
            POINTL from = {0, 0};
            session.records.clear();
            session.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits)(session.Screen(), source, nullptr, nullptr, &to, &from);
            return static_cast<ULONG>(session.records.size());
        }
        Session session;
        engine::Surface* source = MakePicture(session, {2, 2});
    };

    TEST_F(OlderPointerCopies, AreFilteredWhenNothingManagesTheirSource)
    {
        EXPECT_EQ(RecordsOfCopy(), 0u);
        source->dhpdev = session.Device().Dhpdev();
        EXPECT_EQ(RecordsOfCopy(), 1u);
        source->dhpdev = nullptr;
        source->hdev = session.Device().Handle();
        EXPECT_EQ(RecordsOfCopy(), 1u);
        source->hdev = nullptr;
        source->dhsurf = reinterpret_cast<DHSURF>(source->hsurf);
        EXPECT_EQ(RecordsOfCopy(), 1u);
        source->dhsurf = nullptr;
        EXPECT_EQ(RecordsOfCopy(), 0u);
    }

    TEST_F(OlderPointerCopies, AreOfThePointersSizeInBothDirections)
    {
        source->sizlBitmap = {1, 0};
        EXPECT_EQ(RecordsOfCopy(), 1u);
        source->sizlBitmap = {0, 1};
        EXPECT_EQ(RecordsOfCopy(), 1u);
    }

    TEST(PointerCopies, ToASurfaceOfAnotherHandleOfTheDeviceAreCaptured)
    {
        Session session(WithOptions("01"));
        const auto complete = session.Hook<PFN_DrvCompletePDEV>(INDEX_DrvCompletePDEV);
        complete(session.Device().Dhpdev(), reinterpret_cast<HDEV>(0x5555));
        session.records.clear();
        RECTL to = {1, 1, 3, 3};
        POINTL from = {0, 0};
        session.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits)(session.Screen(), MakePicture(session, {8, 8}), nullptr,
                                                         nullptr, &to, &from);
        EXPECT_EQ(session.records.size(), 1u);
        complete(session.Device().Dhpdev(), session.Device().Handle());
    }

    TEST(PointerCopies, ToADeviceBitmapAreCaptured)
    {
        Session session(WithOptions("01"));
        SURFOBJ* const target = engine::FindSurface(session.Device().CreateCompatibleBitmap({8, 8}));
        session.records.clear();
        RECTL to = {1, 1, 3, 3};
        POINTL from = {0, 0};
        session.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits)(target, MakePicture(session, {8, 8}), nullptr, nullptr, &to,
                                                         &from);
        EXPECT_EQ(session.records.size(), 1u);
    }

} // namespace
} // namespace conformance
