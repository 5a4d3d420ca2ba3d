#pragma once

#include "platform/types.h"

namespace koru {

// A growable, ascending array of distinct unsigned numbers.
struct SortedIdSet {
    ULONG* items;
    ULONG capacity;
    ULONG count;

    bool Find(ULONG value, ULONG& index) const; // index: of the value, or where it would be inserted
    BOOL Insert(ULONG value); // 0: present already, or memory is short
    BOOL Remove(ULONG value); // 0: not present
    void Clear();
    bool Contains(ULONG value) const;
};

} // namespace koru
