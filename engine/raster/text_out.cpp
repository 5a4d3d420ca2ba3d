// EngTextOut: the glyphs and the extra rectangles become one mask, so that a mix touches each pixel once.

#include "engine/raster/clip.h"
#include "engine/raster/fill.h"
#include "engine/raster/hook_call.h"
#include "engine/raster/rectangles.h"
#include "engine/raster/rop.h"
#include "platform/services.h"

using namespace engine;
using namespace engine::raster;

namespace {

constexpr BOOL EnumerationFailed = -1;

// One byte a pixel of the visible part of a surface.
class TextMask {
public:
    explicit TextMask(const RECTL& bounds)
        : bounds_(bounds)
        , bits_(static_cast<std::size_t>(Width(bounds) * Height(bounds)))
    {
    }

    void AddRectangle(const RECTL& rectangle)
    {
        const RECTL visible = Intersection(rectangle, bounds_);
        for (LONG y = visible.top; y < visible.bottom; ++y)
            for (LONG x = visible.left; x < visible.right; ++x)
                Set(x, y);
    }

    void AddGlyph(const GLYPHBITS& glyph, const POINTL& position)
    {
        const std::int64_t left = std::int64_t{position.x} + glyph.ptlOrigin.x;
        const std::int64_t top = std::int64_t{position.y} + glyph.ptlOrigin.y;
        const std::size_t rowBytes = static_cast<std::size_t>((glyph.sizlBitmap.cx + 7) / 8);
        for (LONG y = 0; y < glyph.sizlBitmap.cy; ++y) {
            const BYTE* const row = glyph.aj + static_cast<std::size_t>(y) * rowBytes;
            for (LONG x = 0; x < glyph.sizlBitmap.cx; ++x)
                if (row[x / 8] & 0x80 >> x % 8 && Contains(bounds_, left + x, top + y))
                    Set(static_cast<LONG>(left + x), static_cast<LONG>(top + y));
        }
    }

    Region Pixels() const
    {
        Region region;
        std::vector<Span> spans;
        const LONG width = bounds_.right - bounds_.left;
        for (LONG y = bounds_.top; y < bounds_.bottom; ++y) {
            const BYTE* const row = bits_.data() + Index(bounds_.left, y);
            spans.clear();
            for (LONG x = 0; x < width; ++x) {
                const LONG from = x;
                while (x < width && row[x])
                    ++x;
                if (x > from)
                    spans.push_back({bounds_.left + from, bounds_.left + x});
            }
            region.AppendBand(y, y + 1, spans);
        }
        return region;
    }

private:
    std::size_t Index(LONG x, LONG y) const
    {
        return static_cast<std::size_t>(y - bounds_.top) * static_cast<std::size_t>(Width(bounds_))
            + static_cast<std::size_t>(x - bounds_.left);
    }
    void Set(LONG x, LONG y) { bits_[Index(x, y)] = 1; }

    RECTL bounds_;
    std::vector<BYTE> bits_;
};

struct PlacedGlyph {
    const GLYPHBITS* bits;
    POINTL position;
};

bool AddGlyphs(const GLYPHPOS* positions, ULONG count, std::vector<PlacedGlyph>& glyphs)
{
    for (ULONG i = 0; i < count; ++i) {
        if (!positions[i].pgdf || !positions[i].pgdf->pgb)
            return Refuse("EngTextOut", "null glyph");
        glyphs.push_back({positions[i].pgdf->pgb, positions[i].ptl});
    }
    return true;
}

// All glyphs of a string, asked for in batches where it does not list them.
bool GlyphsOf(STROBJ* pstro, std::vector<PlacedGlyph>& glyphs)
{
    if (pstro->pgp)
        return AddGlyphs(pstro->pgp, pstro->cGlyphs, glyphs);
    STROBJ_vEnumStart(pstro);
    for (BOOL more = TRUE; more;) {
        ULONG count = 0;
        GLYPHPOS* positions = nullptr;
        more = STROBJ_bEnum(pstro, &count, &positions);
        if (more == EnumerationFailed || (count > 0 && !AddGlyphs(positions, count, glyphs)))
            return false;
        if (count == 0)
            break;
    }
    return true;
}

RECTL ExtentOf(const PlacedGlyph& glyph)
{
    const GLYPHBITS& bits = *glyph.bits;
    return Moved({0, 0, bits.sizlBitmap.cx, bits.sizlBitmap.cy}, std::int64_t{glyph.position.x} + bits.ptlOrigin.x,
                 std::int64_t{glyph.position.y} + bits.ptlOrigin.y);
}

// The list ends with a rectangle of four zeros.
std::vector<RECTL> ExtraRectangles(const RECTL* prclExtra)
{
    std::vector<RECTL> rectangles;
    for (; prclExtra && !AreEqual(*prclExtra, {0, 0, 0, 0}); ++prclExtra)
        rectangles.push_back(*prclExtra);
    return rectangles;
}

// The pixels of glyphs and extra rectangles within the bounds.
Region TextPixels(const std::vector<PlacedGlyph>& glyphs, const std::vector<RECTL>& extra, const RECTL& bounds)
{
    std::vector<RECTL> extents = extra;
    for (const PlacedGlyph& glyph : glyphs)
        extents.push_back(ExtentOf(glyph));
    RECTL touched = {bounds.right, bounds.bottom, bounds.left, bounds.top};
    for (const RECTL& extent : extents)
        if (const RECTL visible = Intersection(extent, bounds); !IsEmpty(visible))
            touched = {std::min(touched.left, visible.left), std::min(touched.top, visible.top),
                       std::max(touched.right, visible.right), std::max(touched.bottom, visible.bottom)};
    if (IsEmpty(touched))
        return Region();
    TextMask mask(touched);
    for (const PlacedGlyph& glyph : glyphs)
        mask.AddGlyph(*glyph.bits, glyph.position);
    for (const RECTL& rectangle : extra)
        mask.AddRectangle(rectangle);
    return mask.Pixels();
}

BOOL DrawText(Surface& surface, STROBJ* pstro, CLIPOBJ* pco, const RECTL* prclExtra, const RECTL* prclOpaque,
              BRUSHOBJ* pboFore, BRUSHOBJ* pboOpaque, const POINTL& origin, MIX mix)
{
    const auto parts = VisibleParts(pco, surface.Bounds());
    std::vector<PlacedGlyph> glyphs;
    if (!parts || (pstro && (!TextBehind(pstro) || !GlyphsOf(pstro, glyphs))))
        return FALSE;
    const Region visible(*parts);
    if (prclOpaque) {
        if (!pboOpaque)
            return Refuse("EngTextOut", "null opaque brush");
        const Region opaque = Intersection(Region(*prclOpaque), visible);
        if (!PaintRectangles(surface, opaque.Rectangles(), pboOpaque, origin, CopyPen))
            return FALSE;
    }
    const Region text = TextPixels(glyphs, ExtraRectangles(prclExtra), visible.Bounds());
    if (!text.IsEmpty() && !pboFore)
        return Refuse("EngTextOut", "null foreground brush");
    return PaintRectangles(surface, Intersection(text, visible).Rectangles(), pboFore, origin, mix);
}

} // namespace

extern "C" BOOL APIENTRY EngTextOut(SURFOBJ* pso, STROBJ* pstro, FONTOBJ* pfo, CLIPOBJ* pco, RECTL* prclExtra,
                                    RECTL* prclOpaque, BRUSHOBJ* pboFore, BRUSHOBJ* pboOpaque, POINTL* pptlOrg, MIX mix)
{
    Surface* const surface = Given("EngTextOut", pso, "target");
    if (!surface)
        return FALSE;
    if (const auto answer = AskHook<PFN_DrvTextOut>("EngTextOut", pso, HOOK_TEXTOUT, INDEX_DrvTextOut, pso, pstro, pfo,
                                                    pco, prclExtra, prclOpaque, pboFore, pboOpaque, pptlOrg, mix))
        return *answer;
    return DrawText(*surface, pstro, pco, prclExtra, prclOpaque, pboFore, pboOpaque, PointOrOrigin(pptlOrg), mix);
}
