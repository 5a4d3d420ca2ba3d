#include "engine/devices/chain_manager.h"

#include <algorithm>

namespace engine {

namespace {

    constexpr std::size_t LongestName = 40;

    ChainAnswer Answer;
    ChainQuestion Question;

    ULONG __attribute__((cdecl)) GetNextDriver(ULONG first, ULONG second, const WCHAR* asker, WCHAR* buffer, ULONG room)
    {
        Question.first = first;
        Question.second = second;
        Question.asker = asker;
        Question.roomInCharacters = room;
        Question.bufferWasZero = std::all_of(buffer, buffer + room, [](WCHAR character) { return character == 0; });
        ++Question.times;
        if (Answer.status == 0) {
            const std::size_t most = std::min<std::size_t>(room, LongestName);
            std::copy_n(Answer.name.c_str(), std::min(Answer.name.size() + 1, most), buffer);
        }
        return Answer.status;
    }

} // namespace

void RegisterChainManager(const ChainAnswer& answer)
{
    Answer = answer;
    Question = {};
    Exports exports;
    if (answer.offersGetNextDriver)
        exports["GetNextDriver"] = reinterpret_cast<PFN>(&GetNextDriver);
    Engine::Current().RegisterImage(u"dcmkrnl.dll", exports);
}

const ChainQuestion& LastChainQuestion()
{
    return Question;
}

} // namespace engine
