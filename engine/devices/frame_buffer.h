#pragma once

// The stand-in's real display driver: a frame buffer whose primary surface is an engine bitmap, with
// every entry point that the chain in front of it may forward to.

#include <set>
#include <string>
#include <vector>

#include "engine/core/surface.h"

namespace engine {

struct FrameBufferOptions {
    bool fiveFiveFive = false; // what a requested depth of 16 means; 15 is always 5-5-5
    LONG lDelta = 0; // 0: rows padded to 4 bytes
    std::set<ULONG> missing; // INDEX_Drv numbers that it does not offer
    bool exportsDisableDriver = false; // as an export, beside or instead of its table entry
    bool refuses = false; // DrvEnableDriver answers FALSE
    bool offersEnableDriver = true; // the export exists at all
    ULONG refuseAt = 0xFFFFFFFF; // the INDEX_Drv number of a call that fails
};

// Registers the driver under this name ("framebuf") with the current engine. Registering it again, under
// whatever name, starts it anew: there is one set of options, devices and recorded calls.
void RegisterFrameBuffer(const FrameBufferOptions& options = {}, const std::u16string& name = u"framebuf");

// One call that reached the real driver, in order; arguments as numbers in the interface's order.
struct RealCall {
    ULONG index; // INDEX_Drv*
    std::vector<ULONG> arguments;
};
const std::vector<RealCall>& RealCalls();
void ForgetRealCalls();
// How its DrvEnableDriver was last called. Not among the RealCalls, as it has no number.
struct RealEnable {
    ULONG engineVersion = 0, size = 0, times = 0;
};
const RealEnable& LastRealEnable();
void AnswerEscapesWith(
    ULONG result); // 1 until told; what its DrvEscape returns; it also writes "REAL" to a 4-byte output

// The bitmap on the glass of a PDEV, or null. This is the RealScreen of the driver in front. The palette of
// its layout follows DrvSetPalette.
Surface* FrameBufferPicture(DHPDEV dhpdev);

} // namespace engine
