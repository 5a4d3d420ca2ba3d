#pragma once

#include "platform/types.h"

namespace koru {

// `preferred` when a row of the bitmap fits in it, else the row rounded up to 4 bytes.
LONG StrideHoldingRow(LONG preferred, LONG width, ULONG iBitmapFormat);

} // namespace koru
