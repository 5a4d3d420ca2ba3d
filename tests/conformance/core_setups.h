#pragma once

#include "tests/conformance/session.h"

namespace conformance {

// The driver enabled, no device yet.
inline Setup WithoutDevice(ULONG engineVersion = DDI_DRIVER_VERSION_NT5_01)
{
    Setup setup;
    setup.engineVersion = engineVersion;
    setup.enableDevice = false;
    return setup;
}

inline Setup WithOptions(const std::string& file, ULONG engineVersion = DDI_DRIVER_VERSION_NT5_01)
{
    Setup setup;
    setup.engineVersion = engineVersion;
    setup.options = file;
    return setup;
}

// A real driver without some entry points.
inline Setup WithoutRealEntries(const std::set<ULONG>& missing, ULONG engineVersion = DDI_DRIVER_VERSION_NT5_01)
{
    Setup setup;
    setup.engineVersion = engineVersion;
    setup.frameBuffer.missing = missing;
    return setup;
}

inline Setup WithoutConsumer(Setup setup = {})
{
    setup.installConsumer = false;
    return setup;
}

inline Setup InMode(const engine::Mode& mode)
{
    Setup setup;
    setup.mode = mode;
    return setup;
}

} // namespace conformance
