// DrvEnableDriver: what the engine is offered, what is made for later calls, what happens when that fails.

#include "tests/conformance/core_setups.h"
#include "tests/support/driver_form.h"

namespace conformance {
namespace {

    constexpr ULONG Untouched = 0xAAAAAAAA;

    engine::Resources Holding(ULONG poolBlocks, ULONG semaphores, ULONG images)
    {
        engine::Resources resources;
        resources.poolBlocks = poolBlocks;
        resources.semaphores = semaphores;
        resources.images = images;
        return resources;
    }

    const engine::Resources Complete = Holding(2, 1, 1); // both capture buffers, the semaphore, the real driver
    const engine::Resources RealDriverAlone = Holding(0, 0, 1);

    // An engine with the driver's image loaded; its only export is called by hand.
    class Machine {
    public:
        Machine()
        {
            engine::RegisterChainManager(chain);
            engine::RegisterFrameBuffer();
            support::RegisterDriverUnderTest();
            image_ = EngLoadImage(const_cast<WCHAR*>(u"koru"));
            outside_ = engine.Outstanding();
        }
        ~Machine()
        {
            engine.CheckGuards();
            EXPECT_TRUE(engine.Violations().empty()) << engine.Violations().front();
        }
        Machine(const Machine&) = delete;
        Machine& operator=(const Machine&) = delete;

        BOOL Enable(ULONG version, ULONG cj = 12)
        {
            std::string name = "DrvEnableDriver";
            const auto enable = reinterpret_cast<PFN_DrvEnableDriver>(EngFindImageProcAddress(image_, name.data()));
            return enable(version, cj, &table);
        }
        std::vector<ULONG> Indices() const
        {
            std::vector<ULONG> indices;
            for (ULONG i = 0; i < table.c; ++i)
                indices.push_back(table.pdrvfn[i].iFunc);
            return indices;
        }
        template<class Pfn> Pfn Hook(ULONG index)
        {
            for (ULONG i = 0; i < table.c; ++i)
                if (table.pdrvfn[i].iFunc == index)
                    return reinterpret_cast<Pfn>(table.pdrvfn[i].pfn);
            return nullptr;
        }
        // Without the image of the driver itself.
        engine::Resources Held() const
        {
            engine::Resources held = engine.Outstanding();
            held.images -= outside_.images;
            return held;
        }

        engine::Engine engine;
        engine::ChainAnswer chain;
        DRVENABLEDATA table = {Untouched, Untouched, reinterpret_cast<DRVFN*>(Untouched)};

    private:
        HANDLE image_ = nullptr;
        engine::Resources outside_;
    };

    class Enabling : public testing::Test, protected Machine { };

    const std::vector<ULONG> LegacyIndices = {0, 1,  2,  3,  4,  12, 10, 11, 18, 20, 23, 14, 19,
                                              5, 41, 15, 17, 31, 22, 13, 30, 29, 40, 24, 38, 16};
    const std::vector<ULONG> CurrentIndices = {0,  1,  2,  3,  4,  18, 23, 19, 14, 24, 41, 5,  10, 11, 22, 13, 38,
                                               12, 20, 15, 17, 31, 30, 29, 40, 16, 88, 71, 68, 74, 69, 70, 67};

    struct VersionCase {
        ULONG engineVersion;
        ULONG driverVersion;
        const std::vector<ULONG>& indices;
    };
    class EngineVersion : public testing::TestWithParam<VersionCase>, protected Machine { };

    TEST_P(EngineVersion, ChoosesTheTableAndTheAnswer)
    {
        EXPECT_EQ(Enable(GetParam().engineVersion), TRUE);
        EXPECT_EQ(table.iDriverVersion, GetParam().driverVersion);
        EXPECT_EQ(Indices(), GetParam().indices);
        for (ULONG i = 0; i < table.c; ++i)
            EXPECT_NE(table.pdrvfn[i].pfn, nullptr) << table.pdrvfn[i].iFunc;
        EXPECT_EQ(engine::LastRealEnable().engineVersion, GetParam().engineVersion) << "handed on unchanged";
        EXPECT_EQ(engine::LastRealEnable().size, 12u);
    }

    INSTANTIATE_TEST_SUITE_P(
        Versions, EngineVersion,
        testing::Values(VersionCase{0x10000, 0x20000, LegacyIndices}, VersionCase{0x20000, 0x20000, LegacyIndices},
                        VersionCase{0x2FFFF, 0x20000, LegacyIndices}, VersionCase{0x30000, 0x30000, CurrentIndices},
                        VersionCase{0x30001, 0x30000, CurrentIndices}, VersionCase{0x300FF, 0x30000, CurrentIndices},
                        VersionCase{0x30100, 0x30100, CurrentIndices}, VersionCase{0x30101, 0x30000, CurrentIndices},
                        VersionCase{0x30200, 0x30000, CurrentIndices},
                        VersionCase{0xFFFFFFFF, 0x30000, CurrentIndices}),
        [](const auto& info) {
            char name[16];
            std::snprintf(name, sizeof(name), "Engine%X", info.param.engineVersion);
            return std::string(name);
        });

    TEST_F(Enabling, OffersEachHookUnderOneIndexAlike)
    {
        Enable(0x20000);
        const auto legacyBitBlt = Hook<PFN>(INDEX_DrvBitBlt);
        Enable(0x30100);
        EXPECT_EQ(Hook<PFN>(INDEX_DrvBitBlt), legacyBitBlt);
    }

    struct SizeCase {
        ULONG cj;
        bool version, count, pointer; // which fields are filled
    };
    class EnableDataSize : public testing::TestWithParam<SizeCase>, protected Machine { };

    TEST_P(EnableDataSize, LimitsTheFieldsThatAreFilled)
    {
        Enable(0x30100, GetParam().cj);
        EXPECT_EQ(table.iDriverVersion, GetParam().version ? 0x30100u : Untouched);
        EXPECT_EQ(table.c, GetParam().count ? 33u : Untouched);
        EXPECT_EQ(table.pdrvfn != reinterpret_cast<DRVFN*>(Untouched), GetParam().pointer);
    }

    INSTANTIATE_TEST_SUITE_P(Sizes, EnableDataSize,
                             testing::Values(SizeCase{0, false, false, false}, SizeCase{3, false, false, false},
                                             SizeCase{4, true, false, false}, SizeCase{7, true, false, false},
                                             SizeCase{8, true, true, false}, SizeCase{11, true, true, false},
                                             SizeCase{12, true, true, true}, SizeCase{1000, true, true, true}),
                             [](const auto& info) { return "Bytes" + std::to_string(info.param.cj); });

    TEST_F(Enabling, SaysWhatItDoes)
    {
        Enable(0x30100);
        EXPECT_EQ(engine.DebugOutput(),
                  "KORU:DrvEnableDriver called.\n"
                  "KORU:cModuleLoader::LoadRealDriver is called\n"
                  "KORU:DCMGetNextDriver success: framebuf\n"
                  "KORU:cModuleLoader::UnloadRealDriver is called\n"
                  "KORU:cModuleLoader::UnloadRealDriver finished\n"
                  "KORU:LoadRealDriver finished: success!\n"
                  "KORU:DrvEnableDriver is END\n");
    }

    TEST_F(Enabling, HoldsOneSemaphoreTwoBuffersAndTheRealDriver)
    {
        Enable(0x30100);
        EXPECT_EQ(Held(), Complete);
    }

    TEST_F(Enabling, AnswersFalseWithoutARealDriverButOffersItsTable)
    {
        chain.status = 3;
        engine::RegisterChainManager(chain);
        EXPECT_EQ(Enable(0x30100), FALSE);
        EXPECT_EQ(table.c, 33u);
        EXPECT_EQ(Held().semaphores, 1u) << "the rest is set up all the same";
        EXPECT_EQ(Held().images, 0u);
    }

    TEST_F(Enabling, RunsWithoutSemaphoreWhenTheCaptureBufferCannotBeMade)
    {
        for (const ULONG buffer : {2u, 3u}) { // the 1st request is the next driver's name
            engine.TakeDebugOutput();
            engine.Fail(engine::Request::Memory, buffer);
            EXPECT_EQ(Enable(0x30100), TRUE);
            engine.StopFailing();
            const std::string output = engine.TakeDebugOutput();
            EXPECT_TRUE(output.ends_with("KORU:LoadRealDriver finished: success!\n"
                                         "KORU:\nEnableDriver Error, Memory allocation failed !!!! \n\n"
                                         "KORU:DrvEnableDriver is END\n"))
                << output;
            EXPECT_EQ(Held(), RealDriverAlone);
            EXPECT_GT(Hook<PFN_DrvGetModes>(INDEX_DrvGetModes)(nullptr, 0, nullptr), 0u) << "hooks work unserialised";
        }
    }

    std::vector<std::vector<ULONG>> handedOver; // record, length, flag

    LONG APIENTRY Qp(BYTE* record, ULONG length, LONG flag)
    {
        handedOver.push_back({reinterpret_cast<ULONG>(record), length, static_cast<ULONG>(flag)});
        return 0;
    }

    TEST_F(Enabling, HandsOverNothingButTheFlagWithoutACaptureBuffer)
    {
        engine.Fail(engine::Request::Memory, 2);
        Enable(0x30100);
        engine.StopFailing();
        const auto command = [this](ULONG subCommand, ULONG word1, ULONG word3) {
            ULONG in[6] = {subCommand, word1, 0, word3, 0, 0};
            ULONG out = 0;
            Hook<PFN_DrvEscape>(INDEX_DrvEscape)(nullptr, 0x490914, sizeof(in), in, sizeof(out), &out);
        };
        command(36, 0, reinterpret_cast<ULONG>(&Qp));
        command(57, 0xFFFFFFFF, 0);
        command(2, 0, 0);
        handedOver.clear();
        Hook<PFN_DrvGetModes>(INDEX_DrvGetModes)(nullptr, 0, nullptr);
        EXPECT_EQ(handedOver, (std::vector<std::vector<ULONG>>{{0, 0, 0}}));
        SURFOBJ* const picture = engine::MakeBitmap({4, 4}, engine::PixelLayout::Default(BMF_32BPP));
        RECTL to = {0, 0, 4, 4};
        POINTL origin = {0, 0};
        engine::Brush brush = engine::Brush::Solid(5);
        EXPECT_EQ(Hook<PFN_DrvBitBlt>(INDEX_DrvBitBlt)(picture, nullptr, nullptr, nullptr, nullptr, &to, nullptr,
                                                       nullptr, &brush, &origin, 0xF0F0),
                  TRUE);
        ASSERT_EQ(handedOver.size(), 2u);
        EXPECT_EQ(handedOver.back(), (std::vector<ULONG>{0, 0, 1}));
    }

    TEST_F(Enabling, KeepsTheLoadersFailureWhenTheCaptureBufferCannotBeMadeEither)
    {
        chain.status = 1;
        engine::RegisterChainManager(chain);
        engine.Fail(engine::Request::Memory, 1, true);
        EXPECT_EQ(Enable(0x30100), FALSE);
    }

    TEST_F(Enabling, AnswersFalseWithoutASemaphore)
    {
        engine.RegisterModule(u"KORU.ini", {'0', '1'});
        engine.Fail(engine::Request::CreateSemaphore);
        EXPECT_EQ(Enable(0x30100), FALSE);
        EXPECT_EQ(Held().semaphores, 0u);
        EXPECT_TRUE(
            engine.DebugOutput().ends_with("KORU:LoadRealDriver finished: success!\nKORU:DrvEnableDriver is END\n"));
        EXPECT_EQ(Hook<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0,
                                                                         nullptr, 0),
                  SPS_DECLINE)
            << "the options are read all the same";
    }

    TEST_F(Enabling, TakesNothingTwiceWhenTheEngineEnablesItTwice)
    {
        Enable(0x30100);
        const engine::Resources once = Held();
        engine.ClearDebugOutput();
        EXPECT_EQ(Enable(0x30100), TRUE);
        EXPECT_EQ(Held(), once);
        EXPECT_EQ(engine::LastRealEnable().times, 2u);
        EXPECT_EQ(engine.DebugOutput(),
                  "KORU:DrvEnableDriver called.\n"
                  "KORU:cModuleLoader::LoadRealDriver is called\n"
                  "KORU:DCMGetNextDriver success: framebuf\n"
                  "KORU:cModuleLoader::UnloadRealDriver is called\n"
                  "KORU:DisableDriver is not exported in real driver 1\n"
                  "KORU:cModuleLoader::UnloadRealDriver finished\n"
                  "KORU:LoadRealDriver finished: success!\n"
                  "KORU:DrvEnableDriver is END\n");
    }

    TEST_F(Enabling, MakesUpAtTheSecondTimeForWhatFailedAtTheFirst)
    {
        engine.Fail(engine::Request::Memory, 2);
        Enable(0x30100);
        engine.StopFailing();
        EXPECT_EQ(Enable(0x30100), TRUE);
        EXPECT_EQ(Held(), Complete);
    }

    TEST_F(Enabling, StaysWithTheNewerInterfaceOnceItHasMetIt)
    {
        Enable(0x30100);
        Enable(0x20000);
        EXPECT_EQ(table.c, 33u);
        EXPECT_EQ(table.iDriverVersion, 0x30000u);
    }

    TEST(EnablingUnderFaults, IsMadeUpForByTheNextEnabling)
    {
        for (const bool forGood : {false, true}) {
            engine::FaultPlan plan(forGood);
            do {
                Machine machine;
                machine.engine.Obey(plan);
                machine.Enable(0x30100);
                machine.engine.StopFailing();
                EXPECT_EQ(machine.Enable(0x30100), TRUE) << "fault " << plan.Position();
                EXPECT_EQ(machine.Held(), Complete) << "fault " << plan.Position();
            } while (plan.Next());
        }
    }

    TEST(EnabledDriver, CapturesNothingBeforeAClientSetsTheCallMask)
    {
        Session session(WithoutConsumer());
        session.InstallConsumer();
        session.Device().AssertMode(true);
        EXPECT_TRUE(session.records.empty());
        session.SetCaptureMask(0xFFFFFFFF);
        session.Device().AssertMode(true);
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST(EnabledDriver, ForgetsTheCallMaskAndTheColourPairsWhenItIsEnabledAgain)
    {
        Session session;
        EXPECT_EQ(session.Zoom(0x11127242), 3u) << "three default pairs after the first mode";
        session.Driver().EnableAgain();
        EXPECT_EQ(session.Zoom(0x11127242), 0u);
        session.Device().AssertMode(true);
        EXPECT_TRUE(session.records.empty());
    }

} // namespace
} // namespace conformance
