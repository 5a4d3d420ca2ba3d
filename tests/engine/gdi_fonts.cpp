#include "engine/gdi/bytes.h"
#include "engine/gdi/font.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "engine/core/engine.h"

namespace gdi_tests {
namespace {

    using namespace engine;
    using gdi::FontCache;
    using gdi::RealizedFont;

    LOGFONTW Wish(const std::u16string& face, LONG height = -16, LONG weight = 400, bool italic = false)
    {
        LOGFONTW font = {};
        font.lfHeight = height;
        font.lfWeight = weight;
        font.lfItalic = italic;
        std::copy_n(face.begin(), std::min<std::size_t>(face.size(), 32), font.lfFaceName);
        return font;
    }

    class GdiFonts : public testing::Test {
    protected:
        std::u16string Name(const LOGFONTW& font, LONG IFIMETRICS::*offset)
        {
            const BYTE* const metrics = cache_.Realize(font, {}).Object().metrics.data();
            const LONG at = reinterpret_cast<const IFIMETRICS*>(metrics)->*offset;
            return at == 0 ? u"" : reinterpret_cast<const char16_t*>(metrics + at);
        }
        std::u16string Face(const LOGFONTW& font) { return Name(font, &IFIMETRICS::dpwszFaceName); }
        std::u16string OtherFace(BYTE pitchAndFamily)
        {
            LOGFONTW font = Wish(u"Unheard Of");
            font.lfPitchAndFamily = pitchAndFamily;
            return Face(font);
        }

        Engine engine_;
        FontCache cache_;
    };

    TEST_F(GdiFonts, CommonFacesHaveStandInsOfTheSameWidths)
    {
        EXPECT_EQ(Face(Wish(u"Arial")), u"Liberation Sans");
        EXPECT_EQ(Face(Wish(u"Helvetica")), u"Liberation Sans");
        EXPECT_EQ(Face(Wish(u"MS Sans Serif")), u"Liberation Sans");
        EXPECT_EQ(Face(Wish(u"Times New Roman")), u"Liberation Serif");
        EXPECT_EQ(Face(Wish(u"COURIER NEW")), u"Liberation Mono");
    }

    TEST_F(GdiFonts, OtherFacesGoByPitchAndFamily)
    {
        EXPECT_EQ(OtherFace(0), u"DejaVu Sans");
        EXPECT_EQ(OtherFace(0x12), u"DejaVu Serif");
        EXPECT_EQ(OtherFace(0x31), u"DejaVu Sans Mono");
        EXPECT_EQ(OtherFace(0x01), u"DejaVu Sans Mono");
        EXPECT_EQ(Face(Wish(u"Symbol")), u"DejaVu Sans");
    }

    TEST_F(GdiFonts, WeightAndSlantChooseTheFile)
    {
        EXPECT_EQ(Name(Wish(u"Arial", -16, 700), &IFIMETRICS::dpwszStyleName), u"Bold");
        EXPECT_EQ(Name(Wish(u"Arial", -16, 400, true), &IFIMETRICS::dpwszStyleName), u"Italic");
        EXPECT_EQ(Name(Wish(u"Times", -16, 600, true), &IFIMETRICS::dpwszStyleName), u"Bold Italic");
        EXPECT_EQ(Name(Wish(u"Times", -16, 500), &IFIMETRICS::dpwszStyleName), u"Regular");
    }

    TEST_F(GdiFonts, ANameThatFillsItsFieldHasNoEnd)
    {
        EXPECT_EQ(Face(Wish(u"arialarialarialarialarialarialarial")), u"Liberation Sans");
    }

    TEST_F(GdiFonts, MetricsAreThoseOfTheFile)
    {
        const IFIMETRICS& metrics = *cache_.Realize(Wish(u"Arial"), {}).Object().Metrics();
        EXPECT_EQ(metrics.fwdUnitsPerEm, 2048);
        EXPECT_EQ(metrics.fwdWinAscender, 1854);
        EXPECT_EQ(metrics.fwdWinDescender, 434);
        EXPECT_EQ(metrics.fwdAveCharWidth, 904);
        EXPECT_EQ(metrics.fwdXHeight, 1082);
        EXPECT_EQ(metrics.fwdCapHeight, 1409);
        EXPECT_EQ(metrics.fwdUnderscorePosition, -67);
        EXPECT_EQ(metrics.fwdUnderscoreSize, 150);
        EXPECT_EQ(metrics.fwdStrikeoutPosition, 530);
        EXPECT_EQ(metrics.fwdStrikeoutSize, 102);
        EXPECT_EQ(metrics.usWinWeight, 400);
        EXPECT_EQ(metrics.wcFirstChar, u'!');
        EXPECT_EQ(metrics.wcBreakChar, u' ');
        EXPECT_EQ(metrics.jWinPitchAndFamily, 0x22);
        EXPECT_EQ(metrics.flInfo, 0x8031u);
        EXPECT_EQ(metrics.panose.bFamilyType, 2);
        EXPECT_EQ(metrics.rclFontBox.left, -416);
        EXPECT_EQ(metrics.cjThis, cache_.Realize(Wish(u"Arial"), {}).Object().metrics.size());
    }

    TEST_F(GdiFonts, AllFourNamesAreThere)
    {
        EXPECT_EQ(Name(Wish(u"Arial", -16, 700, true), &IFIMETRICS::dpwszFamilyName), u"Liberation Sans");
        EXPECT_EQ(Name(Wish(u"Arial", -16, 700, true), &IFIMETRICS::dpwszStyleName), u"Bold Italic");
        EXPECT_EQ(Name(Wish(u"Arial", -16, 700, true), &IFIMETRICS::dpwszFaceName), u"Liberation Sans Bold Italic");
        EXPECT_NE(Name(Wish(u"Arial", -16, 700, true), &IFIMETRICS::dpwszUniqueName), u"");
    }

    TEST_F(GdiFonts, FixedPitchAndSerifsShowInTheFamily)
    {
        EXPECT_EQ(cache_.Realize(Wish(u"Courier New"), {}).Object().Metrics()->jWinPitchAndFamily, 0x31);
        EXPECT_EQ(cache_.Realize(Wish(u"Courier New"), {}).Object().Metrics()->flInfo, 0x9031u);
        EXPECT_EQ(cache_.Realize(Wish(u"Times"), {}).Object().Metrics()->jWinPitchAndFamily, 0x12);
    }

    TEST_F(GdiFonts, AnOldFilesLetterHeightsAreMeasured)
    {
        const IFIMETRICS& metrics = *cache_.Realize(Wish(u"Verdana"), {}).Object().Metrics(); // DejaVu Sans
        EXPECT_EQ(metrics.fwdXHeight, 1120);
        EXPECT_EQ(metrics.fwdCapHeight, 1493);
    }

    TEST_F(GdiFonts, TheObjectTellsOfATrueTypeFontOfItsSize)
    {
        const Font& font = cache_.Realize(Wish(u"Arial", -24), {}).Object();
        EXPECT_EQ(font.flFontType, FO_TYPE_TRUETYPE);
        EXPECT_EQ(font.ulStyleSize, 18u); // points
        EXPECT_EQ(font.sizLogResPpi.cx, 96);
        EXPECT_NE(font.iTTUniq, 0u);
        EXPECT_EQ(font.cxMax, 31u); // of 2567 / 2048 em
    }

    TEST_F(GdiFonts, TheSameWishGivesTheSameFont)
    {
        const ULONG first = cache_.Realize(Wish(u"Arial"), {}).Object().iUniq;
        const ULONG other = cache_.Realize(Wish(u"Arial", -17), {}).Object().iUniq;
        const ULONG scaled = cache_.Realize(Wish(u"Arial"), {{2, 0}, {0, 2}}).Object().iUniq;
        EXPECT_EQ(cache_.Realize(Wish(u"Arial"), {}).Object().iUniq, first);
        EXPECT_NE(other, first);
        EXPECT_NE(scaled, first);
    }

    TEST_F(GdiFonts, ManyWishesForgetTheOldestFont)
    {
        const ULONG first = cache_.Realize(Wish(u"Arial"), {}).Object().iUniq;
        for (LONG height = 1; height <= 32; ++height)
            cache_.Realize(Wish(u"Arial", height), {});
        EXPECT_NE(cache_.Realize(Wish(u"Arial"), {}).Object().iUniq, first);
    }

    TEST_F(GdiFonts, HeightsAreOfLettersOrOfLines)
    {
        EXPECT_NEAR(cache_.Realize(Wish(u"Arial", -2048), {}).Ascent(), 1854, 0.01);
        EXPECT_NEAR(cache_.Realize(Wish(u"Arial", 2288), {}).Ascent(), 1854, 0.01); // 1854 + 434
        EXPECT_NEAR(cache_.Realize(Wish(u"Arial", 0), {}).PixelsPerEm(), 16 * 2048 / 2288.0, 0.01);
    }

    TEST_F(GdiFonts, AWidthIsThatOfTheAverageCharacter)
    {
        LOGFONTW font = Wish(u"Arial", -2048);
        font.lfWidth = 1808; // twice the font's own
        RealizedFont& wide = cache_.Realize(font, {});
        EXPECT_NEAR(wide.Advance(wide.GlyphOf(u'A')), 2732, 0.01);
        EXPECT_NEAR(wide.Ascent(), 1854, 0.01);
    }

    TEST_F(GdiFonts, PrivateSymbolsAndControlsHaveGlyphs)
    {
        RealizedFont& font = cache_.Realize(Wish(u"Arial"), {});
        EXPECT_EQ(font.GlyphOf(0xF041), font.GlyphOf(u'A'));
        EXPECT_EQ(font.GlyphOf(u'\n'), font.GlyphOf(u' '));
        EXPECT_EQ(font.GlyphOf(0xE000), 0u);
    }

    TEST_F(GdiFonts, LettersOfOneSizeStandOnWholePixels) // small letters are a whole number of pixels high
    {
        RealizedFont& font = cache_.Realize(Wish(u"Arial", -13), {});
        const gdi::GlyphBitmap& x = font.Bitmap(font.GlyphOf(u'x'));
        EXPECT_EQ(x.size.cy, 7); // of 6.87
        EXPECT_EQ(x.origin.y, -7);
    }

    TEST_F(GdiFonts, ABlankHasNoBitmap)
    {
        RealizedFont& font = cache_.Realize(Wish(u"Arial"), {});
        EXPECT_TRUE(font.Bitmap(font.GlyphOf(u' ')).bits.empty());
    }

} // namespace
} // namespace gdi_tests
