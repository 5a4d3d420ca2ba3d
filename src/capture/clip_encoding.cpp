#include "capture/byte_cursor.h"
#include "capture/capture_state.h"
#include "capture/encoders.h"
#include "escape/item_cache.h"
#include "platform/constants.h"
#include "platform/services.h"

namespace koru {

namespace {

    // Reaching it stops the enumeration: what is recorded stays below the size of the scratch memory.
    constexpr ULONG RectangleLimit = CaptureBufferSize / sizeof(RECTL);

    // Appends the rectangles batch by batch; a batch is written whole or not at all. How many were.
    ULONG AppendRectangles(CLIPOBJ* pco, ByteCursor& cursor)
    {
        auto* const batch = reinterpret_cast<ENUMRECTS*>(CaptureScratch());
        if (!batch)
            return 0;
        ULONG count = 0;
        CLIPOBJ_cEnumStart(pco, TRUE, CT_RECTANGLES, CD_ANY, 0);
        for (BOOL more = TRUE; more;) {
            more = CLIPOBJ_bEnum(pco, CaptureBufferSize, &batch->c);
            if (batch->c >= RectangleLimit - count)
                break;
            if (!cursor.Holds(batch->c, sizeof(RECTL))) {
                DebugPrintNumber("ExpandDrvClipObj: Error buffer too small, Too many rectangles ", cursor.Left());
                continue; // a later, smaller batch may fit
            }
            cursor.Write(batch->arcl, batch->c * sizeof(RECTL));
            count += batch->c;
        }
        return count;
    }

} // namespace

ULONG ExpandClipObj(CLIPOBJ* pco, BYTE* at, ULONG room)
{
    auto* const encoding = BeginLayout<ClipEncoding>(at, room, "ExpandClipObj: The buffer is too small. ");
    if (!encoding)
        return 0;
    encoding->cached = pco->iUniq != 0 && IsCached(CacheOfClips, pco->iUniq);
    encoding->iUniq = pco->iUniq;
    encoding->rclBounds = pco->rclBounds;
    encoding->iDComplexity = pco->iDComplexity;
    encoding->iFComplexity = pco->iFComplexity;
    encoding->iMode = pco->iMode;
    encoding->fjOptions = pco->fjOptions;

    ByteCursor cursor(at, room);
    cursor.Advance(sizeof(*encoding));
    encoding->rectangleCount = pco->iDComplexity == DC_COMPLEX ? AppendRectangles(pco, cursor) : 0;
    encoding->rectangles = encoding->rectangleCount != 0 ? sizeof(*encoding) : 0;
    return cursor.Offset();
}

} // namespace koru
