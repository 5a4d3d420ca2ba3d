// Proves the declarations against the table of offsets.

#include "platform/platform.h"

#define LAYOUT_SIZE(type, size) static_assert(sizeof(type) == (size), #type);
#define LAYOUT_FIELD(type, field, offset) static_assert(offsetof(type, field) == (offset), #type "." #field);
#include "platform/layout_table.inc"

#define CONSTANT(name, value) static_assert((name) == (value), #name);
#include "platform/constants_table.inc"
