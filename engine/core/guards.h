#pragma once

// Guard bytes round what drivers write to. Under the address sanitizer there are none: its own guard
// zones then lie directly at the memory and see reads as well.

#include <algorithm>
#include <cstddef>

#include "platform/types.h"

namespace engine {

#ifdef __SANITIZE_ADDRESS__
constexpr bool GuardsPresent = false;
constexpr std::size_t GuardSize = 0;
#else
constexpr bool GuardsPresent = true;
constexpr std::size_t GuardSize = 32;
#endif

constexpr BYTE GuardByte = 0xFD; // before and behind
constexpr BYTE FreshByte = 0xA5; // memory that nobody asked to be zero
constexpr BYTE FreedByte = 0xDD;

inline void Fill(BYTE* at, std::size_t size, BYTE value)
{
    std::fill_n(at, size, value);
}

inline bool IsFilled(const BYTE* at, std::size_t size, BYTE value)
{
    return std::all_of(at, at + size, [value](BYTE byte) { return byte == value; });
}

} // namespace engine
