#pragma once

// Every drawing hook with a small call of its own, for the rules that hold for all of them.

#include <functional>
#include <ostream>

#include "tests/conformance/session.h"

namespace conformance {

constexpr ULONG Orange = 0x00FF8040; // what the calls paint, as a 32-bit pixel
constexpr MIX CopyPen = 0x0D0D;
constexpr MIX NoOperation = 0x0B0B;
constexpr RECTL Painted = {8, 8, 24, 20}; // nothing outside of it is touched

struct DrawingHook {
    const char* name;
    ULONG maskBit; // of the call mask
    ULONG recordType;
    ULONG fixedSize; // of its record
    BOOL (*call)(Session& session, SURFOBJ* target); // paints in Painted and nowhere else
};
std::ostream& operator<<(std::ostream& out, const DrawingHook& hook);

const std::vector<DrawingHook>& DrawingHooks();
std::string NameOf(const testing::TestParamInfo<DrawingHook>& info);

// An engine bitmap of the session's format, in one colour.
engine::Surface* MakePicture(Session& session, SIZEL size, ULONG pixel = Orange);

void FillBitmap(engine::Surface& bitmap, ULONG pixel);

// With DrvBitBlt: `rectangle` in `pixel`, cut to `clip`.
BOOL FillRectangle(Session& session, SURFOBJ* target, RECTL rectangle, CLIPOBJ* clip = nullptr, ULONG pixel = Orange);

// The smallest rectangle around the pixels that are not 0, as "8 8 24 20"; "nothing" when all are.
std::string PaintedPart(const engine::Surface& bitmap);

// The rectangle of the screen that `call` shows anew: the VirtualScreen is filled behind the driver's
// back, and what then appears on the RealScreen was shown.
std::string ShownBy(Session& session, const std::function<void()>& call);

// Zoom updates since the driver was enabled.
ULONG ZoomUpdates(Session& session);

// How often `text` stands in `output`.
ULONG Count(const std::string& output, const std::string& text);

} // namespace conformance
