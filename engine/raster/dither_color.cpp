// EngDitherColor. A colour that the device has, or comes near enough to, is solid. For the palette formats
// others become an 8 x 8 pattern by ordered dithering with Bayer's matrix (B. E. Bayer, 1973), in the device's
// own format with rows padded to four bytes.

#include <algorithm>
#include <cstring>

#include "engine/core/device.h"
#include "engine/raster/hook_call.h"
#include "engine/raster/pixel_access.h"
#include "platform/services.h"

using namespace engine;
using namespace engine::raster;

namespace {

constexpr LONG PatternSize = 8;
constexpr ULONG PatternRowBytes[] = {0, 4, 4, 8}; // by format

constexpr int BayerMatrix[PatternSize][PatternSize] = {
    {0, 32, 8, 40, 2, 34, 10, 42},    {48, 16, 56, 24, 50, 18, 58, 26}, {12, 44, 4, 36, 14, 46, 6, 38},
    {60, 28, 52, 20, 62, 30, 54, 22}, {3, 35, 11, 43, 1, 33, 9, 41},    {51, 19, 59, 27, 49, 17, 57, 25},
    {15, 47, 7, 39, 13, 45, 5, 37},   {63, 31, 55, 23, 61, 29, 53, 21},
};
constexpr int MatrixLevels = 64;

// The distance between neighbouring levels of a component that a palette of this format has.
constexpr int LevelDistance[] = {0, 255, 128, 51};

ULONG Component(COLORREF colour, int index)
{
    return colour >> 8 * index & 0xFF;
}

COLORREF Grey(COLORREF colour) // its luminance
{
    const ULONG level = (Component(colour, 0) * 77 + Component(colour, 1) * 151 + Component(colour, 2) * 28) / 256;
    return level | level << 8 | level << 16;
}

COLORREF Shifted(COLORREF colour, int amount)
{
    COLORREF shifted = 0;
    for (int i = 0; i < 3; ++i)
        shifted |= static_cast<ULONG>(std::clamp(static_cast<int>(Component(colour, i)) + amount, 0, 255)) << 8 * i;
    return shifted;
}

void WritePattern(const PixelLayout& layout, COLORREF colour, int distance, ULONG* pul)
{
    const ULONG format = layout.iBitmapFormat;
    for (LONG y = 0; y < PatternSize; ++y) {
        ULONG pixels[PatternSize];
        for (LONG x = 0; x < PatternSize; ++x)
            pixels[x] = layout.PixelOf(
                Shifted(colour, distance * (2 * BayerMatrix[y][x] + 1 - MatrixLevels) / (2 * MatrixLevels)));
        BYTE row[PatternSize] = {};
        PixelAccessOf(format)->write(row, 0, PatternSize, pixels);
        std::memcpy(reinterpret_cast<BYTE*>(pul) + static_cast<ULONG>(y) * PatternRowBytes[format], row,
                    PatternRowBytes[format]);
    }
}

} // namespace

extern "C" ULONG APIENTRY EngDitherColor(HDEV hdev, ULONG iMode, ULONG rgb, ULONG* pul)
{
    const Device* const device = FindDevice(hdev);
    if (!device || !pul) {
        Refuse("EngDitherColor", device ? "null pattern" : "a device that is none");
        return DCR_SOLID;
    }
    const PixelLayout& layout = device->Layout();
    const COLORREF colour = (iMode == DM_MONOCHROME ? Grey(rgb) : rgb) & 0xFFFFFF;
    const ULONG nearest = layout.PixelOf(colour);
    if (!layout.IsIndexed() || layout.ColourOf(nearest) == colour) {
        *pul = nearest;
        return DCR_SOLID;
    }
    WritePattern(layout, colour, iMode == DM_MONOCHROME ? LevelDistance[BMF_1BPP] : LevelDistance[layout.iBitmapFormat],
                 pul);
    return DCR_DRIVER;
}
