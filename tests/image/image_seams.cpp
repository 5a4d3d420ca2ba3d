// A broken calling convention is told, and the caller goes on.

#include <gtest/gtest.h>

#include "engine/core/engine.h"
#include "engine/core/exports.h"
#include "engine/loader/seams.h"

namespace {

using namespace engine;

using Two = ULONG(APIENTRY*)(ULONG, ULONG);
using Three = ULONG(APIENTRY*)(ULONG, ULONG, ULONG);
using CallersTwo = ULONG(__attribute__((cdecl)) *)(ULONG, ULONG);
using Long = ULONGLONG(APIENTRY*)();

ULONG APIENTRY Difference(ULONG first, ULONG second)
{
    return first - second;
}

ULONG __attribute__((cdecl)) CallersDifference(ULONG first, ULONG second)
{
    return first - second;
}

ULONGLONG APIENTRY LongNumber()
{
    return 0x1122334455667788;
}

// Functions that no compiler makes. Each takes nothing and answers 7.
asm(R"(
    .text
clears_ebx: xor %ebx, %ebx ; mov $7, %eax ; ret
clears_esi: xor %esi, %esi ; mov $7, %eax ; ret
clears_edi: xor %edi, %edi ; mov $7, %eax ; ret
goes_down:  std ; mov $7, %eax ; ret
)");
extern "C" ULONG APIENTRY ClearsEbx() __asm__("clears_ebx");
extern "C" ULONG APIENTRY ClearsEsi() __asm__("clears_esi");
extern "C" ULONG APIENTRY ClearsEdi() __asm__("clears_edi");
extern "C" ULONG APIENTRY GoesDown() __asm__("goes_down");

class SeamTest : public testing::Test {
protected:
    template<class Pfn, class Function> Pfn Seam(Function* target, ULONG bytes, bool calleeTakes = true)
    {
        return reinterpret_cast<Pfn>(seams.Add({"It", reinterpret_cast<PFN>(target), bytes, calleeTakes, {}}));
    }
    std::vector<std::string> Violations() { return engine.Violations(); }

    Engine engine;
    Seams seams;
};

using Lines = std::vector<std::string>;

TEST_F(SeamTest, RightCallsPassWithArgumentsAndResults)
{
    EXPECT_EQ(Seam<Two>(&Difference, 8)(9, 4), 5u);
    EXPECT_EQ(Seam<CallersTwo>(&CallersDifference, 8, false)(9, 4), 5u);
    EXPECT_EQ(Seam<Long>(&LongNumber, 0)(), 0x1122334455667788u);
    EXPECT_EQ(Violations(), Lines{});
}

TEST_F(SeamTest, TooFewBytesTakenAreTold)
{
    EXPECT_EQ(Seam<Three>(&Difference, 12)(9, 4, 1), 5u);
    EXPECT_EQ(Violations(), Lines{"It takes 8 bytes of arguments off the stack instead of 12"});
}

TEST_F(SeamTest, ACdeclFunctionBehindAStdcallSeamIsTold)
{
    EXPECT_EQ(Seam<Two>(&CallersDifference, 8)(9, 4), 5u);
    EXPECT_EQ(Violations(), Lines{"It takes 0 bytes of arguments off the stack instead of 8"});
}

TEST_F(SeamTest, AStdcallFunctionBehindACdeclSeamIsTold)
{
    EXPECT_EQ(Seam<CallersTwo>(&Difference, 8, false)(9, 4), 5u);
    EXPECT_EQ(Violations(), Lines{"It takes 8 bytes of arguments off the stack instead of 0"});
}

TEST_F(SeamTest, RegistersOfTheCallerAreTold)
{
    const Lines expected(3, "It changes a register that belongs to its caller");
    for (auto* const function : {&ClearsEbx, &ClearsEsi, &ClearsEdi})
        EXPECT_EQ(Seam<decltype(&ClearsEbx)>(function, 0)(), 7u);
    EXPECT_EQ(Violations(), expected);
}

TEST_F(SeamTest, TheDirectionFlagIsToldAndCleared)
{
    EXPECT_EQ(Seam<decltype(&GoesDown)>(&GoesDown, 0)(), 7u);
    ULONG flags = 0;
    asm volatile("pushf\n\tpop %0" : "=r"(flags));
    EXPECT_EQ(flags & 0x400, 0u);
    EXPECT_EQ(Violations(), Lines{"It leaves the direction flag set"});
}

TEST_F(SeamTest, FinishSeesTheArgumentsAndReplacesTheResult)
{
    ULONG seen = 0;
    const auto finish = [&seen](const ULONG* arguments, ULONG result) {
        seen = arguments[0] * 100 + arguments[1];
        return result + 1000;
    };
    const PFN seam = seams.Add({"It", reinterpret_cast<PFN>(&Difference), 8, true, finish});
    EXPECT_EQ(reinterpret_cast<Two>(seam)(9, 4), 1005u);
    EXPECT_EQ(seen, 904u);
}

TEST_F(SeamTest, ThereIsRoomForFourHundred)
{
    for (int i = 0; i < 400; ++i)
        ASSERT_NE(Seam<Two>(&Difference, 8), nullptr) << i;
    EXPECT_EQ(Seam<Two>(&Difference, 8)(3, 1), 2u) << "the last one works, too";
    Two last = nullptr;
    while (const Two next = Seam<Two>(&Difference, 8))
        last = next;
    EXPECT_EQ(last(3, 1), 2u) << "until there is none";
}

TEST(ArgumentBytes, AreThoseOfTheWordsOnTheStack)
{
    EXPECT_EQ(ArgumentBytes(static_cast<void(APIENTRY*)()>(nullptr)), 0u);
    EXPECT_EQ(ArgumentBytes(static_cast<void(APIENTRY*)(BYTE, WORD)>(nullptr)), 8u);
    EXPECT_EQ(ArgumentBytes(static_cast<void(APIENTRY*)(SIZEL, LONGLONG, BYTE*)>(nullptr)), 20u);
    EXPECT_EQ(ServiceArgumentBytes("EngBitBlt"), 44u);
    EXPECT_EQ(ServiceArgumentBytes("engcreatebitmap"), 24u);
    EXPECT_EQ(ServiceArgumentBytes("EngNothing"), 0u);
}

} // namespace
