#include <gtest/gtest.h>

#include "engine/core/calls.h"
#include "engine/core/device.h"
#include "engine/devices/chain_manager.h"
#include "engine/devices/frame_buffer.h"

namespace {

using namespace engine;

using GetNextDriver = ULONG(__attribute__((cdecl)) *)(ULONG, ULONG, const WCHAR*, WCHAR*, ULONG);

GetNextDriver LoadChainManager()
{
    const HANDLE image = EngLoadImage(const_cast<WCHAR*>(u"dcmkrnl.dll"));
    return reinterpret_cast<GetNextDriver>(EngFindImageProcAddress(image, const_cast<char*>("GetNextDriver")));
}

TEST(ChainManager, NamesTheNextDriverAndRemembersTheQuestion)
{
    Engine engine;
    RegisterChainManager({0, u"next", true});
    WCHAR buffer[40] = {};
    ASSERT_NE(LoadChainManager(), nullptr);
    EXPECT_EQ(LoadChainManager()(1, 0, u"koru", buffer, 40), 0u);
    EXPECT_EQ(std::u16string(buffer), u"next");
    EXPECT_EQ(LastChainQuestion().first, 1u);
    EXPECT_EQ(LastChainQuestion().second, 0u);
    EXPECT_EQ(LastChainQuestion().asker, u"koru");
    EXPECT_EQ(LastChainQuestion().roomInCharacters, 40u);
    EXPECT_TRUE(LastChainQuestion().bufferWasZero);
    EXPECT_EQ(LastChainQuestion().times, 1u);
    LoadChainManager()(1, 0, u"koru", buffer, 40);
    EXPECT_FALSE(LastChainQuestion().bufferWasZero);
    EXPECT_EQ(LastChainQuestion().times, 2u);
}

TEST(ChainManager, FortyCharactersComeWithoutTerminator)
{
    Engine engine;
    RegisterChainManager({0, std::u16string(45, u'x'), true});
    WCHAR buffer[41] = {};
    EXPECT_EQ(LoadChainManager()(1, 0, u"koru", buffer, 40), 0u);
    EXPECT_EQ(std::u16string(buffer), std::u16string(40, u'x'));
}

TEST(ChainManager, FailsWithoutTouchingTheBuffer)
{
    Engine engine;
    RegisterChainManager({6, u"next", true});
    WCHAR buffer[40] = {u'!'};
    EXPECT_EQ(LoadChainManager()(1, 0, u"koru", buffer, 40), 6u);
    EXPECT_EQ(buffer[0], u'!');
    RegisterChainManager({0, u"next", false});
    EXPECT_EQ(LastChainQuestion().times, 0u);
}

TEST(ChainManager, CanLackItsExport)
{
    Engine engine;
    RegisterChainManager({0, u"next", false});
    EXPECT_EQ(LoadChainManager(), nullptr);
}

class FrameBuffer : public testing::Test {
protected:
    explicit FrameBuffer(const Mode& mode = {16, 8, 8})
    {
        RegisterFrameBuffer();
        driver = std::make_unique<DisplayDriver>(u"framebuf");
        device = std::make_unique<Device>(*driver);
        EXPECT_TRUE(device->Enable(mode));
        picture = FrameBufferPicture(device->Dhpdev());
        ForgetRealCalls();
    }
    template<class Pfn> Pfn Function(ULONG index) { return driver->Function<Pfn>(index); }

    Engine engine;
    std::unique_ptr<DisplayDriver> driver;
    std::unique_ptr<Device> device;
    Surface* picture;
};

TEST_F(FrameBuffer, SetPaletteChangesThePicturesColours)
{
    PaletteObject palette;
    palette.colours = {0x111111, 0x222222, 0x333333, 0x444444};
    const auto setPalette = Function<PFN_DrvSetPalette>(INDEX_DrvSetPalette);
    EXPECT_TRUE(setPalette(device->Dhpdev(), &palette, 0, 2, 2));
    EXPECT_EQ(picture->layout.palette[1], 0x000080u);
    EXPECT_EQ(picture->layout.palette[2], 0x333333u);
    EXPECT_EQ(picture->layout.palette[3], 0x444444u);
    EXPECT_FALSE(setPalette(device->Dhpdev(), &palette, 0, 255, 2));
    EXPECT_FALSE(setPalette(device->Dhpdev(), nullptr, 0, 0, 1));
    EXPECT_EQ(RealCalls()[0].arguments[3], 2u);
    EXPECT_EQ(RealCalls().size(), 3u);
}

TEST_F(FrameBuffer, CopyBitsDrawsOnTheGlass)
{
    Surface* const source = MakeBitmap({2, 1}, PixelLayout::Default(BMF_8BPP));
    source->SetPixel(0, 0, 11);
    source->SetPixel(1, 0, 22);
    RECTL target = {3, 4, 5, 5};
    POINTL from = {0, 0};
    const auto copyBits = Function<PFN_DrvCopyBits>(INDEX_DrvCopyBits);
    EXPECT_TRUE(copyBits(picture, source, nullptr, nullptr, &target, &from));
    EXPECT_EQ(picture->Pixel(3, 4), 11u);
    EXPECT_EQ(picture->Pixel(4, 4), 22u);
    EXPECT_EQ(picture->Pixel(5, 4), 0u);
    EXPECT_EQ(RealCalls().size(), 1u);
}

TEST_F(FrameBuffer, AsTheDisplayDriverItLeavesDrawingToTheEngine)
{
    Brush brush = Brush::Solid(99);
    RECTL target = {1, 1, 2, 2};
    ClipObject clip(target);
    POINTL origin = {0, 0};
    EXPECT_TRUE(CallPaint(device->PrimarySurface(), &clip, &brush, &origin, 0x0D0D));
    EXPECT_EQ(picture->Pixel(1, 1), 99u);
    EXPECT_EQ(picture->Pixel(2, 1), 0u);
    EXPECT_TRUE(RealCalls().empty());
}

TEST_F(FrameBuffer, EscapesAnswerAsTold)
{
    const auto escape = Function<PFN_DrvEscape>(INDEX_DrvEscape);
    char out[5] = "....";
    EXPECT_EQ(escape(picture, 77, 0, nullptr, 3, out), 1u);
    EXPECT_STREQ(out, "....");
    AnswerEscapesWith(9);
    EXPECT_EQ(escape(picture, 77, 0, nullptr, 4, out), 9u);
    EXPECT_STREQ(out, "REAL");
    EXPECT_EQ(escape(picture, 77, 0, nullptr, 4, nullptr), 9u);
    EXPECT_EQ(RealCalls()[1].arguments[1], 77u);
}

TEST_F(FrameBuffer, AnswersTheOtherCalls)
{
    const DHPDEV dhpdev = device->Dhpdev();
    ULONG pixel = 0;
    EXPECT_EQ(Function<PFN_DrvDitherColor>(INDEX_DrvDitherColor)(dhpdev, DM_DEFAULT, 0x0000FF, &pixel), DCR_SOLID);
    EXPECT_EQ(pixel, 190u) << "10 + 5 * 36: pure red of the cube comes before the fixed one at 249";
    Brush brush = Brush::Solid(1);
    EXPECT_TRUE(Function<PFN_DrvRealizeBrush>(INDEX_DrvRealizeBrush)(&brush, picture, nullptr, nullptr, nullptr, 3));
    EXPECT_EQ(Function<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(picture, nullptr, nullptr, nullptr, 1, 2, 3, 4,
                                                                         nullptr, SPS_CHANGE),
              SPS_ACCEPT_NOEXCLUDE);
    Function<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(picture, -1, 5, nullptr);
    EXPECT_TRUE(Function<PFN_DrvIcmSetDeviceGammaRamp>(INDEX_DrvIcmSetDeviceGammaRamp)(dhpdev, 1, nullptr));
    EXPECT_TRUE(device->AssertMode(false));
    ASSERT_EQ(RealCalls().size(), 6u);
    EXPECT_EQ(RealCalls()[1].arguments[5], 3u);
    EXPECT_EQ(RealCalls()[2].arguments[7], 4u);
    EXPECT_EQ(RealCalls()[3].arguments[1], 0xFFFFFFFFu);
    EXPECT_EQ(RealCalls()[4].index, INDEX_DrvIcmSetDeviceGammaRamp);
}

TEST_F(FrameBuffer, ReportsPdevsThatAreNotItsOwn)
{
    Function<PFN_DrvDisablePDEV>(INDEX_DrvDisablePDEV)(reinterpret_cast<DHPDEV>(8));
    EXPECT_EQ(engine.Violations(), std::vector<std::string>{"real driver: not a PDEV of it"});
}

TEST(FrameBufferOptions, EachCallCanBeMadeToFail)
{
    for (const ULONG index : {INDEX_DrvAssertMode, INDEX_DrvGetModes, INDEX_DrvEscape, INDEX_DrvRealizeBrush,
                              INDEX_DrvSetPointerShape, INDEX_DrvIcmSetDeviceGammaRamp, INDEX_DrvCopyBits}) {
        Engine engine;
        FrameBufferOptions options;
        options.refuseAt = index;
        RegisterFrameBuffer(options);
        DisplayDriver driver(u"framebuf");
        Brush brush = Brush::Solid(0);
        BOOL result = TRUE;
        switch (index) {
        case INDEX_DrvAssertMode:
            result = driver.Function<PFN_DrvAssertMode>(index)(nullptr, TRUE);
            break;
        case INDEX_DrvGetModes:
            result = static_cast<BOOL>(driver.Function<PFN_DrvGetModes>(index)(nullptr, 0, nullptr));
            break;
        case INDEX_DrvEscape:
            result = static_cast<BOOL>(driver.Function<PFN_DrvEscape>(index)(nullptr, 1, 0, nullptr, 0, nullptr));
            break;
        case INDEX_DrvRealizeBrush:
            result = driver.Function<PFN_DrvRealizeBrush>(index)(&brush, nullptr, nullptr, nullptr, nullptr, 0);
            break;
        case INDEX_DrvSetPointerShape:
            result = static_cast<BOOL>(driver.Function<PFN_DrvSetPointerShape>(index)(nullptr, nullptr, nullptr,
                                                                                      nullptr, 0, 0, 0, 0, nullptr, 0));
            break;
        case INDEX_DrvIcmSetDeviceGammaRamp:
            result = driver.Function<PFN_DrvIcmSetDeviceGammaRamp>(index)(nullptr, 0, nullptr);
            break;
        default:
            result = driver.Function<PFN_DrvCopyBits>(index)(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
        }
        EXPECT_EQ(result, FALSE) << index;
        EXPECT_EQ(RealCalls().back().index, index);
        EXPECT_TRUE(engine.Violations().empty());
    }
}

TEST(FrameBufferOptions, EntriesCanBeMissingAndTheDisableCallExported)
{
    Engine engine;
    FrameBufferOptions options;
    options.missing = {INDEX_DrvDisableDriver, INDEX_DrvCopyBits};
    options.exportsDisableDriver = true;
    RegisterFrameBuffer(options);
    const HANDLE image = EngLoadImage(const_cast<WCHAR*>(u"framebuf"));
    void* const disable = EngFindImageProcAddress(image, const_cast<char*>("DrvDisableDriver"));
    ASSERT_NE(disable, nullptr);
    reinterpret_cast<PFN_DrvDisableDriver>(disable)();
    EXPECT_EQ(RealCalls().back().index, INDEX_DrvDisableDriver);
    const DisplayDriver driver(u"framebuf");
    EXPECT_EQ(driver.Function(INDEX_DrvDisableDriver), nullptr);
    EXPECT_EQ(driver.Function(INDEX_DrvCopyBits), nullptr);
    EXPECT_NE(driver.Function(INDEX_DrvEscape), nullptr);
}

} // namespace
