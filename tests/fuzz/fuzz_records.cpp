// libFuzzer entry: any bytes as a record, and as a file of records.

#include "client/json_lines.h"
#include "client/record_stream.h"
#include "client/summary.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace koru::client;
    const auto bytes = std::as_bytes(std::span(data, size));
    const std::string line = JsonLine(bytes, 0);
    if (line.back() != '}')
        std::abort();

    StreamReader reader(bytes);
    Summary summary;
    std::size_t read = 0;
    while (const auto frame = reader.Next()) {
        summary.Add(frame->record);
        JsonLine(frame->record, frame->flag);
        read += FrameHeaderSize + frame->record.size();
    }
    if (read + reader.SkippedBytes() > size)
        std::abort();
    return 0;
}
