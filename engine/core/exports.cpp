#include "engine/core/exports.h"

#include <algorithm>

namespace engine {

namespace {

    constexpr char Lower(char letter)
    {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
    }

    Exports ByLowerCase()
    {
        Exports services;
        for (const auto& [name, function] : Services())
            services[LowerCase(name)] = function;
        return services;
    }

} // namespace

std::string LowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), Lower);
    return text;
}

const Exports& Services()
{
#define SERVICE(name)                                                                                                  \
    {                                                                                                                  \
#name, reinterpret_cast < PFN>(&name)                                                                          \
    }
    static const Exports services = {
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
    return services;
}

PFN FindService(const std::string& name)
{
    static const Exports services = ByLowerCase();
    const auto found = services.find(LowerCase(name));
    return found == services.end() ? nullptr : found->second;
}

} // namespace engine
