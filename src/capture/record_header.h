#pragma once

#include "capture/layout_checks.h"
#include "platform/types.h"

namespace koru {

// Where an object's encoding begins, from the record's start.
using SLOT = ULONG;

// At the start of every record.
struct RecordHeader {
    ULONG length; // of the whole record
    ULONG callType; // a CallBit
    ULONG suspended;
    ULONG process, secondId; // the consumer's identifiers
    ULONG unwritten;
    LONGLONG timeStamp; // of the performance counter
    ULONG reserved[2]; // 0
};
static_assert(sizeof(RecordHeader) == 40);
FIELD_AT(RecordHeader, length, 0);
FIELD_AT(RecordHeader, callType, 4);
FIELD_AT(RecordHeader, suspended, 8);
FIELD_AT(RecordHeader, process, 12);
FIELD_AT(RecordHeader, secondId, 16);
FIELD_AT(RecordHeader, unwritten, 20);
FIELD_AT(RecordHeader, timeStamp, 24);
FIELD_AT(RecordHeader, reserved, 32);

} // namespace koru
