// One harness for every drawing hook, kind of clip and pixel format: what a call changes on the VirtualScreen
// is what reaches the RealScreen, and nothing else does.

#include <optional>
#include <tuple>

#include "tests/conformance/core_setups.h"
#include "tests/conformance/every_hook_draws.h"

namespace conformance {
namespace {

    constexpr ULONG Background = 0, SourceSeed = 1;

    // Calls that by design show another rectangle than the one they paint. The first is in units of a
    // sixteenth of a pixel, (2, 2) to (44, 40), cut to the screen; the second is the rectangle that is read.
    struct ShownOtherwise {
        const char* hook;
        Clip clip;
        RECTL shown;
    };
    const ShownOtherwise shownOtherwise[] = {
        {"StrokePath", Clip::None, {32, 32, 64, 48}},        {"FillPath", Clip::None, {32, 32, 64, 48}},
        {"StrokeAndFillPath", Clip::None, {32, 32, 64, 48}}, {"PlgBlt", Clip::None, {8, 8, 24, 20}},
        {"PlgBlt", Clip::Trivial, {8, 8, 24, 20}},           {"PlgBlt", Clip::Rectangle, {12, 10, 24, 20}},
        {"PlgBlt", Clip::Complex, {12, 10, 24, 20}},
    };

    bool Contains(const RECTL& rectangle, LONG x, LONG y)
    {
        return x >= rectangle.left && x < rectangle.right && y >= rectangle.top && y < rectangle.bottom;
    }

    bool Contains(const engine::ClipObject* clip, LONG x, LONG y)
    {
        if (!clip || clip->rectangles.empty())
            return !clip || Contains(clip->rclBounds, x, y);
        for (const RECTL& rectangle : clip->rectangles)
            if (Contains(rectangle, x, y))
                return true;
        return false;
    }

    // The pixels that differ, as coordinates.
    using Pixels = std::vector<std::pair<LONG, LONG>>;
    Pixels Differences(const engine::Surface& first, const engine::Surface& second)
    {
        Pixels pixels;
        for (LONG y = 0; y < first.sizlBitmap.cy; ++y)
            for (LONG x = 0; x < first.sizlBitmap.cx; ++x)
                if (first.Pixel(x, y) != second.Pixel(x, y))
                    pixels.emplace_back(x, y);
        return pixels;
    }

    using EveryHookParam = std::tuple<HookRow, Clip, ULONG>;

    class EveryHook : public testing::TestWithParam<EveryHookParam> {
    protected:
        EveryHook()
            : session(InMode({64, 48, Depth()}))
            , clip(MakeClip(std::get<Clip>(GetParam())))
        {
            picture = MakePattern(Layout(), SourceSeed);
            before = MakePattern(Layout(), Background);
            ClearScreen();
        }
        static const HookRow& Row() { return std::get<HookRow>(GetParam()); }
        static ULONG Depth() { return std::get<ULONG>(GetParam()); }
        const engine::PixelLayout& Layout() { return session.Device().Layout(); }

        void ClearScreen()
        {
            FillWithPattern(*session.Virtual(), Background);
            FillWithPattern(*session.Real(), Background);
        }
        BOOL Draw(SURFOBJ* target, SURFOBJ* source)
        {
            session.records.clear();
            return Row().draw({session.Driver(), target, source, clip.get(), LargestPixel(Layout())});
        }
        engine::Surface* DeviceBitmap(ULONG seed)
        {
            engine::Surface* const bitmap = engine::FindSurface(session.Device().CreateCompatibleBitmap({64, 48}));
            EXPECT_EQ(bitmap->iType, STYPE_DEVBITMAP);
            FillWithPattern(*Behind(bitmap), seed);
            return bitmap;
        }

        // What this case must show; nothing: all that it changes.
        static std::optional<RECTL> Shown()
        {
            for (const ShownOtherwise& row : shownOtherwise)
                if (std::string(row.hook) == Row().name && row.clip == std::get<Clip>(GetParam()))
                    return row.shown;
            return std::nullopt;
        }
        void ExpectScreensAgree()
        {
            const auto shown = Shown();
            if (!shown) {
                EXPECT_TRUE(SamePixels(*session.Virtual(), *session.Real()));
                return;
            }
            engine::Surface* const expected = MakePattern(Layout(), Background);
            for (LONG y = shown->top; y < shown->bottom; ++y)
                for (LONG x = shown->left; x < shown->right; ++x)
                    expected->SetPixel(x, y, session.Virtual()->Pixel(x, y));
            EXPECT_TRUE(SamePixels(*expected, *session.Real()));
        }

        Session session;
        std::unique_ptr<engine::ClipObject> clip;
        engine::Surface* picture;
        engine::Surface* before;
    };

    TEST_P(EveryHook, ShowsWhatItChangesInsideItsClip)
    {
        EXPECT_EQ(Draw(session.Screen(), picture), TRUE);
        const SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.CallType(), Row().recordType);
        EXPECT_EQ(record.flag, 0);

        const Pixels changed = Differences(*before, *session.Virtual());
        ASSERT_FALSE(changed.empty()) << "the case drew nothing";
        for (const auto& [x, y] : changed)
            ASSERT_TRUE(Contains(clip.get(), x, y)) << "(" << x << ", " << y << ") lies outside of the clip";
        ExpectScreensAgree();
        EXPECT_FALSE(Differences(*before, *session.Real()).empty()) << "nothing reached the screen";
    }

    TEST_P(EveryHook, LeavesTheScreenAloneOnADeviceBitmap)
    {
        engine::Surface* const bitmap = DeviceBitmap(Background);
        EXPECT_EQ(Draw(bitmap, picture), TRUE);
        EXPECT_EQ(session.TakeOnlyRecord().flag, 1);
        EXPECT_TRUE(SamePixels(*before, *session.Virtual()));
        EXPECT_TRUE(SamePixels(*before, *session.Real()));

        EXPECT_EQ(Draw(session.Screen(), picture), TRUE);
        EXPECT_TRUE(SamePixels(*Behind(bitmap), *session.Virtual())) << "it has the same picture as the screen";
    }

    TEST_P(EveryHook, ReadsDeviceBitmapsAndTheScreenLikeBitmaps)
    {
        if (!Row().hasSource)
            return;
        EXPECT_EQ(Draw(session.Screen(), picture), TRUE);
        engine::Surface* const fromPicture = MakePattern(Layout(), Background);
        CopyPixels(*fromPicture, *session.Virtual());

        ClearScreen();
        EXPECT_EQ(Draw(session.Screen(), DeviceBitmap(SourceSeed)), TRUE);
        EXPECT_EQ(session.records.back().flag, 0);
        EXPECT_TRUE(SamePixels(*fromPicture, *session.Virtual()));
        ExpectScreensAgree();

        engine::Surface* const bitmap = DeviceBitmap(Background);
        FillWithPattern(*session.Virtual(), SourceSeed);
        EXPECT_EQ(Draw(bitmap, session.Screen()), TRUE);
        EXPECT_EQ(session.TakeOnlyRecord().flag, 1);
        EXPECT_TRUE(SamePixels(*fromPicture, *Behind(bitmap)));
    }

    // A pointer of 8 x 8 pixels, above black and below white, as tall again in two masks.
    SURFOBJ* PointerMask()
    {
        engine::Surface* const mask = engine::MakeBitmap({8, 16}, engine::PixelLayout::Default(BMF_1BPP));
        for (LONG y = 12; y < 16; ++y)
            for (LONG x = 0; x < 8; ++x)
                mask->SetPixel(x, y, 1);
        return mask;
    }
    ULONG ShowPointer(Session& session, LONG x, LONG y)
    {
        return session.Hook<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(session.Screen(), PointerMask(), nullptr,
                                                                              nullptr, 0, 0, x, y, nullptr, SPS_CHANGE);
    }
    void MovePointer(Session& session, LONG x, LONG y)
    {
        session.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(session.Screen(), x, y, nullptr);
    }

    TEST_P(EveryHook, DrawsBeneathThePointer)
    {
        EXPECT_EQ(Draw(session.Screen(), picture), TRUE);
        engine::Surface* const withoutPointer = MakePattern(Layout(), Background);
        CopyPixels(*withoutPointer, *session.Virtual());

        ClearScreen();
        ShowPointer(session, 9, 7);
        EXPECT_EQ(Draw(session.Screen(), picture), TRUE);
        EXPECT_FALSE(SamePixels(*withoutPointer, *session.Virtual())) << "the pointer lies above it again";
        MovePointer(session, -1, -1);
        EXPECT_TRUE(SamePixels(*withoutPointer, *session.Virtual()));
        if (!Shown()) {
            EXPECT_TRUE(SamePixels(*withoutPointer, *session.Real()));
        }
    }

    const ULONG depths[] = {1, 4, 8, 15, 16, 24, 32};

    std::vector<EveryHookParam> AllCases()
    {
        std::vector<EveryHookParam> cases;
        for (const HookRow& row : HookRows())
            for (const Clip clip : {Clip::None, Clip::Trivial, Clip::Rectangle, Clip::Complex})
                for (const ULONG depth : depths)
                    if (clip != Clip::None || std::string(row.name) != "Paint") // it draws what its clip says
                        cases.emplace_back(row, clip, depth);
        return cases;
    }

    INSTANTIATE_TEST_SUITE_P(Draws, EveryHook, testing::ValuesIn(AllCases()), [](const auto& info) {
        return std::string(std::get<HookRow>(info.param).name) + NameOf(std::get<Clip>(info.param)) + "At"
            + std::to_string(std::get<ULONG>(info.param)) + "Bits";
    });

    class EveryDepth : public testing::TestWithParam<ULONG> {
    protected:
        EveryDepth()
            : session(InMode({64, 48, GetParam()}))
        {
            before = MakePattern(session.Device().Layout(), Background);
            FillWithPattern(*session.Virtual(), Background);
            FillWithPattern(*session.Real(), Background);
        }
        ULONG SaveBits(ULONG mode, ULONG ident, RECTL part)
        {
            const auto save = session.Hook<PFN_DrvSaveScreenBits>(INDEX_DrvSaveScreenBits);
            return save(session.Screen(), mode, ident, &part);
        }
        Session session;
        engine::Surface* before;
    };

    TEST_P(EveryDepth, ShowsSavedScreenBitsAgain)
    {
        constexpr RECTL part = {3, 2, 61, 47};
        const ULONG ident = SaveBits(SS_SAVE, 0, part);
        ASSERT_NE(ident, 0u);
        EXPECT_EQ(session.TakeOnlyRecord().flag, 1);
        engine::Surface* const picture = MakePattern(session.Device().Layout(), SourceSeed);
        for (const HookRow& row : HookRows()) {
            const auto clip = MakeClip(Clip::Rectangle);
            row.draw({session.Driver(), session.Screen(), picture, clip.get(), 1});
        }
        EXPECT_FALSE(SamePixels(*before, *session.Virtual()));
        session.records.clear();
        EXPECT_EQ(SaveBits(SS_RESTORE, ident, part), 1u);
        EXPECT_EQ(session.TakeOnlyRecord().flag, 1);
        EXPECT_TRUE(SamePixels(*before, *session.Virtual()));
        EXPECT_TRUE(SamePixels(*before, *session.Real()));
    }

    TEST_P(EveryDepth, ShowsThePointerWhereverItGoesAndNothingOfItLater)
    {
        EXPECT_EQ(ShowPointer(session, 20, 20), SPS_ACCEPT_NOEXCLUDE);
        EXPECT_EQ(session.TakeOnlyRecord().flag, 0);
        EXPECT_EQ(Differences(*before, *session.Real()).empty(), false);
        for (const auto& [x, y] : Differences(*before, *session.Real()))
            EXPECT_TRUE(Contains({20, 20, 28, 28}, x, y));
        for (const POINTL& place : {POINTL{22, 23}, POINTL{0, 0}, POINTL{60, 44}, POINTL{63, 47}, POINTL{31, 9}}) {
            MovePointer(session, place.x, place.y);
            EXPECT_EQ(session.TakeOnlyRecord().flag, 0);
            for (const auto& [x, y] : Differences(*before, *session.Real()))
                EXPECT_TRUE(Contains({place.x, place.y, place.x + 8, place.y + 8}, x, y)) << x << ", " << y;
            EXPECT_TRUE(SamePixels(*session.Virtual(), *session.Real()));
        }
        MovePointer(session, -1, -1);
        EXPECT_TRUE(SamePixels(*before, *session.Virtual()));
        EXPECT_TRUE(SamePixels(*before, *session.Real()));
    }

    INSTANTIATE_TEST_SUITE_P(Screens, EveryDepth, testing::ValuesIn(depths),
                             [](const auto& info) { return "At" + std::to_string(info.param) + "Bits"; });

} // namespace
} // namespace conformance
