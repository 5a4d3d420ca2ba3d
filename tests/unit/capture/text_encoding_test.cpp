#include "capture/encoders.h"
#include "engine/core/objects.h"
#include "tests/unit/capture/capture_test.h"

using namespace koru;

namespace capture_tests {
namespace {

    constexpr char WrongCount[] = "KORU: STROBJ_bEnum != dwGlyphs";
    constexpr char StringTruncated[] = "KORU: ExpandWSTR: Error the string is truncated, the buffer is too small.\n";

    std::string GlyphsCut(ULONG left)
    {
        return NumberMessage("ExpandGlyphposArray. Warning buffer too small. ", left);
    }

    // Three glyphs and the string "abc".
    struct ThreeGlyphs : engine::Text {
        ThreeGlyphs()
        {
            AddGlyph(0x501, {10, 20}, {1, -9}, {8, 1}, {0xFF});
            AddGlyph(0x502, {18, 20}, {0, -8}, {16, 1}, {0x80, 0x01});
            AddGlyph(0x503, {-4, 20}, {2, -7}, {5, 2}, {0xF8, 0x88});
            SetString(u"abc");
            flAccel = 0x2;
            ulCharInc = 8;
            rclBkGround = {1, 2, 3, 4};
        }
    };

    const Bytes FirstGlyph = Words({0x501, 10, 20, 1, 0xFFFFFFF7, 8, 1});
    const Bytes SecondGlyph = Words({0x502, 18, 20, 0, 0xFFFFFFF8, 16, 1});
    const Bytes ThirdGlyph = Words({0x503, 0xFFFFFFFC, 20, 2, 0xFFFFFFF9, 5, 2});

    Bytes TextHead(ULONG glyphs, ULONG string, ULONG count = 3)
    {
        return Words({1252, 2, 8, 1, 2, 3, 4, count, glyphs, string});
    }

    Bytes Abc()
    {
        return Characters(u"abc") + Halves({0});
    }

    class GlyphEncoder : public CaptureTest { };

    TEST_F(GlyphEncoder, WritesWholeGlyphsAndWarnsWhenNoneWouldFollow)
    {
        ThreeGlyphs text;
        const Writer encoder = [&](BYTE* at, ULONG room) {
            return ExpandGlyphposArray(text.glyphs.data(), 3, at, room);
        };
        ExpectAtEveryRoom(112, encoder, [](ULONG room) -> Outcome {
            if (room < 28)
                return {0, {}, GlyphsCut(room)};
            if (room < 56)
                return {28, FirstGlyph, GlyphsCut(room - 28)};
            if (room < 84)
                return {56, FirstGlyph + SecondGlyph, GlyphsCut(room - 56)};
            if (room < 112) // all of them fit
                return {84, FirstGlyph + SecondGlyph + ThirdGlyph, GlyphsCut(room - 84)};
            return {84, FirstGlyph + SecondGlyph + ThirdGlyph, ""};
        });
    }

    TEST_F(GlyphEncoder, WritesZerosForGlyphsWithoutBits)
    {
        GLYPHDEF noBits = {.pgb = nullptr};
        const GLYPHPOS glyphs[] = {{0x601, nullptr, {1, 2}}, {0x602, &noBits, {3, 4}}};
        ExpectBytes(Words({0x601, 1, 2, 0, 0, 0, 0}) + Words({0x602, 3, 4, 0, 0, 0, 0}),
                    [&](BYTE* at, ULONG room) { return ExpandGlyphposArray(glyphs, 2, at, room); });
    }

    class TextEncoder : public CaptureTest {
    protected:
        static Writer Encoder(STROBJ& text)
        {
            return [&text](BYTE* at, ULONG room) { return ExpandSTROBJ(&text, at, room); };
        }
    };

    TEST_F(TextEncoder, WritesListedGlyphsAndTheStringAsFarAsTheyFit)
    {
        ThreeGlyphs text;
        ExpectAtEveryRoom(152, Encoder(text), [](ULONG room) -> Outcome {
            if (room < 40)
                return {0, {}, NumberMessage("ExpandSTROBJ: Buffer too small. ", room)};
            const ULONG fitting = std::min((room - 40) / 28, 3u);
            const ULONG end = 40 + fitting * 28;
            const ULONG characters = std::min((room - end) / 2, 4u); // with the terminator
            const Bytes glyphs[] = {{}, FirstGlyph, FirstGlyph + SecondGlyph, FirstGlyph + SecondGlyph + ThirdGlyph};
            Bytes string;
            if (characters > 0)
                string = Characters(std::u16string_view(u"abc").substr(0, characters - 1)) + Halves({0});
            std::string messages;
            if (room - end < 28)
                messages += GlyphsCut(room - end);
            if (characters > 0 && characters < 4)
                messages += StringTruncated;
            return {end + static_cast<ULONG>(string.size()),
                    TextHead(fitting > 0 ? 40 : 0, end) + glyphs[fitting] + string, messages};
        });
    }

    TEST_F(TextEncoder, WritesEnumeratedGlyphsBatchByBatch)
    {
        for (const std::size_t batch : {1, 2, 3, 100}) {
            ThreeGlyphs text;
            text.Enumerate(batch);
            ExpectBytes(TextHead(40, 124) + FirstGlyph + SecondGlyph + ThirdGlyph + Abc(), Encoder(text));
        }
    }

    TEST_F(TextEncoder, BeginsTheEnumerationAtItsStart)
    {
        ThreeGlyphs text;
        text.Enumerate(2);
        text.next = 1;
        ExpectBytes(TextHead(40, 124) + FirstGlyph + SecondGlyph + ThirdGlyph + Abc(), Encoder(text));
    }

    TEST_F(TextEncoder, LeavesTheEnumerationAtItsStart)
    {
        ThreeGlyphs text;
        text.Enumerate(2);
        Write(Encoder(text), 1000);
        EXPECT_EQ(text.next, 0u);
    }

    TEST_F(TextEncoder, OverwritesGlyphsWhoseNumberIsWrong)
    {
        for (const ULONG announced : {2u, 4u}) {
            ThreeGlyphs text;
            text.Enumerate(2);
            text.cGlyphs = announced;
            text.SetString(u"abcd");
            const Bytes string = Characters(std::u16string_view(u"abcd").substr(0, announced)) + Halves({0});
            Bytes glyphs = FirstGlyph + SecondGlyph + ThirdGlyph;
            std::copy(string.begin(), string.end(), glyphs.begin());
            const Written written = Write(Encoder(text), 1000);
            EXPECT_EQ(written.size, 40 + string.size());
            EXPECT_TRUE(IsOnly(written.memory, TextHead(0, 40, announced) + glyphs));
            EXPECT_EQ(written.messages, WrongCount);
        }
    }

    TEST_F(TextEncoder, StopsEnumeratingWhenABatchDoesNotFit)
    {
        ThreeGlyphs text;
        text.Enumerate(1);
        text.pwszOrg = nullptr;
        const Written written = Write(Encoder(text), 40 + 28 + 5);
        EXPECT_EQ(written.size, 40u);
        EXPECT_TRUE(IsOnly(written.memory, TextHead(0, 0) + FirstGlyph));
        EXPECT_EQ(written.messages, GlyphsCut(5) + GlyphsCut(5) + WrongCount);
    }

    TEST_F(TextEncoder, AsksForTheNextBatchAfterOneThatWasCut)
    {
        ThreeGlyphs text;
        text.Enumerate(2);
        text.pwszOrg = nullptr;
        const Written written = Write(Encoder(text), 40 + 28 + 5);
        EXPECT_EQ(written.size, 40u);
        EXPECT_TRUE(IsOnly(written.memory, TextHead(0, 0) + FirstGlyph));
        EXPECT_EQ(written.messages, GlyphsCut(5) + GlyphsCut(5) + WrongCount);
    }

    TEST_F(TextEncoder, TakesNothingOfAFailedEnumeration)
    {
        ThreeGlyphs text;
        text.Enumerate(2);
        text.failEnumeration = true;
        const Written written = Write(Encoder(text), 1000);
        EXPECT_EQ(written.size, 48u);
        EXPECT_TRUE(IsOnly(written.memory, TextHead(0, 40) + Abc()));
        EXPECT_EQ(written.messages, WrongCount);
    }

    TEST_F(TextEncoder, DropsTheGlyphsBeforeAFailure)
    {
        ThreeGlyphs text;
        text.Enumerate(2);
        text.failEnumeration = true;
        text.batchesBeforeFailure = 1;
        text.pwszOrg = nullptr;
        const Written written = Write(Encoder(text), 1000);
        EXPECT_EQ(written.size, 40u);
        EXPECT_TRUE(IsOnly(written.memory, TextHead(0, 0) + FirstGlyph + SecondGlyph));
        EXPECT_EQ(written.messages, WrongCount);
        EXPECT_EQ(text.next, 0u);
    }

    TEST_F(TextEncoder, TakesTheGlyphsBeforeAFailureWhenTheyAreAll)
    {
        ThreeGlyphs text;
        text.Enumerate(2);
        text.failEnumeration = true;
        text.batchesBeforeFailure = 1;
        text.cGlyphs = 2;
        text.pwszOrg = nullptr;
        ExpectBytes(TextHead(40, 0, 2) + FirstGlyph + SecondGlyph, Encoder(text));
    }

    TEST_F(TextEncoder, LeavesTheSlotOfAMissingStringEmpty)
    {
        ThreeGlyphs text;
        text.pwszOrg = nullptr;
        ExpectBytes(TextHead(40, 0) + FirstGlyph + SecondGlyph + ThirdGlyph, Encoder(text));
    }

    TEST_F(TextEncoder, NotesWhereEnumeratedGlyphsWouldBeWhenThereAreNone)
    {
        engine::Text text;
        text.Enumerate(1);
        ExpectBytes(Words({1252, 0, 0, 0, 0, 0, 0, 0, 40, 0}), Encoder(text));
    }

    TEST_F(TextEncoder, NotesNothingForAnEmptyGlyphList)
    {
        ThreeGlyphs text;
        text.cGlyphs = 0;
        ExpectBytes(TextHead(0, 40, 0) + Halves({0}), Encoder(text));
    }

} // namespace
} // namespace capture_tests
