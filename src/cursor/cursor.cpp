#include "cursor/cursor.h"

#include "driver/debug_print.h"
#include "driver/locked_surface.h"
#include "driver/pool.h"
#include "driver/screen_list.h"
#include "magnifier/blits.h"
#include "magnifier/rectangle.h"
#include "magnifier/stride.h"
#include "platform/runtime.h"

namespace koru {

constinit CCursor SoftwareCursor;

namespace {

    enum RedrawOn : BYTE { RedrawNowhere = 0, RedrawOnTarget = 1, RedrawOnSource = 2 };

    bool IsLike(HSURF bitmap, const SIZEL& size, ULONG format)
    {
        const LockedSurface pso(bitmap);
        return pso && pso->sizlBitmap.cx == size.cx && pso->sizlBitmap.cy == size.cy && pso->iBitmapFormat == format;
    }

    // Bottom-up bitmaps have a negative delta.
    LONG StrideOf(const SURFOBJ& surface)
    {
        const auto delta = static_cast<ULONG>(surface.lDelta);
        return static_cast<LONG>(surface.lDelta < 0 ? 0 - delta : delta);
    }

    // Keeps a copy of a bitmap that the engine gives for one call only. No bitmap: no copy.
    void TakeCopy(HSURF& copy, SURFOBJ* pso, const char* failure)
    {
        LockedSurface psoBacking;
        if (!pso || !psoBacking.LockBacking(pso))
            return DropBitmap(copy);
        SURFOBJ* const psoSrc = psoBacking.Or(pso);
        const SIZEL size = psoSrc->sizlBitmap;
        const ULONG format = PlainFormat(psoSrc->iBitmapFormat);
        if (!IsLike(copy, size, format))
            DropBitmap(copy);
        if (!copy) {
            const LONG stride = StrideHoldingRow(StrideOf(*psoSrc), size.cx, format);
            copy = MakeBitmap(static_cast<ULONG>(size.cx), static_cast<ULONG>(size.cy), format, stride);
        }
        if (!copy && failure)
            DebugPrint(failure);
        const LockedSurface psoCopy(copy);
        if (psoCopy)
            CopyBitsCut(psoCopy.Get(), psoSrc, BoundsOf(size), {0, 0});
    }

    bool IsScreenMeeting(const SURFOBJ* pso, const RECTL* rectangle, const RECTL& cursor)
    {
        if (!pso || !rectangle || !DoMeet(*rectangle, cursor))
            return false;
        const Screen* const screen = ScreenList::Find(pso->dhpdev);
        return screen && screen->hsurfDevice && screen->hsurfDevice == pso->hsurf;
    }

    RECTL OnScreen(const RECTL& rectangle, const SIZEL& screen)
    {
        RECTL visible;
        IntersectRect(visible, rectangle, BoundsOf(screen));
        return visible;
    }

} // namespace

bool CCursor::IsVisible() const
{
    return x_ >= 0 && !IsEmpty(rect_);
}

bool CCursor::IsOnScreenOf(const SURFOBJ* pso) const
{
    return pso && pso->dhpdev == device_;
}

SIZEL CCursor::Size() const
{
    return {static_cast<LONG>(width_), static_cast<LONG>(height_)};
}

void CCursor::ReleaseShape()
{
    DropBitmap(UnderCursor);
    DropBitmap(Cursor);
    DropBitmap(mask_);
    DropBitmap(colour_);
    FreeXlate();
    width_ = height_ = 0;
    xHot_ = yHot_ = 0;
    rect_ = NoRectangle;
    redraw_ = RedrawNowhere;
    isSaved_ = false;
    device_ = nullptr;
    format_ = 0;
}

void CCursor::Initialise(const SIZEL& screen)
{
    ReleaseShape();
    screenWidth_ = static_cast<ULONG>(screen.cx);
    screenHeight_ = static_cast<ULONG>(screen.cy);
    x_ = screen.cx / 2;
    y_ = screen.cy / 2;
}

void CCursor::Reset()
{
    Initialise({0, 0});
    x_ = -1;
}

// The pointer is at (x, y), or hidden for a negative x. A negative y counts from the bottom.
void CCursor::PlaceAt(LONG x, LONG y, LONG screenHeight)
{
    x_ = x < 0 ? -1 : x;
    rect_ = NoRectangle;
    if (x < 0)
        return;
    y_ = y < 0 ? y + screenHeight : y;
    const LONGLONG left = LONGLONG{x_} - xHot_, top = LONGLONG{y_} - yHot_;
    rect_ = {Held(left), Held(top), Held(left + width_), Held(top + height_)};
}

void CCursor::MeasureShape(const SURFOBJ* psoMask, const SURFOBJ* psoColor)
{
    SIZEL size = {0, 0};
    if (psoMask)
        size = {psoMask->sizlBitmap.cx, psoMask->sizlBitmap.cy / 2};
    if (psoColor)
        size = psoColor->sizlBitmap;
    width_ = static_cast<ULONG>(size.cx);
    height_ = static_cast<ULONG>(size.cy);
}

void CCursor::FreeXlate()
{
    if (!xlate_)
        return;
    FreeToPool(xlate_->pulXlate);
    FreeToPool(xlate_);
    xlate_ = nullptr;
}

void CCursor::TakeXlate(const XLATEOBJ* pxlo)
{
    FreeXlate();
    xlate_ = pxlo ? AllocateRecord<XLATEOBJ>() : nullptr;
    if (!xlate_)
        return;
    *xlate_ = *pxlo;
    xlate_->pulXlate = nullptr;
    if (!pxlo->pulXlate || pxlo->cEntries == 0 || pxlo->cEntries > 0xFFFFFFFF / sizeof(ULONG))
        return;
    const ULONG size = pxlo->cEntries * sizeof(ULONG);
    xlate_->pulXlate = static_cast<ULONG*>(AllocateFromPool(size));
    if (xlate_->pulXlate)
        memcpy(xlate_->pulXlate, pxlo->pulXlate, size);
}

// Background and composed image, in the screen's format.
void CCursor::MakeWorkBitmaps(ULONG format)
{
    if (width_ == 0 || height_ == 0)
        return;
    const ULONG plain = PlainFormat(format);
    format_ = plain;
    if (IsLike(UnderCursor, Size(), plain) && IsLike(Cursor, Size(), plain))
        return;
    DropBitmap(UnderCursor);
    DropBitmap(Cursor);
    isSaved_ = false;
    const LONG stride = StrideHoldingRow(0, static_cast<LONG>(width_), plain);
    UnderCursor = MakeBitmap(width_, height_, plain, stride);
    if (!UnderCursor)
        DebugPrint("Failed to create UnderCursor !!!! \n");
    Cursor = MakeBitmap(width_, height_, plain, stride);
    if (!Cursor)
        DebugPrint("Failed to create Cursor !!!! \n");
}

// The pointer wanders between screens without a new shape. What is composed in one's format, with the
// colour table of the other, would be looked up behind the table's end.
void CCursor::FollowFormatOf(const SURFOBJ* pso)
{
    const Screen* const screen = pso ? ScreenList::Find(pso->dhpdev) : nullptr;
    if (screen && screen->hsurfVirtual && PlainFormat(screen->ZoomerList.format) != format_)
        MakeWorkBitmaps(screen->ZoomerList.format);
}

ULONG CCursor::SetShape(SURFOBJ* pso, SURFOBJ* psoMask, SURFOBJ* psoColor, XLATEOBJ* pxlo, LONG xHot, LONG yHot, LONG x,
                        LONG y, RECTL*, FLONG)
{
    xHot_ = xHot;
    yHot_ = yHot;
    if (pso) {
        screenWidth_ = static_cast<ULONG>(pso->sizlBitmap.cx);
        screenHeight_ = static_cast<ULONG>(pso->sizlBitmap.cy);
    } else {
        DebugPrint("Error Set Shape pso == NULL \n");
    }
    MeasureShape(psoMask, psoColor);
    const bool hasShape = psoMask || psoColor;
    PlaceAt(hasShape ? x : -1, y, static_cast<LONG>(screenHeight_));
    TakeCopy(mask_, psoMask, nullptr);
    TakeXlate(pxlo);
    TakeCopy(colour_, psoColor, "Failed to create Color Bitmap !!!! \n");
    if (pso)
        MakeWorkBitmaps(pso->iBitmapFormat);
    return 1;
}

ULONG CCursor::ChangeShape(SURFOBJ* pso, SURFOBJ* psoMask, SURFOBJ* psoColor, XLATEOBJ* pxlo, LONG xHot, LONG yHot,
                           LONG x, LONG y, RECTL* prcl, FLONG fl, RECTL& touched)
{
    const RECTL before = rect_;
    RestoreFromUnderCursor(pso);
    SetShape(pso, psoMask, psoColor, pxlo, xHot, yHot, x, y, prcl, fl);
    Draw(pso);
    const SIZEL screen = {static_cast<LONG>(screenWidth_), static_cast<LONG>(screenHeight_)};
    if (prcl)
        *prcl = OnScreen(rect_, screen);
    touched = OnScreen(JoinRect(before, rect_), screen);
    return SPS_ACCEPT_NOEXCLUDE;
}

RECTL CCursor::Move(SURFOBJ* pso, LONG x, LONG y, RECTL* prclBounds)
{
    const RECTL before = rect_;
    const SIZEL stored = {static_cast<LONG>(screenWidth_), static_cast<LONG>(screenHeight_)};
    const SIZEL screen = pso ? pso->sizlBitmap : stored;
    RestoreFromUnderCursor(pso);
    PlaceAt(x, y, screen.cy);
    Draw(pso);
    if (prclBounds)
        *prclBounds = OnScreen(rect_, screen);
    return OnScreen(JoinRect(before, rect_), screen);
}

void CCursor::ExcludeBeforeDrawing(SURFOBJ* psoTrg, const RECTL* prclTrg, SURFOBJ* psoSrc, const RECTL* prclSrc)
{
    if (!IsVisible())
        return;
    if (IsOnScreenOf(psoTrg) && IsScreenMeeting(psoTrg, prclTrg, rect_)) {
        redraw_ = RedrawOnTarget;
        RestoreFromUnderCursor(psoTrg);
    } else if (IsOnScreenOf(psoSrc) && IsScreenMeeting(psoSrc, prclSrc, rect_)) {
        redraw_ = RedrawOnSource;
        RestoreFromUnderCursor(psoSrc);
    }
}

void CCursor::RedrawAfterDrawing(SURFOBJ* psoTrg, SURFOBJ* psoSrc)
{
    const BYTE redraw = redraw_;
    redraw_ = RedrawNowhere;
    if (redraw != RedrawNowhere)
        Draw(redraw == RedrawOnTarget ? psoTrg : psoSrc);
}

} // namespace koru
