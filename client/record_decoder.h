#pragma once

// Reads call records. Any bytes may be given: what does not hold together is reported or left out.
//
//     void PrintText(std::span<const std::byte> bytes)
//     {
//         const auto record = Record::Decode(bytes);
//         const auto call = record ? record->As<TextOutRecord>() : std::nullopt;
//         const auto string = call ? record->At(call->string) : std::nullopt;
//         if (!string || !string->text)
//             return;
//         for (const GlyphPosition glyph : string->glyphs)
//             std::printf("(%d, %d) ", int(glyph.position.x), int(glyph.position.y));
//         std::printf("%s\n", ToUtf8(string->text->characters).c_str());
//     }

#include "layouts.h"
#include "objects.h"
#include "utf8.h"

namespace koru::client {

enum class RecordFault {
    None,
    Empty, // no bytes: the call's record did not fit the driver's buffer
    TooShort, // no room for a header
    UnknownType,
    BadLength, // the record's length is below its fixed part or above the bytes given
};

class Record {
public:
    // The bytes may reach behind the record, as the driver's own buffer does.
    static std::optional<Record> Decode(std::span<const std::byte> bytes, RecordFault* fault = nullptr);

    const RecordHeader& header() const { return header_; }
    const RecordLayout& layout() const { return *layout_; }
    CallType type() const { return header_.callType; }
    std::uint32_t length() const { return header_.totalLength; }
    std::span<const std::byte> bytes() const { return bytes_.first(length()); }

    // The fixed part; none when the record is of another type.
    template<class Fixed> std::optional<Fixed> As() const
    {
        return type() == Fixed::type ? std::optional(Load<Fixed>(bytes_, 0)) : std::nullopt;
    }

    // The object that a slot of the fixed part leads to; none when the slot is empty or leads outside.
    std::optional<Surface> At(SurfaceSlot slot) const { return FixedAt<Surface>(slot.offset); }
    std::optional<Brush> At(BrushSlot slot) const { return FixedAt<Brush>(slot.offset); }
    std::optional<DeviceMode> At(DeviceModeSlot slot) const { return FixedAt<DeviceMode>(slot.offset); }
    std::optional<Clip> At(ClipSlot slot) const;
    std::optional<Xlate> At(XlateSlot slot) const;
    std::optional<DeviceInfo> At(DeviceInfoSlot slot) const;
    std::optional<Path> At(PathSlot slot) const;
    std::optional<LineAttributes> At(LineAttributesSlot slot) const;
    std::optional<String> At(StringSlot slot) const;
    std::optional<Font> At(FontSlot slot) const;
    std::optional<WideText> At(WideTextSlot slot) const;
    // These are of one record type each, and none in every other.
    std::optional<Array<Rect>> At(ExtraRectanglesSlot slot) const;
    std::optional<Array<std::uint32_t>> At(PaletteEntriesSlot slot) const;
    std::optional<PatternHandles> At(PatternHandlesSlot slot) const;
    std::optional<Array<std::byte>> At(EscapeInputSlot slot) const;
    std::optional<Array<std::byte>> At(EscapeOutputSlot slot) const;
    std::optional<GradientArrays> At(GradientArraysSlot slot) const;

    // The object of a slot field of layout(), whatever its kind.
    Object ObjectOf(const Field& slot) const;
    std::uint32_t SlotOf(const Field& slot) const { return Load<std::uint32_t>(bytes_, slot.offset); }

private:
    Record(std::span<const std::byte> bytes, const RecordLayout& layout, const RecordHeader& header)
        : bytes_(bytes)
        , layout_(&layout)
        , header_(header)
    {
    }

    // An object's fixed part and its range so far. Objects stand behind the record's fixed part.
    template<class View> std::optional<View> FixedAt(std::uint32_t offset) const
    {
        View view;
        constexpr auto size = std::uint32_t(sizeof(view.fixed));
        if (offset < layout_->size || offset > length() || length() - offset < size)
            return std::nullopt;
        view.range = {offset, offset + size};
        view.fixed = Load<decltype(view.fixed)>(bytes_, offset);
        return view;
    }

    // Where the object at `offset` must have ended: the start of the next one, or the record's end.
    std::uint32_t LimitOf(std::uint32_t offset) const;
    std::uint32_t GradientBegin(std::uint32_t slot) const;
    std::optional<WideText> NameAt(const Font& font, std::uint32_t offset, std::uint32_t length) const;
    std::optional<Array<std::byte>> DataAt(std::uint32_t offset, std::uint32_t size) const;

    std::span<const std::byte> bytes_;
    const RecordLayout* layout_;
    RecordHeader header_;
};

// Bytes of the record that belong to no field, object or documented gap, in rising order.
std::vector<Range> UnknownRanges(const Record& record);

} // namespace koru::client
