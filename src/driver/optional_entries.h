#pragma once

#include "platform/entry_points.h"

namespace koru {

// Engine services that older engines do not export; null where missing. Never imported, so that
// one image loads everywhere.
struct OptionalEntries {
    PFN_DrvAlphaBlend AlphaBlend;
    PFN_DrvGradientFill GradientFill;
    PFN_DrvTransparentBlt TransparentBlt;
    PFN_DrvStretchBltROP StretchBltROP;
    PFN_DrvPlgBlt PlgBlt;
    PFN_EngDitherColor DitherColor;
    void* SetPointerShape; // this and the following are looked up, never called
    void* MovePointer;
    void* MapFile;
    void* UnmapFile;
};

extern OptionalEntries OptionalEngEntries;

void LookUpOptionalEntries();

} // namespace koru
