#include "capture/capture_call.h"

#include <algorithm>

#include "capture/capture_state.h"
#include "capture/consumer.h"
#include "capture/records.h"
#include "driver/driver_values.h"
#include "escape/dark_lists.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    using Calls = std::vector<std::string>;

    // A gate that is open for CALL_BITBLT on the sample target.
    class CaptureGate : public CaptureTest {
    protected:
        CaptureGate()
        {
            CaptureMask = CALL_BITBLT;
            samples.target.hsurf = reinterpret_cast<HSURF>(0x1102);
        }

        Samples samples;
    };

    TEST_F(CaptureGate, AsksForBothIdentifiersWhenOpen)
    {
        EXPECT_TRUE(CaptureAllows(CALL_BITBLT, &samples.target, true));
        EXPECT_EQ(Consumer.calls, Calls({"GSD(0)", "GSD(1)"}));
    }

    TEST_F(CaptureGate, IsClosedWithTheMaskItStartsWith)
    {
        CaptureMask = 0;
        for (ULONG bit = 1; bit != 0; bit <<= 1)
            EXPECT_FALSE(CaptureAllows(bit));
        EXPECT_EQ(Consumer.calls, Calls());
    }

    struct GateCase {
        const char* name;
        void (*close)();
        Calls asked;
    };

    class CaptureGateClosed : public CaptureGate, public testing::WithParamInterface<GateCase> { };

    TEST_P(CaptureGateClosed, ByOneConditionAloneAndAsksNoFurther)
    {
        GetParam().close();
        EXPECT_FALSE(CaptureAllows(CALL_BITBLT, &samples.target, true));
        EXPECT_EQ(Consumer.calls, GetParam().asked);
    }

    INSTANTIATE_TEST_SUITE_P(
        , CaptureGateClosed,
        testing::Values(GateCase{"CaptureSwitchedOff", [] { CaptureEnabled = 0; }, {}},
                        GateCase{"BitNotInTheMask", [] { CaptureMask = ~ULONG{CALL_BITBLT}; }, {}},
                        GateCase{"DriverDrawing", [] { HookDepth = 1; }, {}},
                        GateCase{"DarkProcess", [] { DarkProcessList.Insert(0xAAAA0001); }, {"GSD(0)"}},
                        GateCase{"DarkSecondIdentifier", [] { DarkIdList.Insert(0xBBBB0002); }, {"GSD(0)", "GSD(1)"}},
                        GateCase{"Suspended", [] { CaptureSuspended = 1; }, {"GSD(0)", "GSD(1)"}},
                        GateCase{"DarkSurface", [] { DarkSurfaceList.Insert(0x1102); }, {"GSD(0)", "GSD(1)"}}),
        [](const testing::TestParamInfo<GateCase>& info) { return info.param.name; });

    TEST_F(CaptureGate, IsClosedForWhatLiesInDarkZones)
    {
        EXPECT_FALSE(CaptureAllows(CALL_BITBLT, &samples.target, false));
        EXPECT_EQ(Consumer.calls, Calls({"GSD(0)", "GSD(1)"}));
    }

    TEST_F(CaptureGate, DoesNotMixTheDarkListsUp)
    {
        DarkProcessList.Insert(0xBBBB0002);
        DarkIdList.Insert(0xAAAA0001);
        DarkSurfaceList.Insert(0x1101); // the driver's own handle
        EXPECT_TRUE(CaptureAllows(CALL_BITBLT, &samples.target, true));
    }

    TEST_F(CaptureGate, IgnoresDarkSurfacesForCallsWithoutATarget)
    {
        DarkSurfaceList.Insert(0);
        EXPECT_TRUE(CaptureAllows(CALL_BITBLT));
    }

    TEST_F(CaptureGate, TakesNoConsumerForTheIdentifierZero)
    {
        const std::vector<ULONG> none(6, 0);
        InitializeFunctions2(none.data());
        EXPECT_TRUE(CaptureAllows(CALL_BITBLT, &samples.target, true));
        DarkProcessList.Insert(0);
        EXPECT_FALSE(CaptureAllows(CALL_BITBLT, &samples.target, true));
    }

    class CaptureOfOneCall : public CaptureTest { };

    TEST_F(CaptureOfOneCall, HandsTheRecordOverAndGivesItsTimeStamp)
    {
        engine.StepCounter(1);
        const LONGLONG stamp = CaptureCall(
            [](BYTE* record, ULONG room) {
                EXPECT_EQ(record, CaptureBuffer());
                EXPECT_EQ(room, 0x10000u);
                return ExpandDrvDisablePDEV(reinterpret_cast<DHPDEV>(5), record, room);
            },
            1);
        EXPECT_EQ(stamp, 0x1122334455667788);
        EXPECT_EQ(Consumer.calls, Calls({"GSD(0)", "GSD(1)", "QP(record, 48, 1)"}));
        EXPECT_EQ(WordAt(Bytes(CaptureBuffer(), CaptureBuffer() + 48), 24), 0x55667788u);
    }

    LONG APIENTRY SpoilTheRecord(BYTE* record, ULONG, LONG)
    {
        std::fill_n(record, 48, BYTE{0xEE});
        return 0;
    }

    TEST_F(CaptureOfOneCall, GivesTheTimeStampWhateverTheConsumerDoesToTheRecord)
    {
        std::vector<ULONG> table = ConsumerTable();
        table[3] = reinterpret_cast<ULONG>(&SpoilTheRecord);
        InitializeFunctions2(table.data());
        EXPECT_EQ(CaptureCall([](BYTE* record, ULONG room) { return ExpandDrvDisablePDEV(nullptr, record, room); }, 1),
                  0x1122334455667788);
        EXPECT_EQ(CaptureBuffer()[24], 0xEE);
    }

    TEST_F(CaptureOfOneCall, NotesInTheHeaderWhetherCaptureIsSuspended)
    {
        CaptureSuspended = 5;
        ExpectBytes(
            Words({48, 4, 5, 0xAAAA0001, 0xBBBB0002, Canary, 0x55667788, 0x11223344, 0, 0, 7, Canary}),
            [](BYTE* record, ULONG room) { return ExpandDrvDisablePDEV(reinterpret_cast<DHPDEV>(7), record, room); });
    }

    TEST_F(CaptureOfOneCall, PassesTheFlagOn)
    {
        CaptureCall([](BYTE* record, ULONG room) { return ExpandDrvDisablePDEV(nullptr, record, room); }, 0);
        EXPECT_EQ(Consumer.calls.back(), "QP(record, 48, 0)");
    }

    TEST_F(CaptureOfOneCall, HandsAnEmptyRecordOverAndReadsTheCounterAnew)
    {
        CaptureCall([](BYTE* record, ULONG room) { return ExpandDrvDisablePDEV(nullptr, record, room); }, 1);
        Consumer.calls.clear();
        engine.SetCounter(42);
        EXPECT_EQ(CaptureCall([](BYTE*, ULONG) -> ULONG { return 0; }, 1), 42);
        EXPECT_EQ(Consumer.calls, Calls({"QP(record, 0, 1)"}));
    }

    class CaptureWithoutBuffer : public BareCaptureTest { };

    TEST_F(CaptureWithoutBuffer, HandsNoBufferAndNoLengthOver)
    {
        InitializeFunctions2(ConsumerTable().data());
        Consumer.calls.clear();
        EXPECT_EQ(CaptureCall(
                      [](BYTE* record, ULONG room) {
                          EXPECT_EQ(record, nullptr);
                          return ExpandDrvDisablePDEV(nullptr, record, room);
                      },
                      0),
                  0x1122334455667788);
        EXPECT_EQ(Consumer.calls, Calls({"QP(null, 0, 0)"}));
    }

    TEST_F(CaptureOfOneCall, ReadsTheCounter)
    {
        EXPECT_EQ(ReadCounter(), 0x1122334455667788);
    }

} // namespace
} // namespace capture_tests
