#include "engine/raster/cosmetic_line.h"

#include <optional>

namespace engine::raster {
namespace {

    constexpr std::int64_t Half = FixOne / 2;

    // The nearest pixel, the lesser of two equally near.
    std::int64_t Nearest(std::int64_t position)
    {
        return CeilDivide(position - Half, FixOne);
    }

    // The major coordinate of the pixel whose diamond holds a point, {major, minor}. Of a diamond's border the
    // lower sides and the bottom corner belong to it, and for steep lines the right corner.
    std::optional<std::int64_t> DiamondAt(const FixPoint& point, bool flat)
    {
        const std::int64_t major = Nearest(point.x), minor = Nearest(point.y);
        const std::int64_t fromMajor = point.x - major * FixOne, fromMinor = point.y - minor * FixOne;
        const std::int64_t right = flat ? fromMajor : fromMinor, down = flat ? fromMinor : fromMajor;
        const std::int64_t distance = std::abs(right) + std::abs(down);
        const bool onOwnBorder = down > 0 || (down == 0 && right > 0 && !flat);
        if (distance < Half || (distance == Half && onOwnBorder))
            return major;
        return std::nullopt;
    }

} // namespace

CosmeticLine::CosmeticLine(const FixPoint& from, const FixPoint& to)
    : flat_(std::abs(to.x - from.x) >= std::abs(to.y - from.y))
{
    const FixPoint start = flat_ ? from : FixPoint{from.y, from.x};
    const FixPoint end = flat_ ? to : FixPoint{to.y, to.x};
    forwards_ = start.x <= end.x;
    low_ = forwards_ ? start : end;
    const FixPoint& high = forwards_ ? end : start;
    majorSize_ = high.x - low_.x;
    minorSize_ = high.y - low_.y;
    if (majorSize_ == 0)
        return;
    const auto startDiamond = DiamondAt(start, flat_), endDiamond = DiamondAt(end, flat_);
    if (forwards_) {
        first_ = startDiamond.value_or(CeilDivide(start.x, FixOne));
        count_ = (endDiamond ? *endDiamond - 1 : FloorDivide(end.x, FixOne)) - first_ + 1;
    } else {
        first_ = startDiamond.value_or(FloorDivide(start.x, FixOne));
        count_ = first_ - (endDiamond ? *endDiamond + 1 : CeilDivide(end.x, FixOne)) + 1;
    }
    count_ = std::max<std::int64_t>(count_, 0);
}

std::int64_t CosmeticLine::MinorOf(std::int64_t major) const
{
    const Quotient along = MultiplyDivide(major * FixOne - low_.x, minorSize_, majorSize_);
    return Nearest(low_.y + along.floor + (along.remainder > 0 ? 1 : 0));
}

CosmeticLine::Stretch CosmeticLine::Within(const RECTL& bounds) const
{
    const std::int64_t from = flat_ ? bounds.left : bounds.top, to = flat_ ? bounds.right : bounds.bottom;
    const std::int64_t first = forwards_ ? from - first_ : first_ - to + 1;
    const std::int64_t behind = forwards_ ? to - first_ : first_ - from + 1;
    return {std::clamp<std::int64_t>(first, 0, count_), std::clamp<std::int64_t>(behind, 0, count_)};
}

void CosmeticLine::AddRuns(Stretch part, const RECTL& bounds, std::vector<RECTL>& runs) const
{
    const auto majorOf = [this](std::int64_t number) { return forwards_ ? first_ + number : first_ - number; };
    const auto add = [&](std::int64_t first, std::int64_t last, std::int64_t minor) {
        const std::int64_t low = majorOf(forwards_ ? first : last), high = majorOf(forwards_ ? last : first);
        const LONG from = Saturated(low), to = Saturated(high + 1), at = Saturated(minor),
                   behind = Saturated(minor + 1);
        const RECTL run = Intersection(flat_ ? RECTL{from, at, to, behind} : RECTL{at, from, behind, to}, bounds);
        if (!IsEmpty(run))
            runs.push_back(run);
    };
    const Stretch inside = Within(bounds);
    const std::int64_t begin = std::max(part.first, inside.first), end = std::min(part.behind, inside.behind);
    if (begin >= end)
        return;
    std::int64_t runStart = begin, runMinor = MinorOf(majorOf(begin));
    for (std::int64_t i = begin + 1; i < end; ++i) {
        const std::int64_t minor = MinorOf(majorOf(i));
        if (minor == runMinor)
            continue;
        add(runStart, i - 1, runMinor);
        runStart = i;
        runMinor = minor;
    }
    add(runStart, end - 1, runMinor);
}

} // namespace engine::raster
