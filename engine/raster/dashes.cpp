#include "engine/raster/dashes.h"

#include <cmath>
#include <numeric>

namespace engine::raster {
namespace {

    constexpr ULONG LongestStyle = 1024; // entries; more is a damaged count
    constexpr double ShortestPeriod = 1; // of a style, in 1/16 pixels
    constexpr double MostDashes = 65536; // in a subpath

    double Distance(const FixPoint& from, const FixPoint& to)
    {
        return std::hypot(static_cast<double>(to.x - from.x), static_cast<double>(to.y - from.y));
    }

    double LengthOf(const std::vector<FixPoint>& points)
    {
        double length = 0;
        for (std::size_t i = 1; i < points.size(); ++i)
            length += Distance(points[i - 1], points[i]);
        return length;
    }

    // Walks along a style; the even entries are dashes.
    class StyleWalk {
    public:
        explicit StyleWalk(const LINEATTRS& attributes)
        {
            const bool usable = attributes.pstyle && attributes.cstyle > 0 && attributes.cstyle <= LongestStyle;
            const ULONG count = !usable ? 0 : attributes.cstyle % 2 ? attributes.cstyle * 2 : attributes.cstyle;
            for (ULONG i = 0; i < count; ++i) {
                const double length = attributes.pstyle[i % attributes.cstyle].e * double{FixOne};
                lengths_.push_back(length > 0 ? length : 0);
            }
            period_ = std::accumulate(lengths_.begin(), lengths_.end(), 0.0);
            startsWithGap_ = attributes.fl & LA_STARTGAP;
            const double state = attributes.elStyleState.e * double{FixOne};
            start_ = std::isfinite(state) && state > 0 ? state : 0;
            Reset();
        }

        bool CanCut(double length) const
        {
            return period_ >= ShortestPeriod && length / period_ * static_cast<double>(lengths_.size()) <= MostDashes;
        }

        void Reset()
        {
            entry_ = 0;
            if (!CanCut(0))
                return;
            left_ = lengths_[0];
            Advance(std::fmod(start_, period_));
        }
        bool IsDash() const { return (entry_ % 2 == 0) != startsWithGap_; }
        double Left() const { return left_; } // of the present dash or gap

        void Advance(double way)
        {
            left_ -= way;
            while (left_ <= 0) {
                entry_ = (entry_ + 1) % lengths_.size();
                left_ += lengths_[entry_];
            }
        }

    private:
        std::vector<double> lengths_;
        double period_ = 0, start_ = 0, left_ = 0;
        std::size_t entry_ = 0;
        bool startsWithGap_ = false;
    };

    class DashCutter {
    public:
        explicit DashCutter(std::vector<Polyline>& dashes)
            : dashes_(dashes)
        {
        }

        void Cut(const std::vector<FixPoint>& points, StyleWalk& style)
        {
            drawing_ = false;
            for (std::size_t i = 1; i < points.size(); ++i)
                CutSegment(points[i - 1], points[i], style);
        }

    private:
        void CutSegment(const FixPoint& from, const FixPoint& to, StyleWalk& style)
        {
            const double length = Distance(from, to);
            double done = 0;
            while (done < length) {
                const bool dash = style.IsDash();
                if (dash && !drawing_)
                    dashes_.push_back({{PointAt(from, to, done / length)}, false, false});
                drawing_ = dash;
                const double way = std::min(style.Left(), length - done);
                const bool toTheEnd = way >= length - done;
                done = toTheEnd ? length : done + way;
                if (dash)
                    dashes_.back().points.push_back(toTheEnd ? to : PointAt(from, to, done / length));
                style.Advance(way);
                if (style.IsDash() != dash)
                    drawing_ = false;
            }
        }

        static FixPoint PointAt(const FixPoint& from, const FixPoint& to, double share)
        {
            return {from.x + std::llround(static_cast<double>(to.x - from.x) * share),
                    from.y + std::llround(static_cast<double>(to.y - from.y) * share)};
        }

        std::vector<Polyline>& dashes_;
        bool drawing_ = false; // the last dash goes on
    };

} // namespace

std::vector<Polyline> CutIntoDashes(const std::vector<Polyline>& lines, const LINEATTRS& attributes)
{
    std::vector<Polyline> dashes;
    StyleWalk style(attributes);
    DashCutter cutter(dashes);
    for (const Polyline& line : lines) {
        std::vector<FixPoint> points = line.points;
        if (line.closed)
            points.push_back(points.front());
        const double length = LengthOf(points);
        if (length == 0 || !style.CanCut(length)) {
            dashes.push_back(line);
            continue;
        }
        if (line.resetsStyle)
            style.Reset();
        cutter.Cut(points, style);
    }
    return dashes;
}

} // namespace engine::raster
