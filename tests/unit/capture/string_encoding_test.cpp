#include "capture/encoders.h"
#include "tests/unit/capture/capture_test.h"

using namespace koru;

namespace capture_tests {
namespace {

    constexpr char Truncated[] = "KORU: ExpandWSTR: Error the string is truncated, the buffer is too small.\n";
    constexpr char TruncatedOrMissing[] =
        "KORU: ExpandDrvZWSTR: Warning!!! There isn't size enough for the string. String truncated or missing\n";
    constexpr std::u16string_view Letters = u"ABCDEFGHIJ";

    class StringEncoder : public CaptureTest { };

    TEST_F(StringEncoder, CutsCountedStringsToTheRoomBesideTheTerminator)
    {
        const Writer encoder = [](BYTE* at, ULONG room) { return ExpandWSTR(Letters.data(), 10, at, room); };
        ExpectAtEveryRoom(22, encoder, [](ULONG room) -> Outcome {
            if (room < 2)
                return {0, {}, ""};
            if (room < 22)
                return {room / 2 * 2, Characters(Letters.substr(0, room / 2 - 1)) + Halves({0}), Truncated};
            return {22, Characters(Letters) + Halves({0}), ""};
        });
    }

    TEST_F(StringEncoder, CutsTenCharactersIn21BytesToNine)
    {
        const Written written =
            Write([](BYTE* at, ULONG room) { return ExpandWSTR(Letters.data(), 10, at, room); }, 21);
        EXPECT_EQ(written.size, 20u);
        EXPECT_TRUE(IsOnly(written.memory, Characters(u"ABCDEFGHI") + Halves({0})));
        EXPECT_EQ(written.messages, Truncated);
    }

    TEST_F(StringEncoder, CopiesZerosWithinCountedStrings)
    {
        const WCHAR text[] = {u'A', 0, u'B'};
        ExpectBytes(Halves({0x41, 0, 0x42, 0}), [&](BYTE* at, ULONG room) { return ExpandWSTR(text, 3, at, room); });
    }

    TEST_F(StringEncoder, EndsAnEmptyCountedString)
    {
        ExpectBytes(
            Halves({0}), [](BYTE* at, ULONG room) { return ExpandWSTR(u"", 0, at, room); }, 2);
    }

    TEST_F(StringEncoder, EndsTerminatedStringsInTheirLastCharacterWhenTheRoomRunsOut)
    {
        const Writer encoder = [](BYTE* at, ULONG room) { return ExpandDrvZWSTR(u"ABCDEFGHIJ", at, room); };
        ExpectAtEveryRoom(22, encoder, [](ULONG room) -> Outcome {
            if (room < 2)
                return {0, {}, TruncatedOrMissing};
            if (room < 22)
                return {room / 2 * 2, Characters(Letters.substr(0, room / 2 - 1)) + Halves({0}), TruncatedOrMissing};
            return {22, Characters(Letters) + Halves({0}), ""};
        });
    }

    TEST_F(StringEncoder, Keeps5CharactersOfTenIn12Bytes)
    {
        const Written written =
            Write([](BYTE* at, ULONG room) { return ExpandDrvZWSTR(Letters.data(), at, room); }, 12);
        EXPECT_EQ(written.size, 12u);
        EXPECT_TRUE(IsOnly(written.memory, Characters(u"ABCDE") + Halves({0})));
        EXPECT_EQ(written.messages, TruncatedOrMissing);
    }

    TEST_F(StringEncoder, WritesAnEmptyTerminatedString)
    {
        ExpectBytes(
            Halves({0}), [](BYTE* at, ULONG room) { return ExpandDrvZWSTR(u"", at, room); }, 2);
    }

    TEST_F(StringEncoder, WarnsOfAnEmptyStringWithoutRoom)
    {
        const Written written = Write([](BYTE* at, ULONG room) { return ExpandDrvZWSTR(u"", at, room); }, 1);
        EXPECT_EQ(written.size, 0u);
        EXPECT_TRUE(IsOnly(written.memory, {}));
        EXPECT_EQ(written.messages, TruncatedOrMissing);
    }

    TEST_F(StringEncoder, ReadsTerminatedStringsAtOddAddresses)
    {
        const Bytes text = Bytes{0xEE} + Characters(u"AB") + Halves({0}) + Bytes{0xEE};
        ExpectBytes(Characters(u"AB") + Halves({0}),
                    [&](BYTE* at, ULONG room) { return ExpandZWSTR(text.data() + 1, NoLimit, at, room); });
    }

    TEST_F(StringEncoder, ReadsNoFurtherThanItsLimit)
    {
        ExpectBytes(Characters(u"ABC") + Halves({0}),
                    [](BYTE* at, ULONG room) { return ExpandZWSTR(Letters.data(), 3, at, room); });
        ExpectBytes(Halves({0}), [](BYTE* at, ULONG room) { return ExpandZWSTR(Letters.data(), 0, at, room); });
    }

} // namespace
} // namespace capture_tests
