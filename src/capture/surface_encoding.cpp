#include "capture/byte_cursor.h"
#include "capture/capture_state.h"
#include "capture/encoders.h"
#include "driver/handles.h"
#include "escape/item_cache.h"

namespace koru {

namespace {

    // Saves the pixels of a source or mask surface as DrvSaveScreenBits does, and gives the copy's
    // handle. Null is the switch: records refer to no pixels.
    using BitsSaver = ULONG (*)(const SURFOBJ& surface, const RECTL& rectangle);
    constexpr BitsSaver SaveBits = nullptr;

    bool IsWithinSizeLimit(const RECTL& rectangle)
    {
        if (BitsSizeLimit < 0 || rectangle.left >= rectangle.right || rectangle.top >= rectangle.bottom)
            return true;
        const LONGLONG width = static_cast<LONGLONG>(rectangle.right) - rectangle.left;
        const LONGLONG height = static_cast<LONGLONG>(rectangle.bottom) - rectangle.top;
        // Each alone first: the product of any two could overflow.
        return width <= BitsSizeLimit && height <= BitsSizeLimit && width * height <= BitsSizeLimit;
    }

    ULONG SavedBits(const SURFOBJ& surface, ULONG bitsFlag, const RECTL* rectangle)
    {
        if (!SaveBits || bitsFlag == 0)
            return 0;
        const RECTL part = rectangle ? *rectangle : RECTL{0, 0, surface.sizlBitmap.cx, surface.sizlBitmap.cy};
        return IsWithinSizeLimit(part) ? SaveBits(surface, part) : 0;
    }

} // namespace

ULONG ExpandSurfObj(const SURFOBJ* pso, BYTE* at, ULONG room, ULONG bitsFlag, const RECTL* rectangle)
{
    auto* const encoding = BeginLayout<SurfaceEncoding>(at, room, "ExpandSurfObj: The buffer is too small. ");
    if (!encoding)
        return 0;
    encoding->cached = pso->iUniq != 0 && IsCached(CacheOfSurfaces, pso->iUniq);
    encoding->iUniq = pso->iUniq;
    encoding->dhsurf = NumberOf(pso->dhsurf);
    encoding->hsurf = NumberOf(pso->hsurf);
    encoding->dhpdev = NumberOf(pso->dhpdev);
    encoding->hdev = NumberOf(pso->hdev);
    encoding->sizlBitmap = pso->sizlBitmap;
    encoding->cjBits = pso->cjBits;
    encoding->pvBits = NumberOf(pso->pvBits);
    encoding->pvScan0 = NumberOf(pso->pvScan0);
    encoding->lDelta = pso->lDelta;
    encoding->iBitmapFormat = pso->iBitmapFormat;
    encoding->iType = pso->iType;
    encoding->fjBitmap = pso->fjBitmap;
    encoding->savedBits = SavedBits(*pso, bitsFlag, rectangle);
    encoding->reserved = 0;
    return sizeof(*encoding);
}

} // namespace koru
