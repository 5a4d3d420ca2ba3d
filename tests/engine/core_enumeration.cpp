#include <gtest/gtest.h>

#include <cstring>

#include "engine/core/engine.h"
#include "engine/core/objects.h"

namespace {

using namespace engine;

struct RectangleBuffer {
    ULONG c = 99;
    RECTL arcl[4] = {};
};

constexpr ULONG RoomFor(ULONG rectangles)
{
    return 4 + rectangles * 16;
}

std::vector<LONG> Lefts(CLIPOBJ& clip, ULONG direction, BOOL all = TRUE)
{
    RectangleBuffer buffer;
    std::vector<LONG> lefts;
    CLIPOBJ_cEnumStart(&clip, all, CT_RECTANGLES, direction, 0);
    BOOL more = TRUE;
    while (more) {
        more = CLIPOBJ_bEnum(&clip, sizeof(buffer), &buffer.c);
        for (ULONG i = 0; i < buffer.c; ++i)
            lefts.push_back(buffer.arcl[i].left);
    }
    return lefts;
}

ClipObject FourCorners()
{
    return ClipObject(std::vector<RECTL>{{0, 0, 2, 2}, {10, 0, 12, 2}, {1, 10, 3, 12}, {11, 10, 13, 12}});
}

TEST(ClipEnumeration, CountsUpToTheLimit)
{
    Engine engine;
    ClipObject clip = FourCorners();
    EXPECT_EQ(CLIPOBJ_cEnumStart(&clip, TRUE, CT_RECTANGLES, CD_ANY, 4), 4u);
    EXPECT_EQ(CLIPOBJ_cEnumStart(&clip, TRUE, CT_RECTANGLES, CD_ANY, 3), 0xFFFFFFFFu);
    EXPECT_EQ(CLIPOBJ_cEnumStart(&clip, TRUE, CT_RECTANGLES, CD_ANY, 0), 0xFFFFFFFFu);
}

TEST(ClipEnumeration, DeliversByTheRoomGivenAndAnswersFalseWithTheLastBatch)
{
    Engine engine;
    ClipObject clip = FourCorners();
    RectangleBuffer buffer;
    CLIPOBJ_cEnumStart(&clip, TRUE, CT_RECTANGLES, CD_ANY, 0);
    EXPECT_TRUE(CLIPOBJ_bEnum(&clip, RoomFor(3) + 15, &buffer.c));
    EXPECT_EQ(buffer.c, 3u);
    EXPECT_EQ(buffer.arcl[2].bottom, 12);
    EXPECT_EQ(buffer.arcl[3].bottom, 0) << "no half rectangle";
    EXPECT_FALSE(CLIPOBJ_bEnum(&clip, RoomFor(3), &buffer.c));
    EXPECT_EQ(buffer.c, 1u);
    EXPECT_EQ(buffer.arcl[0].left, 11);
    EXPECT_TRUE(engine.Violations().empty());
}

TEST(ClipEnumeration, BatchCutsTheDelivery)
{
    Engine engine;
    ClipObject clip = FourCorners();
    clip.batch = 1;
    RectangleBuffer buffer;
    CLIPOBJ_cEnumStart(&clip, TRUE, CT_RECTANGLES, CD_ANY, 0);
    EXPECT_TRUE(CLIPOBJ_bEnum(&clip, sizeof(buffer), &buffer.c));
    EXPECT_EQ(buffer.c, 1u);
}

TEST(ClipEnumeration, FollowsTheDirection)
{
    Engine engine;
    ClipObject clip = FourCorners();
    EXPECT_EQ(Lefts(clip, CD_RIGHTDOWN), (std::vector<LONG>{0, 10, 1, 11}));
    EXPECT_EQ(Lefts(clip, CD_LEFTDOWN), (std::vector<LONG>{10, 0, 11, 1}));
    EXPECT_EQ(Lefts(clip, CD_RIGHTUP), (std::vector<LONG>{1, 11, 0, 10}));
    EXPECT_EQ(Lefts(clip, CD_LEFTUP), (std::vector<LONG>{11, 1, 10, 0}));
}

TEST(ClipEnumeration, LeavesOutWhatTheBoundsDoNotMeetUnlessAllIsAsked)
{
    Engine engine;
    ClipObject clip = FourCorners();
    clip.rclBounds = {1, 1, 20, 5};
    EXPECT_EQ(Lefts(clip, CD_ANY, FALSE), (std::vector<LONG>{1, 10}));
    EXPECT_EQ(Lefts(clip, CD_ANY, TRUE).size(), 4u);
}

TEST(ClipEnumeration, ARectangleClipDeliversItsBounds)
{
    Engine engine;
    ClipObject clip({3, 4, 5, 6});
    EXPECT_EQ(Lefts(clip, CD_ANY), (std::vector<LONG>{3}));
}

TEST(ClipEnumeration, ReportsMisuse)
{
    Engine engine;
    ClipObject clip = FourCorners();
    RectangleBuffer buffer;
    EXPECT_FALSE(CLIPOBJ_bEnum(&clip, sizeof(buffer), &buffer.c));
    CLIPOBJ_cEnumStart(&clip, TRUE, 7, CD_ANY, 0);
    EXPECT_FALSE(CLIPOBJ_bEnum(&clip, 19, &buffer.c));
    EXPECT_EQ(CLIPOBJ_cEnumStart(nullptr, TRUE, CT_RECTANGLES, CD_ANY, 0), 0u);
    CLIPOBJ copied = clip;
    EXPECT_FALSE(CLIPOBJ_bEnum(&copied, sizeof(buffer), &buffer.c));
    EXPECT_EQ(engine.Violations(),
              (std::vector<std::string>{"CLIPOBJ_bEnum: not started", "CLIPOBJ_cEnumStart: type 7, direction 4",
                                        "CLIPOBJ_bEnum: no room for a rectangle",
                                        "CLIPOBJ_cEnumStart: the clip is null", "a foreign CLIPOBJ"}));
    EXPECT_EQ(buffer.c, 99u);
}

TEST(PathEnumeration, AnswersFalseTogetherWithTheLastSubpath)
{
    Engine engine;
    Path path;
    path.Add(PD_BEGINSUBPATH, {{16, 32}, {48, 64}});
    path.Add(PD_ENDSUBPATH, {{80, 96}});
    PATHDATA data;
    PATHOBJ_vEnumStart(&path);
    EXPECT_TRUE(PATHOBJ_bEnum(&path, &data));
    EXPECT_EQ(data.flags, PD_BEGINSUBPATH);
    ASSERT_EQ(data.count, 2u);
    EXPECT_EQ(data.pptfx[1].y, 64);
    EXPECT_FALSE(PATHOBJ_bEnum(&path, &data));
    EXPECT_EQ(data.flags, PD_ENDSUBPATH);
    ASSERT_EQ(data.count, 1u);
    EXPECT_EQ(data.pptfx[0].x, 80);
    EXPECT_FALSE(PATHOBJ_bEnum(&path, &data));
    EXPECT_EQ(data.count, 0u) << "behind the end";
    PATHOBJ_vEnumStart(&path);
    EXPECT_TRUE(PATHOBJ_bEnum(&path, &data));
    EXPECT_EQ(data.count, 2u);
}

TEST(PathEnumeration, BoundsAreThePointsInTwentyEightFour)
{
    Engine engine;
    Path path;
    RECTFX bounds = {1, 1, 1, 1};
    PATHOBJ_vGetBounds(&path, &bounds);
    EXPECT_EQ(bounds.xRight, 0) << "an empty path";
    path.Add(PD_BEGINSUBPATH, {{100, -20}, {-5, 70}});
    path.Add(PD_ENDSUBPATH, {{30, 90}});
    PATHOBJ_vGetBounds(&path, &bounds);
    EXPECT_EQ(bounds.xLeft, -5);
    EXPECT_EQ(bounds.yTop, -20);
    EXPECT_EQ(bounds.xRight, 100);
    EXPECT_EQ(bounds.yBottom, 90);
}

TEST(TextEnumeration, DeliversInBatches)
{
    Engine engine;
    Text text;
    for (HGLYPH glyph = 1; glyph <= 3; ++glyph)
        text.AddGlyph(glyph, {}, {}, {1, 1}, {0x80});
    text.Enumerate(2);
    ULONG count = 0;
    GLYPHPOS* glyphs = nullptr;
    STROBJ_vEnumStart(&text);
    EXPECT_EQ(STROBJ_bEnum(&text, &count, &glyphs), TRUE);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(glyphs[1].hg, 2u);
    EXPECT_EQ(STROBJ_bEnum(&text, &count, &glyphs), FALSE);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(glyphs[0].hg, 3u);
    EXPECT_EQ(STROBJ_bEnum(&text, &count, &glyphs), FALSE);
    EXPECT_EQ(count, 0u);
}

TEST(TextEnumeration, CanFail)
{
    Engine engine;
    Text text;
    text.failEnumeration = true;
    ULONG count = 77;
    GLYPHPOS* glyphs = nullptr;
    EXPECT_EQ(STROBJ_bEnum(&text, &count, &glyphs), -1);
    EXPECT_EQ(count, 77u);
    text.codePage = 1250;
    EXPECT_EQ(STROBJ_dwGetCodePage(&text), 1250u);
}

TEST(Translation, VectorIsTheSourcePaletteOrNothing)
{
    Engine engine;
    Translation indexed(PixelLayout{BMF_1BPP, 0, 0, 0, {7, 8}}, PixelLayout::Default(BMF_32BPP));
    ASSERT_NE(XLATEOBJ_piVector(&indexed), nullptr);
    EXPECT_EQ(XLATEOBJ_piVector(&indexed)[1], 8u);
    Translation direct(PixelLayout::Default(BMF_32BPP), PixelLayout::Default(BMF_1BPP));
    EXPECT_EQ(XLATEOBJ_piVector(&direct), nullptr);
}

TEST(PaletteColours, AreCutToWhatThereIs)
{
    Engine engine;
    PaletteObject palette;
    palette.colours = {10, 20, 30, 40};
    ULONG colours[5] = {};
    EXPECT_EQ(PALOBJ_cGetColors(&palette, 1, 5, colours), 3u);
    EXPECT_EQ(colours[2], 40u);
    EXPECT_EQ(colours[3], 0u);
    EXPECT_EQ(PALOBJ_cGetColors(&palette, 4, 1, colours), 0u);
    palette.deliver = 2;
    EXPECT_EQ(PALOBJ_cGetColors(&palette, 0, 4, colours), 2u);
}

TEST(FontMetrics, AreTheFontsOrNull)
{
    Engine engine;
    Font font;
    EXPECT_EQ(FONTOBJ_pifi(&font), nullptr);
    font.SetNames(u"A", u"B", u"C", u"D");
    EXPECT_EQ(FONTOBJ_pifi(&font), font.Metrics());
}

// An object copied by a driver looks right and is not the engine's.
TEST(ForeignObjects, AreReportedByEveryEnumerationService)
{
    Engine engine;
    Path path;
    Text text;
    Font font;
    PaletteObject palette;
    Translation translation(PixelLayout::Default(BMF_1BPP), PixelLayout::Default(BMF_8BPP));
    PATHOBJ pathCopy = path;
    STROBJ textCopy = text;
    FONTOBJ fontCopy = font;
    PALOBJ paletteCopy = palette;
    XLATEOBJ translationCopy = translation;
    PATHDATA data;
    RECTFX bounds;
    ULONG number = 0;
    GLYPHPOS* glyphs = nullptr;
    PATHOBJ_vEnumStart(&pathCopy);
    PATHOBJ_bEnum(&pathCopy, &data);
    PATHOBJ_vGetBounds(&pathCopy, &bounds);
    STROBJ_vEnumStart(&textCopy);
    EXPECT_EQ(STROBJ_bEnum(&textCopy, &number, &glyphs), -1);
    EXPECT_EQ(STROBJ_dwGetCodePage(&textCopy), 0u);
    EXPECT_EQ(FONTOBJ_pifi(&fontCopy), nullptr);
    EXPECT_EQ(XLATEOBJ_piVector(&translationCopy), nullptr);
    EXPECT_EQ(PALOBJ_cGetColors(&paletteCopy, 0, 1, &number), 0u);
    const std::vector<std::string> expected = {
        "a foreign PATHOBJ", "a foreign PATHOBJ", "a foreign PATHOBJ",  "a foreign STROBJ", "a foreign STROBJ",
        "a foreign STROBJ",  "a foreign FONTOBJ", "a foreign XLATEOBJ", "a foreign PALOBJ",
    };
    EXPECT_EQ(engine.Violations(), expected);
}

TEST(NullObjects, AreReportedByEveryEnumerationService)
{
    Engine engine;
    Path path;
    Text text;
    PaletteObject palette;
    ULONG number = 0;
    PATHOBJ_vEnumStart(nullptr);
    PATHOBJ_bEnum(&path, nullptr);
    PATHOBJ_vGetBounds(&path, nullptr);
    STROBJ_vEnumStart(nullptr);
    STROBJ_bEnum(&text, &number, nullptr);
    STROBJ_dwGetCodePage(nullptr);
    FONTOBJ_pifi(nullptr);
    XLATEOBJ_piVector(nullptr);
    PALOBJ_cGetColors(&palette, 0, 1, nullptr);
    EXPECT_EQ(engine.Violations().size(), 9u);
    for (const std::string& violation : engine.Violations())
        EXPECT_TRUE(violation.ends_with("is null")) << violation;
}

} // namespace
