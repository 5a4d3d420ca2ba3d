#include "magnifier/palette.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "driver/driver_values.h"
#include "driver/pool.h"
#include "engine/core/engine.h"

namespace {

using namespace koru;
using Entry = std::array<BYTE, 4>; // red, green, blue, 0

class Palettes : public testing::Test {
protected:
    ~Palettes() override
    {
        ColorPairList::Clear();
        EXPECT_EQ(engine.Outstanding().poolBlocks, 0u);
        EXPECT_TRUE(engine.Violations().empty());
    }

    engine::Engine engine;
};

class Tables : public Palettes {
protected:
    ~Tables() override
    {
        FreeToPool(table256);
        FreeToPool(table16);
    }
    Entry At256(ULONG index) const { return At(table256, index); }
    Entry At16(ULONG index) const { return At(table16, index); }
    static Entry At(const BYTE* table, ULONG index)
    {
        Entry entry;
        std::memcpy(entry.data(), table + index * 4, 4);
        return entry;
    }

    BYTE* table256 = DefaultColourTable(BMF_8BPP);
    BYTE* table16 = DefaultColourTable(BMF_4BPP);
};

void ExpectColour(const ColourBytes& colour, BYTE red, BYTE green, BYTE blue)
{
    EXPECT_EQ(colour.red, red);
    EXPECT_EQ(colour.green, green);
    EXPECT_EQ(colour.blue, blue);
}

TEST_F(Palettes, ExistForFourAndEightBitsAlone)
{
    for (const ULONG format : {0u, BMF_1BPP, BMF_16BPP, BMF_24BPP, BMF_32BPP, BMF_4RLE, BMF_8RLE, 9u})
        EXPECT_EQ(DefaultColourTable(format), nullptr) << format;
    EXPECT_EQ(engine.DebugOutput(), "");
}

TEST_F(Palettes, SayWhichOneCouldNotBeAllocated)
{
    engine.Fail(engine::Request::Memory);
    EXPECT_EQ(DefaultColourTable(BMF_8BPP), nullptr);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Couldn't allocate default 256 palette\n");
    engine.Fail(engine::Request::Memory);
    EXPECT_EQ(DefaultColourTable(BMF_4BPP), nullptr);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU:Couldn't allocate default 16 palette\n");
}

TEST_F(Tables, RampUnevenlyBetweenTheFixedColoursOf256)
{
    EXPECT_EQ(At256(10), (Entry{80, 8, 0, 0}));
    EXPECT_EQ(At256(31), (Entry{248, 24, 0, 0}));
    EXPECT_EQ(At256(32), (Entry{0, 32, 0, 0}));
    EXPECT_EQ(At256(63), (Entry{248, 56, 0, 0}));
    EXPECT_EQ(At256(64), (Entry{0, 64, 16, 0}));
    EXPECT_EQ(At256(128), (Entry{0, 128, 32, 0}));
    EXPECT_EQ(At256(245), (Entry{168, 240, 48, 0}));
}

TEST_F(Tables, BeginAndEndWithTheFixedColoursOf256)
{
    constexpr Entry first[] = {{0, 0, 0, 0},       {128, 0, 0, 0},    {0, 128, 0, 0},   {128, 128, 0, 0},
                               {0, 0, 128, 0},     {128, 0, 128, 0},  {0, 128, 128, 0}, {192, 192, 192, 0},
                               {192, 220, 192, 0}, {166, 202, 240, 0}};
    constexpr Entry last[] = {{255, 251, 240, 0}, {160, 160, 164, 0}, {128, 128, 128, 0}, {255, 0, 0, 0},
                              {0, 255, 0, 0},     {255, 255, 0, 0},   {0, 0, 255, 0},     {255, 0, 255, 0},
                              {0, 255, 255, 0},   {255, 255, 255, 0}};
    for (ULONG i = 0; i < 10; ++i) {
        EXPECT_EQ(At256(i), first[i]) << i;
        EXPECT_EQ(At256(246 + i), last[i]) << 246 + i;
    }
}

TEST_F(Tables, HoldTheSixteenColours)
{
    constexpr Entry expected[] = {{0, 0, 0, 0},       {128, 0, 0, 0},   {0, 128, 0, 0},   {128, 128, 0, 0},
                                  {0, 0, 128, 0},     {128, 0, 128, 0}, {0, 128, 128, 0}, {128, 128, 128, 0},
                                  {192, 192, 192, 0}, {255, 0, 0, 0},   {0, 255, 0, 0},   {255, 255, 0, 0},
                                  {0, 0, 255, 0},     {255, 0, 255, 0}, {0, 255, 255, 0}, {255, 255, 255, 0}};
    for (ULONG i = 0; i < 16; ++i)
        EXPECT_EQ(At16(i), expected[i]) << i;
}

TEST_F(Tables, AnswerColoursBlueFirst)
{
    ColourBytes colour = {};
    EXPECT_EQ(ColourOfIndex256(table256, 9, colour), 1);
    ExpectColour(colour, 166, 202, 240);
    EXPECT_EQ(ColourOfIndex16(table16, 3, colour), 1);
    ExpectColour(colour, 128, 128, 0);
}

TEST_F(Tables, AnswerZerosBeyondTheSixteen)
{
    ColourBytes colour = {1, 2, 3};
    EXPECT_EQ(ColourOfIndex16(table16, 15, colour), 1);
    EXPECT_EQ(ColourOfIndex16(table16, 16, colour), 0);
    ExpectColour(colour, 0, 0, 0);
    EXPECT_EQ(ColourOfIndex16(table16, 17, colour), 0);
}

TEST_F(Palettes, AnswerZerosWithoutATable)
{
    ColourBytes colour = {1, 2, 3};
    EXPECT_EQ(ColourOfIndex256(nullptr, 5, colour), 0);
    ExpectColour(colour, 0, 0, 0);
    colour = {1, 2, 3};
    EXPECT_EQ(ColourOfIndex16(nullptr, 5, colour), 0);
    ExpectColour(colour, 0, 0, 0);
}

TEST_F(Tables, FindTheNearestEntry)
{
    BYTE index = 99;
    EXPECT_EQ(NearestIndex256(table256, {255, 255, 255}, index), 1);
    EXPECT_EQ(index, 255);
    EXPECT_EQ(NearestIndex16(table16, {128, 128, 128}, index), 1);
    EXPECT_EQ(index, 7);
    EXPECT_EQ(NearestIndex16(table16, {130, 2, 1}, index), 1); // blue 130
    EXPECT_EQ(index, 4);
}

TEST_F(Tables, FindTheLowestOfEquallyNearEntries)
{
    BYTE index = 99;
    NearestIndex256(table256, {0, 8, 84}, index); // between (80, 8, 0) and (88, 8, 0)
    EXPECT_EQ(index, 10);
    NearestIndex16(table16, {64, 0, 0}, index); // between black and navy
    EXPECT_EQ(index, 0);
}

TEST_F(Palettes, FindNothingWithoutATable)
{
    BYTE index = 99;
    EXPECT_EQ(NearestIndex256(nullptr, {1, 2, 3}, index), 0);
    EXPECT_EQ(NearestIndex16(nullptr, {1, 2, 3}, index), 0);
    EXPECT_EQ(index, 99);
}

TEST_F(Palettes, LetTheLighterOrTheDarkerColourWin)
{
    constexpr ColourBytes dark = {10, 10, 10}, light = {0, 0, 31};
    EXPECT_TRUE(FirstColourWins(light, dark, 0));
    EXPECT_FALSE(FirstColourWins(dark, light, 0));
    EXPECT_FALSE(FirstColourWins(light, dark, 1));
    EXPECT_TRUE(FirstColourWins(dark, light, 1));
}

TEST_F(Palettes, LetTheSecondOfEquallyBrightColoursWin)
{
    constexpr ColourBytes red = {0, 0, 255}, blue = {255, 0, 0};
    EXPECT_FALSE(FirstColourWins(red, blue, 0));
    EXPECT_FALSE(FirstColourWins(blue, red, 0));
    EXPECT_FALSE(FirstColourWins(red, blue, 1));
    EXPECT_FALSE(FirstColourWins(blue, red, 1));
}

TEST_F(Palettes, LetTheSecondColourOfARegisteredPairWin)
{
    constexpr ColourBytes white = {255, 255, 255}, navy = {128, 0, 0};
    ColorPairList::Add(white, navy);
    for (const ULONG pickColour : {0u, 1u}) {
        EXPECT_FALSE(FirstColourWins(white, navy, pickColour));
        EXPECT_TRUE(FirstColourWins(navy, white, pickColour));
    }
}

TEST_F(Tables, ChooseTheWinningIndex)
{
    EXPECT_EQ(ChooseIndexedColour256(1, 255, table256, 0), 255);
    EXPECT_EQ(ChooseIndexedColour256(255, 1, table256, 0), 255);
    EXPECT_EQ(ChooseIndexedColour256(255, 1, table256, 1), 1);
    EXPECT_EQ(ChooseIndexedColour16(15, 8, table16, 0), 15);
    EXPECT_EQ(ChooseIndexedColour16(15, 8, table16, 1), 8);
}

TEST_F(Tables, ChooseTheSecondOfEquallyBrightIndices)
{
    EXPECT_EQ(ChooseIndexedColour16(9, 12, table16, 0), 12); // red, blue
    EXPECT_EQ(ChooseIndexedColour16(12, 9, table16, 0), 9);
    EXPECT_EQ(ChooseIndexedColour256(249, 252, table256, 0), 252);
}

TEST_F(Tables, ChooseByARegisteredPair)
{
    ColorPairList::Add({255, 255, 255}, {128, 0, 0});
    EXPECT_EQ(ChooseIndexedColour16(15, 4, table16, 0), 4);
    EXPECT_EQ(ChooseIndexedColour256(4, 255, table256, 0), 4);
}

TEST_F(Palettes, ChooseTheFirstIndexWithoutATable)
{
    EXPECT_EQ(ChooseIndexedColour16(0, 15, nullptr, 0), 0);
    EXPECT_EQ(engine.DebugOutput(), "");
    EXPECT_EQ(ChooseIndexedColour256(0, 255, nullptr, 0), 0);
    EXPECT_EQ(engine.DebugOutput(), "KORU:Error getting color from palette\n");
}

} // namespace
