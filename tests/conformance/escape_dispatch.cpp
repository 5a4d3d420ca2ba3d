// Which escapes the driver answers itself, the chain manager's, and those that go on to the real driver.

#include <cstring>

#include "tests/conformance/escape_calls.h"

namespace conformance {
namespace {

    constexpr ULONG ChainManagerEscape = 0x584D4344;
    constexpr ULONG Foreign = 4711;
    constexpr ULONG EscapeBit = 0x800000;
    constexpr ULONG RealAnswer = 77;

    class EscapeForwarding : public EscapeTest {
    protected:
        explicit EscapeForwarding(const conformance::Setup& setup = {})
            : EscapeTest(setup)
        {
            engine::ForgetRealCalls();
            engine::AnswerEscapesWith(RealAnswer);
        }
        ~EscapeForwarding() override { engine::AnswerEscapesWith(0); }

        void ExpectRealCall(const Words& arguments)
        {
            ASSERT_EQ(engine::RealCalls().size(), 1u);
            EXPECT_EQ(engine::RealCalls()[0].index, INDEX_DrvEscape);
            EXPECT_EQ(engine::RealCalls()[0].arguments, arguments);
        }
    };

    TEST_F(EscapeForwarding, PassesAllArgumentsOnAndTheAnswerBack)
    {
        Words in = {1, 2, 3};
        Words out = {Untouched};
        EXPECT_EQ(Call(session.Screen(), Foreign, 12, in.data(), 4, out.data()), RealAnswer);
        ExpectRealCall({AddressOf(session.Screen()), Foreign, 12, AddressOf(in.data()), 4, AddressOf(out.data())});
        EXPECT_EQ(out[0], 0x4C414552u); // "REAL"
    }

    TEST_F(EscapeForwarding, PassesNullBuffersOnAsTheyAre)
    {
        EXPECT_EQ(Call(session.Screen(), Foreign, 16, nullptr, 8, nullptr), RealAnswer);
        ExpectRealCall({AddressOf(session.Screen()), Foreign, 16, 0, 8, 0});
    }

    TEST_F(EscapeForwarding, RecordsTheCallWithItsBuffersAndItsResult)
    {
        Words in = {0x11111111, 0x22222222};
        Words out = {Untouched};
        Call(session.Screen(), Foreign, 8, in.data(), 4, out.data());
        const SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.flag, 1);
        EXPECT_EQ(record.CallType(), EscapeBit);
        EXPECT_EQ(record.Word(40), RealAnswer);
        EXPECT_EQ(record.Word(44), 72u);
        EXPECT_EQ(record.Word(48), Foreign);
        EXPECT_EQ(record.Word(52), 8u);
        EXPECT_EQ(record.Word(record.Word(56)), 0x11111111u);
        EXPECT_EQ(record.Word(record.Word(56) + 4), 0x22222222u);
        EXPECT_EQ(record.Word(60), 4u);
        EXPECT_EQ(record.Word(record.Word(64)), 0x4C414552u);
        EXPECT_EQ(session.selectorsAsked, (std::vector<LONG>{0, 1, 0, 1}));
    }

    TEST_F(EscapeForwarding, RecordsNothingWithoutTheEscapeBit)
    {
        session.SetCaptureMask(~EscapeBit);
        EXPECT_EQ(Send(Foreign, {1}).result, RealAnswer);
        EXPECT_TRUE(session.records.empty());
        EXPECT_TRUE(session.selectorsAsked.empty());
    }

    TEST_F(EscapeForwarding, RecordsNothingWhileCaptureIsOff)
    {
        session.Command(1);
        EXPECT_EQ(Send(Foreign, {1}).result, RealAnswer);
        EXPECT_TRUE(session.records.empty());
        session.Command(2);
        Send(Foreign, {1});
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST_F(EscapeForwarding, RecordsNothingFromADarkProcess)
    {
        session.Command(37, session.identifiers[0]);
        EXPECT_EQ(Send(Foreign, {1}).result, RealAnswer);
        EXPECT_TRUE(session.records.empty());
        EXPECT_EQ(session.selectorsAsked, (std::vector<LONG>{0}));
    }

    TEST_F(EscapeForwarding, RecordsNothingForADarkIdentifier)
    {
        session.Command(23, session.identifiers[1]);
        EXPECT_EQ(Send(Foreign, {1}).result, RealAnswer);
        EXPECT_TRUE(session.records.empty());
        EXPECT_EQ(session.selectorsAsked, (std::vector<LONG>{0, 1}));
    }

    TEST_F(EscapeForwarding, RecordsEscapesOnADarkSurface)
    {
        session.Command(32);
        Send(Foreign, {1});
        EXPECT_EQ(session.records.size(), 1u);
    }

    TEST_F(EscapeForwarding, AnswersOneWithoutASurface)
    {
        const Reply reply = Send(nullptr, Foreign, {1});
        EXPECT_EQ(reply.result, 1u);
        EXPECT_EQ(reply.out[0], Untouched);
        EXPECT_EQ(reply.messages, "");
        EXPECT_TRUE(engine::RealCalls().empty());
        EXPECT_TRUE(session.records.empty());
    }

    TEST_F(EscapeForwarding, AnswersOneOnASurfaceOfNoDevice)
    {
        const Reply reply = Send(PlainBitmap(), Foreign, {1});
        EXPECT_EQ(reply.result, 1u);
        EXPECT_EQ(reply.out[0], Untouched);
        EXPECT_TRUE(engine::RealCalls().empty());
        EXPECT_TRUE(session.records.empty());
    }

    class EscapeWithoutRealEscapes : public EscapeForwarding {
    protected:
        static conformance::Setup WithoutEscapes()
        {
            conformance::Setup setup;
            setup.frameBuffer.missing = {INDEX_DrvEscape};
            return setup;
        }
        EscapeWithoutRealEscapes()
            : EscapeForwarding(WithoutEscapes())
        {
        }
    };

    TEST_F(EscapeWithoutRealEscapes, AnswersOneAndRecordsNothing)
    {
        EXPECT_EQ(Send(Foreign, {1}).result, 1u);
        EXPECT_EQ(Send(QUERYESCSUPPORT, {Foreign}).result, 1u);
        EXPECT_TRUE(session.records.empty());
    }

    TEST_F(EscapeWithoutRealEscapes, StillAnswersItsOwn)
    {
        EXPECT_EQ(Send(KoruEscape, {91, 0, 0, 0, 0, 0}).out[0], 0xDEAD012Fu);
    }

    TEST_F(EscapeForwarding, QuerySupportsItsOwnCodesWithoutAsking)
    {
        for (const ULONG code : {0x1972U, 6514U, 0x490914U}) {
            EXPECT_EQ(Send(QUERYESCSUPPORT, {code}).result, 1u) << code;
            EXPECT_EQ(Send(nullptr, QUERYESCSUPPORT, {code}).result, 1u) << code;
            EXPECT_EQ(Call(session.Screen(), QUERYESCSUPPORT, 0, Words{code}.data(), 0, nullptr), 1u) << code;
        }
        EXPECT_TRUE(engine::RealCalls().empty());
        EXPECT_TRUE(session.records.empty());
    }

    TEST_F(EscapeForwarding, QueryAsksTheRealDriverAboutOtherCodes)
    {
        engine::AnswerEscapesWith(0);
        for (const ULONG code : {Foreign, ULONG{QUERYESCSUPPORT}, ChainManagerEscape, 0U}) {
            engine::ForgetRealCalls();
            session.records.clear();
            EXPECT_EQ(Send(QUERYESCSUPPORT, {code}).result, 0u) << code;
            EXPECT_EQ(engine::RealCalls().size(), 1u) << code;
            EXPECT_EQ(session.records.size(), 1u) << code;
        }
        engine::ForgetRealCalls();
        Words in = {Foreign};
        Call(session.Screen(), QUERYESCSUPPORT, 4, in.data(), 0, nullptr);
        ExpectRealCall({AddressOf(session.Screen()), QUERYESCSUPPORT, 4, AddressOf(in.data()), 0, 0});
    }

    TEST_F(EscapeForwarding, QueryWithoutInputIsAskedOfTheRealDriver)
    {
        EXPECT_EQ(Call(session.Screen(), QUERYESCSUPPORT, 4, nullptr, 0, nullptr), RealAnswer);
        ExpectRealCall({AddressOf(session.Screen()), QUERYESCSUPPORT, 4, 0, 0, 0});
    }

    TEST_F(EscapeForwarding, QueryAnswersOneWhenThereIsNoOneToAsk)
    {
        EXPECT_EQ(Send(nullptr, QUERYESCSUPPORT, {Foreign}).result, 1u);
        EXPECT_EQ(Send(PlainBitmap(), QUERYESCSUPPORT, {Foreign}).result, 1u);
        EXPECT_EQ(Call(nullptr, QUERYESCSUPPORT, 0, nullptr, 0, nullptr), 1u);
        EXPECT_TRUE(engine::RealCalls().empty());
        EXPECT_TRUE(session.records.empty());
    }

    TEST_F(EscapeForwarding, QueryIsRecordedAlsoFromADarkProcess)
    {
        session.Command(37, session.identifiers[0]);
        session.Command(23, session.identifiers[1]);
        EXPECT_EQ(Send(QUERYESCSUPPORT, {Foreign}).result, RealAnswer);
        const SubmittedRecord record = session.TakeOnlyRecord();
        EXPECT_EQ(record.flag, 1);
        EXPECT_EQ(record.CallType(), EscapeBit);
        EXPECT_EQ(record.Word(48), ULONG{QUERYESCSUPPORT});
        EXPECT_EQ(record.Word(40), RealAnswer);
        EXPECT_EQ(session.selectorsAsked, (std::vector<LONG>{0, 1})); // for the record's header alone
    }

    TEST_F(EscapeForwarding, QueryIsRecordedOnlyWithItsBitWhileCaptureIsOn)
    {
        session.SetCaptureMask(~EscapeBit);
        Send(QUERYESCSUPPORT, {Foreign});
        EXPECT_TRUE(session.records.empty());
        session.SetCaptureMask(EscapeBit);
        session.Command(1);
        Send(QUERYESCSUPPORT, {Foreign});
        EXPECT_TRUE(session.records.empty());
        session.Command(2);
        Send(QUERYESCSUPPORT, {Foreign});
        EXPECT_EQ(session.records.size(), 1u);
    }

    class EscapeOfChainManager : public EscapeTest {
    protected:
        static std::vector<BYTE> Input(const std::string& name, ULONG function)
        {
            std::vector<BYTE> input(272, 'x');
            std::memcpy(input.data(), name.c_str(), name.size() + 1);
            std::memcpy(input.data() + 264, &function, 4);
            return input;
        }
        Reply Ask(std::vector<BYTE> input, ULONG cjOut = 4)
        {
            Words out(1, Untouched);
            const ULONG result = Call(session.Screen(), ChainManagerEscape, static_cast<ULONG>(input.size()),
                                      input.data(), cjOut, out.data());
            return {result, out, session.Engine().TakeDebugOutput()};
        }
    };

    constexpr const char* Asked = "KORU:DrvEscape DCM_STANDARD_ESCAPE\n";
    constexpr const char* AskedWhetherActive = "KORU:DrvEscape DCM_STANDARD_ESCAPE\nKORU:DCM_ARE_YOU_ACTIVE\n";

    TEST_F(EscapeOfChainManager, TellsWhetherCaptureIsOn)
    {
        session.Command(2);
        Reply reply = Ask(Input("koru", 1));
        EXPECT_EQ(reply.result, 1u);
        EXPECT_EQ(reply.out[0], 1u);
        EXPECT_EQ(reply.messages, AskedWhetherActive);
        session.Command(1);
        reply = Ask(Input("koru", 1));
        EXPECT_EQ(reply.result, 1u);
        EXPECT_EQ(reply.out[0], 0u);
    }

    TEST_F(EscapeOfChainManager, NeedsNoSurface)
    {
        std::vector<BYTE> input = Input("koru", 1);
        Words out(1, Untouched);
        EXPECT_EQ(Call(nullptr, ChainManagerEscape, 272, input.data(), 4, out.data()), 1u);
        EXPECT_EQ(out[0], 1u);
    }

    TEST_F(EscapeOfChainManager, WritesNothingIntoAShortOrMissingOutput)
    {
        Reply reply = Ask(Input("koru", 1), 3);
        EXPECT_EQ(reply.result, 1u);
        EXPECT_EQ(reply.out[0], Untouched);
        EXPECT_EQ(reply.messages, AskedWhetherActive);
        std::vector<BYTE> input = Input("koru", 1);
        EXPECT_EQ(Call(session.Screen(), ChainManagerEscape, 272, input.data(), 4, nullptr), 1u);
    }

    TEST_F(EscapeOfChainManager, MayAnswerIntoItsOwnQuestion)
    {
        std::vector<BYTE> input = Input("koru", 1);
        EXPECT_EQ(Call(session.Screen(), ChainManagerEscape, 272, input.data(), 272, input.data()), 1u);
        EXPECT_EQ(input[0], 1);
        EXPECT_EQ(input[1], 0);
        EXPECT_EQ(input[4], 0);
        EXPECT_EQ(input[5], 'x');
    }

    TEST_F(EscapeOfChainManager, KnowsItsExtensionAndDoesNothing)
    {
        const Reply reply = Ask(Input("koru", 0xFFFFF));
        EXPECT_EQ(reply.result, 1u);
        EXPECT_EQ(reply.out[0], Untouched);
        EXPECT_EQ(reply.messages, "KORU:DrvEscape DCM_STANDARD_ESCAPE\nKORU:DCM_EXTENSION_ESCAPE\n");
    }

    TEST_F(EscapeOfChainManager, IgnoresOtherFunctions)
    {
        for (const ULONG function : {0U, 2U, 0xFFFFEU, 0x100000U, 0xFFFFFFFFU}) {
            const Reply reply = Ask(Input("koru", function));
            EXPECT_EQ(reply.result, 1u) << function;
            EXPECT_EQ(reply.out[0], Untouched) << function;
            EXPECT_EQ(reply.messages, Asked) << function;
        }
    }

    TEST_F(EscapeOfChainManager, IgnoresOtherDrivers)
    {
        for (const char* name : {"", "kor", "korux", "Koru", "KORU", "koru.dll", " koru"}) {
            const Reply reply = Ask(Input(name, 1));
            EXPECT_EQ(reply.result, 1u) << name;
            EXPECT_EQ(reply.out[0], Untouched) << name;
            EXPECT_EQ(reply.messages, Asked) << name;
        }
        std::vector<BYTE> unterminated = Input("koru", 1);
        unterminated[4] = 'x';
        EXPECT_EQ(Ask(unterminated).messages, Asked);
    }

    TEST_F(EscapeOfChainManager, TakesAMissingInputForAnotherDrivers)
    {
        Words out(1, Untouched);
        EXPECT_EQ(Call(session.Screen(), ChainManagerEscape, 272, nullptr, 4, out.data()), 1u);
        EXPECT_EQ(out[0], Untouched);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), Asked);
    }

    TEST_F(EscapeOfChainManager, KeepsTheSemaphoreWhenTheInputIsShort)
    {
        std::vector<BYTE> input = Input("koru", 1);
        Words out(1, Untouched);
        expectedHolds = 1;
        EXPECT_EQ(Call(session.Screen(), ChainManagerEscape, 271, input.data(), 4, out.data()), 0u);
        EXPECT_EQ(out[0], Untouched);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), Asked);
        EXPECT_EQ(Call(session.Screen(), KoruEscape, 0, nullptr, 0, nullptr), 0u);
        expectedHolds = 2;
        EXPECT_EQ(Call(session.Screen(), ChainManagerEscape, 0, nullptr, 0, nullptr), 0u);
    }

    TEST_F(EscapeOfChainManager, IsNeverForwardedOrRecorded)
    {
        engine::ForgetRealCalls();
        Ask(Input("koru", 1));
        Ask(Input("other", 1));
        EXPECT_TRUE(engine::RealCalls().empty());
        EXPECT_TRUE(session.records.empty());
    }

} // namespace
} // namespace conformance
