#include <optional>

#include "tools/control/arguments.h"
#include "tools/koructl/commands.h"

namespace koructl {

using namespace tools;

using namespace koru::client;

namespace {

    struct ZoneArguments {
        std::string zone, device;
    };

    void AddDevice(CLI::App& command, std::string& device)
    {
        command.add_option("--device", device, "the dhpdev of the screen, as records and koruspy tell it");
    }

    void AddZone(const Surroundings& surroundings, const ZoneArguments& arguments)
    {
        const Rect zone = ParseRectangle("zone", arguments.zone);
        const std::uint32_t device = ParseNumber("--device", arguments.device);
        const auto handle = Open(surroundings).DarkZones().Add(device, zone);
        Require(handle.has_value(), "Koru added no zone; is " + arguments.device + " the screen's device?");
        surroundings.out << Hexadecimal(static_cast<std::uint32_t>(*handle)) << '\n';
    }

    void RemoveZone(const Surroundings& surroundings, const ZoneArguments& arguments)
    {
        const ZoneHandle zone{ParseNumber("zone", arguments.zone)};
        const std::uint32_t device = ParseNumber("--device", arguments.device);
        Require(Open(surroundings).DarkZones().Delete(device, zone),
                "there is no zone " + arguments.zone + " on device " + arguments.device);
        surroundings.out << "zone removed\n";
    }

    void ClearZones(const Surroundings& surroundings, const ZoneArguments& arguments)
    {
        const auto device =
            arguments.device.empty() ? std::nullopt : std::optional(ParseNumber("--device", arguments.device));
        const Control koru = Open(surroundings);
        // For an unknown device the driver would clear the zones of all.
        if (device)
            Require(koru.ScreenSurface(*device).value_or(0) != 0, "there is no device " + arguments.device);
        Require(device ? koru.DarkZones().Clear(*device) : koru.DarkZones().ClearAll(), "Koru cleared no zones");
        surroundings.out << "zones removed\n";
    }

    void ChangeProcess(const Surroundings& surroundings, const std::string& text, bool add)
    {
        const std::uint32_t process = ParseNumber("process", text);
        const Control koru = Open(surroundings);
        Require(add ? koru.DarkProcesses().Add(process) : koru.DarkProcesses().Delete(process),
                "process " + text + (add ? " is dark already" : " is not dark"));
        surroundings.out << "process " << text << (add ? " is dark\n" : " is no longer dark\n");
    }

    void AddZoneCommands(CLI::App& app, const Surroundings& surroundings)
    {
        CLI::App& zones = AddGroup(app, "zone", "dark zones: rectangles of the screen that are not recorded");
        AddCommand<ZoneArguments>(
            zones, "add", "make a zone; prints its handle",
            [](CLI::App& command, ZoneArguments& arguments) {
                command.add_option("rectangle", arguments.zone, "LEFT,TOP,RIGHT,BOTTOM")->required();
                AddDevice(command, arguments.device);
                command.get_option("--device")->required();
            },
            [&surroundings](const ZoneArguments& arguments) { AddZone(surroundings, arguments); });
        AddCommand<ZoneArguments>(
            zones, "remove", "remove a zone",
            [](CLI::App& command, ZoneArguments& arguments) {
                command.add_option("handle", arguments.zone, "what \"zone add\" printed")->required();
                AddDevice(command, arguments.device);
                command.get_option("--device")->required();
            },
            [&surroundings](const ZoneArguments& arguments) { RemoveZone(surroundings, arguments); });
        AddCommand<ZoneArguments>(
            zones, "clear", "remove all zones of the device, or of every device",
            [](CLI::App& command, ZoneArguments& arguments) { AddDevice(command, arguments.device); },
            [&surroundings](const ZoneArguments& arguments) { ClearZones(surroundings, arguments); });
    }

} // namespace

void AddDark(CLI::App& app, const Surroundings& surroundings)
{
    AddZoneCommands(app, surroundings);
    CLI::App& processes = AddGroup(app, "process", "dark processes: programs whose drawing is not recorded");
    const auto takesProcess = [](CLI::App& command, std::string& process) {
        command.add_option("process", process, "its identifier, as the task manager shows it")->required();
    };
    AddCommand<std::string>(
        processes, "add", "do not record this process", takesProcess,
        [&surroundings](const std::string& process) { ChangeProcess(surroundings, process, true); });
    AddCommand<std::string>(
        processes, "remove", "record it again", takesProcess,
        [&surroundings](const std::string& process) { ChangeProcess(surroundings, process, false); });
    AddCommand(processes, "clear", "record all processes again", [&surroundings] {
        Require(Open(surroundings).DarkProcesses().Clear(), "Koru refused to clear the dark processes");
        surroundings.out << "no process is dark\n";
    });
}

} // namespace koructl
