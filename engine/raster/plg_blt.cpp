// EngPlgBlt: each target pixel inside the parallelogram is mapped back into the source.

#include <cmath>

#include "engine/raster/clip.h"
#include "engine/raster/hook_call.h"
#include "engine/raster/rectangles.h"
#include "engine/raster/rop_operation.h"
#include "engine/raster/scan_converter.h"
#include "engine/raster/surfaces.h"
#include "platform/services.h"

using namespace engine;
using namespace engine::raster;

namespace {

using Real = long double; // 64 bits of mantissa hold the products of 28.4 coordinates

// Of two vectors, positive when the second lies clockwise of the first on the screen.
Real Cross(Real x1, Real y1, Real x2, Real y2)
{
    return x1 * y2 - x2 * y1;
}

// The parallelogram that the source's upper left, upper right and lower left corners come to.
class Parallelogram {
public:
    Parallelogram(const POINTFIX* corners, const RECTL& source)
        : origin_(corners[0])
        , acrossX_(Real{1} * corners[1].x - origin_.x)
        , acrossY_(Real{1} * corners[1].y - origin_.y)
        , downX_(Real{1} * corners[2].x - origin_.x)
        , downY_(Real{1} * corners[2].y - origin_.y)
        , area_(Cross(acrossX_, acrossY_, downX_, downY_))
        , source_(source)
    {
    }

    bool IsFlat() const { return area_ == 0; }

    std::vector<FixPoint> Outline() const
    {
        const auto corner = [this](Real x, Real y) {
            return FixPoint{static_cast<std::int64_t>(origin_.x + x), static_cast<std::int64_t>(origin_.y + y)};
        };
        return {corner(0, 0), corner(acrossX_, acrossY_), corner(acrossX_ + downX_, acrossY_ + downY_),
                corner(downX_, downY_)};
    }

    // The source pixel of a target pixel. Half a pixel in, so that a picture mapped without scaling comes out
    // the same in every one of the eight directions.
    POINTL SourceOf(LONG x, LONG y) const
    {
        const Real fromX = x * Real{16} + 8 - origin_.x, fromY = y * Real{16} + 8 - origin_.y;
        const Real across = Cross(fromX, fromY, downX_, downY_), down = Cross(acrossX_, acrossY_, fromX, fromY);
        return {PositionAt(across, source_.left, source_.right), PositionAt(down, source_.top, source_.bottom)};
    }

private:
    // The position that is share / area_ of the way between two ends; on their last pixel where rounding of
    // the outline leads past it.
    LONG PositionAt(Real share, LONG from, LONG to) const
    {
        const Real position = from + std::floor(share * (Real{1} * to - from) / area_);
        const Real last = std::max<Real>(from, to) - 1;
        return static_cast<LONG>(std::clamp<Real>(position, std::min<Real>(std::min(from, to), last), last));
    }

    POINTFIX origin_;
    Real acrossX_, acrossY_, downX_, downY_, area_;
    RECTL source_;
};

class SlantedSource : public RowSource {
public:
    SlantedSource(const Parallelogram& shape, const Bitmap& source, const Bitmap* mask, const RECTL& rectangle,
                  const POINTL& maskFirst)
        : shape_(shape)
        , source_(source)
        , mask_(mask)
        , rectangle_(Ordered(rectangle))
        , maskFirst_(maskFirst)
    {
    }

    void Fetch(Row& row) const override
    {
        row.hasChoices = true;
        for (LONG i = 0; i < row.count; ++i) {
            const POINTL at = shape_.SourceOf(row.x + i, row.y);
            row.choices[i] = IsShown(at) ? Choice::Foreground : Choice::Nothing;
            if (row.choices[i] == Choice::Foreground)
                source_.Read(at.x, at.y, 1, &row.source[i]);
        }
    }

private:
    bool IsShown(const POINTL& at) const
    {
        if (!Contains(source_.area, at.x, at.y))
            return false;
        if (!mask_)
            return true;
        const std::int64_t x = std::int64_t{at.x} - rectangle_.left + maskFirst_.x;
        const std::int64_t y = std::int64_t{at.y} - rectangle_.top + maskFirst_.y;
        if (!Contains(mask_->area, x, y))
            return false;
        ULONG bit = 0;
        mask_->Read(static_cast<LONG>(x), static_cast<LONG>(y), 1, &bit);
        return bit != 0;
    }

    const Parallelogram& shape_;
    const Bitmap& source_;
    const Bitmap* mask_;
    RECTL rectangle_;
    POINTL maskFirst_;
};

struct PlgSurfaces {
    Surface *target, *source, *mask;
};

BOOL DrawParallelogram(const PlgSurfaces& surfaces, CLIPOBJ* pco, XLATEOBJ* pxlo, const POINTFIX* pptfx,
                       const RECTL& rectangle, const POINTL& maskFirst)
{
    const Translator translator(pxlo);
    const auto visible = VisibleParts(pco, surfaces.target->Bounds());
    const Parallelogram shape(pptfx, rectangle);
    if (!translator.IsKnown() || !visible)
        return FALSE;
    if (shape.IsFlat() || IsEmpty(Ordered(rectangle)))
        return TRUE;
    const Region parts =
        Intersection(ScanConvert({shape.Outline()}, FP_ALTERNATEMODE, surfaces.target->Bounds()), Region(*visible));
    if (parts.IsEmpty())
        return TRUE;
    Source source(*surfaces.source, Ordered(rectangle));
    Source mask = surfaces.mask ? Source(*surfaces.mask, surfaces.mask->Bounds()) : Source();
    Target target(*surfaces.target, pco, parts.Bounds());
    if (!source || !mask || !target)
        return FALSE;
    source.KeepFrom(target.Pixels());
    mask.KeepFrom(target.Pixels());
    const SlantedSource rows(shape, source.Pixels(), surfaces.mask ? &mask.Pixels() : nullptr, rectangle, maskFirst);
    const BrushPattern noBrush;
    DrawRows(target.Pixels(), parts.Rectangles(), &rows, RopOperation(CopySource, translator, noBrush, true));
    return target.Finish();
}

} // namespace

extern "C" BOOL APIENTRY EngPlgBlt(SURFOBJ* psoTrg, SURFOBJ* psoSrc, SURFOBJ* psoMsk, CLIPOBJ* pco, XLATEOBJ* pxlo,
                                   COLORADJUSTMENT* pca, POINTL* pptlBrushOrg, POINTFIX* pptfx, RECTL* prcl,
                                   POINTL* pptl, ULONG iMode)
{
    PlgSurfaces surfaces = {Given("EngPlgBlt", psoTrg, "target"), nullptr, nullptr};
    if (!surfaces.target || !(surfaces.source = Given("EngPlgBlt", psoSrc, "source")))
        return FALSE;
    if (!pptfx || !prcl)
        return Refuse("EngPlgBlt", pptfx ? "null source rectangle" : "null parallelogram");
    if (const auto answer = AskHook<PFN_DrvPlgBlt>("EngPlgBlt", psoTrg, HOOK_PLGBLT, INDEX_DrvPlgBlt, psoTrg, psoSrc,
                                                   psoMsk, pco, pxlo, pca, pptlBrushOrg, pptfx, prcl, pptl, iMode))
        return *answer;
    if (psoMsk && !(surfaces.mask = SurfaceBehind(psoMsk)))
        return FALSE;
    if (surfaces.mask && surfaces.mask->iBitmapFormat != BMF_1BPP)
        return Refuse("EngPlgBlt", "mask of more than one bit per pixel");
    return DrawParallelogram(surfaces, pco, pxlo, pptfx, *prcl, PointOrOrigin(pptl));
}
