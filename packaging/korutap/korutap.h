#pragma once

// How a program talks to korutap.sys, the kernel module that takes call records from Koru and keeps them
// for one reader. Includable from kernel and user mode, in any data model.
//
// The reader opens DevicePath with read access (CreateFile, one opener at a time, the debug privilege
// enabled), asks for the entry points, installs them with Koru's escape, and then reads: each ReadFile of at
// least ReadRoom bytes returns at once with as many whole frames as fit, 0 bytes when there are none.
// Closing the handle stops the ring and empties it.
//
// Errors, as the system reports them to a program:
//     ERROR_PRIVILEGE_NOT_HELD     open: the debug privilege is not held or not enabled
//     ERROR_BUSY                   open: there is a reader already
//     ERROR_INSUFFICIENT_BUFFER    read or control: the output is too small; nothing was taken
//     ERROR_INVALID_FUNCTION       control: unknown code

#include <stddef.h>
#include <stdint.h>

namespace korutap {

constexpr char DevicePath[] = "\\\\.\\KoruTap";
constexpr uint32_t Version = 1;

// DeviceIoControl, METHOD_BUFFERED, for handles with read access. No input; the output is the structure that
// is named, and the count of returned bytes is its size.
constexpr uint32_t GetEntryPoints = 0x00226000; // EntryPoints
constexpr uint32_t GetStatistics = 0x00226004; // Statistics

// Words 1 to 5 of Koru's escape 0x490914, sub-command 36. Kernel addresses of stdcall functions, valid until
// the system stops.
struct EntryPoints {
    uint32_t version; // of this interface
    uint32_t qc; // 1 while there is a reader, else 0
    uint32_t qd; // 0, does nothing
    uint32_t qp; // takes a record
    uint32_t gsd; // 0: identifier of the calling process, 1: of the calling thread, others: 0
    uint32_t dsf; // 0, does nothing
};
static_assert(sizeof(EntryPoints) == 24);
static_assert(offsetof(EntryPoints, qc) == 4 && offsetof(EntryPoints, dsf) == 20);

constexpr uint32_t MostRecordBytes = 0x10000;
constexpr uint32_t RingBytes = 0x100000; // frame headers included

// What stands in front of each record that is read; the record's bytes follow it, then the next frame.
// Nothing is aligned. From `magic` on, frame by frame, these bytes are what a record file holds behind its
// eight bytes "KORUREC1".
struct FrameHeader {
    uint32_t sequence; // 0 for the reader's first record, then one more (modulo 2^32) per record kept; a gap is
                       // the number of records that were dropped because the ring was full
    uint32_t magic; // FrameMagic
    uint32_t length; // bytes of the record, at most MostRecordBytes; 0: Koru had a record that did not fit
    int32_t flag; // as Koru gave it
};
static_assert(sizeof(FrameHeader) == 16);
static_assert(offsetof(FrameHeader, magic) == 4 && offsetof(FrameHeader, flag) == 12);
constexpr uint32_t FrameMagic = 0x4345524B; // the bytes "KREC"
constexpr uint32_t FileFrameAt = offsetof(FrameHeader, magic); // where the file's own frame begins

// The least size of a read: the largest frame. 64 KB reads are therefore refused, 128 KB are a good size.
constexpr uint32_t ReadRoom = sizeof(FrameHeader) + MostRecordBytes;

// Since the reader opened the device.
//     submitted = read + held + dropped + refused
struct Statistics {
    uint64_t submitted; // calls of QP
    uint64_t read; // records handed to the reader
    uint64_t dropped; // oldest records given up for new ones
    uint64_t refused; // too long, without a buffer, or during another call: not kept, no sequence number
    uint64_t empty; // submissions of length 0, kept as frames without bytes; counted among the others, too
    uint32_t held; // records in the ring
    uint32_t heldBytes; // of RingBytes
};
static_assert(sizeof(Statistics) == 48);
static_assert(offsetof(Statistics, refused) == 24 && offsetof(Statistics, held) == 40);

} // namespace korutap
