#include "engine/core/exports.h"

#include <algorithm>
#include <iterator>

namespace engine {

namespace {

    constexpr char Lower(char letter)
    {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
    }

    struct Service {
        const char* name;
        PFN function;
        ULONG argumentBytes;
    };

#define SERVICE(name)                                                                                                  \
    {                                                                                                                  \
#name, reinterpret_cast < PFN>(&(name)), ArgumentBytes(&(name))                                                \
    }
    const Service services[] = {
        SERVICE(EngLoadImage),
        SERVICE(EngUnloadImage),
        SERVICE(EngFindImageProcAddress),
        SERVICE(EngLoadModule),
        SERVICE(EngMapModule),
        SERVICE(EngFreeModule),
        SERVICE(EngCreateSemaphore),
        SERVICE(EngAcquireSemaphore),
        SERVICE(EngReleaseSemaphore),
        SERVICE(EngAllocMem),
        SERVICE(EngFreeMem),
        SERVICE(EngQueryPerformanceCounter),
        SERVICE(EngQueryPerformanceFrequency),
        SERVICE(EngCreateBitmap),
        SERVICE(EngCreateDeviceSurface),
        SERVICE(EngCreateDeviceBitmap),
        SERVICE(EngAssociateSurface),
        SERVICE(EngLockSurface),
        SERVICE(EngUnlockSurface),
        SERVICE(EngDeleteSurface),
        SERVICE(EngBitBlt),
        SERVICE(EngCopyBits),
        SERVICE(EngStretchBlt),
        SERVICE(EngStretchBltROP),
        SERVICE(EngPlgBlt),
        SERVICE(EngStrokePath),
        SERVICE(EngFillPath),
        SERVICE(EngStrokeAndFillPath),
        SERVICE(EngPaint),
        SERVICE(EngTextOut),
        SERVICE(EngLineTo),
        SERVICE(EngAlphaBlend),
        SERVICE(EngGradientFill),
        SERVICE(EngTransparentBlt),
        SERVICE(EngDitherColor),
        SERVICE(CLIPOBJ_cEnumStart),
        SERVICE(CLIPOBJ_bEnum),
        SERVICE(PATHOBJ_vEnumStart),
        SERVICE(PATHOBJ_bEnum),
        SERVICE(PATHOBJ_vGetBounds),
        SERVICE(STROBJ_vEnumStart),
        SERVICE(STROBJ_bEnum),
        SERVICE(STROBJ_dwGetCodePage),
        SERVICE(FONTOBJ_pifi),
        SERVICE(XLATEOBJ_piVector),
        SERVICE(PALOBJ_cGetColors),
        SERVICE(EngDebugPrint),
    };
#undef SERVICE

    const Service* Find(const std::string& name)
    {
        const auto found =
            std::find_if(std::begin(services), std::end(services), [wanted = LowerCase(name)](const Service& service) {
                return LowerCase(service.name) == wanted;
            });
        return found == std::end(services) ? nullptr : found;
    }

} // namespace

std::string LowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), Lower);
    return text;
}

const Exports& Services()
{
    static const Exports byName = [] {
        Exports exports;
        for (const Service& service : services)
            exports[service.name] = service.function;
        return exports;
    }();
    return byName;
}

ULONG ServiceArgumentBytes(const std::string& name)
{
    const Service* const service = Find(name);
    return service ? service->argumentBytes : 0;
}

PFN FindService(const std::string& name)
{
    const Service* const service = Find(name);
    return service ? service->function : nullptr;
}

} // namespace engine
