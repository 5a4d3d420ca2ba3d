#pragma once

#include "driver/function_ref.h"
#include "driver/screen.h"

// The driver-wide array of devices. It grows by one slot at a time and never shrinks; a freed slot
// is used again.
namespace koru::ScreenList {

// A new Screen for a device, or null when memory is short. Devices are not checked for presence.
Screen* Add(DHPDEV dhpdevReal);

// Frees the record alone: what it refers to is the caller's. False for null or an unknown pointer.
bool Remove(Screen* screen);

// The first Screen of this device, or null.
Screen* Find(DHPDEV dhpdev);

bool IsScreenDevice(DHPDEV dhpdev, HDEV hdev);

void ForEach(FunctionRef<void(Screen&)> visit);

} // namespace koru::ScreenList
