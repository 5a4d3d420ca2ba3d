#pragma once

// The pointer that the driver draws into the VirtualScreen.

#include <optional>

#include "tests/property/model_colour.h"
#include "tests/property/model_picture.h"

namespace property {

// A colour bitmap of a shape, and how its pixels become the screen's.
struct ShapeColours {
    Picture pixels;
    Format format;
    std::optional<std::vector<ULONG>> table; // of a translation that has one
};

struct Shape {
    std::optional<Picture> mask; // AND rows above XOR rows
    std::optional<ShapeColours> colours;
};

class Cursor {
public:
    Cursor(LONG screenWidth, LONG screenHeight, const Format& screen)
        : screen_(0, 0, screenWidth, screenHeight)
        , format_(screen)
    {
    }
    // What must be shown anew.
    Rect SetShape(const Shape& shape, const Point& hotSpot, LONG x, LONG y);
    Rect Move(LONG x, LONG y);

    Rect OnScreen() const { return Intersect(rect_, screen_); } // empty while hidden
    void DrawOn(Picture& picture) const;

private:
    void PlaceAt(LONG x, LONG y);
    ULONG Mixed(std::int64_t x, std::int64_t y, ULONG background) const;
    ULONG MixedMonochrome(std::int64_t x, std::int64_t y, ULONG background) const;
    ULONG MixedMasked(std::int64_t x, std::int64_t y, ULONG background) const;
    ULONG MixedAlpha(ULONG pixel, ULONG background) const;
    ULONG ValueOf(ULONG raw) const;

    Rect screen_;
    Format format_;
    Shape shape_;
    std::int64_t width_ = 0, height_ = 0;
    Point hotSpot_, position_;
    Rect rect_; // empty while hidden
};

} // namespace property
