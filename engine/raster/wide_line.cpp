#include "engine/raster/wide_line.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "engine/raster/dashes.h"

namespace engine::raster {
namespace {

    struct Vector {
        double x, y;
        friend Vector operator+(Vector a, Vector b) { return {a.x + b.x, a.y + b.y}; }
        friend Vector operator-(Vector a, Vector b) { return {a.x - b.x, a.y - b.y}; }
        friend Vector operator*(Vector a, double factor) { return {a.x * factor, a.y * factor}; }
    };

    double Dot(Vector a, Vector b)
    {
        return a.x * b.x + a.y * b.y;
    }

    double Cross(Vector a, Vector b)
    {
        return a.x * b.y - a.y * b.x;
    }

    Vector Turned(Vector a) // by a right angle
    {
        return {-a.y, a.x};
    }

    Vector Exact(const FixPoint& point)
    {
        return {static_cast<double>(point.x), static_cast<double>(point.y)};
    }

    Vector Direction(const FixPoint& from, const FixPoint& to)
    {
        const Vector way = Exact(to) - Exact(from);
        return way * (1 / std::hypot(way.x, way.y));
    }

    // Twice the area, signed by the orientation.
    double SignedArea(const Polygon& polygon)
    {
        double area = 0;
        for (std::size_t i = 0; i < polygon.size(); ++i)
            area += Cross(Exact(polygon[i]), Exact(polygon[(i + 1) % polygon.size()]));
        return area;
    }

    double CosineOfHalf(double cosine)
    {
        return std::sqrt(std::max(0.0, (1 + cosine) / 2));
    }

    constexpr double Tolerance = FixOne / 8.0; // of round outlines
    constexpr double LargestMiterLimit = 1000;
    constexpr double WidestLine = 65536; // pixels; no surface shows more

    double WidthOf(const LINEATTRS& attributes)
    {
        return attributes.elWidth.e > 1 ? std::min<double>(attributes.elWidth.e, WidestLine) : 1;
    }

    class Widener {
    public:
        Widener(const LINEATTRS& attributes, const RECTL& bounds, std::vector<Polygon>& polygons)
            : attributes_(attributes)
            , low_{(bounds.left - 1.0) * FixOne, (bounds.top - 1.0) * FixOne}
            , high_{(bounds.right + 1.0) * FixOne, (bounds.bottom + 1.0) * FixOne}
            , radius_(WidthOf(attributes) * FixOne / 2)
            , polygons_(polygons)
        {
        }

        void Widen(const Polyline& line)
        {
            std::vector<FixPoint> points = line.points;
            points.erase(std::unique(points.begin(), points.end()), points.end());
            const bool closed = line.closed && points.size() > 1;
            if (closed && points.back() == points.front())
                points.pop_back();
            if (points.size() == 1)
                AddDot(points[0]);
            else
                AddLine(points, closed);
        }

    private:
        void AddLine(const std::vector<FixPoint>& points, bool closed)
        {
            const std::size_t count = points.size(), segments = closed ? count : count - 1;
            for (std::size_t i = 0; i < segments; ++i)
                AddSegment(points[i], points[(i + 1) % count]);
            for (std::size_t i = closed ? 0 : 1; i < segments; ++i)
                AddJoin(points[(i + count - 1) % count], points[i], points[(i + 1) % count]);
            if (!closed) {
                AddCap(points[1], points[0]);
                AddCap(points[count - 2], points[count - 1]);
            }
        }

        void AddSegment(const FixPoint& from, const FixPoint& to)
        {
            const Vector side = Turned(Direction(from, to)) * radius_;
            Add({Exact(from) + side, Exact(to) + side, Exact(to) - side, Exact(from) - side});
        }

        void AddDot(const FixPoint& point)
        {
            const Vector centre = Exact(point);
            const double r = radius_;
            if (attributes_.iEndCap == ENDCAP_ROUND)
                AddCircle(centre);
            else if (attributes_.iEndCap == ENDCAP_SQUARE)
                Add({centre + Vector{-r, -r}, centre + Vector{r, -r}, centre + Vector{r, r}, centre + Vector{-r, r}});
        }

        void AddCap(const FixPoint& from, const FixPoint& end)
        {
            const Vector along = Direction(from, end) * radius_, side = Turned(along), at = Exact(end);
            if (attributes_.iEndCap == ENDCAP_ROUND)
                AddCircle(at);
            else if (attributes_.iEndCap == ENDCAP_SQUARE)
                Add({at + side, at + side + along, at - side + along, at - side});
        }

        // Fills the wedge between two segments on the outer side of the bend.
        void AddJoin(const FixPoint& before, const FixPoint& corner, const FixPoint& after)
        {
            const Vector in = Direction(before, corner), out = Direction(corner, after), at = Exact(corner);
            const double cosine = Dot(in, out); // of the bend
            if (attributes_.iJoin == JOIN_ROUND && radius_ * (1 - CosineOfHalf(cosine)) > Tolerance) {
                AddCircle(at);
                return;
            }
            const double outer = Cross(in, out) > 0 ? -radius_ : radius_;
            const Vector first = at + Turned(in) * outer, second = at + Turned(out) * outer;
            // A miter is longer than the line is wide by one over the cosine of half the bend.
            const double limit = std::min<double>(attributes_.eMiterLimit, LargestMiterLimit);
            if (attributes_.iJoin == JOIN_MITER && CosineOfHalf(cosine) * limit >= 1)
                Add({at, first, at + (Turned(in) + Turned(out)) * (outer / (1 + cosine)), second});
            else
                Add({at, first, second});
        }

        void AddCircle(Vector centre)
        {
            if (IsAway(centre - Vector{radius_, radius_}, centre + Vector{radius_, radius_}))
                return;
            const double step = std::acos(1 - std::min(1.0, Tolerance / radius_));
            const int corners = std::max(8, static_cast<int>(std::ceil(std::numbers::pi / step)));
            std::vector<Vector> circle;
            for (int i = 0; i < corners; ++i) {
                const double angle = 2 * std::numbers::pi * i / corners;
                circle.push_back(centre + Vector{std::cos(angle), std::sin(angle)} * radius_);
            }
            Add(circle);
        }

        void Add(const std::vector<Vector>& corners)
        {
            Vector low = corners[0], high = corners[0];
            Polygon polygon;
            for (const Vector& corner : corners) {
                low = {std::min(low.x, corner.x), std::min(low.y, corner.y)};
                high = {std::max(high.x, corner.x), std::max(high.y, corner.y)};
                polygon.push_back({std::llround(corner.x), std::llround(corner.y)});
            }
            if (IsAway(low, high))
                return;
            if (SignedArea(polygon) < 0)
                std::reverse(polygon.begin(), polygon.end());
            polygons_.push_back(std::move(polygon));
        }

        bool IsAway(Vector low, Vector high) const
        {
            return high.x < low_.x || high.y < low_.y || low.x > high_.x || low.y > high_.y;
        }

        const LINEATTRS& attributes_;
        Vector low_, high_; // of the visible part, with a pixel to spare
        double radius_; // half the width
        std::vector<Polygon>& polygons_;
    };

} // namespace

std::vector<Polygon> WidenLines(const std::vector<Polyline>& lines, const LINEATTRS& attributes, const RECTL& bounds)
{
    std::vector<Polygon> polygons;
    Widener widener(attributes, bounds, polygons);
    for (const Polyline& line : CutIntoDashes(lines, attributes))
        widener.Widen(line);
    return polygons;
}

} // namespace engine::raster
