// EngLineTo, EngStrokePath, EngFillPath and EngStrokeAndFillPath.

#include "engine/raster/clip.h"
#include "engine/raster/cosmetic_line.h"
#include "engine/raster/fill.h"
#include "engine/raster/hook_call.h"
#include "engine/raster/line_style.h"
#include "engine/raster/path_lines.h"
#include "engine/raster/rectangles.h"
#include "engine/raster/wide_line.h"
#include "platform/services.h"

using namespace engine;
using namespace engine::raster;

namespace {

// What a line or an area is painted with, and where.
struct Canvas {
    Surface& surface;
    RECTL bounds; // of the visible parts
    Region visible;
    BRUSHOBJ* pbo;
    POINTL origin;
    MIX mix;

    BOOL Paint(const Region& area) const // within the bounds
    {
        const Region shown = visible.IsRectangle() ? area : Intersection(area, visible);
        return PaintRectangles(surface, shown.Rectangles(), pbo, origin, mix);
    }
    // Lines that cross themselves are painted pixel by pixel as often as they pass, so each comes by itself.
    BOOL PaintLine(const CosmeticLine& line, const std::vector<CosmeticLine::Stretch>& parts) const
    {
        std::vector<RECTL> runs;
        for (const CosmeticLine::Stretch& part : parts)
            line.AddRuns(part, bounds, runs);
        return runs.empty() ? TRUE : Paint(Region(runs));
    }
};

// Nothing, with a violation reported, where the arguments are not what a real engine could use.
std::optional<Canvas> MakeCanvas(const char* service, SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, const POINTL* origin,
                                 MIX mix)
{
    Surface* const surface = Given(service, pso, "target");
    if (!surface)
        return std::nullopt;
    if (!pbo) {
        Refuse(service, "null brush");
        return std::nullopt;
    }
    const auto parts = VisibleParts(pco, surface->Bounds());
    if (!parts || !BrushBehind(pbo))
        return std::nullopt;
    const Region visible(*parts);
    return Canvas{*surface, visible.Bounds(), visible, pbo, PointOrOrigin(origin), mix};
}

const Path* GivenPath(const char* service, const PATHOBJ* ppo)
{
    if (!ppo)
        Refuse(service, "null path");
    return ppo ? PathBehind(ppo) : nullptr;
}

BOOL DrawCosmetic(const Canvas& canvas, const Polyline& polyline, LineStyle& style)
{
    const std::vector<FixPoint>& points = polyline.points;
    const std::size_t lines = polyline.closed ? points.size() : points.size() - 1;
    for (std::size_t i = 0; i < lines; ++i) {
        const CosmeticLine line(points[i], points[(i + 1) % points.size()]);
        const auto parts = style.IsSolid() ? std::vector<CosmeticLine::Stretch>{{0, line.Count()}}
                                           : style.DashesOf(line, canvas.bounds);
        if (!canvas.PaintLine(line, parts))
            return FALSE;
    }
    return TRUE;
}

BOOL StrokeCosmetic(const Canvas& canvas, const Path& path, LINEATTRS& attributes)
{
    LineStyle style(attributes, canvas.surface);
    for (const Polyline& polyline : PolylinesOf(path)) {
        if (polyline.resetsStyle)
            style.Reset();
        if (!DrawCosmetic(canvas, polyline, style))
            return FALSE;
    }
    if (!style.IsSolid())
        attributes.elStyleState.l = style.State(); // the caller's next stroke goes on from here
    return TRUE;
}

std::vector<Polygon> PolygonsOf(const Path& path)
{
    std::vector<Polygon> polygons;
    for (Polyline& polyline : PolylinesOf(path))
        polygons.push_back(std::move(polyline.points));
    return polygons;
}

} // namespace

namespace engine {

Region RegionOfPath(const PATHOBJ* ppo, FLONG flOptions, const RECTL& bounds)
{
    const Path* const path = PathBehind(ppo);
    return path ? ScanConvert(PolygonsOf(*path), flOptions, bounds) : Region();
}

} // namespace engine

extern "C" {

BOOL APIENTRY EngLineTo(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, LONG x1, LONG y1, LONG x2, LONG y2,
                        RECTL* prclBounds, MIX mix)
{
    if (!Given("EngLineTo", pso, "target"))
        return FALSE;
    if (const auto answer = AskHook<PFN_DrvLineTo>("EngLineTo", pso, HOOK_LINETO, INDEX_DrvLineTo, pso, pco, pbo, x1,
                                                   y1, x2, y2, prclBounds, mix))
        return *answer;
    const auto canvas = MakeCanvas("EngLineTo", pso, pco, pbo, nullptr, mix);
    if (!canvas)
        return FALSE;
    const CosmeticLine line({x1 * FixOne, y1 * FixOne}, {x2 * FixOne, y2 * FixOne});
    return canvas->PaintLine(line, {{0, line.Count()}});
}

BOOL APIENTRY EngStrokePath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo, BRUSHOBJ* pbo,
                            POINTL* pptlBrushOrg, LINEATTRS* plineattrs, MIX mix)
{
    if (!Given("EngStrokePath", pso, "target"))
        return FALSE;
    if (const auto answer = AskHook<PFN_DrvStrokePath>("EngStrokePath", pso, HOOK_STROKEPATH, INDEX_DrvStrokePath, pso,
                                                       ppo, pco, pxo, pbo, pptlBrushOrg, plineattrs, mix))
        return *answer;
    const Path* const path = GivenPath("EngStrokePath", ppo);
    const auto canvas = path ? MakeCanvas("EngStrokePath", pso, pco, pbo, pptlBrushOrg, mix) : std::nullopt;
    if (!canvas)
        return FALSE;
    if (!plineattrs)
        return Refuse("EngStrokePath", "null line attributes");
    if (!(plineattrs->fl & LA_GEOMETRIC))
        return StrokeCosmetic(*canvas, *path, *plineattrs);
    const std::vector<Polygon> outline = WidenLines(PolylinesOf(*path), *plineattrs, canvas->bounds);
    return canvas->Paint(ScanConvert(outline, FP_WINDINGMODE, canvas->bounds));
}

BOOL APIENTRY EngFillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptlBrushOrg, MIX mix,
                          FLONG flOptions)
{
    if (!Given("EngFillPath", pso, "target"))
        return FALSE;
    if (const auto answer = AskHook<PFN_DrvFillPath>("EngFillPath", pso, HOOK_FILLPATH, INDEX_DrvFillPath, pso, ppo,
                                                     pco, pbo, pptlBrushOrg, mix, flOptions))
        return *answer;
    const Path* const path = GivenPath("EngFillPath", ppo);
    const auto canvas = path ? MakeCanvas("EngFillPath", pso, pco, pbo, pptlBrushOrg, mix) : std::nullopt;
    return canvas ? canvas->Paint(ScanConvert(PolygonsOf(*path), flOptions, canvas->bounds)) : FALSE;
}

// The stroke lies over the fill; both use the one mix.
BOOL APIENTRY EngStrokeAndFillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo, BRUSHOBJ* pboStroke,
                                   LINEATTRS* plineattrs, BRUSHOBJ* pboFill, POINTL* pptlBrushOrg, MIX mixFill,
                                   FLONG flOptions)
{
    if (!Given("EngStrokeAndFillPath", pso, "target"))
        return FALSE;
    if (const auto answer = AskHook<PFN_DrvStrokeAndFillPath>("EngStrokeAndFillPath", pso, HOOK_STROKEANDFILLPATH,
                                                              INDEX_DrvStrokeAndFillPath, pso, ppo, pco, pxo, pboStroke,
                                                              plineattrs, pboFill, pptlBrushOrg, mixFill, flOptions))
        return *answer;
    if (!HasBits(pso))
        return CallFillPath(pso, ppo, pco, pboFill, pptlBrushOrg, mixFill, flOptions)
            && CallStrokePath(pso, ppo, pco, pxo, pboStroke, pptlBrushOrg, plineattrs, mixFill);
    return EngFillPath(pso, ppo, pco, pboFill, pptlBrushOrg, mixFill, flOptions)
        && EngStrokePath(pso, ppo, pco, pxo, pboStroke, pptlBrushOrg, plineattrs, mixFill);
}

} // extern "C"
