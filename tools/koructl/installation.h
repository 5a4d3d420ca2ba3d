#pragma once

// Puts Koru in front of the machine's display driver, and takes it away again. Nothing happens to the running
// screen: the system reads what is changed here when it starts the next time.
//
// The system tries the drivers that the registry lists for its video device until one starts. Koru is put at
// the head of that list; the list as it was is kept beside it. The driver that headed it becomes the last of
// Koru's own chain, by name in korulink.ini.

#include <string>

#include "tools/koructl/changes.h"

namespace koructl {

struct InstallOptions {
    std::string next; // the driver behind Koru; empty: the first of the system's list
    unsigned videoDevice = 0; // whose driver it is, as the system numbers them
    bool evenVga = false; // in front of the driver of safe and VGA mode, which is then no way back
};

// Both throw std::runtime_error with one line when they cannot do it, and leave everything as it was. They
// answer lines for the user.
std::string Install(Machine& machine, const InstallOptions& options);
std::string Uninstall(Machine& machine);

} // namespace koructl
