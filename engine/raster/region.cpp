#include "engine/raster/region.h"

#include <algorithm>

#include "engine/raster/rectangles.h"

namespace engine {
namespace {

    using Keep = bool (*)(bool inFirst, bool inSecond);
    using Rectangles = std::vector<RECTL>;

    // The spans of one region band by band, asked from the top down.
    class BandReader {
    public:
        explicit BandReader(const Rectangles& rectangles)
            : next_(rectangles.begin())
            , end_(rectangles.end())
        {
        }

        // The spans of a row that is not above the last one asked for.
        void SpansAt(LONG y, std::vector<Span>& spans)
        {
            spans.clear();
            while (next_ != end_ && next_->bottom <= y)
                ++next_;
            for (auto rectangle = next_; rectangle != end_ && rectangle->top <= y; ++rectangle)
                spans.push_back({rectangle->left, rectangle->right});
        }

    private:
        Rectangles::const_iterator next_, end_;
    };

    std::vector<LONG> RowBorders(const Rectangles& first, const Rectangles& second)
    {
        std::vector<LONG> borders;
        for (const Rectangles* rectangles : {&first, &second})
            for (const RECTL& rectangle : *rectangles) {
                borders.push_back(rectangle.top);
                borders.push_back(rectangle.bottom);
            }
        std::sort(borders.begin(), borders.end());
        borders.erase(std::unique(borders.begin(), borders.end()), borders.end());
        return borders;
    }

    // Walks the ends of the spans of both rows from left to right. A row's ends alternate between start and
    // stop, so the count of ends passed tells whether one is inside.
    void CombineSpans(const std::vector<Span>& first, const std::vector<Span>& second, Keep keep,
                      std::vector<Span>& out)
    {
        out.clear();
        const auto end = [](const std::vector<Span>& spans, std::size_t i) {
            return i & 1 ? spans[i / 2].right : spans[i / 2].left;
        };
        std::size_t i = 0, j = 0;
        while (i < first.size() * 2 || j < second.size() * 2) {
            const bool haveFirst = i < first.size() * 2, haveSecond = j < second.size() * 2;
            LONG x = haveFirst ? end(first, i) : end(second, j);
            if (haveSecond)
                x = std::min(x, end(second, j));
            const bool wasKept = keep(i & 1, j & 1);
            while (i < first.size() * 2 && end(first, i) == x)
                ++i;
            while (j < second.size() * 2 && end(second, j) == x)
                ++j;
            const bool isKept = keep(i & 1, j & 1);
            if (isKept && !wasKept)
                out.push_back({x, x});
            else if (!isKept && wasKept)
                out.back().right = x;
        }
    }

    Region Combine(const Region& first, const Region& second, Keep keep)
    {
        Region result;
        BandReader firstBands(first.Rectangles()), secondBands(second.Rectangles());
        std::vector<Span> firstSpans, secondSpans, spans;
        const std::vector<LONG> borders = RowBorders(first.Rectangles(), second.Rectangles());
        for (std::size_t i = 0; i + 1 < borders.size(); ++i) {
            firstBands.SpansAt(borders[i], firstSpans);
            secondBands.SpansAt(borders[i], secondSpans);
            CombineSpans(firstSpans, secondSpans, keep, spans);
            result.AppendBand(borders[i], borders[i + 1], spans);
        }
        return result;
    }

    // The usual case: the pixels of a line, of a clip. Those need no algebra.
    bool AreBands(const Rectangles& sorted)
    {
        for (std::size_t i = 0; i < sorted.size(); ++i) {
            if (engine::IsEmpty(sorted[i]))
                return false;
            if (i == 0)
                continue;
            const RECTL &before = sorted[i - 1], &here = sorted[i];
            const bool sameBand = before.top == here.top && before.bottom == here.bottom && before.right <= here.left;
            if (!sameBand && before.bottom > here.top)
                return false;
        }
        return true;
    }

    // Halves keep the work at n log n for the long lists that pictures of glyphs and lines make.
    Region UnionOf(Rectangles::const_iterator begin, Rectangles::const_iterator end)
    {
        if (begin == end)
            return Region();
        if (end - begin == 1)
            return Region(*begin);
        const auto middle = begin + (end - begin) / 2;
        return Union(UnionOf(begin, middle), UnionOf(middle, end));
    }

} // namespace

Region::Region(const RECTL& rectangle)
{
    if (!engine::IsEmpty(rectangle))
        rectangles_.push_back(rectangle);
}

Region::Region(const std::vector<RECTL>& rectangles)
{
    std::vector<RECTL> sorted = rectangles;
    std::sort(sorted.begin(), sorted.end(), [](const RECTL& first, const RECTL& second) {
        return first.top != second.top ? first.top < second.top : first.left < second.left;
    });
    if (AreBands(sorted))
        AppendBands(sorted);
    else
        *this = UnionOf(sorted.begin(), sorted.end());
}

// Bands that may still touch each other, in order.
void Region::AppendBands(const std::vector<RECTL>& bands)
{
    std::vector<Span> spans;
    for (std::size_t i = 0; i < bands.size();) {
        const RECTL& band = bands[i];
        spans.clear();
        for (; i < bands.size() && bands[i].top == band.top; ++i)
            if (!spans.empty() && spans.back().right == bands[i].left)
                spans.back().right = bands[i].right;
            else
                spans.push_back({bands[i].left, bands[i].right});
        AppendBand(band.top, band.bottom, spans);
    }
}

RECTL Region::Bounds() const
{
    if (rectangles_.empty())
        return {0, 0, 0, 0};
    RECTL bounds = rectangles_.front();
    for (const RECTL& rectangle : rectangles_) {
        bounds.left = std::min(bounds.left, rectangle.left);
        bounds.right = std::max(bounds.right, rectangle.right);
    }
    bounds.bottom = rectangles_.back().bottom;
    return bounds;
}

bool Region::Contains(LONG x, LONG y) const
{
    return std::any_of(rectangles_.begin(), rectangles_.end(),
                       [x, y](const RECTL& rectangle) { return engine::Contains(rectangle, x, y); });
}

void Region::Move(LONG dx, LONG dy)
{
    const std::vector<RECTL> before = std::move(rectangles_);
    rectangles_.clear();
    for (std::size_t i = 0; i < before.size();) {
        const LONG top = before[i].top;
        const RECTL band = Moved(before[i], 0, dy);
        std::vector<Span> spans;
        for (; i < before.size() && before[i].top == top; ++i) {
            const RECTL moved = Moved(before[i], dx, dy);
            if (moved.left < moved.right)
                spans.push_back({moved.left, moved.right});
        }
        AppendBand(band.top, band.bottom, spans);
    }
}

void Region::AppendBand(LONG top, LONG bottom, const std::vector<Span>& spans)
{
    if (top >= bottom || spans.empty() || ExtendLastBand(top, bottom, spans))
        return;
    lastBand_ = rectangles_.size();
    for (const Span& span : spans)
        rectangles_.push_back({span.left, top, span.right, bottom});
}

bool Region::ExtendLastBand(LONG top, LONG bottom, const std::vector<Span>& spans)
{
    if (rectangles_.empty() || rectangles_.back().bottom != top || rectangles_.size() - lastBand_ != spans.size())
        return false;
    for (std::size_t i = 0; i < spans.size(); ++i)
        if (!(Span{rectangles_[lastBand_ + i].left, rectangles_[lastBand_ + i].right} == spans[i]))
            return false;
    for (std::size_t i = lastBand_; i < rectangles_.size(); ++i)
        rectangles_[i].bottom = bottom;
    return true;
}

bool operator==(const Region& first, const Region& second)
{
    return std::equal(first.rectangles_.begin(), first.rectangles_.end(), second.rectangles_.begin(),
                      second.rectangles_.end(), AreEqual);
}

Region Union(const Region& first, const Region& second)
{
    return Combine(first, second, [](bool a, bool b) { return a || b; });
}

Region Intersection(const Region& first, const Region& second)
{
    return Combine(first, second, [](bool a, bool b) { return a && b; });
}

Region Difference(const Region& first, const Region& second)
{
    return Combine(first, second, [](bool a, bool b) { return a && !b; });
}

Region SymmetricDifference(const Region& first, const Region& second)
{
    return Combine(first, second, [](bool a, bool b) { return a != b; });
}

} // namespace engine
