#include "driver/enable_driver.h"

#include "capture/capture_state.h"
#include "chain/module_loader.h"
#include "driver/debug_print.h"
#include "driver/driver_values.h"
#include "driver/hook_tables.h"
#include "driver/option_file.h"
#include "driver/optional_entries.h"
#include "escape/color_pair_list.h"

namespace koru {

namespace {

    // Every version of the interface but the two known ones is answered with the older of them.
    ULONG DriverVersionFor(ULONG iEngineVersion)
    {
        if (LegacyDdi)
            return DDI_DRIVER_VERSION_NT4;
        return iEngineVersion == DDI_DRIVER_VERSION_NT5_01 ? DDI_DRIVER_VERSION_NT5_01 : DDI_DRIVER_VERSION_NT5;
    }

    void OfferHookTable(ULONG iEngineVersion, ULONG cj, DRVENABLEDATA* pded)
    {
        const HookTable table = LegacyDdi ? LegacyHookTable() : CurrentHookTable();
        if (cj >= sizeof(DRVENABLEDATA))
            pded->pdrvfn = table.entries;
        if (cj >= offsetof(DRVENABLEDATA, c) + sizeof(pded->c))
            pded->c = table.count;
        if (cj >= sizeof(pded->iDriverVersion))
            pded->iDriverVersion = DriverVersionFor(iEngineVersion);
    }

    // Engines enable the driver twice on one image: what exists already is kept.
    bool StartServices()
    {
        CaptureMask = 0;
        BitsSizeLimit = -1;
        BitsCaptureMask = 0xFFFFFFFF;
        if (!DriverSemaphore)
            DriverSemaphore = EngCreateSemaphore();
        ColorPairList::Clear();
        ReadOptionFile();
        return DriverSemaphore != nullptr;
    }

    BOOL EnableDriver(ULONG iEngineVersion, ULONG cj, DRVENABLEDATA* pded)
    {
        DebugPrint("DrvEnableDriver called.\n");
        LookUpOptionalEntries();
        if (iEngineVersion >= DDI_DRIVER_VERSION_NT5)
            LegacyDdi = FALSE;
        OfferHookTable(iEngineVersion, cj, pded);
        ModuleLoader.Construct(iEngineVersion);
        BOOL result = ModuleLoader.LoadRealDriver();
        HookDepth = 0;
        EngQueryPerformanceFrequency(&PerfFrequency);
        if (!AllocateCaptureBuffers())
            DebugPrint("\nEnableDriver Error, Memory allocation failed !!!! \n\n");
        else if (!StartServices())
            result = FALSE;
        DebugPrint("DrvEnableDriver is END\n");
        return result;
    }

} // namespace

} // namespace koru

extern "C" BOOL APIENTRY DrvEnableDriver(ULONG iEngineVersion, ULONG cj, DRVENABLEDATA* pded)
{
    return koru::EnableDriver(iEngineVersion, cj, pded);
}
