// What a captured drawing call costs, side by side: with nothing set, and with many dark zones,
// identifiers and zoomers.

#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

#include "client/control.h"
#include "tools/machine.h"

namespace {

using namespace koru::client;
using Clock = std::chrono::steady_clock;

constexpr int Calls = 2000;
constexpr RECTL Filled = {150, 150, 166, 166}; // zoomers lie at 0, 0 and are 100 x 100

class Bench {
public:
    explicit Bench(const engine::Mode& mode = {1024, 768, 32})
        : machine_({mode, ""})
        , control_([this](std::uint32_t escape, std::span<const std::byte> in, std::span<std::byte> out) {
            return machine_.Escape(escape, in.data(), in.size(), out.data(), out.size());
        })
    {
        machine_.InstallConsumer([this](const BYTE*, ULONG, LONG) { ++records_; });
        control_.Capture().SetMask(AllCalls);
    }

    Control& Client() { return control_; }
    std::uint32_t Dhpdev()
    {
        return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(machine_.Device().Dhpdev()));
    }

    // Microseconds of one 16 x 16 fill, through the hook.
    double MicrosecondsPerFill()
    {
        const auto fill = machine_.Device().Driver().Function<PFN_DrvBitBlt>(INDEX_DrvBitBlt);
        SURFOBJ* const screen = machine_.Device().PrimarySurface();
        RECTL where = Filled;
        const auto start = Clock::now();
        for (int i = 0; i < Calls; ++i)
            fill(screen, nullptr, nullptr, nullptr, nullptr, &where, nullptr, nullptr, nullptr, nullptr, 0xFFFF);
        return std::chrono::duration<double, std::micro>(Clock::now() - start).count() / Calls;
    }

    void Print(const std::string& what)
    {
        records_ = 0;
        const double cost = MicrosecondsPerFill();
        std::printf("%-44s %9.2f us %8d records\n", what.c_str(), cost, records_);
    }

private:
    tools::Machine machine_;
    Control control_;
    int records_ = 0;
};

void WithZones(int count, bool meeting)
{
    Bench bench;
    for (int i = 0; i < count; ++i) {
        const std::int32_t x = Filled.left + (meeting ? i % 15 : 50 + i % 200);
        const std::int32_t y = Filled.top + (meeting ? i / 15 % 16 : 50 + i / 200);
        bench.Client().DarkZones().Add(bench.Dhpdev(), {x, y, x + 1, y + 1});
    }
    bench.Print(std::to_string(count) + (meeting ? " dark zones under the call" : " dark zones elsewhere"));
}

void WithIdentifiers(std::uint32_t count)
{
    Bench bench;
    for (std::uint32_t i = 0; i < count; ++i)
        bench.Client().DarkProcesses().Add(1000 + i);
    bench.Print(std::to_string(count) + " dark processes");
}

// Each zoomer has a bitmap of the screen's size, so the screen is small.
void WithZoomers(int count, bool on)
{
    Bench bench({200, 200, 8});
    bench.Client().Zoomers().SetUpdateInterval(1000000);
    for (int i = 0; i < count; ++i) {
        const auto zoomer = bench.Client().Zoomers().Create();
        if (!zoomer) {
            std::printf("zoomer %d could not be made\n", i);
            return;
        }
        bench.Client().Zoomers().SetBehaviour(*zoomer, ZoomerBehaviour::Deferred);
        bench.Client().Zoomers().SetState(*zoomer, on);
    }
    bench.Print(std::to_string(count) + (on ? " zoomers, on and elsewhere" : " zoomers, off"));
}

} // namespace

int main()
{
    Bench().Print("nothing set");
    for (const int count : {10, 100, 1000})
        WithZones(count, false);
    for (const int count : {10, 100, 1000})
        WithZones(count, true);
    for (const std::uint32_t count : {1000u, 10000u, 100000u})
        WithIdentifiers(count);
    for (const int count : {0, 1, 10, 100, 1000, 10000})
        WithZoomers(count, false);
    for (const int count : {1, 10, 100, 1000, 10000})
        WithZoomers(count, true);
    return 0;
}
