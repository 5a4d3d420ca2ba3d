#include "capture/byte_cursor.h"
#include "capture/capture_state.h"
#include "capture/encoders.h"
#include "platform/services.h"

namespace koru {

namespace {

    // Far beyond any room, and small enough to be added to.
    constexpr ULONG MostPoints = 0x1000000;

    // Writes the subpath's entry. Its points are gathered in the scratch memory, because they follow
    // all entries; the entry notes where there.
    void AppendSubpath(const PATHDATA& subpath, PathEncoding& path, ByteCursor& entries, ByteCursor& points)
    {
        auto& entry = *reinterpret_cast<SubpathEncoding*>(entries.At());
        entry.flags = subpath.flags;
        entry.count = subpath.count;
        entry.points = 0;
        if (subpath.count < points.Left() / sizeof(POINTFIX)) {
            entry.points = points.Offset();
            points.Write(subpath.pptfx, subpath.count * sizeof(POINTFIX));
        } else {
            DebugPrintNumber("ExpandPathDat: Error there isn't enough space in the temporary buffer. Some points lost.",
                             subpath.count);
            DebugPrintNumber("ExpandPathDat: len = ", subpath.count * sizeof(POINTFIX));
            DebugPrintNumber("ExpandPathDat: *pulPathData + 1 = ", path.subpathCount + 1);
            DebugPrintNumber("ExpanPathData: TempBuffLen =  ", points.Left());
        }
        ++path.subpathCount;
        entries.Advance(sizeof(entry));
    }

    // Turns positions in the scratch memory into distances from each entry. The position 0 is that of
    // the first points and of lost ones: it stays.
    void LinkPoints(SubpathEncoding* entries, ULONG count)
    {
        for (ULONG i = 0; i < count; ++i)
            if (entries[i].points != 0)
                entries[i].points += (count - i) * sizeof(SubpathEncoding);
    }

} // namespace

ULONG ExpandPathData(PATHOBJ* ppo, PathEncoding& path, BYTE* at, ULONG room)
{
    path.subpathCount = 0;
    if (!BeginLayout<SubpathEncoding>(at, room, "ExpandPathData. Error Buffer too small. "))
        return 0;
    ByteCursor entries(at, room);
    ByteCursor points(CaptureScratch(), CaptureScratch() ? CaptureBufferSize : 0);
    ULONG lastPointsSize = 0;
    PATHOBJ_vEnumStart(ppo);
    for (BOOL more = TRUE; more;) {
        PATHDATA subpath = {};
        more = PATHOBJ_bEnum(ppo, &subpath);
        if (!more && subpath.count == 0)
            break;
        if (!entries.Holds(1, sizeof(SubpathEncoding))) {
            DebugPrintPiece("ExpandPathData. Error there isn't size enough to store the paths.\n");
            return 0;
        }
        AppendSubpath(subpath, path, entries, points);
        lastPointsSize = (subpath.count < MostPoints ? subpath.count : MostPoints) * sizeof(POINTFIX);
    }
    if (points.Offset() >= entries.Left()) {
        DebugPrintPiece("ExpandPathData. Warning!!! there isn't enough size for the points. They aren't included.\n");
        return lastPointsSize;
    }
    LinkPoints(reinterpret_cast<SubpathEncoding*>(at), path.subpathCount);
    entries.Write(points.Start(), points.Offset());
    return entries.Offset();
}

ULONG ExpandPathObj(PATHOBJ* ppo, BYTE* at, ULONG room)
{
    auto* const encoding = BeginLayout<PathEncoding>(at, room, "ExpandPathObj. Error buffer too small. ");
    if (!encoding)
        return 0;
    encoding->fl = ppo->fl;
    encoding->cCurves = ppo->cCurves;
    ByteCursor cursor(at, room);
    cursor.Advance(sizeof(*encoding));
    const ULONG size = ExpandPathData(ppo, *encoding, cursor.At(), cursor.Left());
    encoding->pathData = size != 0 ? sizeof(*encoding) : 0;
    return sizeof(*encoding) + size;
}

ULONG ExpandLineattrs(const LINEATTRS* plineattrs, BYTE* at, ULONG room)
{
    auto* const encoding = BeginLayout<LineAttrsEncoding>(at, room, "ExpandLineattrs: Error buffer too small. ");
    if (!encoding)
        return 0;
    static_assert(sizeof(*encoding) == sizeof(*plineattrs));
    memcpy(encoding, plineattrs, sizeof(*encoding));
    encoding->pstyle = 0;

    ByteCursor cursor(at, room);
    cursor.Advance(sizeof(*encoding));
    if (!plineattrs->pstyle)
        return cursor.Offset();
    if (cursor.Holds(plineattrs->cstyle, sizeof(FLOAT_LONG)))
        cursor.Write(plineattrs->pstyle, plineattrs->cstyle * sizeof(FLOAT_LONG));
    else
        DebugPrintPiece("ExpandLineattrs: Warning!! There isn't size enough. Styles are not included.\n");
    return cursor.Offset();
}

} // namespace koru
