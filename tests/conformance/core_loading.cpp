// The next driver of the chain: asked for, loaded, let go.

#include <map>

#include "tests/conformance/core_real_driver.h"
#include "tests/conformance/core_setups.h"
#include "tests/support/driver_form.h"

namespace conformance {
namespace {

    struct StatusCase {
        ULONG status;
        std::string message;
    };
    class ChainStatus : public testing::TestWithParam<StatusCase> { };

    TEST_P(ChainStatus, IsReportedAndEndsTheEnabling)
    {
        Session session(WithoutDevice());
        engine::ChainAnswer answer;
        answer.status = GetParam().status;
        engine::RegisterChainManager(answer);
        session.Engine().ClearDebugOutput();
        EXPECT_FALSE(session.Driver().EnableAgain());
        EXPECT_EQ(session.Engine().DebugOutput(),
                  "KORU:DrvEnableDriver called.\n"
                  "KORU:cModuleLoader::LoadRealDriver is called\n"
                  "KORU:DCMGetNextDriver returned "
                      + GetParam().message
                      + "\n"
                        "KORU:cModuleLoader::UnloadRealDriver is called\n"
                        "KORU:DisableDriver is not exported in real driver 1\n"
                        "KORU:cModuleLoader::UnloadRealDriver finished\n"
                        "KORU:LoadRealDriver finished: failed...\n"
                        "KORU:DrvEnableDriver is END\n");
        EXPECT_FALSE(session.Engine().IsImageLoaded(u"framebuf"));
        EXPECT_FALSE(session.Engine().IsImageLoaded(u"dcmkrnl"));
        engine::ForgetRealCalls();
        EXPECT_EQ(session.Hook<PFN_DrvGetModes>(INDEX_DrvGetModes)(nullptr, 0, nullptr), 0u);
        EXPECT_TRUE(engine::RealCalls().empty()) << "nothing is called in an image that is gone";
    }

    INSTANTIATE_TEST_SUITE_P(Codes, ChainStatus,
                             testing::Values(StatusCase{1, "DCERR_REGISTRY_ACCESS error: 00000001"},
                                             StatusCase{2, "DCERR_INVALID_PARAM error: 00000002"},
                                             StatusCase{3, "DCERR_IDD_NOT_FOUND error: 00000003"},
                                             StatusCase{4, "DCERR_CHAINDRIVER_NOTFOUND error: 00000004"},
                                             StatusCase{5, "unknown error: 00000005"},
                                             StatusCase{6, "DCERR_INSUFFICIENT_BUFFER error: 00000006"},
                                             StatusCase{7, "unknown error: 00000007"},
                                             StatusCase{0xC0000001, "unknown error: C0000001"}),
                             [](const auto& info) { return "Status" + std::to_string(info.param.status); });

    TEST(ChainLookup, AsksInTheNameOfThisDriverWithACleanBuffer)
    {
        Session session(WithoutDevice());
        const engine::ChainQuestion& question = engine::LastChainQuestion();
        EXPECT_EQ(question.first, 1u);
        EXPECT_EQ(question.second, 0u);
        EXPECT_EQ(question.asker, u"koru");
        EXPECT_EQ(question.roomInCharacters, 40u);
        EXPECT_TRUE(question.bufferWasZero);
        EXPECT_EQ(question.times, 1u);
        EXPECT_FALSE(session.Engine().IsImageLoaded(u"dcmkrnl")) << "the chain manager is let go after each lookup";
    }

    TEST(ChainLookup, ReportsAMissingChainManager)
    {
        Session session(WithoutDevice());
        session.Engine().ClearDebugOutput();
        session.Engine().Fail(engine::Request::Load, 1);
        EXPECT_FALSE(session.Driver().EnableAgain());
        EXPECT_TRUE(session.Engine().DebugOutput().starts_with("KORU:DrvEnableDriver called.\n"
                                                               "KORU:cModuleLoader::LoadRealDriver is called\n"
                                                               "KORU:Unable to load dcmkrnl.dll\n"
                                                               "KORU:cModuleLoader::UnloadRealDriver is called\n"));
    }

    TEST(ChainLookup, ReportsAChainManagerWithoutTheLookupAndLetsItGo)
    {
        Session session(WithoutDevice());
        engine::ChainAnswer answer;
        answer.offersGetNextDriver = false;
        engine::RegisterChainManager(answer);
        session.Engine().ClearDebugOutput();
        EXPECT_FALSE(session.Driver().EnableAgain());
        EXPECT_TRUE(
            session.Engine().DebugOutput().starts_with("KORU:DrvEnableDriver called.\n"
                                                       "KORU:cModuleLoader::LoadRealDriver is called\n"
                                                       "KORU:Unable to find GetNextDriver entry point in dcmkrnl.dll\n"
                                                       "KORU:cModuleLoader::UnloadRealDriver is called\n"));
        EXPECT_FALSE(session.Engine().IsImageLoaded(u"dcmkrnl"));
    }

    // The engine takes "x" and "x.dll" for one image, so that an appended extension shows in a name that has
    // one already.
    TEST(ChainLookup, AppendsTheExtensionToANameOf39Characters)
    {
        Session session(WithoutDevice());
        const std::u16string stem(35, u'n');
        engine::ChainAnswer answer;
        answer.name = stem + u".dll";
        engine::RegisterChainManager(answer);
        engine::RegisterFrameBuffer({}, stem + u".dll.dll");
        EXPECT_TRUE(session.Driver().EnableAgain());
        EXPECT_TRUE(session.Engine().IsImageLoaded(stem + u".dll.dll"));
    }

    TEST(ChainLookup, AppendsNothingToANameOf40Characters)
    {
        Session session(WithoutDevice());
        const std::u16string name = std::u16string(36, u'n') + u".dll";
        engine::ChainAnswer answer;
        answer.name = name;
        engine::RegisterChainManager(answer);
        engine::RegisterFrameBuffer({}, name);
        session.Engine().ClearDebugOutput();
        EXPECT_TRUE(session.Driver().EnableAgain());
        EXPECT_TRUE(session.Engine().IsImageLoaded(name));
        EXPECT_NE(
            session.Engine().DebugOutput().find("KORU:DCMGetNextDriver success: " + std::string(36, 'n') + ".dll\n"),
            std::string::npos);
    }

    TEST(ChainLookup, TakesAnEmptyNameAsItIs)
    {
        Session session(WithoutDevice());
        engine::ChainAnswer answer;
        answer.name = u"";
        engine::RegisterChainManager(answer);
        EXPECT_FALSE(session.Driver().EnableAgain());
    }

    TEST(ChainLookup, FailsSilentlyAfterItsSuccessMessageWithoutMemoryForTheName)
    {
        Session session(WithoutDevice());
        const engine::Resources before = session.Engine().Outstanding();
        session.Engine().ClearDebugOutput();
        session.Engine().Fail(engine::Request::Memory, 1);
        EXPECT_FALSE(session.Driver().EnableAgain());
        EXPECT_TRUE(session.Engine().DebugOutput().starts_with("KORU:DrvEnableDriver called.\n"
                                                               "KORU:cModuleLoader::LoadRealDriver is called\n"
                                                               "KORU:DCMGetNextDriver success: framebuf\n"
                                                               "KORU:cModuleLoader::UnloadRealDriver is called\n"));
        EXPECT_EQ(session.Engine().Outstanding().poolBlocks, before.poolBlocks);
        EXPECT_EQ(session.Engine().Outstanding().images, before.images - 1) << "the old real driver is unloaded";
    }

    constexpr const char* Failed = "KORU:LoadRealDriver finished: failed...\n";

    TEST(RealImage, ThatDoesNotLoadFails)
    {
        Session session(WithoutDevice());
        session.Engine().ClearDebugOutput();
        session.Engine().Fail(engine::Request::Load, 2);
        EXPECT_FALSE(session.Driver().EnableAgain());
        EXPECT_NE(session.Engine().DebugOutput().find(Failed), std::string::npos);
        EXPECT_FALSE(session.Engine().IsImageLoaded(u"framebuf"));
    }

    TEST(RealImage, WithoutDrvEnableDriverFailsAndStaysLoaded)
    {
        Session session(WithoutDevice());
        session.Engine().RegisterImage(u"framebuf", engine::Exports{});
        session.Engine().ClearDebugOutput();
        EXPECT_FALSE(session.Driver().EnableAgain());
        EXPECT_NE(session.Engine().DebugOutput().find(Failed), std::string::npos);
        EXPECT_TRUE(session.Engine().IsImageLoaded(u"framebuf"));
    }

    TEST(RealImage, ThatRefusesFailsAndStaysLoadedUntilTheNextEnabling)
    {
        Session session(WithoutDevice());
        engine::FrameBufferOptions refusing;
        refusing.refuses = true;
        engine::RegisterFrameBuffer(refusing);
        EXPECT_FALSE(session.Driver().EnableAgain());
        EXPECT_TRUE(session.Engine().IsImageLoaded(u"framebuf"));
        const engine::Resources held = session.Engine().Outstanding();
        engine::RegisterFrameBuffer();
        EXPECT_TRUE(session.Driver().EnableAgain());
        EXPECT_EQ(session.Engine().Outstanding(), held);
    }

    struct UnloadCase {
        const char* name;
        ULONG engineVersion;
        bool exported, inTable;
        std::string messages;
        ULONG calls;
    };
    class Unloading : public testing::TestWithParam<UnloadCase> { };

    TEST_P(Unloading, TellsTheRealDriverAsItCan)
    {
        auto setup = WithoutDevice(GetParam().engineVersion);
        setup.frameBuffer.exportsDisableDriver = GetParam().exported;
        if (!GetParam().inTable)
            setup.frameBuffer.missing = {INDEX_DrvDisableDriver};
        Session session(setup);
        session.Engine().ClearDebugOutput();
        engine::ForgetRealCalls();
        session.Driver().EnableAgain();
        EXPECT_EQ(engine::RealCalls().size(), GetParam().calls);
        const std::string expected = "KORU:cModuleLoader::UnloadRealDriver is called\n" + GetParam().messages
            + "KORU:cModuleLoader::UnloadRealDriver finished\n";
        EXPECT_NE(session.Engine().DebugOutput().find(expected), std::string::npos) << session.Engine().DebugOutput();
    }

    INSTANTIATE_TEST_SUITE_P(Ways, Unloading,
                             testing::Values(UnloadCase{"ByItsExport", 0x30100, true, true,
                                                        "KORU:DisableDriver in real driver is called.\n", 1},
                                             UnloadCase{"ByItsTable", 0x30000, false, true,
                                                        "KORU:DisableDriver is not exported in real driver 1\n", 1},
                                             UnloadCase{"NotAtAll", 0x30100, false, false,
                                                        "KORU:DisableDriver is not exported in real driver 1\n"
                                                        "KORU:Real driver has no DisableDriver function 2\n",
                                                        0},
                                             UnloadCase{"NotOnTheOlderInterface", 0x20000, true, true, "", 0}),
                             [](const auto& info) { return info.param.name; });

    ULONG APIENTRY FirstGetModes(HANDLE, ULONG, DEVMODEW*)
    {
        return 111;
    }
    ULONG APIENTRY SecondGetModes(HANDLE, ULONG, DEVMODEW*)
    {
        return 222;
    }

    TEST(RealTable, GivesTheFirstOfTwoEntriesWithOneIndex)
    {
        Session session(WithoutDevice());
        RealDriver real(session);
        real.Offer(INDEX_DrvGetModes, SecondGetModes);
        real.Offer(INDEX_DrvGetModes, FirstGetModes); // comes to stand in front
        EXPECT_EQ(session.Hook<PFN_DrvGetModes>(INDEX_DrvGetModes)(nullptr, 0, nullptr), 111u);
    }

    struct FlagCase {
        const char* name;
        ULONG engineVersion;
        std::set<ULONG> missing;
        FLONG hooks; // of the device surface
    };
    class HookFlags : public testing::TestWithParam<FlagCase> { };

    TEST_P(HookFlags, AskForWhatTheInterfaceAndTheRealDriverAllow)
    {
        Session session(WithoutConsumer(WithoutRealEntries(GetParam().missing, GetParam().engineVersion)));
        EXPECT_EQ(engine::FindSurface(session.Device().Primary())->hooks, GetParam().hooks);
        const HSURF bitmap = session.Device().CreateCompatibleBitmap({5, 5});
        EXPECT_EQ(engine::FindSurface(bitmap)->hooks, GetParam().hooks) << "device bitmaps are hooked alike";
        EXPECT_EQ(session.Virtual()->hooks, 0x4000u);
    }

    INSTANTIATE_TEST_SUITE_P(
        Drivers, HookFlags,
        testing::Values(
            FlagCase{"OlderWithSynchronize", 0x20000, {}, 0x151B | 0x4000},
            FlagCase{"OlderWithSurfacesOnly", 0x20000, {INDEX_DrvSynchronize}, 0x51B | 0x4000},
            FlagCase{"OlderWithout", 0x20000, {INDEX_DrvSynchronize, INDEX_DrvSynchronizeSurface}, 0x51B | 0x4000},
            FlagCase{"NewerWithBoth", 0x30100, {}, 0x3B53B | 0x4000},
            FlagCase{"NewerWithSynchronize", 0x30000, {INDEX_DrvSynchronizeSurface}, 0x3B53B | 0x4000},
            FlagCase{"NewerWithSurfacesOnly", 0x30100, {INDEX_DrvSynchronize}, 0x3B53B | 0x4000},
            FlagCase{"NewerWithout", 0x30100, {INDEX_DrvSynchronize, INDEX_DrvSynchronizeSurface}, 0x3A53B | 0x4000},
            FlagCase{
                "DrawingEntriesDoNotCount", 0x30100, {INDEX_DrvCopyBits, INDEX_DrvRealizeBrush}, 0x3B53B | 0x4000}),
        [](const auto& info) { return info.param.name; });

} // namespace
} // namespace conformance
