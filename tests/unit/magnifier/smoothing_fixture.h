#pragma once

#include <gtest/gtest.h>

#include "driver/driver_values.h"
#include "driver/pool.h"
#include "engine/core/engine.h"
#include "escape/color_pair_list.h"
#include "magnifier/palette.h"
#include "magnifier/smoothing.h"
#include "tests/unit/magnifier/pictures.h"

// Runs the smoothing over a picture stretched by whole factors, in any pixel format.
class SmoothingFixture : public testing::Test {
protected:
    void Use(pictures::Form newForm)
    {
        form = newForm;
        koru::RequestedColourDepth = pictures::DepthOf(form);
        koru::FreeToPool(colourTable);
        colourTable = koru::DefaultColourTable(pictures::FormatOf(form));
    }
    ~SmoothingFixture() override
    {
        koru::FreeToPool(colourTable);
        koru::ColorPairList::Clear();
        koru::RequestedColourDepth = 0;
        engine.CheckGuards();
        EXPECT_EQ(engine.Violations(), std::vector<std::string>());
    }

    // The request for a whole picture whose top left block lies at (left, top) of the target.
    koru::SmoothRequest Whole(engine::Surface* target, engine::Surface* source, LONG left, LONG top) const
    {
        const SIZEL size = source->sizlBitmap;
        const RECTL whole = {0, 0, size.cx, size.cy};
        const RECTL dest = {left, top, left + size.cx * xFactor, top + size.cy * yFactor};
        return {.psoTrg = target,
                .psoSrc = source,
                .rclTrg = dest,
                .rclSrc = whole,
                .improveFactor = improveFactor,
                .originalRect = whole,
                .destRect = dest,
                .colourTable = colourTable,
                .xFactor = xFactor,
                .yFactor = yFactor,
                .pickColour = pickColour};
    }

    // The picture stretched and smoothed, with a grey margin round it that must stay.
    std::string Smooth(const std::string& picture, bool bottomUp = false)
    {
        using namespace pictures;
        const std::string stretched = WithMargin(Stretched(picture, xFactor, yFactor));
        engine::Surface* const source = MakeSurface(picture, form, Delta(picture, bottomUp));
        engine::Surface* const target = MakeSurface(stretched, form, Delta(stretched, bottomUp));
        koru::SmoothMagnified(Whole(target, source, MarginLeft, MarginTop));
        std::string smoothed = PictureOf(*target, form);
        engine::DestroyBitmap(source);
        engine::DestroyBitmap(target);
        return smoothed;
    }

    static std::string WithMargin(const std::string& picture)
    {
        const SIZEL size = pictures::SizeOf(picture);
        return pictures::WithPicture(pictures::Filled(size.cx + 2 * MarginLeft, size.cy + 2 * MarginTop, 'K'),
                                     MarginLeft, MarginTop, picture);
    }

    LONG Delta(const std::string& picture, bool bottomUp) const
    {
        const ULONG row = engine::RowBytes(pictures::FormatOf(form), pictures::SizeOf(picture).cx);
        const LONG padded = static_cast<LONG>((row + 3) & ~3u);
        return bottomUp ? -padded : padded;
    }

    static constexpr LONG MarginLeft = 3, MarginTop = 2;
    engine::Engine engine;
    pictures::Form form = pictures::Form::Bits32;
    BYTE* colourTable = nullptr;
    ULONG improveFactor = 1;
    BYTE xFactor = 4, yFactor = 4;
    ULONG pickColour = 0;
};
