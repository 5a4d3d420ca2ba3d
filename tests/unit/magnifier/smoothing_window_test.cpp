#include <gtest/gtest.h>

#include "magnifier/smoothing_kernels.h"

namespace koru {

namespace {

    constexpr LONG First = -2, Last = 1; // of a window of sixteen pixels, both ways

    // Two colours, one bit a pixel, that must not be asked for a pixel outside.
    struct TwoColours {
        ULONG bits;
        ULONG At(const POINTL& offset, const POINTL& shift = {0, 0}) const
        {
            const LONG x = offset.x + shift.x, y = offset.y + shift.y;
            const bool inside = x >= First && x <= Last && y >= First && y <= Last;
            EXPECT_TRUE(inside) << "(" << x << ", " << y << ") of " << std::hex << bits;
            return inside ? bits >> ((y - First) * 4 + x - First) & 1 : 0;
        }
    };

    struct DarkerWins {
        using Value = ULONG;
        static Value Choose(Value first, Value second, const SmoothPass&) { return first < second ? first : second; }
        static void Write(BYTE*, LONG, Value) { }
    };

    // The halves of long triangles ask for what lies round a neighbouring junction.
    TEST(SmoothingWindow, HoldsEveryPixelThatIsAskedFor)
    {
        SmoothPass pass = {};
        pass.xFactor = pass.yFactor = 2;
        for (ULONG bits = 0; bits < 0x10000 && !testing::Test::HasFailure(); ++bits)
            for (const Quadrant& quadrant : Quadrants) {
                const TwoColours pixels = {bits};
                RunOfEdge(pixels, quadrant);
                PaintFarHalf<DarkerWins>(pass, pixels, quadrant, {}, {-quadrant.outward.x, 0}, EdgeRun::Sideways);
                PaintFarHalf<DarkerWins>(pass, pixels, quadrant, {}, {0, -quadrant.outward.y}, EdgeRun::UpAndDown);
            }
    }

} // namespace

} // namespace koru
