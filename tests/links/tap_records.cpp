// korutap.sys: records that are submitted and read.

#include <sys/mman.h>

#include "tests/links/tap.h"

namespace links {
namespace {

    constexpr ULONG MostBytes = 0x10000, HeaderBytes = 16;

    ULONG WordAt(const std::vector<BYTE>& bytes, std::size_t at)
    {
        ULONG word = 0xDEADBEEF;
        if (at + sizeof(word) <= bytes.size())
            std::memcpy(&word, bytes.data() + at, sizeof(word));
        return word;
    }

    TEST(TapRecords, AreReadAsFramesInTheirOrder)
    {
        OpenTap tap;
        EXPECT_EQ(tap.QP("first", 5, 0), 1);
        EXPECT_EQ(tap.QP("2nd", 3, 1), 1);
        const Answer answer = tap.Read();
        EXPECT_EQ(answer.status, StatusSuccess);
        EXPECT_EQ(answer.output,
                  (std::vector<BYTE>{0,   0, 0, 0, 'K', 'R', 'E', 'C', 5,   0, 0, 0, 0, 0, 0, 0, 'f', 'i', 'r', 's',
                                     't', 1, 0, 0, 0,   'K', 'R', 'E', 'C', 3, 0, 0, 0, 1, 0, 0, 0,   '2', 'n', 'd'}));
        EXPECT_EQ(tap.Read().information, 0u) << "nothing is there twice";
        EXPECT_EQ(tap.Read().status, StatusSuccess);
    }

    TEST(TapRecords, AreReadByRequestsThatHoldTheLargestOne)
    {
        OpenTap tap;
        const std::vector<BYTE> record(MostBytes, 7);
        tap.QP(record.data(), MostBytes, 0);
        for (ULONG size : {0u, 1u, HeaderBytes, MostBytes, MostBytes + HeaderBytes - 1}) {
            const Answer answer = tap.Read(size);
            EXPECT_EQ(answer.status, StatusBufferTooSmall) << size;
            EXPECT_EQ(answer.information, 0u) << size;
        }
        const Answer answer = tap.Read(MostBytes + HeaderBytes);
        EXPECT_EQ(answer.status, StatusSuccess);
        ASSERT_EQ(answer.information, MostBytes + HeaderBytes);
        EXPECT_TRUE(std::equal(record.begin(), record.end(), answer.output.begin() + HeaderBytes));
    }

    TEST(TapRecords, AreNeverReadInPart)
    {
        OpenTap tap;
        const std::vector<BYTE> record(40000);
        tap.QP(record.data(), 40000, 0);
        tap.QP(record.data(), 40000, 0);
        EXPECT_EQ(tap.Read(80031).information, 40016u);
        tap.QP(record.data(), 40000, 0);
        const Answer both = tap.Read(80032);
        EXPECT_EQ(both.information, 80032u);
        EXPECT_EQ(WordAt(both.output, 0), 1u);
        EXPECT_EQ(WordAt(both.output, 40016), 2u);
    }

    TEST(TapRecords, OfNoLengthAreKeptAndCounted)
    {
        OpenTap tap;
        EXPECT_EQ(tap.QP(nullptr, 0, 1), 1) << "Koru had no buffer";
        EXPECT_EQ(tap.QP("x", 0, 0), 1) << "Koru's record did not fit";
        EXPECT_EQ(tap.Statistics().empty, 2u);
        EXPECT_EQ(tap.Read().information, 2 * HeaderBytes);
    }

    TEST(TapRecords, ThatAreTooLongOrNowhereAreRefusedAndCounted)
    {
        OpenTap tap;
        const std::vector<BYTE> record(MostBytes);
        EXPECT_EQ(tap.QP(record.data(), MostBytes + 1, 0), 0);
        EXPECT_EQ(tap.QP(record.data(), 0xFFFFFFFF, 0), 0);
        EXPECT_EQ(tap.QP(nullptr, 1, 0), 0);
        EXPECT_EQ(tap.QP(nullptr, 0xFFFFFFFF, 0), 0);
        const korutap::Statistics counts = tap.Statistics();
        EXPECT_EQ(counts.refused, 4u);
        EXPECT_EQ(counts.submitted, 4u);
        EXPECT_EQ(tap.Read().information, 0u);
        tap.QP("x", 1, 0);
        EXPECT_EQ(WordAt(tap.Read().output, 0), 0u) << "what is refused has no number";
    }

    // 15 of the largest frames fit 1 MB.
    TEST(TapRecords, GiveWayToNewOnesWhenTheRingIsFull)
    {
        OpenTap tap;
        std::vector<BYTE> record(MostBytes);
        for (BYTE number = 0; number < 20; ++number) {
            record[0] = number;
            EXPECT_EQ(tap.QP(record.data(), MostBytes, 0), 1);
        }
        const korutap::Statistics counts = tap.Statistics();
        EXPECT_EQ(counts.dropped, 5u);
        EXPECT_EQ(counts.held, 15u);
        EXPECT_EQ(counts.heldBytes, 983280u);
        for (BYTE number = 5; number < 20; ++number) {
            const Answer answer = tap.Read(MostBytes + HeaderBytes);
            ASSERT_EQ(answer.information, MostBytes + HeaderBytes);
            EXPECT_EQ(WordAt(answer.output, 0), number);
            EXPECT_EQ(answer.output[HeaderBytes], number);
        }
        EXPECT_EQ(tap.Statistics().read, 15u);
        EXPECT_EQ(tap.Read().information, 0u);
    }

    TEST(TapRecords, AreDroppedWithoutAReader)
    {
        Tap tap;
        tap.Start();
        const ULONG locks = tap.kernel.locksTaken;
        EXPECT_EQ(tap.QP("x", 1, 0), 0);
        EXPECT_EQ(tap.kernel.locksTaken, locks) << "QP returns at once";
        tap.Open();
        EXPECT_EQ(tap.Statistics().submitted, 0u);
        EXPECT_EQ(tap.Read().information, 0u);
    }

    TEST(TapRecords, OfAReaderAreGoneWhenItsHandleIsClosed)
    {
        OpenTap tap;
        tap.QP("secret", 6, 0);
        tap.Cleanup();
        EXPECT_EQ(tap.QP("more", 4, 0), 0);
        EXPECT_EQ(tap.Read().information, 0u) << "a read that comes late";
        EXPECT_EQ(tap.Read().status, StatusSuccess);
        tap.Close();
        tap.Open();
        EXPECT_EQ(tap.Read().information, 0u);
        tap.QP("new", 3, 0);
        const Answer answer = tap.Read();
        EXPECT_EQ(answer.information, HeaderBytes + 3);
        EXPECT_EQ(WordAt(answer.output, 0), 0u) << "numbers begin anew";
        EXPECT_EQ(tap.Statistics().submitted, 1u);
    }

    // The reader's handle goes while a record is on its way.
    TEST(TapRecords, ThatMeetTheReadersEndAreNotKept)
    {
        OpenTap tap;
        const ULONG qp = tap.EntryPoints().qp;
        tap.kernel.beforeLock = [&tap] { tap.Cleanup(); };
        EXPECT_EQ(reinterpret_cast<LONG(APIENTRY*)(const void*, ULONG, LONG)>(qp)("x", 1, 0), 0);
        tap.Close();
        tap.Open();
        EXPECT_EQ(tap.Statistics().submitted, 0u);
        EXPECT_EQ(tap.QP("y", 1, 0), 1) << "and the way is free again";
    }

    TEST(TapRecords, ThatMeetAnotherOnItsWayAreRefusedAndCounted)
    {
        OpenTap tap;
        const auto qp = reinterpret_cast<LONG(APIENTRY*)(const void*, ULONG, LONG)>(tap.EntryPoints().qp);
        LONG second = -1;
        tap.kernel.beforeLock = [&] { second = qp("intruder", 8, 0); };
        EXPECT_EQ(qp("first", 5, 0), 1);
        EXPECT_EQ(second, 0);
        EXPECT_EQ(tap.Statistics().refused, 1u);
        const Answer answer = tap.Read();
        EXPECT_EQ(std::string(answer.output.begin() + HeaderBytes, answer.output.end()), "first");
        EXPECT_EQ(qp("third", 5, 0), 1);
    }

    // Koru's buffer comes from the engine's paged pool: a page that is out, touched under a spin lock, ends the
    // system. Here such a touch ends the test program.
    TEST(TapRecords, AreFetchedFromPagedMemoryBeforeTheLockIsTaken)
    {
        OpenTap tap;
        void* const pages = mmap(nullptr, MostBytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        ASSERT_NE(pages, MAP_FAILED);
        std::memset(pages, 9, MostBytes);
        const ULONG qp = tap.EntryPoints().qp;
        tap.kernel.MakePageable(pages, MostBytes);
        EXPECT_EQ(reinterpret_cast<LONG(APIENTRY*)(const void*, ULONG, LONG)>(qp)(pages, MostBytes, 0), 1);
        tap.kernel.MakePageable(nullptr, 0);
        munmap(pages, MostBytes);
        const Answer answer = tap.Read();
        ASSERT_EQ(answer.information, MostBytes + HeaderBytes);
        EXPECT_EQ(answer.output.back(), 9);
    }

    TEST(TapRecords, AreReadWithTheLockGivenBackBetweenThem)
    {
        OpenTap tap;
        for (int i = 0; i < 10; ++i)
            tap.QP("x", 1, 0);
        const ULONG before = tap.kernel.locksTaken;
        EXPECT_EQ(tap.Read().information, 10 * (HeaderBytes + 1));
        EXPECT_EQ(tap.kernel.locksTaken - before, 11u) << "one for each, one that finds none";
    }

} // namespace
} // namespace links
