// The raster operations, with all their quick ways, against plain models that go pixel by pixel. A case is
// replayed by its number.

#include <memory>
#include <random>

#include "engine/raster/rectangles.h"
#include "engine/raster/scan_converter.h"
#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;
using Pixels = std::vector<ULONG>;

constexpr LONG Side = 24;

class Random {
public:
    explicit Random(ULONG number)
        : engine_(number)
    {
    }
    ULONG Any() { return static_cast<ULONG>(engine_()); }
    bool OneIn(ULONG count) { return Any() % count == 0; }
    LONG Between(LONG low, LONG high) { return low + static_cast<LONG>(Any() % static_cast<ULONG>(high - low + 1)); }
    template<class Value> Value OneOf(std::initializer_list<Value> values)
    {
        return values.begin()[Any() % values.size()];
    }
    RECTL Rectangle(LONG low, LONG high)
    {
        return Ordered({Between(low, high), Between(low, high), Between(low, high), Between(low, high)});
    }

private:
    std::mt19937 engine_;
};

Surface* AnyPicture(Random& random, ULONG format)
{
    const LONG rowBytes = static_cast<LONG>(RowBytes(format, Side)) + random.Between(0, 5);
    Surface* const surface = Blank(Side, Side, format, random.OneOf({rowBytes, -rowBytes}));
    for (LONG y = 0; y < Side; ++y)
        for (LONG x = 0; x < Side; ++x)
            surface->SetPixel(x, y, random.Any());
    return surface;
}

std::unique_ptr<ClipObject> AnyClip(Random& random)
{
    switch (random.Any() % 4) {
    case 0:
        return nullptr;
    case 1:
        return std::make_unique<ClipObject>(random.Rectangle(0, Side), DC_TRIVIAL);
    case 2:
        return std::make_unique<ClipObject>(random.Rectangle(-3, Side + 3));
    default:
        return std::make_unique<ClipObject>(std::vector<RECTL>{{0, 0, random.Between(1, 10), 9},
                                                               {random.Between(10, 12), 0, 20, 9},
                                                               {random.Between(0, 9), 9, 22, random.Between(10, 20)}});
    }
}

bool IsVisible(const ClipObject* clip, LONG x, LONG y)
{
    if (!clip || clip->iDComplexity == DC_TRIVIAL)
        return true;
    if (clip->iDComplexity == DC_RECT)
        return Contains(clip->rclBounds, x, y);
    return std::any_of(clip->rectangles.begin(), clip->rectangles.end(),
                       [x, y](const RECTL& rectangle) { return Contains(rectangle, x, y); });
}

Pixels PixelsOf(const Surface* surface)
{
    Pixels pixels;
    for (LONG y = 0; y < Side; ++y)
        for (LONG x = 0; x < Side; ++x)
            pixels.push_back(surface->Pixel(x, y));
    return pixels;
}

ULONG Combined(ULONG rop, ULONG pattern, ULONG source, ULONG target)
{
    ULONG result = 0;
    for (int bit = 0; bit < 32; ++bit) {
        const ULONG triple = (pattern >> bit & 1) << 2 | (source >> bit & 1) << 1 | (target >> bit & 1);
        result |= (rop >> triple & 1) << bit;
    }
    return result;
}

// A blit whose source, often the target itself, holds what is visible of the target.
struct BlitCase {
    Surface *target, *source, *mask;
    std::unique_ptr<ClipObject> clip;
    ROP4 rop4;
    Brush brush;
    RECTL rectangle;
    POINTL from = {0, 0};

    explicit BlitCase(Random& random)
        : target(AnyPicture(random, random.OneOf({BMF_1BPP, BMF_4BPP, BMF_8BPP, BMF_16BPP, BMF_24BPP, BMF_32BPP})))
        , source(random.OneIn(2) ? target : AnyPicture(random, target->iBitmapFormat))
        , mask(random.OneIn(3) ? AnyPicture(random, BMF_1BPP) : nullptr)
        , clip(AnyClip(random))
        , rop4(random.OneOf<ROP4>({0xCCCC, 0xCCCC, 0xF0F0, 0x5A5A, 0xAACC, 0x6688, random.Any() & 0xFFFF}))
        , brush(Brush::Solid(random.Any()))
        , rectangle(random.Rectangle(-2, Side))
    {
        const RECTL visible = Visible();
        if (IsEmpty(visible))
            return;
        from = {random.Between(0, Side - (visible.right - visible.left)) - (visible.left - rectangle.left),
                random.Between(0, Side - (visible.bottom - visible.top)) - (visible.top - rectangle.top)};
    }
    ~BlitCase()
    {
        DestroyBitmap(target);
        if (source != target)
            DestroyBitmap(source);
        if (mask)
            DestroyBitmap(mask);
    }

    RECTL Visible() const { return Intersection(rectangle, target->Bounds()); }

    BOOL Draw()
    {
        POINTL maskFrom = from;
        return EngBitBlt(target, source, mask, clip.get(), nullptr, &rectangle, &from, &maskFrom, &brush, nullptr,
                         rop4);
    }

    Pixels Expected() const
    {
        const ULONG bits = target->layout.BitsPerPixel();
        const ULONG ones = bits == 32 ? 0xFFFFFFFF : (1u << bits) - 1;
        Pixels pixels = PixelsOf(target);
        const RECTL visible = Visible();
        for (LONG y = visible.top; y < visible.bottom; ++y)
            for (LONG x = visible.left; x < visible.right; ++x) {
                if (!IsVisible(clip.get(), x, y))
                    continue;
                const LONG sourceX = from.x + x - rectangle.left, sourceY = from.y + y - rectangle.top;
                const ULONG rop = !mask || mask->Pixel(sourceX, sourceY) ? rop4 & 0xFF : rop4 >> 8;
                ULONG& pixel = pixels[static_cast<std::size_t>(y * Side + x)];
                pixel = Combined(rop, brush.iSolidColor, source->Pixel(sourceX, sourceY), pixel) & ones;
            }
        return pixels;
    }
};

using RandomRaster = RasterTest;

TEST_F(RandomRaster, BlitsAgreeWithAPlainModel)
{
    constexpr ULONG rounds = 3000;
    ULONG drawn = 0;
    for (ULONG number = 0; number < rounds; ++number) {
        Random random(number);
        BlitCase test(random);
        const Pixels before = PixelsOf(test.target), expected = test.Expected();
        ASSERT_TRUE(test.Draw()) << "case " << number;
        ASSERT_EQ(PixelsOf(test.target), expected) << "case " << number;
        drawn += expected != before;
    }
    EXPECT_GT(drawn, rounds / 2);
}

TEST_F(RandomRaster, StretchesAgreeWithAPlainModel)
{
    for (ULONG number = 0; number < 1000; ++number) {
        Random random(number);
        Surface* const target = AnyPicture(random, BMF_8BPP);
        Surface* const source = AnyPicture(random, BMF_8BPP);
        const auto clip = AnyClip(random);
        RECTL to = random.Rectangle(-6, Side + 6), from = random.Rectangle(-6, Side + 6);
        Pixels expected = PixelsOf(target);
        for (LONG y = std::max<LONG>(to.top, 0); y < std::min(to.bottom, Side); ++y)
            for (LONG x = std::max<LONG>(to.left, 0); x < std::min(to.right, Side); ++x) {
                const LONG sourceX = from.left + (x - to.left) * (from.right - from.left) / (to.right - to.left);
                const LONG sourceY = from.top + (y - to.top) * (from.bottom - from.top) / (to.bottom - to.top);
                if (!IsEmpty(from) && IsVisible(clip.get(), x, y) && Contains(source->Bounds(), sourceX, sourceY))
                    expected[static_cast<std::size_t>(y * Side + x)] = source->Pixel(sourceX, sourceY);
            }
        ASSERT_TRUE(EngStretchBlt(target, source, nullptr, clip.get(), nullptr, nullptr, nullptr, &to, &from, nullptr,
                                  COLORONCOLOR));
        ASSERT_EQ(PixelsOf(target), expected) << "case " << number;
        DestroyBitmap(target);
        DestroyBitmap(source);
    }
}

// How often, and which way, the edges cross the row left of a pixel's centre or at it.
int WindingAt(const raster::Polygon& polygon, std::int64_t x, std::int64_t y)
{
    int winding = 0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        raster::FixPoint from = polygon[i], to = polygon[(i + 1) % polygon.size()];
        const int direction = from.y < to.y ? 1 : -1;
        if (direction < 0)
            std::swap(from, to);
        const bool crosses = from.y <= y && y < to.y;
        if (crosses && (y - from.y) * (to.x - from.x) <= (x - from.x) * (to.y - from.y))
            winding += direction;
    }
    return winding;
}

TEST_F(RandomRaster, FilledPolygonsHoldTheCentresInside)
{
    for (ULONG number = 0; number < 1000; ++number) {
        Random random(number);
        raster::Polygon polygon;
        for (LONG corners = random.Between(3, 9); corners > 0; --corners)
            polygon.push_back({random.Between(-64, (Side + 4) * 16), random.Between(-64, (Side + 4) * 16)});
        const RECTL bounds = {0, 0, Side, Side};
        const Region alternate = raster::ScanConvert({polygon}, FP_ALTERNATEMODE, bounds);
        const Region winding = raster::ScanConvert({polygon}, FP_WINDINGMODE, bounds);
        for (LONG y = 0; y < Side; ++y)
            for (LONG x = 0; x < Side; ++x) {
                const int expected = WindingAt(polygon, x * 16, y * 16);
                ASSERT_EQ(alternate.Contains(x, y), expected % 2 != 0) << "case " << number << ": " << x << ' ' << y;
                ASSERT_EQ(winding.Contains(x, y), expected != 0) << "case " << number << ": " << x << ' ' << y;
            }
    }
}

} // namespace
