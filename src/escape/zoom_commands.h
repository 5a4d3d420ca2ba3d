#pragma once

// The commands of KORU_ZOOM_ESCAPE: zoomers, the overlay, colour pairs.

#include "driver/locked_screens.h"
#include "driver/screen.h"
#include "platform/runtime.h"

namespace koru {

// As it travels.
struct ZoomInput {
    ULONG code;
    ULONG id; // of a zoomer
    ULONG a;
    ULONG b;
    ULONG c;
    ULONG v[4]; // values, or the sides of a rectangle

    RECTL Rectangle() const
    {
        RECTL rectangle;
        memcpy(&rectangle, v, sizeof(rectangle));
        return rectangle;
    }
};
static_assert(sizeof(ZoomInput) == 36 && offsetof(ZoomInput, v) == 20);

struct ZoomCall {
    ZoomInput in; // a copy, since the client's buffers may be one
    SURFOBJ* pso; // may be null
    BYTE* out;
    Screen* screen; // null for commands without
    Zoomer* zoomer; // likewise
    const LockedScreens* screens; // likewise

    void Answer(ULONG value) const { memcpy(out, &value, sizeof(value)); }
    void Answer(LONG value) const { memcpy(out, &value, sizeof(value)); } // a BOOL as well
    void Answer(const RECTL& rectangle) const { memcpy(out, &rectangle, sizeof(rectangle)); }
};

enum class ZoomKind : UCHAR {
    NoScreen,
    OnScreen, // pso and its Screen are needed
    OnScreenSilent, // likewise, nothing printed
    OnScreenLocked, // VirtualScreen and RealScreen are locked too
    PerZoomer, // the zoomer of the ID is needed too
    PerZoomerSilent,
};

struct ZoomCommand {
    ULONG code;
    ZoomKind kind;
    UCHAR cleared; // bytes of the output that are zero until the command answers
    const char* name; // null for a command that has none
    void (*run)(ZoomCall& call);
};

constexpr std::size_t ZoomCommandCount = 48;
extern const ZoomCommand ZoomCommands[ZoomCommandCount];

// The overlay
void SetWiseSurface(ZoomCall& call);
void DestroyWiseSurface(ZoomCall& call);

// The colour pairs
void CountColorPairs(ZoomCall& call);
void AddColorPair(ZoomCall& call);
void GetColorPair(ZoomCall& call);
void ClearColorPairs(ZoomCall& call);
void RemoveColorPair(ZoomCall& call);

} // namespace koru
