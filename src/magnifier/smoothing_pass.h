#pragma once

#include "magnifier/palette.h"
#include "magnifier/pixel_formats.h"

// What the smoothing kernels share. A junction is the point where four source pixels meet; its four
// quadrants are their blocks, and a triangle with its right angle at the junction is painted into one.
namespace koru {

struct SmoothPass {
    const BYTE* source; // topmost row
    BYTE* target;
    LONG sourceDelta, targetDelta;
    RECTL rclSrc; // pixels the pass may read
    POINTL origin; // where rclSrc's top left pixel's block lies in the target
    RECTL rclPaint; // of the target
    RECTL original; // originalRect as far as the source surface reaches
    LONG xFactor, yFactor;
    const BYTE* colourTable;
    ULONG pickColour;

    const BYTE* SourceRow(LONG y) const { return source + y * sourceDelta; }
    BYTE* TargetRow(LONG y) const { return target + y * targetDelta; }
};

// A quadrant by its pixels, as offsets from the pixel right of and below the junction, and by the
// direction in which its block lies. Which of two colours is asked for first matters where they are
// equally bright or one is unknown, and differs from quadrant to quadrant.
struct Quadrant {
    POINTL block; // painted
    POINTL sameRow;
    POINTL sameColumn;
    POINTL opposite;
    POINTL outward;
    bool blockAskedFirst; // choose(block, sameRow), else choose(sameColumn, block)
};

constexpr Quadrant Quadrants[] = {
    {{-1, 0}, {0, 0}, {-1, -1}, {0, -1}, {-1, 1}, true}, // lower left
    {{0, -1}, {-1, -1}, {0, 0}, {-1, 0}, {1, -1}, false}, // upper right
    {{-1, -1}, {0, -1}, {-1, 0}, {0, 0}, {-1, -1}, true}, // upper left
    {{0, 0}, {-1, 0}, {0, -1}, {-1, -1}, {1, 1}, false}, // lower right
};

struct Legs {
    LONG width, height; // of the triangle, in target pixels
};

// Columns of a triangle's row whose centres lie inside it, counted from the junction's line.
constexpr LONG ColumnsInside(const Legs& legs, LONG column, LONG row)
{
    const LONG reach = 2 * legs.width * legs.height - (2 * row + 1) * legs.width - 2 * column * legs.height;
    return reach > 0 ? ((reach - 1) / legs.height + 1) / 2 : 0;
}

// Paints the part of a triangle that lies in a quadrant's block at `junction`. `shift` tells how many
// columns and rows nearer to the triangle's corner the block's corner is than the junction's lines.
template<class Pixel>
void PaintTriangle(const SmoothPass& pass, const Quadrant& quadrant, const POINTL& junction, const Legs& legs,
                   const POINTL& shift, typename Pixel::Value colour)
{
    const RECTL& paint = pass.rclPaint;
    for (LONG row = 0; row < pass.yFactor; ++row) {
        LONG count = ColumnsInside(legs, shift.x, row + shift.y);
        if (count <= 0)
            return;
        if (count > pass.xFactor)
            count = pass.xFactor;
        const LONG y = quadrant.outward.y > 0 ? junction.y + row : junction.y - 1 - row;
        if (y < paint.top || y >= paint.bottom)
            continue;
        const LONG first = quadrant.outward.x > 0 ? junction.x : junction.x - count;
        const LONG from = first > paint.left ? first : paint.left;
        const LONG to = first + count < paint.right ? first + count : paint.right;
        BYTE* const target = pass.TargetRow(y);
        for (LONG x = from; x < to; ++x)
            Pixel::Write(target, x, colour);
    }
}

// The pixels from (-Before, -Before) to (After, After) round the junction, those of a row read once.
template<class Pixel, LONG Before, LONG After> class Window {
public:
    using Value = typename Pixel::Value;
    static constexpr LONG Side = Before + After + 1;

    // All but the last column for the first junction of a row; `y` is the row below the junctions.
    void StartRow(const SmoothPass& pass, LONG x, LONG y)
    {
        for (LONG row = 0; row < Side; ++row) {
            rows_[row] = pass.SourceRow(y - Before + row);
            for (LONG column = 1; column < Side; ++column)
                pixels_[row][column] = Pixel::Read(rows_[row], x - Before + column - 1);
        }
    }
    // Moves on so that `x` is the column right of the junction.
    void Advance(LONG x)
    {
        for (LONG row = 0; row < Side; ++row) {
            for (LONG column = 1; column < Side; ++column)
                pixels_[row][column - 1] = pixels_[row][column];
            pixels_[row][Side - 1] = Pixel::Read(rows_[row], x + After);
        }
    }
    Value At(LONG x, LONG y) const { return pixels_[y + Before][x + Before]; }
    Value At(const POINTL& offset, const POINTL& shift = {0, 0}) const
    {
        return At(offset.x + shift.x, offset.y + shift.y);
    }

private:
    const BYTE* rows_[Side];
    Value pixels_[Side][Side];
};

// Walks the junctions that have a whole window inside rclSrc: cell(x, y, junction) for each, x and y
// being the source pixel right of and below it.
template<class Pixel, LONG Before, LONG After, class Cell>
void ForEachJunction(const SmoothPass& pass, Window<Pixel, Before, After>& window, Cell cell)
{
    const RECTL& rclSrc = pass.rclSrc;
    if (rclSrc.right - rclSrc.left < window.Side)
        return;
    POINTL junction = {0, pass.origin.y + Before * pass.yFactor};
    for (LONG y = rclSrc.top + Before; y + After < rclSrc.bottom; ++y, junction.y += pass.yFactor) {
        junction.x = pass.origin.x + Before * pass.xFactor;
        window.StartRow(pass, rclSrc.left + Before, y);
        for (LONG x = rclSrc.left + Before; x + After < rclSrc.right; ++x, junction.x += pass.xFactor) {
            window.Advance(x);
            cell(x, y, junction);
        }
    }
}

} // namespace koru
