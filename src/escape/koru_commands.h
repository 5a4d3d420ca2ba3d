#pragma once

// The sub-commands of KORU_ESCAPE: capture, dark zones and lists, the consumer, caches.

#include "driver/screen.h"
#include "platform/runtime.h"

namespace koru {

struct KoruCall {
    ULONG in[6]; // 0: sub-command, 5: dhpdev; a copy, since the client's buffers may be one
    SURFOBJ* pso; // may be null
    Screen* screen; // of the dhpdev in word 5, or null
    BYTE* out;

    void Answer(ULONG value) const { memcpy(out, &value, sizeof(value)); }
    void Answer(LONG value) const { memcpy(out, &value, sizeof(value)); } // a BOOL as well
};

struct KoruCommand {
    ULONG code;
    UCHAR cleared; // bytes of the output that are zero until the command answers
    const char* name; // null for a command that has none
    void (*run)(KoruCall& call);
    const char* withoutScreen; // printed when there is no Screen; null for a command that does without
};

constexpr std::size_t KoruCommandCount = 24;
extern const KoruCommand KoruCommands[KoruCommandCount];

extern ULONG ClientFlag; // set by sub-command 35; nothing in the driver reads it

} // namespace koru
