#include "tests/engine/gdi_recorder.h"

namespace gdi_tests {
namespace {

    constexpr ULONG Compatible = 1, Advanced = 2, Transparent = 1;
    constexpr ULONG Opaque = 2, Clipped = 4, GlyphIndex = 0x10, NoRectangle = 0x100, SmallChars = 0x200, Pairs = 0x2000;
    constexpr ULONG Right = 2, Center = 6, Bottom = 8, Baseline = 24, UpdatePosition = 1;

    struct FontWish {
        LONG height = -16;
        std::u16string face = u"Arial";
        LONG escapement = 0;
        LONG width = 0;
        BYTE italic = 0, underline = 0, strikeOut = 0;
    };

    Words FontWords(const FontWish& wish)
    {
        Words words(1, wish.height, wish.width, wish.escapement, wish.escapement, 400);
        const BYTE flags[] = {wish.italic, wish.underline, wish.strikeOut, 0, 0, 0, 0, 0};
        words.Bytes(flags, sizeof(flags)).Text(wish.face);
        return words.Zeros(sizeof(ULONG) + sizeof(LOGFONTW) - words.bytes.size());
    }

    Metafile WithFont(const FontWish& wish = {}, ULONG backMode = Transparent)
    {
        Metafile metafile;
        return metafile.Add(CreateFont, FontWords(wish)).Add(SelectObject, Words(1)).Add(SetBkMode, Words(backMode));
    }

    struct Written {
        POINTL at = {3, 5};
        ULONG options = 0;
        RECTL rectangle = {};
        ULONG mode = Compatible;
    };

    Words TextWords(const std::u16string& text, const std::vector<LONG>& advances, const Written& how = {})
    {
        constexpr ULONG fixed = 76;
        const auto bytes = static_cast<ULONG>((text.size() * 2 + 3) / 4 * 4);
        Words words = NoBounds;
        words.Put(Words(how.mode, 1.0f, 1.0f, how.at.x, how.at.y, static_cast<ULONG>(text.size()), fixed, how.options));
        words.Put(Words(how.rectangle.left, how.rectangle.top, how.rectangle.right, how.rectangle.bottom));
        words.Put(advances.empty() ? 0u : fixed + bytes).Text(text).Zeros(bytes - text.size() * 2);
        for (const LONG advance : advances)
            words.Put(advance);
        return words;
    }

    // Letters of 16 pixels of the face that stands for Arial reach 14.5 above and 3.4 below the baseline; the bars
    // are two pixels wide, from 1 right of their place on.
    class GdiText : public Recorded {
    protected:
        Lines Draw(Metafile metafile, const Words& text) { return Play(metafile.Add(TextOutW, text)); }
        static Lines Places()
        {
            Lines places;
            for (const std::string& glyph : glyphs)
                places.push_back(glyph.substr(0, glyph.find(' ')));
            return places;
        }
    };

    TEST_F(GdiText, IsOneCallWithAGlyphForEachCharacter)
    {
        EXPECT_EQ(Draw(WithFont(), TextWords(u"||", {6, 7})),
                  Lines({"TextOut 2 glyphs in (3,5,16,22) accel 2 inc 0 brush 0 mix D0D clip -"}));
        EXPECT_EQ(Places(), Lines({"(3,19)", "(9,19)"}));
        EXPECT_EQ(textDrawn, u"||");
    }

    TEST_F(GdiText, HasTheTextColour)
    {
        EXPECT_EQ(Draw(WithFont().Add(SetTextColor, Words(0x0000FF)), TextWords(u"||", {6, 7})),
                  Lines({"TextOut 2 glyphs in (3,5,16,22) accel 2 inc 0 brush FF0000 mix D0D clip -"}));
    }

    TEST_F(GdiText, OnAnOpaqueBackgroundFillsItsPlace)
    {
        EXPECT_EQ(Draw(WithFont({}, 2).Add(SetBkColor, Words(0x00FF00)), TextWords(u"||", {6, 7})),
                  Lines({"TextOut 2 glyphs in (3,5,16,22) accel 2 inc 0 opaque (3,5,16,22) brush FF00 brush 0 mix D0D "
                         "clip all(3,5,16,22)"}));
    }

    TEST_F(GdiText, FillsAGivenRectangleInTheSameCall)
    {
        const Written how = {.options = Opaque, .rectangle = {1, 2, 30, 25}};
        EXPECT_EQ(
            Draw(WithFont(), TextWords(u"||", {6, 7}, how)),
            Lines({"TextOut 2 glyphs in (3,5,16,22) accel 2 inc 0 opaque (1,2,30,25) brush FFFFFF brush 0 mix D0D "
                   "clip all(1,2,30,25)"}));
        EXPECT_EQ(Draw(WithFont({}, 2), TextWords(u"||", {6, 7}, how)).size(), 1u);
    }

    TEST_F(GdiText, FillsARectangleThatDoesNotHoldItBeforehand)
    {
        const Written how = {.options = Opaque, .rectangle = {10, 2, 30, 12}};
        EXPECT_EQ(
            Draw(WithFont({}, 2), TextWords(u"||", {6, 7}, how)),
            Lines({"BitBlt (10,2,30,12) rop F0F0 brush FFFFFF clip -",
                   "TextOut 2 glyphs in (3,5,16,22) accel 2 inc 0 opaque (3,5,16,22) brush FFFFFF brush 0 mix D0D "
                   "clip all(3,5,16,22)"}));
    }

    TEST_F(GdiText, WithoutCharactersFillsTheRectangle)
    {
        EXPECT_EQ(Draw(WithFont(), TextWords(u"", {}, {.options = Opaque, .rectangle = {1, 2, 30, 25}})),
                  Lines({"BitBlt (1,2,30,25) rop F0F0 brush FFFFFF clip -"}));
        EXPECT_EQ(Draw(WithFont(), TextWords(u"", {})), Lines());
    }

    TEST_F(GdiText, CanBeClippedToItsRectangle)
    {
        const Written how = {.options = Clipped, .rectangle = {5, 6, 12, 25}};
        EXPECT_EQ(Draw(WithFont(), TextWords(u"||", {6, 7}, how)),
                  Lines({"TextOut 2 glyphs in (3,5,16,22) accel 2 inc 0 brush 0 mix D0D clip rect(5,6,12,22)"}));
        EXPECT_EQ(Draw(WithFont().Add(TextOutW, TextWords(u"||", {6, 7}, how)), TextWords(u"||", {6, 7})).back(),
                  "TextOut 2 glyphs in (3,5,16,22) accel 2 inc 0 brush 0 mix D0D clip -");
    }

    TEST_F(GdiText, UnderlineAndStrikeOutAreExtraRectangles)
    {
        EXPECT_EQ(Draw(WithFont({.underline = 1}), TextWords(u"||", {6, 7})),
                  Lines({"TextOut 2 glyphs in (3,5,16,22) accel 2 inc 0 extra (3,19,16,20) brush 0 mix D0D "
                         "clip all(3,5,16,22)"}));
        EXPECT_EQ(Draw(WithFont({.strikeOut = 1}), TextWords(u"||", {6, 7})),
                  Lines({"TextOut 2 glyphs in (3,5,16,22) accel 2 inc 0 extra (3,15,16,16) brush 0 mix D0D "
                         "clip all(3,5,16,22)"}));
    }

    TEST_F(GdiText, IsPutWhereItsAlignmentSays)
    {
        const auto first = [this](ULONG align, POINTL at) {
            Draw(WithFont().Add(SetTextAlign, Words(align)), TextWords(u"||", {6, 7}, {.at = at}));
            return Places()[0];
        };
        EXPECT_EQ(first(Right, {30, 5}), "(17,19)");
        EXPECT_EQ(first(Center, {30, 5}), "(24,19)");
        EXPECT_EQ(first(Baseline, {3, 18}), "(3,18)");
        EXPECT_EQ(first(Bottom, {3, 25}), "(3,22)");
    }

    TEST_F(GdiText, CanMoveThePosition)
    {
        Metafile metafile = WithFont();
        metafile.Add(SetTextAlign, Words(UpdatePosition))
            .Add(MoveTo, Words(3, 5))
            .Add(TextOutW, TextWords(u"||", {6, 7}));
        Draw(metafile, TextWords(u"|", {6}, {.at = {90, 90}}));
        EXPECT_EQ(Places(), Lines({"(16,19)"}));
    }

    TEST_F(GdiText, OfFixedPitchSaysItsIncrement) // twelve pixels a character at twenty an em
    {
        EXPECT_EQ(Draw(WithFont({.height = -20, .face = u"Courier New"}), TextWords(u"||", {}, {.at = {3, 2}})),
                  Lines({"TextOut 2 glyphs in (3,2,27,25) accel 3 inc 12 brush 0 mix D0D clip -"}));
        EXPECT_EQ(Places(), Lines({"(3,19)", "(15,19)"}));
    }

    TEST_F(GdiText, WithoutAdvancesTakesWholePixelsOfTheFont) // bars are 4.2 pixels wide
    {
        Draw(WithFont(), TextWords(u"|||", {}));
        EXPECT_EQ(Places(), Lines({"(3,19)", "(7,19)", "(11,19)"}));
    }

    TEST_F(GdiText, IgnoresAdvancesThatAreNotThere)
    {
        Words text = TextWords(u"|||", {1, 1, 1});
        text.bytes.resize(text.bytes.size() - 4);
        Draw(WithFont(), text);
        EXPECT_EQ(Places(), Lines({"(3,19)", "(7,19)", "(11,19)"}));
    }

    TEST_F(GdiText, BlanksMayBeWidened)
    {
        Draw(WithFont().Add(SetTextJustification, Words(10, 2)), TextWords(u"| |", {})); // a blank has 4.4 pixels
        EXPECT_EQ(Places(), Lines({"(3,19)", "(7,19)", "(16,19)"}));
    }

    TEST_F(GdiText, PairsOfAdvancesAlsoGoUp)
    {
        Draw(WithFont(), TextWords(u"|||", {6, 2, 7, -1, 0, 0}, {.options = Pairs}));
        EXPECT_EQ(Places(), Lines({"(3,19)", "(9,17)", "(16,18)"}));
    }

    TEST_F(GdiText, GrowsWithTheCoordinates)
    {
        Metafile metafile = WithFont({.height = -8});
        metafile.Add(SetMapMode, Words(8)).Add(SetViewportExt, Words(2, 2)).Add(SetViewportOrg, Words(1, 1));
        EXPECT_EQ(Draw(metafile, TextWords(u"||", {3, 4}, {.at = {1, 2}})),
                  Lines({"TextOut 2 glyphs in (3,5,17,22) accel 2 inc 0 brush 0 mix D0D clip -"}));
        EXPECT_EQ(Places(), Lines({"(3,19)", "(9,19)"}));
    }

    // Turned bars lie: 15 pixels wide, the first from 3 above the reference point on.
    TEST_F(GdiText, TurnsAgainstTheClock)
    {
        Metafile metafile = WithFont({.escapement = 900});
        EXPECT_EQ(Draw(metafile.Add(SetTextAlign, Words(Baseline)), TextWords(u"||", {6, 7}, {.at = {15, 25}})),
                  Lines({"TextOut 2 glyphs in (3,16,18,24) accel 0 inc 0 brush 0 mix D0D clip -"}));
        EXPECT_EQ(Places(), Lines({"(15,25)", "(15,19)"}));
    }

    TEST_F(GdiText, TurnsTheOtherWayWhereUnitsCountUpwards)
    {
        Metafile metafile = WithFont({.escapement = 2700});
        metafile.Add(SetTextAlign, Words(Baseline)).Add(SetMapMode, Words(8)).Add(SetViewportExt, Words(1, -1));
        Draw(metafile, TextWords(u"||", {6, 7}, {.at = {15, -25}}));
        EXPECT_EQ(Places(), Lines({"(15,25)", "(15,19)"}));
    }

    TEST_F(GdiText, TurnsWithTheWorldInAdvancedModeAlone)
    {
        Metafile metafile = WithFont();
        metafile.Add(SetTextAlign, Words(Baseline));
        metafile.Add(SetWorldTransform, Words(0.0f, -1.0f, 1.0f, 0.0f, 15.0f, 25.0f));
        EXPECT_EQ(Draw(metafile, TextWords(u"||", {6, 7}, {.at = {0, 0}, .mode = Advanced})),
                  Lines({"TextOut 2 glyphs in (3,16,18,24) accel 0 inc 0 brush 0 mix D0D clip -"}));
        Draw(metafile, TextWords(u"||", {6, 7}, {.at = {0, 0}}));
        EXPECT_EQ(Places(), Lines({"(15,25)", "(21,25)"}));
    }

    TEST_F(GdiText, StandsOnItsFeetInAdvancedModeWhereUnitsCountUpwards)
    {
        Metafile metafile = WithFont();
        metafile.Add(SetTextAlign, Words(Baseline)).Add(SetMapMode, Words(8)).Add(SetViewportExt, Words(1, -1));
        EXPECT_EQ(Draw(metafile, TextWords(u"||", {6, 7}, {.at = {3, -19}, .mode = Advanced})),
                  Lines({"TextOut 2 glyphs in (3,5,16,22) accel 2 inc 0 brush 0 mix D0D clip -"}));
    }

    TEST_F(GdiText, TurnedLinesAndBackgroundsArePaths)
    {
        Metafile metafile = WithFont({.escapement = 900, .strikeOut = 1}, 2);
        metafile.Add(SetTextAlign, Words(Baseline)).Add(SetTextColor, Words(0x0000FF));
        const Lines lines = Draw(metafile, TextWords(u"||", {6, 7}, {.at = {15, 25}}));
        ASSERT_EQ(lines.size(), 3u);
        // from 14.484 left to 3.391 right of x = 15, from y = 25 up to 12; the line from 4.141 to 3.344 left
        EXPECT_EQ(lines[0],
                  "FillPath path ml(0.5,25)(0.5,12)(18.375,12)(18.375,25)z brush FFFFFF mix D0D options 2 "
                  "clip all(0,12,20,26)");
        EXPECT_EQ(lines[2],
                  "FillPath path ml(10.875,25)(10.875,12)(11.6875,12)(11.6875,25)z brush FF0000 mix D0D options 2 "
                  "clip all(10,12,13,26)");
    }

    // A bar of 256 pixels an em: a pixel is eight font units.
    const std::string LargeBar = "path ml(22.875,74.25)(22.875,-165.5)(43.625,-165.5)(43.625,74.25)z ";

    TEST_F(GdiText, LargeLettersAreFilledOutlines)
    {
        Metafile metafile = WithFont({.height = -256});
        EXPECT_EQ(Draw(metafile.Add(SetTextAlign, Words(Baseline)), TextWords(u"|", {66}, {.at = {0, 20}})),
                  Lines({"FillPath " + LargeBar + "brush 0 mix D0D options 2 clip rect(22,0,40,30)"}));
    }

    TEST_F(GdiText, InAPathAreOutlines)
    {
        Metafile metafile = WithFont({.height = -256}, 2);
        metafile.Add(SetTextAlign, Words(Baseline)).Add(BeginPath);
        metafile.Add(TextOutW, TextWords(u"|", {66}, {.at = {0, 20}})).Add(EndPath).Add(StrokePath, NoBounds);
        EXPECT_EQ(Play(metafile), Lines({"StrokePath " + LargeBar + "line 1 brush 0 mix D0D clip rect(21,0,40,30)"}));
    }

    TEST_F(GdiText, OfOneByteIsOfWesternWindows)
    {
        Words text = NoBounds;
        text.Put(Words(Compatible, 1.0f, 1.0f, 3, 5, 3, 76, 0, 0, 0, 0, 0, 0)).Bytes("\x80\xE9x", 3);
        Play(WithFont().Add(TextOutA, text));
        EXPECT_EQ(textDrawn, u"\u20AC\u00E9x");
    }

    TEST_F(GdiText, SmallRecordsHaveNoAdvances)
    {
        Words narrow(3, 5, 2, SmallChars | NoRectangle, Compatible, 1.0f, 1.0f);
        narrow.Bytes("||", 2);
        EXPECT_EQ(Play(WithFont().Add(SmallTextOut, narrow)).size(), 1u);
        EXPECT_EQ(Places(), Lines({"(3,19)", "(7,19)"}));
        Words wide(3, 5, 2, Opaque, Compatible, 1.0f, 1.0f, 1, 2, 30, 25);
        wide.Text(u"||");
        EXPECT_NE(Play(WithFont().Add(SmallTextOut, wide))[0].find("opaque (1,2,30,25)"), std::string::npos);
        EXPECT_EQ(textDrawn, u"||");
    }

    TEST_F(GdiText, ManyTextsMayBeInOneRecord)
    {
        Words texts = NoBounds;
        texts.Put(Words(Compatible, 1.0f, 1.0f, 2));
        texts.Put(Words(3, 5, 1, 120, 0, 0, 0, 0, 0, 0)).Put(Words(9, 6, 1, 122, 0, 0, 0, 0, 0, 0)).Text(u"|l");
        EXPECT_EQ(Play(WithFont().Add(PolyTextOutW, texts)).size(), 2u);
        EXPECT_EQ(Places(), Lines({"(9,20)"}));
        EXPECT_EQ(textDrawn, u"l");
        Words narrow = NoBounds;
        narrow.Put(Words(Compatible, 1.0f, 1.0f, 1, 3, 5, 1, 80, 0, 0, 0, 0, 0, 0)).Bytes("|", 1);
        EXPECT_EQ(Play(WithFont().Add(PolyTextOutA, narrow)).size(), 1u);
    }

    TEST_F(GdiText, DamagedTextIsSkipped)
    {
        Words texts = NoBounds, cut = TextWords(u"||", {});
        texts.Put(Words(Compatible, 1.0f, 1.0f, 2, 3, 5, 90, 80, 0, 0, 0, 0, 0, 0)).Zeros(40);
        cut.bytes.resize(60);
        Play(WithFont()
                 .Add(PolyTextOutW, texts)
                 .Add(TextOutW, cut)
                 .Add(TextOutW, TextWords(u"||", {}, {.options = GlyphIndex})));
        EXPECT_EQ(report_.skipped,
                  Counts({{"POLYTEXTOUTW: too short", 1},
                          {"EXTTEXTOUTW: too short", 1},
                          {"EXTTEXTOUTW: glyph numbers instead of characters", 1}}));
    }

    // Five pixels of the bar's 5.2 are more than half covered; 60 rows reach from 46 above the baseline to 13 below.
    TEST_F(GdiText, GlyphsAreOneBitBitmaps)
    {
        Draw(WithFont({.height = -64}), TextWords(u"|", {20}));
        std::string expected = "(3,63) + (6,-46) 5x60";
        for (int i = 0; i < 60; ++i)
            expected += " #####";
        EXPECT_EQ(glyphs, Lines({expected}));
    }

} // namespace
} // namespace gdi_tests
