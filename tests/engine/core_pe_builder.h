#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace pe_builder {

// A small image, put together byte by byte: three sections (code, tables, data) of one page each.
// DrvEnableDriver counts its calls upward from 41 in the data section; "Frequency" jumps through the import
// table to EngQueryPerformanceFrequency; "Forwarded" is a forwarder.
class Image {
public:
    static constexpr std::uint32_t Base = 0x10000, HeaderAt = 0x80, Optional = HeaderAt + 24, Sections = Optional + 224;
    static constexpr std::uint32_t Code = 0x1000, Tables = 0x2000, Data = 0x3000, Size = 0x4000;
    static constexpr std::uint32_t CodeFile = 0x400, TablesFile = 0x600, DataFile = 0x800, FileSize = 0xA00;
    static constexpr std::uint32_t Counter = Data, Addresses = Data + 0x10; // the import address table is data
    static constexpr std::uint32_t Exports = Tables, Imports = Tables + 0x100, Relocations = Tables + 0x180;

    Image()
        : bytes(FileSize)
    {
        PutHeaders();
        PutCode();
        PutExports();
        PutImports();
        PutRelocations();
        Put32(DataFile, 41);
        Seal();
    }

    void Put16(std::uint32_t at, std::uint16_t value) { std::memcpy(&bytes[at], &value, 2); }
    void Put32(std::uint32_t at, std::uint32_t value) { std::memcpy(&bytes[at], &value, 4); }
    void PutText(std::uint32_t at, const std::string& text) { std::memcpy(&bytes[at], text.c_str(), text.size() + 1); }
    static std::uint32_t InTables(std::uint32_t address) { return address - Tables + TablesFile; }
    static std::uint32_t Directory(unsigned index) { return Optional + 96 + index * 8; }
    static std::uint32_t Section(unsigned index) { return Sections + index * 40; }

    // Makes the checksum right: the 16-bit words added with carries, then the size.
    static void Seal(std::vector<unsigned char>& file)
    {
        const std::uint32_t at = Optional + 64;
        if (file.size() < at + 4)
            return;
        std::memset(&file[at], 0, 4);
        std::uint64_t sum = 0;
        for (std::size_t i = 0; i < file.size(); ++i)
            sum += static_cast<std::uint64_t>(file[i]) << (i % 2 * 8);
        while (sum >> 16)
            sum = (sum & 0xFFFF) + (sum >> 16);
        const auto checksum = static_cast<std::uint32_t>(sum + file.size());
        std::memcpy(&file[at], &checksum, 4);
    }
    void Seal() { Seal(bytes); }

    std::vector<unsigned char> bytes;

private:
    void PutSection(unsigned index, const char* name, std::uint32_t address, std::uint32_t file, std::uint32_t flags)
    {
        PutText(Section(index), name);
        Put32(Section(index) + 8, 0x1000);
        Put32(Section(index) + 12, address);
        Put32(Section(index) + 16, 0x200);
        Put32(Section(index) + 20, file);
        Put32(Section(index) + 36, flags);
    }

    void PutHeaders()
    {
        Put16(0, 0x5A4D);
        Put32(0x3C, HeaderAt);
        Put32(HeaderAt, 0x4550);
        Put16(HeaderAt + 4, 0x14C);
        Put16(HeaderAt + 6, 3); // sections
        Put16(HeaderAt + 20, 224);
        Put16(HeaderAt + 22, 0x2102); // executable, 32-bit, library
        Put16(Optional, 0x10B);
        Put32(Optional + 16, Code); // entry point
        Put32(Optional + 28, Base);
        Put32(Optional + 32, 0x1000);
        Put32(Optional + 36, 0x200);
        Put32(Optional + 56, Size);
        Put32(Optional + 60, CodeFile); // size of the headers
        Put16(Optional + 68, 1); // native
        Put32(Optional + 92, 16);
        Put32(Directory(0), Exports);
        Put32(Directory(0) + 4, 0x100);
        Put32(Directory(1), Imports);
        Put32(Directory(1) + 4, 40);
        Put32(Directory(5), Relocations);
        Put32(Directory(5) + 4, 16);
        PutSection(0, ".text", Code, CodeFile, 0x60000020);
        PutSection(1, ".rdata", Tables, TablesFile, 0x40000040);
        PutSection(2, ".data", Data, DataFile, 0xC0000040);
    }

    void PutCode()
    {
        const unsigned char code[] = {0xA1, 0,    0,    0,    0, // mov eax, [counter]
                                      0x40, // inc eax
                                      0xA3, 0,    0,    0,    0, // mov [counter], eax
                                      0xC2, 12,   0, // ret 12
                                      0x90, 0x90, 0xFF, 0x25, 0, 0, 0, 0}; // jmp [import]
        std::memcpy(&bytes[CodeFile], code, sizeof(code));
        Put32(CodeFile + 1, Base + Counter);
        Put32(CodeFile + 7, Base + Counter);
        Put32(CodeFile + 18, Base + Addresses);
    }

    void PutExports()
    {
        const std::uint32_t functions = Exports + 40, names = Exports + 52, ordinals = Exports + 64;
        const std::uint32_t table = InTables(Exports);
        Put32(table + 20, 3);
        Put32(table + 24, 3);
        Put32(table + 28, functions);
        Put32(table + 32, names);
        Put32(table + 36, ordinals);
        const char* const texts[] = {"DrvEnableDriver", "Forwarded", "Frequency"};
        const std::uint32_t addresses[] = {Code, Exports + 0xA0, Code + 16};
        for (std::uint32_t i = 0; i < 3; ++i) {
            Put32(InTables(functions) + i * 4, addresses[i]);
            Put32(InTables(names) + i * 4, Exports + 0x50 + i * 0x18);
            Put16(InTables(ordinals) + i * 2, static_cast<std::uint16_t>(i));
            PutText(InTables(Exports) + 0x50 + i * 0x18, texts[i]);
        }
        PutText(InTables(Exports) + 0xA0, "OTHER.Function");
    }

    void PutImports()
    {
        const std::uint32_t at = InTables(Imports), names = Imports + 0x30;
        Put32(at, names);
        Put32(at + 12, Imports + 0x60);
        Put32(at + 16, Addresses);
        Put32(InTables(names), Imports + 0x40);
        PutText(InTables(Imports) + 0x42, "EngQueryPerformanceFrequency");
        PutText(InTables(Imports) + 0x60, "WIN32K.sys");
        Put32(DataFile + 0x10, Imports + 0x40);
    }

    void PutRelocations()
    {
        const std::uint32_t at = InTables(Relocations);
        Put32(at, Code);
        Put32(at + 4, 16);
        Put16(at + 8, 0x3001);
        Put16(at + 10, 0x3007);
        Put16(at + 12, 0x3012);
        Put16(at + 14, 0); // fills up
    }
};

} // namespace pe_builder
