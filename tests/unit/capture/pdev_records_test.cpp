#include "capture/records.h"
#include "tests/unit/capture/capture_test.h"

using namespace koru;

namespace capture_tests {
namespace {

    const DHPDEV Device = reinterpret_cast<DHPDEV>(0x1001);
    const HDEV EngineDevice = reinterpret_cast<HDEV>(0x1002);
    const HANDLE Driver = reinterpret_cast<HANDLE>(0x1003);
    constexpr char ModeTooSmall[] = "ExpandDEVMODEW. Error buffer too small. ";

    class PdevRecord : public CaptureTest {
    protected:
        PdevRecord()
        {
            mode.dmSpecVersion = 0x0401;
            mode.dmPrintQuality = 0x55;
            mode.dmDisplayFrequency = 75;
            info.flGraphicsCaps = 0x5BC0;
            info.lfAnsiFixFont.lfHeight = 9;
        }

        DEVMODEW mode = {};
        DEVINFO info = {};
        WCHAR address[3] = u"LA";
        WCHAR name[2] = u"D";
        HSURF patterns[6] = {reinterpret_cast<HSURF>(0x21), reinterpret_cast<HSURF>(0x22),
                             reinterpret_cast<HSURF>(0x23), reinterpret_cast<HSURF>(0x24),
                             reinterpret_cast<HSURF>(0x25), reinterpret_cast<HSURF>(0x26)};
    };

    Bytes ModeBytes()
    {
        return Filled(64, 0) + Words({0x0401}) + Filled(22, 0) + Filled(2) + Filled(92, 0) + Words({75});
    }

    Bytes InfoBytes()
    {
        return Words({0x5BC0, 32, 92, 152, 0, 0, 0, 0}) + Filled(120, 0) + Words({9}) + Filled(56, 0);
    }

    Bytes AddressBytes()
    {
        return Halves({u'L', u'A', 0});
    }

    Bytes NameBytes()
    {
        return Halves({u'D', 0});
    }

    TEST_F(PdevRecord, EnablePdevHoldsEveryObject)
    {
        ExpectBytes(Header(490, 0x2) + Words({80, 268, 0, 0xFFFFFFFF, 312, 274, 0x1002, 0x1001, 486, 0x1003})
                        + ModeBytes() + AddressBytes() + InfoBytes() + NameBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvEnablePDEV(&mode, address, 0, patterns, 0, nullptr, 312, &info, EngineDevice,
                                                   name, Driver, Device, at, room);
                    });
    }

    TEST_F(PdevRecord, EnablePdevOverwritesThePatternHandles)
    {
        ExpectBytes(Header(490, 0x2) + Words({80, 268, 6, 80, 312, 274, 0x1002, 0x1001, 486, 0x1003}) + ModeBytes()
                        + AddressBytes() + InfoBytes() + NameBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvEnablePDEV(&mode, address, 6, patterns, 0, nullptr, 312, &info, EngineDevice,
                                                   name, Driver, Device, at, room);
                    });
    }

    TEST_F(PdevRecord, EnablePdevKeepsHandlesThatNothingOverwrites)
    {
        ExpectBytes(Header(80, 0x2) + Words({0, 0, 6, 80, 0, 0, 0, 0, 0, 0})
                        + Words({0x21, 0x22, 0x23, 0x24, 0x25, 0x26}),
                    80, [&](BYTE* at, ULONG room) {
                        return ExpandDrvEnablePDEV(nullptr, nullptr, 6, patterns, 0, nullptr, 0, nullptr, nullptr,
                                                   nullptr, nullptr, nullptr, at, room);
                    });
    }

    TEST_F(PdevRecord, EnablePdevCopiesHandlesWholeOrNot)
    {
        const Writer writer = [&](BYTE* at, ULONG room) {
            return ExpandDrvEnablePDEV(nullptr, nullptr, 6, patterns, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                                       nullptr, at, room);
        };
        const Bytes fixed = Header(80, 0x2) + Words({0, 0, 6, 80, 0, 0, 0, 0, 0, 0});
        ExpectBytes(fixed, 80, writer, 80 + 23);
        ExpectBytes(fixed + Words({0x21, 0x22, 0x23, 0x24, 0x25, 0x26}), 80, writer, 80 + 24);
    }

    TEST_F(PdevRecord, EnablePdevReadsNoMissingHandles)
    {
        ExpectBytes(Header(80, 0x2) + Words({0, 0, 6, 80, 0, 0, 0, 0, 0, 0}), [](BYTE* at, ULONG room) {
            return ExpandDrvEnablePDEV(nullptr, nullptr, 6, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                                       nullptr, at, room);
        });
    }

    TEST_F(PdevRecord, EnablePdevDoesNotTakeAHugeCountForASmallSize)
    {
        ExpectBytes(Header(80, 0x2) + Words({0, 0, 0x40000001, 80, 0, 0, 0, 0, 0, 0}), [&](BYTE* at, ULONG room) {
            return ExpandDrvEnablePDEV(nullptr, nullptr, 0x40000001, patterns, 0, nullptr, 0, nullptr, nullptr, nullptr,
                                       nullptr, nullptr, at, room);
        });
    }

    TEST_F(PdevRecord, EnablePdevTellsObjects80BytesLessWithHandles)
    {
        const auto writer = [&](ULONG handles) -> Writer {
            return [=, this](BYTE* at, ULONG room) {
                return ExpandDrvEnablePDEV(&mode, nullptr, handles, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr,
                                           nullptr, nullptr, at, room);
            };
        };
        EXPECT_EQ(Write(writer(0), 80 + 188).size, 268u);
        EXPECT_EQ(Write(writer(0), 80 + 187).messages, NumberMessage(ModeTooSmall, 187));
        EXPECT_EQ(Write(writer(1), 160 + 188).size, 268u);
        EXPECT_EQ(Write(writer(1), 160 + 187).messages, NumberMessage(ModeTooSmall, 187));
        EXPECT_EQ(Write(writer(1), 160).messages, NumberMessage(ModeTooSmall, 0));
        EXPECT_EQ(Write(writer(1), 100).messages, NumberMessage(ModeTooSmall, 0));
    }

    TEST_F(PdevRecord, EnablePdevReadsNoTruncatedDevInfo)
    {
        const auto writer = [&](ULONG size) -> Writer {
            return [=, this](BYTE* at, ULONG room) {
                return ExpandDrvEnablePDEV(nullptr, nullptr, 0, nullptr, 0, nullptr, size, &info, nullptr, nullptr,
                                           nullptr, nullptr, at, room);
            };
        };
        ExpectBytes(Header(80, 0x2) + Words({0, 0, 0, 0xFFFFFFFF, 295, 0, 0, 0, 0, 0}), writer(295));
        ExpectBytes(Header(292, 0x2) + Words({0, 0, 0, 0xFFFFFFFF, 296, 80, 0, 0, 0, 0}) + InfoBytes(), writer(296));
    }

    TEST_F(PdevRecord, CompletePdevHoldsBothHandles)
    {
        ExpectBytes(Header(48, 0x8) + Words({0x1001, 0x1002}),
                    [](BYTE* at, ULONG room) { return ExpandDrvCompletePDEV(Device, EngineDevice, at, room); });
    }

    TEST_F(PdevRecord, DisablePdevHoldsTheHandle)
    {
        ExpectBytes(Header(48, 0x4) + Words({0x1001, Canary}),
                    [](BYTE* at, ULONG room) { return ExpandDrvDisablePDEV(Device, at, room); });
    }

    TEST_F(PdevRecord, AssertModeHoldsTheFlag)
    {
        ExpectBytes(Header(48, 0x1) + Words({0x1001, 1}),
                    [](BYTE* at, ULONG room) { return ExpandDrvAssertMode(Device, TRUE, at, room); });
    }

    TEST_F(PdevRecord, GetModesHoldsTheFirstMode)
    {
        DEVMODEW modes[2] = {mode, {}};
        ExpectBytes(Header(244, 0x80000) + Words({0x1003, 440, 56, Canary}) + ModeBytes(),
                    [&](BYTE* at, ULONG room) { return ExpandDrvGetModes(Driver, 440, modes, at, room); });
    }

    TEST_F(PdevRecord, GetModesReadsNoTruncatedMode)
    {
        ExpectBytes(Header(56, 0x80000) + Words({0x1003, 187, 0, Canary}),
                    [&](BYTE* at, ULONG room) { return ExpandDrvGetModes(Driver, 187, &mode, at, room); });
        ExpectBytes(Header(244, 0x80000) + Words({0x1003, 188, 56, Canary}) + ModeBytes(),
                    [&](BYTE* at, ULONG room) { return ExpandDrvGetModes(Driver, 188, &mode, at, room); });
    }

    TEST_F(PdevRecord, GetModesHoldsTheSizeQuery)
    {
        ExpectBytes(Header(56, 0x80000) + Words({0x1003, 0, 0, Canary}),
                    [](BYTE* at, ULONG room) { return ExpandDrvGetModes(Driver, 0, nullptr, at, room); });
    }

} // namespace
} // namespace capture_tests
