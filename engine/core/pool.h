#pragma once

#include <deque>
#include <map>
#include <memory>

#include "engine/core/engine.h"

namespace engine {

// The pool behind EngAllocMem: guarded blocks, freed ones kept a while to see late writes.
class Pool {
public:
    explicit Pool(Engine& engine)
        : engine_(engine)
    {
    }
    void* Allocate(ULONG flags, ULONG size, ULONG tag); // null when there is no such memory
    void Free(void* block);
    void Check(); // reports each broken guard once
    ULONG Blocks() const { return static_cast<ULONG>(blocks_.size()); }

private:
    struct Block {
        std::unique_ptr<BYTE[]> memory; // guard, block, guard
        ULONG size = 0;
        bool reported = false;
    };
    bool IsWhole(const Block& block) const;
    void CheckLive(Block& block);
    void CheckFreed(Block& block);
    void Keep(Block block);
    bool WasFreed(const void* address) const;

    Engine& engine_;
    std::map<const void*, Block> blocks_;
    std::deque<Block> freed_;
};

} // namespace engine
