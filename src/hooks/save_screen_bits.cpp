#include "capture/records.h"
#include "driver/debug_print.h"
#include "driver/handles.h"
#include "driver/locked_surface.h"
#include "driver/nested_drawing.h"
#include "driver/record_flags.h"
#include "driver/screen_list.h"
#include "hooks/cursor_exclusion.h"
#include "hooks/entry_points.h"
#include "hooks/hook_frame.h"
#include "magnifier/bitmaps.h"
#include "magnifier/blits.h"
#include "magnifier/timed_update.h"

namespace koru {

namespace {

    HSURF SavedBits(ULONG ident)
    {
        return reinterpret_cast<HSURF>(ident);
    }

    void DeleteBits(HSURF saved)
    {
        if (saved)
            EngDeleteSurface(saved);
    }

    // One column and one row more than are saved. Null for a reversed rectangle.
    HSURF CreateBitmapFor(const Screen& screen, const RECTL& rectangle)
    {
        const LONGLONG width = LONGLONG{rectangle.right} - rectangle.left + 1;
        const LONGLONG height = LONGLONG{rectangle.bottom} - rectangle.top + 1;
        const LONGLONG stride = (BitsPerPixel(screen.iBitmapFormat) * width + 7) / 8;
        constexpr LONGLONG largest = 0x7FFFFFFF;
        if (width <= 0 || height <= 0 || width > largest || height > largest || stride > largest)
            return nullptr;
        const SIZEL size = {static_cast<LONG>(width), static_cast<LONG>(height)};
        return SurfaceOf(EngCreateBitmap(size, static_cast<LONG>(stride), screen.iBitmapFormat, BMF_TOPDOWN, nullptr));
    }

    bool CopyToBitmap(const Screen& screen, const RECTL& rectangle, HSURF saved)
    {
        const LockedSurface screenBits(screen.hsurfVirtual);
        const LockedSurface bitmap(saved);
        if (!screenBits || !bitmap)
            return false;
        const RECTL target = {0, 0, rectangle.right - rectangle.left, rectangle.bottom - rectangle.top};
        return CopyBitsCut(bitmap.Get(), screenBits.Get(), target, {rectangle.left, rectangle.top}) != FALSE;
    }

    ULONG Save(const Screen& screen, const RECTL* prcl)
    {
        const HSURF saved = prcl ? CreateBitmapFor(screen, *prcl) : nullptr;
        if (saved && CopyToBitmap(screen, *prcl, saved))
            return NumberOf(saved);
        DeleteBits(saved);
        DebugPrint("SaveScreenRect Error, there are not memory enough.\n");
        return 0;
    }

    bool CopyBack(const Screen& screen, const RECTL& rectangle, HSURF saved)
    {
        const LockedSurface screenBits(screen.hsurfVirtual);
        const LockedSurface bitmap(saved);
        if (!screenBits || !bitmap)
            return false;
        CopyBitsCut(screenBits.Get(), bitmap.Get(), rectangle, {0, 0});
        return true;
    }

    // The work of one mode, with the cursor off the rectangle. The result of the call so far.
    ULONG SaveOrCopyBack(const Screen& screen, ULONG iMode, HSURF saved, const RECTL* prcl)
    {
        switch (iMode) {
        case SS_SAVE:
            return Save(screen, prcl);
        case SS_RESTORE:
            return saved && (!prcl || CopyBack(screen, *prcl, saved));
        case SS_FREE:
            return 1;
        default:
            return 0;
        }
    }

    // The cursor is back before the rectangle is shown, or it would vanish from the RealScreen.
    ULONG RunSave(Screen& screen, SURFOBJ* pso, ULONG iMode, HSURF saved, const RECTL* prcl)
    {
        const NestedDrawing nested;
        ULONG result = 0;
        {
            const CursorExclusion exclusion(pso, prcl, nullptr, nullptr);
            result = SaveOrCopyBack(screen, iMode, saved, prcl);
        }
        if (iMode == SS_RESTORE && result != 0 && prcl)
            result = ShowOnRealScreen(screen, nullptr, *prcl);
        if (iMode == SS_RESTORE || iMode == SS_FREE)
            DeleteBits(saved);
        return result;
    }

} // namespace

ULONG APIENTRY DrvSaveScreenBits(SURFOBJ* pso, ULONG iMode, ULONG ident, RECTL* prcl)
{
    const SemaphoreHold hold;
    Screen* const screen = pso ? ScreenList::Find(pso->dhpdev) : nullptr;
    const bool visible = IsVisible(screen, prcl, CALL_SAVESCREENBITS);
    const ULONG result = screen ? RunSave(*screen, pso, iMode, SavedBits(ident), prcl) : 0;
    const LONGLONG now = CaptureAllows(CALL_SAVESCREENBITS, pso, visible)
        ? CaptureCall([&](BYTE* record,
                          ULONG room) { return ExpandDrvScreenBits(pso, iMode, ident, prcl, result, record, room); },
                      SaveScreenBitsFlag)
        : ReadCounter();
    UpdateIfDue(HookDepth == 0 ? screen : nullptr, now);
    return result;
}

} // namespace koru
