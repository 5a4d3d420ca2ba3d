// The services that hand out what lies behind the public part of an object, batch by batch.

#include <algorithm>
#include <cstring>

#include "engine/core/state.h"

using namespace engine;

namespace {

constexpr ULONG TooMany = 0xFFFFFFFF;
constexpr ULONG EnumrectsHeader = offsetof(ENUMRECTS, arcl);

RECTL Intersection(const RECTL& first, const RECTL& second)
{
    return {std::max(first.left, second.left), std::max(first.top, second.top), std::min(first.right, second.right),
            std::min(first.bottom, second.bottom)};
}

bool IsEmpty(const RECTL& rectangle)
{
    return rectangle.left >= rectangle.right || rectangle.top >= rectangle.bottom;
}

// All rectangles of the clip, or what of them lies within its bounds.
std::vector<RECTL> RectanglesOf(const ClipObject& clip, bool all)
{
    if (clip.rectangles.empty())
        return {clip.rclBounds};
    if (all)
        return clip.rectangles;
    std::vector<RECTL> within;
    for (const RECTL& rectangle : clip.rectangles)
        if (const RECTL part = Intersection(rectangle, clip.rclBounds); !IsEmpty(part))
            within.push_back(part);
    return within;
}

void Order(std::vector<RECTL>& rectangles, ULONG direction)
{
    if (direction == CD_ANY)
        return;
    const bool left = direction & CD_LEFTDOWN, up = direction & CD_RIGHTUP;
    std::stable_sort(rectangles.begin(), rectangles.end(), [left, up](const RECTL& first, const RECTL& second) {
        if (first.top != second.top)
            return up ? first.top > second.top : first.top < second.top;
        return left ? first.left > second.left : first.left < second.left;
    });
}

} // namespace

extern "C" {

ULONG APIENTRY CLIPOBJ_cEnumStart(CLIPOBJ* pco, BOOL bAll, ULONG iType, ULONG iDirection, ULONG cLimit)
{
    ClipObject* const clip = IsGiven(pco, "CLIPOBJ_cEnumStart: the clip") ? ClipBehind(pco) : nullptr;
    if (!clip)
        return 0;
    if (iType != CT_RECTANGLES || iDirection > CD_ANY)
        Engine::Current().Report("CLIPOBJ_cEnumStart: type " + std::to_string(iType) + ", direction "
                                 + std::to_string(iDirection));
    clip->ordered = RectanglesOf(*clip, bAll != FALSE);
    Order(clip->ordered, iDirection);
    clip->next = 0;
    clip->limit = cLimit;
    clip->started = true;
    return clip->ordered.size() > cLimit ? TooMany : static_cast<ULONG>(clip->ordered.size());
}

BOOL APIENTRY CLIPOBJ_bEnum(CLIPOBJ* pco, ULONG cj, ULONG* pul)
{
    ClipObject* const clip = IsGiven(pco, "CLIPOBJ_bEnum: the clip") ? ClipBehind(pco) : nullptr;
    if (!clip || !IsGiven(pul, "CLIPOBJ_bEnum: the buffer"))
        return FALSE;
    if (!clip->started || cj < sizeof(ENUMRECTS)) {
        Engine::Current().Report(clip->started ? "CLIPOBJ_bEnum: no room for a rectangle"
                                               : "CLIPOBJ_bEnum: not started");
        return FALSE;
    }
    if (clip->emptyBatches != 0) {
        --clip->emptyBatches;
        *pul = 0;
        return TRUE;
    }
    std::size_t count =
        std::min<std::size_t>((cj - EnumrectsHeader) / sizeof(RECTL), clip->ordered.size() - clip->next);
    if (clip->batch != 0)
        count = std::min(count, clip->batch);
    *pul = static_cast<ULONG>(count);
    std::memcpy(reinterpret_cast<BYTE*>(pul) + EnumrectsHeader, clip->ordered.data() + clip->next,
                count * sizeof(RECTL));
    clip->next += count;
    return clip->next < clip->ordered.size();
}

void APIENTRY PATHOBJ_vEnumStart(PATHOBJ* ppo)
{
    if (Path* const path = IsGiven(ppo, "PATHOBJ_vEnumStart: the path") ? PathBehind(ppo) : nullptr)
        path->next = 0;
}

BOOL APIENTRY PATHOBJ_bEnum(PATHOBJ* ppo, PATHDATA* ppd)
{
    Path* const path = IsGiven(ppo, "PATHOBJ_bEnum: the path") ? PathBehind(ppo) : nullptr;
    if (!path || !IsGiven(ppd, "PATHOBJ_bEnum: the data"))
        return FALSE;
    *ppd = {};
    if (path->next >= path->subpaths.size())
        return FALSE;
    Path::Subpath& subpath = path->subpaths[path->next++];
    const ULONG count = subpath.countTold != 0 ? subpath.countTold : static_cast<ULONG>(subpath.points.size());
    *ppd = {subpath.flags, count, subpath.points.data()};
    return path->next < path->subpaths.size();
}

void APIENTRY PATHOBJ_vGetBounds(PATHOBJ* ppo, RECTFX* prectfx)
{
    const Path* const path = IsGiven(ppo, "PATHOBJ_vGetBounds: the path") ? PathBehind(ppo) : nullptr;
    if (!path || !IsGiven(prectfx, "PATHOBJ_vGetBounds: the rectangle"))
        return;
    *prectfx = {};
    bool first = true;
    for (const Path::Subpath& subpath : path->subpaths)
        for (const POINTFIX& point : subpath.points) {
            if (first)
                *prectfx = {point.x, point.y, point.x, point.y};
            first = false;
            *prectfx = {std::min(prectfx->xLeft, point.x), std::min(prectfx->yTop, point.y),
                        std::max(prectfx->xRight, point.x), std::max(prectfx->yBottom, point.y)};
        }
}

void APIENTRY STROBJ_vEnumStart(STROBJ* pstro)
{
    if (Text* const text = IsGiven(pstro, "STROBJ_vEnumStart: the string") ? TextBehind(pstro) : nullptr)
        text->next = 0;
}

BOOL APIENTRY STROBJ_bEnum(STROBJ* pstro, ULONG* pc, GLYPHPOS** ppgpos)
{
    constexpr BOOL failed = -1;
    Text* const text = IsGiven(pstro, "STROBJ_bEnum: the string") ? TextBehind(pstro) : nullptr;
    if (!text || !IsGiven(pc, "STROBJ_bEnum: the count") || !IsGiven(ppgpos, "STROBJ_bEnum: the glyphs"))
        return failed;
    if (text->failEnumeration && text->batchesBeforeFailure-- == 0)
        return failed;
    const std::size_t left = text->glyphs.size() - text->next;
    const std::size_t count = text->batch == 0 ? left : std::min(text->batch, left);
    *pc = static_cast<ULONG>(count);
    *ppgpos = count == 0 ? nullptr : text->glyphs.data() + text->next;
    text->next += count;
    return text->next < text->glyphs.size();
}

DWORD APIENTRY STROBJ_dwGetCodePage(STROBJ* pstro)
{
    const Text* const text = IsGiven(pstro, "STROBJ_dwGetCodePage: the string") ? TextBehind(pstro) : nullptr;
    return text ? text->codePage : 0;
}

IFIMETRICS* APIENTRY FONTOBJ_pifi(FONTOBJ* pfo)
{
    Font* const font = IsGiven(pfo, "FONTOBJ_pifi: the font") ? FontBehind(pfo) : nullptr;
    return font ? font->Metrics() : nullptr;
}

ULONG* APIENTRY XLATEOBJ_piVector(XLATEOBJ* pxlo)
{
    Translation* const translation =
        IsGiven(pxlo, "XLATEOBJ_piVector: the translation") ? TranslationBehind(pxlo) : nullptr;
    return translation && !translation->vector.empty() ? translation->vector.data() : nullptr;
}

ULONG APIENTRY PALOBJ_cGetColors(PALOBJ* ppalo, ULONG iStart, ULONG cColors, ULONG* pulColors)
{
    const PaletteObject* const palette =
        IsGiven(ppalo, "PALOBJ_cGetColors: the palette") ? PaletteBehind(ppalo) : nullptr;
    if (!palette || !IsGiven(pulColors, "PALOBJ_cGetColors: the colours") || iStart >= palette->colours.size())
        return 0;
    const ULONG left = static_cast<ULONG>(palette->colours.size()) - iStart;
    const ULONG count = std::min({cColors, left, palette->deliver});
    std::copy_n(palette->colours.begin() + static_cast<std::ptrdiff_t>(iStart), count, pulColors);
    return count;
}

} // extern "C"
