// Records that draw lines, curves and closed shapes.

#include <algorithm>
#include <cmath>
#include <numbers>

#include "engine/gdi/metafile_player.h"
#include "engine/gdi/record_fields.h"
#include "engine/gdi/shapes.h"

namespace engine::gdi {

namespace {

    constexpr std::size_t First = 8; // the first field of a record, behind type and size
    constexpr std::size_t CountOffset = 24, PointsOffset = 28; // behind the bounds
    constexpr BYTE PT_CLOSEFIGURE = 1, PT_LINETO = 2, PT_BEZIERTO = 4, PT_MOVETO = 6;

    using Points = std::vector<PointD>;

    template<class Point> Points PointsOf(const Bytes& record)
    {
        return ReadPoints<Point>(record, PointsOffset, record.Get<ULONG>(CountOffset));
    }

    void AddLines(ShapePen& pen, const PointD* first, const PointD* end)
    {
        pen.MoveTo(*first);
        std::for_each(first + 1, end, [&pen](PointD point) { pen.LineTo(point); });
    }

    void AddCurves(ShapePen& pen, const Points& points, std::size_t first)
    {
        for (std::size_t i = first; i + 2 < points.size(); i += 3)
            pen.BezierTo(points[i], points[i + 1], points[i + 2]);
    }

    template<class Point> void Polygon(Playing& playing, const Bytes& record)
    {
        const Points points = PointsOf<Point>(record);
        if (points.size() < 2)
            return;
        const Transform toDevice = playing.dc.ToDevice();
        Outline outline;
        ShapePen pen(outline, toDevice);
        AddLines(pen, points.data(), points.data() + points.size());
        pen.Close();
        DrawShape(playing.dc, outline);
    }

    // A single line is one call for a line; the position stays where it was.
    void DrawSegment(DeviceContext& dc, PointD from, PointD to)
    {
        const PointD position = dc.Now().position;
        MoveTo(dc, from);
        LineTo(dc, to);
        MoveTo(dc, position);
    }

    template<class Point> void Polyline(Playing& playing, const Bytes& record)
    {
        const Points points = PointsOf<Point>(record);
        if (points.size() == 2 && !playing.dc.Bracket().IsOpen())
            return DrawSegment(playing.dc, points[0], points[1]);
        if (points.size() < 2)
            return;
        const Transform toDevice = playing.dc.ToDevice();
        Outline outline;
        ShapePen pen(outline, toDevice);
        AddLines(pen, points.data(), points.data() + points.size());
        StrokeLines(playing.dc, outline);
    }

    template<class Point> void PolylineTo(Playing& playing, const Bytes& record)
    {
        const Points points = PointsOf<Point>(record);
        if (points.empty())
            return;
        const Transform toDevice = playing.dc.ToDevice();
        Outline outline;
        ShapePen pen(outline, toDevice);
        pen.MoveTo(playing.dc.Now().position);
        for (const PointD point : points)
            pen.LineTo(point);
        StrokeFrom(playing.dc, outline, points.back());
    }

    template<class Point> void PolyBezier(Playing& playing, const Bytes& record)
    {
        const Points points = PointsOf<Point>(record);
        if (points.size() < 4)
            return;
        const Transform toDevice = playing.dc.ToDevice();
        Outline outline;
        ShapePen pen(outline, toDevice);
        pen.MoveTo(points[0]);
        AddCurves(pen, points, 1);
        StrokeLines(playing.dc, outline);
    }

    template<class Point> void PolyBezierTo(Playing& playing, const Bytes& record)
    {
        const Points points = PointsOf<Point>(record);
        if (points.size() < 3)
            return;
        const Transform toDevice = playing.dc.ToDevice();
        Outline outline;
        ShapePen pen(outline, toDevice);
        pen.MoveTo(playing.dc.Now().position);
        AddCurves(pen, points, 0);
        StrokeFrom(playing.dc, outline, points[points.size() / 3 * 3 - 1]);
    }

    template<class Point> Outline OutlineOfPolys(Playing& playing, const Bytes& record, bool closed)
    {
        constexpr std::size_t countsOffset = 32;
        const ULONG polys = record.Get<ULONG>(24), total = record.Get<ULONG>(28);
        const std::vector<ULONG> counts = record.List<ULONG>(countsOffset, polys);
        const Points points = ReadPoints<Point>(record, countsOffset + counts.size() * sizeof(ULONG), total);
        const Transform toDevice = playing.dc.ToDevice();
        Outline outline;
        ShapePen pen(outline, toDevice);
        std::size_t at = 0;
        for (const ULONG count : counts) {
            if (count > points.size() - at)
                throw DamagedData("more points in the parts than in all");
            if (count >= 2)
                AddLines(pen, &points[at], points.data() + at + count);
            if (count >= 2 && closed)
                pen.Close();
            at += count;
        }
        return outline;
    }

    template<class Point> void PolyPolygon(Playing& playing, const Bytes& record)
    {
        DrawShape(playing.dc, OutlineOfPolys<Point>(playing, record, true));
    }

    template<class Point> void PolyPolyline(Playing& playing, const Bytes& record)
    {
        StrokeLines(playing.dc, OutlineOfPolys<Point>(playing, record, false));
    }

    // Puts the points of a POLYDRAW into the outline; gives the position behind the last one.
    PointD AddDrawing(ShapePen& pen, PointD position, const Points& points, const std::vector<BYTE>& types)
    {
        PointD figure = position;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const BYTE type = types[i] & static_cast<BYTE>(~PT_CLOSEFIGURE);
            bool closes = (types[i] & PT_CLOSEFIGURE) != 0;
            if (type == PT_MOVETO) {
                pen.MoveTo(figure = points[i]);
            } else if (type == PT_LINETO) {
                pen.LineTo(points[i]);
            } else if (type == PT_BEZIERTO && i + 2 < points.size()) {
                pen.BezierTo(points[i], points[i + 1], points[i + 2]);
                i += 2;
                closes = (types[i] & PT_CLOSEFIGURE) != 0;
            } else {
                throw DamagedData("no such type of point");
            }
            position = points[i];
            if (closes) {
                pen.Close();
                position = figure;
            }
        }
        return position;
    }

    template<class Point> void PolyDraw(Playing& playing, const Bytes& record)
    {
        const Points points = PointsOf<Point>(record);
        const std::vector<BYTE> types = record.List<BYTE>(PointsOffset + points.size() * sizeof(Point), points.size());
        const Transform toDevice = playing.dc.ToDevice();
        Outline outline;
        ShapePen pen(outline, toDevice);
        pen.MoveTo(playing.dc.Now().position);
        const PointD end = AddDrawing(pen, playing.dc.Now().position, points, types);
        StrokeFrom(playing.dc, outline, end);
    }

    void LineToRecord(Playing& playing, const Bytes& record)
    {
        LineTo(playing.dc, ToPoint(record.Get<POINTL>(First)));
    }

    // The pen stays within the box where it is to.
    Box BoxOf(Playing& playing, const Bytes& record)
    {
        const RECTL box = record.Get<RECTL>(First);
        const LogicalPen& pen = playing.dc.Now().pen;
        const Box ordered = Box::FromCorners(box.left, box.top, box.right, box.bottom);
        const double width = pen.Line() == PS_INSIDEFRAME ? pen.width : 0;
        const bool fits = width < ordered.right - ordered.left && width < ordered.bottom - ordered.top;
        return fits ? ordered.Inset(width / 2) : ordered;
    }

    void Ellipse(Playing& playing, const Bytes& record)
    {
        const Transform toDevice = playing.dc.ToDevice();
        Outline outline;
        ShapePen(outline, toDevice).Ellipse(BoxOf(playing, record));
        DrawShape(playing.dc, outline);
    }

    void Rectangle(Playing& playing, const Bytes& record)
    {
        DrawRectangle(playing.dc, BoxOf(playing, record));
    }

    void RoundRect(Playing& playing, const Bytes& record)
    {
        const SIZEL corner = record.Get<SIZEL>(First + sizeof(RECTL));
        const Transform toDevice = playing.dc.ToDevice();
        Outline outline;
        ShapePen(outline, toDevice).RoundRectangle(BoxOf(playing, record), corner.cx, corner.cy);
        DrawShape(playing.dc, outline);
    }

    struct ArcPart {
        Box box;
        double start, sweep;
        PointD From() const { return PointOnEllipse(box, start); }
        PointD To() const { return PointOnEllipse(box, start + sweep); }
    };

    ArcPart ArcOf(Playing& playing, const Bytes& record)
    {
        const Box box = BoxOf(playing, record);
        const double start = AngleOf(box, ToPoint(record.Get<POINTL>(First + 16)));
        const double end = AngleOf(box, ToPoint(record.Get<POINTL>(First + 24)));
        return {box, start, SweepBetween(start, end, playing.dc.Now().arcDirection == AD_COUNTERCLOCKWISE)};
    }

    void Arc(Playing& playing, const Bytes& record)
    {
        const ArcPart arc = ArcOf(playing, record);
        const Transform toDevice = playing.dc.ToDevice();
        Outline outline;
        ShapePen pen(outline, toDevice);
        pen.MoveTo(arc.From());
        pen.ArcTo(arc.box, arc.start, arc.sweep);
        StrokeLines(playing.dc, outline);
    }

    void DrawArcFrom(Playing& playing, const ArcPart& arc)
    {
        const Transform toDevice = playing.dc.ToDevice();
        Outline outline;
        ShapePen pen(outline, toDevice);
        pen.MoveTo(playing.dc.Now().position);
        pen.LineTo(arc.From());
        pen.ArcTo(arc.box, arc.start, arc.sweep);
        StrokeFrom(playing.dc, outline, arc.To());
    }

    void ArcTo(Playing& playing, const Bytes& record)
    {
        DrawArcFrom(playing, ArcOf(playing, record));
    }

    void AngleArc(Playing& playing, const Bytes& record)
    {
        const PointD centre = ToPoint(record.Get<POINTL>(First));
        const double radius = record.Get<ULONG>(First + 8);
        const double start = record.Get<FLOATL>(First + 12), sweep = record.Get<FLOATL>(First + 16);
        if (!std::isfinite(start) || !std::isfinite(sweep))
            throw DamagedData("angle that is no number");
        constexpr double degree = std::numbers::pi / 180, turn = 360;
        const Box box = {centre.x - radius, centre.y - radius, centre.x + radius, centre.y + radius};
        // Angles count counterclockwise; more than a turn draws no more.
        DrawArcFrom(playing, {box, -std::fmod(start, turn) * degree, -std::clamp(sweep, -turn, turn) * degree});
    }

    // A part of an ellipse, closed over the centre or directly.
    void DrawSector(Playing& playing, const Bytes& record, bool overCentre)
    {
        const ArcPart arc = ArcOf(playing, record);
        const Transform toDevice = playing.dc.ToDevice();
        Outline outline;
        ShapePen pen(outline, toDevice);
        pen.MoveTo(arc.From());
        pen.ArcTo(arc.box, arc.start, arc.sweep);
        if (overCentre)
            pen.LineTo(arc.box.Centre());
        pen.Close();
        DrawShape(playing.dc, outline);
    }

    void Chord(Playing& playing, const Bytes& record)
    {
        DrawSector(playing, record, false);
    }

    void Pie(Playing& playing, const Bytes& record)
    {
        DrawSector(playing, record, true);
    }

    constexpr RecordHandler Handlers[] = {
        {2, "POLYBEZIER", PolyBezier<POINTL>},
        {3, "POLYGON", Polygon<POINTL>},
        {4, "POLYLINE", Polyline<POINTL>},
        {5, "POLYBEZIERTO", PolyBezierTo<POINTL>},
        {6, "POLYLINETO", PolylineTo<POINTL>},
        {7, "POLYPOLYLINE", PolyPolyline<POINTL>},
        {8, "POLYPOLYGON", PolyPolygon<POINTL>},
        {41, "ANGLEARC", AngleArc},
        {42, "ELLIPSE", Ellipse},
        {43, "RECTANGLE", Rectangle},
        {44, "ROUNDRECT", RoundRect},
        {45, "ARC", Arc},
        {46, "CHORD", Chord},
        {47, "PIE", Pie},
        {54, "LINETO", LineToRecord},
        {55, "ARCTO", ArcTo},
        {56, "POLYDRAW", PolyDraw<POINTL>},
        {85, "POLYBEZIER16", PolyBezier<POINTS>},
        {86, "POLYGON16", Polygon<POINTS>},
        {87, "POLYLINE16", Polyline<POINTS>},
        {88, "POLYBEZIERTO16", PolyBezierTo<POINTS>},
        {89, "POLYLINETO16", PolylineTo<POINTS>},
        {90, "POLYPOLYLINE16", PolyPolyline<POINTS>},
        {91, "POLYPOLYGON16", PolyPolygon<POINTS>},
        {92, "POLYDRAW16", PolyDraw<POINTS>},
    };

} // namespace

std::span<const RecordHandler> ShapeRecords()
{
    return Handlers;
}

} // namespace engine::gdi
