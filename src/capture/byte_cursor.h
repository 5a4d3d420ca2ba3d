#pragma once

#include "driver/debug_print.h"
#include "platform/runtime.h"
#include "platform/types.h"

namespace koru {

// Walks forward over memory of a known size; never beyond its end. Positions need no alignment.
class ByteCursor {
public:
    ByteCursor(BYTE* start, ULONG size)
        : start_(start)
        , size_(size)
    {
    }

    BYTE* Start() const { return start_; }
    BYTE* At() const { return start_ + offset_; }
    ULONG Offset() const { return offset_; } // from the start
    ULONG Left() const { return size_ - offset_; }
    bool Holds(ULONG count, ULONG elementSize) const { return count <= Left() / elementSize; } // any count, no overflow

    void Advance(ULONG size) { offset_ += size < Left() ? size : Left(); }

    // The caller has made sure that it fits.
    void Write(const void* source, ULONG size)
    {
        if (size != 0) // nothing may come from nowhere
            memcpy(At(), source, size);
        Advance(size);
    }

private:
    BYTE* start_;
    ULONG size_;
    ULONG offset_ = 0;
};

// The layout at a place with `room` bytes. Null without a place, and when it does not fit.
template<class Layout> Layout* BeginLayoutSilently(BYTE* at, ULONG room)
{
    return at && room >= sizeof(Layout) ? reinterpret_cast<Layout*>(at) : nullptr;
}

// The same. When it does not fit, prints the message and the room.
template<class Layout> Layout* BeginLayout(BYTE* at, ULONG room, const char* tooSmall)
{
    auto* const layout = BeginLayoutSilently<Layout>(at, room);
    if (at && !layout)
        DebugPrintNumber(tooSmall, room);
    return layout;
}

// The same with a format that takes the room.
template<class Layout> Layout* BeginLayoutFormatted(BYTE* at, ULONG room, const char* tooSmall)
{
    auto* const layout = BeginLayoutSilently<Layout>(at, room);
    if (at && !layout)
        DebugPrint(tooSmall, room);
    return layout;
}

} // namespace koru
