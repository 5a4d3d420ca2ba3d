#include "capture/records.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    class GradientRecord : public CaptureTest {
    protected:
        Writer WithMesh(SURFOBJ* pso, CLIPOBJ* pco, XLATEOBJ* pxlo, ULONG mode, ULONG meshCount = 1)
        {
            return [=, this](BYTE* at, ULONG room) {
                return ExpandDrvGradientFill(pso, pco, pxlo, vertices, 2, mesh, meshCount, &samples.rectangle,
                                             &samples.point, mode, at, room);
            };
        }

        Samples samples;
        TRIVERTEX vertices[2] = {{1, 2, 0x0304, 0x0506, 0x0708, 0x090A}, {-1, -2, 0x1314, 0x1516, 0x1718, 0x191A}};
        ULONG mesh[6] = {0x21, 0x22, 0x23, 0x24, 0x25, 0x26};
    };

    Bytes Vertices()
    {
        return Words({1, 2, 0x05060304, 0x090A0708, 0xFFFFFFFF, 0xFFFFFFFE, 0x15161314, 0x191A1718});
    }

    // From the array slot to the end of the fixed part.
    Bytes Fixed(ULONG array, ULONG meshCount, ULONG mode)
    {
        return Words({array, 2, 0, meshCount, 10, 20, 110, 220, 30, 0xFFFFFFD8, mode});
    }

    TEST_F(GradientRecord, PlacesTheMeshAsFarBehindTheVerticesAsTheLastObjectIsLong)
    {
        // Both advance the cursor by the translation's 28 bytes: the mesh covers the last 4 of the vertices.
        Bytes arrays = Vertices();
        arrays.resize(28);
        const Bytes expected = Header(280, 0x2000000) + Words({96, 160, 196}) + Fixed(252, 1, 1) + TargetBytes()
            + ClipBytes() + XlateBytes() + arrays + Words({0x21, 0x22});
        ExpectBytes(expected, 280, WithMesh(&samples.target, &samples.clip, &samples.xlate, 1));
    }

    TEST_F(GradientRecord, TakesTheSizeOfTheLastObjectThereIs)
    {
        const Bytes clipLast = Header(204, 0x2000000) + Words({0, 96, 0}) + Fixed(168, 1, 0) + ClipBytes() + Vertices()
            + Words({Canary}) + Words({0x21, 0x22});
        ExpectBytes(clipLast, 204, WithMesh(nullptr, &samples.clip, nullptr, 0));

        const Bytes surfaceLast = Header(288, 0x2000000) + Words({96, 0, 0}) + Fixed(224, 1, 0) + TargetBytes()
            + Vertices() + Filled(32) + Words({0x21, 0x22});
        ExpectBytes(surfaceLast, 288, WithMesh(&samples.target, nullptr, nullptr, 0));
    }

    TEST_F(GradientRecord, LeavesArraysBehindItsLengthWithoutObjects)
    {
        Bytes arrays = Words({0x21, 0x22, 0x23, 0x24});
        const Bytes vertices = Vertices();
        arrays.insert(arrays.end(), vertices.begin() + 16, vertices.end());
        ExpectBytes(Header(96, 0x2000000) + Words({0, 0, 0}) + Fixed(96, 2, 0) + arrays, 96,
                    WithMesh(nullptr, nullptr, nullptr, 0, 2));
    }

    TEST_F(GradientRecord, TakesTwelveBytesPerTriangle)
    {
        ExpectBytes(Header(204, 0x2000000) + Words({0, 96, 0}) + Fixed(168, 2, 2) + ClipBytes() + Vertices()
                        + Words({Canary}) + Words({0x21, 0x22, 0x23, 0x24, 0x25, 0x26}),
                    204, WithMesh(nullptr, &samples.clip, nullptr, 2, 2));
    }

    TEST_F(GradientRecord, TakesNoSizeOfAnObjectThatDoesNotFit)
    {
        // 60 bytes: the clip fits, the translation's 28 do not; so the arrays overlay each other.
        XLATEOBJ& xlate = samples.xlate;
        const Written written = Write(WithMesh(nullptr, &samples.clip, &xlate, 0), 96 + 36 + 19);
        EXPECT_EQ(written.size, 132u);
        EXPECT_EQ(WordAt(written.memory, 48), 0u);
        EXPECT_EQ(WordAt(written.memory, 52), 132u);
        EXPECT_TRUE(IsOnly(Bytes(written.memory.begin() + 132, written.memory.end()),
                           Words({0x21, 0x22, 0x05060304, 0x090A0708})));
        EXPECT_EQ(written.messages, NumberMessage("ExpandXLATEOBJ: Error Buffer too small. ", 19));
    }

    TEST_F(GradientRecord, HoldsTheVerticesAlone)
    {
        ExpectBytes(Header(168, 0x2000000) + Words({0, 96, 0, 132, 2, 0, 0}) + Filled(24, 0) + Words({1}) + ClipBytes()
                        + Vertices(),
                    168, [&](BYTE* at, ULONG room) {
                        return ExpandDrvGradientFill(nullptr, &samples.clip, nullptr, vertices, 2, nullptr, 0, nullptr,
                                                     nullptr, 1, at, room);
                    });
    }

    TEST_F(GradientRecord, HoldsTheMeshAlone)
    {
        ExpectBytes(Header(168, 0x2000000) + Words({0, 96, 0, 132, 0, 0, 1}) + Filled(24, 0) + Words({1}) + ClipBytes()
                        + Words({0x21, 0x22}),
                    168, [&](BYTE* at, ULONG room) {
                        return ExpandDrvGradientFill(nullptr, &samples.clip, nullptr, nullptr, 0, mesh, 1, nullptr,
                                                     nullptr, 1, at, room);
                    });
    }

    TEST_F(GradientRecord, OfNothing)
    {
        ExpectBytes(Header(96, 0x2000000) + Words({0, 0, 0, 0, 7, 0, 8}) + Filled(24, 0) + Words({2}),
                    [](BYTE* at, ULONG room) {
                        return ExpandDrvGradientFill(nullptr, nullptr, nullptr, nullptr, 7, nullptr, 8, nullptr,
                                                     nullptr, 2, at, room);
                    });
    }

    TEST_F(GradientRecord, CopiesWholeElementsUpToTheEndOfTheRoom)
    {
        for (const ULONG count : {2u, 0x10000001u, 0xFFFFFFFFu}) {
            const Written written = Write(
                [&](BYTE* at, ULONG room) {
                    return ExpandDrvGradientFill(nullptr, nullptr, nullptr, vertices, count, nullptr, 0, nullptr,
                                                 nullptr, 0, at, room);
                },
                96 + 31);
            EXPECT_EQ(written.size, 96u);
            EXPECT_EQ(WordAt(written.memory, 56), count);
            EXPECT_TRUE(IsOnly(Bytes(written.memory.begin() + 96, written.memory.end()),
                               Words({1, 2, 0x05060304, 0x090A0708})));
        }
    }

    TEST_F(GradientRecord, EndsWithItsRoom)
    {
        // Behind the surface 40 bytes are left; each array would take the surface's 64.
        const Written written = Write(WithMesh(&samples.target, nullptr, nullptr, 0), 96 + 64 + 40);
        EXPECT_EQ(written.size, 200u);
        EXPECT_EQ(WordAt(written.memory, 0), 200u);
        EXPECT_EQ(WordAt(written.memory, 52), 200u);
        EXPECT_TRUE(IsOnly(Bytes(written.memory.begin() + 160, written.memory.end()), Vertices()));
    }

} // namespace
} // namespace capture_tests
