#pragma once

#include "engine/core/objects.h"

namespace engine::raster {

// A colour translation as a service applies it: by table, computed, or not at all (null or trivial).
class Translator {
public:
    explicit Translator(const XLATEOBJ* pxlo);
    bool IsKnown() const { return known_; } // false, with a violation reported, for a foreign XLATEOBJ
    bool IsTrivial() const { return !translation_; }
    void Apply(ULONG* pixels, LONG count) const;

    // The colour that a source pixel shows on a target of this layout, as exactly as it is known.
    COLORREF ColourOf(ULONG pixel, const PixelLayout& target) const;

private:
    ULONG Translate(ULONG pixel) const;

    const Translation* translation_ = nullptr;
    bool known_;
};

} // namespace engine::raster
