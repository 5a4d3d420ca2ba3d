#pragma once

#include "driver/driver_values.h"

namespace koru {

// Takes over the options that `size` bytes hold; the others keep their values. One character an
// option, read as a digit without a check.
void ApplyOptions(const BYTE* bytes, ULONG size, Options& options);

// Reads "KORU.ini" into DriverOptions. A missing file changes nothing.
void ReadOptionFile();

} // namespace koru
