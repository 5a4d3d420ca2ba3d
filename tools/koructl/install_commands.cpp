#include "tools/control/arguments.h"
#include "tools/koructl/commands.h"

namespace koructl {

using namespace tools;

namespace {

    struct InstallArguments {
        std::string next, video = "0";
        bool vga = false;
    };

} // namespace

void AddInstall(CLI::App& app, const Surroundings& surroundings)
{
    AddCommand<InstallArguments>(
        app, "install", "put Koru in front of the display driver; takes effect at the next start",
        [](CLI::App& command, InstallArguments& arguments) {
            command.add_option("--next", arguments.next, "the driver behind Koru; the present one unless told");
            command.add_option("--video", arguments.video, "number of the video device; 0 unless told");
            command.add_flag("--vga", arguments.vga, "even if safe mode would then start with Koru, too");
        },
        [&surroundings](const InstallArguments& arguments) {
            surroundings.out << Install(
                surroundings.machine, {arguments.next, ParseNumber("--video", arguments.video, 0, 99), arguments.vga});
        });
    AddCommand(app, "uninstall", "put the display driver back as it was; takes effect at the next start",
               [&surroundings] { surroundings.out << Uninstall(surroundings.machine); });
}

} // namespace koructl
