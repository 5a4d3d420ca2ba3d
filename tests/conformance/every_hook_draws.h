#pragma once

// Every drawing hook with a call of its own that takes a clip and, where the hook has one, a source.

#include "tests/conformance/session.h"

namespace conformance {

struct Drawing {
    engine::DisplayDriver& driver;
    SURFOBJ* target;
    SURFOBJ* source; // at least 64 x 48
    CLIPOBJ* clip;
    ULONG pixel; // of brushes
};

struct HookRow {
    const char* name;
    ULONG recordType;
    bool hasSource;
    BOOL (*draw)(const Drawing& drawing); // across (6, 4) to (50, 34)
};

inline void PrintTo(const HookRow& row, std::ostream* out)
{
    *out << row.name;
}

// The rows whose name ends in "FromTheOrigin" draw paths from (0, 0) on.
const std::vector<HookRow>& HookRows();

enum class Clip { None, Trivial, Rectangle, Complex };
const char* NameOf(Clip clip);

// A clip of that kind: the whole of 64 x 48 pixels, one rectangle, or two with the same bounds.
std::unique_ptr<engine::ClipObject> MakeClip(Clip clip); // null for None
constexpr RECTL ClipBounds = {12, 10, 36, 28};

// All bits of a pixel of this layout.
ULONG LargestPixel(const engine::PixelLayout& layout);

// Different pixels side by side; where two seeds differ by one, so does every pixel.
void FillWithPattern(engine::Surface& bitmap, ULONG seed);
engine::Surface* MakePattern(const engine::PixelLayout& layout, ULONG seed); // 64 x 48

void CopyPixels(engine::Surface& to, const engine::Surface& from);

// The engine bitmap behind a surface that the driver manages.
engine::Surface* Behind(const SURFOBJ* managed);

} // namespace conformance
