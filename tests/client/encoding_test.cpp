// Each encoding as literal bytes, behind a record that may carry it.

#include "client/json_lines.h"
#include "wire_bytes.h"

#include <gtest/gtest.h>

namespace koru::client::test {
namespace {

    // The JSON of one slot of a record that is known to decode.
    std::string SlotJson(std::span<const std::byte> bytes, std::string_view slot)
    {
        const std::string line = JsonLine(bytes, 0);
        const std::string key = "\"" + std::string(slot) + "\":";
        const std::size_t begin = line.find(key);
        return begin == std::string::npos ? line : line.substr(begin + key.size());
    }

#define EXPECT_SLOT(bytes, slot, expected)                                                                             \
    do {                                                                                                               \
        const std::string json = SlotJson(bytes, slot);                                                                \
        EXPECT_EQ(json.substr(0, std::string(expected).size()), expected) << json;                                     \
    } while (false)

    void ExpectAllKnown(std::span<const std::byte> bytes)
    {
        const auto record = Record::Decode(bytes);
        ASSERT_TRUE(record.has_value());
        EXPECT_EQ(UnknownRanges(*record), std::vector<Range>());
    }

    TEST(SurfaceEncoding, HasEveryField)
    {
        const WireBytes surface = WireBytes()
                                      .Bytes({1, 0xEE, 0xEE, 0xEE})
                                      .Words({2, 3, 4, 5, 6, 640, 480, 0x12C000, 0x8000, 0x8100, -2560, 6})
                                      .Halves({3, 0x8001})
                                      .Words({0, 0});
        const WireBytes bytes = RecordOf(0x200000, {72, 0, 0, 0, 0, 0, 0, 1}, surface);
        EXPECT_SLOT(
            bytes, "surface",
            R"({"at":72,"cached":1,"unique":2,"dhsurf":3,"hsurf":4,"dhpdev":5,"hdev":6,"size":[640,480],)"
            R"("bitsSize":1228800,"bits":32768,"scan0":33024,"lDelta":-2560,"format":6,"type":3,"flags":32769}})");
        ExpectAllKnown(bytes);
    }

    TEST(ClipEncoding, HasEveryFieldAndItsRectangles)
    {
        const WireBytes clip = WireBytes()
                                   .Bytes({0, 0xEE, 0xEE, 0xEE})
                                   .Words({9, -1, -2, 30, 40})
                                   .Bytes({3, 4, 5, 6})
                                   .Words({2, 36, 1, 2, 3, 4, 5, 6, 7, 8});
        const WireBytes bytes = RecordOf(0x4000, {0, 64, 0, 0, 0, 0}, clip);
        EXPECT_SLOT(
            bytes, "clip",
            R"({"at":64,"cached":0,"unique":9,"bounds":[-1,-2,30,40],"complexity":3,"rectComplexity":4,"mode":5,)"
            R"("options":6,"count":2,"rectanglesOffset":36,"rectangles":[[1,2,3,4],[5,6,7,8]]})");
        ExpectAllKnown(bytes);
    }

    TEST(ClipEncoding, ThatIsNotComplexEndsBehindItsFixedPart)
    {
        const WireBytes clip = WireBytes().Words({0, 9, 0, 0, 8, 8, 1, 0, 0});
        const WireBytes bytes = RecordOf(0x4000, {0, 64, 100, 0, 0, 0}, WireBytes(clip).Words({1, 2, 2}));
        const auto record = Record::Decode(bytes);
        const auto view = record->At(record->As<PaintRecord>()->clip);
        ASSERT_TRUE(view.has_value());
        EXPECT_EQ(view->range, (Range{64, 100}));
        EXPECT_TRUE(view->rectangles.empty());
        ExpectAllKnown(bytes);
    }

    TEST(BrushEncoding, HasEveryField)
    {
        const WireBytes bytes = RecordOf(0x20000, {64, 0, 0, 0, 0, 2}, WireBytes().Words({0xFFFFFFFF, 0x10, 0x11}));
        EXPECT_SLOT(bytes, "brush", R"({"at":64,"solidColor":4294967295,"realized":16,"realizedAgain":17})");
        ExpectAllKnown(bytes);
    }

    TEST(XlateEncoding, HasEveryFieldAndItsEntries)
    {
        const WireBytes xlate = WireBytes().Words({1, 2}).Halves({1, 4}).Words({2, 20, 0xFF, 0xFFFFFF});
        const WireBytes bytes = RecordOf(0x20000, {0, 0, 0, 0, 64, 2}, xlate);
        EXPECT_SLOT(bytes, "xlate",
                    R"({"at":64,"unique":1,"flags":2,"sourceType":1,"destType":4,"count":2,"entriesOffset":20,)"
                    R"("entries":[255,16777215]})");
        ExpectAllKnown(bytes);
    }

    TEST(XlateEncoding, WithoutEntriesKeepsTheAddress)
    {
        const WireBytes xlate = WireBytes().Words({1, 2}).Halves({2, 4}).Words({0, 0xE1000000});
        const WireBytes bytes = RecordOf(0x20000, {0, 0, 0, 0, 64, 2}, xlate);
        EXPECT_SLOT(bytes, "xlate",
                    R"({"at":64,"unique":1,"flags":2,"sourceType":2,"destType":4,"count":0,"entriesOffset":3774873600,)"
                    R"("entries":[]})");
        ExpectAllKnown(bytes);
    }

    // The driver announces 256 entries, and then its source has no vector.
    TEST(XlateEncoding, MayAnnounceEntriesThatDoNotFollow)
    {
        WireBytes objects = WireBytes().Words({1, 2}).Halves({1, 4}).Words({256, 20});
        const WireBytes last = RecordOf(0x20000, {0, 0, 0, 0, 64, 2}, objects);
        ExpectAllKnown(last);
        const WireBytes brushed =
            RecordOf(0x8000000, {0, 0, 0, 0, 144, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3, 164, 0xCCCC},
                     WireBytes(objects).Words({5, 6, 6}));
        const auto record = Record::Decode(brushed);
        const auto xlate = record->At(record->As<StretchBltROPRecord>()->xlate);
        ASSERT_TRUE(xlate.has_value());
        EXPECT_EQ(xlate->range, (Range{144, 164}));
        EXPECT_EQ(xlate->fixed.count, 256u);
        EXPECT_TRUE(xlate->entries.empty());
        ExpectAllKnown(brushed);
    }

    TEST(DeviceModeEncoding, HasEveryField)
    {
        const WireBytes mode = WireBytes()
                                   .Text(u"koru")
                                   .Fill(56, 0)
                                   .Halves({0x401, 0x100, 220, 8})
                                   .Words({0x5C0000})
                                   .Halves({1, 2, 3, -4, 5, 6, 7, 0xEEEE, 8, 9, 10, 11, 12})
                                   .Text(u"A4")
                                   .Fill(60, 0)
                                   .Halves({96})
                                   .Words({32, 1024, 768, 13, 60});
        ASSERT_EQ(mode.size(), 188u);
        const WireBytes bytes = RecordOf(0x80000, {1, 440, 56, 0}, mode);
        EXPECT_SLOT(
            bytes, "deviceMode",
            R"({"at":56,"deviceName":"koru","specVersion":1025,"driverVersion":256,"size":220,"driverExtra":8,)"
            R"("fields":6029312,"orientation":1,"paperSize":2,"paperLength":3,"paperWidth":-4,"scale":5,"copies":6,)"
            R"("defaultSource":7,"color":8,"duplex":9,"yResolution":10,"ttOption":11,"collate":12,)"
            R"("formName":"A4","logPixels":96,"bitsPerPel":32,"width":1024,"height":768,"displayFlags":13,)"
            R"("frequency":60}})");
        ExpectAllKnown(bytes);
    }

    WireBytes AnyLogFont(std::u16string_view face)
    {
        return WireBytes()
            .Words({-16, 0, 1, 2, 400})
            .Bytes({1, 2, 3, 4, 5, 6, 7, 8})
            .Text(face)
            .Fill(32 - face.size() * 2, 0);
    }

    // Sixteen characters have no room for a terminator, and the last one has lost its high byte.
    TEST(DeviceInfoEncoding, HasEveryFieldAndThreeFonts)
    {
        const WireBytes info = WireBytes()
                                   .Words({0x5BC0, 32, 92, 152, 3, 6})
                                   .Halves({8, 4})
                                   .Words({0x77})
                                   .Add(AnyLogFont(u"System"))
                                   .Add(AnyLogFont(u"ABCDEFGHIJKLMNOP"))
                                   .Add(AnyLogFont(u""));
        const WireBytes bytes = RecordOf(0x2, {0, 0, 0, -1, 300, 80, 1, 2, 0, 3}, info);
        const std::string font = R"("height":-16,"width":0,"escapement":1,"orientation":2,"weight":400,"italic":1,)"
                                 R"("underline":2,"strikeOut":3,"charSet":4,"outPrecision":5,"clipPrecision":6,)"
                                 R"("quality":7,"pitchAndFamily":8,"faceName":)";
        EXPECT_SLOT(bytes, "deviceInfo",
                    R"({"at":80,"graphicsCaps":23488,"defaultFontOffset":32,"ansiVariableFontOffset":92,)"
                    R"("ansiFixedFontOffset":152,"fontCount":3,"ditherFormat":6,"ditherWidth":8,"ditherHeight":4,)"
                    R"("defaultPalette":119,"defaultFont":{"at":112,)"
                        + font + R"("System"},"ansiVariableFont":{"at":172,)" + font
                        + R"("ABCDEFGHIJKLMNOP"},"ansiFixedFont":{"at":232,)" + font + R"(""}})");
        ExpectAllKnown(bytes);
    }

    // The second font did not fit and the third one, written in its place, did.
    TEST(DeviceInfoEncoding, LeavesOutFontsThatWereNotWritten)
    {
        const WireBytes info =
            WireBytes().Words({0, 32, 0, 92, 0, 0, 0, 0}).Add(AnyLogFont(u"a")).Add(AnyLogFont(u"b"));
        const WireBytes bytes = RecordOf(0x2, {0, 0, 0, -1, 300, 80, 1, 2, 0, 3}, info);
        const auto record = Record::Decode(bytes);
        const auto view = record->At(record->As<EnablePDEVRecord>()->deviceInfo);
        ASSERT_TRUE(view.has_value());
        EXPECT_TRUE(view->defaultFont.has_value());
        EXPECT_FALSE(view->ansiVariableFont.has_value());
        ASSERT_TRUE(view->ansiFixedFont.has_value());
        EXPECT_EQ(view->ansiFixedFont->fixed.faceName[0], u'b');
        ExpectAllKnown(bytes);
    }

    TEST(LineAttributesEncoding, HasEveryFieldAndItsStyles)
    {
        const WireBytes line = WireBytes().Words({1, 2, 3, 0x40000000, 0x41200000, 2, 0, 5, 16, 32});
        const WireBytes bytes = RecordOf(0x8000, {0, 0, 0, 0, 72, -1, -1, 0xD0D}, line);
        EXPECT_SLOT(bytes, "lineAttributes",
                    R"({"at":72,"flags":1,"join":2,"endCap":3,"width":1073741824,"miterLimit":1092616192,)"
                    R"("styleCount":2,"styleState":5,"styleEntries":[16,32]})");
        ExpectAllKnown(bytes);
    }

    // Three styles are as long as the brush that follows in their place.
    TEST(LineAttributesEncoding, StylesThatDidNotFitAreNotReadFromTheNextObject)
    {
        const WireBytes objects = WireBytes().Words({0, 0, 0, 0, 0, 3, 0, 0}).Words({7, 8, 8});
        const WireBytes bytes = RecordOf(0x20000000, {0, 0, 0, 0, 80, 112, -1, -1, 0xD0D, 1}, objects);
        const auto record = Record::Decode(bytes);
        const auto line = record->At(record->As<StrokeAndFillPathRecord>()->lineAttributes);
        ASSERT_TRUE(line.has_value());
        EXPECT_TRUE(line->styles.empty());
        EXPECT_EQ(line->range, (Range{80, 112}));
        ExpectAllKnown(bytes);
    }

    TEST(WideText, EndsAtItsTerminator)
    {
        const WireBytes texts =
            WireBytes().Text(std::u16string_view(u"\\Device\0", 8)).Text(std::u16string_view(u"koru\0", 5));
        const WireBytes bytes = RecordOf(0x2, {0, 80, 0, -1, 0, 0, 1, 2, 96, 3}, texts);
        EXPECT_SLOT(bytes, "logicalAddress", R"("\\Device",)");
        EXPECT_SLOT(bytes, "deviceName", R"("koru"})");
        ExpectAllKnown(bytes);
    }

    TEST(WideText, WithoutTerminatorEndsWithTheRecord)
    {
        const WireBytes bytes = RecordOf(0x2, {0, 80, 0, -1, 0, 0, 1, 2, 0, 3}, WireBytes().Text(u"abc").Bytes({0x64}));
        EXPECT_SLOT(bytes, "logicalAddress", R"("abc",)");
        const auto record = Record::Decode(bytes);
        EXPECT_EQ(UnknownRanges(*record), (std::vector<Range>{{86, 87}}));
    }

    TEST(StringEncoding, HasEveryFieldItsGlyphsAndItsText)
    {
        const WireBytes string = WireBytes()
                                     .Words({1252, 2, 3, 10, 20, 30, 40, 2, 40, 96})
                                     .Words({0x41, 100, -5, 1, -9, 7, 9})
                                     .Words({0x42, 108, -5, 0, 0, 0, 0})
                                     .Text(std::u16string_view(u"Hi\0", 3));
        const WireBytes bytes =
            RecordOf(0x10000, {0, 104, 0, 0, 0, 0, 0, 0, -1, -1, -1, -1, -1, -1, 0xD0D, 0xEEEEEEEE}, string);
        EXPECT_SLOT(
            bytes, "string",
            R"({"at":104,"codePage":1252,"accelFlags":2,"charInc":3,"rclBackground":[10,20,30,40],"glyphCount":2,)"
            R"("glyphsOffset":40,"textOffset":96,"glyphs":[{"glyph":65,"position":[100,-5],"origin":[1,-9],)"
            R"("size":[7,9]},{"glyph":66,"position":[108,-5],"origin":[0,0],"size":[0,0]}],"text":"Hi"})");
        ExpectAllKnown(bytes);
    }

    WireBytes TextOutOf(std::int64_t font, std::int64_t clip, const WireBytes& objects)
    {
        return RecordOf(0x10000, {0, 104, font, clip, 0, 0, 0, 0, -1, -1, -1, -1, -1, -1, 0xD0D, 0xEEEEEEEE}, objects);
    }

    // The font enumerated fewer glyphs than it announced: the text stands where the glyphs were.
    TEST(StringEncoding, TextMayStandInPlaceOfTheGlyphs)
    {
        const WireBytes string =
            WireBytes().Words({0, 0, 0, 0, 0, 0, 0, 3, 0, 40}).Text(std::u16string_view(u"abc\0", 4));
        const WireBytes bytes = TextOutOf(0, 0, string);
        const auto record = Record::Decode(bytes);
        const auto view = record->At(record->As<TextOutRecord>()->string);
        ASSERT_TRUE(view && view->text);
        EXPECT_TRUE(view->glyphs.empty());
        EXPECT_EQ(ToUtf8(view->text->characters), "abc");
        ExpectAllKnown(bytes);
    }

    // Of ten glyphs two were written, then the room was gone: the slot of the text is set and nothing stands there.
    TEST(StringEncoding, MayHoldFewerGlyphsThanAnnouncedAndNoText)
    {
        const WireBytes string = WireBytes().Words({0, 0, 0, 0, 0, 0, 0, 10, 40, 96}).Fill(56, 1);
        const WireBytes bytes = TextOutOf(0, 0, string);
        const auto record = Record::Decode(bytes);
        const auto view = record->At(record->As<TextOutRecord>()->string);
        ASSERT_TRUE(view && view->text);
        EXPECT_EQ(view->glyphs.size(), 2u);
        EXPECT_TRUE(view->text->characters.empty());
        EXPECT_EQ(view->text->range, (Range{200, 200}));
        ExpectAllKnown(bytes);
    }

    // Five characters were announced, two and the terminator fitted in front of the clip.
    TEST(StringEncoding, TextThatWasCutEndsWhereTheNextObjectBegins)
    {
        const WireBytes string =
            WireBytes().Words({0, 0, 0, 0, 0, 0, 0, 5, 0, 40}).Text(std::u16string_view(u"ab\0", 3));
        const WireBytes clip = WireBytes().Words({0, 9, 0, 0, 8, 8, 1, 0, 0});
        const WireBytes bytes = TextOutOf(0, 150, WireBytes(string).Add(clip));
        const auto record = Record::Decode(bytes);
        const auto view = record->At(record->As<TextOutRecord>()->string);
        ASSERT_TRUE(view && view->text);
        EXPECT_EQ(ToUtf8(view->text->characters), "ab");
        ExpectAllKnown(bytes);
    }

    // A counted string may contain zeros.
    TEST(StringEncoding, TextIsCountedAndNotTerminated)
    {
        const WireBytes string =
            WireBytes().Words({0, 0, 0, 0, 0, 0, 0, 3, 0, 40}).Text(std::u16string_view(u"a\0b\0", 4));
        const auto bytes = TextOutOf(0, 0, string);
        EXPECT_NE(JsonLine(bytes, 0).find(R"("text":"a\u0000b")"), std::string::npos);
    }

    WireBytes FontHead(std::initializer_list<std::int64_t> nameOffsets, std::initializer_list<std::int64_t> nameLengths)
    {
        return WireBytes()
            .Bytes({1, 0xEE, 0xEE, 0xEE})
            .Words({2, 3, 4, 5, 6, 7, 96, 97, 8, 9, 10, 400, 11})
            .Words(nameOffsets)
            .Fill(160, 0xAB)
            .Words(nameLengths);
    }

    TEST(FontEncoding, HasEveryFieldAndFourNames)
    {
        const WireBytes font =
            FontHead({248, 254, 258, 266}, {2, 1, 3, 0}).Text(std::u16string_view(u"Fa\0S\0Fac\0\0", 10));
        const WireBytes bytes =
            RecordOf(0x10000, {0, 0, 104, 0, 0, 0, 0, 0, -1, -1, -1, -1, -1, -1, 0xD0D, 0xEEEEEEEE}, font);
        std::string metrics;
        for (int i = 0; i < 160; ++i)
            metrics += "ab";
        EXPECT_SLOT(
            bytes, "font",
            R"({"at":104,"cached":1,"unique":2,"face":3,"maxWidth":4,"fontType":5,"ttUnique":6,"file":7,)"
            R"("resolution":[96,97],"styleSize":8,"consumer":9,"producer":10,"metricsSize":400,"metricsExtra":11,)"
            R"("familyOffset":248,"styleOffset":254,"faceOffset":258,"uniqueOffset":266,"metrics":")"
                + metrics
                + R"(","familyLength":2,"styleLength":1,"faceLength":3,"uniqueLength":0,)"
                  R"("familyName":"Fa","styleName":"S","faceName":"Fac","uniqueName":""})");
        ExpectAllKnown(bytes);
    }

    // The style name has no offset, the unique name was not written: its offset is the metrics' own. Both lengths are
    // stale and look right.
    TEST(FontEncoding, NamesThatWereNotWrittenAreNone)
    {
        const WireBytes font = FontHead({248, 0, 254, 258}, {2, 1, 1, 0}).Text(std::u16string_view(u"Fa\0X\0", 5));
        const WireBytes bytes =
            RecordOf(0x10000, {0, 0, 104, 0, 0, 0, 0, 0, -1, -1, -1, -1, -1, -1, 0xD0D, 0xEEEEEEEE}, font);
        const auto record = Record::Decode(bytes);
        const auto view = record->At(record->As<TextOutRecord>()->font);
        ASSERT_TRUE(view && view->familyName && view->faceName);
        EXPECT_EQ(ToUtf8(view->familyName->characters), "Fa");
        EXPECT_FALSE(view->styleName.has_value());
        EXPECT_EQ(ToUtf8(view->faceName->characters), "X");
        EXPECT_FALSE(view->uniqueName.has_value());
        ExpectAllKnown(bytes);
    }

    // The metrics' own offset happens to be where the next name stands.
    TEST(FontEncoding, ANameMustHaveItsLength)
    {
        const WireBytes font = FontHead({248, 248, 0, 0}, {9, 2, 0, 0}).Text(std::u16string_view(u"Fa\0", 3));
        const WireBytes bytes =
            RecordOf(0x10000, {0, 0, 104, 0, 0, 0, 0, 0, -1, -1, -1, -1, -1, -1, 0xD0D, 0xEEEEEEEE}, font);
        const auto record = Record::Decode(bytes);
        const auto view = record->At(record->As<TextOutRecord>()->font);
        ASSERT_TRUE(view && view->styleName);
        EXPECT_FALSE(view->familyName.has_value());
        ExpectAllKnown(bytes);
    }

    TEST(TextOut, HasExtraRectanglesInFrontOfTheBrushes)
    {
        const WireBytes objects = WireBytes().Words({1, 2, 3, 4, 5, 6, 7, 8}).Words({9, 9, 9}).Words({8, 8, 8});
        const WireBytes bytes =
            RecordOf(0x10000, {0, 0, 0, 0, 2, 104, 136, 148, -1, -1, -1, -1, -1, -1, 0xD0D, 0xEEEEEEEE}, objects);
        EXPECT_SLOT(bytes, "extra", R"([[1,2,3,4],[5,6,7,8]],"foreBrush":{"at":136,"solidColor":9,)");
        ExpectAllKnown(bytes);

        WireBytes fewer = bytes;
        fewer.SetWord(56, 1);
        const auto record = Record::Decode(fewer);
        EXPECT_EQ(record->At(record->As<TextOutRecord>()->extra)->size(), 1u);
        EXPECT_EQ(UnknownRanges(*record), (std::vector<Range>{{120, 136}}));
    }

    TEST(Encodings, MayStandAtOddOffsets)
    {
        const WireBytes objects = WireBytes().Text(std::u16string_view(u"\0", 1)).Bytes({0x11}).Words({5, 6, 6});
        const WireBytes bytes = RecordOf(0x4000, {0, 0, 67, 0, 0, 0}, objects);
        EXPECT_SLOT(bytes, "brush", R"({"at":67,"solidColor":5,"realized":6,"realizedAgain":6})");
    }

} // namespace
} // namespace koru::client::test
