// korulink.dll in front of scripted drivers: what it hands on, adds and gives back.

#include <gtest/gtest.h>

#include <map>

#include "engine/core/surface.h"
#include "engine/loader/pe_image.h"
#include "tests/links/images.h"

namespace links {
namespace {

    constexpr ULONG Version = DDI_DRIVER_VERSION_NT5_01;

    // The driver behind the link.
    struct NextDriver {
        BOOL answer = TRUE;
        ULONG driverVersion = 0x30000;
        std::vector<DRVFN> functions;
        bool givesNoTable = false;

        ULONG enables = 0, disables = 0, engineVersion = 0, size = 0;
    };
    NextDriver next;
    PFN_DrvEnableDriver linkItself = nullptr; // called from within the next driver, when set
    BOOL innerAnswer = -1;

    BOOL APIENTRY EnableNext(ULONG iEngineVersion, ULONG cj, DRVENABLEDATA* pded)
    {
        ++next.enables;
        next.engineVersion = iEngineVersion;
        next.size = cj;
        if (linkItself) {
            DRVENABLEDATA data = {};
            innerAnswer = linkItself(iEngineVersion, sizeof(data), &data);
        }
        *pded = {next.driverVersion, static_cast<ULONG>(next.functions.size()),
                 next.givesNoTable ? nullptr : next.functions.data()};
        return next.answer;
    }

    void APIENTRY DisableNext()
    {
        ++next.disables;
    }

    PFN Address(ULONG number)
    {
        return reinterpret_cast<PFN>(number);
    }

    const DRVFN NextDisable = {INDEX_DrvDisableDriver, reinterpret_cast<PFN>(&DisableNext)};

    class Link : public testing::Test {
    protected:
        Link()
        {
            next = {};
            next.functions = {{INDEX_DrvEnablePDEV, Address(0x1000)}, {INDEX_DrvGetModes, Address(0x2000)}};
            linkItself = nullptr;
            std::string error;
            EXPECT_TRUE(engine::RegisterImageFile(u"korulink", ImageFile("korulink.dll"), error)) << error;
            Offer(u"framebuf");
            image = EngLoadImage(const_cast<WCHAR*>(u"korulink.dll"));
            enable = reinterpret_cast<PFN_DrvEnableDriver>(
                EngFindImageProcAddress(image, const_cast<char*>("DrvEnableDriver")));
        }
        ~Link() override
        {
            EngUnloadImage(image);
            EXPECT_EQ(engine.Outstanding(), engine::Resources{});
            EXPECT_TRUE(engine.Violations().empty()) << engine.Violations().front();
        }

        void Offer(const std::u16string& name)
        {
            engine.RegisterImage(name, {{"DrvEnableDriver", reinterpret_cast<PFN>(&EnableNext)}});
        }
        void Configure(const std::string& file) { engine.RegisterModule(u"korulink.ini", {file.begin(), file.end()}); }
        BOOL Enable() { return enable(Version, sizeof(data), &data); }
        PFN Function(ULONG index) const
        {
            for (ULONG i = 0; i < data.c; ++i)
                if (data.pdrvfn[i].iFunc == index)
                    return data.pdrvfn[i].pfn;
            return nullptr;
        }
        void Disable() { reinterpret_cast<PFN_DrvDisableDriver>(Function(INDEX_DrvDisableDriver))(); }
        ULONG ImagesBehind() const { return engine.Outstanding().images - 1; }

        engine::Engine engine;
        HANDLE image = nullptr;
        PFN_DrvEnableDriver enable = nullptr;
        DRVENABLEDATA data = {};
    };

    std::map<ULONG, PFN> TableOf(const DRVENABLEDATA& data)
    {
        std::map<ULONG, PFN> table;
        for (ULONG i = 0; i < data.c; ++i)
            table[data.pdrvfn[i].iFunc] = data.pdrvfn[i].pfn;
        EXPECT_EQ(table.size(), data.c) << "an entry stands there twice";
        return table;
    }

    TEST_F(Link, HandsTheNextDriversFunctionsOnAndAddsTwo)
    {
        ASSERT_TRUE(Enable());
        EXPECT_EQ(data.iDriverVersion, 0x30000u);
        const auto table = TableOf(data);
        EXPECT_EQ(table.size(), 4u);
        EXPECT_EQ(table.at(INDEX_DrvEnablePDEV), Address(0x1000));
        EXPECT_EQ(table.at(INDEX_DrvGetModes), Address(0x2000));
        EXPECT_NE(table.at(INDEX_DrvCopyBits), nullptr);
        EXPECT_NE(table.at(INDEX_DrvDisableDriver), nullptr);
        Disable();
    }

    TEST_F(Link, KeepsTheNextDriversOwnCopy)
    {
        next.functions.push_back({INDEX_DrvCopyBits, Address(0x3000)});
        ASSERT_TRUE(Enable());
        EXPECT_EQ(data.c, 4u);
        EXPECT_EQ(TableOf(data).at(INDEX_DrvCopyBits), Address(0x3000));
        Disable();
    }

    TEST_F(Link, EnablesWithTheVersionThatItIsGiven)
    {
        for (ULONG version : {0x20000u, 0x30000u, 0x30100u, 0x30200u}) {
            ASSERT_TRUE(enable(version, sizeof(data), &data));
            EXPECT_EQ(next.engineVersion, version);
            EXPECT_EQ(next.size, 12u);
        }
        Disable();
    }

    TEST_F(Link, LoadsTheDriverThatItsFileNames)
    {
        Offer(u"vga-x");
        Configure("vga-x.dll\r\n");
        ASSERT_TRUE(Enable());
        EXPECT_TRUE(engine.IsImageLoaded(u"vga-x"));
        EXPECT_FALSE(engine.IsImageLoaded(u"framebuf"));
        Disable();
        EXPECT_FALSE(engine.IsImageLoaded(u"vga-x"));
    }

    TEST_F(Link, LoadsTheFrameBufferWhereItsFileNamesNone)
    {
        Configure("two words");
        ASSERT_TRUE(Enable());
        EXPECT_TRUE(engine.IsImageLoaded(u"framebuf"));
        Disable();
    }

    TEST_F(Link, TakesTheLongestName)
    {
        const std::string longest(39, 'n');
        Offer(std::u16string(longest.begin(), longest.end()));
        Configure(longest);
        ASSERT_TRUE(Enable());
        EXPECT_TRUE(engine.IsImageLoaded(std::u16string(39, u'n')));
        Disable();
    }

    TEST_F(Link, DisablesTheNextDriverAndLetsItGo)
    {
        next.functions.push_back(NextDisable);
        ASSERT_TRUE(Enable());
        EXPECT_NE(Function(INDEX_DrvDisableDriver), NextDisable.pfn);
        EXPECT_EQ(ImagesBehind(), 1u);
        Disable();
        EXPECT_EQ(next.disables, 1u);
        EXPECT_EQ(ImagesBehind(), 0u);
        Disable();
        EXPECT_EQ(next.disables, 1u) << "once is enough";
    }

    // What engines do at start: enable, disable, enable again, all on one image.
    TEST_F(Link, IsEnabledAgainAfterItsDisableEntry)
    {
        next.functions.push_back(NextDisable);
        ASSERT_TRUE(Enable());
        const auto first = TableOf(data);
        Disable();
        ASSERT_TRUE(Enable());
        EXPECT_EQ(TableOf(data), first);
        EXPECT_EQ(next.enables, 2u);
        EXPECT_EQ(ImagesBehind(), 1u);
        Disable();
    }

    TEST_F(Link, IsEnabledAgainWithoutADisable)
    {
        ASSERT_TRUE(Enable());
        next.functions = {{INDEX_DrvGetModes, Address(0x4000)}};
        ASSERT_TRUE(Enable());
        EXPECT_EQ(next.enables, 2u) << "the next driver, too, on its one image";
        EXPECT_EQ(ImagesBehind(), 1u);
        EXPECT_EQ(data.c, 3u);
        EXPECT_EQ(TableOf(data).at(INDEX_DrvGetModes), Address(0x4000)) << "with the table that it has now";
        Disable();
    }

    TEST_F(Link, TellsADisplayDriverOfItsOwnRefusal)
    {
        next.answer = FALSE;
        EXPECT_FALSE(Enable());
        EXPECT_EQ(data.c, 0u) << "nothing is handed on";
        EXPECT_EQ(ImagesBehind(), 0u);
        EXPECT_EQ(next.disables, 0u);
        next.answer = TRUE;
        EXPECT_TRUE(Enable());
        next.answer = FALSE;
        EXPECT_FALSE(Enable()) << "refused when enabled again";
        EXPECT_EQ(ImagesBehind(), 0u);
    }

    TEST_F(Link, FailsWithoutANextDriver)
    {
        Configure("nowhere");
        EXPECT_FALSE(Enable());
        EXPECT_EQ(next.enables, 0u);
        engine.RegisterImage(u"nowhere", engine::Exports{});
        EXPECT_FALSE(Enable()) << "an image, but no display driver";
        EXPECT_EQ(ImagesBehind(), 0u);
    }

    TEST_F(Link, FailsWithoutRoomForTheAnswer)
    {
        for (ULONG size : {0u, 4u, 8u, 11u})
            EXPECT_FALSE(enable(Version, size, &data)) << size;
        EXPECT_FALSE(enable(Version, sizeof(data), nullptr));
        EXPECT_EQ(next.enables, 0u);
        EXPECT_EQ(data.pdrvfn, nullptr);
    }

    TEST_F(Link, TakesTablesOfUpTo128Functions)
    {
        next.functions.clear();
        for (ULONG i = 0; i < 127; ++i)
            next.functions.push_back({1000 + i, Address(i)});
        next.functions.push_back(NextDisable);
        ASSERT_TRUE(Enable());
        EXPECT_EQ(data.c, 129u);
        EXPECT_EQ(TableOf(data).at(1126), Address(126));
        next.functions.push_back({2000, Address(1)});
        EXPECT_FALSE(Enable());
        EXPECT_EQ(next.disables, 1u) << "it was enabled for nothing";
        EXPECT_EQ(ImagesBehind(), 0u);
    }

    TEST_F(Link, FailsOnATableThatIsNotThere)
    {
        next.givesNoTable = true;
        EXPECT_FALSE(Enable());
        EXPECT_EQ(ImagesBehind(), 0u);
        next.functions.clear();
        EXPECT_TRUE(Enable()) << "none of nothing is right";
        EXPECT_EQ(data.c, 2u);
        Disable();
    }

    TEST_F(Link, RefusesAChainThatLeadsBackToIt)
    {
        linkItself = enable;
        EXPECT_TRUE(Enable());
        EXPECT_EQ(innerAnswer, FALSE);
        EXPECT_EQ(next.enables, 1u);
        Disable();
        Configure("korulink");
        EXPECT_FALSE(Enable());
        EXPECT_EQ(ImagesBehind(), 0u);
    }

    TEST_F(Link, FailsWithoutALeakWhateverLoadFails)
    {
        Configure("framebuf");
        engine::FaultPlan plan;
        engine.Obey(plan);
        ULONG failures = 0;
        do {
            if (Enable())
                Disable();
            else
                ++failures;
            EXPECT_EQ(ImagesBehind(), 0u);
            EXPECT_EQ(engine.Outstanding().modules, 0u);
        } while (plan.Next());
        EXPECT_EQ(failures, 1u) << "the image; without its file the name is the same";
        engine.StopFailing();
    }

    class LinkCopies : public Link {
    protected:
        LinkCopies()
        {
            EXPECT_TRUE(Enable());
            copyBits = reinterpret_cast<PFN_DrvCopyBits>(Function(INDEX_DrvCopyBits));
            source->SetPixel(1, 0, 0x00FF8040);
        }
        ~LinkCopies() override { Disable(); }
        BOOL Copy(SURFOBJ* to, SURFOBJ* from) { return copyBits(to, from, nullptr, nullptr, &rectangle, &point); }

        engine::Surface* source = engine::MakeBitmap({4, 2}, engine::PixelLayout::Default(BMF_32BPP));
        engine::Surface* target = engine::MakeBitmap({4, 2}, engine::PixelLayout::Default(BMF_32BPP));
        RECTL rectangle = {2, 1, 4, 2};
        POINTL point = {0, 0};
        PFN_DrvCopyBits copyBits = nullptr;
    };

    TEST_F(LinkCopies, FromBitmapToBitmap)
    {
        EXPECT_TRUE(Copy(target, source));
        EXPECT_EQ(target->Pixel(3, 1), 0x00FF8040u);
        EXPECT_EQ(target->Pixel(1, 0), 0u);
    }

    TEST_F(LinkCopies, NothingOnSurfacesThatADriverManages)
    {
        const auto device = engine::FindSurface(EngCreateDeviceSurface(nullptr, {4, 2}, BMF_32BPP));
        ASSERT_NE(device, nullptr);
        EXPECT_FALSE(Copy(device, source));
        EXPECT_FALSE(Copy(target, device));
        EXPECT_FALSE(Copy(nullptr, source));
        EXPECT_FALSE(Copy(target, nullptr));
        EXPECT_EQ(target->Pixel(3, 1), 0u);
        EngDeleteSurface(device->hsurf);
    }

} // namespace
} // namespace links
