#pragma once

// Fonts as drawings ask for them: the file that stands for a face, and one size and direction of it.

#include <list>
#include <map>

#include "engine/gdi/font_file.h"

namespace engine::gdi {

// How lengths of a text, in logical units, arrive on the device.
struct TextScale {
    PointD along = {1, 0}; // pixels per unit in the direction of the text
    PointD down = {0, 1}; // pixels per unit from the baseline to the feet
    bool IsHorizontal() const { return along.x > 0 && down.y > 0 && along.y == 0 && down.x == 0; }
};

class RealizedFont {
public:
    RealizedFont(const FontFile& file, const LOGFONTW& font, bool slanted, const TextScale& scale);

    Font& Object() { return object_; }
    ULONG GlyphOf(char16_t character) const;
    const GlyphBitmap& Bitmap(ULONG glyph);
    void AddOutline(ULONG glyph, PointD position, Outline& outline) const; // position in pixels
    // In logical units.
    double Advance(ULONG glyph) const { return file_.Advance(glyph) * unitWidth_; }
    double Ascent() const { return file_.Metrics().fwdWinAscender * unitHeight_; }
    double Descent() const { return file_.Metrics().fwdWinDescender * unitHeight_; }
    double UnderlineTop() const; // below the baseline
    double UnderlineSize() const { return file_.Metrics().fwdUnderscoreSize * unitHeight_; }
    double StrikeoutTop() const { return -file_.Metrics().fwdStrikeoutPosition * unitHeight_; }
    double StrikeoutSize() const { return file_.Metrics().fwdStrikeoutSize * unitHeight_; }
    double PixelsPerEm() const { return pixelsPerEm_; } // of height or width, whichever is larger
    bool IsFixedPitch() const;
    // Of a size at which the engine draws outlines instead of bitmaps.
    bool IsLarge() const { return pixelsPerEm_ > MostPixelsPerEm; }
    static constexpr double MostPixelsPerEm = 200;

private:
    void FillObject(const LOGFONTW& font);

    const FontFile& file_;
    Font object_;
    double unitWidth_, unitHeight_; // logical units per font unit
    double pixelsPerEm_ = 0;
    Transform toDevice_; // of font units, y upwards
    Transform toBitmap_; // the same, with the height of small letters a whole number of pixels
    std::map<ULONG, GlyphBitmap> bitmaps_;
    std::size_t bitmapBytes_ = 0;
};

// Realised fonts, so that the same request gives the same FONTOBJ again.
class FontCache {
public:
    RealizedFont& Realize(const LOGFONTW& font, const TextScale& scale); // throws DamagedData without font files

private:
    struct Entry {
        LOGFONTW request;
        TextScale scale;
        RealizedFont font;
    };
    static constexpr std::size_t MostEntries = 32;
    std::list<Entry> entries_; // the last used first
};

} // namespace engine::gdi
