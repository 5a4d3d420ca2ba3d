#include "engine/raster/scan_converter.h"

#include <algorithm>

#include "engine/raster/rectangles.h"

namespace engine::raster {
namespace {

    // An edge from its first row on. At each row it crosses at x + remainder / height, in 1/16 pixels.
    struct Edge {
        LONG top, bottom; // rows, the latter exclusive
        std::int64_t x, remainder, height;
        Quotient step; // from row to row
        int winding;

        LONG FirstPixel() const { return Saturated(CeilDivide(remainder > 0 ? x + 1 : x, FixOne)); }
        void Advance()
        {
            x += step.floor;
            remainder += step.remainder;
            if (remainder >= height) {
                remainder -= height;
                ++x;
            }
        }
    };

    struct Crossing {
        LONG x;
        int winding;
    };

    std::vector<Edge> EdgesOf(const std::vector<Polygon>& polygons, const RECTL& bounds)
    {
        std::vector<Edge> edges;
        const auto add = [&](FixPoint from, FixPoint to) {
            const int winding = from.y < to.y ? 1 : -1;
            if (winding < 0)
                std::swap(from, to);
            const LONG top = std::max(Saturated(CeilDivide(from.y, FixOne)), bounds.top);
            const LONG bottom = std::min(Saturated(CeilDivide(to.y, FixOne)), bounds.bottom);
            if (top >= bottom)
                return;
            const std::int64_t height = to.y - from.y, width = to.x - from.x;
            const Quotient start = MultiplyDivide(top * FixOne - from.y, width, height);
            edges.push_back({top, bottom, from.x + start.floor, start.remainder, height,
                             MultiplyDivide(FixOne, width, height), winding});
        };
        for (const Polygon& polygon : polygons)
            for (std::size_t i = 0; i < polygon.size(); ++i)
                add(polygon[i], polygon[(i + 1) % polygon.size()]);
        std::sort(edges.begin(), edges.end(),
                  [](const Edge& first, const Edge& second) { return first.top < second.top; });
        return edges;
    }

    void AddSpan(LONG left, LONG right, const RECTL& bounds, std::vector<Span>& spans)
    {
        left = std::max(left, bounds.left);
        right = std::min(right, bounds.right);
        if (left >= right)
            return;
        if (!spans.empty() && spans.back().right >= left)
            spans.back().right = std::max(spans.back().right, right);
        else
            spans.push_back({left, right});
    }

    // Between which crossings one is inside: where the winding number, or its lowest bit, is not 0.
    void SpansBetween(std::vector<Crossing>& crossings, int mask, const RECTL& bounds, std::vector<Span>& spans)
    {
        spans.clear();
        std::sort(crossings.begin(), crossings.end(),
                  [](const Crossing& first, const Crossing& second) { return first.x < second.x; });
        int winding = 0;
        for (std::size_t i = 0; i + 1 < crossings.size(); ++i) {
            winding += crossings[i].winding;
            if (winding & mask)
                AddSpan(crossings[i].x, crossings[i + 1].x, bounds, spans);
        }
    }

} // namespace

Region ScanConvert(const std::vector<Polygon>& polygons, FLONG flOptions, const RECTL& bounds)
{
    const int mask = flOptions & FP_WINDINGMODE ? -1 : 1;
    const std::vector<Edge> edges = EdgesOf(polygons, bounds);
    Region region;
    std::vector<Edge> active;
    std::vector<Crossing> crossings;
    std::vector<Span> spans;
    auto next = edges.begin();
    for (LONG y = edges.empty() ? 0 : edges.front().top; next != edges.end() || !active.empty(); ++y) {
        while (next != edges.end() && next->top == y)
            active.push_back(*next++);
        crossings.clear();
        for (const Edge& edge : active)
            crossings.push_back({edge.FirstPixel(), edge.winding});
        SpansBetween(crossings, mask, bounds, spans);
        region.AppendBand(y, y + 1, spans);
        std::erase_if(active, [y](const Edge& edge) { return edge.bottom == y + 1; });
        for (Edge& edge : active)
            edge.Advance();
    }
    return region;
}

} // namespace engine::raster
