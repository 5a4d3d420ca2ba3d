#include "escape/dark_zones.h"

namespace koru {

namespace {

    bool ReachesBeyond(const RECTL& zone, LONG x, LONG y)
    {
        return x < zone.right && zone.top <= y && y < zone.bottom;
    }

    // Walks one row of pixels from zone to zone. The row up to which the same zones cover it too, or
    // `y` itself when some pixel lies outside every zone.
    LONG CoveredBelow(const LIST& zones, const RECTL& rectangle, LONG y)
    {
        LONG x = rectangle.left;
        LONG bottom = rectangle.bottom;
        for (const LIST::Node* node = zones.First(); node && node->item.left <= x; node = LIST::Next(node)) {
            const RECTL& zone = node->item;
            if (!ReachesBeyond(zone, x, y))
                continue;
            if (zone.bottom < bottom)
                bottom = zone.bottom;
            x = zone.right;
            if (x >= rectangle.right)
                return bottom;
        }
        return y;
    }

} // namespace

ULONG InsertDarkZone(LIST& zones, const RECTL& zone)
{
    const ULONG handle = zones.Add(zone);
    if (handle == 0)
        return 0;
    LIST::Node* const node = zones.head;
    zones.head = node->next;
    LIST::Node** link = &zones.head;
    while (*link && (*link)->item.left < zone.left)
        link = &(*link)->next;
    node->next = *link;
    *link = node;
    return handle;
}

// Runs inside every captured drawing call and the number of zones is the client's: no pieces are kept,
// the first row with a pixel outside ends it, and a row costs one walk over the zones at most.
BOOL IsCoveredByDarkZones(const LIST& zones, const RECTL& rectangle)
{
    if (rectangle.left >= rectangle.right || rectangle.top >= rectangle.bottom)
        return TRUE;
    for (LONG y = rectangle.top; y < rectangle.bottom;) {
        const LONG next = CoveredBelow(zones, rectangle, y);
        if (next == y)
            return TRUE;
        y = next;
    }
    return FALSE;
}

} // namespace koru
