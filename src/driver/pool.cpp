#include "driver/pool.h"

#include "platform/constants.h"
#include "platform/services.h"

namespace koru {

void* AllocateFromPool(ULONG size)
{
    return EngAllocMem(FL_ZERO_MEMORY, size, PoolTag);
}

void FreeToPool(void* block)
{
    if (block)
        EngFreeMem(block);
}

} // namespace koru
