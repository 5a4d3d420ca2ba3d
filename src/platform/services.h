#pragma once

// The engine's services, as win32k.sys exports them. In the image they are imports; in an ordinary
// program the stand-in engine defines them.

#include <cstdarg>

#include "platform/objects.h"
#include "platform/structures.h"

extern "C" {

HANDLE APIENTRY EngLoadImage(WCHAR* pwszDriver);
void APIENTRY EngUnloadImage(HANDLE hModule);
void* APIENTRY EngFindImageProcAddress(HANDLE hModule, char* lpProcName); // null module: the engine itself
HANDLE APIENTRY EngLoadModule(WCHAR* pwsz);
void* APIENTRY EngMapModule(HANDLE h, ULONG* pulSize);
void APIENTRY EngFreeModule(HANDLE h);

HSEMAPHORE APIENTRY EngCreateSemaphore();
void APIENTRY EngAcquireSemaphore(HSEMAPHORE hsem);
void APIENTRY EngReleaseSemaphore(HSEMAPHORE hsem);

void* APIENTRY EngAllocMem(ULONG fl, ULONG cj, ULONG tag);
void APIENTRY EngFreeMem(void* pv);

void APIENTRY EngQueryPerformanceCounter(LONGLONG* pcounter);
void APIENTRY EngQueryPerformanceFrequency(LONGLONG* pfrequency);

HBITMAP APIENTRY EngCreateBitmap(SIZEL sizl, LONG lWidth, ULONG iFormat, FLONG fl, void* pvBits);
HSURF APIENTRY EngCreateDeviceSurface(DHSURF dhsurf, SIZEL sizl, ULONG iFormatCompat);
HBITMAP APIENTRY EngCreateDeviceBitmap(DHSURF dhsurf, SIZEL sizl, ULONG iFormatCompat);
BOOL APIENTRY EngAssociateSurface(HSURF hsurf, HDEV hdev, FLONG flHooks);
SURFOBJ* APIENTRY EngLockSurface(HSURF hsurf);
void APIENTRY EngUnlockSurface(SURFOBJ* pso);
BOOL APIENTRY EngDeleteSurface(HSURF hsurf);

BOOL APIENTRY EngBitBlt(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                        RECTL* prclTrg, POINTL* pptlSrc, POINTL* pptlMask, BRUSHOBJ* pbo, POINTL* pptlBrush, ROP4 rop4);
BOOL APIENTRY EngCopyBits(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest,
                          POINTL* pptlSrc);
BOOL APIENTRY EngStretchBlt(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                            COLORADJUSTMENT* pca, POINTL* pptlHTOrg, RECTL* prclDest, RECTL* prclSrc, POINTL* pptlMask,
                            ULONG iMode);
BOOL APIENTRY EngStretchBltROP(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                               COLORADJUSTMENT* pca, POINTL* pptlHTOrg, RECTL* prclDest, RECTL* prclSrc,
                               POINTL* pptlMask, ULONG iMode, BRUSHOBJ* pbo, ROP4 rop4);
BOOL APIENTRY EngPlgBlt(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMsk, CLIPOBJ* pco, XLATEOBJ* pxlo,
                        COLORADJUSTMENT* pca, POINTL* pptlBrushOrg, POINTFIX* pptfx, RECTL* prcl, POINTL* pptl,
                        ULONG iMode);
BOOL APIENTRY EngStrokePath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo, BRUSHOBJ* pbo,
                            POINTL* pptlBrushOrg, LINEATTRS* plineattrs, MIX mix);
BOOL APIENTRY EngFillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg, MIX mix,
                          FLONG flOptions);
BOOL APIENTRY EngStrokeAndFillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo, BRUSHOBJ* pboStroke,
                                   LINEATTRS* plineattrs, BRUSHOBJ* pboFill, POINTL* pptlBrushOrg, MIX mixFill,
                                   FLONG flOptions);
BOOL APIENTRY EngPaint(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg, MIX mix);
BOOL APIENTRY EngTextOut(SURFOBJ* pso, STROBJ* pstro, FONTOBJ* pfo, CLIPOBJ* pco, RECTL* prclExtra, RECTL* prclOpaque,
                         BRUSHOBJ* pboFore, BRUSHOBJ* pboOpaque, POINTL* pptlOrg, MIX mix);
BOOL APIENTRY EngLineTo(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, LONG x1, LONG y1, LONG x2, LONG y2,
                        RECTL* prclBounds, MIX mix);
BOOL APIENTRY EngAlphaBlend(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest,
                            RECTL* prclSrc, BLENDOBJ* pBlendObj);
BOOL APIENTRY EngGradientFill(SURFOBJ* psoDest, CLIPOBJ* pco, XLATEOBJ* pxlo, TRIVERTEX* pVertex, ULONG nVertex,
                              void* pMesh, ULONG nMesh, RECTL* prclExtents, POINTL* pptlDitherOrg, ULONG ulMode);
BOOL APIENTRY EngTransparentBlt(SURFOBJ* psoDst, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDst,
                                RECTL* prclSrc, ULONG iTransColor, ULONG ulReserved);
ULONG APIENTRY EngDitherColor(HDEV hdev, ULONG iMode, ULONG rgb, ULONG* pul);

ULONG APIENTRY CLIPOBJ_cEnumStart(CLIPOBJ* pco, BOOL bAll, ULONG iType, ULONG iDirection, ULONG cLimit);
BOOL APIENTRY CLIPOBJ_bEnum(CLIPOBJ* pco, ULONG cj, ULONG* pul); // FALSE with the last batch
void APIENTRY PATHOBJ_vEnumStart(PATHOBJ* ppo);
BOOL APIENTRY PATHOBJ_bEnum(PATHOBJ* ppo, PATHDATA* ppd); // FALSE with the last subpath
void APIENTRY PATHOBJ_vGetBounds(PATHOBJ* ppo, RECTFX* prectfx);
void APIENTRY STROBJ_vEnumStart(STROBJ* pstro);
BOOL APIENTRY STROBJ_bEnum(STROBJ* pstro, ULONG* pc, GLYPHPOS** ppgpos); // -1: an error
DWORD APIENTRY STROBJ_dwGetCodePage(STROBJ* pstro);
IFIMETRICS* APIENTRY FONTOBJ_pifi(FONTOBJ* pfo);
ULONG* APIENTRY XLATEOBJ_piVector(XLATEOBJ* pxlo);
ULONG APIENTRY PALOBJ_cGetColors(PALOBJ* ppalo, ULONG iStart, ULONG cColors, ULONG* pulColors);

void APIENTRY EngDebugPrint(char* StandardPrefix, char* DebugMessage, va_list ap);

} // extern "C"
