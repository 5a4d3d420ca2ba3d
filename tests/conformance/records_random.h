#pragma once

#include <random>

#include "platform/types.h"

namespace conformance::records {

// The same values for a seed on every machine.
class Random {
public:
    explicit Random(ULONG seed)
        : generator_(seed)
    {
    }
    ULONG Word() { return static_cast<ULONG>(generator_()); }
    LONG Between(LONG lowest, LONG highest) // both included
    {
        const ULONG first = static_cast<ULONG>(lowest), count = static_cast<ULONG>(highest) - first + 1;
        return static_cast<LONG>(first + Word() % count);
    }
    bool OneIn(ULONG count) { return Word() % count == 0; }
    template<class Value> Value Of(std::initializer_list<Value> values)
    {
        return values.begin()[Word() % values.size()];
    }
    template<class Structure> void Fill(Structure& structure) { Fill(&structure, sizeof(structure)); }
    void Fill(void* at, std::size_t size)
    {
        for (std::size_t i = 0; i < size; ++i)
            static_cast<BYTE*>(at)[i] = static_cast<BYTE>(Word());
    }

private:
    std::mt19937 generator_;
};

} // namespace conformance::records
