#pragma once

#include <string>

#include "engine/core/engine.h"

namespace engine {

// Every service that src/platform/services.h declares, under its published name.
const Exports& Services();

// The service of this name, without regard to case; null when there is none.
PFN FindService(const std::string& name);

std::string LowerCase(std::string text);

} // namespace engine
