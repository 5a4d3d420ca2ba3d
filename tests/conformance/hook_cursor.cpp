// The driver's own pointer stays out of what calls draw and read, and is on top again afterwards.

#include "tests/conformance/core_setups.h"
#include "tests/conformance/hook_calls.h"

namespace conformance {
namespace {

    constexpr FIX Fixed(LONG pixels)
    {
        return pixels * 16;
    }

    POINTL origin = {0, 0};

    // A white pointer of 6 x 6 pixels: AND 0, XOR 1.
    void ShowPointer(Session& session, LONG x, LONG y)
    {
        engine::Surface* const mask = engine::MakeBitmap({6, 12}, engine::PixelLayout::Default(BMF_1BPP));
        for (LONG row = 6; row < 12; ++row)
            for (LONG column = 0; column < 6; ++column)
                mask->SetPixel(column, row, 1);
        session.Hook<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(session.Screen(), mask, nullptr, nullptr, 0, 0,
                                                                       x, y, nullptr, SPS_CHANGE);
    }
    void HidePointer(Session& session)
    {
        session.Hook<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(session.Screen(), -1, -1, nullptr);
    }
    bool IsPointerAt(const engine::Surface& screen, LONG x, LONG y)
    {
        for (LONG row = 0; row < 6; ++row)
            for (LONG column = 0; column < 6; ++column)
                if ((screen.Pixel(x + column, y + row) & 0xFFFFFF) != 0xFFFFFF)
                    return false;
        return true;
    }

    class PointerUnderDrawing : public testing::TestWithParam<DrawingHook> { };

    TEST_P(PointerUnderDrawing, IsOnTopAndLeavesNoTrace)
    {
        Session session;
        engine::Surface* const expected = MakePicture(session, {64, 48}, 0x102030);
        FillRectangle(session, session.Screen(), {0, 0, 64, 48}, nullptr, 0x102030);
        ShowPointer(session, 7, 7);
        GetParam().call(session, expected);
        EXPECT_EQ(GetParam().call(session, session.Screen()), TRUE);
        EXPECT_TRUE(IsPointerAt(*session.Virtual(), 7, 7));
        EXPECT_TRUE(IsPointerAt(*session.Real(), 7, 7));
        HidePointer(session);
        EXPECT_TRUE(SamePixels(*session.Virtual(), *expected));
        EXPECT_TRUE(SamePixels(*session.Real(), *expected));
    }

    INSTANTIATE_TEST_SUITE_P(Hooks, PointerUnderDrawing, testing::ValuesIn(DrawingHooks()), NameOf);

    // Calls whose shown rectangle is not where they paint.
    struct OddCall {
        const char* name;
        POINTL pointer; // over the painted place
        BOOL (*call)(Session& session, SURFOBJ* target);
    };

    engine::Brush& Solid()
    {
        static engine::Brush brush = engine::Brush::Solid(Orange);
        return brush;
    }

    engine::Path LevelLine(LONG y)
    {
        engine::Path path;
        path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH, {{Fixed(4), Fixed(y)}, {Fixed(40), Fixed(y)}});
        return path;
    }

    BOOL StrokeLevelLine(Session& session, SURFOBJ* target)
    {
        engine::Path path = LevelLine(10);
        LINEATTRS line = {};
        line.elWidth.l = 1;
        return session.Hook<PFN_DrvStrokePath>(INDEX_DrvStrokePath)(target, &path, nullptr, nullptr, &Solid(), &origin,
                                                                    &line, CopyPen);
    }

    // Covers the rows 12 to 35.
    BOOL StrokeWideLine(Session& session, SURFOBJ* target)
    {
        engine::Path path = LevelLine(24);
        LINEATTRS line = {};
        line.fl = LA_GEOMETRIC;
        line.iEndCap = ENDCAP_BUTT;
        line.elWidth.e = 24.0f;
        line.eMiterLimit = 10.0f;
        return session.Hook<PFN_DrvStrokePath>(INDEX_DrvStrokePath)(target, &path, nullptr, nullptr, &Solid(), &origin,
                                                                    &line, CopyPen);
    }

    // Covers the same rows.
    BOOL StrokeAndFillWideLine(Session& session, SURFOBJ* target)
    {
        engine::Path path = LevelLine(24);
        LINEATTRS line = {};
        line.fl = LA_GEOMETRIC;
        line.iEndCap = ENDCAP_BUTT;
        line.elWidth.e = 24.0f;
        line.eMiterLimit = 10.0f;
        return session.Hook<PFN_DrvStrokeAndFillPath>(INDEX_DrvStrokeAndFillPath)(
            target, &path, nullptr, nullptr, &Solid(), &line, &Solid(), &origin, CopyPen, FP_WINDINGMODE);
    }

    BOOL StretchMirrored(Session& session, SURFOBJ* target)
    {
        RECTL to = {40, 30, 20, 10}, from = {0, 0, 10, 10};
        return session.Hook<PFN_DrvStretchBlt>(INDEX_DrvStretchBlt)(target, MakePicture(session, {10, 10}), nullptr,
                                                                    nullptr, nullptr, nullptr, nullptr, &to, &from,
                                                                    nullptr, COLORONCOLOR);
    }

    BOOL StretchRopMirrored(Session& session, SURFOBJ* target)
    {
        RECTL to = {40, 30, 20, 10}, from = {0, 0, 10, 10};
        return session.Hook<PFN_DrvStretchBltROP>(INDEX_DrvStretchBltROP)(
            target, MakePicture(session, {10, 10}), nullptr, nullptr, nullptr, nullptr, nullptr, &to, &from, nullptr,
            COLORONCOLOR, nullptr, 0xCCCC);
    }

    BOOL FillTriangle(Session& session, SURFOBJ* target)
    {
        engine::Path path;
        path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH | PD_CLOSEFIGURE,
                 {{Fixed(2), Fixed(2)}, {Fixed(30), Fixed(4)}, {Fixed(10), Fixed(30)}});
        return session.Hook<PFN_DrvFillPath>(INDEX_DrvFillPath)(target, &path, nullptr, &Solid(), &origin, CopyPen,
                                                                FP_WINDINGMODE);
    }

    // Reads (0, 0, 10, 10), paints around (40, 30); the fourth corner lies farthest to the right.
    BOOL PaintParallelogram(Session& session, SURFOBJ* target)
    {
        RECTL read = {0, 0, 10, 10};
        POINTFIX corners[3] = {{Fixed(30), Fixed(20)}, {Fixed(44), Fixed(24)}, {Fixed(34), Fixed(36)}};
        return session.Hook<PFN_DrvPlgBlt>(INDEX_DrvPlgBlt)(target, MakePicture(session, {10, 10}), nullptr, nullptr,
                                                            nullptr, nullptr, nullptr, corners, &read, nullptr,
                                                            COLORONCOLOR);
    }

    BOOL WriteOnLargerGround(Session& session, SURFOBJ* target)
    {
        engine::Text text;
        text.AddGlyph(1, {12, 16}, {0, -2}, {2, 2}, {0xC0, 0xC0});
        text.rclBkGround = {10, 12, 14, 18};
        engine::Font font;
        RECTL opaque = {4, 4, 50, 40};
        return session.Hook<PFN_DrvTextOut>(INDEX_DrvTextOut)(target, &text, &font, nullptr, nullptr, &opaque, &Solid(),
                                                              &Solid(), &origin, CopyPen);
    }

    class OddPlaces : public testing::TestWithParam<OddCall> { };

    TEST_P(OddPlaces, LeaveNoTraceOfThePointer)
    {
        Session session;
        engine::Surface* const expected = MakePicture(session, {64, 48}, 0x102030);
        FillRectangle(session, session.Screen(), {0, 0, 64, 48}, nullptr, 0x102030);
        const POINTL at = GetParam().pointer;
        ShowPointer(session, at.x, at.y);
        GetParam().call(session, expected);
        GetParam().call(session, session.Screen());
        EXPECT_TRUE(IsPointerAt(*session.Virtual(), at.x, at.y));
        HidePointer(session);
        EXPECT_TRUE(SamePixels(*session.Virtual(), *expected));
    }

    INSTANTIATE_TEST_SUITE_P(Calls, OddPlaces,
                             testing::Values(OddCall{"LevelLineBelowThePointersTop", {20, 10}, StrokeLevelLine},
                                             OddCall{"LevelLineAtThePointersLastRow", {20, 5}, StrokeLevelLine},
                                             OddCall{"LevelLinesLastPixel", {39, 8}, StrokeLevelLine},
                                             OddCall{"TopOfAWideLine", {20, 7}, StrokeWideLine},
                                             OddCall{"BottomOfAWideLine", {20, 35}, StrokeWideLine},
                                             OddCall{"TopOfAFilledWideLine", {20, 7}, StrokeAndFillWideLine},
                                             OddCall{"BottomOfAFilledWideLine", {20, 35}, StrokeAndFillWideLine},
                                             OddCall{"MirroredStretch", {24, 14}, StretchMirrored},
                                             OddCall{"MirroredStretchROP", {24, 14}, StretchRopMirrored},
                                             OddCall{"FilledTriangle", {10, 10}, FillTriangle},
                                             OddCall{"Parallelogram", {36, 26}, PaintParallelogram},
                                             OddCall{"ParallelogramsFourthCorner", {46, 38}, PaintParallelogram},
                                             OddCall{"TextGround", {30, 30}, WriteOnLargerGround}),
                             [](const auto& info) { return info.param.name; });

    class ReadingTheScreen : public testing::Test {
    protected:
        ReadingTheScreen()
        {
            FillRectangle(session, session.Screen(), {0, 0, 64, 48}, nullptr, 0x102030);
            ShowPointer(session, 4, 4);
        }
        bool HasPointer(const engine::Surface& picture)
        {
            for (LONG y = 0; y < picture.sizlBitmap.cy; ++y)
                for (LONG x = 0; x < picture.sizlBitmap.cx; ++x)
                    if ((picture.Pixel(x, y) & 0xFFFFFF) == 0xFFFFFF)
                        return true;
            return false;
        }
        Session session;
        RECTL from = {0, 0, 12, 12}, to = {30, 30, 42, 42};
    };

    TEST_F(ReadingTheScreen, CopiesNoPointer)
    {
        engine::Surface* const picture = MakePicture(session, {64, 48}, 0);
        POINTL corner = {0, 0};
        EXPECT_EQ(
            session.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits)(picture, session.Screen(), nullptr, nullptr, &to, &corner),
            TRUE);
        EXPECT_FALSE(HasPointer(*picture));
        EXPECT_EQ(picture->Pixel(34, 34), 0x102030u);
        EXPECT_TRUE(IsPointerAt(*session.Virtual(), 4, 4));
    }

    TEST_F(ReadingTheScreen, BlitsNoPointer)
    {
        POINTL corner = {0, 0};
        session.Hook<PFN_DrvBitBlt>(INDEX_DrvBitBlt)(session.Screen(), session.Screen(), nullptr, nullptr, nullptr, &to,
                                                     &corner, nullptr, nullptr, nullptr, 0xCCCC);
        EXPECT_TRUE(IsPointerAt(*session.Virtual(), 4, 4));
        HidePointer(session);
        EXPECT_FALSE(HasPointer(*session.Virtual()));
        EXPECT_FALSE(HasPointer(*session.Real()));
    }

    TEST_F(ReadingTheScreen, BlendsNoPointer)
    {
        BLENDOBJ blend = {{AC_SRC_OVER, 0, 255, 0}};
        session.Hook<PFN_DrvAlphaBlend>(INDEX_DrvAlphaBlend)(session.Screen(), session.Screen(), nullptr, nullptr, &to,
                                                             &from, &blend);
        HidePointer(session);
        EXPECT_FALSE(HasPointer(*session.Virtual()));
    }

    TEST_F(ReadingTheScreen, CopiesNoPointerThroughAColourKey)
    {
        session.Hook<PFN_DrvTransparentBlt>(INDEX_DrvTransparentBlt)(session.Screen(), session.Screen(), nullptr,
                                                                     nullptr, &to, &from, 5, 0);
        HidePointer(session);
        EXPECT_FALSE(HasPointer(*session.Virtual()));
    }

    TEST_F(ReadingTheScreen, StretchesNoPointerWithARasterOperation)
    {
        RECTL mirrored = {12, 12, 0, 0};
        session.Hook<PFN_DrvStretchBltROP>(INDEX_DrvStretchBltROP)(session.Screen(), session.Screen(), nullptr, nullptr,
                                                                   nullptr, nullptr, nullptr, &to, &mirrored, nullptr,
                                                                   COLORONCOLOR, nullptr, 0xCCCC);
        HidePointer(session);
        EXPECT_FALSE(HasPointer(*session.Virtual()));
    }

    TEST_F(ReadingTheScreen, StretchesAPointerThatLiesOverTheSourceAlone)
    {
        session.Hook<PFN_DrvStretchBlt>(INDEX_DrvStretchBlt)(session.Screen(), session.Screen(), nullptr, nullptr,
                                                             nullptr, nullptr, nullptr, &to, &from, nullptr,
                                                             COLORONCOLOR);
        HidePointer(session);
        EXPECT_TRUE(HasPointer(*session.Virtual())) << "the destination alone is looked at";
    }

    TEST_F(ReadingTheScreen, ReadsNoPointerIntoAParallelogram)
    {
        POINTFIX corners[3] = {{Fixed(30), Fixed(30)}, {Fixed(42), Fixed(30)}, {Fixed(30), Fixed(42)}};
        session.Hook<PFN_DrvPlgBlt>(INDEX_DrvPlgBlt)(session.Screen(), session.Screen(), nullptr, nullptr, nullptr,
                                                     nullptr, nullptr, corners, &from, nullptr, COLORONCOLOR);
        HidePointer(session);
        EXPECT_FALSE(HasPointer(*session.Virtual()));
    }

    TEST_F(ReadingTheScreen, SavesNoPointerAndShowsItAfterRestoring)
    {
        RECTL part = {2, 2, 20, 20};
        const auto save = session.Hook<PFN_DrvSaveScreenBits>(INDEX_DrvSaveScreenBits);
        const ULONG ident = save(session.Screen(), SS_SAVE, 0, &part);
        EXPECT_FALSE(HasPointer(*engine::FindSurface(reinterpret_cast<HSURF>(ident))));
        EXPECT_TRUE(IsPointerAt(*session.Virtual(), 4, 4));
        FillBitmap(*session.Real(), 0);
        EXPECT_EQ(save(session.Screen(), SS_RESTORE, ident, &part), 1u);
        EXPECT_TRUE(IsPointerAt(*session.Real(), 4, 4));
        HidePointer(session);
        EXPECT_FALSE(HasPointer(*session.Virtual()));
    }

    TEST_F(ReadingTheScreen, LeavesThePointerAloneForADeviceBitmap)
    {
        SURFOBJ* const bitmap = engine::FindSurface(session.Device().CreateCompatibleBitmap({64, 48}));
        EXPECT_EQ(ShownBy(session, [&] { FillRectangle(session, bitmap, {0, 0, 64, 48}); }), "nothing");
        EXPECT_EQ(session.Virtual()->Pixel(5, 5), 0x00445566u) << "nothing was saved or put back there";
    }

} // namespace
} // namespace conformance
