#pragma once

// The client's overlay, merged into every picture on its way to the RealScreen.

#include <optional>

#include "tests/property/model_picture.h"

namespace property {

struct Overlay {
    std::optional<Picture> image, mask;
    BYTE rop3 = 0;
    Point origin; // of the client's picture, in the image
    Rect sourceRect; // what it covers of the screen

    void SetImage(const Picture& empty, const Picture& client, BYTE level, const Point& at, const Rect& covered);
    void SetMask(const Picture& empty, const Picture& client, const Rect& rect);
    // Merges what belongs to `rect` into a picture of the screen.
    void MergeInto(Picture& picture, const Rect& rect) const;
};

} // namespace property
