#pragma once

// The types of the display-driver entry points. A driver's own functions and those looked up in
// another driver's table share them.

#include "platform/objects.h"
#include "platform/structures.h"

using PFN_DrvEnableDriver = BOOL(APIENTRY*)(ULONG iEngineVersion, ULONG cj, DRVENABLEDATA* pded);
using PFN_DrvDisableDriver = void(APIENTRY*)();
using PFN_DrvEnablePDEV = DHPDEV(APIENTRY*)(DEVMODEW* pdm, WCHAR* pwszLogAddress, ULONG cPat, HSURF* phsurfPatterns,
                                            ULONG cjCaps, ULONG* pdevcaps, ULONG cjDevInfo, DEVINFO* pdi, HDEV hdev,
                                            WCHAR* pwszDeviceName, HANDLE hDriver);
using PFN_DrvCompletePDEV = void(APIENTRY*)(DHPDEV dhpdev, HDEV hdev);
using PFN_DrvDisablePDEV = void(APIENTRY*)(DHPDEV dhpdev);
using PFN_DrvEnableSurface = HSURF(APIENTRY*)(DHPDEV dhpdev);
using PFN_DrvDisableSurface = void(APIENTRY*)(DHPDEV dhpdev);
using PFN_DrvAssertMode = BOOL(APIENTRY*)(DHPDEV dhpdev, BOOL bEnable);
using PFN_DrvGetModes = ULONG(APIENTRY*)(HANDLE hDriver, ULONG cjSize, DEVMODEW* pdm);
using PFN_DrvCreateDeviceBitmap = HBITMAP(APIENTRY*)(DHPDEV dhpdev, SIZEL sizl, ULONG iFormat);
using PFN_DrvDeleteDeviceBitmap = void(APIENTRY*)(DHSURF dhsurf);
using PFN_DrvRealizeBrush = BOOL(APIENTRY*)(BRUSHOBJ* pbo, SURFOBJ* psoTarget, SURFOBJ* psoPattern, SURFOBJ* psoMask,
                                            XLATEOBJ* pxlo, ULONG iHatch);
using PFN_DrvDitherColor = ULONG(APIENTRY*)(DHPDEV dhpdev, ULONG iMode, ULONG rgb, ULONG* pul);
using PFN_EngDitherColor = ULONG(APIENTRY*)(HDEV hdev, ULONG iMode, ULONG rgb, ULONG* pul);
using PFN_DrvStrokePath = BOOL(APIENTRY*)(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo, BRUSHOBJ* pbo,
                                          POINTL* pptlBrushOrg, LINEATTRS* plineattrs, MIX mix);
using PFN_DrvFillPath = BOOL(APIENTRY*)(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg,
                                        MIX mix, FLONG flOptions);
using PFN_DrvStrokeAndFillPath = BOOL(APIENTRY*)(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo,
                                                 BRUSHOBJ* pboStroke, LINEATTRS* plineattrs, BRUSHOBJ* pboFill,
                                                 POINTL* pptlBrushOrg, MIX mixFill, FLONG flOptions);
using PFN_DrvPaint = BOOL(APIENTRY*)(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg, MIX mix);
using PFN_DrvBitBlt = BOOL(APIENTRY*)(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                                      RECTL* prclTrg, POINTL* pptlSrc, POINTL* pptlMask, BRUSHOBJ* pbo,
                                      POINTL* pptlBrush, ROP4 rop4);
using PFN_DrvCopyBits = BOOL(APIENTRY*)(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo,
                                        RECTL* prclDest, POINTL* pptlSrc);
using PFN_DrvStretchBlt = BOOL(APIENTRY*)(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco,
                                          XLATEOBJ* pxlo, COLORADJUSTMENT* pca, POINTL* pptlHTOrg, RECTL* prclDest,
                                          RECTL* prclSrc, POINTL* pptlMask, ULONG iMode);
using PFN_DrvSetPalette = BOOL(APIENTRY*)(DHPDEV dhpdev, PALOBJ* ppalo, FLONG fl, ULONG iStart, ULONG cColors);
using PFN_DrvTextOut = BOOL(APIENTRY*)(SURFOBJ* pso, STROBJ* pstro, FONTOBJ* pfo, CLIPOBJ* pco, RECTL* prclExtra,
                                       RECTL* prclOpaque, BRUSHOBJ* pboFore, BRUSHOBJ* pboOpaque, POINTL* pptlOrg,
                                       MIX mix);
using PFN_DrvEscape = ULONG(APIENTRY*)(SURFOBJ* pso, ULONG iEsc, ULONG cjIn, void* pvIn, ULONG cjOut, void* pvOut);
using PFN_DrvSetPointerShape = ULONG(APIENTRY*)(SURFOBJ* pso, SURFOBJ* psoMask, SURFOBJ* psoColor, XLATEOBJ* pxlo,
                                                LONG xHot, LONG yHot, LONG x, LONG y, RECTL* prcl, FLONG fl);
using PFN_DrvMovePointer = void(APIENTRY*)(SURFOBJ* pso, LONG x, LONG y, RECTL* prcl);
using PFN_DrvLineTo = BOOL(APIENTRY*)(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, LONG x1, LONG y1, LONG x2, LONG y2,
                                      RECTL* prclBounds, MIX mix);
using PFN_DrvSynchronize = void(APIENTRY*)(DHPDEV dhpdev, RECTL* prcl);
using PFN_DrvSaveScreenBits = ULONG(APIENTRY*)(SURFOBJ* pso, ULONG iMode, ULONG ident, RECTL* prcl);
using PFN_DrvIcmSetDeviceGammaRamp = BOOL(APIENTRY*)(DHPDEV dhpdev, ULONG iFormat, void* lpRamp);
using PFN_DrvGradientFill = BOOL(APIENTRY*)(SURFOBJ* psoDest, CLIPOBJ* pco, XLATEOBJ* pxlo, TRIVERTEX* pVertex,
                                            ULONG nVertex, void* pMesh, ULONG nMesh, RECTL* prclExtents,
                                            POINTL* pptlDitherOrg, ULONG ulMode);
using PFN_DrvStretchBltROP = BOOL(APIENTRY*)(SURFOBJ* psoDest, SURFOBJ* psoSrc, SURFOBJ* psoMask, CLIPOBJ* pco,
                                             XLATEOBJ* pxlo, COLORADJUSTMENT* pca, POINTL* pptlHTOrg, RECTL* prclDest,
                                             RECTL* prclSrc, POINTL* pptlMask, ULONG iMode, BRUSHOBJ* pbo, ROP4 rop4);
using PFN_DrvPlgBlt = BOOL(APIENTRY*)(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMsk, CLIPOBJ* pco, XLATEOBJ* pxlo,
                                      COLORADJUSTMENT* pca, POINTL* pptlBrushOrg, POINTFIX* pptfx, RECTL* prcl,
                                      POINTL* pptl, ULONG iMode);
using PFN_DrvAlphaBlend = BOOL(APIENTRY*)(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo,
                                          RECTL* prclDest, RECTL* prclSrc, BLENDOBJ* pBlendObj);
using PFN_DrvTransparentBlt = BOOL(APIENTRY*)(SURFOBJ* psoDst, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo,
                                              RECTL* prclDst, RECTL* prclSrc, ULONG iTransColor, ULONG ulReserved);
using PFN_DrvSynchronizeSurface = void(APIENTRY*)(SURFOBJ* pso, RECTL* prcl, FLONG fl);
