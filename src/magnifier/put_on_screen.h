#pragma once

#include "magnifier/zoomer_list.h"
#include "platform/objects.h"

// The last step of every picture: from the driver's bitmaps to the RealScreen.
namespace koru {

// A rectangle of a zoomer's bitmap, in its style and with the overlay. The copy's answer.
BOOL PutOnScreen(const Zoomer& zoomer, SURFOBJ* psoReal, SURFOBJ* psoBmp, const RECTL& rectangle);

// Whether a zoomer that is on and lies above this one covers part of the rectangle.
bool IsCoveredAbove(const Zoomer& zoomer, const RECTL& rectangle);

// The VirtualScreen with all zoomers over it, composed for a rectangle and put on the screen. False
// when the composition could not be made.
bool ComposeAndPut(ZoomerList& list, SURFOBJ* psoReal, SURFOBJ* psoVirtual, const RECTL& rectangle);

// The zoomer's framed rectangle, composed with what lies above it where that is necessary.
void PutFramed(ZoomerList& list, const Zoomer& zoomer, SURFOBJ* psoReal, SURFOBJ* psoVirtual, SURFOBJ* psoBmp);

RECTL ScreenRect(const ZoomerList& list);

} // namespace koru
