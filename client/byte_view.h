#pragma once

// Looking at wire bytes: values are copied out, so nothing depends on alignment, and every view keeps its
// own bounds, so no index can leave the record.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>

namespace koru::client {

// Bytes of a record, as offsets from its start; `end` is exclusive.
struct Range {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    bool operator==(const Range&) const = default;

    // Takes in a range that begins within this one or right behind it; one that stands apart is left out.
    void Extend(const Range& next)
    {
        if (next.begin >= begin && next.begin <= end && next.end > end)
            end = next.end;
    }
};

// The value at `offset`; zeros when it does not lie inside the bytes.
template<class T> T Load(std::span<const std::byte> bytes, std::size_t offset)
{
    static_assert(std::is_trivially_copyable_v<T>);
    T value{};
    if (offset <= bytes.size() && bytes.size() - offset >= sizeof(T))
        std::memcpy(&value, bytes.data() + offset, sizeof(T));
    return value;
}

// Elements standing one behind the other in a record, at any alignment.
template<class T> class Array {
public:
    class Iterator {
    public:
        Iterator(const Array& array, std::uint32_t index)
            : array_(array)
            , index_(index)
        {
        }
        T operator*() const { return array_[index_]; }
        Iterator& operator++()
        {
            ++index_;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return index_ != other.index_; }

    private:
        const Array& array_;
        std::uint32_t index_;
    };

    Array() = default;
    // The elements that begin at `offset` of `record`: `count` of them, or as many as end by `limit`.
    Array(std::span<const std::byte> record, std::uint32_t offset, std::uint32_t count, std::uint32_t limit)
        : offset_(offset)
    {
        const auto end = std::uint32_t(limit < record.size() ? limit : record.size());
        if (offset >= end)
            return;
        const auto room = std::uint32_t((end - offset) / sizeof(T));
        bytes_ = record.subspan(offset, (count < room ? count : room) * sizeof(T));
    }

    std::uint32_t size() const { return std::uint32_t(bytes_.size() / sizeof(T)); }
    bool empty() const { return bytes_.empty(); }
    T operator[](std::uint32_t index) const { return Load<T>(bytes_, std::size_t(index) * sizeof(T)); }
    Iterator begin() const { return {*this, 0}; }
    Iterator end() const { return {*this, size()}; }

    // Where the elements stand in the record.
    Range range() const { return {offset_, offset_ + std::uint32_t(bytes_.size())}; }
    std::span<const std::byte> bytes() const { return bytes_; }

private:
    std::span<const std::byte> bytes_;
    std::uint32_t offset_ = 0;
};

} // namespace koru::client
