// The sub-commands of KORU_ESCAPE.

#include <set>

#include "tests/conformance/escape_calls.h"

namespace conformance {
namespace {

    constexpr const char* Unknown = "KORU:Unknown KORU Escape";
    constexpr ULONG NoDevice = 0x0BADF00D;

    class EscapeKoru : public EscapeTest {
    protected:
        Reply Run(ULONG subCommand, ULONG word1 = 0, ULONG word2 = 0)
        {
            return RunOn(session.DhpdevNumber(), subCommand, word1, word2);
        }
        Reply RunOn(ULONG device, ULONG subCommand, ULONG word1 = 0, ULONG word2 = 0)
        {
            const Reply reply = Send(KoruEscape, {subCommand, word1, word2, 0, 0, device}, 2);
            EXPECT_EQ(reply.result, 1u);
            EXPECT_EQ(reply.out[1], Untouched) << "no sub-command writes more than one word";
            return reply;
        }
        void ExpectAnswer(ULONG answer, const Reply& reply)
        {
            EXPECT_EQ(reply.out[0], answer);
            EXPECT_EQ(reply.messages, "");
        }
        Reply AddZone(const RECTL& zone, ULONG device)
        {
            return Send(KoruEscape,
                        {3, static_cast<ULONG>(zone.left), static_cast<ULONG>(zone.top), static_cast<ULONG>(zone.right),
                         static_cast<ULONG>(zone.bottom), device});
        }
        ULONG AddZone(const RECTL& zone) { return AddZone(zone, session.DhpdevNumber()).out[0]; }
    };

    TEST_F(EscapeKoru, NeedsTwentyFourBytesInAndFourOut)
    {
        Words in = {1, 0, 0, 0, 0, 0};
        Words out(1, Untouched);
        const ULONG code = KoruEscape;
        EXPECT_EQ(Call(session.Screen(), code, 23, in.data(), 4, out.data()), 0u);
        EXPECT_EQ(Call(session.Screen(), code, 24, in.data(), 3, out.data()), 0u);
        EXPECT_EQ(Call(session.Screen(), code, 24, nullptr, 4, out.data()), 0u);
        EXPECT_EQ(Call(session.Screen(), code, 24, in.data(), 4, nullptr), 0u);
        EXPECT_EQ(Call(session.Screen(), code, 0, nullptr, 0, nullptr), 0u);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), "");
        EXPECT_EQ(out[0], Untouched);
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 1u) << "capture must still be on";
        EXPECT_EQ(Call(session.Screen(), code, 24, in.data(), 4, out.data()), 1u);
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 0u);
    }

    TEST_F(EscapeKoru, SaysThatItDoesNotKnowASubCommand)
    {
        const std::set<ULONG> known = {1,  2,  3,  4,  5,  23, 24, 25, 32, 33, 34, 35,
                                       36, 37, 38, 39, 57, 58, 91, 92, 96, 97, 98, 112};
        for (ULONG subCommand = 0; subCommand <= 120; ++subCommand) {
            if (known.contains(subCommand))
                continue;
            const Reply reply = Run(subCommand, 1, 2);
            EXPECT_EQ(reply.out[0], Untouched) << subCommand;
            EXPECT_EQ(reply.messages, Unknown) << subCommand;
        }
        for (const ULONG subCommand : {0x80000001U, 0xFFFFFFFFU})
            EXPECT_EQ(Run(subCommand).messages, Unknown) << subCommand;
    }

    TEST_F(EscapeKoru, IsNeitherForwardedNorRecorded)
    {
        engine::ForgetRealCalls();
        Run(57, 0xFFFFFFFF);
        Run(7);
        EXPECT_TRUE(engine::RealCalls().empty());
        EXPECT_TRUE(session.records.empty());
    }

    TEST_F(EscapeKoru, WorksWithoutASurface)
    {
        EXPECT_EQ(Send(nullptr, KoruEscape, {92, 0, 0, 0, 0, session.DhpdevNumber()}).out[0],
                  AddressOf(session.Device().Primary()));
    }

    TEST_F(EscapeKoru, SwitchesCaptureOffAndOnWithoutAnswering)
    {
        ExpectAnswer(Untouched, Run(1));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 0u);
        ExpectAnswer(Untouched, Run(2));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 1u);
    }

    TEST_F(EscapeKoru, KeepsDrawingInADarkZoneOffTheRecords)
    {
        const ULONG zone = AddZone({4, 4, 12, 12});
        EXPECT_NE(zone, 0u);
        EXPECT_EQ(RecordsOfDrawing({4, 4, 12, 12}), 0u);
        EXPECT_EQ(RecordsOfDrawing({4, 4, 13, 12}), 1u);
        ExpectAnswer(1, Run(4, zone));
        EXPECT_EQ(RecordsOfDrawing({4, 4, 12, 12}), 1u);
    }

    TEST_F(EscapeKoru, TakesADarkZoneFromTheBufferItAnswersInto)
    {
        Words both = {3, 4, 4, 12, 12, session.DhpdevNumber()};
        EXPECT_EQ(Call(session.Screen(), KoruEscape, 24, both.data(), 24, both.data()), 1u);
        EXPECT_NE(both[0], 3u);
        EXPECT_EQ(RecordsOfDrawing({4, 4, 12, 12}), 0u);
        both = {4, both[0], 0, 0, 0, session.DhpdevNumber()};
        EXPECT_EQ(Call(session.Screen(), KoruEscape, 24, both.data(), 4, both.data()), 1u);
        EXPECT_EQ(both[0], 1u);
    }

    TEST_F(EscapeKoru, AddsNoDarkZoneToAnUnknownDevice)
    {
        const Reply reply = AddZone({0, 0, 8, 8}, NoDevice);
        EXPECT_EQ(reply.result, 1u);
        EXPECT_EQ(reply.out, (Words{0, Untouched, Untouched, Untouched}));
        EXPECT_EQ(reply.messages, "KORU:AddDarkZone: Error Bad dhpdev\n");
    }

    TEST_F(EscapeKoru, AddsNoDarkZoneWithoutMemory)
    {
        session.Engine().Fail(engine::Request::Memory);
        const Reply reply = AddZone({0, 0, 8, 8}, session.DhpdevNumber());
        EXPECT_EQ(reply.result, 1u);
        EXPECT_EQ(reply.out[0], 0u);
        EXPECT_EQ(reply.messages, "KORU: LIST:Fatal error, there are not memory enough\n");
        EXPECT_EQ(RecordsOfDrawing({0, 0, 8, 8}), 1u);
    }

    TEST_F(EscapeKoru, RefusesAStaleZone)
    {
        const ULONG stale = AddZone({0, 0, 8, 8});
        AddZone({8, 0, 16, 8});
        ExpectAnswer(1, Run(4, stale));
        for (const ULONG handle : {stale, 0U, 0xFFFFFFFFU}) {
            const Reply reply = Run(4, handle);
            EXPECT_EQ(reply.out[0], 0u);
            EXPECT_EQ(reply.messages, "KORU: DeleteItem called with a wrong item handle.\n");
        }
        EXPECT_EQ(RecordsOfDrawing({8, 0, 16, 8}), 0u);
    }

    TEST_F(EscapeKoru, TellsAnEmptyZoneListByHandleZeroAlone)
    {
        const Reply reply = Run(4, 0);
        EXPECT_EQ(reply.out[0], 0u);
        EXPECT_EQ(reply.messages, "KORU: DeleteItem called with empty list\n");
        EXPECT_EQ(Run(4, 7).messages, "KORU: DeleteItem called with a wrong item handle.\n");
    }

    TEST_F(EscapeKoru, RemovesNoZoneOfAnUnknownDevice)
    {
        const ULONG zone = AddZone({0, 0, 8, 8});
        const Reply reply = RunOn(NoDevice, 4, zone);
        EXPECT_EQ(reply.out[0], 0u);
        EXPECT_EQ(reply.messages, "KORU:ESC DeleteDarkZone: Error, invalid screen.\n");
        EXPECT_EQ(RecordsOfDrawing({0, 0, 8, 8}), 0u);
    }

    TEST_F(EscapeKoru, RemovesTheZonesOfOneDevice)
    {
        AddZone({0, 0, 8, 8});
        AddZone({8, 0, 16, 8});
        EXPECT_EQ(RecordsOfDrawing({0, 0, 16, 8}), 0u);
        ExpectAnswer(1, Run(5));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 8, 8}), 1u);
        ExpectAnswer(1, Run(5));
    }

    TEST_F(EscapeKoru, RemovesTheZonesOfAllDevicesForAnUnknownOne)
    {
        engine::Device second(session.Driver());
        ASSERT_TRUE(second.Enable({64, 48, 32}));
        locksBefore = session.Engine().Outstanding().locks;
        const ULONG other = AddressOf(second.Dhpdev());
        AddZone({0, 0, 8, 8});
        const ULONG zone = AddZone({0, 0, 8, 8}, other).out[0];
        EXPECT_NE(zone, 0u);
        session.Engine().ClearDebugOutput();

        ExpectAnswer(0, RunOn(NoDevice, 5));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 8, 8}), 1u);
        EXPECT_EQ(RunOn(other, 4, 0).messages, "KORU: DeleteItem called with empty list\n");
        second.Disable();
    }

    TEST_F(EscapeKoru, LeavesTheZonesOfOtherDevicesAlone)
    {
        engine::Device second(session.Driver());
        ASSERT_TRUE(second.Enable({64, 48, 32}));
        locksBefore = session.Engine().Outstanding().locks;
        AddZone({0, 0, 8, 8});
        session.Engine().ClearDebugOutput();
        ExpectAnswer(1, RunOn(AddressOf(second.Dhpdev()), 5));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 8, 8}), 0u);
        second.Disable();
    }

    TEST_F(EscapeKoru, KeepsDarkIdentifiersOffTheRecords)
    {
        ExpectAnswer(1, Run(23, session.identifiers[1]));
        ExpectAnswer(0, Run(23, session.identifiers[1]));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 0u);
        ExpectAnswer(1, Run(24, session.identifiers[1]));
        ExpectAnswer(0, Run(24, session.identifiers[1]));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 1u);
        Run(23, session.identifiers[1]);
        ExpectAnswer(1, Run(25));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 1u);
        Run(23, session.identifiers[0]);
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 1u) << "a process is no identifier of this list";
    }

    TEST_F(EscapeKoru, KeepsDarkProcessesOffTheRecords)
    {
        ExpectAnswer(1, Run(37, session.identifiers[0]));
        ExpectAnswer(0, Run(37, session.identifiers[0]));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 0u);
        Reply reply = Run(38, session.identifiers[0]);
        EXPECT_EQ(reply.out[0], 1u);
        EXPECT_EQ(reply.messages, "KORU: DeleteDarkProcess.. Removing a dark process: 1000\n");
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 1u);
        reply = Run(38, 4294967295);
        EXPECT_EQ(reply.out[0], 0u);
        EXPECT_EQ(reply.messages, "KORU: DeleteDarkProcess.. Removing a dark process: 4294967295\n");
        Run(37, session.identifiers[0]);
        ExpectAnswer(1, Run(39));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 1u);
    }

    TEST_F(EscapeKoru, KeepsDrawingOnDarkSurfacesOffTheRecords)
    {
        ExpectAnswer(1, Run(32));
        ExpectAnswer(0, Run(32));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 0u);
        ExpectAnswer(1, Run(33));
        ExpectAnswer(0, Run(33));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 1u);
        Run(32);
        ExpectAnswer(1, Run(34));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 1u);
    }

    TEST_F(EscapeKoru, TakesTheSurfaceOfTheEscapeItselfForDark)
    {
        SURFOBJ* const bitmap = PlainBitmap();
        EXPECT_EQ(Send(bitmap, KoruEscape, {32, 0, 0, 0, 0, session.DhpdevNumber()}).out[0], 1u);
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 1u);
        ExpectAnswer(0, Run(33));
        EXPECT_EQ(Send(bitmap, KoruEscape, {33, 0, 0, 0, 0, 0}).out[0], 1u);
    }

    TEST_F(EscapeKoru, HasNoDarkSurfaceWithoutASurface)
    {
        for (const ULONG subCommand : {32U, 33U}) {
            const Reply reply = Send(nullptr, KoruEscape, {subCommand, 0, 0, 0, 0, session.DhpdevNumber()});
            EXPECT_EQ(reply.result, 1u) << subCommand;
            EXPECT_EQ(reply.out[0], 0u) << subCommand;
            EXPECT_EQ(reply.messages, "") << subCommand;
        }
        EXPECT_EQ(Send(nullptr, KoruEscape, {34, 0, 0, 0, 0, 0}).out[0], 1u);
    }

    TEST_F(EscapeKoru, AddsToNoListWithoutMemory)
    {
        for (const ULONG subCommand : {23U, 32U, 37U}) {
            session.Engine().Fail(engine::Request::Memory);
            ExpectAnswer(0, Run(subCommand, session.identifiers[0]));
            ExpectAnswer(1, Run(subCommand, session.identifiers[0]));
        }
    }

    TEST_F(EscapeKoru, SetsAFlagThatNobodyReads)
    {
        ExpectAnswer(1, Run(35));
    }

    TEST_F(EscapeKoru, InstallsTheConsumer)
    {
        RunOn(0, 36);
        const Reply reply = RunOn(0, 36);
        EXPECT_EQ(reply.out[0], 1u);
        EXPECT_EQ(reply.messages,
                  "KORU:InitializeFunctions2: from ~file: QC 0, QD 0, QP 0, GSD 0 DSF 0\n"
                  "KORU:InitializeFunctions2: got from SED: QC 0, QD 0, QP 0, GSD 0 DSF 0\n");
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 0u);
        session.InstallConsumer();
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 1u);
    }

    TEST_F(EscapeKoru, SetsTheCallMaskAndNeverTellsIt)
    {
        ExpectAnswer(1, Run(57, 0xFFFFFEFF));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 0u);
        ExpectAnswer(1, Run(58));
        ExpectAnswer(1, Run(57, 0x100));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 1u);
        ExpectAnswer(1, Run(58));
        ExpectAnswer(1, Run(57, 0));
        ExpectAnswer(1, Run(58));
        EXPECT_EQ(RecordsOfDrawing({0, 0, 4, 4}), 0u);
    }

    TEST_F(EscapeKoru, TellsItsVersionInTwoBytes)
    {
        ExpectAnswer(0xDEAD012F, Run(91));
    }

    TEST_F(EscapeKoru, TellsTheSurfaceOfADevice)
    {
        ExpectAnswer(AddressOf(session.Device().Primary()), Run(92));
        ExpectAnswer(0, RunOn(NoDevice, 92));
        ExpectAnswer(0, RunOn(0, 92));
    }

    TEST_F(EscapeKoru, AddsOnlyItemZeroToACache)
    {
        for (const ULONG type : {1U, 2U, 4U}) {
            ExpectAnswer(Untouched, Run(96, type, 5));
            ExpectAnswer(0, Run(97, type, 5));
            ExpectAnswer(1, Run(96, type, 0));
            ExpectAnswer(0, Run(96, type, 0));
            ExpectAnswer(1, Run(97, type, 0));
            ExpectAnswer(0, Run(97, type, 0));
        }
    }

    TEST_F(EscapeKoru, EmptiesOneCache)
    {
        Run(96, 1, 0);
        Run(96, 2, 0);
        ExpectAnswer(1, Run(98, 1, 0));
        ExpectAnswer(0, Run(97, 1, 0));
        ExpectAnswer(1, Run(97, 2, 0));
        ExpectAnswer(1, Run(98, 4, 0));
    }

    TEST_F(EscapeKoru, RefusesOtherCacheTypes)
    {
        for (const ULONG type : {0U, 3U, 8U}) {
            for (const ULONG subCommand : {96U, 97U, 98U}) {
                const Reply reply = Run(subCommand, type, 0);
                EXPECT_EQ(reply.out[0], 0u) << subCommand;
                EXPECT_EQ(reply.messages, "KORU: AddCacheItem. Cache type is unknown\n") << subCommand;
            }
            ExpectAnswer(Untouched, Run(96, type, 1));
        }
    }

    TEST_F(EscapeKoru, SetsTheLimitsOfSurfaceBits)
    {
        ExpectAnswer(1, Run(112, 0xFFFFFFFF, 0));
        ExpectAnswer(1, RunOn(NoDevice, 112, 100, 0x100));
    }

} // namespace
} // namespace conformance
