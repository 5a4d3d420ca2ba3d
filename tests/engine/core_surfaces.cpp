#include <gtest/gtest.h>

#include <cstdlib>

#include "engine/core/engine.h"
#include "engine/core/guards.h"
#include "engine/core/surface.h"

namespace {

using namespace engine;
using Lines = std::vector<std::string>;

HSURF Create(SIZEL size, LONG rowBytes, ULONG format, FLONG flags = BMF_TOPDOWN, void* bits = nullptr)
{
    return reinterpret_cast<HSURF>(EngCreateBitmap(size, rowBytes, format, flags, bits));
}

const BYTE* Bits(const SURFOBJ* pso)
{
    return static_cast<const BYTE*>(pso->pvBits);
}

class Surfaces : public testing::Test {
protected:
    Engine engine;
};

TEST_F(Surfaces, ATopDownBitmapStartsAtItsBits)
{
    const HSURF bitmap = Create({3, 2}, 16, BMF_32BPP);
    SURFOBJ* const pso = EngLockSurface(bitmap);
    ASSERT_NE(pso, nullptr);
    EXPECT_EQ(pso->hsurf, bitmap);
    EXPECT_EQ(pso->dhsurf, nullptr);
    EXPECT_EQ(pso->dhpdev, nullptr);
    EXPECT_EQ(pso->hdev, nullptr);
    EXPECT_EQ(pso->sizlBitmap.cx, 3);
    EXPECT_EQ(pso->sizlBitmap.cy, 2);
    EXPECT_EQ(pso->cjBits, 32u);
    EXPECT_EQ(pso->pvScan0, pso->pvBits);
    EXPECT_EQ(pso->lDelta, 16);
    EXPECT_EQ(pso->iBitmapFormat, BMF_32BPP);
    EXPECT_EQ(pso->iType, STYPE_BITMAP);
    EXPECT_EQ(pso->fjBitmap, BMF_TOPDOWN);
    EXPECT_NE(pso->iUniq, 0u);
    EXPECT_EQ(Bits(pso)[31], 0);
    EngUnlockSurface(pso);
    EXPECT_TRUE(EngDeleteSurface(bitmap));
    EXPECT_EQ(engine.Outstanding(), Resources());
    EXPECT_EQ(engine.Violations(), Lines());
}

TEST_F(Surfaces, ABottomUpBitmapStartsAtItsLastRow)
{
    const SURFOBJ* const pso = EngLockSurface(Create({8, 4}, 8, BMF_8BPP, 0));
    EXPECT_EQ(pso->lDelta, -8);
    EXPECT_EQ(static_cast<const BYTE*>(pso->pvScan0), Bits(pso) + 24);
}

TEST_F(Surfaces, MemoryIsZeroUnlessTheCallerDeclines)
{
    EXPECT_EQ(Bits(EngLockSurface(Create({4, 1}, 4, BMF_8BPP)))[3], 0);
    EXPECT_EQ(Bits(EngLockSurface(Create({4, 1}, 4, BMF_8BPP, BMF_TOPDOWN | BMF_NOZEROINIT)))[3], 0xA5);
}

TEST_F(Surfaces, RowsAreAsLongAsTold)
{
    EXPECT_EQ(EngLockSurface(Create({10, 10}, 4096, BMF_32BPP))->lDelta, 4096);
    EXPECT_EQ(EngLockSurface(Create({11, 11}, 11, BMF_8BPP))->lDelta, 11);
}

TEST_F(Surfaces, TheCallersBitsAreUsedAsTheyAre)
{
    BYTE bits[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    SURFOBJ* const pso = EngLockSurface(Create({4, 2}, 4, BMF_8BPP, BMF_TOPDOWN, bits));
    EXPECT_EQ(pso->pvBits, bits);
    static_cast<Surface*>(pso)->SetPixel(1, 1, 99);
    EXPECT_EQ(bits[5], 99);
}

TEST_F(Surfaces, BadBitmapsAreRefused)
{
    EXPECT_EQ(Create({0, 5}, 4, BMF_8BPP), nullptr);
    EXPECT_EQ(Create({5, -1}, 8, BMF_8BPP), nullptr);
    EXPECT_EQ(Create({5, 5}, 8, 0), nullptr);
    EXPECT_EQ(Create({5, 5}, 8, BMF_8RLE), nullptr);
    EXPECT_EQ(Create({0x7FFFFFFF, 0x7FFFFFFF}, 0x7FFFFFFF, BMF_1BPP), nullptr);
    EXPECT_EQ(Create({0x4000, 0x8000}, 0x10000, BMF_32BPP), nullptr) << "2 GB";
    EXPECT_EQ(engine.Violations(), Lines());
}

TEST_F(Surfaces, ReportRowsThatDoNotHoldTheirPixels)
{
    EXPECT_EQ(Create({5, 5}, 4, BMF_8BPP), nullptr);
    EXPECT_EQ(Create({5, 5}, -8, BMF_8BPP), nullptr);
    EXPECT_NE(Create({9, 1}, 2, BMF_1BPP), nullptr);
    EXPECT_EQ(Create({3, 1}, 1, BMF_4BPP), nullptr);
    EXPECT_EQ(
        engine.Violations(),
        (Lines{"EngCreateBitmap: 4 bytes do not hold a row of 5", "EngCreateBitmap: -8 bytes do not hold a row of 5",
               "EngCreateBitmap: 1 bytes do not hold a row of 2"}));
}

TEST_F(Surfaces, SixteenBitLayoutIsAsTold)
{
    EXPECT_EQ(FindSurface(Create({1, 1}, 2, BMF_16BPP))->layout.greenMask, 0x07E0u);
    engine.SetSixteenBitLayout(true);
    EXPECT_EQ(FindSurface(Create({1, 1}, 2, BMF_16BPP))->layout.greenMask, 0x03E0u);
}

TEST_F(Surfaces, PixelsLieInTheFormatsBytes)
{
    struct Case {
        ULONG format, pixel;
        std::vector<BYTE> row; // pixel 1 of an empty row of 4 pixels
    };
    const Case cases[] = {
        {BMF_1BPP, 1, {0x40}},
        {BMF_4BPP, 0xB, {0x0B, 0}},
        {BMF_8BPP, 0xCD, {0, 0xCD, 0, 0}},
        {BMF_16BPP, 0x1234, {0, 0, 0x34, 0x12, 0, 0, 0, 0}},
        {BMF_24BPP, 0x112233, {0, 0, 0, 0x33, 0x22, 0x11, 0, 0, 0, 0, 0, 0}},
        {BMF_32BPP, 0xFF112233, {0, 0, 0, 0, 0x33, 0x22, 0x11, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0}},
    };
    for (const Case& each : cases) {
        Surface* const bitmap = MakeBitmap({4, 2}, PixelLayout::Default(each.format), -32);
        bitmap->SetPixel(1, 1, each.pixel);
        EXPECT_EQ(std::vector<BYTE>(bitmap->Row(1), bitmap->Row(1) + each.row.size()), each.row);
        EXPECT_EQ(bitmap->Pixel(1, 1), each.pixel);
        EXPECT_EQ(bitmap->Pixel(0, 1), 0u);
        EXPECT_EQ(bitmap->Row(1), Bits(bitmap)) << "bottom-up: the last row comes first";
        bitmap->SetPixel(0, 1, 0xFFFFFFFF);
        EXPECT_EQ(bitmap->Pixel(1, 1), each.pixel) << "neighbours stay";
    }
}

TEST_F(Surfaces, BitmapsOfTheEngineAreNotTheDrivers)
{
    engine.Fail(Request::CreateSurface, 1, true);
    Surface* const bitmap = MakeBitmap({5, 3}, PixelLayout::Default(BMF_8BPP));
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->lDelta, 8);
    EXPECT_EQ(bitmap->Bounds().bottom, 3);
    EXPECT_EQ(FindSurface(bitmap->hsurf), bitmap);
    EXPECT_EQ(engine.Outstanding(), Resources());
    EXPECT_EQ(engine.RequestCount(Request::CreateSurface), 0u);
    EXPECT_FALSE(EngDeleteSurface(bitmap->hsurf));
    EXPECT_EQ(engine.Violations(), Lines{"EngDeleteSurface: a bitmap of the engine's own"});
    const HSURF handle = bitmap->hsurf;
    DestroyBitmap(bitmap);
    EXPECT_EQ(FindSurface(handle), nullptr);
}

TEST_F(Surfaces, ManagedOnesHaveNoBits)
{
    const auto dhsurf = reinterpret_cast<DHSURF>(0x1234);
    const HSURF screen = EngCreateDeviceSurface(dhsurf, {64, 48}, BMF_16BPP);
    const HSURF bitmap = reinterpret_cast<HSURF>(EngCreateDeviceBitmap(dhsurf, {7, 8}, BMF_8BPP));
    const SURFOBJ* const pso = EngLockSurface(screen);
    EXPECT_EQ(pso->iType, STYPE_DEVICE);
    EXPECT_EQ(pso->dhsurf, dhsurf);
    EXPECT_EQ(pso->pvBits, nullptr);
    EXPECT_EQ(pso->pvScan0, nullptr);
    EXPECT_EQ(pso->lDelta, 0);
    EXPECT_EQ(pso->iBitmapFormat, BMF_16BPP);
    EXPECT_EQ(EngLockSurface(bitmap)->iType, STYPE_DEVBITMAP);
    EXPECT_EQ(EngCreateDeviceSurface(dhsurf, {0, 48}, BMF_16BPP), nullptr);
    EXPECT_EQ(EngCreateDeviceBitmap(dhsurf, {7, 8}, 9), nullptr);
}

TEST_F(Surfaces, HandlesAreNotUsedAgain)
{
    const HSURF first = Create({1, 1}, 4, BMF_8BPP);
    EngDeleteSurface(first);
    EXPECT_NE(Create({1, 1}, 4, BMF_8BPP), first);
    EXPECT_EQ(EngLockSurface(first), nullptr);
    EXPECT_EQ(EngLockSurface(nullptr), nullptr);
    EXPECT_EQ(engine.Violations(), Lines()) << "a lock may fail";
}

TEST_F(Surfaces, LocksAreCounted)
{
    const HSURF bitmap = Create({1, 1}, 4, BMF_8BPP);
    SURFOBJ* const pso = EngLockSurface(bitmap);
    EXPECT_EQ(EngLockSurface(bitmap), pso);
    EXPECT_EQ(engine.Outstanding().locks, 2u);
    EngUnlockSurface(pso);
    EngUnlockSurface(pso);
    EngUnlockSurface(pso);
    EngUnlockSurface(nullptr);
    EXPECT_EQ(engine.Violations(),
              (Lines{"EngUnlockSurface: the surface is not locked", "EngUnlockSurface: the surface is null"}));
}

TEST_F(Surfaces, AreNotDeletedWhileLocked)
{
    const HSURF bitmap = Create({1, 1}, 4, BMF_8BPP);
    SURFOBJ* const pso = EngLockSurface(bitmap);
    EXPECT_FALSE(EngDeleteSurface(bitmap));
    EXPECT_EQ(engine.Violations(), Lines{"EngDeleteSurface: the surface is locked"});
    EngUnlockSurface(pso);
    EXPECT_TRUE(EngDeleteSurface(bitmap));
}

TEST_F(Surfaces, ReportWhatIsDeletedTwiceOrUsedAfterwards)
{
    const HSURF bitmap = Create({1, 1}, 4, BMF_8BPP);
    SURFOBJ* const pso = EngLockSurface(bitmap);
    EngUnlockSurface(pso);
    EngDeleteSurface(bitmap);
    EXPECT_FALSE(EngDeleteSurface(bitmap));
    EXPECT_FALSE(EngDeleteSurface(nullptr));
    EngUnlockSurface(pso);
    EXPECT_EQ(
        engine.Violations(),
        (Lines{"EngDeleteSurface: not a surface", "EngDeleteSurface: not a surface", "a foreign or deleted SURFOBJ"}));
}

TEST_F(Surfaces, ReportForeignSurfaceObjects)
{
    SURFOBJ copy = *EngLockSurface(Create({1, 1}, 4, BMF_8BPP));
    EXPECT_EQ(SurfaceBehind(&copy), nullptr);
    EXPECT_EQ(SurfaceBehind(nullptr), nullptr);
    EXPECT_EQ(engine.Violations(), Lines{"a foreign or deleted SURFOBJ"});
}

TEST_F(Surfaces, ReportAssociationsWithoutDeviceOrSurface)
{
    EXPECT_FALSE(EngAssociateSurface(Create({1, 1}, 4, BMF_8BPP), reinterpret_cast<HDEV>(5), 0));
    EXPECT_FALSE(EngAssociateSurface(nullptr, nullptr, 0));
    EXPECT_EQ(engine.Violations(), (Lines{"EngAssociateSurface: not a device", "EngAssociateSurface: not a surface"}));
}

TEST_F(Surfaces, ReportWritesOutsideTheirBits)
{
    if (!GuardsPresent)
        GTEST_SKIP() << "the address sanitizer guards the bits";
    const HSURF first = Create({4, 2}, 4, BMF_8BPP), second = Create({2, 2}, 4, BMF_8BPP);
    FindSurface(first)->Row(0)[8] = 1;
    FindSurface(second)->Row(0)[-1] = 1;
    engine.CheckGuards();
    engine.CheckGuards();
    EXPECT_EQ(engine.Violations(),
              (Lines{"surface: written outside the bits of a 4 x 2 bitmap",
                     "surface: written outside the bits of a 2 x 2 bitmap"}));
    FindSurface(second)->Row(0)[8] = 1;
    EngDeleteSurface(second);
    EXPECT_EQ(engine.Violations().size(), 3u) << "deleting checks as well";
}

TEST_F(Surfaces, DeletedObjectsHoldNothingUsable)
{
    if (!GuardsPresent)
        GTEST_SKIP() << "the address sanitizer stops at the access";
    const HSURF bitmap = Create({1, 1}, 4, BMF_8BPP);
    const SURFOBJ* const pso = FindSurface(bitmap);
    EngDeleteSurface(bitmap);
    EXPECT_EQ(pso->lDelta, static_cast<LONG>(0xDDDDDDDD));
}

} // namespace
