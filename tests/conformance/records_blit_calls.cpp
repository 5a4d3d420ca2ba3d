// Random calls that draw pictures.

#include <cstring>

#include "tests/conformance/records_round.h"

namespace conformance::records {

namespace {

    using wire::CallType;

    constexpr wire::Rect ZeroRect = {0, 0, 0, 0};
    constexpr wire::Point ZeroPoint = {0, 0};

    struct Blit {
        SURFOBJ* target;
        SURFOBJ* source;
        SURFOBJ* mask;
        engine::ClipObject* clip;
        engine::Translation* xlate;

        explicit Blit(Round& round)
            : target(round.make.Target())
            , source(round.make.Or(12, round.make.Source()))
            , mask(round.make.Or(2, round.make.Mask()))
            , clip(round.make.Clip())
            , xlate(round.make.Translation(source, target))
        {
        }
    };

    // Where a source of a blit of one size begins: the rectangle read lies within it.
    POINTL* SourcePoint(Round& round)
    {
        return round.make.New<POINTL>(POINTL{round.random.Between(0, 24), round.random.Between(0, 18)});
    }

    COLORADJUSTMENT* Adjustment(Round& round)
    {
        COLORADJUSTMENT* const adjustment = round.make.New<COLORADJUSTMENT>();
        round.random.Fill(*adjustment);
        return round.make.Or(2, adjustment);
    }

    void ExpectAdjustment(const wire::ColorAdjustment& recorded, const COLORADJUSTMENT* given)
    {
        const COLORADJUSTMENT zeros = {};
        EXPECT_EQ(std::memcmp(&recorded, given ? given : &zeros, sizeof(recorded)), 0);
    }

    template<class Call> void ExpectSurfaces(const Call& call, const Blit& blit)
    {
        Expect(call.record, call.surface, blit.target);
        Expect(call.record, call.source, blit.source);
        Expect(call.record, call.clip, blit.clip);
        Expect(call.record, call.xlate, blit.xlate);
    }

    void BitBlt(Round& round)
    {
        Blit blit(round);
        if (blit.target && !blit.source)
            blit.source = blit.target == round.session.Screen() ? blit.target : round.make.Source();
        RECTL* const to = round.make.Or(20, round.make.Rectangle());
        POINTL* const from = round.make.Or(5, SourcePoint(round));
        POINTL* const maskFrom = round.make.Or(5, SourcePoint(round));
        POINTL* const origin = round.make.Or(3, round.make.Point());
        const ROP4 rop4 = round.random.OneIn(2) ? round.random.Word() & 0xFFFF : (round.random.Word() & 0xFF) * 0x101;
        engine::Brush* const brush = round.make.ForDrawingOn(blit.target, round.make.Brush());
        round.Start();
        round.Hook<PFN_DrvBitBlt>(INDEX_DrvBitBlt)(blit.target, blit.source, blit.mask, blit.clip, blit.xlate, to, from,
                                                   maskFrom, brush, origin, rop4);
        const auto call = round.Take<wire::BitBltRecord>(round.FlagOf(blit.target));
        ASSERT_TRUE(call);
        ExpectSurfaces(*call, blit);
        Expect(call->record, call->mask, blit.mask);
        Expect(call->record, call->brush, brush);
        EXPECT_EQ(call->rclTrg, Wire(to));
        EXPECT_EQ(call->ptlSrc, Wire(blit.source ? from : nullptr));
        EXPECT_EQ(call->ptlMask, Wire(blit.mask ? maskFrom : nullptr));
        EXPECT_EQ(call->ptlBrush, Wire(origin));
        EXPECT_EQ(call->rop4, rop4);
    }

    void CopyBits(Round& round)
    {
        const Blit blit(round);
        RECTL* const to = round.make.Or(10, round.make.Rectangle());
        POINTL* const from = round.make.Or(10, SourcePoint(round));
        round.Start();
        round.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits)(blit.target, blit.source, blit.clip, blit.xlate, to, from);
        const auto call = round.Take<wire::CopyBitsRecord>(round.FlagOf(blit.target));
        ASSERT_TRUE(call);
        ExpectSurfaces(*call, blit);
        EXPECT_EQ(call->rclDest, Wire(to));
        EXPECT_EQ(call->ptlSrc, Wire(from));
    }

    // Now and then mirrored.
    RECTL* StretchRectangle(Round& round)
    {
        RECTL* const rectangle = round.make.Rectangle();
        if (round.random.OneIn(4))
            std::swap(rectangle->left, rectangle->right);
        if (round.random.OneIn(4))
            std::swap(rectangle->top, rectangle->bottom);
        return round.make.Or(10, rectangle);
    }

    void StretchBlt(Round& round)
    {
        const Blit blit(round);
        RECTL *const to = StretchRectangle(round), *const from = StretchRectangle(round);
        const ULONG mode = round.random.Word();
        round.Start();
        round.Hook<PFN_DrvStretchBlt>(INDEX_DrvStretchBlt)(blit.target, blit.source, blit.mask, blit.clip, blit.xlate,
                                                           Adjustment(round), round.make.Point(), to, from,
                                                           round.make.Or(2, SourcePoint(round)), mode);
        const auto call = round.Take<wire::StretchBltRecord>(round.FlagOf(blit.target));
        ASSERT_TRUE(call);
        ExpectSurfaces(*call, blit);
        EXPECT_EQ(call->surface.offset, blit.target ? 96u : 0u);
        Expect(call->record, call->mask, blit.mask);
        EXPECT_EQ(call->rclDest, Wire(to));
        EXPECT_EQ(call->rclSrc, Wire(from));
        EXPECT_EQ(call->mode, mode);
    }

    void StretchBltROP(Round& round)
    {
        const Blit blit(round);
        COLORADJUSTMENT* const adjustment = Adjustment(round);
        POINTL* const origin = round.make.Or(3, round.make.Point());
        POINTL* const maskFrom = round.make.Or(3, SourcePoint(round));
        RECTL *const to = StretchRectangle(round), *const from = StretchRectangle(round);
        const ULONG mode = round.random.Word();
        const ROP4 rop4 = round.random.Word() & 0xFFFF;
        engine::Brush* const brush = round.make.ForDrawingOn(blit.target, round.make.Brush());
        round.Start();
        round.Hook<PFN_DrvStretchBltROP>(INDEX_DrvStretchBltROP)(blit.target, blit.source, blit.mask, blit.clip,
                                                                 blit.xlate, adjustment, origin, to, from, maskFrom,
                                                                 mode, brush, rop4);
        const auto call = round.Take<wire::StretchBltROPRecord>(round.FlagOf(blit.target));
        ASSERT_TRUE(call);
        ExpectSurfaces(*call, blit);
        Expect(call->record, call->mask, blit.mask);
        Expect(call->record, call->brush, brush);
        ExpectAdjustment(call->adjustment, adjustment);
        EXPECT_EQ(call->ptlHalftone, Wire(origin, ZeroPoint));
        EXPECT_EQ(call->rclDest, Wire(to));
        EXPECT_EQ(call->rclSrc, Wire(from, ZeroRect));
        EXPECT_EQ(call->ptlMask, Wire(maskFrom, ZeroPoint));
        EXPECT_EQ(call->mode, mode);
        EXPECT_EQ(call->rop4, rop4);
    }

    void PlgBlt(Round& round)
    {
        const Blit blit(round);
        COLORADJUSTMENT* const adjustment = Adjustment(round);
        POINTL* const origin = round.make.Or(3, round.make.Point());
        POINTL* const maskFrom = round.make.Or(3, SourcePoint(round));
        RECTL* const from = round.make.Or(10, round.make.Rectangle());
        POINTFIX corners[3] = {round.make.FixedPoint(), round.make.FixedPoint(), round.make.FixedPoint()};
        POINTFIX* const given = round.make.Or(10, corners);
        const ULONG mode = round.random.Word();
        round.Start();
        round.Hook<PFN_DrvPlgBlt>(INDEX_DrvPlgBlt)(blit.target, blit.source, blit.mask, blit.clip, blit.xlate,
                                                   adjustment, origin, given, from, maskFrom, mode);
        const auto call = round.Take<wire::PlgBltRecord>(round.FlagOf(blit.target));
        ASSERT_TRUE(call);
        ExpectSurfaces(*call, blit);
        Expect(call->record, call->mask, blit.mask);
        ExpectAdjustment(call->adjustment, adjustment);
        EXPECT_EQ(call->ptlBrush, Wire(origin, ZeroPoint));
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(call->corners[i], given ? Wire(given[i]) : ZeroPoint);
        EXPECT_EQ(call->rclSrc, Wire(from));
        EXPECT_EQ(call->ptlMask, Wire(maskFrom, ZeroPoint));
        EXPECT_EQ(call->mode, mode);
    }

    void AlphaBlend(Round& round)
    {
        const Blit blit(round);
        RECTL* const to = round.make.Or(10, round.make.Rectangle());
        RECTL* const from = round.make.Or(10, round.make.Rectangle());
        BLENDOBJ blend;
        round.random.Fill(blend);
        if (round.random.OneIn(2))
            blend.BlendFunction.BlendOp = AC_SRC_OVER;
        BLENDOBJ* const given = round.make.Or(10, &blend);
        round.Start();
        round.Hook<PFN_DrvAlphaBlend>(INDEX_DrvAlphaBlend)(blit.target, blit.source, blit.clip, blit.xlate, to, from,
                                                           given);
        const auto call = round.Take<wire::AlphaBlendRecord>(round.FlagOf(blit.target));
        ASSERT_TRUE(call);
        ExpectSurfaces(*call, blit);
        EXPECT_EQ(call->rclDest, Wire(to));
        EXPECT_EQ(call->rclSrc, Wire(from));
        const BLENDOBJ recorded = given ? *given : BLENDOBJ{};
        EXPECT_EQ(std::memcmp(&call->blend, &recorded, sizeof(recorded)), 0);
    }

    void TransparentBlt(Round& round)
    {
        const Blit blit(round);
        RECTL* const to = round.make.Or(10, round.make.Rectangle());
        RECTL* const from = round.make.Or(10, round.make.Rectangle());
        const ULONG color = round.random.Word(), reserved = round.random.Word();
        round.Start();
        round.Hook<PFN_DrvTransparentBlt>(INDEX_DrvTransparentBlt)(blit.target, blit.source, blit.clip, blit.xlate, to,
                                                                   from, color, reserved);
        const auto call = round.Take<wire::TransparentBltRecord>(round.FlagOf(blit.target));
        ASSERT_TRUE(call);
        ExpectSurfaces(*call, blit);
        EXPECT_EQ(call->rclDest, Wire(to));
        EXPECT_EQ(call->rclSrc, Wire(from));
        EXPECT_EQ(call->transparentColor, color);
        EXPECT_EQ(call->reserved, reserved);
    }

    struct Gradient {
        std::vector<TRIVERTEX> vertices;
        std::vector<ULONG> mesh;
        ULONG mode, perElement;

        explicit Gradient(Random& random)
            : vertices(random.Between(1, 40))
            , mode(random.Word() % 3)
            , perElement(mode == GRADIENT_FILL_TRIANGLE ? 3 : 2)
        {
            for (TRIVERTEX& vertex : vertices) {
                random.Fill(vertex);
                vertex.x = random.Between(-100, 150);
                vertex.y = random.Between(-100, 150);
            }
            for (ULONG i = random.Between(1, 20) * perElement; i > 0; --i)
                mesh.push_back(random.Word() % vertices.size());
        }
    };

    void ExpectArrays(const std::optional<wire::GradientArrays>& arrays, const Gradient* vertices, const Gradient* mesh)
    {
        ASSERT_EQ(arrays.has_value(), vertices || mesh);
        for (std::uint32_t i = 0; vertices && i < vertices->vertices.size(); ++i) {
            const wire::GradientVertex recorded = arrays->vertices[i];
            EXPECT_TRUE((mesh && !arrays->Intact(i))
                        || std::memcmp(&recorded, &vertices->vertices[i], sizeof(recorded)) == 0)
                << "vertex " << i;
        }
        for (std::uint32_t i = 0; mesh && i < mesh->mesh.size(); ++i)
            EXPECT_EQ(arrays->mesh[i], mesh->mesh[i]);
    }

    void GradientFill(Round& round)
    {
        SURFOBJ* const target = round.make.Target();
        engine::ClipObject* const clip = round.make.Clip();
        engine::Translation* const xlate = round.make.Translation(nullptr, target);
        Gradient gradient(round.random);
        const Gradient* const vertices = round.make.ForDrawingOn(target, &gradient);
        const Gradient* const mesh = round.make.ForDrawingOn(target, &gradient);
        RECTL* const extents = round.make.Or(10, round.make.Rectangle());
        POINTL* const origin = round.make.Or(4, round.make.Point());
        const ULONG count = static_cast<ULONG>(gradient.vertices.size());
        const ULONG elements = static_cast<ULONG>(gradient.mesh.size()) / gradient.perElement;
        round.Start();
        round.Hook<PFN_DrvGradientFill>(INDEX_DrvGradientFill)(
            target, clip, xlate, vertices ? gradient.vertices.data() : nullptr, count,
            mesh ? gradient.mesh.data() : nullptr, elements, extents, origin, gradient.mode);
        const auto call = round.Take<wire::GradientFillRecord>(round.FlagOf(target));
        ASSERT_TRUE(call);
        Expect(call->record, call->surface, target);
        Expect(call->record, call->clip, clip);
        Expect(call->record, call->xlate, xlate);
        ExpectArrays(call->record.At(call->arrays), vertices, mesh);
        EXPECT_EQ(call->vertexCount, count);
        EXPECT_EQ(call->reserved.value, 0u);
        EXPECT_EQ(call->meshCount, elements);
        EXPECT_EQ(call->rclExtents, Wire(extents, ZeroRect));
        EXPECT_EQ(call->ptlDither, Wire(origin, ZeroPoint));
        EXPECT_EQ(call->mode, gradient.mode);
    }

} // namespace

std::vector<RecordedCall> BlitCalls()
{
    return {{CallType::BitBlt, BitBlt},
            {CallType::CopyBits, CopyBits},
            {CallType::StretchBlt, StretchBlt},
            {CallType::StretchBltROP, StretchBltROP},
            {CallType::PlgBlt, PlgBlt},
            {CallType::AlphaBlend, AlphaBlend},
            {CallType::TransparentBlt, TransparentBlt},
            {CallType::GradientFill, GradientFill}};
}

} // namespace conformance::records
