#include "capture/capture_state.h"
#include "capture/records.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    class BlitRecord : public CaptureTest {
    protected:
        Samples samples;
    };

    const Bytes Rectangle = Words({10, 20, 110, 220});
    const Bytes OtherRectangle = Words({0xFFFFFFFB, 0xFFFFFFFA, 7, 8});
    const Bytes NoRectangleBytes = Filled(16, 0xFF);
    const Bytes Point = Words({30, 0xFFFFFFD8});
    const Bytes OtherPoint = Words({50, 60});
    const Bytes ThirdPoint = Words({70, 80});
    const Bytes NoPointBytes = Filled(8, 0xFF);

    TEST_F(BlitRecord, BitBltHoldsEveryObject)
    {
        ExpectBytes(Header(380, 0x100) + Words({112, 176, 240, 304, 340, 368}) + Rectangle + Point + OtherPoint
                        + ThirdPoint + Words({0xCCAA, Canary}) + TargetBytes() + SourceBytes() + MaskBytes()
                        + ClipBytes() + XlateBytes() + BrushBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvBitBlt(&samples.target, &samples.source, &samples.mask, &samples.clip,
                                               &samples.xlate, &samples.rectangle, &samples.point, &samples.otherPoint,
                                               &samples.brush, &samples.thirdPoint, 0xCCAA, at, room);
                    });
    }

    TEST_F(BlitRecord, BitBltOfNothing)
    {
        ExpectBytes(Header(112, 0x100) + Words({0, 0, 0, 0, 0, 0}) + NoRectangleBytes + NoPointBytes + NoPointBytes
                        + NoPointBytes + Words({0xF0F0, Canary}),
                    [](BYTE* at, ULONG room) {
                        return ExpandDrvBitBlt(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                               nullptr, nullptr, 0xF0F0, at, room);
                    });
    }

    TEST_F(BlitRecord, BitBltForgetsThePointsOfMissingSurfaces)
    {
        ExpectBytes(Header(176, 0x100) + Words({112, 0, 0, 0, 0, 0}) + Rectangle + NoPointBytes + NoPointBytes
                        + ThirdPoint + Words({0x5A5A, Canary}) + TargetBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvBitBlt(&samples.target, nullptr, nullptr, nullptr, nullptr, &samples.rectangle,
                                               &samples.point, &samples.otherPoint, nullptr, &samples.thirdPoint,
                                               0x5A5A, at, room);
                    });
    }

    TEST_F(BlitRecord, BitBltReadsNoMissingPointOrRectangle)
    {
        for (const ULONG mask : {0u, 0xFFFFFFFFu}) {
            BitsCaptureMask = mask;
            CaptureMask = 0x100;
            ExpectBytes(Header(240, 0x100) + Words({0, 112, 176, 0, 0, 0}) + NoRectangleBytes + Point + NoPointBytes
                            + NoPointBytes + Words({0, Canary}) + SourceBytes() + MaskBytes(),
                        [&](BYTE* at, ULONG room) {
                            return ExpandDrvBitBlt(nullptr, &samples.source, &samples.mask, nullptr, nullptr, nullptr,
                                                   &samples.point, nullptr, nullptr, nullptr, 0, at, room);
                        });
        }
    }

    TEST_F(BlitRecord, BitBltGoesOnBehindAnObjectThatDoesNotFit)
    {
        // 40 bytes for the objects: no surface, but the clip; then no translation and no brush.
        const Written written = Write(
            [&](BYTE* at, ULONG room) {
                return ExpandDrvBitBlt(&samples.target, &samples.source, &samples.mask, &samples.clip, &samples.xlate,
                                       &samples.rectangle, nullptr, nullptr, &samples.brush, nullptr, 0, at, room);
            },
            152);
        EXPECT_EQ(written.size, 148u);
        EXPECT_TRUE(IsOnly(written.memory,
                           Header(148, 0x100) + Words({0, 0, 0, 112, 0, 0}) + Rectangle + NoPointBytes + NoPointBytes
                               + NoPointBytes + Words({0, Canary}) + ClipBytes()));
        EXPECT_EQ(written.messages,
                  NumberMessage("ExpandSurfObj: The buffer is too small. ", 40)
                      + NumberMessage("ExpandSurfObj: The buffer is too small. ", 40)
                      + NumberMessage("ExpandSurfObj: The buffer is too small. ", 40)
                      + NumberMessage("ExpandXLATEOBJ: Error Buffer too small. ", 4)
                      + NumberMessage("ExpandBrushObj. Error The buffer is too small. ", 4));
    }

    TEST_F(BlitRecord, CopyBitsHoldsEveryObject)
    {
        ExpectBytes(Header(272, 0x100000) + Words({80, 144, 208, 244}) + Rectangle + Point + TargetBytes()
                        + SourceBytes() + ClipBytes() + XlateBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvCopyBits(&samples.target, &samples.source, &samples.clip, &samples.xlate,
                                                 &samples.rectangle, &samples.point, at, room);
                    });
    }

    TEST_F(BlitRecord, CopyBitsKeepsThePointOfAMissingSource)
    {
        ExpectBytes(Header(80, 0x100000) + Words({0, 0, 0, 0}) + Rectangle + Point, [&](BYTE* at, ULONG room) {
            return ExpandDrvCopyBits(nullptr, nullptr, nullptr, nullptr, &samples.rectangle, &samples.point, at, room);
        });
    }

    TEST_F(BlitRecord, CopyBitsWarnsOfEmptyRectanglesAndRecordsThem)
    {
        const RECTL empty[] = {{10, 20, 10, 30}, {10, 20, 11, 20}, {10, 20, 9, 30}, {10, 20, 30, 19}};
        for (RECTL rectangle : empty) {
            const Written written = Write(
                [&](BYTE* at, ULONG room) {
                    return ExpandDrvCopyBits(&samples.target, nullptr, nullptr, nullptr, &rectangle, &samples.point, at,
                                             room);
                },
                144);
            EXPECT_EQ(written.size, 144u);
            EXPECT_EQ(WordAt(written.memory, 40), 80u);
            EXPECT_EQ(WordAt(written.memory, 64), static_cast<ULONG>(rectangle.right));
            EXPECT_EQ(written.messages, "KORU: ExpandDrvCopyBits: Warning empty rectangle\n");
        }
    }

    TEST_F(BlitRecord, CopyBitsOfNothing)
    {
        const Written written = Write(
            [](BYTE* at, ULONG room) {
                return ExpandDrvCopyBits(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, at, room);
            },
            80);
        EXPECT_EQ(written.size, 80u);
        EXPECT_TRUE(
            IsOnly(written.memory, Header(80, 0x100000) + Words({0, 0, 0, 0}) + NoRectangleBytes + NoPointBytes));
        EXPECT_EQ(written.messages, "KORU: ExpandDrvCopyBits: Warning empty rectangle\n");
    }

    TEST_F(BlitRecord, AlphaBlendHoldsEveryObject)
    {
        BLENDOBJ blend = {{0, 1, 0x80, 2}};
        ExpectBytes(Header(288, 0x1000000) + Words({96, 160, 224, 260}) + Rectangle + OtherRectangle
                        + Words({0x02800100, Canary}) + TargetBytes() + SourceBytes() + ClipBytes() + XlateBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvAlphaBlend(&samples.target, &samples.source, &samples.clip, &samples.xlate,
                                                   &samples.rectangle, &samples.otherRectangle, &blend, at, room);
                    });
    }

    TEST_F(BlitRecord, AlphaBlendOfNothing)
    {
        ExpectBytes(
            Header(96, 0x1000000) + Words({0, 0, 0, 0}) + NoRectangleBytes + NoRectangleBytes + Words({0, Canary}),
            [](BYTE* at, ULONG room) {
                return ExpandDrvAlphaBlend(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, at, room);
            });
    }

    TEST_F(BlitRecord, TransparentBltHoldsEveryObject)
    {
        ExpectBytes(Header(288, 0x4000000) + Words({96, 160, 224, 260}) + Rectangle + OtherRectangle
                        + Words({0xFF00FF, 0x77}) + TargetBytes() + SourceBytes() + ClipBytes() + XlateBytes(),
                    [&](BYTE* at, ULONG room) {
                        return ExpandDrvTransparentBlt(&samples.target, &samples.source, &samples.clip, &samples.xlate,
                                                       &samples.rectangle, &samples.otherRectangle, 0xFF00FF, 0x77, at,
                                                       room);
                    });
    }

    TEST_F(BlitRecord, TransparentBltOfNothing)
    {
        ExpectBytes(Header(96, 0x4000000) + Words({0, 0, 0, 0}) + NoRectangleBytes + NoRectangleBytes + Words({1, 0}),
                    [](BYTE* at, ULONG room) {
                        return ExpandDrvTransparentBlt(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 1, 0, at,
                                                       room);
                    });
    }

} // namespace
} // namespace capture_tests
