#include "engine/gdi/device_context.h"

#include "engine/core/calls.h"

namespace engine::gdi {

namespace {

    constexpr std::size_t DeepestSave = 1024;
    constexpr std::size_t MostClipRectangles = 1 << 15;
    constexpr std::size_t MostPatterns = 8;

    ClipObject MakeClip(const Region& region)
    {
        return region.Rectangles().size() > 1 ? ClipObject(region.Rectangles()) : ClipObject(region.Bounds());
    }

    ClipObject MakeClip(const Region& visible, const RECTL& bounds)
    {
        if (visible.IsRectangle() && IsInside(bounds, visible.Bounds()))
            return ClipObject(bounds, DC_TRIVIAL);
        return MakeClip(engine::Intersection(visible, Region(bounds)));
    }

    Region Combined(const Region& old, const Region& region, ULONG mode)
    {
        switch (mode) {
        case RGN_AND:
            return engine::Intersection(old, region);
        case RGN_OR:
            return engine::Union(old, region);
        case RGN_XOR:
            return engine::SymmetricDifference(old, region);
        case RGN_DIFF:
            return engine::Difference(old, region);
        default:
            return region;
        }
    }

} // namespace

CallClip::CallClip(const Region& visible, const RECTL& bounds)
    : clip_(MakeClip(visible, bounds))
{
    TakeOver();
}

CallClip::CallClip(const Region& visible, const Region& shape)
    : clip_(MakeClip(engine::Intersection(visible, shape)))
{
    TakeOver();
}

void CallClip::TakeOver()
{
    cut_ = clip_.rclBounds;
    complex_ = clip_.iDComplexity == DC_COMPLEX;
    hidden_ = clip_.iDComplexity != DC_TRIVIAL;
}

void PathBracket::Begin()
{
    outline_ = Outline();
    state_ = State::Open;
}

bool PathBracket::End()
{
    if (!IsOpen())
        return false;
    state_ = State::Complete;
    return true;
}

void PathBracket::Abort()
{
    outline_ = Outline();
    state_ = State::None;
}

Outline PathBracket::Take()
{
    Outline taken = std::move(outline_);
    Abort();
    return taken;
}

Outline& PathBracket::From(POINTFIX point)
{
    if (!outline_.EndsAt(point))
        outline_.MoveTo(point);
    return outline_;
}

DeviceContext::DeviceContext(const DrawingTarget& target, const Transform& base, const ReferenceDevice& reference)
    : target_(target)
    , base_(base)
{
    now_.mapping = Mapping(reference);
    now_.pen = std::get<LogicalPen>(StockObject(7));
    now_.brush = std::get<LogicalBrush>(StockObject(0));
    now_.font = std::get<LOGFONTW>(StockObject(13));
    now_.palette = std::make_shared<LogicalPalette>(DefaultPalette());
    target_.visible =
        Intersection(target_.visible, {0, 0, target.surface->sizlBitmap.cx, target.surface->sizlBitmap.cy});
    UpdateVisible();
    UpdateOrigin();
}

bool DeviceContext::Save()
{
    if (saved_.size() >= DeepestSave)
        return false;
    saved_.push_back(now_);
    return true;
}

bool DeviceContext::Restore(LONG which)
{
    const std::int64_t index = which < 0 ? static_cast<std::int64_t>(saved_.size()) + which : std::int64_t{which} - 1;
    if (index < 0 || index >= static_cast<std::int64_t>(saved_.size()))
        return false;
    now_ = std::move(saved_[static_cast<std::size_t>(index)]);
    saved_.resize(static_cast<std::size_t>(index));
    UpdateVisible();
    UpdateOrigin();
    return true;
}

bool DeviceContext::CombineClip(const Region& region, ULONG mode)
{
    const Region old = now_.clip ? *now_.clip : Region(target_.visible);
    Region combined = Combined(old, region, mode);
    if (combined.Rectangles().size() > MostClipRectangles)
        return false;
    SetClip(std::make_shared<const Region>(std::move(combined)));
    return true;
}

void DeviceContext::SetClip(std::shared_ptr<const Region> clip)
{
    now_.clip = std::move(clip);
    UpdateVisible();
}

void DeviceContext::MoveClip(POINTL by)
{
    if (!now_.clip)
        return;
    Region moved = *now_.clip;
    moved.Move(by.x, by.y);
    SetClip(std::make_shared<const Region>(std::move(moved)));
}

void DeviceContext::MakeClipMeta()
{
    now_.metaRegion = std::make_shared<const Region>(visible_);
    SetClip(nullptr);
}

void DeviceContext::UpdateVisible()
{
    visible_ = Region(target_.visible);
    for (const auto& part : {now_.metaRegion, now_.clip})
        if (part)
            visible_ = engine::Intersection(visible_, *part);
}

Region DeviceContext::RegionOf(const RECTL& logical) const
{
    const Transform toDevice = ToDevice();
    const Box box = Box::FromCorners(logical.left, logical.top, logical.right, logical.bottom);
    if (toDevice.IsAxisAligned()) {
        const POINTL corner = ToPixel(toDevice.Apply({box.left, box.top}));
        const POINTL opposite = ToPixel(toDevice.Apply({box.right, box.bottom}));
        return Region(Ordered({corner.x, corner.y, opposite.x, opposite.y}));
    }
    Outline outline;
    ShapePen(outline, toDevice).Rectangle(box);
    const Path path = outline.ToPath();
    return RegionOfPath(&path, FP_WINDINGMODE, target_.visible);
}

COLORREF DeviceContext::Colour(COLORREF colour) const
{
    constexpr COLORREF indexFlag = 0x01000000;
    if ((colour & 0xFF000000) != indexFlag)
        return colour & 0xFFFFFF;
    const std::size_t index = colour & 0xFFFF;
    return index < now_.palette->colours.size() ? now_.palette->colours[index] : 0;
}

std::optional<Brush> DeviceContext::Realize(const LogicalBrush& brush)
{
    switch (brush.kind) {
    case LogicalBrush::Kind::None:
        return std::nullopt;
    case LogicalBrush::Kind::Hatched:
        if (brush.HasLines())
            return Brush::Hatch(brush.hatch, Pixel(brush.colour), Pixel(now_.backColour));
        return Brush::Solid(Pixel(brush.hatch < HS_SOLIDTEXTCLR     ? brush.colour
                                      : brush.hatch < HS_SOLIDBKCLR ? now_.textColour
                                                                    : now_.backColour));
    case LogicalBrush::Kind::Pattern:
        return Brush::Pattern(RealizePattern(brush).Pixels());
    default:
        return Brush::Solid(Pixel(brush.colour));
    }
}

const Bitmap& DeviceContext::RealizePattern(const LogicalBrush& brush)
{
    const COLORREF text = Colour(now_.textColour), back = Colour(now_.backColour);
    for (auto entry = patterns_.begin(); entry != patterns_.end(); ++entry) {
        const bool sameColours = !brush.monochrome || (entry->textColour == text && entry->backColour == back);
        if (entry->source == brush.pattern && entry->monochrome == brush.monochrome && sameColours) {
            patterns_.splice(patterns_.begin(), patterns_, entry);
            return *entry->realized;
        }
    }
    auto realized = std::make_unique<Bitmap>(brush.pattern->Size(), target_.layout);
    engine::Surface& source = brush.pattern->Pixels();
    PixelLayout sourceLayout = source.layout;
    if (brush.monochrome)
        sourceLayout.palette = {text, back};
    Translation translation(sourceLayout, target_.layout);
    RECTL all = source.Bounds();
    POINTL origin = {0, 0};
    CallCopyBits(&realized->Pixels(), &source, nullptr, &translation, &all, &origin);
    if (patterns_.size() >= MostPatterns)
        patterns_.pop_back();
    patterns_.push_front({brush.pattern, brush.monochrome, text, back, std::move(realized)});
    return *patterns_.front().realized;
}

bool DeviceContext::HasOpenGaps(const LogicalBrush& brush) const
{
    return brush.HasLines() && now_.backMode == TRANSPARENT;
}

MIX DeviceContext::MixFor(const LogicalBrush& brush) const
{
    return now_.rop2 | (HasOpenGaps(brush) ? R2_NOP : now_.rop2) << 8;
}

void DeviceContext::SetBrushOrigin(POINTL origin)
{
    now_.brushOrigin = origin;
    UpdateOrigin();
}

void DeviceContext::UpdateOrigin()
{
    origin_ = ToPixel(base_.Apply({static_cast<double>(now_.brushOrigin.x), static_cast<double>(now_.brushOrigin.y)}));
}

} // namespace engine::gdi
