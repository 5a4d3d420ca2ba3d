#pragma once

#include "magnifier/zoomer.h"

namespace koru {

// The zoomers of one screen, bottom of the stack first, with the bitmaps that composition needs.
struct ZoomerList {
    Zoomer* head;
    ULONG count; // on or off
    HSURF hBmpStretchDest; // full screen: where overlapping zoomers are composed
    HSURF hBmpAux; // full screen: scratch
    ULONG width, height;
    ULONG format; // BMF_*
    ULONG recompose; // the stacking changed: the whole screen is composed anew at the next update
    BYTE* colourTable; // of `format`, or null

    // For a screen of this size and format. Missing bitmaps are reported, not fatal.
    void Initialise(ULONG screenWidth, ULONG screenHeight, ULONG screenFormat, LONG lDelta);
    // Flushes the zoomers, deletes the bitmaps and the table.
    void Release();

    Zoomer* Create(); // null when memory is short
    void Remove(ULONG id); // an unknown ID is ignored
    void Flush();
    Zoomer* Find(ULONG id) const;
    void SetZOrder(ULONG id, LONG zOrder); // an unknown ID is ignored
    LONG GetZOrder(ULONG id) const; // -1 for an unknown ID
    void Renumber(); // count, count - 1, ... in list order
    ULONG CountActive() const;

private:
    void Unlink(Zoomer* zoomer);
    void Delete(Zoomer* zoomer);
};

} // namespace koru
