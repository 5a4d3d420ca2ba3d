#pragma once

// Reading from files whose bytes may be anything: what lies outside is an exception, never a fault.

#include <cstring>
#include <span>
#include <stdexcept>
#include <vector>

#include "platform/types.h"

namespace engine::gdi {

// A part of a drawing that is left out; what() says why in a few words.
struct CannotPlay : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// It does not hold what it should.
struct DamagedData : CannotPlay {
    using CannotPlay::CannotPlay;
};

class Bytes {
public:
    Bytes() = default;
    Bytes(std::span<const BYTE> data)
        : data_(data)
    {
    }

    std::size_t Size() const { return data_.size(); }
    bool IsEmpty() const { return data_.empty(); }
    const BYTE* Data() const { return data_.data(); }

    Bytes Part(std::size_t offset, std::size_t size) const
    {
        if (offset > data_.size() || size > data_.size() - offset)
            throw DamagedData("too short");
        return data_.subspan(offset, size);
    }
    Bytes From(std::size_t offset) const { return offset > data_.size() ? Bytes() : data_.subspan(offset); }

    // A number or a plain structure laid out as in the file.
    template<class T> T Get(std::size_t offset) const
    {
        T value;
        std::memcpy(&value, Part(offset, sizeof(T)).Data(), sizeof(T));
        return value;
    }
    template<class T> std::vector<T> List(std::size_t offset, std::size_t count) const
    {
        if (count > data_.size() / sizeof(T))
            throw DamagedData("too short");
        const Bytes part = Part(offset, count * sizeof(T));
        std::vector<T> list(count);
        if (count != 0)
            std::memcpy(list.data(), part.Data(), part.Size());
        return list;
    }

private:
    std::span<const BYTE> data_;
};

} // namespace engine::gdi
