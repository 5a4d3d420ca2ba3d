// Everything the magnifier does, with every request failing in turn, and with every value a client may send.

#include <gtest/gtest.h>

#include <climits>

#include "cursor/cursor.h"
#include "driver/handles.h"
#include "driver/screen_list.h"
#include "engine/core/device.h"
#include "engine/devices/frame_buffer.h"
#include "engine/loader/linked_driver.h"
#include "magnifier/timed_update.h"
#include "magnifier/update.h"
#include "magnifier/wise_surface.h"
#include "tests/unit/magnifier/pictures.h"
#include "tests/unit/magnifier/real_driver.h"

namespace {

using namespace koru;
using namespace pictures;

// A driver of its own on an engine of its own.
class Magnifier {
public:
    explicit Magnifier(Form newForm)
        : form(newForm)
    {
        engine::RegisterFrameBuffer();
        driver = std::make_unique<engine::DisplayDriver>(u"framebuf");
        device = std::make_unique<engine::Device>(*driver);
        real_driver::Load();
        psoVirtual = MakeSurface(Filled(32, 20, 'W'), form);
        psoReal = MakeSurface(Filled(32, 20, '.'), form);
    }
    ~Magnifier()
    {
        list.Release();
        WiseSurface::Destroy();
        real_driver::Unload();
        device.reset();
        driver.reset();
        engine.CheckGuards();
        EXPECT_EQ(engine.Violations(), std::vector<std::string>());
        engine::Resources kept;
        kept.poolBlocks = blocksKept;
        EXPECT_EQ(engine.Outstanding(), kept);
    }
    void Initialise() { list.Initialise(32, 20, FormatOf(form), psoVirtual->lDelta); }
    Zoomer* Create(const RECTL& original, const RECTL& view, ULONG behaviour)
    {
        Zoomer* const zoomer = list.Create();
        if (!zoomer)
            return nullptr;
        zoomer->SetOriginalRect(original);
        zoomer->SetZoomedRect(view);
        zoomer->SetBehaviour(behaviour);
        zoomer->SetImproveFactor(3);
        zoomer->SetBorder(15);
        zoomer->SetState(1);
        return zoomer;
    }
    void SetOverlay(ULONG level, const RECTL& place)
    {
        WiseSurface::SetImage(32, 20, FormatOf(form), level, {place.left, place.top}, place, psoVirtual,
                              device->Handle());
        WiseSurface::SetMask(32, 20, FormatOf(form), place, psoVirtual);
    }

    engine::Engine engine;
    Form form;
    std::unique_ptr<engine::DisplayDriver> driver;
    std::unique_ptr<engine::Device> device;
    engine::Surface *psoVirtual, *psoReal;
    ZoomerList list = {};
    ULONG blocksKept = 0;
};

void DoEverything(Magnifier& magnifier)
{
    ZoomerList& list = magnifier.list;
    SURFOBJ *const real = magnifier.psoReal, *const screen = magnifier.psoVirtual;
    magnifier.Initialise();
    const ULONG ids[] = {NumberOf(magnifier.Create({0, 0, 8, 5}, {4, 4, 20, 14}, 0)),
                         NumberOf(magnifier.Create({8, 5, 16, 10}, {10, 8, 26, 18}, 2)),
                         NumberOf(magnifier.Create({1, 1, 3, 3}, {0, 0, 4, 4}, 1))};
    for (int round = 0; round < 2; ++round) {
        AfterDraw(list, real, screen, {0, 0, 32, 20});
        Update(list, real, screen);
        for (const ULONG id : ids) {
            Refresh(list, id, real, screen);
            ImproveImage(list, id, real, screen);
            Scroll(list, id, 1, -1, real, screen);
            if (Zoomer* const zoomer = list.Find(id)) {
                zoomer->SetStyle(StyleInverted);
                zoomer->SetMode(ModeMoving);
                zoomer->SetZoomedRect({1, 1, 17, 11});
            }
        }
        list.recompose = 1;
        Update(list, real, screen);
        ShowOriginal(list, list.hBmpStretchDest, real, screen, {3, 3, 9, 9});
        magnifier.SetOverlay(0x66, {2, 2, 12, 12});
    }
    magnifier.Initialise();
}

TEST(MagnifierFaults, LeaveNothingBehindWhateverFails)
{
    for (const bool forGood : {false, true}) {
        engine::FaultPlan plan(forGood);
        do {
            engine::ResetLinkedDriver();
            Magnifier magnifier(Form::Bits8);
            magnifier.engine.Obey(plan);
            DoEverything(magnifier);
            magnifier.engine.StopFailing();
        } while (plan.Next());
        EXPECT_GT(plan.Position(), 100u) << "few requests were made";
    }
}

TEST(MagnifierFaults, LeaveNothingOfTheCursorBehindWhateverFails)
{
    for (const bool forGood : {false, true}) {
        engine::FaultPlan plan(forGood);
        do {
            engine::ResetLinkedDriver();
            Magnifier magnifier(Form::Bits565);
            magnifier.Initialise();
            Screen* const screen = ScreenList::Add(nullptr);
            magnifier.blocksKept = 1; // the list's array never shrinks
            screen->hsurfVirtual = magnifier.psoVirtual->hsurf;
            engine::Surface* const mask = engine::MakeBitmap({8, 16}, engine::PixelLayout::Default(BMF_1BPP));
            engine::Surface* const color = MakeSurface(Filled(8, 8, 'G'), Form::Bits32);
            ULONG table[2] = {};
            XLATEOBJ xlate = {
                .iUniq = 1, .flXlate = XO_TABLE, .iSrcType = 0, .iDstType = 0, .cEntries = 2, .pulXlate = table};
            magnifier.engine.Obey(plan);
            CCursor cursor;
            RECTL prcl, touched;
            SURFOBJ* const pso = magnifier.psoReal;
            for (SURFOBJ* const shape : {static_cast<SURFOBJ*>(nullptr), static_cast<SURFOBJ*>(color)}) {
                cursor.ChangeShape(pso, mask, shape, &xlate, 1, 1, 5, 5, &prcl, 0, touched);
                cursor.Move(pso, 9, 9, &prcl);
                cursor.ChangeShape(pso, nullptr, shape, nullptr, 1, 1, 5, 5, &prcl, 0, touched);
                cursor.Move(pso, 30, 19, &prcl);
            }
            magnifier.engine.StopFailing();
            cursor.Reset();
            ScreenList::Remove(screen);
        } while (plan.Next());
        EXPECT_GT(plan.Position(), 30u);
    }
}

class Abuse {
public:
    explicit Abuse(unsigned seed)
        : random_(seed)
    {
    }
    ULONG Number() { return random_(); }
    ULONG Below(ULONG limit) { return random_() % limit; }
    LONG Coordinate()
    {
        static constexpr LONG odd[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, 48, 0x10000000, INT_MAX - 1, INT_MAX};
        return Below(3) ? static_cast<LONG>(Below(60)) - 15 : odd[Below(9)];
    }
    RECTL Rectangle() { return {Coordinate(), Coordinate(), Coordinate(), Coordinate()}; }
    ULONG Value() { return Below(4) ? Below(17) : Number(); }

private:
    std::mt19937 random_;
};

void Change(Zoomer& zoomer, Abuse& abuse)
{
    static constexpr void (Zoomer::*setters[])(ULONG) = {
        &Zoomer::SetState,  &Zoomer::SetMode,        &Zoomer::SetStyle,     &Zoomer::SetBehaviour,
        &Zoomer::SetFactor, &Zoomer::SetXFactor,     &Zoomer::SetYFactor,   &Zoomer::SetImproveFactor,
        &Zoomer::SetBorder, &Zoomer::SetBordersSize, &Zoomer::SetPickColour};
    switch (abuse.Below(4)) {
    case 0:
        return zoomer.SetOriginalRect(abuse.Rectangle());
    case 1:
        return zoomer.SetZoomedRect(abuse.Rectangle());
    default:
        (zoomer.*setters[abuse.Below(11)])(abuse.Value());
    }
}

void DoSomething(Magnifier& magnifier, Abuse& abuse)
{
    ZoomerList& list = magnifier.list;
    SURFOBJ *const real = magnifier.psoReal, *const screen = magnifier.psoVirtual;
    Zoomer* zoomer = list.head;
    for (ULONG i = abuse.Below(4); i != 0 && zoomer; --i)
        zoomer = zoomer->next;
    const ULONG id = NumberOf(zoomer);
    switch (abuse.Below(12)) {
    case 0:
        AfterDraw(list, real, screen, abuse.Rectangle());
        break;
    case 1:
        Update(list, real, screen);
        break;
    case 2:
        Refresh(list, id, real, screen);
        break;
    case 3:
        ImproveImage(list, id, real, screen);
        break;
    case 4:
        Scroll(list, id, abuse.Coordinate(), abuse.Coordinate(), real, screen);
        break;
    case 5:
        list.SetZOrder(id, static_cast<LONG>(abuse.Value()));
        break;
    case 6:
        ShowOriginal(list, list.hBmpStretchDest, real, screen, abuse.Rectangle());
        break;
    case 7:
        abuse.Below(4) ? magnifier.SetOverlay(abuse.Below(256), abuse.Rectangle()) : WiseSurface::Destroy();
        break;
    default:
        if (zoomer)
            Change(*zoomer, abuse);
    }
}

TEST(MagnifierFaults, KeepAllDrawingInsideOfTheSurfacesWhateverClientsSend)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        engine::ResetLinkedDriver();
        Magnifier magnifier(AllForms[seed % 6]);
        magnifier.Initialise();
        for (int i = 0; i < 4; ++i)
            magnifier.Create({0, 0, 8, 5}, {4, 4, 20, 14}, i % 3);
        Abuse abuse(seed);
        for (int step = 0; step < 60; ++step)
            DoSomething(magnifier, abuse);
        magnifier.engine.CheckGuards();
        ASSERT_EQ(magnifier.engine.Violations(), std::vector<std::string>()) << "seed " << seed;
    }
}

} // namespace
