// One pointer for all devices: what a call does to one screen leaves the others alone.

#include "tests/unit/cursor/cursor_fixture.h"

namespace {

using namespace koru;
using namespace pictures;

// 32 bits per pixel, and 8.
class TwoScreens : public CursorFixture {
protected:
    TwoScreens()
    {
        Start(Form::Bits32);
        otherVirtual = MakeSurface(background, Form::Bits8);
        psoOther = AddScreen(otherDevice, otherVirtual);
    }
    ~TwoScreens() override { RemoveScreen(otherDevice); }

    RECTL SetShapeOn(SURFOBJ* psoScreen, LONG x, LONG y)
    {
        RECTL touched;
        cursor.ChangeShape(psoScreen, Mask({"0011", "0000"}), MakeSurface("GBW.\n", Form::Bits24), nullptr, 0, 0, x, y,
                           nullptr, 0, touched);
        return touched;
    }
    std::string Other() const { return PictureOf(*otherVirtual, Form::Bits8); }
    void Hide(SURFOBJ* psoScreen) { cursor.Move(psoScreen, -1, 0, nullptr); }

    const DHPDEV otherDevice = reinterpret_cast<DHPDEV>(0x2000);
    engine::Surface* otherVirtual;
    engine::Surface* psoOther;
    const RECTL meeting = {4, 3, 10, 10}, beside = {10, 6, 16, 10};
};

// Green, blue, red inverted by white, red.
constexpr ULONG Pixels32[] = {0x00FF00, 0x0000FF, 0x00FFFF, 0xFF0000};
constexpr ULONG Pixels8[] = {250, 252, 249 ^ 255, 249};

TEST_F(TwoScreens, ShowTheShapeInTheFormatOfTheScreenItIsSetFor)
{
    SetShapeOn(pso, 2, 3);
    for (LONG x = 0; x < 4; ++x)
        EXPECT_EQ(psoVirtual->Pixel(2 + x, 3) & 0xFFFFFF, Pixels32[x]) << x;
    EXPECT_EQ(Other(), background);
    Hide(pso);
    SetShapeOn(psoOther, 5, 6);
    for (LONG x = 0; x < 4; ++x)
        EXPECT_EQ(otherVirtual->Pixel(5 + x, 6), Pixels8[x]) << x;
    EXPECT_EQ(Virtual(), background);
    Hide(psoOther);
    EXPECT_EQ(Other(), background);
}

TEST_F(TwoScreens, ShowAShapeThatMovesToTheOtherFormat)
{
    SetShapeOn(pso, 2, 3);
    Hide(pso);
    cursor.Move(psoOther, 5, 6, nullptr);
    for (LONG x = 0; x < 4; ++x)
        EXPECT_EQ(otherVirtual->Pixel(5 + x, 6), Pixels8[x]) << x;
    Hide(psoOther);
    EXPECT_EQ(Other(), background);
    cursor.Move(pso, 7, 2, nullptr);
    for (LONG x = 0; x < 4; ++x)
        EXPECT_EQ(psoVirtual->Pixel(7 + x, 2) & 0xFFFFFF, Pixels32[x]) << x;
    Hide(pso);
    EXPECT_EQ(Virtual(), background) << "all bits of what it covered were kept";
    EXPECT_EQ(engine.DebugOutput(), "");
}

TEST_F(TwoScreens, GetNothingOfWhatThePointerCoversOnTheOther)
{
    SetShapeOn(pso, 2, 3);
    Paint(*otherVirtual, 0, 0, Filled(Width, Height, 'G'), Form::Bits8);
    SetShapeOn(psoOther, 10, 6); // where it stood before is not touched on this screen
    Hide(psoOther);
    EXPECT_EQ(Other(), Filled(Width, Height, 'G'));
}

TEST_F(TwoScreens, AreDrawnOnWithoutThePointerOfTheOther)
{
    SetShapeOn(pso, 2, 3);
    const std::string shown = Virtual();
    cursor.ExcludeBeforeDrawing(psoOther, &meeting, psoOther, &meeting);
    EXPECT_EQ(Virtual(), shown);
    EXPECT_EQ(Other(), background);
    cursor.RedrawAfterDrawing(psoOther, psoOther);
    EXPECT_EQ(Virtual(), shown);
    EXPECT_EQ(Other(), background);
}

// The devices of a call's two surfaces.
TEST_F(TwoScreens, LosePointersWhereTheyAreReadForTheOther)
{
    engine::Surface* const bitmap = MakeSurface(background, Form::Bits8);
    bitmap->dhpdev = otherDevice;
    for (SURFOBJ* const target : {psoOther, bitmap}) {
        SetShapeOn(pso, 2, 3);
        const std::string shown = Virtual();
        cursor.ExcludeBeforeDrawing(target, &meeting, pso, &meeting);
        EXPECT_EQ(Virtual(), background);
        EXPECT_EQ(Other(), background);
        cursor.RedrawAfterDrawing(target, pso);
        EXPECT_EQ(Virtual(), shown);
        EXPECT_EQ(Other(), background);
        Hide(pso);
    }
}

TEST_F(TwoScreens, LosePointersWhereTheOtherIsCopiedTo)
{
    SetShapeOn(pso, 2, 3);
    const std::string shown = Virtual();
    cursor.ExcludeBeforeDrawing(pso, &meeting, psoOther, &beside);
    EXPECT_EQ(Virtual(), background);
    cursor.RedrawAfterDrawing(pso, psoOther);
    EXPECT_EQ(Virtual(), shown);
    EXPECT_EQ(Other(), background);
}

} // namespace
