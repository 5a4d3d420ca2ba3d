// koructl's commands against the real driver on a stand-in machine.

#include "tools/koructl/koructl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <sstream>

#include "engine/core/calls.h"
#include "tests/control/fake_machine.h"
#include "tools/machine.h"

namespace koructl::test {
namespace {

    struct Reply {
        int code;
        std::string out, err;
    };

    class KoructlTest : public testing::Test {
    protected:
        Reply Run(std::vector<std::string> arguments)
        {
            std::ostringstream out, err;
            const int code = koructl::Run(arguments, {[this] { return OpenScreen(); }, registry, out, err});
            return {code, out.str(), err.str()};
        }

        tools::Screen OpenScreen()
        {
            return {[this](std::uint32_t code, std::span<const std::byte> in, std::span<std::byte> out) {
                        return machine.Escape(code, in.data(), in.size(), out.data(), out.size());
                    },
                    64, 48};
        }

        void ExpectFailure(const Reply& reply, int code, const std::string& words)
        {
            EXPECT_EQ(reply.code, code);
            EXPECT_EQ(reply.out, "");
            EXPECT_NE(reply.err.find(words), std::string::npos) << reply.err;
            EXPECT_EQ(std::count(reply.err.begin(), reply.err.end(), '\n'), 1) << reply.err;
        }

        std::string Device() { return std::to_string(reinterpret_cast<std::uintptr_t>(machine.Device().Dhpdev())); }
        // Everything on the VirtualScreen is white from here on.
        void DrawWhite()
        {
            RECTL all = {0, 0, 64, 48};
            engine::CallBitBlt(machine.Device().PrimarySurface(), nullptr, nullptr, nullptr, nullptr, &all, nullptr,
                               nullptr, nullptr, nullptr, 0xFFFF);
        }
        void DrawBlack(RECTL where)
        {
            engine::CallBitBlt(machine.Device().PrimarySurface(), nullptr, nullptr, nullptr, nullptr, &where, nullptr,
                               nullptr, nullptr, nullptr, 0x0000);
        }
        std::size_t Recorded()
        {
            std::size_t records = 0;
            machine.InstallConsumer([&records](const BYTE*, ULONG, LONG) { ++records; });
            DrawWhite();
            machine.InstallConsumer([](const BYTE*, ULONG, LONG) {});
            return records;
        }
        ULONG Shown(LONG x, LONG y) { return machine.RealScreen().Pixel(x, y) & 0xFFFFFF; }
        std::string CreateZoomer()
        {
            const Reply reply = Run({"zoomer", "create", "--original", "0,0,8,8", "--zoomed", "16,16,32,32"});
            EXPECT_EQ(reply.code, 0) << reply.err;
            return reply.out.substr(0, reply.out.find('\n'));
        }

        tools::Machine machine{{{64, 48, 32}, ""}};
        FakeMachine registry;
    };

    TEST_F(KoructlTest, TellsTheStateOfTheDriver)
    {
        Run({"pair", "clear"});
        EXPECT_EQ(Run({"status"}).out,
                  "Koru answers, interface 303\n"
                  "capture       on\n"
                  "zoomers       0\n"
                  "updates       0 so far, timed every 50 ms\n"
                  "colour pairs  0\n");
        EXPECT_EQ(Run({"capture", "off"}).code, 0);
        EXPECT_EQ(Run({"pair", "add", "FFFFFF,000000"}).code, 0);
        EXPECT_EQ(Run({"zoomer", "interval", "-1"}).code, 0);
        const std::string status = Run({"status"}).out;
        EXPECT_NE(status.find("capture       off\n"), std::string::npos) << status;
        EXPECT_NE(status.find("timed every -1 ms\n"), std::string::npos) << status;
        EXPECT_NE(status.find("colour pairs  1\n"), std::string::npos) << status;
    }

    TEST_F(KoructlTest, HelpNeedsNoDriver)
    {
        for (const std::vector<std::string>& words :
             {std::vector<std::string>{"--help"}, {"zoomer", "--help"}, {"zoomer", "create", "--help"}}) {
            std::ostringstream out, err;
            const auto fail = []() -> tools::Screen { throw std::runtime_error("no screen"); };
            EXPECT_EQ(koructl::Run(words, {fail, registry, out, err}), 0);
            EXPECT_EQ(err.str(), "");
            EXPECT_NE(out.str().find("koructl"), std::string::npos) << out.str();
        }
    }

    TEST_F(KoructlTest, HelpTellsWhatGrowsWhenTheDarkerWins)
    {
        EXPECT_NE(Run({"zoomer", "create", "--help"}).out.find("smoothing lets light"), std::string::npos);
    }

    TEST_F(KoructlTest, TheExampleOfAViewFitsASmallScreen)
    {
        const std::string help = Run({"--help"}).out;
        int from[4] = {}, to[4] = {}, factor = 0;
        ASSERT_EQ(std::sscanf(help.c_str() + help.find("--original"),
                              "--original %d,%d,%d,%d --zoomed %d,%d,%d,%d --factor %d", &from[0], &from[1], &from[2],
                              &from[3], &to[0], &to[1], &to[2], &to[3], &factor),
                  9);
        EXPECT_LE(to[2], 1024);
        EXPECT_LE(to[3], 768);
        EXPECT_EQ(to[2] - to[0], factor * (from[2] - from[0]));
        EXPECT_EQ(to[3] - to[1], factor * (from[3] - from[1]));
        EXPECT_LE(from[3], to[1]); // the view does not cover what it shows
    }

    TEST_F(KoructlTest, SaysThatTheDriverIsNotThere)
    {
        std::ostringstream out, err;
        const auto otherDriver = [] {
            return tools::Screen{[](std::uint32_t, std::span<const std::byte>, std::span<std::byte>) { return 0; }, 64,
                                 48};
        };
        EXPECT_EQ(koructl::Run({"status"}, {otherDriver, registry, out, err}), 1);
        EXPECT_EQ(out.str(), "");
        EXPECT_EQ(err.str(),
                  "koructl: Koru does not drive this screen; is it installed, and has the machine been restarted "
                  "since?\n");
    }

    TEST_F(KoructlTest, RefusesArgumentsThatItDoesNotUnderstand)
    {
        ExpectFailure(Run({}), 2, "subcommand");
        ExpectFailure(Run({"dance"}), 2, "\"dance\" is unknown");
        ExpectFailure(Run({"status", "--dance"}), 2, "\"--dance\" is unknown");
        ExpectFailure(Run({"zoomer", "dance"}), 2, "\"dance\" is unknown");
        ExpectFailure(Run({"zoomer"}), 2, "subcommand");
        ExpectFailure(Run({"zoomer", "create", "--original", "0,0,8,8"}), 2, "--zoomed");
        ExpectFailure(Run({"capture", "mask", "DrvDance"}), 1, "\"DrvDance\"");
        ExpectFailure(Run({"process", "add", "12x"}), 1, "\"12x\"");
        ExpectFailure(Run({"pair", "add", "FFF,000000"}), 1, "RRGGBB");
        ExpectFailure(Run({"zoomer", "create", "--original", "8,0,0,8", "--zoomed", "0,0,9,9"}), 1, "left below right");
        ExpectFailure(Run({"zoomer", "create", "--original", "0,0,8,8", "--zoomed", "0,0,65,9"}), 1, "on the screen");
        ExpectFailure(Run({"zoomer", "create", "--original", "0,0,8,8", "--zoomed", "0,0,9,9", "--factor", "256"}), 1,
                      "1 to 255");
        ExpectFailure(Run({"zoomer", "remove", "0x1234"}), 1, "no zoomer 0x1234");
        ExpectFailure(Run({"zoomer", "uncover", "0,0,64,49"}), 1, "on the screen");
        EXPECT_NE(Run({"status"}).out.find("zoomers       0\n"), std::string::npos);
    }

    TEST_F(KoructlTest, SwitchesWhatIsRecorded)
    {
        EXPECT_EQ(Recorded(), 0u);
        EXPECT_EQ(Run({"capture", "mask", "DrvTextOut,DrvBitBlt"}).out, "capture mask 0x00010100\n");
        EXPECT_EQ(Recorded(), 1u);
        EXPECT_EQ(Run({"capture", "off"}).code, 0);
        EXPECT_EQ(Recorded(), 0u);
        EXPECT_EQ(Run({"capture", "on"}).code, 0);
        EXPECT_EQ(Run({"capture", "mask", "0x10000"}).code, 0);
        EXPECT_EQ(Recorded(), 0u);
        EXPECT_EQ(Run({"capture", "mask", "all"}).out, "capture mask 0x3FFFFFFF\n");
        EXPECT_EQ(Recorded(), 1u);
    }

    TEST_F(KoructlTest, KeepsZonesAndProcessesDark)
    {
        Run({"capture", "mask", "all"});
        const Reply zone = Run({"zone", "add", "0,0,64,48", "--device", Device()});
        ASSERT_EQ(zone.code, 0) << zone.err;
        EXPECT_EQ(Recorded(), 0u);
        const std::string handle = zone.out.substr(0, 10);
        EXPECT_EQ(Run({"zone", "remove", handle, "--device", Device()}).code, 0);
        EXPECT_EQ(Recorded(), 1u);
        ExpectFailure(Run({"zone", "remove", handle, "--device", Device()}), 1, "no zone");
        ExpectFailure(Run({"zone", "add", "0,0,9,9", "--device", "7"}), 1, "device");

        Run({"zone", "add", "0,0,64,48", "--device", Device()});
        ExpectFailure(Run({"zone", "clear", "--device", "7"}), 1, "no device 7");
        EXPECT_EQ(Recorded(), 0u) << "the wrong device must not clear the zones of all";
        EXPECT_EQ(Run({"zone", "clear"}).code, 0);
        EXPECT_EQ(Recorded(), 1u);

        EXPECT_EQ(Run({"process", "add", "1"}).code, 0); // what the stand-in's consumer calls every process
        EXPECT_EQ(Recorded(), 0u);
        ExpectFailure(Run({"process", "add", "1"}), 1, "dark already");
        EXPECT_EQ(Run({"process", "remove", "1"}).code, 0);
        EXPECT_EQ(Recorded(), 1u);
        ExpectFailure(Run({"process", "remove", "1"}), 1, "not dark");
    }

    TEST_F(KoructlTest, ListsPairsAsTheyWereGiven)
    {
        Run({"pair", "clear"});
        Run({"pair", "add", "FFFFFF,000000"});
        Run({"pair", "add", "102030,AABBCC"});
        EXPECT_EQ(Run({"pair", "list"}).out, "102030,AABBCC\nFFFFFF,000000\n");
        EXPECT_EQ(Run({"pair", "remove", "000000,FFFFFF"}).code, 0);
        EXPECT_EQ(Run({"pair", "list"}).out, "102030,AABBCC\n");
        ExpectFailure(Run({"pair", "remove", "000000,FFFFFF"}), 1, "no pair");
        EXPECT_EQ(Run({"pair", "clear"}).code, 0);
        EXPECT_EQ(Run({"pair", "list"}).out, "");
    }

    TEST_F(KoructlTest, ShowsHidesAndRemovesAView)
    {
        DrawWhite();
        DrawBlack({0, 0, 8, 8}); // magnified, the whole view is black
        const std::string id = CreateZoomer();
        EXPECT_EQ(Shown(16, 16), 0u);
        EXPECT_EQ(Shown(31, 31), 0u);
        EXPECT_EQ(Shown(32, 32), 0xFFFFFFu);
        EXPECT_EQ(Run({"zoomer", "hide", id}).code, 0);
        EXPECT_EQ(Shown(16, 16), 0xFFFFFFu);
        EXPECT_EQ(Run({"zoomer", "show", id}).code, 0);
        EXPECT_EQ(Shown(16, 16), 0u);
        EXPECT_EQ(Run({"zoomer", "uncover", "16,16,20,20"}).code, 0);
        EXPECT_EQ(Shown(16, 16), 0xFFFFFFu);
        EXPECT_EQ(Run({"zoomer", "refresh", id}).code, 0);
        EXPECT_EQ(Shown(16, 16), 0u);
        EXPECT_EQ(Run({"zoomer", "remove", id}).code, 0);
        EXPECT_EQ(Shown(16, 16), 0xFFFFFFu);
        ExpectFailure(Run({"zoomer", "show", id}), 1, "no zoomer");
        CreateZoomer();
        EXPECT_EQ(Shown(16, 16), 0u);
        EXPECT_EQ(Run({"zoomer", "remove", "all"}).code, 0);
        EXPECT_EQ(Shown(16, 16), 0xFFFFFFu);
    }

    TEST_F(KoructlTest, MovesAViewAndLeavesNothingBehind)
    {
        DrawWhite();
        DrawBlack({0, 0, 8, 8});
        const std::string id = CreateZoomer();
        EXPECT_EQ(Run({"zoomer", "set", id, "--zoomed", "40,16,56,32"}).code, 0);
        EXPECT_EQ(Shown(16, 16), 0xFFFFFFu);
        EXPECT_EQ(Shown(40, 16), 0u);
        ExpectFailure(Run({"zoomer", "set", id}), 1, "nothing to set");
        ExpectFailure(Run({"zoomer", "set", id, "--zoomed", "60,16,76,32"}), 1, "on the screen");
    }

    TEST_F(KoructlTest, DescribesAllThatCanBeSet)
    {
        const std::string id = CreateZoomer();
        const Reply set = Run({"zoomer",   "set",           id,         "--original",  "1,2,5,6",
                               "--factor", "3,2",           "--smooth", "2",           "--darker-wins",
                               "yes",      "--style",       "inverted", "--behaviour", "deferred",
                               "--mode",   "moving",        "--border", "left,bottom", "--border-colour",
                               "white",    "--border-size", "3",        "--z-order",   "-4"});
        ASSERT_EQ(set.code, 0) << set.err;
        EXPECT_EQ(Run({"zoomer", "describe", id}).out,
                  "shown yes\n"
                  "original 1,2,5,6\n"
                  "zoomed 16,16,32,32\n"
                  "factor 3,2\n"
                  "smooth 2\n"
                  "darker-wins yes\n"
                  "style inverted\n"
                  "behaviour deferred\n"
                  "mode moving\n"
                  "border left,bottom\n"
                  "border-colour white\n"
                  "border-size 3\n"
                  "z-order -4\n");
        EXPECT_EQ(Run({"zoomer", "set", id, "--border", "all"}).code, 0);
        const std::string after = Run({"zoomer", "describe", id}).out;
        EXPECT_NE(after.find("border all\nborder-colour white\n"), std::string::npos) << after;
    }

} // namespace
} // namespace koructl::test
