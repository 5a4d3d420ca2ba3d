// Every drawing service with coordinates from the ends of the range: what is drawn stays within the bitmaps,
// as their guards (or the sanitizers) tell.

#include <algorithm>
#include <random>

#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;

constexpr LONG Side = 9;
constexpr MIX XorPen = 0x0707;

class Extremes {
public:
    explicit Extremes(ULONG number)
        : random_(number)
    {
    }
    LONG Coordinate()
    {
        constexpr LONG notable[] = {INT32_MIN, INT32_MIN + 1, -Side,         -1,       0, 1, 4,
                                    Side,      Side + 1,      INT32_MAX - 1, INT32_MAX};
        return random_() % 3 ? notable[random_() % std::size(notable)] : static_cast<LONG>(random_());
    }
    POINTL Point() { return {Coordinate(), Coordinate()}; }
    RECTL Rectangle() { return {Coordinate(), Coordinate(), Coordinate(), Coordinate()}; }
    std::vector<POINTFIX> Points(std::size_t count)
    {
        std::vector<POINTFIX> points(count);
        for (POINTFIX& point : points)
            point = {Coordinate(), Coordinate()};
        return points;
    }
    TRIVERTEX Vertex() { return {Coordinate(), Coordinate(), Colour(), Colour(), Colour(), 0}; }
    ULONG Any() { return static_cast<ULONG>(random_()); }

private:
    COLOR16 Colour() { return static_cast<COLOR16>(random_()); }

    std::mt19937 random_;
};

struct Scene {
    Extremes extremes;
    Surface *target, *source, *mask;
    RECTL to, from;
    POINTL point, second;
    ClipObject clip;
    Brush brush;

    explicit Scene(ULONG number)
        : extremes(number)
        , target(Blank(Side, Side, AllFormats[number % std::size(AllFormats)]))
        , source(Blank(Side, Side, target->iBitmapFormat))
        , mask(Blank(Side, Side, BMF_1BPP))
        , to(extremes.Rectangle())
        , from(extremes.Rectangle())
        , point(extremes.Point())
        , second(extremes.Point())
        , clip(extremes.Rectangle())
        , brush(Brush::Hatch(HS_CROSS, 1, 2))
    {
    }
    ~Scene()
    {
        for (Surface* const surface : {target, source, mask})
            DestroyBitmap(surface);
    }
    CLIPOBJ* Clip() { return extremes.Any() % 2 ? &clip : nullptr; }
};

struct ServiceCase {
    const char* name;
    void (*draw)(Scene& scene);
};

void Stroke(Scene& scene, LINEATTRS attributes)
{
    FLOAT_LONG lengths[3];
    for (FLOAT_LONG& length : lengths)
        length.l = scene.extremes.Any() % 2 ? scene.extremes.Coordinate() : 3;
    attributes.pstyle = lengths;
    attributes.elStyleState.l = scene.extremes.Coordinate();
    Path path;
    path.Add(PD_BEGINSUBPATH | (scene.extremes.Any() % 2 ? PD_CLOSEFIGURE : PD_ENDSUBPATH), scene.extremes.Points(5));
    path.Add(PD_BEGINSUBPATH | PD_BEZIERS, scene.extremes.Points(4));
    EngStrokePath(scene.target, &path, scene.Clip(), nullptr, &scene.brush, &scene.point, &attributes, XorPen);
}

const ServiceCase services[] = {
    {"BitBlt",
     [](Scene& scene) {
         EngBitBlt(scene.target, scene.source, scene.mask, scene.Clip(), nullptr, &scene.to, &scene.point,
                   &scene.second, &scene.brush, &scene.second, scene.extremes.Any() & 0xFFFF);
     }},
    {"CopyBits",
     [](Scene& scene) { EngCopyBits(scene.target, scene.target, scene.Clip(), nullptr, &scene.to, &scene.point); }},
    {"Paint",
     [](Scene& scene) {
         EngPaint(scene.target, &scene.clip, &scene.brush, &scene.point, scene.extremes.Any() & 0xFFFF);
     }},
    {"StretchBltROP",
     [](Scene& scene) {
         EngStretchBltROP(scene.target, scene.source, scene.mask, scene.Clip(), nullptr, nullptr, &scene.second,
                          &scene.to, &scene.from, &scene.point, COLORONCOLOR, &scene.brush,
                          scene.extremes.Any() & 0xFFFF);
     }},
    {"TransparentBlt",
     [](Scene& scene) {
         EngTransparentBlt(scene.target, scene.target, scene.Clip(), nullptr, &scene.to, &scene.from, 0, 0);
     }},
    {"AlphaBlend",
     [](Scene& scene) {
         BLENDOBJ blend = {{AC_SRC_OVER, 0, 99, 0}};
         EngAlphaBlend(scene.target, scene.source, scene.Clip(), nullptr, &scene.to, &scene.from, &blend);
     }},
    {"PlgBlt",
     [](Scene& scene) {
         auto corners = scene.extremes.Points(3);
         EngPlgBlt(scene.target, scene.source, scene.mask, scene.Clip(), nullptr, nullptr, nullptr, corners.data(),
                   &scene.from, &scene.point, COLORONCOLOR);
     }},
    {"GradientFill",
     [](Scene& scene) {
         TRIVERTEX vertices[] = {scene.extremes.Vertex(), scene.extremes.Vertex(), scene.extremes.Vertex()};
         ULONG mesh[] = {0, 1, 2};
         EngGradientFill(scene.target, scene.Clip(), nullptr, vertices, 3, mesh, 1, &scene.to, nullptr,
                         scene.extremes.Any() % 3);
     }},
    {"LineTo",
     [](Scene& scene) {
         EngLineTo(scene.target, scene.Clip(), &scene.brush, scene.to.left, scene.to.top, scene.to.right,
                   scene.to.bottom, &scene.from, XorPen);
     }},
    {"StrokePath, cosmetic",
     [](Scene& scene) {
         LINEATTRS attributes = {};
         attributes.cstyle = scene.extremes.Any() % 4;
         attributes.fl = scene.extremes.Any() % 2 ? LA_STARTGAP : 0;
         Stroke(scene, attributes);
     }},
    {"StrokePath, geometric",
     [](Scene& scene) {
         LINEATTRS attributes = {};
         attributes.fl = LA_GEOMETRIC;
         attributes.iJoin = scene.extremes.Any() % 3;
         attributes.iEndCap = scene.extremes.Any() % 3;
         attributes.elWidth.l = scene.extremes.Coordinate(); // any bits as a number
         attributes.eMiterLimit = 10;
         attributes.cstyle = scene.extremes.Any() % 4;
         Stroke(scene, attributes);
     }},
    {"FillPath",
     [](Scene& scene) {
         Path path;
         path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH, scene.extremes.Points(6));
         path.Add(PD_BEGINSUBPATH | PD_BEZIERS, scene.extremes.Points(7));
         EngFillPath(scene.target, &path, scene.Clip(), &scene.brush, &scene.point, XorPen, FP_WINDINGMODE);
     }},
    {"TextOut",
     [](Scene& scene) {
         Text text;
         text.AddGlyph(1, scene.point, scene.second, {9, 2}, {0xFF, 0x80, 0xFF, 0x80});
         text.AddGlyph(2, scene.second, {0, 0}, {8, 1}, {0xFF});
         RECTL extra[] = {scene.from, {0, 0, 0, 0}};
         EngTextOut(scene.target, &text, nullptr, scene.Clip(), extra, &scene.to, &scene.brush, &scene.brush,
                    &scene.point, XorPen);
     }},
};

bool IsExpected(const std::string& violation)
{
    return violation.ends_with("outside of the surface");
}

TEST(RasterExtremes, NothingIsDrawnOutsideOfTheBitmaps)
{
    for (const ServiceCase& service : services) {
        Engine engine;
        for (ULONG number = 0; number < 300; ++number) {
            Scene scene(number);
            service.draw(scene);
        }
        engine.CheckGuards();
        for (const std::string& violation : engine.Violations())
            ASSERT_TRUE(IsExpected(violation)) << service.name << ": " << violation;
    }
}

} // namespace
