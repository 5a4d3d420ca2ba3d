// The same table over the toolchain's own header: where this compiles, both agree byte for byte.

#include <cstddef>

// In the order that they need each other.
// clang-format off
#include <windef.h>
#include <wingdi.h>
#include <winddi.h>
// clang-format on

#define LAYOUT_SIZE(type, size) static_assert(sizeof(type) == (size), #type);
#define LAYOUT_FIELD(type, field, offset) static_assert(offsetof(type, field) == (offset), #type "." #field);
#include "../../src/platform/layout_table.inc"

#define CONSTANT(name, value) static_assert(static_cast<unsigned long>(name) == (value), #name);
#include "../../src/platform/constants_table.inc"
