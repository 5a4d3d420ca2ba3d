#include "engine/core/device.h"

#include <algorithm>
#include <cstring>

#include "engine/core/guards.h"
#include "engine/core/state.h"

namespace engine {

namespace {

    constexpr std::uintptr_t FirstHandle = 0xE1B00008, HandleStep = 0x1000;
    constexpr std::uintptr_t FirstPalette = 0x08000001;
    constexpr ULONG DmBitsPerPel = 0x40000, DmPelsWidth = 0x80000, DmPelsHeight = 0x100000, DmFrequency = 0x400000;
    constexpr WORD DevmodeVersion = 0x401;

    DEVMODEW DevmodeOf(const Mode& mode)
    {
        DEVMODEW devmode = {};
        std::copy_n(u"display", 7, devmode.dmDeviceName);
        devmode.dmSpecVersion = devmode.dmDriverVersion = DevmodeVersion;
        devmode.dmSize = sizeof(devmode);
        devmode.dmFields = DmBitsPerPel | DmPelsWidth | DmPelsHeight | DmFrequency;
        devmode.dmLogPixels = 96;
        devmode.dmBitsPerPel = mode.bitsPerPixel;
        devmode.dmPelsWidth = mode.width;
        devmode.dmPelsHeight = mode.height;
        devmode.dmDisplayFrequency = 60;
        return devmode;
    }

    PixelLayout LayoutOf(const Mode& mode)
    {
        switch (mode.bitsPerPixel) {
        case 1:
            return PixelLayout::Default(BMF_1BPP);
        case 4:
            return PixelLayout::Default(BMF_4BPP);
        case 8:
            return PixelLayout::Default(BMF_8BPP);
        case 15:
            return PixelLayout::FiveFiveFive();
        case 16:
            return PixelLayout::Default(BMF_16BPP);
        default:
            return PixelLayout::Default(mode.bitsPerPixel == 24 ? BMF_24BPP : BMF_32BPP);
        }
    }

    const PixelLayout* LayoutOfPalette(HPALETTE palette)
    {
        const LockedState state;
        const std::uintptr_t index = reinterpret_cast<std::uintptr_t>(palette) - FirstPalette;
        return index < state->palettes.size() ? &state->palettes[index] : nullptr;
    }

    // The oldest engines know a DEVINFO without its last member.
    ULONG DevinfoSize(ULONG engineVersion)
    {
        return engineVersion < DDI_DRIVER_VERSION_NT5 ? offsetof(DEVINFO, flGraphicsCaps2) : sizeof(DEVINFO);
    }

    constexpr LONG HatchSize = 8;

    Surface* MakeHatchPattern(ULONG hatch)
    {
        const Brush brush = Brush::Hatch(hatch, 0, 1);
        Surface* const pattern = MakeBitmap({HatchSize, HatchSize}, PixelLayout::Default(BMF_1BPP));
        for (LONG y = 0; y < HatchSize; ++y)
            for (LONG x = 0; x < HatchSize; ++x)
                pattern->SetPixel(x, y, brush.PixelAt(x, y));
        return pattern;
    }

    // A structure that a driver fills, with guards behind what it was told of it.
    template<class Structure> class Filled {
    public:
        explicit Filled(ULONG size)
            : bytes_(size + Guard, GuardByte)
            , size_(size)
        {
            Fill(bytes_.data(), size, 0);
        }
        template<class Pointer> Pointer* As() { return reinterpret_cast<Pointer*>(bytes_.data()); }
        Structure Take(const char* name) const
        {
            if (!IsFilled(bytes_.data() + size_, Guard, GuardByte))
                Engine::Current().Report(std::string("DrvEnablePDEV: written behind ") + name);
            Structure structure = {};
            std::memcpy(&structure, bytes_.data(), size_);
            return structure;
        }

    private:
        static constexpr std::size_t Guard = 32;
        std::vector<BYTE> bytes_;
        ULONG size_;
    };

} // namespace

Device::Device(DisplayDriver& driver)
    : driver_(driver)
{
    const LockedState state;
    hdev_ = reinterpret_cast<HDEV>(FirstHandle + HandleStep * state->deviceHandles++);
    state->devices.push_back(this);
    for (ULONG hatch = HS_HORIZONTAL; hatch < HS_DDI_MAX; ++hatch)
        patterns_.push_back(MakeHatchPattern(hatch));
}

Device::~Device()
{
    Disable();
    for (Surface* const pattern : patterns_)
        DestroyBitmap(pattern);
    const LockedState state;
    state->surfaces.ForgetDevice(this);
    std::erase(state->devices, this);
}

bool Device::Refused(const std::string& error)
{
    Disable();
    error_ = error;
    return false;
}

bool Device::Enable(const Mode& mode)
{
    Disable();
    error_.clear();
    return EnablePdev(mode) && EnablePrimary();
}

bool Device::EnablePdev(const Mode& mode)
{
    const auto enablePdev = driver_.Function<PFN_DrvEnablePDEV>(INDEX_DrvEnablePDEV);
    const auto completePdev = driver_.Function<PFN_DrvCompletePDEV>(INDEX_DrvCompletePDEV);
    if (!enablePdev || !completePdev)
        return Refused("the driver has no DrvEnablePDEV or DrvCompletePDEV");
    DEVMODEW devmode = DevmodeOf(mode);
    WCHAR logAddress[] = u"", deviceName[] = u"Display";
    HSURF patterns[HS_DDI_MAX];
    std::transform(patterns_.begin(), patterns_.end(), patterns, [](const Surface* pattern) { return pattern->hsurf; });
    const ULONG infoSize = DevinfoSize(driver_.EngineVersion());
    Filled<GDIINFO> gdi(sizeof(GDIINFO));
    Filled<DEVINFO> info(infoSize);
    dhpdev_ = enablePdev(&devmode, logAddress, HS_DDI_MAX, patterns, sizeof(GDIINFO), gdi.As<ULONG>(), infoSize,
                         info.As<DEVINFO>(), hdev_, deviceName, DriverHandle);
    gdi_ = gdi.Take("GDIINFO");
    info_ = info.Take("DEVINFO");
    if (!dhpdev_)
        return Refused("DrvEnablePDEV refuses");
    const PixelLayout* const named = LayoutOfPalette(info_.hpalDefault);
    layout_ = named ? *named : LayoutOf(mode);
    completePdev(dhpdev_, hdev_);
    return true;
}

bool Device::EnablePrimary()
{
    const auto enableSurface = driver_.Function<PFN_DrvEnableSurface>(INDEX_DrvEnableSurface);
    primary_ = enableSurface ? enableSurface(dhpdev_) : nullptr;
    const Surface* const surface = FindSurface(primary_);
    if (!surface) {
        const bool refused = !primary_;
        primary_ = nullptr;
        return Refused(refused ? "DrvEnableSurface refuses" : "DrvEnableSurface gives a handle of no surface");
    }
    if (surface->hdev != hdev_)
        Engine::Current().Report("DrvEnableSurface: the surface is not associated with the device");
    return true;
}

void Device::Disable()
{
    while (!bitmaps_.empty())
        DeleteBitmap(bitmaps_.back());
    if (primary_) {
        primary_ = nullptr;
        if (const auto disableSurface = driver_.Function<PFN_DrvDisableSurface>(INDEX_DrvDisableSurface))
            disableSurface(dhpdev_);
    }
    if (dhpdev_) {
        if (const auto disablePdev = driver_.Function<PFN_DrvDisablePDEV>(INDEX_DrvDisablePDEV))
            disablePdev(dhpdev_);
        dhpdev_ = nullptr;
    }
}

void Device::SwapHandles(Device& first, Device& second)
{
    std::swap(first.hdev_, second.hdev_);
    for (Device* const device : {&first, &second}) {
        if (SURFOBJ* const primary = device->PrimarySurface())
            primary->hdev = device->hdev_;
        const auto completePdev = device->driver_.Function<PFN_DrvCompletePDEV>(INDEX_DrvCompletePDEV);
        if (completePdev && device->dhpdev_)
            completePdev(device->dhpdev_, device->hdev_);
    }
}

BOOL Device::AssertMode(bool enable)
{
    const auto assertMode = driver_.Function<PFN_DrvAssertMode>(INDEX_DrvAssertMode);
    return assertMode ? assertMode(dhpdev_, enable ? TRUE : FALSE) : FALSE;
}

void Device::Synchronize(RECTL* prcl, FLONG fl)
{
    if (const auto surface = driver_.Function<PFN_DrvSynchronizeSurface>(INDEX_DrvSynchronizeSurface))
        surface(PrimarySurface(), prcl, fl);
    else if (const auto whole = driver_.Function<PFN_DrvSynchronize>(INDEX_DrvSynchronize))
        whole(dhpdev_, prcl);
}

SURFOBJ* Device::PrimarySurface() const
{
    return FindSurface(primary_);
}

HSURF Device::CreateCompatibleBitmap(SIZEL size)
{
    const auto create = driver_.Function<PFN_DrvCreateDeviceBitmap>(INDEX_DrvCreateDeviceBitmap);
    HSURF bitmap = create ? reinterpret_cast<HSURF>(create(dhpdev_, size, layout_.iBitmapFormat)) : nullptr;
    if (bitmap && !FindSurface(bitmap)) {
        Engine::Current().Report("DrvCreateDeviceBitmap: gives a handle of no surface");
        bitmap = nullptr;
    }
    if (!bitmap) {
        const Surface* const ordinary = MakeBitmap(size, layout_);
        bitmap = ordinary ? ordinary->hsurf : nullptr;
    }
    if (bitmap)
        bitmaps_.push_back(bitmap);
    return bitmap;
}

void Device::DeleteBitmap(HSURF bitmap)
{
    std::erase(bitmaps_, bitmap);
    Surface* const surface = FindSurface(bitmap);
    if (surface && surface->ofTheEngine)
        DestroyBitmap(surface);
    else if (surface)
        EngDeleteSurface(bitmap);
}

bool ChangeMode(std::unique_ptr<Device>& device, const Mode& mode)
{
    device->AssertMode(false);
    auto next = std::make_unique<Device>(device->Driver());
    if (!next->Enable(mode)) {
        device->AssertMode(true);
        return false;
    }
    Device::SwapHandles(*device, *next);
    device = std::move(next); // the old one is disabled here
    device->AssertMode(true);
    return true;
}

Device* FindDevice(HDEV hdev)
{
    const LockedState state;
    const auto found = std::find_if(state->devices.begin(), state->devices.end(),
                                    [hdev](const Device* device) { return device->Handle() == hdev; });
    return found == state->devices.end() ? nullptr : *found;
}

HPALETTE MakePalette(const PixelLayout& layout)
{
    const LockedState state;
    state->palettes.push_back(layout);
    return reinterpret_cast<HPALETTE>(FirstPalette + state->palettes.size() - 1);
}

} // namespace engine
