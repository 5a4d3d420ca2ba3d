#pragma once

// The koruspy program but for what is Windows' own.

#include <memory>
#include <string>
#include <vector>

#include "tools/control/driver.h"
#include "tools/koruspy/spy.h"

namespace koruspy {

struct Surroundings {
    tools::OpenScreen openScreen;
    // These throw std::runtime_error with one line when the system refuses.
    std::function<std::unique_ptr<Tap>()> openTap;
    std::function<void(const std::string& path)> installModule; // korutap.sys, as a service that is started by need
    std::function<void()> removeModule;
    std::function<bool(double mostSeconds)> wait; // false once the user has asked for the end
    std::function<double()> clock; // seconds
    std::ostream& out; // binary
    std::ostream& err;
};

// Arguments come without the program's name. Answers the exit code: 0; 1 when something failed and 2 when the
// arguments were not understood, with one line on `err`.
int Run(const std::vector<std::string>& arguments, const Surroundings& surroundings);

} // namespace koruspy
