#include "chain/module_loader.h"

#include "chain/next_driver.h"
#include "driver/debug_print.h"
#include "driver/driver_values.h"
#include "driver/image_export.h"
#include "driver/pool.h"

namespace koru {

namespace {

    constexpr FLONG LegacyHooks =
        HOOK_BITBLT | HOOK_STRETCHBLT | HOOK_TEXTOUT | HOOK_PAINT | HOOK_LINETO | HOOK_COPYBITS;
    constexpr FLONG CurrentHooks =
        LegacyHooks | HOOK_STROKEPATH | HOOK_STRETCHBLTROP | HOOK_TRANSPARENTBLT | HOOK_ALPHABLEND | HOOK_GRADIENTFILL;
    static_assert(LegacyHooks == 0x51B && CurrentHooks == 0x3A53B);

} // namespace

constinit cModuleLoader ModuleLoader;

void cModuleLoader::Construct(ULONG engineVersion)
{
    engineVersion_ = engineVersion;
    one_ = 1;
    if (image_)
        return;
    real_ = {};
    hookFlags_ = 0;
}

BOOL cModuleLoader::LoadRealDriver()
{
    DebugPrint("cModuleLoader::LoadRealDriver is called\n");
    WCHAR* const fileName = DCMGetNextDriver();
    UnloadRealDriver();
    const BOOL result = fileName ? Load(fileName) : FALSE;
    FreeToPool(fileName);
    DebugPrint(result ? "LoadRealDriver finished: success!\n" : "LoadRealDriver finished: failed...\n");
    return result;
}

BOOL cModuleLoader::Load(WCHAR* fileName)
{
    image_ = EngLoadImage(fileName);
    if (!image_)
        return FALSE;
    const auto enable = FindExport<PFN_DrvEnableDriver>(image_, "DrvEnableDriver");
    if (!enable)
        return FALSE;
    const BOOL result = enable(engineVersion_, sizeof(real_), &real_);
    if (result)
        hookFlags_ = ComputeHookFlags();
    return result;
}

void cModuleLoader::UnloadRealDriver()
{
    DebugPrint("cModuleLoader::UnloadRealDriver is called\n");
    if (image_) {
        if (!LegacyDdi)
            DisableRealDriver();
        hookFlags_ = 0;
        real_ = {}; // the table lies in the image
        EngUnloadImage(image_);
    }
    image_ = nullptr;
    DebugPrint("cModuleLoader::UnloadRealDriver finished\n");
}

void cModuleLoader::DisableRealDriver() const
{
    if (const auto disable = FindExport<PFN_DrvDisableDriver>(image_, "DrvDisableDriver")) {
        DebugPrint("DisableDriver in real driver is called.\n");
        disable();
        return;
    }
    DebugPrint("DisableDriver is not exported in real driver 1\n");
    if (const auto disable = reinterpret_cast<PFN_DrvDisableDriver>(GetRealFunction(INDEX_DrvDisableDriver)))
        disable();
    else
        DebugPrint("Real driver has no DisableDriver function 2\n");
}

PFN cModuleLoader::GetRealFunction(ULONG index) const
{
    if (!real_.pdrvfn)
        return nullptr;
    for (ULONG i = 0; i < real_.c; ++i)
        if (real_.pdrvfn[i].iFunc == index)
            return real_.pdrvfn[i].pfn;
    return nullptr;
}

// Of the real driver's entry points only synchronisation counts: everything is drawn by the engine.
FLONG cModuleLoader::ComputeHookFlags() const
{
    const bool synchronizes = GetRealFunction(INDEX_DrvSynchronize) != nullptr;
    if (LegacyDdi == TRUE)
        return LegacyHooks | (synchronizes ? HOOK_SYNCHRONIZE : 0);
    const bool synchronizesSurfaces = GetRealFunction(INDEX_DrvSynchronizeSurface) != nullptr;
    return CurrentHooks | (synchronizes || synchronizesSurfaces ? HOOK_SYNCHRONIZE : 0);
}

} // namespace koru
