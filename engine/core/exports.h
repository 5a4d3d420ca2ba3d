#pragma once

#include <string>

#include "engine/core/engine.h"

namespace engine {

// Every service that src/platform/services.h declares, under its published name.
const Exports& Services();

// An argument as it lies on the stack.
template<class Argument> struct alignas(4) StackSlot {
    Argument value;
};

// The bytes of arguments that a function takes off the stack.
template<class Result, class... Arguments> constexpr ULONG ArgumentBytes(Result(APIENTRY*)(Arguments...))
{
    return (0 + ... + sizeof(StackSlot<Arguments>));
}

// Those of a service, without regard to case; 0 when there is none of this name.
ULONG ServiceArgumentBytes(const std::string& name);

// The service of this name, without regard to case; null when there is none.
PFN FindService(const std::string& name);

std::string LowerCase(std::string text);

} // namespace engine
