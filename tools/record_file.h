#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "client/record_stream.h"

namespace tools {

// The whole file. Throws std::runtime_error when it cannot be read.
std::vector<std::byte> ReadFile(const std::string& path);

// Calls `visit` for every frame of a record stream. Throws when the file is no stream at all; damage
// further on is told by the result: empty, or one line with the offset of the first bad place.
std::string ForEachFrame(const std::string& path, std::span<const std::byte> file,
                         const std::function<void(const koru::client::Frame&)>& visit);

} // namespace tools
