// Random scenes: after every call and command both screens must show what the plain model shows.
// KORU_SCENES sets how many run in all (1000 until told); KORU_SEED replays one of them, for instance
//     KORU_SEED=17 property_tests --gtest_filter='Magnifier/Scenes.*/depth_15'

#include <set>

#include "tests/property/scene_player.h"
#include "tests/property/test_formats.h"

namespace property {
namespace {

    class Scenes : public testing::TestWithParam<Format> { };

    void PlayScene(const Format& format, std::uint64_t seed)
    {
        const Scene scene = RandomScene(format, seed);
        if (!Play(scene))
            return;
        const Scene small = CutDown(scene);
        const auto difference = Play(small);
        ADD_FAILURE() << "KORU_SEED=" << seed << "\n"
                      << ToString(small) << (difference ? difference->text : "not seen again");
    }

    TEST_P(Scenes, LookAsThePlainModelSays)
    {
        ForEachSeed(Setting("KORU_SCENES", 1000), [](std::uint64_t seed) { PlayScene(GetParam(), seed); });
    }

    // Guards the test: nothing that a scene can hold is never drawn by lot.
    TEST(RandomScenes, HoldEveryAct)
    {
        std::set<Act> acts;
        for (std::uint64_t seed = 0; seed < 200; ++seed)
            for (const Step& step : RandomScene({32, 32}, seed).steps)
                acts.insert(step.act);
        EXPECT_EQ(acts.size(), static_cast<std::size_t>(Act::Count));
    }

    INSTANTIATE_TEST_SUITE_P(Magnifier, Scenes, testing::ValuesIn(Formats), NameOfFormat);

} // namespace
} // namespace property
