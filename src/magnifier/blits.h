#pragma once

#include "magnifier/bitmaps.h"
#include "platform/objects.h"

// The engine's and the real driver's copies, cut to the surfaces they touch: rectangles come from
// callers and clients and may lie anywhere. What is cut away entirely is skipped and answers 1.
namespace koru {

// Cuts `target` (a rectangle of a surface of size `targetSize`) and moves `source`, the point of the
// other surface that comes to lie at its top left corner, along with it. False when nothing is left.
bool CutBlit(const SIZEL& targetSize, const SIZEL& sourceSize, RECTL& target, POINTL& source);

BOOL CopyBitsCut(SURFOBJ* psoTrg, SURFOBJ* psoSrc, const RECTL& target, const POINTL& source);
BOOL BitBltCut(SURFOBJ* psoTrg, SURFOBJ* psoSrc, const RECTL& target, const POINTL& source, ROP4 rop4);
BOOL FillCut(SURFOBJ* psoTrg, const RECTL& target, ROP4 rop4); // a raster operation without source

// To the same place of the screen, with the real driver's DrvCopyBits. 0 when it has none.
BOOL CopyToScreenCut(SURFOBJ* psoScreen, SURFOBJ* psoSrc, const RECTL& rectangle);

inline POINTL CornerOf(const RECTL& rectangle)
{
    return {rectangle.left, rectangle.top};
}
inline RECTL BoundsOf(const SIZEL& size)
{
    return {0, 0, size.cx, size.cy};
}

} // namespace koru
