// The judge is judged by pictures and numbers worked out by hand.

#include <gtest/gtest.h>

#include "tests/property/model_cursor.h"
#include "tests/property/model_magnifier.h"
#include "tests/property/model_smoothing.h"

namespace property {

void PrintTo(const Rect& rect, std::ostream* out)
{
    *out << ToString(rect);
}

namespace {

    constexpr Format TrueColour = {32, 32};

    Picture FromText(const std::vector<std::string>& rows)
    {
        Picture picture(static_cast<std::int64_t>(rows[0].size()), static_cast<std::int64_t>(rows.size()), 32);
        for (std::size_t y = 0; y < rows.size(); ++y)
            for (std::size_t x = 0; x < rows[y].size(); ++x)
                picture.Set(static_cast<LONG>(x), static_cast<LONG>(y), rows[y][x] == '#' ? 0 : 0xFFFFFF);
        return picture;
    }

    std::vector<std::string> ToText(const Picture& picture, const Rect& part)
    {
        std::vector<std::string> rows;
        for (std::int64_t y = part.top; y < part.bottom; ++y) {
            rows.emplace_back();
            for (std::int64_t x = part.left; x < part.right; ++x)
                rows.back() += picture.At(x, y) == 0 ? '#' : '.';
        }
        return rows;
    }

    // Dark grows over light.
    std::vector<std::string> Smoothed(const std::vector<std::string>& rows, ULONG improveFactor, ULONG factor)
    {
        Magnifier magnifier(8, 8, TrueColour);
        Copy(magnifier.virtualScreen, {0, 0, 8, 8}, FromText(rows), {0, 0});
        magnifier.Create(1);
        Zoomer& zoomer = magnifier.zoomers.front();
        const auto width = static_cast<LONG>(rows[0].size()), height = static_cast<LONG>(rows.size());
        zoomer.SetOriginalRect({0, 0, width, height});
        zoomer.SetFactors(factor, factor);
        zoomer.improveFactor = improveFactor;
        zoomer.SetState(1);
        magnifier.Refresh(1);
        return ToText(zoomer.image, zoomer.destRect);
    }

    TEST(ModelOfRectangles, CutsARectangleRoundAnother)
    {
        const Rect plate = {0, 0, 100, 100};
        EXPECT_EQ(Subtract({20, 20, 60, 60}, plate),
                  (std::vector<Rect>{{0, 0, 100, 20}, {0, 20, 20, 60}, {0, 60, 100, 100}, {60, 20, 100, 60}}));
        EXPECT_EQ(Subtract({50, 50, 100, 100}, plate), (std::vector<Rect>{{0, 0, 50, 100}, {50, 0, 100, 50}}));
        EXPECT_EQ(Subtract({-1, -1, 60, 60}, plate), (std::vector<Rect>{{0, 60, 100, 100}, {60, 0, 100, 60}}));
        EXPECT_EQ(Subtract({0, 0, 100, 100}, plate), std::vector<Rect>{});
        EXPECT_EQ(Subtract({100, 0, 120, 100}, plate), std::vector<Rect>{plate});
    }

    TEST(ModelOfZoomers, PlacesPictureAndFrame)
    {
        Zoomer zoomer(400, 300, 32);
        zoomer.SetOriginalRect({10, 10, 60, 40});
        zoomer.SetZoomedRect({200, 100, 300, 200});
        zoomer.SetFactors(3, 2);
        EXPECT_EQ(zoomer.destRect, Rect(200, 100, 350, 160));
        EXPECT_EQ(zoomer.ToDestination({0, 12, 13, 14}), Rect(200, 104, 209, 108));
        EXPECT_EQ(zoomer.ToSource({201, 103, 204, 104}), Rect(10, 11, 12, 12));
        zoomer.SetZoomedRect({3, 0, 400, 298});
        zoomer.border = 15;
        zoomer.bordersSize = 5;
        EXPECT_EQ(zoomer.Framed(), Rect(0, 0, 400, 300));
    }

    TEST(ModelOfZoomers, MovesAmongEqualsBehindThem)
    {
        Magnifier magnifier(8, 8, TrueColour);
        for (const ULONG id : {3u, 2u, 1u})
            magnifier.Create(id);
        const auto order = [&] {
            std::vector<ULONG> ids;
            for (const Zoomer& zoomer : magnifier.zoomers)
                ids.push_back(zoomer.id);
            return ids;
        };
        magnifier.SetZOrder(1, 0);
        EXPECT_EQ(order(), (std::vector<ULONG>{2, 3, 1}));
        EXPECT_TRUE(magnifier.recompose);
        magnifier.SetZOrder(1, 5);
        EXPECT_EQ(order(), (std::vector<ULONG>{1, 2, 3}));
    }

    TEST(ModelOfZoomers, GathersWhatIsDrawnUntilTheNextUpdate)
    {
        Magnifier magnifier(40, 40, TrueColour);
        magnifier.Create(1);
        Zoomer& zoomer = magnifier.zoomers.front();
        zoomer.Set(&Zoomer::behaviour, 2);
        zoomer.SetState(1);
        magnifier.Update();
        magnifier.AfterDraw({0, 0, 10, 10});
        magnifier.AfterDraw({20, 20, 30, 30});
        EXPECT_EQ(zoomer.pendingRect, Rect(0, 0, 30, 30));
        magnifier.Update();
        EXPECT_EQ(zoomer.pendingRect, Rect());
    }

    TEST(ModelOfColours, KnowsTheDefaultPalettes)
    {
        EXPECT_EQ(ColourOf({8, 8}, 10), (Colour{80, 8, 0}));
        EXPECT_EQ(ColourOf({8, 8}, 64), (Colour{0, 64, 16}));
        EXPECT_EQ(ColourOf({8, 8}, 245), (Colour{168, 240, 48}));
        EXPECT_EQ(PixelOf({8, 8}, {255, 255, 255}), 255u);
        EXPECT_EQ(PixelOf({4, 4}, {128, 128, 128}), 7u);
        EXPECT_EQ(ColourOf({16, 16}, 0x0010), (Colour{0, 0, 132}));
        EXPECT_EQ(ColourOf({16, 15}, 0x7C1F), (Colour{255, 0, 255}));
    }

    TEST(ModelOfColours, LetsAPairDecideBeforeBrightness)
    {
        const ColourChoice choice(TrueColour);
        EXPECT_EQ(choice.Choose(0xFFFFFF, 0x000080, false), 0x000080u); // white on navy
        EXPECT_EQ(choice.Choose(0x000080, 0xFFFFFF, false), 0x000080u);
        EXPECT_EQ(choice.Choose(0x000000, 0x010101, false), 0x010101u);
        EXPECT_EQ(choice.Choose(0x000000, 0x010101, true), 0x000000u);
        EXPECT_EQ(choice.Choose(0x000001, 0x010000, false), 0x010000u); // equally bright: the second
    }

    TEST(ModelOfSmoothing, PaintsTrianglesAlongADiagonal)
    {
        EXPECT_EQ(Smoothed({"#.", ".#"}, 1, 4),
                  (std::vector<std::string>{
                      "####....",
                      "#####...",
                      "######..",
                      "#######.",
                      ".#######",
                      "..######",
                      "...#####",
                      "....####",
                  }));
    }

    TEST(ModelOfSmoothing, KeepsTheCornersOfABoxWithFactorTwo)
    {
        const std::vector<std::string> box = {".....", ".###.", ".#...", ".#...", "....."};
        const std::vector<std::string> inner = Smoothed(box, 1, 2);
        const std::vector<std::string> kept = Smoothed(box, 2, 2);
        EXPECT_EQ(inner[4], "..###.....");
        EXPECT_EQ(kept[4], "..##......");
    }

    TEST(ModelOfSmoothing, StraightensShallowLinesWithFactorThree)
    {
        const std::vector<std::string> line = {"........", "........", "..##....", "....##..", "........", "........"};
        const std::vector<std::string> smooth = Smoothed(line, 3, 2);
        // Legs of 4 and 2: centres of 3 and 1 pixels of their rows lie inside.
        EXPECT_EQ(smooth[4], "....#####.......");
        EXPECT_EQ(smooth[5], "....#######.....");
        EXPECT_EQ(smooth[6], ".....#######....");
        EXPECT_EQ(smooth[7], ".......#####....");
    }

    TEST(ModelOfTheOverlay, KeepsThePictureInsideTheMask)
    {
        Overlay overlay;
        const Picture empty(3, 1, 8);
        Picture image = empty, mask = empty, screen = empty;
        Fill(image, image.Bounds(), 0x0F);
        Fill(screen, screen.Bounds(), 0x35);
        mask.Set(1, 0, 0xFF);
        overlay.SetImage(empty, image, 0xCC, {0, 0}, {0, 0, 2, 1});
        overlay.SetMask(empty, mask, {0, 0, 3, 1});
        overlay.MergeInto(screen, screen.Bounds());
        EXPECT_EQ(screen.At(0, 0), 0x0Fu);
        EXPECT_EQ(screen.At(1, 0), 0x35u);
        EXPECT_EQ(screen.At(2, 0), 0x35u); // not covered
    }

    TEST(ModelOfThePointer, MixesMonochromeShapes)
    {
        Cursor cursor(8, 8, TrueColour);
        Picture mask(4, 2, 1), screen(8, 8, 32);
        for (const LONG x : {2, 3})
            mask.Set(x, 0, 1);
        for (const LONG x : {1, 3})
            mask.Set(x, 1, 1);
        Fill(screen, screen.Bounds(), 0x123456);
        EXPECT_EQ(cursor.SetShape({mask, {}}, {1, 0}, 3, -2), Rect(2, 6, 6, 7));
        cursor.DrawOn(screen);
        EXPECT_EQ(screen.At(2, 6), 0u);
        EXPECT_EQ(screen.At(3, 6), 0xFFFFFFFFu);
        EXPECT_EQ(screen.At(4, 6), 0x123456u);
        EXPECT_EQ(screen.At(5, 6), 0xFFEDCBA9u);
        EXPECT_EQ(cursor.Move(-1, 0), Rect(2, 6, 6, 7));
    }

} // namespace
} // namespace property
