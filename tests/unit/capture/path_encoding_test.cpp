#include "capture/encoders.h"
#include "engine/core/objects.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    constexpr char PointsNotIncluded[] =
        "KORU: ExpandPathData. Warning!!! there isn't enough size for the points. They aren't included.\n";
    constexpr char PathsLost[] = "KORU: ExpandPathData. Error there isn't size enough to store the paths.\n";

    std::string PointsLost(ULONG count, ULONG entries, ULONG left)
    {
        return NumberMessage("ExpandPathDat: Error there isn't enough space in the temporary buffer. Some points lost.",
                             count)
            + NumberMessage("ExpandPathDat: len = ", count * 8)
            + NumberMessage("ExpandPathDat: *pulPathData + 1 = ", entries)
            + NumberMessage("ExpanPathData: TempBuffLen =  ", left);
    }

    class PathEncoder : public CaptureTest {
    protected:
        static Writer Encoder(PATHOBJ& path)
        {
            return [&path](BYTE* at, ULONG room) { return ExpandPathObj(&path, at, room); };
        }
    };

    // Subpaths of 2, 3 and 4 points.
    struct ThreeSubpaths : engine::Path {
        ThreeSubpaths()
        {
            Add(1, {{16, 17}, {32, -33}});
            Add(0, {{1, 2}, {3, 4}, {5, 6}});
            Add(0x1A, {{7, 8}, {9, 10}, {11, 12}, {13, 14}});
            fl = 0x31;
            cCurves = 0x32;
        }
    };

    Bytes PathHead(ULONG entries, ULONG offset)
    {
        return Words({0x31, 0x32, Canary, entries, offset});
    }

    const Bytes FirstGathered = Words({1, 2, 0}); // flags, points, where they stand in the scratch memory
    const Bytes SecondGathered = Words({0, 3, 16});
    const Bytes ThirdGathered = Words({0x1A, 4, 40});

    Bytes ThreeWithPoints()
    {
        return PathHead(3, 20) + Words({1, 2, 0}) + Words({0, 3, 40}) + Words({0x1A, 4, 52})
            + Words({16, 17, 32, 0xFFFFFFDF}) + Words({1, 2, 3, 4, 5, 6}) + Words({7, 8, 9, 10, 11, 12, 13, 14});
    }

    TEST_F(PathEncoder, WritesEntriesThenPointsAsFarAsTheyFit)
    {
        ThreeSubpaths path;
        ExpectAtEveryRoom(129, Encoder(path), [](ULONG room) -> Outcome {
            if (room < 20)
                return {0, {}, NumberMessage("ExpandPathObj. Error buffer too small. ", room)};
            if (room < 32)
                return {20, PathHead(0, 0), NumberMessage("ExpandPathData. Error Buffer too small. ", room - 20)};
            if (room < 44)
                return {20, PathHead(1, 0) + FirstGathered, PathsLost};
            if (room < 56)
                return {20, PathHead(2, 0) + FirstGathered + SecondGathered, PathsLost};
            if (room < 129) // 72 bytes of points need more than 72: the size of the last ones is what is returned
                return {20 + 32, PathHead(3, 20) + FirstGathered + SecondGathered + ThirdGathered, PointsNotIncluded};
            return {128, ThreeWithPoints(), ""};
        });
    }

    TEST_F(PathEncoder, ReturnsTheLastSubpathsPointsWhenPointsDoNotFit)
    {
        engine::Path path;
        path.Add(0, {{1, 2}});
        path.Add(0, std::vector<POINTFIX>(100));
        const Written written = Write(Encoder(path), 44);
        EXPECT_EQ(written.size, 20u + 800); // beyond the room
        EXPECT_EQ(written.messages, PointsNotIncluded);
    }

    TEST_F(PathEncoder, NeverReturnsASmallSizeForPointsWithoutEnd)
    {
        for (const ULONG count : {0x20000000u, 0x1FFFFFFEu, 0xFFFFFFFFu}) { // times 8 is past 32 bits, or nearly
            engine::Path path;
            path.Add(0, {{1, 2}});
            path.Add(0, {{3, 4}});
            path.subpaths[1].countTold = count;
            const Written written = Write(Encoder(path), 44);
            EXPECT_GE(written.size, 0x10000u);
        }
    }

    TEST_F(PathEncoder, WritesAnEmptyPathWithoutEntries)
    {
        engine::Path path;
        path.fl = 0x31;
        path.cCurves = 0x32;
        ExpectBytes(PathHead(0, 0), Encoder(path));
    }

    TEST_F(PathEncoder, KeepsASingleSubpathsPointsBehindItsEntry)
    {
        engine::Path path;
        path.Add(3, {{1, 2}});
        path.fl = 0x31;
        path.cCurves = 0x32;
        ExpectBytes(PathHead(1, 20) + Words({3, 1, 0}) + Words({1, 2}), Encoder(path));
    }

    TEST_F(PathEncoder, CountsSubpathsWithoutPoints)
    {
        engine::Path path;
        path.Add(1, {});
        path.Add(2, {{1, 2}});
        path.Add(4, {});
        path.Add(8, {{3, 4}});
        path.fl = 0x31;
        path.cCurves = 0x32;
        // The second entry's points are the first ones, so it holds 0 too.
        ExpectBytes(PathHead(4, 20) + Words({1, 0, 0}) + Words({2, 1, 0}) + Words({4, 0, 32}) + Words({8, 1, 20})
                        + Words({1, 2, 3, 4}),
                    Encoder(path));
    }

    TEST_F(PathEncoder, WantsMoreRoomThanItsPointsTakeEvenWhenThereAreNone)
    {
        engine::Path path;
        path.Add(9, {});
        path.Add(0, {});
        path.fl = 0x31;
        path.cCurves = 0x32;
        const Written exact = Write(Encoder(path), 32);
        EXPECT_EQ(exact.size, 20u);
        EXPECT_TRUE(IsOnly(exact.memory, PathHead(1, 0) + Words({9, 0, 0})));
        EXPECT_EQ(exact.messages, PointsNotIncluded);
        ExpectBytes(PathHead(1, 20) + Words({9, 0, 0}), Encoder(path), 33);
    }

    TEST_F(PathEncoder, TakesAFinalDeliveryWithoutPointsForTheEnd)
    {
        engine::Path path;
        path.Add(3, {{1, 2}});
        path.Add(0, {});
        path.fl = 0x31;
        path.cCurves = 0x32;
        ExpectBytes(PathHead(1, 20) + Words({3, 1, 0}) + Words({1, 2}), Encoder(path));
    }

    TEST_F(PathEncoder, Gathers8191PointsOfOneSubpath)
    {
        engine::Path path;
        path.Add(0, std::vector<POINTFIX>(8191, POINTFIX{5, 6}));
        const Written written = Write(Encoder(path), 0x20000);
        EXPECT_EQ(written.size, 20u + 12 + 65528);
        EXPECT_EQ(WordAt(written.memory, 32), 5u);
        EXPECT_EQ(WordAt(written.memory, 20 + 12 + 65524), 6u);
        EXPECT_EQ(written.messages, "");
    }

    TEST_F(PathEncoder, Loses8192PointsOfOneSubpath)
    {
        engine::Path path;
        path.Add(7, std::vector<POINTFIX>(8192));
        path.fl = 0x31;
        path.cCurves = 0x32;
        const Written written = Write(Encoder(path), 0x20000);
        EXPECT_EQ(written.size, 32u);
        EXPECT_TRUE(IsOnly(written.memory, PathHead(1, 20) + Words({7, 8192, 0})));
        EXPECT_EQ(written.messages, PointsLost(8192, 1, 65536));
    }

    TEST_F(PathEncoder, KeepsWhatStillFitsAfterLostPoints)
    {
        engine::Path path;
        path.Add(0, std::vector<POINTFIX>(8000, POINTFIX{5, 6}));
        path.Add(1, std::vector<POINTFIX>(192)); // as much as is left: not less
        path.Add(2, {{7, 8}});
        const Written written = Write(Encoder(path), 0x20000);
        EXPECT_EQ(written.size, 20u + 3 * 12 + 8001 * 8);
        EXPECT_EQ(WordAt(written.memory, 20 + 8), 0u);
        EXPECT_EQ(WordAt(written.memory, 32 + 8), 0u);
        EXPECT_EQ(WordAt(written.memory, 44 + 8), 12u + 8000 * 8);
        EXPECT_EQ(WordAt(written.memory, 44 + 12 + 8000 * 8), 7u);
        EXPECT_EQ(written.messages, PointsLost(192, 2, 1536));
    }

    class PathEncoderWithoutScratch : public BareCaptureTest { };

    TEST_F(PathEncoderWithoutScratch, LosesThePoints)
    {
        engine::Path path;
        path.Add(3, {{1, 2}});
        path.fl = 0x31;
        path.cCurves = 0x32;
        Bytes memory = Filled(200);
        EXPECT_EQ(ExpandPathObj(&path, memory.data(), 136), 32u);
        EXPECT_TRUE(IsOnly(memory, PathHead(1, 20) + Words({3, 1, 0})));
        EXPECT_EQ(engine.DebugOutput(), PointsLost(1, 1, 0));
    }

    class LineAttrsEncoder : public CaptureTest {
    protected:
        Writer Encoder()
        {
            return [this](BYTE* at, ULONG room) { return ExpandLineattrs(&samples.lineAttrs, at, room); };
        }

        Samples samples;
    };

    constexpr char StylesLost[] =
        "KORU: ExpandLineattrs: Warning!! There isn't size enough. Styles are not included.\n";

    TEST_F(LineAttrsEncoder, WritesStylesWholeOrNot)
    {
        ExpectAtEveryRoom(40, Encoder(), [](ULONG room) -> Outcome {
            if (room < 32)
                return {0, {}, NumberMessage("ExpandLineattrs: Error buffer too small. ", room)};
            if (room < 40)
                return {32, Words({2, 1, 2, 7, 0x41200000, 2, 0, 9}), StylesLost};
            return {40, LineAttrsBytes(), ""};
        });
    }

    TEST_F(LineAttrsEncoder, LeavesFourStylesOutOf40Bytes)
    {
        FLOAT_LONG styles[4] = {};
        samples.lineAttrs.cstyle = 4;
        samples.lineAttrs.pstyle = styles;
        const Written written = Write(Encoder(), 40);
        EXPECT_EQ(written.size, 32u);
        EXPECT_TRUE(IsOnly(written.memory, Words({2, 1, 2, 7, 0x41200000, 4, 0, 9})));
        EXPECT_EQ(written.messages, StylesLost);
    }

    TEST_F(LineAttrsEncoder, KeepsTheCountOfMissingStyles)
    {
        samples.lineAttrs.pstyle = nullptr;
        ExpectBytes(Words({2, 1, 2, 7, 0x41200000, 2, 0, 9}), Encoder(), 32);
    }

    TEST_F(LineAttrsEncoder, DoesNotTakeAHugeCountForASmallSize)
    {
        samples.lineAttrs.cstyle = 0x40000001;
        const Written written = Write(Encoder(), 1000);
        EXPECT_EQ(written.size, 32u);
        EXPECT_EQ(written.messages, StylesLost);
    }

} // namespace
} // namespace capture_tests
