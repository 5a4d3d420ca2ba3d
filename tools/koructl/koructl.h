#pragma once

// The koructl program but for what is Windows' own: its commands, and what they do.

#include <ostream>
#include <string>
#include <vector>

#include "tools/control/driver.h"
#include "tools/koructl/installation.h"

namespace koructl {

struct Surroundings {
    tools::OpenScreen openScreen;
    Machine& machine;
    std::ostream& out;
    std::ostream& err;
};

// Runs one command, given without the program's name. Answers the exit code: 0; 1 when the command failed and
// 2 when it was not understood, with one line on `err`.
int Run(const std::vector<std::string>& arguments, const Surroundings& surroundings);

} // namespace koructl
