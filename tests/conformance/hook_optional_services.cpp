// Services that older engines lack: the hooks that draw with them alone, and the one that falls back on one.

#include <algorithm>

#include "tests/conformance/core_setups.h"
#include "tests/conformance/hook_calls.h"

namespace conformance {
namespace {

    struct ServiceCase {
        const char* service;
        const char* hook;
    };
    class MissingService : public testing::TestWithParam<ServiceCase> {
    protected:
        MissingService()
        {
            session.Engine().HideService(GetParam().service);
            session.Driver().EnableAgain(); // looks the services up anew
            session.InstallConsumer();
            session.SetCaptureMask(0xFFFFFFFF);
            session.records.clear();
        }
        static const DrawingHook& Hook(const std::string& name)
        {
            const auto& hooks = DrawingHooks();
            return *std::find_if(hooks.begin(), hooks.end(),
                                 [&](const DrawingHook& hook) { return name == hook.name; });
        }
        Session session;
    };

    TEST_P(MissingService, MakesItsHookDrawNothingAndAnswerFalse)
    {
        BOOL result = TRUE;
        EXPECT_EQ(ShownBy(session, [&] { result = Hook(GetParam().hook).call(session, session.Screen()); }),
                  "8 8 24 20")
            << "the rest of the frame runs";
        EXPECT_EQ(result, FALSE);
        EXPECT_EQ(session.Virtual()->Pixel(10, 10), 0x00445566u);
        EXPECT_EQ(session.TakeOnlyRecord().CallType(), Hook(GetParam().hook).recordType);
        EXPECT_EQ(session.Engine().Violations().size(), 0u);
    }

    TEST_P(MissingService, LeavesTheOtherHooksAlone)
    {
        for (const DrawingHook& hook : DrawingHooks()) {
            const BOOL drawn = std::string(hook.name) != GetParam().hook;
            EXPECT_EQ(hook.call(session, session.Screen()), drawn) << hook.name;
        }
    }

    INSTANTIATE_TEST_SUITE_P(Services, MissingService,
                             testing::Values(ServiceCase{"EngAlphaBlend", "AlphaBlend"},
                                             ServiceCase{"EngGradientFill", "GradientFill"},
                                             ServiceCase{"EngTransparentBlt", "TransparentBlt"},
                                             ServiceCase{"EngStretchBltROP", "StretchBltROP"},
                                             ServiceCase{"EngPlgBlt", "PlgBlt"}),
                             [](const auto& info) { return info.param.hook; });

    TEST(OptionalServices, AreLookedUpOnceEachInOneOrder)
    {
        const std::vector<std::string> inOrder = {
            "EngAlphaBlend",  "EngGradientFill",    "EngTransparentBlt", "EngStretchBltROP", "EngPlgBlt",
            "EngDitherColor", "EngSetPointerShape", "EngMovePointer",    "EngMapFile",       "EngUnmapFile",
        };
        Session session(WithoutDevice(0x30100));
        EXPECT_EQ(session.Engine().ServicesAskedFor(), inOrder);
    }

    TEST(OptionalServices, AreFoundByAnEngineOfTheOlderInterfaceToo)
    {
        Session session(WithoutDevice(0x20000));
        EXPECT_EQ(session.Hook<PFN>(INDEX_DrvAlphaBlend), nullptr);
        EXPECT_EQ(session.Driver().Table().c, 26u);
    }

} // namespace
} // namespace conformance
