#include "engine/core/objects.h"

#include <algorithm>
#include <cstring>

#include "engine/core/surface.h"

namespace engine {

namespace {

    RECTL Union(const RECTL& first, const RECTL& second)
    {
        return {std::min(first.left, second.left), std::min(first.top, second.top), std::max(first.right, second.right),
                std::max(first.bottom, second.bottom)};
    }

    constexpr LONG HatchSize = 8;
    constexpr BYTE HatchLines[HS_DDI_MAX][HatchSize] = {
        {0x00, 0x00, 0x00, 0x00, 0xFF, 0x00, 0x00, 0x00}, // horizontal
        {0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08}, // vertical
        {0x80, 0x40, 0x20, 0x10, 0x08, 0x04, 0x02, 0x01}, // falling to the right
        {0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80}, // rising to the right
        {0x08, 0x08, 0x08, 0x08, 0xFF, 0x08, 0x08, 0x08}, // both straight ones
        {0x81, 0x42, 0x24, 0x18, 0x18, 0x24, 0x42, 0x81}, // both slanting ones
    };

    // The place within a tile, also left of and above the origin.
    LONG Wrap(LONG value, LONG size)
    {
        const LONG rest = value % size;
        return rest < 0 ? rest + size : rest;
    }

    bool IsWhole(const POINTFIX& point)
    {
        return ((point.x | point.y) & 15) == 0;
    }

    // The lines or curves of a run: its first point only starts it when the subpath begins there.
    ULONG CurvesOf(FLONG flags, std::size_t points)
    {
        if ((flags & PD_BEGINSUBPATH) && points > 0)
            --points;
        return static_cast<ULONG>(flags & PD_BEZIERS ? points / 3 : points);
    }

} // namespace

ClipObject::ClipObject(const RECTL& bounds, BYTE complexity)
    : CLIPOBJ{NextUniqueNumber(), bounds, complexity, FC_RECT, TC_RECTANGLES, 0}
{
}

ClipObject::ClipObject(std::vector<RECTL> given)
    : CLIPOBJ{NextUniqueNumber(), {}, DC_RECT, FC_RECT, TC_RECTANGLES, 0}
    , rectangles(std::move(given))
{
    std::sort(rectangles.begin(), rectangles.end(), [](const RECTL& first, const RECTL& second) {
        return first.top != second.top ? first.top < second.top : first.left < second.left;
    });
    for (std::size_t i = 0; i < rectangles.size(); ++i)
        rclBounds = i == 0 ? rectangles[0] : Union(rclBounds, rectangles[i]);
    if (rectangles.size() > 1) {
        iDComplexity = DC_COMPLEX;
        iFComplexity = rectangles.size() <= 4 ? FC_RECT4 : FC_COMPLEX;
    }
}

Brush Brush::Solid(ULONG pixel)
{
    Brush brush;
    static_cast<BRUSHOBJ&>(brush) = {pixel, nullptr, 0};
    return brush;
}

Brush Brush::Pattern(const Surface& pattern)
{
    Brush brush = Solid(0xFFFFFFFF);
    brush.pattern = &pattern;
    return brush;
}

Brush Brush::Hatch(ULONG hatch, ULONG forePixel, ULONG backPixel)
{
    Brush brush = Solid(0xFFFFFFFF);
    brush.hatch = hatch;
    brush.forePixel = forePixel;
    brush.backPixel = backPixel;
    return brush;
}

bool Brush::IsForeground(LONG x, LONG y) const
{
    if (hatch >= HS_DDI_MAX)
        return true;
    return (HatchLines[hatch][Wrap(y, HatchSize)] & 0x80 >> Wrap(x, HatchSize)) != 0;
}

ULONG Brush::PixelAt(LONG x, LONG y) const
{
    if (IsSolid())
        return iSolidColor;
    if (pattern)
        return pattern->Pixel(Wrap(x, pattern->sizlBitmap.cx), Wrap(y, pattern->sizlBitmap.cy));
    return IsForeground(x, y) ? forePixel : backPixel;
}

Path::Path()
    : PATHOBJ{PO_ALL_INTEGERS, 0}
{
}

void Path::Add(FLONG flags, std::vector<POINTFIX> points)
{
    if (flags & PD_BEZIERS)
        fl |= PO_BEZIERS;
    if (!std::all_of(points.begin(), points.end(), IsWhole))
        fl &= ~PO_ALL_INTEGERS;
    cCurves += CurvesOf(flags, points.size());
    subpaths.push_back({flags, std::move(points)});
}

Text::Text()
    : STROBJ{}
{
}

Text::~Text()
{
    for (const GLYPHDEF* const definition : definitions)
        delete definition;
}

void Text::AddGlyph(HGLYPH hg, POINTL position, POINTL bitmapOrigin, SIZEL bitmapSize, const std::vector<BYTE>& bits)
{
    std::vector<BYTE>& bytes = storage.emplace_back(std::max(sizeof(GLYPHBITS), offsetof(GLYPHBITS, aj) + bits.size()));
    auto* const glyph = reinterpret_cast<GLYPHBITS*>(bytes.data());
    glyph->ptlOrigin = bitmapOrigin;
    glyph->sizlBitmap = bitmapSize;
    std::copy(bits.begin(), bits.end(), bytes.begin() + offsetof(GLYPHBITS, aj));
    definitions.push_back(new GLYPHDEF{glyph});
    glyphs.push_back({hg, definitions.back(), position});
    cGlyphs = static_cast<ULONG>(glyphs.size());
    pgp = enumerated ? nullptr : glyphs.data();
}

void Text::SetString(std::u16string string)
{
    text = std::move(string);
    pwszOrg = text.data();
}

void Text::Enumerate(std::size_t batchSize)
{
    batch = batchSize;
    enumerated = true;
    pgp = nullptr;
}

Font::Font()
    : FONTOBJ{}
{
    iUniq = NextUniqueNumber();
    flFontType = FO_TYPE_RASTER;
}

void Font::SetNames(const std::u16string& family, const std::u16string& style, const std::u16string& face,
                    const std::u16string& unique)
{
    const std::u16string* const names[] = {&family, &style, &face, &unique};
    LONG IFIMETRICS::*const offsets[] = {&IFIMETRICS::dpwszFamilyName, &IFIMETRICS::dpwszStyleName,
                                         &IFIMETRICS::dpwszFaceName, &IFIMETRICS::dpwszUniqueName};
    IFIMETRICS head = {};
    if (!metrics.empty())
        head = *Metrics();
    metrics.resize(sizeof(head));
    for (std::size_t i = 0; i < std::size(names); ++i) {
        const std::size_t at = metrics.size();
        head.*offsets[i] = names[i]->empty() ? 0 : static_cast<LONG>(at);
        if (names[i]->empty())
            continue;
        metrics.resize(at + (names[i]->size() + 1) * sizeof(WCHAR));
        std::memcpy(metrics.data() + at, names[i]->c_str(), (names[i]->size() + 1) * sizeof(WCHAR));
    }
    head.cjThis = static_cast<ULONG>(metrics.size());
    std::memcpy(metrics.data(), &head, sizeof(head));
}

IFIMETRICS* Font::Metrics()
{
    return metrics.empty() ? nullptr : reinterpret_cast<IFIMETRICS*>(metrics.data());
}

} // namespace engine
