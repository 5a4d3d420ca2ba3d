#include "capture/encoders.h"
#include "engine/core/objects.h"
#include "tests/unit/capture/capture_test.h"
#include "tests/unit/capture/samples.h"

using namespace koru;

namespace capture_tests {
namespace {

    constexpr char EntriesLost[] = "KORU: ExpandXLATEOBJ. Warning!!! Unable to copy the entries, buffer too small.\n";

    class BrushEncoder : public CaptureTest { };

    TEST_F(BrushEncoder, WritesTheRealisedBrushTwiceOrNothing)
    {
        Samples samples;
        const Writer encoder = [&](BYTE* at, ULONG room) { return ExpandBrushObj(&samples.brush, at, room); };
        ExpectAtEveryRoom(12, encoder, [](ULONG room) -> Outcome {
            if (room < 12)
                return {0, {}, NumberMessage("ExpandBrushObj. Error The buffer is too small. ", room)};
            return {12, BrushBytes(), ""};
        });
    }

    TEST_F(BrushEncoder, WritesNoBrushAsOnes)
    {
        ExpectBytes(Words({0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF}),
                    [](BYTE* at, ULONG room) { return ExpandBrushObj(nullptr, at, room); });
    }

    class XlateEncoder : public CaptureTest {
    protected:
        static Writer Encoder(XLATEOBJ& xlate)
        {
            return [&xlate](BYTE* at, ULONG room) { return ExpandXLATEOBJ(&xlate, at, room); };
        }

        // From a source whose vector is 0x010203 and 0x040506; the rest as told.
        struct Object : engine::Translation {
            Object(USHORT iSource, ULONG entries)
                : Translation(engine::PixelLayout::Default(BMF_32BPP), 0, 0)
            {
                static_cast<XLATEOBJ&>(*this) = {0x3401, 4, iSource, 4, entries, nullptr};
                vector = {0x010203, 0x040506};
            }
        };
    };

    TEST_F(XlateEncoder, CopiesTheObjectsTable)
    {
        Samples samples;
        ExpectAtEveryRoom(28, Encoder(samples.xlate), [&](ULONG room) -> Outcome {
            if (room < 20)
                return {0, {}, NumberMessage("ExpandXLATEOBJ: Error Buffer too small. ", room)};
            if (room < 28)
                return {20, Words({0x3301, 2, 0x00080001, 0, reinterpret_cast<ULONG>(samples.table)}), EntriesLost};
            return {28, XlateBytes(), ""};
        });
    }

    TEST_F(XlateEncoder, CopiesTheVectorOfAPaletteWithoutATable)
    {
        Object xlate(1, 2);
        ExpectAtEveryRoom(28, Encoder(xlate), [](ULONG room) -> Outcome {
            if (room < 20)
                return {0, {}, NumberMessage("ExpandXLATEOBJ: Error Buffer too small. ", room)};
            if (room < 28)
                return {20, Words({0x3401, 4, 0x00040001, 0, 0}), EntriesLost};
            return {28, Words({0x3401, 4, 0x00040001, 2, 20, 0x010203, 0x040506}), ""};
        });
    }

    TEST_F(XlateEncoder, PromisesEntriesWhereThereIsNoVector)
    {
        Object xlate(1, 2);
        xlate.vector.clear();
        ExpectBytes(Words({0x3401, 4, 0x00040001, 2, 20}), Encoder(xlate));
    }

    TEST_F(XlateEncoder, IncludesNoEntriesOfSourcesWithoutAPalette)
    {
        for (const USHORT source : {USHORT{0}, USHORT{2}, USHORT{4}, USHORT{8}, USHORT{3}}) {
            Object xlate(source, 2);
            ExpectBytes(Words({0x3401, 4, 0x00040000u | source, 0, 0}), Encoder(xlate));
        }
    }

    TEST_F(XlateEncoder, PointsBehindItselfForAnEmptyTable)
    {
        Samples samples;
        samples.xlate.cEntries = 0;
        ExpectBytes(Words({0x3301, 2, 0x00080001, 0, 20}), Encoder(samples.xlate), 20);
    }

    TEST_F(XlateEncoder, Leaves256EntriesOutOf1000Bytes)
    {
        Object xlate(1, 256);
        const Written written = Write(Encoder(xlate), 1000);
        EXPECT_EQ(written.size, 20u);
        EXPECT_TRUE(IsOnly(written.memory, Words({0x3401, 4, 0x00040001, 0, 0})));
        EXPECT_EQ(written.messages, EntriesLost);
    }

    TEST_F(XlateEncoder, DoesNotTakeAHugeCountForASmallSize)
    {
        Object xlate(1, 0x40000001); // 4 bytes, counted in 32 bits
        const Written written = Write(Encoder(xlate), 1000);
        EXPECT_EQ(written.size, 20u);
        EXPECT_EQ(written.messages, EntriesLost);
    }

} // namespace
} // namespace capture_tests
