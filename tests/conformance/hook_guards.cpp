// Calls that lack what the engine's services follow without a look: nothing is drawn, the rest goes on.

#include "tests/conformance/core_setups.h"
#include "tests/conformance/hook_calls.h"

namespace conformance {
namespace {

    POINTL origin = {0, 0};

    // What the calls have at hand. Each leaves out one thing.
    struct Things {
        explicit Things(Session& session)
            : session(session)
            , target(session.Screen())
            , source(MakePicture(session, {64, 48}))
        {
            path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH | PD_CLOSEFIGURE, {{160, 192}, {480, 192}, {480, 352}});
            line.elWidth.l = 1;
        }
        Session& session;
        SURFOBJ* target;
        SURFOBJ* source;
        SURFOBJ* mask = engine::MakeBitmap({64, 48}, engine::PixelLayout::Default(BMF_1BPP));
        engine::Brush brush = engine::Brush::Solid(Orange);
        engine::Path path;
        engine::ClipObject clip{{10, 12, 30, 22}};
        LINEATTRS line = {};
        RECTL to = {10, 12, 30, 22}, from = {10, 12, 30, 22};
        POINTFIX corners[3] = {{160, 192}, {480, 192}, {160, 352}};
        TRIVERTEX vertices[2] = {{10, 12, 0xFF00, 0, 0, 0}, {30, 22, 0xFF00, 0, 0, 0}};
        GRADIENT_RECT mesh = {0, 1};
        BLENDOBJ blend = {{AC_SRC_OVER, 0, 255, 0}};

        BOOL BitBlt(SURFOBJ* psoSrc, POINTL* pptlSrc, SURFOBJ* psoMask, POINTL* pptlMask, ROP4 rop4)
        {
            return session.Hook<PFN_DrvBitBlt>(INDEX_DrvBitBlt)(target, psoSrc, psoMask, nullptr, nullptr, &to, pptlSrc,
                                                                pptlMask, &brush, &origin, rop4);
        }
        BOOL CopyBits(SURFOBJ* psoSrc, POINTL* pptlSrc)
        {
            return session.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits)(target, psoSrc, nullptr, nullptr, &to, pptlSrc);
        }
        BOOL StretchBlt(SURFOBJ* psoSrc, RECTL* prclSrc, SURFOBJ* psoMask = nullptr)
        {
            return session.Hook<PFN_DrvStretchBlt>(INDEX_DrvStretchBlt)(
                target, psoSrc, psoMask, nullptr, nullptr, nullptr, nullptr, &to, prclSrc, nullptr, COLORONCOLOR);
        }
        BOOL StretchBltRop(SURFOBJ* psoSrc, RECTL* prclSrc, ROP4 rop4, SURFOBJ* psoMask = nullptr)
        {
            return session.Hook<PFN_DrvStretchBltROP>(INDEX_DrvStretchBltROP)(target, psoSrc, psoMask, nullptr, nullptr,
                                                                              nullptr, &origin, &to, prclSrc, nullptr,
                                                                              COLORONCOLOR, &brush, rop4);
        }
        BOOL PlgBlt(SURFOBJ* psoSrc, POINTFIX* pptfx, SURFOBJ* psoMask = nullptr)
        {
            return session.Hook<PFN_DrvPlgBlt>(INDEX_DrvPlgBlt)(target, psoSrc, psoMask, nullptr, nullptr, nullptr,
                                                                nullptr, pptfx, &from, nullptr, COLORONCOLOR);
        }
        BOOL AlphaBlend(SURFOBJ* psoSrc, RECTL* prclSrc, BLENDOBJ* pblend)
        {
            return session.Hook<PFN_DrvAlphaBlend>(INDEX_DrvAlphaBlend)(target, psoSrc, nullptr, nullptr, &to, prclSrc,
                                                                        pblend);
        }
        BOOL TransparentBlt(SURFOBJ* psoSrc, RECTL* prclSrc)
        {
            return session.Hook<PFN_DrvTransparentBlt>(INDEX_DrvTransparentBlt)(target, psoSrc, nullptr, nullptr, &to,
                                                                                prclSrc, 5, 0);
        }
        BOOL GradientFill(TRIVERTEX* pvertices, GRADIENT_RECT* pmesh)
        {
            return session.Hook<PFN_DrvGradientFill>(INDEX_DrvGradientFill)(
                target, nullptr, nullptr, pvertices, 2, pmesh, 1, &to, &origin, GRADIENT_FILL_RECT_H);
        }
        BOOL StrokePath(PATHOBJ* ppo, LINEATTRS* plineattrs)
        {
            return session.Hook<PFN_DrvStrokePath>(INDEX_DrvStrokePath)(target, ppo, &clip, nullptr, &brush, &origin,
                                                                        plineattrs, CopyPen);
        }
        BOOL FillPath(PATHOBJ* ppo)
        {
            return session.Hook<PFN_DrvFillPath>(INDEX_DrvFillPath)(target, ppo, &clip, &brush, &origin, CopyPen,
                                                                    FP_WINDINGMODE);
        }
        BOOL StrokeAndFillPath(PATHOBJ* ppo, LINEATTRS* plineattrs)
        {
            return session.Hook<PFN_DrvStrokeAndFillPath>(INDEX_DrvStrokeAndFillPath)(
                target, ppo, &clip, nullptr, &brush, plineattrs, &brush, &origin, CopyPen, FP_WINDINGMODE);
        }
        BOOL TextOut()
        {
            engine::Font font;
            return session.Hook<PFN_DrvTextOut>(INDEX_DrvTextOut)(target, nullptr, &font, &clip, nullptr, nullptr,
                                                                  &brush, &brush, &origin, CopyPen);
        }
    };

    struct LackingCall {
        const char* name;
        BOOL (*call)(Things& has);
    };
    class LackingCalls : public testing::TestWithParam<LackingCall> { };

    TEST_P(LackingCalls, DrawNothingAndAreShownAndCaptured)
    {
        Session session;
        Things has(session);
        BOOL result = TRUE;
        EXPECT_EQ(ShownBy(session, [&] { result = GetParam().call(has); }), "10 12 30 22");
        EXPECT_EQ(result, FALSE);
        EXPECT_TRUE(SamePixels(*session.Virtual(), *MakePicture(session, {64, 48}, 0x00445566)));
        EXPECT_EQ(session.records.size(), 1u);
        EXPECT_EQ(session.Engine().Violations(), std::vector<std::string>());
    }

    const LackingCall lackingCalls[] = {
        {"BitBltSourcePoint", [](Things& has) { return has.BitBlt(has.source, nullptr, nullptr, nullptr, 0xCCCC); }},
        {"BitBltSource", [](Things& has) { return has.BitBlt(nullptr, &origin, nullptr, nullptr, 0xCCCC); }},
        {"BitBltSourceOfTheBackground",
         [](Things& has) { return has.BitBlt(nullptr, nullptr, has.mask, &origin, 0xCCF0); }},
        {"BitBltMaskPoint", [](Things& has) { return has.BitBlt(has.source, &origin, has.mask, nullptr, 0xAACC); }},
        {"CopyBitsSource", [](Things& has) { return has.CopyBits(nullptr, &origin); }},
        {"CopyBitsSourcePoint", [](Things& has) { return has.CopyBits(has.source, nullptr); }},
        {"StretchBltSource", [](Things& has) { return has.StretchBlt(nullptr, &has.from); }},
        {"StretchBltSourceRectangle", [](Things& has) { return has.StretchBlt(has.source, nullptr); }},
        {"StretchBltMaskPoint", [](Things& has) { return has.StretchBlt(has.source, &has.from, has.mask); }},
        {"StretchBltROPSource", [](Things& has) { return has.StretchBltRop(nullptr, &has.from, 0xCCCC); }},
        {"StretchBltROPSourceRectangle", [](Things& has) { return has.StretchBltRop(has.source, nullptr, 0xCCCC); }},
        {"StretchBltROPMaskPoint",
         [](Things& has) { return has.StretchBltRop(has.source, &has.from, 0xAACC, has.mask); }},
        {"PlgBltSource", [](Things& has) { return has.PlgBlt(nullptr, has.corners); }},
        {"PlgBltCorners", [](Things& has) { return has.PlgBlt(has.source, nullptr); }},
        {"PlgBltMaskPoint", [](Things& has) { return has.PlgBlt(has.source, has.corners, has.mask); }},
        {"AlphaBlendSource", [](Things& has) { return has.AlphaBlend(nullptr, &has.from, &has.blend); }},
        {"AlphaBlendSourceRectangle", [](Things& has) { return has.AlphaBlend(has.source, nullptr, &has.blend); }},
        {"AlphaBlendFunction", [](Things& has) { return has.AlphaBlend(has.source, &has.from, nullptr); }},
        {"TransparentBltSource", [](Things& has) { return has.TransparentBlt(nullptr, &has.from); }},
        {"TransparentBltSourceRectangle", [](Things& has) { return has.TransparentBlt(has.source, nullptr); }},
        {"GradientFillVertices", [](Things& has) { return has.GradientFill(nullptr, &has.mesh); }},
        {"GradientFillMesh", [](Things& has) { return has.GradientFill(has.vertices, nullptr); }},
        {"StrokePathPath", [](Things& has) { return has.StrokePath(nullptr, &has.line); }},
        {"StrokePathLine", [](Things& has) { return has.StrokePath(&has.path, nullptr); }},
        {"FillPathPath", [](Things& has) { return has.FillPath(nullptr); }},
        {"StrokeAndFillPathPath", [](Things& has) { return has.StrokeAndFillPath(nullptr, &has.line); }},
        {"StrokeAndFillPathLine", [](Things& has) { return has.StrokeAndFillPath(&has.path, nullptr); }},
        {"TextOutStringAndRectangle", [](Things& has) { return has.TextOut(); }},
    };

    INSTANTIATE_TEST_SUITE_P(Calls, LackingCalls, testing::ValuesIn(lackingCalls),
                             [](const auto& info) { return info.param.name; });

    TEST(CallsThatReadNoSource, AreDrawnWithoutOne)
    {
        for (const ROP4 rop4 : {0xF0F0u, 0x5A5Au, 0x0F0Fu}) {
            Session session;
            Things has(session);
            EXPECT_EQ(has.StretchBltRop(nullptr, &has.from, rop4), TRUE);
            EXPECT_EQ(PaintedPart(*session.Virtual()), "10 12 30 22");
            FillBitmap(*session.Virtual(), 0);
            EXPECT_EQ(has.BitBlt(nullptr, nullptr, nullptr, nullptr, rop4), TRUE);
            EXPECT_EQ(PaintedPart(*session.Virtual()), "10 12 30 22");
        }
    }

} // namespace
} // namespace conformance
