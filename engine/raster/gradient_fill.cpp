// EngGradientFill: colours interpolated along one axis of a rectangle, or linearly over a triangle. The result
// is the nearest colour that the target has; there is no dithering.

#include <cmath>

#include "engine/raster/clip.h"
#include "engine/raster/hook_call.h"
#include "engine/raster/rectangles.h"
#include "engine/raster/rows.h"
#include "engine/raster/scan_converter.h"
#include "engine/raster/surfaces.h"
#include "platform/services.h"

using namespace engine;
using namespace engine::raster;

namespace {

using Real = long double;
using Parts = std::vector<RECTL>;

// 16-bit red, green and blue.
struct Shade {
    std::int64_t red, green, blue;

    explicit Shade(const TRIVERTEX& vertex)
        : red(vertex.Red)
        , green(vertex.Green)
        , blue(vertex.Blue)
    {
    }
    Shade(std::int64_t r, std::int64_t g, std::int64_t b)
        : red(r)
        , green(g)
        , blue(b)
    {
    }
    COLORREF Colour() const { return static_cast<COLORREF>(red >> 8 | (green >> 8) << 8 | (blue >> 8) << 16); }
};

// Writes the colour of each pixel, as `ShadeAt` gives it.
template<class ShadeAt> class GradientOperation : public RowOperation {
public:
    GradientOperation(const PixelLayout& layout, ShadeAt shadeAt)
        : layout_(layout)
        , shadeAt_(shadeAt)
    {
    }

    void Run(Row& row) const override
    {
        COLORREF last = 0;
        ULONG pixel = layout_.PixelOf(last);
        for (LONG i = 0; i < row.count; ++i) {
            const COLORREF colour = shadeAt_(row.x + i, row.y).Colour();
            if (colour != last)
                pixel = layout_.PixelOf(last = colour);
            row.target[i] = pixel;
        }
    }

private:
    const PixelLayout& layout_;
    ShadeAt shadeAt_;
};

// From the first vertex's colour at `from` to the second's at `to`, which no pixel reaches.
Shade Between(const Shade& first, const Shade& second, std::int64_t from, std::int64_t to, LONG position)
{
    const auto part = [&](std::int64_t a, std::int64_t b) {
        return a + FloorDivide((b - a) * (position - from), to - from);
    };
    return {part(first.red, second.red), part(first.green, second.green), part(first.blue, second.blue)};
}

void FillRectangle(const Bitmap& target, const Parts& visible, TRIVERTEX first, TRIVERTEX second, bool vertical)
{
    const RECTL area = Ordered({first.x, first.y, second.x, second.y});
    if (vertical ? first.y > second.y : first.x > second.x)
        std::swap(first, second);
    Parts parts;
    for (const RECTL& part : visible)
        if (const RECTL inside = Intersection(part, area); !IsEmpty(inside))
            parts.push_back(inside);
    const Shade from(first), to(second);
    const auto shadeAt = [&](LONG x, LONG y) {
        return vertical ? Between(from, to, first.y, second.y, y) : Between(from, to, first.x, second.x, x);
    };
    DrawRows(target, parts, nullptr, GradientOperation(*target.layout, shadeAt));
}

// The colour at a point of the plane through the three corners' colours.
class TriangleShade {
public:
    TriangleShade(const TRIVERTEX& first, const TRIVERTEX& second, const TRIVERTEX& third)
        : first_(first)
        , second_(second)
        , third_(third)
        , x_(first.x)
        , y_(first.y)
        , x2_(second.x - x_)
        , y2_(second.y - y_)
        , x3_(third.x - x_)
        , y3_(third.y - y_)
        , area_(x2_ * y3_ - x3_ * y2_)
    {
    }

    bool IsFlat() const { return area_ == 0; }

    Shade operator()(LONG x, LONG y) const
    {
        const Real fromX = x - x_, fromY = y - y_;
        const Real towards2 = fromX * y3_ - x3_ * fromY, towards3 = x2_ * fromY - fromX * y2_;
        const auto part = [&](std::int64_t a, std::int64_t b, std::int64_t c) {
            const Real way =
                std::floor((towards2 * static_cast<Real>(b - a) + towards3 * static_cast<Real>(c - a)) / area_);
            return std::clamp<std::int64_t>(a + static_cast<std::int64_t>(way), 0, 0xFFFF);
        };
        return {part(first_.red, second_.red, third_.red), part(first_.green, second_.green, third_.green),
                part(first_.blue, second_.blue, third_.blue)};
    }

private:
    Shade first_, second_, third_;
    Real x_, y_, x2_, y2_, x3_, y3_, area_;
};

void FillTriangle(const Bitmap& target, const Region& visible, const TRIVERTEX& first, const TRIVERTEX& second,
                  const TRIVERTEX& third)
{
    const TriangleShade shade(first, second, third);
    if (shade.IsFlat())
        return;
    Polygon outline;
    for (const TRIVERTEX* const vertex : {&first, &second, &third})
        outline.push_back({vertex->x * FixOne, vertex->y * FixOne});
    const Region inside = Intersection(ScanConvert({outline}, FP_ALTERNATEMODE, target.area), visible);
    DrawRows(target, inside.Rectangles(), nullptr, GradientOperation(*target.layout, shade));
}

// The corners of the mesh's shapes: two indices of a rectangle, three of a triangle, one shape after the other.
struct Mesh {
    const TRIVERTEX* vertices;
    ULONG vertexCount;
    const ULONG* indices;
    ULONG shapeCount, cornersPerShape;

    bool IsSound() const
    {
        return std::all_of(indices, indices + std::size_t{shapeCount} * cornersPerShape,
                           [this](ULONG index) { return index < vertexCount; });
    }
    const TRIVERTEX& Corner(ULONG shape, ULONG corner) const
    {
        return vertices[indices[std::size_t{shape} * cornersPerShape + corner]];
    }
};
static_assert(sizeof(GRADIENT_RECT) == 2 * sizeof(ULONG) && sizeof(GRADIENT_TRIANGLE) == 3 * sizeof(ULONG));

BOOL DrawMesh(Surface& surface, CLIPOBJ* pco, const RECTL& extents, const Mesh& mesh, ULONG ulMode)
{
    const auto visible = VisibleParts(pco, Intersection(Ordered(extents), surface.Bounds()));
    if (!visible)
        return FALSE;
    if (visible->empty())
        return TRUE;
    const Region region(*visible);
    Target target(surface, pco, region.Bounds());
    if (!target)
        return FALSE;
    for (ULONG i = 0; i < mesh.shapeCount; ++i)
        if (ulMode == GRADIENT_FILL_TRIANGLE)
            FillTriangle(target.Pixels(), region, mesh.Corner(i, 0), mesh.Corner(i, 1), mesh.Corner(i, 2));
        else
            FillRectangle(target.Pixels(), *visible, mesh.Corner(i, 0), mesh.Corner(i, 1),
                          ulMode == GRADIENT_FILL_RECT_V);
    return target.Finish();
}

} // namespace

extern "C" BOOL APIENTRY EngGradientFill(SURFOBJ* psoDest, CLIPOBJ* pco, XLATEOBJ* pxlo, TRIVERTEX* pVertex,
                                         ULONG nVertex, void* pMesh, ULONG nMesh, RECTL* prclExtents,
                                         POINTL* pptlDitherOrg, ULONG ulMode)
{
    Surface* const surface = Given("EngGradientFill", psoDest, "target");
    if (!surface)
        return FALSE;
    if (!pVertex || !pMesh || !prclExtents)
        return Refuse("EngGradientFill", "null vertices, mesh or extents");
    if (const auto answer =
            AskHook<PFN_DrvGradientFill>("EngGradientFill", psoDest, HOOK_GRADIENTFILL, INDEX_DrvGradientFill, psoDest,
                                         pco, pxlo, pVertex, nVertex, pMesh, nMesh, prclExtents, pptlDitherOrg, ulMode))
        return *answer;
    if (ulMode > GRADIENT_FILL_TRIANGLE)
        return FALSE;
    const Mesh mesh = {pVertex, nVertex, static_cast<const ULONG*>(pMesh), nMesh,
                       ulMode == GRADIENT_FILL_TRIANGLE ? 3u : 2u};
    if (!mesh.IsSound())
        return Refuse("EngGradientFill", "vertex index out of range");
    return DrawMesh(*surface, pco, *prclExtents, mesh, ulMode);
}
