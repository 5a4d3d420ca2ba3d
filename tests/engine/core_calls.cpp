#include <gtest/gtest.h>

#include <memory>

#include "engine/core/calls.h"
#include "engine/core/device.h"
#include "tests/engine/core_scripted_driver.h"

namespace {

using namespace engine;
using Lines = std::vector<std::string>;

constexpr BOOL Noted = 42;
constexpr FLONG AllHooks = 0x3F5FF;

struct Machine {
    explicit Machine(FLONG hooks)
    {
        scripted::Script script;
        script.hooks = hooks;
        scripted::Register(script);
        driver = std::make_unique<DisplayDriver>(u"scripted");
        device = std::make_unique<Device>(*driver);
        EXPECT_TRUE(device->Enable({8, 8, 32})) << device->Error();
        screen = device->PrimarySurface();
        bitmap = MakeBitmap({8, 8}, PixelLayout::Default(BMF_32BPP));
        scripted::calls.clear();
    }
    Engine engine;
    std::unique_ptr<DisplayDriver> driver;
    std::unique_ptr<Device> device;
    SURFOBJ* screen;
    SURFOBJ* bitmap;
};

struct DrawingCall {
    const char* name;
    FLONG hook;
    BOOL (*draw)(SURFOBJ* target, SURFOBJ* source);
};

const DrawingCall copies[] = {
    {"BitBlt", HOOK_BITBLT,
     [](SURFOBJ* target, SURFOBJ* source) {
         return CallBitBlt(target, source, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                           0xCCCC);
     }},
    {"CopyBits", HOOK_COPYBITS,
     [](SURFOBJ* target, SURFOBJ* source) { return CallCopyBits(target, source, nullptr, nullptr, nullptr, nullptr); }},
    {"StretchBlt", HOOK_STRETCHBLT,
     [](SURFOBJ* target, SURFOBJ* source) {
         return CallStretchBlt(target, source, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               3);
     }},
    {"StretchBltROP", HOOK_STRETCHBLTROP,
     [](SURFOBJ* target, SURFOBJ* source) {
         return CallStretchBltROP(target, source, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                  nullptr, 3, nullptr, 0xCCCC);
     }},
    {"PlgBlt", HOOK_PLGBLT,
     [](SURFOBJ* target, SURFOBJ* source) {
         return CallPlgBlt(target, source, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 3);
     }},
    {"AlphaBlend", HOOK_ALPHABLEND,
     [](SURFOBJ* target, SURFOBJ* source) {
         return CallAlphaBlend(target, source, nullptr, nullptr, nullptr, nullptr, nullptr);
     }},
    {"TransparentBlt", HOOK_TRANSPARENTBLT,
     [](SURFOBJ* target, SURFOBJ* source) {
         return CallTransparentBlt(target, source, nullptr, nullptr, nullptr, nullptr, 0, 0);
     }},
};

const DrawingCall paintings[] = {
    {"StrokePath", HOOK_STROKEPATH,
     [](SURFOBJ* target, SURFOBJ*) {
         return CallStrokePath(target, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0);
     }},
    {"FillPath", HOOK_FILLPATH,
     [](SURFOBJ* target, SURFOBJ*) { return CallFillPath(target, nullptr, nullptr, nullptr, nullptr, 0, 0); }},
    {"StrokeAndFillPath", HOOK_STROKEANDFILLPATH,
     [](SURFOBJ* target, SURFOBJ*) {
         return CallStrokeAndFillPath(target, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0);
     }},
    {"Paint", HOOK_PAINT, [](SURFOBJ* target, SURFOBJ*) { return CallPaint(target, nullptr, nullptr, nullptr, 0); }},
    {"TextOut", HOOK_TEXTOUT,
     [](SURFOBJ* target, SURFOBJ*) {
         return CallTextOut(target, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0);
     }},
    {"LineTo", HOOK_LINETO,
     [](SURFOBJ* target, SURFOBJ*) { return CallLineTo(target, nullptr, nullptr, 0, 0, 1, 1, nullptr, 0); }},
    {"GradientFill", HOOK_GRADIENTFILL,
     [](SURFOBJ* target, SURFOBJ*) {
         return CallGradientFill(target, nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, 0);
     }},
};

TEST(Calls, ReachTheHookOfTheTarget)
{
    Machine machine(AllHooks);
    Lines expected;
    for (const auto& list :
         {std::vector(std::begin(copies), std::end(copies)), std::vector(std::begin(paintings), std::end(paintings))})
        for (const DrawingCall& call : list) {
            EXPECT_EQ(call.draw(machine.screen, machine.bitmap), Noted) << call.name;
            expected.push_back(call.name);
        }
    EXPECT_EQ(scripted::calls, expected);
    EXPECT_EQ(machine.engine.Violations(), Lines());
}

TEST(Calls, CopiesFromTheScreenReachItsHook)
{
    Machine machine(AllHooks);
    Lines expected;
    for (const DrawingCall& call : copies) {
        EXPECT_EQ(call.draw(machine.bitmap, machine.screen), Noted) << call.name;
        expected.push_back(call.name);
    }
    EXPECT_EQ(scripted::calls, expected);
}

TEST(Calls, EachCallAsksForItsOwnHookFlag)
{
    for (const auto& list :
         {std::vector(std::begin(copies), std::end(copies)), std::vector(std::begin(paintings), std::end(paintings))})
        for (const DrawingCall& call : list) {
            Machine machine(call.hook);
            EXPECT_EQ(call.draw(machine.screen, machine.bitmap), Noted);
            EXPECT_EQ(scripted::calls, Lines{call.name});
        }
}

TEST(Calls, BitmapsOfTheEngineAreNotHooked)
{
    Machine machine(AllHooks);
    EXPECT_EQ(HookOf(machine.bitmap, HOOK_BITBLT, INDEX_DrvBitBlt), nullptr);
    EXPECT_EQ(HookOf(nullptr, HOOK_BITBLT, INDEX_DrvBitBlt), nullptr);
    EXPECT_NE(HookOf(machine.screen, HOOK_BITBLT, INDEX_DrvBitBlt), nullptr);
    EXPECT_EQ(machine.engine.Violations(), Lines());
}

TEST(Calls, AFlagThatWasNotAssociatedIsNoHook)
{
    Machine machine(HOOK_PAINT);
    EXPECT_EQ(HookOf(machine.screen, HOOK_BITBLT, INDEX_DrvBitBlt), nullptr);
    EXPECT_NE(HookOf(machine.screen, HOOK_PAINT, INDEX_DrvPaint), nullptr);
}

TEST(Calls, SurfacesOfADeviceThatIsGoneAreNotHooked)
{
    Machine machine(AllHooks);
    const HSURF bitmap = reinterpret_cast<HSURF>(EngCreateDeviceBitmap(nullptr, {4, 4}, BMF_32BPP));
    EngAssociateSurface(bitmap, machine.device->Handle(), AllHooks);
    EXPECT_NE(HookOf(FindSurface(bitmap), HOOK_PAINT, INDEX_DrvPaint), nullptr);
    machine.device.reset();
    EXPECT_EQ(HookOf(FindSurface(bitmap), HOOK_PAINT, INDEX_DrvPaint), nullptr);
}

} // namespace
