#include "tests/unit/capture/capture_test.h"

#include "capture/capture_state.h"
#include "capture/consumer.h"

namespace capture_tests {

BareCaptureTest::BareCaptureTest()
{
    Consumer = {};
    engine.SetCounter(0x1122334455667788);
}

void BareCaptureTest::TearDown()
{
    engine.CheckGuards();
    EXPECT_EQ(engine.Violations(), std::vector<std::string>());
}

CaptureTest::CaptureTest()
{
    koru::AllocateCaptureBuffers();
    koru::BitsSizeLimit = -1;
    koru::BitsCaptureMask = 0xFFFFFFFF;
    koru::InitializeFunctions2(ConsumerTable().data());
    Consumer = {};
    engine.ClearDebugOutput();
}

Written CaptureTest::Write(const Writer& writer, ULONG room, std::size_t memory)
{
    engine.ClearDebugOutput();
    Written written = {0, Filled(std::max<std::size_t>(room, memory) + 64), {}};
    written.size = writer(written.memory.data(), room);
    written.messages = engine.TakeDebugOutput();
    return written;
}

void CaptureTest::ExpectBytes(const Bytes& expected, const Writer& writer, ULONG room)
{
    ExpectBytes(expected, static_cast<ULONG>(expected.size()), writer, room);
}

void CaptureTest::ExpectBytes(const Bytes& expected, ULONG size, const Writer& writer, ULONG room)
{
    const Written written = Write(writer, room);
    EXPECT_EQ(written.size, size);
    EXPECT_TRUE(IsOnly(written.memory, expected));
    EXPECT_EQ(written.messages, "");
}

void CaptureTest::ExpectAtEveryRoom(ULONG full, const Writer& writer,
                                    const std::function<Outcome(ULONG room)>& expected)
{
    for (ULONG room = 0; room <= full + 8; ++room) {
        const Outcome outcome = expected(room);
        const Written written = Write(writer, room);
        ASSERT_EQ(written.size, outcome.size) << "room " << room;
        ASSERT_TRUE(IsOnly(written.memory, outcome.bytes)) << "room " << room;
        ASSERT_EQ(written.messages, outcome.messages) << "room " << room;
        ASSERT_EQ(writer(nullptr, room), 0u) << "room " << room << " nowhere";
        ASSERT_EQ(engine.TakeDebugOutput(), "") << "room " << room << " nowhere";
    }
}

Bytes Header(ULONG length, ULONG callType)
{
    return Words({length, callType, 0, 0xAAAA0001, 0xBBBB0002, Canary, 0x55667788, 0x11223344, 0, 0});
}

std::string NumberMessage(const std::string& text, ULONG number)
{
    return "KORU: " + text + std::to_string(number) + "\n";
}

} // namespace capture_tests
