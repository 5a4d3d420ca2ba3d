// Records that copy bitmaps, fill with gradients and set pixels.

#include "engine/gdi/blits.h"
#include "engine/gdi/metafile_player.h"
#include "engine/gdi/record_fields.h"

namespace engine::gdi {

namespace {

    // What the records from BITBLT to TRANSPARENTBLT begin with.
    struct BlitHead {
        RECTL bounds;
        POINTL destination;
        SIZEL size;
        ULONG operation; // a raster operation, blend function or colour
        POINTL source;
        Xform sourceTransform;
        COLORREF backColour;
        ULONG usage;
        ULONG infoOffset, infoSize, bitsOffset, bitsSize;
    };
    static_assert(sizeof(BlitHead) == 92);
    constexpr std::size_t HeadOffset = 8, InfoOffset = 84, BehindHead = HeadOffset + sizeof(BlitHead);

    BYTE TernaryRop(ULONG operation)
    {
        return static_cast<BYTE>(operation >> 16);
    }

    // A part of a source bitmap, through the transform that its context had.
    RECTL SourcePart(const BlitHead& head, SIZEL size)
    {
        const Transform transform = head.sourceTransform;
        if (transform.IsFlat() || !transform.IsAxisAligned())
            throw CannotPlay("turned source");
        const PointD corner = ToPoint(head.source);
        const POINTL first = ToPixel(transform.Apply(corner));
        const POINTL last = ToPixel(transform.Apply({corner.x + size.cx, corner.y + size.cy}));
        return {first.x, first.y, last.x, last.y};
    }

    Source SourceOf(Playing& playing, const Bytes& record, const BlitHead& head, SIZEL size)
    {
        return {ReadDib(DibOf(playing, record, InfoOffset, head.usage)), SourcePart(head, size)};
    }

    Destination DestinationOf(Playing& playing, const BlitHead& head)
    {
        return Destination::Logical(playing.dc, head.destination, head.size);
    }

    void Copy(Playing& playing, const Bytes& record, SIZEL (*sourceSize)(const Bytes& record, const BlitHead& head))
    {
        const auto head = record.Get<BlitHead>(HeadOffset);
        const BYTE rop = TernaryRop(head.operation);
        if (!UsesSource(rop))
            return FillWithRop(playing.dc, DestinationOf(playing, head), rop);
        const Source source = SourceOf(playing, record, head, sourceSize(record, head));
        CopyBitmap(playing.dc, DestinationOf(playing, head), source, rop);
    }

    SIZEL SameSize(const Bytes&, const BlitHead& head)
    {
        return head.size;
    }

    SIZEL OwnSize(const Bytes& record, const BlitHead&)
    {
        return record.Get<SIZEL>(BehindHead);
    }

    void BitBlt(Playing& playing, const Bytes& record)
    {
        Copy(playing, record, SameSize);
    }

    void StretchBlt(Playing& playing, const Bytes& record)
    {
        Copy(playing, record, OwnSize);
    }

    void MaskBlt(Playing& playing, const Bytes& record)
    {
        constexpr std::size_t maskOffset = BehindHead, maskInfoOffset = maskOffset + 12;
        const auto head = record.Get<BlitHead>(HeadOffset);
        if (record.Get<ULONG>(maskInfoOffset + 4) == 0)
            return BitBlt(playing, record);
        const Source source = SourceOf(playing, record, head, head.size);
        const auto mask = ReadDib(DibOf(playing, record, maskInfoOffset, 0));
        // The background operation stands above the foreground one.
        CopyMasked(playing.dc, DestinationOf(playing, head), source, *mask, record.Get<POINTL>(maskOffset),
                   head.operation >> 16);
    }

    void AlphaBlend(Playing& playing, const Bytes& record)
    {
        const auto head = record.Get<BlitHead>(HeadOffset);
        const ULONG word = head.operation;
        const BLENDFUNCTION blend = {static_cast<BYTE>(word), static_cast<BYTE>(word >> 8),
                                     static_cast<BYTE>(word >> 16), static_cast<BYTE>(word >> 24)};
        BlendBitmap(playing.dc, DestinationOf(playing, head), SourceOf(playing, record, head, OwnSize(record, head)),
                    blend);
    }

    void TransparentBlt(Playing& playing, const Bytes& record)
    {
        const auto head = record.Get<BlitHead>(HeadOffset);
        CopyTransparent(playing.dc, DestinationOf(playing, head),
                        SourceOf(playing, record, head, OwnSize(record, head)), head.operation);
    }

    struct PlgHead {
        RECTL bounds;
        POINTL corners[3];
        POINTL source;
        SIZEL size;
        Xform sourceTransform;
        COLORREF backColour;
        ULONG usage;
        ULONG infoOffset, infoSize, bitsOffset, bitsSize;
        POINTL mask;
        ULONG maskUsage;
        ULONG maskInfoOffset, maskInfoSize, maskBitsOffset, maskBitsSize;
    };
    static_assert(sizeof(PlgHead) == 132);

    void PlgBlt(Playing& playing, const Bytes& record)
    {
        constexpr std::size_t infoOffset = HeadOffset + offsetof(PlgHead, infoOffset);
        constexpr std::size_t maskInfoOffset = HeadOffset + offsetof(PlgHead, maskInfoOffset);
        const auto head = record.Get<PlgHead>(HeadOffset);
        const RECTL part = {head.source.x, head.source.y, Saturated(std::int64_t{head.source.x} + head.size.cx),
                            Saturated(std::int64_t{head.source.y} + head.size.cy)};
        const Source source = {ReadDib(DibOf(playing, record, infoOffset, head.usage)), part};
        const auto mask = head.maskInfoSize ? ReadDib(DibOf(playing, record, maskInfoOffset, 0)) : nullptr;
        const auto corner = [&](int i) { return playing.dc.Map(ToPoint(head.corners[i])); };
        CopyToParallelogram(playing.dc, {corner(0), corner(1), corner(2)}, source, mask.get(), head.mask);
    }

    // Rows of bottom-up bitmaps count from below.
    bool IsTopDown(const Dib& dib)
    {
        constexpr ULONG coreHeaderSize = 12;
        return dib.info.Get<ULONG>(0) != coreHeaderSize && dib.info.Get<LONG>(8) < 0;
    }

    RECTL Edges(std::int64_t left, std::int64_t top, std::int64_t right, std::int64_t bottom)
    {
        return {Saturated(left), Saturated(top), Saturated(right), Saturated(bottom)};
    }

    void StretchDiBits(Playing& playing, const Bytes& record)
    {
        const auto to = record.Get<POINTL>(24), from = record.Get<POINTL>(32);
        const auto fromSize = record.Get<SIZEL>(40), toSize = record.Get<SIZEL>(72);
        const Destination destination = Destination::Logical(playing.dc, to, toSize);
        const BYTE rop = TernaryRop(record.Get<ULONG>(68));
        if (!UsesSource(rop))
            return FillWithRop(playing.dc, destination, rop);
        const Dib dib = DibOf(playing, record, 48, record.Get<ULONG>(64));
        Source source = {ReadDib(dib), {}};
        const std::int64_t height = source.bitmap->Size().cy;
        const std::int64_t top = IsTopDown(dib) ? from.y : height - from.y - fromSize.cy;
        source.part = Edges(from.x, top, std::int64_t{from.x} + fromSize.cx, top + fromSize.cy);
        CopyBitmap(playing.dc, destination, source, rop);
    }

    // The size is that of the bitmap on the device that the drawing was made for, whatever the units are.
    Destination UnscaledDestination(const DeviceContext& dc, POINTL corner, LONG cx, LONG cy)
    {
        const PointD at = dc.ToReference().Apply(ToPoint(corner));
        const Transform& base = dc.Base();
        return {base.Apply(at), base.Apply({at.x + cx, at.y}), base.Apply({at.x, at.y + cy})};
    }

    void SetDiBitsToDevice(Playing& playing, const Bytes& record)
    {
        const auto to = record.Get<POINTL>(24), from = record.Get<POINTL>(32);
        const auto size = record.Get<SIZEL>(40);
        const auto firstRow = record.Get<ULONG>(68), rows = record.Get<ULONG>(72);
        if (rows == 0)
            return;
        Dib dib = DibOf(playing, record, 48, record.Get<ULONG>(64));
        dib.rows = Saturated(rows);
        Source source = {ReadDib(dib), {}};
        const std::int64_t given = source.bitmap->Size().cy;
        const std::int64_t top =
            IsTopDown(dib) ? std::int64_t{from.y} - firstRow : std::int64_t{firstRow} + given - from.y - size.cy;
        source.part = Edges(from.x, top, std::int64_t{from.x} + size.cx, top + size.cy);
        CopyBitmap(playing.dc, UnscaledDestination(playing.dc, to, size.cx, size.cy), source, RopSourceCopy);
    }

    void SetPixelRecord(Playing& playing, const Bytes& record)
    {
        SetPixel(playing.dc, record.Get<POINTL>(8), record.Get<COLORREF>(16));
    }

    void GradientFill(Playing& playing, const Bytes& record)
    {
        constexpr std::size_t verticesOffset = 36;
        GradientMesh mesh;
        mesh.mode = record.Get<ULONG>(32);
        if (mesh.mode > GRADIENT_FILL_TRIANGLE)
            throw DamagedData("no such mode");
        mesh.vertices = record.List<TRIVERTEX>(verticesOffset, record.Get<ULONG>(24));
        const std::size_t parts = record.Get<ULONG>(28), perPart = mesh.mode == GRADIENT_FILL_TRIANGLE ? 3 : 2;
        if (parts > record.Size())
            throw DamagedData("too short");
        mesh.indices = record.List<ULONG>(verticesOffset + mesh.vertices.size() * sizeof(TRIVERTEX), parts * perPart);
        FillGradient(playing.dc, mesh);
    }

    constexpr RecordHandler Handlers[] = {
        {15, "SETPIXELV", SetPixelRecord},
        {76, "BITBLT", BitBlt},
        {77, "STRETCHBLT", StretchBlt},
        {78, "MASKBLT", MaskBlt},
        {79, "PLGBLT", PlgBlt},
        {80, "SETDIBITSTODEVICE", SetDiBitsToDevice},
        {81, "STRETCHDIBITS", StretchDiBits},
        {114, "ALPHABLEND", AlphaBlend},
        {116, "TRANSPARENTBLT", TransparentBlt},
        {118, "GRADIENTFILL", GradientFill},
    };

} // namespace

std::span<const RecordHandler> BitmapRecords()
{
    return Handlers;
}

} // namespace engine::gdi
