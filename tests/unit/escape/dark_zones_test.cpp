#include "escape/dark_zones.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "engine/core/engine.h"

namespace {

using koru::InsertDarkZone;
using koru::IsCoveredByDarkZones;
using koru::LIST;

constexpr LONG Lowest = -2147483647 - 1;
constexpr LONG Highest = 2147483647;

struct CoverageCase {
    const char* name;
    std::vector<RECTL> zones;
    RECTL rectangle;
    BOOL outside; // 1: some part lies outside every zone
};

const CoverageCase Cases[] = {
    {.name = "NoZones", .zones = {}, .rectangle = {0, 0, 10, 10}, .outside = 1},
    {.name = "ExactlyOneZone", .zones = {{0, 0, 10, 10}}, .rectangle = {0, 0, 10, 10}, .outside = 0},
    {.name = "OnePixelWider", .zones = {{0, 0, 10, 10}}, .rectangle = {0, 0, 11, 10}, .outside = 1},
    {.name = "OnePixelHigher", .zones = {{0, 0, 10, 10}}, .rectangle = {0, 0, 10, 11}, .outside = 1},
    {.name = "OnePixelFartherLeft", .zones = {{0, 0, 10, 10}}, .rectangle = {-1, 0, 10, 10}, .outside = 1},
    {.name = "OnePixelFartherUp", .zones = {{0, 0, 10, 10}}, .rectangle = {0, -1, 10, 10}, .outside = 1},
    {.name = "InsideAZone", .zones = {{0, 0, 10, 10}}, .rectangle = {3, 3, 4, 4}, .outside = 0},
    {.name = "TouchingAZone", .zones = {{0, 0, 10, 10}}, .rectangle = {10, 0, 20, 10}, .outside = 1},
    {.name = "TwoAdjacentZones", .zones = {{0, 0, 5, 10}, {5, 0, 10, 10}}, .rectangle = {0, 0, 10, 10}, .outside = 0},
    {.name = "TwoZonesOneAboveTheOther",
     .zones = {{0, 5, 10, 10}, {0, 0, 10, 5}},
     .rectangle = {0, 0, 10, 10},
     .outside = 0},
    {.name = "AGapOfOneColumn", .zones = {{0, 0, 5, 10}, {6, 0, 10, 10}}, .rectangle = {0, 0, 10, 10}, .outside = 1},
    {.name = "AHoleOfOnePixelAmongFour",
     .zones = {{0, 0, 10, 4}, {0, 5, 10, 10}, {0, 0, 4, 10}, {5, 0, 10, 10}},
     .rectangle = {0, 0, 10, 10},
     .outside = 1},
    {.name = "ACrossWithItsCorners",
     .zones = {{4, 0, 6, 10}, {0, 4, 10, 6}, {0, 0, 4, 4}, {6, 0, 10, 4}, {0, 6, 4, 10}, {6, 6, 10, 10}},
     .rectangle = {0, 0, 10, 10},
     .outside = 0},
    {.name = "OnlyTheLastPixelMissing",
     .zones = {{0, 0, 10, 9}, {0, 0, 9, 10}},
     .rectangle = {0, 0, 10, 10},
     .outside = 1},
    {.name = "AReversedZoneCoversNothing", .zones = {{10, 10, 0, 0}}, .rectangle = {2, 2, 4, 4}, .outside = 1},
    {.name = "AnEmptyZoneCoversNothing", .zones = {{0, 0, 0, 10}}, .rectangle = {0, 0, 1, 1}, .outside = 1},
    {.name = "AnEmptyRectangle", .zones = {{0, 0, 10, 10}}, .rectangle = {5, 5, 5, 6}, .outside = 1},
    {.name = "AReversedRectangle", .zones = {{0, 0, 10, 10}}, .rectangle = {6, 2, 4, 8}, .outside = 1},
    {.name = "TheWholePlane",
     .zones = {{Lowest, Lowest, Highest, Highest}},
     .rectangle = {Lowest, Lowest, Highest, Highest},
     .outside = 0},
    {.name = "TheWholePlaneInHalves",
     .zones = {{Lowest, Lowest, 0, Highest}, {-1, Lowest, Highest, Highest}},
     .rectangle = {Lowest, Lowest, Highest, Highest},
     .outside = 0},
};

class DarkZones : public testing::TestWithParam<CoverageCase> {
protected:
    ~DarkZones() override { zones.Clear(); }

    engine::Engine engine;
    LIST zones = {};
};

TEST_P(DarkZones, LeaveOutside)
{
    for (const RECTL& zone : GetParam().zones)
        InsertDarkZone(zones, zone);
    const ULONG requests = engine.RequestCount(engine::Request::Memory);
    EXPECT_EQ(IsCoveredByDarkZones(zones, GetParam().rectangle), GetParam().outside);
    EXPECT_EQ(engine.RequestCount(engine::Request::Memory), requests) << "capture must not allocate";
    EXPECT_EQ(engine.TakeDebugOutput(), "");
}

INSTANTIATE_TEST_SUITE_P(Cases, DarkZones, testing::ValuesIn(Cases),
                         [](const auto& info) { return std::string(info.param.name); });

// Small coordinates around 0, so that edges often coincide.
class Random {
public:
    explicit Random(unsigned seed)
        : random_(seed)
    {
    }
    LONG Below(LONG end) { return static_cast<LONG>(random_() % static_cast<unsigned>(end)); }
    RECTL Rectangle(LONG largest)
    {
        const LONG left = Below(13) - 6;
        const LONG top = Below(13) - 6;
        return {left, top, left + Below(largest + 2) - 1, top + Below(largest + 2) - 1};
    }

private:
    std::mt19937 random_;
};

bool Holds(const RECTL& r, LONG x, LONG y)
{
    return r.left <= x && x < r.right && r.top <= y && y < r.bottom;
}

BOOL LeavesAPixel(const std::vector<RECTL>& zones, const RECTL& rectangle)
{
    if (rectangle.left >= rectangle.right || rectangle.top >= rectangle.bottom)
        return 1;
    for (LONG y = rectangle.top; y < rectangle.bottom; ++y) {
        for (LONG x = rectangle.left; x < rectangle.right; ++x) {
            bool dark = false;
            for (const RECTL& zone : zones)
                dark = dark || Holds(zone, x, y);
            if (!dark)
                return 1;
        }
    }
    return 0;
}

TEST(RandomDarkZones, AgreeWithABitmap)
{
    engine::Engine engine;
    int covered = 0;
    for (unsigned seed = 0; seed < 20000; ++seed) {
        Random random(seed);
        LIST list = {};
        std::vector<RECTL> zones(static_cast<std::size_t>(random.Below(24)));
        for (RECTL& zone : zones) {
            zone = random.Rectangle(10);
            InsertDarkZone(list, zone);
        }
        const RECTL rectangle = random.Rectangle(6);
        const BOOL expected = LeavesAPixel(zones, rectangle);
        ASSERT_EQ(IsCoveredByDarkZones(list, rectangle), expected) << "seed " << seed;
        covered += expected == 0;
        list.Clear();
    }
    EXPECT_GT(covered, 2000) << "hardly any case was covered";
}

} // namespace
