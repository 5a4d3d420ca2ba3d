// DrvSaveScreenBits: parts of the screen kept, put back, given up.

#include "tests/conformance/core_setups.h"
#include "tests/conformance/hook_calls.h"

namespace conformance {
namespace {

    constexpr const char* NoMemory = "KORU:SaveScreenRect Error, there are not memory enough.\n";
    constexpr RECTL Part = {10, 10, 20, 20};

    ULONG Call(Session& session, ULONG mode, ULONG ident, const RECTL* rectangle, SURFOBJ* pso)
    {
        RECTL given = rectangle ? *rectangle : RECTL{};
        return session.Hook<PFN_DrvSaveScreenBits>(INDEX_DrvSaveScreenBits)(pso, mode, ident,
                                                                            rectangle ? &given : nullptr);
    }
    ULONG Call(Session& session, ULONG mode, ULONG ident, const RECTL& rectangle)
    {
        return Call(session, mode, ident, &rectangle, session.Screen());
    }

    engine::Surface* Saved(ULONG ident)
    {
        return engine::FindSurface(reinterpret_cast<HSURF>(ident));
    }

    struct DepthCase {
        ULONG bitsPerPixel;
        ULONG format;
        LONG rowBytes; // of 11 pixels, not padded
    };
    class SaveScreenBits : public testing::TestWithParam<DepthCase> { };

    TEST_P(SaveScreenBits, KeepsThePartInABitmapOneLargerEachWay)
    {
        Session session(InMode({64, 48, GetParam().bitsPerPixel}));
        FillRectangle(session, session.Screen(), {0, 0, 64, 48}, nullptr, 1);
        const ULONG ident = Call(session, SS_SAVE, 0, Part);
        const engine::Surface* const saved = Saved(ident);
        ASSERT_NE(saved, nullptr);
        EXPECT_EQ(saved->sizlBitmap.cx, 11);
        EXPECT_EQ(saved->sizlBitmap.cy, 11);
        EXPECT_EQ(saved->iBitmapFormat, GetParam().format);
        EXPECT_EQ(saved->lDelta, GetParam().rowBytes);
        EXPECT_EQ(saved->fjBitmap & BMF_TOPDOWN, BMF_TOPDOWN);
        EXPECT_EQ(PaintedPart(*saved), "0 0 10 10") << "the further column and row stay empty";
        Call(session, SS_FREE, ident, Part);
    }

    TEST_P(SaveScreenBits, PutsThePartBackAndShowsIt)
    {
        Session session(InMode({64, 48, GetParam().bitsPerPixel}));
        const engine::Resources before = session.Engine().Outstanding();
        FillRectangle(session, session.Screen(), {12, 13, 18, 30}, nullptr, 1);
        const ULONG ident = Call(session, SS_SAVE, 0, Part);
        FillRectangle(session, session.Screen(), {0, 0, 64, 48}, nullptr, 0);
        EXPECT_EQ(Call(session, SS_RESTORE, ident, Part), 1u);
        EXPECT_EQ(PaintedPart(*session.Virtual()), "12 13 18 20");
        EXPECT_TRUE(SamePixels(*session.Virtual(), *session.Real()));
        EXPECT_EQ(session.Engine().Outstanding(), before) << "the bitmap is gone";
    }

    INSTANTIATE_TEST_SUITE_P(Depths, SaveScreenBits,
                             testing::Values(DepthCase{1, BMF_1BPP, 2}, DepthCase{4, BMF_4BPP, 6},
                                             DepthCase{8, BMF_8BPP, 11}, DepthCase{15, BMF_16BPP, 22},
                                             DepthCase{16, BMF_16BPP, 22}, DepthCase{24, BMF_24BPP, 33},
                                             DepthCase{32, BMF_32BPP, 44}),
                             [](const auto& info) { return "Bits" + std::to_string(info.param.bitsPerPixel); });

    TEST(SaveScreenBitsAlone, KeepsAndPutsBackWhatLiesOnTheScreen)
    {
        Session session;
        FillRectangle(session, session.Screen(), {0, 0, 64, 48});
        const RECTL outside = {-5, 40, 10, 60};
        const ULONG ident = Call(session, SS_SAVE, 0, outside);
        ASSERT_NE(Saved(ident), nullptr);
        EXPECT_EQ(Saved(ident)->sizlBitmap.cx, 16);
        EXPECT_EQ(Saved(ident)->sizlBitmap.cy, 21);
        EXPECT_EQ(PaintedPart(*Saved(ident)), "5 0 15 8");
        FillRectangle(session, session.Screen(), {0, 0, 64, 48}, nullptr, 0);
        EXPECT_EQ(Call(session, SS_RESTORE, ident, outside), 1u);
        EXPECT_EQ(PaintedPart(*session.Real()), "0 40 10 48");
    }

    TEST(SaveScreenBitsAlone, IsCapturedWithFlagOneAndItsResult)
    {
        Session session;
        const ULONG ident = Call(session, SS_SAVE, 0, Part);
        const SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.CallType(), 0x200000u);
        EXPECT_EQ(record.flag, 1);
        EXPECT_EQ(record.Word(44), SS_SAVE);
        EXPECT_EQ(record.Word(52), 10u);
        EXPECT_EQ(record.Word(68), ident);
        EXPECT_EQ(Call(session, SS_FREE, ident, Part), 1u);
        EXPECT_EQ(session.TakeOnlyRecord().Word(48), ident);
    }

    TEST(SaveScreenBitsAlone, IsNotCapturedInsideDarkZonesOrOnADarkSurface)
    {
        Session session;
        session.AddDarkZone(Part);
        Call(session, SS_FREE, 0, Part);
        EXPECT_TRUE(session.records.empty());
        Call(session, SS_FREE, 0, {10, 10, 21, 20});
        EXPECT_EQ(session.records.size(), 1u);
        session.Command(32);
        Call(session, SS_FREE, 0, {10, 10, 21, 20});
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST(SaveScreenBitsAlone, FreesWithoutShowing)
    {
        Session session;
        const engine::Resources before = session.Engine().Outstanding();
        const ULONG ident = Call(session, SS_SAVE, 0, Part);
        EXPECT_EQ(ShownBy(session, [&] { EXPECT_EQ(Call(session, SS_FREE, ident, Part), 1u); }), "nothing");
        EXPECT_EQ(session.Engine().Outstanding(), before);
    }

    TEST(SaveScreenBitsAlone, AnswersZeroForUnknownModes)
    {
        Session session;
        const ULONG ident = Call(session, SS_SAVE, 0, Part);
        EXPECT_EQ(Call(session, 3, ident, Part), 0u);
        EXPECT_EQ(Call(session, 0xFFFFFFFF, ident, Part), 0u);
        EXPECT_NE(Saved(ident), nullptr);
        Call(session, SS_FREE, ident, Part);
    }

    TEST(SaveScreenBitsAlone, TakesANullIdentForNothing)
    {
        Session session;
        EXPECT_EQ(ShownBy(session, [&] { EXPECT_EQ(Call(session, SS_RESTORE, 0, Part), 0u); }), "nothing");
        EXPECT_EQ(Call(session, SS_FREE, 0, Part), 1u);
        EXPECT_TRUE(session.Engine().Violations().empty());
    }

    TEST(SaveScreenBitsAlone, WorksOnTheScreenOfADeviceBitmapToo)
    {
        Session session;
        FillRectangle(session, session.Screen(), {0, 0, 64, 48});
        SURFOBJ* const bitmap = engine::FindSurface(session.Device().CreateCompatibleBitmap({5, 5}));
        const ULONG ident = Call(session, SS_SAVE, 0, &Part, bitmap);
        ASSERT_NE(Saved(ident), nullptr);
        EXPECT_EQ(PaintedPart(*Saved(ident)), "0 0 10 10");
        Call(session, SS_FREE, ident, Part);
    }

    TEST(SaveScreenBitsAlone, AnswersZeroWithoutScreenAndIsCaptured)
    {
        Session session;
        SURFOBJ* const picture = MakePicture(session, {8, 8});
        EXPECT_EQ(Call(session, SS_SAVE, 0, &Part, picture), 0u);
        EXPECT_EQ(Call(session, SS_FREE, 0, &Part, nullptr), 0u);
        EXPECT_EQ(session.records.size(), 2u);
        EXPECT_EQ(session.Engine().DebugOutput(), "");
    }

    TEST(SaveScreenBitsAlone, SavesNothingOfANullOrReversedRectangle)
    {
        Session session;
        session.AddDarkZone({0, 0, 64, 48});
        const engine::Resources before = session.Engine().Outstanding();
        EXPECT_EQ(Call(session, SS_SAVE, 0, nullptr, session.Screen()), 0u);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), NoMemory);
        EXPECT_EQ(session.records.size(), 1u) << "no rectangle is visible";
        EXPECT_EQ(Call(session, SS_SAVE, 0, {20, 20, 10, 10}), 0u);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), NoMemory);
        EXPECT_EQ(Call(session, SS_SAVE, 0, {-0x7FFFFFFF, 0, 0x7FFFFFFF, 4}), 0u);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), NoMemory);
        EXPECT_EQ(session.Engine().Outstanding(), before);
        EXPECT_TRUE(session.Engine().Violations().empty());
    }

    TEST(SaveScreenBitsAlone, ReportsEveryFailureToSaveAlike)
    {
        Session session;
        const engine::Resources before = session.Engine().Outstanding();
        session.Engine().Fail(engine::Request::CreateSurface);
        EXPECT_EQ(Call(session, SS_SAVE, 0, Part), 0u);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), NoMemory);
        for (const ULONG lock : {1u, 2u}) {
            session.Engine().Fail(engine::Request::Lock, lock);
            EXPECT_EQ(Call(session, SS_SAVE, 0, Part), 0u);
            EXPECT_EQ(session.Engine().TakeDebugOutput(), NoMemory);
        }
        session.Engine().StopFailing();
        EXPECT_EQ(session.Engine().Outstanding(), before);
    }

    TEST(SaveScreenBitsAlone, DeletesTheBitmapAlsoWhenItCannotBePutBack)
    {
        for (const ULONG lock : {1u, 2u}) {
            Session session;
            const engine::Resources before = session.Engine().Outstanding();
            const ULONG ident = Call(session, SS_SAVE, 0, Part);
            session.Engine().Fail(engine::Request::Lock, lock);
            EXPECT_EQ(Call(session, SS_RESTORE, ident, Part), 0u);
            session.Engine().StopFailing();
            EXPECT_EQ(session.Engine().Outstanding(), before);
            EXPECT_EQ(session.Engine().DebugOutput(), "");
        }
    }

    TEST(SaveScreenBitsAlone, ReportsARealScreenThatDoesNotLockAndAnswersZero)
    {
        Session session;
        const engine::Resources before = session.Engine().Outstanding();
        const ULONG ident = Call(session, SS_SAVE, 0, Part);
        session.Engine().RefuseLock(session.Real()->hsurf);
        EXPECT_EQ(Call(session, SS_RESTORE, ident, Part), 0u);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), "KORU:Cannot lock RealScreen\n");
        EXPECT_EQ(session.Engine().Outstanding(), before);
    }

    TEST(SaveScreenBitsAlone, RestoresNothingOfANullRectangleAndDeletesTheBitmap)
    {
        Session session;
        const engine::Resources before = session.Engine().Outstanding();
        const ULONG ident = Call(session, SS_SAVE, 0, Part);
        EXPECT_EQ(ShownBy(session, [&] { EXPECT_EQ(Call(session, SS_RESTORE, ident, nullptr, session.Screen()), 1u); }),
                  "nothing");
        EXPECT_EQ(session.Engine().Outstanding(), before);
    }

    TEST(SaveScreenBitsAlone, RefreshesZoomersWhenTheIntervalHasPassed)
    {
        Session session;
        session.Zoom(0x11127201);
        session.Zoom(0x11127204);
        const ULONG updates = ZoomUpdates(session);
        session.Engine().AdvanceMilliseconds(60);
        Call(session, SS_FREE, 0, Part);
        EXPECT_EQ(ZoomUpdates(session), updates + 1);
    }

    TEST(SaveScreenBitsAlone, NeverAsksTheRealDriver)
    {
        Session session;
        const ULONG ident = Call(session, SS_SAVE, 0, Part);
        engine::ForgetRealCalls();
        Call(session, SS_FREE, ident, Part);
        EXPECT_TRUE(engine::RealCalls().empty());
    }

} // namespace
} // namespace conformance
