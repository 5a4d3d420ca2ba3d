#pragma once

// Lines, shapes, paths and regions as display-driver calls.

#include "engine/gdi/device_context.h"

namespace engine::gdi {

// While a path is being built these put their lines into it; else they draw.
void LineTo(DeviceContext& dc, PointD to); // from the position, which moves
void MoveTo(DeviceContext& dc, PointD to);
void StrokeLines(DeviceContext& dc, const Outline& outline);
void DrawShape(DeviceContext& dc, const Outline& outline); // filled and outlined
void DrawRectangle(DeviceContext& dc, const Box& box);
// Lines or curves from the position on, as long as the outline goes; the position becomes `end`.
void StrokeFrom(DeviceContext& dc, const Outline& outline, PointD end);

// What is done with a completed path; it is used up.
void FillPath(DeviceContext& dc);
void StrokePath(DeviceContext& dc);
void StrokeAndFillPath(DeviceContext& dc);

void FillOutline(DeviceContext& dc, const Outline& outline, const LogicalBrush& brush, FLONG options);
void FillOutline(DeviceContext& dc, const Outline& outline, COLORREF colour);
void PaintRegion(DeviceContext& dc, const Region& region, const LogicalBrush& brush);
void InvertRegion(DeviceContext& dc, const Region& region);
void FillRectangle(DeviceContext& dc, const RECTL& pixels, const LogicalBrush& brush, ULONG rop2);

// The ternary operation that does with the pattern what a binary one does with the pen.
BYTE PatternRop(ULONG rop2);

} // namespace engine::gdi
