#pragma once

// One magnified view of the model: its properties, and what follows from them.

#include "tests/property/model_picture.h"

namespace property {

struct Zoomer {
    Zoomer(std::int64_t screenWidth, std::int64_t screenHeight, ULONG bitsPerPixel);

    ULONG id = 0; // the driver's
    ULONG state = 0, mode = 0, style = 0, behaviour = 0, border = 0, bordersSize = 1, improveFactor = 0;
    ULONG xFactor = 2, yFactor = 2;
    bool darkerWins = false;
    Rect originalRect = {0, 0, 50, 50}, zoomedRect = {0, 0, 100, 100}, previousZoomedRect = {0, 0, 100, 100};
    Rect destRect = {0, 0, 100, 100};
    bool pending = true, changed = true;
    Rect pendingRect = {0, 0, 50, 50};
    LONG zOrder = 0;
    Picture image; // the magnified picture, in screen coordinates

    void SetState(ULONG value);
    void SetMode(ULONG value);
    void Set(ULONG Zoomer::*property, ULONG value); // style, behaviour, border, bordersSize, improveFactor
    void SetOriginalRect(const Rect& value);
    void SetZoomedRect(const Rect& value);
    void SetFactors(ULONG x, ULONG y); // their low bytes
    void SetDarkerWins(bool value);

    bool IsOn() const { return state != 0; }
    bool HasFrame() const { return border != 0 && bordersSize != 0; }
    Rect Framed() const; // what the view takes of the screen
    bool HasMoved() const { return mode == 2 && previousZoomedRect != zoomedRect; }
    std::int64_t SmoothingMargin() const; // source pixels
    bool CanMagnify() const; // destRect is not empty and did not wrap

    // Where a part of the VirtualScreen comes to lie; empty outside of originalRect, and when nothing is magnified.
    Rect ToDestination(const Rect& source) const;
    // The source pixels whose blocks cover a part of destRect, broken blocks included.
    Rect ToSource(const Rect& destination) const;

    void PaintFrame();

private:
    void PlaceDestRect();
    Rect screen_;
};

} // namespace property
