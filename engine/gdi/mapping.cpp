#include "engine/gdi/mapping.h"

#include <cmath>

namespace engine::gdi {

namespace {

    // Units per millimetre of the fixed modes, LowMetric first.
    constexpr double UnitsPerMillimetre[] = {10, 100, 100 / 25.4, 1000 / 25.4, 1440 / 25.4};

} // namespace

bool Mapping::SetMode(ULONG mode)
{
    if (mode < static_cast<ULONG>(MapMode::Text) || mode > static_cast<ULONG>(MapMode::Anisotropic))
        return false;
    // Anisotropic keeps the extents of the mode before it; isotropic starts as the low metric mode.
    const auto wanted = static_cast<MapMode>(mode);
    if (wanted == MapMode::Text) {
        window_ = viewport_ = {1, 1};
    } else if (wanted != MapMode::Anisotropic) {
        const ULONG row = wanted == MapMode::Isotropic ? 0 : mode - static_cast<ULONG>(MapMode::LowMetric);
        const double units = UnitsPerMillimetre[row];
        window_ = {device_.millimetres.cx * units, device_.millimetres.cy * units};
        viewport_ = {static_cast<double>(device_.pixels.cx), -static_cast<double>(device_.pixels.cy)};
    }
    mode_ = wanted;
    return true;
}

bool Mapping::Set(Extent& extent, SIZEL value)
{
    if (!IsFree())
        return true;
    if (value.cx == 0 || value.cy == 0)
        return false;
    extent = {static_cast<double>(value.cx), static_cast<double>(value.cy)};
    return true;
}

bool Mapping::SetWindowExtent(SIZEL extent)
{
    return Set(window_, extent);
}

bool Mapping::SetViewportExtent(SIZEL extent)
{
    return Set(viewport_, extent);
}

bool Mapping::ScaleExtent(Extent& extent, LONG xNumerator, LONG xDenominator, LONG yNumerator, LONG yDenominator)
{
    if (!IsFree())
        return true;
    if (xNumerator == 0 || xDenominator == 0 || yNumerator == 0 || yDenominator == 0)
        return false;
    extent.x *= static_cast<double>(xNumerator) / xDenominator;
    extent.y *= static_cast<double>(yNumerator) / yDenominator;
    return true;
}

bool Mapping::ScaleWindow(LONG xNumerator, LONG xDenominator, LONG yNumerator, LONG yDenominator)
{
    return ScaleExtent(window_, xNumerator, xDenominator, yNumerator, yDenominator);
}

bool Mapping::ScaleViewport(LONG xNumerator, LONG xDenominator, LONG yNumerator, LONG yDenominator)
{
    return ScaleExtent(viewport_, xNumerator, xDenominator, yNumerator, yDenominator);
}

// The larger scale gives way, so that a unit is as long in x as in y. Devices may have oblong pixels.
Mapping::Extent Mapping::SquareViewport() const
{
    const double xPixel = static_cast<double>(device_.millimetres.cx) / device_.pixels.cx;
    const double yPixel = static_cast<double>(device_.millimetres.cy) / device_.pixels.cy;
    const double x = std::fabs(viewport_.x / window_.x) * xPixel, y = std::fabs(viewport_.y / window_.y) * yPixel;
    if (x > y)
        return {viewport_.x * y / x, viewport_.y};
    return {viewport_.x, viewport_.y * x / y};
}

Transform Mapping::PageToDevice() const
{
    const Extent viewport = mode_ == MapMode::Isotropic ? SquareViewport() : viewport_;
    const Transform scale = Transform::Scale(viewport.x / window_.x, viewport.y / window_.y);
    return Transform::Move(-static_cast<double>(windowOrigin_.x), -static_cast<double>(windowOrigin_.y))
        .Then(scale)
        .Then(Transform::Move(viewportOrigin_.x, viewportOrigin_.y));
}

} // namespace engine::gdi
