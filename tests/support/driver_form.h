#pragma once

#include <string>

namespace support {

// The koru.dll that the tests were told to run (--image=PATH), or empty: the linked driver.
const std::string& ImagePath();

// Registers the driver under test as "koru" with the current engine.
void RegisterDriverUnderTest();

} // namespace support
