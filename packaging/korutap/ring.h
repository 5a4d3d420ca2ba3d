#pragma once

// The records that wait for their reader: frames as korutap.h lays them out, in a ring of bytes. Platform-free
// and without a lock; whoever uses it from several threads brings one.

#include "packaging/korutap/korutap.h"

namespace korutap {

class Ring {
public:
    // On `size` bytes that stay the caller's; a frame that is longer is refused.
    constexpr Ring(uint8_t* bytes, uint32_t size)
        : bytes_(bytes)
        , size_(size)
    {
    }

    void Clear(); // no frames, all counts and the next sequence number 0

    // Keeps a record, giving up the oldest frames that stand in its way. False, and it counts as refused, for
    // one that is too long or has a length but no bytes. A length of 0 needs no bytes.
    bool Put(const void* record, uint32_t length, int32_t flag);

    // Moves the oldest frame to `target`; answers its size with header, or 0 when there is none or `room` is
    // less than it (it then stays).
    uint32_t Take(void* target, uint32_t room);

    Statistics Counts() const;

private:
    uint32_t OldestSize() const;
    void RemoveOldest();
    void Append(const void* from, uint32_t length);
    void Copy(uint32_t at, void* target, uint32_t length) const;

    uint8_t* bytes_;
    uint32_t size_;
    uint32_t begin_ = 0; // of the oldest frame, below size_
    uint32_t used_ = 0;
    uint32_t held_ = 0;
    uint32_t nextSequence_ = 0;
    uint64_t submitted_ = 0, read_ = 0, dropped_ = 0, refused_ = 0, empty_ = 0;
};

} // namespace korutap
