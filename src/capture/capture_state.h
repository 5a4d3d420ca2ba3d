#pragma once

#include "platform/types.h"

namespace koru {

constexpr ULONG CaptureBufferSize = 0x10000;
constexpr ULONG CaptureGuardWord = 0x0F0D0F0D; // stands behind the buffer

extern ULONG CaptureEnabled;
extern ULONG CaptureSuspended; // never set; copied into every record
extern ULONG CaptureMask; // a CallBit per call
extern LONG BitsSizeLimit; // pixels; kept for clients, without effect on records
extern ULONG BitsCaptureMask; // likewise

// Switches capture on and makes both buffers, or uses those that exist. 0 when memory is short.
BOOL AllocateCaptureBuffers();

BYTE* CaptureBuffer(); // null before AllocateCaptureBuffers succeeded
BYTE* CaptureScratch(); // CaptureBufferSize bytes for enumerations; may be null

} // namespace koru
