// The commands of KORU_ZOOM_ESCAPE: the walk over all codes, and what the zoomer commands answer.

#include <map>

#include "tests/conformance/escape_calls.h"

namespace conformance {
namespace {

    enum Kind { NoScreen, OnScreen, OnScreenSilent, Locked, PerZoomer, PerZoomerSilent };

    struct Row {
        ULONG code;
        Kind kind;
        const char* name; // in the message about a missing Screen
        Words missing; // the output when what the kind needs is missing
    };

    const Words Zero = {0, Untouched, Untouched, Untouched};
    const Words Zeros = {0, 0, 0, 0};
    const Words All = {Untouched, Untouched, Untouched, Untouched};

    const Row Rows[] = {
        {0x11127201, OnScreen, "ESC_ZOOM_CREATE", Zero},
        {0x11127202, OnScreen, "ESC_ZOOM_REMOVE", Zero},
        {0x11127203, OnScreen, "ESC_ZOOM_FLUSH", Zero},
        {0x11127204, Locked, "ESC_ZOOM_UPDATE", Zero},
        {0x11127205, PerZoomer, "ESC_ZOOM_SETSTATE", Zero},
        {0x11127206, PerZoomer, "ESC_ZOOM_GETSTATE", Zero},
        {0x11127207, PerZoomer, "ESC_ZOOM_SETMODE", Zero},
        {0x11127208, PerZoomer, "ESC_ZOOM_GETMODE", Zero},
        {0x11127209, PerZoomer, "ESC_ZOOM_SETSTYLE", Zero},
        {0x11127210, PerZoomer, "ESC_ZOOM_GETSTYLE", Zero},
        {0x11127211, PerZoomer, "ESC_ZOOM_SETBEHAVIOUR", Zero},
        {0x11127212, PerZoomer, "ESC_ZOOM_GETBEHAVIOUR", Zero},
        {0x11127213, PerZoomer, "ESC_ZOOM_SETORIGINALRECT", Zero},
        {0x11127214, PerZoomer, "ESC_ZOOM_GETORIGINALRECT", Zeros},
        {0x11127215, PerZoomer, "ESC_ZOOM_SETZOOMEDRECT", Zero},
        {0x11127216, PerZoomer, "ESC_ZOOM_GETZOOMEDRECT", Zeros},
        {0x11127217, OnScreen, "ESC_ZOOM_GETZOOMERCOUNT", Zero},
        {0x11127218, OnScreen, "ESC_ZOOM_SETZORDER", Zero},
        {0x11127219, OnScreen, "ESC_ZOOM_GETZORDER", Zero},
        {0x11127220, PerZoomer, "ESC_ZOOM_SETFACTOR", Zero},
        {0x11127221, PerZoomer, "ESC_ZOOM_GETFACTOR", Zero},
        {0x11127222, PerZoomer, "ESC_ZOOM_SETIMPROVEFACTOR", Zero},
        {0x11127223, PerZoomer, "ESC_ZOOM_GETIMPROVEFACTOR", Zero},
        {0x11127224, PerZoomer, "ESC_ZOOM_SETBORDER", Zero},
        {0x11127225, PerZoomer, "ESC_ZOOM_GETBORDER", Zero},
        {0x11127226, PerZoomer, "ESC_ZOOM_SETBORDERSSIZE", Zero},
        {0x11127227, PerZoomer, "ESC_ZOOM_GETBORDERSSIZE", Zero},
        {0x11127228, Locked, "ESC_ZOOM_SCROLL", Zero},
        {0x11127229, Locked, "ESC_ZOOM_REFRESH", Zero},
        {0x11127230, Locked, "ESC_ZOOM_IMPROVEIMAGE", Zero},
        {0x11127231, PerZoomer, "ESC_ZOOM_SETXFACTOR", Zero},
        {0x11127232, PerZoomer, "ESC_ZOOM_GETXFACTOR", Zero},
        {0x11127233, PerZoomer, "ESC_ZOOM_SETYFACTOR", Zero},
        {0x11127234, PerZoomer, "ESC_ZOOM_GETYFACTOR", Zero},
        {0x11127235, Locked, "ESC_ZOOM_SHOW_ORIG_IMAGE", Zero},
        {0x11127236, OnScreenSilent, "", Zero},
        {0x11127237, NoScreen, "", Zero},
        {0x11127238, NoScreen, "", Zero},
        {0x11127239, OnScreen, "ESC_ZOOM_DESTROY_WISE_SURFACE", Zero},
        {0x11127240, NoScreen, "", {50, Untouched, Untouched, Untouched}},
        {0x11127241, NoScreen, "", All},
        {0x11127242, NoScreen, "", {3, Untouched, Untouched, Untouched}},
        {0x11127243, NoScreen, "", {1, Untouched, Untouched, Untouched}},
        {0x11127244, NoScreen, "", {0, 0, 0, 0}},
        {0x11127245, NoScreen, "", {1, Untouched, Untouched, Untouched}},
        {0x11127246, NoScreen, "", Zero},
        {0x11127247, PerZoomerSilent, "", Zero},
        {0x11127248, PerZoomerSilent, "", All},
    };

    bool IsSilent(const Row& row)
    {
        return row.name[0] == '\0';
    }

    class EscapeZoom : public EscapeTest {
    protected:
        static Words Input(ULONG code, ULONG id = 0, const RECTL& v = {}, ULONG a = 0, ULONG b = 0, ULONG c = 0)
        {
            return {code,
                    id,
                    a,
                    b,
                    c,
                    static_cast<ULONG>(v.left),
                    static_cast<ULONG>(v.top),
                    static_cast<ULONG>(v.right),
                    static_cast<ULONG>(v.bottom)};
        }
        Reply Run(ULONG code, ULONG id = 0, const RECTL& v = {}, ULONG a = 0, ULONG b = 0, ULONG c = 0)
        {
            const Reply reply = Send(ZoomEscape, Input(code, id, v, a, b, c));
            EXPECT_EQ(reply.result, 1u);
            return reply;
        }
        ULONG Create() { return Run(0x11127201).out[0]; }
        void ExpectWord(ULONG word, const Reply& reply)
        {
            EXPECT_EQ(reply.out, (Words{word, Untouched, Untouched, Untouched}));
            EXPECT_EQ(reply.messages, "");
        }
    };

    TEST_F(EscapeZoom, NeedsThirtySixBytesInAndSixteenOut)
    {
        Words in = Input(0x11127201);
        Words out = All;
        EXPECT_EQ(Call(session.Screen(), ZoomEscape, 35, in.data(), 16, out.data()), 0u);
        EXPECT_EQ(Call(session.Screen(), ZoomEscape, 36, in.data(), 15, out.data()), 0u);
        EXPECT_EQ(Call(session.Screen(), ZoomEscape, 36, nullptr, 16, out.data()), 0u);
        EXPECT_EQ(Call(session.Screen(), ZoomEscape, 36, in.data(), 16, nullptr), 0u);
        EXPECT_EQ(Call(session.Screen(), ZoomEscape, 0, nullptr, 0, nullptr), 0u);
        EXPECT_EQ(out, All);
        EXPECT_EQ(session.Engine().TakeDebugOutput(), "");
        ExpectWord(0, Run(0x11127217));
        EXPECT_EQ(Call(session.Screen(), ZoomEscape, 36, in.data(), 16, out.data()), 1u);
        ExpectWord(1, Run(0x11127217));
    }

    TEST_F(EscapeZoom, DoesNothingForAHoleAndAnswersOne)
    {
        std::map<ULONG, const Row*> rows;
        for (const Row& row : Rows)
            rows[row.code] = &row;
        for (ULONG code = 0x111271F0; code <= 0x11127260; ++code) {
            if (rows.contains(code))
                continue;
            const Reply reply = Run(code, 1, {1, 2, 3, 4});
            EXPECT_EQ(reply.out, All) << std::hex << code;
            EXPECT_EQ(reply.messages, "") << std::hex << code;
        }
        for (const ULONG code : {0U, 1U, 0x80000000U, 0xFFFFFFFFU})
            EXPECT_EQ(Run(code).out, All) << code;
    }

    TEST_F(EscapeZoom, SaysThatThereIsNoSurface)
    {
        for (const Row& row : Rows) {
            const Reply reply = Send(nullptr, ZoomEscape, Input(row.code, 0, {1000, 0, 0, 0}));
            EXPECT_EQ(reply.result, 1u) << std::hex << row.code;
            EXPECT_EQ(reply.out, row.missing) << std::hex << row.code;
            EXPECT_EQ(reply.messages, IsSilent(row) ? "" : "KORU:pso == NULL\n") << std::hex << row.code;
        }
    }

    TEST_F(EscapeZoom, SaysWhichCommandFoundNoScreen)
    {
        SURFOBJ* const bitmap = PlainBitmap();
        for (const Row& row : Rows) {
            const Reply reply = Send(bitmap, ZoomEscape, Input(row.code, 0, {1000, 0, 0, 0}));
            const std::string message = "KORU:" + std::string(row.name) + " - Screen NULL\n";
            EXPECT_EQ(reply.result, 1u) << std::hex << row.code;
            EXPECT_EQ(reply.out, row.missing) << std::hex << row.code;
            EXPECT_EQ(reply.messages, IsSilent(row) ? "" : message) << std::hex << row.code;
        }
    }

    TEST_F(EscapeZoom, SaysThatThereIsNoSuchZoomer)
    {
        const ULONG stale = Create();
        Create();
        Run(0x11127202, stale);
        for (const Row& row : Rows) {
            if (row.kind != PerZoomer && row.kind != PerZoomerSilent)
                continue;
            for (const ULONG id : {stale, 0U, 1U, 0xFFFFFFFFU}) {
                const Reply reply = Run(row.code, id, {1, 2, 3, 4});
                EXPECT_EQ(reply.out, row.missing) << std::hex << row.code;
                EXPECT_EQ(reply.messages, row.kind == PerZoomer ? "KORU:I cannot find the zoomer with this ID\n" : "")
                    << std::hex << row.code;
            }
        }
    }

    TEST_F(EscapeZoom, SaysWhichScreenCannotBeLocked)
    {
        const ULONG id = Create();
        for (const Row& row : Rows) {
            if (row.kind != Locked)
                continue;
            session.Engine().RefuseLock(session.Virtual()->hsurf);
            Reply reply = Run(row.code, id, {1, 1, 9, 9});
            EXPECT_EQ(reply.out, Zero) << row.name;
            EXPECT_EQ(reply.messages, "KORU:Cannot lock VirtualScreen\n") << row.name;
            session.Engine().StopFailing();

            session.Engine().RefuseLock(session.Real()->hsurf);
            reply = Run(row.code, id, {1, 1, 9, 9});
            EXPECT_EQ(reply.out, Zero) << row.name;
            EXPECT_EQ(reply.messages, "KORU:Cannot lock RealScreen\n") << row.name;
            session.Engine().StopFailing();
        }
        ExpectWord(0, Run(0x11127238));
    }

    TEST_F(EscapeZoom, IsNeitherForwardedNorRecordedNorSeenAsDrawing)
    {
        const ULONG id = Create();
        Run(0x11127205, id, {1, 0, 0, 0});
        engine::ForgetRealCalls();
        session.selectorsAsked.clear();
        for (const ULONG code : {0x11127229U, 0x11127204U, 0x11127228U, 0x11127230U, 0x11127235U})
            ExpectWord(1, Run(code, id, {0, 0, 16, 16}));
        for (const engine::RealCall& call : engine::RealCalls())
            EXPECT_EQ(call.index, INDEX_DrvCopyBits);
        EXPECT_FALSE(engine::RealCalls().empty());
        EXPECT_TRUE(session.records.empty());
        EXPECT_TRUE(session.selectorsAsked.empty());
    }

    TEST_F(EscapeZoom, CreatesRemovesAndFlushesZoomers)
    {
        const ULONG first = Create();
        const ULONG second = Create();
        EXPECT_NE(first, 0u);
        EXPECT_NE(second, 0u);
        EXPECT_NE(first, second);
        ExpectWord(2, Run(0x11127217));
        ExpectWord(1, Run(0x11127202, first));
        ExpectWord(1, Run(0x11127217));
        ExpectWord(1, Run(0x11127202, first));
        ExpectWord(1, Run(0x11127202, 0));
        ExpectWord(1, Run(0x11127217));
        Create();
        ExpectWord(1, Run(0x11127203));
        ExpectWord(0, Run(0x11127217));
        ExpectWord(1, Run(0x11127203));
    }

    TEST_F(EscapeZoom, CreatesNothingWithoutMemory)
    {
        session.Engine().Fail(engine::Request::Memory);
        ExpectWord(0, Run(0x11127201));
        session.Engine().Fail(engine::Request::CreateSurface);
        const Reply reply = Run(0x11127201);
        EXPECT_EQ(reply.out, Zero);
        EXPECT_EQ(reply.messages, "KORU:Faliled to create hBmp !!!! \nKORU:Error creating zoom bitmap \n");
        ExpectWord(0, Run(0x11127217));
    }

    struct Property {
        ULONG set, get;
        ULONG initial;
        ULONG value, stored;
    };

    TEST_F(EscapeZoom, StoresEveryPropertyOfItsZoomerAlone)
    {
        const Property properties[] = {
            {0x11127205, 0x11127206, 0, 0xFFFFFFFF, 0xFFFFFFFF}, // state
            {0x11127207, 0x11127208, 0, 77, 77}, // mode
            {0x11127209, 0x11127210, 0, 88, 88}, // style
            {0x11127211, 0x11127212, 0, 99, 99}, // behaviour
            {0x11127231, 0x11127232, 2, 0x1FF, 0xFF}, // factors keep the low byte
            {0x11127233, 0x11127234, 2, 0x100, 0},
            {0x11127222, 0x11127223, 0, 12, 12}, // smoothing
            {0x11127224, 0x11127225, 0, 0xABCDEF01, 0xABCDEF01}, // border
            {0x11127226, 0x11127227, 1, 0x80000000, 0x80000000}, // its size
            {0x11127247, 0x11127248, 0, 0x300, 1}, // which colour wins
        };
        const ULONG id = Create();
        const ULONG other = Create();
        for (const Property& property : properties) {
            ExpectWord(property.initial, Run(property.get, id));
            ExpectWord(1, Run(property.set, id, {static_cast<LONG>(property.value), 5, 6, 7}, 8, 9, 10));
            ExpectWord(property.stored, Run(property.get, id));
            ExpectWord(property.initial, Run(property.get, other));
        }
        for (const Property& property : properties)
            ExpectWord(property.stored, Run(property.get, id));
    }

    TEST_F(EscapeZoom, SetsBothFactorsAtOnceAndTellsTheHorizontalOne)
    {
        const ULONG id = Create();
        ExpectWord(1, Run(0x11127220, id, {0x705, 0, 0, 0}));
        ExpectWord(5, Run(0x11127221, id));
        ExpectWord(5, Run(0x11127232, id));
        ExpectWord(5, Run(0x11127234, id));
        Run(0x11127233, id, {9, 0, 0, 0});
        ExpectWord(5, Run(0x11127221, id));
        Run(0x11127231, id, {3, 0, 0, 0});
        ExpectWord(3, Run(0x11127221, id));
        Run(0x11127220, id, {-1, 0, 0, 0});
        ExpectWord(255, Run(0x11127221, id));
    }

    TEST_F(EscapeZoom, StoresRectanglesAsTheyAre)
    {
        const ULONG id = Create();
        EXPECT_EQ(Run(0x11127214, id).out, (Words{0, 0, 50, 50}));
        EXPECT_EQ(Run(0x11127216, id).out, (Words{0, 0, 100, 100}));
        ExpectWord(1, Run(0x11127213, id, {-1, -2, 3, 4}));
        ExpectWord(1, Run(0x11127215, id, {40, 30, 20, 10}));
        EXPECT_EQ(Run(0x11127214, id).out, (Words{0xFFFFFFFF, 0xFFFFFFFE, 3, 4}));
        EXPECT_EQ(Run(0x11127216, id).out, (Words{40, 30, 20, 10}));
    }

    TEST_F(EscapeZoom, ReadsItsInputBeforeItAnswersIntoIt)
    {
        const ULONG id = Create();
        Run(0x11127213, id, {11, 12, 13, 14});
        Words both = Input(0x11127214, id);
        EXPECT_EQ(Call(session.Screen(), ZoomEscape, 36, both.data(), 36, both.data()), 1u);
        EXPECT_EQ(both, (Words{11, 12, 13, 14, 0, 0, 0, 0, 0}));
        both = Input(0x11127214, 1);
        EXPECT_EQ(Call(session.Screen(), ZoomEscape, 36, both.data(), 36, both.data()), 1u);
        EXPECT_EQ(both, (Words{0, 0, 0, 0, 0, 0, 0, 0, 0}));
        EXPECT_EQ(session.Engine().TakeDebugOutput(), "KORU:I cannot find the zoomer with this ID\n");

        // The same with the output over V0 to V3.
        both = Input(0x11127218, id, {7, 0, 0, 0});
        EXPECT_EQ(Call(session.Screen(), ZoomEscape, 36, both.data(), 16, &both[5]), 1u);
        EXPECT_EQ(both[5], 1u);
        ExpectWord(7, Run(0x11127219, id));
    }

    TEST_F(EscapeZoom, KeepsZOrders)
    {
        const ULONG id = Create();
        ExpectWord(0, Run(0x11127219, id));
        ExpectWord(1, Run(0x11127218, id, {-5, 0, 0, 0}));
        ExpectWord(0xFFFFFFFB, Run(0x11127219, id));
        ExpectWord(1, Run(0x11127218, 1, {3, 0, 0, 0}));
        ExpectWord(0xFFFFFFFF, Run(0x11127219, 1));
        ExpectWord(0xFFFFFFFB, Run(0x11127219, id));
    }

    TEST_F(EscapeZoom, RenumbersFromTheBottom)
    {
        ExpectWord(1, Run(0x11127239));
        const ULONG first = Create();
        const ULONG second = Create();
        const ULONG third = Create(); // at the bottom
        ExpectWord(1, Run(0x11127239));
        ExpectWord(3, Run(0x11127219, third));
        ExpectWord(2, Run(0x11127219, second));
        ExpectWord(1, Run(0x11127219, first));
    }

    TEST_F(EscapeZoom, CountsUpdatesAlsoWithoutZoomers)
    {
        ExpectWord(0, Run(0x11127238));
        ExpectWord(1, Run(0x11127204));
        ExpectWord(1, Run(0x11127238));
        Create();
        ExpectWord(1, Run(0x11127204));
        ExpectWord(2, Run(0x11127238));
    }

    TEST_F(EscapeZoom, SetsTheUpdateIntervalWithoutAnswering)
    {
        ExpectWord(50, Run(0x11127240));
        EXPECT_EQ(Run(0x11127241, 0, {-7, 1, 2, 3}).out, All);
        ExpectWord(0xFFFFFFF9, Run(0x11127240));
    }

    TEST_F(EscapeZoom, AnswersZeroForWorkOnAnUnknownZoomerWithoutAWord)
    {
        for (const ULONG code : {0x11127228U, 0x11127229U, 0x11127230U})
            ExpectWord(0, Run(code, 1, {2, 2, 0, 0}));
    }

    TEST_F(EscapeZoom, ScrollsByItsFirstTwoValues)
    {
        const struct {
            LONG dx, dy;
            POINTL shownAt;
        } cases[] = {{3, 0, {30, 24}}, {0, 3, {24, 30}}, {-1, 2, {22, 28}}};
        for (const auto& [dx, dy, shownAt] : cases) {
            const ULONG id = Create();
            Run(0x11127205, id, {1, 0, 0, 0});
            Run(0x11127213, id, {0, 0, 8, 8});
            Run(0x11127215, id, {20, 20, 36, 36});
            session.Virtual()->SetPixel(2, 2, 0x123456);
            Run(0x11127229, id);
            EXPECT_EQ(session.Real()->Pixel(24, 24), 0x123456u);
            session.Virtual()->SetPixel(2, 2, 0); // what moves is the picture as it was
            ExpectWord(1, Run(0x11127228, id, {dx, dy, 0, 0}));
            EXPECT_EQ(session.Real()->Pixel(shownAt.x, shownAt.y), 0x123456u) << dx << ", " << dy;
            Run(0x11127203);
        }
    }

    TEST_F(EscapeZoom, ShowsARectangleUnmagnified)
    {
        session.Virtual()->SetPixel(5, 6, 0x123456);
        ExpectWord(1, Run(0x11127235, 0, {5, 6, 6, 7}));
        EXPECT_EQ(session.Real()->Pixel(5, 6), 0x123456u);
        for (const RECTL& outside : {RECTL{-100, -100, -1, -1}, RECTL{9, 9, 3, 3}, RECTL{0x7FFFFFF0, 0, 0x7FFFFFFF, 9}})
            ExpectWord(1, Run(0x11127235, 0, outside));
        ExpectWord(1, Run(0x11127235, 0, {-2147483647 - 1, -2147483647 - 1, 2147483647, 2147483647}));
        EXPECT_TRUE(SamePixels(*session.Virtual(), *session.Real()));
    }

    TEST_F(EscapeZoom, ShowsNothingWhenTheWorkBitmapCannotBeLocked)
    {
        session.Virtual()->SetPixel(5, 6, 0x123456);
        session.Engine().Fail(engine::Request::Lock, 3); // after VirtualScreen and RealScreen
        ExpectWord(0, Run(0x11127235, 0, {5, 6, 6, 7}));
        EXPECT_EQ(session.Real()->Pixel(5, 6), 0u);
    }

} // namespace
} // namespace conformance
