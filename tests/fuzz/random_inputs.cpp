#include "tests/fuzz/random_inputs.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>

namespace fuzz {

namespace {

    constexpr std::size_t LongInput = 12000, ShortInput = 600, LargestSeed = 1 << 20;

    class Random { // "splitmix": cheap to start, which happens for each input
    public:
        explicit Random(std::uint64_t state)
            : state_(state)
        {
        }
        std::uint64_t Next()
        {
            std::uint64_t bits = state_ += 0x9E3779B97F4A7C15;
            bits = (bits ^ bits >> 30) * 0xBF58476D1CE4E5B9;
            bits = (bits ^ bits >> 27) * 0x94D049BB133111EB;
            return bits ^ bits >> 31;
        }
        std::uint32_t Word() { return static_cast<std::uint32_t>(Next() >> 32); }
        std::uint8_t Byte() { return static_cast<std::uint8_t>(Next() >> 56); }
        std::size_t Below(std::size_t count) { return Word() % count; }
        template<std::size_t Count> std::uint32_t Of(const std::uint32_t (&values)[Count])
        {
            return values[Below(Count)];
        }

    private:
        std::uint64_t state_;
    };

    Bytes AnyBytes(Random& random, std::size_t size)
    {
        Bytes bytes(size);
        for (std::size_t at = 0; at < bytes.size(); at += sizeof(std::uint64_t)) {
            const std::uint64_t bits = random.Next();
            std::memcpy(&bytes[at], &bits, std::min(sizeof(bits), bytes.size() - at));
        }
        return bytes;
    }

    // Something that a count or an offset could be, or should not.
    std::uint32_t AnyWord(Random& random, std::size_t size)
    {
        constexpr std::uint32_t words[] = {0,      1,       0x7F,       0xFF,       0x7FFF,
                                           0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        return random.Below(2) ? random.Of(words) : static_cast<std::uint32_t>(random.Below(size + 16));
    }

    void Mutate(Bytes& bytes, Random& random)
    {
        std::size_t at = random.Below(bytes.size());
        if (random.Below(2))
            at &= ~std::size_t(3);
        const auto place = bytes.begin() + static_cast<std::ptrdiff_t>(at);
        switch (random.Below(8)) {
        case 0:
            *place = random.Byte();
            break;
        case 1:
            *place ^= static_cast<std::uint8_t>(1u << random.Below(8));
            break;
        case 2: // cuts the rest off
            bytes.resize(at);
            break;
        case 3: // repeats a part
            bytes.insert(place, bytes.begin(), place);
            bytes.resize(std::min(bytes.size(), LargestSeed));
            break;
        case 4: // takes one out
            bytes.erase(
                place, place + static_cast<std::ptrdiff_t>(random.Below(std::min<std::size_t>(16, bytes.size() - at))));
            break;
        default: {
            const std::uint32_t word = AnyWord(random, bytes.size());
            std::memcpy(&*place, &word, std::min(sizeof(word), bytes.size() - at));
        }
        }
    }

    Bytes Mutated(Bytes bytes, Random& random)
    {
        for (std::size_t count = 1 + random.Below(8); count > 0 && !bytes.empty(); --count)
            Mutate(bytes, random);
        return bytes;
    }

} // namespace

Bytes Read(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Bytes> Seeds(const std::filesystem::path& folder)
{
    std::vector<Bytes> seeds;
    if (!std::filesystem::is_directory(folder))
        return seeds;
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.is_regular_file() && entry.file_size() <= LargestSeed)
            paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    for (const auto& path : paths)
        seeds.push_back(Read(path));
    return seeds;
}

Bytes RandomInputs::Make(std::uint64_t number) const
{
    Random random(Random(static_cast<std::uint64_t>(seed_) << 32 ^ number).Next());
    if (seeds_.empty())
        return AnyBytes(random, LongInput / 2 + random.Below(LongInput));
    if (random.Below(16) == 0)
        return AnyBytes(random, 1 + random.Below(ShortInput));
    return Mutated(seeds_[random.Below(seeds_.size())], random);
}

} // namespace fuzz
