#pragma once

#include "platform/types.h"

namespace fuzz {

inline unsigned long SequencesRun = 0, CallsRun = 0; // since the program's start

// Sequences of 4 to 9 calls, each an escape or, in so many times of 16, a drawing call, until the input ends. They
// share a machine, and what an earlier one has left there: numbers of what is gone, dark zones, a pointer's shape.
void RunSequences(const std::uint8_t* data, std::size_t size, ULONG drawing);

} // namespace fuzz
