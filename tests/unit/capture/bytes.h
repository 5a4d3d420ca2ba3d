#pragma once

// Memory as tests write it down: little-endian words, halves and bytes, joined with +.

#include <gtest/gtest.h>

#include <initializer_list>
#include <string_view>
#include <vector>

#include "platform/types.h"

namespace capture_tests {

using Bytes = std::vector<BYTE>;

// What memory holds before the code under test has it: bytes that it leaves alone still do afterwards.
constexpr BYTE CanaryByte = 0xCC;
constexpr ULONG Canary = 0xCCCCCCCC;

Bytes operator+(Bytes first, const Bytes& second);
Bytes Words(std::initializer_list<ULONG> words);
Bytes Halves(std::initializer_list<USHORT> halves);
Bytes Characters(std::u16string_view text); // without a terminator
Bytes Filled(std::size_t size, BYTE value = CanaryByte);

// The memory is `expected` followed by untouched canaries.
testing::AssertionResult IsOnly(const Bytes& memory, const Bytes& expected);

// The word at an offset.
ULONG WordAt(const Bytes& memory, std::size_t offset);

} // namespace capture_tests
