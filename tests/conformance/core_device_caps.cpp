// What the engine is told of a device, where that is not what the real driver says.

#include "tests/conformance/core_real_driver.h"
#include "tests/conformance/core_setups.h"

namespace conformance {
namespace {

    constexpr ULONG KeptCaps = 0xFFFFFFFF & ~0x5BC0U;

    struct CapsCase {
        const char* name;
        std::string options;
        ULONG engineVersion;
        ULONG infoSize, capsSize;
        ULONG bits, planes; // what the real driver says
        ULONG expectedBits, expectedPlanes;
        FLONG expectedCaps, expectedCaps2; // of a real driver that sets all bits, and none
    };
    class DeviceCaps : public testing::TestWithParam<CapsCase> { };

    TEST_P(DeviceCaps, AreRewritten)
    {
        auto setup = WithOptions(GetParam().options, GetParam().engineVersion);
        setup.enableDevice = false;
        Session session(setup);
        RealDriver real(session);
        real.gdi.cBitsPixel = GetParam().bits;
        real.gdi.cPlanes = GetParam().planes;
        real.gdi.ulNumColors = 0x55555555;
        real.info.flGraphicsCaps = KeptCaps | 0x5BC0;
        real.info.flGraphicsCaps &= ~0x10000U;
        GDIINFO gdi = {};
        DEVINFO info = {};
        DEVMODEW mode = {};
        const DHPDEV dhpdev = session.Hook<PFN_DrvEnablePDEV>(INDEX_DrvEnablePDEV)(
            &mode, nullptr, 0, nullptr, GetParam().capsSize, reinterpret_cast<ULONG*>(&gdi), GetParam().infoSize, &info,
            session.Device().Handle(), nullptr, nullptr);
        EXPECT_EQ(gdi.cBitsPixel, GetParam().expectedBits);
        EXPECT_EQ(gdi.cPlanes, GetParam().expectedPlanes);
        EXPECT_EQ(gdi.ulNumColors, GetParam().capsSize < sizeof(GDIINFO) ? 0 : 0x55555555u)
            << "nothing else is touched";
        EXPECT_EQ(info.flGraphicsCaps, GetParam().expectedCaps);
        EXPECT_EQ(info.flGraphicsCaps2, GetParam().expectedCaps2);
        session.Hook<PFN_DrvDisablePDEV>(INDEX_DrvDisablePDEV)(dhpdev);
    }

    constexpr ULONG Whole = sizeof(DEVINFO), Caps = sizeof(GDIINFO);
    constexpr ULONG UpToPlanes = 32, UpToBits = 28; // bytes of a GDIINFO
    constexpr FLONG Without = KeptCaps & ~0x10000U, With = KeptCaps | 0x10000;

    INSTANTIATE_TEST_SUITE_P(
        Cases, DeviceCaps,
        testing::Values(CapsCase{"EvenDepthIsHalved", "1", 0x30100, Whole, Caps, 32, 1, 16, 2, With, 0x20},
                        CapsCase{"OddDepthStays", "1", 0x30100, Whole, Caps, 15, 1, 15, 2, With, 0x20},
                        CapsCase{"ZeroDepthIsEven", "1", 0x30100, Whole, Caps, 0, 3, 0, 6, With, 0x20},
                        CapsCase{"SwitchedOff", "0", 0x30100, Whole, Caps, 32, 1, 32, 1, With, 0x20},
                        CapsCase{"BothZero", "1000000", 0x30100, Whole, Caps, 32, 4, 18, 4, With, 0x20},
                        CapsCase{"OneOfThemNotSet", "1000899", 0x30100, Whole, Caps, 32, 1, 16, 2, With, 0x20},
                        CapsCase{"Forced", "1002402", 0x30100, Whole, Caps, 32, 1, 24, 2, With, 0x20},
                        CapsCase{"ForwardedPointer", "02", 0x30100, Whole, Caps, 32, 1, 32, 1, Without, 0},
                        CapsCase{"PointerNotDrawn", "01", 0x30100, Whole, Caps, 32, 1, 32, 1, With, 0x20},
                        CapsCase{"OlderInterface", "0", 0x20000, Whole, Caps, 32, 1, 32, 1, With, 0},
                        CapsCase{"OlderForwardedPointer", "02", 0x20000, Whole, Caps, 32, 1, 32, 1, Without, 0},
                        CapsCase{"StructureWithoutSecondCaps", "0", 0x30100, Whole - 4, Caps, 32, 1, 32, 1, With, 0},
                        CapsCase{"NoRoomForCaps", "0", 0x30100, 0, Caps, 32, 1, 32, 1, 0, 0},
                        CapsCase{"RoomUpToThePlanes", "1", 0x30100, Whole, UpToPlanes, 32, 1, 16, 2, With, 0x20},
                        CapsCase{"NoRoomForThePlanes", "1", 0x30100, Whole, UpToBits, 32, 1, 32, 0, With, 0x20}),
        [](const auto& info) { return info.param.name; });

    TEST(DeviceCaps, MayBeAskedForByNobody)
    {
        auto setup = WithOptions("1");
        setup.enableDevice = false;
        Session session(setup);
        RealDriver real(session);
        DEVMODEW mode = {};
        EXPECT_EQ(reinterpret_cast<ULONG>(session.Hook<PFN_DrvEnablePDEV>(INDEX_DrvEnablePDEV)(
                      &mode, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr)),
                  0xD0000u);
    }

} // namespace
} // namespace conformance
