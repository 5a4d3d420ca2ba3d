#include "capture/byte_cursor.h"
#include "capture/encoders.h"
#include "driver/handles.h"
#include "platform/constants.h"
#include "platform/services.h"

namespace koru {

ULONG ExpandBrushObj(const BRUSHOBJ* pbo, BYTE* at, ULONG room)
{
    constexpr ULONG None = 0xFFFFFFFF;
    auto* const encoding = BeginLayout<BrushEncoding>(at, room, "ExpandBrushObj. Error The buffer is too small. ");
    if (!encoding)
        return 0;
    encoding->iSolidColor = pbo ? pbo->iSolidColor : None;
    encoding->pvRbrush = pbo ? NumberOf(pbo->pvRbrush) : None;
    encoding->pvRbrushAgain = encoding->pvRbrush;
    return sizeof(*encoding);
}

ULONG ExpandXLATEOBJ(XLATEOBJ* pxlo, BYTE* at, ULONG room)
{
    auto* const encoding = BeginLayout<XlateEncoding>(at, room, "ExpandXLATEOBJ: Error Buffer too small. ");
    if (!encoding)
        return 0;
    static_assert(sizeof(*encoding) == sizeof(*pxlo));
    memcpy(encoding, pxlo, sizeof(*encoding));

    ByteCursor cursor(at, room);
    cursor.Advance(sizeof(*encoding));
    if (!cursor.Holds(pxlo->cEntries, sizeof(ULONG))) {
        DebugPrintPiece("ExpandXLATEOBJ. Warning!!! Unable to copy the entries, buffer too small.\n");
        encoding->cEntries = 0;
        return cursor.Offset();
    }
    if (!pxlo->pulXlate && pxlo->iSrcType != PAL_INDEXED) {
        encoding->cEntries = 0;
        return cursor.Offset();
    }
    encoding->entries = sizeof(*encoding); // also when there is no vector: clients look at the length
    const ULONG* const table = pxlo->pulXlate ? pxlo->pulXlate : XLATEOBJ_piVector(pxlo);
    if (table)
        cursor.Write(table, pxlo->cEntries * sizeof(ULONG));
    return cursor.Offset();
}

} // namespace koru
