#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "driver/driver_values.h"
#include "driver/handles.h"
#include "engine/core/engine.h"
#include "magnifier/update.h"
#include "magnifier/wise_surface.h"
#include "magnifier/zoomer_list.h"
#include "tests/unit/magnifier/pictures.h"
#include "tests/unit/magnifier/real_driver.h"

// Two small screens, both locked, with the magnifier between them. At start the RealScreen is black.
class MagnifierFixture : public testing::Test {
protected:
    static constexpr LONG Width = 16, Height = 10;

    MagnifierFixture() { real_driver::Load(); }
    ~MagnifierFixture() override
    {
        engine.StopFailing();
        koru::WiseSurface::Destroy();
        list.Release();
        real_driver::Unload();
        koru::RequestedColourDepth = 0;
        engine.CheckGuards();
        EXPECT_EQ(engine.Violations(), std::vector<std::string>());
        EXPECT_EQ(engine.Outstanding(), engine::Resources());
    }

    void Start(const std::string& picture, pictures::Form newForm = pictures::Form::Bits32)
    {
        form = newForm;
        koru::RequestedColourDepth = pictures::DepthOf(form);
        engine.SetSixteenBitLayout(form == pictures::Form::Bits555);
        const SIZEL size = pictures::SizeOf(picture);
        psoVirtual = pictures::MakeSurface(picture, form);
        psoReal = pictures::MakeSurface(pictures::Filled(size.cx, size.cy, '.'), form);
        list.Initialise(static_cast<ULONG>(size.cx), static_cast<ULONG>(size.cy), pictures::FormatOf(form), 0);
    }

    // A zoomer above all others that is on, with equal factors, nothing pending and nothing changed.
    koru::Zoomer* AddZoomer(const RECTL& original, const RECTL& view, ULONG factor, ULONG behaviour = 0)
    {
        koru::Zoomer* const zoomer = list.Create();
        list.SetZOrder(koru::NumberOf(zoomer), -static_cast<LONG>(list.count));
        list.recompose = 0;
        zoomer->SetOriginalRect(original);
        zoomer->SetZoomedRect(view);
        zoomer->SetFactor(factor);
        zoomer->SetBehaviour(behaviour);
        zoomer->SetState(1);
        Settle(*zoomer);
        return zoomer;
    }
    static void Settle(koru::Zoomer& zoomer)
    {
        zoomer.pending = zoomer.changed = 0;
        zoomer.pendingRect = {0, 0, 0, 0};
    }

    BOOL AfterDraw(const RECTL& drawn) { return koru::AfterDraw(list, psoReal, psoVirtual, drawn); }
    void Update() { koru::Update(list, psoReal, psoVirtual); }
    BOOL Refresh(const koru::Zoomer* zoomer)
    {
        return koru::Refresh(list, koru::NumberOf(zoomer), psoReal, psoVirtual);
    }

    std::string Real() const { return pictures::PictureOf(*psoReal, form); }
    std::string Virtual() const { return pictures::PictureOf(*psoVirtual, form); }
    std::string BitmapOf(const koru::Zoomer* zoomer, const RECTL& rectangle) const
    {
        return pictures::PictureOf(pictures::SurfaceBehind(zoomer->hBmp), form, rectangle);
    }
    void PaintVirtual(LONG x, LONG y, const std::string& picture) { pictures::Paint(*psoVirtual, x, y, picture, form); }
    void PaintBitmapOf(const koru::Zoomer* zoomer, LONG x, LONG y, const std::string& picture)
    {
        pictures::Paint(pictures::SurfaceBehind(zoomer->hBmp), x, y, picture, form);
    }
    static std::vector<RECTL> RectanglesCopied()
    {
        std::vector<RECTL> rectangles;
        for (const real_driver::Copy& copy : real_driver::Copies())
            rectangles.push_back(copy.rclDest);
        return rectangles;
    }

    engine::Engine engine;
    pictures::Form form = pictures::Form::Bits32;
    engine::Surface* psoVirtual = nullptr;
    engine::Surface* psoReal = nullptr;
    koru::ZoomerList list = {};
};
