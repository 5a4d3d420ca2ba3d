// Every command as the words that it must send, and what is made of the answers.

#include "client/control.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <vector>

namespace koru::client::test {
namespace {

    using Words = std::vector<std::uint32_t>;

    // A driver that keeps what it was sent and answers what it was told to.
    struct FakeDriver {
        std::int32_t result = 1;
        Words answer; // empty: the output is left as it was
        std::uint32_t escape = 0;
        Words sent;
        std::size_t outSize = 0;
        std::set<std::pair<std::uint32_t, std::uint32_t>> codes; // escape and command of all that was sent

        Transport AsTransport()
        {
            return [this](std::uint32_t code, std::span<const std::byte> in, std::span<std::byte> out) {
                escape = code;
                sent.assign(in.size() / 4, 0);
                std::memcpy(sent.data(), in.data(), in.size());
                outSize = out.size();
                codes.insert({escape, sent[0]});
                if (const std::size_t size = std::min(out.size(), answer.size() * 4))
                    std::memcpy(out.data(), answer.data(), size);
                return result;
            };
        }
    };

    class ControlTest : public testing::Test {
    protected:
        // The last escape was KORU_ESCAPE with the command and these words behind it, the rest zeros.
        void ExpectKoru(std::uint32_t command, Words words = {})
        {
            words.insert(words.begin(), command);
            words.resize(6);
            EXPECT_EQ(driver.escape, 0x490914u);
            EXPECT_EQ(driver.sent, words);
            EXPECT_EQ(driver.outSize, 4u);
        }
        void ExpectZoom(std::uint32_t command, Words words = {})
        {
            words.insert(words.begin(), command);
            words.resize(9);
            EXPECT_EQ(driver.escape, 6514u);
            EXPECT_EQ(driver.sent, words);
            EXPECT_EQ(driver.outSize, 16u);
        }

        FakeDriver driver;
        Control koru{driver.AsTransport()};
    };

    TEST_F(ControlTest, AsksForEscapesAndTheInterface)
    {
        EXPECT_TRUE(koru.Answers(Escape::Zoom));
        EXPECT_EQ(driver.escape, 8u);
        EXPECT_EQ(driver.sent, Words{6514});
        driver.result = 0;
        EXPECT_FALSE(koru.Answers(Escape::Koru));

        driver.result = 1;
        driver.answer = {0xEEEE012F}; // the driver writes two bytes
        EXPECT_EQ(koru.InterfaceVersion(), 303);
        ExpectKoru(91);
        driver.answer = {0x77};
        EXPECT_EQ(koru.ScreenSurface(0x11), 0x77u);
        ExpectKoru(92, {0, 0, 0, 0, 0x11});
        driver.result = 0;
        EXPECT_FALSE(koru.ScreenSurface(0x11).has_value());
        EXPECT_FALSE(koru.InterfaceVersion().has_value());
    }

    TEST_F(ControlTest, AsksAsTheChainManagerDoes)
    {
        driver.answer = {1};
        EXPECT_EQ(koru.ChainAreYouActive(), true);
        EXPECT_EQ(driver.escape, 0x584D4344u);
        ASSERT_EQ(driver.sent.size(), 68u); // 272 bytes
        EXPECT_EQ(driver.sent[0], 0x75726F6Bu); // "koru"
        EXPECT_EQ(driver.sent[1], 0u);
        EXPECT_EQ(driver.sent[66], 1u);
        EXPECT_EQ(driver.sent[67], 0u);
        EXPECT_EQ(driver.outSize, 4u);
        driver.answer = {0};
        EXPECT_EQ(koru.ChainAreYouActive(), false);
        driver.answer = {};
        EXPECT_FALSE(koru.ChainAreYouActive().has_value()); // another driver of that name
        EXPECT_TRUE(koru.ChainExtension());
        EXPECT_EQ(driver.sent[66], 0xFFFFFu);
        driver.result = 0;
        EXPECT_FALSE(koru.ChainAreYouActive().has_value());
    }

    TEST_F(ControlTest, SwitchesCapture)
    {
        EXPECT_TRUE(koru.Capture().Off()); // without an answer
        ExpectKoru(1);
        EXPECT_TRUE(koru.Capture().On());
        ExpectKoru(2);
        driver.result = 0;
        EXPECT_FALSE(koru.Capture().On());
        driver.result = 1;

        driver.answer = {1};
        EXPECT_TRUE(koru.Capture().SetFlag());
        ExpectKoru(35);
        EXPECT_TRUE(koru.Capture().Install({1, 2, 3, 4, 5}));
        ExpectKoru(36, {1, 2, 3, 4, 5});
        EXPECT_TRUE(koru.Capture().SetMask(AllCalls));
        ExpectKoru(57, {0x3FFFFFFF});
        EXPECT_EQ(koru.Capture().AskMask(), 1u);
        ExpectKoru(58);
        EXPECT_TRUE(koru.Capture().SetBitsLimits(-1, 0x100));
        ExpectKoru(112, {0xFFFFFFFF, 0x100});
        driver.answer = {};
        EXPECT_FALSE(koru.Capture().SetMask(1));
    }

    TEST_F(ControlTest, KeepsDarkZones)
    {
        driver.answer = {0x5000};
        EXPECT_EQ(koru.DarkZones().Add(0x11, {-1, 2, 3, 4}), ZoneHandle{0x5000});
        ExpectKoru(3, {0xFFFFFFFF, 2, 3, 4, 0x11});
        driver.answer = {0};
        EXPECT_FALSE(koru.DarkZones().Add(0x11, {1, 2, 3, 4}).has_value());
        EXPECT_FALSE(koru.DarkZones().Clear(0x12));
        ExpectKoru(5, {0, 0, 0, 0, 0x12});
        EXPECT_TRUE(koru.DarkZones().ClearAll()); // answers 0 and has done it
        ExpectKoru(5);
        driver.answer = {1};
        EXPECT_TRUE(koru.DarkZones().Delete(0x11, ZoneHandle{0x5000}));
        ExpectKoru(4, {0x5000, 0, 0, 0, 0x11});
    }

    TEST_F(ControlTest, KeepsDarkCallersAndSurfaces)
    {
        driver.answer = {1};
        EXPECT_TRUE(koru.DarkIds().Add(7));
        ExpectKoru(23, {7});
        EXPECT_TRUE(koru.DarkIds().Delete(7));
        ExpectKoru(24, {7});
        EXPECT_TRUE(koru.DarkIds().Clear());
        ExpectKoru(25);
        EXPECT_TRUE(koru.DarkProcesses().Add(8));
        ExpectKoru(37, {8});
        EXPECT_TRUE(koru.DarkProcesses().Delete(8));
        ExpectKoru(38, {8});
        EXPECT_TRUE(koru.DarkProcesses().Clear());
        ExpectKoru(39);
        EXPECT_TRUE(koru.DarkSurfaces().Add());
        ExpectKoru(32);
        EXPECT_TRUE(koru.DarkSurfaces().Delete());
        ExpectKoru(33);
        EXPECT_TRUE(koru.DarkSurfaces().Clear());
        ExpectKoru(34);
        driver.answer = {0};
        EXPECT_FALSE(koru.DarkProcesses().Add(8)); // present
    }

    TEST_F(ControlTest, KeepsCaches)
    {
        driver.answer = {1};
        EXPECT_EQ(koru.Caches().Add(CacheType::Surface, 0), true);
        ExpectKoru(96, {2, 0});
        driver.answer = {0};
        EXPECT_EQ(koru.Caches().Add(CacheType::Font, 0), false);
        driver.answer = {};
        EXPECT_FALSE(koru.Caches().Add(CacheType::Clip, 5).has_value()); // the driver did nothing
        driver.answer = {1};
        EXPECT_TRUE(koru.Caches().Delete(CacheType::Font, 5));
        ExpectKoru(97, {4, 5});
        EXPECT_TRUE(koru.Caches().Clear(CacheType::Clip, 0xFFFFFFFF));
        ExpectKoru(98, {1, 0xFFFFFFFF});
    }

    TEST_F(ControlTest, MakesAndRendersZoomers)
    {
        const ZoomerId id{0x600};
        driver.answer = {0x600};
        EXPECT_EQ(koru.Zoomers().Create(), id);
        ExpectZoom(0x11127201);
        driver.answer = {0};
        EXPECT_FALSE(koru.Zoomers().Create().has_value());
        EXPECT_FALSE(koru.Zoomers().Refresh(id));
        ExpectZoom(0x11127229, {0x600});

        driver.answer = {1};
        EXPECT_TRUE(koru.Zoomers().Remove(id));
        ExpectZoom(0x11127202, {0x600});
        EXPECT_TRUE(koru.Zoomers().Flush());
        ExpectZoom(0x11127203);
        EXPECT_TRUE(koru.Zoomers().Update());
        ExpectZoom(0x11127204);
        EXPECT_TRUE(koru.Zoomers().Scroll(id, -3, 4));
        ExpectZoom(0x11127228, {0x600, 0, 0, 0, 0xFFFFFFFD, 4});
        EXPECT_TRUE(koru.Zoomers().ImproveImage(id));
        ExpectZoom(0x11127230, {0x600});
        EXPECT_TRUE(koru.Zoomers().ShowOriginal({1, 2, 3, 4}));
        ExpectZoom(0x11127235, {0, 0, 0, 0, 1, 2, 3, 4});
        EXPECT_TRUE(koru.Zoomers().RenumberZOrder());
        ExpectZoom(0x11127239);

        driver.answer = {50};
        EXPECT_EQ(koru.Zoomers().Count(), 50u);
        ExpectZoom(0x11127217);
        EXPECT_EQ(koru.Zoomers().UpdateCount(), 50u);
        ExpectZoom(0x11127238);
        EXPECT_EQ(koru.Zoomers().UpdateInterval(), 50);
        ExpectZoom(0x11127240);
        driver.answer = {};
        EXPECT_TRUE(koru.Zoomers().SetUpdateInterval(-1)); // without an answer
        ExpectZoom(0x11127241, {0, 0, 0, 0, 0xFFFFFFFF});
        driver.result = 0;
        EXPECT_FALSE(koru.Zoomers().SetUpdateInterval(10));
        EXPECT_FALSE(koru.Zoomers().Create().has_value());
        EXPECT_FALSE(koru.Zoomers().Update());
        EXPECT_FALSE(koru.Zoomers().UpdateInterval().has_value());
    }

    TEST_F(ControlTest, SetsProperties)
    {
        const ZoomerId id{0x600};
        const auto zoomers = koru.Zoomers();
        driver.answer = {1};
        const auto expectSet = [&](std::uint32_t code, bool done, std::uint32_t value) {
            EXPECT_TRUE(done);
            ExpectZoom(code, {0x600, 0, 0, 0, value});
        };
        expectSet(0x11127205, zoomers.SetState(id, true), 1);
        expectSet(0x11127205, zoomers.SetState(id, false), 0);
        expectSet(0x11127207, zoomers.SetMode(id, ZoomerMode::Moving), 2);
        expectSet(0x11127207, zoomers.SetMode(id, ZoomerMode::Exclusive), 1);
        expectSet(0x11127209, zoomers.SetStyle(id, ZoomerStyle::Inverted), 1);
        expectSet(0x11127211, zoomers.SetBehaviour(id, ZoomerBehaviour::Deferred), 2);
        expectSet(0x11127211, zoomers.SetBehaviour(id, ZoomerBehaviour::Full), 1);
        expectSet(0x11127218, zoomers.SetZOrder(id, -5), 0xFFFFFFFB);
        expectSet(0x11127220, zoomers.SetFactor(id, 3), 3);
        expectSet(0x11127222, zoomers.SetImproveFactor(id, 2), 2);
        expectSet(0x11127224, zoomers.SetBorder(id, BorderLeft | BorderTop | BorderRight | BorderBottom | BorderWhite),
                  31);
        expectSet(0x11127226, zoomers.SetBordersSize(id, 5), 5);
        expectSet(0x11127231, zoomers.SetXFactor(id, 4), 4);
        expectSet(0x11127233, zoomers.SetYFactor(id, 5), 5);
        expectSet(0x11127247, zoomers.SetPickColor(id, true), 1);

        EXPECT_TRUE(zoomers.SetOriginalRect(id, {-1, 2, 3, 4}));
        ExpectZoom(0x11127213, {0x600, 0, 0, 0, 0xFFFFFFFF, 2, 3, 4});
        EXPECT_TRUE(zoomers.SetZoomedRect(id, {5, 6, 7, 8}));
        ExpectZoom(0x11127215, {0x600, 0, 0, 0, 5, 6, 7, 8});

        driver.answer = {0};
        EXPECT_FALSE(zoomers.SetState(id, true)); // unknown to the driver
    }

    TEST_F(ControlTest, TakesNothingButYesAndNoForAnAnswer)
    {
        for (const std::uint32_t garbage : {2u, 0xDEADBEEFu, 0xFFFFFFFFu}) {
            driver.answer = {garbage};
            EXPECT_FALSE(koru.ChainAreYouActive().has_value()) << garbage;
            EXPECT_FALSE(koru.Zoomers().PickColor(ZoomerId{0x600}).has_value()) << garbage;
            EXPECT_FALSE(koru.Caches().Add(CacheType::Clip, 5).has_value()) << garbage;
        }
        for (const std::uint32_t answer : {0u, 1u}) {
            driver.answer = {answer};
            EXPECT_EQ(koru.ChainAreYouActive(), answer == 1);
            EXPECT_EQ(koru.Zoomers().PickColor(ZoomerId{0x600}), answer == 1);
            EXPECT_EQ(koru.Caches().Add(CacheType::Clip, 5), answer == 1);
        }
    }

    TEST_F(ControlTest, GetsProperties)
    {
        const ZoomerId id{0x600};
        const auto zoomers = koru.Zoomers();
        driver.answer = {2};
        const auto expectGet = [&](std::uint32_t code, auto value, auto expected) {
            EXPECT_EQ(value, expected);
            ExpectZoom(code, {0x600});
        };
        expectGet(0x11127206, zoomers.State(id), true);
        expectGet(0x11127208, zoomers.Mode(id), ZoomerMode::Moving);
        driver.answer = {1};
        expectGet(0x11127210, zoomers.Style(id), ZoomerStyle::Inverted);
        driver.answer = {2};
        expectGet(0x11127212, zoomers.Behaviour(id), ZoomerBehaviour::Deferred);
        expectGet(0x11127221, zoomers.Factor(id), 2u);
        expectGet(0x11127223, zoomers.ImproveFactor(id), 2u);
        expectGet(0x11127225, zoomers.Border(id), 2u);
        expectGet(0x11127227, zoomers.BordersSize(id), 2u);
        expectGet(0x11127232, zoomers.XFactor(id), 2u);
        expectGet(0x11127234, zoomers.YFactor(id), 2u);
        driver.answer = {0xFFFFFFFF};
        expectGet(0x11127219, zoomers.ZOrder(id), -1);
        driver.answer = {5, 6, 7, 0xFFFFFFFF};
        expectGet(0x11127214, zoomers.OriginalRect(id), Rect{5, 6, 7, -1});
        expectGet(0x11127216, zoomers.ZoomedRect(id), Rect{5, 6, 7, -1});
        driver.answer = {1};
        expectGet(0x11127248, zoomers.PickColor(id), true);
        driver.answer = {};
        EXPECT_FALSE(zoomers.PickColor(id).has_value()); // unknown to the driver
        driver.result = 0;
        EXPECT_FALSE(zoomers.State(id).has_value());
        EXPECT_FALSE(zoomers.ZoomedRect(id).has_value());
    }

    TEST_F(ControlTest, KeepsColorPairs)
    {
        const ColorPair pair{Rgb(1, 2, 3), Rgb(255, 0, 128)};
        driver.answer = {1};
        EXPECT_TRUE(koru.ColorPairs().Add(pair));
        ExpectZoom(0x11127243, {0, 0x8000FF, 0, 0, 0x030201});
        EXPECT_TRUE(koru.ColorPairs().Delete(pair));
        ExpectZoom(0x11127246, {0, 0x8000FF, 0, 0, 0x030201});
        EXPECT_TRUE(koru.ColorPairs().Clear());
        ExpectZoom(0x11127245);
        EXPECT_EQ(koru.ColorPairs().Count(), 1u);
        ExpectZoom(0x11127242);
        driver.answer = {0x030201, 0x8000FF, 0, 0};
        EXPECT_EQ(koru.ColorPairs().At(-1), pair);
        ExpectZoom(0x11127244, {0, 0, 0, 0, 0xFFFFFFFF});
        driver.result = 0;
        EXPECT_FALSE(koru.ColorPairs().At(0).has_value());
    }

    TEST_F(ControlTest, SetsTheOverlay)
    {
        driver.answer = {1};
        EXPECT_TRUE(koru.WiseSurface().SetImage(0xCC, {10, -20}, {1, 2, 3, 4}));
        ExpectZoom(0x11127236, {0, 10, 0xFFFFFFEC, 0x00CC0000, 1, 2, 3, 4});
        EXPECT_TRUE(koru.WiseSurface().SetMask({1, 2, 3, 4}));
        ExpectZoom(0x11127236, {0, 0, 0, 0xFFFFFFFF, 1, 2, 3, 4});
        EXPECT_TRUE(koru.WiseSurface().DropMask());
        ExpectZoom(0x11127236, {0, 0, 0, 0xFEFFFFFF});
        EXPECT_TRUE(koru.WiseSurface().Destroy());
        ExpectZoom(0x11127237);
    }

    // Sends everything that there is and compares with the table of commands.
    TEST_F(ControlTest, ReachesEveryCommandOfTheTable)
    {
        const ZoomerId id{1};
        const auto sendAll = [&](const auto&... results) { (void)(..., void(results)); };
        const auto capture = koru.Capture();
        sendAll(capture.On(), capture.Off(), capture.SetFlag(), capture.Install({}), capture.SetMask(0),
                capture.AskMask(), capture.SetBitsLimits(0, 0), koru.InterfaceVersion(), koru.ScreenSurface(0));
        sendAll(koru.DarkZones().Add(0, {}), koru.DarkZones().Delete(0, ZoneHandle{1}), koru.DarkZones().Clear(0),
                koru.DarkIds().Add(0), koru.DarkIds().Delete(0), koru.DarkIds().Clear(), koru.DarkProcesses().Add(0),
                koru.DarkProcesses().Delete(0), koru.DarkProcesses().Clear(), koru.DarkSurfaces().Add(),
                koru.DarkSurfaces().Delete(), koru.DarkSurfaces().Clear(), koru.Caches().Add(CacheType::Clip, 0),
                koru.Caches().Delete(CacheType::Clip, 0), koru.Caches().Clear(CacheType::Clip, 0));
        const auto z = koru.Zoomers();
        sendAll(z.Create(), z.Remove(id), z.Flush(), z.Count(), z.Update(), z.Refresh(id), z.ImproveImage(id),
                z.Scroll(id, 1, 1), z.ShowOriginal({}), z.UpdateCount(), z.UpdateInterval(), z.SetUpdateInterval(1),
                z.RenumberZOrder());
        sendAll(z.SetState(id, true), z.State(id), z.SetMode(id, {}), z.Mode(id), z.SetStyle(id, {}), z.Style(id),
                z.SetBehaviour(id, {}), z.Behaviour(id), z.SetOriginalRect(id, {}), z.OriginalRect(id),
                z.SetZoomedRect(id, {}), z.ZoomedRect(id), z.SetFactor(id, 1), z.Factor(id), z.SetXFactor(id, 1),
                z.XFactor(id), z.SetYFactor(id, 1), z.YFactor(id), z.SetImproveFactor(id, 1), z.ImproveFactor(id),
                z.SetPickColor(id, true), z.PickColor(id), z.SetBorder(id, 1), z.Border(id), z.SetBordersSize(id, 1),
                z.BordersSize(id), z.SetZOrder(id, 1), z.ZOrder(id));
        sendAll(koru.ColorPairs().Count(), koru.ColorPairs().Add({}), koru.ColorPairs().Delete({}),
                koru.ColorPairs().Clear(), koru.ColorPairs().At(0), koru.WiseSurface().SetMask({}),
                koru.WiseSurface().Destroy());

        std::set<std::pair<std::uint32_t, std::uint32_t>> expected;
        for (const CommandInfo& command : Commands())
            expected.insert({static_cast<std::uint32_t>(command.escape), command.code});
        EXPECT_EQ(driver.codes, expected);
        EXPECT_EQ(Commands().size(), 24u + 48u);
    }

    TEST(Commands, NumbersLeaveOutHexadecimalDigitsAboveNine)
    {
        std::uint32_t previous = 0;
        for (const CommandInfo& command : Commands()) {
            if (command.escape != Escape::Zoom)
                continue;
            EXPECT_LT(command.code & 0xF, 10u);
            EXPECT_LT(command.code >> 4 & 0xF, 10u);
            EXPECT_GT(command.code, previous);
            previous = command.code;
        }
        EXPECT_EQ(previous, 0x11127248u);
    }

} // namespace
} // namespace koru::client::test
