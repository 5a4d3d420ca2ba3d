// Which rectangle of the screen each hook shows, and tests against the dark zones.

#include "tests/conformance/core_setups.h"
#include "tests/conformance/hook_calls.h"

namespace conformance {
namespace {

    constexpr FIX Fixed(LONG pixels)
    {
        return pixels * 16;
    }

    POINTL origin = {0, 0};

    struct BoundsCase {
        const char* name;
        std::string shown;
        void (*call)(Session& session, CLIPOBJ* clip);
        const RECTL* clip; // null: none
    };

    const RECTL clipToTheLeft = {0, 0, 20, 48};
    const RECTL clipElsewhere = {40, 30, 60, 40};
    const RECTL clipLarge = {2, 3, 60, 44};

    engine::Brush& Solid()
    {
        static engine::Brush brush = engine::Brush::Solid(Orange);
        return brush;
    }

    SURFOBJ* Source(Session& session)
    {
        return MakePicture(session, {64, 48});
    }

    void BitBlt(Session& session, CLIPOBJ* clip)
    {
        FillRectangle(session, session.Screen(), {10, 12, 30, 22}, clip);
    }
    void CopyBits(Session& session, CLIPOBJ* clip)
    {
        RECTL to = {10, 12, 30, 22};
        session.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits)(session.Screen(), Source(session), clip, nullptr, &to,
                                                         &origin);
    }
    void StretchTo(Session& session, CLIPOBJ* clip, RECTL to)
    {
        RECTL from = {0, 0, 5, 5};
        session.Hook<PFN_DrvStretchBlt>(INDEX_DrvStretchBlt)(session.Screen(), Source(session), nullptr, clip, nullptr,
                                                             nullptr, nullptr, &to, &from, nullptr, COLORONCOLOR);
    }
    void StretchBlt(Session& session, CLIPOBJ* clip)
    {
        StretchTo(session, clip, {10, 12, 30, 22});
    }
    void StretchMirrored(Session& session, CLIPOBJ* clip)
    {
        StretchTo(session, clip, {30, 22, 10, 12});
    }
    void StretchRopMirrored(Session& session, CLIPOBJ* clip)
    {
        RECTL to = {30, 12, 10, 22}, from = {0, 0, 5, 5};
        session.Hook<PFN_DrvStretchBltROP>(INDEX_DrvStretchBltROP)(session.Screen(), Source(session), nullptr, clip,
                                                                   nullptr, nullptr, nullptr, &to, &from, nullptr,
                                                                   COLORONCOLOR, nullptr, 0xCCCC);
    }
    void AlphaBlend(Session& session, CLIPOBJ* clip)
    {
        RECTL to = {10, 12, 30, 22}, from = {0, 0, 20, 10};
        BLENDOBJ blend = {{AC_SRC_OVER, 0, 255, 0}};
        session.Hook<PFN_DrvAlphaBlend>(INDEX_DrvAlphaBlend)(session.Screen(), Source(session), clip, nullptr, &to,
                                                             &from, &blend);
    }
    void TransparentBlt(Session& session, CLIPOBJ* clip)
    {
        RECTL to = {10, 12, 30, 22}, from = {0, 0, 20, 10};
        session.Hook<PFN_DrvTransparentBlt>(INDEX_DrvTransparentBlt)(session.Screen(), Source(session), clip, nullptr,
                                                                     &to, &from, 5, 0);
    }
    void GradientFill(Session& session, CLIPOBJ* clip)
    {
        RECTL extents = {10, 12, 30, 22};
        TRIVERTEX corners[2] = {{12, 14, 0xFF00, 0, 0, 0}, {20, 20, 0, 0xFF00, 0, 0}};
        GRADIENT_RECT mesh = {0, 1};
        session.Hook<PFN_DrvGradientFill>(INDEX_DrvGradientFill)(session.Screen(), clip, nullptr, corners, 2, &mesh, 1,
                                                                 &extents, &origin, GRADIENT_FILL_RECT_V);
    }
    void PlgBlt(Session& session, CLIPOBJ* clip)
    {
        RECTL read = {10, 12, 30, 22};
        POINTFIX corners[3] = {{Fixed(40), Fixed(30)}, {Fixed(50), Fixed(30)}, {Fixed(40), Fixed(40)}};
        session.Hook<PFN_DrvPlgBlt>(INDEX_DrvPlgBlt)(session.Screen(), Source(session), nullptr, clip, nullptr, nullptr,
                                                     nullptr, corners, &read, nullptr, COLORONCOLOR);
    }
    void LineTo(Session& session, CLIPOBJ* clip)
    {
        RECTL bounds = {10, 12, 30, 22};
        session.Hook<PFN_DrvLineTo>(INDEX_DrvLineTo)(session.Screen(), clip, &Solid(), 12, 14, 20, 14, &bounds,
                                                     CopyPen);
    }
    void Paint(Session& session, CLIPOBJ* clip)
    {
        session.Hook<PFN_DrvPaint>(INDEX_DrvPaint)(session.Screen(), clip, &Solid(), &origin, NoOperation);
    }

    // From (1, 1) to (3, 2): in units of a sixteenth (16, 16) to (48, 32).
    struct SmallPath {
        engine::Path path;
        LINEATTRS line = {};
        SmallPath()
        {
            line.elWidth.l = 1;
            path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH | PD_CLOSEFIGURE,
                     {{Fixed(1), Fixed(1)}, {Fixed(3), Fixed(1)}, {Fixed(3), Fixed(2)}, {Fixed(1), Fixed(2)}});
        }
    };
    void StrokePath(Session& session, CLIPOBJ* clip)
    {
        SmallPath small;
        session.Hook<PFN_DrvStrokePath>(INDEX_DrvStrokePath)(session.Screen(), &small.path, clip, nullptr, &Solid(),
                                                             &origin, &small.line, NoOperation);
    }
    void FillPath(Session& session, CLIPOBJ* clip)
    {
        SmallPath small;
        session.Hook<PFN_DrvFillPath>(INDEX_DrvFillPath)(session.Screen(), &small.path, clip, &Solid(), &origin,
                                                         NoOperation, FP_WINDINGMODE);
    }
    void StrokeAndFillPath(Session& session, CLIPOBJ* clip)
    {
        SmallPath small;
        session.Hook<PFN_DrvStrokeAndFillPath>(INDEX_DrvStrokeAndFillPath)(session.Screen(), &small.path, clip, nullptr,
                                                                           &Solid(), &small.line, &Solid(), &origin,
                                                                           NoOperation, FP_WINDINGMODE);
    }

    void TextOut(Session& session, CLIPOBJ* clip, STROBJ* text, RECTL* opaque)
    {
        engine::Font font;
        session.Hook<PFN_DrvTextOut>(INDEX_DrvTextOut)(session.Screen(), text, &font, clip, nullptr, opaque, &Solid(),
                                                       &Solid(), &origin, CopyPen);
    }
    void TextWithBackground(Session& session, CLIPOBJ* clip)
    {
        engine::Text text;
        text.AddGlyph(1, {12, 16}, {0, -2}, {2, 2}, {0xC0, 0xC0});
        text.rclBkGround = {10, 12, 30, 22};
        TextOut(session, clip, &text, nullptr);
    }
    void TextWithLargerOpaqueRectangle(Session& session, CLIPOBJ* clip)
    {
        engine::Text text;
        text.AddGlyph(1, {12, 16}, {0, -2}, {2, 2}, {0xC0, 0xC0});
        text.rclBkGround = {10, 12, 30, 22};
        RECTL opaque = {4, 4, 50, 40};
        TextOut(session, clip, &text, &opaque);
    }

    const BoundsCase boundsCases[] = {
        {"BitBltWhole", "10 12 30 22", BitBlt, nullptr},
        {"BitBltCut", "10 12 20 22", BitBlt, &clipToTheLeft},
        {"CopyBitsWhole", "10 12 30 22", CopyBits, nullptr},
        {"CopyBitsCut", "10 12 20 22", CopyBits, &clipToTheLeft},
        {"StretchBltWhole", "10 12 30 22", StretchBlt, nullptr},
        {"StretchBltCut", "10 12 20 22", StretchBlt, &clipToTheLeft},
        {"StretchBltMirrored", "10 12 30 22", StretchMirrored, nullptr},
        {"StretchBltMirroredCut", "10 12 20 22", StretchMirrored, &clipToTheLeft},
        {"StretchBltROPMirrored", "10 12 30 22", StretchRopMirrored, nullptr},
        {"StretchBltROPMirroredCut", "10 12 20 22", StretchRopMirrored, &clipToTheLeft},
        {"AlphaBlendWhole", "10 12 30 22", AlphaBlend, nullptr},
        {"AlphaBlendCut", "10 12 20 22", AlphaBlend, &clipToTheLeft},
        {"TransparentBltWhole", "10 12 30 22", TransparentBlt, nullptr},
        {"TransparentBltCut", "10 12 20 22", TransparentBlt, &clipToTheLeft},
        {"GradientFillTakesItsExtents", "10 12 30 22", GradientFill, nullptr},
        {"GradientFillCut", "10 12 20 22", GradientFill, &clipToTheLeft},
        {"PlgBltTakesTheRectangleItReads", "10 12 30 22", PlgBlt, nullptr},
        {"PlgBltCut", "10 12 20 22", PlgBlt, &clipToTheLeft},
        {"PlgBltCutAway", "nothing", PlgBlt, &clipElsewhere},
        {"LineToTakesTheGivenBounds", "10 12 30 22", LineTo, nullptr},
        {"LineToCut", "10 12 20 22", LineTo, &clipToTheLeft},
        {"LineToCutAway", "nothing", LineTo, &clipElsewhere},
        {"PaintTakesItsClip", "2 3 60 44", Paint, &clipLarge},
        {"StrokePathTakesUnitsForPixels", "16 16 48 32", StrokePath, nullptr},
        {"StrokePathTakesItsClip", "2 3 60 44", StrokePath, &clipLarge},
        {"StrokePathTakesAClipThatMissesIt", "40 30 60 40", StrokePath, &clipElsewhere},
        {"FillPathTakesUnitsForPixels", "16 16 48 32", FillPath, nullptr},
        {"FillPathTakesItsClip", "2 3 60 44", FillPath, &clipLarge},
        {"StrokeAndFillPathTakesUnitsForPixels", "16 16 48 32", StrokeAndFillPath, nullptr},
        {"StrokeAndFillPathTakesItsClip", "2 3 60 44", StrokeAndFillPath, &clipLarge},
        {"TextOutTakesItsClipUncut", "2 3 60 44", TextWithBackground, &clipLarge},
        {"TextOutTakesItsBackground", "10 12 30 22", TextWithBackground, nullptr},
        {"TextOutPrefersItsBackgroundToTheOpaqueRectangle", "10 12 30 22", TextWithLargerOpaqueRectangle, nullptr},
    };

    class HookBounds : public testing::TestWithParam<BoundsCase> {
    protected:
        void Call()
        {
            if (!GetParam().clip)
                return GetParam().call(session, nullptr);
            engine::ClipObject clip(*GetParam().clip);
            GetParam().call(session, &clip);
        }
        Session session;
    };

    TEST_P(HookBounds, AreWhatIsShown)
    {
        EXPECT_EQ(ShownBy(session, [this] { Call(); }), GetParam().shown);
    }

    TEST_P(HookBounds, AreTestedAgainstTheDarkZones)
    {
        RECTL shown = {};
        const std::string& text = GetParam().shown;
        if (std::sscanf(text.c_str(), "%d %d %d %d", &shown.left, &shown.top, &shown.right, &shown.bottom) != 4) {
            session.AddDarkZone({0, 0, 64, 48});
            Call();
            EXPECT_EQ(session.records.size(), 1u) << "what shows nothing is visible";
            return;
        }
        const ULONG zone = session.AddDarkZone(shown);
        Call();
        EXPECT_TRUE(session.records.empty());
        session.Command(4, zone);
        session.AddDarkZone({shown.left, shown.top, shown.right, shown.bottom - 1});
        Call();
        EXPECT_EQ(session.records.size(), 1u);
    }

    INSTANTIATE_TEST_SUITE_P(Hooks, HookBounds, testing::ValuesIn(boundsCases),
                             [](const auto& info) { return info.param.name; });

    TEST(HookBounds, OfTextWithoutStringAreTheOpaqueRectangle)
    {
        Session session;
        engine::Font font;
        RECTL opaque = {4, 5, 50, 40};
        const auto textOut = session.Hook<PFN_DrvTextOut>(INDEX_DrvTextOut);
        EXPECT_EQ(ShownBy(session,
                          [&] {
                              textOut(session.Screen(), nullptr, &font, nullptr, nullptr, &opaque, &Solid(), &Solid(),
                                      &origin, CopyPen);
                          }),
                  "4 5 50 40");
    }

    // Calls without what they need draw nothing, touch nothing, and are captured.
    TEST(IncompleteCalls, AreRefusedAndCaptured)
    {
        Session session;
        session.AddDarkZone({0, 0, 64, 48});
        SURFOBJ* const screen = session.Screen();
        SURFOBJ* const source = Source(session);
        RECTL to = {10, 12, 30, 22};
        SmallPath small;
        BLENDOBJ blend = {{AC_SRC_OVER, 0, 255, 0}};
        engine::Font font;
        POINTFIX corners[3] = {};
        const std::vector<std::function<BOOL()>> calls = {
            [&] {
                return session.Hook<PFN_DrvBitBlt>(INDEX_DrvBitBlt)(screen, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                                    nullptr, nullptr, &Solid(), &origin, 0xF0F0);
            },
            [&] {
                return session.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits)(screen, source, nullptr, nullptr, nullptr,
                                                                        &origin);
            },
            [&] { return session.Hook<PFN_DrvPaint>(INDEX_DrvPaint)(screen, nullptr, &Solid(), &origin, CopyPen); },
            [&] {
                return session.Hook<PFN_DrvLineTo>(INDEX_DrvLineTo)(screen, nullptr, &Solid(), 1, 1, 5, 5, nullptr,
                                                                    CopyPen);
            },
            [&] {
                return session.Hook<PFN_DrvStretchBlt>(INDEX_DrvStretchBlt)(
                    screen, source, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &to, nullptr, COLORONCOLOR);
            },
            [&] {
                return session.Hook<PFN_DrvStretchBltROP>(INDEX_DrvStretchBltROP)(
                    screen, source, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &to, nullptr, COLORONCOLOR,
                    nullptr, 0xCCCC);
            },
            [&] {
                return session.Hook<PFN_DrvPlgBlt>(INDEX_DrvPlgBlt)(screen, source, nullptr, nullptr, nullptr, nullptr,
                                                                    nullptr, corners, nullptr, nullptr, COLORONCOLOR);
            },
            [&] {
                return session.Hook<PFN_DrvAlphaBlend>(INDEX_DrvAlphaBlend)(screen, source, nullptr, nullptr, nullptr,
                                                                            &to, &blend);
            },
            [&] {
                return session.Hook<PFN_DrvTransparentBlt>(INDEX_DrvTransparentBlt)(screen, source, nullptr, nullptr,
                                                                                    nullptr, &to, 0, 0);
            },
            [&] {
                return session.Hook<PFN_DrvGradientFill>(INDEX_DrvGradientFill)(
                    screen, nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, &origin, GRADIENT_FILL_RECT_H);
            },
            [&] {
                return session.Hook<PFN_DrvTextOut>(INDEX_DrvTextOut)(screen, nullptr, &font, nullptr, nullptr, nullptr,
                                                                      &Solid(), &Solid(), &origin, CopyPen);
            },
            [&] {
                return session.Hook<PFN_DrvFillPath>(INDEX_DrvFillPath)(screen, nullptr, nullptr, &Solid(), &origin,
                                                                        CopyPen, FP_WINDINGMODE);
            },
        };
        for (std::size_t i = 0; i < calls.size(); ++i) {
            session.records.clear();
            EXPECT_EQ(ShownBy(session, [&] { EXPECT_EQ(calls[i](), FALSE) << i; }), "nothing") << i;
            EXPECT_EQ(session.records.size(), 1u) << "call " << i << " has no bounds and is visible";
        }
    }

} // namespace
} // namespace conformance
