#include "engine/raster/stretch.h"

#include "engine/raster/clip.h"
#include "engine/raster/hook_call.h"
#include "engine/raster/rectangles.h"
#include "engine/raster/surfaces.h"

namespace engine::raster {
namespace {

constexpr LONG Outside = -1;

bool IsWithin(std::int64_t position, LONG from, LONG to)
{
    return position >= from && position < to;
}

// The source of a stretch, or its mask, with the way from target coordinates to its own.
class Samples {
public:
    Samples(const Bitmap& bitmap, const StretchAxis& columns, const StretchAxis& rows, const POINTL& first)
        : bitmap_(bitmap)
        , columns_(columns)
        , rows_(rows)
        , first_(first)
    {
    }

    LONG SourceRow(LONG y) const
    {
        const std::int64_t row = first_.y + rows_.SourceIndex(y);
        return IsWithin(row, bitmap_.area.top, bitmap_.area.bottom) ? static_cast<LONG>(row) : Outside;
    }

    // The samples of a row of the target; `pixels` of those outside stay.
    void Fetch(const Row& row, ULONG* pixels, std::vector<bool>& inside)
    {
        inside.assign(static_cast<std::size_t>(row.count), false);
        const LONG y = SourceRow(row.y);
        if (y == Outside || engine::IsEmpty(bitmap_.area))
            return;
        LoadRow(y);
        LoadColumns(row);
        for (LONG i = 0; i < row.count; ++i) {
            const LONG x = map_[static_cast<std::size_t>(i)];
            if (x == Outside)
                continue;
            inside[static_cast<std::size_t>(i)] = true;
            pixels[i] = pixels_[static_cast<std::size_t>(x - bitmap_.area.left)];
        }
    }

private:
    void LoadRow(LONG y)
    {
        if (y == loadedRow_)
            return;
        loadedRow_ = y;
        pixels_.resize(static_cast<std::size_t>(bitmap_.area.right - bitmap_.area.left));
        bitmap_.Read(bitmap_.area.left, y, bitmap_.area.right - bitmap_.area.left, pixels_.data());
    }

    // The columns are the same for all rows of a part.
    void LoadColumns(const Row& row)
    {
        if (mappedFrom_ == row.x && map_.size() == static_cast<std::size_t>(row.count))
            return;
        mappedFrom_ = row.x;
        map_.clear();
        for (LONG i = 0; i < row.count; ++i) {
            const std::int64_t x = first_.x + columns_.SourceIndex(row.x + i);
            map_.push_back(IsWithin(x, bitmap_.area.left, bitmap_.area.right) ? static_cast<LONG>(x) : Outside);
        }
    }

    const Bitmap& bitmap_;
    const StretchAxis &columns_, &rows_;
    POINTL first_;
    LONG loadedRow_ = Outside, mappedFrom_ = 0;
    std::vector<ULONG> pixels_;
    std::vector<LONG> map_;
};

class StretchedSource : public RowSource {
public:
    StretchedSource(Samples* source, Samples* mask, bool maskHides)
        : source_(source)
        , mask_(mask)
        , maskHides_(maskHides)
    {
    }

    void Fetch(Row& row) const override
    {
        if (mask_) {
            mask_->Fetch(row, row.source, inside_);
            for (LONG i = 0; i < row.count; ++i)
                row.choices[i] = ChoiceOf(inside_[static_cast<std::size_t>(i)], row.source[i]);
        }
        if (!source_)
            return;
        source_->Fetch(row, row.source, inside_);
        for (LONG i = 0; i < row.count; ++i)
            if (!inside_[static_cast<std::size_t>(i)])
                row.choices[i] = Choice::Nothing;
    }

private:
    Choice ChoiceOf(bool inside, ULONG bit) const
    {
        if (!inside)
            return Choice::Nothing;
        if (bit)
            return Choice::Foreground;
        return maskHides_ ? Choice::Nothing : Choice::Background;
    }

    Samples *source_, *mask_;
    bool maskHides_;
    mutable std::vector<bool> inside_; // kept for its memory
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
