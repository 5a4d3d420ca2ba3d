#pragma once

// The commands of the `koru` program. Each throws std::runtime_error with one line on bad input.

#include <optional>
#include <string>
#include <vector>

#include "client/zoomers.h"
#include "tools/session.h"

namespace tools {

struct PlayOptions {
    std::string image; // a koru.dll to play through; empty: the linked driver
    std::string out;
    bool quiet = false; // no table
};

// Brings a screen up, runs the session and leaves real-screen.png, virtual-screen.png, records.koru and
// records.jsonl in the folder. Prints a table of what was recorded and what was skipped.
void Play(const Session& session, const PlayOptions& options);

struct RecordsOptions {
    std::string path;
    bool json = false;
    bool noAddresses = false; // what differs between two runs of one session is left out of the JSON
    std::vector<std::string> calls; // names such as DrvBitBlt; empty: all
    std::optional<std::uint32_t> surface; // the target's hsurf
    std::optional<std::uint32_t> process; // identifier 0
    std::optional<RECTL> rectangle; // the call's rectangle meets it
};

// Prints a summary table, or a line of JSON per record. Damage is reported with its offset; the rest is
// read where the framing allows. Throws at the end when there was damage.
void ShowRecords(const RecordsOptions& options);

struct MagnifyOptions {
    std::string in; // PNG or BMP
    std::string out; // PNG
    std::string image;
    ZoomerSettings zoomer; // its rectangles follow from the picture
    ULONG depth = 32;
    std::vector<koru::client::ColorPair> colorPairs; // instead of the driver's own; empty: those
};

// One picture through one zoomer.
void Magnify(const MagnifyOptions& options);

} // namespace tools
