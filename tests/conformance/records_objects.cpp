#include "tests/conformance/records_objects.h"

#include <algorithm>

namespace conformance::records {

namespace {

    constexpr SIZEL PictureSize = {72, 52}, PatternSize = {8, 8};

    engine::Surface* AnyPicture(Random& random, SIZEL size, ULONG format)
    {
        const LONG rowBytes = static_cast<LONG>((engine::RowBytes(format, size.cx) + 3) & ~3u);
        engine::Surface* const picture =
            engine::MakeBitmap(size, engine::PixelLayout::Default(format), random.Of({rowBytes, -rowBytes}));
        for (LONG y = 0; y < size.cy; ++y)
            random.Fill(picture->Row(y), engine::RowBytes(format, size.cx));
        random.Fill(picture->iUniq);
        return picture;
    }

    constexpr ULONG Formats[] = {BMF_1BPP, BMF_4BPP, BMF_8BPP, BMF_16BPP, BMF_24BPP, BMF_32BPP};

} // namespace

Objects::Objects(Session& session, Random& random)
    : session_(session)
    , random_(random)
{
    for (const ULONG format : Formats) {
        sources_.push_back(AnyPicture(random, PictureSize, format));
        targets_.push_back(AnyPicture(random, PictureSize, format));
    }
    patterns_.push_back(AnyPicture(random, PatternSize, session.Device().Layout().iBitmapFormat));
    for (int i = 0; i < 2; ++i) {
        masks_.push_back(AnyPicture(random, PictureSize, BMF_1BPP));
        const HSURF deviceBitmap = session.Device().CreateCompatibleBitmap(PictureSize);
        targets_.push_back(engine::FindSurface(deviceBitmap));
        sources_.push_back(engine::FindSurface(deviceBitmap));
    }
    sources_.push_back(engine::FindSurface(session.Screen()->hsurf));
}

SURFOBJ* Objects::Target()
{
    if (random_.OneIn(8))
        return nullptr;
    return random_.OneIn(2) ? session_.Screen() : targets_[random_.Word() % targets_.size()];
}

engine::Surface* Objects::Source()
{
    return sources_[random_.Word() % sources_.size()];
}

engine::Surface* Objects::Mask()
{
    return masks_[random_.Word() % masks_.size()];
}

engine::ClipObject* Objects::Clip()
{
    engine::ClipObject* clip = nullptr;
    if (random_.OneIn(2)) {
        clip = New<engine::ClipObject>(*Rectangle(), random_.Of({DC_TRIVIAL, DC_RECT, DC_RECT}));
    } else if (random_.OneIn(2)) {
        std::vector<RECTL> rectangles; // one in each cell of a grid
        const LONG columns = random_.Between(1, 12), rows = random_.Between(1, 20);
        for (LONG y = 0; y < rows; ++y)
            for (LONG x = 0; x < columns; ++x)
                rectangles.push_back({x * 6, y * 4, x * 6 + random_.Between(1, 6), y * 4 + random_.Between(1, 4)});
        clip = New<engine::ClipObject>(rectangles);
        clip->batch = random_.Word() % 30;
    } else {
        return nullptr;
    }
    clip->iUniq = random_.OneIn(4) ? 0 : random_.Word();
    random_.Fill(clip->iMode);
    random_.Fill(clip->fjOptions);
    return clip;
}

engine::Translation* Objects::Translation(const SURFOBJ* source, const SURFOBJ* target)
{
    if (random_.OneIn(4))
        return nullptr;
    const auto layoutOf = [&](const SURFOBJ* pso) {
        const engine::Surface* const surface =
            pso ? pso == session_.Screen() ? session_.Virtual() : engine::SurfaceBehind(pso) : Source();
        return surface->layout;
    };
    engine::Translation* const translation = New<engine::Translation>(layoutOf(source), layoutOf(target));
    translation->iUniq = random_.Word();
    if (translation->flXlate & XO_TABLE && random_.OneIn(2)) { // the vector has to be asked for
        translation->flXlate = 0;
        translation->pulXlate = nullptr;
        if (random_.OneIn(3))
            translation->vector.clear(); // and is not there
    }
    return translation;
}

engine::Brush* Objects::Brush()
{
    engine::Brush* brush = nullptr;
    if (random_.OneIn(2))
        brush = New<engine::Brush>(engine::Brush::Solid(random_.Word() & 0xFFFFFF));
    else if (random_.OneIn(2))
        brush = New<engine::Brush>(engine::Brush::Hatch(random_.Word() % HS_DDI_MAX, random_.Word(), random_.Word()));
    else
        brush = New<engine::Brush>(engine::Brush::Pattern(*patterns_[random_.Word() % patterns_.size()]));
    random_.Fill(brush->pvRbrush);
    random_.Fill(brush->flColorType);
    return brush;
}

void Objects::AddRun(engine::Path& path)
{
    const bool curves = random_.OneIn(3), begins = path.subpaths.empty() || !random_.OneIn(5);
    const auto flags = (begins ? PD_BEGINSUBPATH : 0) | (curves ? PD_BEZIERS : 0)
        | random_.Of<FLONG>({0, PD_ENDSUBPATH, PD_ENDSUBPATH | PD_CLOSEFIGURE, PD_RESETSTYLE});
    const LONG count = curves ? 3 * random_.Between(0, 4) + (begins ? 1 : 0) : random_.Between(0, 12);
    std::vector<POINTFIX> points;
    for (LONG i = 0; i < count; ++i)
        points.push_back(FixedPoint());
    path.Add(flags, points);
}

engine::Path* Objects::Path()
{
    engine::Path* const path = New<engine::Path>();
    for (LONG runs = random_.Between(0, 6); runs > 0; --runs)
        AddRun(*path);
    return path;
}

LINEATTRS* Objects::Line()
{
    LINEATTRS* const line = New<LINEATTRS>();
    line->fl = random_.Of<FLONG>({0, 0, LA_ALTERNATE, LA_GEOMETRIC}) | random_.Of<FLONG>({0, 0, LA_STARTGAP});
    line->iJoin = random_.Of({JOIN_ROUND, JOIN_BEVEL, JOIN_MITER});
    line->iEndCap = random_.Of({ENDCAP_ROUND, ENDCAP_SQUARE, ENDCAP_BUTT});
    const bool geometric = (line->fl & LA_GEOMETRIC) != 0;
    if (geometric)
        line->elWidth.e = static_cast<FLOATL>(random_.Between(1, 80)) / 8;
    else
        line->elWidth.l = random_.Between(0, 3);
    line->eMiterLimit = static_cast<FLOATL>(random_.Between(1, 20));
    line->cstyle = random_.OneIn(2) ? 0 : static_cast<ULONG>(random_.Between(1, 16));
    FLOAT_LONG* const styles = reinterpret_cast<FLOAT_LONG*>(Bytes(line->cstyle * sizeof(FLOAT_LONG)).data());
    for (ULONG i = 0; i < line->cstyle; ++i)
        if (geometric)
            styles[i].e = static_cast<FLOATL>(random_.Between(1, 9));
        else
            styles[i].l = random_.Between(1, 9);
    line->pstyle = line->cstyle == 0 || random_.OneIn(5) ? nullptr : styles;
    return line;
}

engine::Text* Objects::Text(bool drawable)
{
    engine::Text* const text = New<engine::Text>();
    const LONG glyphs = random_.Between(0, 30);
    std::u16string characters;
    for (LONG i = 0; i < glyphs; ++i) {
        const SIZEL size = {random_.Between(0, 20), random_.Between(0, 20)};
        std::vector<BYTE> bits(static_cast<std::size_t>((size.cx + 7) / 8 * size.cy));
        random_.Fill(bits.data(), bits.size());
        text->AddGlyph(random_.Word(), *Point(-100, 100), *Point(-30, 30), size, bits);
        characters += static_cast<char16_t>(random_.Word());
    }
    if (!drawable)
        for (GLYPHPOS& glyph : text->glyphs)
            glyph.pgdf = Or(3, glyph.pgdf);
    text->rclBkGround = *Rectangle();
    random_.Fill(text->flAccel);
    random_.Fill(text->ulCharInc);
    random_.Fill(text->codePage);
    if (random_.OneIn(2))
        text->SetString(characters);
    if (random_.OneIn(2))
        text->Enumerate(random_.Word() % 9);
    return text;
}

engine::Font* Objects::Font()
{
    engine::Font* const font = New<engine::Font>();
    random_.Fill(static_cast<FONTOBJ*>(font), sizeof(FONTOBJ));
    if (random_.OneIn(5))
        return font;
    const auto name = [&] { return random_.OneIn(4) ? std::u16string() : std::u16string(WideText()); };
    font->SetNames(name(), name(), name(), name());
    IFIMETRICS* const metrics = font->Metrics();
    random_.Fill(metrics->cjIfiExtra);
    random_.Fill(&metrics->dpFontSim, sizeof(IFIMETRICS) - offsetof(IFIMETRICS, dpFontSim));
    return font;
}

engine::PaletteObject* Objects::Palette(std::size_t colours)
{
    engine::PaletteObject* const palette = New<engine::PaletteObject>();
    for (std::size_t i = 0; i < colours; ++i)
        palette->colours.push_back(random_.Word());
    return palette;
}

DEVMODEW* Objects::Mode()
{
    DEVMODEW* const mode = New<DEVMODEW>();
    random_.Fill(*mode);
    mode->dmBitsPerPel = random_.Of<DWORD>({4, 8, 15, 16, 24, 32});
    mode->dmPelsWidth = static_cast<DWORD>(random_.Between(1, 100));
    mode->dmPelsHeight = static_cast<DWORD>(random_.Between(1, 100));
    return mode;
}

WCHAR* Objects::WideText()
{
    std::u16string* const text = New<std::u16string>();
    for (LONG length = random_.Between(1, 40); length > 0; --length)
        *text += static_cast<char16_t>(random_.Between(1, 0xFFFF));
    return text->data();
}

RECTL* Objects::Rectangle()
{
    const LONG left = random_.Between(-20, 80), top = random_.Between(-20, 60);
    return New<RECTL>(
        RECTL{left, top, left + random_.Between(0, SourceSize.cx), top + random_.Between(0, SourceSize.cy)});
}

POINTL* Objects::Point(LONG lowest, LONG highest)
{
    return New<POINTL>(POINTL{random_.Between(lowest, highest), random_.Between(lowest, highest)});
}

POINTFIX Objects::FixedPoint()
{
    return {random_.Between(-40 * 16, 120 * 16), random_.Between(-40 * 16, 120 * 16)};
}

std::vector<BYTE>& Objects::Bytes(std::size_t size)
{
    std::vector<BYTE>* const bytes = New<std::vector<BYTE>>(size);
    random_.Fill(bytes->data(), size);
    return *bytes;
}

} // namespace conformance::records
