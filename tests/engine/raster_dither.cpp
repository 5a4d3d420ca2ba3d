#include <cstring>
#include <memory>

#include "engine/core/device.h"
#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;

// A device of some depth; it has nothing but a PDEV and a surface.
HDEV enabledFor = nullptr;

DHPDEV APIENTRY EnablePdev(DEVMODEW*, WCHAR*, ULONG, HSURF*, ULONG, ULONG*, ULONG, ULONG*, HDEV hdev, WCHAR*, HANDLE)
{
    enabledFor = hdev;
    return reinterpret_cast<DHPDEV>(0x1000);
}

void APIENTRY CompletePdev(DHPDEV, HDEV) { }

HSURF APIENTRY EnableSurface(DHPDEV)
{
    const HSURF surface = EngCreateDeviceSurface(nullptr, {8, 8}, BMF_32BPP);
    EngAssociateSurface(surface, enabledFor, 0);
    return surface;
}

DRVFN functions[] = {{INDEX_DrvEnablePDEV, reinterpret_cast<PFN>(EnablePdev)},
                     {INDEX_DrvCompletePDEV, reinterpret_cast<PFN>(CompletePdev)},
                     {INDEX_DrvEnableSurface, reinterpret_cast<PFN>(EnableSurface)}};

BOOL APIENTRY EnableDriver(ULONG, ULONG, DRVENABLEDATA* pded)
{
    *pded = {DDI_DRIVER_VERSION_NT5_01, 3, functions};
    return TRUE;
}

class Dithering : public RasterTest {
protected:
    void Enable(ULONG bitsPerPixel)
    {
        engine.RegisterImage(u"depths", {{"DrvEnableDriver", reinterpret_cast<PFN>(EnableDriver)}});
        driver = std::make_unique<DisplayDriver>(u"depths");
        device = std::make_unique<Device>(*driver);
        ASSERT_TRUE(device->Enable({8, 8, bitsPerPixel})) << device->Error();
    }
    ULONG Dither(COLORREF colour, ULONG mode = DM_DEFAULT)
    {
        std::memset(pattern, 0xEE, sizeof(pattern));
        return EngDitherColor(device->Handle(), mode, colour, pattern);
    }
    std::vector<int> Bytes(std::size_t count) const
    {
        const auto* const bytes = reinterpret_cast<const BYTE*>(pattern);
        return {bytes, bytes + count};
    }
    std::unique_ptr<DisplayDriver> driver;
    std::unique_ptr<Device> device;
    ULONG pattern[17];
};

TEST_F(Dithering, TrueColourDevicesHaveEveryColour)
{
    Enable(32);
    EXPECT_EQ(Dither(0x804020), DCR_SOLID);
    EXPECT_EQ(pattern[0], 0x204080u);
    EXPECT_EQ(pattern[1], 0xEEEEEEEEu);
}

TEST_F(Dithering, HighColourDevicesTakeTheNearest)
{
    Enable(16);
    EXPECT_EQ(Dither(0x0000FF), DCR_SOLID);
    EXPECT_EQ(pattern[0], 0xF800u);
}

TEST_F(Dithering, AColourOfThePaletteIsSolid)
{
    Enable(4);
    EXPECT_EQ(Dither(0x0000FF), DCR_SOLID);
    EXPECT_EQ(pattern[0], 9u);
}

// White where the matrix lies in the upper half: 8 x 8, one bit a pixel, rows of four bytes.
TEST_F(Dithering, MiddleGreyIsACheckerboardInTwoColours)
{
    Enable(1);
    EXPECT_EQ(Dither(0x808080), DCR_DRIVER);
    EXPECT_EQ(Bytes(32), (std::vector<int>{0x55, 0, 0, 0, 0xAA, 0, 0, 0, 0x55, 0, 0, 0, 0xAA, 0, 0, 0,
                                           0x55, 0, 0, 0, 0xAA, 0, 0, 0, 0x55, 0, 0, 0, 0xAA, 0, 0, 0}));
    EXPECT_EQ(pattern[8], 0xEEEEEEEEu);
}

// A sixty-fourth of white: only where the matrix has its greatest entry, at the left of the last row.
TEST_F(Dithering, AlmostBlackHasOneWhitePixel)
{
    Enable(1);
    EXPECT_EQ(Dither(0x040404), DCR_DRIVER);
    std::vector<int> expected(32, 0);
    expected[28] = 0x80;
    EXPECT_EQ(Bytes(32), expected);
}

TEST_F(Dithering, PatternsOfEightBitDevicesHaveAByteAPixel)
{
    Enable(8);
    ASSERT_EQ(Dither(0x1A1A1A), DCR_DRIVER);
    EXPECT_EQ(pattern[16], 0xEEEEEEEEu);
    ULONG sum = 0;
    for (const int byte : Bytes(64)) {
        const COLORREF colour = device->Layout().ColourOf(static_cast<ULONG>(byte));
        ASSERT_EQ(colour & 0xFF, colour >> 16); // greys alone
        sum += colour & 0xFF;
    }
    EXPECT_NEAR(sum / 64.0, 0x1A, 3);
}

TEST_F(Dithering, AMonochromePatternHasTheLuminance)
{
    Enable(1);
    ASSERT_EQ(Dither(0x00FF00, DM_MONOCHROME), DCR_DRIVER); // 255 * 151 / 256 = 150
    int white = 0;
    for (const int byte : Bytes(32))
        white += __builtin_popcount(static_cast<unsigned>(byte));
    EXPECT_NEAR(white, 64 * 150 / 255, 1);
}

TEST_F(Dithering, ADeviceThatIsNoneIsRefused)
{
    ULONG pixel = 0;
    EXPECT_EQ(EngDitherColor(nullptr, DM_DEFAULT, 0, &pixel), DCR_SOLID);
    Enable(32);
    EXPECT_EQ(EngDitherColor(device->Handle(), DM_DEFAULT, 0, nullptr), DCR_SOLID);
    ExpectViolation("EngDitherColor: a device that is none");
    ExpectViolation("EngDitherColor: null pattern");
}

} // namespace
