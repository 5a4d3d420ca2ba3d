#include "capture/capture_state.h"

#include <algorithm>

#include "capture/records.h"
#include "tests/unit/capture/capture_test.h"

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

} // namespace
} // namespace capture_tests
