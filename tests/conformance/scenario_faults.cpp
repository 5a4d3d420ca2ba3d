// Every request to the engine fails once, and from then on, in every chapter of a screen's life: nothing
// breaks, nothing stays but surfaces that nobody can delete any more, and all works again afterwards.

#include <tuple>

#include "tests/conformance/scenario_machine.h"

namespace conformance {
namespace {

    constexpr engine::Mode TheMode = {64, 48, 16};

    // `lost`: how many surfaces may have stayed.
    testing::AssertionResult HoldsNoMoreThanItKeeps(const engine::Resources& held, ULONG lost = 0)
    {
        const engine::Resources kept = KeptOnPurpose();
        if (held.locks == 0 && held.poolBlocks <= kept.poolBlocks && held.surfaces <= lost
            && held.semaphores <= kept.semaphores && held.semaphoreHolds == 0 && held.images <= kept.images
            && held.modules == 0)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "held: " << held;
    }

    engine::Resources WithoutSurfaces(engine::Resources held)
    {
        held.surfaces = 0; // those that were lost stay lost
        return held;
    }

    struct Stage {
        ScenarioMachine& machine;
        std::unique_ptr<engine::Device>& device;
        HSURF bitmap; // a device bitmap of 64 x 48

        SURFOBJ* Screen() const { return device->PrimarySurface(); }
        SURFOBJ* Bitmap() const { return engine::FindSurface(bitmap); }
    };

    void DrawWith(const HookRow& row, Stage& stage)
    {
        engine::Surface* const picture = MakePattern(stage.device->Layout(), 1);
        for (const Clip kind : {Clip::Rectangle, Clip::Complex}) {
            const auto clip = MakeClip(kind);
            stage.machine.Draw(row, *stage.device, stage.Screen(), picture, clip.get());
            stage.machine.Draw(row, *stage.device, stage.Screen(), stage.Bitmap(), clip.get());
            stage.machine.Draw(row, *stage.device, stage.Bitmap(), stage.Screen(), clip.get());
        }
        engine::DestroyBitmap(picture);
    }

    void Zoom(Stage& stage)
    {
        const ULONG id = stage.machine.ShowZoomer(*stage.device, {2, 2, 12, 8}, {20, 10, 40, 22});
        stage.machine.Zoom(stage.Screen(), 0x11127228, id, {2, 1, 0, 0});
        for (const ULONG code : {0x11127229U, 0x11127230U})
            stage.machine.Zoom(stage.Screen(), code, id);
        stage.machine.SetOverlay(*stage.device);
        stage.machine.Zoom(stage.Screen(), 0x11127204);
        DrawWith(HookRows()[0], stage);
        stage.machine.Zoom(stage.Screen(), 0x11127202, id);
    }

    void ShowPointer(Stage& stage)
    {
        stage.machine.SetPointerShape(*stage.device, 10, 8);
        stage.machine.MovePointer(*stage.device, 12, 10);
        DrawWith(HookRows()[1], stage);
        stage.machine.SetPointerShape(*stage.device, 12, 10);
        stage.machine.MovePointer(*stage.device, -1, -1);
    }

    void SaveScreenBits(Stage& stage)
    {
        constexpr RECTL part = {3, 2, 40, 30};
        const ULONG first = stage.machine.SaveBits(*stage.device, SS_SAVE, 0, part);
        const ULONG second = stage.machine.SaveBits(*stage.device, SS_SAVE, 0, part);
        stage.machine.SaveBits(*stage.device, SS_RESTORE, first, part);
        stage.machine.SaveBits(*stage.device, SS_FREE, second, part);
    }

    void CreateDeviceBitmaps(Stage& stage)
    {
        for (const SIZEL& size : {SIZEL{64, 48}, SIZEL{100, 5}})
            stage.bitmap = stage.device->CreateCompatibleBitmap(size);
        const HookRow& text = HookRows()[8];
        stage.machine.Draw(text, *stage.device, stage.Bitmap(), nullptr, nullptr);
    }

    void DeleteDeviceBitmap(Stage& stage)
    {
        stage.device->DeleteBitmap(stage.bitmap);
    }

    void AddDarkZones(Stage& stage)
    {
        stage.machine.AddDarkZone(*stage.device, {0, 0, 30, 30});
        stage.machine.AddDarkZone(*stage.device, {10, 10, 64, 48});
        for (const ULONG subCommand : {23U, 37U})
            stage.machine.Command(subCommand, 77);
        for (const ULONG type : {1U, 2U})
            stage.machine.Command(96, type);
        DrawWith(HookRows()[9], stage);
    }

    void Disable(Stage& stage)
    {
        stage.device->DeleteBitmap(stage.bitmap);
        stage.machine.SetPointerShape(*stage.device, 10, 8);
        stage.device->Disable();
    }

    void EnableAgain(Stage& stage)
    {
        stage.device->Enable({40, 30, 8});
    }

    void ChangeMode(Stage& stage)
    {
        engine::ChangeMode(stage.device, {40, 30, 8});
    }

    struct Story {
        const char* name;
        void (*run)(Stage& stage);
        // A backing bitmap that does not lock is not deleted. A device that was given no device surface is
        // not told to disable it: the RealScreen, the VirtualScreen and the device surface may stay.
        ULONG lost;
        ULONG requests; // that it makes at least
    };
    const Story stories[] = {
        {"Zoomers", Zoom, 0, 50},
        {"Pointer", ShowPointer, 0, 50},
        {"SaveScreenBits", SaveScreenBits, 0, 8},
        {"DeviceBitmapsComing", CreateDeviceBitmaps, 0, 8},
        {"DeviceBitmapGoing", DeleteDeviceBitmap, 1, 2},
        {"DarkZones", AddDarkZones, 0, 20},
        {"Disabling", Disable, 1, 2},
        {"Enabling", EnableAgain, 3, 8},
        {"ModeChange", ChangeMode, 3, 8},
    };
    void PrintTo(const Story& story, std::ostream* out)
    {
        *out << story.name;
    }

    // A screen with all that it needs, `run` with failing requests, and what must be true afterwards.
    template<class Run> void LiveThrough(engine::FaultPlan& plan, ULONG lost, Run run)
    {
        ScenarioMachine machine;
        machine.StartCapture();
        auto device = std::make_unique<engine::Device>(machine.Driver());
        ASSERT_TRUE(device->Enable(TheMode));
        Stage stage = {machine, device, device->CreateCompatibleBitmap({64, 48})};
        machine.engine.Obey(plan);
        run(stage);
        machine.engine.StopFailing();
        device->Disable();
        machine.ForgetLists();
        ASSERT_TRUE(HoldsNoMoreThanItKeeps(machine.engine.Outstanding(), lost)) << "request " << plan.Position();

        ASSERT_TRUE(device->Enable(TheMode)) << "request " << plan.Position();
        const ULONG before = machine.RecordsTaken();
        stage.bitmap = device->CreateCompatibleBitmap({64, 48});
        DrawWith(HookRows()[0], stage);
        EXPECT_EQ(machine.RecordsTaken(), before + 7) << "request " << plan.Position();
        EXPECT_TRUE(SamePixels(*VirtualScreen(*device), *RealScreen(*device))) << "request " << plan.Position();
        device->Disable();
        ASSERT_EQ(WithoutSurfaces(machine.engine.Outstanding()), KeptOnPurpose()) << "request " << plan.Position();
    }

    class FaultyStory : public testing::TestWithParam<std::tuple<Story, bool>> { };

    TEST_P(FaultyStory, LeavesNothingBehindAndEndsWell)
    {
        const auto& [story, forGood] = GetParam();
        engine::FaultPlan plan(forGood);
        do
            LiveThrough(plan, story.lost, story.run);
        while (!HasFatalFailure() && plan.Next());
        EXPECT_GT(plan.Position(), story.requests) << "the story asked the engine for hardly anything";
    }

    std::string HowOften(bool forGood)
    {
        return forGood ? "ForGood" : "Once";
    }

    INSTANTIATE_TEST_SUITE_P(Stories, FaultyStory, testing::Combine(testing::ValuesIn(stories), testing::Bool()),
                             [](const auto& info) {
                                 return std::get<0>(info.param).name + HowOften(std::get<1>(info.param));
                             });

    class FaultyDrawing : public testing::TestWithParam<std::tuple<HookRow, bool>> { };

    TEST_P(FaultyDrawing, LeavesNothingBehindAndEndsWell)
    {
        const HookRow& row = std::get<0>(GetParam());
        engine::FaultPlan plan(std::get<1>(GetParam()));
        do
            LiveThrough(plan, 0, [&row](Stage& stage) { DrawWith(row, stage); });
        while (!HasFatalFailure() && plan.Next());
        EXPECT_GT(plan.Position(), 8u);
    }

    INSTANTIATE_TEST_SUITE_P(Hooks, FaultyDrawing, testing::Combine(testing::ValuesIn(HookRows()), testing::Bool()),
                             [](const auto& info) {
                                 return std::get<0>(info.param).name + HowOften(std::get<1>(info.param));
                             });

    // From before the driver is loaded until it is gone.
    class FaultyLife : public testing::TestWithParam<bool> { };

    TEST_P(FaultyLife, LeavesNothingBehindAndBeginsAnew)
    {
        engine::FaultPlan plan(GetParam());
        do {
            ScenarioMachine machine(&plan);
            auto device = std::make_unique<engine::Device>(machine.Driver());
            if (machine.Driver().IsEnabled() && device->Enable(TheMode)) {
                machine.StartCapture();
                Stage stage = {machine, device, device->CreateCompatibleBitmap({64, 48})};
                for (const HookRow& row : HookRows())
                    DrawWith(row, stage);
                for (const auto tell : {Zoom, ShowPointer, SaveScreenBits, AddDarkZones, Disable})
                    tell(stage);
            }
            device->Disable();
            machine.engine.StopFailing();
            machine.ForgetLists();
            constexpr ULONG lost = 3;
            ASSERT_TRUE(HoldsNoMoreThanItKeeps(machine.engine.Outstanding(), lost)) << "request " << plan.Position();
            ASSERT_TRUE(machine.Driver().EnableAgain()) << "request " << plan.Position();
            ASSERT_TRUE(device->Enable(TheMode)) << "request " << plan.Position();
            device->Disable();
            ASSERT_EQ(WithoutSurfaces(machine.engine.Outstanding()), KeptOnPurpose()) << "request " << plan.Position();
        } while (plan.Next());
        EXPECT_GT(plan.Position(), 300u);
    }

    INSTANTIATE_TEST_SUITE_P(OnceAndForGood, FaultyLife, testing::Bool(),
                             [](const auto& info) { return HowOften(info.param); });

} // namespace
} // namespace conformance
