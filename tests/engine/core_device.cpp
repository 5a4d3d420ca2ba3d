#include <gtest/gtest.h>

#include "engine/core/device.h"
#include "engine/devices/frame_buffer.h"
#include "tests/engine/core_scripted_driver.h"

namespace {

using namespace engine;
using Lines = std::vector<std::string>;

std::vector<ULONG> Indices()
{
    std::vector<ULONG> indices;
    for (const RealCall& call : RealCalls())
        indices.push_back(call.index);
    return indices;
}

ULONG Number(const void* pointer)
{
    return static_cast<ULONG>(reinterpret_cast<std::uintptr_t>(pointer));
}

class FrameBufferDevice : public testing::Test {
protected:
    void Start(const FrameBufferOptions& options = {})
    {
        device.reset();
        driver.reset();
        RegisterFrameBuffer(options);
        driver = std::make_unique<DisplayDriver>(u"framebuf");
        device = std::make_unique<Device>(*driver);
    }
    ~FrameBufferDevice() override
    {
        device.reset();
        driver.reset();
        engine.CheckGuards();
        EXPECT_EQ(engine.Violations(), Lines());
        EXPECT_EQ(engine.Outstanding(), Resources());
    }

    Engine engine;
    std::unique_ptr<DisplayDriver> driver;
    std::unique_ptr<Device> device;
};

TEST_F(FrameBufferDevice, ComesUpAndGoesInTheOrderOfTheInterface)
{
    Start();
    ASSERT_TRUE(driver->IsEnabled()) << driver->Error();
    EXPECT_EQ(LastRealEnable().engineVersion, DDI_DRIVER_VERSION_NT5_01);
    EXPECT_EQ(LastRealEnable().size, 12u);
    ASSERT_TRUE(device->Enable({640, 480, 32})) << device->Error();
    const HDEV hdev = device->Handle();
    const DHPDEV dhpdev = device->Dhpdev();
    const SURFOBJ* const primary = device->PrimarySurface();
    ASSERT_NE(primary, nullptr);
    EXPECT_EQ(primary, FrameBufferPicture(dhpdev));
    EXPECT_EQ(primary->hsurf, device->Primary());
    EXPECT_EQ(primary->hdev, hdev);
    EXPECT_EQ(primary->dhpdev, dhpdev);
    EXPECT_EQ(primary->iType, STYPE_BITMAP);
    EXPECT_EQ(primary->lDelta, 2560);
    EXPECT_EQ(FindDevice(hdev), device.get());
    device->Disable();
    EXPECT_EQ(device->PrimarySurface(), nullptr);
    EXPECT_EQ(FrameBufferPicture(dhpdev), nullptr);
    EXPECT_EQ(Indices(),
              (std::vector<ULONG>{INDEX_DrvEnablePDEV, INDEX_DrvCompletePDEV, INDEX_DrvEnableSurface,
                                  INDEX_DrvDisableSurface, INDEX_DrvDisablePDEV}));
    EXPECT_EQ(RealCalls()[0].arguments[4], sizeof(GDIINFO));
    EXPECT_EQ(RealCalls()[0].arguments[6], sizeof(DEVINFO));
    EXPECT_EQ(RealCalls()[0].arguments[8], Number(hdev));
    EXPECT_EQ(RealCalls()[1].arguments, (std::vector<ULONG>{Number(dhpdev), Number(hdev)}));
    device.reset();
    EXPECT_EQ(FindDevice(hdev), nullptr);
    driver.reset();
    EXPECT_EQ(Indices().back(), INDEX_DrvDisableDriver);
    EXPECT_FALSE(engine.IsImageLoaded(u"framebuf"));
}

TEST_F(FrameBufferDevice, EveryDepthGetsItsFormatAndLayout)
{
    struct Case {
        ULONG depth, format, rowBytes, greenMask;
        std::size_t colours;
        ULONG numColours;
    };
    const Case cases[] = {
        {1, BMF_1BPP, 4, 0, 2, 2},
        {4, BMF_4BPP, 8, 0, 16, 16},
        {8, BMF_8BPP, 12, 0, 256, 20},
        {15, BMF_16BPP, 20, 0x03E0, 0, 0xFFFFFFFF},
        {16, BMF_16BPP, 20, 0x07E0, 0, 0xFFFFFFFF},
        {24, BMF_24BPP, 32, 0xFF00, 0, 0xFFFFFFFF},
        {32, BMF_32BPP, 40, 0xFF00, 0, 0xFFFFFFFF},
    };
    Start();
    for (const Case& each : cases) {
        ASSERT_TRUE(device->Enable({10, 6, each.depth})) << device->Error();
        const auto* const primary = static_cast<Surface*>(device->PrimarySurface());
        EXPECT_EQ(primary->iBitmapFormat, each.format);
        EXPECT_EQ(primary->sizlBitmap.cx, 10);
        EXPECT_EQ(primary->sizlBitmap.cy, 6);
        EXPECT_EQ(primary->lDelta, static_cast<LONG>(each.rowBytes));
        EXPECT_EQ(primary->layout, device->Layout());
        EXPECT_EQ(device->Layout().greenMask, each.greenMask);
        EXPECT_EQ(device->Layout().palette.size(), each.colours);
        EXPECT_EQ(device->Gdi().cBitsPixel, each.depth);
        EXPECT_EQ(device->Gdi().cPlanes, 1u);
        EXPECT_EQ(device->Gdi().ulHorzRes, 10u);
        EXPECT_EQ(device->Gdi().ulNumColors, each.numColours);
        EXPECT_EQ(device->Info().iDitherFormat, each.format);
        EXPECT_EQ(device->Info().flGraphicsCaps & 0x5BC0, 0x5BC0u);
        device->Disable();
    }
}

TEST_F(FrameBufferDevice, SixteenBitsCanMeanFiveFiveFive)
{
    FrameBufferOptions options;
    options.fiveFiveFive = true;
    Start(options);
    ASSERT_TRUE(device->Enable({10, 6, 16}));
    EXPECT_EQ(device->Layout(), PixelLayout::FiveFiveFive());
    EXPECT_EQ(static_cast<Surface*>(device->PrimarySurface())->layout, PixelLayout::FiveFiveFive());
}

TEST_F(FrameBufferDevice, RowsCanBeWiderOrRunUpwards)
{
    FrameBufferOptions options;
    options.lDelta = -64;
    Start(options);
    ASSERT_TRUE(device->Enable({10, 6, 32}));
    EXPECT_EQ(device->PrimarySurface()->lDelta, -64);
    device->Disable();
    options.lDelta = 48;
    RegisterFrameBuffer(options);
    ASSERT_TRUE(driver->EnableAgain());
    ASSERT_TRUE(device->Enable({10, 6, 32}));
    EXPECT_EQ(device->PrimarySurface()->lDelta, 48);
}

TEST_F(FrameBufferDevice, ModesAreListedUnderTheNameOfTheImage)
{
    Start();
    const std::vector<DEVMODEW> modes = driver->Modes();
    ASSERT_EQ(modes.size(), 21u);
    EXPECT_EQ(std::u16string(modes[20].dmDeviceName), u"framebuf");
    EXPECT_EQ(modes[0].dmBitsPerPel, 1u);
    EXPECT_EQ(modes[20].dmBitsPerPel, 32u);
    EXPECT_EQ(modes[20].dmPelsWidth, 1024u);
    EXPECT_EQ(modes[20].dmPelsHeight, 768u);
    EXPECT_EQ(modes[20].dmSize, 220);
    EXPECT_EQ(Indices(), (std::vector<ULONG>{INDEX_DrvGetModes, INDEX_DrvGetModes}));
    EXPECT_EQ(RealCalls()[0].arguments[1], 0u);
    EXPECT_EQ(RealCalls()[0].arguments[2], 0u);
    EXPECT_EQ(RealCalls()[1].arguments[1], 21u * 220u);
}

TEST_F(FrameBufferDevice, AShortBufferTakesWholeModesOnly)
{
    Start();
    DEVMODEW modes[2] = {};
    const auto getModes = driver->Function<PFN_DrvGetModes>(INDEX_DrvGetModes);
    EXPECT_EQ(getModes(nullptr, sizeof(modes) - 1, modes), sizeof(DEVMODEW));
    EXPECT_EQ(modes[1].dmSize, 0);
}

TEST_F(FrameBufferDevice, EnablingAgainDisablesFirst)
{
    Start();
    EXPECT_TRUE(driver->EnableAgain());
    EXPECT_TRUE(driver->IsEnabled());
    EXPECT_EQ(LastRealEnable().times, 2u);
    EXPECT_EQ(Indices(), (std::vector<ULONG>{INDEX_DrvDisableDriver}));
}

TEST_F(FrameBufferDevice, RefusalsLeaveNothingBehind)
{
    struct Case {
        ULONG refuseAt;
        const char* error;
        std::vector<ULONG> calls;
    };
    const Case cases[] = {
        {INDEX_DrvEnablePDEV, "DrvEnablePDEV refuses", {INDEX_DrvEnablePDEV}},
        {INDEX_DrvEnableSurface,
         "DrvEnableSurface refuses",
         {INDEX_DrvEnablePDEV, INDEX_DrvCompletePDEV, INDEX_DrvEnableSurface, INDEX_DrvDisablePDEV}},
    };
    for (const Case& each : cases) {
        FrameBufferOptions options;
        options.refuseAt = each.refuseAt;
        Start(options);
        EXPECT_FALSE(device->Enable({640, 480, 8}));
        EXPECT_EQ(device->Error(), each.error);
        EXPECT_EQ(Indices(), each.calls);
        EXPECT_EQ(device->PrimarySurface(), nullptr);
        EXPECT_EQ(engine.Outstanding(), Resources());
    }
}

TEST_F(FrameBufferDevice, UnknownModesAreRefused)
{
    Start();
    for (const Mode& mode : {Mode{640, 480, 2}, Mode{0, 480, 8}, Mode{640, 0, 8}, Mode{9000, 480, 8}})
        EXPECT_FALSE(device->Enable(mode));
}

TEST_F(FrameBufferDevice, EachFaultOfTheEngineFailsTheEnableCleanly)
{
    Start();
    ULONG faults = 0;
    FaultPlan plan;
    do {
        engine.Obey(plan);
        const bool enabled = device->Enable({640, 480, 32});
        EXPECT_EQ(enabled, plan.FaultsSeen() == 0);
        faults += plan.FaultsSeen();
        device->Disable();
        EXPECT_EQ(engine.Outstanding(), Resources());
    } while (plan.Next());
    EXPECT_EQ(faults, 2u) << "the bitmap and its association";
}

TEST_F(FrameBufferDevice, HandlesChangeSidesAndTheDriverIsTold)
{
    Start();
    Device other(*driver);
    ASSERT_TRUE(device->Enable({64, 48, 32}));
    ASSERT_TRUE(other.Enable({32, 24, 8}));
    const HDEV first = device->Handle(), second = other.Handle();
    ASSERT_NE(first, second);
    const HSURF ofFirst = EngCreateDeviceSurface(nullptr, {4, 4}, BMF_32BPP);
    EngAssociateSurface(ofFirst, first, 0);
    ForgetRealCalls();
    Device::SwapHandles(*device, other);
    EXPECT_EQ(device->Handle(), second);
    EXPECT_EQ(other.Handle(), first);
    EXPECT_EQ(FindDevice(first), &other);
    EXPECT_EQ(device->PrimarySurface()->hdev, second);
    EXPECT_EQ(other.PrimarySurface()->hdev, first);
    EXPECT_EQ(device->PrimarySurface()->dhpdev, device->Dhpdev());
    EXPECT_EQ(FindSurface(ofFirst)->hdev, first) << "made by the driver: keeps its handle";
    ASSERT_EQ(Indices(), (std::vector<ULONG>{INDEX_DrvCompletePDEV, INDEX_DrvCompletePDEV}));
    EXPECT_EQ(RealCalls()[0].arguments, (std::vector<ULONG>{Number(device->Dhpdev()), Number(second)}));
    EXPECT_EQ(RealCalls()[1].arguments, (std::vector<ULONG>{Number(other.Dhpdev()), Number(first)}));
    EngDeleteSurface(ofFirst);
}

TEST_F(FrameBufferDevice, AModeChangeRunsAsEnginesRunIt)
{
    Start();
    ASSERT_TRUE(device->Enable({64, 48, 32}));
    const HDEV hdev = device->Handle();
    ForgetRealCalls();
    ASSERT_TRUE(ChangeMode(device, {32, 24, 16}));
    EXPECT_EQ(device->Handle(), hdev);
    EXPECT_EQ(device->PrimarySurface()->sizlBitmap.cx, 32);
    EXPECT_EQ(device->PrimarySurface()->hdev, hdev);
    EXPECT_EQ(Indices(),
              (std::vector<ULONG>{INDEX_DrvAssertMode, INDEX_DrvEnablePDEV, INDEX_DrvCompletePDEV,
                                  INDEX_DrvEnableSurface, INDEX_DrvCompletePDEV, INDEX_DrvCompletePDEV,
                                  INDEX_DrvDisableSurface, INDEX_DrvDisablePDEV, INDEX_DrvAssertMode}));
    EXPECT_EQ(RealCalls().front().arguments[1], 0u);
    EXPECT_EQ(RealCalls().back().arguments[1], 1u);
}

TEST_F(FrameBufferDevice, ARefusedModeChangeKeepsTheOldMode)
{
    Start();
    ASSERT_TRUE(device->Enable({64, 48, 32}));
    const Device* const before = device.get();
    EXPECT_FALSE(ChangeMode(device, {64, 48, 7}));
    EXPECT_EQ(device.get(), before);
    EXPECT_EQ(device->PrimarySurface()->sizlBitmap.cx, 64);
    EXPECT_EQ(RealCalls().back().index, INDEX_DrvAssertMode);
    EXPECT_EQ(RealCalls().back().arguments[1], 1u);
}

TEST_F(FrameBufferDevice, SynchronizesBySurfaceOrElseWhole)
{
    Start();
    ASSERT_TRUE(device->Enable({64, 48, 32}));
    ForgetRealCalls();
    RECTL area = {1, 2, 3, 4};
    device->Synchronize(&area);
    ASSERT_EQ(Indices(), (std::vector<ULONG>{INDEX_DrvSynchronizeSurface}));
    EXPECT_EQ(RealCalls()[0].arguments,
              (std::vector<ULONG>{Number(device->PrimarySurface()), Number(&area), DSS_FLUSH_EVENT}));
    FrameBufferOptions options;
    options.missing = {INDEX_DrvSynchronizeSurface};
    Start(options);
    ASSERT_TRUE(device->Enable({64, 48, 32}));
    ForgetRealCalls();
    device->Synchronize(&area);
    EXPECT_EQ(Indices(), (std::vector<ULONG>{INDEX_DrvSynchronize}));
}

TEST_F(FrameBufferDevice, WithoutDeviceBitmapsCompatibleOnesAreTheEngines)
{
    Start();
    ASSERT_TRUE(device->Enable({64, 48, 15}));
    const HSURF bitmap = device->CreateCompatibleBitmap({5, 5});
    ASSERT_NE(FindSurface(bitmap), nullptr);
    EXPECT_TRUE(FindSurface(bitmap)->ofTheEngine);
    EXPECT_EQ(FindSurface(bitmap)->layout, PixelLayout::FiveFiveFive());
    device->DeleteBitmap(bitmap);
    EXPECT_EQ(FindSurface(bitmap), nullptr);
    EXPECT_EQ(device->CreateCompatibleBitmap({0, 5}), nullptr);
}

TEST(DisplayDriver, SaysWhyItIsNotEnabled)
{
    Engine engine;
    EXPECT_EQ(DisplayDriver(u"none").Error(), "the display driver's image does not load");
    FrameBufferOptions options;
    options.offersEnableDriver = false;
    RegisterFrameBuffer(options);
    EXPECT_EQ(DisplayDriver(u"framebuf").Error(), "the display driver has no DrvEnableDriver");
    options.offersEnableDriver = true;
    options.refuses = true;
    RegisterFrameBuffer(options);
    {
        DisplayDriver refused(u"framebuf");
        EXPECT_FALSE(refused.IsEnabled());
        EXPECT_EQ(refused.Error(), "DrvEnableDriver refuses");
        EXPECT_EQ(refused.Function(INDEX_DrvCopyBits), nullptr);
        EXPECT_TRUE(refused.Modes().empty());
    }
    scripted::Script script;
    script.emptyTable = true;
    scripted::Register(script);
    EXPECT_EQ(DisplayDriver(u"scripted").Error(), "DrvEnableDriver gives no table");
    EXPECT_EQ(engine.Outstanding(), Resources());
}

TEST(DisplayDriver, LoadsOnTheEnginesSideAreNotCounted)
{
    Engine engine;
    engine.Fail(Request::Load, 1, true);
    RegisterFrameBuffer();
    const DisplayDriver driver(u"framebuf");
    EXPECT_TRUE(driver.IsEnabled());
    EXPECT_EQ(engine.Outstanding().images, 0u);
    EXPECT_EQ(engine.RequestCount(Request::Load), 0u);
}

class ScriptedDevice : public testing::Test {
protected:
    void Enable(const scripted::Script& script, ULONG version = DDI_DRIVER_VERSION_NT5_01)
    {
        scripted::Register(script);
        driver = std::make_unique<DisplayDriver>(u"scripted", version);
        device = std::make_unique<Device>(*driver);
        enabled = device->Enable({8, 8, 32});
    }
    Engine engine;
    std::unique_ptr<DisplayDriver> driver;
    std::unique_ptr<Device> device;
    bool enabled = false;
};

TEST_F(ScriptedDevice, IsToldItsModeAndTheHatches)
{
    Enable({});
    EXPECT_EQ(scripted::mode.dmSize, 220);
    EXPECT_EQ(scripted::mode.dmFields, 0x5C0000u);
    EXPECT_EQ(scripted::mode.dmBitsPerPel, 32u);
    EXPECT_EQ(scripted::mode.dmPelsWidth, 8u);
    EXPECT_EQ(scripted::mode.dmPelsHeight, 8u);
    EXPECT_EQ(scripted::mode.dmDisplayFrequency, 60u);
    EXPECT_EQ(scripted::capsSize, sizeof(GDIINFO));
    ASSERT_EQ(scripted::patterns.size(), 6u);
    const Surface* const horizontal = FindSurface(scripted::patterns[0]);
    ASSERT_NE(horizontal, nullptr);
    EXPECT_EQ(horizontal->iBitmapFormat, BMF_1BPP);
    EXPECT_EQ(*horizontal->Row(3), 0xFF);
    EXPECT_EQ(*horizontal->Row(4), 0x00) << "the line is black";
    EXPECT_EQ(engine.Outstanding().surfaces, 1u) << "the driver's own";
}

TEST_F(ScriptedDevice, AnEnabledDeviceIsDisabledBeforeItIsEnabledAnew)
{
    Enable({});
    scripted::calls.clear();
    EXPECT_TRUE(device->Enable({8, 8, 32}));
    EXPECT_EQ(scripted::calls[0], "DisableSurface");
    EXPECT_EQ(scripted::calls[1], "DisablePDEV");
}

TEST_F(ScriptedDevice, TheOldestEnginesGiveAShorterDevinfo)
{
    Enable({}, DDI_DRIVER_VERSION_NT4);
    EXPECT_TRUE(enabled);
    EXPECT_EQ(scripted::calls[0], "EnablePDEV " + std::to_string(sizeof(DEVINFO) - 4));
    EXPECT_EQ(device->Info().flGraphicsCaps, 0x01010101u);
    EXPECT_EQ(device->Info().flGraphicsCaps2, 0u);
    EXPECT_EQ(engine.Violations(), Lines());
}

TEST_F(ScriptedDevice, ReportsWritesBehindTheGivenStructures)
{
    scripted::Script script;
    script.writesBehindDevinfo = 4;
    Enable(script, DDI_DRIVER_VERSION_NT4);
    EXPECT_EQ(engine.Violations(), Lines{"DrvEnablePDEV: written behind DEVINFO"});
}

TEST_F(ScriptedDevice, ReportsAPrimarySurfaceWithoutItsDevice)
{
    scripted::Script script;
    script.associates = false;
    Enable(script);
    EXPECT_EQ(engine.Violations(), Lines{"DrvEnableSurface: the surface is not associated with the device"});
}

TEST_F(ScriptedDevice, RefusesAPrimaryThatIsNoSurface)
{
    scripted::Script script;
    script.primaryInstead = reinterpret_cast<HSURF>(0x123);
    Enable(script);
    EXPECT_FALSE(enabled);
    EXPECT_EQ(device->Error(), "DrvEnableSurface gives a handle of no surface");
    EXPECT_EQ(scripted::calls.back(), "DisablePDEV");
}

TEST_F(ScriptedDevice, NeedsTheCallsOfAPdev)
{
    scripted::Script script;
    script.missing = {INDEX_DrvCompletePDEV};
    Enable(script);
    EXPECT_FALSE(enabled);
    EXPECT_EQ(device->Error(), "the driver has no DrvEnablePDEV or DrvCompletePDEV");
    EXPECT_FALSE(device->AssertMode(true)) << "not offered either";
}

TEST_F(ScriptedDevice, TheDriverLearnsAtOnceThatItsBitmapIsGone)
{
    Enable({});
    const HSURF bitmap = device->CreateCompatibleBitmap({7, 3});
    ASSERT_NE(FindSurface(bitmap), nullptr);
    EXPECT_EQ(FindSurface(bitmap)->iType, STYPE_DEVBITMAP);
    EXPECT_EQ(FindSurface(bitmap)->hdev, device->Handle());
    EXPECT_EQ(FindSurface(bitmap)->dhpdev, device->Dhpdev());
    EXPECT_EQ(engine.Outstanding().surfaces, 2u);
    device->DeleteBitmap(bitmap);
    EXPECT_EQ(scripted::calls.back(), "DeleteDeviceBitmap 7");
    EXPECT_EQ(engine.Outstanding().surfaces, 1u);
}

TEST_F(ScriptedDevice, BitmapsGoBeforeTheirDevice)
{
    Enable({});
    device->CreateCompatibleBitmap({7, 3});
    device->Disable();
    EXPECT_EQ(Lines(scripted::calls.end() - 3, scripted::calls.end()),
              (Lines{"DeleteDeviceBitmap 7", "DisableSurface", "DisablePDEV"}));
}

TEST_F(ScriptedDevice, AssociationGivesTheDevicesLayoutToSurfacesOfItsFormat)
{
    Enable({});
    const HSURF other = EngCreateDeviceSurface(nullptr, {4, 4}, BMF_8BPP);
    EXPECT_TRUE(EngAssociateSurface(other, device->Handle(), HOOK_PAINT));
    EXPECT_EQ(FindSurface(other)->layout, PixelLayout::Default(BMF_8BPP));
    EXPECT_EQ(FindSurface(other)->hooks, HOOK_PAINT);
    EXPECT_EQ(FindSurface(other)->device, device.get());
}

} // namespace
