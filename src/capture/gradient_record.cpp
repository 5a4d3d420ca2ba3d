#include "capture/call_bits.h"
#include "capture/drawing_record_layouts.h"
#include "capture/record_cursor.h"
#include "capture/record_values.h"
#include "capture/records.h"
#include "platform/constants.h"

namespace koru {

namespace {

    // Clients count on it: an array takes as much of the record as the last object did, whatever its
    // own size. So the mesh may overlay the vertices, and both may stick out behind the record's length.
    void AppendArray(RecordCursor& cursor, SLOT& slot, const void* array, ULONG elementSize, ULONG count)
    {
        if (!array)
            return;
        slot = cursor.Offset();
        cursor.CopyAhead(array, elementSize, count);
        cursor.Advance(cursor.LastSize());
    }

} // namespace

ULONG ExpandDrvGradientFill(SURFOBJ* psoDest, CLIPOBJ* pco, XLATEOBJ* pxlo, TRIVERTEX* pVertex, ULONG nVertex,
                            void* pMesh, ULONG nMesh, RECTL* prclExtents, POINTL* pptlDitherOrg, ULONG ulMode,
                            BYTE* buffer, ULONG room)
{
    auto* const record = BeginLayoutFormatted<GradientFillRecord>(
        buffer, room, "ExpandDrvGradientFill: Error, The buffer is too small. %d\n");
    if (!record)
        return 0;
    record->surface = record->clip = record->xlate = record->array = 0;
    record->nVertex = nVertex;
    record->zero = 0;
    record->nMesh = nMesh;
    record->rclExtents = Given(prclExtents);
    record->ptlDitherOrg = Given(pptlDitherOrg);
    record->ulMode = ulMode;

    RecordCursor cursor(*record, room);
    cursor.Append(record->surface, psoDest, TargetSurface);
    cursor.Append(record->clip, pco, ExpandClipObj);
    cursor.AppendLast(record->xlate, pxlo, ExpandXLATEOBJ);
    AppendArray(cursor, record->array, pVertex, sizeof(TRIVERTEX), nVertex);
    const ULONG meshSize = ulMode == GRADIENT_FILL_TRIANGLE ? sizeof(GRADIENT_TRIANGLE) : sizeof(GRADIENT_RECT);
    AppendArray(cursor, record->array, pMesh, meshSize, nMesh);
    return cursor.Finish(CALL_GRADIENTFILL);
}

} // namespace koru
