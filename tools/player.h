#pragma once

// Runs the steps of a session on a machine.

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "client/control.h"
#include "tools/machine.h"
#include "tools/session.h"

namespace tools {

class Player {
public:
    // `machine` must outlive the player.
    explicit Player(Machine& machine);

    // Throws std::runtime_error for a drawing that cannot be played and a command that the driver refuses.
    void Run(const Session& session);

    // Metafile records by name: how often each was left out, over all drawings.
    const std::map<std::string, unsigned>& Skipped() const { return skipped_; }
    std::size_t DrawingsPlayed() const { return played_; }

private:
    void Do(const PlayStep& step);
    void Do(const ZoomerStep& step);
    void Do(const CaptureStep& step);
    void Do(const DarkZoneStep& step);
    void Do(const OverlayStep& step);
    void Do(const PointerStep& step);
    void Do(const UpdateStep&);
    void Do(const RepaintStep&);
    void Do(const FlushStep&);

    // The client's own bitmap of the screen's size with the drawing in `area`; it is selected for the escapes
    // that `use` sends.
    void WithClientBitmap(const std::string& path, const RECTL& area, const std::function<bool()>& use);

    Machine& machine_;
    koru::client::Control control_;
    std::vector<koru::client::ZoomerId> zoomers_;
    std::map<std::string, unsigned> skipped_;
    std::size_t played_ = 0;
};

} // namespace tools
