#include "engine/raster/stretch.h"

#include "engine/raster/clip.h"
#include "engine/raster/hook_call.h"
#include "engine/raster/rectangles.h"
#include "engine/raster/surfaces.h"

namespace engine::raster {
namespace {

    constexpr LONG Outside = -1, NotYet = -2; // in place of a source row or column

    LONG PositionWithin(std::int64_t position, LONG from, LONG to)
    {
        return position >= from && position < to ? static_cast<LONG>(position) : Outside;
    }

    // The source of a stretch, or its mask, as seen from the target. Enlarged pictures show each source row
    // many times, so the last one is kept.
    class Samples {
    public:
        struct Line {
            std::vector<ULONG> pixels;
            std::vector<BYTE> inside; // 0 where there is no source pixel
            bool whole; // there is one everywhere
        };

        Samples(const Bitmap& bitmap, const StretchAxis& columns, const StretchAxis& rows, const POINTL& first)
            : bitmap_(bitmap)
            , columns_(columns)
            , rows_(rows)
            , first_(first)
        {
        }

        const Line& At(const Row& row)
        {
            MapColumns(row);
            const LONG y = PositionWithin(first_.y + rows_.SourceIndex(row.y), bitmap_.area.top, bitmap_.area.bottom);
            if (y != sampledRow_)
                Sample(y);
            return line_;
        }

    private:
        // The columns are the same for all rows of a part.
        void MapColumns(const Row& row)
        {
            if (mappedFrom_ == row.x && map_.size() == static_cast<std::size_t>(row.count))
                return;
            mappedFrom_ = row.x;
            sampledRow_ = NotYet;
            map_.clear();
            for (LONG i = 0; i < row.count; ++i)
                map_.push_back(
                    PositionWithin(first_.x + columns_.SourceIndex(row.x + i), bitmap_.area.left, bitmap_.area.right));
        }

        void Sample(LONG y)
        {
            sampledRow_ = y;
            line_.pixels.resize(map_.size());
            line_.inside.assign(map_.size(), 0);
            line_.whole = y != Outside;
            if (y == Outside)
                return;
            const LONG left = bitmap_.area.left, width = bitmap_.area.right - left;
            sourceRow_.resize(static_cast<std::size_t>(width));
            bitmap_.Read(left, y, width, sourceRow_.data());
            for (std::size_t i = 0; i < map_.size(); ++i) {
                if (map_[i] == Outside) {
                    line_.whole = false;
                    continue;
                }
                line_.inside[i] = 1;
                line_.pixels[i] = sourceRow_[static_cast<std::size_t>(map_[i] - left)];
            }
        }

        const Bitmap& bitmap_;
        const StretchAxis &columns_, &rows_;
        POINTL first_;
        LONG sampledRow_ = NotYet, mappedFrom_ = 0;
        std::vector<ULONG> sourceRow_;
        std::vector<LONG> map_; // from the row's pixels to source columns
        Line line_;
    };

    class StretchedSource : public RowSource {
    public:
        StretchedSource(Samples* source, Samples* mask, bool maskHides)
            : source_(source)
            , mask_(mask)
            , notMasked_(maskHides ? Choice::Nothing : Choice::Background)
        {
        }

        void Fetch(Row& row) const override
        {
            if (mask_)
                Choose(row, mask_->At(row));
            if (source_)
                Take(row, source_->At(row));
        }

    private:
        void Choose(Row& row, const Samples::Line& bits) const
        {
            row.hasChoices = true;
            for (std::size_t i = 0; i < bits.pixels.size(); ++i)
                row.choices[i] = !bits.inside[i] ? Choice::Nothing : bits.pixels[i] ? Choice::Foreground : notMasked_;
        }

        static void Take(Row& row, const Samples::Line& line)
        {
            std::copy(line.pixels.begin(), line.pixels.end(), row.source);
            if (line.whole)
                return;
            row.hasChoices = true;
            for (std::size_t i = 0; i < line.inside.size(); ++i)
                if (!line.inside[i])
                    row.choices[i] = Choice::Nothing;
        }

        Samples *source_, *mask_;
        Choice notMasked_; // where the mask is 0
    };

} // namespace

StretchAxis::StretchAxis(LONG targetFrom, LONG targetTo, LONG sourceFrom, LONG sourceTo)
    : targetFirst_(std::min(targetFrom, targetTo))
    , targetSize_(std::int64_t{std::max(targetFrom, targetTo)} - targetFirst_)
    , sourceFirst_(std::min(sourceFrom, sourceTo))
    , sourceSize_(std::int64_t{std::max(sourceFrom, sourceTo)} - sourceFirst_)
    , mirrored_((targetFrom > targetTo) != (sourceFrom > sourceTo))
{
}

std::int64_t StretchAxis::SourceIndex(LONG target) const
{
    std::int64_t index = target - targetFirst_;
    if (mirrored_)
        index = targetSize_ - 1 - index;
    return MultiplyDivide(index, sourceSize_, targetSize_).floor;
}

BOOL Stretch::Run(const RowOperation& operation) const
{
    Surface* const targetSurface = Given(service, psoDest, "target");
    Surface* const sourceSurface = psoSrc ? SurfaceBehind(psoSrc) : nullptr;
    Surface* const maskSurface = psoMask ? SurfaceBehind(psoMask) : nullptr;
    if (!targetSurface || (psoSrc && !sourceSurface) || (psoMask && !maskSurface))
        return FALSE;
    if (maskSurface && maskSurface->iBitmapFormat != BMF_1BPP)
        return Refuse(service, "mask of more than one bit per pixel");
    const auto parts = VisibleParts(pco, Intersection(Ordered(target), targetSurface->Bounds()));
    if (!parts)
        return FALSE;
    const StretchAxis columns(target.left, target.right, source.left, source.right);
    const StretchAxis rows(target.top, target.bottom, source.top, source.bottom);
    if (parts->empty() || columns.IsEmpty() || rows.IsEmpty())
        return TRUE;

    Source sourcePart = sourceSurface ? Source(*sourceSurface, Ordered(source)) : Source();
    Source maskPart = maskSurface ? Source(*maskSurface, maskSurface->Bounds()) : Source();
    Target targetPart(*targetSurface, pco, Region(*parts).Bounds());
    if (!sourcePart || !maskPart || !targetPart)
        return FALSE;
    sourcePart.KeepFrom(targetPart.Pixels());
    maskPart.KeepFrom(targetPart.Pixels());
    const POINTL sourceFirst = {std::min(source.left, source.right), std::min(source.top, source.bottom)};
    Samples sourceSamples(sourcePart.Pixels(), columns, rows, sourceFirst);
    Samples maskSamples(maskPart.Pixels(), columns, rows, mask);
    const StretchedSource samples(sourceSurface ? &sourceSamples : nullptr, maskSurface ? &maskSamples : nullptr,
                                  maskHides);
    DrawRows(targetPart.Pixels(), *parts, &samples, operation);
    return targetPart.Finish();
}

} // namespace engine::raster
