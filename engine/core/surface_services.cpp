#include "engine/core/bitmaps.h"
#include "engine/core/device.h"
#include "engine/core/state.h"

using namespace engine;

namespace {

constexpr LONG LargestSide = 0x7FFFFFF;

bool IsSize(const SIZEL& size)
{
    return size.cx > 0 && size.cy > 0 && size.cx <= LargestSide && size.cy <= LargestSide;
}

PixelLayout LayoutWithoutDevice(ULONG format)
{
    return format == BMF_16BPP && LockedState()->fiveFiveFive ? PixelLayout::FiveFiveFive()
                                                              : PixelLayout::Default(format);
}

HSURF AddSurface(std::unique_ptr<Surface> surface)
{
    return surface ? LockedState()->surfaces.Add(std::move(surface))->hsurf : nullptr;
}

HSURF CreateManaged(USHORT type, DHSURF dhsurf, SIZEL size, ULONG format)
{
    if (LockedState()->faults.Fails(Request::CreateSurface) || !IsSize(size) || RowBytes(format, 1) == 0)
        return nullptr;
    auto surface = std::make_unique<Surface>();
    static_cast<SURFOBJ&>(*surface) = {};
    surface->layout = LayoutWithoutDevice(format);
    surface->dhsurf = dhsurf;
    surface->sizlBitmap = size;
    surface->iBitmapFormat = format;
    surface->iType = type;
    return AddSurface(std::move(surface));
}

// The driver learns at once, with no lock of the engine held, that its device bitmap is gone.
void TellDriver(Device* device, DHSURF dhsurf)
{
    if (!device)
        return;
    if (const auto function = device->Driver().Function<PFN_DrvDeleteDeviceBitmap>(INDEX_DrvDeleteDeviceBitmap))
        function(dhsurf);
}

const char* WhyNotDeleted(const Surface* surface)
{
    if (!surface)
        return "EngDeleteSurface: not a surface";
    if (surface->ofTheEngine)
        return "EngDeleteSurface: a bitmap of the engine's own";
    return surface->locks != 0 ? "EngDeleteSurface: the surface is locked" : nullptr;
}

} // namespace

extern "C" {

HBITMAP APIENTRY EngCreateBitmap(SIZEL sizl, LONG lWidth, ULONG iFormat, FLONG fl, void* pvBits)
{
    const ULONG least = RowBytes(iFormat, sizl.cx);
    if (LockedState()->faults.Fails(Request::CreateSurface) || !IsSize(sizl) || least == 0)
        return nullptr;
    if (lWidth < 0 || static_cast<ULONG>(lWidth) < least) {
        Engine::Current().Report("EngCreateBitmap: " + std::to_string(lWidth) + " bytes do not hold a row of "
                                 + std::to_string(least));
        return nullptr;
    }
    auto bitmap = NewBitmap(sizl, static_cast<ULONG>(lWidth), LayoutWithoutDevice(iFormat), fl, pvBits);
    return reinterpret_cast<HBITMAP>(AddSurface(std::move(bitmap)));
}

HSURF APIENTRY EngCreateDeviceSurface(DHSURF dhsurf, SIZEL sizl, ULONG iFormatCompat)
{
    return CreateManaged(STYPE_DEVICE, dhsurf, sizl, iFormatCompat);
}

HBITMAP APIENTRY EngCreateDeviceBitmap(DHSURF dhsurf, SIZEL sizl, ULONG iFormatCompat)
{
    return reinterpret_cast<HBITMAP>(CreateManaged(STYPE_DEVBITMAP, dhsurf, sizl, iFormatCompat));
}

BOOL APIENTRY EngAssociateSurface(HSURF hsurf, HDEV hdev, FLONG flHooks)
{
    if (LockedState()->faults.Fails(Request::Associate))
        return FALSE;
    Surface* const surface = FindSurface(hsurf);
    Device* const device = FindDevice(hdev);
    if (!surface || !device) {
        Engine::Current().Report(surface ? "EngAssociateSurface: not a device" : "EngAssociateSurface: not a surface");
        return FALSE;
    }
    surface->hdev = hdev;
    surface->dhpdev = device->Dhpdev();
    surface->device = device;
    surface->hooks = flHooks;
    if (surface->iBitmapFormat == device->Layout().iBitmapFormat)
        surface->layout = device->Layout();
    return TRUE;
}

SURFOBJ* APIENTRY EngLockSurface(HSURF hsurf)
{
    const LockedState state;
    if (state->faults.Fails(Request::Lock) || state->faults.IsLockRefused(hsurf))
        return nullptr;
    Surface* const surface = state->surfaces.Find(hsurf);
    if (surface)
        ++surface->locks;
    return surface;
}

void APIENTRY EngUnlockSurface(SURFOBJ* pso)
{
    if (!IsGiven(pso, "EngUnlockSurface: the surface"))
        return;
    const LockedState state;
    Surface* const surface = SurfaceBehind(pso);
    if (!surface)
        return;
    if (surface->locks == 0)
        Engine::Current().Report("EngUnlockSurface: the surface is not locked");
    else
        --surface->locks;
}

BOOL APIENTRY EngDeleteSurface(HSURF hsurf)
{
    Device* device = nullptr;
    DHSURF deviceBitmap = nullptr;
    {
        const LockedState state;
        Surface* const surface = state->surfaces.Find(hsurf);
        if (const char* const refusal = WhyNotDeleted(surface)) {
            Engine::Current().Report(refusal);
            return FALSE;
        }
        if (surface->iType == STYPE_DEVBITMAP) {
            device = surface->device;
            deviceBitmap = surface->dhsurf;
        }
        state->surfaces.Remove(surface);
    }
    TellDriver(device, deviceBitmap);
    return TRUE;
}

} // extern "C"
