#pragma once

// One writer per captured call: the call's arguments in the interface's order, then the buffer and
// its room in bytes. Each gives the record's length; 0 when the buffer is null or the room is below
// the record's fixed part (with a message). Pointers may be null where the call's may be.

#include "platform/objects.h"
#include "platform/structures.h"

namespace koru {

ULONG ExpandDrvAssertMode(DHPDEV dhpdev, BOOL bEnable, BYTE* buffer, ULONG room);
ULONG ExpandDrvEnablePDEV(DEVMODEW* pdm, WCHAR* pwszLogAddress, ULONG cPat, HSURF* phsurfPatterns, ULONG cjCaps,
                          ULONG* pdevcaps, ULONG cjDevInfo, DEVINFO* pdi, HDEV hdev, WCHAR* pwszDeviceName,
                          HANDLE hDriver, DHPDEV dhpdevReturned, BYTE* buffer, ULONG room);
ULONG ExpandDrvCompletePDEV(DHPDEV dhpdev, HDEV hdev, BYTE* buffer, ULONG room);
ULONG ExpandDrvDisablePDEV(DHPDEV dhpdev, BYTE* buffer, ULONG room);
ULONG ExpandDrvEnableSurface(DHPDEV dhpdev, HSURF hsurfReturned, BYTE* buffer, ULONG room);
ULONG ExpandDrvDisableSurface(DHPDEV dhpdev, BYTE* buffer, ULONG room);
ULONG ExpandDrvGetModes(HANDLE hDriver, ULONG cjSize, DEVMODEW* pdm, BYTE* buffer, ULONG room);
ULONG ExpandDrvCreateDeviceBitmap(DHPDEV dhpdev, SIZEL sizl, ULONG iFormat, HBITMAP hbmReturned, HSURF hsurfBacking,
                                  BYTE* buffer, ULONG room);
ULONG ExpandDrvDeleteDeviceBitmap(DHSURF dhsurf, BYTE* buffer, ULONG room);
ULONG ExpandDrvBitBlt(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclTrg,
                      POINTL* pptlSrc, POINTL* pptlMask, BRUSHOBJ* pbo, POINTL* pptlBrush, ROP4 rop4, BYTE* buffer,
                      ULONG room);
ULONG ExpandDrvCopyBits(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest,
                        POINTL* pptlSrc, BYTE* buffer, ULONG room);
ULONG ExpandDrvStretchBlt(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                          COLORADJUSTMENT* pca, POINTL* pptlHTOrg, RECTL* prclDest, RECTL* prclSrc, POINTL* pptlMask,
                          ULONG iMode, BYTE* buffer, ULONG room);
ULONG ExpandDrvStretchBltROP(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                             COLORADJUSTMENT* pca, POINTL* pptlHTOrg, RECTL* prclDest, RECTL* prclSrc, POINTL* pptlMask,
                             ULONG iMode, BRUSHOBJ* pbo, ROP4 rop4, BYTE* buffer, ULONG room);
ULONG ExpandDrvPlgBlt(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMsk, CLIPOBJ* pco, XLATEOBJ* pxlo,
                      COLORADJUSTMENT* pca, POINTL* pptlBrushOrg, POINTFIX* pptfx, RECTL* prcl, POINTL* pptl,
                      ULONG iMode, BYTE* buffer, ULONG room);
ULONG ExpandDrvStrokePath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo, BRUSHOBJ* pbo, POINTL* pptlBrushOrg,
                          LINEATTRS* plineattrs, MIX mix, BYTE* buffer, ULONG room);
ULONG ExpandDrvFillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg, MIX mix,
                        FLONG flOptions, BYTE* buffer, ULONG room);
ULONG ExpandDrvStrokeAndFillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo, BRUSHOBJ* pboStroke,
                                 LINEATTRS* plineattrs, BRUSHOBJ* pboFill, POINTL* pptlBrushOrg, MIX mixFill,
                                 FLONG flOptions, BYTE* buffer, ULONG room);
ULONG ExpandDrvPaint(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg, MIX mix, BYTE* buffer,
                     ULONG room);
ULONG ExpandDrvTextOut(SURFOBJ* pso, STROBJ* pstro, FONTOBJ* pfo, CLIPOBJ* pco, RECTL* prclExtra, RECTL* prclOpaque,
                       BRUSHOBJ* pboFore, BRUSHOBJ* pboOpaque, POINTL* pptlOrg, MIX mix, BYTE* buffer, ULONG room);
ULONG ExpandDrvLineTo(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, LONG x1, LONG y1, LONG x2, LONG y2, RECTL* prclBounds,
                      MIX mix, BYTE* buffer, ULONG room);
ULONG ExpandDrvAlphaBlend(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest,
                          RECTL* prclSrc, BLENDOBJ* pBlendObj, BYTE* buffer, ULONG room);
ULONG ExpandDrvGradientFill(SURFOBJ* psoDest, CLIPOBJ* pco, XLATEOBJ* pxlo, TRIVERTEX* pVertex, ULONG nVertex,
                            void* pMesh, ULONG nMesh, RECTL* prclExtents, POINTL* pptlDitherOrg, ULONG ulMode,
                            BYTE* buffer, ULONG room);
ULONG ExpandDrvTransparentBlt(SURFOBJ* psoDst, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDst,
                              RECTL* prclSrc, ULONG iTransColor, ULONG ulReserved, BYTE* buffer, ULONG room);
ULONG ExpandDrvMovePointer(SURFOBJ* pso, LONG x, LONG y, RECTL* prcl, BYTE* buffer, ULONG room);
ULONG ExpandDrvSetPointerShape(SURFOBJ* pso, SURFOBJ* psoMask, SURFOBJ* psoColor, XLATEOBJ* pxlo, LONG xHot, LONG yHot,
                               LONG x, LONG y, RECTL* prcl, FLONG fl, BYTE* buffer, ULONG room);
ULONG ExpandDrvRealizeBrush(BRUSHOBJ* pbo, SURFOBJ* psoTarget, SURFOBJ* psoPattern, SURFOBJ* psoMask, XLATEOBJ* pxlo,
                            ULONG iHatch, BYTE* buffer, ULONG room);
ULONG ExpandDrvDitherColor(DHPDEV dhpdev, ULONG iMode, ULONG rgb, ULONG* pul, ULONG returned, BYTE* buffer, ULONG room);
ULONG ExpandDrvSetPalette(DHPDEV dhpdev, PALOBJ* ppalo, FLONG fl, ULONG iStart, ULONG cColors, BYTE* buffer,
                          ULONG room);
ULONG ExpandDrvScreenBits(SURFOBJ* pso, ULONG iMode, ULONG ident, RECTL* prcl, ULONG returned, BYTE* buffer,
                          ULONG room);
ULONG ExpandDrvEscape(SURFOBJ* pso, ULONG iEsc, ULONG cjIn, void* pvIn, ULONG cjOut, void* pvOut, ULONG returned,
                      BYTE* buffer, ULONG room);

} // namespace koru
