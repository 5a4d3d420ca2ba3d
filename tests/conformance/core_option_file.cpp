// "KORU.ini": what each character switches, seen from outside.

#include "tests/conformance/core_real_driver.h"
#include "tests/conformance/core_setups.h"

namespace conformance {
namespace {

    constexpr FLONG Panning = 0x10000, AlphaCursor = 0x20;

    struct OptionCase {
        const char* name;
        std::string file;
        ULONG cBitsPixel, cPlanes; // of a mode of 32 bits and one plane
        ULONG pointerShapeAnswer; // 2: drawn here, 1: declined, 0: asked of a real driver that has none
    };

    class OptionFile : public testing::TestWithParam<OptionCase> { };

    TEST_P(OptionFile, SetsWhatItHolds)
    {
        auto setup = WithOptions(GetParam().file);
        setup.enableDevice = false;
        Session session(setup);
        RealDriver real(session);
        real.gdi.cBitsPixel = 32;
        real.gdi.cPlanes = 1;
        ASSERT_TRUE(session.Device().Enable({64, 48, 32}));
        EXPECT_EQ(session.Device().Gdi().cBitsPixel, GetParam().cBitsPixel);
        EXPECT_EQ(session.Device().Gdi().cPlanes, GetParam().cPlanes);
        const auto setShape = session.Hook<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape);
        EXPECT_EQ(setShape(session.Screen(), nullptr, nullptr, nullptr, 0, 0, -1, -1, nullptr, 0),
                  GetParam().pointerShapeAnswer);
        const bool forwarded = GetParam().pointerShapeAnswer == 0;
        EXPECT_EQ(session.Device().Info().flGraphicsCaps & Panning, forwarded ? 0 : Panning);
        EXPECT_EQ(session.Device().Info().flGraphicsCaps2 & AlphaCursor, forwarded ? 0 : AlphaCursor);
    }

    INSTANTIATE_TEST_SUITE_P(
        Contents, OptionFile,
        testing::Values(
            OptionCase{"NoBytes", "", 32, 1, 2}, OptionCase{"ZeroAlone", "0", 32, 1, 2},
            OptionCase{"OneAlone", "1", 16, 2, 2}, OptionCase{"AnyDigitAdjusts", "7", 16, 2, 2},
            OptionCase{"ALetterAdjusts", "A", 16, 2, 2}, OptionCase{"AByteBelowZeroAdjusts", " ", 16, 2, 2},
            OptionCase{"PointerNotDrawn", "01", 32, 1, 1}, OptionCase{"PointerForwarded", "02", 32, 1, 0},
            OptionCase{"PointerModeOutOfRange", "07", 32, 1, 2}, OptionCase{"PointerModeLetter", "0A", 32, 1, 2},
            OptionCase{"PointerModeBelowZero", "0/", 32, 1, 2}, OptionCase{"FourBytesSetNoPair", "1000", 16, 2, 2},
            OptionCase{"FiveBytesSetTheFirstPairAlone", "10000", 16, 2, 2},
            OptionCase{"SixBytesSetTheFirstPairAlone", "100000", 16, 2, 2},
            OptionCase{"BothPairsZero", "1000000", 18, 1, 2}, OptionCase{"BothPairsGiven", "1000801", 8, 1, 2},
            OptionCase{"BitsWithoutPlanes", "1000899", 16, 2, 2}, OptionCase{"PlanesWithoutBits", "1009904", 16, 2, 2},
            OptionCase{"BitsZeroWithPlanes", "1000003", 0, 3, 2}, OptionCase{"PairOfLetters", "100A001", 170, 1, 2},
            OptionCase{"PairsAreTakenModulo256", "100Z001", 164, 1, 2},
            OptionCase{"PairsWithoutAdjustment", "0000801", 32, 1, 2},
            OptionCase{"FurtherBytesAreNotRead", "1000801\r\n; text", 8, 1, 2}),
        [](const auto& info) { return info.param.name; });

    TEST(MissingOptionFile, LeavesTheDefaults)
    {
        Session session;
        EXPECT_EQ(session.Device().Gdi().cBitsPixel, 32u);
        EXPECT_EQ(session.Hook<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(session.Screen(), nullptr, nullptr,
                                                                                 nullptr, 0, 0, -1, -1, nullptr, 0),
                  SPS_ACCEPT_NOEXCLUDE);
    }

    TEST(UnmappableOptionFile, CountsAsMissingAndIsFreed)
    {
        auto setup = WithOptions("02");
        setup.enableDevice = false;
        Session session(setup);
        const engine::Resources before = session.Engine().Outstanding();
        EXPECT_EQ(before.modules, 0u);
        // Loads of the second enable: the chain manager, the real driver, the module, its mapping.
        session.Engine().RegisterModule(u"KORU.ini", {'0', '1'});
        session.Engine().Fail(engine::Request::Load, 4);
        session.Driver().EnableAgain();
        session.Engine().StopFailing();
        EXPECT_EQ(session.Engine().Outstanding(), before);
        engine::ForgetRealCalls();
        session.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(nullptr, 3, 4, nullptr);
        EXPECT_EQ(engine::RealCalls().size(), 1u) << "pointer mode 2, as the first time";
    }

} // namespace
} // namespace conformance
