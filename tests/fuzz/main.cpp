// Gives a fuzzer pseudo-random inputs, so that it runs without libFuzzer.
//
//     PROGRAM [COUNT [SEED [FIRST]]]    the inputs FIRST .. FIRST + COUNT - 1 of a seed
//     PROGRAM FILE...                   these inputs
//
// A line each minute tells how far it is. What ends the program leaves its input in PROGRAM.crash.

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

#include "tests/fuzz/random_inputs.h"
#include "tests/fuzz/sequences.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Freed memory waits for some ten sequences, more would only be slower. So would long stacks for each block:
// ASAN_OPTIONS=malloc_context_size=30 brings them back where an input is looked into.
extern "C" const char* __asan_default_options()
{
    return "abort_on_error=1:quarantine_size_mb=4:malloc_context_size=1";
}

namespace {

using Clock = std::chrono::steady_clock;

constexpr unsigned LongestSeconds = 60; // for one input
constexpr double ReportSeconds = 60;

fuzz::Bytes present; // the input under way
unsigned long presentNumber = 0;
std::string crashFile;

// Only what a handler may do.
void KeepInput(int signal)
{
    std::signal(signal, SIG_DFL);
    if (std::FILE* const file = std::fopen(crashFile.c_str(), "wb")) {
        std::fwrite(present.data(), 1, present.size(), file);
        std::fclose(file);
    }
    std::fprintf(stderr, "signal %d: input %lu is in %s\n", signal, presentNumber, crashFile.c_str());
    std::raise(signal);
}

void Run(fuzz::Bytes input)
{
    present = std::move(input);
    alarm(LongestSeconds);
    LLVMFuzzerTestOneInput(present.data(), present.size());
    alarm(0);
}

struct Range {
    unsigned long count = 1000, seed = 1, first = 0;
};

class Progress {
public:
    Progress(std::string name, const Range& range)
        : name_(std::move(name))
        , range_(range)
    {
    }
    double Seconds() const { return std::chrono::duration<double>(Clock::now() - start_).count(); }
    void Print(unsigned long done)
    {
        std::printf("%s: %lu inputs of seed %lu from %lu on", name_.c_str(), done, range_.seed, range_.first);
        if (fuzz::SequencesRun != 0)
            std::printf(", %lu sequences of %lu calls", fuzz::SequencesRun, fuzz::CallsRun);
        std::printf(", %.1f s\n", Seconds());
        std::fflush(stdout);
    }
    void PrintNowAndThen(unsigned long done)
    {
        if (Seconds() < next_)
            return;
        next_ += ReportSeconds;
        Print(done);
    }

private:
    std::string name_;
    Range range_;
    Clock::time_point start_ = Clock::now();
    double next_ = ReportSeconds;
};

void RunMany(const std::string& name, const Range& range)
{
    const fuzz::RandomInputs inputs(static_cast<std::uint32_t>(range.seed), fuzz::Seeds(KORU_FUZZ_SEEDS));
    Progress progress(name, range);
    for (unsigned long i = 0; i < range.count; ++i) {
        presentNumber = range.first + i;
        Run(inputs.Make(presentNumber));
        progress.PrintNowAndThen(i + 1);
    }
    progress.Print(range.count);
}

bool Parse(const char* text, unsigned long& number)
{
    char* end = nullptr;
    number = std::strtoul(text, &end, 10);
    return end != text && *end == '\0';
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
            Run(fuzz::Read(argv[i]));
        return 0;
    }
    Range range;
    unsigned long* const numbers[] = {&range.count, &range.seed, &range.first};
    for (int i = 1; i < argc && i <= 3; ++i)
        if (!Parse(argv[i], *numbers[i - 1])) {
            std::fprintf(stderr, "%s: neither a file nor a number: %s\n", name.c_str(), argv[i]);
            return 2;
        }
    RunMany(name, range);
    return 0;
}
