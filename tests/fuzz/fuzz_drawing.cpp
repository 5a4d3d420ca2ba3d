// libFuzzer entry: drawing calls with hostile numbers and missing arguments, under zoomers, an escape now and then.

#include "tests/fuzz/sequences.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr ULONG drawing = 13; // of 16 calls
    fuzz::RunSequences(data, size, drawing);
    return 0;
}
