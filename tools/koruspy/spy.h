#pragma once

// Takes call records from Koru through korutap.sys into a record stream, until told to stop.

#include <functional>
#include <optional>
#include <ostream>
#include <span>

#include "client/control.h"
#include "packaging/korutap/korutap.h"

namespace koruspy {

// The reader's end of korutap.sys. Throws std::runtime_error when the module fails.
class Tap {
public:
    virtual ~Tap() = default;
    virtual korutap::EntryPoints EntryPoints() = 0;
    // Whole frames, as many as there are and fit; `room` has at least korutap::ReadRoom bytes. Answers their
    // size, 0 when there is nothing.
    virtual std::size_t Read(std::span<std::byte> room) = 0;
    virtual korutap::Statistics Statistics() = 0;
};

struct SpyReport {
    std::uint64_t records = 0; // written, empty ones included
    std::uint64_t empty = 0; // of calls whose record did not fit
    std::uint64_t missed = 0; // lost between those written, because they came faster than they were read
    std::uint64_t refused = 0; // that korutap could not keep
    std::optional<std::uint32_t> device; // the dhpdev of the first screen that was drawn on
};

// Called between reads; `idle` when the last one brought nothing, so that it may wait. False ends the capture.
using Pause = std::function<bool(bool idle)>;

// Records the calls of the mask into `stream`. However it ends, capture is off and Koru has no consumer then.
// Throws std::runtime_error with one line when the driver, the module or the stream fails.
SpyReport Spy(const koru::client::Control& koru, Tap& tap, std::uint32_t mask, std::ostream& stream,
              const Pause& pause);

} // namespace koruspy
