#include "engine/devices/frame_buffer.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>

#include "engine/core/engine.h"
#include "engine/devices/frame_buffer_modes.h"

namespace engine {

namespace {

    struct Pdev {
        FrameBufferMode mode;
        HDEV hdev = nullptr;
        HSURF surface = nullptr;
    };

    FrameBufferOptions Options;
    std::vector<RealCall> Calls;
    RealEnable Enabled;
    ULONG EscapeResult = 1;
    std::map<DHPDEV, std::unique_ptr<Pdev>> Pdevs;
    std::vector<DRVFN> Table;

    template<class Argument> ULONG AsNumber(Argument argument)
    {
        if constexpr (std::is_pointer_v<Argument>)
            return static_cast<ULONG>(reinterpret_cast<std::uintptr_t>(argument));
        else
            return static_cast<ULONG>(argument);
    }

    // Notes the call; false when it is to fail.
    template<class... Arguments> bool Record(ULONG index, Arguments... arguments)
    {
        Calls.push_back({index, {AsNumber(arguments)...}});
        return Options.refuseAt != index;
    }

    Pdev* FindPdev(DHPDEV dhpdev)
    {
        const auto found = Pdevs.find(dhpdev);
        if (found != Pdevs.end())
            return found->second.get();
        Engine::Current().Report("real driver: not a PDEV of it");
        return nullptr;
    }

    template<class Structure> void Give(const Structure& structure, ULONG size, void* target)
    {
        if (target)
            std::memcpy(target, &structure, std::min<std::size_t>(size, sizeof(structure)));
    }

    DHPDEV APIENTRY EnablePdev(DEVMODEW* pdm, WCHAR* pwszLogAddress, ULONG cPat, HSURF* phsurfPatterns, ULONG cjCaps,
                               ULONG* pdevcaps, ULONG cjDevInfo, DEVINFO* pdi, HDEV hdev, WCHAR* pwszDeviceName,
                               HANDLE hDriver)
    {
        FrameBufferMode mode;
        const bool goes = Record(INDEX_DrvEnablePDEV, pdm, pwszLogAddress, cPat, phsurfPatterns, cjCaps, pdevcaps,
                                 cjDevInfo, pdi, hdev, pwszDeviceName, hDriver);
        if (!goes || !pdm || !ChooseMode(*pdm, Options.fiveFiveFive, mode))
            return nullptr;
        Give(DescribeDevice(mode), cjCaps, pdevcaps);
        Give(DescribeGraphics(mode), cjDevInfo, pdi);
        auto pdev = std::make_unique<Pdev>();
        pdev->mode = mode;
        const auto dhpdev = reinterpret_cast<DHPDEV>(pdev.get());
        Pdevs[dhpdev] = std::move(pdev);
        return dhpdev;
    }

    void APIENTRY CompletePdev(DHPDEV dhpdev, HDEV hdev)
    {
        Record(INDEX_DrvCompletePDEV, dhpdev, hdev);
        if (Pdev* const pdev = FindPdev(dhpdev))
            pdev->hdev = hdev;
    }

    void APIENTRY DisablePdev(DHPDEV dhpdev)
    {
        Record(INDEX_DrvDisablePDEV, dhpdev);
        if (FindPdev(dhpdev))
            Pdevs.erase(dhpdev);
    }

    HSURF CreatePicture(const Pdev& pdev)
    {
        const SIZEL size = {static_cast<LONG>(pdev.mode.width), static_cast<LONG>(pdev.mode.height)};
        const ULONG format = pdev.mode.layout.iBitmapFormat;
        const auto padded = static_cast<LONG>((RowBytes(format, size.cx) + 3) & ~3u);
        const LONG rowBytes = Options.lDelta == 0 ? padded : std::abs(Options.lDelta);
        const FLONG flags = Options.lDelta < 0 ? 0 : BMF_TOPDOWN;
        return reinterpret_cast<HSURF>(EngCreateBitmap(size, rowBytes, format, flags, nullptr));
    }

    HSURF APIENTRY EnableSurface(DHPDEV dhpdev)
    {
        const bool goes = Record(INDEX_DrvEnableSurface, dhpdev);
        Pdev* const pdev = FindPdev(dhpdev);
        const HSURF surface = goes && pdev ? CreatePicture(*pdev) : nullptr;
        if (!surface)
            return nullptr;
        if (!EngAssociateSurface(surface, pdev->hdev, 0)) {
            EngDeleteSurface(surface);
            return nullptr;
        }
        FindSurface(surface)->layout = pdev->mode.layout;
        return pdev->surface = surface;
    }

    void APIENTRY DisableSurface(DHPDEV dhpdev)
    {
        Record(INDEX_DrvDisableSurface, dhpdev);
        Pdev* const pdev = FindPdev(dhpdev);
        if (!pdev || !pdev->surface)
            return;
        EngDeleteSurface(pdev->surface);
        pdev->surface = nullptr;
    }

    BOOL APIENTRY AssertMode(DHPDEV dhpdev, BOOL bEnable)
    {
        return Record(INDEX_DrvAssertMode, dhpdev, bEnable);
    }

    ULONG APIENTRY GetModes(HANDLE hDriver, ULONG cjSize, DEVMODEW* pdm)
    {
        if (!Record(INDEX_DrvGetModes, hDriver, cjSize, pdm))
            return 0;
        const std::vector<DEVMODEW> modes = ListedModes();
        if (!pdm)
            return static_cast<ULONG>(modes.size() * sizeof(DEVMODEW));
        const std::size_t given = std::min<std::size_t>(modes.size(), cjSize / sizeof(DEVMODEW));
        std::copy_n(modes.begin(), given, pdm);
        return static_cast<ULONG>(given * sizeof(DEVMODEW));
    }

    BOOL APIENTRY CopyBits(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest,
                           POINTL* pptlSrc)
    {
        if (!Record(INDEX_DrvCopyBits, psoDest, psoSrc, pco, pxlo, prclDest, pptlSrc))
            return FALSE;
        return EngCopyBits(psoDest, psoSrc, pco, pxlo, prclDest, pptlSrc);
    }

    BOOL APIENTRY SetPalette(DHPDEV dhpdev, PALOBJ* ppalo, FLONG fl, ULONG iStart, ULONG cColors)
    {
        const bool goes = Record(INDEX_DrvSetPalette, dhpdev, ppalo, fl, iStart, cColors);
        const Pdev* const pdev = FindPdev(dhpdev);
        Surface* const picture = pdev ? FindSurface(pdev->surface) : nullptr;
        if (!goes || !picture || !ppalo)
            return FALSE;
        std::vector<COLORREF>& palette = picture->layout.palette;
        if (iStart >= palette.size() || cColors > palette.size() - iStart)
            return FALSE;
        PALOBJ_cGetColors(ppalo, iStart, cColors, palette.data() + iStart);
        return TRUE;
    }

    ULONG APIENTRY Escape(SURFOBJ* pso, ULONG iEsc, ULONG cjIn, void* pvIn, ULONG cjOut, void* pvOut)
    {
        if (!Record(INDEX_DrvEscape, pso, iEsc, cjIn, pvIn, cjOut, pvOut))
            return 0;
        if (pvOut && cjOut >= 4)
            std::memcpy(pvOut, "REAL", 4);
        return EscapeResult;
    }

    BOOL APIENTRY RealizeBrush(BRUSHOBJ* pbo, SURFOBJ* psoTarget, SURFOBJ* psoPattern, SURFOBJ* psoMask, XLATEOBJ* pxlo,
                               ULONG iHatch)
    {
        return Record(INDEX_DrvRealizeBrush, pbo, psoTarget, psoPattern, psoMask, pxlo, iHatch);
    }

    ULONG APIENTRY DitherColor(DHPDEV dhpdev, ULONG iMode, ULONG rgb, ULONG* pul)
    {
        const bool goes = Record(INDEX_DrvDitherColor, dhpdev, iMode, rgb, pul);
        const Pdev* const pdev = FindPdev(dhpdev);
        if (goes && pdev && pul)
            *pul = pdev->mode.layout.PixelOf(rgb);
        return DCR_SOLID;
    }

    ULONG APIENTRY SetPointerShape(SURFOBJ* pso, SURFOBJ* psoMask, SURFOBJ* psoColor, XLATEOBJ* pxlo, LONG xHot,
                                   LONG yHot, LONG x, LONG y, RECTL* prcl, FLONG fl)
    {
        const bool goes = Record(INDEX_DrvSetPointerShape, pso, psoMask, psoColor, pxlo, xHot, yHot, x, y, prcl, fl);
        return goes ? SPS_ACCEPT_NOEXCLUDE : SPS_ERROR;
    }

    void APIENTRY MovePointer(SURFOBJ* pso, LONG x, LONG y, RECTL* prcl)
    {
        Record(INDEX_DrvMovePointer, pso, x, y, prcl);
    }

    void APIENTRY Synchronize(DHPDEV dhpdev, RECTL* prcl)
    {
        Record(INDEX_DrvSynchronize, dhpdev, prcl);
    }

    void APIENTRY SynchronizeSurface(SURFOBJ* pso, RECTL* prcl, FLONG fl)
    {
        Record(INDEX_DrvSynchronizeSurface, pso, prcl, fl);
    }

    BOOL APIENTRY SetGammaRamp(DHPDEV dhpdev, ULONG iFormat, void* lpRamp)
    {
        return Record(INDEX_DrvIcmSetDeviceGammaRamp, dhpdev, iFormat, lpRamp);
    }

    void APIENTRY DisableDriver()
    {
        Record(INDEX_DrvDisableDriver);
    }

    template<class Function> DRVFN Entry(ULONG index, Function* function)
    {
        return {index, reinterpret_cast<PFN>(function)};
    }

    std::vector<DRVFN> OfferedFunctions()
    {
        std::vector<DRVFN> functions = {
            Entry(INDEX_DrvEnablePDEV, EnablePdev),
            Entry(INDEX_DrvCompletePDEV, CompletePdev),
            Entry(INDEX_DrvDisablePDEV, DisablePdev),
            Entry(INDEX_DrvEnableSurface, EnableSurface),
            Entry(INDEX_DrvDisableSurface, DisableSurface),
            Entry(INDEX_DrvAssertMode, AssertMode),
            Entry(INDEX_DrvGetModes, GetModes),
            Entry(INDEX_DrvCopyBits, CopyBits),
            Entry(INDEX_DrvSetPalette, SetPalette),
            Entry(INDEX_DrvEscape, Escape),
            Entry(INDEX_DrvRealizeBrush, RealizeBrush),
            Entry(INDEX_DrvDitherColor, DitherColor),
            Entry(INDEX_DrvSetPointerShape, SetPointerShape),
            Entry(INDEX_DrvMovePointer, MovePointer),
            Entry(INDEX_DrvSynchronize, Synchronize),
            Entry(INDEX_DrvSynchronizeSurface, SynchronizeSurface),
            Entry(INDEX_DrvIcmSetDeviceGammaRamp, SetGammaRamp),
            Entry(INDEX_DrvDisableDriver, DisableDriver),
        };
        std::erase_if(functions, [](const DRVFN& entry) { return Options.missing.contains(entry.iFunc); });
        return functions;
    }

    BOOL APIENTRY EnableDriver(ULONG iEngineVersion, ULONG cj, DRVENABLEDATA* pded)
    {
        Enabled = {iEngineVersion, cj, Enabled.times + 1};
        if (Options.refuses || cj < sizeof(DRVENABLEDATA))
            return FALSE;
        Table = OfferedFunctions();
        *pded = {iEngineVersion, static_cast<ULONG>(Table.size()), Table.data()};
        return TRUE;
    }

} // namespace

void RegisterFrameBuffer(const FrameBufferOptions& options, const std::u16string& name)
{
    Options = options;
    Calls.clear();
    Enabled = {};
    EscapeResult = 1;
    Pdevs.clear();
    Exports exports;
    if (options.offersEnableDriver)
        exports["DrvEnableDriver"] = reinterpret_cast<PFN>(&EnableDriver);
    if (options.exportsDisableDriver)
        exports["DrvDisableDriver"] = reinterpret_cast<PFN>(&DisableDriver);
    Engine::Current().RegisterImage(name, exports);
}

const std::vector<RealCall>& RealCalls()
{
    return Calls;
}

void ForgetRealCalls()
{
    Calls.clear();
}

const RealEnable& LastRealEnable()
{
    return Enabled;
}

void AnswerEscapesWith(ULONG result)
{
    EscapeResult = result;
}

Surface* FrameBufferPicture(DHPDEV dhpdev)
{
    const auto found = Pdevs.find(dhpdev);
    return found == Pdevs.end() ? nullptr : FindSurface(found->second->surface);
}

} // namespace engine
