#pragma once

// The whole of the objects whose public part the display-driver interface shows. Everything that is
// passed to a driver or to an engine service is one of these: a service finds its own data behind
// the public part, as the real engine does. Surfaces are in surface.h.

#include <cstdint>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace engine {

// Every object of this header is known to the engine for as long as it lives. What a service is given
// must be one of them: an object that only looks alike (made or copied by a driver) is a violation.
void RegisterObject(void* object);
void ForgetObject(const void* object);
bool IsRegistered(const void* object);

template<class Object> class Known {
protected:
    Known() { RegisterObject(static_cast<Object*>(this)); }
    Known(const Known&)
        : Known()
    {
    }
    Known& operator=(const Known&) { return *this; }
    ~Known() { ForgetObject(static_cast<const Object*>(this)); }
};

// What the pixel values of a surface mean.
struct PixelLayout {
    ULONG iBitmapFormat = BMF_32BPP;
    ULONG redMask = 0xFF0000, greenMask = 0xFF00, blueMask = 0xFF; // all 0 for palette formats
    std::vector<COLORREF> palette; // of palette formats, at most 2, 16 or 256 entries

    // 1: black, white; 4: the 16 system colours; 8: the system palette; 16: 5-6-5; 24 and 32: 8-8-8.
    static PixelLayout Default(ULONG iBitmapFormat);
    static PixelLayout FiveFiveFive();

    bool IsIndexed() const { return redMask == 0; }
    ULONG BitsPerPixel() const;
    ULONG PixelOf(COLORREF colour) const; // nearest entry, or the colour packed
    COLORREF ColourOf(ULONG pixel) const; // components widened to 8 bits by repeating their top bits
    friend bool operator==(const PixelLayout&, const PixelLayout&) = default;
};

// A clip. Without rectangles of its own it is DC_RECT (or DC_TRIVIAL when told); more than one make it
// DC_COMPLEX. Rectangles are disjoint.
struct ClipObject : CLIPOBJ, Known<ClipObject> {
    explicit ClipObject(const RECTL& bounds, BYTE complexity = DC_RECT);
    explicit ClipObject(std::vector<RECTL> rectangles); // sorted by top, then left

    std::vector<RECTL> rectangles;
    // Enumeration: set by CLIPOBJ_cEnumStart. `batch` limits what one CLIPOBJ_bEnum delivers (0: by the
    // caller's room alone), so that tests can cut the delivery; that many `emptyBatches` come first.
    std::size_t next = 0;
    std::size_t batch = 0, emptyBatches = 0;
    std::vector<RECTL> ordered;
    ULONG limit = 0; // as CLIPOBJ_cEnumStart was given it
    bool started = false;
};

// A colour translation between two layouts. flXlate is XO_TRIVIAL where pixels stay as they are,
// XO_TABLE (pulXlate and cEntries set) where the source is indexed, else 0: computed per pixel.
struct Translation : XLATEOBJ, Known<Translation> {
    Translation(const PixelLayout& source, const PixelLayout& target);
    // A source of one bit per pixel drawn in two given target pixels (0: back, 1: fore).
    Translation(const PixelLayout& target, ULONG backPixel, ULONG forePixel);
    Translation(const Translation&) = delete;
    Translation& operator=(const Translation&) = delete;

    ULONG Translate(ULONG pixel) const;

    PixelLayout source, target;
    std::vector<ULONG> table; // what pulXlate points to
    std::vector<ULONG> vector; // what XLATEOBJ_piVector answers: the source palette; empty: null
};

struct Surface;

// Solid (iSolidColor is the pixel), or a pattern: a surface in the target's layout, tiled from the
// brush origin. A hatch keeps its mask: where that is 0 and `transparent`, nothing is painted with
// the foreground mix alone (the background mix applies there).
struct Brush : BRUSHOBJ, Known<Brush> {
    Brush()
        : BRUSHOBJ{}
    {
    }
    static Brush Solid(ULONG pixel);
    static Brush Pattern(const Surface& pattern); // in the target's layout; must outlive the brush
    static Brush Hatch(ULONG hatch, ULONG forePixel, ULONG backPixel); // HS_HORIZONTAL..HS_DIAGCROSS; 8 x 8

    bool IsSolid() const { return iSolidColor != 0xFFFFFFFF; }
    ULONG PixelAt(LONG x, LONG y) const; // relative to the brush origin, any sign
    bool IsForeground(LONG x, LONG y) const; // a hatch's lines; everywhere for other brushes

    const Surface* pattern = nullptr;
    ULONG hatch = HS_DDI_MAX; // HS_DDI_MAX: not a hatch
    ULONG forePixel = 0, backPixel = 0;
};

// A path in device space, 28.4. Béziers are groups of three points after the current one.
struct Path : PATHOBJ, Known<Path> {
    struct Subpath { // as PATHOBJ_bEnum delivers it: a run of lines or of Béziers
        FLONG flags; // PD_*
        std::vector<POINTFIX> points;
        ULONG countTold = 0; // what PATHDATA says instead of their number; 0: their number
    };
    Path();
    void Add(FLONG flags, std::vector<POINTFIX> points); // keeps fl and cCurves right
    std::vector<Subpath> subpaths;
    std::size_t next = 0; // enumeration
};

// A string. With `enumerated` the glyphs come from STROBJ_bEnum alone (pgp is null), `batch` at a time.
struct Text : STROBJ, Known<Text> {
    Text();
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    // `bits`: 1 bpp rows padded to a byte. Keeps cGlyphs, pgp and rclBkGround's caller-given value.
    void AddGlyph(HGLYPH hg, POINTL position, POINTL bitmapOrigin, SIZEL bitmapSize, const std::vector<BYTE>& bits);
    void SetString(std::u16string text); // pwszOrg
    void Enumerate(std::size_t batchSize); // switches to enumeration

    std::vector<GLYPHPOS> glyphs;
    std::vector<GLYPHDEF*> definitions; // owned
    std::vector<std::vector<BYTE>> storage; // what they point to
    std::u16string text;
    ULONG codePage = 1252;
    std::size_t next = 0, batch = 0;
    bool enumerated = false;
    bool failEnumeration = false; // STROBJ_bEnum answers -1, after `batchesBeforeFailure`
    std::size_t batchesBeforeFailure = 0;
    ~Text();
};

struct Font : FONTOBJ, Known<Font> {
    Font();
    // Builds IFIMETRICS with the four names behind it; the numeric fields are the caller's to set
    // through Metrics(). An empty name gets offset 0.
    void SetNames(const std::u16string& family, const std::u16string& style, const std::u16string& face,
                  const std::u16string& unique);
    IFIMETRICS* Metrics(); // null before SetNames
    std::vector<BYTE> metrics;
};

struct PaletteObject : PALOBJ, Known<PaletteObject> {
    PaletteObject()
        : PALOBJ{}
    {
    }
    std::vector<ULONG> colours; // COLORREF
    ULONG deliver = 0xFFFFFFFF; // at most so many per PALOBJ_cGetColors
};

// The whole object behind its public part: null for null, null and a violation for a foreign object.
ClipObject* ClipBehind(const CLIPOBJ* pco);
Translation* TranslationBehind(const XLATEOBJ* pxlo);
Brush* BrushBehind(const BRUSHOBJ* pbo);
Path* PathBehind(const PATHOBJ* ppo);
Text* TextBehind(const STROBJ* pstro);
Font* FontBehind(const FONTOBJ* pfo);
PaletteObject* PaletteBehind(const PALOBJ* ppalo);

// A number for iUniq: never 0, never given twice.
ULONG NextUniqueNumber();

} // namespace engine
