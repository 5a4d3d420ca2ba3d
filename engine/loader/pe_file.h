#pragma once

#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "engine/loader/pe_format.h"

namespace engine {

// Bytes that are read only where they exist.
class Bytes {
public:
    Bytes(const unsigned char* start, std::size_t size)
        : start_(start)
        , size_(size)
    {
    }
    std::size_t Size() const { return size_; }
    bool Holds(std::uint64_t at, std::uint64_t size) const { return at <= size_ && size <= size_ - at; }
    template<class Structure> std::optional<Structure> Read(std::uint64_t at) const
    {
        if (!Holds(at, sizeof(Structure)))
            return std::nullopt;
        Structure structure;
        std::memcpy(&structure, start_ + at, sizeof(structure));
        return structure;
    }
    std::optional<std::string> ReadName(std::uint64_t at) const; // at most 255 characters and a terminator

private:
    const unsigned char* start_;
    std::size_t size_;
};

// The headers of an image file. What is read here has been checked: sections lie in the file and, in
// order and without overlap, on pages of their own in the image.
struct PeFile {
    pe::OptionalHeader header = {};
    pe::Directory directories[pe::DirectoryCount] = {};
    std::vector<pe::Section> sections;

    // What is wrong, or nothing. A library says so in its header; a module that is started by its entry point
    // must not.
    std::string Read(const Bytes& file, bool isLibrary = true);
    bool IsCode(std::uint32_t address) const;

private:
    std::string ReadDirectories(const Bytes& file, const pe::FileHeader& fileHeader, std::uint64_t optionalAt);
    std::string ReadSections(const Bytes& file, unsigned count, std::uint64_t at);
};

} // namespace engine
