#include "magnifier/magnify.h"

#include "magnifier/blits.h"
#include "magnifier/rectangle.h"
#include "magnifier/smoothing.h"
#include "platform/constants.h"
#include "platform/services.h"

namespace koru {

namespace {

    bool IsSoundSpan(LONG from, LONG to, LONG destFrom, LONG destTo, BYTE factor)
    {
        return from < to && destFrom < destTo && (LONGLONG{to} - from) * factor == LONGLONG{destTo} - destFrom;
    }

    // Whether destRect holds the whole picture: client values may be empty, or wrap.
    bool HasSoundDestRect(const Zoomer& zoomer)
    {
        const RECTL& original = zoomer.originalRect;
        const RECTL& dest = zoomer.destRect;
        return IsSoundSpan(original.left, original.right, dest.left, dest.right, zoomer.xFactor)
            && IsSoundSpan(original.top, original.bottom, dest.top, dest.bottom, zoomer.yFactor);
    }

    // Where the block of a source column or row begins; in range for a sound destRect.
    LONG BlockStart(LONG dest, LONG original, LONG source, BYTE factor)
    {
        return static_cast<LONG>(dest + (LONGLONG{source} - original) * factor);
    }

    // The column or row whose block holds a place of the destination, counted from originalRect's first.
    LONG BlockAt(LONG dest, LONG original, LONG destination, BYTE factor)
    {
        const ULONG distance = static_cast<ULONG>(destination) - static_cast<ULONG>(dest);
        return static_cast<LONG>(static_cast<ULONG>(original) + distance / factor);
    }

    // One axis of a magnification, cut to whole source pixels inside the VirtualScreen whose blocks
    // lie at least partly inside the bitmap.
    struct Axis {
        LONG source, sourceEnd;
        LONG target; // of the first block
        LONG factor;
        LONG targetSize; // of the bitmap

        LONG TargetOf(LONG column) const { return target + (column - source) * factor; }
        LONG TargetEnd() const { return TargetOf(sourceEnd); }
    };

    bool CutAxis(Axis& axis, LONG dest, LONG original, BYTE factor, LONG from, LONG to, LONG sourceSize,
                 LONG targetSize)
    {
        axis.source = from > 0 ? from : 0;
        axis.sourceEnd = to < sourceSize ? to : sourceSize;
        if (axis.source >= axis.sourceEnd)
            return false;
        const LONG first = BlockStart(dest, original, axis.source, factor);
        const LONG last = BlockStart(dest, original, axis.sourceEnd - 1, factor);
        if (first >= targetSize || last <= -LONG{factor})
            return false;
        if (first < 0)
            axis.source = BlockAt(dest, original, 0, factor);
        if (last >= targetSize)
            axis.sourceEnd = BlockAt(dest, original, targetSize - 1, factor) + 1;
        axis.target = BlockStart(dest, original, axis.source, factor);
        axis.factor = factor;
        axis.targetSize = targetSize;
        return true;
    }

    // What both surfaces can hold of a magnification, in whole blocks.
    struct Blocks {
        Axis x, y;

        RECTL Source() const { return {x.source, y.source, x.sourceEnd, y.sourceEnd}; }
        RECTL Target() const { return {x.target, y.target, x.TargetEnd(), y.TargetEnd()}; }
    };

    bool CutToSurfaces(Blocks& blocks, const Zoomer& zoomer, const SURFOBJ& bmp, const SURFOBJ& screen,
                       const RECTL& source)
    {
        RECTL inside;
        if (!HasSoundDestRect(zoomer) || !IntersectRect(inside, source, zoomer.originalRect))
            return false;
        const RECTL& original = zoomer.originalRect;
        const RECTL& dest = zoomer.destRect;
        return CutAxis(blocks.x, dest.left, original.left, zoomer.xFactor, inside.left, inside.right,
                       screen.sizlBitmap.cx, bmp.sizlBitmap.cx)
            && CutAxis(blocks.y, dest.top, original.top, zoomer.yFactor, inside.top, inside.bottom,
                       screen.sizlBitmap.cy, bmp.sizlBitmap.cy);
    }

    // A run of source columns or rows and their place in the bitmap. A block that crosses the bitmap's
    // edge is a run by itself: one pixel fills any size.
    struct Run {
        LONG source, sourceEnd, target, targetEnd;
    };

    ULONG SplitAtEdges(const Axis& axis, Run runs[3])
    {
        const bool cutFirst = axis.target < 0;
        const bool cutLast = axis.TargetEnd() > axis.targetSize;
        const LONG whole = axis.source + cutFirst;
        const LONG wholeEnd = axis.sourceEnd - cutLast;
        if (whole > wholeEnd) { // one block, larger than the bitmap
            runs[0] = {axis.source, axis.sourceEnd, 0, axis.targetSize};
            return 1;
        }
        ULONG count = 0;
        if (cutFirst)
            runs[count++] = {axis.source, whole, 0, axis.TargetOf(whole)};
        if (whole < wholeEnd)
            runs[count++] = {whole, wholeEnd, axis.TargetOf(whole), axis.TargetOf(wholeEnd)};
        if (cutLast)
            runs[count++] = {wholeEnd, axis.sourceEnd, axis.TargetOf(wholeEnd), axis.targetSize};
        return count;
    }

    void Stretch(SURFOBJ* psoBmp, SURFOBJ* psoVirtual, const Run& x, const Run& y)
    {
        RECTL target = {x.target, y.target, x.targetEnd, y.targetEnd};
        RECTL source = {x.source, y.source, x.sourceEnd, y.sourceEnd};
        const bool isSameSize = target.right - target.left == source.right - source.left
            && target.bottom - target.top == source.bottom - source.top;
        if (isSameSize)
            CopyBitsCut(psoBmp, psoVirtual, target, CornerOf(source));
        else
            EngStretchBlt(psoBmp, psoVirtual, nullptr, nullptr, nullptr, nullptr, nullptr, &target, &source, nullptr,
                          COLORONCOLOR);
    }

    void StretchBlocks(const Blocks& blocks, SURFOBJ* psoBmp, SURFOBJ* psoVirtual)
    {
        Run columns[3], rows[3];
        const ULONG columnCount = SplitAtEdges(blocks.x, columns);
        const ULONG rowCount = SplitAtEdges(blocks.y, rows);
        for (ULONG row = 0; row < rowCount; ++row)
            for (ULONG column = 0; column < columnCount; ++column)
                Stretch(psoBmp, psoVirtual, columns[column], rows[row]);
    }

    void Smooth(const Zoomer& zoomer, const Blocks& blocks, SURFOBJ* psoBmp, SURFOBJ* psoVirtual)
    {
        SmoothMagnified({
            .psoTrg = psoBmp,
            .psoSrc = psoVirtual,
            .rclTrg = blocks.Target(),
            .rclSrc = blocks.Source(),
            .improveFactor = zoomer.improveFactor,
            .originalRect = zoomer.originalRect,
            .destRect = zoomer.destRect,
            .colourTable = zoomer.colourTable,
            .xFactor = zoomer.xFactor,
            .yFactor = zoomer.yFactor,
            .pickColour = zoomer.pickColour,
        });
    }

} // namespace

RECTL SourceToDestination(const Zoomer& zoomer, const RECTL& source)
{
    const RECTL& original = zoomer.originalRect;
    const RECTL& dest = zoomer.destRect;
    RECTL inside;
    if (!HasSoundDestRect(zoomer) || !IntersectRect(inside, source, original))
        return NoRectangle;
    return {BlockStart(dest.left, original.left, inside.left, zoomer.xFactor),
            BlockStart(dest.top, original.top, inside.top, zoomer.yFactor),
            BlockStart(dest.left, original.left, inside.right, zoomer.xFactor),
            BlockStart(dest.top, original.top, inside.bottom, zoomer.yFactor)};
}

RECTL DestinationToSource(const Zoomer& zoomer, const RECTL& destination)
{
    const RECTL& original = zoomer.originalRect;
    const RECTL& dest = zoomer.destRect;
    RECTL inside;
    if (!HasSoundDestRect(zoomer) || !IntersectRect(inside, destination, dest))
        return NoRectangle;
    return {BlockAt(dest.left, original.left, inside.left, zoomer.xFactor),
            BlockAt(dest.top, original.top, inside.top, zoomer.yFactor),
            BlockAt(dest.left, original.left, inside.right - 1, zoomer.xFactor) + 1,
            BlockAt(dest.top, original.top, inside.bottom - 1, zoomer.yFactor) + 1};
}

void Magnify(Zoomer& zoomer, SURFOBJ* psoBmp, SURFOBJ* psoVirtual, const RECTL& source)
{
    Blocks blocks;
    if (CutToSurfaces(blocks, zoomer, *psoBmp, *psoVirtual, source)) {
        StretchBlocks(blocks, psoBmp, psoVirtual);
        Smooth(zoomer, blocks, psoBmp, psoVirtual);
    }
    if (zoomer.mode == ModeMoving)
        zoomer.previousZoomedRect = zoomer.zoomedRect;
}

void SmoothWhole(const Zoomer& zoomer, SURFOBJ* psoBmp, SURFOBJ* psoVirtual)
{
    Blocks blocks;
    if (CutToSurfaces(blocks, zoomer, *psoBmp, *psoVirtual, zoomer.originalRect))
        Smooth(zoomer, blocks, psoBmp, psoVirtual);
}

} // namespace koru
