// koruspy with a device of our own: what it asks of Koru, what it writes, and that it always ends cleanly.

#include "tools/koruspy/koruspy.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <sstream>

#include "engine/core/calls.h"
#include "tools/machine.h"

namespace koruspy::test {
namespace {

    std::string Words(std::initializer_list<std::uint32_t> words)
    {
        return {reinterpret_cast<const char*>(words.begin()), words.size() * 4};
    }

    std::string Frame(std::uint32_t sequence, std::uint32_t flag, const std::string& record)
    {
        return Words({sequence, 0x4345524B, static_cast<std::uint32_t>(record.size()), flag}) + record;
    }

    struct FakeDevice {
        korutap::EntryPoints entries = {1, 0x11, 0x12, 0x13, 0x14, 0x15};
        korutap::Statistics statistics{};
        std::vector<std::string> reads; // what each gives; nothing behind the end
        std::size_t at = 0;
        bool failsToRead = false;
        bool closed = false;
    };

    class FakeTap : public Tap {
    public:
        explicit FakeTap(FakeDevice& device)
            : device_(device)
        {
        }
        ~FakeTap() override { device_.closed = true; }
        korutap::EntryPoints EntryPoints() override { return device_.entries; }
        korutap::Statistics Statistics() override { return device_.statistics; }
        std::size_t Read(std::span<std::byte> room) override
        {
            EXPECT_GE(room.size(), 0x10010u);
            if (device_.failsToRead)
                throw std::runtime_error("korutap cannot be read");
            if (device_.at == device_.reads.size())
                return 0;
            const std::string& bytes = device_.reads[device_.at++];
            std::memcpy(room.data(), bytes.data(), bytes.size());
            return bytes.size();
        }

    private:
        FakeDevice& device_;
    };

    // A driver that keeps the sub-commands of capture that it was sent, "36(17,...)" for an installation.
    struct FakeDriver {
        bool present = true;
        std::uint32_t refuses = 0; // sub-command
        std::string log;

        std::int32_t Escape(std::uint32_t code, std::span<const std::byte> in, std::span<std::byte> out)
        {
            std::uint32_t words[6] = {};
            std::memcpy(words, in.data(), std::min(in.size(), sizeof(words)));
            if (!present)
                return 0;
            const std::uint32_t answer = words[0] == 91 ? 303 : 1;
            if (code == 0x490914 && words[0] != 91) {
                log += (log.empty() ? "" : " ") + std::to_string(words[0]);
                if (words[0] == 36 || words[0] == 57)
                    log += '(' + std::to_string(words[1]) + ')';
                if (words[0] == refuses)
                    return 0;
            }
            if (!out.empty())
                std::memcpy(out.data(), &answer, std::min(out.size(), sizeof(answer)));
            return 1;
        }
    };

    class KoruspyTest : public testing::Test {
    protected:
        int Run(const std::vector<std::string>& arguments)
        {
            out.str("");
            err.str("");
            const auto screen = [this] {
                return tools::Screen{[this](std::uint32_t code, std::span<const std::byte> in,
                                            std::span<std::byte> answer) { return driver.Escape(code, in, answer); },
                                     64, 48};
            };
            return koruspy::Run(arguments,
                                {screen, [this] { return std::make_unique<FakeTap>(device); },
                                 [this](const std::string& path) { installed = path; }, [this] { removed = true; },
                                 [this](double) { return waits-- > 0; }, [this] { return now += 0.5; }, out, err});
        }

        FakeDriver driver;
        FakeDevice device;
        int waits = 3; // until Ctrl+C
        double now = 0;
        std::string installed;
        bool removed = false;
        std::ostringstream out, err;
    };

    constexpr char CleanRun[] = "36(17) 57(1073741823) 2 1 57(0) 36(0)"; // 17: the entry point qc

    TEST_F(KoruspyTest, WritesTheStreamThatReadersKnow)
    {
        device.reads = {Frame(0, 1, "first") + Frame(1, 0xFFFFFFFF, ""), Frame(2, 0, "2")};
        EXPECT_EQ(Run({"--out", "-"}), 0) << err.str();
        EXPECT_EQ(out.str(),
                  std::string("KORUREC1", 8) + "KREC" + Words({5, 1}) + "first" + "KREC" + Words({0, 0xFFFFFFFF})
                      + "KREC" + Words({1, 0}) + "2");
        EXPECT_EQ(driver.log, CleanRun);
        EXPECT_TRUE(device.closed);
        EXPECT_NE(err.str().find("3 records (1 empty), 0 missed, 0 refused"), std::string::npos) << err.str();
    }

    TEST_F(KoruspyTest, TakesWhatIsLeftAfterTheEnd)
    {
        waits = 0;
        device.reads = {Frame(0, 1, "a"), Frame(1, 1, "b")};
        EXPECT_EQ(Run({"--out", "-"}), 0);
        EXPECT_NE(err.str().find("2 records"), std::string::npos) << err.str();
    }

    TEST_F(KoruspyTest, CountsWhatItMissed)
    {
        device.reads = {Frame(2, 1, "a") + Frame(3, 1, "b"), Frame(7, 1, "c")};
        device.statistics.refused = 9;
        EXPECT_EQ(Run({"--out", "-"}), 0);
        EXPECT_NE(err.str().find("3 records (0 empty), 5 missed, 9 refused"), std::string::npos) << err.str();
    }

    TEST_F(KoruspyTest, EndsAfterTheTimeThatItWasGiven)
    {
        waits = 1000;
        EXPECT_EQ(Run({"--out", "-", "--seconds", "2", "--calls", "DrvTextOut"}), 0);
        EXPECT_EQ(waits, 996); // the clock goes half a second with each look at it
        EXPECT_EQ(driver.log, "36(17) 57(65536) 2 1 57(0) 36(0)");
    }

    TEST_F(KoruspyTest, LeavesNoCaptureBehindWhenSomethingFails)
    {
        device.failsToRead = true;
        EXPECT_EQ(Run({"--out", "-"}), 1);
        EXPECT_EQ(err.str(), "koruspy: recording into -; Ctrl+C ends\nkoruspy: korutap cannot be read\n");
        EXPECT_EQ(driver.log, CleanRun);

        device.failsToRead = false;
        driver.log.clear();
        device.reads = {Frame(0, 1, "a").substr(0, 7)};
        EXPECT_EQ(Run({"--out", "-"}), 1);
        EXPECT_EQ(driver.log, CleanRun);

        driver.log.clear();
        device.at = 0;
        device.reads = {Words({0, 0x4345524B, 100, 0}) + "short"};
        EXPECT_EQ(Run({"--out", "-"}), 1);
        EXPECT_NE(err.str().find("no frame"), std::string::npos) << err.str();
        EXPECT_EQ(driver.log, CleanRun);
    }

    TEST_F(KoruspyTest, TakesTheConsumerOutWhenCaptureCannotStart)
    {
        driver.refuses = 2;
        EXPECT_EQ(Run({"--out", "-"}), 1);
        EXPECT_NE(err.str().find("refused to start"), std::string::npos) << err.str();
        EXPECT_EQ(driver.log, CleanRun);
    }

    TEST_F(KoruspyTest, TouchesNothingWithoutTheDriverOrWithAnotherModule)
    {
        const auto path = std::filesystem::temp_directory_path() / "koruspy-test-absent.koru";
        std::filesystem::remove(path);
        driver.present = false;
        EXPECT_EQ(Run({"--out", path.string()}), 1);
        EXPECT_NE(err.str().find("does not drive this screen"), std::string::npos) << err.str();
        EXPECT_FALSE(std::filesystem::exists(path));

        driver.present = true;
        device.entries.version = 2;
        EXPECT_EQ(Run({"--out", "-"}), 1);
        EXPECT_NE(err.str().find("another version"), std::string::npos) << err.str();
        EXPECT_EQ(driver.log, "");
        EXPECT_EQ(out.str(), "");
        EXPECT_EQ(Run({"--out", "/nowhere/at/all"}), 1);
        EXPECT_NE(err.str().find("cannot be written"), std::string::npos) << err.str();
        EXPECT_EQ(driver.log, "");
    }

    TEST_F(KoruspyTest, InstallsAndRemovesTheModule)
    {
        EXPECT_EQ(Run({"--install-module", "korutap.sys"}), 0);
        EXPECT_EQ(installed, "korutap.sys");
        EXPECT_EQ(Run({"--remove-module"}), 0);
        EXPECT_TRUE(removed);
        EXPECT_EQ(driver.log, "");
        EXPECT_EQ(Run({"--install-module", "a", "--remove-module"}), 2);
        EXPECT_EQ(Run({"--seconds", "soon"}), 1);
        EXPECT_EQ(Run({"--dance"}), 2);
        EXPECT_EQ(Run({"--help"}), 0);
        EXPECT_NE(out.str().find("Ctrl+C"), std::string::npos);
        EXPECT_NE(out.str().find("on the machine where Koru was built"), std::string::npos);
    }

    // The real driver's records, and the device that they name.
    TEST(KoruspyWithTheDriver, RecordsADrawingAndTellsTheDevice)
    {
        static std::vector<std::string> taken;
        taken.clear();
        tools::Machine machine({{64, 48, 32}, ""});
        struct Consumer {
            static LONG APIENTRY Qc() { return 1; }
            static LONG APIENTRY Qp(BYTE* record, ULONG length, LONG flag)
            {
                taken.push_back(Frame(static_cast<std::uint32_t>(taken.size()), static_cast<std::uint32_t>(flag),
                                      {reinterpret_cast<const char*>(record), length}));
                return 0;
            }
        };
        class DriverTap : public Tap {
        public:
            korutap::EntryPoints EntryPoints() override
            {
                return {1, reinterpret_cast<std::uint32_t>(&Consumer::Qc),
                        0, reinterpret_cast<std::uint32_t>(&Consumer::Qp),
                        0, 0};
            }
            korutap::Statistics Statistics() override { return {}; }
            std::size_t Read(std::span<std::byte> room) override
            {
                if (next_ == taken.size())
                    return 0;
                const std::string& frame = taken[next_++];
                std::memcpy(room.data(), frame.data(), frame.size());
                return frame.size();
            }

        private:
            std::size_t next_ = 0;
        } tap;
        const koru::client::Control koru([&machine](auto code, auto in, auto out) {
            return machine.Escape(code, in.data(), in.size(), out.data(), out.size());
        });
        const auto draw = [&machine] {
            RECTL all = {0, 0, 64, 48};
            engine::CallBitBlt(machine.Device().PrimarySurface(), nullptr, nullptr, nullptr, nullptr, &all, nullptr,
                               nullptr, nullptr, nullptr, 0xFFFF);
        };
        int turns = 0;
        std::ostringstream stream;
        const SpyReport report = Spy(koru, tap, koru::client::AllCalls, stream, [&](bool) {
            draw();
            return ++turns < 3;
        });
        draw();
        EXPECT_EQ(report.records, 3u);
        EXPECT_EQ(taken.size(), 3u) << "nothing is recorded after the end";
        EXPECT_EQ(report.device, reinterpret_cast<std::uintptr_t>(machine.Device().Dhpdev()));
        EXPECT_EQ(koru.ChainAreYouActive(), false);
    }

} // namespace
} // namespace koruspy::test
