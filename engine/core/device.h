#pragma once

// A display device as the engine keeps it: a loaded display driver, the table of hooks that it gave,
// its PDEV and its primary surface.

#include <memory>
#include <string>
#include <vector>

#include "engine/core/engine.h"
#include "engine/core/surface.h"

namespace engine {

// A display driver: its image, loaded and enabled.
class DisplayDriver {
public:
    // Loads the image and calls DrvEnableDriver with this version and 12 bytes. On failure IsEnabled()
    // is false and Error() says why, in one line.
    explicit DisplayDriver(const std::u16string& image, ULONG engineVersion = DDI_DRIVER_VERSION_NT5_01);
    ~DisplayDriver(); // the table's disable entry, then the image goes
    DisplayDriver(const DisplayDriver&) = delete;
    DisplayDriver& operator=(const DisplayDriver&) = delete;
    bool IsEnabled() const { return enabled_; }
    const std::string& Error() const { return error_; }
    // As real engines do: the table's disable entry, if it has one, then DrvEnableDriver once more; the same
    // image, its globals as they were.
    bool EnableAgain();
    ULONG EngineVersion() const { return engineVersion_; }
    // What DrvGetModes lists: asked for the size, then for the data; under the name of the image, as engines
    // write it over dmDeviceName.
    std::vector<DEVMODEW> Modes() const;
    const DRVENABLEDATA& Table() const { return table_; }
    PFN Function(ULONG index) const; // null when the driver does not offer it
    template<class Pfn> Pfn Function(ULONG index) const { return reinterpret_cast<Pfn>(Function(index)); }

private:
    bool CallEnable();
    void CallDisable();

    HANDLE image_ = nullptr;
    std::u16string name_;
    PFN_DrvEnableDriver enableDriver_ = nullptr;
    DRVENABLEDATA table_ = {};
    ULONG engineVersion_;
    bool enabled_ = false;
    std::string error_;
};

struct Mode {
    ULONG width = 1024, height = 768;
    ULONG bitsPerPixel = 32; // dmBitsPerPel: 1, 4, 8, 15, 16, 24, 32
};

class Device {
public:
    explicit Device(DisplayDriver& driver);
    ~Device(); // Disable()
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    // DrvEnablePDEV, DrvCompletePDEV, DrvEnableSurface; an enabled device is disabled first. False, with Error(),
    // when the driver refuses.
    bool Enable(const Mode& mode);
    // DrvDisableSurface, DrvDisablePDEV, as far as it came.
    void Disable();
    // As a mode change does: swaps the engine's handles of two devices and tells both with DrvCompletePDEV.
    // The primary surfaces follow; surfaces that the driver made keep the handle they had.
    static void SwapHandles(Device& first, Device& second);
    BOOL AssertMode(bool enable); // FALSE when the driver does not offer it
    // DrvSynchronizeSurface of the primary surface or else DrvSynchronize, whichever is offered.
    void Synchronize(RECTL* prcl, FLONG fl = DSS_FLUSH_EVENT);
    const std::string& Error() const { return error_; }

    DisplayDriver& Driver() const { return driver_; }
    HDEV Handle() const { return hdev_; }
    DHPDEV Dhpdev() const { return dhpdev_; }
    HSURF Primary() const { return primary_; } // what DrvEnableSurface gave
    SURFOBJ* PrimarySurface() const; // locked for the device's lifetime; null when disabled
    // From the palette that the driver named in DEVINFO (MakePalette), else by the depth of the mode.
    const PixelLayout& Layout() const { return layout_; }
    const GDIINFO& Gdi() const { return gdi_; }
    const DEVINFO& Info() const { return info_; }

    // An off-screen bitmap of the device's layout: a device bitmap when the driver makes one, else an
    // engine bitmap. Deleted with DeleteBitmap.
    HSURF CreateCompatibleBitmap(SIZEL size);
    void DeleteBitmap(HSURF bitmap);

private:
    bool EnablePdev(const Mode& mode);
    bool EnablePrimary();
    bool Refused(const std::string& error);

    DisplayDriver& driver_;
    HDEV hdev_;
    DHPDEV dhpdev_ = nullptr;
    HSURF primary_ = nullptr;
    std::vector<Surface*> patterns_; // the hatches that DrvEnablePDEV is shown
    std::vector<HSURF> bitmaps_;
    PixelLayout layout_;
    GDIINFO gdi_ = {};
    DEVINFO info_ = {};
    std::string error_;
};

// Brings `device` to another mode as engines do: a second device is enabled beside it, the two change
// handles, the old one goes. False when the driver refuses; the device is then as it was.
bool ChangeMode(std::unique_ptr<Device>& device, const Mode& mode);

// The device of a handle, or null.
Device* FindDevice(HDEV hdev);

// A palette for DEVINFO's hpalDefault: how the stand-in's real driver tells the engine its pixel layout.
HPALETTE MakePalette(const PixelLayout& layout);

} // namespace engine
