// Every captured call, with random arguments, is read back from its record. KORU_CALLS in the environment
// says how many calls are made.

#include <cstdlib>

#include "tests/conformance/core_setups.h"
#include "tests/conformance/records_round.h"

namespace conformance::records {

namespace {

    constexpr ULONG Depths[] = {4, 8, 15, 16, 24, 32};

    ULONG CallCount()
    {
        const char* const count = std::getenv("KORU_CALLS");
        return count ? static_cast<ULONG>(std::strtoul(count, nullptr, 10)) : 5000;
    }

    std::vector<RecordedCall> AllCalls()
    {
        std::vector<RecordedCall> calls;
        for (const auto& some : {BlitCalls(), BrushCalls(), DeviceCalls(), ScreenCalls()})
            calls.insert(calls.end(), some.begin(), some.end());
        return calls;
    }

    class RecordsOfRandomCalls : public testing::TestWithParam<ULONG> { };

    TEST_P(RecordsOfRandomCalls, TellEveryArgument)
    {
        const ULONG depth = GetParam();
        const std::vector<RecordedCall> calls = AllCalls();
        Round round(depth, InMode({64, 48, depth}));
        const ULONG count = CallCount() / std::size(Depths);
        for (ULONG i = 0; i < count && !testing::Test::HasFailure(); ++i) {
            const RecordedCall& call = calls[round.random.Word() % calls.size()];
            SCOPED_TRACE("call " + std::to_string(i) + ", " + std::string(wire::NameOf(call.type)));
            call.makeAndCompare(round);
            round.make.Forget();
        }
    }

    INSTANTIATE_TEST_SUITE_P(Depths, RecordsOfRandomCalls, testing::ValuesIn(Depths),
                             testing::PrintToStringParamName());

    TEST(RecordedCalls, AreAllThatCanBeCaptured)
    {
        std::uint32_t types = 0;
        for (const RecordedCall& call : AllCalls())
            types |= static_cast<std::uint32_t>(call.type);
        EXPECT_EQ(types, wire::AllCalls);
        EXPECT_EQ(AllCalls().size(), wire::CallTypeCount);
    }

} // namespace

} // namespace conformance::records
