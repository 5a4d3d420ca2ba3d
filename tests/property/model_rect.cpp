#include "tests/property/model_rect.h"

namespace property {

RECTL Rect::ToRectl() const
{
    return {static_cast<LONG>(left), static_cast<LONG>(top), static_cast<LONG>(right), static_cast<LONG>(bottom)};
}

Rect Intersect(const Rect& first, const Rect& second)
{
    const Rect common = {std::max(first.left, second.left), std::max(first.top, second.top),
                         std::min(first.right, second.right), std::min(first.bottom, second.bottom)};
    return common.IsEmpty() ? Rect() : common;
}

bool Meets(const Rect& first, const Rect& second)
{
    return !Intersect(first, second).IsEmpty();
}

Rect Union(const Rect& first, const Rect& second)
{
    return {std::min(first.left, second.left), std::min(first.top, second.top), std::max(first.right, second.right),
            std::max(first.bottom, second.bottom)};
}

Rect Join(const Rect& first, const Rect& second)
{
    if (first.IsEmpty())
        return second.IsEmpty() ? Rect() : second;
    return second.IsEmpty() ? first : Union(first, second);
}

namespace {

    // Pieces as their four edges: small letters are edges of the rectangle that is cut, capitals those of
    // the hammer. Which piece comes first decides what the path with one zoomer shows.
    const std::vector<const char*> Pieces[2][2][2][2] = {
        // starts inside the hammer's rows and columns; [beyond its right edge][below its bottom edge]
        {{{{}, {"lBrb"}}, {{"Rtrb"}, {"lBrb", "RtrB"}}},
         // starts to the left, inside its rows
         {{{"ltLb"}, {"ltLb", "LBrb"}}, {{"ltLb", "Rtrb"}, {"ltLb", "LBRb", "Rtrb"}}}},
        // starts above, inside its columns
        {{{{"ltrT"}, {"ltrT", "lBrb"}}, {{"ltrT", "RTrb"}, {"ltrT", "RTrb", "lBRb"}}},
         // starts above and to the left
         {{{"ltLb", "LtrT"}, {"ltrT", "lTLB", "lBrb"}}, {{"ltLb", "LtrT", "RTrb"}, {"ltrT", "lTLB", "lBrb", "RTrB"}}}},
    };

    std::int64_t Edge(char letter, const Rect& hammer, const Rect& from)
    {
        const Rect& rect = letter >= 'a' ? from : hammer;
        switch (letter | 0x20) {
        case 'l':
            return rect.left;
        case 't':
            return rect.top;
        case 'r':
            return rect.right;
        default:
            return rect.bottom;
        }
    }

} // namespace

std::vector<Rect> Subtract(const Rect& hammer, const Rect& from)
{
    if (!Meets(hammer, from))
        return {from};
    std::vector<Rect> result;
    for (const char* piece :
         Pieces[from.top < hammer.top][from.left < hammer.left][from.right > hammer.right][from.bottom > hammer.bottom])
        result.push_back({Edge(piece[0], hammer, from), Edge(piece[1], hammer, from), Edge(piece[2], hammer, from),
                          Edge(piece[3], hammer, from)});
    return result;
}

std::string ToString(const Rect& rect)
{
    return "{" + std::to_string(rect.left) + ", " + std::to_string(rect.top) + ", " + std::to_string(rect.right) + ", "
        + std::to_string(rect.bottom) + "}";
}

} // namespace property
