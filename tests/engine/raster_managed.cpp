// Surfaces whose bits only their driver reaches. The driver here keeps them in a bitmap of its own and writes
// down which of its hooks are called.

#include <map>
#include <memory>
#include <optional>

#include "engine/core/device.h"
#include "tests/engine/raster_picture.h"

namespace {

using namespace raster_tests;

constexpr MIX CopyPen = 0x0D0D;

Lines calls;
std::map<const SURFOBJ*, Surface*> bitsOf; // by surface
bool drawsOnTheManagedSurface = false; // as no driver may

SURFOBJ* Behind(SURFOBJ* pso)
{
    const auto found = bitsOf.find(pso);
    return found == bitsOf.end() || drawsOnTheManagedSurface ? pso : found->second;
}

BOOL APIENTRY CopyBits(SURFOBJ* to, SURFOBJ* from, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prcl, POINTL* pptl)
{
    calls.push_back(bitsOf.contains(to) ? "CopyBits to" : "CopyBits from");
    return EngCopyBits(Behind(to), Behind(from), pco, pxlo, prcl, pptl);
}

BOOL APIENTRY BitBlt(SURFOBJ* to, SURFOBJ* from, SURFOBJ* mask, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prcl,
                     POINTL* pptlSrc, POINTL* pptlMask, BRUSHOBJ* pbo, POINTL* pptlBrush, ROP4 rop4)
{
    calls.push_back("BitBlt");
    return EngBitBlt(Behind(to), Behind(from), mask, pco, pxlo, prcl, pptlSrc, pptlMask, pbo, pptlBrush, rop4);
}

BOOL APIENTRY Paint(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptl, MIX mix)
{
    calls.push_back(pco->iDComplexity == DC_COMPLEX ? "Paint complex" : "Paint");
    return EngPaint(Behind(pso), pco, pbo, pptl, mix);
}

BOOL APIENTRY StretchBlt(SURFOBJ* to, SURFOBJ* from, SURFOBJ* mask, CLIPOBJ* pco, XLATEOBJ* pxlo, COLORADJUSTMENT* pca,
                         POINTL* org, RECTL* prclTo, RECTL* prclFrom, POINTL* pptl, ULONG mode)
{
    calls.push_back("StretchBlt");
    return EngStretchBlt(Behind(to), Behind(from), mask, pco, pxlo, pca, org, prclTo, prclFrom, pptl, mode);
}

BOOL APIENTRY StretchBltRop(SURFOBJ* to, SURFOBJ* from, SURFOBJ* mask, CLIPOBJ* pco, XLATEOBJ* pxlo,
                            COLORADJUSTMENT* pca, POINTL* org, RECTL* prclTo, RECTL* prclFrom, POINTL* pptl, ULONG mode,
                            BRUSHOBJ* pbo, ROP4 rop4)
{
    calls.push_back("StretchBltROP");
    return EngStretchBltROP(Behind(to), Behind(from), mask, pco, pxlo, pca, org, prclTo, prclFrom, pptl, mode, pbo,
                            rop4);
}

BOOL APIENTRY PlgBlt(SURFOBJ* to, SURFOBJ* from, SURFOBJ* mask, CLIPOBJ* pco, XLATEOBJ* pxlo, COLORADJUSTMENT* pca,
                     POINTL* org, POINTFIX* pptfx, RECTL* prcl, POINTL* pptl, ULONG mode)
{
    calls.push_back("PlgBlt");
    return EngPlgBlt(Behind(to), Behind(from), mask, pco, pxlo, pca, org, pptfx, prcl, pptl, mode);
}

BOOL APIENTRY StrokePath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo, BRUSHOBJ* pbo, POINTL* pptl,
                         LINEATTRS* plineattrs, MIX mix)
{
    calls.push_back("StrokePath");
    return EngStrokePath(Behind(pso), ppo, pco, pxo, pbo, pptl, plineattrs, mix);
}

BOOL APIENTRY FillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, BRUSHOBJ* pbo, POINTL* pptl, MIX mix, FLONG options)
{
    calls.push_back("FillPath");
    return EngFillPath(Behind(pso), ppo, pco, pbo, pptl, mix, options);
}

BOOL APIENTRY StrokeAndFillPath(SURFOBJ* pso, PATHOBJ* ppo, CLIPOBJ* pco, XFORMOBJ* pxo, BRUSHOBJ* stroke,
                                LINEATTRS* plineattrs, BRUSHOBJ* fill, POINTL* pptl, MIX mix, FLONG options)
{
    calls.push_back("StrokeAndFillPath");
    return EngStrokeAndFillPath(Behind(pso), ppo, pco, pxo, stroke, plineattrs, fill, pptl, mix, options);
}

BOOL APIENTRY TextOut(SURFOBJ* pso, STROBJ* pstro, FONTOBJ* pfo, CLIPOBJ* pco, RECTL* extra, RECTL* opaque,
                      BRUSHOBJ* fore, BRUSHOBJ* back, POINTL* pptl, MIX mix)
{
    calls.push_back("TextOut");
    return EngTextOut(Behind(pso), pstro, pfo, pco, extra, opaque, fore, back, pptl, mix);
}

BOOL APIENTRY LineTo(SURFOBJ* pso, CLIPOBJ* pco, BRUSHOBJ* pbo, LONG x1, LONG y1, LONG x2, LONG y2, RECTL* bounds,
                     MIX mix)
{
    calls.push_back("LineTo");
    return EngLineTo(Behind(pso), pco, pbo, x1, y1, x2, y2, bounds, mix);
}

BOOL APIENTRY AlphaBlend(SURFOBJ* to, SURFOBJ* from, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclTo, RECTL* prclFrom,
                         BLENDOBJ* blend)
{
    calls.push_back("AlphaBlend");
    return EngAlphaBlend(Behind(to), Behind(from), pco, pxlo, prclTo, prclFrom, blend);
}

BOOL APIENTRY GradientFill(SURFOBJ* pso, CLIPOBJ* pco, XLATEOBJ* pxlo, TRIVERTEX* vertices, ULONG count, void* mesh,
                           ULONG meshCount, RECTL* extents, POINTL* org, ULONG mode)
{
    calls.push_back("GradientFill");
    return EngGradientFill(Behind(pso), pco, pxlo, vertices, count, mesh, meshCount, extents, org, mode);
}

BOOL APIENTRY TransparentBlt(SURFOBJ* to, SURFOBJ* from, CLIPOBJ* pco, XLATEOBJ* pxlo, RECTL* prclTo, RECTL* prclFrom,
                             ULONG colour, ULONG reserved)
{
    calls.push_back("TransparentBlt");
    return EngTransparentBlt(Behind(to), Behind(from), pco, pxlo, prclTo, prclFrom, colour, reserved);
}

template<class Function> constexpr DRVFN Entry(ULONG index, Function function)
{
    return {index, reinterpret_cast<PFN>(function)};
}

DRVFN functions[] = {
    Entry(INDEX_DrvCopyBits, CopyBits),
    Entry(INDEX_DrvBitBlt, BitBlt),
    Entry(INDEX_DrvPaint, Paint),
    Entry(INDEX_DrvStretchBlt, StretchBlt),
    Entry(INDEX_DrvStretchBltROP, StretchBltRop),
    Entry(INDEX_DrvPlgBlt, PlgBlt),
    Entry(INDEX_DrvStrokePath, StrokePath),
    Entry(INDEX_DrvFillPath, FillPath),
    Entry(INDEX_DrvStrokeAndFillPath, StrokeAndFillPath),
    Entry(INDEX_DrvTextOut, TextOut),
    Entry(INDEX_DrvLineTo, LineTo),
    Entry(INDEX_DrvAlphaBlend, AlphaBlend),
    Entry(INDEX_DrvGradientFill, GradientFill),
    Entry(INDEX_DrvTransparentBlt, TransparentBlt),
};

BOOL APIENTRY EnableDriver(ULONG, ULONG, DRVENABLEDATA* pded)
{
    *pded = {DDI_DRIVER_VERSION_NT5_01, std::size(functions), functions};
    return TRUE;
}

constexpr FLONG AllHooks = HOOK_COPYBITS | HOOK_BITBLT | HOOK_PAINT | HOOK_STRETCHBLT | HOOK_STRETCHBLTROP | HOOK_PLGBLT
    | HOOK_STROKEPATH | HOOK_FILLPATH | HOOK_STROKEANDFILLPATH | HOOK_TEXTOUT | HOOK_LINETO | HOOK_ALPHABLEND
    | HOOK_GRADIENTFILL | HOOK_TRANSPARENTBLT;

class Managed : public RasterTest {
protected:
    Managed()
    {
        calls.clear();
        bitsOf.clear();
        drawsOnTheManagedSurface = false;
        engine.RegisterImage(u"hooks", {{"DrvEnableDriver", reinterpret_cast<PFN>(EnableDriver)}});
        driver = std::make_unique<DisplayDriver>(u"hooks");
        device = std::make_unique<Device>(*driver);
    }
    ~Managed() override { bitsOf.clear(); }

    // A surface without bits that shows this picture.
    Surface* Make(FLONG hooks, const Art& art)
    {
        Surface* const bits = Picture(art);
        const HSURF hsurf = EngCreateDeviceSurface(nullptr, bits->sizlBitmap, BMF_32BPP);
        EXPECT_TRUE(EngAssociateSurface(hsurf, device->Handle(), hooks));
        Surface* const surface = FindSurface(hsurf);
        bitsOf[surface] = bits;
        return surface;
    }

    std::unique_ptr<DisplayDriver> driver;
    std::unique_ptr<Device> device;
};

// One drawing service on a 6 x 4 surface of '5', with the picture that it makes there.
struct ServiceCase {
    const char* name; // of the hook that it is offered to first
    FLONG hook;
    void (*draw)(SURFOBJ* target);
    Lines withoutHook; // the calls when only CopyBits and Paint are hooked
    Art result;
};

const Art background(4, "555555");
RECTL middle = {1, 1, 5, 3};
POINTL origin = {0, 0};

Path Diamond()
{
    Path path;
    path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH | PD_CLOSEFIGURE, {{32, 0}, {64, 32}, {32, 64}, {0, 32}});
    return path;
}

const ServiceCase services[] = {
    {"CopyBits",
     HOOK_COPYBITS,
     [](SURFOBJ* target) {
         EXPECT_TRUE(EngCopyBits(target, Picture({"#234", "6789"}), nullptr, nullptr, &middle, &origin));
     },
     {"CopyBits to"},
     {"555555", "5#2345", "567895", "555555"}},
    {"BitBlt",
     HOOK_BITBLT,
     [](SURFOBJ* target) {
         Brush brush = Brush::Solid(6);
         EXPECT_TRUE(
             EngBitBlt(target, nullptr, nullptr, nullptr, nullptr, &middle, nullptr, nullptr, &brush, nullptr, 0x5A5A));
     },
     {"CopyBits from", "CopyBits to"},
     {"555555", "533335", "533335", "555555"}},
    {"Paint",
     HOOK_PAINT,
     [](SURFOBJ* target) {
         Brush brush = Brush::Solid(6);
         ClipObject clip(middle);
         EXPECT_TRUE(EngPaint(target, &clip, &brush, nullptr, CopyPen));
     },
     {"Paint"},
     {"555555", "566665", "566665", "555555"}},
    {"StretchBlt",
     HOOK_STRETCHBLT,
     [](SURFOBJ* target) {
         RECTL from = {0, 0, 2, 1};
         EXPECT_TRUE(EngStretchBlt(target, Picture({"67"}), nullptr, nullptr, nullptr, nullptr, nullptr, &middle, &from,
                                   nullptr, COLORONCOLOR));
     },
     {"CopyBits from", "CopyBits to"},
     {"555555", "566775", "566775", "555555"}},
    {"StretchBltROP",
     HOOK_STRETCHBLTROP,
     [](SURFOBJ* target) {
         RECTL from = {0, 0, 2, 1};
         EXPECT_TRUE(EngStretchBltROP(target, Picture({"67"}), nullptr, nullptr, nullptr, nullptr, nullptr, &middle,
                                      &from, nullptr, COLORONCOLOR, nullptr, 0x6666));
     },
     {"CopyBits from", "CopyBits to"},
     {"555555", "533225", "533225", "555555"}},
    {"PlgBlt",
     HOOK_PLGBLT,
     [](SURFOBJ* target) {
         POINTFIX corners[] = {{5 * 16, 16}, {16, 16}, {5 * 16, 3 * 16}};
         RECTL from = {0, 0, 4, 2};
         EXPECT_TRUE(EngPlgBlt(target, Picture({"#234", "6789"}), nullptr, nullptr, nullptr, nullptr, nullptr, corners,
                               &from, nullptr, COLORONCOLOR));
     },
     {"CopyBits from", "CopyBits to"},
     {"555555", "5432#5", "598765", "555555"}},
    {"TransparentBlt",
     HOOK_TRANSPARENTBLT,
     [](SURFOBJ* target) {
         RECTL from = {0, 0, 4, 2};
         EXPECT_TRUE(EngTransparentBlt(target, Picture({"#2#4", "6#8#"}), nullptr, nullptr, &middle, &from, 1, 0));
     },
     {"CopyBits from", "CopyBits to"},
     {"555555", "552545", "565855", "555555"}},
    {"AlphaBlend",
     HOOK_ALPHABLEND,
     [](SURFOBJ* target) {
         RECTL from = {0, 0, 4, 2};
         BLENDOBJ blend = {{AC_SRC_OVER, 0, 51, 0}}; // a fifth
         EXPECT_TRUE(EngAlphaBlend(target, Picture({"..zz", "..zz"}), nullptr, nullptr, &middle, &from, &blend));
     },
     {"CopyBits from", "CopyBits to"},
     {"555555", "544bb5", "544bb5", "555555"}},
    {"GradientFill",
     HOOK_GRADIENTFILL,
     [](SURFOBJ* target) {
         TRIVERTEX vertices[] = {{1, 1, 0, 0, 0x600, 0}, {5, 3, 0, 0, 0xA00, 0}};
         ULONG mesh[] = {0, 1};
         EXPECT_TRUE(
             EngGradientFill(target, nullptr, nullptr, vertices, 2, mesh, 1, &middle, nullptr, GRADIENT_FILL_RECT_H));
     },
     {"CopyBits from", "CopyBits to"},
     {"555555", "567895", "567895", "555555"}},
    {"LineTo",
     HOOK_LINETO,
     [](SURFOBJ* target) {
         Brush brush = Brush::Solid(6);
         EXPECT_TRUE(EngLineTo(target, nullptr, &brush, 0, 0, 5, 2, &middle, CopyPen));
     },
     {"Paint complex"},
     {"665555", "556655", "555565", "555555"}},
    {"StrokePath",
     HOOK_STROKEPATH,
     [](SURFOBJ* target) {
         Brush brush = Brush::Solid(6);
         Path path = Diamond();
         LINEATTRS attributes = {};
         EXPECT_TRUE(EngStrokePath(target, &path, nullptr, nullptr, &brush, nullptr, &attributes, CopyPen));
     },
     {"Paint complex", "Paint complex", "Paint", "Paint complex"}, // one visible pixel of the third side
     {"556555", "565655", "655565", "565655"}},
    {"FillPath",
     HOOK_FILLPATH,
     [](SURFOBJ* target) {
         Brush brush = Brush::Solid(6);
         Path path = Diamond();
         EXPECT_TRUE(EngFillPath(target, &path, nullptr, &brush, nullptr, CopyPen, FP_ALTERNATEMODE));
     },
     {"Paint complex"},
     {"555555", "566555", "666655", "566555"}},
    {"StrokeAndFillPath",
     HOOK_STROKEANDFILLPATH,
     [](SURFOBJ* target) {
         Brush stroke = Brush::Solid(6), fill = Brush::Solid(7);
         Path path = Diamond();
         LINEATTRS attributes = {};
         EXPECT_TRUE(EngStrokeAndFillPath(target, &path, nullptr, nullptr, &stroke, &attributes, &fill, nullptr,
                                          CopyPen, FP_ALTERNATEMODE));
     },
     {"Paint complex", "Paint complex", "Paint complex", "Paint", "Paint complex"},
     {"556555", "567655", "677765", "567655"}},
    {"TextOut",
     HOOK_TEXTOUT,
     [](SURFOBJ* target) {
         Brush fore = Brush::Solid(6), back = Brush::Solid(7);
         Text text;
         text.AddGlyph(1, {2, 0}, {0, 0}, {3, 3}, {0xE0, 0xA0, 0xE0});
         EXPECT_TRUE(EngTextOut(target, &text, nullptr, nullptr, nullptr, &middle, &fore, &back, nullptr, CopyPen));
     },
     {"Paint", "Paint complex"},
     {"556665", "576765", "576665", "555555"}},
};

TEST_F(Managed, TheBitmapItselfGetsTheExpectedPicture)
{
    for (const ServiceCase& service : services) {
        Surface* const plain = Picture(background);
        service.draw(plain);
        EXPECT_EQ(Shown(plain), Joined(service.result)) << service.name;
    }
    EXPECT_EQ(calls, Lines());
}

TEST_F(Managed, AServiceCallsTheMatchingHook)
{
    for (const ServiceCase& service : services) {
        Surface* const surface = Make(AllHooks, background);
        calls.clear();
        service.draw(surface);
        const std::string call = service.hook == HOOK_COPYBITS ? "CopyBits to" : service.name;
        EXPECT_EQ(calls, Lines{call});
        EXPECT_EQ(Shown(bitsOf[surface]), Joined(service.result)) << service.name;
    }
}

TEST_F(Managed, WithoutItsHookAServiceIsTakenApart)
{
    for (const ServiceCase& service : services) {
        Surface* const surface = Make(HOOK_COPYBITS | HOOK_PAINT, background);
        calls.clear();
        service.draw(surface);
        EXPECT_EQ(calls, service.withoutHook) << service.name;
        EXPECT_EQ(Shown(bitsOf[surface]), Joined(service.result)) << service.name;
    }
}

TEST_F(Managed, PaintWithoutItsHookIsABitBlt)
{
    Brush brush = Brush::Solid(6);
    ClipObject clip(middle);
    Surface* const hooked = Make(HOOK_BITBLT, background);
    EXPECT_TRUE(EngPaint(hooked, &clip, &brush, nullptr, CopyPen));
    EXPECT_EQ(calls, Lines{"BitBlt"});
    calls.clear();
    Surface* const copied = Make(HOOK_COPYBITS, background);
    EXPECT_TRUE(EngPaint(copied, &clip, &brush, nullptr, CopyPen));
    EXPECT_EQ(calls, (Lines{"CopyBits from", "CopyBits to"}));
    EXPECT_PICTURE(bitsOf[copied], "555555", "566665", "566665", "555555");
}

TEST_F(Managed, ACopyWithoutItsHookIsABitBlt)
{
    Surface* const surface = Make(HOOK_BITBLT, background);
    EXPECT_TRUE(EngCopyBits(surface, Picture({"#234", "6789"}), nullptr, nullptr, &middle, &origin));
    Surface* const bitmap = Blank(4, 2);
    RECTL all = {0, 0, 4, 2};
    POINTL from = {1, 1};
    EXPECT_TRUE(EngCopyBits(bitmap, surface, nullptr, nullptr, &all, &from));
    EXPECT_EQ(calls, (Lines{"BitBlt", "BitBlt"}));
    EXPECT_PICTURE(bitmap, "#234", "6789");
}

TEST_F(Managed, AReadBackIsCutToTheClip)
{
    Surface* const surface = Make(HOOK_COPYBITS, background);
    ClipObject clip(std::vector<RECTL>{{1, 1, 2, 3}, {4, 1, 6, 2}});
    Brush brush = Brush::Solid(6);
    RECTL all = {0, 0, 6, 4};
    EXPECT_TRUE(EngBitBlt(surface, nullptr, nullptr, &clip, nullptr, &all, nullptr, nullptr, &brush, nullptr, 0x5A5A));
    EXPECT_PICTURE(bitsOf[surface], "555555", "535533", "535555", "555555");
}

TEST_F(Managed, ASourceWithoutBitsIsCopiedFirst)
{
    Surface* const surface = Make(AllHooks, {"#234", "6789"});
    Surface* const target = Blank(4, 2);
    RECTL all = {0, 0, 4, 2};
    POINTL from = {1, 0};
    RECTL right = {0, 0, 3, 2};
    EXPECT_TRUE(
        EngBitBlt(target, surface, nullptr, nullptr, nullptr, &right, &from, nullptr, nullptr, nullptr, 0xCCCC));
    EXPECT_PICTURE(target, "234.", "789.");
    RECTL mirrored = {4, 0, 0, 2};
    EXPECT_TRUE(EngStretchBlt(target, surface, nullptr, nullptr, nullptr, nullptr, nullptr, &mirrored, &all, nullptr,
                              COLORONCOLOR));
    EXPECT_PICTURE(target, "432#", "9876");
    POINTFIX corners[] = {{0, 32}, {64, 32}, {0, 0}};
    EXPECT_TRUE(EngPlgBlt(target, surface, nullptr, nullptr, nullptr, nullptr, nullptr, corners, &all, nullptr, 3));
    EXPECT_PICTURE(target, "6789", "#234");
    EXPECT_EQ(calls, (Lines{"CopyBits from", "CopyBits from", "CopyBits from"}));
}

TEST_F(Managed, ACopyFromASurfaceWithoutBitsIsItsDriversToMake)
{
    Surface* const surface = Make(AllHooks, {"#234"});
    Surface* const target = Blank(4, 1);
    RECTL all = {0, 0, 4, 1};
    EXPECT_TRUE(EngCopyBits(target, surface, nullptr, nullptr, &all, &origin));
    EXPECT_EQ(calls, Lines{"CopyBits from"});
    EXPECT_PICTURE(target, "#234");
}

TEST_F(Managed, ASourceOutsideOfASurfaceWithoutBitsIsRefused)
{
    Surface* const surface = Make(AllHooks, {"#234"});
    Surface* const target = Blank(4, 1);
    RECTL all = {0, 0, 4, 1};
    POINTL from = {1, 0};
    EXPECT_FALSE(EngBitBlt(target, surface, nullptr, nullptr, nullptr, &all, &from, nullptr, nullptr, nullptr, 0x8888));
    EXPECT_EQ(calls, Lines());
    ExpectViolation("EngBitBlt: source outside of the surface");
}

TEST_F(Managed, NeitherBitsNorHooksIsAViolationAndTheEnd)
{
    Brush brush = Brush::Solid(6);
    RECTL all = {0, 0, 4, 1};
    ClipObject clip(all);
    Surface* const surface = Make(0, {"5555"});
    Surface* const bitmap = Blank(4, 1);
    EXPECT_FALSE(EngCopyBits(surface, bitmap, nullptr, nullptr, &all, &origin));
    EXPECT_FALSE(EngCopyBits(bitmap, surface, nullptr, nullptr, &all, &origin));
    EXPECT_FALSE(EngPaint(surface, &clip, &brush, nullptr, CopyPen));
    EXPECT_FALSE(EngLineTo(surface, nullptr, &brush, 0, 0, 3, 0, &all, CopyPen));
    EXPECT_FALSE(EngStretchBlt(surface, bitmap, nullptr, nullptr, nullptr, nullptr, nullptr, &all, &all, nullptr, 3));
    EXPECT_FALSE(EngStretchBlt(bitmap, surface, nullptr, nullptr, nullptr, nullptr, nullptr, &all, &all, nullptr, 3));
    EXPECT_PICTURE(bitmap, "....");
    for (int i = 0; i < 6; ++i)
        ExpectViolation("EngCopyBits: neither bits nor a hook");
}

TEST_F(Managed, ADriverThatDrawsOnItsOwnSurfaceEndsSomewhere)
{
    Surface* const surface = Make(AllHooks, {"5555"});
    drawsOnTheManagedSurface = true;
    Brush brush = Brush::Solid(6);
    RECTL all = {0, 0, 4, 1};
    ClipObject clip(all);
    EXPECT_FALSE(EngPaint(surface, &clip, &brush, nullptr, CopyPen));
    EXPECT_EQ(calls, Lines(32, "Paint"));
    ExpectViolation("EngPaint: called for the same surface without end");
    // The depth is given back.
    drawsOnTheManagedSurface = false;
    EXPECT_TRUE(EngPaint(surface, &clip, &brush, nullptr, CopyPen));
}

TEST_F(Managed, DeviceBitmapsAreLikeDeviceSurfaces)
{
    const HSURF hsurf = reinterpret_cast<HSURF>(EngCreateDeviceBitmap(nullptr, {2, 1}, BMF_32BPP));
    ASSERT_TRUE(EngAssociateSurface(hsurf, device->Handle(), HOOK_COPYBITS));
    Surface* const surface = FindSurface(hsurf);
    bitsOf[surface] = Blank(2, 1);
    Brush brush = Brush::Solid(6);
    EXPECT_TRUE(EngLineTo(surface, nullptr, &brush, 0, 0, 2, 0, &middle, CopyPen));
    EXPECT_PICTURE(bitsOf[surface], "66");
}

} // namespace
