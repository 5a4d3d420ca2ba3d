#include "capture/records.h"
#include "chain/module_loader.h"
#include "driver/debug_print.h"
#include "driver/pool.h"
#include "driver/record_flags.h"
#include "driver/screen_list.h"
#include "hooks/entry_points.h"
#include "hooks/hook_frame.h"
#include "platform/services.h"

namespace koru {

namespace {

    constexpr ULONG MostColours = 256;

    ULONG PaletteSizeOf(ULONG iBitmapFormat)
    {
        return iBitmapFormat == BMF_4BPP ? 16 : iBitmapFormat == BMF_8BPP ? 256 : 0;
    }

    void Store(Screen& screen, const BYTE* colours, ULONG first, ULONG count)
    {
        const ULONG size = PaletteSizeOf(screen.iBitmapFormat);
        for (ULONG i = 0; i < count && first < size && i < size - first; ++i) {
            BYTE* const entry = screen.PaletteCopy + 4 * (first + i);
            entry[0] = colours[4 * i];
            entry[1] = colours[4 * i + 1];
            entry[2] = colours[4 * i + 2];
            entry[3] = 0;
        }
    }

    // False when the palette has fewer colours than asked for; the buffer is then not given back.
    bool KeepCopy(Screen& screen, PALOBJ* ppalo, ULONG iStart, ULONG cColors)
    {
        auto* const colours = static_cast<ULONG*>(AllocateFromPool(MostColours * sizeof(ULONG)));
        if (!colours)
            return true;
        const ULONG wanted = cColors < MostColours ? cColors : MostColours;
        if (PALOBJ_cGetColors(ppalo, iStart, wanted, colours) < wanted)
            return false;
        Store(screen, reinterpret_cast<const BYTE*>(colours), iStart, wanted);
        FreeToPool(colours);
        return true;
    }

    bool KeepCopyOfPalette(DHPDEV dhpdev, PALOBJ* ppalo, ULONG iStart, ULONG cColors)
    {
        if (HookDepth != 0)
            return true;
        Screen* const screen = ScreenList::Find(dhpdev);
        if (screen && ppalo)
            return KeepCopy(*screen, ppalo, iStart, cColors);
        DebugPrint(screen ? "ppalo == NULL\n" : "I don't find the Screen \n");
        return true;
    }

} // namespace

BOOL APIENTRY DrvSetPalette(DHPDEV dhpdev, PALOBJ* ppalo, FLONG fl, ULONG iStart, ULONG cColors)
{
    SemaphoreHold hold;
    if (!KeepCopyOfPalette(dhpdev, ppalo, iStart, cColors)) {
        hold.LeaveAcquired();
        return FALSE;
    }
    const auto real = RealFunction<PFN_DrvSetPalette>(INDEX_DrvSetPalette);
    const BOOL result = real ? real(dhpdev, ppalo, fl, iStart, cColors) : FALSE;
    if (CaptureAllows(CALL_SETPALETTE))
        CaptureCall([&](BYTE* record,
                        ULONG room) { return ExpandDrvSetPalette(dhpdev, ppalo, fl, iStart, cColors, record, room); },
                    SetPaletteFlag);
    return result;
}

} // namespace koru
