// korutap.sys behind Koru: what the driver captures arrives at the reader as a file of records.

#include "client/record_stream.h"
#include "tests/conformance/session.h"
#include "tests/links/tap.h"

namespace links {
namespace {

    constexpr ULONG BitBltBit = 0x100, AllCalls = 0x3FFFFFFF;

    class TapBehindKoru : public testing::Test {
    protected:
        TapBehindKoru()
            : session([] {
                conformance::Setup setup;
                setup.installConsumer = false;
                return setup;
            }())
        {
            Install();
            session.Command(2);
        }
        void Install()
        {
            const korutap::EntryPoints points = tap.EntryPoints();
            EXPECT_EQ(
                session.Escape(conformance::KoruEscape, {36, points.qc, points.qd, points.qp, points.gsd, points.dsf}),
                1u);
        }
        void Whiten(RECTL rectangle)
        {
            EXPECT_TRUE(engine::CallBitBlt(session.Screen(), nullptr, nullptr, nullptr, nullptr, &rectangle, nullptr,
                                           nullptr, nullptr, nullptr, 0xFFFF));
        }
        // What a reader writes to its file.
        std::vector<std::byte> File()
        {
            const std::string magic = "KORUREC1";
            std::vector<std::byte> file;
            for (char letter : magic)
                file.push_back(static_cast<std::byte>(letter));
            const std::vector<BYTE> read = tap.Read().output;
            for (std::size_t at = 0; at < read.size();) {
                korutap::FrameHeader header;
                std::memcpy(&header, read.data() + at, sizeof(header));
                const std::size_t end = at + sizeof(header) + header.length;
                for (std::size_t i = at + korutap::FileFrameAt; i < end; ++i)
                    file.push_back(static_cast<std::byte>(read[i]));
                at = end;
            }
            return file;
        }

        OpenTap tap;
        conformance::Session session;
    };

    ULONG WordOf(const koru::client::Frame& frame, std::size_t at)
    {
        ULONG word = 0;
        std::memcpy(&word, frame.record.data() + at, sizeof(word));
        return word;
    }

    TEST_F(TapBehindKoru, GetsEachCapturedCallWithItsCaller)
    {
        tap.kernel.processId = 0x1111;
        tap.kernel.threadId = 0x2222;
        session.SetCaptureMask(BitBltBit);
        Whiten({0, 0, 8, 8});
        Whiten({8, 8, 16, 16});
        const std::vector<std::byte> file = File();
        koru::client::StreamReader stream(file);
        for (int i = 0; i < 2; ++i) {
            const auto frame = stream.Next();
            ASSERT_TRUE(frame);
            EXPECT_EQ(frame->flag, 0);
            EXPECT_EQ(WordOf(*frame, 0), frame->record.size());
            EXPECT_EQ(WordOf(*frame, 4), BitBltBit);
            EXPECT_EQ(WordOf(*frame, 12), 0x1111u);
            EXPECT_EQ(WordOf(*frame, 16), 0x2222u);
        }
        EXPECT_FALSE(stream.Next());
        EXPECT_EQ(stream.BadPlaces(), 0u);
    }

    TEST_F(TapBehindKoru, IsSparedDarkProcesses)
    {
        constexpr ULONG addDarkProcess = 37;
        session.SetCaptureMask(BitBltBit);
        session.Command(addDarkProcess, 0x1111);
        tap.kernel.processId = 0x1111;
        Whiten({0, 0, 8, 8});
        EXPECT_EQ(tap.Read().information, 0u);
        tap.kernel.processId = 0x1112;
        Whiten({0, 0, 8, 8});
        EXPECT_NE(tap.Read().information, 0u);
    }

    TEST_F(TapBehindKoru, OutlivesItsReaderInKoru)
    {
        session.SetCaptureMask(AllCalls);
        tap.Cleanup();
        tap.Close();
        Whiten({0, 0, 8, 8});
        tap.Open();
        EXPECT_EQ(tap.Statistics().submitted, 0u);
        Whiten({0, 0, 8, 8});
        EXPECT_EQ(tap.Statistics().submitted, 1u) << "the next reader finds the entry points installed";
    }

} // namespace
} // namespace links
