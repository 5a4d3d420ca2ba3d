#include "tests/conformance/hook_calls.h"

#include <algorithm>
#include <functional>

namespace conformance {

namespace {

    constexpr FIX Fixed(LONG pixels)
    {
        return pixels * 16;
    }

    POINTL origin = {0, 0};

    SURFOBJ* Picture(Session& session)
    {
        return MakePicture(session, {64, 48});
    }

    BOOL BitBlt(Session& session, SURFOBJ* target)
    {
        return FillRectangle(session, target, Painted);
    }

    BOOL CopyBits(Session& session, SURFOBJ* target)
    {
        RECTL to = Painted;
        return session.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits)(target, Picture(session), nullptr, nullptr, &to,
                                                                &origin);
    }

    BOOL StretchBlt(Session& session, SURFOBJ* target)
    {
        RECTL to = Painted, from = {0, 0, 8, 6};
        return session.Hook<PFN_DrvStretchBlt>(INDEX_DrvStretchBlt)(
            target, Picture(session), nullptr, nullptr, nullptr, nullptr, nullptr, &to, &from, nullptr, COLORONCOLOR);
    }

    BOOL StretchBltROP(Session& session, SURFOBJ* target)
    {
        RECTL to = Painted, from = {0, 0, 8, 6};
        return session.Hook<PFN_DrvStretchBltROP>(INDEX_DrvStretchBltROP)(target, Picture(session), nullptr, nullptr,
                                                                          nullptr, nullptr, nullptr, &to, &from,
                                                                          nullptr, COLORONCOLOR, nullptr, 0xCCCC);
    }

    // The rectangle that is read and the one that is painted are the same, as only the former is shown.
    BOOL PlgBlt(Session& session, SURFOBJ* target)
    {
        RECTL from = Painted;
        POINTFIX corners[3] = {{Fixed(Painted.left), Fixed(Painted.top)},
                               {Fixed(Painted.right), Fixed(Painted.top)},
                               {Fixed(Painted.left), Fixed(Painted.bottom)}};
        return session.Hook<PFN_DrvPlgBlt>(INDEX_DrvPlgBlt)(target, Picture(session), nullptr, nullptr, nullptr,
                                                            nullptr, nullptr, corners, &from, nullptr, COLORONCOLOR);
    }

    BOOL AlphaBlend(Session& session, SURFOBJ* target)
    {
        RECTL to = Painted, from = {0, 0, 16, 12};
        BLENDOBJ blend = {{AC_SRC_OVER, 0, 255, 0}};
        return session.Hook<PFN_DrvAlphaBlend>(INDEX_DrvAlphaBlend)(target, Picture(session), nullptr, nullptr, &to,
                                                                    &from, &blend);
    }

    BOOL TransparentBlt(Session& session, SURFOBJ* target)
    {
        RECTL to = Painted, from = {0, 0, 16, 12};
        constexpr ULONG transparent = 0x123456;
        return session.Hook<PFN_DrvTransparentBlt>(INDEX_DrvTransparentBlt)(target, Picture(session), nullptr, nullptr,
                                                                            &to, &from, transparent, 0);
    }

    BOOL GradientFill(Session& session, SURFOBJ* target)
    {
        RECTL extents = Painted;
        TRIVERTEX corners[2] = {{Painted.left, Painted.top, 0xFF00, 0x8000, 0x4000, 0},
                                {Painted.right, Painted.bottom, 0xFF00, 0x8000, 0x4000, 0}};
        GRADIENT_RECT mesh = {0, 1};
        return session.Hook<PFN_DrvGradientFill>(INDEX_DrvGradientFill)(target, nullptr, nullptr, corners, 2, &mesh, 1,
                                                                        &extents, &origin, GRADIENT_FILL_RECT_H);
    }

    // The calls on paths have a clip: without one, another place is shown than is painted.
    struct PathCall {
        engine::Path path;
        engine::ClipObject clip{Painted};
        engine::Brush brush = engine::Brush::Solid(Orange);
        LINEATTRS line = {};
        PathCall()
        {
            line.elWidth.l = 1;
            path.Add(PD_BEGINSUBPATH | PD_ENDSUBPATH | PD_CLOSEFIGURE,
                     {{Fixed(9), Fixed(9)}, {Fixed(22), Fixed(9)}, {Fixed(22), Fixed(18)}, {Fixed(9), Fixed(18)}});
        }
    };

    BOOL StrokePath(Session& session, SURFOBJ* target)
    {
        PathCall call;
        return session.Hook<PFN_DrvStrokePath>(INDEX_DrvStrokePath)(target, &call.path, &call.clip, nullptr,
                                                                    &call.brush, &origin, &call.line, CopyPen);
    }

    BOOL FillPath(Session& session, SURFOBJ* target)
    {
        PathCall call;
        return session.Hook<PFN_DrvFillPath>(INDEX_DrvFillPath)(target, &call.path, &call.clip, &call.brush, &origin,
                                                                CopyPen, FP_WINDINGMODE);
    }

    BOOL StrokeAndFillPath(Session& session, SURFOBJ* target)
    {
        PathCall call;
        return session.Hook<PFN_DrvStrokeAndFillPath>(INDEX_DrvStrokeAndFillPath)(
            target, &call.path, &call.clip, nullptr, &call.brush, &call.line, &call.brush, &origin, CopyPen,
            FP_WINDINGMODE);
    }

    BOOL Paint(Session& session, SURFOBJ* target)
    {
        PathCall call;
        return session.Hook<PFN_DrvPaint>(INDEX_DrvPaint)(target, &call.clip, &call.brush, &origin, CopyPen);
    }

    BOOL LineTo(Session& session, SURFOBJ* target)
    {
        PathCall call;
        RECTL bounds = Painted;
        return session.Hook<PFN_DrvLineTo>(INDEX_DrvLineTo)(target, nullptr, &call.brush, 8, 8, 24, 8, &bounds,
                                                            CopyPen);
    }

    BOOL TextOut(Session& session, SURFOBJ* target)
    {
        PathCall call;
        engine::Text text;
        text.AddGlyph(1, {10, 16}, {0, -4}, {4, 4}, {0xF0, 0x90, 0x90, 0xF0});
        text.rclBkGround = Painted;
        engine::Font font;
        return session.Hook<PFN_DrvTextOut>(INDEX_DrvTextOut)(target, &text, &font, &call.clip, nullptr, nullptr,
                                                              &call.brush, &call.brush, &origin, CopyPen);
    }

} // namespace

const std::vector<DrawingHook>& DrawingHooks()
{
    static const std::vector<DrawingHook> hooks = {
        {"BitBlt", 0x100, 0x100, 112, BitBlt},
        {"CopyBits", 0x100000, 0x100000, 80, CopyBits},
        {"StretchBlt", 0x200, 0x200, 96, StretchBlt},
        {"StrokePath", 0x8000, 0x8000, 72, StrokePath},
        {"FillPath", 0x8000, 0x400, 72, FillPath}, // one bit for both, two types of record
        {"StrokeAndFillPath", 0x20000000, 0x20000000, 80, StrokeAndFillPath},
        {"Paint", 0x4000, 0x4000, 64, Paint},
        {"LineTo", 0x800, 0x800, 72, LineTo},
        {"TextOut", 0x10000, 0x10000, 104, TextOut},
        {"AlphaBlend", 0x1000000, 0x1000000, 96, AlphaBlend},
        {"GradientFill", 0x2000000, 0x2000000, 96, GradientFill},
        {"TransparentBlt", 0x4000000, 0x4000000, 96, TransparentBlt},
        {"StretchBltROP", 0x8000000, 0x8000000, 144, StretchBltROP},
        {"PlgBlt", 0x10000000, 0x10000000, 144, PlgBlt},
    };
    return hooks;
}

std::ostream& operator<<(std::ostream& out, const DrawingHook& hook)
{
    return out << hook.name;
}

std::string NameOf(const testing::TestParamInfo<DrawingHook>& info)
{
    return info.param.name;
}

engine::Surface* MakePicture(Session& session, SIZEL size, ULONG pixel)
{
    engine::Surface* const picture = engine::MakeBitmap(size, session.Device().Layout());
    FillBitmap(*picture, pixel);
    return picture;
}

void FillBitmap(engine::Surface& bitmap, ULONG pixel)
{
    for (LONG y = 0; y < bitmap.sizlBitmap.cy; ++y)
        for (LONG x = 0; x < bitmap.sizlBitmap.cx; ++x)
            bitmap.SetPixel(x, y, pixel);
}

BOOL FillRectangle(Session& session, SURFOBJ* target, RECTL rectangle, CLIPOBJ* clip, ULONG pixel)
{
    engine::Brush brush = engine::Brush::Solid(pixel);
    return session.Hook<PFN_DrvBitBlt>(INDEX_DrvBitBlt)(target, nullptr, nullptr, clip, nullptr, &rectangle, nullptr,
                                                        nullptr, &brush, &origin, 0xF0F0);
}

std::string PaintedPart(const engine::Surface& bitmap)
{
    RECTL part = {bitmap.sizlBitmap.cx, bitmap.sizlBitmap.cy, 0, 0};
    for (LONG y = 0; y < bitmap.sizlBitmap.cy; ++y)
        for (LONG x = 0; x < bitmap.sizlBitmap.cx; ++x)
            if (bitmap.Pixel(x, y) != 0)
                part = {std::min(part.left, x), std::min(part.top, y), std::max(part.right, x + 1),
                        std::max(part.bottom, y + 1)};
    if (part.right == 0)
        return "nothing";
    return std::to_string(part.left) + ' ' + std::to_string(part.top) + ' ' + std::to_string(part.right) + ' '
        + std::to_string(part.bottom);
}

std::string ShownBy(Session& session, const std::function<void()>& call)
{
    FillBitmap(*session.Real(), 0);
    FillBitmap(*session.Virtual(), 0x00445566);
    call();
    return PaintedPart(*session.Real());
}

ULONG ZoomUpdates(Session& session)
{
    return session.Zoom(0x11127238);
}

ULONG Count(const std::string& output, const std::string& text)
{
    ULONG count = 0;
    for (std::size_t at = output.find(text); at != std::string::npos; at = output.find(text, at + text.size()))
        ++count;
    return count;
}

} // namespace conformance
