#pragma once

// Figures of lines and Béziers in device space, as they become a PATHOBJ.

#include <vector>

#include "engine/core/objects.h"
#include "engine/gdi/transform.h"

namespace engine::gdi {

class Outline {
public:
    void MoveTo(POINTFIX point);
    void LineTo(POINTFIX point); // without a current point: a move
    void BezierTo(POINTFIX first, POINTFIX second, POINTFIX end);
    void Close(); // the next line starts a figure at the last point
    void CloseAll();
    void Append(const Outline& other); // whole figures
    void Continue(const Outline& other); // its first figure goes on from the current point

    bool IsEmpty() const { return figures_.empty(); }
    bool IsOpen() const { return !figures_.empty() && !figures_.back().closed; }
    bool EndsAt(POINTFIX point) const; // in a figure that is open

    Outline Flattened() const;
    Path ToPath() const; // figures of a single point are left out
    // The pixels that hold all points, made larger by so many on every side.
    RECTL PixelBounds(LONG margin = 0) const;
    double PixelLength() const; // along the points; a curve is no longer than that

private:
    struct Run {
        bool curves;
        std::vector<POINTFIX> points; // of curves: three each
    };
    struct Figure {
        POINTFIX start;
        std::vector<Run> runs;
        bool closed = false;
    };
    Figure& OpenFigure();
    Run& OpenRun(bool curves);
    void FlattenedTo(POINTFIX first, POINTFIX second, POINTFIX end); // a curve as lines

    std::vector<Figure> figures_;
    POINTFIX current_ = {};
    bool hasCurrent_ = false;
};

// A box in logical units; its edges are where the line runs.
struct Box {
    double left, top, right, bottom;
    PointD Centre() const { return {(left + right) / 2, (top + bottom) / 2}; }
    Box Inset(double by) const { return {left + by, top + by, right - by, bottom - by}; }
    static Box FromCorners(double x1, double y1, double x2, double y2);
};

// Puts shapes, given in logical units, into an outline.
class ShapePen {
public:
    ShapePen(Outline& outline, const Transform& toDevice)
        : outline_(outline)
        , toDevice_(toDevice)
    {
    }

    void MoveTo(PointD point) { outline_.MoveTo(Map(point)); }
    void LineTo(PointD point) { outline_.LineTo(Map(point)); }
    void BezierTo(PointD first, PointD second, PointD end) { outline_.BezierTo(Map(first), Map(second), Map(end)); }
    void Close() { outline_.Close(); }

    void Rectangle(const Box& box);
    void Ellipse(const Box& box);
    void RoundRectangle(const Box& box, double cornerWidth, double cornerHeight);
    // A part of an ellipse; angles in radians from the x axis, growing as the y axis does. The outline's
    // point must be at its start.
    void ArcTo(const Box& box, double start, double sweep);

private:
    POINTFIX Map(PointD point) const { return ToFix(toDevice_.Apply(point)); }
    Outline& outline_;
    const Transform& toDevice_;
};

PointD PointOnEllipse(const Box& box, double angle);
double AngleOf(const Box& box, PointD radial); // of the ray from the centre through a point
// From one angle to another; the same angle twice is the whole ellipse.
double SweepBetween(double start, double end, bool counterclockwise);

} // namespace engine::gdi
