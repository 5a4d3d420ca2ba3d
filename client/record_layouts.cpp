#include "layout_rows.h"

#include <bit>

namespace koru::client {
namespace {

    constexpr Field HeaderFields[] = {
        KORU_FIELD(RecordHeader, totalLength, 0),  KORU_FIELD(RecordHeader, callType, 4),
        KORU_FIELD(RecordHeader, suspended, 8),    KORU_FIELD(RecordHeader, identifier0, 12),
        KORU_FIELD(RecordHeader, identifier1, 16), KORU_FIELD(RecordHeader, unwritten, 20),
        KORU_FIELD(RecordHeader, timeStamp, 24),   KORU_FIELD(RecordHeader, reserved0, 32),
        KORU_FIELD(RecordHeader, reserved1, 36),
    };
    static_assert(Tile(HeaderFields, 0, 40));

    constexpr Field AssertModeFields[] = {
        KORU_FIELD(AssertModeRecord, dhpdev, 40),
        KORU_FIELD(AssertModeRecord, enable, 44),
    };

    constexpr Field EnablePDEVFields[] = {
        KORU_FIELD(EnablePDEVRecord, deviceMode, 40),     KORU_FIELD(EnablePDEVRecord, logicalAddress, 44),
        KORU_FIELD(EnablePDEVRecord, patternCount, 48),   KORU_FIELD(EnablePDEVRecord, patterns, 52),
        KORU_FIELD(EnablePDEVRecord, deviceInfoSize, 56), KORU_FIELD(EnablePDEVRecord, deviceInfo, 60),
        KORU_FIELD(EnablePDEVRecord, hdev, 64),           KORU_FIELD(EnablePDEVRecord, dhpdev, 68),
        KORU_FIELD(EnablePDEVRecord, deviceName, 72),     KORU_FIELD(EnablePDEVRecord, driverHandle, 76),
    };

    constexpr Field DisablePDEVFields[] = {
        KORU_FIELD(DisablePDEVRecord, dhpdev, 40),
        KORU_FIELD(DisablePDEVRecord, unwritten, 44),
    };

    constexpr Field CompletePDEVFields[] = {
        KORU_FIELD(CompletePDEVRecord, dhpdev, 40),
        KORU_FIELD(CompletePDEVRecord, hdev, 44),
    };

    constexpr Field EnableSurfaceFields[] = {
        KORU_FIELD(EnableSurfaceRecord, dhpdev, 40),
        KORU_FIELD(EnableSurfaceRecord, hsurf, 44),
    };

    constexpr Field DisableSurfaceFields[] = {
        KORU_FIELD(DisableSurfaceRecord, dhpdev, 40),
        KORU_FIELD(DisableSurfaceRecord, unwritten, 44),
    };

    constexpr Field CreateDeviceBitmapFields[] = {
        KORU_FIELD(CreateDeviceBitmapRecord, hbitmap, 40), KORU_FIELD(CreateDeviceBitmapRecord, hsurfBacking, 44),
        KORU_FIELD(CreateDeviceBitmapRecord, dhpdev, 48),  KORU_FIELD(CreateDeviceBitmapRecord, size, 52),
        KORU_FIELD(CreateDeviceBitmapRecord, format, 60),
    };

    constexpr Field DeleteDeviceBitmapFields[] = {
        KORU_FIELD(DeleteDeviceBitmapRecord, dhsurf, 40),
        KORU_FIELD(DeleteDeviceBitmapRecord, unwritten, 44),
    };

    constexpr Field BitBltFields[] = {
        KORU_FIELD(BitBltRecord, surface, 40), KORU_FIELD(BitBltRecord, source, 44),
        KORU_FIELD(BitBltRecord, mask, 48),    KORU_FIELD(BitBltRecord, clip, 52),
        KORU_FIELD(BitBltRecord, xlate, 56),   KORU_FIELD(BitBltRecord, brush, 60),
        KORU_FIELD(BitBltRecord, rclTrg, 64),  KORU_FIELD(BitBltRecord, ptlSrc, 80),
        KORU_FIELD(BitBltRecord, ptlMask, 88), KORU_FIELD(BitBltRecord, ptlBrush, 96),
        KORU_FIELD(BitBltRecord, rop4, 104),   KORU_FIELD(BitBltRecord, unwritten, 108),
    };

    constexpr Field StretchBltFields[] = {
        KORU_FIELD(StretchBltRecord, surface, 40), KORU_FIELD(StretchBltRecord, source, 44),
        KORU_FIELD(StretchBltRecord, mask, 48),    KORU_FIELD(StretchBltRecord, clip, 52),
        KORU_FIELD(StretchBltRecord, xlate, 56),   KORU_FIELD(StretchBltRecord, rclDest, 60),
        KORU_FIELD(StretchBltRecord, rclSrc, 76),  KORU_FIELD(StretchBltRecord, mode, 92),
    };

    constexpr Field FillPathFields[] = {
        KORU_FIELD(FillPathRecord, surface, 40),  KORU_FIELD(FillPathRecord, path, 44),
        KORU_FIELD(FillPathRecord, clip, 48),     KORU_FIELD(FillPathRecord, brush, 52),
        KORU_FIELD(FillPathRecord, ptlBrush, 56), KORU_FIELD(FillPathRecord, mix, 64),
        KORU_FIELD(FillPathRecord, options, 68),
    };

    constexpr Field LineToFields[] = {
        KORU_FIELD(LineToRecord, surface, 40), KORU_FIELD(LineToRecord, clip, 44), KORU_FIELD(LineToRecord, brush, 48),
        KORU_FIELD(LineToRecord, x1, 52),      KORU_FIELD(LineToRecord, y1, 56),   KORU_FIELD(LineToRecord, x2, 60),
        KORU_FIELD(LineToRecord, y2, 64),      KORU_FIELD(LineToRecord, mix, 68),
    };

    constexpr Field MovePointerFields[] = {
        KORU_FIELD(MovePointerRecord, surface, 40),   KORU_FIELD(MovePointerRecord, x, 44),
        KORU_FIELD(MovePointerRecord, y, 48),         KORU_FIELD(MovePointerRecord, rcl, 52),
        KORU_FIELD(MovePointerRecord, unwritten, 68),
    };

    constexpr Field SetPointerShapeFields[] = {
        KORU_FIELD(SetPointerShapeRecord, surface, 40),  KORU_FIELD(SetPointerShapeRecord, mask, 44),
        KORU_FIELD(SetPointerShapeRecord, color, 48),    KORU_FIELD(SetPointerShapeRecord, xlate, 52),
        KORU_FIELD(SetPointerShapeRecord, xHot, 56),     KORU_FIELD(SetPointerShapeRecord, yHot, 60),
        KORU_FIELD(SetPointerShapeRecord, x, 64),        KORU_FIELD(SetPointerShapeRecord, y, 68),
        KORU_FIELD(SetPointerShapeRecord, rcl, 72),      KORU_FIELD(SetPointerShapeRecord, flags, 88),
        KORU_FIELD(SetPointerShapeRecord, reserved, 92),
    };

    constexpr Field PaintFields[] = {
        KORU_FIELD(PaintRecord, surface, 40),  KORU_FIELD(PaintRecord, clip, 44), KORU_FIELD(PaintRecord, brush, 48),
        KORU_FIELD(PaintRecord, ptlBrush, 52), KORU_FIELD(PaintRecord, mix, 60),
    };

    constexpr Field StrokePathFields[] = {
        KORU_FIELD(StrokePathRecord, surface, 40),
        KORU_FIELD(StrokePathRecord, path, 44),
        KORU_FIELD(StrokePathRecord, clip, 48),
        KORU_FIELD(StrokePathRecord, brush, 52),
        KORU_FIELD(StrokePathRecord, lineAttributes, 56),
        KORU_FIELD(StrokePathRecord, ptlBrush, 60),
        KORU_FIELD(StrokePathRecord, mix, 68),
    };

    constexpr Field TextOutFields[] = {
        KORU_FIELD(TextOutRecord, surface, 40),    KORU_FIELD(TextOutRecord, string, 44),
        KORU_FIELD(TextOutRecord, font, 48),       KORU_FIELD(TextOutRecord, clip, 52),
        KORU_FIELD(TextOutRecord, extraCount, 56), KORU_FIELD(TextOutRecord, extra, 60),
        KORU_FIELD(TextOutRecord, foreBrush, 64),  KORU_FIELD(TextOutRecord, opaqueBrush, 68),
        KORU_FIELD(TextOutRecord, rclOpaque, 72),  KORU_FIELD(TextOutRecord, ptlOrigin, 88),
        KORU_FIELD(TextOutRecord, mix, 96),        KORU_FIELD(TextOutRecord, unwritten, 100),
    };

    constexpr Field RealizeBrushFields[] = {
        KORU_FIELD(RealizeBrushRecord, brush, 40),   KORU_FIELD(RealizeBrushRecord, target, 44),
        KORU_FIELD(RealizeBrushRecord, pattern, 48), KORU_FIELD(RealizeBrushRecord, mask, 52),
        KORU_FIELD(RealizeBrushRecord, xlate, 56),   KORU_FIELD(RealizeBrushRecord, hatch, 60),
    };

    constexpr Field DitherColorFields[] = {
        KORU_FIELD(DitherColorRecord, dhpdev, 40),   KORU_FIELD(DitherColorRecord, mode, 44),
        KORU_FIELD(DitherColorRecord, rgb, 48),      KORU_FIELD(DitherColorRecord, dither, 52),
        KORU_FIELD(DitherColorRecord, returned, 56), KORU_FIELD(DitherColorRecord, unwritten, 60),
    };

    constexpr Field GetModesFields[] = {
        KORU_FIELD(GetModesRecord, driverHandle, 40),
        KORU_FIELD(GetModesRecord, outputSize, 44),
        KORU_FIELD(GetModesRecord, deviceMode, 48),
        KORU_FIELD(GetModesRecord, unwritten, 52),
    };

    constexpr Field CopyBitsFields[] = {
        KORU_FIELD(CopyBitsRecord, surface, 40), KORU_FIELD(CopyBitsRecord, source, 44),
        KORU_FIELD(CopyBitsRecord, clip, 48),    KORU_FIELD(CopyBitsRecord, xlate, 52),
        KORU_FIELD(CopyBitsRecord, rclDest, 56), KORU_FIELD(CopyBitsRecord, ptlSrc, 72),
    };

    constexpr Field SaveScreenBitsFields[] = {
        KORU_FIELD(SaveScreenBitsRecord, surface, 40),  KORU_FIELD(SaveScreenBitsRecord, mode, 44),
        KORU_FIELD(SaveScreenBitsRecord, ident, 48),    KORU_FIELD(SaveScreenBitsRecord, rcl, 52),
        KORU_FIELD(SaveScreenBitsRecord, returned, 68),
    };

    constexpr Field SetPaletteFields[] = {
        KORU_FIELD(SetPaletteRecord, unwritten0, 40), KORU_FIELD(SetPaletteRecord, flags, 44),
        KORU_FIELD(SetPaletteRecord, start, 48),      KORU_FIELD(SetPaletteRecord, count, 52),
        KORU_FIELD(SetPaletteRecord, entries, 56),    KORU_FIELD(SetPaletteRecord, unwritten1, 60),
    };

    constexpr Field EscapeFields[] = {
        KORU_FIELD(EscapeRecord, returned, 40), KORU_FIELD(EscapeRecord, surface, 44),
        KORU_FIELD(EscapeRecord, code, 48),     KORU_FIELD(EscapeRecord, inputSize, 52),
        KORU_FIELD(EscapeRecord, input, 56),    KORU_FIELD(EscapeRecord, outputSize, 60),
        KORU_FIELD(EscapeRecord, output, 64),   KORU_FIELD(EscapeRecord, unwritten, 68),
    };

    constexpr Field AlphaBlendFields[] = {
        KORU_FIELD(AlphaBlendRecord, surface, 40), KORU_FIELD(AlphaBlendRecord, source, 44),
        KORU_FIELD(AlphaBlendRecord, clip, 48),    KORU_FIELD(AlphaBlendRecord, xlate, 52),
        KORU_FIELD(AlphaBlendRecord, rclDest, 56), KORU_FIELD(AlphaBlendRecord, rclSrc, 72),
        KORU_FIELD(AlphaBlendRecord, blend, 88),   KORU_FIELD(AlphaBlendRecord, unwritten, 92),
    };

    constexpr Field GradientFillFields[] = {
        KORU_FIELD(GradientFillRecord, surface, 40),     KORU_FIELD(GradientFillRecord, clip, 44),
        KORU_FIELD(GradientFillRecord, xlate, 48),       KORU_FIELD(GradientFillRecord, arrays, 52),
        KORU_FIELD(GradientFillRecord, vertexCount, 56), KORU_FIELD(GradientFillRecord, reserved, 60),
        KORU_FIELD(GradientFillRecord, meshCount, 64),   KORU_FIELD(GradientFillRecord, rclExtents, 68),
        KORU_FIELD(GradientFillRecord, ptlDither, 84),   KORU_FIELD(GradientFillRecord, mode, 92),
    };

    constexpr Field TransparentBltFields[] = {
        KORU_FIELD(TransparentBltRecord, surface, 40),
        KORU_FIELD(TransparentBltRecord, source, 44),
        KORU_FIELD(TransparentBltRecord, clip, 48),
        KORU_FIELD(TransparentBltRecord, xlate, 52),
        KORU_FIELD(TransparentBltRecord, rclDest, 56),
        KORU_FIELD(TransparentBltRecord, rclSrc, 72),
        KORU_FIELD(TransparentBltRecord, transparentColor, 88),
        KORU_FIELD(TransparentBltRecord, reserved, 92),
    };

    constexpr Field StretchBltROPFields[] = {
        KORU_FIELD(StretchBltROPRecord, surface, 40),     KORU_FIELD(StretchBltROPRecord, source, 44),
        KORU_FIELD(StretchBltROPRecord, mask, 48),        KORU_FIELD(StretchBltROPRecord, clip, 52),
        KORU_FIELD(StretchBltROPRecord, xlate, 56),       KORU_FIELD(StretchBltROPRecord, adjustment, 60),
        KORU_FIELD(StretchBltROPRecord, ptlHalftone, 84), KORU_FIELD(StretchBltROPRecord, rclDest, 92),
        KORU_FIELD(StretchBltROPRecord, rclSrc, 108),     KORU_FIELD(StretchBltROPRecord, ptlMask, 124),
        KORU_FIELD(StretchBltROPRecord, mode, 132),       KORU_FIELD(StretchBltROPRecord, brush, 136),
        KORU_FIELD(StretchBltROPRecord, rop4, 140),
    };

    constexpr Field PlgBltFields[] = {
        KORU_FIELD(PlgBltRecord, surface, 40),  KORU_FIELD(PlgBltRecord, source, 44),
        KORU_FIELD(PlgBltRecord, mask, 48),     KORU_FIELD(PlgBltRecord, clip, 52),
        KORU_FIELD(PlgBltRecord, xlate, 56),    KORU_FIELD(PlgBltRecord, adjustment, 60),
        KORU_FIELD(PlgBltRecord, ptlBrush, 84), KORU_FIELD(PlgBltRecord, corners, 92),
        KORU_FIELD(PlgBltRecord, rclSrc, 116),  KORU_FIELD(PlgBltRecord, ptlMask, 132),
        KORU_FIELD(PlgBltRecord, mode, 140),
    };

    constexpr Field StrokeAndFillPathFields[] = {
        KORU_FIELD(StrokeAndFillPathRecord, surface, 40),        KORU_FIELD(StrokeAndFillPathRecord, path, 44),
        KORU_FIELD(StrokeAndFillPathRecord, clip, 48),           KORU_FIELD(StrokeAndFillPathRecord, strokeBrush, 52),
        KORU_FIELD(StrokeAndFillPathRecord, lineAttributes, 56), KORU_FIELD(StrokeAndFillPathRecord, fillBrush, 60),
        KORU_FIELD(StrokeAndFillPathRecord, ptlBrush, 64),       KORU_FIELD(StrokeAndFillPathRecord, mixFill, 72),
        KORU_FIELD(StrokeAndFillPathRecord, options, 76),
    };

    // The row of one record type; its fields must fill it to the end.
    template<class Record, const auto& Fields> constexpr RecordLayout Row(std::string_view name)
    {
        static_assert(Tile(Fields, sizeof(RecordHeader), sizeof(Record)));
        return {{name, sizeof(Record), Fields}, Record::type};
    }

    constexpr RecordLayout Records[] = {
        Row<AssertModeRecord, AssertModeFields>("DrvAssertMode"),
        Row<EnablePDEVRecord, EnablePDEVFields>("DrvEnablePDEV"),
        Row<DisablePDEVRecord, DisablePDEVFields>("DrvDisablePDEV"),
        Row<CompletePDEVRecord, CompletePDEVFields>("DrvCompletePDEV"),
        Row<EnableSurfaceRecord, EnableSurfaceFields>("DrvEnableSurface"),
        Row<DisableSurfaceRecord, DisableSurfaceFields>("DrvDisableSurface"),
        Row<CreateDeviceBitmapRecord, CreateDeviceBitmapFields>("DrvCreateDeviceBitmap"),
        Row<DeleteDeviceBitmapRecord, DeleteDeviceBitmapFields>("DrvDeleteDeviceBitmap"),
        Row<BitBltRecord, BitBltFields>("DrvBitBlt"),
        Row<StretchBltRecord, StretchBltFields>("DrvStretchBlt"),
        Row<FillPathRecord, FillPathFields>("DrvFillPath"),
        Row<LineToRecord, LineToFields>("DrvLineTo"),
        Row<MovePointerRecord, MovePointerFields>("DrvMovePointer"),
        Row<SetPointerShapeRecord, SetPointerShapeFields>("DrvSetPointerShape"),
        Row<PaintRecord, PaintFields>("DrvPaint"),
        Row<StrokePathRecord, StrokePathFields>("DrvStrokePath"),
        Row<TextOutRecord, TextOutFields>("DrvTextOut"),
        Row<RealizeBrushRecord, RealizeBrushFields>("DrvRealizeBrush"),
        Row<DitherColorRecord, DitherColorFields>("DrvDitherColor"),
        Row<GetModesRecord, GetModesFields>("DrvGetModes"),
        Row<CopyBitsRecord, CopyBitsFields>("DrvCopyBits"),
        Row<SaveScreenBitsRecord, SaveScreenBitsFields>("DrvSaveScreenBits"),
        Row<SetPaletteRecord, SetPaletteFields>("DrvSetPalette"),
        Row<EscapeRecord, EscapeFields>("DrvEscape"),
        Row<AlphaBlendRecord, AlphaBlendFields>("DrvAlphaBlend"),
        Row<GradientFillRecord, GradientFillFields>("DrvGradientFill"),
        Row<TransparentBltRecord, TransparentBltFields>("DrvTransparentBlt"),
        Row<StretchBltROPRecord, StretchBltROPFields>("DrvStretchBltROP"),
        Row<PlgBltRecord, PlgBltFields>("DrvPlgBlt"),
        Row<StrokeAndFillPathRecord, StrokeAndFillPathFields>("DrvStrokeAndFillPath"),
    };

    constexpr bool StandAtTheirBit()
    {
        for (unsigned bit = 0; bit < CallTypeCount; ++bit)
            if (static_cast<std::uint32_t>(Records[bit].type) != 1u << bit)
                return false;
        return std::size(Records) == CallTypeCount;
    }
    static_assert(StandAtTheirBit());

} // namespace

constinit const Layout HeaderLayout{"RecordHeader", sizeof(RecordHeader), HeaderFields};

std::span<const RecordLayout> RecordLayouts()
{
    return Records;
}

const RecordLayout* LayoutOf(CallType type)
{
    const auto value = static_cast<std::uint32_t>(type);
    return std::has_single_bit(value) && value <= AllCalls ? &Records[std::countr_zero(value)] : nullptr;
}

std::string_view NameOf(CallType type)
{
    const RecordLayout* const layout = LayoutOf(type);
    return layout ? layout->name : "unknown";
}

} // namespace koru::client
