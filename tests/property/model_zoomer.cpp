#include "tests/property/model_zoomer.h"

namespace property {

namespace {

    constexpr std::int64_t ImageMargin = 48; // right of and below the screen

    LONG Wrapped(std::int64_t value)
    {
        return static_cast<LONG>(static_cast<ULONG>(value));
    }

    // How far an edge moves out: the whole size, or as far as the screen reaches.
    std::int64_t LowEdge(std::int64_t edge, std::int64_t size)
    {
        if (edge - size >= 1)
            return edge - size;
        return edge > 0 ? 0 : edge;
    }
    std::int64_t HighEdge(std::int64_t edge, std::int64_t size, std::int64_t limit)
    {
        if (edge + size < limit)
            return edge + size;
        return edge < limit ? limit : edge;
    }

    std::int64_t RoundedUp(std::int64_t value, std::int64_t factor)
    {
        return (value + factor - 1) / factor;
    }

} // namespace

Zoomer::Zoomer(std::int64_t screenWidth, std::int64_t screenHeight, ULONG bitsPerPixel)
    : image(screenWidth + ImageMargin, screenHeight + ImageMargin, bitsPerPixel)
    , screen_(0, 0, screenWidth, screenHeight)
{
}

void Zoomer::SetState(ULONG value)
{
    state = value;
    changed = true;
}

void Zoomer::SetMode(ULONG value)
{
    if (mode == value)
        return;
    mode = value;
    changed = true;
    if (mode == 2)
        previousZoomedRect = zoomedRect;
}

void Zoomer::Set(ULONG Zoomer::*property, ULONG value)
{
    if (this->*property != value)
        changed = true;
    this->*property = value;
}

void Zoomer::SetOriginalRect(const Rect& value)
{
    if (originalRect == value)
        return;
    originalRect = value;
    changed = true;
    PlaceDestRect();
}

void Zoomer::SetZoomedRect(const Rect& value)
{
    if (zoomedRect == value)
        return;
    zoomedRect = value;
    changed = true;
    PlaceDestRect();
}

void Zoomer::SetFactors(ULONG x, ULONG y)
{
    if (xFactor == (x & 0xFF) && yFactor == (y & 0xFF))
        return;
    xFactor = x & 0xFF;
    yFactor = y & 0xFF;
    PlaceDestRect();
}

void Zoomer::SetDarkerWins(bool value)
{
    if (darkerWins != value)
        changed = true;
    darkerWins = value;
}

Rect Zoomer::Framed() const
{
    Rect framed = zoomedRect;
    if (!HasFrame())
        return framed;
    if (border & 1)
        framed.left = LowEdge(framed.left, bordersSize);
    if (border & 2)
        framed.top = LowEdge(framed.top, bordersSize);
    if (border & 4)
        framed.right = HighEdge(framed.right, bordersSize, screen_.right);
    if (border & 8)
        framed.bottom = HighEdge(framed.bottom, bordersSize, screen_.bottom);
    return framed;
}

std::int64_t Zoomer::SmoothingMargin() const
{
    constexpr std::int64_t margins[] = {0, 1, 1, 2};
    return improveFactor <= 3 ? margins[improveFactor] : 0;
}

bool Zoomer::CanMagnify() const
{
    return !destRect.IsEmpty() && destRect.Width() == originalRect.Width() * xFactor
        && destRect.Height() == originalRect.Height() * yFactor;
}

Rect Zoomer::ToDestination(const Rect& source) const
{
    const Rect part = Intersect(source, originalRect);
    if (part.IsEmpty() || !CanMagnify())
        return {};
    return {(part.left - originalRect.left) * xFactor + destRect.left,
            (part.top - originalRect.top) * yFactor + destRect.top,
            (part.right - originalRect.left) * xFactor + destRect.left,
            (part.bottom - originalRect.top) * yFactor + destRect.top};
}

Rect Zoomer::ToSource(const Rect& destination) const
{
    const Rect part = Intersect(destination, destRect);
    if (part.IsEmpty() || !CanMagnify())
        return {};
    return {(part.left - destRect.left) / xFactor + originalRect.left,
            (part.top - destRect.top) / yFactor + originalRect.top,
            RoundedUp(part.right - destRect.left, xFactor) + originalRect.left,
            RoundedUp(part.bottom - destRect.top, yFactor) + originalRect.top};
}

void Zoomer::PaintFrame()
{
    if (!HasFrame())
        return;
    const Rect framed = Framed();
    const ULONG colour = border & 16 ? image.Ones() : 0;
    if (border & 2)
        Fill(image, {framed.left, framed.top, framed.right, zoomedRect.top}, colour);
    if (border & 1)
        Fill(image, {framed.left, framed.top, zoomedRect.left, framed.bottom}, colour);
    if (border & 4)
        Fill(image, {zoomedRect.right, framed.top, framed.right, framed.bottom}, colour);
    if (border & 8)
        Fill(image, {framed.left, zoomedRect.bottom, framed.right, framed.bottom}, colour);
}

void Zoomer::PlaceDestRect()
{
    destRect = {zoomedRect.left, zoomedRect.top,
                Wrapped(zoomedRect.left + (originalRect.right - originalRect.left) * xFactor),
                Wrapped(zoomedRect.top + (originalRect.bottom - originalRect.top) * yFactor)};
}

} // namespace property
