#include "capture/capture_state.h"

#include "driver/pool.h"

namespace koru {

constinit ULONG CaptureEnabled = 0;
constinit ULONG CaptureSuspended = 0;
constinit ULONG CaptureMask = 0;
constinit LONG BitsSizeLimit = 0;
constinit ULONG BitsCaptureMask = 0;

namespace {

    // The guard marks for clients and debuggers that a record did not run over; nothing here reads it.
    struct GuardedBuffer {
        BYTE room[CaptureBufferSize];
        ULONG guard;
    };
    static_assert(sizeof(GuardedBuffer) == CaptureBufferSize + 4);

    constinit GuardedBuffer* buffer = nullptr;
    constinit BYTE* scratch = nullptr;

} // namespace

BOOL AllocateCaptureBuffers()
{
    CaptureEnabled = 1;
    if (buffer) // engines enable a driver twice without unloading it
        return TRUE;
    buffer = AllocateRecord<GuardedBuffer>();
    if (!buffer)
        return FALSE;
    scratch = static_cast<BYTE*>(AllocateFromPool(CaptureBufferSize));
    if (!scratch) {
        FreeToPool(buffer);
        buffer = nullptr;
        return FALSE;
    }
    buffer->guard = CaptureGuardWord;
    return TRUE;
}

BYTE* CaptureBuffer()
{
    return buffer ? buffer->room : nullptr;
}

BYTE* CaptureScratch()
{
    return scratch;
}

} // namespace koru
