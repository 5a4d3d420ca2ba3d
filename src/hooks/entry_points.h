#pragma once

#include <type_traits>

#include "platform/entry_points.h"

// The hooked drawing calls. The aliases keep every one of them to the interface's type.
namespace koru {

std::remove_pointer_t<PFN_DrvBitBlt> DrvBitBlt;
std::remove_pointer_t<PFN_DrvCopyBits> DrvCopyBits;
std::remove_pointer_t<PFN_DrvStretchBlt> DrvStretchBlt;
std::remove_pointer_t<PFN_DrvStretchBltROP> DrvStretchBltROP;
std::remove_pointer_t<PFN_DrvPlgBlt> DrvPlgBlt;
std::remove_pointer_t<PFN_DrvAlphaBlend> DrvAlphaBlend;
std::remove_pointer_t<PFN_DrvTransparentBlt> DrvTransparentBlt;
std::remove_pointer_t<PFN_DrvGradientFill> DrvGradientFill;
std::remove_pointer_t<PFN_DrvStrokePath> DrvStrokePath;
std::remove_pointer_t<PFN_DrvFillPath> DrvFillPath;
std::remove_pointer_t<PFN_DrvStrokeAndFillPath> DrvStrokeAndFillPath;
std::remove_pointer_t<PFN_DrvPaint> DrvPaint;
std::remove_pointer_t<PFN_DrvLineTo> DrvLineTo;
std::remove_pointer_t<PFN_DrvTextOut> DrvTextOut;
std::remove_pointer_t<PFN_DrvRealizeBrush> DrvRealizeBrush;
std::remove_pointer_t<PFN_DrvDitherColor> DrvDitherColor;
std::remove_pointer_t<PFN_DrvSetPalette> DrvSetPalette;
std::remove_pointer_t<PFN_DrvSaveScreenBits> DrvSaveScreenBits;
std::remove_pointer_t<PFN_DrvMovePointer> DrvMovePointer;
std::remove_pointer_t<PFN_DrvSetPointerShape> DrvSetPointerShape;
std::remove_pointer_t<PFN_DrvCreateDeviceBitmap> DrvCreateDeviceBitmap;
std::remove_pointer_t<PFN_DrvDeleteDeviceBitmap> DrvDeleteDeviceBitmap;

} // namespace koru
