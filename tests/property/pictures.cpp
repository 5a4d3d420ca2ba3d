#include "tests/property/pictures.h"

namespace property {

namespace {

    const Colour White = {255, 255, 255}, Navy = {0, 0, 128}, Teal = {0, 128, 128};
    const Colour LightGrey = {192, 192, 192}, DarkGrey = {128, 128, 128};

    void DrawSlantedLines(Picture& picture, Random& random, ULONG pixel)
    {
        const LONG period = random.Between(2, 7), slope = random.Between(1, 3);
        const bool steep = random.Percent(50), falling = random.Percent(50);
        for (LONG y = 0; y < picture.Bounds().bottom; ++y)
            for (LONG x = 0; x < picture.Bounds().right; ++x) {
                const LONG along = steep ? y / slope : x / slope, across = steep ? x : y;
                if ((falling ? across - along + 1000 * period : across + along) % period == 0)
                    picture.Set(x, y, pixel);
            }
    }

    void DrawBoxes(Picture& picture, Random& random, ULONG pixel)
    {
        for (LONG count = random.Between(1, 4); count > 0; --count) {
            const LONG left = random.Between(0, 30), top = random.Between(0, 20);
            const Rect box = {left, top, left + random.Between(1, 12), top + random.Between(1, 9)};
            Fill(picture, box, pixel);
            if (random.Percent(60))
                Fill(picture, box.Inflated(-1), ~pixel);
        }
    }

    void DrawNoise(Picture& picture, Random& random, ULONG pixel)
    {
        const LONG density = random.Between(1, 60);
        for (LONG y = 0; y < picture.Bounds().bottom; ++y)
            for (LONG x = 0; x < picture.Bounds().right; ++x)
                if (random.Percent(density))
                    picture.Set(x, y, pixel);
    }

} // namespace

ULONG AnyPixel(Random& random, const Format& format)
{
    switch (random.Between(0, 8)) {
    case 0:
        return 0;
    case 1:
        return 0xFFFFFFFF;
    case 2:
        return PixelOf(format, White);
    case 3:
        return PixelOf(format, Navy);
    case 4:
        return PixelOf(format, Teal);
    case 5:
        return PixelOf(format, LightGrey);
    case 6:
        return PixelOf(format, DarkGrey);
    default:
        return random.Word();
    }
}

Picture RandomPicture(Random& random, const Format& format, LONG width, LONG height)
{
    Picture picture(width, height, format.bits);
    Fill(picture, picture.Bounds(), AnyPixel(random, format));
    for (LONG layers = random.Between(0, 3); layers > 0; --layers) {
        const ULONG pixel = AnyPixel(random, format);
        switch (random.Between(0, 2)) {
        case 0:
            DrawSlantedLines(picture, random, pixel);
            break;
        case 1:
            DrawBoxes(picture, random, pixel);
            break;
        default:
            DrawNoise(picture, random, pixel);
        }
    }
    return picture;
}

engine::PixelLayout LayoutOf(const Format& format)
{
    if (format.depth == 15)
        return engine::PixelLayout::FiveFiveFive();
    constexpr struct {
        ULONG bits, format;
    } formats[] = {{1, BMF_1BPP}, {4, BMF_4BPP}, {8, BMF_8BPP}, {16, BMF_16BPP}, {24, BMF_24BPP}, {32, BMF_32BPP}};
    for (const auto& row : formats)
        if (row.bits == format.bits)
            return engine::PixelLayout::Default(row.format);
    return {};
}

engine::Surface* ToBitmap(const Picture& picture, const Format& format)
{
    const SIZEL size = {static_cast<LONG>(picture.Bounds().right), static_cast<LONG>(picture.Bounds().bottom)};
    engine::Surface* const bitmap = engine::MakeBitmap(size, LayoutOf(format));
    Store(picture, *bitmap);
    return bitmap;
}

void Store(const Picture& picture, engine::Surface& bitmap)
{
    for (LONG y = 0; y < picture.Bounds().bottom; ++y)
        for (LONG x = 0; x < picture.Bounds().right; ++x)
            bitmap.SetPixel(x, y, picture.At(x, y));
}

Picture Load(const engine::Surface& bitmap, ULONG bitsPerPixel)
{
    Picture picture(bitmap.sizlBitmap.cx, bitmap.sizlBitmap.cy, bitsPerPixel);
    for (LONG y = 0; y < picture.Bounds().bottom; ++y)
        for (LONG x = 0; x < picture.Bounds().right; ++x)
            picture.Set(x, y, bitmap.Pixel(x, y));
    return picture;
}

} // namespace property
