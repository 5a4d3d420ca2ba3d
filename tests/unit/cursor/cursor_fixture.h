#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cursor/cursor.h"
#include "driver/driver_values.h"
#include "driver/handles.h"
#include "driver/pool.h"
#include "driver/screen_list.h"
#include "engine/core/engine.h"
#include "tests/unit/magnifier/pictures.h"

// A device of 16 x 10 pixels in front of the cursor: its surface as the engine would give it, and the
// VirtualScreen behind that.
class CursorFixture : public testing::Test {
protected:
    static constexpr LONG Width = 16, Height = 10;

    void Start(pictures::Form newForm = pictures::Form::Bits32)
    {
        form = newForm;
        koru::RequestedColourDepth = pictures::DepthOf(form);
        engine.SetSixteenBitLayout(form == pictures::Form::Bits555);
        StartOn(pictures::MakeSurface(background, form));
    }
    // With any VirtualScreen of that size.
    void StartOn(engine::Surface* psoNewVirtual)
    {
        psoVirtual = psoNewVirtual;
        pso = AddScreen(device, psoVirtual);
        screen = koru::ScreenList::Find(device);
        cursor.Initialise({Width, Height});
    }
    // One more device; its surface.
    static engine::Surface* AddScreen(DHPDEV dhpdev, engine::Surface* psoNewVirtual)
    {
        const ULONG format = psoNewVirtual->iBitmapFormat;
        koru::Screen* const added = koru::ScreenList::Add(dhpdev);
        added->hsurfVirtual = psoNewVirtual->hsurf;
        added->hsurfDevice = EngCreateDeviceSurface(koru::DhsurfOf(psoNewVirtual->hsurf), {Width, Height}, format);
        added->ZoomerList.Initialise(Width, Height, format, 0);
        engine::Surface* const psoDevice = &pictures::SurfaceBehind(added->hsurfDevice);
        psoDevice->dhpdev = dhpdev;
        return psoDevice;
    }
    static void RemoveScreen(DHPDEV dhpdev)
    {
        koru::Screen* const removed = koru::ScreenList::Find(dhpdev);
        removed->ZoomerList.Release();
        EngDeleteSurface(removed->hsurfDevice);
        koru::ScreenList::Remove(removed);
    }
    ~CursorFixture() override
    {
        engine.StopFailing();
        cursor.Reset();
        RemoveScreen(device);
        engine.CheckGuards();
        EXPECT_EQ(engine.Violations(), std::vector<std::string>());
        engine::Resources left;
        left.poolBlocks = 1; // the list's array never shrinks
        EXPECT_EQ(engine.Outstanding(), left);
    }

    // A mask of text: the AND rows above the XOR rows, 1 bit a pixel.
    engine::Surface* Mask(std::initializer_list<const char*> lines)
    {
        const std::string text = pictures::Lines(lines);
        const SIZEL size = pictures::SizeOf(text);
        engine::Surface* const mask = engine::MakeBitmap(size, engine::PixelLayout::Default(BMF_1BPP));
        for (LONG y = 0; y < size.cy; ++y)
            for (LONG x = 0; x < size.cx; ++x)
                mask->SetPixel(x, y, text[y * (size.cx + 1) + x] == '1');
        return mask;
    }
    RECTL SetShape(SURFOBJ* psoMask, SURFOBJ* psoColor, LONG x, LONG y, POINTL hot = {0, 0}, XLATEOBJ* pxlo = nullptr)
    {
        RECTL touched = {-1, -1, -1, -1};
        EXPECT_EQ(cursor.ChangeShape(pso, psoMask, psoColor, pxlo, hot.x, hot.y, x, y, &prcl, 0, touched), 2u);
        return touched;
    }
    // All four kinds of pixels of a monochrome pointer: black, white, background, inverted.
    engine::Surface* FourKinds() { return Mask({"0011", "0011", "0101", "0101"}); }

    // The bitmaps that the driver makes meanwhile, in order: handles count up.
    template<class Work> static std::vector<const engine::Surface*> MadeDuring(Work work)
    {
        const ULONG before = koru::NumberOf(engine::MakeBitmap({1, 1}, {})->hsurf);
        work();
        const ULONG after = koru::NumberOf(engine::MakeBitmap({1, 1}, {})->hsurf);
        std::vector<const engine::Surface*> made;
        for (ULONG handle = before + 1; handle < after; ++handle)
            if (const engine::Surface* const surface = engine::FindSurface(reinterpret_cast<HSURF>(handle)))
                if (!surface->ofTheEngine)
                    made.push_back(surface);
        return made;
    }

    std::string Virtual() const { return pictures::PictureOf(*psoVirtual, form); }

    const std::string background = pictures::Lines({
        "YYYYYYYYYYYYYYYY",
        "YRRRRRRRRRRRRRRY",
        "YRRRRRRRRRRRRRRY",
        "YRRRRRRRRRRRRRRY",
        "YRRRRRRRRRRRRRRY",
        "YRRRRRRRRRRRRRRY",
        "YRRRRRRRRRRRRRRY",
        "YRRRRRRRRRRRRRRY",
        "YRRRRRRRRRRRRRRY",
        "YYYYYYYYYYYYYYYY",
    });
    const DHPDEV device = reinterpret_cast<DHPDEV>(0x1000);
    engine::Engine engine;
    pictures::Form form = pictures::Form::Bits32;
    engine::Surface* psoVirtual = nullptr;
    engine::Surface* pso = nullptr;
    koru::Screen* screen = nullptr;
    koru::CCursor cursor;
    RECTL prcl = {-1, -1, -1, -1};
};
