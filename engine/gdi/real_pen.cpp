#include "engine/gdi/real_pen.h"

#include <algorithm>
#include <cmath>

namespace engine::gdi {

namespace {

    constexpr double WidestPen = 4096, LongestDash = 1 << 16;

    struct DashPattern {
        std::size_t count;
        LONG lengths[6]; // dash, gap, ...
    };
    // PS_SOLID to PS_DASHDOTDOT: of lines one pixel wide in style units (commonly three pixels), of wider ones
    // in widths of the pen.
    constexpr DashPattern CosmeticDashes[] = {
        {0, {}}, {2, {6, 2}}, {2, {1, 1}}, {4, {3, 2, 1, 2}}, {6, {3, 1, 1, 1, 1, 1}}};
    constexpr DashPattern GeometricDashes[] = {
        {0, {}}, {2, {3, 1}}, {2, {1, 1}}, {4, {3, 1, 1, 1}}, {6, {3, 1, 1, 1, 1, 1}}};

    bool HasPattern(const LogicalPen& pen)
    {
        return pen.Line() >= PS_DASH && pen.Line() <= PS_DASHDOTDOT;
    }

    // Lengths that add up to something, so that a line comes to its end.
    std::vector<ULONG> UserDashes(const LogicalPen& pen)
    {
        if (pen.Line() != PS_USERSTYLE)
            return {};
        const bool any = std::any_of(pen.dashes.begin(), pen.dashes.end(), [](ULONG length) { return length != 0; });
        return any ? pen.dashes : std::vector<ULONG>();
    }

    ULONG JoinOf(const LogicalPen& pen)
    {
        return std::min(pen.style >> PS_JOIN_SHIFT & PS_JOIN_MASK, JOIN_MITER);
    }

    ULONG CapOf(const LogicalPen& pen)
    {
        return std::min(pen.style >> PS_ENDCAP_SHIFT & PS_ENDCAP_MASK, ENDCAP_BUTT);
    }

} // namespace

RealPen::RealPen(DeviceContext& dc, const LogicalPen& pen)
    : mix_(dc.MixFor(pen.brush))
{
    if (pen.IsNull())
        return;
    brush_ = dc.Realize(pen.brush);
    const double scale = dc.ToDevice().MeanScale();
    const bool geometric = pen.extended ? (pen.style & PS_GEOMETRIC) != 0 : pen.width * scale >= 1.5;
    if (geometric)
        MakeGeometric(pen, scale, dc.Now().miterLimit);
    else
        MakeCosmetic(pen);
    line_.cstyle = static_cast<ULONG>(style_.size());
    line_.pstyle = style_.empty() ? nullptr : style_.data();
    fillsGaps_ = !pen.extended && line_.cstyle != 0 && dc.Now().backMode == OPAQUE;
}

void RealPen::MakeCosmetic(const LogicalPen& pen)
{
    line_.elWidth.l = 1;
    if (pen.Line() == PS_ALTERNATE)
        line_.fl |= LA_ALTERNATE;
    const auto add = [this](LONG length) { style_.emplace_back().l = length; };
    if (HasPattern(pen)) {
        const DashPattern& pattern = CosmeticDashes[pen.Line()];
        for (std::size_t i = 0; i < pattern.count; ++i)
            add(pattern.lengths[i]);
    }
    for (const ULONG length : UserDashes(pen))
        add(static_cast<LONG>(std::clamp<double>(length, 1, LongestDash)));
}

void RealPen::MakeGeometric(const LogicalPen& pen, double scale, double miterLimit)
{
    const double width = std::clamp(pen.width * scale, 1.0, WidestPen);
    line_.fl = LA_GEOMETRIC;
    line_.iJoin = pen.extended ? JoinOf(pen) : JOIN_ROUND;
    line_.iEndCap = pen.extended ? CapOf(pen) : ENDCAP_ROUND;
    line_.elWidth.e = static_cast<FLOATL>(width);
    line_.eMiterLimit = static_cast<FLOATL>(std::clamp(miterLimit, 1.0, 1000.0));
    const auto add = [this](double length) {
        style_.emplace_back().e = static_cast<FLOATL>(std::clamp(length, 0.0, LongestDash));
    };
    if (pen.extended && HasPattern(pen)) { // an old wide pen is solid whatever its style
        const DashPattern& pattern = GeometricDashes[pen.Line()];
        for (std::size_t i = 0; i < pattern.count; ++i)
            add(pattern.lengths[i] * width);
    }
    for (const ULONG length : UserDashes(pen))
        add(length * scale);
    const double reach = line_.iJoin == JOIN_MITER ? width / 2 * line_.eMiterLimit : width;
    reach_ = static_cast<LONG>(std::ceil(std::min(reach, WidestPen * 4))) + 1;
}

void RealPen::LimitDashes(double pixels)
{
    constexpr double mostPeriods = 1 << 13;
    double period = 0;
    for (const FLOAT_LONG& length : style_)
        period += IsGeometric() ? static_cast<double>(length.e) : length.l;
    if (style_.empty() || pixels <= period * mostPeriods)
        return;
    line_.cstyle = 0;
    line_.pstyle = nullptr;
    fillsGaps_ = false;
}

} // namespace engine::gdi
