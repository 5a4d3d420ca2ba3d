#include "engine/gdi/blits.h"

#include <algorithm>
#include <utility>

#include "engine/core/calls.h"
#include "engine/gdi/bytes.h"
#include "engine/gdi/shapes.h"

namespace engine::gdi {

namespace {

    constexpr BYTE LeaveRop = 0xAA; // the ternary operation that changes nothing
    constexpr ROP4 BackgroundByte = 0xFF00;

    bool IsUpright(const Destination& d)
    {
        return d.right.y == d.origin.y && d.below.x == d.origin.x;
    }

    RECTL PixelsOf(const Destination& d)
    {
        const POINTL origin = ToPixel(d.origin);
        return {origin.x, origin.y, ToLong(d.right.x), ToLong(d.below.y)};
    }

    Outline OutlineOf(const Destination& d)
    {
        Outline outline;
        outline.MoveTo(ToFix(d.origin));
        outline.LineTo(ToFix(d.right));
        outline.LineTo(ToFix(PointD{d.right.x + d.below.x - d.origin.x, d.right.y + d.below.y - d.origin.y}));
        outline.LineTo(ToFix(d.below));
        outline.Close();
        return outline;
    }

    // One axis of a copy: source positions in order and inside the bitmap, target ones in any order.
    struct Axis {
        LONG source, sourceEnd, target, targetEnd;

        bool CutTo(LONG size)
        {
            if (source > sourceEnd) {
                std::swap(source, sourceEnd);
                std::swap(target, targetEnd);
            }
            const LONG first = std::max<LONG>(source, 0), last = std::min(sourceEnd, size);
            if (first >= last)
                return false;
            const double scale = (static_cast<double>(targetEnd) - target) / (static_cast<double>(sourceEnd) - source);
            const LONG start = target;
            target = ToLong(start + (static_cast<double>(first) - source) * scale);
            targetEnd = ToLong(start + (static_cast<double>(last) - source) * scale);
            source = first;
            sourceEnd = last;
            return target != targetEnd;
        }
    };

    struct Placed {
        RECTL target; // its edges in any order
        RECTL source; // within the bitmap
        bool IsStretched() const
        {
            return target.right - target.left != source.right - source.left
                || target.bottom - target.top != source.bottom - source.top;
        }
        bool IsMirrored() const { return target.right < target.left || target.bottom < target.top; }
    };

    std::optional<Placed> Place(const Destination& destination, const Source& source)
    {
        const RECTL pixels = PixelsOf(destination);
        const SIZEL size = source.bitmap->Size();
        Axis x = {source.part.left, source.part.right, pixels.left, pixels.right};
        Axis y = {source.part.top, source.part.bottom, pixels.top, pixels.bottom};
        if (!x.CutTo(size.cx) || !y.CutTo(size.cy))
            return std::nullopt;
        return Placed{{x.target, y.target, x.targetEnd, y.targetEnd}, {x.source, y.source, x.sourceEnd, y.sourceEnd}};
    }

    // The bitmap calls have most arguments in common.
    class BitmapCall {
    public:
        BitmapCall(DeviceContext& dc, const Destination& destination, const Source& source)
            : dc_(dc)
            , source_(&source.bitmap->Pixels())
            , placed_(Place(destination, source))
            , clip_(dc.ClipOf(placed_ ? Ordered(placed_->target) : RECTL{}))
            , translation_(source_->layout, dc.Layout())
        {
        }

        bool IsVisible() const { return placed_ && !clip_.IsEmpty(); }
        const Placed& Where() const { return *placed_; }
        void UsePatternFor(ROP4& rop4);
        bool LacksBrush() const { return lacksBrush_; }
        void Copy(ROP4 rop4, Bitmap const* mask, POINTL maskOrigin);
        void Stretch(ROP4 rop4, Bitmap const* mask, POINTL maskOrigin);
        void Blend(BLENDFUNCTION blend);
        void CopyTransparent(COLORREF transparent);

    private:
        BRUSHOBJ* BrushOrNull() { return brush_ ? &*brush_ : nullptr; }

        DeviceContext& dc_;
        Surface* source_;
        std::optional<Placed> placed_;
        CallClip clip_;
        Translation translation_;
        std::optional<Brush> brush_;
        bool lacksBrush_ = false;
    };

    // Takes the brush when the operation needs one; between the lines of an open hatch the target stays.
    void BitmapCall::UsePatternFor(ROP4& rop4)
    {
        if (!UsesPattern(static_cast<BYTE>(rop4)) && !UsesPattern(static_cast<BYTE>(rop4 >> 8)))
            return;
        brush_ = dc_.Realize(dc_.Now().brush);
        lacksBrush_ = !brush_;
        const bool masked = (rop4 & 0xFF) != rop4 >> 8;
        if (!masked && dc_.HasOpenGaps(dc_.Now().brush))
            rop4 = (rop4 & ~BackgroundByte) | LeaveRop << 8;
    }

    void BitmapCall::Copy(ROP4 rop4, Bitmap const* mask, POINTL maskOrigin)
    {
        RECTL target = clip_.Cut();
        const LONG right = target.left - placed_->target.left, down = target.top - placed_->target.top;
        POINTL from = {placed_->source.left + right, placed_->source.top + down};
        POINTL maskFrom = {maskOrigin.x + right, maskOrigin.y + down};
        if (rop4 == (RopSourceCopy | RopSourceCopy << 8) && !mask)
            CallCopyBits(dc_.Surface(), source_, clip_.AfterCut(), &translation_, &target, &from);
        else
            CallBitBlt(dc_.Surface(), source_, mask ? &mask->Pixels() : nullptr, clip_.AfterCut(), &translation_,
                       &target, &from, mask ? &maskFrom : nullptr, BrushOrNull(), dc_.BrushOrigin(), rop4);
    }

    void BitmapCall::Stretch(ROP4 rop4, Bitmap const* mask, POINTL maskOrigin)
    {
        RECTL target = placed_->target, from = placed_->source;
        SURFOBJ* const maskSurface = mask ? &mask->Pixels() : nullptr;
        POINTL* const maskPoint = mask ? &maskOrigin : nullptr;
        COLORADJUSTMENT* const adjustment = dc_.Now().colourAdjustment.caSize ? &dc_.Now().colourAdjustment : nullptr;
        if (rop4 == (RopSourceCopy | RopSourceCopy << 8) && !mask)
            CallStretchBlt(dc_.Surface(), source_, nullptr, clip_.IfHidden(), &translation_, adjustment,
                           dc_.BrushOrigin(), &target, &from, nullptr, dc_.Now().stretchMode);
        else
            CallStretchBltROP(dc_.Surface(), source_, maskSurface, clip_.IfHidden(), &translation_, adjustment,
                              dc_.BrushOrigin(), &target, &from, maskPoint, dc_.Now().stretchMode, BrushOrNull(), rop4);
    }

    void BitmapCall::Blend(BLENDFUNCTION blend)
    {
        RECTL target = placed_->target, from = placed_->source;
        BLENDOBJ object = {blend};
        CallAlphaBlend(dc_.Surface(), source_, clip_.IfHidden(), &translation_, &target, &from, &object);
    }

    void BitmapCall::CopyTransparent(COLORREF transparent)
    {
        RECTL target = placed_->target, from = placed_->source;
        const ULONG pixel = source_->layout.PixelOf(transparent & 0xFFFFFF);
        CallTransparentBlt(dc_.Surface(), source_, clip_.IfHidden(), &translation_, &target, &from, pixel, 0);
    }

    void CopyWithRop(DeviceContext& dc, const Destination& destination, const Source& source, ROP4 rop4,
                     Bitmap const* mask, POINTL maskOrigin)
    {
        BitmapCall call(dc, destination, source);
        if (!call.IsVisible())
            return;
        call.UsePatternFor(rop4);
        if (call.LacksBrush())
            return;
        // What was cut off the source is missing from the mask as well.
        if (mask) {
            const RECTL part = Ordered(source.part);
            maskOrigin.x += call.Where().source.left - part.left;
            maskOrigin.y += call.Where().source.top - part.top;
        }
        if (call.Where().IsStretched())
            call.Stretch(rop4, mask, maskOrigin);
        else
            call.Copy(rop4, mask, maskOrigin);
    }

    void RequireMask(const Bitmap& mask, POINTL origin, const RECTL& part)
    {
        const SIZEL size = mask.Size();
        const RECTL needed = Moved(Ordered(part), std::int64_t{origin.x} - Ordered(part).left,
                                   std::int64_t{origin.y} - Ordered(part).top);
        if (mask.Pixels().iBitmapFormat != BMF_1BPP)
            throw DamagedData("mask of more than one bit");
        if (!IsInside(needed, {0, 0, size.cx, size.cy}))
            throw DamagedData("mask too small");
    }

} // namespace

Destination Destination::Logical(const DeviceContext& dc, POINTL origin, SIZEL size)
{
    const Transform toDevice = dc.ToDevice();
    const double left = origin.x, top = origin.y;
    return {toDevice.Apply({left, top}), toDevice.Apply({left + size.cx, top}), toDevice.Apply({left, top + size.cy})};
}

void FillWithRop(DeviceContext& dc, const Destination& destination, BYTE rop3)
{
    ULONG rop2 = 1;
    while (PatternRop(rop2) != rop3)
        ++rop2;
    LogicalBrush brush = UsesPattern(rop3) ? dc.Now().brush : LogicalBrush();
    if (IsUpright(destination))
        return FillRectangle(dc, Ordered(PixelsOf(destination)), brush, rop2);
    const ULONG before = std::exchange(dc.Now().rop2, rop2);
    FillOutline(dc, OutlineOf(destination), brush, FP_WINDINGMODE);
    dc.Now().rop2 = before;
}

void CopyBitmap(DeviceContext& dc, const Destination& destination, const Source& source, BYTE rop3)
{
    if (!UsesSource(rop3))
        return FillWithRop(dc, destination, rop3);
    if (IsUpright(destination))
        return CopyWithRop(dc, destination, source, rop3 | rop3 << 8, nullptr, {});
    if (rop3 != RopSourceCopy)
        throw CannotPlay("turned with a raster operation");
    CopyToParallelogram(dc, destination, source, nullptr, {});
}

void CopyMasked(DeviceContext& dc, const Destination& destination, const Source& source, const Bitmap& mask,
                POINTL maskOrigin, ROP4 rop4)
{
    RequireMask(mask, maskOrigin, source.part);
    if (!IsUpright(destination))
        throw CannotPlay("turned with a raster operation");
    CopyWithRop(dc, destination, source, rop4, &mask, maskOrigin);
}

void CopyToParallelogram(DeviceContext& dc, const Destination& destination, const Source& source, const Bitmap* mask,
                         POINTL maskOrigin)
{
    if (mask)
        RequireMask(*mask, maskOrigin, source.part);
    RECTL part = source.part;
    const SIZEL size = source.bitmap->Size();
    if (!IsInside(part, {0, 0, size.cx, size.cy}) || IsEmpty(part))
        throw CannotPlay("turned with a part outside of the bitmap");
    CallClip clip = dc.ClipOf(OutlineOf(destination).PixelBounds());
    if (clip.IsEmpty())
        return;
    POINTFIX corners[] = {ToFix(destination.origin), ToFix(destination.right), ToFix(destination.below)};
    Surface& pixels = source.bitmap->Pixels();
    Translation translation(pixels.layout, dc.Layout());
    CallPlgBlt(dc.Surface(), &pixels, mask ? &mask->Pixels() : nullptr, clip.Always(), &translation, nullptr,
               dc.BrushOrigin(), corners, &part, mask ? &maskOrigin : nullptr, dc.Now().stretchMode);
}

void BlendBitmap(DeviceContext& dc, const Destination& destination, const Source& source, BLENDFUNCTION blend)
{
    if ((blend.AlphaFormat & AC_SRC_ALPHA) && source.bitmap->Pixels().iBitmapFormat != BMF_32BPP)
        throw DamagedData("alpha in a bitmap without it");
    BitmapCall call(dc, destination, source);
    if (!IsUpright(destination) || (call.IsVisible() && call.Where().IsMirrored()))
        throw CannotPlay("turned or mirrored");
    if (call.IsVisible())
        call.Blend(blend);
}

void CopyTransparent(DeviceContext& dc, const Destination& destination, const Source& source, COLORREF transparent)
{
    BitmapCall call(dc, destination, source);
    if (!IsUpright(destination) || (call.IsVisible() && call.Where().IsMirrored()))
        throw CannotPlay("turned or mirrored");
    if (call.IsVisible())
        call.CopyTransparent(transparent);
}

void FillGradient(DeviceContext& dc, const GradientMesh& mesh)
{
    if (!dc.ToDevice().IsAxisAligned() && mesh.mode != GRADIENT_FILL_TRIANGLE)
        throw CannotPlay("turned");
    std::vector<TRIVERTEX> vertices = mesh.vertices;
    for (TRIVERTEX& vertex : vertices) {
        const POINTL pixel = ToPixel(dc.Map({static_cast<double>(vertex.x), static_cast<double>(vertex.y)}));
        vertex.x = pixel.x;
        vertex.y = pixel.y;
    }
    RECTL bounds = {FarAway, FarAway, -FarAway, -FarAway};
    for (const ULONG index : mesh.indices) {
        if (index >= vertices.size())
            throw DamagedData("no such vertex");
        const TRIVERTEX& vertex = vertices[index];
        bounds = {std::min(bounds.left, vertex.x), std::min(bounds.top, vertex.y), std::max(bounds.right, vertex.x),
                  std::max(bounds.bottom, vertex.y)};
    }
    CallClip clip = dc.ClipOf(bounds);
    if (clip.IsEmpty())
        return;
    Translation translation(PixelLayout::Default(BMF_32BPP), dc.Layout());
    RECTL extents = clip.Cut();
    POINTL ditherOrigin = {0, 0};
    std::vector<ULONG> indices = mesh.indices;
    const std::size_t perPart = mesh.mode == GRADIENT_FILL_TRIANGLE ? 3 : 2;
    CallGradientFill(dc.Surface(), clip.AfterCut(), &translation, vertices.data(), static_cast<ULONG>(vertices.size()),
                     indices.data(), static_cast<ULONG>(indices.size() / perPart), &extents, &ditherOrigin, mesh.mode);
}

void SetPixel(DeviceContext& dc, POINTL logical, COLORREF colour)
{
    const POINTL pixel = ToPixel(dc.Map({static_cast<double>(logical.x), static_cast<double>(logical.y)}));
    LogicalBrush brush;
    brush.colour = colour;
    FillRectangle(dc, {pixel.x, pixel.y, pixel.x + 1, pixel.y + 1}, brush, R2_COPYPEN);
}

} // namespace engine::gdi
