// The ring of records against a model that keeps whole frames in a list.

#include "packaging/korutap/ring.h"

#include <gtest/gtest.h>

#include <cstring>
#include <deque>
#include <random>
#include <vector>

namespace {

using korutap::FrameHeader;
using korutap::Ring;
using korutap::Statistics;
using Bytes = std::vector<uint8_t>;

constexpr uint32_t HeaderSize = 16;
constexpr uint8_t Guard = 0xA5;

// A ring with guard bytes around its room.
class GuardedRing {
public:
    explicit GuardedRing(uint32_t size)
        : room_(size + 2 * guards_, Guard)
        , ring(room_.data() + guards_, size)
    {
    }
    ~GuardedRing()
    {
        for (std::size_t i = 0; i < guards_; ++i)
            if (room_[i] != Guard || room_[room_.size() - 1 - i] != Guard)
                ADD_FAILURE() << "the ring wrote outside of its room";
    }

private:
    static constexpr std::size_t guards_ = 64;
    Bytes room_;

public:
    Ring ring;
};

Bytes TakeOne(Ring& ring, uint32_t room = 0x20000)
{
    Bytes target(room, Guard);
    target.resize(ring.Take(target.data(), room));
    return target;
}

TEST(TapRing, KeepsARecordAsAFrame)
{
    GuardedRing guarded(100);
    EXPECT_TRUE(guarded.ring.Put("abc", 3, -2));
    EXPECT_EQ(TakeOne(guarded.ring),
              (Bytes{0, 0, 0, 0, 'K', 'R', 'E', 'C', 3, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF, 'a', 'b', 'c'}));
    EXPECT_EQ(TakeOne(guarded.ring), Bytes{});
}

TEST(TapRing, NumbersRecordsAndKeepsEmptyOnes)
{
    GuardedRing guarded(100);
    EXPECT_TRUE(guarded.ring.Put("a", 1, 0));
    EXPECT_TRUE(guarded.ring.Put(nullptr, 0, 1));
    EXPECT_EQ(TakeOne(guarded.ring).size(), 17u);
    EXPECT_EQ(TakeOne(guarded.ring), (Bytes{1, 0, 0, 0, 'K', 'R', 'E', 'C', 0, 0, 0, 0, 1, 0, 0, 0}));
    EXPECT_EQ(guarded.ring.Counts().empty, 1u);
    EXPECT_EQ(guarded.ring.Counts().read, 2u);
}

TEST(TapRing, GivesUpTheOldestWholeRecordsForANewOne)
{
    GuardedRing guarded(100); // four frames of 25 bytes
    for (char letter : {'a', 'b', 'c', 'd'})
        EXPECT_TRUE(guarded.ring.Put(std::string(9, letter).data(), 9, 0));
    EXPECT_EQ(guarded.ring.Counts().heldBytes, 100u);
    EXPECT_EQ(guarded.ring.Counts().dropped, 0u);
    EXPECT_TRUE(guarded.ring.Put(std::string(10, 'e').data(), 10, 0)) << "one byte more than the oldest leaves";
    EXPECT_EQ(guarded.ring.Counts().dropped, 2u);
    for (const auto& [number, letter] : {std::pair{2, 'c'}, std::pair{3, 'd'}, std::pair{4, 'e'}}) {
        const Bytes frame = TakeOne(guarded.ring);
        ASSERT_GT(frame.size(), HeaderSize);
        EXPECT_EQ(frame[0], number);
        EXPECT_EQ(frame.back(), letter);
    }
    EXPECT_EQ(guarded.ring.Counts().held, 0u);
}

TEST(TapRing, RefusesWhatItCannotKeep)
{
    GuardedRing small(100), large(0x20000);
    const Bytes record(0x10001);
    EXPECT_TRUE(small.ring.Put(record.data(), 84, 0));
    EXPECT_FALSE(small.ring.Put(record.data(), 85, 0)) << "no ring of 100 bytes holds this frame";
    EXPECT_EQ(small.ring.Counts().held, 1u) << "nothing is given up for it";
    EXPECT_TRUE(large.ring.Put(record.data(), 0x10000, 0));
    EXPECT_FALSE(large.ring.Put(record.data(), 0x10001, 0));
    EXPECT_FALSE(large.ring.Put(record.data(), 0xFFFFFFFF, 0));
    EXPECT_FALSE(large.ring.Put(record.data(), 0xFFFFFFF0, 0)) << "with the header this wraps to 0";
    EXPECT_FALSE(large.ring.Put(nullptr, 1, 0));
    const Statistics counts = large.ring.Counts();
    EXPECT_EQ(counts.refused, 4u);
    EXPECT_EQ(counts.submitted, 5u);
    EXPECT_EQ(counts.held, 1u);
}

TEST(TapRing, LeavesAFrameThatDoesNotFitTheReader)
{
    GuardedRing guarded(100);
    guarded.ring.Put("abcd", 4, 0);
    EXPECT_EQ(TakeOne(guarded.ring, 19), Bytes{});
    EXPECT_EQ(TakeOne(guarded.ring, 0), Bytes{});
    EXPECT_EQ(TakeOne(guarded.ring, 20).size(), 20u);
}

TEST(TapRing, StartsAnewWhenCleared)
{
    GuardedRing guarded(100);
    guarded.ring.Put("abcd", 4, 0);
    guarded.ring.Put(nullptr, 9, 0);
    guarded.ring.Clear();
    const Statistics counts = guarded.ring.Counts();
    EXPECT_EQ(counts.submitted + counts.read + counts.dropped + counts.refused + counts.empty, 0u);
    EXPECT_EQ(counts.held + counts.heldBytes, 0u);
    EXPECT_EQ(TakeOne(guarded.ring), Bytes{});
    guarded.ring.Put("x", 1, 0);
    EXPECT_EQ(TakeOne(guarded.ring)[0], 0) << "the first number again";
}

// The same ring, told by whole frames.
class Model {
public:
    explicit Model(uint32_t size)
        : size_(size)
    {
    }
    void Put(const Bytes& record, int32_t flag)
    {
        ++counts.submitted;
        counts.empty += record.empty();
        if (HeaderSize + record.size() > size_) {
            ++counts.refused;
            return;
        }
        Bytes frame(HeaderSize);
        const uint32_t words[] = {sequence_++, 0x4345524B, static_cast<uint32_t>(record.size()),
                                  static_cast<uint32_t>(flag)};
        std::memcpy(frame.data(), words, sizeof(words));
        frame.insert(frame.end(), record.begin(), record.end());
        while (Used() + frame.size() > size_) {
            frames_.pop_front();
            ++counts.dropped;
        }
        frames_.push_back(frame);
    }
    Bytes Take(uint32_t room)
    {
        if (frames_.empty() || frames_.front().size() > room)
            return {};
        const Bytes frame = frames_.front();
        frames_.pop_front();
        ++counts.read;
        return frame;
    }
    std::size_t Used() const
    {
        std::size_t used = 0;
        for (const Bytes& frame : frames_)
            used += frame.size();
        return used;
    }
    std::size_t Held() const { return frames_.size(); }

    Statistics counts = {};

private:
    uint32_t size_;
    uint32_t sequence_ = 0;
    std::deque<Bytes> frames_;
};

void ExpectSameCounts(const Ring& ring, const Model& model)
{
    const Statistics counts = ring.Counts();
    ASSERT_EQ(counts.submitted, model.counts.submitted);
    ASSERT_EQ(counts.read, model.counts.read);
    ASSERT_EQ(counts.dropped, model.counts.dropped);
    ASSERT_EQ(counts.refused, model.counts.refused);
    ASSERT_EQ(counts.empty, model.counts.empty);
    ASSERT_EQ(counts.held, model.Held());
    ASSERT_EQ(counts.heldBytes, model.Used());
    ASSERT_EQ(counts.submitted, counts.read + counts.held + counts.dropped + counts.refused);
}

void Play(std::mt19937& random, uint32_t size, Statistics& seen)
{
    GuardedRing guarded(size);
    Model model(size);
    for (int step = 0; step < 2000; ++step) {
        if (random() % 5 < 3) {
            Bytes record(random() % 8 ? random() % (size / 4 + 1) : random() % (size + 8));
            for (uint8_t& byte : record)
                byte = static_cast<uint8_t>(random());
            const auto flag = static_cast<int32_t>(random());
            guarded.ring.Put(record.data(), static_cast<uint32_t>(record.size()), flag);
            model.Put(record, flag);
        } else {
            const uint32_t room = random() % 4 ? 0x1000 : random() % (size + 1);
            ASSERT_EQ(TakeOne(guarded.ring, room), model.Take(room)) << "step " << step << " of a ring of " << size;
        }
        ExpectSameCounts(guarded.ring, model);
        if (testing::Test::HasFatalFailure())
            return;
    }
    seen.dropped += model.counts.dropped;
    seen.refused += model.counts.refused;
    seen.empty += model.counts.empty;
    seen.read += model.counts.read;
}

TEST(TapRing, IsWhatTheModelSaysOverRandomOperations)
{
    std::mt19937 random(1);
    Statistics seen = {};
    for (int round = 0; round < 60; ++round) {
        Play(random, 16 + random() % 600, seen);
        if (HasFatalFailure())
            return;
    }
    EXPECT_GT(seen.dropped, 5000u) << "the operations must reach what they test";
    EXPECT_GT(seen.refused, 100u);
    EXPECT_GT(seen.empty, 100u);
    EXPECT_GT(seen.read, 5000u);
}

} // namespace
