#include <cstring>

#include "capture/encoders.h"
#include "tests/unit/capture/capture_test.h"

using namespace koru;

namespace capture_tests {
namespace {

    // 0, 1, 2, ... so that every byte tells where it comes from.
    template<class Structure> Structure Counting(BYTE first = 0)
    {
        Structure structure;
        auto* const bytes = reinterpret_cast<BYTE*>(&structure);
        for (std::size_t i = 0; i < sizeof(structure); ++i)
            bytes[i] = static_cast<BYTE>(first + i);
        return structure;
    }

    Bytes CountingBytes(BYTE first, std::size_t size)
    {
        Bytes bytes;
        for (std::size_t i = 0; i < size; ++i)
            bytes.push_back(static_cast<BYTE>(first + i));
        return bytes;
    }

    Bytes LogFontBytes(BYTE first)
    {
        Bytes bytes = CountingBytes(first, 60);
        bytes[59] = 0;
        return bytes;
    }

    class DeviceEncoder : public CaptureTest { };

    TEST_F(DeviceEncoder, WritesAModeWithoutPrintQualityAndWithNamesEnded)
    {
        const DEVMODEW mode = Counting<DEVMODEW>();
        const Writer encoder = [&](BYTE* at, ULONG room) { return ExpandDEVMODEW(&mode, at, room); };
        ExpectAtEveryRoom(188, encoder, [](ULONG room) -> Outcome {
            if (room < 188)
                return {0, {}, NumberMessage("ExpandDEVMODEW. Error buffer too small. ", room)};
            Bytes bytes = CountingBytes(0, 188);
            bytes[62] = bytes[63] = bytes[164] = bytes[165] = 0;
            bytes[90] = bytes[91] = CanaryByte;
            return {188, bytes, ""};
        });
    }

    TEST_F(DeviceEncoder, WritesTheFieldsOfAModeWhereClientsReadThem)
    {
        DEVMODEW mode = {};
        mode.dmSpecVersion = 0x0401;
        mode.dmDriverExtra = 0x0102;
        mode.dmFields = 0x05860000;
        mode.dmCollate = 0x0304;
        mode.dmLogPixels = 96;
        mode.dmBitsPerPel = 32;
        mode.dmPelsWidth = 1024;
        mode.dmPelsHeight = 768;
        mode.dmDisplayFrequency = 60;
        const Written written = Write([&](BYTE* at, ULONG room) { return ExpandDEVMODEW(&mode, at, room); }, 188);
        EXPECT_EQ(WordAt(written.memory, 64), 0x0401u);
        EXPECT_EQ(WordAt(written.memory, 68), 0x01020000u);
        EXPECT_EQ(WordAt(written.memory, 72), 0x05860000u);
        EXPECT_EQ(WordAt(written.memory, 100), 0x0304u);
        EXPECT_EQ(WordAt(written.memory, 164), 0x00600000u);
        EXPECT_EQ(WordAt(written.memory, 168), 32u);
        EXPECT_EQ(WordAt(written.memory, 172), 1024u);
        EXPECT_EQ(WordAt(written.memory, 176), 768u);
        EXPECT_EQ(WordAt(written.memory, 184), 60u);
    }

    TEST_F(DeviceEncoder, WritesAFontWithHalfItsFaceName)
    {
        const LOGFONTW font = Counting<LOGFONTW>(1);
        const Writer encoder = [&](BYTE* at, ULONG room) { return ExpandLogFont(&font, at, room); };
        ExpectAtEveryRoom(60, encoder, [](ULONG room) -> Outcome {
            if (room < 60)
                return {0, {}, NumberMessage("ExpandLogFont. Error buffer too small. ", room)};
            return {60, LogFontBytes(1), ""};
        });
    }

    TEST_F(DeviceEncoder, CutsALongFaceNameInItsSixteenthCharacter)
    {
        LOGFONTW font = {};
        const WCHAR name[] = u"ABCDEFGHIJKLMNO\u1234QRST"; // 20 characters
        std::memcpy(font.lfFaceName, name, sizeof(name));
        ExpectBytes(Filled(28, 0) + Characters(u"ABCDEFGHIJKLMNO") + Halves({0x0034}),
                    [&](BYTE* at, ULONG room) { return ExpandLogFont(&font, at, room); });
    }

    DEVINFO SampleDevInfo()
    {
        DEVINFO info = {};
        info.flGraphicsCaps = 0x5BC0;
        info.lfDefaultFont = Counting<LOGFONTW>(10);
        info.lfAnsiVarFont = Counting<LOGFONTW>(20);
        info.lfAnsiFixFont = Counting<LOGFONTW>(30);
        info.cFonts = 0x11;
        info.iDitherFormat = 0x12;
        info.cxDither = 0x13;
        info.cyDither = 0x14;
        info.hpalDefault = reinterpret_cast<HPALETTE>(0x15);
        info.flGraphicsCaps2 = 0x16;
        return info;
    }

    Bytes DevInfoHead(ULONG first, ULONG second, ULONG third)
    {
        return Words({0x5BC0, first, second, third, 0x11, 0x12, 0x00140013, 0x15});
    }

    TEST_F(DeviceEncoder, WritesTheDevicesFontsAsFarAsTheyFit)
    {
        const DEVINFO info = SampleDevInfo();
        const Writer encoder = [&](BYTE* at, ULONG room) { return ExpandDevInfo(&info, at, room); };
        ExpectAtEveryRoom(212, encoder, [](ULONG room) -> Outcome {
            const auto lost = [&](ULONG used) {
                return NumberMessage("ExpandLogFont. Error buffer too small. ", room - used);
            };
            if (room < 32)
                return {0, {}, NumberMessage("ExpandDevInfo. Error buffer too small. ", room)};
            if (room < 92)
                return {32, DevInfoHead(0, 0, 0), lost(32) + lost(32) + lost(32)};
            if (room < 152)
                return {92, DevInfoHead(32, 0, 0) + LogFontBytes(10), lost(92) + lost(92)};
            if (room < 212)
                return {152, DevInfoHead(32, 92, 0) + LogFontBytes(10) + LogFontBytes(20), lost(152)};
            return {212, DevInfoHead(32, 92, 152) + LogFontBytes(10) + LogFontBytes(20) + LogFontBytes(30), ""};
        });
    }

} // namespace
} // namespace capture_tests
