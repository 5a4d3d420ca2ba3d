#include "capture/records.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    class StretchRecord : public CaptureTest {
    protected:
        Samples samples;
        COLORADJUSTMENT adjustment = {24, 1, 2, 3, 4, 5, 6, 7, -8, 9, 10, -11};
        RECTL reversed = {110, 220, 10, 20};
    };

    const Bytes Adjustment = Halves({24, 1, 2, 3, 4, 5, 6, 7, 0xFFF8, 9, 10, 0xFFF5});
    const Bytes Reversed = Words({110, 220, 10, 20});
    const Bytes OtherRectangle = Words({0xFFFFFFFB, 0xFFFFFFFA, 7, 8});
    const Bytes NoRectangleBytes = Filled(16, 0xFF);

    TEST_F(StretchRecord, StretchBltHoldsEveryObjectAndTheRectanglesAsGiven)
    {
        ExpectBytes(Header(352, 0x200) + Words({96, 160, 224, 288, 324}) + Reversed + OtherRectangle + Words({4})
                        + TargetBytes() + SourceBytes() + MaskBytes() + ClipBytes() + XlateBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvStretchBlt(&samples.target, &samples.source, &samples.mask, &samples.clip,
                                                   &samples.xlate, &adjustment, &samples.point, &reversed,
                                                   &samples.otherRectangle, &samples.otherPoint, 4, at, room);
                    });
    }

    TEST_F(StretchRecord, StretchBltOfNothing)
    {
        ExpectBytes(Header(96, 0x200) + Words({0, 0, 0, 0, 0}) + NoRectangleBytes + NoRectangleBytes + Words({3}),
                    [](BYTE* at, ULONG room) {
                        return ExpandDrvStretchBlt(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                   nullptr, nullptr, nullptr, 3, at, room);
                    });
    }

    TEST_F(StretchRecord, StretchBltRopHoldsEveryObject)
    {
        ExpectBytes(Header(412, 0x8000000) + Words({144, 208, 272, 336, 372}) + Adjustment + Words({30, 0xFFFFFFD8})
                        + Reversed + OtherRectangle + Words({50, 60}) + Words({4, 400, 0xCCAA}) + TargetBytes()
                        + SourceBytes() + MaskBytes() + ClipBytes() + XlateBytes() + BrushBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvStretchBltROP(&samples.target, &samples.source, &samples.mask, &samples.clip,
                                                      &samples.xlate, &adjustment, &samples.point, &reversed,
                                                      &samples.otherRectangle, &samples.otherPoint, 4, &samples.brush,
                                                      0xCCAA, at, room);
                    });
    }

    TEST_F(StretchRecord, StretchBltRopOfNothing)
    {
        ExpectBytes(Header(144, 0x8000000) + Filled(20, 0) + Filled(24, 0) + Filled(8, 0) + NoRectangleBytes
                        + Filled(16, 0) + Filled(8, 0) + Words({3, 0, 0x88}),
                    [](BYTE* at, ULONG room) {
                        return ExpandDrvStretchBltROP(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                      nullptr, nullptr, nullptr, 3, nullptr, 0x88, at, room);
                    });
    }

    TEST_F(StretchRecord, StretchBltRopGivesTheBrushNoMoreRoomThanThereIs)
    {
        const Writer writer = [&](BYTE* at, ULONG room) {
            return ExpandDrvStretchBltROP(nullptr, nullptr, nullptr, nullptr, &samples.xlate, nullptr, nullptr, nullptr,
                                          nullptr, nullptr, 3, &samples.brush, 0x88, at, room);
        };
        const Written tight = Write(writer, 144 + 28 + 11);
        EXPECT_EQ(tight.size, 172u);
        EXPECT_TRUE(IsOnly(tight.memory,
                           Header(172, 0x8000000) + Words({0, 0, 0, 0, 144}) + Filled(24, 0) + Filled(8, 0)
                               + NoRectangleBytes + Filled(24, 0) + Words({3, 0, 0x88}) + XlateBytes()));
        EXPECT_EQ(tight.messages, NumberMessage("ExpandBrushObj. Error The buffer is too small. ", 11));

        ExpectBytes(Header(184, 0x8000000) + Words({0, 0, 0, 0, 144}) + Filled(24, 0) + Filled(8, 0) + NoRectangleBytes
                        + Filled(24, 0) + Words({3, 172, 0x88}) + XlateBytes() + BrushBytes(),
                    writer, 144 + 28 + 12);
    }

    TEST_F(StretchRecord, PlgBltHoldsEveryObject)
    {
        POINTFIX corners[] = {{1, 2}, {3, 4}, {5, -6}};
        ExpectBytes(Header(400, 0x10000000) + Words({144, 208, 272, 336, 372}) + Adjustment + Words({30, 0xFFFFFFD8})
                        + Words({1, 2, 3, 4, 5, 0xFFFFFFFA}) + OtherRectangle + Words({50, 60}) + Words({4})
                        + TargetBytes() + SourceBytes() + MaskBytes() + ClipBytes() + XlateBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvPlgBlt(&samples.target, &samples.source, &samples.mask, &samples.clip,
                                               &samples.xlate, &adjustment, &samples.point, corners,
                                               &samples.otherRectangle, &samples.otherPoint, 4, at, room);
                    });
    }

    TEST_F(StretchRecord, PlgBltOfNothing)
    {
        ExpectBytes(Header(144, 0x10000000) + Filled(20, 0) + Filled(24, 0) + Filled(8, 0) + Filled(24, 0)
                        + NoRectangleBytes + Filled(8, 0) + Words({3}),
                    [](BYTE* at, ULONG room) {
                        return ExpandDrvPlgBlt(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                               nullptr, nullptr, 3, at, room);
                    });
    }

} // namespace
} // namespace capture_tests
