#include "tests/engine/core_scripted_driver.h"

#include <algorithm>
#include <cstring>

namespace scripted {

std::vector<std::string> calls;
DEVMODEW mode;
std::vector<HSURF> patterns;
ULONG capsSize;

namespace {

    Script script;
    HDEV device;
    std::vector<DRVFN> table;

    const auto Dhpdev = reinterpret_cast<DHPDEV>(0x77);
    const auto ScreenHandle = reinterpret_cast<DHSURF>(0x55);

    DHPDEV APIENTRY EnablePdev(DEVMODEW* pdm, WCHAR*, ULONG cPat, HSURF* phsurfPatterns, ULONG cjCaps, ULONG*,
                               ULONG cjDevInfo, DEVINFO* pdi, HDEV, WCHAR*, HANDLE)
    {
        calls.push_back("EnablePDEV " + std::to_string(cjDevInfo));
        mode = *pdm;
        patterns.assign(phsurfPatterns, phsurfPatterns + cPat);
        capsSize = cjCaps;
        std::memset(pdi, 1, cjDevInfo + script.writesBehindDevinfo);
        return Dhpdev;
    }

    void APIENTRY CompletePdev(DHPDEV, HDEV hdev)
    {
        calls.push_back("CompletePDEV");
        device = hdev;
    }

    void APIENTRY DisablePdev(DHPDEV)
    {
        calls.push_back("DisablePDEV");
    }

    HSURF APIENTRY EnableSurface(DHPDEV)
    {
        calls.push_back("EnableSurface");
        if (script.primaryInstead)
            return script.primaryInstead;
        const HSURF surface = EngCreateDeviceSurface(ScreenHandle, {8, 8}, BMF_32BPP);
        if (script.associates)
            EngAssociateSurface(surface, device, script.hooks);
        return surface;
    }

    void APIENTRY DisableSurface(DHPDEV)
    {
        calls.push_back("DisableSurface");
    }

    HBITMAP APIENTRY CreateDeviceBitmap(DHPDEV, SIZEL sizl, ULONG iFormat)
    {
        const auto dhsurf = reinterpret_cast<DHSURF>(static_cast<std::uintptr_t>(sizl.cx));
        const HBITMAP bitmap = EngCreateDeviceBitmap(dhsurf, sizl, iFormat);
        EngAssociateSurface(reinterpret_cast<HSURF>(bitmap), device, script.hooks);
        return bitmap;
    }

    void APIENTRY DeleteDeviceBitmap(DHSURF dhsurf)
    {
        calls.push_back("DeleteDeviceBitmap " + std::to_string(reinterpret_cast<std::uintptr_t>(dhsurf)));
    }

    template<class Signature> struct Noting;
    template<class... Arguments> struct Noting<BOOL(APIENTRY*)(Arguments...)> {
        template<const char* Name> static BOOL APIENTRY Call(Arguments...)
        {
            calls.push_back(Name);
            return 42;
        }
    };

    template<class Function> DRVFN Entry(ULONG index, Function* function)
    {
        return {index, reinterpret_cast<PFN>(function)};
    }

    constexpr char BitBlt[] = "BitBlt", CopyBits[] = "CopyBits", StretchBlt[] = "StretchBlt";
    constexpr char StretchBltRop[] = "StretchBltROP", PlgBlt[] = "PlgBlt", StrokePath[] = "StrokePath";
    constexpr char FillPath[] = "FillPath", StrokeAndFillPath[] = "StrokeAndFillPath", Paint[] = "Paint";
    constexpr char TextOut[] = "TextOut", LineTo[] = "LineTo", AlphaBlend[] = "AlphaBlend";
    constexpr char GradientFill[] = "GradientFill", TransparentBlt[] = "TransparentBlt";

    std::vector<DRVFN> WholeTable()
    {
        return {
            Entry(INDEX_DrvEnablePDEV, EnablePdev),
            Entry(INDEX_DrvCompletePDEV, CompletePdev),
            Entry(INDEX_DrvDisablePDEV, DisablePdev),
            Entry(INDEX_DrvEnableSurface, EnableSurface),
            Entry(INDEX_DrvDisableSurface, DisableSurface),
            Entry(INDEX_DrvCreateDeviceBitmap, CreateDeviceBitmap),
            Entry(INDEX_DrvDeleteDeviceBitmap, DeleteDeviceBitmap),
            Entry(INDEX_DrvBitBlt, Noting<PFN_DrvBitBlt>::Call<BitBlt>),
            Entry(INDEX_DrvCopyBits, Noting<PFN_DrvCopyBits>::Call<CopyBits>),
            Entry(INDEX_DrvStretchBlt, Noting<PFN_DrvStretchBlt>::Call<StretchBlt>),
            Entry(INDEX_DrvStretchBltROP, Noting<PFN_DrvStretchBltROP>::Call<StretchBltRop>),
            Entry(INDEX_DrvPlgBlt, Noting<PFN_DrvPlgBlt>::Call<PlgBlt>),
            Entry(INDEX_DrvStrokePath, Noting<PFN_DrvStrokePath>::Call<StrokePath>),
            Entry(INDEX_DrvFillPath, Noting<PFN_DrvFillPath>::Call<FillPath>),
            Entry(INDEX_DrvStrokeAndFillPath, Noting<PFN_DrvStrokeAndFillPath>::Call<StrokeAndFillPath>),
            Entry(INDEX_DrvPaint, Noting<PFN_DrvPaint>::Call<Paint>),
            Entry(INDEX_DrvTextOut, Noting<PFN_DrvTextOut>::Call<TextOut>),
            Entry(INDEX_DrvLineTo, Noting<PFN_DrvLineTo>::Call<LineTo>),
            Entry(INDEX_DrvAlphaBlend, Noting<PFN_DrvAlphaBlend>::Call<AlphaBlend>),
            Entry(INDEX_DrvGradientFill, Noting<PFN_DrvGradientFill>::Call<GradientFill>),
            Entry(INDEX_DrvTransparentBlt, Noting<PFN_DrvTransparentBlt>::Call<TransparentBlt>),
        };
    }

    BOOL APIENTRY EnableDriver(ULONG, ULONG, DRVENABLEDATA* pded)
    {
        table = WholeTable();
        std::erase_if(table, [](const DRVFN& entry) {
            return std::find(script.missing.begin(), script.missing.end(), entry.iFunc) != script.missing.end();
        });
        *pded = {DDI_DRIVER_VERSION_NT5, static_cast<ULONG>(table.size()), script.emptyTable ? nullptr : table.data()};
        return TRUE;
    }

} // namespace

void Register(const Script& given)
{
    script = given;
    calls.clear();
    engine::Engine::Current().RegisterImage(u"scripted", {{"DrvEnableDriver", reinterpret_cast<PFN>(&EnableDriver)}});
}

} // namespace scripted
