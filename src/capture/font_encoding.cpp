#include "capture/byte_cursor.h"
#include "capture/encoders.h"
#include "driver/handles.h"
#include "escape/item_cache.h"
#include "platform/services.h"

namespace koru {

namespace {

    static_assert(sizeof(MetricsEncoding) <= sizeof(IFIMETRICS));

    // A name stands somewhere behind the metrics and ends with them at the latest.
    ULONG ExpandName(const IFIMETRICS& metrics, ULONG offset, BYTE* at, ULONG room)
    {
        const BYTE* const name = reinterpret_cast<const BYTE*>(&metrics) + offset;
        const ULONG limit = metrics.cjThis > offset ? (metrics.cjThis - offset) / sizeof(WCHAR) : NoLimit;
        return ExpandZWSTR(name, limit, at, room);
    }

    // Names that are missing or do not fit keep what the metrics say, and no length.
    void AppendNames(const IFIMETRICS& metrics, FontEncoding& encoding, ByteCursor& cursor)
    {
        const LONG offsets[] = {metrics.dpwszFamilyName, metrics.dpwszStyleName, metrics.dpwszFaceName,
                                metrics.dpwszUniqueName};
        for (ULONG i = 0; i < 4; ++i) {
            if (offsets[i] == 0)
                continue;
            const ULONG size = ExpandName(metrics, static_cast<ULONG>(offsets[i]), cursor.At(), cursor.Left());
            if (size == 0)
                continue;
            encoding.metrics.names[i] = cursor.Offset();
            encoding.nameLengths[i] = size / sizeof(WCHAR) - 1;
            cursor.Advance(size);
        }
    }

} // namespace

ULONG ExpandFontObj(FONTOBJ* pfo, BYTE* at, ULONG room)
{
    auto* const encoding = BeginLayout<FontEncoding>(at, room, "ExpandFontObj. Error buffer too small. ");
    if (!encoding)
        return 0;
    encoding->cached = pfo->iUniq != 0 && IsCached(CacheOfFonts, pfo->iUniq);
    encoding->iUniq = pfo->iUniq;
    encoding->iFace = pfo->iFace;
    encoding->cxMax = pfo->cxMax;
    encoding->flFontType = pfo->flFontType;
    encoding->iTTUniq = pfo->iTTUniq;
    encoding->iFile = pfo->iFile;
    encoding->sizLogResPpi = pfo->sizLogResPpi;
    encoding->ulStyleSize = pfo->ulStyleSize;
    encoding->pvConsumer = NumberOf(pfo->pvConsumer);
    encoding->pvProducer = NumberOf(pfo->pvProducer);

    ByteCursor cursor(at, room);
    cursor.Advance(sizeof(*encoding));
    const IFIMETRICS* const metrics = FONTOBJ_pifi(pfo);
    if (!metrics) {
        memset(&encoding->metrics, 0, sizeof(encoding->metrics));
        return cursor.Offset();
    }
    memcpy(&encoding->metrics, metrics, sizeof(encoding->metrics));
    AppendNames(*metrics, *encoding, cursor);
    return cursor.Offset();
}

} // namespace koru
