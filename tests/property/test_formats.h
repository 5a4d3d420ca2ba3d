#pragma once

// Every pixel format that a screen can have, for tests that run in each.

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/property/model_colour.h"

namespace property {

constexpr Format Formats[] = {{1, 1}, {4, 4}, {8, 8}, {16, 15}, {16, 16}, {24, 24}, {32, 32}};

inline std::string NameOfFormat(const testing::TestParamInfo<Format>& info)
{
    return "depth_" + std::to_string(info.param.depth);
}

inline std::uint64_t Setting(const char* name, std::uint64_t otherwise)
{
    const char* const value = std::getenv(name);
    return value ? std::strtoull(value, nullptr, 10) : otherwise;
}

// Calls run(seed) for a format's share of so many scenes, or for KORU_SEED alone; stops at a failure.
template<class Run> void ForEachSeed(std::uint64_t scenes, Run run)
{
    if (std::getenv("KORU_SEED"))
        return run(Setting("KORU_SEED", 0));
    for (std::uint64_t seed = 0; seed * std::size(Formats) < scenes && !testing::Test::HasFailure(); ++seed)
        run(seed);
}

} // namespace property
