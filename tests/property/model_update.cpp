// The model's updates: all zoomers at once, and the commands for one of them.

#include "tests/property/model_magnifier.h"
#include "tests/property/model_smoothing.h"

namespace property {

bool Magnifier::AnyOverlap() const
{
    for (auto first = zoomers.begin(); first != zoomers.end(); ++first)
        for (auto second = std::next(first); second != zoomers.end(); ++second)
            if (first->IsOn() && second->IsOn() && Meets(first->zoomedRect, second->zoomedRect))
                return true;
    return false;
}

// What a moved zoomer leaves and takes, frames included.
Rect Magnifier::MovedArea(const Zoomer& zoomer, const Rect& previous) const
{
    const std::int64_t frame = zoomer.border != 0 ? zoomer.bordersSize : 0;
    return Intersect(Union(previous.Inflated(frame), zoomer.zoomedRect.Inflated(frame)), realScreen.Bounds());
}

void Magnifier::Update()
{
    ++updateCount;
    if (!zoomers.empty() && recompose) {
        Compose(realScreen.Bounds());
        recompose = false;
    }
    const bool overlapping = AnyOverlap();
    Rect covered; // to be composed at the end
    for (Position zoomer = zoomers.begin(); zoomer != zoomers.end(); ++zoomer) {
        if (!zoomer->IsOn() || !(zoomer->pending || zoomer->changed))
            continue;
        const bool moved = zoomer->HasMoved();
        const Rect previous = zoomer->previousZoomedRect;
        const Rect rendered = Render(*zoomer);
        const Rect result = moved ? MovedArea(*zoomer, previous) : rendered;
        if (result.IsEmpty())
            continue;
        if (overlapping && IsCovered(zoomer, result))
            covered = Join(covered, result);
        else if (moved)
            Compose(result);
        else
            PutOnScreen(*zoomer, result);
    }
    Compose(Intersect(covered, realScreen.Bounds()));
    lastUpdate = now;
}

void Magnifier::UpdateIfDue()
{
    const std::int64_t passed = now - lastUpdate;
    const std::int64_t elapsed = passed / frequency * 1000 + passed % frequency * 1000 / frequency;
    if (!zoomers.empty() && elapsed > updateInterval)
        Update();
}

ULONG Magnifier::Refresh(ULONG id)
{
    const Position zoomer = PositionOf(id);
    if (zoomer == zoomers.end())
        return 0;
    zoomer->changed = true;
    if (!zoomer->IsOn())
        return 1;
    if (zoomer->behaviour == 1 || zoomer->behaviour == 2)
        Render(*zoomer);
    else
        MagnifyAll(*zoomer); // an update leaves such a zoomer alone; its client asks for it here
    PutFramed(zoomer);
    return 1;
}

ULONG Magnifier::ImproveImage(ULONG id)
{
    const Position zoomer = PositionOf(id);
    if (zoomer == zoomers.end())
        return 0;
    if (!zoomer->IsOn())
        return 1;
    if (zoomer->CanMagnify())
        Smooth(*zoomer, virtualScreen, zoomer->destRect, choice);
    if (zoomer->improveFactor != 0)
        zoomer->PaintFrame();
    PutFramed(zoomer);
    return 1;
}

ULONG Magnifier::Scroll(ULONG id, LONG dx, LONG dy)
{
    const Position zoomer = PositionOf(id);
    if (zoomer == zoomers.end())
        return 0;
    if ((dx == 0 && dy == 0) || !zoomer->IsOn())
        return 1;
    if (zoomer->pending || zoomer->changed)
        Render(*zoomer);
    const Rect view = Intersect(Intersect(zoomer->destRect, zoomer->zoomedRect), zoomer->image.Bounds());
    if (zoomer->behaviour != 1 && !view.IsEmpty())
        MoveImage(*zoomer, view, std::int64_t{dx} * zoomer->xFactor, std::int64_t{dy} * zoomer->yFactor);
    zoomer->PaintFrame();
    PutFramed(zoomer);
    return 1;
}

void Magnifier::MoveImage(Zoomer& zoomer, const Rect& view, std::int64_t dx, std::int64_t dy)
{
    const Rect kept = Intersect(view, view.Moved(dx, dy));
    if (kept.IsEmpty()) {
        Magnify(zoomer, zoomer.originalRect, zoomer.destRect);
        return;
    }
    Copy(zoomer.image, kept, zoomer.image, {kept.left - dx, kept.top - dy});
    if (dy != 0)
        MagnifyStrip(zoomer,
                     dy > 0 ? Rect(view.left, view.top, view.right, kept.top)
                            : Rect(view.left, kept.bottom, view.right, view.bottom));
    if (dx != 0)
        MagnifyStrip(zoomer,
                     dx > 0 ? Rect(view.left, kept.top, kept.left, kept.bottom)
                            : Rect(kept.right, kept.top, view.right, kept.bottom));
}

void Magnifier::MagnifyStrip(Zoomer& zoomer, const Rect& strip)
{
    const Rect source = Intersect(zoomer.ToSource(strip).Inflated(zoomer.SmoothingMargin()), zoomer.originalRect);
    if (!source.IsEmpty())
        Magnify(zoomer, source, zoomer.ToDestination(source));
}

} // namespace property
