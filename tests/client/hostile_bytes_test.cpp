// Any bytes may come: everything is read from records with wrong offsets and counts. The sanitizers and the bounds
// asserted here are what fails.

#include "client/json_lines.h"
#include "wire_bytes.h"

#include <gtest/gtest.h>

#include <random>

namespace koru::client::test {
namespace {

    using Bytes = std::vector<std::byte>;

    // Fixed-part sizes by type bit, from the format's own list.
    constexpr std::uint32_t FixedSizes[] = {48, 80,  48, 48, 48, 48, 64, 48, 112, 96, 72, 72, 72,  96,  64,
                                            72, 104, 64, 64, 56, 80, 72, 64, 72,  96, 96, 96, 144, 144, 80};

    // Objects that every slot can be taken for: small counts, offsets just behind the fixed parts, zeros between.
    Bytes SeedRecord(unsigned bit, std::mt19937& random)
    {
        WireBytes bytes = Header(0, 1u << bit);
        const std::uint32_t fixed = FixedSizes[bit];
        for (std::uint32_t at = 40; at < fixed; at += 4)
            bytes.Words({std::int64_t(random() % 3 ? fixed + random() % 160 : random() % 40)});
        constexpr std::int64_t likely[] = {0, 1, 2, 3, 8, 20, 28, 32, 36, 40, 64, 92, 96, 248, 0x410042, -1};
        for (int i = 0; i < 100; ++i)
            bytes.Words({likely[random() % std::size(likely)]});
        bytes.SetWord(0, static_cast<std::uint32_t>(bytes.size()));
        const std::span<const std::byte> view = bytes;
        return {view.begin(), view.end()};
    }

    void Mutate(Bytes& bytes, std::mt19937& random)
    {
        constexpr std::uint32_t nasty[] = {0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0xFFFFFFF0, 0x10000, 0x40000000};
        for (unsigned changes = random() % 6; changes != 0; --changes) {
            const std::size_t at = random() % bytes.size();
            switch (random() % 3) {
            case 0:
                bytes[at] = std::byte(random());
                break;
            case 1:
                if (at / 4 * 4 + 4 <= bytes.size()) {
                    const std::uint32_t word = nasty[random() % std::size(nasty)];
                    std::memcpy(bytes.data() + at / 4 * 4, &word, 4);
                }
                break;
            default:
                bytes.resize(at + 1);
            }
        }
    }

    void ExpectOrderedInside(const std::vector<Range>& ranges, std::uint32_t length)
    {
        std::uint32_t at = 0;
        for (const Range& range : ranges) {
            ASSERT_LE(at, range.begin);
            ASSERT_LT(range.begin, range.end);
            at = range.end;
        }
        ASSERT_LE(at, length);
    }

    TEST(HostileBytes, AreReadWithinTheirBounds)
    {
        std::mt19937 random(20021);
        std::size_t decoded = 0;
        for (int round = 0; round < 300000; ++round) {
            Bytes bytes = SeedRecord(round % 30, random);
            Mutate(bytes, random);
            const Bytes exact(bytes); // no spare capacity behind the last byte
            const auto record = Record::Decode(exact);
            if (!record)
                continue;
            ++decoded;
            ExpectOrderedInside(UnknownRanges(*record), record->length());
            const std::string line = JsonLine(exact, 0);
            ASSERT_EQ(line.back(), '}');
            ASSERT_LT(line.size(), exact.size() * 40 + 4000); // what is written is bounded by what is there
        }
        EXPECT_GT(decoded, 100000u); // most inputs get past the header
    }

    TEST(HostileBytes, OfEveryLengthAreReadWithinTheirBounds)
    {
        std::mt19937 random(7);
        for (unsigned bit = 0; bit < 30; ++bit) {
            const Bytes whole = SeedRecord(bit, random);
            for (std::size_t length = 0; length <= whole.size(); ++length) {
                Bytes bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
                const auto word = static_cast<std::uint32_t>(length);
                if (length >= 4)
                    std::memcpy(bytes.data(), &word, 4);
                const auto record = Record::Decode(bytes);
                ASSERT_EQ(record.has_value(), length >= FixedSizes[bit]);
                if (record)
                    ExpectOrderedInside(UnknownRanges(*record), record->length());
            }
        }
    }

    // The whole buffer is given, with a record in front of it that promises everything.
    TEST(HostileBytes, CountsOfAllOnesGiveWhatIsThere)
    {
        for (unsigned bit = 0; bit < 30; ++bit) {
            WireBytes bytes = Header(0x10000, 1u << bit);
            for (std::uint32_t at = 40; at < 0x10000; at += 4)
                bytes.Words({at < FixedSizes[bit] ? std::int64_t(FixedSizes[bit]) : -1});
            EXPECT_EQ(JsonLine(bytes, 0).back(), '}');
        }
    }

    TEST(HostileBytes, ARecordIsNeverLongerThanTheBuffer)
    {
        WireBytes bytes = Header(0x10001, 1);
        bytes.Fill(0x10010, 0);
        RecordFault fault{};
        EXPECT_FALSE(Record::Decode(bytes, &fault).has_value());
        EXPECT_EQ(fault, RecordFault::BadLength);
        bytes.SetWord(0, 0x10000);
        EXPECT_TRUE(Record::Decode(bytes, &fault).has_value());
        EXPECT_EQ(fault, RecordFault::None);
    }

    TEST(Array, GivesZerosOutsideOfItsBounds)
    {
        const WireBytes bytes = WireBytes().Words({1, 2, 3});
        const Array<std::uint32_t> array(bytes, 4, 0xFFFFFFFF, 0xFFFFFFFF);
        ASSERT_EQ(array.size(), 2u);
        EXPECT_EQ(array[1], 3u);
        EXPECT_EQ(array[2], 0u);
        EXPECT_EQ(array[0xFFFFFFFF], 0u);
        EXPECT_TRUE((Array<std::uint32_t>(bytes, 12, 1, 100).empty()));
        EXPECT_TRUE((Array<std::uint32_t>(bytes, 0xFFFFFFFF, 1, 0xFFFFFFFF).empty()));
        EXPECT_EQ((Array<std::uint32_t>(bytes, 0, 3, 11).size()), 2u);
    }

    TEST(Record, GivesItsFixedPartOnlyAsItsOwnType)
    {
        const auto record = Record::Decode(RecordOf(0x8, {0x11, 0x12}));
        ASSERT_TRUE(record.has_value());
        EXPECT_FALSE(record->As<AssertModeRecord>().has_value());
        EXPECT_FALSE(record->At(PaletteEntriesSlot{48}).has_value());
        EXPECT_FALSE(record->At(ExtraRectanglesSlot{48}).has_value());
        EXPECT_FALSE(record->At(PatternHandlesSlot{80}).has_value());
        EXPECT_FALSE(record->At(EscapeInputSlot{48}).has_value());
        EXPECT_FALSE(record->At(GradientArraysSlot{48}).has_value());
        EXPECT_EQ(record->header().identifier1, 9u);
        EXPECT_EQ(record->header().timeStamp, 0x100000010);
    }

} // namespace
} // namespace koru::client::test
