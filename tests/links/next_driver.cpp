// dcmkrnl.dll: the name that it answers, asked as Koru asks.

#include <gtest/gtest.h>

#include "engine/loader/pe_image.h"
#include "tests/links/images.h"

namespace links {
namespace {

    constexpr WCHAR Untouched = 0x2022;

    class ChainManager : public testing::Test {
    protected:
        ChainManager()
        {
            std::string error;
            EXPECT_TRUE(engine::RegisterImageFile(u"dcmkrnl.dll", ImageFile("dcmkrnl.dll"), error)) << error;
            image_ = EngLoadImage(const_cast<WCHAR*>(u"dcmkrnl.dll"));
            getNextDriver_ =
                reinterpret_cast<Function>(EngFindImageProcAddress(image_, const_cast<char*>("GetNextDriver")));
        }
        ~ChainManager() override
        {
            EngUnloadImage(image_);
            EXPECT_EQ(engine.Outstanding(), engine::Resources{});
            EXPECT_TRUE(engine.Violations().empty());
        }

        void Configure(const std::string& file) { engine.RegisterModule(u"dcmkrnl.ini", {file.begin(), file.end()}); }

        ULONG Ask(ULONG room = 40, const WCHAR* asker = u"koru", ULONG first = 1, ULONG second = 0)
        {
            buffer.assign(64, Untouched);
            const ULONG status = getNextDriver_(first, second, asker, buffer.data(), room);
            for (std::size_t i = room; i < buffer.size(); ++i)
                EXPECT_EQ(buffer[i], Untouched) << "behind the buffer";
            return status;
        }
        ULONG AskWithoutBuffer() { return getNextDriver_(1, 0, u"koru", nullptr, 40); }
        ULONG AskWithoutName() { return Ask(40, nullptr); }

        std::u16string Name() { return Ask() == 0 ? std::u16string(buffer.c_str()) : u"(no success)"; }
        bool BufferIsUntouched() const { return buffer == std::u16string(64, Untouched); }

        engine::Engine engine;
        std::u16string buffer;

    private:
        using Function = ULONG(__attribute__((cdecl)) *)(ULONG, ULONG, const WCHAR*, WCHAR*, ULONG);
        HANDLE image_ = nullptr;
        Function getNextDriver_ = nullptr;
    };

    TEST_F(ChainManager, AnswersTheLinkWithoutAFile)
    {
        EXPECT_EQ(Name(), u"korulink");
    }

    struct FileCase {
        const char* name;
        std::string content;
        std::u16string answer;
    };

    const std::string Longest(39, 'n'), TooLong(40, 'n');

    const FileCase FileCases[] = {
        {"AName", "lcd_fb", u"lcd_fb"},
        {"LettersOfAnyCaseAreKept", "Lcd4-Disp", u"Lcd4-Disp"},
        {"ALineFeed", "vga\n", u"vga"},
        {"ACarriageReturnAndLineFeed", "vga\r\n", u"vga"},
        {"OnlyTheFirstLine", "vga\r\nframebuf\r\n", u"vga"},
        {"AZeroByteEndsTheLine", std::string("vga\0framebuf", 12), u"vga"},
        {"BlanksAndTabsAreTrimmed", " \t vga\t \r\n", u"vga"},
        {"TheExtensionIsTakenOff", "vga.dll\n", u"vga"},
        {"TheExtensionInAnyCase", "VGA.DlL", u"VGA"},
        {"TheExtensionOnce", "vga.dll.dll", u"korulink"},
        {"TheExtensionAlone", ".dll", u"korulink"},
        {"AnotherExtension", "vga.sys", u"korulink"},
        {"AnEmptyFile", "", u"korulink"},
        {"AnEmptyFirstLine", "\r\nvga", u"korulink"},
        {"BlanksAlone", " \t \n", u"korulink"},
        {"ABlankInside", "frame buf", u"korulink"},
        {"AComment", "; the next driver", u"korulink"},
        {"AnAssignment", "next=vga", u"korulink"},
        {"APath", "..\\vga", u"korulink"},
        {"ALetterOutsideOfAscii", "vg\xE4", u"korulink"},
        {"AByteOrderMark", "\xEF\xBB\xBFvga", u"korulink"},
        {"SixteenBitText", std::string("v\0g\0a\0", 6), u"v"},
        {"TheLongestName", Longest, std::u16string(39, u'n')},
        {"TheLongestNameWithItsExtension", Longest + ".dll\r\n", std::u16string(39, u'n')},
        {"ATooLongName", TooLong, u"korulink"},
        {"AHugeFile", std::string(100000, 'n'), u"korulink"},
    };

    class ChainManagerFile : public ChainManager, public testing::WithParamInterface<FileCase> { };

    TEST_P(ChainManagerFile, GivesTheName)
    {
        Configure(GetParam().content);
        EXPECT_EQ(Name(), GetParam().answer);
    }

    INSTANTIATE_TEST_SUITE_P(Contents, ChainManagerFile, testing::ValuesIn(FileCases),
                             [](const auto& info) { return info.param.name; });

    // The first request for a file or its mapping fails, then the second ...: the bare name, the path, the mapping.
    TEST_F(ChainManager, LooksForItsFileUnderTwoNames)
    {
        Configure("vga");
        engine.Fail(engine::Request::Load, 1);
        EXPECT_EQ(Name(), u"vga") << "the path is tried, too";
        engine.Fail(engine::Request::Load, 1, true);
        EXPECT_EQ(Name(), u"korulink");
        engine.StopFailing();
        engine.Fail(engine::Request::Load, 2);
        EXPECT_EQ(Name(), u"korulink") << "opened, not mapped";
        EXPECT_EQ(engine.Outstanding().modules, 0u);
    }

    TEST_F(ChainManager, WritesNameAndTerminatorAlone)
    {
        Configure("vga");
        EXPECT_EQ(Ask(), 0u);
        EXPECT_EQ(buffer.substr(0, 5), (std::u16string{u'v', u'g', u'a', 0, Untouched}));
    }

    TEST_F(ChainManager, RefusesABufferThatIsTooSmall)
    {
        Configure("vga");
        for (ULONG room = 0; room < 4; ++room) {
            EXPECT_EQ(Ask(room), 6u) << room;
            EXPECT_TRUE(BufferIsUntouched()) << room;
        }
        EXPECT_EQ(Ask(4), 0u);
        EXPECT_EQ(std::u16string(buffer.c_str()), u"vga");
    }

    TEST_F(ChainManager, HasRoomForTheLongestNameInKorusBuffer)
    {
        Configure(Longest);
        EXPECT_EQ(Ask(40), 0u);
        EXPECT_EQ(Ask(39), 6u);
    }

    TEST_F(ChainManager, RefusesNullPointers)
    {
        EXPECT_EQ(AskWithoutBuffer(), 2u);
        EXPECT_EQ(AskWithoutName(), 2u);
        EXPECT_TRUE(BufferIsUntouched());
    }

    TEST_F(ChainManager, KnowsKoruAlone)
    {
        for (const WCHAR* asker : {u"", u"k", u"kor", u"korul", u"koru.dll", u"korulink", u" koru"}) {
            EXPECT_EQ(Ask(40, asker), 3u) << testing::PrintToString(std::u16string(asker));
            EXPECT_TRUE(BufferIsUntouched());
        }
        for (const WCHAR* asker : {u"koru", u"KORU", u"Koru"})
            EXPECT_EQ(Ask(40, asker), 0u);
    }

    TEST_F(ChainManager, IgnoresTheFirstTwoArguments)
    {
        EXPECT_EQ(Ask(40, u"koru", 0, 0), 0u);
        EXPECT_EQ(Ask(40, u"koru", 0xFFFFFFFF, 7), 0u);
    }

    TEST(ChainManagerImage, RefusesToBeADisplayDriver)
    {
        engine::Engine engine;
        std::string error;
        ASSERT_TRUE(engine::RegisterImageFile(u"dcmkrnl", ImageFile("dcmkrnl.dll"), error)) << error;
        const HANDLE image = EngLoadImage(const_cast<WCHAR*>(u"dcmkrnl"));
        const auto enable =
            reinterpret_cast<PFN_DrvEnableDriver>(EngFindImageProcAddress(image, const_cast<char*>("DrvEnableDriver")));
        DRVENABLEDATA data = {};
        EXPECT_FALSE(enable(DDI_DRIVER_VERSION_NT5_01, sizeof(data), &data));
        EXPECT_EQ(data.c, 0u);
        EngUnloadImage(image);
    }

} // namespace
} // namespace links
