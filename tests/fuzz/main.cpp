// Gives a fuzzer pseudo-random inputs, so that it runs without libFuzzer.
//
//     PROGRAM [COUNT [SEED]]    COUNT inputs, the same ones for a seed
//     PROGRAM FILE...           these inputs
//
// What ends the program leaves its input in PROGRAM.crash.

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Freed bitmaps of megabytes would fill the 32-bit address space.
extern "C" const char* __asan_default_options()
{
    return "abort_on_error=1:quarantine_size_mb=32";
}

namespace {

using Bytes = std::vector<std::uint8_t>;
using Clock = std::chrono::steady_clock;

constexpr unsigned LongestSeconds = 60; // for one input
constexpr std::size_t LargestRandom = 3000, LargestSeed = 1 << 20;

Bytes present; // the input under way
std::string crashFile;

Bytes Read(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Only what a handler may do.
void KeepInput(int signal)
{
    std::signal(signal, SIG_DFL);
    if (std::FILE* const file = std::fopen(crashFile.c_str(), "wb")) {
        std::fwrite(present.data(), 1, present.size(), file);
        std::fclose(file);
    }
    std::fprintf(stderr, "signal %d: the input is in %s\n", signal, crashFile.c_str());
    std::raise(signal);
}

void Run(Bytes input)
{
    present = std::move(input);
    alarm(LongestSeconds);
    LLVMFuzzerTestOneInput(present.data(), present.size());
    alarm(0);
}

class Generator {
public:
    Generator(std::uint32_t seed, std::vector<Bytes> seeds)
        : random_(seed)
        , seeds_(std::move(seeds))
    {
    }

    Bytes Next() { return seeds_.empty() || Below(16) == 0 ? AnyBytes() : Mutated(seeds_[Below(seeds_.size())]); }

private:
    std::size_t Below(std::size_t count) { return random_() % count; }

    Bytes AnyBytes()
    {
        Bytes bytes(Below(LargestRandom >> Below(6)) + 1);
        for (std::uint8_t& byte : bytes)
            byte = static_cast<std::uint8_t>(random_());
        return bytes;
    }

    Bytes Mutated(Bytes bytes)
    {
        for (std::size_t count = 1 + Below(8); count > 0 && !bytes.empty(); --count)
            Mutate(bytes);
        return bytes;
    }

    void Mutate(Bytes& bytes)
    {
        constexpr std::uint32_t words[] = {0,      1,       0x7F,       0xFF,       0x7FFF,
                                           0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        const std::size_t at = Below(bytes.size());
        const auto place = bytes.begin() + static_cast<std::ptrdiff_t>(at);
        switch (Below(6)) {
        case 0:
            *place = static_cast<std::uint8_t>(random_());
            break;
        case 1:
            *place ^= static_cast<std::uint8_t>(1u << Below(8));
            break;
        case 2: {
            const std::uint32_t word = words[Below(std::size(words))];
            std::memcpy(&*place, &word, std::min(sizeof(word), bytes.size() - at));
            break;
        }
        case 3:
            bytes.resize(at);
            break;
        case 4: // repeats a part
            bytes.insert(place, bytes.begin(), place);
            bytes.resize(std::min(bytes.size(), LargestSeed));
            break;
        default: // takes one out
            bytes.erase(place,
                        place + static_cast<std::ptrdiff_t>(Below(std::min<std::size_t>(16, bytes.size() - at))));
        }
    }

    std::mt19937 random_;
    std::vector<Bytes> seeds_;
};

std::vector<Bytes> Seeds()
{
    std::vector<Bytes> seeds;
    if (!std::filesystem::is_directory(KORU_FUZZ_SEEDS))
        return seeds;
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(KORU_FUZZ_SEEDS))
        if (entry.is_regular_file() && entry.file_size() <= LargestSeed)
            paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    for (const auto& path : paths)
        seeds.push_back(Read(path));
    return seeds;
}

void RunMany(const std::string& name, unsigned long count, std::uint32_t seed)
{
    Generator generator(seed, Seeds());
    const auto start = Clock::now();
    for (unsigned long i = 0; i < count; ++i)
        Run(generator.Next());
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    std::printf("%s: %lu inputs of seed %u, %.1f s\n", name.c_str(), count, seed, seconds);
}

} // namespace

int main(int argc, char** argv)
{
    const std::string name = std::filesystem::path(argv[0]).filename();
    crashFile = std::string(argv[0]) + ".crash";
    for (const int signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGALRM})
        std::signal(signal, KeepInput);
    if (argc > 1 && std::filesystem::exists(argv[1])) {
        for (int i = 1; i < argc; ++i)
            Run(Read(argv[i]));
        return 0;
    }
    unsigned long numbers[] = {20000, 1}; // the count, the seed
    for (int i = 1; i < argc && i <= 2; ++i) {
        char* end = nullptr;
        numbers[i - 1] = std::strtoul(argv[i], &end, 10);
        if (end == argv[i] || *end != '\0') {
            std::fprintf(stderr, "%s: neither a file nor a number: %s\n", name.c_str(), argv[i]);
            return 2;
        }
    }
    RunMany(name, numbers[0], static_cast<std::uint32_t>(numbers[1]));
    return 0;
}
