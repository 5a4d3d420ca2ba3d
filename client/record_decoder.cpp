#include "record_decoder.h"

#include <algorithm>

namespace koru::client {
namespace {

    void SetFault(RecordFault* fault, RecordFault value)
    {
        if (fault)
            *fault = value;
    }

    // The font at `offset` of a device information, if one was written there.
    std::optional<LogFont> FontOf(std::span<const std::byte> bytes, DeviceInfo& info, std::uint32_t offset,
                                  std::uint32_t limit)
    {
        const std::uint32_t room = limit - info.range.begin;
        if (offset < sizeof(DeviceInfoEncoding) || room < sizeof(LogFontEncoding)
            || offset > room - sizeof(LogFontEncoding))
            return std::nullopt;
        LogFont font;
        font.range = {info.range.begin + offset, info.range.begin + offset + std::uint32_t(sizeof(LogFontEncoding))};
        font.fixed = Load<LogFontEncoding>(bytes, font.range.begin);
        info.range.Extend(font.range);
        return font;
    }

    template<ObjectKind Kind> Object Lift(const Record& record, std::uint32_t offset)
    {
        if (auto view = record.At(SlotTo<Kind>{offset}))
            return *std::move(view);
        return std::monostate();
    }

    Object NoObject(const Record&, std::uint32_t)
    {
        return std::monostate();
    }

    // By object kind.
    constexpr Object (*Lifts[])(const Record&, std::uint32_t) = {
        NoObject,
        Lift<ObjectKind::Surface>,
        Lift<ObjectKind::Clip>,
        Lift<ObjectKind::Brush>,
        Lift<ObjectKind::Xlate>,
        Lift<ObjectKind::DeviceMode>,
        Lift<ObjectKind::DeviceInfo>,
        Lift<ObjectKind::Path>,
        Lift<ObjectKind::LineAttributes>,
        Lift<ObjectKind::String>,
        Lift<ObjectKind::Font>,
        Lift<ObjectKind::WideText>,
        Lift<ObjectKind::ExtraRectangles>,
        Lift<ObjectKind::PaletteEntries>,
        Lift<ObjectKind::PatternHandles>,
        Lift<ObjectKind::EscapeInput>,
        Lift<ObjectKind::EscapeOutput>,
        Lift<ObjectKind::GradientArrays>,
    };
    static_assert(std::size(Lifts) == std::size_t(ObjectKind::GradientArrays) + 1);

} // namespace

std::optional<Record> Record::Decode(std::span<const std::byte> bytes, RecordFault* fault)
{
    SetFault(fault, bytes.empty() ? RecordFault::Empty : RecordFault::TooShort);
    if (bytes.size() < sizeof(RecordHeader))
        return std::nullopt;

    const auto header = Load<RecordHeader>(bytes, 0);
    const RecordLayout* const layout = LayoutOf(header.callType);
    SetFault(fault, layout ? RecordFault::BadLength : RecordFault::UnknownType);
    const auto longest = std::min<std::size_t>(bytes.size(), RecordRoom);
    if (!layout || header.totalLength < layout->size || header.totalLength > longest)
        return std::nullopt;

    SetFault(fault, RecordFault::None);
    return Record(bytes.first(longest), *layout, header);
}

std::uint32_t Record::LimitOf(std::uint32_t offset) const
{
    std::uint32_t limit = length();
    for (const Field& field : layout_->fields) {
        if (field.kind != FieldKind::Slot)
            continue;
        const std::uint32_t slot = SlotOf(field);
        const std::uint32_t begin = field.object == ObjectKind::GradientArrays ? GradientBegin(slot) : slot;
        if (begin > offset && begin < limit)
            limit = begin;
    }
    return limit;
}

std::optional<Clip> Record::At(ClipSlot slot) const
{
    auto clip = FixedAt<Clip>(slot.offset);
    if (clip) {
        clip->rectangles = {bytes_, clip->range.end, clip->fixed.count, LimitOf(slot.offset)};
        clip->range.Extend(clip->rectangles.range());
    }
    return clip;
}

std::optional<Xlate> Record::At(XlateSlot slot) const
{
    auto xlate = FixedAt<Xlate>(slot.offset);
    if (xlate) {
        xlate->entries = {bytes_, xlate->range.end, xlate->fixed.count, LimitOf(slot.offset)};
        xlate->range.Extend(xlate->entries.range());
    }
    return xlate;
}

std::optional<LineAttributes> Record::At(LineAttributesSlot slot) const
{
    auto line = FixedAt<LineAttributes>(slot.offset);
    if (line) {
        line->styles = {bytes_, line->range.end, line->fixed.styleCount, LimitOf(slot.offset)};
        line->range.Extend(line->styles.range());
    }
    return line;
}

std::optional<DeviceInfo> Record::At(DeviceInfoSlot slot) const
{
    auto info = FixedAt<DeviceInfo>(slot.offset);
    if (!info)
        return info;
    const std::uint32_t limit = LimitOf(slot.offset);
    info->defaultFont = FontOf(bytes_, *info, info->fixed.defaultFontOffset, limit);
    info->ansiVariableFont = FontOf(bytes_, *info, info->fixed.ansiVariableFontOffset, limit);
    info->ansiFixedFont = FontOf(bytes_, *info, info->fixed.ansiFixedFontOffset, limit);
    return info;
}

std::optional<Array<Rect>> Record::At(ExtraRectanglesSlot slot) const
{
    const auto call = As<TextOutRecord>();
    if (!call || slot.offset < sizeof(*call) || slot.offset > length())
        return std::nullopt;
    return Array<Rect>(bytes_, slot.offset, call->extraCount, LimitOf(slot.offset));
}

std::optional<Array<std::uint32_t>> Record::At(PaletteEntriesSlot slot) const
{
    if (type() != CallType::SetPalette || slot.offset < layout_->size || slot.offset > length())
        return std::nullopt;
    return Array<std::uint32_t>(bytes_, slot.offset, RecordRoom, length());
}

std::optional<PatternHandles> Record::At(PatternHandlesSlot slot) const
{
    const auto call = As<EnablePDEVRecord>();
    if (!call || slot.offset != sizeof(*call) || call->patternCount > (RecordRoom - sizeof(*call)) / 4)
        return std::nullopt;
    return PatternHandles{{bytes_, slot.offset, call->patternCount, RecordRoom}, length()};
}

std::optional<Array<std::byte>> Record::At(EscapeInputSlot slot) const
{
    const auto call = As<EscapeRecord>();
    return call ? DataAt(slot.offset, call->inputSize) : std::nullopt;
}

std::optional<Array<std::byte>> Record::At(EscapeOutputSlot slot) const
{
    const auto call = As<EscapeRecord>();
    return call ? DataAt(slot.offset, call->outputSize) : std::nullopt;
}

std::optional<Array<std::byte>> Record::DataAt(std::uint32_t offset, std::uint32_t size) const
{
    if (offset < layout_->size || offset > length() || size > length() - offset)
        return std::nullopt;
    return Array<std::byte>(bytes_, offset, size, length());
}

Object Record::ObjectOf(const Field& slot) const
{
    return Lifts[static_cast<std::size_t>(slot.object)](*this, SlotOf(slot));
}

} // namespace koru::client
