#include "engine/gdi/transform.h"

#include <algorithm>
#include <cmath>

namespace engine::gdi {

namespace {

    constexpr double FixPerPixel = 16;

    // Also of what is no number.
    double Bounded(double value)
    {
        if (std::isnan(value))
            return 0;
        return std::clamp(value, -static_cast<double>(FarAway), static_cast<double>(FarAway));
    }

} // namespace

Transform Transform::Then(const Transform& next) const
{
    const PointD x = next.Along({m11, m12}), y = next.Along({m21, m22}), move = next.Apply({dx, dy});
    return {x.x, x.y, y.x, y.y, move.x, move.y};
}

Transform Transform::Inverse() const
{
    const double d = Determinant();
    const Transform linear = {m22 / d, -m12 / d, -m21 / d, m11 / d, 0, 0};
    const PointD move = linear.Along({-dx, -dy});
    return {linear.m11, linear.m12, linear.m21, linear.m22, move.x, move.y};
}

PointD Transform::Along(PointD vector) const
{
    return {vector.x * m11 + vector.y * m21, vector.x * m12 + vector.y * m22};
}

double Transform::MeanScale() const
{
    return std::sqrt(std::fabs(Determinant()));
}

bool Transform::IsFlat() const
{
    const double d = Determinant();
    return !std::isfinite(d) || !std::isfinite(dx) || !std::isfinite(dy) || std::fabs(d) < 1e-18;
}

LONG ToLong(double value)
{
    return static_cast<LONG>(std::floor(Bounded(value) + 0.5));
}

POINTL ToPixel(PointD point)
{
    return {ToLong(point.x), ToLong(point.y)};
}

POINTFIX ToFix(PointD point)
{
    return {static_cast<FIX>(std::floor(Bounded(point.x) * FixPerPixel + 0.5)),
            static_cast<FIX>(std::floor(Bounded(point.y) * FixPerPixel + 0.5))};
}

POINTFIX ToFix(POINTL pixel)
{
    return {pixel.x * 16, pixel.y * 16};
}

PointD ToPoint(POINTFIX point)
{
    return {point.x / FixPerPixel, point.y / FixPerPixel};
}

RECTL Around(const RECTL& first, const RECTL& second)
{
    if (IsEmpty(first))
        return second;
    if (IsEmpty(second))
        return first;
    return {std::min(first.left, second.left), std::min(first.top, second.top), std::max(first.right, second.right),
            std::max(first.bottom, second.bottom)};
}

RECTL PixelsWithin(PointD corner, PointD opposite)
{
    const auto up = [](double value) { return static_cast<LONG>(std::ceil(Bounded(value))); };
    return {up(std::min(corner.x, opposite.x)), up(std::min(corner.y, opposite.y)), up(std::max(corner.x, opposite.x)),
            up(std::max(corner.y, opposite.y))};
}

} // namespace engine::gdi
