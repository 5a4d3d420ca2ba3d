#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;

using Gradients = RasterTest;
using Vertices = std::vector<TRIVERTEX>;
using Values = std::vector<ULONG>;

TRIVERTEX Vertex(LONG x, LONG y, COLOR16 red, COLOR16 green = 0, COLOR16 blue = 0)
{
    return {x, y, red, green, blue, 0};
}

BOOL Fill(Surface* target, Vertices vertices, std::vector<ULONG> mesh, ULONG mode, CLIPOBJ* pco = nullptr,
          RECTL extents = {-1000, -1000, 1000, 1000})
{
    const ULONG corners = mode == GRADIENT_FILL_TRIANGLE ? 3 : 2;
    return EngGradientFill(target, pco, nullptr, vertices.data(), static_cast<ULONG>(vertices.size()), mesh.data(),
                           static_cast<ULONG>(mesh.size()) / corners, &extents, nullptr, mode);
}

Values RowOf(const Surface* surface, LONG y)
{
    Values values;
    for (LONG x = 0; x < surface->sizlBitmap.cx; ++x)
        values.push_back(surface->Pixel(x, y));
    return values;
}

TEST_F(Gradients, AHorizontalOneStepsFromLeftToRight)
{
    Surface* const target = Blank(6, 2);
    EXPECT_TRUE(
        Fill(target, {Vertex(1, 0, 0, 0xFF00, 0x1000), Vertex(5, 1, 0x8000, 0xFF00, 0)}, {0, 1}, GRADIENT_FILL_RECT_H));
    EXPECT_EQ(RowOf(target, 0), (Values{0, 0x00FF10, 0x20FF0C, 0x40FF08, 0x60FF04, 0}));
    EXPECT_EQ(RowOf(target, 1), (Values{0, 0, 0, 0, 0, 0}));
}

TEST_F(Gradients, AVerticalOneStepsFromTopToBottom)
{
    Surface* const target = Blank(2, 4);
    EXPECT_TRUE(Fill(target, {Vertex(0, 0, 0), Vertex(2, 4, 0x4000)}, {0, 1}, GRADIENT_FILL_RECT_V));
    EXPECT_EQ(RowOf(target, 0), (Values{0, 0}));
    EXPECT_EQ(RowOf(target, 1), (Values{0x100000, 0x100000}));
    EXPECT_EQ(RowOf(target, 3), (Values{0x300000, 0x300000}));
}

TEST_F(Gradients, CornersInAnyOrderTakeTheirColoursAlong)
{
    Surface* const target = Blank(4, 2);
    EXPECT_TRUE(Fill(target, {Vertex(4, 0, 0x8000), Vertex(0, 2, 0)}, {0, 1}, GRADIENT_FILL_RECT_H));
    EXPECT_EQ(RowOf(target, 1), (Values{0, 0x200000, 0x400000, 0x600000}));
    EXPECT_TRUE(Fill(target, {Vertex(0, 2, 0x8000), Vertex(4, 0, 0)}, {0, 1}, GRADIENT_FILL_RECT_V));
    EXPECT_EQ(RowOf(target, 0), (Values{0, 0, 0, 0}));
    EXPECT_EQ(RowOf(target, 1), (Values{0x400000, 0x400000, 0x400000, 0x400000}));
}

TEST_F(Gradients, ATriangleIsThePlaneThroughItsCorners)
{
    Surface* const target = Blank(4, 4);
    // Red grows by 10 (hex) with each pixel to the right and by 20 with each row.
    EXPECT_TRUE(
        Fill(target, {Vertex(0, 0, 0), Vertex(4, 0, 0x4000), Vertex(0, 4, 0x8000)}, {2, 0, 1}, GRADIENT_FILL_TRIANGLE));
    EXPECT_EQ(RowOf(target, 0), (Values{0, 0x100000, 0x200000, 0x300000}));
    EXPECT_EQ(RowOf(target, 1), (Values{0x200000, 0x300000, 0x400000, 0}));
    EXPECT_EQ(RowOf(target, 2), (Values{0x400000, 0x500000, 0, 0}));
    EXPECT_EQ(RowOf(target, 3), (Values{0x600000, 0, 0, 0}));
}

TEST_F(Gradients, TwoTrianglesMeetWithoutGapOrOverlap)
{
    Surface* const target = Blank(5, 5);
    const Vertices corners = {Vertex(0, 0, 0x0100), Vertex(5, 0, 0x0100), Vertex(0, 5, 0x0100), Vertex(5, 5, 0x0100)};
    EXPECT_TRUE(Fill(target, corners, {0, 1, 2, 1, 2, 3}, GRADIENT_FILL_TRIANGLE));
    for (LONG y = 0; y < 5; ++y)
        EXPECT_EQ(RowOf(target, y), Values(5, 0x010000)) << y;
}

TEST_F(Gradients, AreClippedAndCutToTheirExtents)
{
    Surface* const target = Blank(6, 1);
    ClipObject clip(std::vector<RECTL>{{0, 0, 2, 1}, {3, 0, 6, 1}});
    EXPECT_TRUE(
        Fill(target, {Vertex(0, 0, 0x0100), Vertex(6, 1, 0x0100)}, {0, 1}, GRADIENT_FILL_RECT_H, &clip, {1, 0, 5, 1}));
    EXPECT_EQ(RowOf(target, 0), (Values{0, 0x010000, 0, 0x010000, 0x010000, 0}));
}

TEST_F(Gradients, OtherFormatsTakeTheirNearestColour)
{
    Surface* const sixteen = Blank(4, 1, BMF_16BPP);
    EXPECT_TRUE(Fill(sixteen, {Vertex(0, 0, 0, 0xFF00), Vertex(4, 1, 0x8000, 0xFF00)}, {0, 1}, GRADIENT_FILL_RECT_H));
    EXPECT_EQ(RowOf(sixteen, 0), (Values{0x07E0, 0x27E0, 0x47E0, 0x67E0})); // red 0, 4, 8, 12
    Surface* const bits = Blank(4, 1, BMF_1BPP);
    EXPECT_TRUE(
        Fill(bits, {Vertex(0, 0, 0, 0, 0), Vertex(4, 1, 0xFF00, 0xFF00, 0xFF00)}, {0, 1}, GRADIENT_FILL_RECT_H));
    EXPECT_PICTURE(bits, "...#"); // 00, 3F, 7F, BF; 7F is nearer to black
}

TEST_F(Gradients, ReachBeyondTheSurface)
{
    Surface* const target = Blank(2, 1);
    EXPECT_TRUE(Fill(target, {Vertex(INT32_MIN, 0, 0), Vertex(INT32_MAX, 1, 0xFFFF)}, {0, 1}, GRADIENT_FILL_RECT_H));
    EXPECT_EQ(RowOf(target, 0), (Values{0x7F0000, 0x7F0000})); // the middle
    EXPECT_TRUE(Fill(target,
                     {Vertex(-0x40000000, -0x40000000, 0xFFFF), Vertex(0x7FFFFFFF, -0x40000000, 0xFFFF),
                      Vertex(-0x40000000, 0x7FFFFFFF, 0xFFFF)},
                     {0, 1, 2}, GRADIENT_FILL_TRIANGLE));
    EXPECT_EQ(RowOf(target, 0), (Values{0xFF0000, 0xFF0000}));
}

TEST_F(Gradients, EmptyShapesDrawNothing)
{
    Surface* const target = Blank(3, 3);
    EXPECT_TRUE(Fill(target, {Vertex(1, 0, 0xFF00), Vertex(1, 3, 0xFF00)}, {0, 1}, GRADIENT_FILL_RECT_H));
    EXPECT_TRUE(Fill(target, {Vertex(0, 0, 0xFF00), Vertex(1, 1, 0xFF00), Vertex(3, 3, 0xFF00)}, {0, 1, 2},
                     GRADIENT_FILL_TRIANGLE));
    EXPECT_PICTURE(target, "...", "...", "...");
}

TEST_F(Gradients, DamagedMeshesAreRefused)
{
    Surface* const target = Blank(2, 1);
    EXPECT_FALSE(Fill(target, {Vertex(0, 0, 0x100), Vertex(2, 1, 0x100)}, {0, 2}, GRADIENT_FILL_RECT_H));
    ExpectViolation("EngGradientFill: vertex index out of range");
    EXPECT_FALSE(Fill(target, {Vertex(0, 0, 0x100), Vertex(2, 1, 0x100)}, {0, 1}, 3));
    EXPECT_FALSE(Fill(nullptr, {Vertex(0, 0, 0)}, {0, 0}, GRADIENT_FILL_RECT_H));
    ExpectViolation("EngGradientFill: null target");
    RECTL extents = {0, 0, 2, 1};
    EXPECT_FALSE(EngGradientFill(target, nullptr, nullptr, nullptr, 0, nullptr, 0, &extents, nullptr, 0));
    ExpectViolation("EngGradientFill: null vertices, mesh or extents");
    EXPECT_PICTURE(target, "..");
}

} // namespace
