#pragma once

// The modes of the frame-buffer driver and what it tells the engine about them.

#include <vector>

#include "engine/core/objects.h"

namespace engine {

struct FrameBufferMode {
    ULONG width = 0, height = 0, bitsPerPixel = 0;
    PixelLayout layout;
};

// The mode that a DEVMODEW asks for; false when there is no such mode.
bool ChooseMode(const DEVMODEW& devmode, bool fiveFiveFive, FrameBufferMode& mode);

std::vector<DEVMODEW> ListedModes();
GDIINFO DescribeDevice(const FrameBufferMode& mode);
DEVINFO DescribeGraphics(const FrameBufferMode& mode);

} // namespace engine
