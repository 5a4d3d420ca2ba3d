// The same table over the toolchain's own kernel header: where this compiles, both agree byte for byte.

#include "packaging/korutap/kernel.h"

#define LAYOUT_SIZE(type, size) static_assert(sizeof(type) == (size), #type);
#define LAYOUT_FIELD(type, field, offset) static_assert(offsetof(type, field) == (offset), #type "." #field);
#include "tests/links/kernel_layout_table.inc"

static_assert(IRP_MJ_CREATE == 0 && IRP_MJ_CLOSE == 2 && IRP_MJ_READ == 3);
static_assert(IRP_MJ_DEVICE_CONTROL == 14 && IRP_MJ_CLEANUP == 18 && IRP_MJ_MAXIMUM_FUNCTION == 27);
static_assert(STATUS_DEVICE_BUSY == NTSTATUS(0x80000011) && STATUS_BUFFER_TOO_SMALL == NTSTATUS(0xC0000023));
static_assert(STATUS_INVALID_DEVICE_REQUEST == NTSTATUS(0xC0000010));
static_assert(STATUS_PRIVILEGE_NOT_HELD == NTSTATUS(0xC0000061));
static_assert(DO_BUFFERED_IO == 4 && FILE_DEVICE_UNKNOWN == 0x22 && FILE_DEVICE_SECURE_OPEN == 0x100);
