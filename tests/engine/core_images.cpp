#include <gtest/gtest.h>

#include "engine/core/engine.h"
#include "engine/core/exports.h"

namespace {

using namespace engine;
using Lines = std::vector<std::string>;

void First() { }
void Second() { }

WCHAR* Name(const WCHAR* name)
{
    return const_cast<WCHAR*>(name);
}

void* Find(HANDLE image, const char* name)
{
    return EngFindImageProcAddress(image, const_cast<char*>(name));
}

class Images : public testing::Test {
protected:
    Engine engine;
};

TEST_F(Images, AreFoundInAnyCaseWithAndWithoutExtensionAndFolder)
{
    engine.RegisterImage(u"Next.DLL", {{"DrvEnableDriver", &First}});
    for (const WCHAR* const name : {u"next", u"NEXT.dll", u"\\SystemRoot\\System32\\next.dll"}) {
        const HANDLE image = EngLoadImage(Name(name));
        ASSERT_NE(image, nullptr);
        EXPECT_TRUE(engine.IsImageLoaded(u"next"));
        EXPECT_EQ(engine.Outstanding().images, 1u);
        EngUnloadImage(image);
        EXPECT_FALSE(engine.IsImageLoaded(u"next"));
    }
    EXPECT_EQ(EngLoadImage(Name(u"nex")), nullptr);
    EXPECT_EQ(engine.Violations(), Lines());
}

TEST_F(Images, ExportsAreFoundWithoutRegardToCase)
{
    engine.RegisterImage(u"next", {{"DrvEnableDriver", &First}, {"Other", &Second}});
    const HANDLE image = EngLoadImage(Name(u"next"));
    EXPECT_EQ(Find(image, "DrvEnableDriver"), reinterpret_cast<void*>(&First));
    EXPECT_EQ(Find(image, "OTHER"), reinterpret_cast<void*>(&Second));
    EXPECT_EQ(Find(image, "Others"), nullptr);
}

TEST_F(Images, ALoadedImageIsLoadedOnce)
{
    int loads = 0, unloads = 0;
    engine.RegisterImage(
        u"next", [&] { return ++loads, static_cast<HANDLE>(&loads); }, [&](HANDLE) { ++unloads; },
        [](HANDLE, const char*) { return PFN(); });
    const HANDLE first = EngLoadImage(Name(u"next")), second = EngLoadImage(Name(u"next.dll"));
    EXPECT_EQ(first, second);
    EXPECT_EQ(loads, 1);
    EngUnloadImage(first);
    EXPECT_EQ(unloads, 0);
    EXPECT_EQ(engine.Outstanding().images, 1u);
    EngUnloadImage(first);
    EXPECT_EQ(unloads, 1);
}

TEST(ImagesAtTheEnd, StillLoadedOnesAreUnloadedWithTheEngine)
{
    int unloads = 0;
    {
        Engine engine;
        engine.RegisterImage(
            u"next", [&] { return static_cast<HANDLE>(&unloads); }, [&](HANDLE) { ++unloads; },
            [](HANDLE, const char*) { return PFN(); });
        EngLoadImage(Name(u"next"));
    }
    EXPECT_EQ(unloads, 1);
}

TEST_F(Images, ReportHandlesAndNamesThatAreNone)
{
    engine.RegisterImage(u"next", {});
    const HANDLE image = EngLoadImage(Name(u"next"));
    EngUnloadImage(image);
    EngUnloadImage(image);
    EXPECT_EQ(Find(image, "x"), nullptr);
    EXPECT_EQ(Find(nullptr, nullptr), nullptr);
    EXPECT_EQ(EngLoadImage(nullptr), nullptr);
    EngUnloadImage(nullptr);
    EXPECT_EQ(engine.Violations(),
              (Lines{"EngUnloadImage: not a loaded image", "EngFindImageProcAddress: not a loaded image",
                     "EngFindImageProcAddress: the name is null", "EngLoadImage: the name is null",
                     "EngUnloadImage: not a loaded image"}));
}

TEST_F(Images, TheEngineItselfKnowsItsServices)
{
    EXPECT_EQ(Find(nullptr, "EngLockSurface"), reinterpret_cast<void*>(&EngLockSurface));
    EXPECT_EQ(Find(nullptr, "engplgblt"), reinterpret_cast<void*>(&EngPlgBlt));
    EXPECT_EQ(Find(nullptr, "XLATEOBJ_piVector"), reinterpret_cast<void*>(&XLATEOBJ_piVector));
    EXPECT_EQ(Find(nullptr, "EngSetPointerShape"), nullptr);
    EXPECT_EQ(Services().size(), 47u);
}

TEST_F(Images, AServiceCanBeHidden)
{
    engine.HideService("EngAlphaBlend");
    EXPECT_EQ(Find(nullptr, "EngAlphaBlend"), nullptr);
    EXPECT_NE(Find(nullptr, "EngGradientFill"), nullptr);
}

TEST_F(Images, ModulesAreMappedAndFreed)
{
    engine.RegisterModule(u"KORU.ini", {'1', '0', '2'});
    EXPECT_EQ(EngLoadModule(Name(u"KORU")), nullptr) << "no extension is added";
    const HANDLE module = EngLoadModule(Name(u"koru.INI"));
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(engine.Outstanding().modules, 1u);
    ULONG size = 0;
    const auto* const content = static_cast<const char*>(EngMapModule(module, &size));
    EXPECT_EQ(std::string(content, size), "102");
    EngFreeModule(module);
    EXPECT_EQ(engine.Outstanding(), Resources());
    EXPECT_EQ(engine.Violations(), Lines());
}

TEST_F(Images, ReportModulesThatAreNone)
{
    ULONG size = 7;
    EXPECT_EQ(EngMapModule(nullptr, &size), nullptr);
    EXPECT_EQ(EngMapModule(nullptr, nullptr), nullptr);
    EngFreeModule(nullptr);
    EXPECT_EQ(EngLoadModule(nullptr), nullptr);
    EXPECT_EQ(engine.Violations(),
              (Lines{"EngMapModule: not a loaded module", "EngMapModule: the size is null",
                     "EngFreeModule: not a loaded module", "EngLoadModule: the name is null"}));
    EXPECT_EQ(size, 7u);
}

} // namespace
