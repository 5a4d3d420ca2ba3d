#include "magnifier/blits.h"

#include <climits>

#include "tests/unit/magnifier/magnifier_fixture.h"

namespace {

using namespace koru;
using namespace pictures;

struct CutCase {
    const char* name;
    RECTL target;
    POINTL source;
    RECTL left; // of the target; all 0 when nothing is
    POINTL from;
};

// A target of 100 x 80 pixels, a source of 50 x 40.
const CutCase cuts[] = {
    {.name = "Inside", .target = {10, 10, 20, 20}, .source = {5, 6}, .left = {10, 10, 20, 20}, .from = {5, 6}},
    {.name = "WholeSource", .target = {0, 0, 50, 40}, .source = {0, 0}, .left = {0, 0, 50, 40}, .from = {0, 0}},
    {.name = "OverTheTargetsTopLeft",
     .target = {-3, -4, 10, 10},
     .source = {1, 1},
     .left = {0, 0, 10, 10},
     .from = {4, 5}},
    {.name = "OverTheTargetsBottomRight",
     .target = {95, 70, 105, 90},
     .source = {0, 0},
     .left = {95, 70, 100, 80},
     .from = {0, 0}},
    {.name = "OverTheSourcesTopLeft",
     .target = {10, 10, 20, 20},
     .source = {-3, -4},
     .left = {13, 14, 20, 20},
     .from = {0, 0}},
    {.name = "OverTheSourcesBottomRight",
     .target = {10, 10, 30, 30},
     .source = {40, 35},
     .left = {10, 10, 20, 15},
     .from = {40, 35}},
    {.name = "OverBothOnOneSide",
     .target = {-3, -4, 20, 20},
     .source = {-5, -2},
     .left = {2, 0, 20, 20},
     .from = {0, 2}},
    {.name = "BesideTheTarget", .target = {100, 0, 110, 10}, .source = {0, 0}, .left = {}, .from = {}},
    {.name = "BesideTheSource", .target = {0, 0, 10, 10}, .source = {50, 0}, .left = {}, .from = {}},
    {.name = "LeftOfTheSource", .target = {0, 0, 10, 10}, .source = {-10, 0}, .left = {}, .from = {}},
    {.name = "CutAwayByBoth", .target = {-5, 0, 5, 10}, .source = {46, 0}, .left = {}, .from = {}},
    {.name = "Empty", .target = {10, 10, 10, 20}, .source = {0, 0}, .left = {}, .from = {}},
    {.name = "Reversed", .target = {20, 10, 10, 20}, .source = {0, 0}, .left = {}, .from = {}},
    {.name = "TheWholeRange",
     .target = {INT_MIN, INT_MIN, INT_MAX, INT_MAX},
     .source = {INT_MIN, INT_MIN},
     .left = {0, 0, 50, 40},
     .from = {0, 0}},
    {.name = "FarAway", .target = {INT_MAX - 5, 0, INT_MAX, 10}, .source = {INT_MIN, INT_MIN}, .left = {}, .from = {}},
    {.name = "SourceFarAway", .target = {0, 0, INT_MAX, INT_MAX}, .source = {INT_MAX, INT_MAX}, .left = {}, .from = {}},
    {.name = "SourceFarBefore",
     .target = {INT_MIN, INT_MIN, 99, 79},
     .source = {INT_MAX, INT_MAX},
     .left = {},
     .from = {}},
};

class Cutting : public testing::TestWithParam<CutCase> { };

TEST_P(Cutting, LeavesWhatBothSurfacesHave)
{
    RECTL target = GetParam().target;
    POINTL source = GetParam().source;
    const bool any = CutBlit({100, 80}, {50, 40}, target, source);
    EXPECT_EQ(any, GetParam().left.right != 0);
    if (any) {
        EXPECT_EQ(target, GetParam().left);
        EXPECT_EQ(source, GetParam().from);
    }
}

INSTANTIATE_TEST_SUITE_P(Of, Cutting, testing::ValuesIn(cuts),
                         [](const auto& testCase) { return std::string(testCase.param.name); });

class Blits : public MagnifierFixture {
protected:
    Blits() { Start(Filled(6, 4, 'W')); }
    engine::Surface* source = MakeSurface(Lines({"RG", "BY"}), Form::Bits32);
};

TEST_F(Blits, CopyWhatIsLeft)
{
    EXPECT_EQ(CopyBitsCut(psoVirtual, source, {-1, -1, 4, 1}, {0, 0}), 1);
    EXPECT_EQ(Virtual(), WithPicture(Filled(6, 4, 'W'), 0, 0, "Y\n"));
}

TEST_F(Blits, CombineWhatIsLeft)
{
    EXPECT_EQ(BitBltCut(psoVirtual, source, {5, 3, 9, 9}, {0, 1}, 0x3333), 1); // inverted
    EXPECT_EQ(Virtual(), WithPicture(Filled(6, 4, 'W'), 5, 3, "Y\n"));
}

TEST_F(Blits, FillWhatIsLeft)
{
    EXPECT_EQ(FillCut(psoVirtual, {4, -7, 100, 2}, 0x0000), 1);
    EXPECT_EQ(Virtual(), WithRectangle(Filled(6, 4, 'W'), {4, 0, 6, 2}, '.'));
}

TEST_F(Blits, AnswerOneForNothing)
{
    EXPECT_EQ(CopyBitsCut(psoVirtual, source, {6, 0, 8, 2}, {0, 0}), 1);
    EXPECT_EQ(BitBltCut(psoVirtual, source, {0, 0, 2, 2}, {2, 2}, 0xCCCC), 1);
    EXPECT_EQ(FillCut(psoVirtual, {3, 3, 3, 3}, 0x0000), 1);
    EXPECT_EQ(CopyToScreenCut(psoReal, source, {2, 2, 4, 4}), 1);
    EXPECT_TRUE(real_driver::Copies().empty());
    EXPECT_EQ(Virtual(), Filled(6, 4, 'W'));
}

TEST_F(Blits, CopyToTheScreenWithTheRealDriver)
{
    EXPECT_EQ(CopyToScreenCut(psoReal, source, {-4, 1, 9, 9}), 1);
    EXPECT_EQ(Real(), WithPicture(Filled(6, 4, '.'), 0, 1, "BY\n"));
    real_driver::AnswerCopiesWith(0);
    EXPECT_EQ(CopyToScreenCut(psoReal, source, {0, 0, 1, 1}), 0);
}

TEST_F(Blits, KnowTheSizeOfEachFormatsPixels)
{
    constexpr ULONG bits[] = {0, 1, 4, 8, 16, 24, 32, 0, 0, 0};
    for (ULONG format = 0; format < 10; ++format)
        EXPECT_EQ(BitsPerPixel(format), bits[format]) << format;
    EXPECT_EQ(PlainFormat(BMF_4RLE), BMF_4BPP);
    EXPECT_EQ(PlainFormat(BMF_8RLE), BMF_8BPP);
    EXPECT_EQ(PlainFormat(BMF_16BPP), BMF_16BPP);
    EXPECT_EQ(RowBytes(33, BMF_1BPP), 5);
    EXPECT_EQ(RowBytes(33, BMF_4RLE), 17);
    EXPECT_EQ(RowBytes(33, BMF_24BPP), 99);
}

} // namespace
