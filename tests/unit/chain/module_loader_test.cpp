#include "chain/module_loader.h"

#include <gtest/gtest.h>

#include "driver/driver_values.h"
#include "engine/core/engine.h"
#include "engine/devices/chain_manager.h"

namespace {

using namespace koru;

void APIENTRY RealSynchronize(DHPDEV, RECTL*) { }

BOOL answer = TRUE;
DRVFN table = {INDEX_DrvSynchronize, reinterpret_cast<PFN>(&RealSynchronize)};

BOOL APIENTRY RealEnableDriver(ULONG, ULONG, DRVENABLEDATA* data)
{
    *data = {DDI_DRIVER_VERSION_NT5, 1, &table};
    return answer;
}

class TheModuleLoader : public testing::Test {
protected:
    TheModuleLoader()
    {
        engine::ChainAnswer chain;
        chain.name = u"probe";
        engine::RegisterChainManager(chain);
        LegacyDdi = FALSE;
        answer = TRUE;
        ModuleLoader.Construct(DDI_DRIVER_VERSION_NT5_01);
    }
    ~TheModuleLoader() override { ModuleLoader.UnloadRealDriver(); }
    void Offer(const engine::Exports& exports) { engine.RegisterImage(u"probe", exports); }

    engine::Engine engine;
    const engine::Exports whole = {{"DrvEnableDriver", reinterpret_cast<PFN>(&RealEnableDriver)}};
};

TEST_F(TheModuleLoader, HasHookFlagsWhileADriverIsLoaded)
{
    Offer(whole);
    EXPECT_EQ(ModuleLoader.LoadRealDriver(), TRUE);
    EXPECT_EQ(ModuleLoader.HookFlags(), 0x3B53Bu);
    ModuleLoader.UnloadRealDriver();
    EXPECT_EQ(ModuleLoader.HookFlags(), 0u);
    EXPECT_EQ(ModuleLoader.GetRealFunction(INDEX_DrvSynchronize), nullptr);
}

TEST_F(TheModuleLoader, HasNoHookFlagsForAnImageWithoutDrvEnableDriver)
{
    Offer({});
    EXPECT_EQ(ModuleLoader.LoadRealDriver(), 0);
    EXPECT_EQ(ModuleLoader.HookFlags(), 0u);
    EXPECT_TRUE(engine.IsImageLoaded(u"probe"));
}

TEST_F(TheModuleLoader, KeepsTheImageAndTheTableOfADriverThatRefuses)
{
    Offer(whole);
    answer = FALSE;
    EXPECT_EQ(ModuleLoader.LoadRealDriver(), 0);
    EXPECT_EQ(ModuleLoader.HookFlags(), 0u);
    EXPECT_TRUE(engine.IsImageLoaded(u"probe"));
    EXPECT_EQ(ModuleLoader.GetRealFunction(INDEX_DrvSynchronize), table.pfn);
}

} // namespace
