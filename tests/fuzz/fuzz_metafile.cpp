// libFuzzer entry: any bytes as a drawing, played on a small bitmap of one of the six pixel formats.

#include <cstdlib>
#include <iostream>

#include "engine/gdi/play.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace engine;
    static Engine engine;
    const ULONG format = size == 0 ? BMF_32BPP : BMF_1BPP + data[size - 1] % BMF_32BPP;
    Surface* const surface = MakeBitmap({160, 120}, PixelLayout::Default(format));
    gdi::PlayReport report;
    std::string error;
    const bool played =
        gdi::PlayBytes({surface, surface->layout, surface->Bounds()}, std::span(data, size), "fuzz", report, error);
    DestroyBitmap(surface);
    engine.CheckGuards();
    for (const std::string& violation : engine.Violations())
        std::cerr << violation << '\n';
    if (!engine.Violations().empty() || played != error.empty())
        std::abort();
    return 0;
}
