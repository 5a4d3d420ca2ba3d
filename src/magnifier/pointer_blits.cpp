#include "magnifier/pointer_blits.h"

#include "magnifier/blits.h"
#include "magnifier/palette.h"
#include "magnifier/pixel_formats.h"
#include "magnifier/rectangle.h"
#include "platform/constants.h"

namespace koru {

namespace {

    constexpr ULONG ColourBits = 0x00FFFFFF; // without the unused fourth byte

    // Pointers are small: one routine for all pairs of formats, pixels through a table.
    struct PixelAccess {
        ULONG (*read)(const BYTE* row, LONG x);
        void (*write)(BYTE* row, LONG x, ULONG value);
    };
    template<class Pixel>
    constexpr PixelAccess AccessOf = {
        [](const BYTE* row, LONG x) -> ULONG { return Pixel::Read(row, x); },
        [](BYTE* row, LONG x, ULONG value) { Pixel::Write(row, x, static_cast<typename Pixel::Value>(value)); },
    };
    constexpr PixelAccess AccessOfFormat[] = {
        {},
        AccessOf<Pixel1>,
        AccessOf<Pixel4>,
        AccessOf<Pixel8>,
        AccessOf<Pixel16>,
        AccessOf<Pixel24>,
        AccessOf<Pixel32>,
    };

    BYTE* RowOf(const SURFOBJ& surface, LONG y)
    {
        return static_cast<BYTE*>(surface.pvScan0) + y * surface.lDelta;
    }

    bool IsReadable(const SURFOBJ& surface)
    {
        return surface.pvBits && BitsPerPixel(surface.iBitmapFormat) != 0;
    }

    // Runs blend(shape pixel, background, x, y) over the part of the area that both surfaces have.
    template<class Blend> void BlendArea(SURFOBJ* psoCursor, const SURFOBJ& color, const RECTL& area, Blend blend)
    {
        RECTL part;
        if (!IsReadable(*psoCursor) || !IsReadable(color) || !IntersectRect(part, area, BoundsOf(psoCursor->sizlBitmap))
            || !IntersectRect(part, part, BoundsOf(color.sizlBitmap)))
            return;
        const PixelAccess& target = AccessOfFormat[psoCursor->iBitmapFormat];
        const PixelAccess& source = AccessOfFormat[color.iBitmapFormat];
        for (LONG y = part.top; y < part.bottom; ++y) {
            BYTE* const row = RowOf(*psoCursor, y);
            for (LONG x = part.left; x < part.right; ++x)
                target.write(row, x, blend(source.read(RowOf(color, y), x), target.read(row, x), x, y));
        }
    }

    bool IsLight(const ColourBytes& colour)
    {
        return colour.red * 299 + colour.green * 587 + colour.blue * 114 >= 128 * 1000;
    }

    // Of the formats that hold colours, not indices.
    ColourBytes ColourOfPixel(ULONG pixel, ULONG format)
    {
        if (format != BMF_16BPP)
            return ColourOf888(pixel);
        const auto packed = static_cast<USHORT>(pixel);
        return HasFiveBitGreen() ? ColourOf555(packed) : ColourOf565(packed);
    }

    ULONG PackedPixel(const ColourBytes& colour, ULONG format)
    {
        if (format == BMF_16BPP)
            return PixelOf(colour, HasFiveBitGreen() ? 15 : 16);
        return static_cast<ULONG>(colour.blue | colour.green << 8 | colour.red << 16);
    }

    // The pixel that shows a colour; `otherwise` where a palette format has no table to look it up in.
    ULONG PixelOfColour(const ColourBytes& colour, ULONG format, const BYTE* colourTable, ULONG otherwise)
    {
        BYTE index = 0;
        switch (format) {
        case BMF_1BPP:
            return IsLight(colour);
        case BMF_4BPP:
            return NearestIndex16(colourTable, colour, index) ? index : otherwise;
        case BMF_8BPP:
            return NearestIndex256(colourTable, colour, index) ? index : otherwise;
        default:
            return PackedPixel(colour, format);
        }
    }

    // A pixel of the shape as one of the screen, `otherwise` for a colour that cannot be looked up. The
    // engine's own translation objects are larger than their public part, so a copied one can only be read.
    ULONG Translate(ULONG pixel, const PointerShape& shape, ULONG screenFormat, ULONG otherwise)
    {
        const XLATEOBJ* const xlate = shape.xlate;
        const ULONG format = shape.color->iBitmapFormat;
        if ((!xlate || xlate->flXlate & XO_TRIVIAL) && format == screenFormat)
            return pixel;
        if (xlate && xlate->flXlate & XO_TABLE && xlate->pulXlate)
            return pixel < xlate->cEntries ? xlate->pulXlate[pixel] : 0;
        if (format < BMF_16BPP)
            return pixel;
        return PixelOfColour(ColourOfPixel(pixel, format), screenFormat, shape.colourTable, otherwise);
    }

    BYTE Over(BYTE component, BYTE background, ULONG alpha)
    {
        const ULONG sum = component + (background * (255 - alpha) + 127) / 255;
        return static_cast<BYTE>(sum < 255 ? sum : 255);
    }

    ULONG BlendDirect(const ColourBytes& colour, ULONG alpha, ULONG background, ULONG format)
    {
        const ColourBytes under = ColourOfPixel(background, format);
        const ColourBytes sum = {Over(colour.blue, under.blue, alpha), Over(colour.green, under.green, alpha),
                                 Over(colour.red, under.red, alpha)};
        const ULONG unused = format == BMF_32BPP ? background & ~ColourBits : 0;
        return PackedPixel(sum, format) | unused;
    }

    BYTE Unmultiplied(BYTE component, ULONG alpha)
    {
        const ULONG full = component * 255u / alpha;
        return static_cast<BYTE>(full < 255 ? full : 255);
    }

    // Palettes cannot mix: a pixel is the shape's or the background's.
    ULONG BlendIndexed(const ColourBytes& colour, ULONG alpha, ULONG background, ULONG format, const BYTE* colourTable)
    {
        if (alpha < 128)
            return background;
        const ColourBytes full = {Unmultiplied(colour.blue, alpha), Unmultiplied(colour.green, alpha),
                                  Unmultiplied(colour.red, alpha)};
        return PixelOfColour(full, format, colourTable, background);
    }

} // namespace

MaskBits MaskAt(const SURFOBJ& mask, LONG x, LONG y)
{
    const LONG height = mask.sizlBitmap.cy / 2;
    if (x >= mask.sizlBitmap.cx || y >= height || !mask.pvBits)
        return {true, false};
    return {Pixel1::Read(RowOf(mask, y), x) != 0, Pixel1::Read(RowOf(mask, y + height), x) != 0};
}

void BlendMasked(SURFOBJ* psoCursor, const PointerShape& shape, const SURFOBJ& mask, const RECTL& area)
{
    const ULONG format = psoCursor->iBitmapFormat;
    BlendArea(psoCursor, *shape.color, area, [&](ULONG pixel, ULONG background, LONG x, LONG y) -> ULONG {
        if (!MaskAt(mask, x, y).andBit)
            return Translate(pixel, shape, format, background);
        return pixel ? background ^ (Translate(pixel, shape, format, 0) & ColourBits) : background;
    });
}

void BlendAlpha(SURFOBJ* psoCursor, const PointerShape& shape, const RECTL& area)
{
    const ULONG format = psoCursor->iBitmapFormat;
    BlendArea(psoCursor, *shape.color, area, [&](ULONG pixel, ULONG background, LONG, LONG) -> ULONG {
        if (pixel == 0)
            return background;
        const ULONG alpha = pixel >> 24;
        const ColourBytes colour = ColourOf888(pixel);
        return format < BMF_16BPP ? BlendIndexed(colour, alpha, background, format, shape.colourTable)
                                  : BlendDirect(colour, alpha, background, format);
    });
}

} // namespace koru
