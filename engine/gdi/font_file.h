#pragma once

// A TrueType file: names, metrics, outlines and bitmaps of its glyphs.

#include <memory>
#include <string>
#include <vector>

#include "engine/core/objects.h"
#include "engine/gdi/transform.h"

namespace engine::gdi {

class Outline;

// A glyph of one bit per pixel; rows padded to a byte. `origin`: from the glyph's position to the top left.
struct GlyphBitmap {
    POINTL origin = {};
    SIZEL size = {};
    std::vector<BYTE> bits;
};

class FontFile {
public:
    // Null when there is no such file or it is no font.
    static std::unique_ptr<FontFile> Load(const std::string& path);
    ~FontFile();

    ULONG GlyphOf(char16_t character) const; // 0: not in this font
    // In font units, as all that follows.
    LONG Advance(ULONG glyph) const;
    LONG UnitsPerEm() const { return metrics_.fwdUnitsPerEm; }
    const IFIMETRICS& Metrics() const { return metrics_; } // without the names
    void SetNames(Font& font) const; // and the metrics

    // `toDevice` maps font units, y upwards, to pixels. Glyphs reach at most LargestGlyph pixels.
    GlyphBitmap Bitmap(ULONG glyph, const Transform& toDevice) const;
    void AddOutline(ULONG glyph, const Transform& toDevice, Outline& outline) const;

    static constexpr LONG LargestGlyph = 500;

private:
    struct Parsed;
    FontFile();
    bool ReadMetrics();
    FWORD AverageWidth() const;
    FWORD HeightOf(char16_t letter) const;
    std::u16string Name(int id) const;

    std::vector<BYTE> data_;
    std::unique_ptr<Parsed> parsed_;
    IFIMETRICS metrics_ = {};
};

} // namespace engine::gdi
