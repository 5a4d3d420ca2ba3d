#pragma once

// A machine with the driver under test: engine, chain manager, frame-buffer driver, one enabled screen,
// and a client's consumer that keeps every record. The driver is reached through its hook table alone,
// so the same tests run on the linked driver and on koru.dll.

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/core/calls.h"
#include "engine/core/device.h"
#include "engine/core/engine.h"
#include "engine/core/surface.h"
#include "engine/devices/chain_manager.h"
#include "engine/devices/frame_buffer.h"
#include "engine/loader/seams.h"

namespace conformance {

constexpr ULONG KoruEscape = 0x490914;
constexpr ULONG ZoomEscape = 6514;

struct SubmittedRecord {
    LONG flag;
    ULONG length;
    std::vector<BYTE> bytes; // `length` of them

    ULONG Word(ULONG offset) const; // 0xDEADBEEF behind the end
    ULONG CallType() const { return Word(4); }
};

struct Setup {
    ULONG engineVersion = DDI_DRIVER_VERSION_NT5_01;
    engine::Mode mode = {64, 48, 32};
    std::optional<std::string> options; // the content of KORU.ini
    engine::FrameBufferOptions frameBuffer;
    engine::ChainAnswer chain;
    bool enableDevice = true;
    bool installConsumer = true; // with every bit of the call mask set afterwards
};

class Session {
public:
    explicit Session(const Setup& setup = {});
    // Disables the device; a violation seen by the engine fails the test.
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    static Session& Current();

    engine::Engine& Engine() { return *engine_; }
    engine::DisplayDriver& Driver() { return *driver_; }
    engine::Device& Device() { return *device_; }
    template<class Pfn> Pfn Hook(ULONG index) { return driver_->Function<Pfn>(index); }

    SURFOBJ* Screen() { return device_->PrimarySurface(); } // the device surface
    engine::Surface* Virtual(); // the bitmaps behind it and on the glass
    engine::Surface* Real();
    ULONG DhpdevNumber() const;

    // Escapes through DrvEscape on the device surface; words in and out. The output starts as `out` and
    // holds what the driver left there.
    ULONG Escape(ULONG code, const std::vector<ULONG>& in, std::vector<ULONG>& out);
    ULONG Escape(ULONG code, const std::vector<ULONG>& in); // output word 0 (0xDEADBEEF when not written)
    ULONG Command(ULONG subCommand, ULONG word1 = 0, ULONG word2 = 0); // KORU_ESCAPE with the device in word 5
    ULONG AddDarkZone(const RECTL& zone);
    // KORU_ZOOM_ESCAPE: the zoomer's ID, A, B, C and the four values.
    ULONG Zoom(ULONG code, ULONG id = 0, const RECTL& values = {}, ULONG a = 0, ULONG b = 0, ULONG c = 0);
    void InstallConsumer(ULONG qcAnswer = 1);
    void SetCaptureMask(ULONG mask) { Command(57, mask); }

    // What the consumer was called with, in order.
    std::vector<SubmittedRecord> records;
    std::vector<LONG> selectorsAsked; // of GSD
    ULONG identifiers[2] = {1000, 2000}; // what GSD answers
    ULONG qcCalls = 0, dsfCalls = 0, qdCalls = 0;
    ULONG qcAnswer = 1;

    // The only record; fails the test when there is not exactly one.
    SubmittedRecord TakeOnlyRecord();

    bool expectViolations = false; // the test looks at them itself

private:
    std::unique_ptr<engine::Engine> engine_;
    std::unique_ptr<engine::DisplayDriver> driver_;
    std::unique_ptr<engine::Device> device_;
    engine::Seams consumer_; // its functions, as the driver calls them
};

// Pictures of small bitmaps as text: a character per pixel, '.' for pixel 0, rows joined by line ends.
// `letters` maps pixel values to characters; others show as '?'.
std::string PictureOf(const engine::Surface& bitmap, const RECTL& part,
                      const std::vector<std::pair<ULONG, char>>& letters);

// Whether all pixels agree; on failure names the first pixel that differs.
testing::AssertionResult SamePixels(const engine::Surface& first, const engine::Surface& second);

} // namespace conformance
