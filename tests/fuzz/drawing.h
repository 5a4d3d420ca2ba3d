#pragma once

#include "tests/fuzz/objects.h"

namespace fuzz {

// One call that draws, or prepares drawing, with arguments that the input chooses. What an engine would not
// survive itself is not passed: a source that is too small, a missing brush.
void Draw(Machine& machine, Objects& make, Input& input);

// Before the device goes: an engine deletes its device bitmaps first.
void DeleteDeviceBitmaps(Objects& make);

} // namespace fuzz
