#include <climits>

#include "tests/unit/magnifier/magnifier_fixture.h"

namespace {

using namespace koru;
using namespace pictures;
using Rectangles = std::vector<RECTL>;

const std::string screen = Lines({
    "RGBYWNWWWWWWWWWW",
    "GBYWNRWWWWWWWWWW",
    "BYWNRGWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
});
const std::string black = Filled(16, 10, '.');

class Scrolling : public MagnifierFixture {
protected:
    Scrolling()
    {
        Start(screen);
        zoomer = AddZoomer({0, 0, 6, 3}, {2, 3, 14, 9}, 2);
        Refresh(zoomer);
        Settle(*zoomer);
        real_driver::ForgetCopies();
    }
    BOOL Scroll(LONG dx, LONG dy) { return koru::Scroll(list, NumberOf(zoomer), dx, dy, psoReal, psoVirtual); }
    std::string Picture() const { return BitmapOf(zoomer, zoomer->destRect); }

    Zoomer* zoomer;
};

TEST_F(Scrolling, MovesThePictureAndMagnifiesTheUncoveredColumns)
{
    // The content went two columns to the right; S and K came in. A mark in the old picture goes along.
    PaintVirtual(0, 0, Lines({"SSRGBY", "KKGBYW", "SKBYWN"}));
    PaintBitmapOf(zoomer, 2, 3, "M\n");
    EXPECT_EQ(Scroll(2, 0), 1);
    EXPECT_EQ(Picture(),
              Lines({
                  "SSSSMRGGBBYY",
                  "SSSSRRGGBBYY",
                  "KKKKGGBBYYWW",
                  "KKKKGGBBYYWW",
                  "SSKKBBYYWWNN",
                  "SSKKBBYYWWNN",
              }));
    EXPECT_EQ(Real(), WithPicture(black, 2, 3, Picture()));
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{2, 3, 14, 9}}));
}

TEST_F(Scrolling, MovesThePictureToTheLeftAndUp)
{
    PaintVirtual(0, 0, Lines({"BYWNRS", "YWNRGK", "KSKSKS"}));
    PaintBitmapOf(zoomer, 4, 5, "M\n");
    EXPECT_EQ(Scroll(-1, -1), 1);
    EXPECT_EQ(Picture(),
              Lines({
                  "MBYYWWNNRRSS",
                  "BBYYWWNNRRSS",
                  "YYWWNNRRGGKK",
                  "YYWWNNRRGGKK",
                  "KKSSKKSSKKSS",
                  "KKSSKKSSKKSS",
              }));
}

TEST_F(Scrolling, MovesThePictureDown)
{
    PaintVirtual(0, 0, Lines({"SKSKSK", "KSKSKS", "RGBYWN"}));
    PaintBitmapOf(zoomer, 13, 4, "M\n");
    EXPECT_EQ(Scroll(0, 2), 1);
    EXPECT_EQ(Picture(),
              Lines({
                  "SSKKSSKKSSKK",
                  "SSKKSSKKSSKK",
                  "KKSSKKSSKKSS",
                  "KKSSKKSSKKSS",
                  "RRGGBBYYWWNN",
                  "RRGGBBYYWWNM",
              }));
}

TEST_F(Scrolling, ShowsTheSameAsAFullRenderingWhateverTheDistance)
{
    std::mt19937 random(3);
    for (LONG dy = -4; dy <= 4; ++dy)
        for (LONG dx = -7; dx <= 7; ++dx) {
            if (dx == 0 && dy == 0)
                continue;
            PaintVirtual(0, 0, RandomPicture(random, 6, 3, "RGBYWNSK"));
            Refresh(zoomer);
            Settle(*zoomer);
            std::string moved = RandomPicture(random, 6, 3, "RGBYWNSK");
            for (LONG y = 0; y < 3; ++y)
                for (LONG x = 0; x < 6; ++x)
                    if (x - dx >= 0 && x - dx < 6 && y - dy >= 0 && y - dy < 3)
                        moved[y * 7 + x] = Part(Virtual(), {0, 0, 6, 3})[(y - dy) * 7 + x - dx];
            PaintVirtual(0, 0, moved);
            EXPECT_EQ(Scroll(dx, dy), 1);
            ASSERT_EQ(Picture(), Stretched(moved, 2, 2)) << dx << ", " << dy;
        }
}

TEST_F(Scrolling, MagnifiesPartlyVisibleColumnsAnew)
{
    zoomer->SetZoomedRect({2, 3, 9, 8}); // 3.5 columns and 2.5 rows of the original
    Refresh(zoomer);
    Settle(*zoomer);
    PaintVirtual(0, 0, Lines({"YWNRSK", "WNRGKS", "SKSKSK"}));
    EXPECT_EQ(Scroll(-2, -1), 1);
    EXPECT_EQ(BitmapOf(zoomer, {2, 3, 9, 8}),
              Part(Stretched(Lines({"YWNRSK", "WNRGKS", "SKSKSK"}), 2, 2), {0, 0, 7, 5}));
}

TEST_F(Scrolling, MagnifiesAllOfItWhenNothingStays)
{
    PaintVirtual(0, 0, Filled(6, 3, 'S'));
    EXPECT_EQ(Scroll(6, 0), 1);
    EXPECT_EQ(Picture(), Filled(12, 6, 'S'));
    PaintVirtual(0, 0, Filled(6, 3, 'K'));
    EXPECT_EQ(Scroll(0, -3), 1);
    EXPECT_EQ(Picture(), Filled(12, 6, 'K'));
    for (const POINTL distance : {POINTL{INT_MAX, INT_MIN}, {INT_MIN, INT_MAX}, {1, INT_MIN}, {INT_MAX, 0}}) {
        PaintVirtual(0, 0, Filled(6, 3, 'R'));
        Refresh(zoomer);
        Settle(*zoomer);
        PaintVirtual(0, 0, Filled(6, 3, 'S'));
        EXPECT_EQ(Scroll(distance.x, distance.y), 1);
        EXPECT_EQ(Picture(), Filled(12, 6, 'S')) << distance;
    }
}

TEST_F(Scrolling, DoesNothingForNoDistance)
{
    zoomer->changed = 1;
    PaintVirtual(0, 0, Filled(6, 3, 'S'));
    EXPECT_EQ(Scroll(0, 0), 1);
    EXPECT_EQ(RectanglesCopied(), Rectangles());
    EXPECT_EQ(zoomer->changed, 1u);
}

TEST_F(Scrolling, DoesNothingWithAZoomerThatIsOff)
{
    zoomer->state = 0;
    const std::string before = Picture();
    EXPECT_EQ(Scroll(1, 1), 1);
    EXPECT_EQ(Picture(), before);
    EXPECT_EQ(RectanglesCopied(), Rectangles());
}

TEST_F(Scrolling, FailsForUnknownZoomersAndThoseThatDoNotLock)
{
    EXPECT_EQ(koru::Scroll(list, 0x1234, 0, 0, psoReal, psoVirtual), 0);
    engine.RefuseLock(zoomer->hBmp);
    EXPECT_EQ(Scroll(0, 0), 0);
    EXPECT_EQ(Scroll(1, 0), 0);
}

TEST_F(Scrolling, RendersWhatIsPendingFirst)
{
    zoomer->SetBehaviour(BehaviourDeferred);
    PaintVirtual(0, 0, Filled(6, 3, 'S'));
    EXPECT_EQ(Scroll(1, 0), 1);
    EXPECT_EQ(zoomer->changed, 0u);
    EXPECT_EQ(Picture(), Filled(12, 6, 'S'));
}

TEST_F(Scrolling, MovesNothingOfAFullZoomerRenderedThisMoment)
{
    zoomer->SetBehaviour(BehaviourFull);
    PaintVirtual(0, 0, Lines({"SKSKSK", "SKSKSK", "SKSKSK"}));
    EXPECT_EQ(Scroll(1, 0), 1);
    EXPECT_EQ(Picture(), Stretched(Lines({"SKSKSK", "SKSKSK", "SKSKSK"}), 2, 2));
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{2, 3, 14, 9}}));
}

TEST_F(Scrolling, PaintsTheFrameAgain)
{
    zoomer->SetZoomedRect({2, 3, 8, 9});
    zoomer->SetBorder(BorderRight | BorderWhite);
    Settle(*zoomer);
    PaintBitmapOf(zoomer, 8, 3, Filled(1, 6, 'M'));
    EXPECT_EQ(Scroll(1, 0), 1);
    EXPECT_EQ(BitmapOf(zoomer, {8, 3, 9, 9}), Filled(1, 6, 'W'));
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{2, 3, 9, 9}}));
}

TEST_F(Scrolling, ComposesUnderOtherZoomers)
{
    Zoomer* const above = AddZoomer({0, 0, 1, 1}, {12, 8, 16, 10}, 1);
    PaintBitmapOf(above, 12, 8, Filled(4, 2, 'M'));
    EXPECT_EQ(Scroll(1, 0), 1);
    EXPECT_EQ(PictureOf(*psoReal, form, {12, 8, 14, 9}), Filled(2, 1, 'M'));
    EXPECT_EQ(real_driver::Copies().front().psoSrc, engine::FindSurface(list.hBmpStretchDest));
}

TEST_F(Scrolling, SmoothsTheSeamOfTheUncoveredPart)
{
    zoomer->SetImproveFactor(1);
    PaintVirtual(0, 0, Lines({"WWWWWW", "RWWWWW", "WWWWWW"}));
    Refresh(zoomer);
    Settle(*zoomer);
    PaintVirtual(0, 0, Lines({"RWWWWW", "WRWWWW", "WWWWWW"}));
    EXPECT_EQ(Scroll(1, 0), 1);
    EXPECT_EQ(Picture(),
              Lines({
                  "RRWWWWWWWWWW",
                  "RRRWWWWWWWWW",
                  "WRRRWWWWWWWW",
                  "WWRRWWWWWWWW",
                  "WWWWWWWWWWWW",
                  "WWWWWWWWWWWW",
              }));
}

TEST_F(Scrolling, StaysInsideTheBitmap)
{
    // Partly beyond all edges of the bitmap of 64 x 58 pixels.
    for (const RECTL& view :
         {RECTL{-5, -3, 40, 30}, {60, 55, 99, 99}, {-90, 0, -80, 9}, {INT_MAX - 9, 0, INT_MAX, 9}}) {
        zoomer->SetZoomedRect(view);
        Settle(*zoomer);
        for (const POINTL distance : {POINTL{1, 1}, {-1, 1}, {1, -1}, {-1, -1}, {0, 1}, {-2, 0}})
            EXPECT_EQ(Scroll(distance.x, distance.y), 1);
    }
    engine.CheckGuards();
}

class ScrollingFourBits : public MagnifierFixture { };

TEST_F(ScrollingFourBits, MovesHalfBytes)
{
    Start(WithPicture(Filled(16, 10, 'W'), 0, 0, Lines({"RGBYN"})), Form::Bits4);
    Zoomer* const zoomer = AddZoomer({0, 0, 5, 1}, {1, 1, 16, 4}, 3);
    Refresh(zoomer);
    Settle(*zoomer);
    PaintVirtual(0, 0, "SRGBY\n");
    EXPECT_EQ(koru::Scroll(list, NumberOf(zoomer), 1, 0, psoReal, psoVirtual), 1);
    EXPECT_EQ(BitmapOf(zoomer, {1, 1, 16, 4}), Stretched("SRGBY\n", 3, 3));
}

} // namespace
