#include "client/record_stream.h"
#include "client/summary.h"
#include "wire_bytes.h"

#include <gtest/gtest.h>

#include <sstream>

namespace koru::client::test {
namespace {

    WireBytes FileHead()
    {
        return WireBytes().Bytes({'K', 'O', 'R', 'U', 'R', 'E', 'C', '1'});
    }

    WireBytes FrameOf(std::int32_t flag, const WireBytes& record)
    {
        return WireBytes().Bytes({'K', 'R', 'E', 'C'}).Words({std::int64_t(record.size()), flag}).Add(record);
    }

    WireBytes AnyRecord()
    {
        return RecordOf(0x1, {0x11, 1});
    }

    TEST(StreamWriter, WritesHeaderAndFrames)
    {
        std::ostringstream out;
        StreamWriter writer(out);
        EXPECT_TRUE(writer.Write(WireBytes().Bytes({0xAA, 0xBB}), -2));
        EXPECT_TRUE(writer.Write({}, 1));
        const std::string expected("KORUREC1"
                                   "KREC\x02\0\0\0\xFE\xFF\xFF\xFF\xAA\xBB"
                                   "KREC\0\0\0\0\x01\0\0\0",
                                   34);
        EXPECT_EQ(out.str(), expected);
    }

    TEST(StreamWriter, RefusesWhatIsLongerThanARecord)
    {
        std::ostringstream out;
        StreamWriter writer(out);
        EXPECT_FALSE(writer.Write(WireBytes().Fill(0x10001, 0), 0));
        EXPECT_EQ(out.str().size(), 8u);
        EXPECT_TRUE(writer.Write(WireBytes().Fill(0x10000, 0), 0));
    }

    TEST(StreamWriter, ReportsAnOutputThatFailed)
    {
        std::ostringstream out;
        StreamWriter writer(out);
        out.setstate(std::ios::badbit);
        EXPECT_FALSE(writer.Write({}, 0));
    }

    TEST(StreamReader, GivesFramesInOrder)
    {
        const WireBytes file = FileHead().Add(FrameOf(-1, AnyRecord())).Add(FrameOf(1, {}));
        StreamReader reader(file);
        const auto first = reader.Next();
        ASSERT_TRUE(first.has_value());
        EXPECT_EQ(first->offset, 8u);
        EXPECT_EQ(first->flag, -1);
        EXPECT_EQ(first->record.size(), 48u);
        const auto second = reader.Next();
        ASSERT_TRUE(second.has_value());
        EXPECT_EQ(second->offset, 68u);
        EXPECT_TRUE(second->record.empty());
        EXPECT_FALSE(reader.Next().has_value());
        EXPECT_FALSE(reader.FirstBadOffset().has_value());
        EXPECT_EQ(reader.BadPlaces(), 0u);
    }

    // Data in front of the good frame holds the magic twice: with a length that is too large for the file, and with one
    // that is not the first word behind it.
    TEST(StreamReader, GoesOnBehindABadPlace)
    {
        const WireBytes junk = WireBytes()
                                   .Bytes({'K', 'R', 'E', 'C'})
                                   .Words({0x8000, 0})
                                   .Bytes({'x', 'K', 'R', 'E', 'C'})
                                   .Words({8, 0, 9});
        ASSERT_EQ(junk.size(), 29u);
        const WireBytes file =
            FileHead().Add(FrameOf(0, AnyRecord())).Add(junk).Add(FrameOf(1, AnyRecord())).Bytes({'K', 'R'});
        StreamReader reader(file);
        EXPECT_TRUE(reader.Next().has_value());
        const auto found = reader.Next();
        ASSERT_TRUE(found.has_value());
        EXPECT_EQ(found->offset, 68u + 29u);
        EXPECT_EQ(found->flag, 1);
        EXPECT_FALSE(reader.Next().has_value());
        EXPECT_EQ(reader.FirstBadOffset(), 68u);
        EXPECT_EQ(reader.BadPlaces(), 2u); // the file ends in the middle of a frame's header
        EXPECT_EQ(reader.SkippedBytes(), 31u);
    }

    TEST(StreamReader, RefusesLengthsAboveARecords)
    {
        const WireBytes file = FileHead().Bytes({'K', 'R', 'E', 'C'}).Words({0x10001, 0}).Fill(0x10001, 0);
        StreamReader reader(file);
        EXPECT_FALSE(reader.Next().has_value());
        EXPECT_EQ(reader.FirstBadOffset(), 8u);
    }

    TEST(StreamReader, FindsTheFramesOfAFileWithoutHeader)
    {
        const WireBytes file = WireBytes().Bytes({'K', 'O'}).Add(FrameOf(3, AnyRecord()));
        StreamReader reader(file);
        const auto frame = reader.Next();
        ASSERT_TRUE(frame.has_value());
        EXPECT_EQ(frame->flag, 3);
        EXPECT_EQ(reader.FirstBadOffset(), 0u);
        EXPECT_EQ(reader.SkippedBytes(), 2u);
    }

    TEST(StreamReader, AnEmptyFileIsBadAtItsStart)
    {
        StreamReader reader({});
        EXPECT_FALSE(reader.Next().has_value());
        EXPECT_EQ(reader.FirstBadOffset(), 0u);
    }

    TEST(Summary, CountsCallsEmptyAndUndecodableSubmissions)
    {
        Summary summary;
        summary.Add(AnyRecord());
        summary.Add(AnyRecord());
        summary.Add(RecordOf(0x20000000, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
        summary.Add({});
        summary.Add(WireBytes().Fill(41, 0));
        EXPECT_EQ(summary.Of(CallType::AssertMode).bytes, 96u);
        EXPECT_EQ(summary.Table(),
                  "call                     records        bytes\n"
                  "DrvAssertMode                  2           96\n"
                  "DrvStrokeAndFillPath           1           80\n"
                  "(empty)                        1            0\n"
                  "(undecodable)                  1           41\n"
                  "total                          5          217\n");
    }

    TEST(Summary, LeavesOutWhatDidNotOccur)
    {
        EXPECT_EQ(Summary().Table(),
                  "call                     records        bytes\n"
                  "total                          0            0\n");
    }

} // namespace
} // namespace koru::client::test
