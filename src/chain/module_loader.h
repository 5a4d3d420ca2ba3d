#pragma once

#include "platform/platform.h"

namespace koru {

// Loads the next driver of the display chain and hands out its entry points.
class cModuleLoader {
public:
    // Starts anew for an engine of this version. An image that is still held stays, with its table,
    // until LoadRealDriver unloads it.
    void Construct(ULONG engineVersion);

    // What the real DrvEnableDriver answered; 0 on any failure. An image that was loaded, but does
    // not enable, stays loaded.
    BOOL LoadRealDriver();

    void UnloadRealDriver();

    // The first entry of the real driver's table with this INDEX_Drv number, or null.
    PFN GetRealFunction(ULONG index) const;

    // HOOK_* for device-managed surfaces; 0 when no driver is loaded.
    FLONG HookFlags() const { return hookFlags_; }

private:
    BOOL Load(WCHAR* fileName);
    void DisableRealDriver() const;
    FLONG ComputeHookFlags() const;

    HANDLE image_ = nullptr;
    ULONG engineVersion_ = 0;
    ULONG one_ = 0; // 1 once constructed; not read
    DRVENABLEDATA real_ = {};
    FLONG hookFlags_ = 0;
};

extern cModuleLoader ModuleLoader;

// The real driver's entry point of this INDEX_Drv number as a Function (a PFN_Drv type), or null.
template<class Function> Function RealFunction(ULONG index)
{
    return reinterpret_cast<Function>(ModuleLoader.GetRealFunction(index));
}

} // namespace koru
