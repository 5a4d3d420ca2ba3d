#include "magnifier/rectangle.h"

#include "driver/debug_print.h"

namespace koru {

namespace {

    // Pieces of B outside of A, their sides named by the edges of the two rectangles.
    enum Edge : BYTE { BFirst, AFirst, ALast, BLast }; // left or top, right or bottom
    struct Piece {
        Edge left, top, right, bottom;
    };
    struct Cutting {
        ULONG count;
        Piece pieces[4];
    };

    constexpr Piece TopBand = {BFirst, BFirst, BLast, AFirst};
    constexpr Piece TopBandRightOfLeft = {AFirst, BFirst, BLast, AFirst};
    constexpr Piece BottomBand = {BFirst, ALast, BLast, BLast};
    constexpr Piece BottomBandToRight = {BFirst, ALast, ALast, BLast};
    constexpr Piece BottomBandRightOfLeft = {AFirst, ALast, BLast, BLast};
    constexpr Piece BottomBandBetween = {AFirst, ALast, ALast, BLast};
    constexpr Piece LeftBand = {BFirst, BFirst, AFirst, BLast};
    constexpr Piece LeftMiddle = {BFirst, AFirst, AFirst, ALast};
    constexpr Piece RightBand = {ALast, BFirst, BLast, BLast};
    constexpr Piece RightBelowTop = {ALast, AFirst, BLast, BLast};
    constexpr Piece RightMiddle = {ALast, AFirst, BLast, ALast};
    constexpr Piece RightAboveBottom = {ALast, BFirst, BLast, ALast};

    // Where B begins: a, left of and above A; b, above; c, left; d, inside.
    constexpr ULONG StartsInColumns = 1, StartsInRows = 2;
    // Where it ends.
    constexpr ULONG EndsRightOf = 1, EndsBelow = 2;

    // The order of the pieces is the order of painting, and one path paints the first of them alone.
    constexpr Cutting Cuttings[4][4] = {
        {
            {2, {LeftBand, TopBandRightOfLeft}},
            {3, {LeftBand, TopBandRightOfLeft, RightBelowTop}},
            {3, {TopBand, LeftMiddle, BottomBand}},
            {4, {TopBand, LeftMiddle, BottomBand, RightMiddle}},
        },
        {
            {1, {TopBand}},
            {2, {TopBand, RightBelowTop}},
            {2, {TopBand, BottomBand}},
            {3, {TopBand, RightBelowTop, BottomBandToRight}},
        },
        {
            {1, {LeftBand}},
            {2, {LeftBand, RightBand}},
            {2, {LeftBand, BottomBandRightOfLeft}},
            {3, {LeftBand, BottomBandBetween, RightBand}},
        },
        {
            {0, {}},
            {1, {RightBand}},
            {1, {BottomBand}},
            {2, {BottomBand, RightAboveBottom}},
        },
    };

    ULONG ReportNoSubcase(ULONG start, const RECTL& a, const RECTL& b)
    {
        static constexpr const char* messages[] = {"case a no subcase.\n", "case b no subcase.\n",
                                                   "case c no subcase.\n", "case d no subcase.\n"};
        DebugPrint(messages[start]);
        DebugPrint("%d %d %d %d, %d %d %d %d\n", a.left, a.top, a.right, a.bottom, b.left, b.top, b.right, b.bottom);
        return 0;
    }

    LONG Smaller(LONG a, LONG b)
    {
        return a < b ? a : b;
    }
    LONG Larger(LONG a, LONG b)
    {
        return a > b ? a : b;
    }

} // namespace

bool IntersectRect(RECTL& result, const RECTL& a, const RECTL& b)
{
    const RECTL common = {Larger(a.left, b.left), Larger(a.top, b.top), Smaller(a.right, b.right),
                          Smaller(a.bottom, b.bottom)};
    const bool any = !IsEmpty(common);
    result = any ? common : NoRectangle;
    return any;
}

bool DoMeet(const RECTL& a, const RECTL& b)
{
    RECTL common;
    return IntersectRect(common, a, b);
}

RECTL UnionRect(const RECTL& a, const RECTL& b)
{
    return {Smaller(a.left, b.left), Smaller(a.top, b.top), Larger(a.right, b.right), Larger(a.bottom, b.bottom)};
}

RECTL JoinRect(const RECTL& a, const RECTL& b)
{
    if (IsEmpty(a))
        return IsEmpty(b) ? NoRectangle : b;
    return IsEmpty(b) ? a : UnionRect(a, b);
}

RECTL InflateRect(const RECTL& r, LONGLONG dx, LONGLONG dy)
{
    return {Held(LONGLONG{r.left} - dx), Held(LONGLONG{r.top} - dy), Held(LONGLONG{r.right} + dx),
            Held(LONGLONG{r.bottom} + dy)};
}

RECTL OrderedRect(const RECTL& r)
{
    return {Smaller(r.left, r.right), Smaller(r.top, r.bottom), Larger(r.left, r.right), Larger(r.top, r.bottom)};
}

ULONG SubtractRect(const RECTL& hole, const RECTL& drawn, RECTL pieces[4])
{
    if (!DoMeet(hole, drawn)) {
        pieces[0] = drawn;
        return 1;
    }
    const RECTL a = OrderedRect(hole);
    const RECTL b = OrderedRect(drawn);
    const ULONG start = (b.left >= a.left ? StartsInColumns : 0) + (b.top >= a.top ? StartsInRows : 0);
    if (b.right <= a.left || b.bottom <= a.top)
        return ReportNoSubcase(start, a, b);
    const ULONG end = (b.right > a.right ? EndsRightOf : 0) + (b.bottom > a.bottom ? EndsBelow : 0);

    const LONG columns[] = {b.left, a.left, a.right, b.right};
    const LONG rows[] = {b.top, a.top, a.bottom, b.bottom};
    const Cutting& cutting = Cuttings[start][end];
    for (ULONG i = 0; i < cutting.count; ++i) {
        const Piece& piece = cutting.pieces[i];
        pieces[i] = {columns[piece.left], rows[piece.top], columns[piece.right], rows[piece.bottom]};
    }
    return cutting.count;
}

} // namespace koru
