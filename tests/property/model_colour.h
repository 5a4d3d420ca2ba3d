#pragma once

// Pixels as colours: the default palettes, and which of two pixels wins when smoothing.

#include <vector>

#include "platform/types.h"

namespace property {

struct Format {
    ULONG bits = 32; // per pixel in memory
    ULONG depth = 32; // as the mode was asked for: 15 and 16 both take 16 bits
};

struct Colour {
    ULONG red = 0, green = 0, blue = 0;
    friend bool operator==(const Colour&, const Colour&) = default;
};

// What a pixel of the format means; of palette formats by the default table of that format.
Colour ColourOf(const Format& format, ULONG pixel);
// The pixel of a colour: top bits of its components, or the nearest entry of the default table.
ULONG PixelOf(const Format& format, const Colour& colour);
Colour ColourOfWire(ULONG colorref);

// Whether the first of two pixels wins.
class ColourChoice {
public:
    explicit ColourChoice(const Format& format);

    void AddPair(ULONG wireColour1, ULONG wireColour2);
    bool RemovePair(ULONG wireColour1, ULONG wireColour2); // in either order
    void ClearPairs() { pairs_.clear(); }
    std::size_t PairCount() const { return pairs_.size(); }

    ULONG Choose(ULONG first, ULONG second, bool darkerWins) const;

private:
    struct Pair {
        Colour text, background; // the background wins
        ULONG textPixel, backgroundPixel; // of 15 and 16 bits
    };
    bool IsText(const Pair& pair, ULONG pixel) const;
    bool IsBackground(const Pair& pair, ULONG pixel) const;

    Format format_;
    std::vector<Pair> pairs_; // the newest first
};

} // namespace property
