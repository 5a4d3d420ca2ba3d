#include "magnifier/magnify.h"

#include <climits>

#include "tests/unit/magnifier/magnifier_fixture.h"

namespace {

using namespace koru;
using namespace pictures;

const std::string screen = Lines({
    "RGBYWNKS",
    "GBYWNKSR",
    "BYWNKSRG",
    "YWNKSRGB",
    "WNKSRGBY",
});

class Magnifying : public MagnifierFixture {
protected:
    // An 8 x 5 screen: a zoomer's bitmap is 56 x 53.
    Magnifying() { Start(screen); }

    Zoomer* Add(const RECTL& original, LONG x, LONG y, ULONG xFactor, ULONG yFactor)
    {
        Zoomer* const zoomer = AddZoomer(original, {x, y, x + 1, y + 1}, xFactor);
        zoomer->SetYFactor(yFactor);
        return zoomer;
    }
    std::string MagnifiedIn(Zoomer* zoomer, const RECTL& source)
    {
        PaintBitmapOf(zoomer, 0, 0, Filled(56, 53, 'T'));
        Magnify(*zoomer, &SurfaceBehind(zoomer->hBmp), psoVirtual, source);
        return BitmapOf(zoomer, {0, 0, 56, 53});
    }
};

const std::string untouched = Filled(56, 53, 'T');

TEST_F(Magnifying, RepeatsEachPixelByTheFactors)
{
    Zoomer* const zoomer = Add({1, 1, 4, 3}, 5, 6, 3, 2);
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect),
              WithPicture(untouched, 5, 6,
                          Lines({
                              "BBBYYYWWW",
                              "BBBYYYWWW",
                              "YYYWWWNNN",
                              "YYYWWWNNN",
                          })));
}

TEST_F(Magnifying, CopiesAtFactorsOfOne)
{
    Zoomer* const zoomer = Add({1, 1, 4, 3}, 5, 6, 1, 1);
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect), WithPicture(untouched, 5, 6, Lines({"BYW", "YWN"})));
}

TEST_F(Magnifying, StretchesAlongOneAxisAlone)
{
    Zoomer* const zoomer = Add({1, 1, 3, 3}, 5, 6, 1, 2);
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect), WithPicture(untouched, 5, 6, Lines({"BY", "BY", "YW", "YW"})));
}

TEST_F(Magnifying, PutsAPartWhereItLiesInTheWhole)
{
    Zoomer* const zoomer = Add({1, 1, 4, 3}, 5, 6, 3, 2);
    EXPECT_EQ(MagnifiedIn(zoomer, {2, 2, 3, 3}), WithPicture(untouched, 8, 8, Lines({"WWW", "WWW"})));
    EXPECT_EQ(MagnifiedIn(zoomer, {-9, 2, 2, 99}), WithPicture(untouched, 5, 8, Lines({"YYY", "YYY"})))
        << "only what the zoomer shows";
}

TEST_F(Magnifying, TakesOnlyPixelsOfTheScreen)
{
    Zoomer* const zoomer = Add({-2, -1, 2, 1}, 4, 4, 2, 2);
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect), WithPicture(untouched, 8, 6, Lines({"RRGG", "RRGG"})));
    zoomer->SetOriginalRect({7, 4, 12, 12});
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect), WithPicture(untouched, 4, 4, Lines({"YY", "YY"})));
}

TEST_F(Magnifying, FillsBlocksThatCrossTheEdgesOfTheBitmap)
{
    Zoomer* const zoomer = Add({0, 0, 3, 3}, -1, -2, 3, 3);
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect),
              WithPicture(untouched, 0, 0,
                          Lines({
                              "RRGGGBBB",
                              "GGBBBYYY",
                              "GGBBBYYY",
                              "GGBBBYYY",
                              "BBYYYWWW",
                              "BBYYYWWW",
                              "BBYYYWWW",
                          })));
    zoomer->SetZoomedRect({52, 49, 60, 60});
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect),
              WithPicture(untouched, 52, 49,
                          Lines({
                              "RRRG",
                              "RRRG",
                              "RRRG",
                              "GGGB",
                          })));
}

TEST_F(Magnifying, DropsBlocksOutsideOfTheBitmap)
{
    Zoomer* const zoomer = Add({0, 0, 3, 3}, -6, -3, 3, 3);
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect),
              WithPicture(untouched, 0, 0,
                          Lines({
                              "YYY",
                              "YYY",
                              "YYY",
                              "WWW",
                              "WWW",
                              "WWW",
                          })));
    zoomer->SetZoomedRect({-9, 0, 0, 9});
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect), untouched);
    zoomer->SetZoomedRect({56, 0, 60, 9});
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect), untouched);
    zoomer->SetZoomedRect({0, 53, 60, 60});
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect), untouched);
}

TEST_F(Magnifying, FillsTheBitmapWithOneBlockLargerThanIt)
{
    Zoomer* const zoomer = Add({0, 0, 2, 2}, -200, -210, 200, 210);
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect), Filled(56, 53, 'B'));
    zoomer->SetZoomedRect({-100, -105, 0, 0});
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect), Filled(56, 53, 'R'));
    zoomer->SetZoomedRect({-173, -190, 0, 0});
    std::string expected = WithRectangle(Filled(56, 53, 'R'), {27, 0, 56, 53}, 'G');
    expected = WithRectangle(expected, {0, 20, 56, 53}, 'G');
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect), WithRectangle(expected, {27, 20, 56, 53}, 'B'));
}

TEST_F(Magnifying, DoesNothingWithoutAFactor)
{
    Zoomer* const zoomer = Add({0, 0, 3, 3}, 5, 6, 0, 2);
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect), untouched);
    EXPECT_EQ(SourceToDestination(*zoomer, {0, 0, 3, 3}), (RECTL{0, 0, 0, 0}));
    EXPECT_EQ(DestinationToSource(*zoomer, {5, 6, 9, 9}), (RECTL{0, 0, 0, 0}));
    zoomer->SetFactor(0);
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect), untouched);
}

TEST_F(Magnifying, DoesNothingWithImpossibleRectangles)
{
    Zoomer* const zoomer = Add({0, 0, 3, 3}, 5, 6, 3, 3);
    for (const RECTL& original :
         {RECTL{3, 3, 0, 0}, {2, 2, 2, 2}, {INT_MIN, 0, INT_MAX, 3}, {0, 0, 0x60000000, 2}, {0, INT_MIN, 4, INT_MAX}}) {
        zoomer->SetOriginalRect(original);
        EXPECT_EQ(MagnifiedIn(zoomer, original), untouched) << original;
        EXPECT_EQ(SourceToDestination(*zoomer, original), (RECTL{0, 0, 0, 0})) << original;
        EXPECT_EQ(DestinationToSource(*zoomer, zoomer->destRect), (RECTL{0, 0, 0, 0})) << original;
    }
    zoomer->SetOriginalRect({0, 0, 3, 3});
    zoomer->SetZoomedRect({INT_MAX - 4, 0, INT_MAX, 9});
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect), untouched);
}

TEST_F(Magnifying, ReachesTheScreenFromVeryFarAway)
{
    // 0x20000000 columns of which eight are on the screen; the picture begins as far left.
    Zoomer* const zoomer = Add({-0x10000000, 0, 0x10000000, 1}, -0x30000000 + 10, 0, 3, 1);
    EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect),
              WithPicture(untouched, 10, 0, Lines({"RRRGGGBBBYYYWWWNNNKKKSSS"})));
}

TEST_F(Magnifying, RemembersThePlaceOnlyOfAMovingZoomer)
{
    Zoomer* const zoomer = Add({0, 0, 3, 3}, 5, 6, 3, 3);
    const RECTL before = zoomer->previousZoomedRect;
    MagnifiedIn(zoomer, zoomer->originalRect);
    EXPECT_EQ(zoomer->previousZoomedRect, before);
    zoomer->mode = ModeMoving;
    zoomer->SetOriginalRect({3, 3, 0, 0});
    MagnifiedIn(zoomer, {0, 0, 1, 1});
    EXPECT_EQ(zoomer->previousZoomedRect, (RECTL{5, 6, 6, 7})) << "even when nothing could be magnified";
}

TEST_F(Magnifying, SmoothsAcrossTheEdgesOfTheBitmap)
{
    const std::string diagonal = Lines({
        "RWWW",
        "WRWW",
        "WWRW",
        "WWWR",
    });
    PaintVirtual(0, 0, diagonal);
    Zoomer* const zoomer = Add({0, 0, 4, 4}, 0, 0, 3, 3);
    zoomer->SetImproveFactor(1);
    const std::string whole = Part(MagnifiedIn(zoomer, zoomer->originalRect), {0, 0, 12, 12});
    EXPECT_NE(whole, Stretched(diagonal, 3, 3));
    for (const POINTL corner : {POINTL{-1, -2}, {-4, -3}, {-8, -5}, {50, 47}, {46, 44}}) {
        zoomer->SetZoomedRect({corner.x, corner.y, corner.x + 12, corner.y + 12});
        const RECTL visible = {std::max(0, corner.x), std::max(0, corner.y), std::min(56, corner.x + 12),
                               std::min(53, corner.y + 12)};
        const RECTL part = {visible.left - corner.x, visible.top - corner.y, visible.right - corner.x,
                            visible.bottom - corner.y};
        EXPECT_EQ(MagnifiedIn(zoomer, zoomer->originalRect),
                  WithPicture(untouched, visible.left, visible.top, Part(whole, part)))
            << corner;
    }
}

TEST_F(Magnifying, MapsTheScreenToItsPlace)
{
    Zoomer* const zoomer = Add({10, 10, 60, 40}, 200, 100, 3, 2);
    EXPECT_EQ(SourceToDestination(*zoomer, {10, 10, 60, 40}), (RECTL{200, 100, 350, 160}));
    EXPECT_EQ(SourceToDestination(*zoomer, {20, 0, 21, 11}), (RECTL{230, 100, 233, 102}));
    EXPECT_EQ(SourceToDestination(*zoomer, {0, 0, 10, 99}), (RECTL{0, 0, 0, 0}));
}

TEST_F(Magnifying, MapsAPlaceToAllPixelsItTouches)
{
    Zoomer* const zoomer = Add({10, 10, 60, 40}, 200, 100, 3, 2);
    EXPECT_EQ(DestinationToSource(*zoomer, {200, 100, 350, 160}), (RECTL{10, 10, 60, 40}));
    EXPECT_EQ(DestinationToSource(*zoomer, {203, 102, 206, 104}), (RECTL{11, 11, 12, 12}));
    EXPECT_EQ(DestinationToSource(*zoomer, {204, 103, 207, 105}), (RECTL{11, 11, 13, 13}));
    EXPECT_EQ(DestinationToSource(*zoomer, {0, 0, 201, 101}), (RECTL{10, 10, 11, 11}));
    EXPECT_EQ(DestinationToSource(*zoomer, {349, 159, 999, 999}), (RECTL{59, 39, 60, 40}));
    EXPECT_EQ(DestinationToSource(*zoomer, {350, 100, 360, 160}), (RECTL{0, 0, 0, 0}));
}

} // namespace
