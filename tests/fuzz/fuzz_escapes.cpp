// libFuzzer entry: escapes of every family with hostile buffers, drawing calls and shortages between them.

#include "tests/fuzz/sequences.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr ULONG drawing = 5; // of 16 calls
    fuzz::RunSequences(data, size, drawing);
    return 0;
}
