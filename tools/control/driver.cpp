#include "tools/control/driver.h"

#include <stdexcept>

namespace tools {

namespace {

    constexpr std::uint16_t KnownInterface = 303;

} // namespace

Driver OpenDriver(const OpenScreen& openScreen)
{
    Screen screen = openScreen();
    Driver driver = {koru::client::Control(std::move(screen.transport)), {0, 0, screen.width, screen.height}};
    Require(driver.control.Answers(koru::client::Escape::Koru) && driver.control.InterfaceVersion() == KnownInterface,
            "Koru does not drive this screen; is it installed, and has the machine been restarted since?");
    return driver;
}

void Require(bool done, const std::string& failure)
{
    if (!done)
        throw std::runtime_error(failure);
}

} // namespace tools
