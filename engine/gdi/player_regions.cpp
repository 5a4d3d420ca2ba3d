// Records that clip, and that fill regions.

#include "engine/gdi/metafile_player.h"
#include "engine/gdi/record_fields.h"
#include "engine/gdi/shapes.h"

namespace engine::gdi {

namespace {

    constexpr std::size_t First = 8; // the first field of a record, behind type and size

    // Rectangles that can come into sight are all that counts; more of them in disorder would take too long.
    RECTL Surroundings(const DeviceContext& dc)
    {
        const RECTL visible = dc.VisibleBounds();
        const LONG width = visible.right - visible.left, height = visible.bottom - visible.top;
        return {visible.left - width, visible.top - height, visible.right + width, visible.bottom + height};
    }

    RECTL Mapped(const Transform& transform, const RECTL& r)
    {
        const POINTL corner = ToPixel(transform.Apply({static_cast<double>(r.left), static_cast<double>(r.top)}));
        const POINTL opposite = ToPixel(transform.Apply({static_cast<double>(r.right), static_cast<double>(r.bottom)}));
        return Ordered({corner.x, corner.y, opposite.x, opposite.y});
    }

    // Region data, brought to the target by a transform.
    Region ReadRegion(const DeviceContext& dc, const Bytes& data, const Transform& toTarget)
    {
        constexpr std::size_t countOffset = 8, rectanglesOffset = 32;
        if (!toTarget.IsAxisAligned())
            throw CannotPlay("turned");
        const RECTL surroundings = Surroundings(dc);
        std::vector<RECTL> rectangles;
        for (const RECTL& rectangle : data.List<RECTL>(rectanglesOffset, data.Get<ULONG>(countOffset))) {
            const RECTL seen = Intersection(Mapped(toTarget, rectangle), surroundings);
            if (!IsEmpty(seen))
                rectangles.push_back(seen);
        }
        return Region(rectangles);
    }

    void Combine(Playing& playing, const Region& region, ULONG mode)
    {
        if (!playing.dc.CombineClip(region, mode))
            throw CannotPlay("clip of too many parts");
    }

    template<ULONG Mode> void CombineRectangle(Playing& playing, const Bytes& record)
    {
        Combine(playing, playing.dc.RegionOf(record.Get<RECTL>(First)), Mode);
    }

    void OffsetClip(Playing& playing, const Bytes& record)
    {
        const POINTL by = record.Get<POINTL>(First);
        playing.dc.MoveClip(ToPixel(playing.dc.ToDevice().Along(ToPoint(by))));
    }

    void SetMetaRegion(Playing& playing, const Bytes&)
    {
        playing.dc.MakeClipMeta();
    }

    // In pixels of the device that the drawing was made for.
    void SelectClip(Playing& playing, const Bytes& record)
    {
        const ULONG size = record.Get<ULONG>(First), mode = record.Get<ULONG>(First + 4);
        if (mode < RGN_AND || mode > RGN_COPY)
            throw DamagedData("no such mode");
        if (size == 0 && mode == RGN_COPY)
            return playing.dc.SetClip(nullptr);
        Combine(playing, ReadRegion(playing.dc, record.Part(First + 8, size), playing.dc.Base()), mode);
    }

    Region LogicalRegion(Playing& playing, const Bytes& record, std::size_t offset)
    {
        constexpr std::size_t sizeOffset = 24; // behind the bounds
        return ReadRegion(playing.dc, record.Part(offset, record.Get<ULONG>(sizeOffset)), playing.dc.ToDevice());
    }

    void FillRegion(Playing& playing, const Bytes& record)
    {
        const auto brush = playing.Get<LogicalBrush>(record.Get<ULONG>(28));
        PaintRegion(playing.dc, LogicalRegion(playing, record, 32), brush);
    }

    // What is left of a region when its edges come in from all sides.
    Region Shrunk(const Region& region, LONG width, LONG height)
    {
        Region inner = region;
        for (const LONG dx : {-width, 0, width})
            for (const LONG dy : {-height, 0, height}) {
                Region moved = region;
                moved.Move(dx, dy);
                inner = engine::Intersection(inner, moved);
            }
        return inner;
    }

    void FrameRegion(Playing& playing, const Bytes& record)
    {
        const auto brush = playing.Get<LogicalBrush>(record.Get<ULONG>(28));
        const SIZEL size = record.Get<SIZEL>(32);
        const Transform toDevice = playing.dc.ToDevice();
        const PointD edge = toDevice.Along({static_cast<double>(size.cx), static_cast<double>(size.cy)});
        const Region region = LogicalRegion(playing, record, 40);
        const LONG width = std::max<LONG>(1, ToLong(std::max(edge.x, -edge.x)));
        const LONG height = std::max<LONG>(1, ToLong(std::max(edge.y, -edge.y)));
        PaintRegion(playing.dc, engine::Difference(region, Shrunk(region, width, height)), brush);
    }

    void InvertRegionRecord(Playing& playing, const Bytes& record)
    {
        InvertRegion(playing.dc, LogicalRegion(playing, record, 28));
    }

    void PaintRegionRecord(Playing& playing, const Bytes& record)
    {
        PaintRegion(playing.dc, LogicalRegion(playing, record, 28), playing.dc.Now().brush);
    }

    constexpr RecordHandler Handlers[] = {
        {26, "OFFSETCLIPRGN", OffsetClip},
        {28, "SETMETARGN", SetMetaRegion},
        {29, "EXCLUDECLIPRECT", CombineRectangle<RGN_DIFF>},
        {30, "INTERSECTCLIPRECT", CombineRectangle<RGN_AND>},
        {71, "FILLRGN", FillRegion},
        {72, "FRAMERGN", FrameRegion},
        {73, "INVERTRGN", InvertRegionRecord},
        {74, "PAINTRGN", PaintRegionRecord},
        {75, "EXTSELECTCLIPRGN", SelectClip},
    };

} // namespace

std::span<const RecordHandler> RegionRecords()
{
    return Handlers;
}

} // namespace engine::gdi
