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
    if (isSaved_) // else the bitmap holds what was elsewhere
        CopyBitsCut(psoVirtual.Get(), psoUnder.Get(), rect_, {0, 0});
    isSaved_ = false;
}

void CCursor::ComposeColour(SURFOBJ* psoCursor, const BYTE* colourTable)
{
    const LockedSurface psoMask(mask_), psoColor(colour_);
    const PointerShape shape = {psoColor.Get(), xlate_, colourTable};
    const RECTL whole = BoundsOf(Size());
    if (psoCursor && psoColor && psoMask)
        BlendMasked(psoCursor, shape, *psoMask.Get(), whole);
    else if (psoCursor && psoColor && !mask_ && psoColor->iBitmapFormat == BMF_32BPP)
        BlendAlpha(psoCursor, shape, whole);
    else
        DebugPrint("hColorSurf->iBitmapFormat !!!!!!= BMP_32BPP\n");
}

void CCursor::ComposeMonochrome(SURFOBJ* psoCursor)
{
    const LockedSurface psoMask(mask_);
    if (!psoCursor || !psoMask)
        return;
    const SIZEL size = Size();
    for (LONG y = 0; y < size.cy; ++y)
        for (LONG x = 0; x < size.cx; ++x) {
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
    const bool saved = SaveIntoUnderCursor(pso);
    const Screen* const screen = ScreenOf(pso);
    const LockedSurface psoVirtual(screen ? screen->hsurfVirtual : nullptr);
    const LockedSurface psoCursor(Cursor);
    if (psoVirtual && psoCursor)
        CopyBitsCut(psoCursor.Get(), psoVirtual.Get(), BoundsOf(Size()), CornerOf(rect_));
    if (colour_)
        ComposeColour(psoCursor.Get(), screen ? screen->ZoomerList.colourTable : nullptr);
    else
        ComposeMonochrome(psoCursor.Get());
    if (!screen)
        return DebugPrint("Error getting the hScreen\n");
    if (saved && psoVirtual && psoCursor) // else nothing could take it off again
        CopyBitsCut(psoVirtual.Get(), psoCursor.Get(), rect_, {0, 0});
}

} // namespace koru
