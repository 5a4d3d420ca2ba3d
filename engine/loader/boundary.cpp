#include "engine/loader/boundary.h"

#include <algorithm>
#include <iterator>

#include "engine/core/exports.h"

namespace engine {

namespace {

    const std::string Driver = "the driver's ", Real = "the real driver's ", Engines = "the engine's ";
    constexpr ULONG GetNextDriverBytes = 20, LargestTable = 128;

    struct EntryPoint {
        ULONG index;
        const char* name;
        ULONG argumentBytes;
    };

#define ENTRY_POINT(name)                                                                                              \
    {                                                                                                                  \
        INDEX_##name, #name, ArgumentBytes(PFN_##name())                                                               \
    }
    const EntryPoint entryPoints[] = {
        ENTRY_POINT(DrvEnablePDEV),
        ENTRY_POINT(DrvCompletePDEV),
        ENTRY_POINT(DrvDisablePDEV),
        ENTRY_POINT(DrvEnableSurface),
        ENTRY_POINT(DrvDisableSurface),
        ENTRY_POINT(DrvAssertMode),
        ENTRY_POINT(DrvDisableDriver),
        ENTRY_POINT(DrvCreateDeviceBitmap),
        ENTRY_POINT(DrvDeleteDeviceBitmap),
        ENTRY_POINT(DrvRealizeBrush),
        ENTRY_POINT(DrvDitherColor),
        ENTRY_POINT(DrvStrokePath),
        ENTRY_POINT(DrvFillPath),
        ENTRY_POINT(DrvStrokeAndFillPath),
        ENTRY_POINT(DrvPaint),
        ENTRY_POINT(DrvBitBlt),
        ENTRY_POINT(DrvCopyBits),
        ENTRY_POINT(DrvStretchBlt),
        ENTRY_POINT(DrvSetPalette),
        ENTRY_POINT(DrvTextOut),
        ENTRY_POINT(DrvEscape),
        ENTRY_POINT(DrvSetPointerShape),
        ENTRY_POINT(DrvMovePointer),
        ENTRY_POINT(DrvLineTo),
        ENTRY_POINT(DrvSynchronize),
        ENTRY_POINT(DrvSaveScreenBits),
        ENTRY_POINT(DrvGetModes),
        ENTRY_POINT(DrvIcmSetDeviceGammaRamp),
        ENTRY_POINT(DrvGradientFill),
        ENTRY_POINT(DrvStretchBltROP),
        ENTRY_POINT(DrvPlgBlt),
        ENTRY_POINT(DrvAlphaBlend),
        ENTRY_POINT(DrvTransparentBlt),
        ENTRY_POINT(DrvSynchronizeSurface),
    };
#undef ENTRY_POINT

    template<class Matches> const EntryPoint* FindEntryPoint(Matches matches)
    {
        const auto found = std::find_if(std::begin(entryPoints), std::end(entryPoints), matches);
        return found == std::end(entryPoints) ? nullptr : found;
    }

} // namespace

PFN Boundary::Add(SeamFunction function)
{
    PFN& seam = added_[{function.name, function.target}];
    if (!seam)
        seam = seams_.Add(std::move(function));
    return seam;
}

PFN Boundary::EnableDriver(PFN function)
{
    return Enable(Driver, function);
}

PFN Boundary::Enable(const std::string& owner, PFN function)
{
    const auto finish = [this, owner](const ULONG* arguments, ULONG result) {
        auto* const data = reinterpret_cast<DRVENABLEDATA*>(arguments[2]);
        if (result && data && arguments[1] >= sizeof(*data))
            ReplaceTable(owner, *data);
        return result;
    };
    return Add({owner + "DrvEnableDriver", function, ArgumentBytes(PFN_DrvEnableDriver()), true, finish});
}

void Boundary::ReplaceTable(const std::string& owner, DRVENABLEDATA& data)
{
    if (!data.pdrvfn || data.c > LargestTable)
        return;
    std::vector<DRVFN>& table = tables_.emplace_back(data.pdrvfn, data.pdrvfn + data.c);
    for (DRVFN& entry : table)
        if (const EntryPoint* const known =
                FindEntryPoint([&entry](const EntryPoint& point) { return point.index == entry.iFunc; });
            known && entry.pfn)
            entry.pfn = Add({owner + known->name, entry.pfn, known->argumentBytes, true, {}});
    data.pdrvfn = table.data();
}

Exports Boundary::Services()
{
    Exports services = engine::Services();
    for (auto& [name, function] : services)
        function = Service(name, function);
    return services;
}

PFN Boundary::Service(const std::string& name, PFN function)
{
    SeamFunction service = {Engines + name, function, ServiceArgumentBytes(name), true, {}};
    if (name == "EngFindImageProcAddress")
        service.finish = [this](const ULONG* arguments, ULONG result) {
            const auto* const wanted = reinterpret_cast<const char*>(arguments[1]);
            return result ? reinterpret_cast<ULONG>(Found(arguments[0] == 0, wanted, reinterpret_cast<PFN>(result)))
                          : 0;
        };
    return Add(std::move(service));
}

PFN Boundary::Found(bool ofEngine, const std::string& name, PFN function)
{
    if (ofEngine)
        return Add({Engines + name, function, ServiceArgumentBytes(name), true, {}});
    if (name == "DrvEnableDriver")
        return Enable(Real, function);
    if (name == "GetNextDriver")
        return Add({"the chain manager's " + name, function, GetNextDriverBytes, false, {}});
    const EntryPoint* const known = FindEntryPoint([&name](const EntryPoint& point) { return point.name == name; });
    return known ? Add({Real + name, function, known->argumentBytes, true, {}}) : function;
}

} // namespace engine
