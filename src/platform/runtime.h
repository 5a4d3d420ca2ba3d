#pragma once

// The few routines of the C run-time that compilers call by themselves. The image brings its own
// (runtime.cpp), ordinary programs use those of their C library.

#include <cstddef>

extern "C" {
void* memcpy(void* target, const void* source, std::size_t size) noexcept;
void* memmove(void* target, const void* source, std::size_t size) noexcept;
void* memset(void* target, int value, std::size_t size) noexcept;
int memcmp(const void* first, const void* second, std::size_t size) noexcept;
}
