#pragma once

// The wire structures as data: names, offsets and sizes of their fields, for programs that print or check
// records without knowing each type.

#include "records.h"

#include <span>
#include <string_view>

namespace koru::client {

enum class FieldKind : std::uint8_t {
    Unsigned,
    Signed,
    Rect,
    Point, // one, or several in a row
    Size,
    Text, // UTF-16, a 0 ends it early
    Bytes,
    Slot, // the offset of an object
    Struct, // a structure with a layout of its own
    Zero,
    Unwritten,
};

struct Layout;

struct Field {
    std::string_view name;
    std::uint16_t offset;
    std::uint16_t size;
    FieldKind kind;
    ObjectKind object = ObjectKind::None; // for slots
    const Layout* layout = nullptr; // for structures
};

struct Layout {
    std::string_view name;
    std::uint32_t size;
    std::span<const Field> fields; // by rising offset, without gaps
};

// A record's layout starts behind the header, whose layout is HeaderLayout.
struct RecordLayout : Layout {
    CallType type;
};

extern const Layout HeaderLayout;
std::span<const RecordLayout> RecordLayouts(); // by rising type
const RecordLayout* LayoutOf(CallType type); // null for an unknown type
std::string_view NameOf(CallType type); // "DrvBitBlt"; "unknown"

extern const Layout SurfaceLayout, ClipLayout, BrushLayout, XlateLayout, DeviceModeLayout, LogFontLayout,
    DeviceInfoLayout;
extern const Layout PathLayout, PathEntryLayout, LineAttributesLayout, StringLayout, GlyphPositionLayout, FontLayout;
extern const Layout GradientVertexLayout, BlendFunctionLayout, ColorAdjustmentLayout;
std::span<const Layout* const> EncodingLayouts(); // all of the above

} // namespace koru::client
