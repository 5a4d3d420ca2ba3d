// Copying and filling are string instructions: of a plain loop the compiler would make a call of the very
// function that holds it.

#include "platform/runtime.h"

extern "C" {

void* memcpy(void* target, const void* source, std::size_t size) noexcept
{
    void* to = target;
    __asm__ volatile("rep movsb" : "+D"(to), "+S"(source), "+c"(size) : : "memory");
    return target;
}

void* memmove(void* target, const void* source, std::size_t size) noexcept
{
    auto* to = static_cast<char*>(target);
    const auto* from = static_cast<const char*>(source);
    if (to <= from || to >= from + size)
        return memcpy(target, source, size);
    while (size != 0) {
        --size;
        to[size] = from[size];
    }
    return target;
}

void* memset(void* target, int value, std::size_t size) noexcept
{
    void* to = target;
    __asm__ volatile("rep stosb" : "+D"(to), "+c"(size) : "a"(value) : "memory");
    return target;
}

int memcmp(const void* first, const void* second, std::size_t size) noexcept
{
    const auto* a = static_cast<const unsigned char*>(first);
    const auto* b = static_cast<const unsigned char*>(second);
    for (std::size_t i = 0; i < size; ++i)
        if (a[i] != b[i])
            return a[i] < b[i] ? -1 : 1;
    return 0;
}

} // extern "C"
