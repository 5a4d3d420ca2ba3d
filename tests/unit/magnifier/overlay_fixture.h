#pragma once

#include "engine/core/device.h"
#include "engine/devices/frame_buffer.h"
#include "magnifier/wise_surface.h"
#include "tests/unit/magnifier/magnifier_fixture.h"

// The overlay covers (4, 2, 8, 5); the client's picture lies at the same place of its bitmap.
class TheOverlay : public MagnifierFixture {
protected:
    TheOverlay()
    {
        engine::RegisterFrameBuffer();
        driver = std::make_unique<engine::DisplayDriver>(u"framebuf");
        device = std::make_unique<engine::Device>(*driver);
        Start(pictures::Filled(16, 10, 'R'));
        client = pictures::MakeSurface(pictures::WithPicture(pictures::Filled(16, 10, 'S'), 4, 2, picture), form);
        maskClient = pictures::MakeSurface(pictures::WithPicture(pictures::Filled(16, 10, '.'), 4, 2, mask), form);
    }
    ~TheOverlay() override
    {
        koru::WiseSurface::Destroy();
        real_driver::Unload();
        device.reset();
        driver.reset();
    }
    BOOL SetImage(ULONG level, POINTL origin = {4, 2}, RECTL source = {4, 2, 8, 5})
    {
        return koru::WiseSurface::SetImage(16, 10, pictures::FormatOf(form), level, origin, source, client,
                                           device->Handle());
    }
    BOOL SetMask(RECTL rectangle = {4, 2, 8, 5})
    {
        return koru::WiseSurface::SetMask(16, 10, pictures::FormatOf(form), rectangle, maskClient);
    }
    // Merges into the VirtualScreen and copies all of it.
    std::string Merged()
    {
        EXPECT_EQ(koru::WiseSurface::MergeAndCopy(psoReal, psoVirtual, {0, 0, 16, 10}), 1);
        EXPECT_EQ(Real(), Virtual());
        return Real();
    }
    // The overlay's bitmap: a message tells its handle when it does not lock.
    const engine::Surface& Image()
    {
        const std::string before = "WiseSurf ";
        engine.Fail(engine::Request::Lock, 1);
        engine.ClearDebugOutput();
        Merged();
        const std::string output = engine.TakeDebugOutput();
        const unsigned long handle = std::stoul(output.substr(output.find(before) + before.size()));
        return pictures::SurfaceBehind(reinterpret_cast<HSURF>(handle));
    }
    static std::string RedWith(const std::string& part, LONG x = 4, LONG y = 2)
    {
        return pictures::WithPicture(pictures::Filled(16, 10, 'R'), x, y, part);
    }

    const std::string picture = pictures::Lines({
        "GGBB",
        "GGBB",
        "BBGG",
    });
    const std::string mask = pictures::Lines({
        "WW..",
        "W...",
        "...W",
    });
    std::unique_ptr<engine::DisplayDriver> driver;
    std::unique_ptr<engine::Device> device;
    engine::Surface* client;
    engine::Surface* maskClient;
};
