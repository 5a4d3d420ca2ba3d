#include "tools/control/arguments.h"
#include "tools/koructl/commands.h"

namespace koructl {

using namespace tools;

using namespace koru::client;

namespace {

    void ShowStatus(const Surroundings& surroundings)
    {
        const Control koru = Open(surroundings);
        const auto active = koru.ChainAreYouActive();
        const auto zoomers = koru.Zoomers().Count(), updates = koru.Zoomers().UpdateCount();
        const auto interval = koru.Zoomers().UpdateInterval();
        const auto pairs = koru.ColorPairs().Count();
        Require(active && zoomers && updates && interval && pairs, "Koru answers, but not all questions");
        surroundings.out << "Koru answers, interface " << *koru.InterfaceVersion() << '\n'
                         << "capture       " << (*active ? "on" : "off") << '\n'
                         << "zoomers       " << *zoomers << '\n'
                         << "updates       " << *updates << " so far, timed every " << *interval << " ms\n"
                         << "colour pairs  " << *pairs << '\n';
    }

    void SetMask(const Surroundings& surroundings, const std::string& text)
    {
        const std::uint32_t mask = ParseCallMask(text);
        Require(Open(surroundings).Capture().SetMask(mask), "Koru refused the mask");
        surroundings.out << "capture mask " << Hexadecimal(mask) << '\n';
    }

} // namespace

void AddStatus(CLI::App& app, const Surroundings& surroundings)
{
    AddCommand(app, "status", "whether Koru drives this screen, and what it is doing",
               [&surroundings] { ShowStatus(surroundings); });
}

void AddCapture(CLI::App& app, const Surroundings& surroundings)
{
    CLI::App& group = AddGroup(app, "capture", "record drawing calls, or do not");
    AddCommand(group, "on", "record the calls of the mask", [&surroundings] {
        Require(Open(surroundings).Capture().On(), "Koru refused to switch capture on");
        surroundings.out << "capture is on\n";
    });
    AddCommand(group, "off", "record nothing", [&surroundings] {
        Require(Open(surroundings).Capture().Off(), "Koru refused to switch capture off");
        surroundings.out << "capture is off\n";
    });
    AddCommand<std::string>(
        group, "mask", "which calls are recorded; none at start",
        [](CLI::App& command, std::string& mask) {
            command.add_option("calls", mask, "all, none, a number, or calls such as DrvTextOut,DrvBitBlt")->required();
        },
        [&surroundings](const std::string& mask) { SetMask(surroundings, mask); });
}

} // namespace koructl
