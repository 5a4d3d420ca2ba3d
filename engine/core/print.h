#pragma once

#include <cstdarg>
#include <string>

namespace engine {

// The debug print of the engine: %c %d %i %u %x %X %p %s %S %% with the flags "-" and "0", width,
// precision and the sizes h, l, w, ll and I64. %S and %ls take 16-bit characters, which come out as UTF-8.
// A conversion that it does not know is a violation and ends the text.
std::string FormatDebugText(const char* format, va_list arguments);

} // namespace engine
