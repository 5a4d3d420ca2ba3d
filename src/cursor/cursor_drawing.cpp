// What the cursor does to the VirtualScreen: save, compose, put, restore.

#include "cursor/cursor.h"
#include "driver/debug_print.h"
#include "driver/locked_surface.h"
#include "driver/screen_list.h"
#include "magnifier/blits.h"
#include "magnifier/pointer_blits.h"
#include "magnifier/rectangle.h"

namespace koru {

namespace {

    constexpr ROP4 Black = 0x0000, White = 0xFFFF, Inverted = 0x5555;

    const Screen* ScreenOf(const SURFOBJ* pso)
    {
        return pso ? ScreenList::Find(pso->dhpdev) : nullptr;
    }

    // The part of the cursor's bitmaps that lies on a screen when they are put there. Empty without a screen.
    RECTL PartOn(const SURFOBJ* psoVirtual, const RECTL& cursor, const SIZEL& size)
    {
        RECTL shown = cursor;
        POINTL from = {0, 0};
        if (!psoVirtual || !CutBlit(psoVirtual->sizlBitmap, size, shown, from))
            return NoRectangle;
        return {from.x, from.y, from.x + shown.right - shown.left, from.y + shown.bottom - shown.top};
    }

} // namespace

bool CCursor::SaveIntoUnderCursor(SURFOBJ* pso)
{
    isSaved_ = false;
    if (!IsVisible())
        return false;
    const Screen* const screen = ScreenOf(pso);
    if (!screen) {
        DebugPrint("CCursor::SaveIntoUnderCursor - Screen NULL\n");
        return false;
    }
    const LockedSurface psoVirtual(screen->hsurfVirtual);
    if (!psoVirtual) {
        DebugPrint("Cannnot lock Virtual Screen bitmap\n");
        return false;
    }
    const LockedSurface psoUnder(UnderCursor);
    if (!psoUnder) {
        DebugPrint("Cannnot lock UnderCursor bitmap\n");
        return false;
    }
    isSaved_ = CopyBitsCut(psoUnder.Get(), psoVirtual.Get(), BoundsOf(Size()), CornerOf(rect_));
    return isSaved_;
}

void CCursor::RestoreFromUnderCursor(SURFOBJ* pso)
{
    if (!IsVisible())
        return;
    const Screen* const screen = ScreenOf(pso);
    if (!screen)
        return DebugPrint("CCursor::RestoreFromUnderCursor - Screen NULL\n");
    const LockedSurface psoVirtual(screen->hsurfVirtual);
    if (!psoVirtual)
        return DebugPrint("Cannnot lock Virtual Screen bitmap\n");
    const LockedSurface psoUnder(UnderCursor);
    if (!psoUnder)
        return DebugPrint("CCursor::RestoreFromUnderCursor => Cannnot lock UnderCursor bitmap\n");
    if (isSaved_ && IsOnScreenOf(pso)) // else the bitmap holds what was elsewhere
        CopyBitsCut(psoVirtual.Get(), psoUnder.Get(), rect_, {0, 0});
    isSaved_ = false;
}

void CCursor::ComposeColour(SURFOBJ* psoCursor, const RECTL& part, const BYTE* colourTable)
{
    const LockedSurface psoMask(mask_), psoColor(colour_);
    const PointerShape shape = {psoColor.Get(), xlate_, colourTable};
    if (psoCursor && psoColor && psoMask)
        BlendMasked(psoCursor, shape, *psoMask.Get(), part);
    else if (psoCursor && psoColor && !mask_ && psoColor->iBitmapFormat == BMF_32BPP)
        BlendAlpha(psoCursor, shape, part);
    else
        DebugPrint("hColorSurf->iBitmapFormat !!!!!!= BMP_32BPP\n");
}

void CCursor::ComposeMonochrome(SURFOBJ* psoCursor, const RECTL& part)
{
    const LockedSurface psoMask(mask_);
    if (!psoCursor || !psoMask)
        return;
    for (LONG y = part.top; y < part.bottom; ++y)
        for (LONG x = part.left; x < part.right; ++x) {
            const MaskBits bits = MaskAt(*psoMask.Get(), x, y);
            const RECTL pixel = {x, y, x + 1, y + 1};
            if (!bits.andBit)
                FillCut(psoCursor, pixel, bits.xorBit ? White : Black);
            else if (bits.xorBit)
                FillCut(psoCursor, pixel, Inverted);
        }
}

void CCursor::Draw(SURFOBJ* pso)
{
    if (!IsVisible())
        return;
    FollowFormatOf(pso);
    device_ = pso ? pso->dhpdev : nullptr;
    const bool saved = SaveIntoUnderCursor(pso);
    const Screen* const screen = ScreenOf(pso);
    const LockedSurface psoVirtual(screen ? screen->hsurfVirtual : nullptr);
    const LockedSurface psoCursor(Cursor);
    if (psoVirtual && psoCursor)
        CopyBitsCut(psoCursor.Get(), psoVirtual.Get(), BoundsOf(Size()), CornerOf(rect_));
    const RECTL part = PartOn(psoVirtual.Get(), rect_, Size());
    if (colour_)
        ComposeColour(psoCursor.Get(), part, screen ? screen->ZoomerList.colourTable : nullptr);
    else
        ComposeMonochrome(psoCursor.Get(), part);
    if (!screen)
        return DebugPrint("Error getting the hScreen\n");
    if (saved && psoVirtual && psoCursor) // else nothing could take it off again
        CopyBitsCut(psoVirtual.Get(), psoCursor.Get(), rect_, {0, 0});
}

} // namespace koru
