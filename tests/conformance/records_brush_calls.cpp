// Random calls that draw with a brush, and the two that prepare one.

#include "tests/conformance/records_round.h"

namespace conformance::records {

namespace {

    using wire::CallType;

    struct Drawing {
        SURFOBJ* target;
        engine::ClipObject* clip;
        engine::Brush* brush;
        POINTL* origin;
        MIX mix;

        explicit Drawing(Round& round)
            : target(round.make.Target())
            , clip(round.make.Clip())
            , brush(round.make.ForDrawingOn(target, round.make.Brush()))
            , origin(round.make.Or(3, round.make.Point()))
            , mix(round.random.Word() & 0x0F0F)
        {
        }
    };

    template<class Call> void ExpectDrawing(const Call& call, const Drawing& drawing)
    {
        Expect(call.record, call.surface, drawing.target);
        Expect(call.record, call.clip, drawing.clip);
        Expect(call.record, call.brush, drawing.brush);
        EXPECT_EQ(call.mix, drawing.mix);
    }

    void Paint(Round& round)
    {
        const Drawing drawing(round);
        round.Start();
        round.Hook<PFN_DrvPaint>(INDEX_DrvPaint)(drawing.target, drawing.clip, drawing.brush, drawing.origin,
                                                 drawing.mix);
        const auto call = round.Take<wire::PaintRecord>(round.FlagOf(drawing.target));
        ASSERT_TRUE(call);
        ExpectDrawing(*call, drawing);
        EXPECT_EQ(call->ptlBrush, Wire(drawing.origin));
    }

    void LineTo(Round& round)
    {
        const Drawing drawing(round);
        RECTL* const bounds = round.make.Or(10, round.make.Rectangle());
        const LONG range = drawing.target ? 3000 : 0x7FFFFFFF;
        LONG ends[4];
        for (LONG& end : ends)
            end = round.random.Between(-range, range);
        round.Start();
        round.Hook<PFN_DrvLineTo>(INDEX_DrvLineTo)(drawing.target, drawing.clip, drawing.brush, ends[0], ends[1],
                                                   ends[2], ends[3], bounds, drawing.mix);
        const auto call = round.Take<wire::LineToRecord>(round.FlagOf(drawing.target));
        ASSERT_TRUE(call);
        ExpectDrawing(*call, drawing);
        EXPECT_EQ(call->x1, ends[0]);
        EXPECT_EQ(call->y1, ends[1]);
        EXPECT_EQ(call->x2, ends[2]);
        EXPECT_EQ(call->y2, ends[3]);
    }

    void StrokePath(Round& round)
    {
        const Drawing drawing(round);
        engine::Path* const path = round.make.Or(10, round.make.Path());
        LINEATTRS* const line = round.make.ForDrawingOn(drawing.target, round.make.Line());
        round.Start();
        round.Hook<PFN_DrvStrokePath>(INDEX_DrvStrokePath)(drawing.target, path, drawing.clip, nullptr, drawing.brush,
                                                           drawing.origin, line, drawing.mix);
        const auto call = round.Take<wire::StrokePathRecord>(round.FlagOf(drawing.target));
        ASSERT_TRUE(call);
        ExpectDrawing(*call, drawing);
        Expect(call->record, call->path, path);
        Expect(call->record, call->lineAttributes, line);
        EXPECT_EQ(call->ptlBrush, Wire(drawing.origin));
    }

    void FillPath(Round& round)
    {
        const Drawing drawing(round);
        engine::Path* const path = round.make.Or(10, round.make.Path());
        const FLONG options = round.random.Word();
        round.Start();
        round.Hook<PFN_DrvFillPath>(INDEX_DrvFillPath)(drawing.target, path, drawing.clip, drawing.brush,
                                                       drawing.origin, drawing.mix, options);
        const auto call = round.Take<wire::FillPathRecord>(round.FlagOf(drawing.target));
        ASSERT_TRUE(call);
        ExpectDrawing(*call, drawing);
        Expect(call->record, call->path, path);
        EXPECT_EQ(call->ptlBrush, Wire(drawing.origin));
        EXPECT_EQ(call->options, options);
    }

    void StrokeAndFillPath(Round& round)
    {
        const Drawing drawing(round);
        engine::Path* const path = round.make.Or(10, round.make.Path());
        LINEATTRS* const line = round.make.ForDrawingOn(drawing.target, round.make.Line());
        engine::Brush* const fill = round.make.ForDrawingOn(drawing.target, round.make.Brush());
        const FLONG options = round.random.Word();
        round.Start();
        round.Hook<PFN_DrvStrokeAndFillPath>(INDEX_DrvStrokeAndFillPath)(drawing.target, path, drawing.clip, nullptr,
                                                                         drawing.brush, line, fill, drawing.origin,
                                                                         drawing.mix, options);
        const auto call = round.Take<wire::StrokeAndFillPathRecord>(round.FlagOf(drawing.target));
        ASSERT_TRUE(call);
        Expect(call->record, call->surface, drawing.target);
        Expect(call->record, call->path, path);
        Expect(call->record, call->clip, drawing.clip);
        Expect(call->record, call->strokeBrush, drawing.brush);
        Expect(call->record, call->lineAttributes, line);
        Expect(call->record, call->fillBrush, fill);
        EXPECT_EQ(call->ptlBrush, Wire(drawing.origin));
        EXPECT_EQ(call->mixFill, drawing.mix);
        EXPECT_EQ(call->options, options);
    }

    // Ends with the rectangle of zeros that ends the list; that one may be all there is.
    std::vector<RECTL> ExtraRectangles(Round& round)
    {
        std::vector<RECTL> rectangles;
        for (LONG count = round.random.Between(0, 6); count > 0; --count) {
            rectangles.push_back(*round.make.Rectangle());
            rectangles.back().right += 1; // none of zeros
        }
        rectangles.push_back({});
        return rectangles;
    }

    void ExpectExtra(const Taken<wire::TextOutRecord>& call, const std::vector<RECTL>* given)
    {
        const std::size_t count = given ? given->size() - 1 : 0;
        EXPECT_EQ(call.extraCount, count);
        ASSERT_EQ(call.extra.offset != 0, count != 0);
        for (std::uint32_t i = 0; i < count; ++i)
            EXPECT_EQ((*call.record.At(call.extra))[i], Wire((*given)[i]));
    }

    void TextOut(Round& round)
    {
        const Drawing drawing(round);
        engine::Text* const text = round.make.Or(10, round.make.Text(drawing.target != nullptr));
        engine::Font* const font = round.make.Or(10, round.make.Font());
        std::vector<RECTL> extra = ExtraRectangles(round);
        std::vector<RECTL>* const extraGiven = round.make.Or(3, &extra);
        RECTL* const opaque = round.make.Or(2, round.make.Rectangle());
        engine::Brush* const background = round.make.ForDrawingOn(drawing.target, round.make.Brush());
        round.Start();
        round.Hook<PFN_DrvTextOut>(INDEX_DrvTextOut)(drawing.target, text, font, drawing.clip,
                                                     extraGiven ? extra.data() : nullptr, opaque, drawing.brush,
                                                     background, drawing.origin, drawing.mix);
        const auto call = round.Take<wire::TextOutRecord>(round.FlagOf(drawing.target));
        ASSERT_TRUE(call);
        Expect(call->record, call->surface, drawing.target);
        Expect(call->record, call->string, text);
        Expect(call->record, call->font, font);
        Expect(call->record, call->clip, drawing.clip);
        ExpectExtra(*call, extraGiven);
        Expect(call->record, call->foreBrush, drawing.brush);
        Expect(call->record, call->opaqueBrush, background);
        EXPECT_EQ(call->rclOpaque, Wire(opaque));
        EXPECT_EQ(call->ptlOrigin, Wire(drawing.origin));
        EXPECT_EQ(call->mix, drawing.mix);
    }

    void RealizeBrush(Round& round)
    {
        SURFOBJ* const target = round.make.Target();
        engine::Brush* const brush = round.make.Or(4, round.make.Brush());
        engine::Surface* const pattern = round.make.Or(3, round.make.Source());
        engine::Surface* const mask = round.make.Or(2, round.make.Mask());
        engine::Translation* const xlate = round.make.Translation(pattern, target);
        const ULONG hatch = round.random.Word();
        round.Start();
        round.Hook<PFN_DrvRealizeBrush>(INDEX_DrvRealizeBrush)(brush, target, pattern, mask, xlate, hatch);
        const auto call = round.Take<wire::RealizeBrushRecord>(round.FlagOf(target));
        ASSERT_TRUE(call);
        Expect(call->record, call->brush, brush);
        Expect(call->record, call->target, target);
        Expect(call->record, call->pattern, pattern);
        Expect(call->record, call->mask, mask);
        Expect(call->record, call->xlate, xlate);
        EXPECT_EQ(call->hatch, hatch);
    }

    void DitherColor(Round& round)
    {
        const DHPDEV dhpdev = round.session.Device().Dhpdev();
        const ULONG mode = round.random.Word(), rgb = round.random.Word();
        ULONG output[16];
        round.random.Fill(output);
        ULONG* const given = round.make.Or(3, output);
        round.Start();
        const ULONG result = round.Hook<PFN_DrvDitherColor>(INDEX_DrvDitherColor)(dhpdev, mode, rgb, given);
        const auto call = round.Take<wire::DitherColorRecord>(0);
        ASSERT_TRUE(call);
        EXPECT_EQ(call->dhpdev, Number(dhpdev));
        EXPECT_EQ(call->mode, mode);
        EXPECT_EQ(call->rgb, rgb);
        EXPECT_EQ(call->dither, given ? output[0] : 0xFFFFFFFF);
        EXPECT_EQ(call->returned, result);
    }

} // namespace

std::vector<RecordedCall> BrushCalls()
{
    return {{CallType::Paint, Paint},
            {CallType::LineTo, LineTo},
            {CallType::StrokePath, StrokePath},
            {CallType::FillPath, FillPath},
            {CallType::StrokeAndFillPath, StrokeAndFillPath},
            {CallType::TextOut, TextOut},
            {CallType::RealizeBrush, RealizeBrush},
            {CallType::DitherColor, DitherColor}};
}

} // namespace conformance::records
