#include "escape/color_pair_list.h"

#include <gtest/gtest.h>

#include "driver/driver_values.h"
#include "engine/core/engine.h"

namespace {

using namespace koru;

constexpr ColourBytes A = {0x10, 0x20, 0x30};
constexpr ColourBytes B = {0x10, 0x20, 0x31};
constexpr ColourBytes C = {0xFF, 0x00, 0x7F};

class ColorPairs : public testing::Test {
protected:
    ColorPairs() { RequestedColourDepth = 32; }
    ~ColorPairs() override
    {
        ColorPairList::Clear();
        RequestedColourDepth = 0;
        EXPECT_EQ(engine.Outstanding().poolBlocks, 0u);
    }

    engine::Engine engine;
};

void ExpectPair(const ColorPair* pair, const ColourBytes& colour1, const ColourBytes& colour2)
{
    ASSERT_NE(pair, nullptr);
    EXPECT_TRUE(pair->colour1 == colour1);
    EXPECT_TRUE(pair->colour2 == colour2);
}

TEST(ColourOf, TurnsTheWireOrderAround)
{
    const ColourBytes colour = ColourOf(0xAA112233);
    EXPECT_EQ(colour.blue, 0x11);
    EXPECT_EQ(colour.green, 0x22);
    EXPECT_EQ(colour.red, 0x33);
    EXPECT_EQ(ColorRefOf(colour), 0x00112233u);
}

TEST(PixelOf, KeepsTheTopBitsOfEachComponent)
{
    const ColourBytes blue = {0xFF, 0, 0};
    const ColourBytes green = {0, 0xFF, 0};
    const ColourBytes red = {0, 0, 0xFF};
    const ColourBytes lowBits = {0x07, 0x03, 0x07};
    const ColourBytes mixed = {0x88, 0x44, 0xC8};
    EXPECT_EQ(PixelOf(blue, 16), 0x001F);
    EXPECT_EQ(PixelOf(green, 16), 0x07E0);
    EXPECT_EQ(PixelOf(red, 16), 0xF800);
    EXPECT_EQ(PixelOf(lowBits, 16), 0);
    EXPECT_EQ(PixelOf(mixed, 16), 0xCA31); // 11001 010001 10001
    EXPECT_EQ(PixelOf(blue, 15), 0x001F);
    EXPECT_EQ(PixelOf(green, 15), 0x03E0);
    EXPECT_EQ(PixelOf(red, 15), 0x7C00);
    EXPECT_EQ(PixelOf(mixed, 15), 0x6511); // 0 11001 01000 10001
    for (const ULONG depth : {0U, 1U, 4U, 8U, 14U, 17U, 24U, 32U})
        EXPECT_EQ(PixelOf(mixed, depth), 0) << depth;
}

TEST_F(ColorPairs, FindEitherOrder)
{
    EXPECT_EQ(ColorPairList::Find(A, B), 0);
    EXPECT_EQ(ColorPairList::Add(A, B), 1);
    EXPECT_EQ(ColorPairList::Find(A, B), 2);
    EXPECT_EQ(ColorPairList::Find(B, A), 1);
    EXPECT_EQ(ColorPairList::Find(A, C), 0);
    EXPECT_EQ(ColorPairList::Find(C, B), 0);
}

TEST_F(ColorPairs, LetTheFirstMatchOfEitherOrderDecide)
{
    ColorPairList::Add(A, B);
    ColorPairList::Add(B, A);
    EXPECT_EQ(ColorPairList::Find(A, B), 1);
    EXPECT_EQ(ColorPairList::Find(B, A), 2);
    EXPECT_TRUE(ColorPairList::ContainsExactly(A, B));
    EXPECT_TRUE(ColorPairList::ContainsExactly(B, A));
}

TEST_F(ColorPairs, AreExactOnlyInTheirOwnOrder)
{
    ColorPairList::Add(A, B);
    EXPECT_TRUE(ColorPairList::ContainsExactly(A, B));
    EXPECT_FALSE(ColorPairList::ContainsExactly(B, A));
}

TEST_F(ColorPairs, AreFoundByPixelsInEitherOrder)
{
    RequestedColourDepth = 16;
    ColorPairList::Add({0xFF, 0, 0}, {0, 0, 0xFF});
    EXPECT_EQ(ColorPairList::FindPixels(0x001F, 0xF800), 2);
    EXPECT_EQ(ColorPairList::FindPixels(0xF800, 0x001F), 1);
    EXPECT_EQ(ColorPairList::FindPixels(0x001F, 0x001F), 0);
}

TEST_F(ColorPairs, AreCountedAndReadFromTheNewest)
{
    EXPECT_EQ(ColorPairList::Count(), 0u);
    EXPECT_EQ(ColorPairList::Get(0), nullptr);
    EXPECT_EQ(ColorPairList::Get(-1), nullptr);
    ColorPairList::Add(A, B);
    ColorPairList::Add(B, C);
    EXPECT_EQ(ColorPairList::Count(), 2u);
    ExpectPair(ColorPairList::Get(0), B, C);
    ExpectPair(ColorPairList::Get(1), A, B);
    ExpectPair(ColorPairList::Get(-7), B, C);
    EXPECT_EQ(ColorPairList::Get(2), nullptr);
    EXPECT_EQ(ColorPairList::Get(2147483647), nullptr);
}

TEST_F(ColorPairs, AreRemovedInEitherOrderNewestFirst)
{
    ColorPairList::Add(A, B);
    ColorPairList::Add(A, C);
    ColorPairList::Add(B, A);
    EXPECT_EQ(ColorPairList::Remove(A, B), 1);
    ExpectPair(ColorPairList::Get(0), A, C);
    ExpectPair(ColorPairList::Get(1), A, B);
    EXPECT_EQ(ColorPairList::Remove(B, A), 1);
    EXPECT_EQ(ColorPairList::Remove(B, A), 0);
    EXPECT_EQ(ColorPairList::Remove(C, A), 1);
    EXPECT_EQ(ColorPairList::Count(), 0u);
    EXPECT_EQ(ColorPairList::Remove(A, C), 0);
}

TEST_F(ColorPairs, AreNotAddedWithoutMemory)
{
    ColorPairList::Add(A, B);
    engine.Fail(engine::Request::Memory);
    EXPECT_EQ(ColorPairList::Add(B, C), 0);
    EXPECT_EQ(ColorPairList::Count(), 1u);
    EXPECT_EQ(engine.TakeDebugOutput(), "");
}

TEST_F(ColorPairs, TakeTheirPixelsFromTheRequestedDepth)
{
    const struct {
        ULONG depth;
        USHORT blue, red;
    } cases[] = {{8, 0, 0}, {15, 0x001F, 0x7C00}, {16, 0x001F, 0xF800}, {24, 0, 0}, {32, 0, 0}};
    for (const auto& [depth, blue, red] : cases) {
        RequestedColourDepth = depth;
        ColorPairList::Add({0xFF, 0, 0}, {0, 0, 0xFF});
        EXPECT_EQ(ColorPairList::Get(0)->pixel1, blue) << depth;
        EXPECT_EQ(ColorPairList::Get(0)->pixel2, red) << depth;
    }
}

TEST_F(ColorPairs, StartAsTheThreeDefaults)
{
    ColorPairList::Prepare(16);
    ASSERT_EQ(ColorPairList::Count(), 3u);
    ExpectPair(ColorPairList::Get(0), {255, 255, 255}, {128, 128, 0});
    ExpectPair(ColorPairList::Get(1), {192, 192, 192}, {128, 128, 128});
    ExpectPair(ColorPairList::Get(2), {255, 255, 255}, {128, 0, 0});
    EXPECT_EQ(ColorPairList::Get(0)->pixel1, 0xFFFF);
    EXPECT_EQ(ColorPairList::Get(0)->pixel2, 0x0410); // 00000 100000 10000
    EXPECT_EQ(ColorPairList::Get(1)->pixel1, 0xC618); // 11000 110000 11000
    EXPECT_EQ(ColorPairList::Get(1)->pixel2, 0x8410); // 10000 100000 10000
    EXPECT_EQ(ColorPairList::Get(2)->pixel2, 0x0010);
}

TEST_F(ColorPairs, TakeNewPixelsWithAnotherDepth)
{
    ColorPairList::Add({0xFF, 0, 0}, {0, 0, 0xFF});
    EXPECT_EQ(ColorPairList::Get(0)->pixel2, 0);
    ColorPairList::Prepare(16);
    EXPECT_EQ(ColorPairList::Count(), 1u);
    EXPECT_EQ(ColorPairList::Get(0)->pixel1, 0x001F);
    EXPECT_EQ(ColorPairList::Get(0)->pixel2, 0xF800);
    ColorPairList::Prepare(15);
    EXPECT_EQ(ColorPairList::Get(0)->pixel1, 0x001F);
    EXPECT_EQ(ColorPairList::Get(0)->pixel2, 0x7C00);
    for (const ULONG depth : {8U, 24U, 32U}) {
        ColorPairList::Prepare(depth);
        EXPECT_EQ(ColorPairList::Get(0)->pixel2, 0x7C00) << depth;
    }
}

TEST_F(ColorPairs, StartWithFewerDefaultsWhenMemoryIsShort)
{
    engine.Fail(engine::Request::Memory, 2);
    ColorPairList::Prepare(32);
    ASSERT_EQ(ColorPairList::Count(), 2u);
    ExpectPair(ColorPairList::Get(0), {255, 255, 255}, {128, 128, 0});
    ExpectPair(ColorPairList::Get(1), {255, 255, 255}, {128, 0, 0});
}

} // namespace
