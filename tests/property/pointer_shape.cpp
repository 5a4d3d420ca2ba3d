#include "tests/property/pointer_shape.h"

namespace property {

PointerShape::PointerShape(Random& random, const Format& screen)
    : random_(random)
    , screen_(screen)
{
    const SIZEL size = random_.Size(12);
    const LONG kind = random_.Between(0, 9);
    if (kind == 0) // neither: nothing to show
        return;
    if (kind <= 3) {
        MakeMask(size);
    } else if (kind <= 5) {
        MakeAlpha(size);
    } else {
        MakeMask(random_.Percent(70) ? size : random_.Size(12));
        MakeColours(kind <= 7 ? screen_ : OtherFormat(), size);
    }
}

PointerShape::~PointerShape()
{
    if (mask)
        engine::DestroyBitmap(mask);
    if (colours)
        engine::DestroyBitmap(colours);
}

void PointerShape::MakeMask(const SIZEL& size)
{
    shape.mask = RandomPicture(random_, {1, 1}, size.cx, 2 * size.cy);
    mask = ToBitmap(*shape.mask, {1, 1});
}

Format PointerShape::OtherFormat()
{
    const ULONG bits = random_.Of<ULONG>({1, 4, 8, 16, 24, 32});
    return {bits, bits == 16 ? screen_.depth == 15 ? 15u : 16u : bits};
}

void PointerShape::MakeColours(const Format& format, const SIZEL& size)
{
    Picture pixels = RandomPicture(random_, format, size.cx, size.cy);
    const LONG holes = random_.Between(0, 100);
    for (LONG y = 0; y < size.cy; ++y)
        for (LONG x = 0; x < size.cx; ++x)
            if (random_.Percent(holes))
                pixels.Set(x, y, 0);
    shape.colours = ShapeColours{pixels, format, {}};
    colours = ToBitmap(pixels, format);
    if (random_.Percent(40))
        return;
    engine::PixelLayout layout = LayoutOf(format);
    if (layout.IsIndexed() && random_.Percent(30)) // a table that ends before the pixels do
        layout.palette.resize(static_cast<std::size_t>(random_.Between(1, 1 << format.bits)));
    translation = std::make_unique<engine::Translation>(layout, LayoutOf(screen_));
    if (translation->flXlate == XO_TABLE)
        shape.colours->table = translation->table;
}

// Premultiplied; a few brighter than such colours can be.
ULONG PointerShape::AlphaPixel()
{
    const LONG alpha = random_.Of({0, 0, 255, 255, 127, 128, random_.Between(1, 254)});
    const LONG red = random_.Between(0, alpha), green = random_.Between(0, alpha), blue = random_.Between(0, alpha);
    const ULONG any = random_.Word() & 0xFFFFFF;
    const ULONG colour = static_cast<ULONG>(red << 16 | green << 8 | blue);
    return static_cast<ULONG>(alpha) << 24 | (random_.Percent(5) ? any : colour);
}

void PointerShape::MakeAlpha(const SIZEL& size)
{
    Picture pixels(size.cx, size.cy, 32);
    for (LONG y = 0; y < size.cy; ++y)
        for (LONG x = 0; x < size.cx; ++x)
            pixels.Set(x, y, AlphaPixel());
    shape.colours = ShapeColours{pixels, {32, 32}, {}};
    colours = ToBitmap(pixels, {32, 32});
}

} // namespace property
