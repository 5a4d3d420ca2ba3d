#include "tests/unit/magnifier/magnifier_fixture.h"

namespace {

using namespace koru;
using namespace pictures;
using Rectangles = std::vector<RECTL>;

// The VirtualScreen of these tests: four pixels of colour in the corner, the rest white.
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

class AfterDrawing : public MagnifierFixture {
protected:
    AfterDrawing() { Start(screen); }
};

TEST_F(AfterDrawing, ShowsTheRectangleUnchangedWithoutZoomers)
{
    EXPECT_EQ(AfterDraw({0, 1, 3, 3}), 1);
    EXPECT_EQ(Real(), WithPicture(black, 0, 1, Lines({"BYW", "WWW"})));
    ASSERT_EQ(real_driver::Copies().size(), 1u);
    const real_driver::Copy& copy = real_driver::Copies().front();
    EXPECT_EQ(copy.psoDest, psoReal);
    EXPECT_EQ(copy.psoSrc, psoVirtual);
    EXPECT_EQ(copy.rclDest, (RECTL{0, 1, 3, 3}));
    EXPECT_EQ(copy.ptlSrc, (POINTL{0, 1}));
    EXPECT_FALSE(copy.hasClipOrXlate);
}

TEST_F(AfterDrawing, IgnoresZoomersThatAreOff)
{
    AddZoomer({0, 0, 2, 2}, {0, 0, 4, 4}, 2)->SetState(0);
    AfterDraw({0, 0, 2, 2});
    EXPECT_EQ(Real(), WithPicture(black, 0, 0, Lines({"RG", "BY"})));
}

TEST_F(AfterDrawing, ShowsOnlyWhatLiesOnTheScreen)
{
    EXPECT_EQ(AfterDraw({-5, -5, 2, 1}), 1);
    EXPECT_EQ(AfterDraw({14, 9, 99, 0x7FFFFFFF}), 1);
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{0, 0, 2, 1}, {14, 9, 16, 10}}));
}

TEST_F(AfterDrawing, CopiesNothingEmpty)
{
    for (const RECTL& empty : {RECTL{3, 3, 3, 8}, {8, 3, 3, 8}, {16, 0, 20, 10}, {0, -3, 16, 0}})
        EXPECT_EQ(AfterDraw(empty), 1) << empty;
    EXPECT_EQ(RectanglesCopied(), Rectangles());
}

TEST_F(AfterDrawing, AnswersAsTheCopyToTheScreen)
{
    real_driver::AnswerCopiesWith(0);
    EXPECT_EQ(AfterDraw({0, 0, 2, 2}), 0);
    real_driver::AnswerCopiesWith(5);
    EXPECT_EQ(AfterDraw({0, 0, 2, 2}), 5);
}

TEST_F(AfterDrawing, ShowsNothingWhileTheAuxiliaryBitmapDoesNotLock)
{
    engine.RefuseLock(list.hBmpAux);
    EXPECT_EQ(AfterDraw({0, 0, 2, 2}), 0);
    EXPECT_EQ(Real(), black);
}

TEST_F(AfterDrawing, FailsSilentlyWhenTheRealDriverCannotCopy)
{
    real_driver::Unload();
    real_driver::Load(false);
    EXPECT_EQ(AfterDraw({0, 0, 2, 2}), 0);
    EXPECT_EQ(engine.TakeDebugOutput(), "");
}

class WithOneZoomer : public AfterDrawing {
protected:
    Zoomer* zoomer = AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2);
};

TEST_F(WithOneZoomer, MagnifiesAtOnceAndShowsTheFirstPieceBesideIt)
{
    EXPECT_EQ(AfterDraw({0, 0, 2, 2}), 1);
    EXPECT_EQ(Real(),
              Lines({
                  "RG..............",
                  "BY..............",
                  "................",
                  "................",
                  "......RRGG......",
                  "......RRGG......",
                  "......BBYY......",
                  "......BBYY......",
                  "................",
                  "................",
              }));
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{6, 4, 10, 8}, {0, 0, 2, 2}}));
}

TEST_F(WithOneZoomer, ShowsOnlyTheBandAboveOfADrawingAllRound)
{
    zoomer->SetBehaviour(BehaviourFull);
    EXPECT_EQ(AfterDraw({4, 2, 12, 10}), 1);
    EXPECT_EQ(Real(), WithPicture(black, 4, 2, Filled(8, 2, 'W')));
}

TEST_F(WithOneZoomer, MagnifiesTheWholeOriginalForAPartOfIt)
{
    AfterDraw({1, 1, 2, 2});
    EXPECT_EQ(PictureOf(*psoReal, form, {6, 4, 10, 8}), Lines({"RRGG", "RRGG", "BBYY", "BBYY"}));
}

TEST_F(WithOneZoomer, MagnifiesNothingForDrawingElsewhere)
{
    AfterDraw({2, 0, 4, 2});
    EXPECT_EQ(Real(), WithPicture(black, 2, 0, Filled(2, 2, 'W')));
}

TEST_F(WithOneZoomer, ShowsNothingDrawnInsideItsFrame)
{
    EXPECT_EQ(AfterDraw({6, 4, 10, 8}), 1);
    EXPECT_EQ(Real(), black);
}

TEST_F(WithOneZoomer, AnswersOneForAnEmptyRectangle)
{
    real_driver::AnswerCopiesWith(0);
    EXPECT_EQ(AfterDraw({3, 3, 3, 3}), 1);
    EXPECT_EQ(RectanglesCopied(), Rectangles());
}

TEST_F(WithOneZoomer, AnswersAsItsOwnCopyWhenAPieceIsShownToo)
{
    real_driver::AnswerCopiesWith(0);
    EXPECT_EQ(AfterDraw({0, 0, 2, 2}), 0);
    EXPECT_EQ(AfterDraw({2, 0, 4, 2}), 1) << "nothing was magnified: the answer stays what it was";
}

TEST_F(WithOneZoomer, PaintsItsFrameAndHidesWhatLiesUnderIt)
{
    zoomer->SetBorder(BorderLeft | BorderTop | BorderRight | BorderBottom);
    EXPECT_EQ(AfterDraw({0, 0, 16, 10}), 1);
    EXPECT_EQ(Real(),
              Lines({
                  "RGWWWWWWWWWWWWWW",
                  "BYWWWWWWWWWWWWWW",
                  "WWWWWWWWWWWWWWWW",
                  "................",
                  "......RRGG......",
                  "......RRGG......",
                  "......BBYY......",
                  "......BBYY......",
                  "................",
                  "................",
              }));
    zoomer->SetBorder(BorderLeft | BorderTop | BorderRight | BorderBottom | BorderWhite);
    AfterDraw({0, 0, 1, 1});
    EXPECT_EQ(PictureOf(*psoReal, form, {5, 3, 11, 9}),
              Lines({
                  "WWWWWW",
                  "WRRGGW",
                  "WRRGGW",
                  "WBBYYW",
                  "WBBYYW",
                  "WWWWWW",
              }));
}

TEST_F(WithOneZoomer, PassesNothingOnWhenItIsExclusive)
{
    zoomer->SetMode(ModeExclusive);
    EXPECT_EQ(AfterDraw({0, 0, 16, 10}), 1);
    EXPECT_EQ(Real(), WithPicture(black, 6, 4, Lines({"RRGG", "RRGG", "BBYY", "BBYY"})));
}

TEST_F(WithOneZoomer, AnswersOneWhenItIsExclusiveWhateverTheCopySays)
{
    zoomer->SetMode(ModeExclusive);
    real_driver::AnswerCopiesWith(0);
    EXPECT_EQ(AfterDraw({0, 0, 1, 1}), 1);
}

TEST_F(WithOneZoomer, IsOnlyPassedByWhenItsBitmapDoesNotLock)
{
    engine.RefuseLock(zoomer->hBmp);
    EXPECT_EQ(AfterDraw({0, 0, 2, 2}), 1);
    EXPECT_EQ(Real(), WithPicture(black, 0, 0, Lines({"RG", "BY"})));
    zoomer->SetBehaviour(BehaviourDeferred);
    AfterDraw({0, 0, 2, 2});
    EXPECT_EQ(zoomer->pending, 1u);
}

TEST_F(WithOneZoomer, CollectsDrawingWhenItIsDeferred)
{
    zoomer->SetOriginalRect({0, 0, 10, 10});
    zoomer->SetBehaviour(BehaviourDeferred);
    Settle(*zoomer);
    AfterDraw({12, 0, 14, 2});
    EXPECT_EQ(zoomer->pending, 0u);
    AfterDraw({3, 4, 5, 6});
    EXPECT_EQ(zoomer->pending, 1u);
    EXPECT_EQ(zoomer->pendingRect, (RECTL{3, 4, 5, 6}));
    AfterDraw({8, 8, 14, 12});
    EXPECT_EQ(zoomer->pendingRect, (RECTL{3, 4, 10, 10}));
    EXPECT_EQ(zoomer->changed, 0u);
    EXPECT_EQ(PictureOf(*psoReal, form, {6, 4, 10, 8}), Filled(4, 4, '.')) << "nothing magnified yet";
}

TEST_F(WithOneZoomer, DoesNothingButPassOnInOtherBehaviours)
{
    for (const ULONG behaviour : {ULONG{BehaviourFull}, 3u, 0xFFFFFFFFu}) {
        zoomer->SetBehaviour(behaviour);
        Settle(*zoomer);
        AfterDraw({0, 0, 2, 2});
        EXPECT_EQ(zoomer->pending, 0u);
        EXPECT_EQ(PictureOf(*psoReal, form, {6, 4, 10, 8}), Filled(4, 4, '.'));
    }
}

TEST_F(WithOneZoomer, IsTakenForExactlyOneThoughOthersAreOff)
{
    Zoomer* const off = AddZoomer({0, 0, 2, 2}, {0, 0, 4, 4}, 2, BehaviourDeferred);
    off->SetState(0);
    Settle(*off);
    AfterDraw({4, 2, 12, 10});
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{4, 2, 12, 4}}));
    EXPECT_EQ(off->pending, 0u);
}

TEST_F(WithOneZoomer, RemembersWhereItWasMagnifiedWhileItMoves)
{
    zoomer->SetMode(ModeMoving);
    zoomer->SetZoomedRect({0, 4, 4, 8});
    EXPECT_EQ(zoomer->previousZoomedRect, (RECTL{6, 4, 10, 8}));
    AfterDraw({0, 0, 1, 1});
    EXPECT_EQ(zoomer->previousZoomedRect, (RECTL{0, 4, 4, 8}));
}

class WithTwoZoomers : public AfterDrawing {
protected:
    Zoomer* below = AddZoomer({0, 0, 2, 2}, {6, 4, 10, 8}, 2, BehaviourFull);
    Zoomer* above = AddZoomer({0, 0, 2, 2}, {12, 0, 16, 4}, 2, BehaviourFull);
};

TEST_F(WithTwoZoomers, ShowAllPiecesBesideBoth)
{
    EXPECT_EQ(AfterDraw({0, 0, 16, 10}), 1);
    std::string expected = WithRectangle(screen, {6, 4, 10, 8}, '.');
    EXPECT_EQ(Real(), WithRectangle(expected, {12, 0, 16, 4}, '.'));
}

TEST_F(WithTwoZoomers, CutInTheOrderOfTheStack)
{
    AfterDraw({4, 2, 14, 10});
    // Round the lower one: above, left, below, right; of these the upper one cuts the first.
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{4, 2, 12, 4}, {4, 4, 6, 8}, {4, 8, 14, 10}, {10, 4, 14, 8}}));
}

TEST_F(WithTwoZoomers, PassNothingOnBehindAnExclusiveOne)
{
    above->SetMode(ModeExclusive);
    AfterDraw({0, 0, 16, 10});
    EXPECT_EQ(Real(), black);
    above->SetMode(ModeOrdinary);
    below->SetMode(ModeExclusive);
    AfterDraw({0, 0, 16, 10});
    EXPECT_EQ(Real(), black);
}

TEST_F(WithTwoZoomers, CollectDrawingWhenDeferredEvenBehindAnExclusiveOne)
{
    below->SetMode(ModeExclusive);
    below->SetBehaviour(BehaviourDeferred);
    above->SetBehaviour(BehaviourDeferred);
    Settle(*below);
    Settle(*above);
    AfterDraw({1, 0, 9, 9});
    EXPECT_EQ(below->pendingRect, (RECTL{1, 0, 2, 2}));
    EXPECT_EQ(above->pendingRect, (RECTL{1, 0, 2, 2}));
    EXPECT_EQ(above->pending, 1u);
}

TEST_F(WithTwoZoomers, MagnifyAtOnceWhereAPieceTouchesTheirOriginal)
{
    below->SetBehaviour(BehaviourImmediate);
    above->SetBehaviour(BehaviourImmediate);
    EXPECT_EQ(AfterDraw({0, 0, 2, 1}), 1);
    std::string expected = WithPicture(black, 6, 4, Lines({"RRGG", "RRGG", "BBYY", "BBYY"}));
    expected = WithPicture(expected, 12, 0, Lines({"RRGG", "RRGG", "BBYY", "BBYY"}));
    EXPECT_EQ(Real(), WithPicture(expected, 0, 0, Lines({"RG"})));
}

TEST_F(WithTwoZoomers, LeaveTheUpperOneAloneWhenThePieceIsHiddenByTheLowerOne)
{
    below->SetZoomedRect({0, 0, 4, 4});
    above->SetBehaviour(BehaviourImmediate);
    AfterDraw({0, 0, 2, 2});
    EXPECT_EQ(Real(), black);
}

TEST_F(WithTwoZoomers, AnswerAsTheLastPiece)
{
    real_driver::AnswerCopiesWith(0);
    EXPECT_EQ(AfterDraw({0, 0, 2, 2}), 0);
    EXPECT_EQ(AfterDraw({6, 4, 10, 8}), 1) << "no piece";
    EXPECT_EQ(AfterDraw({4, 4, 10, 6}), 0);
    EXPECT_EQ(AfterDraw({2, 2, 2, 2}), 1) << "an empty piece";
}

TEST_F(WithTwoZoomers, SkipOneThatIsOffBetweenThem)
{
    Zoomer* const top = AddZoomer({0, 0, 2, 2}, {0, 0, 2, 2}, 1, BehaviourFull);
    above->SetState(0);
    AfterDraw({0, 0, 16, 2});
    EXPECT_EQ(RectanglesCopied(), (Rectangles{{2, 0, 16, 2}}));
    EXPECT_TRUE(top->IsOn());
}

TEST_F(WithTwoZoomers, AreOnlyCutOutWhenTheirBitmapsDoNotLock)
{
    below->SetBehaviour(BehaviourImmediate);
    engine.RefuseLock(below->hBmp);
    AfterDraw({0, 0, 2, 2});
    EXPECT_EQ(Real(), WithPicture(black, 0, 0, Lines({"RG", "BY"})));
}

TEST_F(AfterDrawing, NeedsNoStackForAStackOfZoomers)
{
    // Each leaves one pixel less; a walk by recursion would be as deep as the stack is high.
    for (LONG i = 0; i < 1000; ++i)
        AddZoomer({0, 0, 1, 1}, {i % 15, 5, i % 15 + 1, 6}, 1, BehaviourFull);
    EXPECT_EQ(AfterDraw({0, 5, 16, 6}), 1);
    EXPECT_EQ(Real(), WithRectangle(black, {15, 5, 16, 6}, 'W'));
}

TEST_F(AfterDrawing, ShowsExactlyWhatNoFrameCoversInAStack)
{
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        list.Flush();
        Paint(*psoReal, 0, 0, black, form);
        std::string expected = screen;
        const int count = 2 + static_cast<int>(random() % 5);
        for (int i = 0; i < count; ++i) {
            const LONG left = static_cast<LONG>(random() % 14), top = static_cast<LONG>(random() % 8);
            const RECTL view = {left, top, left + 1 + static_cast<LONG>(random() % (16 - left)),
                                top + 1 + static_cast<LONG>(random() % (10 - top))};
            AddZoomer({0, 0, 2, 2}, view, 2, BehaviourFull);
            expected = WithRectangle(expected, view, '.');
        }
        AfterDraw({0, 0, 16, 10});
        ASSERT_EQ(Real(), expected) << "round " << round;
    }
}

} // namespace
