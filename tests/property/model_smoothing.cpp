#include "tests/property/model_smoothing.h"

namespace property {

namespace {

    // The quadrants of a junction by the signs of their block's direction from it.
    struct Quadrant {
        int x, y; // -1 or 0: the block's pixel, relative to the pixel right of and below the junction
        bool blockFirst; // the order in which its colours are compared
        int OutX() const { return x ? -1 : 1; }
        int OutY() const { return y ? -1 : 1; }
    };
    constexpr Quadrant LowerLeft = {-1, 0, true}, UpperRight = {0, -1, false};
    constexpr Quadrant UpperLeft = {-1, -1, true}, LowerRight = {0, 0, false};
    constexpr Quadrant Quadrants[] = {LowerLeft, UpperRight, UpperLeft, LowerRight};

    struct Legs {
        std::int64_t width, height;
        friend bool operator==(const Legs&, const Legs&) = default;
    };

    class Smoother {
    public:
        Smoother(Zoomer& zoomer, const Picture& source, const Rect& paint, const ColourChoice& choice)
            : zoomer_(zoomer)
            , source_(source)
            , paint_(Intersect(paint, zoomer.image.Bounds()))
            , choice_(choice)
            , original_(Intersect(zoomer.originalRect, source.Bounds()))
        {
        }

        void Run()
        {
            for (std::int64_t y = original_.top + 1; y < original_.bottom; ++y)
                for (std::int64_t x = original_.left + 1; x < original_.right; ++x) {
                    if (IsFlat(x, y) || !NearPaint(x, y))
                        continue;
                    if (zoomer_.improveFactor == 3)
                        LongCell(x, y);
                    else
                        Cell(x, y);
                }
        }

    private:
        ULONG At(std::int64_t x, std::int64_t y) const { return source_.At(x, y); }
        bool IsFlat(std::int64_t x, std::int64_t y) const
        {
            const ULONG colour = At(x, y);
            return colour == At(x - 1, y) && colour == At(x, y - 1) && colour == At(x - 1, y - 1);
        }
        std::int64_t JunctionX(std::int64_t x) const
        {
            return (x - zoomer_.originalRect.left) * zoomer_.xFactor + zoomer_.destRect.left;
        }
        std::int64_t JunctionY(std::int64_t y) const
        {
            return (y - zoomer_.originalRect.top) * zoomer_.yFactor + zoomer_.destRect.top;
        }
        // Only saves time.
        bool NearPaint(std::int64_t x, std::int64_t y) const
        {
            return Meets({JunctionX(x - 1), JunctionY(y - 1), JunctionX(x + 1), JunctionY(y + 1)}, paint_);
        }

        ULONG Choose(ULONG first, ULONG second) const { return choice_.Choose(first, second, zoomer_.darkerWins); }
        ULONG BlockColour(const Quadrant& q, std::int64_t x, std::int64_t y) const { return At(x + q.x, y + q.y); }
        // The colour that grows into the block, if it is on both sides of it.
        ULONG GrowingColour(const Quadrant& q, std::int64_t x, std::int64_t y) const
        {
            return At(x - 1 - q.x, y + q.y);
        }

        // The rule without corners and borders: the colour on both sides of the block may grow into it.
        bool Grows(const Quadrant& q, std::int64_t x, std::int64_t y) const
        {
            const ULONG block = BlockColour(q, x, y), colour = GrowingColour(q, x, y);
            if (colour != At(x + q.x, y - 1 - q.y) || colour == block)
                return false;
            const ULONG topLeft = At(x - 1, y - 1), topRight = At(x, y - 1), bottomLeft = At(x - 1, y),
                        bottomRight = At(x, y);
            const ULONG first = topLeft == topRight ? Choose(bottomLeft, bottomRight) : Choose(topLeft, topRight);
            if (first == colour)
                return false;
            return (q.blockFirst ? Choose(block, colour) : Choose(colour, block)) == block;
        }

        // The block's far sides belong to the original rectangle.
        bool IsInside(const Quadrant& q, std::int64_t x, std::int64_t y) const
        {
            return (q.x ? x - 2 >= original_.left : x + 1 < original_.right)
                && (q.y ? y - 2 >= original_.top : y + 1 < original_.bottom);
        }

        // The square corner of a shape: three pixels of one colour whose edges go on in it.
        bool IsSquareCorner(std::int64_t x, std::int64_t y) const
        {
            const ULONG topLeft = At(x - 1, y - 1), topRight = At(x, y - 1), bottomLeft = At(x - 1, y),
                        bottomRight = At(x, y);
            const bool above = y - 2 >= original_.top, left = x - 2 >= original_.left;
            const bool below = y + 1 < original_.bottom, right = x + 1 < original_.right;
            if (bottomLeft == topRight && topRight == bottomRight)
                return above && left && At(x, y - 2) == bottomLeft && At(x - 2, y) == bottomLeft;
            if (topLeft == topRight && topRight == bottomLeft)
                return below && right && At(x - 1, y + 1) == topLeft && At(x + 1, y - 1) == topLeft;
            if (topLeft == topRight && topRight == bottomRight)
                return left && below && At(x - 2, y - 1) == topLeft && At(x, y + 1) == topLeft;
            if (topLeft == bottomLeft && bottomLeft == bottomRight)
                return above && right && At(x - 1, y - 2) == topLeft && At(x + 1, y) == topLeft;
            return false;
        }

        void PaintPixel(std::int64_t x, std::int64_t y, ULONG colour)
        {
            if (paint_.Has(x, y))
                zoomer_.image.Set(x, y, colour);
        }
        // The pixel of the block that is `column` and `row` away from the junction's lines.
        void PaintInBlock(const Quadrant& q, std::int64_t x, std::int64_t y, std::int64_t column, std::int64_t row,
                          ULONG colour)
        {
            PaintPixel(q.x ? JunctionX(x) - 1 - column : JunctionX(x) + column,
                       q.y ? JunctionY(y) - 1 - row : JunctionY(y) + row, colour);
        }

        // Factors 1 and 2.
        void Cell(std::int64_t x, std::int64_t y)
        {
            const bool keepsCorners = zoomer_.improveFactor == 2;
            if (keepsCorners && IsSquareCorner(x, y))
                return;
            const std::int64_t side = std::min(zoomer_.xFactor, zoomer_.yFactor);
            for (const Quadrant& q : Quadrants) {
                if (!Grows(q, x, y) || (keepsCorners && !IsInside(q, x, y)))
                    continue;
                for (std::int64_t k = 0; k <= side - 2; ++k)
                    for (std::int64_t column = 0; column < side - 1 - k; ++column)
                        PaintInBlock(q, x, y, column, k, GrowingColour(q, x, y));
            }
        }

        // Factor 3: the window of a junction is whole.
        bool HasWindow(std::int64_t x, std::int64_t y) const
        {
            return x - 2 >= original_.left && y - 2 >= original_.top && x + 1 < original_.right
                && y + 1 < original_.bottom;
        }
        bool IsThin(const Quadrant& q, std::int64_t x, std::int64_t y) const
        {
            return At(x - 1 - q.x, y - 1 - q.y) != GrowingColour(q, x, y);
        }
        // The edge that the triangle lies on is two pixels thick, as far as the long leg reaches, and the other
        // edge ends there.
        bool IsShallowArea(const Quadrant& q, std::int64_t x, std::int64_t y) const
        {
            const std::int64_t row = y - 1 - q.y - q.OutY();
            const ULONG colour = GrowingColour(q, x, y);
            return At(x + q.x, row) == colour && At(x + q.x + q.OutX(), row) == colour
                && At(x - 1 - q.x, y + q.y + q.OutY()) != colour;
        }
        bool IsSteepArea(const Quadrant& q, std::int64_t x, std::int64_t y) const
        {
            const std::int64_t column = x - 1 - q.x - q.OutX();
            const ULONG colour = GrowingColour(q, x, y);
            return At(column, y + q.y) == colour && At(column, y + q.y + q.OutY()) == colour
                && At(x + q.x + q.OutX(), y - 1 - q.y) != colour;
        }
        Legs LegsOf(const Quadrant& q, std::int64_t x, std::int64_t y) const
        {
            const ULONG block = BlockColour(q, x, y), colour = GrowingColour(q, x, y);
            const bool sideways =
                At(x + q.x + q.OutX(), y - 1 - q.y) == colour && At(x + q.x + q.OutX(), y + q.y) == block;
            const bool upAndDown =
                At(x - 1 - q.x, y + q.y + q.OutY()) == colour && At(x + q.x, y + q.y + q.OutY()) == block;
            const std::int64_t width = zoomer_.xFactor, height = zoomer_.yFactor;
            if (sideways && !upAndDown && (IsThin(q, x, y) || IsShallowArea(q, x, y)))
                return {2 * width, height};
            if (upAndDown && !sideways && (IsThin(q, x, y) || IsSteepArea(q, x, y)))
                return {width, 2 * height};
            return {width, height};
        }
        void FillTriangle(const Quadrant& q, std::int64_t x, std::int64_t y, const Legs& legs, std::int64_t column0,
                          std::int64_t row0, ULONG colour)
        {
            for (std::int64_t row = 0; row < zoomer_.yFactor; ++row)
                for (std::int64_t column = 0; column < zoomer_.xFactor; ++column)
                    if ((2 * (column + column0) + 1) * legs.height + (2 * (row + row0) + 1) * legs.width
                        < 2 * legs.width * legs.height)
                        PaintInBlock(q, x, y, column, row, colour);
        }
        // The second half of a long leg that begins at the junction (stepX, stepY) away.
        void FarHalf(const Quadrant& q, std::int64_t x, std::int64_t y, int stepX, int stepY, const Legs& legs)
        {
            const std::int64_t nearX = x + stepX, nearY = y + stepY;
            if (!HasWindow(nearX, nearY) || !Grows(q, nearX, nearY) || LegsOf(q, nearX, nearY) != legs)
                return;
            FillTriangle(q, x, y, legs, stepX ? zoomer_.xFactor : 0, stepY ? zoomer_.yFactor : 0,
                         GrowingColour(q, nearX, nearY));
        }
        void LongCell(std::int64_t x, std::int64_t y)
        {
            if (!HasWindow(x, y))
                return;
            const std::int64_t width = zoomer_.xFactor, height = zoomer_.yFactor;
            for (const Quadrant& q : Quadrants) {
                if (Grows(q, x, y) && !IsSquareCorner(x, y))
                    FillTriangle(q, x, y, LegsOf(q, x, y), 0, 0, GrowingColour(q, x, y));
                FarHalf(q, x, y, -q.OutX(), 0, {2 * width, height});
                FarHalf(q, x, y, 0, -q.OutY(), {width, 2 * height});
            }
        }

        Zoomer& zoomer_;
        const Picture& source_;
        const Rect paint_;
        const ColourChoice& choice_;
        const Rect original_;
    };

} // namespace

void Smooth(Zoomer& zoomer, const Picture& source, const Rect& paint, const ColourChoice& choice)
{
    if (zoomer.improveFactor < 1 || zoomer.improveFactor > 3 || zoomer.xFactor < 2 || zoomer.yFactor < 2
        || source.Bits() == 1)
        return;
    Smoother(zoomer, source, paint, choice).Run();
}

} // namespace property
