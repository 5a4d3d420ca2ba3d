#pragma once

// Files as drawings: a metafile or a picture, put on a device or a bitmap.

#include "engine/core/device.h"
#include "engine/gdi/metafile_player.h"

namespace engine::gdi {

struct PlayOptions {
    bool actualSize = false; // a pixel of the drawing's own device a pixel; else as large as fits, in its shape
    bool whitePage = true; // paint the rectangle first
};

// Plays a metafile, or draws a PNG or BMP picture (at its own size, upper left), into `where` of the primary
// surface. False with one line in `error` when the file cannot be read or breaks off; what came before stays.
bool PlayFile(Device& device, const std::string& path, const RECTL& where, PlayReport& report, std::string& error,
              const PlayOptions& options = {});
bool PlayFile(Surface& surface, const std::string& path, const RECTL& where, PlayReport& report, std::string& error,
              const PlayOptions& options = {});

// The same with a file's bytes; `name` is for messages.
bool PlayBytes(const DrawingTarget& target, Bytes file, const std::string& name, PlayReport& report, std::string& error,
               const PlayOptions& options = {});

} // namespace engine::gdi
