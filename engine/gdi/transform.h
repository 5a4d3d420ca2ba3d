#pragma once

// Points and affine transforms, as x' = x * m11 + y * m21 + dx, y' = x * m12 + y * m22 + dy.

#include "engine/raster/rectangles.h"

namespace engine::gdi {

struct PointD {
    double x = 0, y = 0;
};

struct Transform {
    double m11 = 1, m12 = 0, m21 = 0, m22 = 1, dx = 0, dy = 0;

    static Transform Scale(double x, double y) { return {x, 0, 0, y, 0, 0}; }
    static Transform Move(double x, double y) { return {1, 0, 0, 1, x, y}; }

    Transform Then(const Transform& next) const; // this one first
    Transform Inverse() const; // of a transform that is not IsFlat()
    PointD Apply(PointD point) const { return {Along(point).x + dx, Along(point).y + dy}; }
    PointD Along(PointD vector) const; // without the move
    double Determinant() const { return m11 * m22 - m12 * m21; }
    double MeanScale() const; // of lengths
    bool IsFlat() const; // maps the plane to a line, or holds what is no number
    bool IsAxisAligned() const { return m12 == 0 && m21 == 0; }
};

// Coordinates on a device are cut to what 28.4 numbers and the sums of a few of them hold.
constexpr LONG FarAway = 1 << 20;

LONG ToLong(double value); // nearest, halves upwards; within FarAway
POINTL ToPixel(PointD point);
POINTFIX ToFix(PointD point);
POINTFIX ToFix(POINTL pixel);
PointD ToPoint(POINTFIX point);

RECTL Around(const RECTL& first, const RECTL& second); // both; an empty one adds nothing
// The pixels whose centres lie right of or on the left edge and left of the right one; so for the others.
RECTL PixelsWithin(PointD corner, PointD opposite);

} // namespace engine::gdi
