#pragma once

// The kernel's structures as far as korutap.sys meets them, under their published names. What the tests do
// not look at is room.

#include "platform/types.h"

namespace links {

using NTSTATUS = std::int32_t;

struct UNICODE_STRING {
    USHORT Length, MaximumLength; // bytes; the terminator is not in Length
    const WCHAR* Buffer;
};

struct LUID {
    ULONG LowPart;
    LONG HighPart;
};

struct IRP;

struct DEVICE_OBJECT {
    BYTE before[0x1C];
    ULONG Flags;
    BYTE behind[0x98];
};

using PDRIVER_DISPATCH = NTSTATUS(APIENTRY*)(DEVICE_OBJECT*, IRP*);
constexpr ULONG MajorFunctions = 28;

struct DRIVER_OBJECT {
    BYTE before[0x34];
    void(APIENTRY* DriverUnload)(DRIVER_OBJECT*);
    PDRIVER_DISPATCH MajorFunction[MajorFunctions];
};

struct IO_STACK_LOCATION {
    BYTE MajorFunction, MinorFunction, Flags, Control;
    union {
        struct {
            ULONG Length, Key;
            ULONG ByteOffset[2];
        } Read;
        struct {
            ULONG OutputBufferLength, InputBufferLength, IoControlCode;
            void* Type3InputBuffer;
        } DeviceIoControl;
    } Parameters;
    DEVICE_OBJECT* DeviceObject;
    BYTE behind[12];
};

struct IRP {
    BYTE before[0xC];
    struct {
        void* SystemBuffer;
    } AssociatedIrp;
    BYTE threads[8];
    struct {
        NTSTATUS Status;
        ULONG Information;
    } IoStatus;
    BYTE RequestorMode;
    BYTE middle[0x3F];
    struct {
        struct {
            IO_STACK_LOCATION* CurrentStackLocation;
            BYTE behind[12];
        } Overlay;
    } Tail;
};

#define LAYOUT_SIZE(type, size) static_assert(sizeof(type) == (size), #type);
#define LAYOUT_FIELD(type, field, offset) static_assert(offsetof(type, field) == (offset), #type "." #field);
#include "tests/links/kernel_layout_table.inc"
#undef LAYOUT_SIZE
#undef LAYOUT_FIELD

constexpr NTSTATUS StatusSuccess = 0;
constexpr NTSTATUS StatusDeviceBusy = static_cast<NTSTATUS>(0x80000011);
constexpr NTSTATUS StatusInvalidDeviceRequest = static_cast<NTSTATUS>(0xC0000010);
constexpr NTSTATUS StatusBufferTooSmall = static_cast<NTSTATUS>(0xC0000023);
constexpr NTSTATUS StatusPrivilegeNotHeld = static_cast<NTSTATUS>(0xC0000061);
constexpr NTSTATUS StatusInsufficientResources = static_cast<NTSTATUS>(0xC000009A);
constexpr BYTE MajorCreate = 0, MajorClose = 2, MajorRead = 3, MajorDeviceControl = 14, MajorCleanup = 18;

} // namespace links
