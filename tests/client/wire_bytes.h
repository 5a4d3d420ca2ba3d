#pragma once

// Builds records byte by byte, without the declarations under test.

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

namespace koru::client::test {

class WireBytes {
public:
    WireBytes& Words(std::initializer_list<std::int64_t> words) // 32 bits each
    {
        for (const std::int64_t word : words)
            Append(static_cast<std::uint64_t>(word), 4);
        return *this;
    }
    WireBytes& Halves(std::initializer_list<std::int64_t> halves)
    {
        for (const std::int64_t half : halves)
            Append(static_cast<std::uint64_t>(half), 2);
        return *this;
    }
    WireBytes& Bytes(std::initializer_list<int> bytes)
    {
        for (const int byte : bytes)
            Append(static_cast<std::uint64_t>(byte), 1);
        return *this;
    }
    WireBytes& Fill(std::size_t count, int byte)
    {
        data_.insert(data_.end(), count, std::byte(byte));
        return *this;
    }
    WireBytes& Text(std::u16string_view text) // without a terminator
    {
        for (const char16_t unit : text)
            Append(unit, 2);
        return *this;
    }
    WireBytes& Add(const WireBytes& other)
    {
        data_.insert(data_.end(), other.data_.begin(), other.data_.end());
        return *this;
    }
    void SetWord(std::size_t offset, std::uint32_t word)
    {
        for (int i = 0; i < 4; ++i)
            data_[offset + i] = std::byte(word >> (8 * i));
    }

    std::size_t size() const { return data_.size(); }
    operator std::span<const std::byte>() const { return data_; }

private:
    void Append(std::uint64_t value, int bytes)
    {
        for (int i = 0; i < bytes; ++i)
            data_.push_back(std::byte(value >> (8 * i)));
    }

    std::vector<std::byte> data_;
};

// A header: identifiers 7 and 9, an unwritten word of 0xEE, time stamp 0x100000010.
inline WireBytes Header(std::uint32_t length, std::uint32_t type)
{
    return WireBytes().Words({length, type, 0, 7, 9, 0xEEEEEEEE, 0x10, 1, 0, 0});
}

// A whole record: the words from offset 40 on, then the objects; the length is that of all.
inline WireBytes RecordOf(std::uint32_t type, std::initializer_list<std::int64_t> words, const WireBytes& objects = {})
{
    WireBytes bytes = Header(0, type).Words(words).Add(objects);
    bytes.SetWord(0, static_cast<std::uint32_t>(bytes.size()));
    return bytes;
}

// A surface encoding of 64 bytes that holds nothing of interest.
inline WireBytes AnySurface()
{
    return WireBytes().Fill(56, 0x5F).Words({0, 0});
}

} // namespace koru::client::test
