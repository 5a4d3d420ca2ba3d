#include "engine/core/pool.h"

#include <cstdio>
#include <new>

#include "engine/core/guards.h"

namespace engine {

namespace {

    constexpr ULONG DriverTag = 0x55524F4B; // reads "KORU" in memory
    constexpr ULONG LargestBlock = 0x8000000;
    constexpr std::size_t FreedBlocksKept = 256;
    constexpr ULONG LargestFreedBlockKept = 0x40000;

    std::string Hexadecimal(ULONG value)
    {
        char text[9];
        std::snprintf(text, sizeof(text), "%08X", value);
        return text;
    }

} // namespace

void* Pool::Allocate(ULONG flags, ULONG size, ULONG tag)
{
    if (tag != DriverTag)
        engine_.Report("EngAllocMem: tag " + Hexadecimal(tag));
    if (flags & ~FL_ZERO_MEMORY)
        engine_.Report("EngAllocMem: flags " + Hexadecimal(flags));
    if (size > LargestBlock)
        return nullptr;
    Block block{std::unique_ptr<BYTE[]>(new (std::nothrow) BYTE[size + 2 * GuardSize]), size};
    if (!block.memory)
        return nullptr;
    BYTE* const start = block.memory.get();
    Fill(start, GuardSize, GuardByte);
    Fill(start + GuardSize, size, flags & FL_ZERO_MEMORY ? 0 : FreshByte);
    Fill(start + GuardSize + size, GuardSize, GuardByte);
    void* const address = start + GuardSize;
    blocks_.emplace(address, std::move(block));
    return address;
}

bool Pool::IsWhole(const Block& block) const
{
    const BYTE* const start = block.memory.get();
    return IsFilled(start, GuardSize, GuardByte) && IsFilled(start + GuardSize + block.size, GuardSize, GuardByte);
}

void Pool::CheckLive(Block& block)
{
    if (block.reported || IsWhole(block))
        return;
    block.reported = true;
    engine_.Report("pool: written outside a block of " + std::to_string(block.size) + " bytes");
}

void Pool::CheckFreed(Block& block)
{
    if (block.reported || (IsWhole(block) && IsFilled(block.memory.get() + GuardSize, block.size, FreedByte)))
        return;
    block.reported = true;
    engine_.Report("pool: written to a freed block of " + std::to_string(block.size) + " bytes");
}

void Pool::Free(void* address)
{
    const auto found = blocks_.find(address);
    if (found == blocks_.end()) {
        engine_.Report(!address                ? "EngFreeMem: null"
                           : WasFreed(address) ? "EngFreeMem: freed twice"
                                               : "EngFreeMem: not a block of the pool");
        return;
    }
    CheckLive(found->second);
    Block block = std::move(found->second);
    blocks_.erase(found);
    Keep(std::move(block));
}

// The sanitizer keeps freed memory by itself and stops at the first access.
void Pool::Keep(Block block)
{
    if (!GuardsPresent || block.size > LargestFreedBlockKept)
        return;
    Fill(block.memory.get() + GuardSize, block.size, FreedByte);
    freed_.push_back(std::move(block));
    if (freed_.size() <= FreedBlocksKept)
        return;
    CheckFreed(freed_.front());
    freed_.pop_front();
}

bool Pool::WasFreed(const void* address) const
{
    return std::any_of(freed_.begin(), freed_.end(),
                       [address](const Block& block) { return block.memory.get() + GuardSize == address; });
}

void Pool::Check()
{
    for (auto& [address, block] : blocks_)
        CheckLive(block);
    for (Block& block : freed_)
        CheckFreed(block);
}

} // namespace engine
