#include "record_decoder.h"

#include <algorithm>

namespace koru::client {
namespace {

    // Characters from `offset` up to a 0; without one, up to the limit.
    WideText TerminatedText(std::span<const std::byte> bytes, std::uint32_t offset, std::uint32_t limit)
    {
        const Array<char16_t> all{bytes, offset, RecordRoom, limit};
        std::uint32_t length = 0;
        while (length < all.size() && all[length] != 0)
            ++length;
        const std::uint32_t size = std::min(length + 1, all.size()) * 2;
        return {{offset, offset + size}, {bytes, offset, length, limit}};
    }

    // The characters of a string object: as many as it has glyphs, or as many as the room allowed, and a 0.
    WideText CountedText(std::span<const std::byte> bytes, std::uint32_t offset, std::uint32_t count,
                         std::uint32_t limit)
    {
        const std::uint32_t units = (limit - offset) / 2;
        if (units == 0)
            return {{offset, offset}, {}};
        const std::uint32_t length = std::min(count, units - 1);
        return {{offset, offset + (length + 1) * 2}, {bytes, offset, length, limit}};
    }

} // namespace

std::optional<WideText> Record::At(WideTextSlot slot) const
{
    if (slot.offset < layout_->size || slot.offset >= length())
        return std::nullopt;
    return TerminatedText(bytes_, slot.offset, LimitOf(slot.offset));
}

std::optional<String> Record::At(StringSlot slot) const
{
    auto string = FixedAt<String>(slot.offset);
    if (!string)
        return string;
    const StringEncoding& fixed = string->fixed;
    const std::uint32_t limit = LimitOf(slot.offset);
    const std::uint32_t room = limit - slot.offset;
    const bool hasText = fixed.textOffset >= sizeof(StringEncoding) && fixed.textOffset <= room;
    if (fixed.glyphsOffset >= sizeof(StringEncoding) && fixed.glyphsOffset <= room) {
        string->glyphs = {bytes_, slot.offset + fixed.glyphsOffset, fixed.glyphCount, limit};
        string->range.Extend(string->glyphs.range());
    }
    if (hasText) {
        string->text = CountedText(bytes_, slot.offset + fixed.textOffset, fixed.glyphCount, limit);
        string->range.Extend(string->text->range);
    }
    return string;
}

// The name at `offset` of the font, provided that it stands behind what is known of the font so far and has
// the length told: the offsets of names that were not written still point into the font's own metrics.
std::optional<WideText> Record::NameAt(const Font& font, std::uint32_t offset, std::uint32_t length) const
{
    if (offset != font.range.end - font.range.begin)
        return std::nullopt;
    const WideText name = TerminatedText(bytes_, font.range.end, LimitOf(font.range.begin));
    const bool terminated = name.range.end - name.range.begin > name.characters.size() * 2;
    return terminated && name.characters.size() == length ? std::optional(name) : std::nullopt;
}

std::optional<Font> Record::At(FontSlot slot) const
{
    auto font = FixedAt<Font>(slot.offset);
    if (!font)
        return font;
    const auto take = [&](std::uint32_t offset, std::uint32_t length) {
        const auto name = NameAt(*font, offset, length);
        if (name)
            font->range.Extend(name->range);
        return name;
    };
    font->familyName = take(font->fixed.familyOffset, font->fixed.familyLength);
    font->styleName = take(font->fixed.styleOffset, font->fixed.styleLength);
    font->faceName = take(font->fixed.faceOffset, font->fixed.faceLength);
    font->uniqueName = take(font->fixed.uniqueOffset, font->fixed.uniqueLength);
    return font;
}

} // namespace koru::client
