#include "tests/unit/magnifier/pictures.h"

#include <algorithm>
#include <iterator>
#include <ostream>
#include <stdexcept>

namespace pictures {

namespace {

    struct Letter {
        char letter;
        ULONG pixels[6]; // by Form
    };
    constexpr Letter Letters[] = {
        {'.', {0, 0, 0x0000, 0x0000, 0x000000, 0x000000}},    {'W', {15, 255, 0xFFFF, 0x7FFF, 0xFFFFFF, 0xFFFFFF}},
        {'R', {9, 249, 0xF800, 0x7C00, 0xFF0000, 0xFF0000}},  {'G', {10, 250, 0x07E0, 0x03E0, 0x00FF00, 0x00FF00}},
        {'B', {12, 252, 0x001F, 0x001F, 0x0000FF, 0x0000FF}}, {'N', {4, 4, 0x0010, 0x0010, 0x000080, 0x000080}},
        {'K', {7, 248, 0x8410, 0x4210, 0x808080, 0x808080}},  {'S', {8, 7, 0xC618, 0x6318, 0xC0C0C0, 0xC0C0C0}},
        {'T', {6, 6, 0x0410, 0x0210, 0x008080, 0x008080}},    {'Y', {11, 251, 0xFFE0, 0x7FE0, 0xFFFF00, 0xFFFF00}},
        {'M', {1, 1, 0x8000, 0x4000, 0x800000, 0x800000}},
    };

    char LetterOf(ULONG pixel, Form form)
    {
        if (form == Form::Bits32) // white painted by a raster operation has all bits set
            pixel &= 0xFFFFFF;
        if (form == Form::Bits555)
            pixel &= 0x7FFF;
        for (const Letter& letter : Letters)
            if (letter.pixels[static_cast<int>(form)] == pixel)
                return letter.letter;
        return '?';
    }

    std::size_t LineLength(const std::string& picture)
    {
        return picture.find('\n') + 1;
    }

    char& PixelAt(std::string& picture, LONG x, LONG y)
    {
        return picture.at(y * LineLength(picture) + x);
    }

} // namespace

std::string NameOf(Form form)
{
    constexpr const char* names[] = {"Bits4", "Bits8", "Bits565", "Bits555", "Bits24", "Bits32"};
    return names[static_cast<int>(form)];
}

ULONG FormatOf(Form form)
{
    constexpr ULONG formats[] = {BMF_4BPP, BMF_8BPP, BMF_16BPP, BMF_16BPP, BMF_24BPP, BMF_32BPP};
    return formats[static_cast<int>(form)];
}

engine::PixelLayout LayoutOf(Form form)
{
    return form == Form::Bits555 ? engine::PixelLayout::FiveFiveFive() : engine::PixelLayout::Default(FormatOf(form));
}

ULONG DepthOf(Form form)
{
    constexpr ULONG depths[] = {4, 8, 16, 15, 24, 32};
    return depths[static_cast<int>(form)];
}

ULONG PixelOf(char letter, Form form)
{
    const auto found = std::ranges::find(Letters, letter, &Letter::letter);
    if (found == std::end(Letters))
        throw std::invalid_argument(std::string("no colour for ") + letter);
    return found->pixels[static_cast<int>(form)];
}

std::string Lines(std::initializer_list<const char*> lines)
{
    std::string picture;
    for (const char* const line : lines)
        picture += std::string(line) + '\n';
    return picture;
}

std::string Filled(LONG width, LONG height, char letter)
{
    std::string picture;
    for (LONG y = 0; y < height; ++y)
        picture += std::string(width, letter) + '\n';
    return picture;
}

std::string Stretched(const std::string& picture, LONG xFactor, LONG yFactor)
{
    std::string stretched;
    for (std::size_t start = 0; start < picture.size(); start += LineLength(picture)) {
        std::string line;
        for (std::size_t i = start; picture[i] != '\n'; ++i)
            line += std::string(xFactor, picture[i]);
        for (LONG i = 0; i < yFactor; ++i)
            stretched += line + '\n';
    }
    return stretched;
}

std::string Part(const std::string& picture, const RECTL& rectangle)
{
    std::string part;
    for (LONG y = rectangle.top; y < rectangle.bottom; ++y)
        part += picture.substr(y * LineLength(picture) + rectangle.left, rectangle.right - rectangle.left) + '\n';
    return part;
}

std::string WithRectangle(std::string picture, const RECTL& rectangle, char letter)
{
    for (LONG y = rectangle.top; y < rectangle.bottom; ++y)
        for (LONG x = rectangle.left; x < rectangle.right; ++x)
            PixelAt(picture, x, y) = letter;
    return picture;
}

std::string WithPicture(std::string picture, LONG x, LONG y, const std::string& other)
{
    const SIZEL size = SizeOf(other);
    for (LONG row = 0; row < size.cy; ++row)
        for (LONG column = 0; column < size.cx; ++column)
            PixelAt(picture, x + column, y + row) = other[row * LineLength(other) + column];
    return picture;
}

std::string Swapped(std::string picture, char one, char other)
{
    for (char& letter : picture)
        letter = letter == one ? other : letter == other ? one : letter;
    return picture;
}

std::string RandomPicture(std::mt19937& random, LONG width, LONG height, const std::string& letters)
{
    std::string picture = Filled(width, height, '.');
    for (char& letter : picture)
        if (letter != '\n')
            letter = letters[random() % letters.size()];
    return picture;
}

SIZEL SizeOf(const std::string& picture)
{
    const std::size_t length = LineLength(picture);
    return {static_cast<LONG>(length - 1), static_cast<LONG>(picture.size() / length)};
}

engine::Surface* MakeSurface(const std::string& picture, Form form, LONG lDelta)
{
    engine::Surface* const surface = engine::MakeBitmap(SizeOf(picture), LayoutOf(form), lDelta);
    Paint(*surface, 0, 0, picture, form);
    return surface;
}

void Paint(engine::Surface& surface, LONG x, LONG y, const std::string& picture, Form form)
{
    const SIZEL size = SizeOf(picture);
    for (LONG row = 0; row < size.cy; ++row)
        for (LONG column = 0; column < size.cx; ++column)
            surface.SetPixel(x + column, y + row, PixelOf(picture[row * LineLength(picture) + column], form));
}

std::string PictureOf(const engine::Surface& surface, Form form)
{
    return PictureOf(surface, form, surface.Bounds());
}

std::string PictureOf(const engine::Surface& surface, Form form, const RECTL& rectangle)
{
    std::string picture;
    for (LONG y = rectangle.top; y < rectangle.bottom; ++y) {
        for (LONG x = rectangle.left; x < rectangle.right; ++x)
            picture += LetterOf(surface.Pixel(x, y), form);
        picture += '\n';
    }
    return picture;
}

engine::Surface& SurfaceBehind(HSURF surface)
{
    engine::Surface* const found = engine::FindSurface(surface);
    if (!found)
        throw std::invalid_argument("not a surface");
    return *found;
}

} // namespace pictures

bool operator==(const RECTL& a, const RECTL& b)
{
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

bool operator==(const POINTL& a, const POINTL& b)
{
    return a.x == b.x && a.y == b.y;
}

bool operator==(const SIZEL& a, const SIZEL& b)
{
    return a.cx == b.cx && a.cy == b.cy;
}

std::ostream& operator<<(std::ostream& out, const RECTL& r)
{
    return out << '(' << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom << ')';
}

std::ostream& operator<<(std::ostream& out, const POINTL& p)
{
    return out << '(' << p.x << ", " << p.y << ')';
}
