#include "hooks/device_bitmaps.h"

#include "capture/capture_call.h"
#include "capture/records.h"
#include "chain/module_loader.h"
#include "driver/debug_print.h"
#include "driver/locked_surface.h"
#include "driver/nested_drawing.h"
#include "driver/pool.h"
#include "driver/record_flags.h"
#include "driver/screen_list.h"
#include "driver/semaphore_hold.h"
#include "hooks/entry_points.h"
#include "magnifier/stride.h"
#include "platform/runtime.h"

namespace koru {

namespace {

    DeviceBitmap* FindFreeEntry(const Screen& screen)
    {
        for (ULONG i = 0; i < screen.DeviceBitmapCount; ++i)
            if (!screen.DeviceBitmaps[i].hbmDevice)
                return &screen.DeviceBitmaps[i];
        return nullptr;
    }

    DeviceBitmap* AppendEntry(Screen& screen)
    {
        const ULONG count = screen.DeviceBitmapCount;
        auto* const grown = static_cast<DeviceBitmap*>(AllocateFromPool((count + 1) * sizeof(DeviceBitmap)));
        if (!grown)
            return nullptr;
        if (screen.DeviceBitmaps)
            memcpy(grown, screen.DeviceBitmaps, count * sizeof(DeviceBitmap));
        FreeToPool(screen.DeviceBitmaps);
        screen.DeviceBitmaps = grown;
        screen.DeviceBitmapCount = count + 1;
        return &grown[count];
    }

    // Rows are as long as the screen's, whatever the bitmap's width, unless it is wider.
    HSURF CreateBacking(const Screen& screen, const SIZEL& sizl, ULONG iFormat)
    {
        if (iFormat != screen.iBitmapFormat) {
            DebugPrint("DrvCreateDeviceBitmap: Bitmap format is not supported: %d\n", iFormat);
            return nullptr;
        }
        const LONG stride = StrideHoldingRow(screen.lDelta, sizl.cx, iFormat);
        return SurfaceOf(EngCreateBitmap(sizl, stride, iFormat, BMF_NOZEROINIT, nullptr));
    }

    // False with the message of the step that failed; what was made is in the entry.
    bool Fill(DeviceBitmap& entry, const Screen& screen, const SIZEL& sizl, ULONG iFormat)
    {
        entry.hsurfBacking = CreateBacking(screen, sizl, iFormat);
        if (!entry.hsurfBacking) {
            DebugPrintPiece("The device created bitmap is NULL.\n");
            return false;
        }
        if (!EngAssociateSurface(entry.hsurfBacking, screen.hdev, HOOK_SYNCHRONIZEACCESS)) {
            DebugPrintPiece("CreateDeviceBitmap: first AssociateSurface failed\n");
            return false;
        }
        entry.hbmDevice = SurfaceOf(EngCreateDeviceBitmap(DhsurfOf(entry.hsurfBacking), sizl, iFormat));
        const FLONG hooks = ModuleLoader.HookFlags() | HOOK_SYNCHRONIZEACCESS;
        if (entry.hbmDevice && EngAssociateSurface(entry.hbmDevice, screen.hdev, hooks))
            return true;
        DebugPrintPiece("CreateDeviceBitmap: second AssociateSurface failed\n");
        return false;
    }

    // Deleting the device bitmap makes the engine call DrvDeleteDeviceBitmap, which deletes the backing
    // bitmap and frees the entry; without a device bitmap it is still there.
    void Empty(DeviceBitmap& entry)
    {
        const NestedDrawing nested;
        if (entry.hbmDevice)
            EngDeleteSurface(entry.hbmDevice);
        if (entry.hsurfBacking)
            EngDeleteSurface(entry.hsurfBacking);
        entry = {};
    }

    HBITMAP CreateDeviceBitmap(Screen& screen, const SIZEL& sizl, ULONG iFormat)
    {
        DeviceBitmap* entry = FindFreeEntry(screen);
        if (!entry)
            entry = AppendEntry(screen);
        if (!entry)
            return nullptr;
        if (!Fill(*entry, screen, sizl, iFormat))
            Empty(*entry);
        return reinterpret_cast<HBITMAP>(entry->hbmDevice);
    }

    DeviceBitmap* FindByBacking(const Screen& screen, HSURF backing)
    {
        for (ULONG i = screen.DeviceBitmapCount; i-- > 0;)
            if (screen.DeviceBitmaps[i].hsurfBacking == backing)
                return &screen.DeviceBitmaps[i];
        return nullptr;
    }

    bool StillLocks(HSURF surface)
    {
        return static_cast<bool>(LockedSurface(surface));
    }

    // The device bitmap's own handle is the engine's to delete.
    void DropBacking(const Screen& screen, HSURF backing)
    {
        DeviceBitmap* const entry = FindByBacking(screen, backing);
        if (!entry) {
            DebugPrint("Error the bitmap to delete was not found.\n");
            return;
        }
        if (StillLocks(backing))
            EngDeleteSurface(backing);
        *entry = {};
    }

} // namespace

HSURF FindBacking(const Screen& screen, HBITMAP hbmDevice)
{
    for (ULONG i = 0; i < screen.DeviceBitmapCount; ++i)
        if (screen.DeviceBitmaps[i].hbmDevice == SurfaceOf(hbmDevice))
            return screen.DeviceBitmaps[i].hsurfBacking;
    return nullptr;
}

HBITMAP APIENTRY DrvCreateDeviceBitmap(DHPDEV dhpdev, SIZEL sizl, ULONG iFormat)
{
    const SemaphoreHold hold;
    Screen* const screen = ScreenList::Find(dhpdev);
    if (!screen)
        return nullptr;
    const HBITMAP result = CreateDeviceBitmap(*screen, sizl, iFormat);
    if (CaptureAllows(CALL_CREATEDEVICEBITMAP))
        CaptureCall(
            [&](BYTE* record, ULONG room) {
                const HSURF backing = result ? FindBacking(*screen, result) : nullptr;
                return ExpandDrvCreateDeviceBitmap(dhpdev, sizl, iFormat, result, backing, record, room);
            },
            DeviceBitmapFlag);
    return result;
}

void APIENTRY DrvDeleteDeviceBitmap(DHSURF dhsurf)
{
    const SemaphoreHold hold;
    const HSURF backing = SurfaceOf(dhsurf);
    LockedSurface locked(backing);
    if (!locked)
        return;
    const Screen* const screen = ScreenList::Find(locked->dhpdev);
    locked.Unlock();
    if (screen)
        DropBacking(*screen, backing);
    if (CaptureAllows(CALL_DELETEDEVICEBITMAP))
        CaptureCall([&](BYTE* record, ULONG room) { return ExpandDrvDeleteDeviceBitmap(dhsurf, record, room); },
                    DeviceBitmapFlag);
}

} // namespace koru
