// Records that create, select and delete pens, brushes, fonts and palettes.

#include <algorithm>
#include <cmath>

#include "engine/core/calls.h"
#include "engine/gdi/dib.h"
#include "engine/gdi/metafile_player.h"

namespace engine::gdi {

namespace {

    constexpr std::size_t Handle = 8; // the first field of a record, behind type and size
    constexpr ULONG MostPaletteEntries = 1024;

    struct PaletteEntry {
        BYTE red, green, blue, flags;
        COLORREF Colour() const { return static_cast<COLORREF>(red | green << 8 | blue << 16); }
    };

    void CreatePen(Playing& playing, const Bytes& record)
    {
        LogicalPen pen;
        pen.style = record.Get<ULONG>(12) & PS_STYLE_MASK;
        pen.width = std::fabs(static_cast<double>(record.Get<LONG>(16)));
        pen.brush.colour = record.Get<COLORREF>(24);
        playing.Create(record.Get<ULONG>(Handle), pen);
    }

    LogicalBrush HatchedBrush(COLORREF colour, ULONG hatch)
    {
        if (hatch >= HS_API_MAX)
            throw DamagedData("no such hatch");
        LogicalBrush brush;
        brush.kind = LogicalBrush::Kind::Hatched;
        brush.colour = colour;
        brush.hatch = hatch;
        return brush;
    }

    LogicalBrush PatternBrush(const Dib& dib)
    {
        LogicalBrush brush;
        brush.kind = LogicalBrush::Kind::Pattern;
        brush.pattern = ReadDib(dib);
        return brush;
    }

    LogicalBrush PlainBrush(ULONG style, COLORREF colour, ULONG hatch)
    {
        LogicalBrush brush;
        brush.colour = colour;
        if (style == BS_NULL)
            brush.kind = LogicalBrush::Kind::None;
        else if (style == BS_HATCHED)
            brush = HatchedBrush(colour, hatch);
        else if (style != BS_SOLID)
            throw DamagedData("no such brush style");
        return brush;
    }

    void CreateBrush(Playing& playing, const Bytes& record)
    {
        playing.Create(record.Get<ULONG>(Handle),
                       PlainBrush(record.Get<ULONG>(12), record.Get<COLORREF>(16), record.Get<ULONG>(20)));
    }

    void CreateDibBrush(Playing& playing, const Bytes& record)
    {
        playing.Create(record.Get<ULONG>(Handle), PatternBrush(DibOf(playing, record, 16, record.Get<ULONG>(12))));
    }

    std::shared_ptr<const Bitmap> ToBlackAndWhite(const Bitmap& coloured)
    {
        auto bitmap = std::make_shared<Bitmap>(coloured.Size(), PixelLayout::Default(BMF_1BPP));
        Translation translation(coloured.Pixels().layout, bitmap->Pixels().layout);
        RECTL all = bitmap->Pixels().Bounds();
        POINTL origin = {0, 0};
        CallCopyBits(&bitmap->Pixels(), &coloured.Pixels(), nullptr, &translation, &all, &origin);
        return bitmap;
    }

    void CreateMonoBrush(Playing& playing, const Bytes& record)
    {
        LogicalBrush brush = PatternBrush(DibOf(playing, record, 16, 0));
        if (brush.pattern->Pixels().iBitmapFormat != BMF_1BPP)
            brush.pattern = ToBlackAndWhite(*brush.pattern);
        brush.monochrome = true;
        playing.Create(record.Get<ULONG>(Handle), std::move(brush));
    }

    void ExtCreatePen(Playing& playing, const Bytes& record)
    {
        LogicalPen pen;
        pen.extended = true;
        pen.style = record.Get<ULONG>(28);
        pen.width = record.Get<ULONG>(32);
        const ULONG brushStyle = record.Get<ULONG>(36);
        if (brushStyle == BS_PATTERN || brushStyle == BS_DIBPATTERN || brushStyle == BS_DIBPATTERNPT)
            pen.brush = PatternBrush(DibOf(playing, record, 12, record.Get<ULONG>(40)));
        else
            pen.brush = PlainBrush(brushStyle, record.Get<COLORREF>(40), record.Get<ULONG>(44));
        if (pen.Line() == PS_USERSTYLE)
            pen.dashes = record.List<ULONG>(52, std::min(record.Get<ULONG>(48), MostDashes));
        playing.Create(record.Get<ULONG>(Handle), std::move(pen));
    }

    void CreateFont(Playing& playing, const Bytes& record)
    {
        auto font = record.Get<LOGFONTW>(12);
        // What stands behind the name's end would make equal requests differ.
        std::fill(std::find(std::begin(font.lfFaceName), std::end(font.lfFaceName), u'\0'), std::end(font.lfFaceName),
                  u'\0');
        playing.Create(record.Get<ULONG>(Handle), font);
    }

    std::vector<COLORREF> ReadEntries(const Bytes& record, std::size_t offset, std::size_t count)
    {
        std::vector<COLORREF> colours;
        for (const PaletteEntry& entry : record.List<PaletteEntry>(offset, count))
            colours.push_back(entry.Colour());
        return colours;
    }

    void CreatePalette(Playing& playing, const Bytes& record)
    {
        playing.Create(record.Get<ULONG>(Handle), LogicalPalette{ReadEntries(record, 16, record.Get<USHORT>(14))});
    }

    void UsePalette(Playing& playing, ULONG handle)
    {
        playing.dc.Now().palette = std::make_shared<LogicalPalette>(playing.Get<LogicalPalette>(handle));
        playing.palette = handle;
    }

    void SelectPalette(Playing& playing, const Bytes& record)
    {
        UsePalette(playing, record.Get<ULONG>(Handle));
    }

    // Changes a palette, at once also where it is selected.
    template<class Change> void ChangePalette(Playing& playing, ULONG handle, Change change)
    {
        LogicalPalette palette = playing.Get<LogicalPalette>(handle);
        change(palette.colours);
        playing.Create(handle, std::move(palette));
        if (handle == playing.palette)
            UsePalette(playing, handle);
    }

    void SetPaletteEntries(Playing& playing, const Bytes& record)
    {
        const ULONG start = record.Get<ULONG>(12);
        const std::vector<COLORREF> entries = ReadEntries(record, 20, record.Get<ULONG>(16));
        ChangePalette(playing, record.Get<ULONG>(Handle), [&](std::vector<COLORREF>& colours) {
            if (start > colours.size() || entries.size() > colours.size() - start)
                throw DamagedData("palette too small");
            std::copy(entries.begin(), entries.end(), colours.data() + start);
        });
    }

    void ResizePalette(Playing& playing, const Bytes& record)
    {
        const ULONG size = record.Get<ULONG>(12);
        if (size == 0 || size > MostPaletteEntries)
            throw DamagedData("palette of a wrong size");
        ChangePalette(playing, record.Get<ULONG>(Handle),
                      [size](std::vector<COLORREF>& colours) { colours.resize(size, 0); });
    }

    struct Selector {
        Attributes& now;
        void operator()(const LogicalPen& pen) const { now.pen = pen; }
        void operator()(const LogicalBrush& brush) const { now.brush = brush; }
        void operator()(const LOGFONTW& font) const { now.font = font; }
        void operator()(const LogicalPalette&) const { throw DamagedData("palette among objects"); }
        void operator()(std::monostate) const { }
    };

    void SelectObject(Playing& playing, const Bytes& record)
    {
        std::visit(Selector{playing.dc.Now()}, playing.ObjectOf(record.Get<ULONG>(Handle)));
    }

    // What is selected stays so: the context has its own copy.
    void DeleteObject(Playing& playing, const Bytes& record)
    {
        const ULONG handle = record.Get<ULONG>(Handle);
        if (handle & StockFlag)
            return; // stock objects live on
        playing.ObjectOf(handle);
        playing.objects[handle] = {};
    }

    constexpr RecordHandler Handlers[] = {
        {37, "SELECTOBJECT", SelectObject},
        {38, "CREATEPEN", CreatePen},
        {39, "CREATEBRUSHINDIRECT", CreateBrush},
        {40, "DELETEOBJECT", DeleteObject},
        {48, "SELECTPALETTE", SelectPalette},
        {49, "CREATEPALETTE", CreatePalette},
        {50, "SETPALETTEENTRIES", SetPaletteEntries},
        {51, "RESIZEPALETTE", ResizePalette},
        {82, "EXTCREATEFONTINDIRECTW", CreateFont},
        {93, "CREATEMONOBRUSH", CreateMonoBrush},
        {94, "CREATEDIBPATTERNBRUSHPT", CreateDibBrush},
        {95, "EXTCREATEPEN", ExtCreatePen},
    };

} // namespace

std::span<const RecordHandler> ObjectRecords()
{
    return Handlers;
}

} // namespace engine::gdi
