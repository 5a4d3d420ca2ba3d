// Device calls that only pass by: they are forwarded and never captured.

#include "tests/conformance/core_setups.h"

namespace conformance {
namespace {

    TEST(Synchronize, IsForwardedAndNeverCaptured)
    {
        Session session;
        RECTL rectangle = {1, 2, 3, 4};
        engine::ForgetRealCalls();
        session.Hook<PFN_DrvSynchronize>(INDEX_DrvSynchronize)(session.Device().Dhpdev(), &rectangle);
        ASSERT_EQ(engine::RealCalls().size(), 1u);
        EXPECT_EQ(engine::RealCalls()[0].index, INDEX_DrvSynchronize);
        EXPECT_EQ(engine::RealCalls()[0].arguments,
                  (std::vector<ULONG>{session.DhpdevNumber(), reinterpret_cast<ULONG>(&rectangle)}));
        EXPECT_TRUE(session.records.empty());
    }

    TEST(Synchronize, DoesNothingWithoutTheRealEntryPoint)
    {
        Session session(WithoutRealEntries({INDEX_DrvSynchronize}));
        engine::ForgetRealCalls();
        session.Hook<PFN_DrvSynchronize>(INDEX_DrvSynchronize)(session.Device().Dhpdev(), nullptr);
        EXPECT_TRUE(engine::RealCalls().empty());
    }

    TEST(SynchronizeSurface, PassesOnTheTwoKnownFlagsAlone)
    {
        Session session;
        RECTL rectangle = {1, 2, 3, 4};
        for (const FLONG fl : {0u, 1u, 2u, 3u, 4u, 0x80000001u}) {
            engine::ForgetRealCalls();
            session.Hook<PFN_DrvSynchronizeSurface>(INDEX_DrvSynchronizeSurface)(session.Screen(), &rectangle, fl);
            if (fl != 1 && fl != 2) {
                EXPECT_TRUE(engine::RealCalls().empty()) << fl;
                continue;
            }
            ASSERT_EQ(engine::RealCalls().size(), 1u);
            EXPECT_EQ(engine::RealCalls()[0].index, INDEX_DrvSynchronizeSurface);
            EXPECT_EQ(engine::RealCalls()[0].arguments,
                      (std::vector<ULONG>{reinterpret_cast<ULONG>(session.Screen()),
                                          reinterpret_cast<ULONG>(&rectangle), fl}));
        }
        EXPECT_TRUE(session.records.empty());
    }

    TEST(SynchronizeSurface, SynchronizesTheDeviceWithAnyFlagWithoutTheRealEntryPoint)
    {
        Session session(WithoutRealEntries({INDEX_DrvSynchronizeSurface}));
        RECTL rectangle = {1, 2, 3, 4};
        const auto synchronize = session.Hook<PFN_DrvSynchronizeSurface>(INDEX_DrvSynchronizeSurface);
        engine::ForgetRealCalls();
        synchronize(session.Screen(), &rectangle, 4);
        ASSERT_EQ(engine::RealCalls().size(), 1u);
        EXPECT_EQ(engine::RealCalls()[0].index, INDEX_DrvSynchronize);
        EXPECT_EQ(engine::RealCalls()[0].arguments,
                  (std::vector<ULONG>{session.DhpdevNumber(), reinterpret_cast<ULONG>(&rectangle)}));
        synchronize(nullptr, &rectangle, 1);
        EXPECT_EQ(engine::RealCalls().size(), 1u);
    }

    TEST(GammaRamp, IsForwardedAndNeverCaptured)
    {
        Session session;
        WORD ramp[3] = {};
        engine::ForgetRealCalls();
        EXPECT_EQ(session.Hook<PFN_DrvIcmSetDeviceGammaRamp>(INDEX_DrvIcmSetDeviceGammaRamp)(session.Device().Dhpdev(),
                                                                                             6, ramp),
                  TRUE);
        ASSERT_EQ(engine::RealCalls().size(), 1u);
        EXPECT_EQ(engine::RealCalls()[0].arguments,
                  (std::vector<ULONG>{session.DhpdevNumber(), 6, reinterpret_cast<ULONG>(ramp)}));
        EXPECT_TRUE(session.records.empty());
    }

    TEST(GammaRamp, IsRefusedWithoutTheRealEntryPoint)
    {
        Session session(WithoutRealEntries({INDEX_DrvIcmSetDeviceGammaRamp}));
        const auto setRamp = session.Hook<PFN_DrvIcmSetDeviceGammaRamp>(INDEX_DrvIcmSetDeviceGammaRamp);
        EXPECT_EQ(setRamp(session.Device().Dhpdev(), 6, nullptr), FALSE);
    }

} // namespace
} // namespace conformance
