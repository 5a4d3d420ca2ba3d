#pragma once

// The parts of a 32-bit PE file that the mapper reads, as they lie in it.

#include <cstdint>

namespace engine::pe {

constexpr std::uint16_t DosMagic = 0x5A4D, I386 = 0x14C, Pe32 = 0x10B, Native = 1;
constexpr std::uint32_t Signature = 0x4550, HeaderOffsetAt = 0x3C;
constexpr std::uint16_t RelocationsStripped = 1, Executable = 2, Dll = 0x2000;
constexpr std::uint32_t MayExecute = 0x20000000, MayRead = 0x40000000, MayWrite = 0x80000000;
constexpr std::uint32_t ByOrdinal = 0x80000000;
constexpr unsigned ExportDirectory = 0, ImportDirectory = 1, RelocationDirectory = 5, DirectoryCount = 16;
constexpr unsigned RelocateNothing = 0, RelocateWord32 = 3;

struct FileHeader {
    std::uint32_t signature;
    std::uint16_t machine, sectionCount;
    std::uint32_t timeStamp, symbolTable, symbolCount;
    std::uint16_t optionalHeaderSize, characteristics;
};
static_assert(sizeof(FileHeader) == 24);

struct Directory {
    std::uint32_t address, size;
};

struct OptionalHeader { // the directories follow it
    std::uint16_t magic;
    std::uint8_t majorLinker, minorLinker;
    std::uint32_t codeSize, dataSize, zeroedSize, entryPoint, codeBase, dataBase;
    std::uint32_t imageBase, sectionAlignment, fileAlignment;
    std::uint16_t majorSystem, minorSystem, majorImage, minorImage, majorSubsystem, minorSubsystem;
    std::uint32_t reserved, imageSize, headersSize, checksum;
    std::uint16_t subsystem, dllCharacteristics;
    std::uint32_t stackReserve, stackCommit, heapReserve, heapCommit, loaderFlags, directoryCount;
};
static_assert(sizeof(OptionalHeader) == 96);
constexpr std::uint32_t ChecksumAt = sizeof(FileHeader) + 64; // from the signature

struct Section {
    char name[8];
    std::uint32_t virtualSize, address, fileSize, fileAt, relocationsAt, linesAt;
    std::uint16_t relocationCount, lineCount;
    std::uint32_t characteristics;
};
static_assert(sizeof(Section) == 40);

struct ImportDescriptor {
    std::uint32_t names, timeStamp, forwarder, library, addresses;
};
static_assert(sizeof(ImportDescriptor) == 20);

struct ExportTable {
    std::uint32_t characteristics, timeStamp;
    std::uint16_t majorVersion, minorVersion;
    std::uint32_t library, firstOrdinal, functionCount, nameCount, functions, names, ordinals;
};
static_assert(sizeof(ExportTable) == 40);

struct RelocationBlock {
    std::uint32_t address, size;
};

} // namespace engine::pe
