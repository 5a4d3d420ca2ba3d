// Records that draw text.

#include "engine/gdi/metafile_player.h"
#include "engine/gdi/text.h"

namespace engine::gdi {

namespace {

    constexpr std::size_t ModeOffset = 24, TextOffset = 36; // behind the bounds
    constexpr ULONG GM_ADVANCED = 2;

    struct TextHead {
        POINTL reference;
        ULONG count;
        ULONG stringOffset;
        ULONG options;
        RECTL rectangle;
        ULONG advancesOffset;
    };
    static_assert(sizeof(TextHead) == 40);

    std::u16string ReadString(const Bytes& record, std::size_t offset, std::size_t count, bool wide)
    {
        if (!wide) {
            const std::vector<char> text = record.List<char>(offset, count);
            return FromCodePage1252(std::string(text.begin(), text.end()));
        }
        const std::vector<WCHAR> text = record.List<WCHAR>(offset, count);
        return std::u16string(text.begin(), text.end());
    }

    // Advances that are not there are the font's own: some programs write the offset and leave them out.
    std::vector<LONG> ReadAdvances(const Bytes& record, const TextHead& head)
    {
        const std::size_t count = std::size_t{head.count} * (head.options & ETO_PDY ? 2 : 1);
        if (head.advancesOffset == 0 || head.advancesOffset > record.Size()
            || count > (record.Size() - head.advancesOffset) / sizeof(LONG))
            return {};
        return record.List<LONG>(head.advancesOffset, count);
    }

    TextLine ReadLine(const Bytes& record, const TextHead& head, bool wide)
    {
        TextLine line;
        line.reference = head.reference;
        line.options = head.options;
        line.rectangle = head.rectangle;
        line.text = ReadString(record, head.stringOffset, head.count, wide);
        line.advances = ReadAdvances(record, head);
        line.advanced = record.Get<ULONG>(ModeOffset) == GM_ADVANCED;
        return line;
    }

    template<bool Wide> void ExtTextOut(Playing& playing, const Bytes& record)
    {
        DrawText(playing.dc, ReadLine(record, record.Get<TextHead>(TextOffset), Wide));
    }

    template<bool Wide> void PolyTextOut(Playing& playing, const Bytes& record)
    {
        std::size_t left = record.Size(); // characters that the record can hold: strings do not share them
        for (const TextHead& head : record.List<TextHead>(TextOffset + 4, record.Get<ULONG>(TextOffset))) {
            if (head.count > left)
                throw DamagedData("too short");
            left -= head.count;
            DrawText(playing.dc, ReadLine(record, head, Wide));
        }
    }

    void SmallTextOut(Playing& playing, const Bytes& record)
    {
        TextLine line;
        line.reference = record.Get<POINTL>(8);
        line.options = record.Get<ULONG>(20);
        line.advanced = record.Get<ULONG>(ModeOffset) == GM_ADVANCED;
        const bool hasRectangle = (line.options & ETO_NO_RECT) == 0;
        if (hasRectangle)
            line.rectangle = record.Get<RECTL>(TextOffset);
        line.text = ReadString(record, TextOffset + (hasRectangle ? sizeof(RECTL) : 0), record.Get<ULONG>(16),
                               (line.options & ETO_SMALL_CHARS) == 0);
        DrawText(playing.dc, line);
    }

    constexpr RecordHandler Handlers[] = {
        {83, "EXTTEXTOUTA", ExtTextOut<false>},   {84, "EXTTEXTOUTW", ExtTextOut<true>},
        {96, "POLYTEXTOUTA", PolyTextOut<false>}, {97, "POLYTEXTOUTW", PolyTextOut<true>},
        {108, "SMALLTEXTOUT", SmallTextOut},
    };

} // namespace

std::span<const RecordHandler> TextRecords()
{
    return Handlers;
}

} // namespace engine::gdi
