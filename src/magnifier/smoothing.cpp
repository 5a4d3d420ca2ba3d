#include "magnifier/smoothing.h"

#include "magnifier/blits.h"
#include "magnifier/rectangle.h"
#include "magnifier/smoothing_kernels.h"
#include "platform/constants.h"

namespace koru {

namespace {

    // The pixel formats with the choice between two of their pixels.
    struct Indexed4 : Pixel4 {
        static Value Choose(Value first, Value second, const SmoothPass& pass)
        {
            return ChooseIndexedColour16(first, second, pass.colourTable, pass.pickColour);
        }
    };

    struct Indexed8 : Pixel8 {
        static Value Choose(Value first, Value second, const SmoothPass& pass)
        {
            return ChooseIndexedColour256(first, second, pass.colourTable, pass.pickColour);
        }
    };

    // Pairs are kept as pixels too, since few colours survive packing; they are there for 15 and 16 bits.
    template<ColourBytes (*Unpack)(USHORT)> struct Packed16 : Pixel16 {
        static Value Choose(Value first, Value second, const SmoothPass& pass)
        {
            const ColourBytes firstColour = Unpack(first), secondColour = Unpack(second);
            if (RequestedColourDepth != 15 && RequestedColourDepth != 16)
                return FirstColourWins(firstColour, secondColour, pass.pickColour) ? first : second;
            const int registered = ColorPairList::FindPixels(first, second);
            const bool firstWins = registered ? registered == 1 : IsPicked(firstColour, secondColour, pass.pickColour);
            return firstWins ? first : second;
        }
    };

    template<class Direct> struct Bytes : Direct {
        using Value = typename Direct::Value;
        static Value Choose(Value first, Value second, const SmoothPass& pass)
        {
            return FirstColourWins(ColourOf888(first), ColourOf888(second), pass.pickColour) ? first : second;
        }
    };

    using SmoothFunction = void (*)(const SmoothPass&);
    constexpr ULONG ImproveFactors = 3;
    struct Kernels {
        SmoothFunction ofImproveFactor[ImproveFactors]; // 1, 2, 3
    };

    template<class Pixel>
    constexpr Kernels KernelsOf = {{SmoothFour<Pixel, false>, SmoothFour<Pixel, true>, SmoothSixteen<Pixel>}};

    constexpr Kernels KernelsOfFormat[] = {
        {}, // no format
        {}, // BMF_1BPP
        KernelsOf<Indexed4>,
        KernelsOf<Indexed8>,
        KernelsOf<Packed16<ColourOf565>>,
        KernelsOf<Bytes<Pixel24>>,
        KernelsOf<Bytes<Pixel32>>,
    };
    constexpr Kernels KernelsOf555 = KernelsOf<Packed16<ColourOf555>>;

    SmoothFunction FindKernel(ULONG format, ULONG improveFactor)
    {
        if (improveFactor == 0 || improveFactor > ImproveFactors || format > BMF_32BPP)
            return nullptr;
        const Kernels& kernels = format == BMF_16BPP && HasFiveBitGreen() ? KernelsOf555 : KernelsOfFormat[format];
        return kernels.ofImproveFactor[improveFactor - 1];
    }

    // Where the block of source column (or row) `to` begins when that of `from` begins at `target`.
    LONG BlockStart(LONG target, LONG from, LONG to, LONG factor)
    {
        return target + (to - from) * factor;
    }

    // Junctions on the border of a pass need pixels of its neighbours: two for the large window, else one.
    RECTL WithNeighbours(const RECTL& rclSrc, const RECTL& original, ULONG improveFactor)
    {
        const LONG margin = improveFactor == 3 ? 2 : 1;
        RECTL widened;
        IntersectRect(widened, InflateRect(rclSrc, margin, margin), original);
        return widened;
    }

} // namespace

void SmoothMagnified(const SmoothRequest& request)
{
    const SURFOBJ& source = *request.psoSrc;
    const SURFOBJ& target = *request.psoTrg;
    const SmoothFunction kernel = FindKernel(source.iBitmapFormat, request.improveFactor);
    if (!kernel || request.xFactor < 2 || request.yFactor < 2)
        return;
    if (target.iBitmapFormat != source.iBitmapFormat || !source.pvBits || !target.pvBits)
        return;

    RECTL original, rclSrc, rclPaint;
    if (!IntersectRect(original, request.originalRect, BoundsOf(source.sizlBitmap))
        || !IntersectRect(rclSrc, request.rclSrc, original)
        || !IntersectRect(rclPaint, request.rclTrg, BoundsOf(target.sizlBitmap)))
        return;
    rclSrc = WithNeighbours(rclSrc, original, request.improveFactor);
    const POINTL origin = {BlockStart(request.rclTrg.left, request.rclSrc.left, rclSrc.left, request.xFactor),
                           BlockStart(request.rclTrg.top, request.rclSrc.top, rclSrc.top, request.yFactor)};
    kernel({
        .source = static_cast<const BYTE*>(source.pvScan0),
        .target = static_cast<BYTE*>(target.pvScan0),
        .sourceDelta = source.lDelta,
        .targetDelta = target.lDelta,
        .rclSrc = rclSrc,
        .origin = origin,
        .rclPaint = rclPaint,
        .original = original,
        .xFactor = request.xFactor,
        .yFactor = request.yFactor,
        .colourTable = request.colourTable,
        .pickColour = request.pickColour,
    });
}

} // namespace koru
