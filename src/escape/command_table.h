#pragma once

// What the two command tables share.

#include "platform/types.h"

namespace koru {

// The row of a code, or null: codes without a row are holes.
template<class Command, std::size_t Count> const Command* FindCommand(const Command (&table)[Count], ULONG code)
{
    for (const Command& command : table) {
        if (command.code == code)
            return &command;
    }
    return nullptr;
}

template<class Command, std::size_t Count> constexpr bool CodesRise(const Command (&table)[Count])
{
    for (std::size_t i = 1; i < Count; ++i) {
        if (table[i - 1].code >= table[i].code)
            return false;
    }
    return true;
}

} // namespace koru
