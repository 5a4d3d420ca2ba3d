#pragma once

// Pseudo-random inputs, each with a number from which it can be made again.

#include <cstdint>
#include <filesystem>
#include <vector>

namespace fuzz {

using Bytes = std::vector<std::uint8_t>;

Bytes Read(const std::filesystem::path& path);
std::vector<Bytes> Seeds(const std::filesystem::path& folder); // what its files hold; none without a folder

class RandomInputs {
public:
    RandomInputs(std::uint32_t seed, std::vector<Bytes> seeds)
        : seed_(seed)
        , seeds_(std::move(seeds))
    {
    }
    Bytes Make(std::uint64_t number) const; // mostly a mutated seed where there are seeds, else any bytes

private:
    std::uint32_t seed_;
    std::vector<Bytes> seeds_;
};

} // namespace fuzz
