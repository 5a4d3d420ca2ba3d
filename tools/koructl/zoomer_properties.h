#pragma once

// What can be set of a zoomer from the command line, and how it is told again.

#include <functional>
#include <span>
#include <string>

#include "client/zoomers.h"

namespace koructl {

// Puts a value that was understood into a zoomer; false when the driver refuses.
using Setter = std::function<bool(const koru::client::ZoomerControl&, koru::client::ZoomerId)>;

struct ZoomerProperty {
    const char* name; // the option's, without "--"
    const char* help;
    Setter (*parse)(const std::string& text); // throws std::runtime_error
    std::string (*tell)(const koru::client::ZoomerControl&, koru::client::ZoomerId); // as `parse` takes it
};

std::span<const ZoomerProperty> ZoomerProperties();

} // namespace koructl
