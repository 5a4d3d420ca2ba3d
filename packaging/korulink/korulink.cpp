// korulink.dll: stands between Koru and a display driver without DrvCopyBits, as plain frame-buffer drivers
// are, and adds that call. Everything else goes to the next driver directly: its functions stand in the table
// that is handed on.

#include "packaging/name_file.h"
#include "platform/constants.h"
#include "platform/entry_points.h"
#include "platform/runtime.h"
#include "platform/services.h"

namespace koru {

namespace {

    constexpr NameFile NextFile = {
        .bare = u"korulink.ini", .path = u"\\SystemRoot\\System32\\korulink.ini", .otherwise = u"framebuf"};
    constexpr WCHAR Extension[] = u".dll";

    constexpr ULONG MostFunctions = 128; // of the next driver; the interface has 90
    constexpr ULONG OwnFunctions = 2;

    constinit HANDLE NextImage = nullptr;
    constinit DRVENABLEDATA Next = {};
    constinit DRVFN Table[MostFunctions + OwnFunctions] = {};
    constinit ULONG TableSize = 0;
    constinit bool Enabling = false;

    PFN NextFunction(ULONG index)
    {
        for (ULONG i = 0; i < Next.c; ++i)
            if (Next.pdrvfn[i].iFunc == index)
                return Next.pdrvfn[i].pfn;
        return nullptr;
    }

    bool LoadNext()
    {
        if (NextImage)
            return true; // enabled again on the same image
        const DriverName name = ReadDriverName(NextFile);
        WCHAR fileName[MostNameCharacters + sizeof(Extension) / sizeof(WCHAR)];
        memcpy(fileName, name.text, name.length * sizeof(WCHAR));
        memcpy(fileName + name.length, Extension, sizeof(Extension));
        NextImage = EngLoadImage(fileName);
        return NextImage != nullptr;
    }

    void UnloadNext()
    {
        Next = {};
        if (NextImage)
            EngUnloadImage(NextImage);
        NextImage = nullptr;
    }

    bool EnableNext(ULONG iEngineVersion)
    {
        Next = {};
        const auto enable = reinterpret_cast<PFN_DrvEnableDriver>(
            EngFindImageProcAddress(NextImage, const_cast<char*>("DrvEnableDriver")));
        if (enable && enable(iEngineVersion, sizeof(Next), &Next))
            return true;
        Next = {}; // what a driver that refuses has left there means nothing
        return false;
    }

    // The engine and Koru call it before they enable again or unload this image.
    void APIENTRY DisableDriver()
    {
        if (const auto disable = reinterpret_cast<PFN_DrvDisableDriver>(NextFunction(INDEX_DrvDisableDriver)))
            disable();
        UnloadNext();
    }

    // On a surface that a driver manages the engine's copy would come back to the driver at the head of the
    // chain, and from there to this one.
    BOOL APIENTRY CopyBits(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest,
                           POINTL* pptlSrc)
    {
        if (!psoDest || !psoSrc || psoDest->iType != STYPE_BITMAP || psoSrc->iType != STYPE_BITMAP)
            return FALSE;
        return EngCopyBits(psoDest, psoSrc, pco, pxlo, prclDest, pptlSrc);
    }

    bool FillTable()
    {
        if (Next.c > MostFunctions || (Next.c != 0 && !Next.pdrvfn)) {
            Next.c = Next.pdrvfn ? MostFunctions : 0; // the disable entry is looked for among those
            return false;
        }
        TableSize = 0;
        for (ULONG i = 0; i < Next.c; ++i)
            if (Next.pdrvfn[i].iFunc != INDEX_DrvDisableDriver)
                Table[TableSize++] = Next.pdrvfn[i];
        Table[TableSize++] = {INDEX_DrvDisableDriver, reinterpret_cast<PFN>(&DisableDriver)};
        if (!NextFunction(INDEX_DrvCopyBits))
            Table[TableSize++] = {INDEX_DrvCopyBits, reinterpret_cast<PFN>(&CopyBits)};
        return true;
    }

    BOOL Enable(ULONG iEngineVersion, DRVENABLEDATA& data)
    {
        if (!LoadNext())
            return FALSE;
        if (!EnableNext(iEngineVersion)) {
            UnloadNext();
            return FALSE;
        }
        if (!FillTable()) {
            DisableDriver();
            return FALSE;
        }
        data = {Next.iDriverVersion, TableSize, Table};
        return TRUE;
    }

} // namespace

} // namespace koru

// A chain that leads back here is refused: the name in korulink.ini may be this driver's own.
extern "C" BOOL APIENTRY DrvEnableDriver(ULONG iEngineVersion, ULONG cj, DRVENABLEDATA* pded)
{
    if (koru::Enabling || cj < sizeof(*pded) || !pded)
        return FALSE;
    koru::Enabling = true;
    const BOOL result = koru::Enable(iEngineVersion, *pded);
    koru::Enabling = false;
    return result;
}
