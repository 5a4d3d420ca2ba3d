#pragma once

#include "magnifier/zoomer_list.h"
#include "platform/objects.h"

namespace koru {

extern LONG ZoomUpdateInterval; // milliseconds between timed updates
extern ULONG ZoomUpdateCount; // runs of Update since load
extern LONGLONG lastUpdateTime; // counter value at the end of the last Update

// All of these run under the DriverSemaphore with HookDepth raised, on both screens locked.

// Brings a drawn rectangle of the VirtualScreen to the RealScreen, through the zoomers that are on.
BOOL AfterDraw(ZoomerList& list, SURFOBJ* psoReal, SURFOBJ* psoVirtual, const RECTL& drawn);

// Renders every pending or changed zoomer and composes where they overlap.
void Update(ZoomerList& list, SURFOBJ* psoReal, SURFOBJ* psoVirtual);

// 0 for an unknown ID or a zoomer bitmap that does not lock.
BOOL Refresh(ZoomerList& list, ULONG id, SURFOBJ* psoReal, SURFOBJ* psoVirtual);
BOOL ImproveImage(ZoomerList& list, ULONG id, SURFOBJ* psoReal, SURFOBJ* psoVirtual);
BOOL Scroll(ZoomerList& list, ULONG id, LONG dx, LONG dy, SURFOBJ* psoReal, SURFOBJ* psoVirtual);

// Copies a rectangle to the RealScreen unmagnified, the overlay merged in `workBitmap`. 0 when that
// does not lock or the copy fails.
BOOL ShowOriginal(ZoomerList& list, HSURF workBitmap, SURFOBJ* psoReal, SURFOBJ* psoVirtual, const RECTL& rectangle);

} // namespace koru
