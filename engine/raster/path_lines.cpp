#include "engine/raster/path_lines.h"

#include <array>
#include <cmath>

namespace engine::raster {
namespace {

    constexpr int DeepestDivision = 12;
    constexpr double Tolerance = 2; // 1/16 pixels

    struct Point {
        double x, y;
    };
    using Curve = std::array<Point, 4>;

    Point Middle(Point first, Point second)
    {
        return {(first.x + second.x) / 2, (first.y + second.y) / 2};
    }

    // How far a curve can be from its chord at most (R. Willcocks' bound: the control points' distance from
    // where they are on a straight, evenly drawn curve).
    bool IsFlat(const Curve& curve)
    {
        const auto square = [](double a, double b) { return std::max(a * a, b * b); };
        const double x =
            square(3 * curve[1].x - 2 * curve[0].x - curve[3].x, 3 * curve[2].x - 2 * curve[3].x - curve[0].x);
        const double y =
            square(3 * curve[1].y - 2 * curve[0].y - curve[3].y, 3 * curve[2].y - 2 * curve[3].y - curve[0].y);
        return x + y <= 16 * Tolerance * Tolerance;
    }

    FixPoint Rounded(Point point)
    {
        return {std::llround(point.x), std::llround(point.y)};
    }

    // De Casteljau's division in the middle.
    void Flatten(const Curve& curve, int depth, std::vector<FixPoint>& points)
    {
        if (depth == DeepestDivision || IsFlat(curve)) {
            points.push_back(Rounded(curve[3]));
            return;
        }
        const Point a = Middle(curve[0], curve[1]), b = Middle(curve[1], curve[2]), c = Middle(curve[2], curve[3]);
        const Point ab = Middle(a, b), bc = Middle(b, c), middle = Middle(ab, bc);
        Flatten({curve[0], a, ab, middle}, depth + 1, points);
        Flatten({middle, bc, c, curve[3]}, depth + 1, points);
    }

    Point Exact(const FixPoint& point)
    {
        return {static_cast<double>(point.x), static_cast<double>(point.y)};
    }

    Point Exact(const POINTFIX& point)
    {
        return {static_cast<double>(point.x), static_cast<double>(point.y)};
    }

    void AddCurves(const std::vector<POINTFIX>& controls, std::size_t first, std::vector<FixPoint>& points)
    {
        for (std::size_t i = first; i + 3 <= controls.size(); i += 3)
            Flatten({Exact(points.back()), Exact(controls[i]), Exact(controls[i + 1]), Exact(controls[i + 2])}, 0,
                    points);
    }

    void AddRun(const Path::Subpath& run, Polyline& polyline)
    {
        std::size_t first = 0;
        if (polyline.points.empty()) {
            polyline.points.push_back({run.points[0].x, run.points[0].y});
            first = 1;
        }
        if (run.flags & PD_BEZIERS)
            AddCurves(run.points, first, polyline.points);
        else
            for (std::size_t i = first; i < run.points.size(); ++i)
                polyline.points.push_back({run.points[i].x, run.points[i].y});
    }

} // namespace

std::vector<Polyline> PolylinesOf(const Path& path)
{
    std::vector<Polyline> polylines;
    bool open = false;
    for (const Path::Subpath& run : path.subpaths) {
        if (!open || run.flags & PD_BEGINSUBPATH)
            polylines.emplace_back();
        Polyline& polyline = polylines.back();
        polyline.resetsStyle |= (run.flags & PD_RESETSTYLE) != 0;
        polyline.closed |= (run.flags & PD_CLOSEFIGURE) != 0;
        if (!run.points.empty())
            AddRun(run, polyline);
        open = (run.flags & (PD_ENDSUBPATH | PD_CLOSEFIGURE)) == 0;
    }
    std::erase_if(polylines, [](const Polyline& polyline) { return polyline.points.empty(); });
    return polylines;
}

} // namespace engine::raster
