#include "magnifier/zoomer_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "driver/handles.h"
#include "engine/core/engine.h"
#include "magnifier/palette.h"
#include "tests/unit/magnifier/pictures.h"

namespace {

using namespace koru;
using pictures::SurfaceBehind;

class AZoomerList : public testing::Test {
protected:
    ~AZoomerList() override
    {
        engine.StopFailing();
        list.Release();
        engine.CheckGuards();
        EXPECT_EQ(engine.Outstanding(), engine::Resources());
        EXPECT_EQ(engine.Violations(), std::vector<std::string>());
    }
    void Initialise(ULONG format = BMF_32BPP) { list.Initialise(160, 120, format, 160 * 4); }

    std::vector<Zoomer*> Order() const
    {
        std::vector<Zoomer*> order;
        for (Zoomer* zoomer = list.head; zoomer; zoomer = zoomer->next)
            order.push_back(zoomer);
        return order;
    }

    engine::Engine engine;
    ZoomerList list = {};
};

TEST_F(AZoomerList, MakesItsWorkBitmapsLikeTheScreen)
{
    list.recompose = 1;
    list.Initialise(160, 120, BMF_32BPP, 700);
    EXPECT_EQ(list.width, 160u);
    EXPECT_EQ(list.height, 120u);
    EXPECT_EQ(list.format, BMF_32BPP);
    EXPECT_EQ(list.recompose, 0u);
    EXPECT_EQ(list.colourTable, nullptr);
    for (const HSURF bitmap : {list.hBmpStretchDest, list.hBmpAux}) {
        const engine::Surface& surface = SurfaceBehind(bitmap);
        EXPECT_EQ(surface.sizlBitmap, (SIZEL{160, 120}));
        EXPECT_EQ(surface.iBitmapFormat, BMF_32BPP);
        EXPECT_EQ(surface.lDelta, 700);
        EXPECT_EQ(surface.fjBitmap & BMF_TOPDOWN, BMF_TOPDOWN);
    }
    EXPECT_NE(list.hBmpStretchDest, list.hBmpAux);
}

TEST_F(AZoomerList, RoundsRowsUpWhereTheScreensDeltaHoldsNone)
{
    for (const LONG lDelta : {0, -640, 639}) {
        list.Initialise(160, 120, BMF_32BPP, lDelta);
        EXPECT_EQ(SurfaceBehind(list.hBmpAux).lDelta, 640) << lDelta;
    }
    list.Initialise(33, 5, BMF_4BPP, 16);
    EXPECT_EQ(SurfaceBehind(list.hBmpAux).lDelta, 20);
}

TEST_F(AZoomerList, HasTheColourTableOfItsFormat)
{
    list.Initialise(16, 16, BMF_8BPP, 16);
    ASSERT_NE(list.colourTable, nullptr);
    EXPECT_EQ(list.colourTable[10 * 4], 80); // red of entry 10
    list.Release();
    EXPECT_EQ(list.colourTable, nullptr);
    list.Initialise(16, 16, BMF_4BPP, 16);
    ASSERT_NE(list.colourTable, nullptr);
    EXPECT_EQ(list.colourTable[9 * 4], 255); // red of entry 9
}

TEST_F(AZoomerList, GoesOnWithoutTheCompositionBitmap)
{
    engine.Fail(engine::Request::CreateSurface, 1);
    Initialise();
    EXPECT_EQ(list.hBmpStretchDest, nullptr);
    EXPECT_NE(list.hBmpAux, nullptr);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Failed to create hBmpStretchDest \n");
}

TEST_F(AZoomerList, GoesOnWithoutTheAuxiliaryBitmap)
{
    engine.Fail(engine::Request::CreateSurface, 2);
    Initialise();
    EXPECT_NE(list.hBmpStretchDest, nullptr);
    EXPECT_EQ(list.hBmpAux, nullptr);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Failed to create hBmpAux\n");
}

TEST_F(AZoomerList, LeavesNothingOfItsFirstInitialisationAtASecond)
{
    list.Initialise(160, 120, BMF_8BPP, 160);
    list.Create();
    const engine::Resources once = engine.Outstanding();
    list.Initialise(80, 60, BMF_8BPP, 80);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Error: MultiZoom Init !! hBmpStretchDest != NULL \n");
    EXPECT_EQ(list.head, nullptr);
    EXPECT_EQ(list.count, 0u);
    EXPECT_EQ(engine.Outstanding().surfaces, once.surfaces - 1);
    EXPECT_EQ(engine.Outstanding().poolBlocks, once.poolBlocks - 1);
}

TEST_F(AZoomerList, LeavesNothingWhenOnlyTheAuxiliaryBitmapWasMade)
{
    engine.Fail(engine::Request::CreateSurface, 1);
    Initialise();
    engine.ClearDebugOutput();
    Initialise();
    EXPECT_EQ(engine.DebugOutput(), "");
    EXPECT_EQ(engine.Outstanding().surfaces, 2u);
}

TEST_F(AZoomerList, CreatesAZoomerWithItsInitialValues)
{
    list.Initialise(160, 120, BMF_8BPP, 160);
    const Zoomer* const zoomer = list.Create();
    ASSERT_NE(zoomer, nullptr);
    EXPECT_EQ(zoomer->state, 0u);
    EXPECT_EQ(zoomer->xFactor, 2);
    EXPECT_EQ(zoomer->yFactor, 2);
    EXPECT_EQ(zoomer->mode, 0u);
    EXPECT_EQ(zoomer->style, 0u);
    EXPECT_EQ(zoomer->behaviour, 0u);
    EXPECT_EQ(zoomer->border, 0u);
    EXPECT_EQ(zoomer->bordersSize, 1u);
    EXPECT_EQ(zoomer->originalRect, (RECTL{0, 0, 50, 50}));
    EXPECT_EQ(zoomer->zoomedRect, (RECTL{0, 0, 100, 100}));
    EXPECT_EQ(zoomer->previousZoomedRect, (RECTL{0, 0, 100, 100}));
    EXPECT_EQ(zoomer->destRect, (RECTL{0, 0, 100, 100}));
    EXPECT_EQ(zoomer->improveFactor, 0u);
    EXPECT_EQ(zoomer->pending, 1u);
    EXPECT_EQ(zoomer->pendingRect, (RECTL{0, 0, 50, 50}));
    EXPECT_EQ(zoomer->changed, 1u);
    EXPECT_EQ(zoomer->screenWidth, 160u);
    EXPECT_EQ(zoomer->screenHeight, 120u);
    EXPECT_EQ(zoomer->colourTable, list.colourTable);
    EXPECT_EQ(zoomer->hBmpAux, list.hBmpAux);
    EXPECT_EQ(zoomer->pickColour, 0u);
    EXPECT_EQ(zoomer->zOrder, 0);
    EXPECT_EQ(list.count, 1u);
    EXPECT_EQ(list.recompose, 0u);
}

struct BitmapCase {
    ULONG format;
    LONG stride; // of 33 + 48 pixels
    ULONG made;
};

TEST_F(AZoomerList, GivesAZoomerABitmapLargerThanTheScreen)
{
    for (const BitmapCase& testCase : {BitmapCase{BMF_1BPP, 11, BMF_1BPP},
                                       {BMF_4BPP, 41, BMF_4BPP},
                                       {BMF_8BPP, 81, BMF_8BPP},
                                       {BMF_16BPP, 162, BMF_16BPP},
                                       {BMF_24BPP, 243, BMF_24BPP},
                                       {BMF_32BPP, 324, BMF_32BPP},
                                       {BMF_4RLE, 41, BMF_4BPP},
                                       {BMF_8RLE, 81, BMF_8BPP}}) {
        list.Initialise(33, 20, testCase.format, 0);
        const Zoomer* const zoomer = list.Create();
        ASSERT_NE(zoomer, nullptr) << testCase.format;
        const engine::Surface& bitmap = SurfaceBehind(zoomer->hBmp);
        EXPECT_EQ(bitmap.sizlBitmap, (SIZEL{81, 68}));
        EXPECT_EQ(bitmap.iBitmapFormat, testCase.made);
        EXPECT_EQ(bitmap.lDelta, testCase.stride);
        EXPECT_EQ(bitmap.fjBitmap & BMF_TOPDOWN, BMF_TOPDOWN);
        EXPECT_EQ(bitmap.Pixel(80, 67), 0u);
    }
}

TEST_F(AZoomerList, CreatesNoZoomerInAFormatWithoutPixels)
{
    list.Initialise(33, 20, 9, 4096);
    engine.ClearDebugOutput();
    EXPECT_EQ(list.Create(), nullptr);
    EXPECT_EQ(engine.DebugOutput(), "KORU:Faliled to create hBmp !!!! \nKORU:Error creating zoom bitmap \n");
}

TEST_F(AZoomerList, CreatesNoZoomerWithoutMemory)
{
    Initialise();
    engine.Fail(engine::Request::Memory);
    EXPECT_EQ(list.Create(), nullptr);
    EXPECT_EQ(list.count, 0u);
    EXPECT_EQ(engine.DebugOutput(), "");
}

TEST_F(AZoomerList, KeepsNothingOfAZoomerWhoseBitmapCannotBeMade)
{
    Initialise();
    const engine::Resources before = engine.Outstanding();
    engine.Fail(engine::Request::CreateSurface);
    EXPECT_EQ(list.Create(), nullptr);
    EXPECT_EQ(list.head, nullptr);
    EXPECT_EQ(list.count, 0u);
    EXPECT_EQ(engine.Outstanding(), before);
    EXPECT_EQ(engine.DebugOutput(), "KORU:Faliled to create hBmp !!!! \nKORU:Error creating zoom bitmap \n");
}

TEST_F(AZoomerList, PutsNewZoomersAtTheBottom)
{
    Initialise();
    Zoomer* const first = list.Create();
    list.SetZOrder(NumberOf(first), -5);
    list.recompose = 0;
    Zoomer* const second = list.Create();
    EXPECT_EQ(Order(), (std::vector{second, first}));
    EXPECT_EQ(list.recompose, 0u);
}

TEST_F(AZoomerList, FindsAZoomerByItsNumberAlone)
{
    Initialise();
    Zoomer* const first = list.Create();
    Zoomer* const second = list.Create();
    EXPECT_EQ(list.Find(NumberOf(first)), first);
    EXPECT_EQ(list.Find(NumberOf(second)), second);
    EXPECT_EQ(list.Find(0), nullptr);
    EXPECT_EQ(list.Find(NumberOf(first) + 4), nullptr);
    const ULONG stale = NumberOf(first);
    list.Remove(stale);
    EXPECT_EQ(list.Find(stale), nullptr);
}

TEST_F(AZoomerList, RemovesAZoomerWithItsBitmap)
{
    Initialise();
    Zoomer* const first = list.Create();
    const engine::Resources one = engine.Outstanding();
    Zoomer* const second = list.Create();
    Zoomer* const third = list.Create();
    list.Remove(NumberOf(second));
    EXPECT_EQ(Order(), (std::vector{third, first}));
    list.Remove(NumberOf(third));
    EXPECT_EQ(Order(), (std::vector{first}));
    EXPECT_EQ(list.count, 1u);
    EXPECT_EQ(engine.Outstanding(), one);
    list.Remove(0x1234);
    EXPECT_EQ(list.count, 1u);
}

TEST_F(AZoomerList, FlushesAllZoomersAndNothingElse)
{
    Initialise();
    const engine::Resources none = engine.Outstanding();
    list.Create();
    list.Create();
    list.Flush();
    EXPECT_EQ(list.head, nullptr);
    EXPECT_EQ(list.count, 0u);
    EXPECT_EQ(engine.Outstanding(), none);
}

TEST_F(AZoomerList, CountsZoomersThatAreOn)
{
    Initialise();
    list.Create()->SetState(1);
    list.Create();
    list.Create()->SetState(0xFFFFFFFF);
    EXPECT_EQ(list.count, 3u);
    EXPECT_EQ(list.CountActive(), 2u);
}

class ThreeZoomers : public AZoomerList {
protected:
    ThreeZoomers()
    {
        Initialise();
        last = list.Create();
        middle = list.Create();
        first = list.Create();
    }
    Zoomer *first, *middle, *last;
};

TEST_F(ThreeZoomers, MoveTheOneWithTheLargerOrderToTheBottom)
{
    list.SetZOrder(NumberOf(last), 5);
    EXPECT_EQ(Order(), (std::vector{last, first, middle}));
    EXPECT_EQ(list.recompose, 1u);
    EXPECT_EQ(list.GetZOrder(NumberOf(last)), 5);
}

TEST_F(ThreeZoomers, MoveAnEqualOneBehindItsEquals)
{
    list.SetZOrder(NumberOf(first), 0);
    EXPECT_EQ(Order(), (std::vector{middle, last, first}));
    EXPECT_EQ(list.recompose, 1u);
}

TEST_F(ThreeZoomers, AreNotRecomposedWhenTheOrderStays)
{
    list.SetZOrder(NumberOf(last), -1);
    EXPECT_EQ(Order(), (std::vector{first, middle, last}));
    EXPECT_EQ(list.recompose, 0u);
    list.SetZOrder(NumberOf(first), 1);
    EXPECT_EQ(list.recompose, 0u);
    EXPECT_EQ(list.GetZOrder(NumberOf(last)), -1);
}

TEST_F(ThreeZoomers, CompareTheirOrderSigned)
{
    list.SetZOrder(NumberOf(middle), -2147483647 - 1);
    EXPECT_EQ(Order(), (std::vector{first, last, middle}));
    list.SetZOrder(NumberOf(last), 2147483647);
    EXPECT_EQ(Order(), (std::vector{last, first, middle}));
}

TEST_F(ThreeZoomers, IgnoreAnUnknownOne)
{
    list.SetZOrder(0x1234, 5);
    EXPECT_EQ(Order(), (std::vector{first, middle, last}));
    EXPECT_EQ(list.recompose, 0u);
    EXPECT_EQ(list.GetZOrder(0x1234), -1);
}

TEST_F(ThreeZoomers, AreRenumberedInTheirOrder)
{
    list.SetZOrder(NumberOf(middle), 77);
    list.recompose = 0;
    list.Renumber();
    EXPECT_EQ(list.GetZOrder(NumberOf(middle)), 3);
    EXPECT_EQ(list.GetZOrder(NumberOf(first)), 2);
    EXPECT_EQ(list.GetZOrder(NumberOf(last)), 1);
    EXPECT_EQ(list.recompose, 0u);
}

TEST_F(ThreeZoomers, StayInFallingOrderWhateverIsSet)
{
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        const std::vector<Zoomer*> before = Order();
        Zoomer* const moved = before[random() % 3];
        list.recompose = 0;
        list.SetZOrder(NumberOf(moved), static_cast<LONG>(random() % 4));
        EXPECT_EQ(list.recompose != 0, Order() != before);
        EXPECT_TRUE(std::ranges::is_sorted(Order(), std::greater(), &Zoomer::zOrder));
    }
}

} // namespace
