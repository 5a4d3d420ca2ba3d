#include "capture/encoders.h"
#include "escape/item_cache.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    constexpr char NameCut[] =
        "KORU: ExpandDrvZWSTR: Warning!!! There isn't size enough for the string. String truncated or missing\n";

    // Names of 2, 1, 3 and 4 characters behind 184 bytes of metrics, of which the last two stand out.
    struct NamedFont : SampleFont {
        NamedFont()
        {
            SetNames(u"Fa", u"S", u"Fac", u"Uniq");
            Metrics()->cjIfiExtra = 0x11;
            Metrics()->dpFontSim = 0x12;
            Metrics()->ulPanoseCulture = 0x13;
            Metrics()->panose.bXHeight = 0x14;
        }
    };

    // The metrics of a NamedFont with the name offsets given: 184 bytes.
    Bytes Metrics(ULONG family, ULONG style, ULONG face, ULONG unique)
    {
        return Words({184 + 28, 0x11, family, style, face, unique, 0x12}) + Filled(140, 0) + Words({0x13})
            + Filled(9, 0) + Bytes{0x14, 0, 0};
    }

    Bytes Name(std::u16string_view text)
    {
        return Characters(text) + Halves({0});
    }

    class FontEncoder : public CaptureTest {
    protected:
        static Writer Encoder(FONTOBJ& font)
        {
            return [&font](BYTE* at, ULONG room) { return ExpandFontObj(&font, at, room); };
        }
    };

    TEST_F(FontEncoder, WritesAFontWithoutMetrics)
    {
        SampleFont font;
        ExpectAtEveryRoom(248, Encoder(font), [](ULONG room) -> Outcome {
            if (room < 248)
                return {0, {}, NumberMessage("ExpandFontObj. Error buffer too small. ", room)};
            return {248, FontBytes(), ""};
        });
    }

    TEST_F(FontEncoder, AppendsTheFourNames)
    {
        NamedFont font;
        ExpectBytes(FontHeadBytes() + Metrics(248, 254, 258, 266) + Words({2, 1, 3, 4}) + Name(u"Fa") + Name(u"S")
                        + Name(u"Fac") + Name(u"Uniq"),
                    Encoder(font), 276);
    }

    TEST_F(FontEncoder, CutsNamesToTheRoomAndKeepsTheOffsetsOfThoseLeftOut)
    {
        NamedFont font; // in its own metrics the names stand at 184, 190, 194 and 202
        const auto cut = [](int names) {
            std::string messages;
            for (int i = 0; i < names; ++i)
                messages += NameCut;
            return messages;
        };
        const auto expect = [&](ULONG room, ULONG size, const Bytes& bytes, int namesCut) {
            const Written written = Write(Encoder(font), room);
            EXPECT_EQ(written.size, size) << "room " << room;
            EXPECT_TRUE(IsOnly(written.memory, bytes)) << "room " << room;
            EXPECT_EQ(written.messages, cut(namesCut)) << "room " << room;
        };
        expect(248, 248, FontHeadBytes() + Metrics(184, 190, 194, 202) + Filled(16), 4);
        expect(249, 248, FontHeadBytes() + Metrics(184, 190, 194, 202) + Filled(16), 4);
        expect(250, 250, FontHeadBytes() + Metrics(248, 190, 194, 202) + Words({0, Canary, Canary, Canary}) + Name(u""),
               4);
        expect(252, 252,
               FontHeadBytes() + Metrics(248, 190, 194, 202) + Words({1, Canary, Canary, Canary}) + Name(u"F"), 4);
        expect(254, 254,
               FontHeadBytes() + Metrics(248, 190, 194, 202) + Words({2, Canary, Canary, Canary}) + Name(u"Fa"), 3);
        expect(275, 274,
               FontHeadBytes() + Metrics(248, 254, 258, 266) + Words({2, 1, 3, 3}) + Name(u"Fa") + Name(u"S")
                   + Name(u"Fac") + Name(u"Uni"),
               1);
    }

    TEST_F(FontEncoder, StaysWithinEveryRoom)
    {
        NamedFont font;
        for (ULONG room = 248; room <= 284; ++room) {
            const Written written = Write(Encoder(font), room);
            EXPECT_LE(written.size, room);
            EXPECT_TRUE(IsOnly(Bytes(written.memory.begin() + written.size, written.memory.end()), {})) << room;
        }
    }

    TEST_F(FontEncoder, SkipsNamesThatTheMetricsDoNotHave)
    {
        SampleFont font;
        font.SetNames(u"", u"S", u"", u"Uniq");
        ExpectBytes(FontHeadBytes() + Words({184 + 14, 0, 0, 248, 0, 252}) + Filled(160, 0)
                        + Words({Canary, 1, Canary, 4}) + Name(u"S") + Name(u"Uniq"),
                    Encoder(font));
    }

    TEST_F(FontEncoder, ReadsNamesToTheEndOfTheMetricsAtMost)
    {
        SampleFont font;
        font.SetNames(u"", u"", u"", u"Unique");
        font.Metrics()->cjThis = 184 + 6;
        ExpectBytes(FontHeadBytes() + Words({190, 0, 0, 0, 0, 248}) + Filled(160, 0)
                        + Words({Canary, Canary, Canary, 3}) + Name(u"Uni"),
                    Encoder(font));
    }

    TEST_F(FontEncoder, ReadsNamesAtOddOffsets)
    {
        SampleFont font;
        font.SetNames(u"", u"", u"", u"\u4100\u4200\u4300"); // at 184: 00 41 00 42 00 43 00 00
        font.Metrics()->dpwszUniqueName = 185;
        ExpectBytes(FontHeadBytes() + Words({184 + 8, 0, 0, 0, 0, 248}) + Filled(160, 0)
                        + Words({Canary, Canary, Canary, 3}) + Name(u"ABC"),
                    Encoder(font));
    }

    TEST_F(FontEncoder, TrustsTheTerminatorWhereTheMetricsTellNoSize)
    {
        SampleFont font;
        font.SetNames(u"", u"", u"", u"Unique");
        font.Metrics()->cjThis = 184;
        ExpectBytes(FontHeadBytes() + Words({184, 0, 0, 0, 0, 248}) + Filled(160, 0)
                        + Words({Canary, Canary, Canary, 6}) + Name(u"Unique"),
                    Encoder(font));
    }

    TEST_F(FontEncoder, TellsWhatTheClientHoldsAlready)
    {
        SampleFont font;
        AddCacheItem(CacheOfClips, 0x701);
        AddCacheItem(CacheOfFonts, 0x701);
        Bytes expected = FontBytes();
        expected[0] = 1;
        ExpectBytes(expected, 248, Encoder(font));
        RemoveCacheItem(CacheOfFonts, 0x701);
        expected[0] = 0;
        ExpectBytes(expected, 248, Encoder(font));
    }

    TEST_F(FontEncoder, NeverTakesTheUniqueNumberZeroForCached)
    {
        SampleFont font;
        font.iUniq = 0;
        AddCacheItem(CacheOfFonts, 0);
        const Written written = Write(Encoder(font), 248);
        EXPECT_EQ(WordAt(written.memory, 0), 0xCCCCCC00u);
    }

} // namespace
} // namespace capture_tests
