#include "engine/raster/fill.h"

#include <cstring>

#include "engine/raster/hook_call.h"
#include "engine/raster/rop_operation.h"

namespace engine::raster {
namespace {

    void FillRectangle(const Bitmap& target, const RECTL& part, const std::vector<ULONG>& pixels)
    {
        const LONG count = part.right - part.left;
        target.Write(part.left, part.top, count, pixels.data());
        const BYTE* const first = target.HasWholeBytes() ? target.Byte(part.left, part.top) : nullptr;
        for (LONG y = part.top + 1; y < part.bottom; ++y)
            if (first)
                std::memcpy(target.Byte(part.left, y), first, static_cast<std::size_t>(count * target.BytesPerPixel()));
            else
                target.Write(part.left, y, count, pixels.data());
    }

    void PaintBits(const Bitmap& target, const std::vector<RECTL>& rectangles, const BrushPattern& brush, ROP4 rop4)
    {
        if (rop4 == CopyPattern && brush.IsSolid()) {
            FillSolid(target, rectangles, brush.SolidPixel());
            return;
        }
        DrawRows(target, rectangles, nullptr, RopOperation(rop4, Translator(nullptr), brush, false));
    }

} // namespace

void FillSolid(const Bitmap& target, const std::vector<RECTL>& parts, ULONG pixel)
{
    std::vector<ULONG> pixels;
    for (const RECTL& part : parts) {
        pixels.resize(std::max(pixels.size(), static_cast<std::size_t>(part.right - part.left)), pixel);
        FillRectangle(target, part, pixels);
    }
}

BOOL PaintRectangles(Surface& surface, const std::vector<RECTL>& rectangles, BRUSHOBJ* pbo, POINTL origin, MIX mix)
{
    if (rectangles.empty())
        return TRUE;
    if (!HasBits(&surface)) {
        ClipObject clip(rectangles);
        return CallPaint(&surface, &clip, pbo, &origin, mix);
    }
    const Brush* const brush = BrushBehind(pbo);
    if (!brush)
        return FALSE;
    PaintBits(Bitmap::Of(surface), rectangles, BrushPattern(brush, origin), RopOfMix(mix));
    return TRUE;
}

} // namespace engine::raster
