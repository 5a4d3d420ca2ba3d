#include "capture/consumer.h"

#include <cstdio>

#include "driver/driver_values.h"
#include "tests/unit/capture/capture_test.h"

using namespace koru;

namespace capture_tests {
namespace {

    using Calls = std::vector<std::string>;

    class ConsumerLink : public BareCaptureTest {
    protected:
        BYTE record[4] = {};
    };

    std::string Hexadecimal(const char* format, const std::vector<ULONG>& table)
    {
        char text[200];
        std::snprintf(text, sizeof(text), format, table[1], table[2], table[3], table[4], table[5]);
        return text;
    }

    constexpr char OldFunctions[] = "KORU:InitializeFunctions2: from ~file: QC %x, QD %x, QP %x, GSD %x DSF %x\n";
    constexpr char NewFunctions[] = "KORU:InitializeFunctions2: got from SED: QC %x, QD %x, QP %x, GSD %x DSF %x\n";

    TEST_F(ConsumerLink, AnswersZeroForEntryPointsThatAreMissing)
    {
        EXPECT_EQ(SubmitRecord(record, 4, 1), 0u);
        EXPECT_EQ(GetConsumerId(0), 0u);
        EXPECT_EQ(GetConsumerId(1), 0u);
    }

    TEST_F(ConsumerLink, PassesArgumentsAndResultsOn)
    {
        InitializeFunctions2(ConsumerTable().data());
        Consumer.calls.clear();
        EXPECT_EQ(GetConsumerId(0), 0xAAAA0001u);
        EXPECT_EQ(GetConsumerId(1), 0xBBBB0002u);
        EXPECT_EQ(SubmitRecord(record, 4, 1), 77u);
        EXPECT_EQ(SubmitRecord(nullptr, 0, 0), 77u);
        EXPECT_EQ(Consumer.calls, Calls({"GSD(0)", "GSD(1)", "QP(foreign, 4, 1)", "QP(null, 0, 0)"}));
    }

    TEST_F(ConsumerLink, PrintsTheOldFunctionsThenTheNewOnes)
    {
        const std::vector<ULONG> none(6, 0);
        const std::vector<ULONG> table = ConsumerTable();
        EXPECT_EQ(InitializeFunctions2(table.data()), 1);
        EXPECT_EQ(engine.TakeDebugOutput(), Hexadecimal(OldFunctions, none) + Hexadecimal(NewFunctions, table));

        const std::vector<ULONG> literal = {36, 0, 0xABC, 0, 0, 0};
        EXPECT_EQ(InitializeFunctions2(literal.data()), 1);
        EXPECT_EQ(engine.TakeDebugOutput(),
                  Hexadecimal(OldFunctions, table)
                      + "KORU:InitializeFunctions2: got from SED: QC 0, QD abc, QP 0, GSD 0 DSF 0\n");
    }

    TEST_F(ConsumerLink, ReplacesEveryEntryPointAlsoWithNull)
    {
        InitializeFunctions2(ConsumerTable().data());
        const std::vector<ULONG> none = {36, 0, 0, 0, 0, 0};
        EXPECT_EQ(InitializeFunctions2(none.data()), 1);
        Consumer.calls.clear();
        EXPECT_EQ(SubmitRecord(record, 4, 1), 0u);
        EXPECT_EQ(GetConsumerId(0), 0u);
        EXPECT_EQ(Consumer.calls, Calls());
    }

    TEST_F(ConsumerLink, RefusesANullTableSilently)
    {
        InitializeFunctions2(ConsumerTable().data());
        Consumer.calls.clear();
        engine.ClearDebugOutput();
        EXPECT_EQ(InitializeFunctions2(nullptr), 0);
        EXPECT_EQ(engine.DebugOutput(), "");
        EXPECT_EQ(GetConsumerId(0), 0xAAAA0001u);
        EXPECT_EQ(Consumer.calls, Calls({"GSD(0)"}));
    }

    struct InstallCase {
        const char* name;
        BOOL legacy;
        bool hasQC;
        LONG qcResult;
        Calls calls;
    };

    class ConsumerInstall : public BareCaptureTest, public testing::WithParamInterface<InstallCase> { };

    TEST_P(ConsumerInstall, AsksQCOnceAndDSFOnlyWhereItIsNotReadyOnTheOldInterface)
    {
        LegacyDdi = GetParam().legacy;
        Consumer.qcResult = GetParam().qcResult;
        std::vector<ULONG> table = ConsumerTable();
        if (!GetParam().hasQC)
            table[1] = 0;
        EXPECT_EQ(InitializeFunctions2(table.data()), 1);
        EXPECT_EQ(Consumer.calls, GetParam().calls);
    }

    INSTANTIATE_TEST_SUITE_P(, ConsumerInstall,
                             testing::Values(InstallCase{"ReadyOnTheNewInterface", FALSE, true, 1, {"QC"}},
                                             InstallCase{"NotReadyOnTheNewInterface", FALSE, true, 0, {"QC"}},
                                             InstallCase{"ReadyOnTheOldInterface", TRUE, true, 5, {"QC"}},
                                             InstallCase{"NotReadyOnTheOldInterface", TRUE, true, 0, {"QC", "DSF"}},
                                             InstallCase{"NoQCOnTheNewInterface", FALSE, false, 1, {}},
                                             InstallCase{"NoQCOnTheOldInterface", TRUE, false, 1, {"DSF"}}),
                             [](const testing::TestParamInfo<InstallCase>& info) { return info.param.name; });

    TEST_F(ConsumerLink, DoesWithoutDSF)
    {
        LegacyDdi = TRUE;
        Consumer.qcResult = 0;
        std::vector<ULONG> table = ConsumerTable();
        table[5] = 0;
        EXPECT_EQ(InitializeFunctions2(table.data()), 1);
        EXPECT_EQ(Consumer.calls, Calls({"QC"}));
    }

} // namespace
} // namespace capture_tests
