#include "json_lines.h"

#include "json_writer.h"

namespace koru::client {
namespace {

    constexpr std::uint32_t NoOffset = 0xFFFFFFFF; // an empty slot of a record that says so

    void Write(JsonWriter& json, std::uint32_t value)
    {
        json.Number(value);
    }

    void Write(JsonWriter& json, const Point& point)
    {
        json.Open('[');
        json.Number(point.x);
        json.Number(point.y);
        json.Close(']');
    }

    void Write(JsonWriter& json, const Rect& rect)
    {
        json.Open('[');
        for (const std::int32_t edge : {rect.left, rect.top, rect.right, rect.bottom})
            json.Number(edge);
        json.Close(']');
    }

    template<class T> void Write(JsonWriter& json, const Array<T>& array)
    {
        json.Open('[');
        for (const T& element : array)
            Write(json, element);
        json.Close(']');
    }

    void WriteHex(JsonWriter& json, std::span<const std::byte> bytes)
    {
        constexpr char digits[] = "0123456789abcdef";
        std::string text;
        for (const std::byte byte : bytes) {
            text += digits[std::to_integer<unsigned>(byte) >> 4];
            text += digits[std::to_integer<unsigned>(byte) & 15];
        }
        json.Text(text);
    }

    template<class Narrow, class Middle, class Wide> std::int64_t NumberOf(std::span<const std::byte> field)
    {
        switch (field.size()) {
        case 1:
            return Load<Narrow>(field, 0);
        case 2:
            return Load<Middle>(field, 0);
        case 4:
            return Load<Wide>(field, 0);
        default:
            return Load<std::int64_t>(field, 0);
        }
    }

    void WriteFields(JsonWriter& json, std::span<const std::byte> bytes, const Layout& layout);

    void WriteValue(JsonWriter& json, std::span<const std::byte> bytes, const Field& field)
    {
        switch (field.kind) {
        case FieldKind::Signed:
            return json.Number(NumberOf<std::int8_t, std::int16_t, std::int32_t>(bytes));
        case FieldKind::Rect:
            return Write(json, Load<Rect>(bytes, 0));
        case FieldKind::Point:
        case FieldKind::Size:
            if (field.size == sizeof(Point))
                return Write(json, Load<Point>(bytes, 0));
            return Write(json, Array<Point>(bytes, 0, field.size, field.size));
        case FieldKind::Text:
            return json.Text(ToUtf8(bytes));
        case FieldKind::Bytes:
            return WriteHex(json, bytes);
        case FieldKind::Struct:
            json.Open('{');
            WriteFields(json, bytes, *field.layout);
            return json.Close('}');
        default:
            return json.Number(NumberOf<std::uint8_t, std::uint16_t, std::uint32_t>(bytes));
        }
    }

    // The fields but the slots, which only the record can follow. Bytes that the driver does not write say
    // nothing, words that are 0 as they must be neither.
    void WriteFields(JsonWriter& json, std::span<const std::byte> bytes, const Layout& layout)
    {
        for (const Field& field : layout.fields) {
            const auto value = bytes.subspan(field.offset, field.size);
            const bool idle = field.kind == FieldKind::Zero && Load<std::uint32_t>(value, 0) == 0;
            if (field.kind == FieldKind::Slot || field.kind == FieldKind::Unwritten || idle)
                continue;
            json.Key(field.name);
            WriteValue(json, value, field);
        }
    }

    template<class Element> void WriteStruct(JsonWriter& json, const Element& element, const Layout& layout)
    {
        json.Open('{');
        WriteFields(json, std::as_bytes(std::span(&element, 1)), layout);
        json.Close('}');
    }

    // Writes the object that a slot leads to.
    class ObjectWriter {
    public:
        explicit ObjectWriter(JsonWriter& json)
            : json_(json)
        {
        }

        void operator()(const std::monostate&) const { json_.Null(); }
        void operator()(const Surface& surface) const { WriteWhole(surface, SurfaceLayout); }
        void operator()(const Brush& brush) const { WriteWhole(brush, BrushLayout); }
        void operator()(const DeviceMode& mode) const { WriteWhole(mode, DeviceModeLayout); }
        void operator()(const WideText& text) const { json_.Text(ToUtf8(text.characters)); }
        void operator()(const Array<std::byte>& data) const { WriteHex(json_, data.bytes()); }
        void operator()(const Array<Rect>& rectangles) const { Write(json_, rectangles); }
        void operator()(const Array<std::uint32_t>& words) const { Write(json_, words); }

        void operator()(const Clip& clip) const
        {
            Begin(clip, ClipLayout);
            json_.Key("rectangles");
            Write(json_, clip.rectangles);
            json_.Close('}');
        }

        void operator()(const Xlate& xlate) const
        {
            Begin(xlate, XlateLayout);
            json_.Key("entries");
            Write(json_, xlate.entries);
            json_.Close('}');
        }

        void operator()(const LineAttributes& line) const
        {
            Begin(line, LineAttributesLayout);
            json_.Key("styleEntries");
            Write(json_, line.styles);
            json_.Close('}');
        }

        void operator()(const DeviceInfo& info) const
        {
            Begin(info, DeviceInfoLayout);
            WriteOptional("defaultFont", info.defaultFont);
            WriteOptional("ansiVariableFont", info.ansiVariableFont);
            WriteOptional("ansiFixedFont", info.ansiFixedFont);
            json_.Close('}');
        }

        void operator()(const LogFont& font) const { WriteWhole(font, LogFontLayout); }

        void operator()(const Path& path) const
        {
            constexpr std::string_view states[] = {"empty", "complete", "cutShort"};
            Begin(path, PathLayout);
            json_.Key("state");
            json_.Text(states[static_cast<std::size_t>(path.state)]);
            json_.Key("subpaths");
            json_.Open('[');
            for (std::uint32_t i = 0; i < path.entries.size(); ++i)
                WriteSubpath(path[i]);
            json_.Close(']');
            json_.Close('}');
        }

        void operator()(const String& string) const
        {
            Begin(string, StringLayout);
            json_.Key("glyphs");
            json_.Open('[');
            for (const GlyphPosition glyph : string.glyphs)
                WriteStruct(json_, glyph, GlyphPositionLayout);
            json_.Close(']');
            WriteOptional("text", string.text);
            json_.Close('}');
        }

        void operator()(const Font& font) const
        {
            Begin(font, FontLayout);
            WriteOptional("familyName", font.familyName);
            WriteOptional("styleName", font.styleName);
            WriteOptional("faceName", font.faceName);
            WriteOptional("uniqueName", font.uniqueName);
            json_.Close('}');
        }

        void operator()(const PatternHandles& patterns) const
        {
            json_.Open('[');
            for (std::uint32_t i = 0; i < patterns.handles.size(); ++i)
                patterns.Intact(i) ? json_.Number(patterns.handles[i]) : json_.Null();
            json_.Close(']');
        }

        void operator()(const GradientArrays& arrays) const
        {
            json_.Open('{');
            json_.Key("at");
            json_.Number(arrays.range.begin);
            json_.Key("vertices");
            json_.Open('[');
            for (std::uint32_t i = 0; i < arrays.vertices.size(); ++i)
                arrays.Intact(i) ? WriteStruct(json_, arrays.vertices[i], GradientVertexLayout) : json_.Null();
            json_.Close(']');
            json_.Key("mesh");
            Write(json_, arrays.mesh);
            json_.Close('}');
        }

    private:
        // Opens the object and writes where it stands and its fixed part.
        template<class View> void Begin(const View& view, const Layout& layout) const
        {
            json_.Open('{');
            json_.Key("at");
            json_.Number(view.range.begin);
            WriteFields(json_, std::as_bytes(std::span(&view.fixed, 1)), layout);
        }

        template<class View> void WriteWhole(const View& view, const Layout& layout) const
        {
            Begin(view, layout);
            json_.Close('}');
        }

        template<class View> void WriteOptional(std::string_view name, const std::optional<View>& view) const
        {
            json_.Key(name);
            view ? (*this)(*view) : json_.Null();
        }

        void WriteSubpath(const Subpath& subpath) const
        {
            json_.Open('{');
            WriteFields(json_, std::as_bytes(std::span(&subpath.entry, 1)), PathEntryLayout);
            json_.Key("points");
            subpath.lost ? json_.Null() : Write(json_, subpath.points);
            json_.Close('}');
        }

        JsonWriter& json_;
    };

    void WriteSlots(JsonWriter& json, const Record& record)
    {
        for (const Field& field : record.layout().fields) {
            if (field.kind != FieldKind::Slot)
                continue;
            json.Key(field.name);
            const std::uint32_t offset = record.SlotOf(field);
            const Object object = record.ObjectOf(field);
            if (offset != 0 && offset != NoOffset && std::holds_alternative<std::monostate>(object)) {
                json.Open('{');
                json.Key("badOffset");
                json.Number(offset);
                json.Close('}');
            } else {
                std::visit(ObjectWriter(json), object);
            }
        }
    }

    void WriteUnknown(JsonWriter& json, const std::vector<Range>& ranges)
    {
        if (ranges.empty())
            return;
        json.Key("unknown");
        json.Open('[');
        for (const Range& range : ranges) {
            json.Open('[');
            json.Number(range.begin);
            json.Number(range.end);
            json.Close(']');
        }
        json.Close(']');
    }

} // namespace

std::string_view NameOf(RecordFault fault)
{
    constexpr std::string_view names[] = {"none", "empty", "too short", "unknown type", "bad length"};
    return names[static_cast<std::size_t>(fault)];
}

std::string JsonLine(std::span<const std::byte> bytes, std::int32_t flag)
{
    JsonWriter json;
    json.Open('{');
    RecordFault fault{};
    const auto record = Record::Decode(bytes, &fault);
    json.Key(record ? "call" : "error");
    json.Text(record ? record->layout().name : NameOf(fault));
    json.Key("flag");
    json.Number(flag);
    if (record) {
        WriteFields(json, record->bytes(), HeaderLayout);
        WriteFields(json, record->bytes(), record->layout());
        WriteSlots(json, *record);
        WriteUnknown(json, UnknownRanges(*record));
    } else {
        json.Key("bytes");
        json.Number(static_cast<std::int64_t>(bytes.size()));
    }
    json.Close('}');
    return json.Take();
}

} // namespace koru::client
