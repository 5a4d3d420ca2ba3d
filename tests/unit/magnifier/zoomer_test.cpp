#include "magnifier/zoomer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "engine/core/engine.h"
#include "magnifier/zoomer_list.h"
#include "tests/unit/magnifier/pictures.h"

namespace {

using namespace koru;

class AZoomer : public testing::Test {
protected:
    AZoomer()
    {
        list.Initialise(640, 480, BMF_8BPP, 640);
        zoomer = list.Create();
        zoomer->changed = 0;
    }
    ~AZoomer() override { list.Release(); }

    engine::Engine engine;
    ZoomerList list = {};
    Zoomer* zoomer;
};

template<void (Zoomer::*Set)(ULONG)> void Call(Zoomer& zoomer, ULONG value)
{
    (zoomer.*Set)(value);
}

struct PropertyCase {
    const char* name;
    void (*set)(Zoomer& zoomer, ULONG value);
    ULONG Zoomer::*field;
    ULONG initial;
};

const PropertyCase properties[] = {
    {.name = "Mode", .set = Call<&Zoomer::SetMode>, .field = &Zoomer::mode, .initial = 0},
    {.name = "Style", .set = Call<&Zoomer::SetStyle>, .field = &Zoomer::style, .initial = 0},
    {.name = "Behaviour", .set = Call<&Zoomer::SetBehaviour>, .field = &Zoomer::behaviour, .initial = 0},
    {.name = "ImproveFactor", .set = Call<&Zoomer::SetImproveFactor>, .field = &Zoomer::improveFactor, .initial = 0},
    {.name = "Border", .set = Call<&Zoomer::SetBorder>, .field = &Zoomer::border, .initial = 0},
    {.name = "BordersSize", .set = Call<&Zoomer::SetBordersSize>, .field = &Zoomer::bordersSize, .initial = 1},
};

class AProperty : public AZoomer, public testing::WithParamInterface<PropertyCase> {
protected:
    void Set(ULONG value) { GetParam().set(*zoomer, value); }
    ULONG Value() const
    {
        const auto field = GetParam().field;
        return zoomer->*field;
    }
};

TEST_P(AProperty, StartsWithItsInitialValue)
{
    EXPECT_EQ(Value(), GetParam().initial);
}

TEST_P(AProperty, TakesAnyValueAndMarksTheZoomerChanged)
{
    Set(0xFFFFFFFE);
    EXPECT_EQ(Value(), 0xFFFFFFFEu);
    EXPECT_EQ(zoomer->changed, 1u);
}

TEST_P(AProperty, DoesNotMarkTheZoomerWhenItsValueStays)
{
    Set(GetParam().initial);
    EXPECT_EQ(zoomer->changed, 0u);
}

INSTANTIATE_TEST_SUITE_P(Of, AProperty, testing::ValuesIn(properties),
                         [](const auto& testCase) { return std::string(testCase.param.name); });

TEST_F(AZoomer, IsMarkedChangedByItsStateEvenWhenThatStays)
{
    EXPECT_FALSE(zoomer->IsOn());
    zoomer->SetState(0);
    EXPECT_EQ(zoomer->changed, 1u);
    zoomer->SetState(7);
    EXPECT_EQ(zoomer->state, 7u);
    EXPECT_TRUE(zoomer->IsOn());
}

TEST_F(AZoomer, RemembersItsPlaceWhenItBecomesMoving)
{
    zoomer->SetZoomedRect({10, 10, 50, 50});
    EXPECT_EQ(zoomer->previousZoomedRect, (RECTL{0, 0, 100, 100}));
    zoomer->SetMode(1);
    EXPECT_EQ(zoomer->previousZoomedRect, (RECTL{0, 0, 100, 100}));
    zoomer->SetMode(2);
    EXPECT_EQ(zoomer->previousZoomedRect, (RECTL{10, 10, 50, 50}));
    zoomer->SetZoomedRect({20, 20, 60, 60});
    zoomer->SetMode(2);
    EXPECT_EQ(zoomer->previousZoomedRect, (RECTL{10, 10, 50, 50}));
}

TEST_F(AZoomer, ComparesThePickedColourAsYesOrNo)
{
    zoomer->SetPickColour(0);
    EXPECT_EQ(zoomer->changed, 0u);
    zoomer->SetPickColour(0x100);
    EXPECT_EQ(zoomer->pickColour, 1u);
    EXPECT_EQ(zoomer->changed, 1u);
    zoomer->changed = 0;
    zoomer->SetPickColour(5);
    EXPECT_EQ(zoomer->changed, 0u);
    zoomer->SetPickColour(0);
    EXPECT_EQ(zoomer->pickColour, 0u);
}

TEST_F(AZoomer, StaysAsItIsWhenGivenItsFactorsAgain)
{
    zoomer->pendingRect = {1, 2, 3, 4};
    zoomer->SetFactor(0x102); // the low byte counts
    zoomer->SetXFactor(2);
    zoomer->SetYFactor(0xFFFFFF02);
    EXPECT_EQ(zoomer->changed, 0u);
    EXPECT_EQ(zoomer->pendingRect, (RECTL{1, 2, 3, 4}));
    EXPECT_EQ(zoomer->destRect, (RECTL{0, 0, 100, 100}));
}

TEST_F(AZoomer, PlacesTheWholeOriginalByItsFactors)
{
    zoomer->SetOriginalRect({10, 10, 60, 40});
    zoomer->SetZoomedRect({200, 100, 300, 200});
    zoomer->SetXFactor(3);
    zoomer->SetYFactor(2);
    EXPECT_EQ(zoomer->destRect, (RECTL{200, 100, 350, 160}));
}

TEST_F(AZoomer, MarksARectangleThatDiffersAndMovesItsPicture)
{
    zoomer->SetOriginalRect({0, 0, 50, 50});
    zoomer->SetZoomedRect({0, 0, 100, 100});
    EXPECT_EQ(zoomer->changed, 0u);
    zoomer->SetOriginalRect({0, 0, 50, 51});
    EXPECT_EQ(zoomer->changed, 1u);
    EXPECT_EQ(zoomer->destRect, (RECTL{0, 0, 100, 102}));
    EXPECT_EQ(zoomer->pendingRect, (RECTL{0, 0, 50, 50}));
    zoomer->changed = 0;
    zoomer->SetZoomedRect({7, 9, 8, 8});
    EXPECT_EQ(zoomer->changed, 1u);
    EXPECT_EQ(zoomer->destRect, (RECTL{7, 9, 107, 111}));
}

TEST_F(AZoomer, KeepsTheLowByteOfAFactorWithoutBeingMarked)
{
    zoomer->SetFactor(0x103);
    EXPECT_EQ(zoomer->xFactor, 3);
    EXPECT_EQ(zoomer->yFactor, 3);
    EXPECT_EQ(zoomer->destRect, (RECTL{0, 0, 150, 150}));
    zoomer->SetXFactor(0xFFFFFF04);
    zoomer->SetYFactor(0x1FF);
    EXPECT_EQ(zoomer->destRect, (RECTL{0, 0, 200, 12750}));
    EXPECT_EQ(zoomer->changed, 0u);
}

TEST_F(AZoomer, TakesBothFactorsWhenOneDiffers)
{
    zoomer->SetYFactor(3);
    EXPECT_EQ(zoomer->xFactor, 2);
    zoomer->SetFactor(2);
    EXPECT_EQ(zoomer->yFactor, 2);
    EXPECT_EQ(zoomer->destRect, (RECTL{0, 0, 100, 100}));
}

TEST_F(AZoomer, StoresImpossibleValuesUnchanged)
{
    zoomer->SetFactor(0);
    EXPECT_EQ(zoomer->destRect, (RECTL{0, 0, 0, 0}));
    zoomer->SetFactor(1);
    EXPECT_EQ(zoomer->destRect, (RECTL{0, 0, 50, 50}));
    zoomer->SetOriginalRect({50, 40, 10, -20});
    EXPECT_EQ(zoomer->originalRect, (RECTL{50, 40, 10, -20}));
    EXPECT_EQ(zoomer->destRect, (RECTL{0, 0, -40, -60}));
}

TEST_F(AZoomer, WrapsAPlaceOutOfRange)
{
    zoomer->SetOriginalRect({INT32_MIN, 0, INT32_MAX, 1}); // 0xFFFFFFFF columns
    zoomer->SetZoomedRect({100, INT32_MAX, 200, 0});
    EXPECT_EQ(zoomer->destRect, (RECTL{100, INT32_MAX, 98, INT32_MIN + 1}));
}

struct FrameCase {
    const char* name;
    RECTL view;
    ULONG border, size;
    RECTL framed;
};

const FrameCase frames[] = {
    {.name = "NoBorder", .view = {100, 100, 200, 200}, .border = 0, .size = 5, .framed = {100, 100, 200, 200}},
    {.name = "NoSize", .view = {100, 100, 200, 200}, .border = 15, .size = 0, .framed = {100, 100, 200, 200}},
    {.name = "OnlyTheColourBit", .view = {100, 100, 200, 200}, .border = 16, .size = 5, .framed = {100, 100, 200, 200}},
    {.name = "AllSides", .view = {100, 100, 200, 200}, .border = 15, .size = 5, .framed = {95, 95, 205, 205}},
    {.name = "Left", .view = {100, 100, 200, 200}, .border = 1, .size = 5, .framed = {95, 100, 200, 200}},
    {.name = "Top", .view = {100, 100, 200, 200}, .border = 2, .size = 5, .framed = {100, 95, 200, 200}},
    {.name = "Right", .view = {100, 100, 200, 200}, .border = 4, .size = 5, .framed = {100, 100, 205, 200}},
    {.name = "Bottom", .view = {100, 100, 200, 200}, .border = 8, .size = 5, .framed = {100, 100, 200, 205}},
    {.name = "CutAtTheLeftEdge", .view = {3, 4, 50, 50}, .border = 3, .size = 5, .framed = {0, 0, 50, 50}},
    {.name = "ReachingTheFirstColumn", .view = {5, 6, 50, 50}, .border = 3, .size = 5, .framed = {0, 1, 50, 50}},
    {.name = "AtTheLeftEdge", .view = {0, 0, 50, 50}, .border = 3, .size = 5, .framed = {0, 0, 50, 50}},
    {.name = "LeftOfTheScreen", .view = {-7, -9, 50, 50}, .border = 3, .size = 5, .framed = {-7, -9, 50, 50}},
    {.name = "CutAtTheRightEdge", .view = {9, 9, 638, 478}, .border = 12, .size = 5, .framed = {9, 9, 640, 480}},
    {.name = "ReachingTheLastColumn", .view = {9, 9, 634, 474}, .border = 12, .size = 5, .framed = {9, 9, 639, 479}},
    {.name = "EndingAtTheEdge", .view = {9, 9, 635, 475}, .border = 12, .size = 5, .framed = {9, 9, 640, 480}},
    {.name = "AtTheRightEdge", .view = {9, 9, 640, 480}, .border = 12, .size = 5, .framed = {9, 9, 640, 480}},
    {.name = "BeyondTheRightEdge", .view = {9, 9, 700, 500}, .border = 12, .size = 5, .framed = {9, 9, 700, 500}},
    {.name = "Huge", .view = {9, 9, 200, 300}, .border = 15, .size = 0xFFFFFFFF, .framed = {0, 0, 640, 480}},
};

class AFrame : public AZoomer, public testing::WithParamInterface<FrameCase> { };

TEST_P(AFrame, WidensTheViewWithinTheScreen)
{
    zoomer->SetZoomedRect(GetParam().view);
    zoomer->SetBorder(GetParam().border);
    zoomer->SetBordersSize(GetParam().size);
    EXPECT_EQ(zoomer->FramedRect(), GetParam().framed);
}

INSTANTIATE_TEST_SUITE_P(Of, AFrame, testing::ValuesIn(frames),
                         [](const auto& testCase) { return std::string(testCase.param.name); });

} // namespace
