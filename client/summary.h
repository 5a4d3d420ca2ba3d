#pragma once

#include "record_decoder.h"

#include <array>
#include <string>

namespace koru::client {

// How often each call was recorded, and in how many bytes.
class Summary {
public:
    struct Count {
        std::size_t records = 0;
        std::size_t bytes = 0;
    };

    void Add(std::span<const std::byte> record); // one submission
    const Count& Of(CallType type) const;
    const Count& Empty() const { return empty_; }
    const Count& Undecodable() const { return undecodable_; }
    Count Total() const;

    // One line per call that occurred, in the order of the type bits, then the empty and undecodable
    // submissions if there were any, then the total.
    std::string Table() const;

private:
    std::array<Count, CallTypeCount> calls_{};
    Count empty_, undecodable_;
};

} // namespace koru::client
