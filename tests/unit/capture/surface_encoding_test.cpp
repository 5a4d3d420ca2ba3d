#include "capture/capture_state.h"
#include "capture/encoders.h"
#include "escape/item_cache.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    class SurfaceEncoder : public CaptureTest {
    protected:
        Writer Encoder(const SURFOBJ& surface)
        {
            return [&](BYTE* at, ULONG room) { return ExpandSurfObj(&surface, at, room); };
        }

        Samples samples;
    };

    TEST_F(SurfaceEncoder, WritesAllOrNothing)
    {
        ExpectAtEveryRoom(64, Encoder(samples.target), [](ULONG room) -> Outcome {
            if (room < 64)
                return {0, {}, NumberMessage("ExpandSurfObj: The buffer is too small. ", room)};
            return {64, TargetBytes(), ""};
        });
    }

    TEST_F(SurfaceEncoder, RecordsBottomUpBitmaps)
    {
        ExpectBytes(SourceBytes(), Encoder(samples.source));
    }

    TEST_F(SurfaceEncoder, TellsWhatTheClientHoldsAlready)
    {
        AddCacheItem(CacheOfSurfaces, 0x110A);
        Bytes expected = TargetBytes();
        expected[0] = 1;
        ExpectBytes(expected, Encoder(samples.target));
        ExpectBytes(SourceBytes(), Encoder(samples.source));
    }

    TEST_F(SurfaceEncoder, LooksIntoNoOtherCache)
    {
        AddCacheItem(CacheOfClips, 0x110A);
        AddCacheItem(CacheOfFonts, 0x110A);
        ExpectBytes(TargetBytes(), Encoder(samples.target));
    }

    TEST_F(SurfaceEncoder, NeverTakesTheUniqueNumberZeroForCached)
    {
        AddCacheItem(CacheOfSurfaces, 0);
        ExpectBytes(MaskBytes(), Encoder(samples.mask));
    }

    TEST_F(SurfaceEncoder, SavesNoBitsWhateverItIsAskedFor)
    {
        const RECTL* const rectangles[] = {nullptr, &samples.rectangle};
        for (const LONG limit : {-1, 0, 1000000}) {
            BitsSizeLimit = limit;
            for (const RECTL* const rectangle : rectangles)
                ExpectBytes(SourceBytes(), [&](BYTE* at, ULONG room) {
                    return ExpandSurfObj(&samples.source, at, room, 0x100, rectangle);
                });
        }
    }

} // namespace
} // namespace capture_tests
