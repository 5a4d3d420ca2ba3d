#include "capture/capture_state.h"
#include "capture/records.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    const DHPDEV Device = reinterpret_cast<DHPDEV>(0x1001);

    class DeviceRecord : public CaptureTest {
    protected:
        Samples samples;
    };

    TEST_F(DeviceRecord, EnableSurfaceHoldsTheSurfaceReturned)
    {
        ExpectBytes(Header(48, 0x10) + Words({0x1001, 0x1005}), [](BYTE* at, ULONG room) {
            return ExpandDrvEnableSurface(Device, reinterpret_cast<HSURF>(0x1005), at, room);
        });
    }

    TEST_F(DeviceRecord, DisableSurfaceHoldsTheDevice)
    {
        ExpectBytes(Header(48, 0x20) + Words({0x1001, Canary}),
                    [](BYTE* at, ULONG room) { return ExpandDrvDisableSurface(Device, at, room); });
    }

    TEST_F(DeviceRecord, CreateDeviceBitmapHoldsBothHandles)
    {
        ExpectBytes(Header(64, 0x40) + Words({0x1006, 0x1007, 0x1001, 33, 44, 6}), [](BYTE* at, ULONG room) {
            return ExpandDrvCreateDeviceBitmap(Device, {33, 44}, 6, reinterpret_cast<HBITMAP>(0x1006),
                                               reinterpret_cast<HSURF>(0x1007), at, room);
        });
    }

    TEST_F(DeviceRecord, DeleteDeviceBitmapHoldsTheHandle)
    {
        ExpectBytes(Header(48, 0x80) + Words({0x1008, Canary}), [](BYTE* at, ULONG room) {
            return ExpandDrvDeleteDeviceBitmap(reinterpret_cast<DHSURF>(0x1008), at, room);
        });
    }

    TEST_F(DeviceRecord, MovePointerHoldsTheSurface)
    {
        ExpectBytes(Header(136, 0x1000) + Words({72, 5, 6, 10, 20, 110, 220, Canary}) + TargetBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvMovePointer(&samples.target, 5, 6, &samples.rectangle, at, room);
                    });
    }

    struct PointerRow {
        LONG y;
        ULONG recorded;
    };

    TEST_F(DeviceRecord, MovePointerCountsNegativeRowsFromTheBottom)
    {
        for (const PointerRow& row : {PointerRow{-1, 767}, {-768, 0}, {-769, 0xFFFFFFFF}, {0, 0}, {900, 900}})
            ExpectBytes(Header(136, 0x1000) + Words({72, 0xFFFFFFFF, row.recorded}) + Filled(16, 0xFF) + Words({Canary})
                            + TargetBytes(),
                        [&](BYTE* at, ULONG room) {
                            return ExpandDrvMovePointer(&samples.target, -1, row.y, nullptr, at, room);
                        });
    }

    TEST_F(DeviceRecord, MovePointerKeepsTheRowWithoutASurface)
    {
        ExpectBytes(Header(72, 0x1000) + Words({0, 3, 0xFFFFFFFF}) + Filled(16, 0xFF) + Words({Canary}),
                    [](BYTE* at, ULONG room) { return ExpandDrvMovePointer(nullptr, 3, -1, nullptr, at, room); });
    }

    TEST_F(DeviceRecord, SetPointerShapeHoldsEveryObject)
    {
        ExpectBytes(Header(316, 0x2000) + Words({96, 160, 224, 288, 1, 2, 3, 0xFFFFFFFC, 10, 20, 110, 220, 5, 0})
                        + TargetBytes() + MaskBytes() + SourceBytes() + XlateBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvSetPointerShape(&samples.target, &samples.mask, &samples.source, &samples.xlate,
                                                        1, 2, 3, -4, &samples.rectangle, 5, at, room);
                    });
    }

    TEST_F(DeviceRecord, SetPointerShapeOfNothing)
    {
        ExpectBytes(Header(96, 0x2000) + Words({0, 0, 0, 0, 1, 2, 3, 4}) + Filled(16, 0xFF) + Words({5, 0}),
                    [](BYTE* at, ULONG room) {
                        return ExpandDrvSetPointerShape(nullptr, nullptr, nullptr, nullptr, 1, 2, 3, 4, nullptr, 5, at,
                                                        room);
                    });
    }

    TEST_F(DeviceRecord, RealizeBrushBeginsWithTheBrush)
    {
        ExpectBytes(Header(296, 0x20000) + Words({64, 76, 140, 204, 268, 4}) + BrushBytes() + TargetBytes()
                        + SourceBytes() + MaskBytes() + XlateBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvRealizeBrush(&samples.brush, &samples.target, &samples.source, &samples.mask,
                                                     &samples.xlate, 4, at, room);
                    });
    }

    TEST_F(DeviceRecord, RealizeBrushOfNothing)
    {
        ExpectBytes(Header(64, 0x20000) + Words({0, 0, 0, 0, 0, 6}), [](BYTE* at, ULONG room) {
            return ExpandDrvRealizeBrush(nullptr, nullptr, nullptr, nullptr, nullptr, 6, at, room);
        });
    }

    TEST_F(DeviceRecord, DitherColorHoldsTheFirstWordOfTheOutput)
    {
        ULONG output[2] = {0x12345678, 0x9ABCDEF0};
        ExpectBytes(
            Header(64, 0x40000) + Words({0x1001, 1, 0xAABBCC, 0x12345678, 2, Canary}),
            [&](BYTE* at, ULONG room) { return ExpandDrvDitherColor(Device, 1, 0xAABBCC, output, 2, at, room); });
    }

    TEST_F(DeviceRecord, DitherColorWithoutOutput)
    {
        ExpectBytes(
            Header(64, 0x40000) + Words({0x1001, 1, 0xAABBCC, 0xFFFFFFFF, 0, Canary}),
            [](BYTE* at, ULONG room) { return ExpandDrvDitherColor(Device, 1, 0xAABBCC, nullptr, 0, at, room); });
    }

    TEST_F(DeviceRecord, SaveScreenBitsHoldsTheSurface)
    {
        ExpectBytes(Header(136, 0x200000) + Words({72, 1, 0x99, 10, 20, 110, 220, 0x88}) + TargetBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvScreenBits(&samples.target, 1, 0x99, &samples.rectangle, 0x88, at, room);
                    });
    }

    TEST_F(DeviceRecord, SaveScreenBitsRefusesOneRoomAndNoSmallerOne)
    {
        const Writer writer = [&](BYTE* at, ULONG room) {
            return ExpandDrvScreenBits(&samples.target, 1, 0x99, nullptr, 0x88, at, room);
        };
        const Bytes withoutSurface = Header(72, 0x200000) + Words({0, 1, 0x99}) + Filled(16, 0xFF) + Words({0x88});
        for (ULONG room = 0; room < 72 + 64; ++room) {
            const Written written = Write(writer, room, 72);
            const bool refused = room == 72;
            const ULONG left = room > 72 ? room - 72 : 0;
            EXPECT_EQ(written.size, refused ? 0u : 72u) << "room " << room;
            EXPECT_TRUE(IsOnly(written.memory, refused ? Bytes() : withoutSurface)) << "room " << room;
            EXPECT_EQ(written.messages,
                      refused ? NumberMessage("ExpandDrvScreenBits: Error the buffer is too small. ", 72)
                              : NumberMessage("ExpandSurfObj: The buffer is too small. ", left));
        }
    }

    TEST_F(DeviceRecord, SaveScreenBitsIsNotWrittenNowhere)
    {
        for (const ULONG room : {0u, 71u, 72u, 0x10000u})
            EXPECT_EQ(ExpandDrvScreenBits(&samples.target, 1, 0x99, nullptr, 0x88, nullptr, room), 0u);
        EXPECT_EQ(engine.DebugOutput(), "");
    }

    class PaletteRecord : public CaptureTest {
    protected:
        Writer Encoder(ULONG first, ULONG count)
        {
            return [=, this](BYTE* at, ULONG room) {
                return ExpandDrvSetPalette(Device, &palette, 0x31, first, count, at, room);
            };
        }

        engine::PaletteObject palette;
    };

    TEST_F(PaletteRecord, HoldsTheColours)
    {
        palette.colours = {0x010203, 0x040506, 0x070809};
        ExpectBytes(Header(72, 0x400000) + Words({Canary, 0x31, 1, 2, 64, Canary, 0x040506, 0x070809}), Encoder(1, 2));
    }

    TEST_F(PaletteRecord, Of256ColoursIs1088BytesLong)
    {
        palette.colours.assign(256, 0x00FFFFFF);
        const Written written = Write(Encoder(0, 256), 0x10000);
        EXPECT_EQ(written.size, 1088u);
        EXPECT_EQ(WordAt(written.memory, 56), 64u);
        EXPECT_EQ(WordAt(written.memory, 1084), 0x00FFFFFFu);
        EXPECT_EQ(WordAt(written.memory, 1088), Canary);
    }

    TEST_F(PaletteRecord, HoldsAsManyColoursAsThereAre)
    {
        palette.colours = {0x010203, 0x040506};
        palette.deliver = 1;
        ExpectBytes(Header(68, 0x400000) + Words({Canary, 0x31, 0, 2, 64, Canary, 0x010203}), Encoder(0, 2));
        palette.deliver = 0;
        ExpectBytes(Header(64, 0x400000) + Words({Canary, 0x31, 0, 2, 0, Canary}), Encoder(0, 2));
    }

    TEST_F(PaletteRecord, HoldsAllColoursOrNone)
    {
        palette.colours = {0x010203, 0x040506};
        for (ULONG room = 64; room < 72; ++room)
            ExpectBytes(Header(64, 0x400000) + Words({Canary, 0x31, 0, 2, 0, Canary}), Encoder(0, 2), room);
        ExpectBytes(Header(72, 0x400000) + Words({Canary, 0x31, 0, 2, 64, Canary, 0x010203, 0x040506}), Encoder(0, 2),
                    72);
    }

    TEST_F(PaletteRecord, DoesNotTakeAHugeCountForASmallSize)
    {
        palette.colours.assign(256, 0);
        ExpectBytes(Header(64, 0x400000) + Words({Canary, 0x31, 0, 0x40000001, 0, Canary}), Encoder(0, 0x40000001));
    }

    TEST_F(PaletteRecord, WithoutAPalette)
    {
        ExpectBytes(Header(64, 0x400000) + Words({Canary, 0x31, 0, 2, 0, Canary}),
                    [](BYTE* at, ULONG room) { return ExpandDrvSetPalette(Device, nullptr, 0x31, 0, 2, at, room); });
    }

    class EscapeRecord : public CaptureTest {
    protected:
        Samples samples;
        BYTE input[3] = {1, 2, 3};
        BYTE output[5] = {4, 5, 6, 7, 8};
    };

    TEST_F(EscapeRecord, HoldsInputAndOutputBehindTheSurface)
    {
        ExpectBytes(Header(144, 0x800000) + Words({7, 72, 0x490914, 3, 136, 5, 139, Canary}) + TargetBytes()
                        + Bytes{1, 2, 3, 4, 5, 6, 7, 8},
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvEscape(&samples.target, 0x490914, 3, input, 5, output, 7, at, room);
                    });
    }

    TEST_F(EscapeRecord, KeepsTheSizesOfMissingBuffers)
    {
        ExpectBytes(Header(72, 0x800000) + Words({0, 0, 8, 3, 0, 5, 0, Canary}), [](BYTE* at, ULONG room) {
            return ExpandDrvEscape(nullptr, 8, 3, nullptr, 5, nullptr, 0, at, room);
        });
    }

    TEST_F(EscapeRecord, LeavesEmptyBuffersOut)
    {
        ExpectBytes(
            Header(77, 0x800000) + Words({0, 0, 8, 0, 0, 5, 72, Canary}) + Bytes{4, 5, 6, 7, 8},
            [&](BYTE* at, ULONG room) { return ExpandDrvEscape(nullptr, 8, 0, input, 5, output, 0, at, room); });
    }

    TEST_F(EscapeRecord, CopiesEachBufferWholeOrNot)
    {
        const Writer writer = [&](BYTE* at, ULONG room) {
            return ExpandDrvEscape(nullptr, 8, 3, input, 5, output, 0, at, room);
        };
        const auto fixed = [](ULONG length, ULONG in, ULONG out) {
            return Header(length, 0x800000) + Words({0, 0, 8, 3, in, 5, out, Canary});
        };
        for (ULONG left = 0; left <= 9; ++left) {
            Bytes expected = fixed(72, 0, 0);
            if (left >= 8)
                expected = fixed(80, 72, 75) + Bytes{1, 2, 3, 4, 5, 6, 7, 8};
            else if (left >= 3)
                expected = fixed(75, 72, 0) + Bytes{1, 2, 3};
            ExpectBytes(expected, writer, 72 + left);
        }
    }

    TEST_F(EscapeRecord, StillHoldsAnOutputThatFitsAfterAnInputThatDoesNot)
    {
        ExpectBytes(Header(77, 0x800000) + Words({0, 0, 8, 0xFFFFFFFF, 0, 5, 72, Canary}) + Bytes{4, 5, 6, 7, 8},
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvEscape(nullptr, 8, 0xFFFFFFFF, input, 5, output, 0, at, room);
                    });
    }

} // namespace
} // namespace capture_tests
