// libFuzzer entry: any bytes as a record, and as a file of records.

#include "client/json_lines.h"
#include "client/record_stream.h"
#include "client/summary.h"

#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

using namespace koru::client;
using Bytes = std::span<const std::byte>;

void Require(bool condition)
{
    if (!condition)
        std::abort();
}

void ReadRecord(Bytes bytes)
{
    Require(JsonLine(bytes, 0).back() == '}');
    const auto record = Record::Decode(bytes);
    if (!record)
        return;
    Require(record->length() <= bytes.size());
    std::uint32_t at = 0;
    for (const Range& unknown : UnknownRanges(*record)) { // in order
        Require(unknown.begin >= at && unknown.begin < unknown.end && unknown.end <= record->length());
        at = unknown.end;
    }
}

// Bytes that only have a wrong length in front would not be looked at any further.
void ReadAsLong(Bytes bytes)
{
    const auto length = static_cast<std::uint32_t>(bytes.size());
    if (bytes.size() < sizeof(RecordHeader) || Load<std::uint32_t>(bytes, 0) == length)
        return;
    std::vector<std::byte> mended(bytes.begin(), bytes.end());
    std::memcpy(mended.data(), &length, sizeof(length));
    ReadRecord(mended);
}

void ReadStream(Bytes bytes)
{
    StreamReader reader(bytes);
    Summary summary;
    std::size_t read = 0;
    while (const auto frame = reader.Next()) {
        summary.Add(frame->record);
        ReadRecord(frame->record);
        read += FrameHeaderSize + frame->record.size();
    }
    Require(read + reader.SkippedBytes() <= bytes.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Bytes bytes = std::as_bytes(std::span(data, size));
    ReadRecord(bytes);
    ReadAsLong(bytes);
    ReadStream(bytes);
    return 0;
}
