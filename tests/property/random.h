#pragma once

#include <random>

#include "tests/property/model_rect.h"

namespace property {

// The same numbers for a seed on every machine.
class Random {
public:
    explicit Random(std::uint64_t seed)
        : generator_(static_cast<std::mt19937_64::result_type>(seed))
    {
    }
    // Both ends included.
    LONG Between(LONG lowest, LONG highest)
    {
        const auto count = static_cast<std::uint64_t>(std::int64_t{highest} - lowest + 1);
        return static_cast<LONG>(lowest + static_cast<std::int64_t>(generator_() % count));
    }
    SIZEL Size(LONG largest)
    {
        const LONG width = Between(1, largest);
        return {width, Between(1, largest)};
    }
    bool Percent(LONG chance) { return Between(0, 99) < chance; }
    ULONG Word() { return static_cast<ULONG>(generator_()); }
    template<class Value> Value Of(std::initializer_list<Value> values)
    {
        return values.begin()[Between(0, static_cast<LONG>(values.size()) - 1)];
    }

private:
    std::mt19937_64 generator_;
};

} // namespace property
