#include "engine/raster/line_style.h"

#include <numeric>

#include "engine/core/device.h"

namespace engine::raster {
namespace {

    constexpr ULONG LongestStyle = 1024; // entries; more is a damaged count

} // namespace

LineStyle::LineStyle(const LINEATTRS& attributes, const Surface& surface)
{
    if (attributes.fl & LA_ALTERNATE) {
        unit_ = 1;
        lengths_ = {1, 1};
    } else if (attributes.pstyle && attributes.cstyle > 0 && attributes.cstyle <= LongestStyle) {
        const GDIINFO* const gdi = surface.device ? &surface.device->Gdi() : nullptr;
        if (gdi && gdi->xStyleStep > 0 && gdi->yStyleStep > 0 && gdi->denStyleStep > 0) {
            xStep_ = gdi->xStyleStep;
            yStep_ = gdi->yStyleStep;
            unit_ = gdi->denStyleStep;
        }
        const ULONG count = attributes.cstyle % 2 ? attributes.cstyle * 2 : attributes.cstyle;
        for (ULONG i = 0; i < count; ++i)
            lengths_.push_back(std::max<LONG>(attributes.pstyle[i % attributes.cstyle].l, 0) * unit_);
    }
    total_ = std::accumulate(lengths_.begin(), lengths_.end(), std::int64_t{0});
    if (total_ == 0) {
        lengths_.clear();
        return;
    }
    if (attributes.fl & LA_STARTGAP) { // a dash of no length in front turns all over
        lengths_.insert(lengths_.begin(), 0);
        lengths_.push_back(0);
    }
    const ULONG state = static_cast<ULONG>(attributes.elStyleState.l);
    position_ = ((state >> 16) * unit_ + (state & 0xFFFF)) % total_;
}

std::vector<CosmeticLine::Stretch> LineStyle::DashesOf(const CosmeticLine& line, const RECTL& bounds)
{
    const std::int64_t step = line.IsFlat() ? xStep_ : yStep_;
    const CosmeticLine::Stretch inside = line.Within(bounds);
    std::vector<CosmeticLine::Stretch> dashes;
    // The style period that holds the first visible pixel starts here, counted from pixel 0 in style steps.
    std::int64_t at = FloorDivide(position_ + inside.first * step, total_) * total_ - position_;
    while (at < inside.behind * step)
        for (std::size_t i = 0; i < lengths_.size(); at += lengths_[i++]) {
            const CosmeticLine::Stretch dash = {std::max(CeilDivide(at, step), inside.first),
                                                std::min(CeilDivide(at + lengths_[i], step), inside.behind)};
            if (i % 2 == 0 && dash.first < dash.behind)
                dashes.push_back(dash);
        }
    position_ = (position_ + line.Count() * step) % total_;
    return dashes;
}

LONG LineStyle::State() const
{
    return static_cast<LONG>(position_ / unit_ << 16 | position_ % unit_);
}

} // namespace engine::raster
