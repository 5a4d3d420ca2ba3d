#include "engine/gdi/dib.h"

#include <algorithm>
#include <bit>

namespace engine::gdi {

namespace {

    constexpr ULONG BI_RGB = 0, BI_RLE8 = 1, BI_RLE4 = 2, BI_BITFIELDS = 3, BI_JPEG = 4, BI_PNG = 5;
    constexpr ULONG CoreHeaderSize = 12, InfoHeaderSize = 40;
    constexpr LONG LongestSide = 1 << 20;

    struct Header {
        ULONG size = 0;
        LONG width = 0, height = 0; // height is positive
        bool topDown = false;
        ULONG bitsPerPixel = 0, compression = BI_RGB, coloursUsed = 0;

        bool IsCore() const { return size == CoreHeaderSize; }
        bool IsPicture() const { return compression == BI_JPEG || compression == BI_PNG; }
        bool IsRunLength() const { return compression == BI_RLE4 || compression == BI_RLE8; }
        std::size_t Stride() const { return (std::size_t{bitsPerPixel} * static_cast<ULONG>(width) + 31) / 32 * 4; }
    };

    Header ReadHeader(Bytes info)
    {
        Header header;
        header.size = info.Get<ULONG>(0);
        if (header.IsCore()) {
            header.width = info.Get<USHORT>(4);
            header.height = info.Get<USHORT>(6);
            header.bitsPerPixel = info.Get<USHORT>(10);
            return header;
        }
        if (header.size < InfoHeaderSize || header.size > info.Size())
            throw DamagedData("bitmap header of a wrong size");
        header.width = info.Get<LONG>(4);
        header.height = info.Get<LONG>(8);
        header.bitsPerPixel = info.Get<USHORT>(14);
        header.compression = info.Get<ULONG>(16);
        header.coloursUsed = info.Get<ULONG>(32);
        if (header.height < 0 && header.height >= -LongestSide) {
            header.topDown = true;
            header.height = -header.height;
        }
        return header;
    }

    void Check(const Header& header)
    {
        if (header.width <= 0 || header.height <= 0 || header.width > LongestSide || header.height > LongestSide)
            throw DamagedData("bitmap without a size");
        if (header.IsPicture())
            return;
        constexpr ULONG known[] = {1, 4, 8, 16, 24, 32};
        if (std::find(std::begin(known), std::end(known), header.bitsPerPixel) == std::end(known))
            throw DamagedData("bitmap of an unknown depth");
        if (header.compression > BI_BITFIELDS)
            throw DamagedData("bitmap of an unknown compression");
        if (header.IsRunLength()
            && (header.topDown || header.bitsPerPixel != (header.compression == BI_RLE8 ? 8u : 4u)))
            throw DamagedData("run lengths of a wrong depth or direction");
        if (header.compression == BI_BITFIELDS && header.bitsPerPixel != 16 && header.bitsPerPixel != 32)
            throw DamagedData("colour masks at a wrong depth");
    }

    ULONG FormatOf(ULONG bitsPerPixel)
    {
        switch (bitsPerPixel) {
        case 1:
            return BMF_1BPP;
        case 4:
            return BMF_4BPP;
        case 8:
            return BMF_8BPP;
        case 16:
            return BMF_16BPP;
        case 24:
            return BMF_24BPP;
        default:
            return BMF_32BPP;
        }
    }

    COLORREF ColourOfQuad(const BYTE* quad)
    {
        return static_cast<COLORREF>(quad[2] | quad[1] << 8 | quad[0] << 16);
    }

    // The colours that are there: a table cut short leaves the rest black.
    std::vector<COLORREF> ReadColours(const Dib& dib, const Header& header)
    {
        const ULONG most = 1u << header.bitsPerPixel;
        const ULONG count = header.coloursUsed == 0 ? most : std::min(header.coloursUsed, most);
        const std::size_t entry = dib.paletteIndices ? sizeof(USHORT) : header.IsCore() ? 3 : sizeof(ULONG);
        const Bytes table = dib.info.From(header.size);
        std::vector<COLORREF> colours(count, 0);
        for (std::size_t i = 0; i < count && (i + 1) * entry <= table.Size(); ++i) {
            if (!dib.paletteIndices)
                colours[i] = ColourOfQuad(table.Part(i * entry, entry).Data());
            else if (const USHORT index = table.Get<USHORT>(i * entry); index < dib.palette.size())
                colours[i] = dib.palette[index];
        }
        return colours;
    }

    bool IsContiguous(ULONG mask)
    {
        return mask != 0 && std::has_single_bit((mask >> std::countr_zero(mask)) + 1ull);
    }

    // Masks stand behind the plain header or are a part of the longer ones: the same place.
    PixelLayout LayoutFromMasks(const Dib& dib, const Header& header)
    {
        PixelLayout layout = {FormatOf(header.bitsPerPixel),
                              dib.info.Get<ULONG>(InfoHeaderSize),
                              dib.info.Get<ULONG>(InfoHeaderSize + 4),
                              dib.info.Get<ULONG>(InfoHeaderSize + 8),
                              {}};
        const ULONG all = layout.redMask | layout.greenMask | layout.blueMask;
        const bool apart =
            (layout.redMask & layout.greenMask) == 0 && ((layout.redMask | layout.greenMask) & layout.blueMask) == 0;
        const bool fits = header.bitsPerPixel == 32 || all <= 0xFFFF;
        if (!IsContiguous(layout.redMask) || !IsContiguous(layout.greenMask) || !IsContiguous(layout.blueMask) || !apart
            || !fits)
            throw DamagedData("colour masks that make no colour");
        return layout;
    }

    PixelLayout LayoutOf(const Dib& dib, const Header& header)
    {
        if (header.compression == BI_BITFIELDS)
            return LayoutFromMasks(dib, header);
        if (header.bitsPerPixel == 16)
            return PixelLayout::FiveFiveFive();
        PixelLayout layout = PixelLayout::Default(FormatOf(header.bitsPerPixel));
        if (header.bitsPerPixel <= 8)
            layout.palette = ReadColours(dib, header);
        return layout;
    }

    void CopyRows(Bytes bits, const Header& header, Surface& target)
    {
        const std::size_t stride = header.Stride();
        for (LONG i = 0; i < header.height; ++i) {
            const Bytes row = bits.Part(static_cast<std::size_t>(i) * stride, stride);
            std::memcpy(target.Row(header.topDown ? i : header.height - 1 - i), row.Data(), stride);
        }
    }

    // Run lengths may leave much out, but no honest ones are this much shorter than what they stand for.
    bool HasBitsFor(const Header& header, std::size_t size)
    {
        constexpr std::int64_t fewPixels = 1 << 16, pixelsPerByte = 512;
        const std::int64_t pixels = std::int64_t{header.width} * header.height;
        if (header.IsRunLength())
            return pixels <= MostExpandedPixels
                && (pixels <= fewPixels || pixels / pixelsPerByte <= static_cast<std::int64_t>(size));
        return header.Stride() <= size / static_cast<std::size_t>(header.height);
    }

} // namespace

Bitmap::Bitmap(SIZEL size, const PixelLayout& layout, LONG lDelta)
    : surface_(MakeBitmap(size, layout, lDelta))
{
    if (!surface_)
        throw DamagedData("no room for a bitmap");
}

Bitmap::~Bitmap()
{
    DestroyBitmap(surface_);
}

std::shared_ptr<const Bitmap> ReadDib(const Dib& dib)
{
    Header header = ReadHeader(dib.info);
    Check(header);
    if (header.IsPicture())
        return ReadCompressedPicture(dib.bits);
    if (dib.rows > 0)
        header.height = std::min(header.height, dib.rows);
    if (!HasBitsFor(header, dib.bits.Size()))
        throw DamagedData("bitmap with too few bits");
    const auto stride = static_cast<LONG>(header.Stride());
    auto bitmap = std::make_shared<Bitmap>(SIZEL{header.width, header.height}, LayoutOf(dib, header),
                                           header.topDown ? 0 : -stride);
    if (header.IsRunLength())
        ExpandRunLengths(dib.bits, bitmap->Pixels());
    else
        CopyRows(dib.bits, header, bitmap->Pixels());
    return bitmap;
}

std::shared_ptr<const Bitmap> ReadBmpFile(Bytes file)
{
    constexpr std::size_t fileHeaderSize = 14, offsetOfBits = 10;
    if (file.Get<USHORT>(0) != 0x4D42)
        throw DamagedData("no BMP file");
    const ULONG bits = file.Get<ULONG>(offsetOfBits);
    if (bits <= fileHeaderSize)
        throw DamagedData("BMP file without bits");
    return ReadDib({.info = file.Part(fileHeaderSize, bits - fileHeaderSize), .bits = file.From(bits)});
}

} // namespace engine::gdi
