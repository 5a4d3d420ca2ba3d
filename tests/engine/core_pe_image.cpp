#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <random>

#include "engine/loader/pe_image.h"
#include "tests/engine/core_pe_builder.h"

namespace {

using namespace engine;
using pe_builder::Image;
using CountCalls = ULONG(APIENTRY*)(ULONG, ULONG, void*);
using Frequency = void(APIENTRY*)(LONGLONG*);

ULONG Count(const PeImage& image)
{
    return reinterpret_cast<CountCalls>(image.EntryPoint())(0, 0, nullptr);
}

std::string ErrorOf(const Image& file)
{
    PeImage image;
    EXPECT_FALSE(image.LoadBytes(file.bytes));
    EXPECT_EQ(image.EntryPoint(), nullptr);
    EXPECT_TRUE(image.ExportNames().empty());
    EXPECT_TRUE(image.ImportNames().empty());
    return image.Error();
}

TEST(PeImage, RunsRelocatedWithGlobalsOfItsOwn)
{
    PeImage first, second;
    ASSERT_TRUE(first.LoadBytes(Image().bytes)) << first.Error();
    ASSERT_TRUE(second.LoadBytes(Image().bytes)) << second.Error();
    EXPECT_EQ(Count(first), 42u);
    EXPECT_EQ(Count(first), 43u);
    EXPECT_EQ(Count(second), 42u);
    ASSERT_TRUE(first.LoadBytes(Image().bytes)) << "again, afresh";
    EXPECT_EQ(Count(first), 42u);
}

TEST(PeImage, BindsImportsAndFindsExports)
{
    Engine engine;
    PeImage image;
    ASSERT_TRUE(image.LoadBytes(Image().bytes));
    EXPECT_EQ(image.ImportNames(), std::vector<std::string>{"win32k.sys!EngQueryPerformanceFrequency"});
    EXPECT_EQ(image.ExportNames(), (std::vector<std::string>{"DrvEnableDriver", "Frequency"}));
    EXPECT_EQ(image.Find("DrvEnableDriver"), image.EntryPoint());
    EXPECT_EQ(image.Find("Forwarded"), nullptr);
    EXPECT_EQ(image.Find("frequency"), nullptr);
    LONGLONG frequency = 0;
    reinterpret_cast<Frequency>(image.Find("Frequency"))(&frequency);
    EXPECT_EQ(frequency, 3579545);
}

TEST(PeImage, PagesAreProtectedAsTheSectionsSay)
{
    PeImage image;
    ASSERT_TRUE(image.LoadBytes(Image().bytes));
    auto* const code = reinterpret_cast<volatile unsigned char*>(image.EntryPoint());
    volatile unsigned char* const tables = code + 0x1000;
    volatile unsigned char* const data = code + 0x2000;
    EXPECT_DEATH(*code = 0x90, "");
    EXPECT_DEATH(*tables = 1, "");
    EXPECT_DEATH(*(code - 0x1000) = 1, "") << "the headers";
    EXPECT_DEATH(reinterpret_cast<void (*)()>(const_cast<unsigned char*>(data))(), "") << "data is no code";
    *data = 7;
    EXPECT_EQ(Count(image), 8u);
}

struct Damage {
    const char* name;
    void (*apply)(Image&);
    const char* error;
    bool seal = true;
};

const Damage damages[] = {
    {"DosMagic", [](Image& i) { i.Put16(0, 0); }, "not an image file"},
    {"HeaderOffset", [](Image& i) { i.Put32(0x3C, 0xFFFFFFF0); }, "an image cut off in its headers"},
    {"OddHeaderOffset", [](Image& i) { i.Put32(0x3C, 0x81); }, "not an image file"},
    {"Signature", [](Image& i) { i.Put32(Image::HeaderAt, 0x4551); }, "not an image file"},
    {"Machine", [](Image& i) { i.Put16(Image::HeaderAt + 4, 0x8664); }, "an image for another machine"},
    {"Program", [](Image& i) { i.Put16(Image::HeaderAt + 22, 0x102); }, "not a library image"},
    {"Stripped", [](Image& i) { i.Put16(Image::HeaderAt + 22, 0x2103); }, "an image without relocations"},
    {"NoSections", [](Image& i) { i.Put16(Image::HeaderAt + 6, 0); }, "an image with a bad number of sections"},
    {"ManySections", [](Image& i) { i.Put16(Image::HeaderAt + 6, 97); }, "an image with a bad number of sections"},
    {"SectionsBehindHeaders", [](Image& i) { i.Put16(Image::HeaderAt + 6, 90); }, "an image with bad headers"},
    {"SixtyFourBits", [](Image& i) { i.Put16(Image::Optional, 0x20B); }, "not a 32-bit image"},
    {"Subsystem", [](Image& i) { i.Put16(Image::Optional + 68, 2); }, "an image for another subsystem"},
    {"Alignment", [](Image& i) { i.Put32(Image::Optional + 32, 0x200); }, "an image whose sections share pages"},
    {"HugeSize", [](Image& i) { i.Put32(Image::Optional + 56, 0x7FFFFFFF); }, "an image of a bad size"},
    {"NoSize", [](Image& i) { i.Put32(Image::Optional + 56, 0); }, "an image of a bad size"},
    {"HugeHeaders", [](Image& i) { i.Put32(Image::Optional + 60, 0x8000); }, "an image of a bad size"},
    {"HeadersBehindFile", [](Image& i) { i.Put32(Image::Optional + 60, 0xA01); }, "an image with bad headers"},
    {"Directories", [](Image& i) { i.Put32(Image::Optional + 92, 17); }, "an image with bad headers"},
    {"Checksum", [](Image& i) { i.bytes[Image::DataFile] ^= 1; }, "an image with a wrong checksum", false},
    {"SectionBehindImage", [](Image& i) { i.Put32(Image::Section(2) + 12, 0x4000); }, "an image with a bad section"},
    {"SectionOverflow", [](Image& i) { i.Put32(Image::Section(2) + 8, 0xFFFFF000); }, "an image with a bad section"},
    {"SectionsOverlap", [](Image& i) { i.Put32(Image::Section(2) + 12, 0x2000); }, "an image with a bad section"},
    {"SectionUnaligned", [](Image& i) { i.Put32(Image::Section(2) + 12, 0x3010); }, "an image with a bad section"},
    {"SectionOverHeaders", [](Image& i) { i.Put32(Image::Section(0) + 12, 0); }, "an image with a bad section"},
    {"SectionBehindFile", [](Image& i) { i.Put32(Image::Section(2) + 20, 0x801); }, "an image with a bad section"},
    {"EntryInData", [](Image& i) { i.Put32(Image::Optional + 16, Image::Data); }, "an image without an entry point"},
    {"NoEntry", [](Image& i) { i.Put32(Image::Optional + 16, 0); }, "an image without an entry point"},
    {"RelocationsBehindImage", [](Image& i) { i.Put32(Image::Directory(5), 0x3FFF); }, "an image with bad relocations"},
    {"RelocationBlockSize", [](Image& i) { i.Put32(Image::InTables(Image::Relocations) + 4, 4); },
     "an image with bad relocations"},
    {"RelocationBlockTooLong", [](Image& i) { i.Put32(Image::InTables(Image::Relocations) + 4, 18); },
     "an image with bad relocations"},
    {"RelocationTarget", [](Image& i) { i.Put32(Image::InTables(Image::Relocations), 0x3FFC); },
     "an image with a bad relocation"},
    {"RelocationType", [](Image& i) { i.Put16(Image::InTables(Image::Relocations) + 8, 0xA001); },
     "an image with a bad relocation"},
    {"ImportsBehindImage", [](Image& i) { i.Put32(Image::Directory(1), 0x3FF0); }, "an image with a bad import table"},
    {"ImportLibrary", [](Image& i) { i.PutText(Image::InTables(Image::Imports) + 0x60, "ntoskrnl.exe"); },
     "an image that imports from something else than win32k.sys"},
    {"ImportUnknown", [](Image& i) { i.bytes[Image::InTables(Image::Imports) + 0x42] = 'X'; },
     "an image that imports the unknown service XngQueryPerformanceFrequency"},
    {"ImportByNumber", [](Image& i) { i.Put32(Image::InTables(Image::Imports) + 0x30, 0x80000001); },
     "an image that imports by number"},
    {"ImportNamesBehindImage", [](Image& i) { i.Put32(Image::InTables(Image::Imports), 0x3FFE); },
     "an image with a bad import table"},
    {"ImportAddressesBehindImage", [](Image& i) { i.Put32(Image::InTables(Image::Imports) + 16, 0xFFFFFFFE); },
     "an image with a bad import table"},
    {"ExportsBehindImage", [](Image& i) { i.Put32(Image::Directory(0), 0x3FF0); }, "an image with a bad export table"},
    {"ExportCount", [](Image& i) { i.Put32(Image::InTables(Image::Exports) + 24, 0x10000001); },
     "an image with a bad export table"},
    {"ExportOrdinal", [](Image& i) { i.Put16(Image::InTables(Image::Exports) + 64, 3); },
     "an image with a bad export table"},
    {"ExportName", [](Image& i) { i.Put32(Image::InTables(Image::Exports) + 52, 0x4000); },
     "an image with a bad export table"},
};

TEST(PeImage, EachDamageHasItsError)
{
    for (const Damage& damage : damages) {
        Image file;
        damage.apply(file);
        if (damage.seal)
            file.Seal();
        EXPECT_EQ(ErrorOf(file), damage.error) << damage.name;
    }
}

TEST(PeImage, AnExportOutsideOfTheImageIsNone)
{
    Image file;
    file.Put32(Image::InTables(Image::Exports) + 40, 0x4000);
    file.Seal();
    PeImage image;
    ASSERT_TRUE(image.LoadBytes(file.bytes));
    EXPECT_EQ(image.Find("DrvEnableDriver"), nullptr);
    EXPECT_NE(image.EntryPoint(), nullptr);
}

TEST(PeImage, EveryTruncationIsRefused)
{
    const std::vector<unsigned char> whole = Image().bytes;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        std::vector<unsigned char> cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        PeImage image;
        EXPECT_FALSE(image.LoadBytes(cut)) << size;
        EXPECT_FALSE(image.Error().empty()) << size;
        Image::Seal(cut);
        EXPECT_FALSE(image.LoadBytes(cut)) << size << " with a right checksum";
    }
}

// The checksum is made right again, so that what lies behind that test is reached. Nothing is executed.
TEST(PeImage, RandomDamageIsSurvived)
{
    const std::vector<unsigned char> whole = Image().bytes;
    std::mt19937 random(1);
    ULONG loaded = 0, refused = 0;
    for (int round = 0; round < 8000; ++round) {
        std::vector<unsigned char> file = whole;
        for (unsigned flips = 1 + random() % 4; flips != 0; --flips) {
            const unsigned at = random() % 2 ? random() % Image::CodeFile : random() % Image::FileSize;
            file[at] = static_cast<unsigned char>(random() % 3 ? file[at] ^ 1 << random() % 8 : random());
        }
        Image::Seal(file);
        PeImage image;
        (image.LoadBytes(file) ? loaded : refused) += 1;
        EXPECT_EQ(image.Error().empty(), image.EntryPoint() != nullptr);
    }
    EXPECT_GT(loaded, 500u);
    EXPECT_GT(refused, 500u);
}

class PeFiles : public testing::Test {
protected:
    PeFiles()
    {
        const std::vector<unsigned char> bytes = Image().bytes;
        std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), Image::FileSize);
    }
    ~PeFiles() override { std::remove(path.c_str()); }
    const std::string path = testing::TempDir() + "core_pe_image.dll";
};

TEST_F(PeFiles, AreLoadedByPath)
{
    PeImage image;
    EXPECT_TRUE(image.Load(path)) << image.Error();
    EXPECT_EQ(Count(image), 42u);
    EXPECT_FALSE(image.Load(path + ".none"));
    EXPECT_EQ(image.Error(), "the image file cannot be opened");
    EXPECT_EQ(image.EntryPoint(), nullptr);
}

TEST_F(PeFiles, BecomeImagesThatEachLoadMapsAfresh)
{
    Engine engine;
    std::string error;
    ASSERT_TRUE(RegisterImageFile(u"small", path, error)) << error;
    for (int load = 0; load < 2; ++load) {
        const HANDLE image = EngLoadImage(const_cast<WCHAR*>(u"small.dll"));
        ASSERT_NE(image, nullptr);
        void* const entry = EngFindImageProcAddress(image, const_cast<char*>("drvEnableDriver"));
        EXPECT_EQ(reinterpret_cast<CountCalls>(entry)(0, 0, nullptr), 42u);
        EXPECT_NE(EngFindImageProcAddress(image, const_cast<char*>("Frequency")), nullptr);
        EXPECT_EQ(EngFindImageProcAddress(image, const_cast<char*>("None")), nullptr);
        EngUnloadImage(image);
    }
    EXPECT_FALSE(RegisterImageFile(u"none", path + ".none", error));
    EXPECT_EQ(error, "the image file cannot be opened");
}

TEST_F(PeFiles, DamagedOnesAreNotRegistered)
{
    Engine engine;
    std::ofstream(path, std::ios::binary | std::ios::app) << '!';
    std::string error;
    EXPECT_FALSE(RegisterImageFile(u"small", path, error));
    EXPECT_EQ(error, "an image with a wrong checksum");
}

} // namespace
