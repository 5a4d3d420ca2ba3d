#include "capture/records.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    constexpr char BrushTooSmall[] = "ExpandBrushObj. Error The buffer is too small. ";

    class PathRecord : public CaptureTest {
    protected:
        Samples samples;
        SamplePath path;
    };

    TEST_F(PathRecord, StrokePathHoldsEveryObject)
    {
        ExpectBytes(Header(264, 0x8000) + Words({72, 136, 176, 212, 224}) + Words({30, 0xFFFFFFD8, 0x0D0D})
                        + TargetBytes() + PathBytes() + ClipBytes() + BrushBytes() + LineAttrsBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvStrokePath(&samples.target, &path, &samples.clip, nullptr, &samples.brush,
                                                   &samples.point, &samples.lineAttrs, 0x0D0D, at, room);
                    });
    }

    TEST_F(PathRecord, StrokePathOfNothing)
    {
        ExpectBytes(Header(72, 0x8000) + Filled(20, 0) + Filled(8, 0xFF) + Words({1}), [](BYTE* at, ULONG room) {
            return ExpandDrvStrokePath(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 1, at, room);
        });
    }

    TEST_F(PathRecord, FillPathHoldsEveryObjectAndATypeOfItsOwn)
    {
        ExpectBytes(Header(224, 0x400) + Words({72, 136, 176, 212}) + Words({30, 0xFFFFFFD8, 0x0D0D, 2}) + TargetBytes()
                        + PathBytes() + ClipBytes() + BrushBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvFillPath(&samples.target, &path, &samples.clip, &samples.brush, &samples.point,
                                                 0x0D0D, 2, at, room);
                    });
    }

    TEST_F(PathRecord, FillPathOfNothing)
    {
        ExpectBytes(Header(72, 0x400) + Filled(16, 0) + Filled(8, 0xFF) + Words({1, 2}), [](BYTE* at, ULONG room) {
            return ExpandDrvFillPath(nullptr, nullptr, nullptr, nullptr, nullptr, 1, 2, at, room);
        });
    }

    TEST_F(PathRecord, StrokeAndFillPathHoldsEveryObject)
    {
        ExpectBytes(Header(284, 0x20000000) + Words({80, 144, 184, 220, 232, 272}) + Words({30, 0xFFFFFFD8, 0x0D0D, 1})
                        + TargetBytes() + PathBytes() + ClipBytes() + BrushBytes() + LineAttrsBytes()
                        + OtherBrushBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvStrokeAndFillPath(&samples.target, &path, &samples.clip, nullptr,
                                                          &samples.brush, &samples.lineAttrs, &samples.otherBrush,
                                                          &samples.point, 0x0D0D, 1, at, room);
                    });
    }

    TEST_F(PathRecord, StrokeAndFillPathOfNothing)
    {
        ExpectBytes(Header(80, 0x20000000) + Filled(24, 0) + Filled(8, 0xFF) + Words({1, 2}), [](BYTE* at, ULONG room) {
            return ExpandDrvStrokeAndFillPath(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 1,
                                              2, at, room);
        });
    }

    TEST_F(PathRecord, StrokeAndFillPathGivesTheFillBrushNoMoreRoomThanThereIs)
    {
        const Writer writer = [&](BYTE* at, ULONG room) {
            return ExpandDrvStrokeAndFillPath(nullptr, nullptr, nullptr, nullptr, nullptr, &samples.lineAttrs,
                                              &samples.otherBrush, nullptr, 1, 2, at, room);
        };
        const Written tight = Write(writer, 80 + 40 + 11);
        EXPECT_EQ(tight.size, 120u);
        EXPECT_TRUE(IsOnly(tight.memory,
                           Header(120, 0x20000000) + Words({0, 0, 0, 0, 80, 0}) + Filled(8, 0xFF) + Words({1, 2})
                               + LineAttrsBytes()));
        EXPECT_EQ(tight.messages, NumberMessage(BrushTooSmall, 11));

        ExpectBytes(Header(132, 0x20000000) + Words({0, 0, 0, 0, 80, 120}) + Filled(8, 0xFF) + Words({1, 2})
                        + LineAttrsBytes() + OtherBrushBytes(),
                    writer, 80 + 40 + 12);
    }

    TEST_F(PathRecord, EndsWithItsRoomWhereAPathClaimsMore)
    {
        engine::Path tooLong;
        tooLong.Add(0, std::vector<POINTFIX>(100));
        const Written written = Write(
            [&](BYTE* at, ULONG room) {
                return ExpandDrvFillPath(nullptr, &tooLong, nullptr, &samples.brush, nullptr, 1, 2, at, room);
            },
            72 + 20 + 12 + 30);
        EXPECT_EQ(written.size, 134u);
        EXPECT_EQ(WordAt(written.memory, 0), 134u);
        EXPECT_EQ(WordAt(written.memory, 44), 72u);
        EXPECT_EQ(WordAt(written.memory, 52), 0u);
        EXPECT_TRUE(IsOnly(Bytes(written.memory.begin() + 104, written.memory.end()), {}));
        EXPECT_EQ(written.messages,
                  "KORU: ExpandPathData. Warning!!! there isn't enough size for the points. They aren't included.\n"
                      + NumberMessage(BrushTooSmall, 0));
    }

    TEST_F(PathRecord, PaintHoldsEveryObject)
    {
        ExpectBytes(Header(176, 0x4000) + Words({64, 128, 164}) + Words({30, 0xFFFFFFD8, 0x0D0D}) + TargetBytes()
                        + ClipBytes() + BrushBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvPaint(&samples.target, &samples.clip, &samples.brush, &samples.point, 0x0D0D,
                                              at, room);
                    });
    }

    TEST_F(PathRecord, PaintOfNothing)
    {
        ExpectBytes(Header(64, 0x4000) + Filled(12, 0) + Filled(8, 0xFF) + Words({1}), [](BYTE* at, ULONG room) {
            return ExpandDrvPaint(nullptr, nullptr, nullptr, nullptr, 1, at, room);
        });
    }

    TEST_F(PathRecord, LineToHoldsEveryObjectButNotItsBounds)
    {
        ExpectBytes(Header(184, 0x800) + Words({72, 136, 172}) + Words({1, 0xFFFFFFFE, 3, 4, 0x0D0D}) + TargetBytes()
                        + ClipBytes() + BrushBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvLineTo(&samples.target, &samples.clip, &samples.brush, 1, -2, 3, 4,
                                               &samples.rectangle, 0x0D0D, at, room);
                    });
    }

    TEST_F(PathRecord, LineToOfNothing)
    {
        ExpectBytes(Header(72, 0x800) + Filled(12, 0) + Words({1, 2, 3, 4, 5}), [](BYTE* at, ULONG room) {
            return ExpandDrvLineTo(nullptr, nullptr, nullptr, 1, 2, 3, 4, nullptr, 5, at, room);
        });
    }

} // namespace
} // namespace capture_tests
