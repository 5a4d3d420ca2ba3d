#pragma once

#include "byte_view.h"

#include <string>

namespace koru::client {

// UTF-8 of UTF-16 text; a lone surrogate becomes U+FFFD.
std::string ToUtf8(const Array<char16_t>& text);

// Likewise of a fixed field of UTF-16 bytes, which a 0 ends early.
std::string ToUtf8(std::span<const std::byte> field);

} // namespace koru::client
