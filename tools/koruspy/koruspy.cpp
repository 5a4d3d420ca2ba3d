#include "tools/koruspy/koruspy.h"

#include <CLI/CLI.hpp>
#include <fstream>

#include "tools/control/arguments.h"

namespace koruspy {

using tools::Require;

namespace {

    constexpr double IdleSeconds = 0.02; // korutap keeps what comes meanwhile
    constexpr char Examples[] =
        R"(Examples:
  koruspy                                  everything into records.koru, until Ctrl+C
  koruspy --out text.koru --calls DrvTextOut --seconds 10
  koruspy --install-module C:\Koru\korutap.sys

"koru records FILE", on the machine where Koru was built, shows what is in such a file. Records hold all that
is drawn, also secrets. The program needs an administrator: records come through the kernel module korutap.sys.)";

    struct Arguments {
        std::string out = "records.koru", calls = "all", seconds, module;
        bool removeModule = false;
    };

    void Tell(const SpyReport& report, std::ostream& err)
    {
        err << "koruspy: " << report.records << " records (" << report.empty << " empty), " << report.missed
            << " missed, " << report.refused << " refused\n";
        if (report.device)
            err << "koruspy: the screen's device is " << tools::Hexadecimal(*report.device) << '\n';
    }

    Pause MakePause(const Surroundings& surroundings, const std::string& seconds)
    {
        const double most = seconds.empty() ? 0 : tools::ParseNumber("--seconds", seconds, 1, 1000000);
        const double start = surroundings.clock();
        return [&surroundings, most, start](bool idle) {
            const bool due = most != 0 && surroundings.clock() - start >= most;
            return surroundings.wait(idle ? IdleSeconds : 0) && !due;
        };
    }

    void Record(const Surroundings& surroundings, const Arguments& arguments)
    {
        const std::uint32_t mask = tools::ParseCallMask(arguments.calls);
        const Pause pause = MakePause(surroundings, arguments.seconds);
        const tools::Driver driver = tools::OpenDriver(surroundings.openScreen);
        const auto tap = surroundings.openTap();
        std::ofstream file;
        if (arguments.out != "-") {
            file.open(arguments.out, std::ios::binary | std::ios::trunc);
            Require(file.is_open(), arguments.out + " cannot be written");
        }
        std::ostream& stream = file.is_open() ? file : surroundings.out;
        surroundings.err << "koruspy: recording into " << arguments.out << "; Ctrl+C ends\n";
        Tell(Spy(driver.control, *tap, mask, stream, pause), surroundings.err);
    }

    void Act(const Surroundings& surroundings, const Arguments& arguments)
    {
        if (!arguments.module.empty()) {
            surroundings.installModule(arguments.module);
            surroundings.err << "koruspy: the module is installed and runs\n";
        } else if (arguments.removeModule) {
            surroundings.removeModule();
            surroundings.err << "koruspy: the module is removed; restart the machine to unload it\n";
        } else {
            Record(surroundings, arguments);
        }
    }

} // namespace

int Run(const std::vector<std::string>& texts, const Surroundings& surroundings)
{
    Arguments arguments;
    CLI::App app("Records what is drawn on the screen, as the Koru display driver reports it.", "koruspy");
    app.footer(Examples);
    app.add_option("--out", arguments.out, "the file of records, or - for the standard output")
        ->default_val(arguments.out);
    app.add_option("--calls", arguments.calls, "which calls: all, a number, or such as DrvTextOut,DrvBitBlt")
        ->default_val(arguments.calls);
    app.add_option("--seconds", arguments.seconds, "end after so many seconds");
    auto* const install = app.add_option("--install-module", arguments.module, "install and start this korutap.sys");
    app.add_flag("--remove-module", arguments.removeModule, "remove korutap from the services")->excludes(install);
    try {
        app.parse(std::vector<std::string>(texts.rbegin(), texts.rend()));
        Act(surroundings, arguments);
    } catch (const CLI::Success& help) {
        return app.exit(help, surroundings.out, surroundings.err);
    } catch (const CLI::ParseError& error) {
        surroundings.err << "koruspy: " << error.what() << " (koruspy --help tells what there is)\n";
        return 2;
    } catch (const std::exception& error) {
        surroundings.err << "koruspy: " << error.what() << '\n';
        return 1;
    }
    return 0;
}

} // namespace koruspy
