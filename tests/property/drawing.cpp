#include "tests/property/drawing.h"

namespace property {

namespace {

    constexpr MIX CopyPen = 0x0D0D;
    constexpr ROP4 CopySource = 0xCCCC, CopyPattern = 0xF0F0;

    struct BitmapDeleter {
        void operator()(engine::Surface* bitmap) const { engine::DestroyBitmap(bitmap); }
    };
    using Bitmap = std::shared_ptr<engine::Surface>;

    // What the calls of a step share.
    struct Tools {
        const Step& step;
        const Scene& scene;
        Random random;
        RECTL rect; // the step's
        std::shared_ptr<engine::ClipObject> clip; // may be null
        std::shared_ptr<engine::Brush> brush;

        Tools(const Step& s, const Scene& owner)
            : step(s)
            , scene(owner)
            , random(s.seed)
            , rect(s.rect)
            , brush(std::make_shared<engine::Brush>(engine::Brush::Solid(Pixel())))
        {
            if (step.clip.size() == 1)
                clip = std::make_shared<engine::ClipObject>(step.clip[0]);
            else if (!step.clip.empty())
                clip = std::make_shared<engine::ClipObject>(step.clip);
        }
        ULONG Pixel()
        {
            const Picture one(1, 1, scene.format.bits);
            return AnyPixel(random, scene.format) & one.Ones();
        }
        Rect Screen() const { return {0, 0, scene.width, scene.height}; }
        Bitmap MakeBitmap(const SIZEL& size)
        {
            const Picture picture = RandomPicture(random, scene.format, size.cx, size.cy);
            return Bitmap(ToBitmap(picture, scene.format), BitmapDeleter());
        }
        // Of the step's rectangle, cut to the clip as the hooks do it.
        Rect Cut(const Rect& bounds) const { return clip ? Intersect(bounds, clip->rclBounds) : bounds; }
    };

    POINTL Origin()
    {
        return {0, 0};
    }

    Drawing FillArea(Tools& tools)
    {
        const ROP4 rop = tools.random.Of<ROP4>({CopyPattern, CopyPattern, CopyPattern, 0x5A5A, 0x0000, 0xFFFF, 0x5555});
        return {
            tools.Cut(tools.rect),
            tools.rect,
            {},
            [rop, rect = tools.rect, brush = tools.brush, clip = tools.clip](const DrawCalls& calls, SURFOBJ* screen) {
                RECTL target = rect;
                POINTL origin = Origin();
                calls.bitBlt(screen, nullptr, nullptr, clip.get(), nullptr, &target, nullptr, nullptr, brush.get(),
                             &origin, rop);
            }};
    }

    Drawing DrawPicture(Tools& tools, bool withCopyBits)
    {
        const POINTL from = {tools.random.Between(0, 3), tools.random.Between(0, 3)};
        const Bitmap bitmap = tools.MakeBitmap(
            {tools.rect.right - tools.rect.left + from.x, tools.rect.bottom - tools.rect.top + from.y});
        const ROP4 rop = tools.random.Of<ROP4>({CopySource, CopySource, CopySource, 0x6666, 0x8888, 0xEEEE, 0x3333});
        return {tools.Cut(tools.rect),
                tools.rect,
                {},
                [=, rect = tools.rect, clip = tools.clip](const DrawCalls& calls, SURFOBJ* screen) {
                    RECTL target = rect;
                    POINTL point = from;
                    if (withCopyBits)
                        calls.copyBits(screen, bitmap.get(), clip.get(), nullptr, &target, &point);
                    else
                        calls.bitBlt(screen, bitmap.get(), nullptr, clip.get(), nullptr, &target, &point, nullptr,
                                     nullptr, nullptr, rop);
                }};
    }

    // From one place of the screen to another.
    Drawing MoveArea(Tools& tools)
    {
        const Rect target = Intersect(tools.rect, tools.Screen());
        if (target.IsEmpty())
            return {};
        const RECTL to = target.ToRectl();
        const POINTL from = {std::min<LONG>(tools.step.second.left, tools.scene.width - (to.right - to.left)),
                             std::min<LONG>(tools.step.second.top, tools.scene.height - (to.bottom - to.top))};
        const bool withCopyBits = tools.random.Percent(40);
        return {tools.Cut(target), target, target.Moved(from.x - to.left, from.y - to.top),
                [=, clip = tools.clip](const DrawCalls& calls, SURFOBJ* screen) {
                    RECTL rect = to;
                    POINTL point = from;
                    if (withCopyBits)
                        calls.copyBits(screen, screen, clip.get(), nullptr, &rect, &point);
                    else
                        calls.bitBlt(screen, screen, nullptr, clip.get(), nullptr, &rect, &point, nullptr, nullptr,
                                     nullptr, CopySource);
                }};
    }

    Drawing DrawLine(Tools& tools)
    {
        const POINTL from = {tools.step.second.left, tools.step.second.top};
        const POINTL to = {tools.step.a % tools.scene.width, tools.step.b % tools.scene.height};
        const Rect bounds = {std::min(from.x, to.x), std::min(from.y, to.y), std::max(from.x, to.x) + 1,
                             std::max(from.y, to.y) + 1};
        return {tools.Cut(bounds),
                bounds,
                {},
                [=, brush = tools.brush, clip = tools.clip](const DrawCalls& calls, SURFOBJ* screen) {
                    RECTL box = bounds.ToRectl();
                    calls.lineTo(screen, clip.get(), brush.get(), from.x, from.y, to.x, to.y, &box, CopyPen);
                }};
    }

    RECTL Mirrored(const RECTL& rect, LONG how)
    {
        return {how & 1 ? rect.right : rect.left, how & 2 ? rect.bottom : rect.top, how & 1 ? rect.left : rect.right,
                how & 2 ? rect.top : rect.bottom};
    }

    struct StretchKind {
        bool fromScreen, withRop;
    };

    // Of a bitmap, or of a part of the screen. Without a raster operation that part is read with the pointer
    // in it unless the pointer stands where the picture is drawn.
    Drawing StretchPicture(Tools& tools, const StretchKind& kind)
    {
        const Bitmap bitmap = kind.fromScreen ? nullptr : tools.MakeBitmap(tools.random.Size(9));
        const RECTL from = kind.fromScreen ? tools.step.second : bitmap->Bounds();
        const RECTL to = Mirrored(tools.rect, tools.random.Between(0, 3));
        const ROP4 rop = tools.random.Of<ROP4>({CopySource, 0x6666, 0x8888, 0xEEEE});
        const std::optional<Rect> read = kind.withRop ? Rect(from) : Rect(tools.rect);
        return {tools.Cut(tools.rect), tools.rect, kind.fromScreen ? read : std::nullopt,
                [=, clip = tools.clip](const DrawCalls& calls, SURFOBJ* screen) {
                    RECTL target = to, source = from;
                    SURFOBJ* const psoSrc = bitmap ? bitmap.get() : screen;
                    if (kind.withRop)
                        calls.stretchBltRop(screen, psoSrc, nullptr, clip.get(), nullptr, nullptr, nullptr, &target,
                                            &source, nullptr, COLORONCOLOR, nullptr, rop);
                    else
                        calls.stretchBlt(screen, psoSrc, nullptr, clip.get(), nullptr, nullptr, nullptr, &target,
                                         &source, nullptr, COLORONCOLOR);
                }};
    }

    Drawing DrawGradient(Tools& tools)
    {
        const RECTL& rect = tools.rect;
        const auto component = [&] { return static_cast<COLOR16>(tools.random.Word()); };
        const TRIVERTEX first = {rect.left, rect.top, component(), component(), component(), 0};
        const TRIVERTEX last = {rect.right, rect.bottom, component(), component(), component(), 0};
        const ULONG mode = tools.random.Percent(50) ? GRADIENT_FILL_RECT_H : GRADIENT_FILL_RECT_V;
        return {tools.Cut(rect), rect, {}, [=, clip = tools.clip](const DrawCalls& calls, SURFOBJ* screen) {
                    TRIVERTEX corners[2] = {first, last};
                    GRADIENT_RECT mesh = {0, 1};
                    RECTL extents = rect;
                    POINTL origin = Origin();
                    calls.gradientFill(screen, clip.get(), nullptr, corners, 2, &mesh, 1, &extents, &origin, mode);
                }};
    }

    Drawing BlendPicture(Tools& tools)
    {
        const Bitmap bitmap = tools.MakeBitmap(tools.random.Size(9));
        const auto alpha = static_cast<BYTE>(tools.random.Word());
        return {tools.Cut(tools.rect),
                tools.rect,
                {},
                [=, rect = tools.rect, clip = tools.clip](const DrawCalls& calls, SURFOBJ* screen) {
                    RECTL target = rect, source = bitmap->Bounds();
                    BLENDOBJ blend = {{AC_SRC_OVER, 0, alpha, 0}};
                    calls.alphaBlend(screen, bitmap.get(), clip.get(), nullptr, &target, &source, &blend);
                }};
    }

    Drawing DrawTransparent(Tools& tools)
    {
        const Bitmap bitmap = tools.MakeBitmap(tools.random.Size(9));
        const ULONG transparent = bitmap->Pixel(0, 0);
        return {tools.Cut(tools.rect),
                tools.rect,
                {},
                [=, rect = tools.rect, clip = tools.clip](const DrawCalls& calls, SURFOBJ* screen) {
                    RECTL target = rect, source = bitmap->Bounds();
                    calls.transparentBlt(screen, bitmap.get(), clip.get(), nullptr, &target, &source, transparent, 0);
                }};
    }

    // Shown is the place that is read, wherever it was painted.
    Drawing DrawParallelogram(Tools& tools)
    {
        const Bitmap bitmap = tools.MakeBitmap(tools.random.Size(20));
        const RECTL& to = tools.rect;
        const FIX slant = tools.random.Between(0, 3) * 16;
        const POINTFIX corners[3] = {
            {to.left * 16 + slant, to.top * 16}, {to.right * 16 + slant, to.top * 16}, {to.left * 16, to.bottom * 16}};
        return {tools.Cut(bitmap->Bounds()),
                tools.rect,
                {},
                [=, a = corners[0], b = corners[1], c = corners[2], clip = tools.clip](const DrawCalls& calls,
                                                                                       SURFOBJ* screen) {
                    POINTFIX points[3] = {a, b, c};
                    RECTL source = bitmap->Bounds();
                    calls.plgBlt(screen, bitmap.get(), nullptr, clip.get(), nullptr, nullptr, nullptr, points, &source,
                                 nullptr, COLORONCOLOR);
                }};
    }

    Drawing PaintClip(Tools& tools)
    {
        if (!tools.clip)
            tools.clip = std::make_shared<engine::ClipObject>(tools.rect);
        const Rect bounds = tools.clip->rclBounds;
        return {bounds, bounds, {}, [brush = tools.brush, clip = tools.clip](const DrawCalls& calls, SURFOBJ* screen) {
                    POINTL origin = Origin();
                    calls.paint(screen, clip.get(), brush.get(), &origin, CopyPen);
                }};
    }

    Drawing DrawText(Tools& tools)
    {
        const auto text = std::make_shared<engine::Text>();
        const auto font = std::make_shared<engine::Font>();
        const RECTL& box = tools.rect;
        text->AddGlyph(1, {box.left, box.top}, {0, 0}, {std::min<LONG>(8, box.right - box.left), 1},
                       {static_cast<BYTE>(tools.random.Word())});
        text->rclBkGround = box;
        const bool opaque = tools.random.Percent(50);
        return {tools.clip ? Rect(tools.clip->rclBounds) : Rect(box),
                box,
                {},
                [=, brush = tools.brush, clip = tools.clip](const DrawCalls& calls, SURFOBJ* screen) {
                    RECTL background = box;
                    POINTL origin = Origin();
                    calls.textOut(screen, text.get(), font.get(), clip.get(), nullptr, opaque ? &background : nullptr,
                                  brush.get(), brush.get(), &origin, CopyPen);
                }};
    }

    // Without a clip the bounds of a path, in sixteenths of a pixel, are taken for pixels.
    Drawing DrawPath(Tools& tools, bool filled)
    {
        const auto path = std::make_shared<engine::Path>();
        const RECTL& box = tools.rect;
        path->Add(PD_BEGINSUBPATH | PD_ENDSUBPATH | PD_CLOSEFIGURE,
                  {{box.left * 16, box.top * 16},
                   {box.right * 16 - 16, box.top * 16},
                   {box.right * 16 - 16, box.bottom * 16 - 16},
                   {box.left * 16, box.bottom * 16 - 16}});
        RECTFX fixed;
        PATHOBJ_vGetBounds(path.get(), &fixed);
        const Rect bounds = {fixed.xLeft, fixed.yTop, fixed.xRight, fixed.yBottom};
        return {tools.clip ? Rect(tools.clip->rclBounds) : bounds,
                box,
                {},
                [=, brush = tools.brush, clip = tools.clip](const DrawCalls& calls, SURFOBJ* screen) {
                    POINTL origin = Origin();
                    LINEATTRS line = {};
                    line.elWidth.l = 1;
                    if (filled)
                        calls.fillPath(screen, path.get(), clip.get(), brush.get(), &origin, CopyPen, FP_WINDINGMODE);
                    else
                        calls.strokePath(screen, path.get(), clip.get(), nullptr, brush.get(), &origin, &line, CopyPen);
                }};
    }

} // namespace

conformance::Setup SetupFor(const Scene& scene)
{
    conformance::Setup setup;
    setup.mode = {static_cast<ULONG>(scene.width), static_cast<ULONG>(scene.height), scene.format.depth};
    setup.frameBuffer.lDelta = scene.lDelta;
    setup.installConsumer = false;
    return setup;
}

DrawCalls ServiceCalls()
{
    return {&EngBitBlt,       &EngCopyBits,   &EngStretchBlt,     &EngStretchBltROP, &EngPlgBlt,
            &EngGradientFill, &EngAlphaBlend, &EngTransparentBlt, &EngLineTo,        &EngPaint,
            &EngTextOut,      &EngFillPath,   &EngStrokePath};
}

DrawCalls HookCalls(conformance::Session& session)
{
    return {session.Hook<PFN_DrvBitBlt>(INDEX_DrvBitBlt),
            session.Hook<PFN_DrvCopyBits>(INDEX_DrvCopyBits),
            session.Hook<PFN_DrvStretchBlt>(INDEX_DrvStretchBlt),
            session.Hook<PFN_DrvStretchBltROP>(INDEX_DrvStretchBltROP),
            session.Hook<PFN_DrvPlgBlt>(INDEX_DrvPlgBlt),
            session.Hook<PFN_DrvGradientFill>(INDEX_DrvGradientFill),
            session.Hook<PFN_DrvAlphaBlend>(INDEX_DrvAlphaBlend),
            session.Hook<PFN_DrvTransparentBlt>(INDEX_DrvTransparentBlt),
            session.Hook<PFN_DrvLineTo>(INDEX_DrvLineTo),
            session.Hook<PFN_DrvPaint>(INDEX_DrvPaint),
            session.Hook<PFN_DrvTextOut>(INDEX_DrvTextOut),
            session.Hook<PFN_DrvFillPath>(INDEX_DrvFillPath),
            session.Hook<PFN_DrvStrokePath>(INDEX_DrvStrokePath)};
}

Drawing MakeDrawing(const Step& step, const Scene& scene)
{
    Tools tools(step, scene);
    if (Rect(tools.rect).IsEmpty()) // engines do not draw there
        return {};
    switch (step.act) {
    case Act::Fill:
        return FillArea(tools);
    case Act::Picture:
        return DrawPicture(tools, false);
    case Act::CopyBits:
        return DrawPicture(tools, true);
    case Act::MoveArea:
        return MoveArea(tools);
    case Act::Line:
        return DrawLine(tools);
    case Act::Stretch:
        return StretchPicture(tools, {.fromScreen = false, .withRop = false});
    case Act::StretchArea:
        return StretchPicture(tools, {.fromScreen = true, .withRop = false});
    case Act::StretchRop:
        return StretchPicture(tools, {.fromScreen = false, .withRop = true});
    case Act::StretchAreaRop:
        return StretchPicture(tools, {.fromScreen = true, .withRop = true});
    case Act::Gradient:
        return DrawGradient(tools);
    case Act::Blend:
        return scene.format.bits > 8 ? BlendPicture(tools) : Drawing();
    case Act::Transparent:
        return DrawTransparent(tools);
    case Act::Parallelogram:
        return DrawParallelogram(tools);
    case Act::Paint:
        return PaintClip(tools);
    case Act::Text:
        return DrawText(tools);
    case Act::FillPath:
        return DrawPath(tools, true);
    case Act::StrokePath:
        return DrawPath(tools, false);
    default:
        return {};
    }
}

} // namespace property
