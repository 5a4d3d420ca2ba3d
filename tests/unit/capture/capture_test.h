#pragma once

#include <functional>
#include <string>

#include "engine/core/engine.h"
#include "tests/unit/capture/bytes.h"
#include "tests/unit/capture/consumer_log.h"

namespace capture_tests {

// An engine whose counter stands at 0x1122334455667788, and nothing of the driver set up. Fails when
// the test made the engine complain.
class BareCaptureTest : public testing::Test {
protected:
    BareCaptureTest();
    void TearDown() override;

    engine::Engine engine;
};

// A record writer or an encoder with its arguments bound.
using Writer = std::function<ULONG(BYTE* at, ULONG room)>;

// What it did with canaries.
struct Written {
    ULONG size; // as returned
    Bytes memory; // the room and some bytes behind it
    std::string messages;
};

// With buffers and a consumer whose identifiers are 0xAAAA0001 and 0xBBBB0002.
class CaptureTest : public BareCaptureTest {
protected:
    CaptureTest();

    // `memory`: how much is there at least, for writers that write more than they are told to.
    Written Write(const Writer& writer, ULONG room, std::size_t memory = 0);

    // The writer fits into its room, says nothing and leaves exactly these bytes.
    void ExpectBytes(const Bytes& expected, const Writer& writer, ULONG room = 0x10000);
    // The same where bytes stand behind what was returned.
    void ExpectBytes(const Bytes& expected, ULONG size, const Writer& writer, ULONG room = 0x10000);

    // For every room up to 8 bytes more than `full`: what is returned, written and said.
    struct Outcome {
        ULONG size;
        Bytes bytes;
        std::string messages;
    };
    void ExpectAtEveryRoom(ULONG full, const Writer& writer, const std::function<Outcome(ULONG room)>& expected);
};

// The 40 bytes that begin a record.
Bytes Header(ULONG length, ULONG callType);

// "KORU: ", the text, the number and a line end.
std::string NumberMessage(const std::string& text, ULONG number);

} // namespace capture_tests
