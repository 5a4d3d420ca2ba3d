#include "engine/gdi/metafile_player.h"

#include <array>

#include "engine/gdi/dib.h"

namespace engine::gdi {

namespace {

    constexpr ULONG LastRecordType = 122;
    constexpr ULONG MostHandles = 0x10000;

    void DoNothing(Playing&, const Bytes&) { }

    constexpr RecordHandler OtherRecords[] = {
        {EMR_HEADER, "HEADER", DoNothing}, // what it says is known beforehand
        {EMR_EOF, "EOF", DoNothing},
        {16, "SETMAPPERFLAGS", DoNothing}, // fonts of every aspect ratio are scaled
        {52, "REALIZEPALETTE", DoNothing}, // colours are matched to the target as it is
        {53, "EXTFLOODFILL", nullptr}, // would have to read the target
        {70, "comment", nullptr},
        {98, "SETICMMODE", nullptr},
        {99, "CREATECOLORSPACE", nullptr},
        {100, "SETCOLORSPACE", nullptr},
        {101, "DELETECOLORSPACE", nullptr},
        {102, "GLSRECORD", nullptr},
        {103, "GLSBOUNDEDRECORD", nullptr},
        {104, "PIXELFORMAT", nullptr},
        {105, "DRAWESCAPE", nullptr},
        {106, "EXTESCAPE", nullptr},
        {107, "STARTDOC", nullptr},
        {109, "FORCEUFIMAPPING", nullptr},
        {110, "NAMEDESCAPE", nullptr},
        {111, "COLORCORRECTPALETTE", nullptr},
        {112, "SETICMPROFILEA", nullptr},
        {113, "SETICMPROFILEW", nullptr},
        {119, "SETLINKEDUFIS", nullptr},
        {121, "COLORMATCHTOTARGETW", nullptr},
        {122, "CREATECOLORSPACEW", nullptr},
    };

    using HandlerTable = std::array<const RecordHandler*, LastRecordType + 1>;

    HandlerTable MakeTable()
    {
        HandlerTable table = {};
        for (const std::span<const RecordHandler> part :
             {std::span<const RecordHandler>(OtherRecords), StateRecords(), ObjectRecords(), ShapeRecords(),
              PathRecords(), RegionRecords(), BitmapRecords(), TextRecords()})
            for (const RecordHandler& handler : part)
                table[handler.type] = &handler;
        return table;
    }

    const RecordHandler* HandlerOf(ULONG type)
    {
        static const HandlerTable table = MakeTable();
        return type <= LastRecordType ? table[type] : nullptr;
    }

} // namespace

const Object& Playing::ObjectOf(ULONG handle) const
{
    if (handle & StockFlag) {
        stock = StockObject(handle & ~StockFlag);
        if (std::holds_alternative<std::monostate>(stock))
            throw CannotPlay("no such stock object");
        return stock;
    }
    if (handle >= objects.size() || std::holds_alternative<std::monostate>(objects[handle]))
        throw CannotPlay("no such object");
    return objects[handle];
}

void Playing::Create(ULONG handle, Object object)
{
    if (handle == 0 || handle >= MostHandles)
        throw DamagedData("no such handle");
    if (handle >= objects.size())
        objects.resize(handle + 1);
    objects[handle] = std::move(object);
}

MetafilePlayer::MetafilePlayer(DeviceContext& dc, PlayReport& report)
    : playing_{dc}
    , report_(report)
{
}

void MetafilePlayer::Play(const Record& record)
{
    const RecordHandler* const handler = HandlerOf(record.type);
    const std::string name = handler ? handler->name : "record type " + std::to_string(record.type);
    if (!handler || !handler->play) {
        ++report_.skipped[name];
        return;
    }
    try {
        handler->play(playing_, record.data);
        ++report_.played[name];
    } catch (const CannotPlay& problem) {
        ++report_.skipped[name + ": " + problem.what()];
    }
}

Dib DibOf(const Playing& playing, const Bytes& record, std::size_t offset, ULONG usage)
{
    constexpr ULONG paletteIndices = 1;
    return {.info = record.Part(record.Get<ULONG>(offset), record.Get<ULONG>(offset + 4)),
            .bits = record.Part(record.Get<ULONG>(offset + 8), record.Get<ULONG>(offset + 12)),
            .paletteIndices = usage == paletteIndices,
            .palette = playing.dc.Now().palette->colours};
}

} // namespace engine::gdi
