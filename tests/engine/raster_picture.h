#pragma once

// Small pictures as text for the tests of the raster operations: one character a pixel. '.' is 0, '#' is 1,
// '2' to '9' and 'a' to 'z' are 2 to 35; whatever else a pixel is comes out as '?'.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/core/engine.h"
#include "engine/core/surface.h"

namespace raster_tests {

using namespace engine;
using Art = std::vector<std::string>;
using Lines = std::vector<std::string>;

inline ULONG PixelOf(char character)
{
    if (character == '.')
        return 0;
    if (character == '#')
        return 1;
    return static_cast<ULONG>(character <= '9' ? character - '0' : character - 'a' + 10);
}

inline char CharacterOf(ULONG pixel)
{
    constexpr char characters[] = ".#23456789abcdefghijklmnopqrstuvwxyz";
    return pixel < sizeof(characters) - 1 ? characters[pixel] : '?';
}

inline Surface* Blank(LONG width, LONG height, ULONG format = BMF_32BPP, LONG lDelta = 0)
{
    return MakeBitmap({width, height}, PixelLayout::Default(format), lDelta);
}

inline Surface* Picture(const Art& art, ULONG format = BMF_32BPP, LONG lDelta = 0)
{
    Surface* const surface = Blank(static_cast<LONG>(art[0].size()), static_cast<LONG>(art.size()), format, lDelta);
    for (LONG y = 0; y < surface->sizlBitmap.cy; ++y)
        for (LONG x = 0; x < surface->sizlBitmap.cx; ++x)
            surface->SetPixel(x, y, PixelOf(art[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)]));
    return surface;
}

inline std::string Joined(const Art& art)
{
    std::string text = "\n";
    for (const std::string& line : art)
        text += line + '\n';
    return text;
}

inline std::string Shown(const Surface* surface)
{
    Art art;
    for (LONG y = 0; y < surface->sizlBitmap.cy; ++y) {
        art.emplace_back();
        for (LONG x = 0; x < surface->sizlBitmap.cx; ++x)
            art.back() += CharacterOf(surface->Pixel(x, y));
    }
    return Joined(art);
}

// Every test has an engine of its own and leaves no violation but those that it names.
class RasterTest : public testing::Test {
protected:
    void TearDown() override
    {
        engine.CheckGuards();
        EXPECT_EQ(engine.Violations(), expectedViolations);
    }
    void ExpectViolation(const std::string& violation) { expectedViolations.push_back(violation); }

    Engine engine;

private:
    Lines expectedViolations;
};

constexpr ULONG AllFormats[] = {BMF_1BPP, BMF_4BPP, BMF_8BPP, BMF_16BPP, BMF_24BPP, BMF_32BPP};

} // namespace raster_tests

#define EXPECT_PICTURE(surface, ...) EXPECT_EQ(Shown(surface), Joined(Art{__VA_ARGS__}))
