// Objects that a record cannot hold, and what the capture of a call costs.

#include <stdexcept>

#include "tests/conformance/hook_calls.h"
#include "tests/conformance/records_round.h"

namespace conformance::records {

namespace {

    constexpr ULONG Seed = 1;
    constexpr ULONG Room = 0x10000;

    class OverlongObjects : public testing::Test {
    protected:
        // The record of the call that `make` makes, whatever its type.
        template<class Fixed, class Make> Taken<Fixed> RecordOf(const Make& makeCall, LONG flag = 1)
        {
            round.Start();
            makeCall();
            const auto call = round.Take<Fixed>(flag);
            if (!call)
                throw std::runtime_error("no record");
            return *call;
        }

        Taken<wire::StrokePathRecord> Stroke(engine::Path& path)
        {
            return RecordOf<wire::StrokePathRecord>([&] {
                round.Hook<PFN_DrvStrokePath>(INDEX_DrvStrokePath)(bitmap, &path, nullptr, nullptr, &brush, nullptr,
                                                                   &line, CopyPen);
            });
        }

        Taken<wire::TextOutRecord> Write(engine::Text& text)
        {
            return RecordOf<wire::TextOutRecord>([&] {
                round.Hook<PFN_DrvTextOut>(INDEX_DrvTextOut)(bitmap, &text, nullptr, nullptr, nullptr, nullptr, &brush,
                                                             nullptr, nullptr, CopyPen);
            });
        }

        Taken<wire::PaintRecord> Paint(engine::ClipObject& clip)
        {
            return RecordOf<wire::PaintRecord>(
                [&] { round.Hook<PFN_DrvPaint>(INDEX_DrvPaint)(bitmap, &clip, &brush, nullptr, CopyPen); });
        }

        static engine::Path PathOf(const std::vector<LONG>& pointCounts)
        {
            engine::Path path;
            for (const LONG count : pointCounts) {
                std::vector<POINTFIX> points;
                for (LONG i = 0; i < count; ++i)
                    points.push_back({i, count});
                path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH, points);
            }
            return path;
        }

        static std::vector<RECTL> Rectangles(LONG count)
        {
            std::vector<RECTL> rectangles;
            for (LONG i = 0; i < count; ++i)
                rectangles.push_back({0, i, 1, i + 1});
            return rectangles;
        }

        Round round{Seed};
        SURFOBJ* bitmap = MakePicture(round.session, {16, 16});
        engine::Brush brush = engine::Brush::Solid(Orange);
        LINEATTRS line = {};
    };

    TEST_F(OverlongObjects, OfAGradientAreCutAtTheEndOfTheBuffer)
    {
        std::vector<TRIVERTEX> vertices(10000);
        for (ULONG i = 0; i < vertices.size(); ++i)
            vertices[i] = {static_cast<LONG>(i), -static_cast<LONG>(i), 1, 2, 3, 4};
        std::vector<GRADIENT_RECT> mesh(20000, {1, 9999});
        RECTL extents = {0, 0, 16, 16};
        const auto call = RecordOf<wire::GradientFillRecord>([&] {
            round.Hook<PFN_DrvGradientFill>(INDEX_DrvGradientFill)(
                bitmap, nullptr, nullptr, vertices.data(), static_cast<ULONG>(vertices.size()), mesh.data(),
                static_cast<ULONG>(mesh.size()), &extents, nullptr, GRADIENT_FILL_RECT_H);
        });
        // The surface is at 96, 64 bytes long; so far go the vertices, and the mesh.
        EXPECT_EQ(call.record.length(), 288u);
        EXPECT_EQ(call.arrays.offset, 224u);
        EXPECT_EQ(call.vertexCount, 10000u);
        EXPECT_EQ(call.meshCount, 20000u);
        const auto arrays = call.record.At(call.arrays);
        ASSERT_TRUE(arrays);
        ASSERT_EQ(arrays->vertices.size(), 4086u) << "(0x10000 - 160) / 16";
        EXPECT_EQ(arrays->vertices[3].x, 3);
        EXPECT_FALSE(arrays->Intact(4));
        ASSERT_EQ(arrays->mesh.size(), 2 * 8164u) << "(0x10000 - 224) / 8 pairs";
        EXPECT_EQ(arrays->mesh[2 * 8164 - 2], 1u);
        EXPECT_EQ(arrays->mesh[2 * 8164 - 1], 9999u);
    }

    TEST_F(OverlongObjects, AmongTheSubpathsLoseTheirPoints)
    {
        engine::Path path = PathOf({20000, 5000, 5000, 3000});
        const auto call = Stroke(path);
        const auto recorded = call.record.At(call.path);
        ASSERT_TRUE(recorded);
        ASSERT_EQ(recorded->entries.size(), 4u);
        EXPECT_EQ(recorded->state, wire::Path::State::Complete);
        EXPECT_TRUE((*recorded)[0].lost);
        EXPECT_EQ((*recorded)[1].points.size(), 5000u);
        EXPECT_TRUE((*recorded)[2].lost);
        ASSERT_EQ((*recorded)[3].points.size(), 3000u);
        EXPECT_EQ((*recorded)[3].points[2999], (wire::Point{2999, 3000}));
        // The fixed part, the surface, the path's head, four entries, the points, the brush, the line.
        EXPECT_EQ(call.record.length(), 72u + 64 + 20 + 4 * 12 + 8 * 8000 + 12 + 32);
    }

    TEST_F(OverlongObjects, AsAPathLeaveTheRoomOfItsLastPoints)
    {
        engine::Path path = PathOf({8171}); // the first count whose points are too many
        const auto call = Stroke(path);
        const auto recorded = call.record.At(call.path);
        ASSERT_TRUE(recorded);
        EXPECT_EQ(recorded->state, wire::Path::State::CutShort);
        EXPECT_EQ(recorded->fixed.dataOffset, 20u);
        EXPECT_EQ(call.brush.offset, 72u + 64 + 20 + 8 * 8171);
        EXPECT_FALSE(call.lineAttributes);
        EXPECT_EQ(call.record.length(), Room);
    }

    TEST_F(OverlongObjects, AsTheLongestPathThatFitsKeepAllPoints)
    {
        engine::Path path = PathOf({8170});
        const auto call = Stroke(path);
        const auto recorded = call.record.At(call.path);
        ASSERT_TRUE(recorded);
        EXPECT_EQ(recorded->state, wire::Path::State::Complete);
        EXPECT_EQ((*recorded)[0].points.size(), 8170u);
        EXPECT_FALSE(call.brush);
        EXPECT_EQ(call.record.length(), 72u + 64 + 20 + 12 + 8 * 8170);
    }

    TEST_F(OverlongObjects, AsAPathReachNoFurtherThanTheBuffer)
    {
        engine::Path path = PathOf({8191}); // the record would be 148 bytes longer
        EXPECT_EQ(Stroke(path).record.length(), Room);
    }

    TEST_F(OverlongObjects, OfAStringAreCut)
    {
        engine::Text text;
        for (LONG i = 0; i < 5000; ++i)
            text.AddGlyph(static_cast<HGLYPH>(i), {i, -i}, {1, 2}, {0, 0}, {});
        text.SetString(std::u16string(5000, u'x'));
        const auto call = Write(text);
        const auto string = call.record.At(call.string);
        ASSERT_TRUE(string);
        EXPECT_EQ(string->fixed.glyphCount, 5000u);
        ASSERT_EQ(string->glyphs.size(), 2333u) << "(0x10000 - 104 - 64 - 40) / 28";
        EXPECT_EQ(string->glyphs[2332].position, (wire::Point{2332, -2332}));
        ASSERT_TRUE(string->text);
        EXPECT_EQ(string->text->characters.size(), 1u) << "4 bytes were left";
        EXPECT_EQ(call.record.length(), Room);
        EXPECT_FALSE(call.foreBrush);
    }

    TEST_F(OverlongObjects, OfAnEnumeratedStringMakeRoomForItsCharacters)
    {
        engine::Text text;
        for (LONG i = 0; i < 5000; ++i)
            text.AddGlyph(static_cast<HGLYPH>(i), {i, -i}, {1, 2}, {0, 0}, {});
        text.SetString(std::u16string(5000, u'x'));
        text.Enumerate(64);
        const auto call = Write(text);
        const auto string = call.record.At(call.string);
        ASSERT_TRUE(string);
        EXPECT_TRUE(string->glyphs.empty());
        ASSERT_TRUE(string->text);
        EXPECT_EQ(string->text->characters.size(), 5000u);
        EXPECT_EQ(call.record.length(), 104u + 64 + 40 + 2 * 5001 + 12);
    }

    TEST_F(OverlongObjects, OfAClipAreLeftOutBatchByBatch)
    {
        engine::ClipObject clip(Rectangles(5000));
        const auto call = Paint(clip); // 4095 are too many for the record, the other 905 are not
        const auto recorded = call.record.At(call.clip);
        ASSERT_TRUE(recorded);
        ASSERT_EQ(recorded->rectangles.size(), 905u);
        EXPECT_EQ(recorded->rectangles[0], (wire::Rect{0, 4095, 1, 4096}));
        EXPECT_EQ(call.record.length(), 64u + 64 + 36 + 16 * 905 + 12);
    }

    TEST_F(OverlongObjects, OfAClipEndWithTheBatchThatReachesTheLimit)
    {
        engine::ClipObject clip(Rectangles(5000));
        clip.batch = 128; // the 32nd reaches 4096; the last one has 8 rectangles and would fit
        const auto call = Paint(clip);
        const auto recorded = call.record.At(call.clip);
        ASSERT_TRUE(recorded);
        EXPECT_EQ(recorded->rectangles.size(), 3968u);
        EXPECT_EQ(call.record.length(), 64u + 64 + 36 + 16 * 3968 + 12);
    }

    TEST_F(OverlongObjects, OfAClipInSmallBatchesEndAtTheLimit)
    {
        engine::ClipObject clip(Rectangles(5000));
        clip.batch = 100;
        const auto call = Paint(clip);
        const auto recorded = call.record.At(call.clip);
        ASSERT_TRUE(recorded);
        ASSERT_EQ(recorded->rectangles.size(), 4000u) << "100 more would be above 4095";
        EXPECT_EQ(recorded->rectangles[3999], (wire::Rect{0, 3999, 1, 4000}));
        EXPECT_EQ(call.record.length(), 64u + 64 + 36 + 16 * 4000 + 12);
    }

    // Objects of any size up to several times the buffer, in the records that several of them share.
    class HugeCalls : public OverlongObjects {
    public:
        LONG Count(LONG largest) { return 1 << round.random.Between(0, 31 - __builtin_clz(largest)); }
        LONG UpTo(LONG largest) { return round.random.Between(0, Count(largest)); }

        engine::Path* Path()
        {
            std::vector<LONG> counts(static_cast<std::size_t>(UpTo(8)));
            for (LONG& count : counts)
                count = UpTo(10000);
            if (round.random.OneIn(4)) // a table that does not fit
                counts.assign(static_cast<std::size_t>(UpTo(8000)), 1);
            return round.make.New<engine::Path>(PathOf(counts));
        }
        engine::ClipObject* Clip()
        {
            engine::ClipObject* const clip = round.make.New<engine::ClipObject>(Rectangles(UpTo(6000)));
            clip->batch = static_cast<std::size_t>(UpTo(5000));
            return round.make.Or(3, clip);
        }
        LINEATTRS* Line()
        {
            LINEATTRS* const attributes = round.make.Line();
            attributes->cstyle = static_cast<ULONG>(UpTo(20000));
            attributes->pstyle = reinterpret_cast<FLOAT_LONG*>(round.make.Bytes(attributes->cstyle * 4 + 1).data());
            return round.make.Or(3, attributes);
        }
        engine::Text* Text()
        {
            engine::Text* const text = round.make.New<engine::Text>();
            const LONG glyphs = UpTo(5000);
            for (LONG i = 0; i < glyphs; ++i)
                text->AddGlyph(1, {i, i}, {0, 0}, {0, 0}, {});
            if (round.random.OneIn(2))
                text->SetString(std::u16string(static_cast<std::size_t>(glyphs), u'y'));
            if (round.random.OneIn(2))
                text->Enumerate(static_cast<std::size_t>(UpTo(300)));
            return text;
        }
        engine::Font* Font()
        {
            engine::Font* const font = round.make.New<engine::Font>();
            const auto name = [&] { return std::u16string(static_cast<std::size_t>(UpTo(20000)), u'n'); };
            font->SetNames(name(), name(), name(), name());
            return round.make.Or(3, font);
        }
        engine::Translation* Xlate()
        {
            engine::Translation* const xlate = round.make.New<engine::Translation>(
                engine::PixelLayout::Default(BMF_8BPP), engine::PixelLayout::Default(BMF_32BPP));
            xlate->table.resize(static_cast<std::size_t>(UpTo(20000)));
            xlate->pulXlate = xlate->table.data();
            xlate->cEntries = static_cast<ULONG>(xlate->table.size());
            return round.make.Or(3, xlate);
        }
        engine::Brush* Brush() { return round.make.Or(3, round.make.Brush()); }
        std::u16string Name() { return std::u16string(static_cast<std::size_t>(UpTo(40000)), u'w'); }

        // Nothing is drawn: there is no target.
        void StrokePath()
        {
            round.Hook<PFN_DrvStrokePath>(INDEX_DrvStrokePath)(nullptr, Path(), Clip(), nullptr, Brush(), nullptr,
                                                               Line(), CopyPen);
        }
        void StrokeAndFillPath()
        {
            round.Hook<PFN_DrvStrokeAndFillPath>(INDEX_DrvStrokeAndFillPath)(
                nullptr, Path(), Clip(), nullptr, Brush(), Line(), Brush(), nullptr, CopyPen, FP_WINDINGMODE);
        }
        void TextOut()
        {
            std::vector<RECTL> extra = Rectangles(UpTo(5000));
            extra.push_back({});
            round.Hook<PFN_DrvTextOut>(INDEX_DrvTextOut)(nullptr, Text(), Font(), Clip(), extra.data(), nullptr,
                                                         Brush(), Brush(), nullptr, CopyPen);
        }
        void StretchBltROP()
        {
            round.Hook<PFN_DrvStretchBltROP>(INDEX_DrvStretchBltROP)(nullptr, round.make.Source(), nullptr, Clip(),
                                                                     Xlate(), nullptr, nullptr, nullptr, nullptr,
                                                                     nullptr, 0, Brush(), 0);
        }
        void GradientFill()
        {
            std::vector<TRIVERTEX> vertices(static_cast<std::size_t>(UpTo(20000)));
            std::vector<ULONG> mesh(static_cast<std::size_t>(UpTo(20000)));
            round.Hook<PFN_DrvGradientFill>(INDEX_DrvGradientFill)(
                nullptr, Clip(), Xlate(), vertices.data(), static_cast<ULONG>(vertices.size()), mesh.data(),
                static_cast<ULONG>(mesh.size() / 3), nullptr, nullptr, round.random.Word() % 3);
        }
        void SetPalette()
        {
            const LONG count = UpTo(20000);
            round.Hook<PFN_DrvSetPalette>(INDEX_DrvSetPalette)(round.session.Device().Dhpdev(),
                                                               round.make.Palette(static_cast<std::size_t>(count)), 0,
                                                               0, static_cast<ULONG>(count));
        }
        void EnablePdev()
        {
            round.SecondDevice(Round::Stage::None);
            round.Start();
            std::vector<HSURF> patterns(static_cast<std::size_t>(UpTo(20000)));
            std::u16string address = Name(), name = Name();
            DEVINFO info = {};
            round.NoteSecondDevice(round.Hook<PFN_DrvEnablePDEV>(INDEX_DrvEnablePDEV)(
                                       round.make.Mode(), address.data(), static_cast<ULONG>(patterns.size()),
                                       patterns.data(), 0, nullptr, sizeof(info), &info, round.SecondHandle(),
                                       name.data(), nullptr),
                                   Round::Stage::Pdev);
        }
    };

    TEST_F(HugeCalls, GiveSoundRecordsWithinTheBuffer)
    {
        void (HugeCalls::*const calls[])() = {
            &HugeCalls::StrokePath,   &HugeCalls::StrokeAndFillPath, &HugeCalls::TextOut,   &HugeCalls::StretchBltROP,
            &HugeCalls::GradientFill, &HugeCalls::SetPalette,        &HugeCalls::EnablePdev};
        for (int i = 0; i < 700 && !HasFailure(); ++i) {
            SCOPED_TRACE(i);
            round.Start();
            (this->*calls[static_cast<std::size_t>(i) % std::size(calls)])();
            round.TakeRecord(1);
            EXPECT_LE(round.consumer.length, Room);
            round.make.Forget();
        }
    }

    class CapturedDrawing : public testing::TestWithParam<DrawingHook> { };

    // With dark zones under the call, and with every list and cache that the capture looks into.
    TEST_P(CapturedDrawing, TakesNoMemory)
    {
        Round round(Seed);
        Session& session = round.session;
        for (LONG x = Painted.left; x < Painted.right; x += 2)
            session.AddDarkZone({x, Painted.top - 1, x + 1, Painted.bottom + 1});
        for (ULONG i = 0; i < 300; ++i) {
            session.Command(23, 100000 + i); // identifiers
            session.Command(37, 100000 + i); // processes
        }
        for (const ULONG cache : {1, 2, 4})
            session.Command(96, cache, 0);
        GetParam().call(session, session.Screen()); // what is made once is made now
        round.consumer.Start();
        const ULONG before = session.Engine().RequestCount(engine::Request::Memory);
        GetParam().call(session, session.Screen());
        EXPECT_EQ(session.Engine().RequestCount(engine::Request::Memory), before);
        EXPECT_EQ(round.consumer.submissions, 1u);
        EXPECT_EQ(round.consumer.guard, GuardWord);
    }

    INSTANTIATE_TEST_SUITE_P(Hooks, CapturedDrawing, testing::ValuesIn(DrawingHooks()), NameOf);

} // namespace

} // namespace conformance::records
