#pragma once

// What many records hold: points of 32 or of 16 bits, transforms.

#include <vector>

#include "engine/gdi/bytes.h"
#include "engine/gdi/transform.h"

namespace engine::gdi {

struct POINTS {
    SHORT x, y;
};

struct Xform {
    FLOATL m11, m12, m21, m22, dx, dy;
    operator Transform() const { return {m11, m12, m21, m22, dx, dy}; }
};

inline PointD ToPoint(const POINTL& point)
{
    return {static_cast<double>(point.x), static_cast<double>(point.y)};
}
inline PointD ToPoint(const POINTS& point)
{
    return {static_cast<double>(point.x), static_cast<double>(point.y)};
}

template<class Point> std::vector<PointD> ReadPoints(const Bytes& record, std::size_t offset, std::size_t count)
{
    std::vector<PointD> points;
    for (const Point& point : record.List<Point>(offset, count))
        points.push_back(ToPoint(point));
    return points;
}

} // namespace engine::gdi
