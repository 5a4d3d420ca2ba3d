#pragma once

// The driver of the screen as the control programs reach it.

#include <functional>
#include <string>

#include "client/control.h"

namespace tools {

struct Screen {
    koru::client::Transport transport; // to its driver
    std::int32_t width, height; // pixels
};

using OpenScreen = std::function<Screen()>; // throws std::runtime_error when there is no screen

struct Driver { // one that has answered as Koru
    koru::client::Control control;
    koru::client::Rect screen;
};

// Throws std::runtime_error when the screen is not driven by Koru.
Driver OpenDriver(const OpenScreen& openScreen);

// Throws std::runtime_error with the failure unless something is done.
void Require(bool done, const std::string& failure);

} // namespace tools
