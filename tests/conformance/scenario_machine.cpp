#include "tests/conformance/scenario_machine.h"

#include <cstring>

#include "tests/support/driver_form.h"

namespace conformance {

namespace {

    ULONG recordsTaken = 0; // written under the DriverSemaphore alone

    LONG APIENTRY Qc()
    {
        return 1;
    }
    LONG APIENTRY Qd()
    {
        return 0;
    }
    LONG APIENTRY Qp(BYTE* record, ULONG length, LONG)
    {
        ULONG noted = length;
        if (record && length >= sizeof(noted))
            std::memcpy(&noted, record, sizeof(noted));
        EXPECT_EQ(noted, length);
        ++recordsTaken;
        return 0;
    }
    ULONG APIENTRY Gsd(LONG selector)
    {
        return selector == 0 ? 1000 : 2000;
    }
    LONG APIENTRY Dsf()
    {
        return 0;
    }

    template<class Function> ULONG AddressOf(Function* function)
    {
        return reinterpret_cast<ULONG>(function);
    }

} // namespace

ScenarioMachine::ScenarioMachine(engine::FaultPlan* plan)
{
    engine::RegisterChainManager();
    engine::RegisterFrameBuffer();
    support::RegisterDriverUnderTest();
    recordsTaken = 0;
    memory_ = engine::MakeBitmap({8, 8}, engine::PixelLayout::Default(BMF_32BPP));
    if (plan)
        engine.Obey(*plan);
    driver_ = std::make_unique<engine::DisplayDriver>(u"koru");
}

ScenarioMachine::~ScenarioMachine()
{
    driver_.reset();
    engine.CheckGuards();
    for (const std::string& violation : engine.Violations())
        ADD_FAILURE() << "engine violation: " << violation;
}

ULONG ScenarioMachine::Escape(SURFOBJ* pso, ULONG code, std::vector<ULONG> words)
{
    ULONG out[4] = {};
    const auto escape = driver_->Function<PFN_DrvEscape>(INDEX_DrvEscape);
    escape(pso, code, static_cast<ULONG>(words.size() * sizeof(ULONG)), words.data(), sizeof(out), out);
    return out[0];
}

ULONG ScenarioMachine::Command(ULONG subCommand, ULONG word1, ULONG word2, const engine::Device* device)
{
    const ULONG dhpdev = device ? reinterpret_cast<ULONG>(device->Dhpdev()) : 0;
    return Escape(memory_, KoruEscape, {subCommand, word1, word2, 0, 0, dhpdev});
}

ULONG ScenarioMachine::AddDarkZone(const engine::Device& device, const RECTL& zone)
{
    return Escape(memory_, KoruEscape,
                  {3, static_cast<ULONG>(zone.left), static_cast<ULONG>(zone.top), static_cast<ULONG>(zone.right),
                   static_cast<ULONG>(zone.bottom), reinterpret_cast<ULONG>(device.Dhpdev())});
}

ULONG ScenarioMachine::Zoom(SURFOBJ* pso, ULONG code, ULONG id, const RECTL& values, ULONG a, ULONG b, ULONG c)
{
    return Escape(pso ? pso : memory_, ZoomEscape,
                  {code, id, a, b, c, static_cast<ULONG>(values.left), static_cast<ULONG>(values.top),
                   static_cast<ULONG>(values.right), static_cast<ULONG>(values.bottom)});
}

void ScenarioMachine::StartCapture()
{
    Escape(memory_, KoruEscape, {36, AddressOf(&Qc), AddressOf(&Qd), AddressOf(&Qp), AddressOf(&Gsd), AddressOf(&Dsf)});
    Command(57, 0xFFFFFFFF);
}

ULONG ScenarioMachine::RecordsTaken() const
{
    return recordsTaken;
}

BOOL ScenarioMachine::Draw(const HookRow& row, engine::Device& device, SURFOBJ* target, SURFOBJ* source, CLIPOBJ* clip)
{
    return row.draw({*driver_, target, source, clip, LargestPixel(device.Layout())});
}

void ScenarioMachine::SetPointerShape(engine::Device& device, LONG x, LONG y)
{
    engine::Surface* const mask = engine::MakeBitmap({4, 8}, engine::PixelLayout::Default(BMF_1BPP));
    driver_->Function<PFN_DrvSetPointerShape>(INDEX_DrvSetPointerShape)(device.PrimarySurface(), mask, nullptr, nullptr,
                                                                        0, 0, x, y, nullptr, SPS_CHANGE);
    engine::DestroyBitmap(mask);
}

void ScenarioMachine::MovePointer(engine::Device& device, LONG x, LONG y)
{
    driver_->Function<PFN_DrvMovePointer>(INDEX_DrvMovePointer)(device.PrimarySurface(), x, y, nullptr);
}

ULONG ScenarioMachine::SaveBits(engine::Device& device, ULONG mode, ULONG ident, RECTL part)
{
    const auto save = driver_->Function<PFN_DrvSaveScreenBits>(INDEX_DrvSaveScreenBits);
    return save(device.PrimarySurface(), mode, ident, &part);
}

ULONG ScenarioMachine::ShowZoomer(engine::Device& device, const RECTL& from, const RECTL& to)
{
    SURFOBJ* const screen = device.PrimarySurface();
    const ULONG id = Zoom(screen, 0x11127201);
    Zoom(screen, 0x11127213, id, from);
    Zoom(screen, 0x11127215, id, to);
    Zoom(screen, 0x11127205, id, {1, 0, 0, 0});
    Zoom(screen, 0x11127220, id, {2, 0, 0, 0});
    Zoom(screen, 0x11127204);
    return id;
}

void ScenarioMachine::SetOverlay(engine::Device& device)
{
    constexpr RECTL whole = {0, 0, 16, 12};
    for (const ULONG selector : {0x00CC0000U, 0xFFFFFFFFU, 0x00EE0000U})
        Zoom(device.PrimarySurface(), 0x11127236, 0, whole, 0, 0, selector);
}

void ScenarioMachine::ForgetLists()
{
    for (const ULONG subCommand : {25U, 34U, 39U})
        Command(subCommand);
    for (const ULONG type : {1U, 2U, 4U})
        Command(98, type);
    Zoom(nullptr, 0x11127237);
}

engine::Surface* VirtualScreen(const engine::Device& device)
{
    return Behind(device.PrimarySurface());
}

engine::Surface* RealScreen(const engine::Device& device)
{
    return engine::FrameBufferPicture(device.Dhpdev());
}

} // namespace conformance
