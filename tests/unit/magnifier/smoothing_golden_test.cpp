#include <gtest/gtest.h>

#include <tuple>

#include "tests/unit/magnifier/smoothing_fixture.h"

// The light colours win in most of these pictures, so that it is the red (or other dark) ones that grow.

namespace {

using namespace pictures;

struct Golden {
    const char* name;
    ULONG improveFactor = 1;
    BYTE xFactor = 2, yFactor = 2;
    ULONG pickColour = 0;
    std::string source, expected;
};

void PrintTo(const Golden& golden, std::ostream* out)
{
    *out << golden.name;
}

const Golden goldens[] = {
    {.name = "MainDiagonal",
     .xFactor = 4,
     .yFactor = 4,
     .source = Lines({
         "RW",
         "WR",
     }),
     .expected = Lines({
         "RRRRWWWW",
         "RRRRRWWW",
         "RRRRRRWW",
         "RRRRRRRW",
         "WRRRRRRR",
         "WWRRRRRR",
         "WWWRRRRR",
         "WWWWRRRR",
     })},
    {.name = "AntiDiagonal",
     .xFactor = 4,
     .yFactor = 4,
     .source = Lines({
         "WR",
         "RW",
     }),
     .expected = Lines({
         "WWWWRRRR",
         "WWWRRRRR",
         "WWRRRRRR",
         "WRRRRRRR",
         "RRRRRRRW",
         "RRRRRRWW",
         "RRRRRWWW",
         "RRRRWWWW",
     })},
    {.name = "TheDarkerColourWinning",
     .xFactor = 4,
     .yFactor = 4,
     .pickColour = 1,
     .source = Lines({
         "RW",
         "WR",
     }),
     .expected = Lines({
         "RRRRWWWW",
         "RRRWWWWW",
         "RRWWWWWW",
         "RWWWWWWW",
         "WWWWWWWR",
         "WWWWWWRR",
         "WWWWWRRR",
         "WWWWRRRR",
     })},
    {.name = "SmallestFactors",
     .source = Lines({
         "RW",
         "WR",
     }),
     .expected = Lines({
         "RRWW",
         "RRRW",
         "WRRR",
         "WWRR",
     })},
    {.name = "UnequalFactors",
     .xFactor = 3,
     .yFactor = 5,
     .source = Lines({
         "RW",
         "WR",
     }),
     .expected = Lines({
         "RRRWWW",
         "RRRWWW",
         "RRRWWW",
         "RRRRWW",
         "RRRRRW",
         "WRRRRR",
         "WWRRRR",
         "WWWRRR",
         "WWWRRR",
         "WWWRRR",
     })},
    {.name = "OddTargetColumns",
     .xFactor = 3,
     .source = Lines({
         "WRW",
         "RWR",
     }),
     .expected = Lines({
         "WWWRRRWWW",
         "WWRRRRRWW",
         "RRRRWRRRR",
         "RRRWWWRRR",
     })},
    {.name = "Checkerboard",
     .source = Lines({
         "RWR",
         "WRW",
         "RWR",
     }),
     .expected = Lines({
         "RRWWRR",
         "RRRRRR",
         "WRRRRW",
         "WRRRRW",
         "RRRRRR",
         "RRWWRR",
     })},
    {.name = "InnerCorner",
     .xFactor = 4,
     .yFactor = 4,
     .source = Lines({
         "RR",
         "WR",
     }),
     .expected = Lines({
         "RRRRRRRR",
         "RRRRRRRR",
         "RRRRRRRR",
         "RRRRRRRR",
         "WRRRRRRR",
         "WWRRRRRR",
         "WWWRRRRR",
         "WWWWRRRR",
     })},
    {.name = "EquallyBrightOnTheMainDiagonal",
     .xFactor = 4,
     .yFactor = 4,
     .source = Lines({
         "RB",
         "BR",
     }),
     .expected = Lines({
         "RRRRBBBB",
         "RRRRRBBB",
         "RRRRRRBB",
         "RRRRRRRB",
         "BBBBRRRR",
         "BBBBRRRR",
         "BBBBRRRR",
         "BBBBRRRR",
     })},
    {.name = "EquallyBrightBelowTheAntiDiagonal",
     .xFactor = 4,
     .yFactor = 4,
     .source = Lines({
         "WR",
         "RB",
     }),
     .expected = Lines({
         "WWWWRRRR",
         "WWWRRRRR",
         "WWRRRRRR",
         "WRRRRRRR",
         "RRRRRRRB",
         "RRRRRRBB",
         "RRRRRBBB",
         "RRRRBBBB",
     })},
    {.name = "EquallyBrightBelowTheMainDiagonal",
     .xFactor = 4,
     .yFactor = 4,
     .source = Lines({
         "RW",
         "BR",
     }),
     .expected = Lines({
         "RRRRWWWW",
         "RRRRRWWW",
         "RRRRRRWW",
         "RRRRRRRW",
         "BBBBRRRR",
         "BBBBRRRR",
         "BBBBRRRR",
         "BBBBRRRR",
     })},
    {.name = "EquallyBrightAboveTheAntiDiagonal",
     .source = Lines({
         "RB",
         "BW",
     }),
     .expected = Lines({
         "RRBB",
         "RRBB",
         "BBWW",
         "BBWW",
     })},
    {.name = "UniformArea", .source = Filled(3, 3, 'R'), .expected = Filled(6, 6, 'R')},
    {.name = "NoDiagonal",
     .source = Lines({
         "RG",
         "BW",
     }),
     .expected = Lines({
         "RRGG",
         "RRGG",
         "BBWW",
         "BBWW",
     })},
    {.name = "OneColumn", .source = Lines({"R", "W", "R"}), .expected = Lines({"RR", "RR", "WW", "WW", "RR", "RR"})},
    {.name = "OneRow", .source = Lines({"RWR"}), .expected = Lines({"RRWWRR", "RRWWRR"})},

    // Improve factor 2: no triangle at the edge of the picture, and the corners of boxes stay.
    {.name = "DiagonalInsideOnly",
     .improveFactor = 2,
     .xFactor = 3,
     .yFactor = 3,
     .source = Lines({
         "RWWW",
         "WRWW",
         "WWRW",
         "WWWR",
     }),
     .expected = Lines({
         "RRRWWWWWWWWW",
         "RRRWWWWWWWWW",
         "RRRWWWWWWWWW",
         "WWWRRRWWWWWW",
         "WWWRRRRWWWWW",
         "WWWRRRRRWWWW",
         "WWWWRRRRRWWW",
         "WWWWWRRRRWWW",
         "WWWWWWRRRWWW",
         "WWWWWWWWWRRR",
         "WWWWWWWWWRRR",
         "WWWWWWWWWRRR",
     })},
    {.name = "AntiDiagonalInsideOnly",
     .improveFactor = 2,
     .source = Lines({
         "WWWR",
         "WWRW",
         "WRWW",
         "RWWW",
     }),
     .expected = Lines({
         "WWWWWWRR",
         "WWWWWWRR",
         "WWWWRRWW",
         "WWWRRRWW",
         "WWRRRWWW",
         "WWRRWWWW",
         "RRWWWWWW",
         "RRWWWWWW",
     })},
    {.name = "CornerWithBothArms",
     .improveFactor = 2,
     .source = Lines({
         "WWWWW",
         "WRRRW",
         "WRWWW",
         "WRWWW",
         "WWWWW",
     }),
     .expected = Lines({
         "WWWWWWWWWW",
         "WWWWWWWWWW",
         "WWRRRRRRWW",
         "WWRRRRRRWW",
         "WWRRWWWWWW",
         "WWRRWWWWWW",
         "WWRRWWWWWW",
         "WWRRWWWWWW",
         "WWWWWWWWWW",
         "WWWWWWWWWW",
     })},
    {.name = "CornerWithOneArm",
     .improveFactor = 2,
     .source = Lines({
         "WWWWW",
         "WRRRW",
         "WRWWW",
         "WWWWW",
         "WWWWW",
     }),
     .expected = Lines({
         "WWWWWWWWWW",
         "WWWWWWWWWW",
         "WWRRRRRRWW",
         "WWRRRRRRWW",
         "WWRRRWWWWW",
         "WWRRWWWWWW",
         "WWWWWWWWWW",
         "WWWWWWWWWW",
         "WWWWWWWWWW",
         "WWWWWWWWWW",
     })},

    // Improve factor 3: lines with one step to two pixels become straight.
    {.name = "ShallowStep",
     .improveFactor = 3,
     .source = Lines({
         "WWWWWWWW",
         "WWWWWWWW",
         "WWRRWWWW",
         "WWWWRRWW",
         "WWWWWWWW",
         "WWWWWWWW",
     }),
     .expected = Lines({
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWRRRRRWWWWWWW",
         "WWWWRRRRRRRWWWWW",
         "WWWWWRRRRRRRWWWW",
         "WWWWWWWRRRRRWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
     })},
    {.name = "SteepStep",
     .improveFactor = 3,
     .source = Lines({
         "WWWWWW",
         "WWWWWW",
         "WWRWWW",
         "WWRWWW",
         "WWWRWW",
         "WWWRWW",
         "WWWWWW",
         "WWWWWW",
     }),
     .expected = Lines({
         "WWWWWWWWWWWW",
         "WWWWWWWWWWWW",
         "WWWWWWWWWWWW",
         "WWWWWWWWWWWW",
         "WWWWRRWWWWWW",
         "WWWWRRRWWWWW",
         "WWWWRRRWWWWW",
         "WWWWRRRRWWWW",
         "WWWWRRRRWWWW",
         "WWWWWRRRWWWW",
         "WWWWWRRRWWWW",
         "WWWWWWRRWWWW",
         "WWWWWWWWWWWW",
         "WWWWWWWWWWWW",
         "WWWWWWWWWWWW",
         "WWWWWWWWWWWW",
     })},
    {.name = "ShallowEdgeOfAnArea",
     .improveFactor = 3,
     .source = Lines({
         "WWWWWWWW",
         "WWWWWWWW",
         "WWWWRRRR",
         "WWRRRRRR",
         "RRRRRRRR",
         "RRRRRRRR",
         "RRRRRRRR",
     }),
     .expected = Lines({
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWRRRRRRRRR",
         "WWWWWRRRRRRRRRRR",
         "WWWRRRRRRRRRRRRR",
         "WWRRRRRRRRRRRRRR",
         "RRRRRRRRRRRRRRRR",
         "RRRRRRRRRRRRRRRR",
         "RRRRRRRRRRRRRRRR",
         "RRRRRRRRRRRRRRRR",
         "RRRRRRRRRRRRRRRR",
         "RRRRRRRRRRRRRRRR",
     })},
    {.name = "SteepEdgeOfAnArea",
     .improveFactor = 3,
     .source = Lines({
         "WWWWRRR",
         "WWWWRRR",
         "WWWRRRR",
         "WWWRRRR",
         "WWRRRRR",
         "WWRRRRR",
         "WWRRRRR",
         "WWRRRRR",
     }),
     .expected = Lines({
         "WWWWWWWWRRRRRR",
         "WWWWWWWWRRRRRR",
         "WWWWWWWRRRRRRR",
         "WWWWWWRRRRRRRR",
         "WWWWWWRRRRRRRR",
         "WWWWWRRRRRRRRR",
         "WWWWWRRRRRRRRR",
         "WWWWRRRRRRRRRR",
         "WWWWRRRRRRRRRR",
         "WWWWRRRRRRRRRR",
         "WWWWRRRRRRRRRR",
         "WWWWRRRRRRRRRR",
         "WWWWRRRRRRRRRR",
         "WWWWRRRRRRRRRR",
         "WWWWRRRRRRRRRR",
         "WWWWRRRRRRRRRR",
     })},
    {.name = "ThinStrokesThatMeet",
     .improveFactor = 3,
     .source = Lines({
         "WWWWWWWW",
         "WWWWWWWW",
         "WWWWRWWW",
         "WWRRRWWW",
         "WWWWWWWW",
         "WWWWWWWW",
     }),
     .expected = Lines({
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWRRWWWWWW",
         "WWWWWWWRRRWWWWWW",
         "WWWWRRRRRRWWWWWW",
         "WWWWRRRRRRWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
     })},
    {.name = "OrdinaryDiagonal",
     .improveFactor = 3,
     .xFactor = 4,
     .yFactor = 4,
     .source = Lines({
         "WWWW",
         "WRWW",
         "WWRW",
         "WWWW",
     }),
     .expected = Lines({
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWRRRRWWWWWWWW",
         "WWWWRRRRRWWWWWWW",
         "WWWWRRRRRRWWWWWW",
         "WWWWRRRRRRRWWWWW",
         "WWWWWRRRRRRRWWWW",
         "WWWWWWRRRRRRWWWW",
         "WWWWWWWRRRRRWWWW",
         "WWWWWWWWRRRRWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
         "WWWWWWWWWWWWWWWW",
     })},
    {.name = "TooSmallForTheLargeWindow",
     .improveFactor = 3,
     .source = Lines({
         "RWW",
         "WRW",
         "WWR",
     }),
     .expected = Lines({
         "RRWWWW",
         "RRWWWW",
         "WWRRWW",
         "WWRRWW",
         "WWWWRR",
         "WWWWRR",
     })},
};

class SmoothingGolden : public SmoothingFixture, public testing::WithParamInterface<std::tuple<Golden, Form>> {
protected:
    SmoothingGolden()
    {
        const Golden& golden = std::get<0>(GetParam());
        improveFactor = golden.improveFactor;
        xFactor = golden.xFactor;
        yFactor = golden.yFactor;
        pickColour = golden.pickColour;
        Use(std::get<1>(GetParam()));
    }
};

TEST_P(SmoothingGolden, IsPaintedExactly)
{
    const Golden& golden = std::get<0>(GetParam());
    EXPECT_EQ(Smooth(golden.source), WithMargin(golden.expected));
    EXPECT_EQ(Smooth(golden.source, true), WithMargin(golden.expected)) << "bottom-up";
}

INSTANTIATE_TEST_SUITE_P(Of, SmoothingGolden, testing::Combine(testing::ValuesIn(goldens), testing::ValuesIn(AllForms)),
                         [](const auto& info) {
                             return std::get<0>(info.param).name + ("_" + NameOf(std::get<1>(info.param)));
                         });

} // namespace
