// Places where the driver's own arithmetic leaves gaps, overlaps and data cut short.

#include "client/json_lines.h"
#include "wire_bytes.h"

#include <gtest/gtest.h>

namespace koru::client::test {
namespace {

    std::vector<Range> Unknown(std::span<const std::byte> bytes)
    {
        return UnknownRanges(*Record::Decode(bytes));
    }

    // A filled path, 72 bytes, whose path is the first object, with a clip if `clip` says where.
    WireBytes FillPathOf(const WireBytes& path, std::int64_t clip = 0, const WireBytes& behind = {})
    {
        return RecordOf(0x400, {0, 72, clip, 0, -1, -1, 0xD0D, 1}, WireBytes(path).Add(behind));
    }

    Path PathOf(std::span<const std::byte> bytes)
    {
        const auto record = Record::Decode(bytes);
        const auto path = record->At(record->As<FillPathRecord>()->path);
        EXPECT_TRUE(path.has_value());
        return path.value_or(Path());
    }

    WireBytes AnyClip()
    {
        return WireBytes().Words({0, 9, 0, 0, 8, 8, 1, 0, 0});
    }

    // Subpaths of 2, 3 and 4 points: the table is 36 bytes long, so the second one's points are 24 + 16 bytes from
    // its entry and the third one's 12 + 40.
    TEST(PathLayout, FirstEntryHoldsZeroAndItsPointsFollowTheTable)
    {
        const WireBytes path = WireBytes()
                                   .Words({5, 1, 0xEEEEEEEE, 3, 20})
                                   .Words({1, 2, 0, 0, 3, 40, 2, 4, 52})
                                   .Words({16, 32, 48, 64})
                                   .Words({1, 1, 2, 2, 3, 3})
                                   .Words({4, 4, 5, 5, 6, 6, -7, 7});
        const WireBytes bytes = FillPathOf(path);
        const std::string expected =
            R"("path":{"at":72,"flags":5,"curves":1,"entryCount":3,"dataOffset":20,"state":"complete","subpaths":[)"
            R"({"flags":1,"pointCount":2,"pointsOffset":0,"points":[[16,32],[48,64]]},)"
            R"({"flags":0,"pointCount":3,"pointsOffset":40,"points":[[1,1],[2,2],[3,3]]},)"
            R"({"flags":2,"pointCount":4,"pointsOffset":52,"points":[[4,4],[5,5],[6,6],[-7,7]]}]})";
        EXPECT_NE(JsonLine(bytes, 0).find(expected), std::string::npos) << JsonLine(bytes, 0);
        EXPECT_TRUE(Unknown(bytes).empty());
    }

    // The first entry lost its points; the second one's come first, and so it holds 0 as well.
    TEST(PathLayout, SecondEntryHoldsZeroWhenTheFirstLostItsPoints)
    {
        const WireBytes path =
            WireBytes().Words({0, 0, 0, 3, 20}).Words({1, 8192, 0, 0, 1, 0, 0, 1, 20}).Words({10, 11, 12, 13});
        const WireBytes bytes = FillPathOf(path);
        const Path view = PathOf(bytes);
        EXPECT_EQ(view.state, Path::State::Complete);
        EXPECT_TRUE(view[0].lost);
        EXPECT_FALSE(view[1].lost);
        EXPECT_EQ(view[1].points[0], (Point{10, 11}));
        EXPECT_EQ(view[2].points[0], (Point{12, 13}));
        EXPECT_TRUE(Unknown(bytes).empty());
    }

    TEST(PathLayout, EntriesWithoutPointsTakeNone)
    {
        const WireBytes path = WireBytes().Words({0, 0, 0, 2, 20}).Words({0, 0, 0, 0, 1, 0}).Words({10, 11});
        const WireBytes bytes = FillPathOf(path);
        const Path view = PathOf(bytes);
        EXPECT_FALSE(view[0].lost);
        EXPECT_TRUE(view[0].points.empty());
        EXPECT_EQ(view[1].points[0], (Point{10, 11}));
    }

    TEST(PathLayout, EntriesThatDidNotFitLeaveACountBehind)
    {
        const WireBytes bytes = FillPathOf(WireBytes().Words({0, 0, 0, 4000, 0}), 92, AnyClip());
        const Path view = PathOf(bytes);
        EXPECT_EQ(view.state, Path::State::Empty);
        EXPECT_TRUE(view.entries.empty());
        EXPECT_EQ(view.fixed.entryCount, 4000u);
        EXPECT_TRUE(Unknown(bytes).empty());
    }

    // One entry of 8191 points, 65528 bytes: they cannot follow. The path takes their size all the same, which
    // saturates at the buffer's end.
    TEST(PathLayout, WithoutPointsOneEntryTakesTheirSize)
    {
        const WireBytes path = WireBytes().Words({0, 0, 0, 1, 20}).Words({1, 8191, 0}).Fill(0x10000 - 104, 0xEE);
        const WireBytes bytes = FillPathOf(path);
        ASSERT_EQ(bytes.size(), 0x10000u);
        const Path view = PathOf(bytes);
        EXPECT_EQ(view.state, Path::State::CutShort);
        ASSERT_EQ(view.entries.size(), 1u);
        EXPECT_TRUE(view[0].lost);
        EXPECT_TRUE(Unknown(bytes).empty());
    }

    // The points that were kept would end with the buffer, and that is one byte too far. What the last, lost entry
    // would have taken reaches beyond.
    TEST(PathLayout, PointsThatWouldFillTheBufferDidNotFollow)
    {
        const WireBytes path = WireBytes().Words({0, 0, 0, 3, 20, 1, 8176, 0, 0, 0, 0, 0, 9000, 0}).Fill(65408, 0xEE);
        const WireBytes bytes = FillPathOf(path);
        ASSERT_EQ(bytes.size(), 0x10000u);
        EXPECT_EQ(PathOf(bytes).state, Path::State::CutShort);
        EXPECT_TRUE(Unknown(bytes).empty());
    }

    // Three entries whose points did not follow; the last one has two points, so that the path takes 20 + 16 bytes
    // and the clip stands on top of the table behind its first entry and a third of the second.
    TEST(PathLayout, TheNextObjectMayStandOnTopOfTheTable)
    {
        const WireBytes bytes = FillPathOf(WireBytes().Words({0, 0, 0, 3, 20, 1, 0, 0, 2}), 108, AnyClip());
        const Path view = PathOf(bytes);
        EXPECT_EQ(view.state, Path::State::CutShort);
        ASSERT_EQ(view.entries.size(), 1u);
        EXPECT_EQ(view[0].entry.flags, 1u);
        EXPECT_EQ(view.range, (Range{72, 108}));
        EXPECT_TRUE(Unknown(bytes).empty());
    }

    // Two entries whose points did not follow. The last one has 5 points: 40 bytes are taken from the table's start
    // on, of which 24 are the table and the rest is stale.
    TEST(PathLayout, WithoutPointsTheNextObjectMayStandApart)
    {
        const WireBytes path = WireBytes().Words({0, 0, 0, 2, 20}).Words({1, 3, 0, 2, 5, 24}).Fill(16, 0xEE);
        const WireBytes bytes = FillPathOf(path, 132, AnyClip());
        const Path view = PathOf(bytes);
        EXPECT_EQ(view.state, Path::State::CutShort);
        ASSERT_EQ(view.entries.size(), 2u);
        EXPECT_EQ(view[1].entry.pointCount, 5u);
        EXPECT_TRUE(view[1].lost);
        EXPECT_EQ(view.range, (Range{72, 132}));
        EXPECT_TRUE(Unknown(bytes).empty());
    }

    TEST(EnablePDEVLayout, EncodingsStandOnThePatternHandles)
    {
        // Four handles from 80 to 96; a name of three characters and its 0 covers the first two.
        WireBytes bytes = RecordOf(0x2, {0, 80, 4, 80, 0, 0, 1, 2, 0, 3},
                                   WireBytes().Text(std::u16string_view(u"abc\0", 4)).Words({0x103, 0x104}));
        bytes.SetWord(0, 88); // the record ends with the name; its buffer does not
        const auto record = Record::Decode(bytes);
        ASSERT_TRUE(record.has_value());
        const auto patterns = record->At(record->As<EnablePDEVRecord>()->patterns);
        ASSERT_TRUE(patterns.has_value());
        ASSERT_EQ(patterns->handles.size(), 4u);
        EXPECT_FALSE(patterns->Intact(0));
        EXPECT_FALSE(patterns->Intact(1));
        EXPECT_TRUE(patterns->Intact(2));
        EXPECT_EQ(patterns->handles[3], 0x104u);
        EXPECT_NE(JsonLine(bytes, 0).find(R"("patterns":[null,null,259,260])"), std::string::npos);
        EXPECT_TRUE(Unknown(bytes).empty());
    }

    TEST(EnablePDEVLayout, HandlesThatCouldNotFitTheBufferAreNone)
    {
        const WireBytes bytes = RecordOf(0x2, {0, 0, 16365, 80, 0, 0, 1, 2, 0, 3});
        const auto record = Record::Decode(bytes);
        EXPECT_FALSE(record->At(record->As<EnablePDEVRecord>()->patterns).has_value());
    }

    // The gradient record with a surface, a clip, or both; vertices and mesh as told.
    WireBytes GradientOf(std::int64_t surface, std::int64_t clip, std::int64_t xlate, std::int64_t arrays,
                         std::int64_t vertices, std::int64_t mesh, std::int64_t mode, const WireBytes& objects)
    {
        return RecordOf(0x2000000, {surface, clip, xlate, arrays, vertices, 0, mesh, 0, 0, 0, 0, 0, 0, mode}, objects);
    }

    GradientArrays GradientFrom(std::span<const std::byte> bytes)
    {
        const auto record = Record::Decode(bytes);
        const auto arrays = record->At(record->As<GradientFillRecord>()->arrays);
        EXPECT_TRUE(arrays.has_value());
        return arrays.value_or(GradientArrays());
    }

    WireBytes Vertex(int x)
    {
        return WireBytes().Words({x, x + 1}).Halves({0x100, 0x200, 0x300, 0x400});
    }

    // The surface is 64 bytes long, so the mesh comes 64 bytes behind the vertices' start and the record ends 64
    // bytes behind the mesh's.
    TEST(GradientLayout, ArraysStandAsFarApartAsTheLastObjectIsLong)
    {
        const WireBytes objects =
            AnySurface().Add(Vertex(10)).Add(Vertex(20)).Fill(32, 0xEE).Words({0, 1}).Fill(56, 0xEE);
        const WireBytes bytes = GradientOf(96, 0, 0, 224, 2, 1, 0, objects);
        EXPECT_NE(JsonLine(bytes, 0).find(
                      R"("arrays":{"at":160,"vertices":[{"x":10,"y":11,"red":256,"green":512,"blue":768,"alpha":1024},)"
                      R"({"x":20,"y":21,"red":256,"green":512,"blue":768,"alpha":1024}],"mesh":[0,1]}})"),
                  std::string::npos)
            << JsonLine(bytes, 0);
        EXPECT_TRUE(Unknown(bytes).empty());
    }

    // The translation is 20 bytes long: the mesh stands on the second of three vertices.
    TEST(GradientLayout, TheMeshMayStandOnTheVertices)
    {
        const WireBytes xlate = WireBytes().Words({1, 2, 0, 0, 0xE1000000});
        const WireBytes objects = WireBytes(xlate).Add(Vertex(10)).Words({20}).Words({0, 1, 2}).Add(Vertex(30));
        const WireBytes bytes = GradientOf(0, 0, 96, 136, 3, 1, 2, objects);
        // As long as the driver makes it: 136 + 20.
        WireBytes cut = bytes;
        cut.SetWord(0, 156);
        const GradientArrays arrays = GradientFrom(cut);
        EXPECT_EQ(arrays.range, (Range{116, 156}));
        ASSERT_EQ(arrays.vertices.size(), 3u); // the third one stands behind the record, in its buffer
        EXPECT_TRUE(arrays.Intact(0));
        EXPECT_FALSE(arrays.Intact(1));
        EXPECT_TRUE(arrays.Intact(2));
        EXPECT_EQ(arrays.vertices[2].x, 30);
        EXPECT_EQ(arrays.numbersPerElement, 3u);
        ASSERT_EQ(arrays.mesh.size(), 3u);
        EXPECT_EQ(arrays.mesh[2], 2u);
        EXPECT_TRUE(Unknown(cut).empty());
        // With the record's own bytes alone, the arrays end with them.
        const GradientArrays inside = GradientFrom(std::span<const std::byte>(cut).first(156));
        EXPECT_EQ(inside.vertices.size(), 2u);
        EXPECT_EQ(inside.mesh.size(), 3u);
    }

    // A translation of 5 entries is 40 bytes long, one whose vector was missing 20: both put the last array 40
    // bytes behind the translation's start, the first without a mesh.
    TEST(GradientLayout, TellsAMissingVectorFromAMissingMesh)
    {
        const WireBytes head = WireBytes().Words({1, 2, 1, 5, 20});
        const WireBytes alone =
            GradientOf(0, 0, 96, 136, 1, 0, 0, WireBytes(head).Words({1, 2, 3, 4, 5}).Add(Vertex(10)).Fill(24, 0));
        EXPECT_EQ(GradientFrom(alone).range, (Range{136, 176}));
        EXPECT_EQ(GradientFrom(alone).vertices[0].x, 10);
        EXPECT_TRUE(Unknown(alone).empty());

        const WireBytes both =
            GradientOf(0, 0, 96, 136, 1, 1, 0, WireBytes(head).Add(Vertex(10)).Fill(4, 0).Words({0, 1}).Fill(12, 0));
        EXPECT_EQ(GradientFrom(both).range, (Range{116, 156}));
        EXPECT_EQ(GradientFrom(both).vertices[0].x, 10);
        EXPECT_TRUE(Unknown(both).empty());
        const auto record = Record::Decode(both);
        EXPECT_TRUE(record->At(record->As<GradientFillRecord>()->xlate)->entries.empty());
    }

    // Without an object, both arrays stand behind the fixed part and the record ends there.
    TEST(GradientLayout, WithoutObjectsBothArraysStickOut)
    {
        WireBytes bytes = GradientOf(0, 0, 0, 96, 2, 1, 0, WireBytes().Words({0, 1}).Fill(8, 0).Add(Vertex(20)));
        bytes.SetWord(0, 96);
        const GradientArrays arrays = GradientFrom(bytes);
        EXPECT_EQ(arrays.range, (Range{96, 96}));
        EXPECT_FALSE(arrays.Intact(0));
        EXPECT_TRUE(arrays.Intact(1));
        EXPECT_EQ(arrays.mesh[1], 1u);
    }

    // A clip of 2500 rectangles is 40036 bytes long: the mesh would stand behind the buffer's end.
    TEST(GradientLayout, SaturatesAtTheBuffersEnd)
    {
        const WireBytes clip = WireBytes().Words({0, 9, 0, 0, 8, 8, 3, 2500, 36}).Fill(40000, 1);
        const WireBytes objects = WireBytes(clip).Add(Vertex(10)).Fill(0x10000 - 96 - 40036 - 16, 0xEE);
        const WireBytes bytes = GradientOf(0, 96, 0, 0x10000, 1, 1, 0, objects);
        ASSERT_EQ(bytes.size(), 0x10000u);
        const GradientArrays arrays = GradientFrom(bytes);
        EXPECT_EQ(arrays.range, (Range{40132, 0x10000}));
        EXPECT_EQ(arrays.vertices[0].x, 10);
        EXPECT_TRUE(arrays.mesh.empty());
        EXPECT_TRUE(Unknown(bytes).empty());
    }

    TEST(StretchBltLayout, SurfaceStandsBehindTheFixedPart)
    {
        const WireBytes bytes = RecordOf(0x200, {96, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3}, AnySurface());
        EXPECT_TRUE(Unknown(bytes).empty());
        const auto record = Record::Decode(bytes);
        EXPECT_TRUE(record->At(record->As<StretchBltRecord>()->surface).has_value());
    }

    TEST(EscapeLayout, DataThatWasLeftOutIsNone)
    {
        const WireBytes bytes = RecordOf(0x800000, {0, 0, 9, 70000, 0, 4, 72, 0}, WireBytes().Words({0x04030201}));
        EXPECT_NE(JsonLine(bytes, 0).find(R"("input":null,"output":"01020304"})"), std::string::npos);
        EXPECT_TRUE(Unknown(bytes).empty());
    }

    TEST(SetPaletteLayout, HoldsAsManyEntriesAsTheRecordIsLong)
    {
        const WireBytes bytes = RecordOf(0x400000, {0, 0, 0, 256, 64, 0}, WireBytes().Fill(1200, 1));
        const auto record = Record::Decode(bytes);
        EXPECT_EQ(record->At(record->As<SetPaletteRecord>()->entries)->size(), 300u);
    }

    TEST(CallTypes, FillPathIsSwitchedByTheBitOfStrokePath)
    {
        EXPECT_EQ(MaskBit(CallType::FillPath), 0x8000u);
        EXPECT_EQ(MaskBit(CallType::StrokePath), 0x8000u);
        EXPECT_EQ(MaskBit(CallType::StrokeAndFillPath), 0x20000000u);
        EXPECT_EQ(MaskBit(CallType::Escape), 0x800000u);
    }

} // namespace
} // namespace koru::client::test
