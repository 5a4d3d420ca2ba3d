#include "magnifier/blits.h"

#include "chain/module_loader.h"
#include "magnifier/rectangle.h"
#include "platform/platform.h"

namespace koru {

namespace {

    // One axis of a blit: what is left of a span of the target when neither surface may be left.
    bool CutSpan(LONG targetSize, LONG sourceSize, LONG& first, LONG& last, LONG& source)
    {
        const LONGLONG offset = LONGLONG{source} - first; // from a target to a source coordinate
        LONGLONG low = first > 0 ? first : 0;
        LONGLONG high = last < targetSize ? last : targetSize;
        if (low + offset < 0)
            low = -offset;
        if (high + offset > sourceSize)
            high = sourceSize - offset;
        if (low >= high)
            return false;
        first = static_cast<LONG>(low);
        last = static_cast<LONG>(high);
        source = static_cast<LONG>(low + offset);
        return true;
    }

} // namespace

bool CutBlit(const SIZEL& targetSize, const SIZEL& sourceSize, RECTL& target, POINTL& source)
{
    return CutSpan(targetSize.cx, sourceSize.cx, target.left, target.right, source.x)
        && CutSpan(targetSize.cy, sourceSize.cy, target.top, target.bottom, source.y);
}

BOOL CopyBitsCut(SURFOBJ* psoTrg, SURFOBJ* psoSrc, const RECTL& target, const POINTL& source)
{
    RECTL to = target;
    POINTL from = source;
    if (!CutBlit(psoTrg->sizlBitmap, psoSrc->sizlBitmap, to, from))
        return TRUE;
    return EngCopyBits(psoTrg, psoSrc, nullptr, nullptr, &to, &from);
}

BOOL BitBltCut(SURFOBJ* psoTrg, SURFOBJ* psoSrc, const RECTL& target, const POINTL& source, ROP4 rop4)
{
    RECTL to = target;
    POINTL from = source;
    if (!CutBlit(psoTrg->sizlBitmap, psoSrc->sizlBitmap, to, from))
        return TRUE;
    return EngBitBlt(psoTrg, psoSrc, nullptr, nullptr, nullptr, &to, &from, nullptr, nullptr, nullptr, rop4);
}

BOOL FillCut(SURFOBJ* psoTrg, const RECTL& target, ROP4 rop4)
{
    RECTL to;
    if (!IntersectRect(to, target, BoundsOf(psoTrg->sizlBitmap)))
        return TRUE;
    return EngBitBlt(psoTrg, nullptr, nullptr, nullptr, nullptr, &to, nullptr, nullptr, nullptr, nullptr, rop4);
}

BOOL CopyToScreenCut(SURFOBJ* psoScreen, SURFOBJ* psoSrc, const RECTL& rectangle)
{
    const auto realCopyBits = RealFunction<PFN_DrvCopyBits>(INDEX_DrvCopyBits);
    if (!realCopyBits)
        return FALSE;
    RECTL to = rectangle;
    POINTL from = CornerOf(rectangle);
    if (!CutBlit(psoScreen->sizlBitmap, psoSrc->sizlBitmap, to, from))
        return TRUE;
    return realCopyBits(psoScreen, psoSrc, nullptr, nullptr, &to, &from);
}

} // namespace koru
