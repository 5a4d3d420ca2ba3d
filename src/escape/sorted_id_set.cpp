#include "escape/sorted_id_set.h"

#include "driver/pool.h"
#include "platform/runtime.h"

namespace koru {

namespace {

    constexpr ULONG GrowthStep = 100; // entries

    // Moves the set into an array of its own of this capacity. False, and nothing changed, when
    // memory is short.
    bool Reallocate(SortedIdSet& set, ULONG capacity)
    {
        auto* const items = static_cast<ULONG*>(AllocateFromPool(capacity * sizeof(ULONG)));
        if (!items)
            return false;
        if (set.count != 0)
            memcpy(items, set.items, set.count * sizeof(ULONG));
        FreeToPool(set.items);
        set.items = items;
        set.capacity = capacity;
        return true;
    }

} // namespace

bool SortedIdSet::Find(ULONG value, ULONG& index) const
{
    ULONG low = 0;
    ULONG high = count;
    while (low < high) {
        const ULONG middle = low + (high - low) / 2;
        if (items[middle] < value)
            low = middle + 1;
        else
            high = middle;
    }
    index = low;
    return low < count && items[low] == value;
}

BOOL SortedIdSet::Insert(ULONG value)
{
    ULONG index = 0;
    if (Find(value, index))
        return FALSE;
    if (count >= capacity && !Reallocate(*this, capacity + GrowthStep))
        return FALSE;
    memmove(items + index + 1, items + index, (count - index) * sizeof(ULONG));
    items[index] = value;
    ++count;
    return TRUE;
}

BOOL SortedIdSet::Remove(ULONG value)
{
    ULONG index = 0;
    if (!Find(value, index))
        return FALSE;
    --count;
    memmove(items + index, items + index + 1, (count - index) * sizeof(ULONG));
    if (count == 0)
        Clear();
    else if (capacity >= count + GrowthStep)
        Reallocate(*this, count + GrowthStep); // without memory the larger array stays
    return TRUE;
}

void SortedIdSet::Clear()
{
    FreeToPool(items);
    *this = {};
}

bool SortedIdSet::Contains(ULONG value) const
{
    ULONG index = 0;
    return Find(value, index);
}

} // namespace koru
