#pragma once

// The wire format of call records: one fixed part per captured call, objects behind it (encodings.h).
// A record starts with a RecordHeader; offsets in it count from the record's start. A point or
// rectangle that the call did not give is all ones, or all zeros where the field says so.

#include "encodings.h"

namespace koru::client {

constexpr std::uint32_t RecordRoom = 0x10000; // no record is longer

// A record's type. The same bit selects the call in the capture mask; see MaskBit for the exception.
enum class CallType : std::uint32_t {
    AssertMode = 0x1,
    EnablePDEV = 0x2,
    DisablePDEV = 0x4,
    CompletePDEV = 0x8,
    EnableSurface = 0x10,
    DisableSurface = 0x20,
    CreateDeviceBitmap = 0x40,
    DeleteDeviceBitmap = 0x80,
    BitBlt = 0x100,
    StretchBlt = 0x200,
    FillPath = 0x400,
    LineTo = 0x800,
    MovePointer = 0x1000,
    SetPointerShape = 0x2000,
    Paint = 0x4000,
    StrokePath = 0x8000,
    TextOut = 0x10000,
    RealizeBrush = 0x20000,
    DitherColor = 0x40000,
    GetModes = 0x80000,
    CopyBits = 0x100000,
    SaveScreenBits = 0x200000,
    SetPalette = 0x400000,
    Escape = 0x800000,
    AlphaBlend = 0x1000000,
    GradientFill = 0x2000000,
    TransparentBlt = 0x4000000,
    StretchBltROP = 0x8000000,
    PlgBlt = 0x10000000,
    StrokeAndFillPath = 0x20000000,
};

constexpr unsigned CallTypeCount = 30;
constexpr std::uint32_t AllCalls = 0x3FFFFFFF; // a capture mask with every call in it

// The capture-mask bit that switches a call on: one bit serves DrvStrokePath and DrvFillPath.
constexpr std::uint32_t MaskBit(CallType type)
{
    return static_cast<std::uint32_t>(type == CallType::FillPath ? CallType::StrokePath : type);
}

struct RecordHeader {
    std::uint32_t totalLength; // of the whole record, bytes
    CallType callType;
    std::uint32_t suspended;
    std::uint32_t identifier0; // the calling process, as the consumer names it
    std::uint32_t identifier1;
    Unwritten<4> unwritten;
    std::int64_t timeStamp; // performance counter
    Zero reserved0, reserved1;
};
static_assert(sizeof(RecordHeader) == 40);

struct AssertModeRecord {
    static constexpr CallType type = CallType::AssertMode;
    RecordHeader header;
    std::uint32_t dhpdev;
    std::uint32_t enable;
};
static_assert(sizeof(AssertModeRecord) == 48);

struct EnablePDEVRecord {
    static constexpr CallType type = CallType::EnablePDEV;
    RecordHeader header;
    DeviceModeSlot deviceMode;
    WideTextSlot logicalAddress;
    std::uint32_t patternCount;
    PatternHandlesSlot patterns; // 80, or all ones when the count is 0
    std::uint32_t deviceInfoSize; // of the structure that the call passed
    DeviceInfoSlot deviceInfo;
    std::uint32_t hdev;
    std::uint32_t dhpdev; // the call's answer
    WideTextSlot deviceName;
    std::uint32_t driverHandle;
};
static_assert(sizeof(EnablePDEVRecord) == 80);

struct DisablePDEVRecord {
    static constexpr CallType type = CallType::DisablePDEV;
    RecordHeader header;
    std::uint32_t dhpdev;
    Unwritten<4> unwritten;
};
static_assert(sizeof(DisablePDEVRecord) == 48);

struct CompletePDEVRecord {
    static constexpr CallType type = CallType::CompletePDEV;
    RecordHeader header;
    std::uint32_t dhpdev;
    std::uint32_t hdev;
};
static_assert(sizeof(CompletePDEVRecord) == 48);

struct EnableSurfaceRecord {
    static constexpr CallType type = CallType::EnableSurface;
    RecordHeader header;
    std::uint32_t dhpdev;
    std::uint32_t hsurf; // the call's answer
};
static_assert(sizeof(EnableSurfaceRecord) == 48);

struct DisableSurfaceRecord {
    static constexpr CallType type = CallType::DisableSurface;
    RecordHeader header;
    std::uint32_t dhpdev;
    Unwritten<4> unwritten;
};
static_assert(sizeof(DisableSurfaceRecord) == 48);

struct CreateDeviceBitmapRecord {
    static constexpr CallType type = CallType::CreateDeviceBitmap;
    RecordHeader header;
    std::uint32_t hbitmap; // the call's answer
    std::uint32_t hsurfBacking; // the bitmap that holds its pixels, or 0
    std::uint32_t dhpdev;
    Size size;
    std::uint32_t format;
};
static_assert(sizeof(CreateDeviceBitmapRecord) == 64);

struct DeleteDeviceBitmapRecord {
    static constexpr CallType type = CallType::DeleteDeviceBitmap;
    RecordHeader header;
    std::uint32_t dhsurf;
    Unwritten<4> unwritten;
};
static_assert(sizeof(DeleteDeviceBitmapRecord) == 48);

struct BitBltRecord {
    static constexpr CallType type = CallType::BitBlt;
    RecordHeader header;
    SurfaceSlot surface, source, mask;
    ClipSlot clip;
    XlateSlot xlate;
    BrushSlot brush;
    Rect rclTrg;
    Point ptlSrc; // all ones also when there is no source surface
    Point ptlMask; // likewise
    Point ptlBrush;
    std::uint32_t rop4;
    Unwritten<4> unwritten;
};
static_assert(sizeof(BitBltRecord) == 112);

struct StretchBltRecord {
    static constexpr CallType type = CallType::StretchBlt;
    RecordHeader header;
    SurfaceSlot surface, source, mask;
    ClipSlot clip;
    XlateSlot xlate;
    Rect rclDest, rclSrc; // as the call gave them, reversed ones too
    std::uint32_t mode;
};
static_assert(sizeof(StretchBltRecord) == 96);

struct FillPathRecord {
    static constexpr CallType type = CallType::FillPath;
    RecordHeader header;
    SurfaceSlot surface;
    PathSlot path;
    ClipSlot clip;
    BrushSlot brush;
    Point ptlBrush;
    std::uint32_t mix;
    std::uint32_t options;
};
static_assert(sizeof(FillPathRecord) == 72);

struct LineToRecord {
    static constexpr CallType type = CallType::LineTo;
    RecordHeader header;
    SurfaceSlot surface;
    ClipSlot clip;
    BrushSlot brush;
    std::int32_t x1, y1, x2, y2;
    std::uint32_t mix;
};
static_assert(sizeof(LineToRecord) == 72);

struct MovePointerRecord {
    static constexpr CallType type = CallType::MovePointer;
    RecordHeader header;
    SurfaceSlot surface;
    std::int32_t x;
    std::int32_t y; // a negative y of the call has the surface's height added
    Rect rcl;
    Unwritten<4> unwritten;
};
static_assert(sizeof(MovePointerRecord) == 72);

struct SetPointerShapeRecord {
    static constexpr CallType type = CallType::SetPointerShape;
    RecordHeader header;
    SurfaceSlot surface, mask, color;
    XlateSlot xlate;
    std::int32_t xHot, yHot, x, y;
    Rect rcl;
    std::uint32_t flags;
    Zero reserved;
};
static_assert(sizeof(SetPointerShapeRecord) == 96);

struct PaintRecord {
    static constexpr CallType type = CallType::Paint;
    RecordHeader header;
    SurfaceSlot surface;
    ClipSlot clip;
    BrushSlot brush;
    Point ptlBrush;
    std::uint32_t mix;
};
static_assert(sizeof(PaintRecord) == 64);

struct StrokePathRecord {
    static constexpr CallType type = CallType::StrokePath;
    RecordHeader header;
    SurfaceSlot surface;
    PathSlot path;
    ClipSlot clip;
    BrushSlot brush;
    LineAttributesSlot lineAttributes;
    Point ptlBrush;
    std::uint32_t mix;
};
static_assert(sizeof(StrokePathRecord) == 72);

struct TextOutRecord {
    static constexpr CallType type = CallType::TextOut;
    RecordHeader header;
    SurfaceSlot surface;
    StringSlot string;
    FontSlot font;
    ClipSlot clip;
    std::uint32_t extraCount;
    ExtraRectanglesSlot extra;
    BrushSlot foreBrush, opaqueBrush;
    Rect rclOpaque;
    Point ptlOrigin;
    std::uint32_t mix;
    Unwritten<4> unwritten;
};
static_assert(sizeof(TextOutRecord) == 104);

struct RealizeBrushRecord {
    static constexpr CallType type = CallType::RealizeBrush;
    RecordHeader header;
    BrushSlot brush;
    SurfaceSlot target, pattern, mask;
    XlateSlot xlate;
    std::uint32_t hatch;
};
static_assert(sizeof(RealizeBrushRecord) == 64);

struct DitherColorRecord {
    static constexpr CallType type = CallType::DitherColor;
    RecordHeader header;
    std::uint32_t dhpdev;
    std::uint32_t mode;
    std::uint32_t rgb;
    std::uint32_t dither; // the first four bytes of the output, or all ones
    std::uint32_t returned;
    Unwritten<4> unwritten;
};
static_assert(sizeof(DitherColorRecord) == 64);

struct GetModesRecord {
    static constexpr CallType type = CallType::GetModes;
    RecordHeader header;
    std::uint32_t driverHandle;
    std::uint32_t outputSize;
    DeviceModeSlot deviceMode; // the first mode of the output
    Unwritten<4> unwritten;
};
static_assert(sizeof(GetModesRecord) == 56);

struct CopyBitsRecord {
    static constexpr CallType type = CallType::CopyBits;
    RecordHeader header;
    SurfaceSlot surface, source;
    ClipSlot clip;
    XlateSlot xlate;
    Rect rclDest;
    Point ptlSrc;
};
static_assert(sizeof(CopyBitsRecord) == 80);

struct SaveScreenBitsRecord {
    static constexpr CallType type = CallType::SaveScreenBits;
    RecordHeader header;
    SurfaceSlot surface;
    std::uint32_t mode;
    std::uint32_t ident;
    Rect rcl;
    std::uint32_t returned;
};
static_assert(sizeof(SaveScreenBitsRecord) == 72);

struct SetPaletteRecord {
    static constexpr CallType type = CallType::SetPalette;
    RecordHeader header;
    Unwritten<4> unwritten0;
    std::uint32_t flags;
    std::uint32_t start;
    std::uint32_t count; // asked for; as many as the record holds were fetched
    PaletteEntriesSlot entries;
    Unwritten<4> unwritten1;
};
static_assert(sizeof(SetPaletteRecord) == 64);

struct EscapeRecord {
    static constexpr CallType type = CallType::Escape;
    RecordHeader header;
    std::uint32_t returned;
    SurfaceSlot surface;
    std::uint32_t code;
    std::uint32_t inputSize;
    EscapeInputSlot input;
    std::uint32_t outputSize;
    EscapeOutputSlot output;
    Unwritten<4> unwritten;
};
static_assert(sizeof(EscapeRecord) == 72);

struct AlphaBlendRecord {
    static constexpr CallType type = CallType::AlphaBlend;
    RecordHeader header;
    SurfaceSlot surface, source;
    ClipSlot clip;
    XlateSlot xlate;
    Rect rclDest, rclSrc;
    BlendFunction blend; // zeros when absent
    Unwritten<4> unwritten;
};
static_assert(sizeof(AlphaBlendRecord) == 96);

struct GradientFillRecord {
    static constexpr CallType type = CallType::GradientFill;
    RecordHeader header;
    SurfaceSlot surface;
    ClipSlot clip;
    XlateSlot xlate;
    GradientArraysSlot arrays; // the mesh, or the vertices when there is no mesh
    std::uint32_t vertexCount;
    Zero reserved;
    std::uint32_t meshCount;
    Rect rclExtents; // zeros when absent
    Point ptlDither; // likewise
    std::uint32_t mode;
};
static_assert(sizeof(GradientFillRecord) == 96);

struct TransparentBltRecord {
    static constexpr CallType type = CallType::TransparentBlt;
    RecordHeader header;
    SurfaceSlot surface, source;
    ClipSlot clip;
    XlateSlot xlate;
    Rect rclDest, rclSrc;
    std::uint32_t transparentColor;
    std::uint32_t reserved; // the call's own reserved argument
};
static_assert(sizeof(TransparentBltRecord) == 96);

struct StretchBltROPRecord {
    static constexpr CallType type = CallType::StretchBltROP;
    RecordHeader header;
    SurfaceSlot surface, source, mask;
    ClipSlot clip;
    XlateSlot xlate;
    ColorAdjustment adjustment; // zeros when absent, as the next four that the call may leave out
    Point ptlHalftone;
    Rect rclDest, rclSrc;
    Point ptlMask;
    std::uint32_t mode;
    BrushSlot brush;
    std::uint32_t rop4;
};
static_assert(sizeof(StretchBltROPRecord) == 144);

struct PlgBltRecord {
    static constexpr CallType type = CallType::PlgBlt;
    RecordHeader header;
    SurfaceSlot surface, source, mask;
    ClipSlot clip;
    XlateSlot xlate;
    ColorAdjustment adjustment; // zeros when absent, as ptlBrush, corners and ptlMask
    Point ptlBrush;
    Point corners[3]; // 28.4
    Rect rclSrc;
    Point ptlMask;
    std::uint32_t mode;
};
static_assert(sizeof(PlgBltRecord) == 144);

struct StrokeAndFillPathRecord {
    static constexpr CallType type = CallType::StrokeAndFillPath;
    RecordHeader header;
    SurfaceSlot surface;
    PathSlot path;
    ClipSlot clip;
    BrushSlot strokeBrush;
    LineAttributesSlot lineAttributes;
    BrushSlot fillBrush;
    Point ptlBrush;
    std::uint32_t mixFill;
    std::uint32_t options;
};
static_assert(sizeof(StrokeAndFillPathRecord) == 80);

} // namespace koru::client
