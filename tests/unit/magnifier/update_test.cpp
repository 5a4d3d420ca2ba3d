#include "magnifier/render.h"
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

class Updating : public MagnifierFixture {
protected:
    Updating() { Start(screen); }

    // Magnifies the four coloured pixels to this place; all of it waits for an update.
    Zoomer* AddChanged(LONG x, LONG y, ULONG behaviour = BehaviourFull)
    {
        Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {x, y, x + 4, y + 4}, 2, behaviour);
        zoomer->changed = 1;
        return zoomer;
    }
    static void MarkPending(Zoomer* zoomer, const RECTL& rectangle)
    {
        zoomer->pending = 1;
        zoomer->pendingRect = rectangle;
    }
};

TEST_F(Updating, CountsAndTakesTheTimeEvenWithoutZoomers)
{
    engine.SetCounter(123456789012345);
    const ULONG before = ZoomUpdateCount;
    Update();
    Update();
    EXPECT_EQ(ZoomUpdateCount, before + 2);
    EXPECT_EQ(lastUpdateTime, 123456789012345);
    EXPECT_EQ(Real(), black);
}

TEST_F(Updating, TakesTheTimeAtItsEnd)
{
    Zoomer* const zoomer = AddChanged(6, 4);
    engine.SetCounter(76);
    engine.StepCounter(1);
    lastUpdateTime = 5;
    Update();
    ASSERT_EQ(real_driver::Copies().size(), 1u);
    EXPECT_EQ(real_driver::Copies()[0].lastUpdateTime, 5) << "while it still draws";
    EXPECT_GT(lastUpdateTime, 75);
    EXPECT_EQ(zoomer->changed, 1u);
}

TEST_F(Updating, MagnifiesAFullZoomerEachTime)
{
    Zoomer* const zoomer = AddChanged(6, 4);
    Update();
    EXPECT_EQ(Real(), WithPicture(black, 6, 4, magnified));
    EXPECT_EQ(zoomer->changed, 1u) << "the flags stay, so that the next update does it again";
    PaintVirtual(0, 0, "Y\n");
    Update();
    EXPECT_EQ(Real(), WithPicture(black, 6, 4, Lines({"YYGG", "YYGG", "BBYY", "BBYY"})));
}

TEST_F(Updating, LeavesZoomersWithNothingToShowAlone)
{
    AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2, BehaviourFull);
    AddZoomer({0, 0, 2, 2}, {0, 4, 4, 8}, 2, BehaviourDeferred);
    AddChanged(11, 0)->SetState(0);
    Update();
    EXPECT_EQ(RectanglesCopied(), Rectangles());
}

TEST_F(Updating, RendersNothingForAnImmediateZoomer)
{
    Zoomer* const zoomer = AddChanged(6, 4, BehaviourImmediate);
    MarkPending(zoomer, {0, 0, 2, 2});
    Update();
    EXPECT_EQ(RectanglesCopied(), Rectangles());
    EXPECT_EQ(zoomer->changed, 1u);
    EXPECT_EQ(zoomer->pending, 1u);
    zoomer->behaviour = 3;
    Update();
    EXPECT_EQ(RectanglesCopied(), Rectangles());
}

TEST_F(Updating, MagnifiesAChangedDeferredZoomerWholeAndClearsItsFlags)
{
    Zoomer* const zoomer = AddChanged(6, 4, BehaviourDeferred);
    MarkPending(zoomer, {1, 1, 2, 2});
    Update();
    EXPECT_EQ(Real(), WithPicture(black, 6, 4, magnified));
    EXPECT_EQ(zoomer->pending, 0u);
    EXPECT_EQ(zoomer->changed, 0u);
    EXPECT_EQ(zoomer->pendingRect, (RECTL{0, 0, 0, 0}));
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{6, 4, 10, 8}}));
}

TEST_F(Updating, MagnifiesOnlyThePendingPartOfADeferredZoomer)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2, BehaviourDeferred);
    MarkPending(zoomer, {1, 0, 2, 1});
    Update();
    EXPECT_EQ(Real(), WithPicture(black, 8, 4, Lines({"GG", "GG"})));
    EXPECT_EQ(BitmapOf(zoomer, {6, 4, 10, 8}), Lines({"..GG", "..GG", "....", "...."}));
    EXPECT_EQ(zoomer->pending, 0u);
    EXPECT_EQ(zoomer->pendingRect, (RECTL{0, 0, 0, 0}));
}

TEST_F(Updating, MagnifiesTheWholeWhenAllOfItIsPending)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 11, 9}, 2, BehaviourDeferred);
    MarkPending(zoomer, {0, 0, 2, 2});
    Update();
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{6, 4, 11, 9}})) << "the view, not the picture's place";
}

TEST_F(Updating, ClearsTheFlagsWhenNothingPendingIsLeft)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2, BehaviourDeferred);
    zoomer->pending = 1;
    Update();
    EXPECT_EQ(zoomer->pending, 0u);
    MarkPending(zoomer, {5, 5, 7, 7}); // outside of the original
    Update();
    EXPECT_EQ(zoomer->pending, 0u);
    EXPECT_EQ(zoomer->pendingRect, (RECTL{0, 0, 0, 0}));
    EXPECT_EQ(RectanglesCopied(), Rectangles());
}

struct MarginCase {
    ULONG improveFactor;
    RECTL place; // of pixel (4, 4) with its neighbours
};

TEST_F(Updating, WidensThePendingPartByWhatSmoothingReads)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 8, 5}, {0, 0, 16, 10}, 2, BehaviourDeferred);
    for (const MarginCase& margin : {MarginCase{0, {6, 6, 8, 8}},
                                     {1, {4, 4, 10, 10}},
                                     {2, {4, 4, 10, 10}},
                                     {3, {2, 2, 12, 10}},
                                     {4, {6, 6, 8, 8}}}) {
        zoomer->improveFactor = margin.improveFactor;
        MarkPending(zoomer, {3, 3, 4, 4});
        real_driver::ForgetCopies();
        Update();
        EXPECT_EQ(RectanglesCopied(), (Rectangles{margin.place})) << margin.improveFactor;
    }
}

TEST_F(Updating, ShowsNoMoreOfAPendingPartThanTheView)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 9, 7}, 2, BehaviourDeferred);
    MarkPending(zoomer, {1, 1, 2, 2});
    Update();
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{8, 6, 9, 7}}));
}

TEST_F(Updating, RepaintsTheFrameOverAPendingPart)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 9, 7}, 2, BehaviourDeferred);
    zoomer->SetBorder(BorderRight | BorderBottom | BorderWhite);
    Settle(*zoomer);
    MarkPending(zoomer, {1, 1, 2, 2});
    Update();
    EXPECT_EQ(BitmapOf(zoomer, {6, 4, 11, 9}),
              Lines({
                  "...W.",
                  "...W.",
                  "..YW.",
                  "WWWW.",
                  ".....",
              }));
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{8, 6, 10, 8}}));
}

TEST_F(Updating, ForgetsAPendingRectangleWithoutTheFlags)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2, BehaviourDeferred);
    for (const ULONG state : {1u, 0u}) {
        zoomer->state = state;
        zoomer->pendingRect = {0, 0, 1, 1};
        EXPECT_EQ(Render(*zoomer, &SurfaceBehind(zoomer->hBmp), psoVirtual), (RECTL{0, 0, 0, 0}));
        EXPECT_EQ(zoomer->pendingRect, (RECTL{0, 0, 0, 0})) << "also of a zoomer that is off";
    }
    EXPECT_EQ(BitmapOf(zoomer, {6, 4, 10, 8}), Filled(4, 4, '.'));
}

TEST_F(Updating, JoinsTwoDrawingsUntilTheUpdate)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 16, 10}, {0, 0, 2, 2}, 1, BehaviourDeferred);
    AfterDraw({0, 0, 4, 4});
    AfterDraw({6, 6, 9, 9});
    EXPECT_EQ(zoomer->pendingRect, (RECTL{0, 0, 9, 9}));
    Update();
    EXPECT_EQ(zoomer->pendingRect, (RECTL{0, 0, 0, 0}));
}

TEST_F(Updating, SkipsAZoomerWhoseBitmapDoesNotLock)
{
    Zoomer* const first = AddChanged(0, 4, BehaviourDeferred);
    AddChanged(6, 4, BehaviourDeferred);
    engine.RefuseLock(first->hBmp);
    Update();
    EXPECT_EQ(Real(), WithPicture(black, 6, 4, magnified));
    EXPECT_EQ(first->changed, 1u);
}

TEST_F(Updating, InvertsTheColoursOfAnInvertedZoomer)
{
    AddChanged(6, 4)->SetStyle(StyleInverted);
    Update();
    // Inverted: red is cyan, green magenta, blue yellow, yellow blue.
    EXPECT_EQ(psoReal->Pixel(6, 4) & 0xFFFFFF, 0x00FFFFu);
    EXPECT_EQ(psoReal->Pixel(8, 4) & 0xFFFFFF, 0xFF00FFu);
    EXPECT_EQ(PictureOf(*psoReal, form, {6, 6, 10, 8}), Lines({"YYBB", "YYBB"}));
    EXPECT_EQ(real_driver::Copies().front().psoSrc, engine::FindSurface(list.hBmpAux));
    EXPECT_EQ(BitmapOf(list.head, {6, 4, 10, 8}), magnified) << "the zoomer's own picture is not inverted";
}

TEST_F(Updating, ShowsAnInvertedZoomerPlainWithoutTheAuxiliaryBitmap)
{
    AddChanged(6, 4)->SetStyle(StyleInverted);
    engine.RefuseLock(list.hBmpAux);
    Update();
    EXPECT_EQ(Real(), WithPicture(black, 6, 4, magnified));
}

TEST_F(Updating, TakesOtherStylesForTheNormalOne)
{
    AddChanged(6, 4)->SetStyle(2);
    Update();
    EXPECT_EQ(Real(), WithPicture(black, 6, 4, magnified));
}

TEST_F(Updating, TellsWhenTheRealDriverCannotCopy)
{
    AddChanged(6, 4);
    real_driver::Unload();
    real_driver::Load(false);
    Update();
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:CopyImage: Error copybits is not supported.\n");
}

TEST_F(Updating, ComposesTheWholeScreenAfterTheStackingChanged)
{
    Zoomer* const lower = AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2, BehaviourFull);
    Zoomer* const upper = AddZoomer({0, 0, 2, 2}, {8, 6, 12, 10}, 2, BehaviourFull);
    PaintBitmapOf(lower, 6, 4, Filled(4, 4, 'R'));
    PaintBitmapOf(upper, 8, 6, Filled(4, 4, 'G'));
    AddZoomer({0, 0, 2, 2}, {0, 0, 16, 10}, 2)->SetState(0);
    list.recompose = 1;
    Update();
    EXPECT_EQ(Real(),
              Lines({
                  "RGWWWWWWWWWWWWWW",
                  "BYWWWWWWWWWWWWWW",
                  "WWWWWWWWWWWWWWWW",
                  "WWWWWWWWWWWWWWWW",
                  "WWWWWWRRRRWWWWWW",
                  "WWWWWWRRRRWWWWWW",
                  "WWWWWWRRGGGGWWWW",
                  "WWWWWWRRGGGGWWWW",
                  "WWWWWWWWGGGGWWWW",
                  "WWWWWWWWGGGGWWWW",
              }));
    EXPECT_EQ(list.recompose, 0u);
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{0, 0, 16, 10}}));
}

TEST_F(Updating, ComposesInvertedZoomersInverted)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2, BehaviourFull);
    PaintBitmapOf(zoomer, 6, 4, Filled(4, 4, 'Y'));
    zoomer->SetStyle(StyleInverted);
    Settle(*zoomer);
    list.recompose = 1;
    Update();
    EXPECT_EQ(Real(), WithRectangle(screen, {6, 4, 10, 8}, 'B'));
}

TEST_F(Updating, LeavesOutWhatDoesNotLockOfAComposition)
{
    Zoomer* const zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2, BehaviourFull);
    engine.RefuseLock(zoomer->hBmp);
    list.recompose = 1;
    Update();
    EXPECT_EQ(Real(), screen);
}

TEST_F(Updating, KeepsTheNoticeUntilACompositionCouldBeMade)
{
    AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2, BehaviourFull);
    list.recompose = 1;
    engine.RefuseLock(list.hBmpStretchDest);
    Update();
    EXPECT_EQ(list.recompose, 1u);
    EXPECT_EQ(Real(), black);
    engine.StopFailing();
    Update();
    EXPECT_EQ(list.recompose, 0u);
}

TEST_F(Updating, KeepsTheNoticeWhileThereIsNoZoomer)
{
    list.recompose = 1;
    Update();
    EXPECT_EQ(list.recompose, 1u);
    EXPECT_EQ(RectanglesCopied(), Rectangles());
}

class UpdatingMoving : public Updating {
protected:
    // Magnified at (1, 1), then moved to (9, 3).
    UpdatingMoving()
    {
        zoomer = AddZoomer({0, 0, 2, 2}, {1, 1, 5, 5}, 2, BehaviourFull);
        zoomer->SetMode(ModeMoving);
        Paint(*psoReal, 0, 0, screen, form);
        Refresh(zoomer);
        zoomer->SetZoomedRect({9, 3, 13, 7});
        real_driver::ForgetCopies();
    }
    Zoomer* zoomer;
};

TEST_F(UpdatingMoving, RepaintsTheUnionOfTheOldAndTheNewPlace)
{
    Update();
    EXPECT_EQ(Real(), WithPicture(screen, 9, 3, magnified));
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{1, 1, 13, 7}}));
    EXPECT_EQ(zoomer->previousZoomedRect, (RECTL{9, 3, 13, 7}));
}

TEST_F(UpdatingMoving, PutsItsPlaceDirectlyOnceItRests)
{
    Update();
    real_driver::ForgetCopies();
    Update();
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{9, 3, 13, 7}}));
}

TEST_F(UpdatingMoving, WidensTheUnionByTheBordersOnTheScreen)
{
    zoomer->SetBordersSize(3);
    Update();
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{1, 1, 13, 7}})) << "no border";
    zoomer->SetZoomedRect({8, 3, 12, 7});
    zoomer->SetBorder(BorderTop);
    real_driver::ForgetCopies();
    Update();
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{5, 0, 16, 10}})) << "(9, 3, 13, 7) and (8, 3, 12, 7), 3 wider each";
    zoomer->SetBordersSize(0xFFFFFFFF);
    zoomer->SetZoomedRect({7, 3, 11, 7});
    real_driver::ForgetCopies();
    Update();
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{0, 0, 16, 10}}));
}

TEST_F(UpdatingMoving, WidensEvenPlacesFarOffTheScreenByTheWholeBorder)
{
    zoomer->SetBorder(BorderTop);
    zoomer->SetBordersSize(0xFFFFFFFF);
    zoomer->previousZoomedRect = {INT32_MIN, 0, INT32_MIN + 48, 10};
    zoomer->SetZoomedRect({INT32_MIN, 0, INT32_MIN + 49, 10});
    Update();
    // To the right by 2^32 - 1: with less than 33 bits it would end left of the screen's right edge.
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{0, 0, 16, 10}}));
}

TEST_F(UpdatingMoving, DoesNotSeeAMoveInAnotherMode)
{
    zoomer->mode = 3;
    Update();
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{9, 3, 13, 7}}));
}

TEST_F(UpdatingMoving, ComposesTheUnionAtEachUpdateWhileNothingIsMagnified)
{
    zoomer->behaviour = BehaviourImmediate;
    Update();
    Update();
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{1, 1, 13, 7}, {1, 1, 13, 7}}));
    EXPECT_EQ(zoomer->previousZoomedRect, (RECTL{1, 1, 5, 5}));
}

TEST_F(UpdatingMoving, SkipsThePutWithoutTheCompositionBitmap)
{
    engine.RefuseLock(list.hBmpStretchDest);
    Update();
    EXPECT_EQ(RectanglesCopied(), Rectangles());
    EXPECT_EQ(BitmapOf(zoomer, {9, 3, 13, 7}), magnified);
}

TEST_F(UpdatingMoving, LeavesTheUnionToTheCompositionWhereOthersCoverIt)
{
    AddZoomer({0, 0, 2, 2}, {11, 5, 15, 9}, 2, BehaviourFull)->changed = 1;
    Update();
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{11, 5, 15, 9}, {1, 1, 13, 7}})) << "the union last";
    EXPECT_EQ(Real(), WithPicture(WithPicture(screen, 9, 3, magnified), 11, 5, magnified));
}

class UpdatingOverlap : public Updating {
protected:
    Zoomer* lower = AddChanged(4, 2);
    Zoomer* upper = AddChanged(6, 4);
};

TEST_F(UpdatingOverlap, ComposesTheLowerOneAtTheEnd)
{
    Update();
    EXPECT_EQ(Real(),
              Lines({
                  "................",
                  "................",
                  "....RRGG........",
                  "....RRGG........",
                  "....BBRRGG......",
                  "....BBRRGG......",
                  "......BBYY......",
                  "......BBYY......",
                  "................",
                  "................",
              }));
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{6, 4, 10, 8}, {4, 2, 8, 6}}));
}

TEST_F(UpdatingOverlap, JoinsWhatTheCompositionTakes)
{
    AddChanged(0, 6)->zOrder = 0;
    Zoomer* const top = AddZoomer({0, 0, 2, 2}, {2, 8, 3, 9}, 2, BehaviourFull);
    EXPECT_TRUE(top->IsOn());
    Update();
    // Composed at the end: (4, 2, 8, 6) and (0, 6, 4, 10) as one.
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{6, 4, 10, 8}, {0, 2, 8, 10}}));
}

TEST_F(UpdatingOverlap, TellsCoverByTheFramedRectangle)
{
    upper->SetZoomedRect({9, 2, 13, 6});
    AddZoomer({0, 0, 2, 2}, {12, 5, 14, 7}, 2, BehaviourFull); // makes two of them overlap
    upper->SetBorder(BorderLeft);
    Update();
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{4, 2, 8, 6}, {8, 2, 13, 6}}))
        << "framed at 8: touches, does not cover; the upper one is covered by the third";
    upper->SetBordersSize(2);
    real_driver::ForgetCopies();
    Update();
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{4, 2, 13, 6}}));
}

TEST_F(UpdatingOverlap, IsNotSeenBetweenZoomersOfWhichOneIsOff)
{
    upper->SetState(0);
    Update();
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{4, 2, 8, 6}}));
    EXPECT_EQ(Real(), WithPicture(black, 4, 2, magnified));
}

TEST_F(UpdatingOverlap, IsNotSeenWhereOnlyFramesMeet)
{
    upper->SetZoomedRect({8, 2, 12, 6});
    upper->SetBorder(BorderLeft);
    Update();
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{4, 2, 8, 6}, {7, 2, 12, 6}}));
}

} // namespace
