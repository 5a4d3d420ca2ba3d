#include "escape/dark_zones.h"

namespace koru {

namespace {

    bool Holds(const RECTL& zone, LONG x, LONG y)
    {
        return zone.left <= x && x < zone.right && zone.top <= y && y < zone.bottom;
    }

    // The zone that holds the point and reaches farthest to the right, or null.
    const RECTL* WidestZoneAt(const LIST& zones, LONG x, LONG y)
    {
        const RECTL* widest = nullptr;
        for (const LIST::Node* node = zones.First(); node; node = LIST::Next(node)) {
            if (Holds(node->item, x, y) && (!widest || node->item.right > widest->right))
                widest = &node->item;
        }
        return widest;
    }

    // Walks one row of pixels from zone to zone. The row up to which the same zones cover it too, or
    // `y` itself when some pixel lies outside every zone.
    LONG CoveredBelow(const LIST& zones, const RECTL& rectangle, LONG y)
    {
        LONG bottom = rectangle.bottom;
        for (LONG x = rectangle.left; x < rectangle.right;) {
            const RECTL* const zone = WidestZoneAt(zones, x, y);
            if (!zone)
                return y;
            if (zone->bottom < bottom)
                bottom = zone->bottom;
            x = zone->right;
        }
        return bottom;
    }

} // namespace

// Runs inside every captured drawing call and the number of zones is the client's: no pieces are kept,
// and the first row with a pixel outside ends it.
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
