#pragma once

#include "magnifier/zoomer.h"
#include "platform/objects.h"

namespace koru {

// Where a rectangle of the VirtualScreen lies when magnified. NoRectangle for what the zoomer does not
// show, and for everything when its destRect has no sound size.
RECTL SourceToDestination(const Zoomer& zoomer, const RECTL& source);

// The source pixels whose blocks a rectangle of the RealScreen touches; NoRectangle when none.
RECTL DestinationToSource(const Zoomer& zoomer, const RECTL& destination);

// Stretches the given part of originalRect to its place in the zoomer's bitmap and smooths it.
void Magnify(Zoomer& zoomer, SURFOBJ* psoBmp, SURFOBJ* psoVirtual, const RECTL& source);

// The smoothing alone, over the whole of originalRect.
void SmoothWhole(const Zoomer& zoomer, SURFOBJ* psoBmp, SURFOBJ* psoVirtual);

} // namespace koru
