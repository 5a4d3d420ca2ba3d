#include "engine/raster/blit.h"

#include <cstring>

#include "engine/raster/clip.h"
#include "engine/raster/fill.h"
#include "engine/raster/hook_call.h"
#include "engine/raster/rectangles.h"
#include "engine/raster/rop_operation.h"
#include "engine/raster/surfaces.h"

namespace engine::raster {
namespace {

    using Parts = std::vector<RECTL>;

    // From target to source coordinates; up to 33 bits.
    struct Offset {
        std::int64_t x = 0, y = 0;

        Offset(const RECTL& target, const POINTL& source)
            : x(std::int64_t{source.x} - target.left)
            , y(std::int64_t{source.y} - target.top)
        {
        }
        RECTL SourceOf(const RECTL& target) const { return Moved(target, x, y); }
        LONG SourceX(LONG targetX) const { return static_cast<LONG>(targetX + x); }
        LONG SourceY(LONG targetY) const { return static_cast<LONG>(targetY + y); }
    };

    bool AreWithin(const Surface& surface, const Parts& parts, const Offset& offset)
    {
        return std::all_of(parts.begin(), parts.end(), [&](const RECTL& part) {
            return part.left + offset.x >= 0 && part.right + offset.x <= surface.sizlBitmap.cx
                && part.top + offset.y >= 0 && part.bottom + offset.y <= surface.sizlBitmap.cy;
        });
    }

    class StraightSource : public RowSource {
    public:
        StraightSource(const Bitmap* source, const Offset& offset, const Bitmap* mask, const Offset& maskOffset)
            : source_(source)
            , mask_(mask)
            , offset_(offset)
            , maskOffset_(maskOffset)
        {
        }

        void Fetch(Row& row) const override
        {
            if (mask_) {
                row.hasChoices = true;
                mask_->Read(maskOffset_.SourceX(row.x), maskOffset_.SourceY(row.y), row.count, row.source);
                for (LONG i = 0; i < row.count; ++i)
                    row.choices[i] = row.source[i] ? Choice::Foreground : Choice::Background;
            }
            if (source_)
                source_->Read(offset_.SourceX(row.x), offset_.SourceY(row.y), row.count, row.source);
        }

    private:
        const Bitmap* source_;
        const Bitmap* mask_;
        Offset offset_, maskOffset_;
    };

    // Whether rows in the right order are enough where source and target overlap.
    bool IsOneBlockMove(const Bitmap& target, const Bitmap& source, const Parts& parts)
    {
        return parts.size() == 1 && target.scan0 == source.scan0 && target.lDelta == source.lDelta;
    }

    void CopyRows(const Bitmap& target, const Bitmap& source, const Parts& parts, const Offset& offset)
    {
        for (const RECTL& part : parts) {
            const std::size_t bytes = static_cast<std::size_t>((part.right - part.left) * target.BytesPerPixel());
            const LONG count = part.bottom - part.top;
            const bool upwards = offset.y < 0; // the target lies below the source: begin at the bottom
            for (LONG i = 0; i < count; ++i) {
                const LONG y = upwards ? part.bottom - 1 - i : part.top + i;
                std::memmove(target.Byte(part.left, y), source.Byte(offset.SourceX(part.left), offset.SourceY(y)),
                             bytes);
            }
        }
    }

    // The surfaces, translation and brush of a call once they are known to be the engine's.
    struct Participants {
        Surface *target, *source, *mask;
        Translator translator;
        const Brush* brush;
    };

    class BlitRun {
    public:
        BlitRun(const Blit& call, const Participants& with, Parts parts)
            : call_(call)
            , with_(with)
            , parts_(std::move(parts))
            , bounds_(Region(parts_).Bounds())
            , offset_(Ordered(call.target), call.source)
            , maskOffset_(Ordered(call.target), call.mask)
        {
        }

        BOOL Run()
        {
            if (with_.source && !AreWithin(*with_.source, parts_, offset_))
                return Refuse(call_.service, "source outside of the surface");
            if (with_.mask && !AreWithin(*with_.mask, parts_, maskOffset_))
                return Refuse(call_.service, "mask outside of the surface");
            Source source = with_.source ? Source(*with_.source, offset_.SourceOf(bounds_)) : Source();
            Source mask = with_.mask ? Source(*with_.mask, maskOffset_.SourceOf(bounds_)) : Source();
            Target target(*with_.target, call_.pco, bounds_);
            if (!source || !mask || !target)
                return FALSE;
            Draw(target.Pixels(), source, mask);
            return target.Finish();
        }

    private:
        void Draw(const Bitmap& target, Source& source, Source& mask)
        {
            const bool plain = IsPlainCopy(target, source.Pixels());
            if (with_.source && !(plain && IsOneBlockMove(target, source.Pixels(), parts_)))
                source.KeepFrom(target);
            if (with_.mask)
                mask.KeepFrom(target);
            if (plain) {
                CopyRows(target, source.Pixels(), parts_, offset_);
                return;
            }
            const BrushPattern brush(with_.brush, call_.brushOrigin);
            if (call_.rop4 == CopyPattern && brush.IsSolid()) {
                FillSolid(target, parts_, brush.SolidPixel());
                return;
            }
            const StraightSource rows(with_.source ? &source.Pixels() : nullptr, offset_,
                                      with_.mask ? &mask.Pixels() : nullptr, maskOffset_);
            DrawRows(target, parts_, &rows, RopOperation(call_.rop4, with_.translator, brush, with_.mask));
        }

        bool IsPlainCopy(const Bitmap& target, const Bitmap& source) const
        {
            return call_.rop4 == CopySource && with_.translator.IsTrivial() && target.HasWholeBytes()
                && target.iBitmapFormat == source.iBitmapFormat;
        }

        const Blit& call_;
        const Participants& with_;
        Parts parts_;
        RECTL bounds_;
        Offset offset_, maskOffset_;
    };

} // namespace

BOOL Blit::Run() const
{
    Participants with = {Given(service, psoTrg, "target"), nullptr, nullptr, Translator(pxlo), nullptr};
    if (!with.target || !with.translator.IsKnown())
        return FALSE;
    if (UsesSource(rop4) && !(with.source = Given(service, psoSrc, "source")))
        return FALSE;
    const bool masked = psoMask && ForegroundRop(rop4) != BackgroundRop(rop4);
    if (masked && !(with.mask = SurfaceBehind(psoMask)))
        return FALSE;
    if (with.mask && with.mask->iBitmapFormat != BMF_1BPP)
        return Refuse(service, "mask of more than one bit per pixel");
    if (pbo && !(with.brush = BrushBehind(pbo)))
        return FALSE;
    if (!pbo && UsesPattern(rop4))
        return Refuse(service, "null brush");
    std::optional<Parts> parts = VisibleParts(pco, Intersection(Ordered(target), with.target->Bounds()));
    if (!parts)
        return FALSE;
    return parts->empty() ? TRUE : BlitRun(*this, with, std::move(*parts)).Run();
}

} // namespace engine::raster
