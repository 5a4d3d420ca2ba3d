// A client may ask for far more than it needs: thousands of zoomers, zones and identifiers still work.

#include "tests/conformance/escape_calls.h"

namespace conformance {
namespace {

    enum ZoomCode : ULONG {
        CreateZoomer = 0x11127201,
        RemoveZoomer = 0x11127202,
        FlushZoomers = 0x11127203,
        SetState = 0x11127205,
        GetState = 0x11127206,
        GetZoomerCount = 0x11127217,
    };
    enum SubCommand : ULONG { DeleteDarkZone = 4, AddDarkProcess = 37, DeleteDarkProcess = 38 };

    constexpr RECTL Corner = {0, 0, 32, 32};

    // A zoomer's bitmap exceeds the screen by 48 pixels: a small screen of small pixels.
    Setup SmallScreen()
    {
        Setup setup;
        setup.mode = {64, 48, 8};
        return setup;
    }

    class EscapeMany : public EscapeTest {
    protected:
        EscapeMany()
            : EscapeTest(SmallScreen())
        {
        }
    };

    TEST_F(EscapeMany, TenThousandZoomers)
    {
        constexpr ULONG count = 10000;
        std::vector<ULONG> zoomers;
        for (ULONG i = 0; i < count; ++i) {
            zoomers.push_back(session.Zoom(CreateZoomer));
            ASSERT_NE(zoomers.back(), 0u) << i;
        }
        EXPECT_EQ(session.Zoom(GetZoomerCount), count);
        for (const ULONG id : {zoomers.front(), zoomers[4711], zoomers.back()}) {
            session.Zoom(SetState, id, {1, 0, 0, 0});
            EXPECT_EQ(session.Zoom(GetState, id), 1u);
        }
        EXPECT_EQ(RecordsOfDrawing(Corner), 1u);
        for (ULONG i = 0; i < count; i += 100)
            session.Zoom(RemoveZoomer, zoomers[i]);
        EXPECT_EQ(session.Zoom(GetZoomerCount), count - 100);
        session.Zoom(FlushZoomers);
        EXPECT_EQ(session.Zoom(GetZoomerCount), 0u);
    }

    TEST_F(EscapeMany, AHundredThousandDarkProcesses)
    {
        constexpr ULONG count = 100000;
        for (ULONG i = 0; i < count; ++i) // neither up nor down: 7919 is a prime
            ASSERT_EQ(session.Command(AddDarkProcess, 1000 + i * 7919 % count), 1u);
        for (const ULONG dark : {1000u, 54321u, 100999u}) {
            session.identifiers[0] = dark;
            EXPECT_EQ(RecordsOfDrawing(Corner), 0u) << dark;
            EXPECT_EQ(session.Command(DeleteDarkProcess, dark), 1u);
            EXPECT_EQ(RecordsOfDrawing(Corner), 1u) << dark;
        }
        for (const ULONG seen : {0u, 999u, 101000u}) {
            session.identifiers[0] = seen;
            EXPECT_EQ(RecordsOfDrawing(Corner), 1u) << seen;
        }
    }

    TEST_F(EscapeMany, AThousandDarkZones)
    {
        std::vector<ULONG> zones; // one for each of 1024 pixels
        for (LONG y = 0; y < 32; ++y)
            for (LONG x = 0; x < 32; ++x) {
                zones.push_back(session.AddDarkZone({x, y, x + 1, y + 1}));
                ASSERT_NE(zones.back(), 0u);
            }
        EXPECT_EQ(RecordsOfDrawing(Corner), 0u);
        EXPECT_EQ(RecordsOfDrawing({0, 0, 32, 33}), 1u);
        session.Command(DeleteDarkZone, zones[32 * 17 + 5]); // the pixel (5, 17)
        EXPECT_EQ(RecordsOfDrawing(Corner), 1u);
        EXPECT_EQ(RecordsOfDrawing({6, 17, 32, 18}), 0u);
    }

} // namespace
} // namespace conformance
