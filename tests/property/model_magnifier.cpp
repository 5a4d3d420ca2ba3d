#include "tests/property/model_magnifier.h"

#include "tests/property/model_smoothing.h"

namespace property {

namespace {

    void AddPending(Zoomer& zoomer, const Rect& drawn)
    {
        if (zoomer.behaviour != 2 || !Meets(zoomer.originalRect, drawn))
            return;
        zoomer.pending = true;
        zoomer.pendingRect = Join(zoomer.pendingRect, Intersect(zoomer.originalRect, drawn));
    }

} // namespace

Magnifier::Magnifier(LONG width, LONG height, const Format& screenFormat)
    : format(screenFormat)
    , virtualScreen(width, height, format.bits)
    , realScreen(width, height, format.bits)
    , choice(format)
{
}

Picture Magnifier::Empty() const
{
    return Picture(virtualScreen.Bounds().right, virtualScreen.Bounds().bottom, format.bits);
}

// ---- the list

void Magnifier::Create(ULONG id)
{
    zoomers.emplace_front(virtualScreen.Bounds().right, virtualScreen.Bounds().bottom, format.bits);
    zoomers.front().id = id;
}

Magnifier::Position Magnifier::PositionOf(ULONG id)
{
    return std::find_if(zoomers.begin(), zoomers.end(), [id](const Zoomer& zoomer) { return zoomer.id == id; });
}

Zoomer* Magnifier::Find(ULONG id)
{
    const Position found = PositionOf(id);
    return found == zoomers.end() ? nullptr : &*found;
}

void Magnifier::Remove(ULONG id)
{
    zoomers.remove_if([id](const Zoomer& zoomer) { return zoomer.id == id; });
}

void Magnifier::SetZOrder(ULONG id, LONG zOrder)
{
    const Position moved = PositionOf(id);
    if (moved == zoomers.end())
        return;
    const auto oldPosition = std::distance(zoomers.begin(), moved);
    moved->zOrder = zOrder;
    std::list<Zoomer> alone;
    alone.splice(alone.begin(), zoomers, moved);
    const Position before =
        std::find_if(zoomers.begin(), zoomers.end(), [zOrder](const Zoomer& zoomer) { return zoomer.zOrder < zOrder; });
    const auto newPosition = std::distance(zoomers.begin(), before);
    zoomers.splice(before, alone);
    if (newPosition != oldPosition)
        recompose = true;
}

void Magnifier::Renumber()
{
    LONG value = static_cast<LONG>(zoomers.size());
    for (Zoomer& zoomer : zoomers)
        zoomer.zOrder = value--;
}

// ---- one zoomer's image

void Magnifier::Magnify(Zoomer& zoomer, const Rect& source, const Rect& target)
{
    if (zoomer.mode == 2)
        zoomer.previousZoomedRect = zoomer.zoomedRect;
    if (!zoomer.CanMagnify() || target.IsEmpty())
        return;
    const Rect part = Intersect(target, zoomer.image.Bounds());
    for (std::int64_t y = part.top; y < part.bottom; ++y)
        for (std::int64_t x = part.left; x < part.right; ++x) {
            const std::int64_t sourceX = source.left + (x - target.left) / zoomer.xFactor;
            const std::int64_t sourceY = source.top + (y - target.top) / zoomer.yFactor;
            if (virtualScreen.Has(sourceX, sourceY))
                zoomer.image.Set(x, y, virtualScreen.At(sourceX, sourceY));
        }
    Smooth(zoomer, virtualScreen, target, choice);
}

void Magnifier::MagnifyAll(Zoomer& zoomer)
{
    Magnify(zoomer, zoomer.originalRect, zoomer.destRect);
    zoomer.PaintFrame();
}

// What must be put on the screen then.
Rect Magnifier::Render(Zoomer& zoomer)
{
    if (zoomer.behaviour == 2 && !zoomer.pending && !zoomer.changed) {
        zoomer.pendingRect = {};
        return {};
    }
    if (!zoomer.IsOn())
        return {};
    if (zoomer.behaviour == 1) {
        MagnifyAll(zoomer);
        return zoomer.Framed();
    }
    if (zoomer.behaviour != 2)
        return {};
    Rect result;
    if (zoomer.changed || zoomer.pendingRect == zoomer.originalRect) {
        MagnifyAll(zoomer);
        result = zoomer.Framed();
    } else {
        result = RenderPart(zoomer);
    }
    zoomer.pendingRect = {};
    zoomer.pending = zoomer.changed = false;
    return result;
}

Rect Magnifier::RenderPart(Zoomer& zoomer)
{
    if (zoomer.pendingRect.IsEmpty())
        return {};
    const Rect source = Intersect(zoomer.pendingRect.Inflated(zoomer.SmoothingMargin()), zoomer.originalRect);
    const Rect place = zoomer.ToDestination(source);
    if (place.IsEmpty())
        return {};
    Magnify(zoomer, source, place);
    zoomer.PaintFrame();
    return Intersect(place, zoomer.Framed());
}

// ---- to the screen

void Magnifier::MergeAndPut(Picture picture, const Rect& rect)
{
    overlay.MergeInto(picture, rect);
    CopySame(realScreen, picture, rect);
}

void Magnifier::PutOnScreen(const Zoomer& zoomer, const Rect& rect)
{
    Picture picture = Empty();
    if (zoomer.style == 1)
        CopySameInverted(picture, zoomer.image, rect);
    else
        CopySame(picture, zoomer.image, rect);
    MergeAndPut(picture, rect);
}

void Magnifier::Compose(const Rect& rect)
{
    if (rect.IsEmpty())
        return;
    Picture picture = virtualScreen;
    for (const Zoomer& zoomer : zoomers) {
        const Rect overlap = Intersect(zoomer.Framed(), rect);
        if (!zoomer.IsOn() || overlap.IsEmpty())
            continue;
        if (zoomer.style == 1)
            CopySameInverted(picture, zoomer.image, overlap);
        else
            CopySame(picture, zoomer.image, overlap);
    }
    MergeAndPut(picture, rect);
}

ULONG Magnifier::ShowOriginal(const Rect& rect)
{
    MergeAndPut(virtualScreen, rect);
    return 1;
}

bool Magnifier::IsCovered(Position zoomer, const Rect& rect)
{
    return std::any_of(std::next(zoomer), zoomers.end(),
                       [&](const Zoomer& later) { return later.IsOn() && Meets(later.Framed(), rect); });
}

void Magnifier::PutFramed(Position zoomer)
{
    const Rect framed = zoomer->Framed();
    if (IsCovered(zoomer, framed))
        Compose(Intersect(framed, realScreen.Bounds()));
    else
        PutOnScreen(*zoomer, framed);
}

// ---- after a drawing call

void Magnifier::AfterDraw(const Rect& drawn)
{
    const auto isOn = [](const Zoomer& zoomer) { return zoomer.IsOn(); };
    const auto active = std::count_if(zoomers.begin(), zoomers.end(), isOn);
    if (active == 0) {
        ShowOriginal(drawn);
    } else if (active == 1) {
        DrawWithOne(*std::find_if(zoomers.begin(), zoomers.end(), isOn), drawn);
    } else {
        DrawThroughStack(zoomers.begin(), drawn);
        for (Zoomer& zoomer : zoomers)
            if (zoomer.IsOn())
                AddPending(zoomer, drawn);
    }
}

void Magnifier::DrawWithOne(Zoomer& zoomer, const Rect& drawn)
{
    AddPending(zoomer, drawn);
    if (zoomer.behaviour == 0 && Meets(zoomer.originalRect, drawn)) {
        MagnifyAll(zoomer);
        PutOnScreen(zoomer, zoomer.Framed());
    }
    if (zoomer.mode == 1)
        return;
    for (const Rect& piece : Subtract(zoomer.Framed(), drawn))
        if (!piece.IsEmpty()) { // the other pieces wait for the next call
            ShowOriginal(piece);
            return;
        }
}

void Magnifier::DrawThroughStack(Position zoomer, const Rect& drawn)
{
    if (zoomer == zoomers.end()) {
        ShowOriginal(drawn);
        return;
    }
    if (!zoomer->IsOn()) {
        DrawThroughStack(std::next(zoomer), drawn);
        return;
    }
    if (zoomer->behaviour == 0 && Meets(zoomer->originalRect, drawn)) {
        MagnifyAll(*zoomer);
        PutOnScreen(*zoomer, zoomer->Framed());
    }
    if (zoomer->mode == 1)
        return;
    for (const Rect& piece : Subtract(zoomer->Framed(), drawn))
        if (!piece.IsEmpty())
            DrawThroughStack(std::next(zoomer), piece);
}

} // namespace property
