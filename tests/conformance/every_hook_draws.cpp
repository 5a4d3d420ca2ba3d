#include "tests/conformance/every_hook_draws.h"

namespace conformance {

namespace {

    constexpr MIX CopyPen = 0x0D0D;
    constexpr RECTL Area = {6, 4, 50, 34};
    POINTL origin = {0, 0};

    template<class Pfn> Pfn HookOf(const Drawing& drawing, ULONG index)
    {
        return drawing.driver.Function<Pfn>(index);
    }

    BOOL BitBlt(const Drawing& d)
    {
        RECTL to = Area;
        return HookOf<PFN_DrvBitBlt>(d, INDEX_DrvBitBlt)(d.target, d.source, nullptr, d.clip, nullptr, &to, &origin,
                                                         nullptr, nullptr, nullptr, 0xCCCC);
    }

    BOOL CopyBits(const Drawing& d)
    {
        RECTL to = Area;
        return HookOf<PFN_DrvCopyBits>(d, INDEX_DrvCopyBits)(d.target, d.source, d.clip, nullptr, &to, &origin);
    }

    BOOL StretchBlt(const Drawing& d)
    {
        RECTL to = Area, from = {1, 2, 23, 17};
        return HookOf<PFN_DrvStretchBlt>(d, INDEX_DrvStretchBlt)(d.target, d.source, nullptr, d.clip, nullptr, nullptr,
                                                                 nullptr, &to, &from, nullptr, COLORONCOLOR);
    }

    BOOL StretchBltROP(const Drawing& d)
    {
        constexpr ROP4 sourceInvert = 0x6666;
        RECTL to = Area, from = {1, 2, 23, 17};
        return HookOf<PFN_DrvStretchBltROP>(d, INDEX_DrvStretchBltROP)(d.target, d.source, nullptr, d.clip, nullptr,
                                                                       nullptr, nullptr, &to, &from, nullptr,
                                                                       COLORONCOLOR, nullptr, sourceInvert);
    }

    BOOL PlgBlt(const Drawing& d)
    {
        RECTL from = {8, 8, 24, 20};
        POINTFIX corners[3] = {{10 * 16, 8 * 16}, {46 * 16, 12 * 16}, {14 * 16, 32 * 16}};
        return HookOf<PFN_DrvPlgBlt>(d, INDEX_DrvPlgBlt)(d.target, d.source, nullptr, d.clip, nullptr, nullptr, nullptr,
                                                         corners, &from, nullptr, COLORONCOLOR);
    }

    BOOL AlphaBlend(const Drawing& d)
    {
        RECTL to = Area, from = {0, 0, 44, 30};
        BLENDOBJ blend = {{AC_SRC_OVER, 0, 160, 0}};
        return HookOf<PFN_DrvAlphaBlend>(d, INDEX_DrvAlphaBlend)(d.target, d.source, d.clip, nullptr, &to, &from,
                                                                 &blend);
    }

    BOOL TransparentBlt(const Drawing& d)
    {
        RECTL to = Area, from = {0, 0, 44, 30};
        return HookOf<PFN_DrvTransparentBlt>(d, INDEX_DrvTransparentBlt)(d.target, d.source, d.clip, nullptr, &to,
                                                                         &from, 0, 0);
    }

    BOOL GradientFill(const Drawing& d)
    {
        RECTL extents = Area;
        TRIVERTEX corners[2] = {{Area.left, Area.top, 0xFF00, 0xFF00, 0xFF00, 0},
                                {Area.right, Area.bottom, 0, 0, 0, 0}};
        GRADIENT_RECT mesh = {0, 1};
        return HookOf<PFN_DrvGradientFill>(d, INDEX_DrvGradientFill)(d.target, d.clip, nullptr, corners, 2, &mesh, 1,
                                                                     &extents, &origin, GRADIENT_FILL_RECT_H);
    }

    BOOL TextOut(const Drawing& d)
    {
        engine::Text text;
        text.AddGlyph(1, {14, 16}, {0, -4}, {8, 4}, {0xFF, 0x81, 0x81, 0xFF});
        text.AddGlyph(2, {28, 20}, {0, -4}, {8, 4}, {0xAA, 0x55, 0xAA, 0x55});
        text.rclBkGround = Area;
        RECTL opaque = Area;
        engine::Font font;
        engine::Brush fore = engine::Brush::Solid(d.pixel), back = engine::Brush::Solid(0);
        return HookOf<PFN_DrvTextOut>(d, INDEX_DrvTextOut)(d.target, &text, &font, d.clip, nullptr, &opaque, &fore,
                                                           &back, &origin, CopyPen);
    }

    BOOL Paint(const Drawing& d)
    {
        engine::Brush brush = engine::Brush::Solid(d.pixel);
        return HookOf<PFN_DrvPaint>(d, INDEX_DrvPaint)(d.target, d.clip, &brush, &origin, CopyPen);
    }

    BOOL LineTo(const Drawing& d)
    {
        engine::Brush brush = engine::Brush::Solid(d.pixel);
        RECTL bounds = Area;
        return HookOf<PFN_DrvLineTo>(d, INDEX_DrvLineTo)(d.target, d.clip, &brush, Area.left, Area.top, Area.right,
                                                         Area.bottom, &bounds, CopyPen);
    }

    // A figure of four corners, which crosses all clips.
    struct Figure {
        engine::Path path;
        engine::Brush brush;
        LINEATTRS line = {};
        Figure(const Drawing& drawing, LONG first)
            : brush(engine::Brush::Solid(drawing.pixel))
        {
            line.elWidth.l = 1;
            path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH | PD_CLOSEFIGURE,
                     {{first * 16, first * 16}, {44 * 16, 20 * 16}, {40 * 16, 40 * 16}, {10 * 16, 36 * 16}});
        }
    };

    template<LONG First> BOOL StrokePath(const Drawing& d)
    {
        Figure figure(d, First);
        return HookOf<PFN_DrvStrokePath>(d, INDEX_DrvStrokePath)(d.target, &figure.path, d.clip, nullptr, &figure.brush,
                                                                 &origin, &figure.line, CopyPen);
    }

    template<LONG First> BOOL FillPath(const Drawing& d)
    {
        Figure figure(d, First);
        return HookOf<PFN_DrvFillPath>(d, INDEX_DrvFillPath)(d.target, &figure.path, d.clip, &figure.brush, &origin,
                                                             CopyPen, FP_WINDINGMODE);
    }

    template<LONG First> BOOL StrokeAndFillPath(const Drawing& d)
    {
        Figure figure(d, First);
        return HookOf<PFN_DrvStrokeAndFillPath>(d, INDEX_DrvStrokeAndFillPath)(
            d.target, &figure.path, d.clip, nullptr, &figure.brush, &figure.line, &figure.brush, &origin, CopyPen,
            FP_WINDINGMODE);
    }

} // namespace

const std::vector<HookRow>& HookRows()
{
    static const std::vector<HookRow> rows = {
        {"BitBlt", 0x100, true, BitBlt},
        {"CopyBits", 0x100000, true, CopyBits},
        {"StretchBlt", 0x200, true, StretchBlt},
        {"StretchBltROP", 0x8000000, true, StretchBltROP},
        {"PlgBlt", 0x10000000, true, PlgBlt},
        {"AlphaBlend", 0x1000000, true, AlphaBlend},
        {"TransparentBlt", 0x4000000, true, TransparentBlt},
        {"GradientFill", 0x2000000, false, GradientFill},
        {"TextOut", 0x10000, false, TextOut},
        {"Paint", 0x4000, false, Paint},
        {"LineTo", 0x800, false, LineTo},
        {"StrokePath", 0x8000, false, StrokePath<2>},
        {"FillPath", 0x400, false, FillPath<2>},
        {"StrokeAndFillPath", 0x20000000, false, StrokeAndFillPath<2>},
        {"StrokePathFromTheOrigin", 0x8000, false, StrokePath<0>},
        {"FillPathFromTheOrigin", 0x400, false, FillPath<0>},
        {"StrokeAndFillPathFromTheOrigin", 0x20000000, false, StrokeAndFillPath<0>},
    };
    return rows;
}

const char* NameOf(Clip clip)
{
    constexpr const char* names[] = {"WithoutClip", "InATrivialClip", "InARectangle", "InTwoRectangles"};
    return names[static_cast<int>(clip)];
}

std::unique_ptr<engine::ClipObject> MakeClip(Clip clip)
{
    switch (clip) {
    case Clip::Trivial:
        return std::make_unique<engine::ClipObject>(RECTL{0, 0, 64, 48}, static_cast<BYTE>(DC_TRIVIAL));
    case Clip::Rectangle:
        return std::make_unique<engine::ClipObject>(ClipBounds);
    case Clip::Complex:
        return std::make_unique<engine::ClipObject>(std::vector<RECTL>{{12, 10, 20, 28}, {26, 14, 36, 24}});
    default:
        return nullptr;
    }
}

ULONG LargestPixel(const engine::PixelLayout& layout)
{
    switch (layout.iBitmapFormat) {
    case BMF_1BPP:
        return 1;
    case BMF_4BPP:
        return 15;
    case BMF_8BPP:
        return 255;
    default:
        return layout.redMask | layout.greenMask | layout.blueMask;
    }
}

void FillWithPattern(engine::Surface& bitmap, ULONG seed)
{
    const ULONG mask = LargestPixel(bitmap.layout);
    for (LONG y = 0; y < bitmap.sizlBitmap.cy; ++y)
        for (LONG x = 0; x < bitmap.sizlBitmap.cx; ++x)
            bitmap.SetPixel(x, y, (static_cast<ULONG>(x) * 0x2D0B15 + static_cast<ULONG>(y) * 0x1379F3 + seed) & mask);
}

engine::Surface* MakePattern(const engine::PixelLayout& layout, ULONG seed)
{
    engine::Surface* const bitmap = engine::MakeBitmap({64, 48}, layout);
    FillWithPattern(*bitmap, seed);
    return bitmap;
}

void CopyPixels(engine::Surface& to, const engine::Surface& from)
{
    for (LONG y = 0; y < to.sizlBitmap.cy; ++y)
        for (LONG x = 0; x < to.sizlBitmap.cx; ++x)
            to.SetPixel(x, y, from.Pixel(x, y));
}

engine::Surface* Behind(const SURFOBJ* managed)
{
    return engine::FindSurface(reinterpret_cast<HSURF>(managed->dhsurf));
}

} // namespace conformance
