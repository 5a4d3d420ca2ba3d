#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;

using Blits = RasterTest;

BOOL Copy(SURFOBJ* target, SURFOBJ* source, RECTL rectangle, POINTL from, CLIPOBJ* pco = nullptr)
{
    return EngCopyBits(target, source, pco, nullptr, &rectangle, &from);
}

BOOL Paint(SURFOBJ* target, RECTL rectangle, CLIPOBJ* pco = nullptr)
{
    Brush brush = Brush::Solid(1);
    return EngBitBlt(target, nullptr, nullptr, pco, nullptr, &rectangle, nullptr, nullptr, &brush, nullptr, 0xF0F0);
}

struct OverlapCase {
    const char* name;
    RECTL target;
    POINTL from;
    Art result;
};

// Four pixels of 1, 2, 3 ... moved by one in each of the eight directions.
const Art numbered = {"#234", "5678", "9abc", "defg"};
const OverlapCase overlapCases[] = {
    {"Left", {0, 0, 3, 4}, {1, 0}, {"2344", "6788", "abcc", "efgg"}},
    {"Right", {1, 0, 4, 4}, {0, 0}, {"##23", "5567", "99ab", "ddef"}},
    {"Up", {0, 0, 4, 3}, {0, 1}, {"5678", "9abc", "defg", "defg"}},
    {"Down", {0, 1, 4, 4}, {0, 0}, {"#234", "#234", "5678", "9abc"}},
    {"LeftUp", {0, 0, 3, 3}, {1, 1}, {"6784", "abc8", "efgc", "defg"}},
    {"RightUp", {1, 0, 4, 3}, {0, 1}, {"#567", "59ab", "9def", "defg"}},
    {"LeftDown", {0, 1, 3, 4}, {1, 0}, {"#234", "2348", "678c", "abcg"}},
    {"RightDown", {1, 1, 4, 4}, {0, 0}, {"#234", "5#23", "9567", "d9ab"}},
};

TEST_F(Blits, OverlappingCopiesMoveThePictureAsItWas)
{
    for (const OverlapCase& test : overlapCases)
        for (const ULONG format : {BMF_8BPP, BMF_16BPP, BMF_24BPP, BMF_32BPP})
            for (const LONG lDelta : {20, -20}) {
                Surface* const surface = Picture(numbered, format, lDelta);
                EXPECT_TRUE(Copy(surface, surface, test.target, test.from));
                EXPECT_EQ(Shown(surface), Joined(test.result)) << test.name << ", format " << format;
            }
}

TEST_F(Blits, OverlappingCopiesOfPackedPixelsToo)
{
    const Art before = {"#23456789", "9abcdef55"};
    Surface* const right = Picture(before, BMF_4BPP);
    EXPECT_TRUE(Copy(right, right, {1, 0, 9, 2}, {0, 0}));
    EXPECT_PICTURE(right, "##2345678", "99abcdef5");
    Surface* const down = Picture(before, BMF_4BPP);
    EXPECT_TRUE(Copy(down, down, {0, 1, 9, 2}, {0, 0}));
    EXPECT_PICTURE(down, "#23456789", "#23456789");
    Surface* const bits = Picture({"#..##.#..#", ".........."}, BMF_1BPP);
    EXPECT_TRUE(Copy(bits, bits, {3, 0, 10, 1}, {0, 0}));
    EXPECT_PICTURE(bits, "#..#..##.#", "..........");
}

TEST_F(Blits, AnOverlappingCopyThroughAComplexClipReadsThePictureAsItWas)
{
    Surface* const surface = Picture(numbered);
    // The second rectangle's source is the first's target and the other way round.
    ClipObject clip(std::vector<RECTL>{{0, 0, 2, 4}, {2, 2, 4, 4}});
    EXPECT_TRUE(Copy(surface, surface, {0, 0, 4, 3}, {0, 1}, &clip));
    EXPECT_PICTURE(surface, "5634", "9a78", "defg", "defg");
    Surface* const sideways = Picture({"#234567"});
    ClipObject pieces(std::vector<RECTL>{{1, 0, 3, 1}, {4, 0, 7, 1}});
    EXPECT_TRUE(Copy(sideways, sideways, {1, 0, 7, 1}, {0, 0}, &pieces));
    EXPECT_PICTURE(sideways, "##24456");
}

TEST_F(Blits, OtherOperationsOnOverlapsAlsoReadThePictureAsItWas)
{
    Surface* const surface = Picture({"##..##.."});
    RECTL target = {1, 0, 8, 1};
    POINTL from = {0, 0};
    EXPECT_TRUE(EngBitBlt(surface, surface, nullptr, nullptr, nullptr, &target, &from, nullptr, nullptr, nullptr,
                          0x6666)); // XOR with the left neighbour
    EXPECT_PICTURE(surface, "#.#.#.#.");
}

TEST_F(Blits, TwoBitmapsMayShareTheirMemory)
{
    BYTE bits[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    const auto lock = [&](LONG width, BYTE* first) {
        return EngLockSurface(reinterpret_cast<HSURF>(EngCreateBitmap({width, 1}, 8, BMF_8BPP, BMF_TOPDOWN, first)));
    };
    SURFOBJ* const whole = lock(8, bits);
    SURFOBJ* const behind = lock(6, bits + 2);
    EXPECT_TRUE(Copy(behind, whole, {0, 0, 6, 1}, {0, 0}));
    EXPECT_EQ(Shown(static_cast<Surface*>(whole)), "\n#2#23456\n");
}

TEST_F(Blits, TheTargetIsCutToItsSurface)
{
    Surface* const target = Blank(3, 2);
    EXPECT_TRUE(Copy(target, Picture(numbered), {-1, -2, 3, 2}, {0, 0}));
    EXPECT_PICTURE(target, "abc", "efg");
    EXPECT_TRUE(Copy(target, Picture(numbered), {3, 0, 7, 4}, {0, 0}));
    EXPECT_TRUE(Copy(target, Picture(numbered), {1, 1, 5, 5}, {0, 0}));
    EXPECT_PICTURE(target, "abc", "e#2");
}

TEST_F(Blits, OnlyTheSourcePixelsThatAreNeededMustExist)
{
    Surface* const target = Blank(2, 2);
    EXPECT_TRUE(Copy(target, Picture({"##", "##"}), {-9, 0, 2, 9}, {-9, 0}));
    EXPECT_PICTURE(target, "##", "##");
}

TEST_F(Blits, ASourceOutsideOfItsSurfaceIsRefusedWithNothingDrawn)
{
    const POINTL outside[] = {{-1, 0}, {0, -1}, {1, 0}, {0, 1}, {INT32_MAX, 0}, {0, INT32_MIN}};
    for (const POINTL& from : outside) {
        Surface* const target = Picture({"55", "55"});
        EXPECT_FALSE(Copy(target, Picture({"##", "##"}), {0, 0, 2, 2}, from));
        EXPECT_PICTURE(target, "55", "55");
        ExpectViolation("EngCopyBits: source outside of the surface");
    }
    Surface* const target = Picture({"55"});
    RECTL all = {0, 0, 2, 1};
    POINTL from = {1, 0};
    EXPECT_FALSE(
        EngBitBlt(target, Picture({"##"}), nullptr, nullptr, nullptr, &all, &from, nullptr, nullptr, nullptr, 0x8888));
    EXPECT_PICTURE(target, "55");
    ExpectViolation("EngBitBlt: source outside of the surface");
}

TEST_F(Blits, AClipThatHidesTheMissingSourceMakesItRight)
{
    Surface* const target = Picture({"5555"});
    ClipObject clip(std::vector<RECTL>{{0, 0, 1, 1}, {3, 0, 4, 1}});
    EXPECT_FALSE(Copy(target, Picture({"##"}), {0, 0, 4, 1}, {0, 0}, &clip));
    EXPECT_PICTURE(target, "5555");
    ExpectViolation("EngCopyBits: source outside of the surface");
    ClipObject first({0, 0, 2, 1});
    EXPECT_TRUE(Copy(target, Picture({"##"}), {0, 0, 4, 1}, {0, 0}, &first));
    EXPECT_PICTURE(target, "##55");
}

TEST_F(Blits, CoordinatesMayReachTheEndsOfTheRange)
{
    Surface* const target = Blank(2, 2);
    EXPECT_TRUE(Paint(target, {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}));
    EXPECT_PICTURE(target, "##", "##");
    EXPECT_TRUE(Copy(target, Picture({"22", "22"}), {INT32_MIN, 0, INT32_MAX, 2}, {INT32_MIN, 0}));
    EXPECT_PICTURE(target, "22", "22");
    EXPECT_FALSE(Copy(target, Picture({"33", "33"}), {INT32_MIN, 0, INT32_MAX, 2}, {INT32_MAX, 0}));
    ExpectViolation("EngCopyBits: source outside of the surface");
}

TEST_F(Blits, AnUnorderedTargetIsPutInOrderAndAnEmptyOneIsNothing)
{
    Surface* const target = Blank(4, 3);
    EXPECT_TRUE(Copy(target, Picture(numbered), {3, 3, 1, 1}, {1, 1}));
    EXPECT_PICTURE(target, "....", ".67.", ".ab.");
    EXPECT_TRUE(Copy(target, Picture(numbered), {2, 0, 2, 3}, {99, 99}));
    EXPECT_PICTURE(target, "....", ".67.", ".ab.");
}

TEST_F(Blits, ClipsOfEachKind)
{
    ClipObject trivial({1, 1, 2, 2}, DC_TRIVIAL);
    Surface* const all = Blank(4, 3);
    EXPECT_TRUE(Paint(all, {0, 0, 4, 3}, &trivial));
    EXPECT_PICTURE(all, "####", "####", "####");

    ClipObject rectangle({1, -5, 3, 2});
    Surface* const some = Blank(4, 3);
    EXPECT_TRUE(Paint(some, {0, 0, 9, 9}, &rectangle));
    EXPECT_PICTURE(some, ".##.", ".##.", "....");

    ClipObject complex(std::vector<RECTL>{{0, 0, 1, 3}, {2, 1, 4, 2}});
    Surface* const parts = Blank(4, 3);
    EXPECT_TRUE(Paint(parts, {0, 0, 3, 3}, &complex));
    EXPECT_PICTURE(parts, "#...", "#.#.", "#...");

    ClipObject elsewhere({10, 10, 20, 20});
    EXPECT_TRUE(Paint(parts, {0, 0, 3, 3}, &elsewhere));
    EXPECT_PICTURE(parts, "#...", "#.#.", "#...");
}

TEST_F(Blits, AForeignClipIsRefused)
{
    CLIPOBJ foreign = {};
    foreign.rclBounds = {0, 0, 9, 9};
    foreign.iDComplexity = DC_RECT;
    Surface* const target = Blank(2, 1);
    EXPECT_FALSE(Paint(target, {0, 0, 2, 1}, &foreign));
    EXPECT_PICTURE(target, "..");
    ExpectViolation("a foreign CLIPOBJ");
}

TEST_F(Blits, NullPointsOfABlitAreTheOrigin)
{
    Surface* const target = Blank(2, 1);
    RECTL all = {0, 0, 2, 1};
    EXPECT_TRUE(EngBitBlt(target, Picture({"67"}), Picture({"#."}, BMF_1BPP), nullptr, nullptr, &all, nullptr, nullptr,
                          nullptr, nullptr, 0xAACC));
    EXPECT_PICTURE(target, "6.");
}

TEST_F(Blits, WhatARealEngineWouldNotSurviveIsRefused)
{
    Surface* const target = Blank(2, 1);
    SURFOBJ foreign = *target;
    Brush brush = Brush::Solid(1);
    RECTL all = {0, 0, 2, 1};
    POINTL from = {0, 0};
    EXPECT_FALSE(Paint(nullptr, all));
    EXPECT_FALSE(EngBitBlt(target, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &brush, nullptr, 0));
    EXPECT_FALSE(Paint(&foreign, all));
    EXPECT_FALSE(EngPaint(target, nullptr, &brush, nullptr, 0x0D0D));
    EXPECT_FALSE(EngCopyBits(nullptr, target, nullptr, nullptr, &all, &from));
    EXPECT_FALSE(EngCopyBits(target, nullptr, nullptr, nullptr, &all, &from));
    EXPECT_FALSE(EngCopyBits(target, target, nullptr, nullptr, nullptr, &from));
    EXPECT_FALSE(EngCopyBits(target, target, nullptr, nullptr, &all, nullptr));
    EXPECT_PICTURE(target, "..");
    for (const char* const violation :
         {"EngBitBlt: null target", "EngBitBlt: null target rectangle", "a foreign or deleted SURFOBJ",
          "EngPaint: null clip", "EngCopyBits: null target", "EngCopyBits: null source",
          "EngCopyBits: null target rectangle", "EngCopyBits: null source point"})
        ExpectViolation(violation);
}

TEST_F(Blits, PaintFillsTheBoundsOfAnyClip)
{
    Brush brush = Brush::Solid(6);
    Surface* const target = Blank(4, 2);
    ClipObject trivial({0, 0, 2, 1}, DC_TRIVIAL), complex(std::vector<RECTL>{{0, 1, 1, 2}, {3, 1, 9, 9}});
    EXPECT_TRUE(EngPaint(target, &trivial, &brush, nullptr, 0x0D0D));
    EXPECT_PICTURE(target, "66..", "....");
    EXPECT_TRUE(EngPaint(target, &complex, &brush, nullptr, 0x0D0D));
    EXPECT_PICTURE(target, "66..", "6..6");
}

} // namespace
