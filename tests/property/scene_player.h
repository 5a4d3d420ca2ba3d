#pragma once

// Plays a scene on the driver and on the model side by side.

#include <optional>

#include "tests/property/scene.h"

namespace property {

struct Difference {
    std::size_t step = 0;
    std::string text; // what differs after it
};

// The first step after which a screen or an answer differs; nothing when all agree.
std::optional<Difference> Play(const Scene& scene);

// The scene without the steps that the difference does not need.
Scene CutDown(Scene scene);

} // namespace property
