// The state in which escapes call the real driver: its drawing is the driver's own, a forwarded escape is not.

#include <gtest/gtest.h>

#include <vector>

#include "capture/call_bits.h"
#include "capture/capture_state.h"
#include "capture/consumer.h"
#include "chain/module_loader.h"
#include "driver/driver_values.h"
#include "driver/handles.h"
#include "driver/screen_list.h"
#include "engine/core/engine.h"
#include "engine/core/surface.h"
#include "engine/devices/chain_manager.h"
#include "escape/escape.h"

namespace {

using namespace koru;

struct Seen {
    ULONG index;
    LONG depth;
    ULONG holds;
    friend bool operator==(const Seen&, const Seen&) = default;
};
std::vector<Seen> calls;

void See(ULONG index)
{
    calls.push_back({index, HookDepth, engine::Engine::Current().Outstanding().semaphoreHolds});
}

BOOL APIENTRY RealCopyBits(SURFOBJ*, SURFOBJ*, CLIPOBJ*, XLATEOBJ*, RECTL*, POINTL*)
{
    See(INDEX_DrvCopyBits);
    return TRUE;
}

ULONG APIENTRY RealEscape(SURFOBJ*, ULONG, ULONG, void*, ULONG, void*)
{
    See(INDEX_DrvEscape);
    return 5;
}

DRVFN table[] = {{INDEX_DrvCopyBits, reinterpret_cast<PFN>(&RealCopyBits)},
                 {INDEX_DrvEscape, reinterpret_cast<PFN>(&RealEscape)}};

BOOL APIENTRY RealEnableDriver(ULONG, ULONG, DRVENABLEDATA* data)
{
    *data = {DDI_DRIVER_VERSION_NT5, 2, table};
    return TRUE;
}

class DrawingByEscape : public testing::Test {
protected:
    DrawingByEscape()
    {
        calls.clear();
        engine::ChainAnswer chain;
        chain.name = u"probe";
        engine::RegisterChainManager(chain);
        engine.RegisterImage(u"probe", {{"DrvEnableDriver", reinterpret_cast<PFN>(&RealEnableDriver)}});
        ModuleLoader.Construct(DDI_DRIVER_VERSION_NT5_01);
        EXPECT_TRUE(ModuleLoader.LoadRealDriver());
        DriverSemaphore = EngCreateSemaphore();
        const auto dhpdev = reinterpret_cast<DHPDEV>(0x1000);
        screen = ScreenList::Add(dhpdev);
        screen->hsurfVirtual = MakeScreen();
        screen->hsurfReal = MakeScreen();
        screen->ZoomerList.Initialise(16, 16, BMF_32BPP, 64);
        surface.dhpdev = dhpdev;
    }
    ~DrawingByEscape() override
    {
        screen->ZoomerList.Release();
        EngDeleteSurface(screen->hsurfVirtual);
        EngDeleteSurface(screen->hsurfReal);
        ScreenList::Remove(screen);
        DriverSemaphore = nullptr;
        EXPECT_TRUE(engine.Violations().empty());
    }

    static HSURF MakeScreen() { return SurfaceOf(EngCreateBitmap({16, 16}, 64, BMF_32BPP, BMF_TOPDOWN, nullptr)); }

    ULONG Zoom(ULONG code, ULONG id, const RECTL& v)
    {
        ULONG in[9] = {code, id, 0, 0, 0};
        const LONG values[4] = {v.left, v.top, v.right, v.bottom};
        for (int i = 0; i < 4; ++i)
            in[5 + i] = static_cast<ULONG>(values[i]);
        ULONG out[4] = {};
        DrvEscape(&surface, KORU_ZOOM_ESCAPE, sizeof(in), in, sizeof(out), out);
        EXPECT_EQ(HookDepth, 0);
        return out[0];
    }

    engine::Engine engine;
    Screen* screen = nullptr;
    SURFOBJ surface = {};
};

TEST_F(DrawingByEscape, IsTheDriversOwn)
{
    const ULONG id = Zoom(0x11127201, 0, {});
    Zoom(0x11127205, id, {1, 0, 0, 0});
    for (const ULONG code : {0x11127204U, 0x11127228U, 0x11127229U, 0x11127230U, 0x11127235U}) {
        calls.clear();
        Zoom(0x11127205, id, {1, 0, 0, 0}); // something to update
        Zoom(0x11127211, id, {1, 0, 0, 0});
        EXPECT_EQ(Zoom(code, id, {1, 1, 8, 8}), 1u) << std::hex << code;
        ASSERT_FALSE(calls.empty()) << std::hex << code;
        for (const Seen& seen : calls)
            EXPECT_EQ(seen, (Seen{INDEX_DrvCopyBits, 1, 1})) << std::hex << code;
    }
}

TEST_F(DrawingByEscape, IsNotWhatAForwardedEscapeDoes)
{
    EXPECT_EQ(DrvEscape(&surface, 4711, 0, nullptr, 0, nullptr), 5u);
    EXPECT_EQ(calls, (std::vector<Seen>{{INDEX_DrvEscape, 0, 1}}));
}

LONG submitted = 0;

LONG APIENTRY CountRecord(BYTE*, ULONG, LONG)
{
    return ++submitted;
}

// Within the driver's own drawing a query is the one escape that is still recorded.
TEST_F(DrawingByEscape, IsWhenOnlyQueriesAreRecorded)
{
    const ULONG consumer[6] = {36, 0, 0, reinterpret_cast<ULONG>(&CountRecord), 0, 0};
    InitializeFunctions2(consumer);
    engine.ClearDebugOutput();
    CaptureEnabled = 1;
    CaptureMask = CALL_ESCAPE;
    submitted = 0;
    ULONG code = 4711;
    HookDepth = 1;
    EXPECT_EQ(DrvEscape(&surface, 4711, 0, nullptr, 0, nullptr), 5u);
    EXPECT_EQ(submitted, 0);
    EXPECT_EQ(DrvEscape(&surface, QUERYESCSUPPORT, sizeof(code), &code, 0, nullptr), 5u);
    EXPECT_EQ(submitted, 1);
    HookDepth = 0;
    EXPECT_EQ(DrvEscape(&surface, 4711, 0, nullptr, 0, nullptr), 5u);
    EXPECT_EQ(submitted, 2);
    EXPECT_EQ(calls.size(), 3u);
}

TEST_F(DrawingByEscape, OfTheOriginalImageGoesThroughTheCompositionBitmap)
{
    engine.RefuseLock(screen->ZoomerList.hBmpStretchDest);
    EXPECT_EQ(Zoom(0x11127235, 0, {1, 1, 8, 8}), 0u);
    EXPECT_TRUE(calls.empty());
    engine.StopFailing();
    engine.RefuseLock(screen->ZoomerList.hBmpAux);
    EXPECT_EQ(Zoom(0x11127235, 0, {1, 1, 8, 8}), 1u);
    EXPECT_EQ(calls.size(), 1u);
    engine.StopFailing();
}

TEST_F(DrawingByEscape, EndsAlsoWhenAScreenCannotBeLocked)
{
    engine.RefuseLock(screen->hsurfReal);
    EXPECT_EQ(Zoom(0x11127204, 0, {}), 0u);
    engine.StopFailing();
    EXPECT_EQ(engine.Outstanding().locks, 0u);
}

} // namespace
