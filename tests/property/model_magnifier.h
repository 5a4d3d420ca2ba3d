#pragma once

// The zoomers of one screen, and how drawing on the VirtualScreen reaches the RealScreen through them.

#include <list>

#include "tests/property/model_colour.h"
#include "tests/property/model_overlay.h"
#include "tests/property/model_zoomer.h"

namespace property {

class Magnifier {
public:
    Magnifier(LONG width, LONG height, const Format& format);

    const Format format;
    Picture virtualScreen, realScreen;
    std::list<Zoomer> zoomers; // the bottom of the stack first
    bool recompose = false;
    Overlay overlay;
    ColourChoice choice;
    ULONG updateCount = 0;
    std::int64_t now = 0, lastUpdate = 0, frequency = 1; // counter values
    LONG updateInterval = 50; // milliseconds

    Picture Empty() const; // of the screen's size

    // The list.
    void Create(ULONG id);
    void Remove(ULONG id);
    Zoomer* Find(ULONG id);
    void SetZOrder(ULONG id, LONG zOrder);
    void Renumber();

    // What the commands and the hooks do; answers as the client sees them.
    void AfterDraw(const Rect& drawn);
    void Update();
    void UpdateIfDue();
    ULONG Refresh(ULONG id);
    ULONG ImproveImage(ULONG id);
    ULONG Scroll(ULONG id, LONG dx, LONG dy);
    ULONG ShowOriginal(const Rect& rect);

private:
    using Position = std::list<Zoomer>::iterator;
    Position PositionOf(ULONG id);
    void Magnify(Zoomer& zoomer, const Rect& source, const Rect& target);
    void MagnifyAll(Zoomer& zoomer); // with its frame
    Rect Render(Zoomer& zoomer);
    Rect RenderPart(Zoomer& zoomer);
    void PutOnScreen(const Zoomer& zoomer, const Rect& rect);
    void MergeAndPut(Picture picture, const Rect& rect);
    void Compose(const Rect& rect); // and puts it
    void PutFramed(Position zoomer);
    bool IsCovered(Position zoomer, const Rect& rect); // by a later one
    bool AnyOverlap() const;
    void DrawWithOne(Zoomer& zoomer, const Rect& drawn);
    void DrawThroughStack(Position zoomer, const Rect& drawn);
    void MoveImage(Zoomer& zoomer, const Rect& view, std::int64_t dx, std::int64_t dy);
    void MagnifyStrip(Zoomer& zoomer, const Rect& strip);
    Rect MovedArea(const Zoomer& zoomer, const Rect& previous) const;
};

} // namespace property
