// What calls leave in a Screen, and what the consumer finds there when it hears of them.

#include <functional>

#include "capture/capture_state.h"
#include "capture/consumer.h"
#include "driver/driver_values.h"
#include "escape/color_pair_list.h"
#include "escape/escape.h"
#include "tests/unit/driver/enabled_driver.h"

namespace {

using namespace koru;

std::function<void()> whenCaptured;

LONG APIENTRY Qp(BYTE*, ULONG, LONG)
{
    whenCaptured();
    return 0;
}

class ScreenState : public EnabledDriver {
protected:
    ~ScreenState() override { CaptureMask = 0; }

    // `look` is called when a call with this bit is handed over.
    void LookAt(ULONG bit, std::function<void()> look)
    {
        whenCaptured = std::move(look);
        ULONG in[6] = {36, 0, 0, reinterpret_cast<ULONG>(&Qp), 0, 0};
        ULONG out = 0;
        DrvEscape(nullptr, KORU_ESCAPE, sizeof(in), in, sizeof(out), &out);
        CaptureMask = bit;
    }
    void SetPalette(std::vector<ULONG> colours, ULONG start, ULONG count)
    {
        engine::PaletteObject palette;
        palette.colours = std::move(colours);
        Hook<PFN_DrvSetPalette>(INDEX_DrvSetPalette)(device->Dhpdev(), &palette, 0, start, count);
    }
    static std::vector<BYTE> CopiedColours(const Screen& screen, ULONG first, ULONG count)
    {
        return {screen.PaletteCopy + 4 * first, screen.PaletteCopy + 4 * (first + count)};
    }
    static bool IsZero(const std::vector<BYTE>& bytes) { return bytes == std::vector<BYTE>(bytes.size(), 0); }
};

TEST_F(ScreenState, KeepsColoursAsRedGreenBlueZeroFromTheirStart)
{
    const Screen& screen = EnableDevice({16, 16, 8});
    std::vector<ULONG> colours(256);
    colours[253] = 0xFF332211; // red is the low byte
    colours[254] = 0x665544;
    colours[255] = 0x998877;
    SetPalette(colours, 253, 3);
    EXPECT_EQ(CopiedColours(screen, 253, 3),
              (std::vector<BYTE>{0x11, 0x22, 0x33, 0, 0x44, 0x55, 0x66, 0, 0x77, 0x88, 0x99, 0}));
    EXPECT_TRUE(IsZero(CopiedColours(screen, 0, 253)));
}

TEST_F(ScreenState, KeepsSixteenColoursOfAFourBitScreen)
{
    const Screen& screen = EnableDevice({16, 16, 4});
    SetPalette(std::vector<ULONG>(20, 0x030201), 14, 4);
    EXPECT_EQ(CopiedColours(screen, 14, 2), (std::vector<BYTE>{1, 2, 3, 0, 1, 2, 3, 0}));
    EXPECT_TRUE(IsZero(CopiedColours(screen, 0, 14)));
    EXPECT_TRUE(IsZero(CopiedColours(screen, 16, 240)));
}

TEST_F(ScreenState, KeepsNoColoursOfScreensWithoutPalette)
{
    for (const ULONG depth : {1u, 15u, 16u, 24u, 32u}) {
        const Screen& screen = EnableDevice({16, 16, depth});
        SetPalette(std::vector<ULONG>(256, 0x030201), 0, 256);
        EXPECT_TRUE(IsZero(CopiedColours(screen, 0, 256))) << depth;
        device.reset();
    }
}

TEST_F(ScreenState, HasItsHandleBeforeTheConsumerHearsOfIt)
{
    const Screen& screen = EnableDevice({16, 16, 32});
    const auto handle = reinterpret_cast<HDEV>(0x5555);
    HDEV seen = nullptr;
    LookAt(0x8, [&] { seen = screen.hdev; });
    Hook<PFN_DrvCompletePDEV>(INDEX_DrvCompletePDEV)(device->Dhpdev(), handle);
    EXPECT_EQ(seen, handle);
    Hook<PFN_DrvCompletePDEV>(INDEX_DrvCompletePDEV)(device->Dhpdev(), device->Handle());
}

TEST_F(ScreenState, StillHasItsSurfacesWhenTheConsumerHearsOfTheirEnd)
{
    const Screen& screen = EnableDevice({16, 16, 32});
    bool there = false;
    LookAt(0x20, [&] { there = engine::FindSurface(screen.hsurfVirtual) && engine::FindSurface(screen.hsurfDevice); });
    device->Disable();
    EXPECT_TRUE(there);
}

TEST_F(ScreenState, IsGoneWhenTheConsumerHearsOfItsEnd)
{
    EnableDevice({16, 16, 32});
    const DHPDEV dhpdev = device->Dhpdev();
    const Screen* found = ScreenList::Find(dhpdev);
    LookAt(0x4, [&] { found = ScreenList::Find(dhpdev); });
    device->Disable();
    EXPECT_EQ(found, nullptr);
}

TEST_F(ScreenState, TakesTheFirstFreeDeviceBitmapEntry)
{
    const Screen& screen = EnableDevice({16, 16, 32});
    HSURF bitmaps[3];
    for (HSURF& bitmap : bitmaps)
        bitmap = device->CreateCompatibleBitmap({4, 4});
    ASSERT_EQ(screen.DeviceBitmapCount, 3u);
    EXPECT_EQ(screen.DeviceBitmaps[2].hbmDevice, bitmaps[2]);
    device->DeleteBitmap(bitmaps[1]);
    device->DeleteBitmap(bitmaps[0]);
    EXPECT_EQ(screen.DeviceBitmaps[0].hbmDevice, nullptr);
    EXPECT_EQ(screen.DeviceBitmaps[0].hsurfBacking, nullptr);
    const HSURF next = device->CreateCompatibleBitmap({4, 4});
    EXPECT_EQ(screen.DeviceBitmaps[0].hbmDevice, next);
    EXPECT_EQ(screen.DeviceBitmaps[1].hbmDevice, nullptr);
    EXPECT_EQ(screen.DeviceBitmapCount, 3u);
}

// A real driver with nothing but DrvEnablePDEV.
const auto OnlyDevice = reinterpret_cast<DHPDEV>(0xD0000);

DHPDEV APIENTRY RealEnablePdev(DEVMODEW*, WCHAR*, ULONG, HSURF*, ULONG, ULONG*, ULONG, DEVINFO*, HDEV, WCHAR*, HANDLE)
{
    return OnlyDevice;
}
DRVFN onlyEnablePdev = {INDEX_DrvEnablePDEV, reinterpret_cast<PFN>(&RealEnablePdev)};
BOOL APIENTRY RealEnableDriver(ULONG, ULONG, DRVENABLEDATA* data)
{
    *data = {DDI_DRIVER_VERSION_NT5, 1, &onlyEnablePdev};
    return TRUE;
}

class ScreenOfABareDriver : public EnabledDriver {
protected:
    ScreenOfABareDriver()
    {
        engine.RegisterImage(u"framebuf", {{"DrvEnableDriver", reinterpret_cast<PFN>(&RealEnableDriver)}});
        Enable();
    }
    ~ScreenOfABareDriver() override
    {
        while (Screen* const screen = ScreenList::Find(OnlyDevice))
            ScreenList::Remove(screen);
    }
    void EnablePdev(DEVMODEW* mode)
    {
        Hook<PFN_DrvEnablePDEV>(INDEX_DrvEnablePDEV)(mode, nullptr, 0, nullptr, 0, nullptr, 0, nullptr, nullptr,
                                                     nullptr, nullptr);
    }
    void EnablePdev(ULONG depth)
    {
        DEVMODEW mode = {};
        mode.dmBitsPerPel = depth;
        EnablePdev(&mode);
    }
};

TEST_F(ScreenOfABareDriver, TakesNoHandleWithoutTheRealEntryPoint)
{
    EnablePdev(32);
    Hook<PFN_DrvCompletePDEV>(INDEX_DrvCompletePDEV)(OnlyDevice, reinterpret_cast<HDEV>(0x5555));
    EXPECT_EQ(ScreenList::Find(OnlyDevice)->hdev, nullptr);
}

TEST_F(ScreenOfABareDriver, SetsTheDepthOfEachModeAndZeroWithoutOne)
{
    for (const ULONG depth : {32u, 15u, 8u}) {
        EnablePdev(depth);
        EXPECT_EQ(RequestedColourDepth, depth);
    }
    EnablePdev(nullptr);
    EXPECT_EQ(RequestedColourDepth, 0u);
}

TEST_F(ScreenOfABareDriver, RecomputesThePixelsOfColourPairsForDepthsWithPackedPixels)
{
    EnablePdev(16);
    ColorPairList::Add({0x10, 0x20, 0x40}, {0xFF, 0xFF, 0xFF});
    const ColorPair& pair = *ColorPairList::Get(0);
    EXPECT_EQ(pair.pixel1, 0x4102);
    EXPECT_EQ(pair.pixel2, 0xFFFF);
    EnablePdev(15);
    EXPECT_EQ(pair.pixel1, 0x2082);
    EXPECT_EQ(pair.pixel2, 0x7FFF);
    EnablePdev(32);
    EXPECT_EQ(pair.pixel1, 0x2082) << "other depths leave them as they are";
}

} // namespace
