#pragma once

#include "magnifier/smoothing_pass.h"

// The rules by which the staircases of a magnified picture are rounded. Where two pixels that touch
// at a corner have the same colour and that colour loses against its neighbours, it grows into them.
namespace koru {

// Whether the block lies far enough inside for the pixels next to it, two columns or rows away from
// the junction, to exist.
inline bool HasPixelsBeyond(const RECTL& original, const Quadrant& quadrant, LONG x, LONG y)
{
    const bool sideways = quadrant.outward.x < 0 ? x - 2 >= original.left : x + 1 < original.right;
    const bool upOrDown = quadrant.outward.y < 0 ? y - 2 >= original.top : y + 1 < original.bottom;
    return sideways && upOrDown;
}

// The colour that wins along the row of the junction where the pixels differ.
template<class Pixel, class Pixels>
typename Pixel::Value RowWinner(const SmoothPass& pass, const Pixels& pixels, const POINTL& shift)
{
    const auto topLeft = pixels.At({-1, -1}, shift), topRight = pixels.At({0, -1}, shift);
    if (topLeft == topRight)
        return Pixel::Choose(pixels.At({-1, 0}, shift), pixels.At({0, 0}, shift), pass);
    return Pixel::Choose(topLeft, topRight, pass);
}

// Whether a quadrant's block lies beside a diagonal of one other colour. `shift` moves the question to
// a neighbouring junction of the window.
template<class Pixels> bool LiesBesideDiagonal(const Pixels& pixels, const Quadrant& quadrant, const POINTL& shift)
{
    const auto colour = pixels.At(quadrant.sameRow, shift);
    return pixels.At(quadrant.sameColumn, shift) == colour && pixels.At(quadrant.block, shift) != colour;
}

// Whether the diagonal's colour loses against the block's, and so grows into it.
template<class Pixel, class Pixels>
bool IsGrownInto(const SmoothPass& pass, const Pixels& pixels, const Quadrant& quadrant, const POINTL& shift)
{
    const auto colour = pixels.At(quadrant.sameRow, shift);
    const auto block = pixels.At(quadrant.block, shift);
    return (quadrant.blockAskedFirst ? Pixel::Choose(block, colour, pass) : Pixel::Choose(colour, block, pass))
        == block;
}

// All of it: a diagonal that passes the block and grows into it.
template<class Pixel, class Pixels>
bool Grows(const SmoothPass& pass, const Pixels& pixels, const Quadrant& quadrant, const POINTL& shift)
{
    return LiesBesideDiagonal(pixels, quadrant, shift)
        && RowWinner<Pixel>(pass, pixels, shift) != pixels.At(quadrant.sameRow, shift)
        && IsGrownInto<Pixel>(pass, pixels, quadrant, shift);
}

// Three pixels of one colour whose edges both run on: the corner of a box, which stays square.
template<class Pixel, class Pixels> bool IsBoxCorner(const SmoothPass& pass, const Pixels& pixels, LONG x, LONG y)
{
    for (const Quadrant& quadrant : Quadrants) {
        const auto colour = pixels.At(quadrant.opposite);
        if (pixels.At(quadrant.sameRow) != colour || pixels.At(quadrant.sameColumn) != colour
            || pixels.At(quadrant.block) == colour)
            continue;
        const LONG rowBeyond = y + quadrant.sameRow.y + quadrant.outward.y;
        const LONG columnBeyond = x + quadrant.sameColumn.x + quadrant.outward.x;
        return HasPixelsBeyond(pass.original, quadrant, x, y)
            && Pixel::Read(pass.SourceRow(rowBeyond), x + quadrant.sameRow.x) == colour
            && Pixel::Read(pass.SourceRow(y + quadrant.sameColumn.y), columnBeyond) == colour;
    }
    return false;
}

// Improve factors 1 and 2: triangles with equal legs, from the four pixels round each junction.
template<class Pixel, bool KeepsCorners> void SmoothFour(const SmoothPass& pass)
{
    const LONG side = pass.xFactor < pass.yFactor ? pass.xFactor : pass.yFactor;
    Window<Pixel, 1, 0> pixels;
    ForEachJunction(pass, pixels, [&](LONG x, LONG y, const POINTL& junction) {
        if (pixels.At(-1, -1) != pixels.At(0, 0) && pixels.At(0, -1) != pixels.At(-1, 0))
            return;
        if (pixels.At(-1, -1) == pixels.At(0, 0) && pixels.At(0, -1) == pixels.At(-1, 0)
            && pixels.At(-1, -1) == pixels.At(0, -1))
            return;
        if (KeepsCorners && IsBoxCorner<Pixel>(pass, pixels, x, y))
            return;
        const auto rowWinner = RowWinner<Pixel>(pass, pixels, {0, 0});
        for (const Quadrant& quadrant : Quadrants) {
            if (!LiesBesideDiagonal(pixels, quadrant, {0, 0}) || pixels.At(quadrant.sameRow) == rowWinner)
                continue;
            if (IsGrownInto<Pixel>(pass, pixels, quadrant, {0, 0})
                && (!KeepsCorners || HasPixelsBeyond(pass.original, quadrant, x, y)))
                PaintTriangle<Pixel>(pass, quadrant, junction, {side, side}, {0, 0}, pixels.At(quadrant.sameRow));
        }
    });
}

enum class EdgeRun { Diagonal, Sideways, UpAndDown };

// Whether the edge that a quadrant's triangle would smooth has steps of two pixels, and which way.
template<class Pixels> EdgeRun StepsOfEdge(const Pixels& pixels, const Quadrant& quadrant, const POINTL& shift)
{
    const auto colour = pixels.At(quadrant.sameRow, shift);
    const auto block = pixels.At(quadrant.block, shift);
    const POINTL beside = {shift.x + quadrant.outward.x, shift.y};
    const POINTL beyond = {shift.x, shift.y + quadrant.outward.y};
    const bool sideways =
        pixels.At(quadrant.sameColumn, beside) == colour && pixels.At(quadrant.block, beside) == block;
    const bool upAndDown = pixels.At(quadrant.sameRow, beyond) == colour && pixels.At(quadrant.block, beyond) == block;
    if (sideways == upAndDown)
        return EdgeRun::Diagonal;
    return sideways ? EdgeRun::Sideways : EdgeRun::UpAndDown;
}

// Three pixels of the colour: the edge of an area, if the colour goes on behind it. Otherwise two thin
// strokes meet here, as in letters, whose inside must not fill up; or, where both edges run on, it is the
// corner of a box. Where `shift` is along the steps the window holds all that is asked for; across them
// it does not.
template<class Pixels>
bool IsInnerCorner(const Pixels& pixels, const Quadrant& quadrant, const POINTL& shift, EdgeRun run)
{
    const auto colour = pixels.At(quadrant.sameRow, shift);
    if (pixels.At(quadrant.opposite, shift) != colour)
        return false;
    const bool sideways = run == EdgeRun::Sideways;
    const POINTL& outward = quadrant.outward;
    const POINTL inward = sideways ? POINTL{0, -outward.y} : POINTL{-outward.x, 0};
    const POINTL along = sideways ? POINTL{outward.x, 0} : POINTL{0, outward.y};
    const POINTL& edge = sideways ? quadrant.sameColumn : quadrant.sameRow;
    const POINTL& otherEdge = sideways ? quadrant.sameRow : quadrant.sameColumn;
    if (pixels.At(otherEdge, {shift.x - inward.x, shift.y - inward.y}) == colour)
        return true;
    const POINTL behind = {shift.x + inward.x, shift.y + inward.y};
    return pixels.At(edge, behind) != colour || pixels.At(edge, {behind.x + along.x, behind.y + along.y}) != colour;
}

template<class Pixels> EdgeRun RunOfEdge(const Pixels& pixels, const Quadrant& quadrant)
{
    const EdgeRun run = StepsOfEdge(pixels, quadrant, {0, 0});
    const bool isLong = run != EdgeRun::Diagonal && !IsInnerCorner(pixels, quadrant, {0, 0}, run);
    return isLong ? run : EdgeRun::Diagonal;
}

inline Legs LegsOf(const SmoothPass& pass, EdgeRun run)
{
    return {run == EdgeRun::Sideways ? 2 * pass.xFactor : pass.xFactor,
            run == EdgeRun::UpAndDown ? 2 * pass.yFactor : pass.yFactor};
}

// A junction whose window lies inside; the halves of a long triangle are painted from two of them.
inline bool IsVisited(const RECTL& original, LONG x, LONG y)
{
    return x - 2 >= original.left && y - 2 >= original.top && x + 1 < original.right && y + 1 < original.bottom;
}

// The far half of a long triangle whose right angle is at the junction `shift` away.
template<class Pixel, class Pixels>
void PaintFarHalf(const SmoothPass& pass, const Pixels& pixels, const Quadrant& quadrant, const POINTL& junction,
                  const POINTL& shift, EdgeRun run)
{
    if (StepsOfEdge(pixels, quadrant, shift) != run || IsInnerCorner(pixels, quadrant, shift, run)
        || !Grows<Pixel>(pass, pixels, quadrant, shift))
        return;
    const POINTL half = {shift.x ? pass.xFactor : 0, shift.y ? pass.yFactor : 0};
    PaintTriangle<Pixel>(pass, quadrant, junction, LegsOf(pass, run), half, pixels.At(quadrant.sameRow, shift));
}

// Improve factor 3: sixteen pixels round each junction, so that lines with one step to two pixels
// become straight as well.
template<class Pixel> void SmoothSixteen(const SmoothPass& pass)
{
    Window<Pixel, 2, 1> pixels;
    ForEachJunction(pass, pixels, [&](LONG x, LONG y, const POINTL& junction) {
        const bool isCorner = IsBoxCorner<Pixel>(pass, pixels, x, y);
        for (const Quadrant& quadrant : Quadrants) {
            if (!isCorner && Grows<Pixel>(pass, pixels, quadrant, {0, 0}))
                PaintTriangle<Pixel>(pass, quadrant, junction, LegsOf(pass, RunOfEdge(pixels, quadrant)), {0, 0},
                                     pixels.At(quadrant.sameRow));
            const POINTL& outward = quadrant.outward;
            if (IsVisited(pass.original, x - outward.x, y))
                PaintFarHalf<Pixel>(pass, pixels, quadrant, junction, {-outward.x, 0}, EdgeRun::Sideways);
            if (IsVisited(pass.original, x, y - outward.y))
                PaintFarHalf<Pixel>(pass, pixels, quadrant, junction, {0, -outward.y}, EdgeRun::UpAndDown);
        }
    });
}

} // namespace koru
