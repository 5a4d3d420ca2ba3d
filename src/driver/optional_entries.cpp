#include "driver/optional_entries.h"

#include "driver/image_export.h"

namespace koru {

constinit OptionalEntries OptionalEngEntries = {};

namespace {

    template<class Function> void LookUp(Function& entry, const char* name)
    {
        entry = FindExport<Function>(nullptr, name);
    }

} // namespace

void LookUpOptionalEntries()
{
    LookUp(OptionalEngEntries.AlphaBlend, "EngAlphaBlend");
    LookUp(OptionalEngEntries.GradientFill, "EngGradientFill");
    LookUp(OptionalEngEntries.TransparentBlt, "EngTransparentBlt");
    LookUp(OptionalEngEntries.StretchBltROP, "EngStretchBltROP");
    LookUp(OptionalEngEntries.PlgBlt, "EngPlgBlt");
    LookUp(OptionalEngEntries.DitherColor, "EngDitherColor");
    LookUp(OptionalEngEntries.SetPointerShape, "EngSetPointerShape");
    LookUp(OptionalEngEntries.MovePointer, "EngMovePointer");
    LookUp(OptionalEngEntries.MapFile, "EngMapFile");
    LookUp(OptionalEngEntries.UnmapFile, "EngUnmapFile");
}

} // namespace koru
