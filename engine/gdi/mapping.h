#pragma once

// From logical units to the pixels of the device that a drawing was made for: window and viewport.

#include "engine/gdi/transform.h"

namespace engine::gdi {

enum class MapMode : ULONG { Text = 1, LowMetric, HighMetric, LowEnglish, HighEnglish, Twips, Isotropic, Anisotropic };

// The device that a drawing was made for.
struct ReferenceDevice {
    SIZEL pixels = {1024, 768};
    SIZEL millimetres = {270, 203};
};

class Mapping {
public:
    explicit Mapping(const ReferenceDevice& device = {})
        : device_(device)
    {
    }

    bool SetMode(ULONG mode); // false for a mode that does not exist
    MapMode Mode() const { return mode_; }
    void SetWindowOrigin(POINTL origin) { windowOrigin_ = origin; }
    void SetViewportOrigin(POINTL origin) { viewportOrigin_ = origin; }
    // Extents count in the two free modes alone; one of 0 is refused.
    bool SetWindowExtent(SIZEL extent);
    bool SetViewportExtent(SIZEL extent);
    bool ScaleWindow(LONG xNumerator, LONG xDenominator, LONG yNumerator, LONG yDenominator);
    bool ScaleViewport(LONG xNumerator, LONG xDenominator, LONG yNumerator, LONG yDenominator);

    Transform PageToDevice() const;

private:
    struct Extent {
        double x, y;
    };
    bool IsFree() const { return mode_ == MapMode::Isotropic || mode_ == MapMode::Anisotropic; }
    bool Set(Extent& extent, SIZEL value);
    bool ScaleExtent(Extent& extent, LONG xNumerator, LONG xDenominator, LONG yNumerator, LONG yDenominator);
    Extent SquareViewport() const;

    ReferenceDevice device_;
    MapMode mode_ = MapMode::Text;
    POINTL windowOrigin_ = {}, viewportOrigin_ = {};
    Extent window_ = {1, 1}, viewport_ = {1, 1};
};

} // namespace engine::gdi
