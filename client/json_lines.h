#pragma once

#include "record_decoder.h"

#include <string>

namespace koru::client {

// A submitted record as one line of JSON, without the line end: the record's type, the flag of its
// submission, every field by its name in records.h, every slot as the object that it leads to (null for
// none), and "unknown": the byte ranges that belong to nothing, when there are any. Bytes that are no
// record give a line with "error".
std::string JsonLine(std::span<const std::byte> bytes, std::int32_t flag);

std::string_view NameOf(RecordFault fault);

} // namespace koru::client
