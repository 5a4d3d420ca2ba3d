// DrvSetPalette, DrvRealizeBrush, DrvDitherColor: calls that prepare drawing.

#include "tests/conformance/core_real_driver.h"
#include "tests/conformance/core_setups.h"
#include "tests/conformance/hook_calls.h"

namespace conformance {
namespace {

    engine::PaletteObject Greys(ULONG count)
    {
        engine::PaletteObject palette;
        for (ULONG i = 0; i < count; ++i)
            palette.colours.push_back(0x010101 * (i & 0xFF));
        return palette;
    }

    BOOL SetPalette(Session& session, PALOBJ* palette, ULONG start, ULONG count)
    {
        return session.Hook<PFN_DrvSetPalette>(INDEX_DrvSetPalette)(session.Device().Dhpdev(), palette, 7, start,
                                                                    count);
    }

    TEST(SetPalette, IsForwardedAndCapturedWithFlagOne)
    {
        Session session(InMode({64, 48, 8}));
        engine::PaletteObject palette = Greys(256);
        engine::ForgetRealCalls();
        EXPECT_EQ(SetPalette(session, &palette, 0, 256), TRUE);
        ASSERT_EQ(engine::RealCalls().size(), 1u);
        EXPECT_EQ(engine::RealCalls()[0].index, INDEX_DrvSetPalette);
        EXPECT_EQ(engine::RealCalls()[0].arguments,
                  (std::vector<ULONG>{session.DhpdevNumber(), reinterpret_cast<ULONG>(&palette), 7, 0, 256}));
        const SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.CallType(), 0x400000u);
        EXPECT_EQ(record.flag, 1);
        EXPECT_EQ(session.Engine().DebugOutput(), "");
    }

    TEST(SetPalette, LeavesNoMemoryBehind)
    {
        Session session(InMode({64, 48, 8}));
        engine::PaletteObject palette = Greys(256);
        const engine::Resources before = session.Engine().Outstanding();
        SetPalette(session, &palette, 0, 256);
        SetPalette(session, &palette, 250, 6);
        SetPalette(session, &palette, 0, 0);
        EXPECT_EQ(session.Engine().Outstanding(), before);
    }

    TEST(SetPalette, WithoutAPaletteSaysSoAndIsForwarded)
    {
        Session session(InMode({64, 48, 8}));
        engine::ForgetRealCalls();
        EXPECT_EQ(SetPalette(session, nullptr, 0, 16), FALSE);
        EXPECT_EQ(session.Engine().DebugOutput(), "KORU:ppalo == NULL\n");
        EXPECT_EQ(engine::RealCalls().size(), 1u);
        EXPECT_EQ(session.TakeOnlyRecord().length, 64u);
    }

    TEST(SetPalette, OfAnUnknownDeviceSaysSoAloneAndIsForwarded)
    {
        Session session(InMode({64, 48, 8}));
        session.expectViolations = true; // the frame buffer does not know the device either
        engine::ForgetRealCalls();
        session.Hook<PFN_DrvSetPalette>(INDEX_DrvSetPalette)(reinterpret_cast<DHPDEV>(0x777), nullptr, 0, 0, 4);
        EXPECT_EQ(session.Engine().DebugOutput(), "KORU:I don't find the Screen \n");
        EXPECT_EQ(engine::RealCalls().size(), 1u);
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST(SetPalette, ThatHasTooFewColoursLeavesTheSemaphoreHeldAndTheBufferTaken)
    {
        Session session(InMode({64, 48, 8}));
        engine::PaletteObject palette = Greys(256);
        palette.deliver = 15;
        const engine::Resources before = session.Engine().Outstanding();
        engine::ForgetRealCalls();
        EXPECT_EQ(SetPalette(session, &palette, 0, 16), FALSE);
        EXPECT_TRUE(engine::RealCalls().empty());
        EXPECT_TRUE(session.records.empty());
        engine::Resources after = before;
        after.semaphoreHolds += 1;
        after.poolBlocks += 1;
        EXPECT_EQ(session.Engine().Outstanding(), after);
        EXPECT_EQ(session.Engine().DebugOutput(), "");

        FillRectangle(session, session.Screen(), Painted, nullptr, 5);
        EXPECT_EQ(session.records.size(), 1u) << "the depth is as it was: other calls are captured";
        EXPECT_EQ(session.Engine().Outstanding(), after);
    }

    TEST(SetPalette, OfMoreThan256ColoursIsComparedWith256)
    {
        Session session(InMode({64, 48, 8}));
        engine::PaletteObject palette = Greys(256);
        engine::ForgetRealCalls();
        EXPECT_EQ(SetPalette(session, &palette, 0, 1000), FALSE); // the real driver's answer
        EXPECT_EQ(engine::RealCalls().size(), 1u);
        session.Engine().CheckGuards();
        EXPECT_TRUE(session.Engine().Violations().empty());
    }

    TEST(SetPalette, GoesOnWithoutMemoryForTheCopy)
    {
        Session session(InMode({64, 48, 8}));
        engine::PaletteObject palette = Greys(256);
        palette.deliver = 3;
        engine::ForgetRealCalls();
        session.Engine().Fail(engine::Request::Memory);
        EXPECT_EQ(SetPalette(session, &palette, 0, 16), TRUE);
        EXPECT_EQ(engine::RealCalls().size(), 1u);
        EXPECT_EQ(session.Engine().Outstanding().semaphoreHolds, 0u);
    }

    TEST(SetPalette, StaysInsideTheScreensPaletteForAnyStart)
    {
        for (const ULONG depth : {4u, 8u, 32u}) {
            Session session(InMode({64, 48, depth}));
            engine::PaletteObject palette = Greys(256);
            palette.colours.resize(0x400);
            for (const ULONG start : {0u, 10u, 250u, 0x300u, 0xFFFFFFF0u}) {
                palette.deliver = start < 0x300 ? 0xFFFFFFFF : 0;
                SetPalette(session, &palette, start, start < 0x300 ? 32 : 0);
            }
            session.Engine().CheckGuards();
            EXPECT_TRUE(session.Engine().Violations().empty());
        }
    }

    TEST(SetPalette, AnswersZeroWithoutTheRealEntryPointAndIsCaptured)
    {
        auto setup = WithoutRealEntries({INDEX_DrvSetPalette});
        setup.mode = {64, 48, 8};
        Session session(setup);
        engine::PaletteObject palette = Greys(256);
        EXPECT_EQ(SetPalette(session, &palette, 0, 256), FALSE);
        EXPECT_EQ(session.TakeOnlyRecord().length, 64u + 1024u);
    }

    class RealizeBrush : public testing::Test {
    protected:
        BOOL Realize(SURFOBJ* target)
        {
            return session.Hook<PFN_DrvRealizeBrush>(INDEX_DrvRealizeBrush)(&brush, target, pattern, mask, nullptr, 6);
        }
        Session session;
        engine::Brush brush = engine::Brush::Solid(3);
        SURFOBJ* pattern = MakePicture(session, {8, 8});
        SURFOBJ* mask = engine::MakeBitmap({8, 8}, engine::PixelLayout::Default(BMF_1BPP));
    };

    TEST_F(RealizeBrush, ReachesTheRealDriverWithTheBitmapBehindTheTarget)
    {
        engine::ForgetRealCalls();
        EXPECT_EQ(Realize(session.Screen()), TRUE);
        ASSERT_EQ(engine::RealCalls().size(), 1u);
        const auto number = [](const auto* pointer) { return reinterpret_cast<ULONG>(pointer); };
        const SURFOBJ* const behind = session.Virtual();
        EXPECT_EQ(engine::RealCalls()[0].arguments,
                  (std::vector<ULONG>{number(static_cast<BRUSHOBJ*>(&brush)), number(behind), number(pattern),
                                      number(mask), 0, 6}));
    }

    TEST_F(RealizeBrush, PassesPatternAndMaskOnAsTheyCame)
    {
        pattern = engine::FindSurface(session.Device().CreateCompatibleBitmap({8, 8}));
        mask = engine::FindSurface(session.Device().CreateCompatibleBitmap({8, 8}));
        engine::ForgetRealCalls();
        Realize(session.Screen());
        ASSERT_EQ(engine::RealCalls().size(), 1u);
        EXPECT_EQ(engine::RealCalls()[0].arguments[2], reinterpret_cast<ULONG>(pattern));
        EXPECT_EQ(engine::RealCalls()[0].arguments[3], reinterpret_cast<ULONG>(mask));
    }

    TEST_F(RealizeBrush, IsRefusedAndCapturedWhenTheBitmapBehindTheTargetDoesNotLock)
    {
        session.Engine().RefuseLock(session.Virtual()->hsurf);
        engine::ForgetRealCalls();
        EXPECT_EQ(Realize(session.Screen()), FALSE);
        EXPECT_TRUE(engine::RealCalls().empty());
        EXPECT_EQ(session.TakeOnlyRecord().flag, 0);
    }

    TEST_F(RealizeBrush, IsCapturedWithFlagZeroOnTheScreenAndOneElsewhere)
    {
        Realize(session.Screen());
        SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.CallType(), 0x20000u);
        EXPECT_EQ(record.flag, 0);
        Realize(MakePicture(session, {8, 8}));
        EXPECT_EQ(session.TakeOnlyRecord().flag, 1);
    }

    TEST_F(RealizeBrush, KnowsNoDarkZonesButDarkSurfaces)
    {
        session.AddDarkZone({0, 0, 64, 48});
        Realize(session.Screen());
        EXPECT_EQ(session.records.size(), 1u);
        session.Command(32);
        Realize(session.Screen());
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST_F(RealizeBrush, ShowsNothingAndRefreshesNoZoomer)
    {
        session.Zoom(0x11127201);
        session.Zoom(0x11127204);
        const ULONG updates = ZoomUpdates(session);
        session.Engine().AdvanceMilliseconds(60);
        EXPECT_EQ(ShownBy(session, [&] { Realize(session.Screen()); }), "nothing");
        EXPECT_EQ(ZoomUpdates(session), updates);
    }

    TEST(RealizeBrushAlone, AnswersZeroWithoutTheRealEntryPointAndIsCaptured)
    {
        Session session(WithoutRealEntries({INDEX_DrvRealizeBrush}));
        engine::Brush brush = engine::Brush::Solid(3);
        EXPECT_EQ(session.Hook<PFN_DrvRealizeBrush>(INDEX_DrvRealizeBrush)(&brush, session.Screen(), nullptr, nullptr,
                                                                           nullptr, 0),
                  FALSE);
        EXPECT_EQ(session.records.size(), 1u);
    }

    std::function<void()> insideRealizeBrush;

    BOOL APIENTRY RealRealizeBrush(BRUSHOBJ*, SURFOBJ*, SURFOBJ*, SURFOBJ*, XLATEOBJ*, ULONG)
    {
        insideRealizeBrush();
        return 55;
    }

    TEST(RealizeBrushAlone, CallsTheRealDriverAsItsOwnDrawing)
    {
        Session session(WithoutDevice());
        RealDriver real(session);
        real.Offer(INDEX_DrvRealizeBrush, RealRealizeBrush);
        ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
        session.records.clear();
        insideRealizeBrush = [&] { FillRectangle(session, MakePicture(session, {64, 48}, 0), Painted); };
        engine::Brush brush = engine::Brush::Solid(3);
        EXPECT_EQ(session.Hook<PFN_DrvRealizeBrush>(INDEX_DrvRealizeBrush)(&brush, session.Screen(), nullptr, nullptr,
                                                                           nullptr, 0),
                  55);
        EXPECT_EQ(session.TakeOnlyRecord().CallType(), 0x20000u) << "what the real driver draws is not captured";
    }

    ULONG Dither(Session& session, ULONG* out, DHPDEV dhpdev)
    {
        return session.Hook<PFN_DrvDitherColor>(INDEX_DrvDitherColor)(dhpdev, DM_DEFAULT, 0x0000FF, out);
    }

    TEST(DitherColor, IsAskedOfTheRealDriverAndCapturedWithFlagZero)
    {
        for (const ULONG version : {0x20000u, 0x30100u}) {
            auto setup = WithoutRealEntries({}, version);
            Session session(setup);
            ULONG out[64] = {};
            engine::ForgetRealCalls();
            EXPECT_EQ(Dither(session, out, session.Device().Dhpdev()), DCR_SOLID);
            ASSERT_EQ(engine::RealCalls().size(), 1u);
            EXPECT_EQ(engine::RealCalls()[0].arguments,
                      (std::vector<ULONG>{session.DhpdevNumber(), DM_DEFAULT, 0x0000FF, reinterpret_cast<ULONG>(out)}));
            const SubmittedRecord record = session.TakeOnlyRecord();
            EXPECT_EQ(record.CallType(), 0x40000u);
            EXPECT_EQ(record.flag, 0);
            EXPECT_EQ(record.Word(52), 0xFF0000u) << "red, as a pixel of the frame buffer";
        }
    }

    TEST(DitherColor, FallsBackOnTheEngineWithItsOwnHandle)
    {
        auto setup = WithoutRealEntries({INDEX_DrvDitherColor});
        setup.mode = {64, 48, 8};
        Session session(setup);
        ULONG out[64] = {};
        const ULONG expected = EngDitherColor(session.Device().Handle(), DM_DEFAULT, 0x0000FF, out);
        ULONG given[64] = {};
        EXPECT_EQ(Dither(session, given, session.Device().Dhpdev()), expected);
        EXPECT_TRUE(std::equal(std::begin(out), std::end(out), std::begin(given)));
        EXPECT_EQ(session.TakeOnlyRecord().Word(56), expected);
        EXPECT_TRUE(session.Engine().Violations().empty());
    }

    TEST(DitherColor, AnswersZeroForAnUnknownDeviceOnTheFallback)
    {
        Session session(WithoutRealEntries({INDEX_DrvDitherColor}));
        ULONG out[64] = {};
        EXPECT_EQ(Dither(session, out, reinterpret_cast<DHPDEV>(0x777)), 0u);
        EXPECT_EQ(session.records.size(), 1u);
        EXPECT_TRUE(session.Engine().Violations().empty());
    }

    TEST(DitherColor, HasNoFallbackOnTheOlderInterface)
    {
        Session session(WithoutRealEntries({INDEX_DrvDitherColor}, 0x20000));
        ULONG out[64] = {1};
        EXPECT_EQ(Dither(session, out, session.Device().Dhpdev()), 0u);
        EXPECT_EQ(out[0], 1u) << "nothing was asked";
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST(DitherColor, HasNoFallbackWithoutTheService)
    {
        Session session(WithoutRealEntries({INDEX_DrvDitherColor}));
        session.Engine().HideService("EngDitherColor");
        session.Driver().EnableAgain();
        ULONG out[64] = {1};
        EXPECT_EQ(Dither(session, out, session.Device().Dhpdev()), 0u);
        EXPECT_EQ(out[0], 1u);
    }

} // namespace
} // namespace conformance
