#pragma once

#include "engine/core/objects.h"

namespace engine {

class Device;

// Bytes of a row without padding; 0 for a format that bitmaps cannot have.
ULONG RowBytes(ULONG iBitmapFormat, LONG width);

// A surface of the engine. Made by EngCreateBitmap and the like, or by MakeBitmap for the front end
// and tests. EngLockSurface answers the surface itself.
struct Surface : SURFOBJ {
    PixelLayout layout;
    FLONG hooks = 0; // HOOK_* of EngAssociateSurface
    Device* device = nullptr; // after EngAssociateSurface
    ULONG locks = 0; // by EngLockSurface
    bool ofTheEngine = false; // made by MakeBitmap: a driver may lock it, not delete it
    std::vector<BYTE> storage; // bits with guard bytes before and behind them; empty with the caller's bits

    BYTE* Row(LONG y) const; // null bits: null
    ULONG Pixel(LONG x, LONG y) const; // within the bitmap
    void SetPixel(LONG x, LONG y, ULONG pixel);
    RECTL Bounds() const { return {0, 0, sizlBitmap.cx, sizlBitmap.cy}; }
};

// The surface behind a SURFOBJ; a SURFOBJ that is none of the engine's is a violation (null then).
Surface* SurfaceBehind(const SURFOBJ* pso);
Surface* FindSurface(HSURF hsurf); // without locking; null when there is none

// A bitmap of the engine's own side: no handle limit, no fault plan, not counted as outstanding.
// `lDelta` 0: rows padded to 4 bytes; negative: bottom-up with rows of that many bytes.
// Null for a size or format that no bitmap has. It lives until DestroyBitmap or the end of the Engine.
Surface* MakeBitmap(SIZEL size, const PixelLayout& layout, LONG lDelta = 0);
void DestroyBitmap(Surface* bitmap);

} // namespace engine
