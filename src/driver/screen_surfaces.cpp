#include "driver/screen_surfaces.h"

#include "chain/module_loader.h"
#include "driver/locked_surface.h"
#include "magnifier/bitmaps.h"
#include "magnifier/stride.h"

namespace koru {

namespace {

    HSURF CreateVirtualScreen(const SURFOBJ& real)
    {
        const LONG stride = StrideHoldingRow(real.lDelta, real.sizlBitmap.cx, real.iBitmapFormat);
        return SurfaceOf(EngCreateBitmap(real.sizlBitmap, stride, real.iBitmapFormat, BMF_TOPDOWN, nullptr));
    }

    // The VirtualScreen's handle goes into the device surface as its dhsurf: a hook finds the pixels
    // behind any SURFOBJ of the device surface by locking that.
    HSURF CreateDeviceSurface(const Screen& screen, const SURFOBJ& real)
    {
        const HSURF device = EngCreateDeviceSurface(DhsurfOf(screen.hsurfVirtual), real.sizlBitmap, real.iBitmapFormat);
        if (!device || !EngAssociateSurface(screen.hsurfVirtual, screen.hdev, HOOK_SYNCHRONIZEACCESS))
            return nullptr;
        const FLONG hooks = ModuleLoader.HookFlags() | HOOK_SYNCHRONIZEACCESS;
        return EngAssociateSurface(device, screen.hdev, hooks) ? device : nullptr;
    }

} // namespace

HSURF BuildScreenSurfaces(Screen& screen, HSURF hsurfReal)
{
    // What was not disabled in between stays: the engine may still draw on its device surface, and the
    // VirtualScreen behind that has to outlive it.
    screen.hsurfDevice = nullptr;
    screen.hsurfReal = hsurfReal;
    const LockedSurface real(hsurfReal);
    if (!real)
        return nullptr;
    screen.lDelta = real->lDelta;
    screen.iBitmapFormat = real->iBitmapFormat;
    screen.ZoomerList.Initialise(static_cast<ULONG>(real->sizlBitmap.cx), static_cast<ULONG>(real->sizlBitmap.cy),
                                 real->iBitmapFormat, real->lDelta);
    screen.hsurfVirtual = CreateVirtualScreen(*real.Get());
    if (screen.hsurfVirtual)
        screen.hsurfDevice = CreateDeviceSurface(screen, *real.Get());
    return screen.hsurfDevice;
}

void DeleteScreenSurfaces(Screen& screen)
{
    screen.ZoomerList.Release();
    DropBitmap(screen.hsurfVirtual);
    DropBitmap(screen.hsurfDevice);
}

} // namespace koru
