#pragma once

// The fixed parts of the drawing calls' records. Each begins at the buffer's start, every field on
// its natural alignment. A slot tells where the object's encoding begins, 0 for none. `unwritten`
// fields keep what the buffer held.

#include "capture/record_header.h"
#include "platform/objects.h"

namespace koru {

struct BitBltRecord {
    RecordHeader header;
    SLOT surface, source, mask, clip, xlate, brush;
    RECTL rclTrg;
    POINTL ptlSrc, ptlMask, ptlBrush;
    ROP4 rop4;
    ULONG unwritten;
};
static_assert(sizeof(BitBltRecord) == 112);
FIELD_AT(BitBltRecord, header, 0);
FIELD_AT(BitBltRecord, surface, 40);
FIELD_AT(BitBltRecord, source, 44);
FIELD_AT(BitBltRecord, mask, 48);
FIELD_AT(BitBltRecord, clip, 52);
FIELD_AT(BitBltRecord, xlate, 56);
FIELD_AT(BitBltRecord, brush, 60);
FIELD_AT(BitBltRecord, rclTrg, 64);
FIELD_AT(BitBltRecord, ptlSrc, 80);
FIELD_AT(BitBltRecord, ptlMask, 88);
FIELD_AT(BitBltRecord, ptlBrush, 96);
FIELD_AT(BitBltRecord, rop4, 104);
FIELD_AT(BitBltRecord, unwritten, 108);

struct CopyBitsRecord {
    RecordHeader header;
    SLOT surface, source, clip, xlate;
    RECTL rclDest;
    POINTL ptlSrc;
};
static_assert(sizeof(CopyBitsRecord) == 80);
FIELD_AT(CopyBitsRecord, header, 0);
FIELD_AT(CopyBitsRecord, surface, 40);
FIELD_AT(CopyBitsRecord, source, 44);
FIELD_AT(CopyBitsRecord, clip, 48);
FIELD_AT(CopyBitsRecord, xlate, 52);
FIELD_AT(CopyBitsRecord, rclDest, 56);
FIELD_AT(CopyBitsRecord, ptlSrc, 72);

struct StretchBltRecord {
    RecordHeader header;
    SLOT surface, source, mask, clip, xlate;
    RECTL rclDest, rclSrc;
    ULONG iMode;
};
static_assert(sizeof(StretchBltRecord) == 96);
FIELD_AT(StretchBltRecord, header, 0);
FIELD_AT(StretchBltRecord, surface, 40);
FIELD_AT(StretchBltRecord, source, 44);
FIELD_AT(StretchBltRecord, mask, 48);
FIELD_AT(StretchBltRecord, clip, 52);
FIELD_AT(StretchBltRecord, xlate, 56);
FIELD_AT(StretchBltRecord, rclDest, 60);
FIELD_AT(StretchBltRecord, rclSrc, 76);
FIELD_AT(StretchBltRecord, iMode, 92);

struct StretchBltRopRecord {
    RecordHeader header;
    SLOT surface, source, mask, clip, xlate;
    COLORADJUSTMENT ca;
    POINTL ptlHTOrg;
    RECTL rclDest, rclSrc;
    POINTL ptlMask;
    ULONG iMode;
    SLOT brush;
    ROP4 rop4;
};
static_assert(sizeof(StretchBltRopRecord) == 144);
FIELD_AT(StretchBltRopRecord, header, 0);
FIELD_AT(StretchBltRopRecord, surface, 40);
FIELD_AT(StretchBltRopRecord, source, 44);
FIELD_AT(StretchBltRopRecord, mask, 48);
FIELD_AT(StretchBltRopRecord, clip, 52);
FIELD_AT(StretchBltRopRecord, xlate, 56);
FIELD_AT(StretchBltRopRecord, ca, 60);
FIELD_AT(StretchBltRopRecord, ptlHTOrg, 84);
FIELD_AT(StretchBltRopRecord, rclDest, 92);
FIELD_AT(StretchBltRopRecord, rclSrc, 108);
FIELD_AT(StretchBltRopRecord, ptlMask, 124);
FIELD_AT(StretchBltRopRecord, iMode, 132);
FIELD_AT(StretchBltRopRecord, brush, 136);
FIELD_AT(StretchBltRopRecord, rop4, 140);

struct PlgBltRecord {
    RecordHeader header;
    SLOT surface, source, mask, clip, xlate;
    COLORADJUSTMENT ca;
    POINTL ptlBrushOrg;
    POINTFIX corners[3];
    RECTL rclSrc;
    POINTL ptlMask;
    ULONG iMode;
};
static_assert(sizeof(PlgBltRecord) == 144);
FIELD_AT(PlgBltRecord, header, 0);
FIELD_AT(PlgBltRecord, surface, 40);
FIELD_AT(PlgBltRecord, source, 44);
FIELD_AT(PlgBltRecord, mask, 48);
FIELD_AT(PlgBltRecord, clip, 52);
FIELD_AT(PlgBltRecord, xlate, 56);
FIELD_AT(PlgBltRecord, ca, 60);
FIELD_AT(PlgBltRecord, ptlBrushOrg, 84);
FIELD_AT(PlgBltRecord, corners, 92);
FIELD_AT(PlgBltRecord, rclSrc, 116);
FIELD_AT(PlgBltRecord, ptlMask, 132);
FIELD_AT(PlgBltRecord, iMode, 140);

struct AlphaBlendRecord {
    RecordHeader header;
    SLOT surface, source, clip, xlate;
    RECTL rclDest, rclSrc;
    BLENDFUNCTION blendFunction;
    ULONG unwritten;
};
static_assert(sizeof(AlphaBlendRecord) == 96);
FIELD_AT(AlphaBlendRecord, header, 0);
FIELD_AT(AlphaBlendRecord, surface, 40);
FIELD_AT(AlphaBlendRecord, source, 44);
FIELD_AT(AlphaBlendRecord, clip, 48);
FIELD_AT(AlphaBlendRecord, xlate, 52);
FIELD_AT(AlphaBlendRecord, rclDest, 56);
FIELD_AT(AlphaBlendRecord, rclSrc, 72);
FIELD_AT(AlphaBlendRecord, blendFunction, 88);
FIELD_AT(AlphaBlendRecord, unwritten, 92);

struct TransparentBltRecord {
    RecordHeader header;
    SLOT surface, source, clip, xlate;
    RECTL rclDst, rclSrc;
    ULONG iTransColor, ulReserved;
};
static_assert(sizeof(TransparentBltRecord) == 96);
FIELD_AT(TransparentBltRecord, header, 0);
FIELD_AT(TransparentBltRecord, surface, 40);
FIELD_AT(TransparentBltRecord, source, 44);
FIELD_AT(TransparentBltRecord, clip, 48);
FIELD_AT(TransparentBltRecord, xlate, 52);
FIELD_AT(TransparentBltRecord, rclDst, 56);
FIELD_AT(TransparentBltRecord, rclSrc, 72);
FIELD_AT(TransparentBltRecord, iTransColor, 88);
FIELD_AT(TransparentBltRecord, ulReserved, 92);

struct GradientFillRecord {
    RecordHeader header;
    SLOT surface, clip, xlate;
    SLOT array; // of the array copied last
    ULONG nVertex, zero, nMesh;
    RECTL rclExtents;
    POINTL ptlDitherOrg;
    ULONG ulMode;
};
static_assert(sizeof(GradientFillRecord) == 96);
FIELD_AT(GradientFillRecord, header, 0);
FIELD_AT(GradientFillRecord, surface, 40);
FIELD_AT(GradientFillRecord, clip, 44);
FIELD_AT(GradientFillRecord, xlate, 48);
FIELD_AT(GradientFillRecord, array, 52);
FIELD_AT(GradientFillRecord, nVertex, 56);
FIELD_AT(GradientFillRecord, zero, 60);
FIELD_AT(GradientFillRecord, nMesh, 64);
FIELD_AT(GradientFillRecord, rclExtents, 68);
FIELD_AT(GradientFillRecord, ptlDitherOrg, 84);
FIELD_AT(GradientFillRecord, ulMode, 92);

struct StrokePathRecord {
    RecordHeader header;
    SLOT surface, path, clip, brush, lineAttrs;
    POINTL ptlBrushOrg;
    MIX mix;
};
static_assert(sizeof(StrokePathRecord) == 72);
FIELD_AT(StrokePathRecord, header, 0);
FIELD_AT(StrokePathRecord, surface, 40);
FIELD_AT(StrokePathRecord, path, 44);
FIELD_AT(StrokePathRecord, clip, 48);
FIELD_AT(StrokePathRecord, brush, 52);
FIELD_AT(StrokePathRecord, lineAttrs, 56);
FIELD_AT(StrokePathRecord, ptlBrushOrg, 60);
FIELD_AT(StrokePathRecord, mix, 68);

struct FillPathRecord {
    RecordHeader header;
    SLOT surface, path, clip, brush;
    POINTL ptlBrushOrg;
    MIX mix;
    ULONG flOptions;
};
static_assert(sizeof(FillPathRecord) == 72);
FIELD_AT(FillPathRecord, header, 0);
FIELD_AT(FillPathRecord, surface, 40);
FIELD_AT(FillPathRecord, path, 44);
FIELD_AT(FillPathRecord, clip, 48);
FIELD_AT(FillPathRecord, brush, 52);
FIELD_AT(FillPathRecord, ptlBrushOrg, 56);
FIELD_AT(FillPathRecord, mix, 64);
FIELD_AT(FillPathRecord, flOptions, 68);

struct StrokeAndFillPathRecord {
    RecordHeader header;
    SLOT surface, path, clip, strokeBrush, lineAttrs, fillBrush;
    POINTL ptlBrushOrg;
    MIX mixFill;
    ULONG flOptions;
};
static_assert(sizeof(StrokeAndFillPathRecord) == 80);
FIELD_AT(StrokeAndFillPathRecord, header, 0);
FIELD_AT(StrokeAndFillPathRecord, surface, 40);
FIELD_AT(StrokeAndFillPathRecord, path, 44);
FIELD_AT(StrokeAndFillPathRecord, clip, 48);
FIELD_AT(StrokeAndFillPathRecord, strokeBrush, 52);
FIELD_AT(StrokeAndFillPathRecord, lineAttrs, 56);
FIELD_AT(StrokeAndFillPathRecord, fillBrush, 60);
FIELD_AT(StrokeAndFillPathRecord, ptlBrushOrg, 64);
FIELD_AT(StrokeAndFillPathRecord, mixFill, 72);
FIELD_AT(StrokeAndFillPathRecord, flOptions, 76);

struct PaintRecord {
    RecordHeader header;
    SLOT surface, clip, brush;
    POINTL ptlBrushOrg;
    MIX mix;
};
static_assert(sizeof(PaintRecord) == 64);
FIELD_AT(PaintRecord, header, 0);
FIELD_AT(PaintRecord, surface, 40);
FIELD_AT(PaintRecord, clip, 44);
FIELD_AT(PaintRecord, brush, 48);
FIELD_AT(PaintRecord, ptlBrushOrg, 52);
FIELD_AT(PaintRecord, mix, 60);

struct LineToRecord {
    RecordHeader header;
    SLOT surface, clip, brush;
    LONG x1, y1, x2, y2;
    MIX mix;
};
static_assert(sizeof(LineToRecord) == 72);
FIELD_AT(LineToRecord, header, 0);
FIELD_AT(LineToRecord, surface, 40);
FIELD_AT(LineToRecord, clip, 44);
FIELD_AT(LineToRecord, brush, 48);
FIELD_AT(LineToRecord, x1, 52);
FIELD_AT(LineToRecord, y1, 56);
FIELD_AT(LineToRecord, x2, 60);
FIELD_AT(LineToRecord, y2, 64);
FIELD_AT(LineToRecord, mix, 68);

struct TextOutRecord {
    RecordHeader header;
    SLOT surface, string, font, clip;
    ULONG extraCount;
    SLOT extra, foreBrush, opaqueBrush;
    RECTL rclOpaque;
    POINTL ptlOrg;
    MIX mix;
    ULONG unwritten;
};
static_assert(sizeof(TextOutRecord) == 104);
FIELD_AT(TextOutRecord, header, 0);
FIELD_AT(TextOutRecord, surface, 40);
FIELD_AT(TextOutRecord, string, 44);
FIELD_AT(TextOutRecord, font, 48);
FIELD_AT(TextOutRecord, clip, 52);
FIELD_AT(TextOutRecord, extraCount, 56);
FIELD_AT(TextOutRecord, extra, 60);
FIELD_AT(TextOutRecord, foreBrush, 64);
FIELD_AT(TextOutRecord, opaqueBrush, 68);
FIELD_AT(TextOutRecord, rclOpaque, 72);
FIELD_AT(TextOutRecord, ptlOrg, 88);
FIELD_AT(TextOutRecord, mix, 96);
FIELD_AT(TextOutRecord, unwritten, 100);

} // namespace koru
