#include "tests/unit/magnifier/magnifier_fixture.h"

namespace {

using namespace koru;
using namespace pictures;
using Rectangles = std::vector<RECTL>;

const std::string screen = Lines({
    "RGWWWWWWWWWWWWWW",
    "BYWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
    "WWWWWWWWWWWWWWWW",
});
const std::string black = Filled(16, 10, '.');
const std::string magnified = Lines({
    "RRGG",
    "RRGG",
    "BBYY",
    "BBYY",
});

class Refreshing : public MagnifierFixture {
protected:
    Refreshing() { Start(screen); }
};

TEST_F(Refreshing, ShowsAZoomerOfAnyBehaviour)
{
    for (const ULONG behaviour : {0u, 1u, 2u, 7u}) {
        list.Flush();
        Paint(*psoReal, 0, 0, black, form);
        Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2, behaviour);
        EXPECT_EQ(Refresh(zoomer), 1);
        EXPECT_EQ(Real(), WithPicture(black, 6, 4, magnified)) << behaviour;
        EXPECT_EQ(zoomer->changed, behaviour == BehaviourDeferred ? 0u : 1u) << behaviour;
    }
}

TEST_F(Refreshing, PutsTheFramedRectangle)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2, BehaviourDeferred);
    zoomer->SetBorder(BorderTop | BorderWhite);
    Refresh(zoomer);
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{6, 3, 10, 8}}));
    EXPECT_EQ(Real(), WithPicture(black, 6, 3, "WWWW\n" + magnified));
}

TEST_F(Refreshing, CutsAFramedRectangleToTheScreen)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {14, 8, 18, 12}, 2);
    Refresh(zoomer);
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{14, 8, 16, 10}}));
    EXPECT_EQ(BitmapOf(zoomer, {14, 8, 18, 12}), magnified) << "the margin of its bitmap holds the rest";
}

TEST_F(Refreshing, MarksAZoomerThatIsOffAndShowsNothing)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2, BehaviourDeferred);
    zoomer->SetState(0);
    zoomer->changed = 0;
    EXPECT_EQ(Refresh(zoomer), 1);
    EXPECT_EQ(zoomer->changed, 1u);
    EXPECT_EQ(Real(), black);
}

TEST_F(Refreshing, FailsForUnknownZoomersAndThoseThatDoNotLock)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2);
    EXPECT_EQ(koru::Refresh(list, 0x1234, psoReal, psoVirtual), 0);
    EXPECT_EQ(koru::ImproveImage(list, 0x1234, psoReal, psoVirtual), 0);
    engine.RefuseLock(zoomer->hBmp);
    EXPECT_EQ(Refresh(zoomer), 0);
    EXPECT_EQ(koru::ImproveImage(list, NumberOf(zoomer), psoReal, psoVirtual), 0);
    EXPECT_EQ(zoomer->changed, 0u);
    EXPECT_EQ(Real(), black);
}

TEST_F(Refreshing, ComposesUnderOtherZoomers)
{
    Zoomer* const lower = AddZoomer({0, 0, 2, 2}, {4, 2, 8, 6}, 2);
    Zoomer* const upper = AddZoomer({0, 0, 2, 2}, {7, 5, 9, 7}, 2);
    PaintBitmapOf(upper, 7, 5, Filled(2, 2, 'W'));
    Refresh(lower);
    EXPECT_EQ(Real(), WithRectangle(WithPicture(black, 4, 2, magnified), {7, 5, 8, 6}, 'W'));
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{4, 2, 8, 6}}));
    upper->SetState(0);
    Refresh(lower);
    EXPECT_EQ(Real(), WithPicture(black, 4, 2, magnified));
}

const std::string diagonalScreen = WithPicture(Filled(16, 10, 'W'), 0, 0,
                                               Lines({
                                                   "RW",
                                                   "WR",
                                               }));
const std::string smoothedDiagonal = Lines({
    "RRWW",
    "RRRW",
    "WRRR",
    "WWRR",
});

class Improving : public Refreshing {
protected:
    Improving()
    {
        Paint(*psoVirtual, 0, 0, diagonalScreen, form);
        zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2);
        zoomer->SetImproveFactor(1);
        Settle(*zoomer);
        PaintBitmapOf(zoomer, 6, 4, Lines({"RRWW", "RRWW", "WWRR", "WWRR"}));
    }
    BOOL Improve() { return ImproveImage(list, NumberOf(zoomer), psoReal, psoVirtual); }
    Zoomer* zoomer;
};

TEST_F(Improving, SmoothsThePictureThatIsThere)
{
    PaintBitmapOf(zoomer, 6, 4, "G\n"); // a mark: nothing is stretched anew
    EXPECT_EQ(Improve(), 1);
    EXPECT_EQ(Real(), WithPicture(WithPicture(black, 6, 4, smoothedDiagonal), 6, 4, "G\n"));
    EXPECT_EQ(zoomer->changed, 0u);
    EXPECT_EQ(zoomer->pending, 0u);
}

TEST_F(Improving, OnlyPutsThePictureAtImproveFactorZero)
{
    zoomer->improveFactor = 0;
    EXPECT_EQ(Improve(), 1);
    EXPECT_EQ(Real(), WithPicture(black, 6, 4, Lines({"RRWW", "RRWW", "WWRR", "WWRR"})));
}

TEST_F(Improving, DoesNothingWithAZoomerThatIsOff)
{
    zoomer->state = 0;
    EXPECT_EQ(Improve(), 1);
    EXPECT_EQ(Real(), black);
    EXPECT_EQ(BitmapOf(zoomer, {6, 4, 10, 8}), Lines({"RRWW", "RRWW", "WWRR", "WWRR"}));
}

TEST_F(Improving, PaintsTheFrameOverTrianglesOutsideOfTheView)
{
    zoomer->SetZoomedRect({6, 4, 8, 8});
    zoomer->SetBorder(BorderRight | BorderWhite);
    zoomer->SetBordersSize(2);
    EXPECT_EQ(Improve(), 1);
    EXPECT_EQ(Real(), WithPicture(black, 6, 4, Lines({"RRWW", "RRWW", "WRWW", "WWWW"})));
}

TEST_F(Improving, SmoothsWhatAnUpdateMagnifies)
{
    zoomer->SetBehaviour(BehaviourFull);
    Update();
    EXPECT_EQ(Real(), WithPicture(black, 6, 4, smoothedDiagonal));
    zoomer->SetPickColour(1);
    Update();
    EXPECT_EQ(Real(), WithPicture(black, 6, 4, Lines({"RRWW", "RWWW", "WWWR", "WWRR"})));
}

class EveryForm : public MagnifierFixture, public testing::WithParamInterface<Form> { };
INSTANTIATE_TEST_SUITE_P(Of, EveryForm, testing::ValuesIn(AllForms),
                         [](const auto& info) { return NameOf(info.param); });

TEST_P(EveryForm, ReachesTheScreenMagnifiedAndSmoothed)
{
    Start(diagonalScreen, GetParam());
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {5, 3, 9, 7}, 2, BehaviourDeferred);
    zoomer->SetImproveFactor(1);
    zoomer->SetBorder(BorderLeft | BorderTop | BorderRight | BorderBottom | BorderWhite);
    Update();
    EXPECT_EQ(Real(),
              WithPicture(black, 4, 2,
                          Lines({
                              "WWWWWW",
                              "WRRWWW",
                              "WRRRWW",
                              "WWRRRW",
                              "WWWRRW",
                              "WWWWWW",
                          })));
}

// Deferred zoomers show after any drawing what a zoomer that is rendered whole would show.
TEST_P(EveryForm, IsTheSameMagnifiedInPendingPartsAsWhole)
{
    for (unsigned seed = 0; seed < 40; ++seed) {
        std::mt19937 random(seed);
        Start(RandomPicture(random, 16, 10, "WR"), GetParam());
        Zoomer* const parts = AddZoomer({1, 1, 11, 8}, {1, 1, 16, 10}, 2 + seed % 3, BehaviourDeferred);
        parts->SetImproveFactor(1 + random() % 3);
        parts->SetPickColour(random() % 2);
        Update();
        for (int drawing = 0; drawing < 5; ++drawing) {
            const LONG left = static_cast<LONG>(random() % 14), top = static_cast<LONG>(random() % 8);
            const std::string drawn = RandomPicture(random, 1 + static_cast<LONG>(random() % 3), 2, "WRB");
            const SIZEL size = SizeOf(drawn);
            PaintVirtual(left, top, drawn);
            AfterDraw({left, top, left + size.cx, top + size.cy});
            Update();
        }
        const std::string shown = BitmapOf(parts, parts->destRect);
        parts->changed = 1;
        Update();
        ASSERT_EQ(shown, BitmapOf(parts, parts->destRect)) << "seed " << seed;
        list.Release();
    }
}

} // namespace
