#include "engine/gdi/text.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "engine/core/calls.h"
#include "engine/gdi/bytes.h"
#include "engine/gdi/shapes.h"

namespace engine::gdi {

namespace {

    // Bits of all glyphs of a call; longer strings are drawn as outlines, one after the other.
    constexpr double MostGlyphBits = 1 << 26;

    PointD operator+(PointD a, PointD b)
    {
        return {a.x + b.x, a.y + b.y};
    }
    PointD operator*(PointD a, double by)
    {
        return {a.x * by, a.y * by};
    }

    // Turned counterclockwise as one sees it, the y axis pointing down.
    PointD Turned(PointD vector, double tenthsOfDegrees)
    {
        const double angle = tenthsOfDegrees * std::numbers::pi / 1800;
        const double c = std::cos(angle), s = std::sin(angle);
        return {vector.x * c + vector.y * s, vector.y * c - vector.x * s};
    }

    // What turning by a right angle leaves of a zero.
    PointD WithoutDust(PointD vector)
    {
        const double dust = (std::fabs(vector.x) + std::fabs(vector.y)) * 1e-9;
        return {std::fabs(vector.x) < dust ? 0 : vector.x, std::fabs(vector.y) < dust ? 0 : vector.y};
    }

    TextScale ScaleOf(const DeviceContext& dc, bool advanced)
    {
        const double turn = dc.Now().font.lfEscapement % 3600;
        const Transform toDevice = dc.ToDevice();
        if (!advanced) {
            // Only sizes follow the coordinates; where these are mirrored angles count the other way round.
            const double x = std::hypot(toDevice.m11, toDevice.m12), y = std::hypot(toDevice.m21, toDevice.m22);
            const double angle = toDevice.Determinant() < 0 ? -turn : turn;
            return {WithoutDust(Turned({x, 0}, angle)), WithoutDust(Turned({0, y}, angle))};
        }
        // Where the page counts upwards letters still stand on their feet.
        const double down = dc.Now().mapping.PageToDevice().m22 < 0 ? -1 : 1;
        const PointD along = Turned({1, 0}, turn), feet = Turned({0, 1}, turn);
        return {WithoutDust(toDevice.Along({along.x, along.y * down})),
                WithoutDust(toDevice.Along({feet.x, feet.y * down}))};
    }

    class TextDrawer {
    public:
        TextDrawer(DeviceContext& dc, const TextLine& line)
            : dc_(dc)
            , line_(line)
            , scale_(ScaleOf(dc, line.advanced))
            , font_(dc.Fonts().Realize(dc.Now().font, scale_))
        {
        }

        void Draw();

    private:
        void PlaceGlyphs();
        void PlaceBaseline();
        double OwnAdvance(ULONG glyph, char16_t character) const;
        PointD At(double along, double down) const { return baseline_ + scale_.along * along + scale_.down * down; }
        RECTL PixelBox(double top, double bottom) const;
        void FillPixels(const RECTL& pixels);
        void FillBox(double top, double bottom, COLORREF colour);
        void DrawRuleBoxes();
        void DrawOutlines();
        void DrawGlyphs(const std::optional<RECTL>& opaque);
        void AddGlyphs(Text& text);
        std::vector<RECTL> Rules() const;
        std::optional<RECTL> Background();

        DeviceContext& dc_;
        const TextLine& line_;
        TextScale scale_;
        RealizedFont& font_;
        PointD baseline_; // of the first character, in pixels
        double width_ = 0; // logical
        std::vector<ULONG> glyphs_;
        std::vector<PointD> positions_; // along and down from the baseline's start, logical
    };

    // Where letters stand upright their own widths are whole pixels, as their bitmaps are.
    double TextDrawer::OwnAdvance(ULONG glyph, char16_t character) const
    {
        const double extra = character == u' ' ? dc_.Now().breakExtra : 0;
        const double advance = font_.Advance(glyph);
        if (!scale_.IsHorizontal())
            return advance + extra;
        return std::round(advance * scale_.along.x) / scale_.along.x + extra;
    }

    void TextDrawer::PlaceGlyphs()
    {
        const bool pairs = (line_.options & ETO_PDY) != 0;
        const std::size_t step = pairs ? 2 : 1;
        double down = 0;
        for (std::size_t i = 0; i < line_.text.size(); ++i) {
            const ULONG glyph = font_.GlyphOf(line_.text[i]);
            glyphs_.push_back(glyph);
            positions_.push_back({width_, down});
            const bool given = (i + 1) * step <= line_.advances.size();
            width_ += given ? line_.advances[i * step] : OwnAdvance(glyph, line_.text[i]);
            if (given && pairs)
                down -= line_.advances[i * step + 1];
        }
    }

    void TextDrawer::PlaceBaseline()
    {
        const ULONG align = dc_.Now().textAlign;
        const PointD given = {static_cast<double>(line_.reference.x), static_cast<double>(line_.reference.y)};
        const PointD reference = align & TA_UPDATECP ? dc_.Now().position : given;
        const ULONG across = align & TA_CENTER;
        const double back = across == TA_CENTER ? width_ / 2 : across == TA_RIGHT ? width_ : 0;
        const ULONG vertical = align & TA_BASELINE;
        const double drop = vertical == TA_BASELINE ? 0 : vertical == TA_BOTTOM ? -font_.Descent() : font_.Ascent();
        baseline_ = dc_.Map(reference) + scale_.along * -back + scale_.down * drop;
        if (scale_.IsHorizontal())
            baseline_ = {std::floor(baseline_.x + 0.5), std::floor(baseline_.y + 0.5)};
        if (align & TA_UPDATECP && across != TA_CENTER) {
            const double ahead = across == TA_RIGHT ? -width_ : width_;
            dc_.Now().position = reference + Turned({ahead, 0}, dc_.Now().font.lfEscapement % 3600);
        }
    }

    // From the start to the end of upright text.
    RECTL TextDrawer::PixelBox(double top, double bottom) const
    {
        const POINTL first = ToPixel(At(0, top)), last = ToPixel(At(width_, bottom));
        return Ordered({first.x, first.y, last.x, last.y});
    }

    void TextDrawer::FillPixels(const RECTL& pixels)
    {
        LogicalBrush brush;
        brush.colour = dc_.Now().backColour;
        FillRectangle(dc_, pixels, brush, R2_COPYPEN);
    }

    void TextDrawer::FillBox(double top, double bottom, COLORREF colour)
    {
        Outline outline;
        outline.MoveTo(ToFix(At(0, top)));
        outline.LineTo(ToFix(At(width_, top)));
        outline.LineTo(ToFix(At(width_, bottom)));
        outline.LineTo(ToFix(At(0, bottom)));
        outline.Close();
        if (dc_.Bracket().IsOpen())
            dc_.Bracket().Building().Append(outline);
        else
            FillOutline(dc_, outline, colour);
    }

    void TextDrawer::DrawRuleBoxes()
    {
        if (dc_.Now().font.lfUnderline)
            FillBox(font_.UnderlineTop(), font_.UnderlineTop() + font_.UnderlineSize(), dc_.Now().textColour);
        if (dc_.Now().font.lfStrikeOut)
            FillBox(font_.StrikeoutTop(), font_.StrikeoutTop() + font_.StrikeoutSize(), dc_.Now().textColour);
    }

    // Underline and strike-out of upright text: at least one pixel high.
    std::vector<RECTL> TextDrawer::Rules() const
    {
        std::vector<RECTL> rules;
        const auto add = [&](bool wanted, double top, double size) {
            RECTL rule = PixelBox(top, top + size);
            rule.bottom = std::max(rule.bottom, rule.top + 1);
            if (wanted && !IsEmpty(rule))
                rules.push_back(rule);
        };
        if (!scale_.IsHorizontal())
            return rules;
        add(dc_.Now().font.lfUnderline, font_.UnderlineTop(), font_.UnderlineSize());
        add(dc_.Now().font.lfStrikeOut, font_.StrikeoutTop(), font_.StrikeoutSize());
        return rules;
    }

    void TextDrawer::DrawOutlines()
    {
        for (std::size_t i = 0; i < glyphs_.size(); ++i) {
            Outline outline;
            font_.AddOutline(glyphs_[i], At(positions_[i].x, positions_[i].y), outline);
            if (dc_.Bracket().IsOpen())
                dc_.Bracket().Building().Append(outline);
            else
                FillOutline(dc_, outline, dc_.Now().textColour);
        }
        DrawRuleBoxes();
    }

    void TextDrawer::AddGlyphs(Text& text)
    {
        text.rclBkGround = scale_.IsHorizontal() ? PixelBox(-font_.Ascent(), font_.Descent()) : RECTL{};
        for (std::size_t i = 0; i < glyphs_.size(); ++i) {
            const GlyphBitmap& glyph = font_.Bitmap(glyphs_[i]);
            const POINTL position = ToPixel(At(positions_[i].x, positions_[i].y));
            text.AddGlyph(glyphs_[i], position, glyph.origin, glyph.size, glyph.bits);
            const LONG left = position.x + glyph.origin.x, top = position.y + glyph.origin.y;
            text.rclBkGround = Around(text.rclBkGround, {left, top, left + glyph.size.cx, top + glyph.size.cy});
        }
        text.SetString(line_.text);
        const bool ownWidths = line_.advances.empty();
        text.flAccel = (scale_.IsHorizontal() ? SO_HORIZONTAL : 0) | (ownWidths ? SO_FLAG_DEFAULT_PLACEMENT : 0);
        if (ownWidths && scale_.IsHorizontal() && font_.IsFixedPitch() && dc_.Now().breakExtra == 0)
            text.ulCharInc = static_cast<ULONG>(ToLong(font_.Advance(glyphs_[0]) * scale_.along.x));
    }

    void TextDrawer::DrawGlyphs(const std::optional<RECTL>& opaque)
    {
        Text text;
        AddGlyphs(text);
        std::vector<RECTL> rules = Rules();
        RECTL bounds = text.rclBkGround;
        for (const RECTL& rule : rules)
            bounds = Around(bounds, rule);
        if (opaque)
            bounds = Around(bounds, *opaque);
        CallClip clip = dc_.ClipOf(bounds);
        if (clip.IsEmpty())
            return;
        rules.push_back({0, 0, 0, 0}); // the end of the list
        Brush fore = Brush::Solid(dc_.Pixel(dc_.Now().textColour));
        Brush back = Brush::Solid(dc_.Pixel(dc_.Now().backColour));
        RECTL opaqueRectangle = opaque ? *opaque : RECTL{};
        // Only the string's own rectangle goes without saying.
        const bool more = opaque || rules.size() > 1;
        CallTextOut(dc_.Surface(), &text, &font_.Object(), more ? clip.Always() : clip.IfHidden(),
                    rules.size() > 1 ? rules.data() : nullptr, opaque ? &opaqueRectangle : nullptr, &fore,
                    opaque ? &back : nullptr, dc_.BrushOrigin(), R2_COPYPEN | R2_COPYPEN << 8);
    }

    // What to fill behind the glyphs in the same call: the rectangle given or the place of upright text,
    // whichever holds the other. What that leaves out is filled at once.
    std::optional<RECTL> TextDrawer::Background()
    {
        std::optional<RECTL> opaque;
        const bool behindText = dc_.Now().backMode == OPAQUE && !glyphs_.empty();
        if (behindText && scale_.IsHorizontal())
            opaque = PixelBox(-font_.Ascent(), font_.Descent());
        if (line_.options & ETO_OPAQUE) {
            const RECTL given = dc_.RegionOf(line_.rectangle).Bounds();
            if (!glyphs_.empty() && (!opaque || IsInside(*opaque, given)))
                opaque = given;
            else
                FillPixels(given);
        }
        if (behindText && !scale_.IsHorizontal())
            FillBox(-font_.Ascent(), font_.Descent(), dc_.Now().backColour);
        return opaque && !IsEmpty(*opaque) ? opaque : std::nullopt;
    }

    void TextDrawer::Draw()
    {
        PlaceGlyphs();
        PlaceBaseline();
        if (dc_.Bracket().IsOpen())
            return DrawOutlines();
        const std::optional<RECTL> opaque = Background();
        if (glyphs_.empty())
            return;
        const double bits = font_.PixelsPerEm() * font_.PixelsPerEm() * static_cast<double>(glyphs_.size());
        if (font_.IsLarge() || bits > MostGlyphBits) {
            if (opaque)
                FillPixels(*opaque);
            return DrawOutlines();
        }
        DrawGlyphs(opaque);
        if (!scale_.IsHorizontal())
            DrawRuleBoxes();
    }

    // Puts the clip back when the text is drawn.
    class ClipHold {
    public:
        explicit ClipHold(DeviceContext& dc)
            : dc_(dc)
            , clip_(dc.Now().clip)
        {
        }
        ~ClipHold() { dc_.SetClip(clip_); }
        ClipHold(const ClipHold&) = delete;
        ClipHold& operator=(const ClipHold&) = delete;

    private:
        DeviceContext& dc_;
        std::shared_ptr<const Region> clip_;
    };

} // namespace

void DrawText(DeviceContext& dc, const TextLine& line)
{
    if (line.options & ETO_GLYPH_INDEX)
        throw CannotPlay("glyph numbers instead of characters");
    if (dc.ToDevice().IsFlat())
        return;
    TextDrawer drawer(dc, line);
    if (!(line.options & ETO_CLIPPED))
        return drawer.Draw();
    const ClipHold hold(dc);
    dc.CombineClip(dc.RegionOf(line.rectangle), RGN_AND);
    drawer.Draw();
}

std::u16string FromCodePage1252(const std::string& text)
{
    constexpr char16_t special[] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
    std::u16string wide;
    for (const char c : text) {
        const auto byte = static_cast<BYTE>(c);
        wide.push_back(byte >= 0x80 && byte < 0xA0 ? special[byte - 0x80] : byte);
    }
    return wide;
}

} // namespace engine::gdi
