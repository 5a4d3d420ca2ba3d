// What escapes leave in the driver's own values, which no client can read back.

#include <gtest/gtest.h>

#include <vector>

#include "capture/capture_state.h"
#include "engine/core/engine.h"
#include "escape/dark_lists.h"
#include "escape/escape.h"
#include "escape/item_cache.h"
#include "escape/koru_commands.h"
#include "magnifier/update.h"

namespace {

using namespace koru;

// There is no semaphore: the driver was not enabled. Escapes must not mind.
class DriverValuesByEscape : public testing::Test {
protected:
    ~DriverValuesByEscape() override
    {
        DarkSurfaceList.Clear();
        for (const ULONG type : {1U, 2U, 4U})
            ClearCache(type);
        EXPECT_EQ(engine.Outstanding(), engine::Resources());
    }

    ULONG Command(ULONG subCommand, ULONG word1, ULONG word2 = 0)
    {
        ULONG in[6] = {subCommand, word1, word2, 0, 0, 0};
        ULONG out = 0xDEADBEEF;
        EXPECT_EQ(DrvEscape(nullptr, KORU_ESCAPE, sizeof(in), in, sizeof(out), &out), 1u);
        return out;
    }

    engine::Engine engine;
};

TEST_F(DriverValuesByEscape, CaptureIsSwitched)
{
    Command(2, 0);
    EXPECT_EQ(CaptureEnabled, 1u);
    Command(1, 0);
    EXPECT_EQ(CaptureEnabled, 0u);
}

TEST_F(DriverValuesByEscape, TheCallMaskIsWordOne)
{
    Command(57, 0x12345678, 5);
    EXPECT_EQ(CaptureMask, 0x12345678u);
    EXPECT_EQ(Command(58, 7), 1u);
    EXPECT_EQ(CaptureMask, 0x12345678u);
}

TEST_F(DriverValuesByEscape, TheLimitsAreWordsOneAndTwo)
{
    EXPECT_EQ(Command(112, 0xFFFFFFFE, 0x87654321), 1u);
    EXPECT_EQ(BitsSizeLimit, -2);
    EXPECT_EQ(BitsCaptureMask, 0x87654321u);
}

TEST_F(DriverValuesByEscape, EmptyingACacheSetsTheLimitsAsWell)
{
    AddCacheItem(2, 9);
    EXPECT_EQ(Command(98, 2, 0x11), 1u);
    EXPECT_EQ(IsCached(2, 9), 0);
    EXPECT_EQ(BitsSizeLimit, 2);
    EXPECT_EQ(BitsCaptureMask, 0x11u);
    EXPECT_EQ(Command(98, 7, 0x22), 0u);
    EXPECT_EQ(engine.TakeDebugOutput(), "KORU: AddCacheItem. Cache type is unknown\n");
    EXPECT_EQ(BitsSizeLimit, 7);
    EXPECT_EQ(BitsCaptureMask, 0x22u);
}

TEST_F(DriverValuesByEscape, TheFlagOfSubCommand35IsKept)
{
    ClientFlag = 0;
    EXPECT_EQ(Command(35, 0), 1u);
    EXPECT_EQ(ClientFlag, 1u);
}

TEST_F(DriverValuesByEscape, ADarkSurfaceIsTheHandleOfTheEscapesOwn)
{
    SURFOBJ surface = {};
    surface.hsurf = reinterpret_cast<HSURF>(0x4321);
    surface.dhsurf = reinterpret_cast<DHSURF>(0x8765);
    ULONG in[6] = {32, 1, 2, 3, 4, 5};
    ULONG out = 0;
    DrvEscape(&surface, KORU_ESCAPE, sizeof(in), in, sizeof(out), &out);
    EXPECT_EQ(out, 1u);
    EXPECT_EQ(DarkSurfaceList.count, 1u);
    EXPECT_TRUE(DarkSurfaceList.Contains(0x4321));
}

TEST_F(DriverValuesByEscape, TheUpdateIntervalIsSigned)
{
    ULONG in[9] = {0x11127241, 0, 0, 0, 0, 0xFFFFFFFF, 0, 0, 0};
    ULONG out[4] = {1, 2, 3, 4};
    EXPECT_EQ(DrvEscape(nullptr, KORU_ZOOM_ESCAPE, sizeof(in), in, sizeof(out), out), 1u);
    EXPECT_EQ(ZoomUpdateInterval, -1);
    EXPECT_EQ(out[0], 1u);
}

} // namespace
