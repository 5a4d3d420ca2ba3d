#pragma once

#include "magnifier/zoomer_list.h"
#include "platform/objects.h"

// One zoomer's bitmap, brought up to date.
namespace koru {

// The strips between zoomedRect and the framed rectangle, where the border asks for them.
void PaintFrame(const Zoomer& zoomer, SURFOBJ* psoBmp);

// All of originalRect, and the frame.
void RenderWhole(Zoomer& zoomer, SURFOBJ* psoBmp, SURFOBJ* psoVirtual);

// What the behaviour asks for at an update. The place that must then be put on the screen.
RECTL Render(Zoomer& zoomer, SURFOBJ* psoBmp, SURFOBJ* psoVirtual);

// Drawing that a deferred zoomer shows at the next update.
void Defer(Zoomer& zoomer, const RECTL& drawn);

// Pixels round a source pixel that its smoothed block depends on.
LONG SmoothingMargin(const Zoomer& zoomer);

} // namespace koru
