#include "tools/koructl/koructl.h"

#include <stdexcept>

#include "tools/koructl/commands.h"

namespace koructl {

namespace {

    constexpr char Examples[] =
        R"(Examples:
  koructl status
  koructl capture mask DrvTextOut,DrvBitBlt
  koructl zoomer create --original 0,0,320,180 --zoomed 0,200,960,740 --factor 3 --border all
  koructl zoomer set 0xE1234560 --factor 4 --smooth 2
  koructl zoomer remove all
  koructl pair add FFFFFF,000000
  koructl install

"koructl COMMAND --help" tells more. A rectangle is LEFT,TOP,RIGHT,BOTTOM in pixels; right and bottom
are the first that do not belong to it.)";

} // namespace

koru::client::Control Open(const Surroundings& surroundings)
{
    return tools::OpenDriver(surroundings.openScreen).control;
}

CLI::App& AddGroup(CLI::App& app, const std::string& name, const std::string& help)
{
    CLI::App* const group = app.add_subcommand(name, help);
    group->require_subcommand(1);
    return *group;
}

int Run(const std::vector<std::string>& arguments, const Surroundings& surroundings)
{
    CLI::App app("Steers the Koru display driver: magnified views, and what is recorded.", "koructl");
    app.require_subcommand(1);
    app.footer(Examples);
    AddStatus(app, surroundings);
    AddZoomer(app, surroundings);
    AddPair(app, surroundings);
    AddCapture(app, surroundings);
    AddDark(app, surroundings);
    AddInstall(app, surroundings);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::Success& help) {
        return app.exit(help, surroundings.out, surroundings.err);
    } catch (const CLI::ParseError& error) {
        const auto unknown = app.remaining(true);
        surroundings.err << "koructl: " << (unknown.empty() ? error.what() : "\"" + unknown.front() + "\" is unknown")
                         << " (koructl --help tells what there is)\n";
        return 2;
    } catch (const std::exception& error) {
        surroundings.err << "koructl: " << error.what() << '\n';
        return 1;
    }
    return 0;
}

} // namespace koructl
