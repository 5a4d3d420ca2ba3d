#include "engine/core/bitmaps.h"

#include <cstdlib>

#include "engine/core/guards.h"
#include "engine/core/state.h"

namespace engine {

namespace {

    constexpr ULONGLONG MostBits = 0x10000000;

    BYTE* AllocateBits(Surface& surface, ULONG size, bool zero)
    {
        surface.storage.assign(size + 2 * GuardSize, GuardByte);
        BYTE* const bits = surface.storage.data() + GuardSize;
        Fill(bits, size, zero ? 0 : FreshByte);
        return bits;
    }

} // namespace

std::unique_ptr<Surface> NewBitmap(SIZEL size, ULONG rowBytes, const PixelLayout& layout, FLONG flags, void* bits)
{
    const ULONGLONG bytes = static_cast<ULONGLONG>(rowBytes) * static_cast<ULONG>(size.cy);
    if (bytes > MostBits)
        return nullptr;
    auto surface = std::make_unique<Surface>();
    static_cast<SURFOBJ&>(*surface) = {};
    surface->layout = layout;
    surface->sizlBitmap = size;
    surface->cjBits = static_cast<ULONG>(bytes);
    surface->pvBits = bits ? bits : AllocateBits(*surface, surface->cjBits, !(flags & BMF_NOZEROINIT));
    surface->iBitmapFormat = layout.iBitmapFormat;
    surface->iType = STYPE_BITMAP;
    surface->fjBitmap = static_cast<USHORT>(flags);
    surface->lDelta = static_cast<LONG>(rowBytes);
    surface->pvScan0 = surface->pvBits;
    if (!(flags & BMF_TOPDOWN)) {
        surface->pvScan0 = static_cast<BYTE*>(surface->pvBits) + rowBytes * static_cast<ULONG>(size.cy - 1);
        surface->lDelta = -surface->lDelta;
    }
    return surface;
}

Surface* MakeBitmap(SIZEL size, const PixelLayout& layout, LONG lDelta)
{
    const ULONG least = RowBytes(layout.iBitmapFormat, size.cx);
    const ULONG rowBytes = lDelta == 0 ? (least + 3) & ~3u : static_cast<ULONG>(std::abs(lDelta));
    if (size.cy <= 0 || least == 0 || rowBytes < least)
        return nullptr;
    auto bitmap = NewBitmap(size, rowBytes, layout, lDelta < 0 ? 0 : BMF_TOPDOWN, nullptr);
    if (!bitmap)
        return nullptr;
    bitmap->ofTheEngine = true;
    return LockedState()->surfaces.Add(std::move(bitmap));
}

void DestroyBitmap(Surface* bitmap)
{
    if (SurfaceBehind(bitmap))
        LockedState()->surfaces.Remove(bitmap);
}

} // namespace engine
