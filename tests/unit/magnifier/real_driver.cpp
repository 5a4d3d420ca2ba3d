#include "tests/unit/magnifier/real_driver.h"

#include "chain/module_loader.h"
#include "driver/driver_values.h"
#include "engine/core/engine.h"
#include "engine/devices/chain_manager.h"
#include "magnifier/update.h"

namespace real_driver {

namespace {

    std::vector<Copy> copies;
    BOOL answer;
    bool offered;

    BOOL APIENTRY CopyBits(SURFOBJ* psoDest, SURFOBJ* psoSrc, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclDest,
                           POINTL* pptlSrc)
    {
        copies.push_back({psoDest, psoSrc, *prclDest, *pptlSrc, pco || pxlo, koru::HookDepth, koru::lastUpdateTime});
        EngCopyBits(psoDest, psoSrc, pco, pxlo, prclDest, pptlSrc);
        return answer;
    }

    BOOL APIENTRY EnableDriver(ULONG, ULONG, DRVENABLEDATA* pded)
    {
        static DRVFN functions[] = {{INDEX_DrvCopyBits, reinterpret_cast<PFN>(CopyBits)}};
        *pded = {DDI_DRIVER_VERSION_NT5_01, offered ? 1u : 0u, functions};
        return TRUE;
    }

} // namespace

void Load(bool offersCopyBits)
{
    offered = offersCopyBits;
    answer = 1;
    copies.clear();
    engine::RegisterChainManager({.name = u"copier"});
    engine::Engine::Current().RegisterImage(u"copier", {{"DrvEnableDriver", reinterpret_cast<PFN>(EnableDriver)}});
    koru::ModuleLoader.Construct(DDI_DRIVER_VERSION_NT5_01);
    koru::ModuleLoader.LoadRealDriver();
    engine::Engine::Current().ClearDebugOutput();
}

void Unload()
{
    koru::ModuleLoader.UnloadRealDriver();
}

const std::vector<Copy>& Copies()
{
    return copies;
}

void ForgetCopies()
{
    copies.clear();
}

void AnswerCopiesWith(BOOL newAnswer)
{
    answer = newAnswer;
}

} // namespace real_driver
