#pragma once

// A display driver that draws nothing and notes each drawing call with all its arguments, one line each:
//     LineTo (1,2)-(9,2) in (1,2,10,3) brush 0 mix D0D clip -
// Numbers of colours and operations are hexadecimal. A clip is "-" for none, else its bounds behind "all" (trivial),
// "rect" or "parts", the latter with every rectangle. Points of paths are pixels.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "engine/core/device.h"
#include "engine/gdi/play.h"
#include "tests/engine/gdi_metafile_writer.h"

namespace gdi_tests {

using Lines = std::vector<std::string>;

extern Lines calls;
extern Lines glyphs; // of the last text: "(x,y) + (ox,oy) 3x2 #.# ..#", one line each
extern std::vector<BYTE> fontMetrics; // of the last text
extern std::u16string textDrawn;

class Recorded : public testing::Test {
protected:
    Recorded();
    ~Recorded() override;

    // Plays the records between header and end on the device, of 40 x 30 pixels of 32 bits.
    Lines Play(Metafile metafile, bool whitePage = false);
    Lines PlayInto(Metafile metafile, const RECTL& where, bool actualSize = false);

    engine::Engine engine_;
    std::unique_ptr<engine::DisplayDriver> driver_;
    std::unique_ptr<engine::Device> device_;
    engine::gdi::PlayReport report_;
    std::string error_;
};

// The same on a bitmap, for what becomes of the pixels.
class Painted : public testing::Test {
protected:
    engine::Surface& Play(Metafile metafile, ULONG format = BMF_32BPP, LONG width = 40, LONG height = 30);
    // Colours of a row as hexadecimal RGB numbers, in runs: "2*FF0000 38*FFFFFF".
    static std::string Row(const engine::Surface& surface, LONG y);
    static COLORREF ColourAt(const engine::Surface& surface, LONG x, LONG y);

    engine::Engine engine_;
    engine::gdi::PlayReport report_;
    std::string error_;

    void TearDown() override;
};

using Counts = std::map<std::string, unsigned>;

} // namespace gdi_tests
