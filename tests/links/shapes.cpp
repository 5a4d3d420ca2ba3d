// The files themselves: what the kernel's loaders look at.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "engine/loader/pe_file.h"
#include "engine/loader/pe_image.h"
#include "tests/links/images.h"

namespace links {
namespace {

    struct Shape {
        const char* file;
        bool isLibrary;
    };
    class KernelImage : public testing::TestWithParam<Shape> {
    protected:
        void SetUp() override
        {
            std::ifstream stream(ImageFile(GetParam().file), std::ios::binary);
            bytes.assign(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
            ASSERT_EQ(file.Read({bytes.data(), bytes.size()}, GetParam().isLibrary), "") << "checksum included";
        }
        std::vector<unsigned char> bytes;
        engine::PeFile file;
    };

    TEST_P(KernelImage, IsNativeAndOfVersionFive)
    {
        EXPECT_EQ(file.header.subsystem, 1);
        EXPECT_EQ(file.header.majorSubsystem, 5);
        EXPECT_EQ(file.header.minorSubsystem, 0);
        EXPECT_EQ(file.header.majorSystem, 5);
        EXPECT_EQ(file.header.sectionAlignment, 0x1000u);
        EXPECT_NE(file.header.checksum, 0u);
    }

    TEST_P(KernelImage, CanBeMovedAndIsTheSameAtEveryBuild)
    {
        EXPECT_NE(file.directories[engine::pe::RelocationDirectory].size, 0u);
        std::uint32_t headerAt = 0, timeStamp = 1;
        std::memcpy(&headerAt, &bytes[engine::pe::HeaderOffsetAt], sizeof(headerAt));
        std::memcpy(&timeStamp, &bytes[headerAt + offsetof(engine::pe::FileHeader, timeStamp)], sizeof(timeStamp));
        EXPECT_EQ(timeStamp, 0u);
    }

    TEST_P(KernelImage, HasNoSectionsOfACRuntime)
    {
        for (const engine::pe::Section& section : file.sections) {
            const std::string name(section.name, strnlen(section.name, sizeof(section.name)));
            EXPECT_TRUE(name == ".text" || name == ".data" || name == ".rdata" || name == ".bss" || name == ".edata"
                        || name == ".idata" || name == ".reloc")
                << name;
        }
    }

    INSTANTIATE_TEST_SUITE_P(Files, KernelImage,
                             testing::Values(Shape{"dcmkrnl.dll", true}, Shape{"korulink.dll", true},
                                             Shape{"korutap.sys", false}),
                             [](const auto& info) { return std::string(info.param.file).substr(0, 7); });

    std::string LoadAndList(const std::string& name)
    {
        engine::PeImage image;
        if (!image.Load(ImageFile(name)))
            return image.Error();
        std::string list;
        for (const std::string& function : image.ExportNames())
            list += "+" + function + " ";
        for (const std::string& function : image.ImportNames())
            list += function + " ";
        return list;
    }

    TEST(KernelImages, UseTheEngineAlone)
    {
        EXPECT_EQ(LoadAndList("dcmkrnl.dll"),
                  "+GetNextDriver win32k.sys!EngFreeModule win32k.sys!EngLoadModule win32k.sys!EngMapModule ");
        EXPECT_EQ(LoadAndList("korulink.dll"),
                  "+DrvEnableDriver win32k.sys!EngCopyBits win32k.sys!EngFindImageProcAddress "
                  "win32k.sys!EngFreeModule win32k.sys!EngLoadImage win32k.sys!EngLoadModule "
                  "win32k.sys!EngMapModule win32k.sys!EngUnloadImage ");
    }

} // namespace
} // namespace links
