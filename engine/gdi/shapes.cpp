#include "engine/gdi/shapes.h"

#include "engine/core/calls.h"
#include "engine/gdi/real_pen.h"

namespace engine::gdi {

namespace {

    constexpr BYTE LeaveRop = 0xAA; // the ternary operation that changes nothing

    FLONG FillOptions(const DeviceContext& dc)
    {
        return dc.Now().polyFillMode == WINDING ? FP_WINDINGMODE : FP_ALTERNATEMODE;
    }

    void StrokeOnce(DeviceContext& dc, Path& path, CallClip& clip, RealPen& pen, Brush& brush, MIX mix)
    {
        XFORMOBJ none = {};
        CallStrokePath(dc.Surface(), &path, clip.Always(), &none, &brush, dc.BrushOrigin(), pen.Line(), mix);
    }

    void FillGaps(DeviceContext& dc, Path& path, CallClip& clip, RealPen& pen)
    {
        Brush background = Brush::Solid(dc.Pixel(dc.Now().backColour));
        pen.SwapGaps();
        StrokeOnce(dc, path, clip, pen, background, dc.Now().rop2 | dc.Now().rop2 << 8);
        pen.SwapGaps();
    }

    void Stroke(DeviceContext& dc, const Outline& outline, RealPen& pen)
    {
        if (pen.IsNull())
            return;
        CallClip clip = dc.ClipOf(outline.PixelBounds(pen.Reach()));
        if (clip.IsEmpty())
            return;
        pen.LimitDashes(outline.PixelLength());
        Path path = outline.ToPath();
        if (pen.FillsGaps())
            FillGaps(dc, path, clip, pen);
        StrokeOnce(dc, path, clip, pen, pen.Fill(), pen.Mix());
    }

    void Fill(DeviceContext& dc, const Outline& outline, Brush& brush, MIX mix, FLONG options)
    {
        CallClip clip = dc.ClipOf(outline.PixelBounds());
        if (clip.IsEmpty())
            return;
        Path path = outline.ToPath();
        CallFillPath(dc.Surface(), &path, clip.Always(), &brush, dc.BrushOrigin(), mix, options);
    }

    void StrokeAndFill(DeviceContext& dc, const Outline& outline)
    {
        RealPen pen(dc, dc.Now().pen);
        std::optional<Brush> brush = dc.Realize(dc.Now().brush);
        const MIX mix = dc.MixFor(dc.Now().brush);
        if (pen.IsNull() || !brush || pen.FillsGaps()) {
            if (brush)
                Fill(dc, outline, *brush, mix, FillOptions(dc));
            Stroke(dc, outline, pen);
            return;
        }
        CallClip clip = dc.ClipOf(outline.PixelBounds(pen.Reach()));
        if (clip.IsEmpty())
            return;
        pen.LimitDashes(outline.PixelLength());
        Path path = outline.ToPath();
        XFORMOBJ none = {};
        CallStrokeAndFillPath(dc.Surface(), &path, clip.Always(), &none, &pen.Fill(), pen.Line(), &*brush,
                              dc.BrushOrigin(), mix, FillOptions(dc));
    }

    void DrawPlainLine(DeviceContext& dc, PointD from, PointD to, RealPen& pen)
    {
        const POINTL start = ToPixel(dc.Map(from)), end = ToPixel(dc.Map(to));
        RECTL bounds = Ordered({start.x, start.y, end.x, end.y});
        ++bounds.right;
        ++bounds.bottom;
        CallClip clip = dc.ClipOf(bounds);
        if (!clip.IsEmpty())
            CallLineTo(dc.Surface(), clip.IfHidden(), &pen.Fill(), start.x, start.y, end.x, end.y, &bounds, pen.Mix());
    }

} // namespace

BYTE PatternRop(ULONG rop2)
{
    constexpr BYTE rops[R2_WHITE] = {0x00, 0x05, 0x0A, 0x0F, 0x50, 0x55, 0x5A, 0x5F,
                                     0xA0, 0xA5, 0xAA, 0xAF, 0xF0, 0xF5, 0xFA, 0xFF};
    return rops[(rop2 - 1) % R2_WHITE];
}

void MoveTo(DeviceContext& dc, PointD to)
{
    dc.Now().position = to;
}

void LineTo(DeviceContext& dc, PointD to)
{
    const PointD from = dc.Now().position;
    dc.Now().position = to;
    if (dc.Bracket().IsOpen()) {
        dc.Bracket().From(ToFix(dc.Map(from))).LineTo(ToFix(dc.Map(to)));
        return;
    }
    RealPen pen(dc, dc.Now().pen);
    if (!pen.IsNull() && pen.IsPlain())
        return DrawPlainLine(dc, from, to, pen);
    Outline outline;
    outline.MoveTo(ToFix(dc.Map(from)));
    outline.LineTo(ToFix(dc.Map(to)));
    Stroke(dc, outline, pen);
}

void StrokeLines(DeviceContext& dc, const Outline& outline)
{
    if (dc.Bracket().IsOpen())
        return dc.Bracket().Building().Append(outline);
    RealPen pen(dc, dc.Now().pen);
    Stroke(dc, outline, pen);
}

void StrokeFrom(DeviceContext& dc, const Outline& outline, PointD end)
{
    if (dc.Bracket().IsOpen())
        dc.Bracket().From(ToFix(dc.Map(dc.Now().position))).Continue(outline);
    else
        StrokeLines(dc, outline);
    dc.Now().position = end;
}

void DrawShape(DeviceContext& dc, const Outline& outline)
{
    if (dc.Bracket().IsOpen())
        return dc.Bracket().Building().Append(outline);
    StrokeAndFill(dc, outline);
}

void DrawRectangle(DeviceContext& dc, const Box& box)
{
    const Transform toDevice = dc.ToDevice();
    if (!dc.Bracket().IsOpen() && dc.Now().pen.IsNull() && toDevice.IsAxisAligned()) {
        const RECTL pixels = PixelsWithin(toDevice.Apply({box.left, box.top}), toDevice.Apply({box.right, box.bottom}));
        return FillRectangle(dc, pixels, dc.Now().brush, dc.Now().rop2);
    }
    Outline outline;
    ShapePen(outline, toDevice).Rectangle(box);
    DrawShape(dc, outline);
}

void FillPath(DeviceContext& dc)
{
    const Outline outline = dc.Bracket().Take();
    if (auto brush = dc.Realize(dc.Now().brush))
        Fill(dc, outline, *brush, dc.MixFor(dc.Now().brush), FillOptions(dc));
}

void StrokePath(DeviceContext& dc)
{
    const Outline outline = dc.Bracket().Take();
    RealPen pen(dc, dc.Now().pen);
    Stroke(dc, outline, pen);
}

void StrokeAndFillPath(DeviceContext& dc)
{
    Outline outline = dc.Bracket().Take();
    outline.CloseAll();
    StrokeAndFill(dc, outline);
}

void FillOutline(DeviceContext& dc, const Outline& outline, const LogicalBrush& brush, FLONG options)
{
    if (auto real = dc.Realize(brush))
        Fill(dc, outline, *real, dc.MixFor(brush), options);
}

void FillOutline(DeviceContext& dc, const Outline& outline, COLORREF colour)
{
    Brush brush = Brush::Solid(dc.Pixel(colour));
    Fill(dc, outline, brush, R2_COPYPEN | R2_COPYPEN << 8, FP_WINDINGMODE);
}

void PaintRegion(DeviceContext& dc, const Region& region, const LogicalBrush& brush)
{
    CallClip clip = dc.ClipOf(region);
    std::optional<Brush> real = dc.Realize(brush);
    if (!clip.IsEmpty() && real)
        CallPaint(dc.Surface(), clip.Always(), &*real, dc.BrushOrigin(), dc.MixFor(brush));
}

void InvertRegion(DeviceContext& dc, const Region& region)
{
    CallClip clip = dc.ClipOf(region);
    Brush brush = Brush::Solid(0);
    if (!clip.IsEmpty())
        CallPaint(dc.Surface(), clip.Always(), &brush, dc.BrushOrigin(), R2_NOT | R2_NOT << 8);
}

void FillRectangle(DeviceContext& dc, const RECTL& pixels, const LogicalBrush& brush, ULONG rop2)
{
    CallClip clip = dc.ClipOf(pixels);
    std::optional<Brush> real = dc.Realize(brush);
    if (clip.IsEmpty() || !real)
        return;
    RECTL target = clip.Cut();
    const ROP4 fore = PatternRop(rop2), back = dc.HasOpenGaps(brush) ? LeaveRop : fore;
    CallBitBlt(dc.Surface(), nullptr, nullptr, clip.AfterCut(), nullptr, &target, nullptr, nullptr, &*real,
               dc.BrushOrigin(), fore | back << 8);
}

} // namespace engine::gdi
