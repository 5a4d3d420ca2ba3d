// Hooks that the engine calls while the driver itself draws: they only draw, and not without end.

#include "tests/conformance/core_real_driver.h"
#include "tests/conformance/core_setups.h"
#include "tests/conformance/hook_calls.h"

namespace conformance {
namespace {

    constexpr ULONG Deepest = 8;
    constexpr ULONG FarTooDeep = 20;

    std::vector<SURFOBJ*> surfacesSeen; // by the real driver, outermost first
    std::vector<ULONG> answers; // of the hooks that it called, innermost first

    SURFOBJ* Mask()
    {
        return engine::MakeBitmap({4, 8}, engine::PixelLayout::Default(BMF_1BPP));
    }
    void Move(Session& session, SURFOBJ* pso)
    {
        session.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(pso, 1, 1, nullptr);
    }
    ULONG SetShape(Session& session, SURFOBJ* pso)
    {
        return session.Hook<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(pso, Mask(), nullptr, nullptr, 0, 0, 10,
                                                                              12, nullptr, SPS_CHANGE);
    }
    BOOL Realize(Session& session, SURFOBJ* pso, SURFOBJ* pattern = nullptr, SURFOBJ* mask = nullptr)
    {
        engine::Brush brush = engine::Brush::Solid(3);
        return session.Hook<PFN_DrvRealizeBrush>(INDEX_DrvRealizeBrush)(&brush, pso, pattern, mask, nullptr, 0);
    }

    // A real driver that calls the hook that called it, until the hook does not pass the call on.
    void APIENTRY MoveAgain(SURFOBJ* pso, LONG, LONG, RECTL*)
    {
        surfacesSeen.push_back(pso);
        if (surfacesSeen.size() < FarTooDeep)
            Move(Session::Current(), Session::Current().Screen());
    }
    ULONG APIENTRY SetShapeAgain(SURFOBJ* pso, SURFOBJ*, SURFOBJ*, XLATEOBJ*, LONG, LONG, LONG, LONG, RECTL*, FLONG)
    {
        surfacesSeen.push_back(pso);
        if (surfacesSeen.size() < FarTooDeep)
            answers.push_back(SetShape(Session::Current(), Session::Current().Screen()));
        return 77;
    }
    BOOL APIENTRY RealizeAgain(BRUSHOBJ*, SURFOBJ* pso, SURFOBJ*, SURFOBJ*, XLATEOBJ*, ULONG)
    {
        surfacesSeen.push_back(pso);
        if (surfacesSeen.size() < FarTooDeep)
            answers.push_back(static_cast<ULONG>(Realize(Session::Current(), Session::Current().Screen())));
        return 77;
    }

    class NestingBound : public testing::Test {
    protected:
        NestingBound()
            : session(ForwardedPointer())
            , real(session)
        {
            real.Offer(INDEX_DrvMovePointer, MoveAgain);
            real.Offer(INDEX_DrvSetPointerShape, SetShapeAgain);
            real.Offer(INDEX_DrvRealizeBrush, RealizeAgain);
            EXPECT_TRUE(session.Device().Enable({64, 48, 32}));
            session.records.clear();
            surfacesSeen.clear();
            answers.clear();
        }
        static conformance::Setup ForwardedPointer()
        {
            auto setup = WithOptions("02");
            setup.enableDevice = false;
            return setup;
        }
        // The bitmap behind the screen for the outermost call, the screen itself for those inside it.
        void ExpectSurfacesOfTheBound()
        {
            std::vector<SURFOBJ*> expected(Deepest, session.Screen());
            expected.front() = session.Virtual();
            EXPECT_EQ(surfacesSeen, expected);
            EXPECT_EQ(session.records.size(), 1u);
        }
        Session session;
        RealDriver real;
    };

    TEST_F(NestingBound, HoldsForPointerMoves)
    {
        Move(session, session.Screen());
        ExpectSurfacesOfTheBound();
    }

    TEST_F(NestingBound, HoldsForPointerShapes)
    {
        EXPECT_EQ(SetShape(session, session.Screen()), 77u);
        ExpectSurfacesOfTheBound();
        EXPECT_EQ(answers, (std::vector<ULONG>{0, 77, 77, 77, 77, 77, 77, 77}));
    }

    TEST_F(NestingBound, HoldsForBrushes)
    {
        EXPECT_EQ(Realize(session, session.Screen()), 77);
        ExpectSurfacesOfTheBound();
        EXPECT_EQ(answers, (std::vector<ULONG>{0, 77, 77, 77, 77, 77, 77, 77}));
    }

    // A real driver that draws with the engine while it is called.
    std::function<void()> insideReal;

    BOOL APIENTRY RealCopyBits(SURFOBJ*, SURFOBJ*, CLIPOBJ*, XLATEOBJ*, RECTL*, POINTL*)
    {
        insideReal();
        return TRUE;
    }
    BOOL APIENTRY RealRealizeBrush(BRUSHOBJ*, SURFOBJ*, SURFOBJ*, SURFOBJ*, XLATEOBJ*, ULONG)
    {
        insideReal();
        return TRUE;
    }
    BOOL APIENTRY RealSetPalette(DHPDEV, PALOBJ*, FLONG, ULONG, ULONG)
    {
        surfacesSeen.push_back(nullptr);
        return 78;
    }

    class InsideTheRealDriver : public testing::Test {
    protected:
        InsideTheRealDriver()
            : session(WithoutDevice())
            , real(session)
        {
            real.Offer(INDEX_DrvCopyBits, RealCopyBits);
            real.Offer(INDEX_DrvRealizeBrush, RealRealizeBrush);
            real.Offer(INDEX_DrvSetPalette, RealSetPalette);
            insideReal = [] {};
            EXPECT_TRUE(session.Device().Enable({64, 48, 32}));
            session.records.clear();
            surfacesSeen.clear();
        }
        ~InsideTheRealDriver() override
        {
            insideReal = [] {};
        }
        // What the real driver draws when it is asked to copy to the RealScreen.
        void DrawWhileShowing()
        {
            timesShown = 0;
            session.records.clear();
            insideReal = [this] {
                ++timesShown;
                FillRectangle(session, picture, Painted);
            };
        }
        Session session;
        RealDriver real;
        engine::Surface* picture = MakePicture(session, {64, 48}, 0);
        ULONG timesShown = 0;
    };

    TEST_F(InsideTheRealDriver, DrawingWhileACallIsShownIsNotCaptured)
    {
        for (const DrawingHook& hook : DrawingHooks()) {
            DrawWhileShowing();
            hook.call(session, session.Screen());
            EXPECT_GT(timesShown, 0u) << hook.name;
            EXPECT_EQ(session.records.size(), 1u) << hook.name;
        }
    }

    TEST_F(InsideTheRealDriver, DrawingWhileThePointerIsShownIsNotCaptured)
    {
        DrawWhileShowing();
        SetShape(session, session.Screen());
        EXPECT_GT(timesShown, 0u);
        EXPECT_EQ(session.TakeOnlyRecord().CallType(), 0x2000u);
        DrawWhileShowing();
        Move(session, session.Screen());
        EXPECT_GT(timesShown, 0u);
        EXPECT_EQ(session.TakeOnlyRecord().CallType(), 0x1000u);
    }

    TEST_F(InsideTheRealDriver, DrawingWhileSavedBitsAreShownIsNotCaptured)
    {
        const auto save = session.Hook<PFN_DrvSaveScreenBits>(INDEX_DrvSaveScreenBits);
        RECTL part = Painted;
        const ULONG ident = save(session.Screen(), SS_SAVE, 0, &part);
        DrawWhileShowing();
        EXPECT_EQ(save(session.Screen(), SS_RESTORE, ident, &part), 1u);
        EXPECT_GT(timesShown, 0u);
        EXPECT_EQ(session.TakeOnlyRecord().CallType(), 0x200000u);
    }

    TEST_F(InsideTheRealDriver, NestedCallsLeaveThePointerAlone)
    {
        // A pointer that was taken off and put back would leave its old background and its shape.
        SetShape(session, session.Screen());
        FillBitmap(*session.Virtual(), 0x00445566);
        bool wasCalled = false;
        insideReal = [&] {
            wasCalled = true;
            for (const DrawingHook& hook : DrawingHooks())
                hook.call(session, session.Screen());
            RECTL part = {0, 0, 64, 48};
            session.Hook<PFN_DrvSaveScreenBits>(INDEX_DrvSaveScreenBits)(session.Screen(), SS_FREE, 0, &part);
        };
        Realize(session, session.Screen());
        EXPECT_TRUE(wasCalled);
        EXPECT_TRUE(SamePixels(*session.Virtual(), *MakePicture(session, {64, 48}, 0x00445566)));
    }

    TEST_F(InsideTheRealDriver, SetPaletteReachesItAndAnswersItsResult)
    {
        BOOL answer = 0;
        insideReal = [&] {
            answer = session.Hook<PFN_DrvSetPalette>(INDEX_DrvSetPalette)(session.Device().Dhpdev(), nullptr, 0, 0, 4);
        };
        Realize(session, session.Screen());
        EXPECT_EQ(answer, 78);
        EXPECT_EQ(surfacesSeen.size(), 1u);
        EXPECT_EQ(session.TakeOnlyRecord().CallType(), 0x20000u);
    }

} // namespace
} // namespace conformance
