#pragma once

// A random pointer shape, for the model and as the bitmaps that DrvSetPointerShape is given.

#include <memory>

#include "engine/core/objects.h"
#include "tests/property/model_cursor.h"
#include "tests/property/pictures.h"

namespace property {

class PointerShape {
public:
    PointerShape(Random& random, const Format& screen);
    ~PointerShape();
    PointerShape(const PointerShape&) = delete;
    PointerShape& operator=(const PointerShape&) = delete;

    Shape shape;
    engine::Surface* mask = nullptr; // may stay null
    engine::Surface* colours = nullptr;
    std::unique_ptr<engine::Translation> translation;

private:
    void MakeMask(const SIZEL& size);
    void MakeColours(const Format& format, const SIZEL& size);
    void MakeAlpha(const SIZEL& size);
    ULONG AlphaPixel();
    Format OtherFormat();

    Random& random_;
    const Format screen_;
};

} // namespace property
