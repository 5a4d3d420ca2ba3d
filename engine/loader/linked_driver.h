#pragma once

#include <string>

namespace engine {

// Registers the driver that is linked into this program as the image of this name ("koru") with the
// current engine. Each load starts with the driver's globals as they were at program start.
void RegisterLinkedDriver(const std::u16string& name = u"koru");

// Puts the linked driver's globals back as they were at program start. Pointers in them are forgotten.
void ResetLinkedDriver();

} // namespace engine
