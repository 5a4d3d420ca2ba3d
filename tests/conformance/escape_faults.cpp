// Everything that escapes ask of the engine fails once, and from then on: nothing leaks, nothing stays locked.

#include "tests/conformance/escape_calls.h"

namespace conformance {
namespace {

    constexpr RECTL Area = {0, 0, 16, 16};

    void SteerZoomers(Session& session)
    {
        const ULONG below = session.Zoom(0x11127201);
        const ULONG above = session.Zoom(0x11127201);
        for (const ULONG id : {below, above}) {
            session.Zoom(0x11127205, id, {1, 0, 0, 0});
            session.Zoom(0x11127211, id, {1, 0, 0, 0});
            session.Zoom(0x11127209, id, {1, 0, 0, 0});
            session.Zoom(0x11127222, id, {1, 0, 0, 0});
        }
        session.Zoom(0x11127218, above, {-1, 0, 0, 0});
        for (const ULONG code : {0x11127204U, 0x11127229U, 0x11127228U, 0x11127230U, 0x11127235U})
            session.Zoom(code, below, Area);
    }

    void SteerOverlay(Session& session)
    {
        for (const ULONG selector : {0x00CC0000U, 0xFFFFFFFFU, 0x00EE0000U}) {
            session.Zoom(0x11127236, 0, Area, 0, 0, selector);
            session.Zoom(0x11127204);
            session.Zoom(0x11127235, 0, Area);
        }
    }

    void SteerLists(Session& session)
    {
        session.AddDarkZone(Area);
        for (const ULONG subCommand : {23U, 32U, 37U})
            session.Command(subCommand, 1);
        for (const ULONG type : {1U, 2U, 4U})
            session.Command(96, type);
        session.Zoom(0x11127243, 0, {1, 0, 0, 0}, 2);
    }

    void UndoAll(Session& session)
    {
        for (const ULONG code : {0x11127203U, 0x11127237U, 0x11127245U})
            session.Zoom(code);
        for (const ULONG subCommand : {5U, 25U, 34U, 39U})
            session.Command(subCommand);
        for (const ULONG type : {1U, 2U, 4U})
            session.Command(98, type);
    }

    class EscapeFaults : public testing::TestWithParam<bool> { };

    TEST_P(EscapeFaults, LeaveNothingBehind)
    {
        engine::FaultPlan plan(GetParam());
        do {
            Session session;
            UndoAll(session); // the default colour pairs too
            const engine::Resources before = session.Engine().Outstanding();
            session.Engine().Obey(plan);
            SteerZoomers(session);
            SteerOverlay(session);
            SteerLists(session);
            session.Engine().StopFailing();
            UndoAll(session);
            ASSERT_EQ(session.Engine().Outstanding(), before) << "request " << plan.Position();
        } while (plan.Next());
        EXPECT_GT(plan.Position(), 50u) << "the case asked the engine for hardly anything";
    }

    INSTANTIATE_TEST_SUITE_P(OnceAndForGood, EscapeFaults, testing::Bool());

} // namespace
} // namespace conformance
