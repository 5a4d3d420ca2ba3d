#include "capture/capture_state.h"

#include <algorithm>

#include "capture/records.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    class CaptureState : public BareCaptureTest { };

    Bytes MemoryAt(const BYTE* start, std::size_t size)
    {
        return Bytes(start, start + size);
    }

    TEST_F(CaptureState, CapturesNothingBeforeItIsSetUp)
    {
        EXPECT_EQ(CaptureEnabled, 0u);
        EXPECT_EQ(CaptureSuspended, 0u);
        EXPECT_EQ(CaptureMask, 0u);
        EXPECT_EQ(BitsSizeLimit, 0);
        EXPECT_EQ(BitsCaptureMask, 0u);
        EXPECT_EQ(CaptureBuffer(), nullptr);
        EXPECT_EQ(CaptureScratch(), nullptr);
    }

    TEST_F(CaptureState, MakesAZeroedBufferWithAGuardBehindItAndScratchMemory)
    {
        EXPECT_EQ(AllocateCaptureBuffers(), TRUE);
        EXPECT_EQ(CaptureEnabled, 1u);
        EXPECT_EQ(CaptureMask, 0u);
        EXPECT_EQ(engine.Outstanding().poolBlocks, 2u);
        EXPECT_EQ(MemoryAt(CaptureBuffer(), 0x10004), Filled(0x10000, 0) + Words({0x0F0D0F0D}));
        EXPECT_EQ(MemoryAt(CaptureScratch(), 0x10000), Filled(0x10000, 0));
    }

    TEST_F(CaptureState, KeepsItsBuffersWhenTheDriverIsEnabledAgain)
    {
        AllocateCaptureBuffers();
        BYTE* const buffer = CaptureBuffer();
        BYTE* const scratch = CaptureScratch();
        CaptureEnabled = 0;
        EXPECT_EQ(AllocateCaptureBuffers(), TRUE);
        EXPECT_EQ(CaptureEnabled, 1u);
        EXPECT_EQ(CaptureBuffer(), buffer);
        EXPECT_EQ(CaptureScratch(), scratch);
        EXPECT_EQ(engine.Outstanding().poolBlocks, 2u);
    }

    class CaptureStateOutOfMemory : public BareCaptureTest, public testing::WithParamInterface<ULONG> { };

    TEST_P(CaptureStateOutOfMemory, LeavesNoBufferAndTheSwitchOn)
    {
        engine.Fail(engine::Request::Memory, GetParam());
        EXPECT_EQ(AllocateCaptureBuffers(), FALSE);
        EXPECT_EQ(CaptureEnabled, 1u);
        EXPECT_EQ(CaptureBuffer(), nullptr);
        EXPECT_EQ(CaptureScratch(), nullptr);
        EXPECT_EQ(engine.Outstanding().poolBlocks, 0u);
    }

    TEST_P(CaptureStateOutOfMemory, CanTryAgain)
    {
        engine.Fail(engine::Request::Memory, GetParam());
        AllocateCaptureBuffers();
        EXPECT_EQ(AllocateCaptureBuffers(), TRUE);
        EXPECT_EQ(WordAt(MemoryAt(CaptureBuffer(), 0x10004), 0x10000), 0x0F0D0F0Du);
    }

    INSTANTIATE_TEST_SUITE_P(Request, CaptureStateOutOfMemory, testing::Values(1, 2));

    TEST_F(CaptureState, KeepsTheGuardWhenARecordFillsTheBuffer)
    {
        AllocateCaptureBuffers();
        Bytes input(0x10000 - 72, 0xEE);
        EXPECT_EQ(ExpandDrvEscape(nullptr, 1, static_cast<ULONG>(input.size()), input.data(), 0, nullptr, 0,
                                  CaptureBuffer(), CaptureBufferSize),
                  0x10000u);
        EXPECT_EQ(MemoryAt(CaptureBuffer() + 0xFFFC, 8), Words({0xEEEEEEEE, 0x0F0D0F0D}));
    }

    // Records that do not fit, written where a guard stands behind the buffer.
    class FullCaptureBuffer : public CaptureTest {
    protected:
        ~FullCaptureBuffer() override
        {
            EXPECT_EQ(MemoryAt(CaptureBuffer() + CaptureBufferSize, 4), Words({0x0F0D0F0D}));
        }
        static ULONG LengthInHeader() { return WordAt(MemoryAt(CaptureBuffer(), 4), 0); }

        Samples samples;
    };

    TEST_F(FullCaptureBuffer, EndsARecordWhoseLastSubpathIsLongerThanTheRoom)
    {
        engine::Path path;
        path.Add(0, {{1, 2}});
        path.Add(0, std::vector<POINTFIX>(0x4000)); // 128 KB: more than can be gathered
        EXPECT_EQ(ExpandDrvStrokePath(&samples.target, &path, &samples.clip, nullptr, &samples.brush, &samples.point,
                                      &samples.lineAttrs, 1, CaptureBuffer(), CaptureBufferSize),
                  72u + 64 + 20 + 24 + 8 + 36 + 12 + 40);
        path.subpaths[1].points.resize(8190); // gathered, but there is no room left for them
        EXPECT_EQ(ExpandDrvStrokePath(&samples.target, &path, &samples.clip, nullptr, &samples.brush, &samples.point,
                                      &samples.lineAttrs, 1, CaptureBuffer(), CaptureBufferSize),
                  0x10000u);
        EXPECT_EQ(LengthInHeader(), 0x10000u);
    }

    TEST_F(FullCaptureBuffer, EndsTheArraysOfAGradientWithAHugeCount)
    {
        const std::vector<TRIVERTEX> vertices(0x1000); // 64 KB: more than is left
        const std::vector<GRADIENT_TRIANGLE> mesh(0x2000);
        EXPECT_EQ(ExpandDrvGradientFill(&samples.target, nullptr, nullptr, const_cast<TRIVERTEX*>(vertices.data()),
                                        0xFFFFFFFF, const_cast<GRADIENT_TRIANGLE*>(mesh.data()), 0x80000000, nullptr,
                                        nullptr, GRADIENT_FILL_TRIANGLE, CaptureBuffer(), CaptureBufferSize),
                  96u + 64 + 64 + 64);
    }

    TEST_F(FullCaptureBuffer, GivesTheBrushBehindALongTranslationNoMoreRoomThanThereIs)
    {
        // The translation leaves 8 bytes; the brush would take 12.
        std::vector<ULONG> table((0x10000 - 144 - 20 - 8) / 4);
        XLATEOBJ xlate = {1, XO_TABLE, 0, 0, static_cast<ULONG>(table.size()), table.data()};
        EXPECT_EQ(ExpandDrvStretchBltROP(nullptr, nullptr, nullptr, nullptr, &xlate, nullptr, nullptr, nullptr, nullptr,
                                         nullptr, 3, &samples.brush, 0x88, CaptureBuffer(), CaptureBufferSize),
                  0x10000u - 8);
        EXPECT_EQ(LengthInHeader(), 0x10000u - 8);
    }

} // namespace
} // namespace capture_tests
