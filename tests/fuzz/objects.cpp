#include "tests/fuzz/objects.h"

#include <algorithm>

namespace fuzz {

namespace {

    constexpr ULONG Formats[] = {BMF_32BPP, BMF_24BPP, BMF_16BPP, BMF_8BPP, BMF_4BPP, BMF_1BPP};

    struct Bitmap {
        engine::Surface* surface;
        explicit Bitmap(engine::Surface* made)
            : surface(made)
        {
        }
        Bitmap(const Bitmap&) = delete;
        Bitmap& operator=(const Bitmap&) = delete;
        ~Bitmap() { engine::DestroyBitmap(surface); }
    };

    // As large as a screen, or of any size.
    SIZEL SizeOf(Input& input)
    {
        constexpr SIZEL screens[] = {UsualScreen, UsualScreen, UsualScreen, LargestScreen};
        if (!input.OneIn(3))
            return input.Of(screens);
        const ULONG most = input.OneIn(8) ? 0x100 : 64;
        return {static_cast<LONG>(1 + input.Below(most)), static_cast<LONG>(1 + input.Below(most))};
    }

    engine::Surface* MakePicture(Input& input, ULONG format, SIZEL size)
    {
        const LONG row = static_cast<LONG>((engine::RowBytes(format, size.cx) + 3) & ~3u);
        engine::Surface* const picture =
            engine::MakeBitmap(size, engine::PixelLayout::Default(format), input.OneIn(3) ? -row : row);
        const ULONG pixel = input.Word();
        for (LONG i = 0; i < std::min(size.cx, size.cy); ++i)
            picture->SetPixel(i, i, pixel);
        return picture;
    }

} // namespace

Objects::Objects(Machine& machine, Input& input)
    : machine_(machine)
    , input_(input)
{
}

SURFOBJ* Objects::Target()
{
    const ULONG kind = input_.Below(12);
    if (kind == 0)
        return nullptr;
    if (kind == 1)
        return Picture();
    if (kind <= 3 && !deviceBitmaps_.empty())
        return engine::FindSurface(deviceBitmaps_[input_.Below(static_cast<ULONG>(deviceBitmaps_.size()))]);
    return kind == 4 && machine_.SecondScreen() ? machine_.SecondScreen() : machine_.Screen();
}

engine::Surface* Objects::Picture()
{
    const ULONG kind = input_.Below(8);
    if (kind == 0)
        return engine::FindSurface(machine_.Screen()->hsurf);
    if (kind == 2 && machine_.SecondScreen())
        return engine::FindSurface(machine_.SecondScreen()->hsurf);
    if (kind == 1 && !deviceBitmaps_.empty())
        return engine::FindSurface(deviceBitmaps_[input_.Below(static_cast<ULONG>(deviceBitmaps_.size()))]);
    return New<Bitmap>(MakePicture(input_, input_.Of(Formats), SizeOf(input_)))->surface;
}

engine::Surface* Objects::Mask()
{
    return New<Bitmap>(MakePicture(input_, BMF_1BPP, SizeOf(input_)))->surface;
}

// Each pixel of a pointer is a blit of its own, so that large ones are rare.
SIZEL Objects::PointerSize()
{
    const LONG side = 1 + static_cast<LONG>(input_.Below(16));
    return input_.OneIn(64) ? SizeOf(input_) : SIZEL{side, side};
}

engine::Surface* Objects::PointerPicture(SIZEL size)
{
    return New<Bitmap>(MakePicture(input_, input_.Of(Formats), size))->surface;
}

engine::Surface* Objects::PointerMask(SIZEL size)
{
    return New<Bitmap>(MakePicture(input_, BMF_1BPP, {size.cx, 2 * size.cy}))->surface;
}

HSURF Objects::TakeDeviceBitmap()
{
    if (deviceBitmaps_.empty())
        return nullptr;
    const HSURF bitmap = deviceBitmaps_.back();
    deviceBitmaps_.pop_back();
    return bitmap;
}

engine::ClipObject* Objects::Clip()
{
    const ULONG kind = input_.Below(4);
    if (kind == 0)
        return nullptr;
    if (kind < 3)
        return New<engine::ClipObject>(input_.Rectangle(), kind == 1 ? DC_RECT : DC_TRIVIAL);
    std::vector<RECTL> rectangles; // in bands, each ending where the next begins at the earliest
    LONG y = input_.Coordinate();
    for (ULONG count = input_.Below(12); count > 0 && y < 0x7FFFFF00; --count) {
        const LONG left = input_.Coordinate(), right = input_.Coordinate(),
                   height = 1 + static_cast<LONG>(input_.Below(9));
        if (left < right)
            rectangles.push_back({left, y, right, y + height});
        y += height;
    }
    if (input_.OneIn(64)) // more than one enumeration's room
        for (LONG i = 0; i < 5000 && y < 0x7FFF0000; ++i, ++y)
            rectangles.push_back({0, y, 1, y + 1});
    engine::ClipObject* const clip = New<engine::ClipObject>(rectangles);
    clip->batch = input_.Below(64);
    return clip;
}

const engine::PixelLayout& Objects::LayoutOf(const SURFOBJ* pso)
{
    return (pso ? engine::SurfaceBehind(pso) : Picture())->layout;
}

engine::Translation* Objects::Translation(const SURFOBJ* source, const SURFOBJ* target)
{
    if (!input_.OneIn(3))
        return nullptr;
    engine::Translation* const translation = New<engine::Translation>(LayoutOf(source), LayoutOf(target));
    if (translation->flXlate & XO_TABLE && input_.OneIn(2)) {
        translation->flXlate = 0;
        translation->pulXlate = nullptr;
        if (input_.OneIn(2))
            translation->vector.clear();
    }
    return translation;
}

engine::Brush* Objects::Brush()
{
    const ULONG kind = input_.Below(3);
    const ULONG pixel = input_.Word();
    if (kind == 0)
        return New<engine::Brush>(engine::Brush::Solid(pixel & 0xFFFFFF));
    if (kind == 1)
        return New<engine::Brush>(engine::Brush::Hatch(input_.Below(HS_DDI_MAX), pixel, ~pixel));
    const ULONG format = machine_.Device().Layout().iBitmapFormat;
    return New<engine::Brush>(
        engine::Brush::Pattern(*New<Bitmap>(MakePicture(input_, format, SizeOf(input_)))->surface));
}

engine::Path* Objects::Path()
{
    engine::Path* const path = New<engine::Path>();
    const bool hostile = input_.OneIn(256); // rare: a wide line of that length takes seconds
    for (ULONG runs = input_.Below(5); runs > 0; --runs) {
        FLONG flags = input_.Byte() & 0x1F;
        ULONG count = input_.Below(10);
        if (path->subpaths.empty())
            flags |= PD_BEGINSUBPATH;
        if (flags & PD_BEZIERS)
            count = count / 3 * 3 + (flags & PD_BEGINSUBPATH ? 1 : 0);
        const ULONG chosen = count;
        if (input_.OneIn(64) && input_.OneIn(64)) // more than a record holds
            count = 9000;
        std::vector<POINTFIX> points;
        for (ULONG i = 0; i < count; ++i) {
            const LONG scale = input_.OneIn(8) ? 1 : 16;
            const POINTL further = {static_cast<LONG>(i % 64), static_cast<LONG>(i / 256)};
            const POINTL point = i >= chosen ? further : hostile ? input_.Point() : input_.NearPoint();
            points.push_back({static_cast<FIX>(static_cast<ULONG>(point.x) * scale),
                              static_cast<FIX>(static_cast<ULONG>(point.y) * scale)});
        }
        path->Add(flags, points);
    }
    return path;
}

LINEATTRS* Objects::Line()
{
    LINEATTRS* const line = New<LINEATTRS>();
    line->fl = input_.Byte() & 7;
    line->iJoin = input_.Below(3);
    line->iEndCap = input_.Below(3);
    const bool geometric = (line->fl & LA_GEOMETRIC) != 0;
    const ULONG width = input_.Below(input_.OneIn(8) ? 64 : 12);
    if (geometric)
        line->elWidth.e = static_cast<FLOATL>(input_.OneIn(128) ? width * 1000 : width);
    else
        line->elWidth.l = static_cast<LONG>(width);
    line->eMiterLimit = static_cast<FLOATL>(input_.Below(30));
    std::vector<FLOAT_LONG>* const styles = New<std::vector<FLOAT_LONG>>(input_.Below(8));
    for (FLOAT_LONG& style : *styles)
        if (geometric)
            style.e = static_cast<FLOATL>(1 + input_.Below(20));
        else
            style.l = static_cast<LONG>(1 + input_.Below(20));
    line->cstyle = static_cast<ULONG>(styles->size());
    line->pstyle = styles->data();
    return line;
}

engine::Text* Objects::Text()
{
    engine::Text* const text = New<engine::Text>();
    ULONG glyphs = input_.Below(12);
    if (input_.OneIn(128))
        glyphs = 3000;
    for (ULONG i = 0; i < glyphs; ++i) {
        const SIZEL size = {static_cast<LONG>(input_.Below(40)), static_cast<LONG>(input_.Below(40))};
        const std::vector<BYTE> bits(static_cast<std::size_t>((size.cx + 7) / 8 * size.cy), 0xA5);
        text->AddGlyph(i, input_.Point(), input_.Point(), size, bits);
    }
    text->rclBkGround = input_.Rectangle();
    if (input_.OneIn(2))
        text->SetString(std::u16string(glyphs, u'x'));
    if (input_.OneIn(2))
        text->Enumerate(input_.Below(16));
    text->failEnumeration = input_.OneIn(16);
    return text;
}

engine::Font* Objects::Font()
{
    engine::Font* const font = New<engine::Font>();
    if (input_.OneIn(3))
        return font;
    const auto name = [&] {
        return std::u16string(input_.OneIn(64) ? 20000 : input_.Below(20), static_cast<char16_t>(1 + input_.Byte()));
    };
    font->SetNames(name(), name(), name(), name());
    return font;
}

engine::PaletteObject* Objects::Palette(std::size_t colours)
{
    engine::PaletteObject* const palette = New<engine::PaletteObject>();
    palette->colours.resize(colours, input_.Word());
    return palette;
}

POINTL* Objects::SourcePoint(const SURFOBJ* source, const SURFOBJ* target, const RECTL& rectangle)
{
    const LONG spareX = source->sizlBitmap.cx - target->sizlBitmap.cx;
    const LONG spareY = source->sizlBitmap.cy - target->sizlBitmap.cy;
    if (spareX < 0 || spareY < 0)
        return nullptr;
    const auto sum = [](LONG a, LONG b) { return static_cast<LONG>(static_cast<ULONG>(a) + static_cast<ULONG>(b)); };
    return New<POINTL>(
        POINTL{sum(std::min(rectangle.left, rectangle.right), static_cast<LONG>(input_.Below(spareX + 1u))),
               sum(std::min(rectangle.top, rectangle.bottom), static_cast<LONG>(input_.Below(spareY + 1u)))});
}

} // namespace fuzz
