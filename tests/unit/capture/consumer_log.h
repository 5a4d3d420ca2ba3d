#pragma once

#include <string>
#include <vector>

#include "platform/types.h"

namespace capture_tests {

// A consumer's five entry points and what was asked of them, in order: "GSD(0)", "QP(record, 48, 1)".
// `record` stands for the CaptureBuffer, `null` for no buffer.
struct ConsumerLog {
    std::vector<std::string> calls;
    LONG qcResult = 1;
    ULONG ids[2] = {0xAAAA0001, 0xBBBB0002};
};
extern ConsumerLog Consumer; // fresh for each CaptureTest

// As the client's escape gives it to InitializeFunctions2.
std::vector<ULONG> ConsumerTable();

} // namespace capture_tests
