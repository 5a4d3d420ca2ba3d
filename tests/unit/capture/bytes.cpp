#include "tests/unit/capture/bytes.h"

#include <iomanip>

namespace capture_tests {

Bytes operator+(Bytes first, const Bytes& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Bytes Words(std::initializer_list<ULONG> words)
{
    Bytes bytes;
    for (const ULONG word : words)
        for (int shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<BYTE>(word >> shift));
    return bytes;
}

Bytes Halves(std::initializer_list<USHORT> halves)
{
    Bytes bytes;
    for (const USHORT half : halves) {
        bytes.push_back(static_cast<BYTE>(half));
        bytes.push_back(static_cast<BYTE>(half >> 8));
    }
    return bytes;
}

Bytes Characters(std::u16string_view text)
{
    Bytes bytes;
    for (const WCHAR character : text)
        bytes = std::move(bytes) + Halves({character});
    return bytes;
}

Bytes Filled(std::size_t size, BYTE value)
{
    return Bytes(size, value);
}

testing::AssertionResult IsOnly(const Bytes& memory, const Bytes& expected)
{
    for (std::size_t i = 0; i < memory.size(); ++i) {
        const int wanted = i < expected.size() ? expected[i] : CanaryByte;
        if (memory[i] != wanted)
            return testing::AssertionFailure()
                << "byte " << i << " (word at " << i / 4 * 4 << (i < expected.size() ? ")" : ", to be left alone)")
                << " is 0x" << std::hex << static_cast<int>(memory[i]) << ", not 0x" << wanted;
    }
    if (expected.size() > memory.size())
        return testing::AssertionFailure() << expected.size() << " bytes do not stand in " << memory.size();
    return testing::AssertionSuccess();
}

ULONG WordAt(const Bytes& memory, std::size_t offset)
{
    ULONG word = 0;
    for (int i = 3; i >= 0; --i)
        word = word << 8 | memory.at(offset + i);
    return word;
}

} // namespace capture_tests
