#include "engine/raster/hook_call.h"

#include <string>

namespace engine::raster {
namespace {

    constexpr int DeepestNesting = 32;
    thread_local int nesting = 0;

} // namespace

BOOL Refuse(const char* service, const char* what)
{
    Engine::Current().Report(std::string(service) + ": " + what);
    return FALSE;
}

Surface* Given(const char* service, const SURFOBJ* pso, const char* what)
{
    if (pso)
        return SurfaceBehind(pso); // reports by itself
    Refuse(service, (std::string("null ") + what).c_str());
    return nullptr;
}

NestedHook::NestedHook(const char* service)
    : allowed_(nesting < DeepestNesting)
{
    ++nesting;
    if (!allowed_)
        Refuse(service, "called for the same surface without end");
}

NestedHook::~NestedHook()
{
    --nesting;
}

} // namespace engine::raster
