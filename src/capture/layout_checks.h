#pragma once

#include <cstddef>

// Under each layout that leaves the driver: where every field stands.
#define FIELD_AT(Layout, field, offset) static_assert(offsetof(Layout, field) == (offset))
