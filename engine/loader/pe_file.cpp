#include "engine/loader/pe_file.h"

#include <algorithm>

namespace engine {

namespace {

    constexpr std::uint32_t PageSize = 0x1000, LargestImage = 0x4000000;
    constexpr unsigned MostSections = 96;
    constexpr std::size_t LongestName = 255;

    // The sum of all 16-bit words with the carries added in, the checksum itself taken as 0, plus the size.
    std::uint32_t Checksum(const Bytes& file, std::uint64_t checksumAt)
    {
        std::uint32_t sum = 0;
        for (std::uint64_t at = 0; at < file.Size(); at += 2) {
            const bool isLastByte = at + 1 == file.Size();
            std::uint32_t word = isLastByte ? *file.Read<std::uint8_t>(at) : *file.Read<std::uint16_t>(at);
            if (at >= checksumAt && at < checksumAt + 4)
                word = 0;
            sum += word;
            sum = (sum & 0xFFFF) + (sum >> 16);
        }
        return sum + static_cast<std::uint32_t>(file.Size());
    }

    std::string CheckFileHeader(const pe::FileHeader& header, bool isLibrary)
    {
        if (header.signature != pe::Signature)
            return "not an image file";
        if (header.machine != pe::I386)
            return "an image for another machine";
        const bool saysLibrary = (header.characteristics & pe::Dll) != 0;
        if (!(header.characteristics & pe::Executable) || saysLibrary != isLibrary)
            return isLibrary ? "not a library image" : "not the image of a kernel module";
        if (header.characteristics & pe::RelocationsStripped)
            return "an image without relocations";
        if (header.sectionCount == 0 || header.sectionCount > MostSections)
            return "an image with a bad number of sections";
        return {};
    }

    std::string CheckOptionalHeader(const pe::OptionalHeader& header)
    {
        if (header.magic != pe::Pe32)
            return "not a 32-bit image";
        if (header.subsystem != pe::Native)
            return "an image for another subsystem";
        if (header.sectionAlignment < PageSize || header.sectionAlignment % PageSize != 0)
            return "an image whose sections share pages";
        if (header.imageSize == 0 || header.imageSize > LargestImage || header.headersSize > header.imageSize)
            return "an image of a bad size";
        return {};
    }

} // namespace

std::optional<std::string> Bytes::ReadName(std::uint64_t at) const
{
    if (at >= size_)
        return std::nullopt;
    const char* const text = reinterpret_cast<const char*>(start_ + at);
    const std::size_t room = std::min(size_ - static_cast<std::size_t>(at), LongestName + 1);
    const std::size_t length = strnlen(text, room);
    if (length == room)
        return std::nullopt;
    return std::string(text, length);
}

std::string PeFile::Read(const Bytes& file, bool isLibrary)
{
    const auto magic = file.Read<std::uint16_t>(0);
    const auto headerAt = file.Read<std::uint32_t>(pe::HeaderOffsetAt);
    if (!magic || *magic != pe::DosMagic || !headerAt || *headerAt % 4 != 0)
        return "not an image file";
    const auto fileHeader = file.Read<pe::FileHeader>(*headerAt);
    const std::uint64_t optionalAt = std::uint64_t(*headerAt) + sizeof(pe::FileHeader);
    const auto optionalHeader = file.Read<pe::OptionalHeader>(optionalAt);
    if (!fileHeader || !optionalHeader)
        return "an image cut off in its headers";
    if (std::string error = CheckFileHeader(*fileHeader, isLibrary); !error.empty())
        return error;
    if (std::string error = CheckOptionalHeader(*optionalHeader); !error.empty())
        return error;
    header = *optionalHeader;
    if (Checksum(file, *headerAt + pe::ChecksumAt) != header.checksum)
        return "an image with a wrong checksum";

    if (std::string error = ReadDirectories(file, *fileHeader, optionalAt); !error.empty())
        return error;
    return ReadSections(file, fileHeader->sectionCount, optionalAt + fileHeader->optionalHeaderSize);
}

std::string PeFile::ReadDirectories(const Bytes& file, const pe::FileHeader& fileHeader, std::uint64_t optionalAt)
{
    const std::uint64_t at = optionalAt + sizeof(pe::OptionalHeader);
    const std::uint64_t size = header.directoryCount * std::uint64_t(sizeof(pe::Directory));
    const std::uint64_t sectionsAt = optionalAt + fileHeader.optionalHeaderSize;
    if (header.directoryCount > pe::DirectoryCount || at + size > sectionsAt
        || sectionsAt + fileHeader.sectionCount * std::uint64_t{sizeof(pe::Section)} > header.headersSize
        || !file.Holds(0, header.headersSize))
        return "an image with bad headers";
    for (unsigned i = 0; i < header.directoryCount; ++i)
        directories[i] = *file.Read<pe::Directory>(at + i * std::uint64_t{sizeof(pe::Directory)});
    return {};
}

std::string PeFile::ReadSections(const Bytes& file, unsigned count, std::uint64_t at)
{
    std::uint64_t end = header.headersSize;
    for (unsigned i = 0; i < count; ++i) {
        pe::Section section = *file.Read<pe::Section>(at + i * std::uint64_t{sizeof(pe::Section)});
        if (section.virtualSize == 0)
            section.virtualSize = section.fileSize;
        const std::uint64_t sectionEnd = std::uint64_t(section.address) + section.virtualSize;
        if (section.address % header.sectionAlignment != 0 || section.address < end || sectionEnd > header.imageSize
            || !file.Holds(section.fileAt, section.fileSize))
            return "an image with a bad section";
        end = sectionEnd;
        sections.push_back(section);
    }
    return {};
}

bool PeFile::IsCode(std::uint32_t address) const
{
    return std::any_of(sections.begin(), sections.end(), [address](const pe::Section& section) {
        return (section.characteristics & pe::MayExecute) && address >= section.address
            && address - section.address < section.virtualSize;
    });
}

} // namespace engine
