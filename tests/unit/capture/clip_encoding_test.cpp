#include "capture/capture_state.h"
#include "capture/encoders.h"
#include "engine/core/objects.h"
#include "escape/item_cache.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    constexpr char TooManyRectangles[] = "ExpandDrvClipObj: Error buffer too small, Too many rectangles ";

    class ClipEncoder : public CaptureTest {
    protected:
        static Writer Encoder(CLIPOBJ& clip)
        {
            return [&clip](BYTE* at, ULONG room) { return ExpandClipObj(&clip, at, room); };
        }

        Samples samples;
    };

    // One rectangle of a pixel per row.
    engine::ClipObject Rows(LONG count)
    {
        std::vector<RECTL> rectangles;
        for (LONG y = 0; y < count; ++y)
            rectangles.push_back({0, y, 1, y + 1});
        return engine::ClipObject(rectangles);
    }

    // Three rectangles, delivered as two and one.
    struct ThreeRectangles : engine::ClipObject {
        ThreeRectangles()
            : ClipObject({{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}})
        {
            iUniq = 0x2301;
            iFComplexity = 3;
            iMode = 0;
            fjOptions = 7;
            batch = 2;
        }
    };

    Bytes ThreeHead(ULONG count, ULONG offset)
    {
        return Words({0xCCCCCC00, 0x2301, 1, 2, 11, 12, 0x07000303, count, offset});
    }

    TEST_F(ClipEncoder, WritesASimpleClipWithoutRectanglesOrNothing)
    {
        ExpectAtEveryRoom(36, Encoder(samples.clip), [](ULONG room) -> Outcome {
            if (room < 36)
                return {0, {}, NumberMessage("ExpandClipObj: The buffer is too small. ", room)};
            return {36, ClipBytes(), ""};
        });
    }

    TEST_F(ClipEncoder, ListsRectanglesOfComplexClipsAlone)
    {
        for (const BYTE complexity : {DC_TRIVIAL, DC_RECT, BYTE{2}}) {
            ThreeRectangles clip;
            clip.iDComplexity = complexity;
            ExpectBytes(Words({0xCCCCCC00, 0x2301, 1, 2, 11, 12, 0x07000300u | complexity, 0, 0}), Encoder(clip));
        }
    }

    TEST_F(ClipEncoder, DropsWholeBatchesThatDoNotFitAndTriesLaterOnes)
    {
        ThreeRectangles clip;
        ExpectAtEveryRoom(84, Encoder(clip), [](ULONG room) -> Outcome {
            if (room < 36)
                return {0, {}, NumberMessage("ExpandClipObj: The buffer is too small. ", room)};
            if (room < 52)
                return {36, ThreeHead(0, 0),
                        NumberMessage(TooManyRectangles, room - 36) + NumberMessage(TooManyRectangles, room - 36)};
            if (room < 68)
                return {52, ThreeHead(1, 36) + Words({9, 10, 11, 12}), NumberMessage(TooManyRectangles, room - 36)};
            if (room < 84)
                return {68, ThreeHead(2, 36) + Words({1, 2, 3, 4, 5, 6, 7, 8}),
                        NumberMessage(TooManyRectangles, room - 68)};
            return {84, ThreeHead(3, 36) + Words({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}), ""};
        });
    }

    TEST_F(ClipEncoder, TellsWhatTheClientHoldsAlready)
    {
        AddCacheItem(CacheOfSurfaces, 0x2201);
        ExpectBytes(ClipBytes(), Encoder(samples.clip));
        AddCacheItem(CacheOfClips, 0x2201);
        Bytes expected = ClipBytes();
        expected[0] = 1;
        ExpectBytes(expected, Encoder(samples.clip));
    }

    TEST_F(ClipEncoder, NeverTakesTheUniqueNumberZeroForCached)
    {
        AddCacheItem(CacheOfClips, 0);
        samples.clip.iUniq = 0;
        ExpectBytes(Words({0xCCCCCC00, 0, 0xFFFFFFFF, 2, 300, 400, 0x03000201, 0, 0}), Encoder(samples.clip));
    }

    struct LimitCase {
        const char* name;
        LONG rectangles;
        std::size_t batch; // 0: as many as the scratch memory takes, 4095
        ULONG room;
        ULONG listed;
    };

    class ClipEncoderLimit : public ClipEncoder, public testing::WithParamInterface<LimitCase> { };

    TEST_P(ClipEncoderLimit, StopsBeforeTheBatchThatReachesIt)
    {
        const LimitCase& limit = GetParam();
        engine::ClipObject clip = Rows(limit.rectangles);
        clip.batch = limit.batch;
        const Written written = Write(Encoder(clip), limit.room);
        EXPECT_EQ(written.size, 36 + 16 * limit.listed);
        EXPECT_EQ(WordAt(written.memory, 28), limit.listed);
        EXPECT_EQ(WordAt(written.memory, 32), 36u);
        EXPECT_EQ(WordAt(written.memory, 36 + 16 * (limit.listed - 1) + 4), limit.listed - 1); // the last one's top
        EXPECT_EQ(WordAt(written.memory, 36 + 16 * limit.listed), Canary);
        EXPECT_EQ(written.messages, "");
    }

    INSTANTIATE_TEST_SUITE_P(, ClipEncoderLimit,
                             testing::Values(LimitCase{"TheMostThereCanBe", 4095, 0, 0x20000, 4095},
                                             LimitCase{"OneMoreThanThat", 4096, 0, 0x20000, 4095},
                                             LimitCase{"BatchReachingIt", 4096, 2048, 0x20000, 2048},
                                             LimitCase{"BatchStayingBelow", 4095, 2048, 0x20000, 4095},
                                             LimitCase{"BatchCutByNothing", 5000, 1000, 0x10000, 4000}),
                             [](const testing::TestParamInfo<LimitCase>& info) { return info.param.name; });

    TEST_F(ClipEncoder, AsksForAllRectanglesInTheirOwnOrder)
    {
        ThreeRectangles clip;
        clip.rectangles = {{9, 10, 11, 12}, {1, 2, 3, 4}, {5, 6, 7, 8}}; // neither downwards nor upwards
        clip.rclBounds = {5, 6, 7, 8};
        ExpectBytes(Words({0xCCCCCC00, 0x2301, 5, 6, 7, 8, 0x07000303, 3, 36})
                        + Words({9, 10, 11, 12, 1, 2, 3, 4, 5, 6, 7, 8}),
                    Encoder(clip));
    }

    TEST_F(ClipEncoder, LeavesTheEnumerationWhereTheLimitStoppedIt)
    {
        engine::ClipObject clip = Rows(6000);
        clip.batch = 1000;
        const Written written = Write(Encoder(clip), 0x10000);
        EXPECT_EQ(WordAt(written.memory, 28), 4000u);
        EXPECT_EQ(clip.next, 5000u); // the batch that reached the limit was the fifth
    }

    TEST_F(ClipEncoder, DoesNotCountDroppedBatchesTowardsTheLimit)
    {
        engine::ClipObject clip = Rows(4100); // 4095, which do not fit behind 36 bytes, and 5
        const Written written = Write(Encoder(clip), 0x10000);
        EXPECT_EQ(written.size, 36u + 5 * 16);
        EXPECT_EQ(WordAt(written.memory, 28), 5u);
        EXPECT_EQ(WordAt(written.memory, 36 + 4), 4095u);
        EXPECT_EQ(written.messages, NumberMessage(TooManyRectangles, 65500));
    }

    TEST_F(ClipEncoder, AsksAgainAfterAnEmptyBatch)
    {
        ThreeRectangles clip;
        clip.emptyBatches = 2;
        ExpectBytes(ThreeHead(3, 36) + Words({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}), Encoder(clip));
    }

    TEST_F(ClipEncoder, SetsTheEngineNoLimit)
    {
        ThreeRectangles clip;
        clip.limit = 77;
        Write(Encoder(clip), 1000);
        EXPECT_EQ(clip.limit, 0u);
    }

    class ClipEncoderWithoutScratch : public BareCaptureTest { };

    TEST_F(ClipEncoderWithoutScratch, ListsNoRectangles)
    {
        ThreeRectangles clip;
        Bytes memory = Filled(200);
        EXPECT_EQ(ExpandClipObj(&clip, memory.data(), 136), 36u);
        EXPECT_TRUE(IsOnly(memory, ThreeHead(0, 0)));
    }

} // namespace
} // namespace capture_tests
