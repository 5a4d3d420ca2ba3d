// The pointer leaves no trace: whatever was drawn, moved and shaped while it was shown, once it is
// hidden the VirtualScreen holds what the same drawing without a pointer gives.

#include "engine/loader/linked_driver.h"
#include "tests/property/drawing.h"
#include "tests/property/pointer_shape.h"
#include "tests/property/test_formats.h"

namespace property {
namespace {

    constexpr std::uint64_t ScenesInAll = 700;

    class PointerScenes : public testing::TestWithParam<Format> { };

    class PointerPlay {
    public:
        PointerPlay(const Scene& scene, bool withPointer)
            : scene_(scene)
            , withPointer_(withPointer)
            , session_(SetupFor(scene))
            , hooks_(HookCalls(session_))
        {
        }

        // The VirtualScreen at every step that hides the pointer.
        std::vector<Picture> Run()
        {
            std::vector<Picture> seen;
            for (const Step& step : scene_.steps) {
                if (step.act == Act::MovePointer || step.act == Act::Pointer)
                    Point(step);
                else
                    Draw(step);
                if (step.act == Act::MovePointer && step.a < 0)
                    seen.push_back(Load(*session_.Virtual(), scene_.format.bits));
            }
            return seen;
        }

        // The VirtualScreen after the last step.
        Picture Last()
        {
            Run();
            return Load(*session_.Virtual(), scene_.format.bits);
        }

    private:
        void Point(const Step& step)
        {
            if (!withPointer_)
                return;
            RECTL bounds;
            if (step.act == Act::MovePointer) {
                session_.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(session_.Screen(), step.a, step.b, &bounds);
                return;
            }
            Random random(step.seed);
            PointerShape shape(random, scene_.format);
            session_.Hook<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(
                session_.Screen(), shape.mask, shape.colours, shape.translation.get(), step.rect.left, step.rect.top,
                step.a, step.b, &bounds, SPS_CHANGE);
        }

        void Draw(const Step& step)
        {
            if (step.act == Act::StretchArea) // a plain stretch reads the screen with the pointer in it
                return;
            if (step.act == Act::SaveAndRestore)
                return SaveAndRestore(step);
            const Drawing drawing = MakeDrawing(step, scene_); // none for what the player does by itself
            if (drawing.run)
                drawing.run(hooks_, session_.Screen());
        }

        // Saved while the pointer stands here, restored while it stands there.
        void SaveAndRestore(const Step& step)
        {
            const auto hook = session_.Hook<PFN_DrvSaveScreenBits>(INDEX_DrvSaveScreenBits);
            RECTL rect = step.rect;
            const ULONG saved = hook(session_.Screen(), SS_SAVE, 0, &rect);
            Step other = step;
            other.act = Act::MovePointer;
            Point(other);
            other.act = Act::Fill;
            Draw(other);
            hook(session_.Screen(), SS_RESTORE, saved, &rect);
        }

        const Scene& scene_;
        const bool withPointer_;
        conformance::Session session_;
        DrawCalls hooks_;
    };

    std::vector<Picture> PicturesOf(const Scene& scene, bool withPointer)
    {
        engine::ResetLinkedDriver();
        return PointerPlay(scene, withPointer).Run();
    }

    TEST_P(PointerScenes, LeaveNoTraceOfThePointer)
    {
        ForEachSeed(ScenesInAll, [](std::uint64_t seed) {
            const Scene scene = RandomPointerScene(GetParam(), seed);
            const std::vector<Picture> with = PicturesOf(scene, true), without = PicturesOf(scene, false);
            ASSERT_FALSE(with.empty());
            for (std::size_t i = 0; i < with.size(); ++i)
                EXPECT_TRUE(with[i] == without[i]) << "KORU_SEED=" << seed << ", hidden for the " << i + 1 << ". time\n"
                                                   << ToString(scene);
        });
    }

    // Guards the test itself: a pointer that is shown does change the picture.
    TEST_P(PointerScenes, ShowThePointerWhileItIsNotHidden)
    {
        std::size_t differing = 0;
        for (std::uint64_t seed = 0; seed < 20; ++seed) {
            Scene scene = RandomPointerScene(GetParam(), seed);
            scene.steps.pop_back();
            for (Step& step : scene.steps)
                if (step.act == Act::MovePointer)
                    step.a = std::abs(step.a) % scene.width;
            scene.steps.push_back({Act::Pointer, 0, 2, 2, {}, {}, {}, static_cast<ULONG>(seed)});
            engine::ResetLinkedDriver();
            const Picture with = PointerPlay(scene, true).Last();
            engine::ResetLinkedDriver();
            differing += with != PointerPlay(scene, false).Last();
        }
        EXPECT_GE(differing, 10u);
    }

    INSTANTIATE_TEST_SUITE_P(Cursor, PointerScenes, testing::ValuesIn(Formats), NameOfFormat);

} // namespace
} // namespace property
