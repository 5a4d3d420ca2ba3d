#include "tests/property/model_cursor.h"

namespace property {

namespace {

    bool SameLayout(const Format& first, const Format& second)
    {
        return first.bits == second.bits;
    }

    // One bit shows by luminance, other formats as usual.
    ULONG Shown(const Format& format, const Colour& colour)
    {
        if (format.bits == 1)
            return 299 * colour.red + 587 * colour.green + 114 * colour.blue >= 128 * 1000;
        return PixelOf(format, colour);
    }

    // Of a premultiplied component over a background.
    ULONG Over(ULONG component, ULONG background, ULONG alpha)
    {
        return std::min<ULONG>(255, component + (background * (255 - alpha) + 127) / 255);
    }

    ULONG Unmultiplied(ULONG component, ULONG alpha)
    {
        return std::min<ULONG>(255, component * 255 / alpha);
    }

} // namespace

Rect Cursor::SetShape(const Shape& shape, const Point& hotSpot, LONG x, LONG y)
{
    const Rect before = rect_;
    shape_ = shape;
    hotSpot_ = hotSpot;
    width_ = height_ = 0;
    if (shape.mask) {
        width_ = shape.mask->Bounds().right;
        height_ = shape.mask->Bounds().bottom / 2;
    }
    if (shape.colours) {
        width_ = shape.colours->pixels.Bounds().right;
        height_ = shape.colours->pixels.Bounds().bottom;
    }
    PlaceAt(x, y < 0 ? y + static_cast<LONG>(screen_.bottom) : y);
    return Intersect(Join(before, rect_), screen_);
}

Rect Cursor::Move(LONG x, LONG y)
{
    const Rect before = rect_;
    PlaceAt(x, y < 0 ? y + static_cast<LONG>(screen_.bottom) : y);
    return Intersect(Join(before, rect_), screen_);
}

void Cursor::PlaceAt(LONG x, LONG y)
{
    rect_ = {};
    if (x < 0)
        return;
    const Rect place = Rect(0, 0, width_, height_).Moved(x - hotSpot_.x, y - hotSpot_.y);
    if (!place.IsEmpty())
        rect_ = place;
}

void Cursor::DrawOn(Picture& picture) const
{
    const Rect part = OnScreen();
    for (std::int64_t y = part.top; y < part.bottom; ++y)
        for (std::int64_t x = part.left; x < part.right; ++x)
            picture.Set(x, y, Mixed(x - rect_.left, y - rect_.top, picture.At(x, y)));
}

ULONG Cursor::Mixed(std::int64_t x, std::int64_t y, ULONG background) const
{
    if (!shape_.colours)
        return MixedMonochrome(x, y, background);
    if (shape_.mask)
        return MixedMasked(x, y, background);
    return shape_.colours->format.bits == 32 ? MixedAlpha(shape_.colours->pixels.At(x, y), background) : background;
}

ULONG Cursor::MixedMonochrome(std::int64_t x, std::int64_t y, ULONG background) const
{
    const bool keeps = shape_.mask->At(x, y) != 0, flips = shape_.mask->At(x, y + height_) != 0;
    if (keeps)
        return flips ? ~background : background;
    return flips ? 0xFFFFFFFF : 0;
}

ULONG Cursor::ValueOf(ULONG raw) const
{
    const ShapeColours& colours = *shape_.colours;
    if (colours.table)
        return raw < colours.table->size() ? (*colours.table)[raw] : 0;
    if (SameLayout(colours.format, format_) || colours.format.bits <= 8)
        return raw;
    return Shown(format_, ColourOf(colours.format, raw));
}

ULONG Cursor::MixedMasked(std::int64_t x, std::int64_t y, ULONG background) const
{
    const ULONG raw = shape_.colours->pixels.At(x, y);
    const bool inMask = shape_.mask->Has(x, y) && y < shape_.mask->Bounds().bottom / 2;
    if (inMask && shape_.mask->At(x, y) == 0)
        return ValueOf(raw);
    return raw == 0 ? background : background ^ (ValueOf(raw) & 0xFFFFFF);
}

ULONG Cursor::MixedAlpha(ULONG pixel, ULONG background) const
{
    const Colour colour = ColourOf({32, 32}, pixel);
    const ULONG alpha = pixel >> 24;
    if (alpha == 0 && (pixel & 0xFFFFFF) == 0)
        return background;
    if (format_.bits <= 8) {
        if (alpha < 128)
            return background;
        const Colour full = {Unmultiplied(colour.red, alpha), Unmultiplied(colour.green, alpha),
                             Unmultiplied(colour.blue, alpha)};
        return Shown(format_, full);
    }
    const Colour under = ColourOf(format_, background);
    const ULONG unused = format_.bits == 32 ? background & 0xFF000000 : 0;
    return unused
        | PixelOf(format_,
                  {Over(colour.red, under.red, alpha), Over(colour.green, under.green, alpha),
                   Over(colour.blue, under.blue, alpha)});
}

} // namespace property
