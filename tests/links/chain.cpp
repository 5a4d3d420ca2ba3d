// The whole chain: koru.dll asks dcmkrnl.dll, loads korulink.dll, which loads a plain frame-buffer driver.

#include <gtest/gtest.h>

#include "engine/core/calls.h"
#include "engine/core/device.h"
#include "engine/devices/frame_buffer.h"
#include "engine/loader/pe_image.h"
#include "tests/links/images.h"
#include "tests/support/driver_form.h"

namespace links {
namespace {

    constexpr ULONG White32 = 0xFFFFFFFF; // the raster operation sets the unused byte, too

    // What the plain drivers offer: no drawing, no escapes.
    engine::FrameBufferOptions PlainFrameBuffer()
    {
        engine::FrameBufferOptions options;
        options.missing = {INDEX_DrvCopyBits,
                           INDEX_DrvEscape,
                           INDEX_DrvRealizeBrush,
                           INDEX_DrvDitherColor,
                           INDEX_DrvSynchronize,
                           INDEX_DrvSynchronizeSurface,
                           INDEX_DrvIcmSetDeviceGammaRamp};
        return options;
    }

    class Machine {
    public:
        // `next`: the content of dcmkrnl.ini, none when empty.
        explicit Machine(const std::string& next, const engine::FrameBufferOptions& options = PlainFrameBuffer())
        {
            for (const char* const name : {"dcmkrnl", "korulink"}) {
                std::string error;
                const std::string bare = name;
                EXPECT_TRUE(engine::RegisterImageFile({bare.begin(), bare.end()}, ImageFile(bare + ".dll"), error))
                    << error;
            }
            if (!next.empty())
                engine.RegisterModule(u"dcmkrnl.ini", {next.begin(), next.end()});
            engine::RegisterFrameBuffer(options);
            support::RegisterDriverUnderTest();
            driver = std::make_unique<engine::DisplayDriver>(u"koru");
            device = std::make_unique<engine::Device>(*driver);
        }
        ~Machine()
        {
            device.reset();
            driver.reset();
            engine.CheckGuards();
            for (const std::string& violation : engine.Violations())
                ADD_FAILURE() << "engine violation: " << violation;
        }

        BOOL Whiten(RECTL rectangle)
        {
            constexpr ROP4 whiteness = 0xFFFF;
            return engine::CallBitBlt(device->PrimarySurface(), nullptr, nullptr, nullptr, nullptr, &rectangle, nullptr,
                                      nullptr, nullptr, nullptr, whiteness);
        }
        engine::Surface& Glass() { return *engine::FrameBufferPicture(device->Dhpdev()); }
        ULONG WhitePixels(ULONG white)
        {
            ULONG count = 0;
            for (LONG y = 0; y < Glass().sizlBitmap.cy; ++y)
                for (LONG x = 0; x < Glass().sizlBitmap.cx; ++x)
                    count += Glass().Pixel(x, y) == white;
            return count;
        }

        engine::Engine engine;
        std::unique_ptr<engine::DisplayDriver> driver;
        std::unique_ptr<engine::Device> device;
    };

    struct Depth {
        const char* name;
        ULONG bits, white;
    };
    class Chain : public testing::TestWithParam<Depth> { };

    TEST_P(Chain, ShowsAPictureOnAPlainFrameBuffer)
    {
        Machine machine("");
        ASSERT_TRUE(machine.driver->IsEnabled()) << machine.engine.DebugOutput();
        ASSERT_TRUE(machine.device->Enable({64, 48, GetParam().bits})) << machine.device->Error();
        EXPECT_TRUE(machine.Whiten({8, 8, 24, 20}));
        EXPECT_EQ(machine.Glass().Pixel(8, 8), GetParam().white);
        EXPECT_EQ(machine.Glass().Pixel(23, 19), GetParam().white);
        EXPECT_EQ(machine.Glass().Pixel(24, 19), 0u);
        EXPECT_EQ(machine.WhitePixels(GetParam().white), 16u * 12u);
    }

    TEST_P(Chain, ShowsNothingThereWithoutTheLink)
    {
        Machine machine("framebuf\r\n");
        ASSERT_TRUE(machine.device->Enable({64, 48, GetParam().bits})) << machine.device->Error();
        EXPECT_TRUE(machine.Whiten({8, 8, 24, 20})) << "it is on the VirtualScreen";
        EXPECT_EQ(machine.WhitePixels(GetParam().white), 0u);
    }

    INSTANTIATE_TEST_SUITE_P(Depths, Chain,
                             testing::Values(Depth{"Bits8", 8, 0xFF}, Depth{"Bits16", 16, 0xFFFF},
                                             Depth{"Bits24", 24, 0xFFFFFF}, Depth{"Bits32", 32, White32}),
                             [](const auto& info) { return info.param.name; });

    TEST(ChainImages, AreTheOnesThatAreLoaded)
    {
        Machine machine("");
        ASSERT_TRUE(machine.driver->IsEnabled());
        EXPECT_FALSE(machine.engine.IsImageLoaded(u"dcmkrnl")) << "only asked";
        EXPECT_TRUE(machine.engine.IsImageLoaded(u"korulink"));
        EXPECT_TRUE(machine.engine.IsImageLoaded(u"framebuf"));
        EXPECT_EQ(machine.engine.Outstanding().images, 2u);
        EXPECT_EQ(engine::LastRealEnable().engineVersion, DDI_DRIVER_VERSION_NT5_01);
        EXPECT_EQ(engine::LastRealEnable().times, 1u);
    }

    TEST(ChainImages, AreTheSameAfterTheDriverIsEnabledAgain)
    {
        Machine machine("korulink");
        ASSERT_TRUE(machine.driver->EnableAgain()) << machine.engine.DebugOutput();
        EXPECT_EQ(machine.engine.Outstanding().images, 2u);
        EXPECT_EQ(machine.engine.Outstanding().modules, 0u);
        EXPECT_EQ(engine::LastRealEnable().times, 2u);
        ASSERT_EQ(engine::RealCalls().size(), 1u) << "told before it was let go";
        EXPECT_EQ(engine::RealCalls()[0].index, INDEX_DrvDisableDriver);
        ASSERT_TRUE(machine.device->Enable({64, 48, 32}));
        machine.Whiten({0, 0, 64, 48});
        EXPECT_EQ(machine.WhitePixels(White32), 64u * 48u);
    }

    TEST(ChainImages, ShowThePictureAfterAChangeOfMode)
    {
        Machine machine("");
        ASSERT_TRUE(machine.device->Enable({64, 48, 32}));
        ASSERT_TRUE(engine::ChangeMode(machine.device, {80, 60, 16}));
        machine.Whiten({0, 0, 80, 60});
        EXPECT_EQ(machine.WhitePixels(0xFFFF), 80u * 60u);
    }

    TEST(ChainImages, ListTheNextDriversModes)
    {
        Machine machine("");
        EXPECT_FALSE(machine.driver->Modes().empty());
    }

    TEST(ChainImages, FailTogether)
    {
        engine::FrameBufferOptions options = PlainFrameBuffer();
        options.refuses = true;
        Machine machine("", options);
        EXPECT_FALSE(machine.driver->IsEnabled());
        EXPECT_FALSE(machine.engine.IsImageLoaded(u"framebuf")) << "the link has let it go";
    }

    TEST(ChainImages, LeaveADriverWithItsOwnCopyToItself)
    {
        Machine machine("", {});
        ASSERT_TRUE(machine.device->Enable({64, 48, 32}));
        engine::ForgetRealCalls();
        machine.Whiten({0, 0, 64, 48});
        EXPECT_EQ(machine.WhitePixels(White32), 64u * 48u);
        ASSERT_FALSE(engine::RealCalls().empty());
        EXPECT_EQ(engine::RealCalls()[0].index, INDEX_DrvCopyBits);
    }

} // namespace
} // namespace links
