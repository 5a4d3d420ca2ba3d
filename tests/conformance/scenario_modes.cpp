// Three screens that change modes over and over, with everything else going on in between.

#include <atomic>
#include <random>
#include <thread>

#include "tests/conformance/scenario_machine.h"

namespace conformance {
namespace {

    constexpr int Changes = 1000;
    constexpr SURFOBJ* MemoryDc = nullptr; // a surface of no device

    class ManyScreens : public testing::Test {
    protected:
        ManyScreens()
        {
            EXPECT_TRUE(machine.Driver().EnableAgain()); // as engines do before the first mode
            machine.StartCapture();
            machine.engine.StepCounter(40000); // so that the timed refresh comes at every sixth call or so
            for (std::unique_ptr<engine::Device>& device : devices) {
                device = std::make_unique<engine::Device>(machine.Driver());
                EXPECT_TRUE(device->Enable(AnyMode())) << device->Error();
            }
        }

        ULONG Any(ULONG below) { return random() % below; }
        engine::Mode AnyMode()
        {
            constexpr ULONG depths[] = {1, 4, 8, 15, 16, 24, 32};
            return {16 + Any(64), 12 + Any(48), depths[Any(7)]};
        }
        static RECTL Whole(const engine::Device& device) { return VirtualScreen(device)->Bounds(); }

        void CloseAll()
        {
            for (std::unique_ptr<engine::Device>& device : devices)
                device->Disable();
            machine.ForgetLists();
        }

        ScenarioMachine machine;
        std::minstd_rand random{7};
        std::unique_ptr<engine::Device> devices[3];
    };

    // The uses answer whether the RealScreen still has to equal the VirtualScreen.
    class ModeChanges : public ManyScreens {
    protected:
        bool DrawOnScreen(engine::Device& device)
        {
            bool agree = true;
            engine::Surface* const picture = MakePattern(device.Layout(), Any(1000));
            for (int i = 0; i < 3; ++i) {
                const HookRow& row = HookRows()[Any(static_cast<ULONG>(HookRows().size()))];
                const auto clip = MakeClip(static_cast<Clip>(1 + Any(3)));
                machine.Draw(row, device, device.PrimarySurface(), picture, clip.get());
                agree &= std::string(row.name) != "PlgBlt"; // shows what it reads
            }
            engine::DestroyBitmap(picture);
            return agree;
        }

        bool DrawThroughDeviceBitmap(engine::Device& device)
        {
            const HSURF bitmap = device.CreateCompatibleBitmap({64, 48});
            engine::Surface* const surface = engine::FindSurface(bitmap);
            const HookRow& text = HookRows()[8];
            const HookRow& copy = HookRows()[1];
            machine.Draw(text, device, surface, nullptr, nullptr);
            EXPECT_EQ(machine.Draw(copy, device, device.PrimarySurface(), surface, nullptr), TRUE);
            if (Any(2) == 0) // the others stay until the mode changes
                device.DeleteBitmap(bitmap);
            return true;
        }

        bool UseZoomers(engine::Device& device)
        {
            const RECTL screen = Whole(device);
            const ULONG id = machine.ShowZoomer(device, {2, 2, 8, 6}, {4, 4, 14, 10});
            EXPECT_NE(id, 0u);
            machine.Zoom(device.PrimarySurface(), 0x11127228, id, {1, -1, 0, 0});
            machine.Zoom(device.PrimarySurface(), 0x11127230, id);
            machine.Zoom(device.PrimarySurface(), 0x11127235, 0, screen);
            if (Any(3) == 0)
                machine.SetOverlay(device);
            DrawOnScreen(device);
            if (!overlayStays)
                machine.Zoom(MemoryDc, 0x11127237); // it would lie on all screens
            if (Any(2) == 0)
                machine.Zoom(device.PrimarySurface(), 0x11127202, id);
            return false;
        }

        bool MoveThePointer(engine::Device& device)
        {
            machine.SetPointerShape(device, 3, 3);
            machine.MovePointer(device, 7, 5);
            const bool agree = DrawOnScreen(device);
            machine.MovePointer(device, -1, -1);
            return agree;
        }

        bool EscapeFromAMemoryDc(engine::Device& device)
        {
            machine.AddDarkZone(device, {0, 0, 8, 8});
            for (const ULONG subCommand : {23U, 37U, 92U, 58U, 91U})
                machine.Command(subCommand, Any(50), 0, &device);
            machine.Command(96, 1 + Any(2));
            for (ULONG digit = 1; digit <= 9; ++digit)
                EXPECT_EQ(machine.Zoom(MemoryDc, 0x11127200 + digit), 0u) << digit;
            EXPECT_EQ(machine.Zoom(MemoryDc, 0x11127243, 0, {1, 0, 0, 0}, 2), 1u); // a colour pair comes and goes
            EXPECT_EQ(machine.Zoom(MemoryDc, 0x11127246, 0, {1, 0, 0, 0}, 2), 1u);
            return true;
        }

        bool SaveAndRestore(engine::Device& device)
        {
            const RECTL part = {1, 1, 12, 9};
            const ULONG ident = machine.SaveBits(device, SS_SAVE, 0, part);
            EXPECT_NE(ident, 0u);
            const bool agree = DrawOnScreen(device);
            EXPECT_EQ(machine.SaveBits(device, SS_RESTORE, ident, part), 1u);
            return agree;
        }

        bool Use(engine::Device& device)
        {
            switch (Any(6)) {
            case 0:
                return DrawOnScreen(device);
            case 1:
                return DrawThroughDeviceBitmap(device);
            case 2:
                return UseZoomers(device);
            case 3:
                return MoveThePointer(device);
            case 4:
                return EscapeFromAMemoryDc(device);
            default:
                return SaveAndRestore(device);
            }
        }

        bool overlayStays = false;
    };

    TEST_F(ModeChanges, AThousandTimesLeaveThePictureRightAndNothingBehind)
    {
        for (int change = 0; change < Changes; ++change) {
            std::unique_ptr<engine::Device>& device = devices[Any(3)];
            ASSERT_TRUE(engine::ChangeMode(device, AnyMode())) << "change " << change;
            bool agree = true;
            for (ULONG uses = 1 + Any(3); uses > 0; --uses)
                agree &= Use(*device);
            if (agree) {
                ASSERT_TRUE(SamePixels(*VirtualScreen(*device), *RealScreen(*device))) << "change " << change;
            }
            Use(*devices[Any(3)]); // whose mode may be old
            ASSERT_TRUE(machine.engine.Violations().empty()) << "change " << change;
            machine.engine.ClearDebugOutput();
        }
        EXPECT_GT(machine.RecordsTaken(), 1000u);
        EXPECT_EQ(machine.engine.Outstanding().locks, 0u);
        machine.engine.CheckGuards(); // before and behind all that still stands
        CloseAll();
        EXPECT_EQ(machine.engine.Outstanding(), KeptOnPurpose());
    }

    TEST_F(ModeChanges, GoOnAfterTheDriverIsEnabledOnceMore)
    {
        for (int round = 0; round < 5; ++round) {
            for (std::unique_ptr<engine::Device>& device : devices) {
                ASSERT_TRUE(engine::ChangeMode(device, AnyMode()));
                Use(*device);
            }
            CloseAll();
            ASSERT_EQ(machine.engine.Outstanding(), KeptOnPurpose());
            ASSERT_TRUE(machine.Driver().EnableAgain());
            for (std::unique_ptr<engine::Device>& device : devices)
                ASSERT_TRUE(device->Enable(AnyMode()));
            MoveThePointer(*devices[0]);
        }
    }

    // There is one overlay for all screens, made in the size and format of one of them.
    TEST_F(ModeChanges, SurviveAnOverlayOfAnotherMode)
    {
        overlayStays = true;
        for (int change = 0; change < Changes / 4; ++change) {
            std::unique_ptr<engine::Device>& device = devices[Any(3)];
            ASSERT_TRUE(engine::ChangeMode(device, AnyMode())) << "change " << change;
            UseZoomers(*device);
            Use(*devices[Any(3)]);
            ASSERT_TRUE(machine.engine.Violations().empty()) << "change " << change;
        }
        machine.engine.CheckGuards();
        EXPECT_TRUE(machine.engine.Violations().empty());
        CloseAll();
        EXPECT_EQ(machine.engine.Outstanding(), KeptOnPurpose());
    }

    // Nothing but the driver serialises escapes and drawing.
    TEST_F(ManyScreens, TakeEscapesBesideDrawing)
    {
        constexpr int rounds = 20; // of each, at least
        std::atomic<bool> drawing = true;
        std::atomic<int> escapeRounds = 0;
        std::thread escapes([&] {
            while (drawing) {
                for (const std::unique_ptr<engine::Device>& device : devices) {
                    machine.ShowZoomer(*device, {2, 2, 8, 6}, {4, 4, 14, 10});
                    machine.AddDarkZone(*device, {0, 0, 8, 8});
                    machine.Command(37, 1);
                    machine.Command(39);
                    machine.Command(5, 0, 0, device.get());
                    machine.Zoom(device->PrimarySurface(), 0x11127203);
                    std::this_thread::yield();
                }
                ++escapeRounds;
            }
        });
        for (int round = 0; round < rounds || escapeRounds < rounds; ++round)
            for (const std::unique_ptr<engine::Device>& device : devices) {
                engine::Surface* const picture = MakePattern(device->Layout(), 1);
                for (const HookRow& row : HookRows()) {
                    const auto clip = MakeClip(Clip::Complex);
                    machine.Draw(row, *device, device->PrimarySurface(), picture, clip.get());
                }
                engine::DestroyBitmap(picture);
            }
        drawing = false;
        escapes.join();
        EXPECT_EQ(machine.engine.Outstanding().locks, 0u);
        EXPECT_EQ(machine.engine.Outstanding().semaphoreHolds, 0u);
        EXPECT_GT(machine.RecordsTaken(), 0u);
        CloseAll();
        EXPECT_EQ(machine.engine.Outstanding(), KeptOnPurpose());
    }

} // namespace
} // namespace conformance
