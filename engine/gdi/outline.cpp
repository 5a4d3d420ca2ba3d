#include "engine/gdi/outline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace engine::gdi {

namespace {

    constexpr int MostPiecesOfCurve = 64;

    bool IsSame(POINTFIX first, POINTFIX second)
    {
        return first.x == second.x && first.y == second.y;
    }

    // So many that no piece leaves the curve by more than about an eighth of a pixel.
    int PiecesOf(POINTFIX start, const POINTFIX* control)
    {
        const POINTFIX points[] = {start, control[0], control[1], control[2]};
        double bend = 0;
        for (int i = 0; i < 2; ++i) {
            const double x = points[i].x - 2.0 * points[i + 1].x + points[i + 2].x;
            const double y = points[i].y - 2.0 * points[i + 1].y + points[i + 2].y;
            bend = std::max(bend, std::hypot(x, y));
        }
        const double error = 2; // 28.4
        return std::clamp(static_cast<int>(std::ceil(std::sqrt(bend * 0.75 / error))), 1, MostPiecesOfCurve);
    }

    POINTFIX OnCurve(POINTFIX start, const POINTFIX* control, double t)
    {
        const double u = 1 - t;
        const double a = u * u * u, b = 3 * u * u * t, c = 3 * u * t * t, d = t * t * t;
        return {static_cast<FIX>(std::lround(a * start.x + b * control[0].x + c * control[1].x + d * control[2].x)),
                static_cast<FIX>(std::lround(a * start.y + b * control[0].y + c * control[1].y + d * control[2].y))};
    }

    LONG PixelBelow(FIX value) // the pixel at or before
    {
        return value >> 4;
    }

} // namespace

void Outline::MoveTo(POINTFIX point)
{
    current_ = point;
    hasCurrent_ = true;
    if (IsOpen() && figures_.back().runs.empty())
        figures_.pop_back();
    figures_.push_back({point, {}});
}

Outline::Figure& Outline::OpenFigure()
{
    if (!IsOpen())
        figures_.push_back({current_, {}});
    return figures_.back();
}

Outline::Run& Outline::OpenRun(bool curves)
{
    Figure& figure = OpenFigure();
    if (figure.runs.empty() || figure.runs.back().curves != curves)
        figure.runs.push_back({curves, {}});
    return figure.runs.back();
}

void Outline::LineTo(POINTFIX point)
{
    if (!hasCurrent_)
        return MoveTo(point);
    OpenRun(false).points.push_back(point);
    current_ = point;
}

void Outline::BezierTo(POINTFIX first, POINTFIX second, POINTFIX end)
{
    if (!hasCurrent_)
        MoveTo(first);
    Run& run = OpenRun(true);
    run.points.insert(run.points.end(), {first, second, end});
    current_ = end;
}

void Outline::Close()
{
    if (IsOpen())
        figures_.back().closed = true;
}

void Outline::CloseAll()
{
    for (Figure& figure : figures_)
        figure.closed = true;
}

bool Outline::EndsAt(POINTFIX point) const
{
    return IsOpen() && hasCurrent_ && IsSame(current_, point);
}

void Outline::Append(const Outline& other)
{
    figures_.insert(figures_.end(), other.figures_.begin(), other.figures_.end());
    if (!other.hasCurrent_)
        return;
    current_ = other.current_;
    hasCurrent_ = true;
}

void Outline::Continue(const Outline& other)
{
    if (other.figures_.empty())
        return;
    const Figure& added = other.figures_.front();
    for (const Run& run : added.runs) {
        std::vector<POINTFIX>& points = OpenRun(run.curves).points;
        points.insert(points.end(), run.points.begin(), run.points.end());
    }
    figures_.back().closed = added.closed;
    figures_.insert(figures_.end(), other.figures_.begin() + 1, other.figures_.end());
    current_ = other.current_;
}

void Outline::FlattenedTo(POINTFIX first, POINTFIX second, POINTFIX end)
{
    const POINTFIX start = current_, control[] = {first, second, end};
    const int pieces = PiecesOf(start, control);
    for (int piece = 1; piece < pieces; ++piece)
        LineTo(OnCurve(start, control, static_cast<double>(piece) / pieces));
    LineTo(end);
}

Outline Outline::Flattened() const
{
    Outline flat;
    for (const Figure& figure : figures_) {
        flat.MoveTo(figure.start);
        for (const Run& run : figure.runs) {
            const std::vector<POINTFIX>& points = run.points;
            for (std::size_t i = 0; run.curves && i < points.size(); i += 3)
                flat.FlattenedTo(points[i], points[i + 1], points[i + 2]);
            for (std::size_t i = 0; !run.curves && i < points.size(); ++i)
                flat.LineTo(points[i]);
        }
        if (figure.closed)
            flat.Close();
    }
    return flat;
}

Path Outline::ToPath() const
{
    Path path;
    for (const Figure& figure : figures_) {
        for (std::size_t i = 0; i < figure.runs.size(); ++i) {
            const Run& run = figure.runs[i];
            FLONG flags = run.curves ? PD_BEZIERS : 0;
            std::vector<POINTFIX> points = run.points;
            if (i == 0) {
                flags |= PD_BEGINSUBPATH | PD_RESETSTYLE;
                points.insert(points.begin(), figure.start);
            }
            if (i + 1 == figure.runs.size())
                flags |= PD_ENDSUBPATH | (figure.closed ? PD_CLOSEFIGURE : 0);
            // A closing point that repeats the first would be a line without length, with joins of its own.
            if (figure.closed && (flags & PD_ENDSUBPATH) && !run.curves && points.size() > (i == 0 ? 2u : 1u)
                && IsSame(points.back(), figure.start))
                points.pop_back();
            path.Add(flags, std::move(points));
        }
    }
    return path;
}

RECTL Outline::PixelBounds(LONG margin) const
{
    RECTL bounds = {};
    const auto add = [&bounds](POINTFIX point) {
        const LONG x = PixelBelow(point.x), y = PixelBelow(point.y);
        const LONG beyondX = PixelBelow(point.x + 15) + 1, beyondY = PixelBelow(point.y + 15) + 1;
        bounds = Around(bounds, {x, y, beyondX, beyondY});
    };
    for (const Figure& figure : figures_) {
        if (figure.runs.empty())
            continue;
        add(figure.start);
        for (const Run& run : figure.runs)
            std::for_each(run.points.begin(), run.points.end(), add);
    }
    if (engine::IsEmpty(bounds))
        return {};
    return {bounds.left - margin, bounds.top - margin, bounds.right + margin, bounds.bottom + margin};
}

double Outline::PixelLength() const
{
    double length = 0;
    for (const Figure& figure : figures_) {
        PointD last = ToPoint(figure.start);
        for (const Run& run : figure.runs)
            for (const POINTFIX& point : run.points) {
                const PointD next = ToPoint(point);
                length += std::hypot(next.x - last.x, next.y - last.y);
                last = next;
            }
    }
    return length;
}

Box Box::FromCorners(double x1, double y1, double x2, double y2)
{
    return {std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
}

PointD PointOnEllipse(const Box& box, double angle)
{
    const PointD centre = box.Centre();
    return {centre.x + (box.right - box.left) / 2 * std::cos(angle),
            centre.y + (box.bottom - box.top) / 2 * std::sin(angle)};
}

double AngleOf(const Box& box, PointD radial)
{
    const PointD centre = box.Centre();
    const double width = box.right - box.left, height = box.bottom - box.top;
    if (width == 0 || height == 0)
        return 0;
    return std::atan2((radial.y - centre.y) / height, (radial.x - centre.x) / width);
}

double SweepBetween(double start, double end, bool counterclockwise)
{
    constexpr double turn = 2 * std::numbers::pi;
    double sweep = std::fmod(counterclockwise ? start - end : end - start, turn);
    if (sweep <= 0)
        sweep += turn;
    return counterclockwise ? -sweep : sweep;
}

void ShapePen::Rectangle(const Box& box)
{
    MoveTo({box.left, box.top});
    LineTo({box.right, box.top});
    LineTo({box.right, box.bottom});
    LineTo({box.left, box.bottom});
    Close();
}

void ShapePen::Ellipse(const Box& box)
{
    MoveTo(PointOnEllipse(box, 0));
    ArcTo(box, 0, -2 * std::numbers::pi);
    Close();
}

void ShapePen::ArcTo(const Box& box, double start, double sweep)
{
    constexpr double quarter = std::numbers::pi / 2;
    const int pieces = std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / quarter - 1e-9)));
    const double step = sweep / pieces, reach = 4.0 / 3 * std::tan(step / 4);
    const double rx = (box.right - box.left) / 2, ry = (box.bottom - box.top) / 2;
    for (int i = 0; i < pieces; ++i) {
        const double from = start + i * step, to = from + step;
        const PointD first = PointOnEllipse(box, from), last = PointOnEllipse(box, to);
        BezierTo({first.x - reach * rx * std::sin(from), first.y + reach * ry * std::cos(from)},
                 {last.x + reach * rx * std::sin(to), last.y - reach * ry * std::cos(to)}, last);
    }
}

void ShapePen::RoundRectangle(const Box& box, double cornerWidth, double cornerHeight)
{
    const double w = std::min(std::fabs(cornerWidth), box.right - box.left);
    const double h = std::min(std::fabs(cornerHeight), box.bottom - box.top);
    const Box corners[] = {{box.right - w, box.bottom - h, box.right, box.bottom},
                           {box.left, box.bottom - h, box.left + w, box.bottom},
                           {box.left, box.top, box.left + w, box.top + h},
                           {box.right - w, box.top, box.right, box.top + h}};
    constexpr double quarter = std::numbers::pi / 2;
    for (int i = 0; i < 4; ++i) {
        const PointD start = PointOnEllipse(corners[i], i * quarter);
        if (i == 0)
            MoveTo(start);
        else
            LineTo(start);
        ArcTo(corners[i], i * quarter, quarter);
    }
    Close();
}

} // namespace engine::gdi
