#include "magnifier/zoomer.h"

#include "magnifier/rectangle.h"

namespace koru {

static_assert(offsetof(Zoomer, state) == 0 && offsetof(Zoomer, xFactor) == 4 && offsetof(Zoomer, yFactor) == 5);
static_assert(offsetof(Zoomer, mode) == 8 && offsetof(Zoomer, style) == 12 && offsetof(Zoomer, behaviour) == 16);
static_assert(offsetof(Zoomer, border) == 20 && offsetof(Zoomer, bordersSize) == 24
              && offsetof(Zoomer, originalRect) == 28);
static_assert(offsetof(Zoomer, zoomedRect) == 44 && offsetof(Zoomer, previousZoomedRect) == 60
              && offsetof(Zoomer, destRect) == 76);
static_assert(offsetof(Zoomer, improveFactor) == 92 && offsetof(Zoomer, pending) == 96
              && offsetof(Zoomer, pendingRect) == 100);
static_assert(offsetof(Zoomer, changed) == 116 && offsetof(Zoomer, screenWidth) == 120
              && offsetof(Zoomer, screenHeight) == 124);
static_assert(offsetof(Zoomer, colourTable) == 128 && offsetof(Zoomer, hBmpAux) == 132
              && offsetof(Zoomer, pickColour) == 136);
static_assert(offsetof(Zoomer, hBmp) == 140 && offsetof(Zoomer, zOrder) == 144 && offsetof(Zoomer, next) == 148);

namespace {

    // Client values may exceed every range: the sum wraps, what comes of it is not magnified.
    LONG Stretched(LONG start, LONG from, LONG to, BYTE factor)
    {
        const ULONG size = static_cast<ULONG>(to) - static_cast<ULONG>(from);
        return static_cast<LONG>(static_cast<ULONG>(start) + size * factor);
    }

    // A side moved outwards by the frame, but not over the edge of the screen.
    LONG FramedLow(LONG side, ULONG border)
    {
        const LONGLONG outer = LONGLONG{side} - border;
        if (outer >= 1)
            return static_cast<LONG>(outer);
        return side > 0 ? 0 : side;
    }
    LONG FramedHigh(LONG side, ULONG border, ULONG screen)
    {
        const LONGLONG outer = LONGLONG{side} + border;
        if (outer < screen)
            return static_cast<LONG>(outer);
        return LONGLONG{side} < screen ? static_cast<LONG>(screen) : side;
    }

} // namespace

void Zoomer::Change(ULONG& field, ULONG value)
{
    if (field == value)
        return;
    field = value;
    changed = 1;
}

void Zoomer::PlaceDestRect()
{
    destRect = {zoomedRect.left, zoomedRect.top,
                Stretched(zoomedRect.left, originalRect.left, originalRect.right, xFactor),
                Stretched(zoomedRect.top, originalRect.top, originalRect.bottom, yFactor)};
}

void Zoomer::SetState(ULONG value)
{
    state = value;
    changed = 1;
}

void Zoomer::SetMode(ULONG value)
{
    if (mode != value && value == ModeMoving)
        previousZoomedRect = zoomedRect;
    Change(mode, value);
}

void Zoomer::SetStyle(ULONG value)
{
    Change(style, value);
}

void Zoomer::SetBehaviour(ULONG value)
{
    Change(behaviour, value);
}

void Zoomer::SetOriginalRect(const RECTL& value)
{
    if (AreEqual(originalRect, value))
        return;
    originalRect = value;
    changed = 1;
    PlaceDestRect();
}

void Zoomer::SetZoomedRect(const RECTL& value)
{
    if (AreEqual(zoomedRect, value))
        return;
    zoomedRect = value;
    changed = 1;
    PlaceDestRect();
}

void Zoomer::SetFactor(ULONG value)
{
    SetXFactor(value);
    SetYFactor(value);
}

// A new factor shows at the next magnification that something else causes.
void Zoomer::SetXFactor(ULONG value)
{
    xFactor = static_cast<BYTE>(value);
    PlaceDestRect();
}

void Zoomer::SetYFactor(ULONG value)
{
    yFactor = static_cast<BYTE>(value);
    PlaceDestRect();
}

void Zoomer::SetImproveFactor(ULONG value)
{
    Change(improveFactor, value);
}

void Zoomer::SetBorder(ULONG value)
{
    Change(border, value);
}

void Zoomer::SetBordersSize(ULONG value)
{
    Change(bordersSize, value);
}

void Zoomer::SetPickColour(ULONG value)
{
    Change(pickColour, value != 0);
}

RECTL Zoomer::FramedRect() const
{
    RECTL framed = zoomedRect;
    if (!border || !bordersSize)
        return framed;
    if (border & BorderLeft)
        framed.left = FramedLow(framed.left, bordersSize);
    if (border & BorderTop)
        framed.top = FramedLow(framed.top, bordersSize);
    if (border & BorderRight)
        framed.right = FramedHigh(framed.right, bordersSize, screenWidth);
    if (border & BorderBottom)
        framed.bottom = FramedHigh(framed.bottom, bordersSize, screenHeight);
    return framed;
}

} // namespace koru
