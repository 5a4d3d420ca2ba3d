#pragma once

// Decoded objects. Each keeps its fixed part by value and views of what follows it, bounded by the record:
// counts on the wire may promise more than the views hold. They refer to the record's bytes, which must
// outlive them.

#include "byte_view.h"
#include "records.h"

#include <array>
#include <optional>
#include <variant>
#include <vector>

namespace koru::client {

// An encoding and the bytes that it takes.
template<class Encoding> struct Encoded {
    Range range;
    Encoding fixed{};
};

using Surface = Encoded<SurfaceEncoding>;
using Brush = Encoded<BrushEncoding>;
using DeviceMode = Encoded<DeviceModeEncoding>;
using LogFont = Encoded<LogFontEncoding>;

struct Clip : Encoded<ClipEncoding> {
    Array<Rect> rectangles;
};

struct Xlate : Encoded<XlateEncoding> {
    Array<std::uint32_t> entries; // may be missing although `fixed.entriesOffset` is 20
};

struct DeviceInfo : Encoded<DeviceInfoEncoding> {
    std::optional<LogFont> defaultFont, ansiVariableFont, ansiFixedFont;
};

struct LineAttributes : Encoded<LineAttributesEncoding> {
    Array<std::uint32_t> styles;
};

struct Subpath {
    PathEntry entry{};
    bool lost = false; // the driver could not keep the points of this one
    Array<Point> points; // 28.4
};

// A path's entries and points. The driver may have given up either.
struct Path : Encoded<PathEncoding> {
    enum class State {
        Empty, // no entries follow
        Complete,
        CutShort, // entries without points; objects behind the path may have overwritten the last ones
    };
    State state = State::Empty;
    Array<PathEntry> entries;
    std::uint32_t pointsBegin = 0; // offset of the first point
    std::uint32_t firstKept = 0; // the entry whose points come first: it holds 0 as its distance

    Subpath operator[](std::uint32_t index) const;
    std::span<const std::byte> record;
};

// Characters; `range` includes the terminator, if there is one.
struct WideText {
    Range range;
    Array<char16_t> characters;
};

struct String : Encoded<StringEncoding> {
    Array<GlyphPosition> glyphs; // fewer than `fixed.glyphCount` when the room ran out
    std::optional<WideText> text;
};

struct Font : Encoded<FontEncoding> {
    std::optional<WideText> familyName, styleName, faceName, uniqueName;
};

// Surface handles of patterns. Objects of the record are written over them from the first one on.
struct PatternHandles {
    Array<std::uint32_t> handles;
    std::uint32_t intactFrom = 0; // offset behind the objects
    bool Intact(std::uint32_t index) const { return handles.range().begin + index * 4 >= intactFrom; }
};

// The arrays of a gradient. The mesh may stand on top of the vertices and both may reach behind the
// record's end: give the decoder the whole buffer to see them.
struct GradientArrays {
    Range range; // within the record
    Array<GradientVertex> vertices;
    Array<std::uint32_t> mesh; // vertex numbers
    std::uint32_t numbersPerElement = 2; // 3 for triangles

    bool Intact(std::uint32_t vertex) const; // not written over by the mesh
};

using Object =
    std::variant<std::monostate, Surface, Clip, Brush, Xlate, DeviceMode, DeviceInfo, Path, LineAttributes, String,
                 Font, WideText, Array<Rect>, Array<std::uint32_t>, PatternHandles, Array<std::byte>, GradientArrays>;

} // namespace koru::client
