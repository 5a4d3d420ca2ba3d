#include "engine/raster/pixel_access.h"

#include <cstring>

namespace engine::raster {
namespace {

    // Less than a byte; the leftmost pixel has the topmost bits.
    template<ULONG Bits> struct PackedPixel {
        static constexpr ULONG BitsPerPixel = Bits;
        static constexpr LONG PerByte = 8 / Bits;
        static constexpr ULONG Mask = (1u << Bits) - 1;

        static ULONG Shift(LONG x) { return (PerByte - 1 - x % PerByte) * Bits; }
        static ULONG Read(const BYTE* row, LONG x) { return row[x / PerByte] >> Shift(x) & Mask; }
        static void Write(BYTE* row, LONG x, ULONG pixel)
        {
            BYTE& byte = row[x / PerByte];
            byte = static_cast<BYTE>((byte & ~(Mask << Shift(x))) | (pixel & Mask) << Shift(x));
        }
    };

    template<ULONG Bytes> struct BytesPixel {
        static constexpr ULONG BitsPerPixel = Bytes * 8;

        static ULONG Read(const BYTE* row, LONG x)
        {
            ULONG pixel = 0;
            std::memcpy(&pixel, row + x * static_cast<LONG>(Bytes), Bytes);
            return pixel;
        }
        static void Write(BYTE* row, LONG x, ULONG pixel)
        {
            std::memcpy(row + x * static_cast<LONG>(Bytes), &pixel, Bytes);
        }
    };

    template<class Pixel> void ReadSpan(const BYTE* row, LONG x, LONG count, ULONG* pixels)
    {
        for (LONG i = 0; i < count; ++i)
            pixels[i] = Pixel::Read(row, x + i);
    }

    template<class Pixel> void WriteSpan(BYTE* row, LONG x, LONG count, const ULONG* pixels)
    {
        for (LONG i = 0; i < count; ++i)
            Pixel::Write(row, x + i, pixels[i]);
    }

    // The screen's usual format is its own number already.
    template<> void ReadSpan<BytesPixel<4>>(const BYTE* row, LONG x, LONG count, ULONG* pixels)
    {
        std::memcpy(pixels, row + x * 4, static_cast<std::size_t>(count) * sizeof(ULONG));
    }

    template<> void WriteSpan<BytesPixel<4>>(BYTE* row, LONG x, LONG count, const ULONG* pixels)
    {
        std::memcpy(row + x * 4, pixels, static_cast<std::size_t>(count) * sizeof(ULONG));
    }

    template<class Pixel> constexpr PixelAccess AccessOf = {Pixel::BitsPerPixel, ReadSpan<Pixel>, WriteSpan<Pixel>};

    constexpr const PixelAccess* Formats[] = {
        nullptr,
        &AccessOf<PackedPixel<1>>,
        &AccessOf<PackedPixel<4>>,
        &AccessOf<BytesPixel<1>>,
        &AccessOf<BytesPixel<2>>,
        &AccessOf<BytesPixel<3>>,
        &AccessOf<BytesPixel<4>>,
    };
    static_assert(BMF_1BPP == 1 && BMF_4BPP == 2 && BMF_8BPP == 3 && BMF_16BPP == 4 && BMF_24BPP == 5
                  && BMF_32BPP == 6);

} // namespace

const PixelAccess* PixelAccessOf(ULONG iBitmapFormat)
{
    return iBitmapFormat <= BMF_32BPP ? Formats[iBitmapFormat] : nullptr;
}

} // namespace engine::raster
