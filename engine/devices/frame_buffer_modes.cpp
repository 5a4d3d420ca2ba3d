#include "engine/devices/frame_buffer_modes.h"

#include <algorithm>

#include "engine/core/device.h"

namespace engine {

namespace {

    constexpr ULONG Depths[] = {1, 4, 8, 15, 16, 24, 32};
    constexpr SIZEL Sizes[] = {{640, 480}, {800, 600}, {1024, 768}};
    constexpr ULONG LargestSide = 8192;
    constexpr ULONG Frequency = 60, LogicalPixels = 96;
    constexpr ULONG FieldsGiven = 0x5C0000; // depth, width, height, frequency

    constexpr ULONG RasterDisplay = 1;
    constexpr FLONG ColourDither = 0x20, MonoDither = 0x400, PaletteManaged = 0x80000;

    PixelLayout LayoutOf(ULONG bitsPerPixel, bool fiveFiveFive)
    {
        if (bitsPerPixel == 15 || (bitsPerPixel == 16 && fiveFiveFive))
            return PixelLayout::FiveFiveFive();
        constexpr ULONG formats[] = {BMF_1BPP, BMF_4BPP, BMF_8BPP, BMF_16BPP, BMF_16BPP, BMF_24BPP, BMF_32BPP};
        return PixelLayout::Default(formats[std::find(std::begin(Depths), std::end(Depths), bitsPerPixel) - Depths]);
    }

} // namespace

bool ChooseMode(const DEVMODEW& devmode, bool fiveFiveFive, FrameBufferMode& mode)
{
    const bool depthKnown = std::find(std::begin(Depths), std::end(Depths), devmode.dmBitsPerPel) != std::end(Depths);
    if (!depthKnown || devmode.dmPelsWidth == 0 || devmode.dmPelsWidth > LargestSide || devmode.dmPelsHeight == 0
        || devmode.dmPelsHeight > LargestSide)
        return false;
    mode = {devmode.dmPelsWidth, devmode.dmPelsHeight, devmode.dmBitsPerPel,
            LayoutOf(devmode.dmBitsPerPel, fiveFiveFive)};
    return true;
}

std::vector<DEVMODEW> ListedModes()
{
    std::vector<DEVMODEW> modes;
    for (const SIZEL& size : Sizes)
        for (const ULONG depth : Depths) {
            DEVMODEW& mode = modes.emplace_back();
            mode = {};
            std::copy_n(u"framebuf", 8, mode.dmDeviceName);
            mode.dmSpecVersion = mode.dmDriverVersion = 0x401;
            mode.dmSize = sizeof(DEVMODEW);
            mode.dmFields = FieldsGiven;
            mode.dmBitsPerPel = depth;
            mode.dmPelsWidth = static_cast<DWORD>(size.cx);
            mode.dmPelsHeight = static_cast<DWORD>(size.cy);
            mode.dmDisplayFrequency = Frequency;
        }
    return modes;
}

GDIINFO DescribeDevice(const FrameBufferMode& mode)
{
    GDIINFO info = {};
    info.ulVersion = 0x5000;
    info.ulTechnology = RasterDisplay;
    info.ulHorzSize = 320; // mm
    info.ulVertSize = 240;
    info.ulHorzRes = info.ulPanningHorzRes = mode.width;
    info.ulVertRes = info.ulPanningVertRes = mode.height;
    info.cBitsPixel = mode.bitsPerPixel;
    info.cPlanes = 1;
    info.ulNumColors = mode.bitsPerPixel > 8 ? 0xFFFFFFFF : mode.bitsPerPixel == 8 ? 20 : 1u << mode.bitsPerPixel;
    info.ulLogPixelsX = info.ulLogPixelsY = LogicalPixels;
    info.ulDACRed = info.ulDACGreen = info.ulDACBlue = 8;
    info.ulAspectX = info.ulAspectY = 36;
    info.ulAspectXY = 51;
    info.xStyleStep = info.yStyleStep = 1;
    info.denStyleStep = 3;
    info.ulNumPalReg = mode.bitsPerPixel == 8 ? 256 : 0;
    info.ulVRefresh = Frequency;
    info.ulBltAlignment = 1;
    return info;
}

DEVINFO DescribeGraphics(const FrameBufferMode& mode)
{
    DEVINFO info = {};
    info.flGraphicsCaps = GCAPS_VECTORFONT | GCAPS_HORIZSTRIKE | GCAPS_VERTSTRIKE | GCAPS_OPAQUERECT | GCAPS_ASYNCMOVE
        | GCAPS_ASYNCCHANGE | GCAPS_DIRECTDRAW | ColourDither | MonoDither;
    if (mode.bitsPerPixel == 8)
        info.flGraphicsCaps |= PaletteManaged;
    info.lfDefaultFont.lfHeight = 16;
    info.lfDefaultFont.lfWeight = 700;
    std::copy_n(u"System", 6, info.lfDefaultFont.lfFaceName);
    info.lfAnsiVarFont.lfHeight = 12;
    info.lfAnsiVarFont.lfWeight = 400;
    std::copy_n(u"MS Sans Serif", 13, info.lfAnsiVarFont.lfFaceName);
    info.lfAnsiFixFont.lfHeight = 12;
    info.lfAnsiFixFont.lfWeight = 400;
    std::copy_n(u"Courier", 7, info.lfAnsiFixFont.lfFaceName);
    info.iDitherFormat = mode.layout.iBitmapFormat;
    info.cxDither = info.cyDither = 8;
    info.hpalDefault = MakePalette(mode.layout);
    return info;
}

} // namespace engine
