#pragma once

#include "platform/types.h"

namespace koru {

constexpr ULONG PoolTag = 0x55524F4B; // reads "KORU" in memory

// `size` zeroed bytes of the engine's pool, or null. Given back with FreeToPool.
void* AllocateFromPool(ULONG size);

// Null is allowed and ignored.
void FreeToPool(void* block);

// One zeroed record, or null. T must be valid when all its bytes are zero.
template<class T> T* AllocateRecord()
{
    return static_cast<T*>(AllocateFromPool(sizeof(T)));
}

} // namespace koru
