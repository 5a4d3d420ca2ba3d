#pragma once

#include <string>

#include "engine/core/engine.h"

namespace engine {

// What the stand-in chain manager answers. Set before the driver is enabled.
struct ChainAnswer {
    ULONG status = 0;
    std::u16string name = u"framebuf"; // base name; up to 40 characters are stored
    bool offersGetNextDriver = true;
};

// Registers "dcmkrnl.dll" with the current engine.
void RegisterChainManager(const ChainAnswer& answer = {});

// How "GetNextDriver" was last called.
struct ChainQuestion {
    ULONG first = 0, second = 0;
    std::u16string asker;
    ULONG roomInCharacters = 0;
    bool bufferWasZero = false;
    ULONG times = 0;
};
const ChainQuestion& LastChainQuestion();

} // namespace engine
