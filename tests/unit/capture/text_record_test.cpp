#include "capture/records.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    constexpr char ExtraLost[] = "KORU: ExpandDrvTextOut, Warnning!!! Extra rectangles does not fit in the buffer.\n";

    class TextRecord : public CaptureTest {
    protected:
        Writer WithExtra(RECTL* prclExtra)
        {
            return [=](BYTE* at, ULONG room) {
                return ExpandDrvTextOut(nullptr, nullptr, nullptr, nullptr, prclExtra, nullptr, nullptr, nullptr,
                                        nullptr, 1, at, room);
            };
        }

        Samples samples;
        RECTL extra[3] = {{1, 2, 3, 4}, {0, 0, 0, 8}, {0, 0, 0, 0}};
    };

    // A record of nothing but extra rectangles, up to these.
    Bytes Head(ULONG length, ULONG count, ULONG slot)
    {
        return Header(length, 0x10000) + Words({0, 0, 0, 0, count, slot, 0, 0}) + Filled(24, 0xFF) + Words({1, Canary});
    }

    TEST_F(TextRecord, HoldsEveryObject)
    {
        SampleText text;
        SampleFont font;
        ExpectBytes(Header(580, 0x10000) + Words({104, 168, 240, 488, 2, 524, 556, 568}) + Words({10, 20, 110, 220})
                        + Words({30, 0xFFFFFFD8, 0x0D0D, Canary}) + TargetBytes() + TextBytes() + FontBytes()
                        + ClipBytes() + Words({1, 2, 3, 4, 0, 0, 0, 8}) + BrushBytes() + OtherBrushBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvTextOut(&samples.target, &text, &font, &samples.clip, extra, &samples.rectangle,
                                                &samples.brush, &samples.otherBrush, &samples.point, 0x0D0D, at, room);
                    });
    }

    TEST_F(TextRecord, OfNothing)
    {
        ExpectBytes(Head(104, 0, 0), WithExtra(nullptr), 104);
    }

    TEST_F(TextRecord, TakesExtraRectanglesUpToTheOneOfZeros)
    {
        ExpectBytes(Head(136, 2, 104) + Words({1, 2, 3, 4, 0, 0, 0, 8}), WithExtra(extra), 152);
        ExpectBytes(Head(104, 0, 0), WithExtra(&extra[2]), 120);
    }

    TEST_F(TextRecord, StopsExtraRectanglesAtTheEndOfTheRoomAndWarnsAlsoOfAnExactFit)
    {
        for (ULONG room = 104; room < 152; ++room) {
            const ULONG count = (room - 104) / 16;
            const Bytes rectangles = Words({1, 2, 3, 4, 0, 0, 0, 8});
            const Written written = Write(WithExtra(extra), room);
            EXPECT_EQ(written.size, 104 + 16 * count);
            EXPECT_TRUE(IsOnly(written.memory,
                               Head(104 + 16 * count, count, count != 0 ? 104 : 0)
                                   + Bytes(rectangles.begin(), rectangles.begin() + 16 * count)));
            EXPECT_EQ(written.messages, ExtraLost) << "room " << room;
        }
    }

    TEST_F(TextRecord, ChargesExtraRectanglesBeforeTheBrushes)
    {
        const Written written = Write(
            [&](BYTE* at, ULONG room) {
                return ExpandDrvTextOut(nullptr, nullptr, nullptr, nullptr, extra, nullptr, &samples.brush,
                                        &samples.otherBrush, nullptr, 1, at, room);
            },
            104 + 32 + 20);
        EXPECT_EQ(written.size, 148u);
        EXPECT_EQ(WordAt(written.memory, 64), 136u);
        EXPECT_EQ(WordAt(written.memory, 68), 0u);
        EXPECT_EQ(written.messages, NumberMessage("ExpandBrushObj. Error The buffer is too small. ", 8));
    }

} // namespace
} // namespace capture_tests
