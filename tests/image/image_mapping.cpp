// koru.dll itself, mapped: its pages, its globals, its calling conventions.

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>

#include "engine/core/device.h"
#include "engine/core/engine.h"
#include "engine/devices/chain_manager.h"
#include "engine/devices/frame_buffer.h"
#include "engine/loader/pe_file.h"
#include "engine/loader/pe_image.h"
#include "tests/support/driver_form.h"

namespace {

using namespace engine;

std::vector<unsigned char> ReadFile(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// "r-xp" for the page at this address, as the system tells.
std::string PageRights(const unsigned char* address)
{
    std::ifstream maps("/proc/self/maps");
    const auto wanted = reinterpret_cast<std::uintptr_t>(address);
    for (std::string line; std::getline(maps, line);) {
        std::uintptr_t start = 0, end = 0;
        char dash = 0;
        std::string rights;
        std::istringstream(line) >> std::hex >> start >> dash >> end >> rights;
        if (wanted >= start && wanted < end)
            return rights;
    }
    return "none";
}

class KoruImage : public testing::Test {
protected:
    KoruImage()
        : file(ReadFile(support::ImagePath()))
    {
        EXPECT_EQ(parsed.Read({file.data(), file.size()}, true), "") << support::ImagePath();
    }
    unsigned char* BaseOf(const PeImage& image) const
    {
        return reinterpret_cast<unsigned char*>(image.EntryPoint()) - parsed.header.entryPoint;
    }
    const pe::Section& Section(const std::string& name) const
    {
        for (const pe::Section& section : parsed.sections)
            if (std::string(section.name, strnlen(section.name, sizeof(section.name))) == name)
                return section;
        ADD_FAILURE() << "no section " << name;
        return parsed.sections.front();
    }

    std::vector<unsigned char> file;
    PeFile parsed;
};

TEST_F(KoruImage, CodeAndConstantsCannotBeWritten)
{
    PeImage image;
    ASSERT_TRUE(image.LoadBytes(file)) << image.Error();
    unsigned char* const base = BaseOf(image);
    EXPECT_EQ(PageRights(base), "r--p") << "the headers";
    const std::pair<const char*, const char*> expected[] = {
        {".text", "r-xp"},  {".rdata", "r--p"}, {".data", "rw-p"},  {".bss", "rw-p"},
        {".edata", "r--p"}, {".reloc", "r--p"}, {".idata", "rw-p"}, {".rsrc", "rw-p"},
    };
    EXPECT_EQ(std::size(expected), parsed.sections.size());
    for (const auto& [name, rights] : expected) {
        const pe::Section& section = Section(name);
        EXPECT_EQ(PageRights(base + section.address), rights) << name;
        EXPECT_EQ(PageRights(base + section.address + section.virtualSize - 1), rights) << name << ", its end";
    }
    auto* const code = static_cast<volatile unsigned char*>(base + Section(".text").address);
    auto* const constant = static_cast<volatile unsigned char*>(base + Section(".rdata").address);
    EXPECT_DEATH(*code = *code, "");
    EXPECT_DEATH(*constant = *constant, "");
}

TEST_F(KoruImage, EachLoadHasGlobalsOfItsOwn)
{
    const pe::Section& data = Section(".data");
    const pe::Section& zeroed = Section(".bss");
    PeImage first;
    ASSERT_TRUE(first.LoadBytes(file));
    std::fill_n(BaseOf(first) + data.address, data.virtualSize, static_cast<unsigned char>(0xEE));
    std::fill_n(BaseOf(first) + zeroed.address, zeroed.virtualSize, static_cast<unsigned char>(0xEE));
    PeImage second;
    ASSERT_TRUE(second.LoadBytes(file));
    const unsigned char* const base = BaseOf(second);
    EXPECT_EQ(std::vector<unsigned char>(base + zeroed.address, base + zeroed.address + zeroed.virtualSize),
              std::vector<unsigned char>(zeroed.virtualSize));
    // Words of the data that are no addresses are as in the file; addresses point into this image.
    for (std::uint32_t at = 0; at + 4 <= data.virtualSize; at += 4) {
        std::uint32_t there = 0, inFile = 0;
        std::memcpy(&there, base + data.address + at, 4);
        std::memcpy(&inFile, file.data() + data.fileAt + at, 4);
        const auto moved = inFile - parsed.header.imageBase + reinterpret_cast<std::uintptr_t>(base);
        EXPECT_TRUE(there == inFile || there == moved) << std::hex << at << ": " << there;
    }
}

// koru.dll as the machine's driver, from a file of the test's own.
class KoruDriver : public KoruImage {
protected:
    KoruDriver()
    {
        RegisterChainManager();
        RegisterFrameBuffer();
    }
    ~KoruDriver() override { std::remove(path.c_str()); }

    void Seal()
    {
        std::uint32_t header = 0;
        std::memcpy(&header, &file[pe::HeaderOffsetAt], 4);
        unsigned char* const checksum = &file[header + pe::ChecksumAt];
        std::fill_n(checksum, 4, static_cast<unsigned char>(0));
        std::uint32_t sum = 0;
        for (std::size_t i = 0; i < file.size(); ++i) {
            sum += static_cast<std::uint32_t>(file[i]) << (i % 2 * 8);
            sum = (sum & 0xFFFF) + (sum >> 16);
        }
        sum += static_cast<std::uint32_t>(file.size());
        std::memcpy(checksum, &sum, 4);
    }

    bool Register()
    {
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(file.data()), static_cast<std::streamsize>(file.size()));
        std::string error;
        const bool done = RegisterImageFile(u"koru", path, error, Calls::Watched);
        EXPECT_TRUE(done) << error;
        return done;
    }

    // Where the file holds the first instruction "ret `bytes`" of an entry point.
    unsigned char* ReturnOf(ULONG index, unsigned char bytes)
    {
        PeImage image;
        DRVENABLEDATA data = {};
        EXPECT_TRUE(image.LoadBytes(file));
        const auto enable = reinterpret_cast<PFN_DrvEnableDriver>(image.EntryPoint());
        EXPECT_TRUE(enable(DDI_DRIVER_VERSION_NT5_01, sizeof(data), &data));
        const unsigned char* function = nullptr;
        for (ULONG i = 0; i < data.c; ++i) {
            if (data.pdrvfn[i].iFunc == index)
                function = reinterpret_cast<unsigned char*>(data.pdrvfn[i].pfn);
            if (data.pdrvfn[i].iFunc == INDEX_DrvDisableDriver)
                reinterpret_cast<PFN_DrvDisableDriver>(data.pdrvfn[i].pfn)();
        }
        const pe::Section& code = Section(".text");
        const std::size_t start = static_cast<std::size_t>(function - BaseOf(image)) - code.address + code.fileAt;
        const unsigned char wanted[] = {0xC2, bytes, 0};
        const auto found = std::search(file.begin() + static_cast<std::ptrdiff_t>(start), file.end(),
                                       std::begin(wanted), std::end(wanted));
        EXPECT_NE(found, file.end());
        return &*found;
    }

    Engine engine;
    const std::string path = testing::TempDir() + "image_mapping.dll";
};

TEST_F(KoruDriver, KeepsTheCallingConventions)
{
    ASSERT_TRUE(Register());
    {
        DisplayDriver driver(u"koru");
        driver.Function<PFN_DrvSynchronize>(INDEX_DrvSynchronize)(nullptr, nullptr);
    }
    EXPECT_EQ(engine.Violations(), std::vector<std::string>{});
}

TEST_F(KoruDriver, AnEntryPointThatLeavesArgumentsIsTold)
{
    ReturnOf(INDEX_DrvSynchronize, 8)[1] = 4;
    Seal();
    ASSERT_TRUE(Register());
    {
        DisplayDriver driver(u"koru");
        driver.Function<PFN_DrvSynchronize>(INDEX_DrvSynchronize)(nullptr, nullptr);
    }
    EXPECT_EQ(engine.Violations(),
              std::vector<std::string>{"the driver's DrvSynchronize takes 4 bytes of arguments off the stack "
                                       "instead of 8"});
}

ULONG __attribute__((cdecl)) CallersEnable(ULONG, ULONG, DRVENABLEDATA* data)
{
    static DRVFN table[] = {{INDEX_DrvEnablePDEV, nullptr}};
    *data = {0, 1, table};
    return TRUE;
}

ULONG APIENTRY StdcallGetNextDriver(ULONG, ULONG, const WCHAR*, WCHAR* name, ULONG)
{
    std::u16string(u"framebuf").copy(name, 8);
    return 0;
}

TEST_F(KoruDriver, ARealDriverWithAnotherConventionIsTold)
{
    engine.RegisterImage(u"framebuf", Exports{{"DrvEnableDriver", reinterpret_cast<PFN>(&CallersEnable)}});
    ASSERT_TRUE(Register());
    {
        DisplayDriver driver(u"koru");
    }
    ASSERT_FALSE(engine.Violations().empty());
    EXPECT_EQ(engine.Violations().front(),
              "the real driver's DrvEnableDriver takes 0 bytes of arguments off the stack instead of 12");
}

TEST_F(KoruDriver, AChainManagerWithAnotherConventionIsTold)
{
    engine.RegisterImage(u"dcmkrnl", Exports{{"GetNextDriver", reinterpret_cast<PFN>(&StdcallGetNextDriver)}});
    ASSERT_TRUE(Register());
    {
        DisplayDriver driver(u"koru");
    }
    ASSERT_FALSE(engine.Violations().empty());
    EXPECT_EQ(engine.Violations().front(),
              "the chain manager's GetNextDriver takes 20 bytes of arguments off the stack instead of 0");
}

} // namespace
