#pragma once

// Steers the driver. A session of a magnifier with text capture, from start to end:
//
//     bool MagnifyTopLeft(Transport transport, std::uint32_t dhpdev, const ConsumerFunctions& consumer)
//     {
//         const Control koru(std::move(transport));
//         if (!koru.Answers(Escape::Koru) || koru.InterfaceVersion() != 303)
//             return false;
//
//         // Records of text and blits, but not those of the top bar.
//         koru.Capture().Install(consumer);
//         koru.Capture().SetMask(MaskBit(CallType::TextOut) | MaskBit(CallType::BitBlt));
//         const auto bar = koru.DarkZones().Add(dhpdev, { 0, 0, 1024, 30 });
//         koru.Capture().On();
//
//         // A view of 100 x 80 pixels, three times as large, in the middle of the screen.
//         const auto zoomer = koru.Zoomers().Create();
//         if (!bar || !zoomer)
//             return false;
//         koru.Zoomers().SetFactor(*zoomer, 3);
//         koru.Zoomers().SetOriginalRect(*zoomer, { 0, 0, 100, 80 });
//         koru.Zoomers().SetZoomedRect(*zoomer, { 300, 200, 600, 440 });
//         koru.Zoomers().SetBehaviour(*zoomer, ZoomerBehaviour::Deferred);
//         koru.Zoomers().SetImproveFactor(*zoomer, 2);
//         koru.Zoomers().SetBorder(*zoomer, BorderLeft | BorderTop | BorderRight | BorderBottom);
//         koru.Zoomers().SetState(*zoomer, true);
//         koru.Zoomers().Update();
//
//         // ... and everything off again.
//         koru.Zoomers().Remove(*zoomer);
//         koru.DarkZones().Delete(dhpdev, *bar);
//         return koru.Capture().Off();
//     }
//
// Commands answer true when the driver says that it has done them; questions answer none when the escape
// was not answered. The driver answers 0 for what it does not know, so that a question about an unknown
// zoomer gives 0 unless said otherwise. A `dhpdev` names a device as records do.

#include "capture_control.h"
#include "zoomers.h"

namespace koru::client {

class Control {
public:
    explicit Control(Transport transport)
        : link_(std::move(transport))
    {
    }

    // Any escape's code may be asked for; codes not the driver's own are passed to the real driver.
    bool Answers(Escape escape) const;
    std::optional<std::uint16_t> InterfaceVersion() const; // 303
    // The surface that the engine draws on, an engine handle; 0 for an unknown device.
    std::optional<std::uint32_t> ScreenSurface(std::uint32_t dhpdev) const;
    // As the display chain manager asks it: whether capture is on. None when another driver answers.
    std::optional<bool> ChainAreYouActive() const;
    bool ChainExtension() const; // does nothing

    CaptureControl Capture() const { return CaptureControl(link_); }
    DarkZoneControl DarkZones() const { return DarkZoneControl(link_); }
    DarkIdControl DarkProcesses() const;
    DarkIdControl DarkIds() const;
    DarkSurfaceControl DarkSurfaces() const { return DarkSurfaceControl(link_); }
    CacheControl Caches() const { return CacheControl(link_); }

    ZoomerControl Zoomers() const { return ZoomerControl(link_); }
    ColorPairControl ColorPairs() const { return ColorPairControl(link_); }
    WiseSurfaceControl WiseSurface() const { return WiseSurfaceControl(link_); }

private:
    EscapeLink link_;
};

} // namespace koru::client
