#pragma once

// The small types that records, encodings and escapes are made of. Everything on the wire is little-endian
// with fixed widths, so the structures are the same under every data model; handles and kernel addresses
// are plain numbers, to be compared and never followed.

#include <bit>
#include <cstdint>

namespace koru::client {

static_assert(std::endian::native == std::endian::little, "the wire structures are read as they stand");

struct Rect { // right and bottom are exclusive
    std::int32_t left, top, right, bottom;
    bool operator==(const Rect&) const = default;
};

struct Point { // pixels, or 28.4 fixed point in paths and parallelograms
    std::int32_t x, y;
    bool operator==(const Point&) const = default;
};

struct Size {
    std::int32_t cx, cy;
    bool operator==(const Size&) const = default;
};

// Bytes that the driver leaves as they were: what an earlier record had there.
template<unsigned Size> struct Unwritten {
    std::uint8_t bytes[Size];
};

// A word that is always 0.
struct Zero {
    std::uint32_t value;
};

// What an offset in a record's fixed part leads to.
enum class ObjectKind : std::uint8_t {
    None,
    Surface,
    Clip,
    Brush,
    Xlate,
    DeviceMode,
    DeviceInfo,
    Path,
    LineAttributes,
    String,
    Font,
    WideText,
    ExtraRectangles,
    PaletteEntries,
    PatternHandles,
    EscapeInput,
    EscapeOutput,
    GradientArrays,
};

// The offset of an object from the record's start; 0 when the call had none or it did not fit.
template<ObjectKind Kind> struct SlotTo {
    std::uint32_t offset;
    explicit operator bool() const { return offset != 0; }
};

} // namespace koru::client
